#include "platform/Twips.h"
#include "support/Events.h"
#include "views/DetailWindow.h"

namespace regalon {
namespace {

using test::DetailWindow;

class FrmMagWatchDetal : public DetailWindow {};

TEST_F(FrmMagWatchDetal, TellsTheStandInItsTopLine) {
    window = std::make_unique<frmMagWatchDetal>(warehouse.context);
    window->setShelfCount(3);
    window->setLocationCount(7);
    open(1, 12);
    EXPECT_EQ(text("lblParamStand"),
              QStringLiteral("Rząd: A   Regał: 12   Ilość półek: 3   Ilość lokalizacji: 7"));
    window->close();
    open(7, 3);
    EXPECT_EQ(text("lblParamStand"),
              QStringLiteral("Rząd:    Regał: 3   Ilość półek: 3   Ilość lokalizacji: 7"));
}

TEST_F(FrmMagWatchDetal, StandsWhereThePlaceRuleSays) {
    addStand(QStringLiteral("1"));
    window = std::make_unique<frmMagWatchDetal>(warehouse.context);
    window->setShelfCount(4);
    open();
    EXPECT_EQ(window->pos(), QPoint(200, 100));
    const PictureItem* pointer = item("imgPozytion");
    EXPECT_EQ(QPoint(pointer->left(), pointer->top()), QPoint(0, 0));
    EXPECT_TRUE(pointer->picturePath().endsWith(QStringLiteral("\\k2.ico")));
    EXPECT_FALSE(pointer->picture().isEmpty());
    window->close();

    window->setTopStand(9000);
    window->setLeftStand(13000);
    window->show();
    EXPECT_EQ(window->pos(), QPoint(toPixels(13000 - 8040 + 700), toPixels(9000 - 4155 - 1250)));
    EXPECT_EQ(QPoint(pointer->left(), pointer->top()), QPoint(7800, 3700));
    EXPECT_TRUE(pointer->picturePath().endsWith(QStringLiteral("\\k1.ico")));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatchDetal, WithoutWishesStandsAt4000And7000MinusItsSize) {
    window = std::make_unique<frmMagWatchDetal>(warehouse.context);
    window->show();
    EXPECT_EQ(window->pos(), QPoint(toPixels(7000 - 8040), toPixels(4000 - 4155)));
}

TEST_F(FrmMagWatchDetal, AMissingPointerIsNoError) {
    addStand(QStringLiteral("1"));
    ASSERT_TRUE(warehouse.useOwnIcons());
    changeLocations(QStringLiteral("Stand = 1"), QStringLiteral("LocationIcon = N'x.ico'"));
    open();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_TRUE(item("imgPozytion")->picture().isEmpty());
    EXPECT_EQ(drawn(), QList<int>({9}));
}

TEST_F(FrmMagWatchDetal, ReadsItsLocationsAndItsDescription) {
    addStand(QStringLiteral("21"));
    open();
    EXPECT_EQ(warehouse.batches(),
              QStringList(
                  {QStringLiteral(
                       " select A.Shelf,A.Location,A.LocationName,A.LocationIcon,A.LocationPercent,"
                       "B.StandIcon,ISNULL(C.StatLocation_cmb,0) as StatusLocation  from kolv_mag_Location "
                       "A(nolock) inner join kolv_mag_Stand B(nolock) ON A.Rank = B.Rank AND A.Stand = "
                       "B.Stand  left join kolv_mag_Location_Item C(nolock) ON A.Rank = C.Rank AND A.Stand = "
                       "C.Stand  AND A.Shelf = C.Shelf AND A.Location = C.Location Where a.Rank = 6 And "
                       "a.Stand = 1"),
                   QStringLiteral("select StandDescription from kolv_mag_Stand(nolock) Where Rank = 6 And "
                                  "Stand = 1")}));
}

TEST_F(FrmMagWatchDetal, DrawsEachLocationAtItsPlaceWithItsIcon) {
    addStand(QStringLiteral("1233"));
    changeLocations(QStringLiteral("Shelf = 2 and Location = 2"),
                    QStringLiteral("LocationIcon = N'LB_P_55.ico', LocationName = N'6_1_2_2_LB_9'"));
    open();
    EXPECT_EQ(drawn(), QList<int>({0, 1, 2, 3, 4, 5, 6, 7, 9}));
    EXPECT_EQ(location(2, 2)->tag(), QStringLiteral("6_1_2_2_LB_9"));
    EXPECT_EQ(location(2, 2)->picturePath(), QStringLiteral("C:\\Regalon\\Ikony\\LB_P_55.ico"));
    EXPECT_EQ(location(1, 1)->tag(), QStringLiteral("6_1_1_1_LA_7"));
    EXPECT_EQ(location(1, 1)->picturePath(), QStringLiteral("C:\\Regalon\\Ikony\\LA_P_10.ico"));
    EXPECT_EQ(location(1, 1)->width(), 550);
    EXPECT_EQ(location(2, 2)->width(), 1155);
    EXPECT_EQ(location(2, 2)->height(), 555);
    EXPECT_TRUE(item("imgBookStand")->isVisible());
    EXPECT_EQ(item("imgBookStand")->picturePath(), QStringLiteral("C:\\Regalon\\Ikony\\R6_S_01.ico"));
    EXPECT_EQ(item("imgBookStand")->width(), 1755);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatchDetal, AnotherFamilyKeepsTheWidthOfTheRowBefore) {
    addStand(QStringLiteral("13"));
    changeLocations(QStringLiteral("Shelf = 1"), QStringLiteral("LocationName = N'6_1_1_1_LC_1'"));
    changeLocations(QStringLiteral("Shelf = 2 and Location < 3"),
                    QStringLiteral("LocationName = N'6_1_2_1_XX_1'"));
    open();
    EXPECT_EQ(location(1, 1)->width(), 1750);
    EXPECT_EQ(location(2, 1)->width(), 1750);
    EXPECT_EQ(location(2, 2)->width(), 1750);
    EXPECT_EQ(location(2, 3)->width(), 550);
    window->close();
    changeLocations(QStringLiteral("Shelf = 1"), QStringLiteral("LocationName = N'6_1_1_1__1'"));
    window->show();
    EXPECT_EQ(location(1, 1)->width(), 0);
}

TEST_F(FrmMagWatchDetal, ALocationFourIsNotDrawn) {
    addStand(QStringLiteral("34"));
    open();
    EXPECT_EQ(drawn(), QList<int>({6, 7, 8, 9, 10, 11}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchDetal, AShelfFiveIsNotDrawnAndItsIconIsNotAsked) {
    addStand(QStringLiteral("11111"));
    changeLocations(QStringLiteral("Shelf = 5"), QStringLiteral("LocationIcon = N'none.ico'"));
    open();
    EXPECT_EQ(drawn(), QList<int>({0, 3, 6, 9}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchDetal, WithoutAnIconALocationShowsTheErrorIconOfItsFamily) {
    addStand(QStringLiteral("3"));
    changeLocations(QStringLiteral("Location = 1"), QStringLiteral("LocationIcon = N''"));
    changeLocations(QStringLiteral("Location = 2"),
                    QStringLiteral("LocationIcon = NULL, LocationName = N'6_1_1_2_LB_1'"));
    open();
    EXPECT_TRUE(location(1, 1)->picturePath().endsWith(QStringLiteral("\\LA_R_Err.ico")));
    EXPECT_TRUE(location(1, 2)->picturePath().endsWith(QStringLiteral("\\LB_R_Err.ico")));
    EXPECT_TRUE(location(1, 3)->picturePath().endsWith(QStringLiteral("\\LA_P_10.ico")));
}

TEST_F(FrmMagWatchDetal, ALocationOfSeveralMaterialsShowsItsIconWhateverElseIsStored) {
    addStand(QStringLiteral("2"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,StatLocation_cmb) "
                        "values (6,1,1,1,N'1'),(6,1,1,2,N'1')")}));
    changeLocations(QStringLiteral("Location = 1"), QStringLiteral("LocationIcon = N''"));
    open();
    EXPECT_TRUE(location(1, 1)->picturePath().endsWith(QStringLiteral("\\LA_M_00.ico")));
    EXPECT_TRUE(location(1, 2)->picturePath().endsWith(QStringLiteral("\\LA_M_00.ico")));
}

TEST_F(FrmMagWatchDetal, AStandWithoutRowsLoadsNothingAsItsPicture) {
    addStand(QStringLiteral("0"));
    open();
    EXPECT_EQ(drawn(), QList<int>());
    EXPECT_FALSE(item("imgBookStand")->isVisible());
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatchDetal, AStandWithoutAnIconOrWithAMissingOneShowsNoPicture) {
    addStand(QStringLiteral("1"));
    for (const char* icon : {"N''", "NULL", "N'none.ico'"}) {
        ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Stand set StandIcon = ") +
                                   QString::fromLatin1(icon) + QStringLiteral(" where Rank = 6")}));
        open();
        EXPECT_EQ(drawn(), QList<int>({9})) << icon;
        EXPECT_FALSE(item("imgBookStand")->isVisible()) << icon;
        window->close();
    }
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatchDetal, EveryOpeningDrawsAnewFromTheBeginning) {
    addStand(QStringLiteral("23"));
    open();
    clickLocation(2, 3);
    clickTab(3);
    window->close();
    ASSERT_TRUE(warehouse.run({QStringLiteral("delete from kolv_mag_Location where Rank = 6 and Shelf = 2"),
                               QStringLiteral("update kolv_mag_Stand set StandDescription = N'nowy' where "
                                              "Rank = 6")}));
    open();
    EXPECT_EQ(drawn(), QList<int>({9, 10}));
    EXPECT_EQ(note("txtParamInfoStand"), QStringLiteral("nowy"));
    EXPECT_EQ(text("lblSurowiecLocation"), QString());
    EXPECT_EQ(text("lblLocationData"), QString());
    EXPECT_EQ(box("txtShelf"), QString());
    EXPECT_EQ(box("txtLocation"), QString());
    EXPECT_EQ(control<TabStrip>("tabSurParam")->selectedTab(), 1);
    EXPECT_TRUE(visible("frmParamStatic"));
    EXPECT_FALSE(visible("frmParamInfo"));
}

TEST_F(FrmMagWatchDetal, TheDescriptionOfTheStandStandsInTheNotes) {
    addStand(QStringLiteral("1"));
    ASSERT_TRUE(warehouse.run({QStringLiteral(
        "update kolv_mag_Stand set StandDescription = N'Miejsce wagi, żółta linia' where Rank = 6")}));
    open();
    EXPECT_EQ(note("txtParamInfoStand"), QStringLiteral("Miejsce wagi, żółta linia"));
    window->close();
    open(9, 9);
    EXPECT_EQ(note("txtParamInfoStand"), QString());
}

/// What a click on the location 6/1/1/1 shows.
class FrmMagWatchDetalClick : public DetailWindow {
protected:
    void SetUp() override {
        DetailWindow::SetUp();
        addStand(QStringLiteral("2"));
    }
};

TEST_F(FrmMagWatchDetalClick, ALocationShowsItsMaterialItsParametersAndItsFigures) {
    assign(QStringLiteral("ItemCode,ItemName,GroupSur,Height_int,Width_int,Depth_int,Weight_int,"
                          "Description_char,StatLocation_cmb"),
           QStringLiteral("N'SUR-77',N'Śruba żółta',6,1200,900,1100,1000,N'od najstarszej',N'0'"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Location set LocationPercent = 42 where Rank = 6"),
         QStringLiteral("insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,LinePercent,Rank,Stand,"
                        "Shelf,Location,Active) values (N'T1',N'SUR-77',12.5,7.25,6,1,1,1,N'Y')")}));
    open();
    clickTab(3);
    warehouse.server.clearTrace();
    clickLocation(1, 1);
    EXPECT_EQ(
        warehouse.batches(),
        QStringList({QStringLiteral("select ItemCode,ItemName,GroupSur,Height_int,Width_int,Depth_int,"
                                    "Weight_int,Picture_pic,Description_char,StatLocation_cmb from "
                                    "kolv_mag_Location_Item(nolock)  where Rank = 6 and Stand = 1 and  Shelf "
                                    "= 1 and Location = 1"),
                     QStringLiteral(" select GroupSurName from kolv_mag_Location_Group(nolock) where "
                                    "GroupSur = 6"),
                     QStringLiteral(" exec Kolv_mag_Param_Location 6,1,1,1")}));
    EXPECT_EQ(control<TabStrip>("tabSurParam")->selectedTab(), 1);
    EXPECT_TRUE(visible("frmParamStatic"));
    EXPECT_EQ(box("txtShelf"), QStringLiteral("1"));
    EXPECT_EQ(box("txtLocation"), QStringLiteral("1"));
    EXPECT_EQ(text("lblLocationData"), QStringLiteral("Półka: 1   Lokalizacja: 1"));
    EXPECT_EQ(text("lblSurowiecLocation"), QStringLiteral("SUR-77 - Śruba żółta"));
    EXPECT_EQ(note("txtParamInfoLocation"), QStringLiteral("od najstarszej"));
    EXPECT_EQ(text("lblHeight"), QStringLiteral("1200"));
    EXPECT_EQ(text("lblWidth"), QStringLiteral("900"));
    EXPECT_EQ(text("lblDep"), QStringLiteral("1100"));
    EXPECT_EQ(text("lblWeight"), QStringLiteral("1000"));
    EXPECT_EQ(text("lblGroup"), QStringLiteral("Śruby i złącza"));
    EXPECT_EQ(text("lblProcentData"), QStringLiteral("42"));
    EXPECT_EQ(text("lblQuantityData"), QStringLiteral("12,5"));
    EXPECT_EQ(text("lblProcentSumLineData"), QStringLiteral("7,25"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatchDetalClick, TheBufferOfTheMaterialStandsBehindBufor) {
    assign(QStringLiteral("ItemCode"), QStringLiteral("N'SUR-77'"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,Active) values "
                        "(N'T1',N'SUR-77',300,N'Y'),(N'T2',N'SUR-77',0.75,N'Y')")}));
    open();
    clickLocation(1, 1);
    EXPECT_EQ(text("lblQuantityBufData"), QStringLiteral("300,75"));
    EXPECT_EQ(text("lblQuantityData"), QStringLiteral("0"));
}

TEST_F(FrmMagWatchDetalClick, ALocationWithoutAnAssignmentSaysSo) {
    assign(QStringLiteral("ItemCode,ItemName,GroupSur,Height_int,Description_char"),
           QStringLiteral("N'SUR-77',N'Śruba',6,1200,N'uwaga'"));
    open();
    clickLocation(1, 1);
    ASSERT_TRUE(visible("tlbWatchFullSurLocation"));
    clickLocation(1, 2);
    EXPECT_EQ(text("lblSurowiecLocation"), QStringLiteral("Brak zdefiowanego surowca dla tej lokalizacji"));
    EXPECT_EQ(text("lblLocationData"), QStringLiteral("Półka: 1   Lokalizacja: 2"));
    EXPECT_EQ(note("txtParamInfoLocation"), QString());
    EXPECT_EQ(text("lblGroup"), QString());
    for (const char* size : {"lblDep", "lblHeight", "lblWidth", "lblWeight"})
        EXPECT_EQ(text(size), QStringLiteral("0")) << size;
    EXPECT_FALSE(visible("tlbWatchFullSurLocation"));
    EXPECT_TRUE(picture().isEmpty());
}

TEST_F(FrmMagWatchDetalClick, WithoutFiguresTheOldOnesStay) {
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("update kolv_mag_Location set LocationPercent = 42 where Rank = 6")}));
    open();
    clickLocation(1, 1);
    ASSERT_EQ(text("lblProcentData"), QStringLiteral("42"));
    changeLocations(QStringLiteral("Location = 2"), QStringLiteral("Location = 3"));
    clickLocation(1, 2);
    EXPECT_EQ(text("lblLocationData"), QStringLiteral("Półka: 1   Lokalizacja: 2"));
    EXPECT_EQ(text("lblProcentData"), QStringLiteral("42"));
}

TEST_F(FrmMagWatchDetalClick, ANoteOfZeroIsNoNote) {
    assign(QStringLiteral("Description_char"), QStringLiteral("N'0'"));
    open();
    clickLocation(1, 1);
    EXPECT_EQ(note("txtParamInfoLocation"), QString());
    assign(QStringLiteral("Description_char"), QStringLiteral("N'00'"));
    clickLocation(1, 1);
    EXPECT_EQ(note("txtParamInfoLocation"), QStringLiteral("00"));
}

TEST_F(FrmMagWatchDetalClick, TheListIsOfferedForAGroupOrSeveralMaterialsAlone) {
    open();
    const QList<std::pair<const char*, bool>> cases = {
        {"0,N'0'", false}, {"NULL,NULL", false}, {"1,N'0'", true}, {"0,N'1'", true}, {"-1,N'0'", false}};
    for (const auto& [values, offered] : cases) {
        assign(QStringLiteral("GroupSur,StatLocation_cmb"), QString::fromLatin1(values));
        clickLocation(1, 1);
        EXPECT_EQ(visible("tlbWatchFullSurLocation"), offered) << values;
    }
}

TEST_F(FrmMagWatchDetalClick, AGroupThatDoesNotExistReadsAsNoAssignment) {
    assign(QStringLiteral("GroupSur"), QStringLiteral("999"));
    open();
    clickLocation(1, 1);
    EXPECT_EQ(text("lblGroup"), QStringLiteral("Brak przypisania"));
}

TEST_F(FrmMagWatchDetalClick, TheStandLeadsBackToTheStandAsAWhole) {
    assign(QStringLiteral(
               "ItemCode,StatLocation_cmb,Height_int,Width_int,Depth_int,Weight_int,Description_char"),
           QStringLiteral("N'SUR-77',N'1',1,2,3,4,N'uwaga'"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Location set LocationPercent = 42 where Rank = 6"),
         QStringLiteral("insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,LinePercent,Rank,Stand,"
                        "Shelf,Location,Active) values (N'T1',N'SUR-77',12.5,7.25,6,1,1,1,N'Y'),"
                        "(N'T2',N'SUR-77',5,NULL,NULL,NULL,NULL,NULL,N'Y')")}));
    open();
    clickLocation(1, 1);
    ASSERT_EQ(text("lblQuantityBufData"), QStringLiteral("5"));
    warehouse.server.clearTrace();
    clickStand();
    EXPECT_EQ(text("lblLocationData"), QStringLiteral("Rząd : F   Regał: 1"));
    EXPECT_EQ(text("lblSurowiecLocation"), QString());
    EXPECT_EQ(note("txtParamInfoLocation"), QString());
    EXPECT_EQ(text("lblGroup"), QString());
    for (const char* figure : {"lblDep", "lblHeight", "lblWidth", "lblWeight", "lblProcentData",
                               "lblQuantityData", "lblQuantityBufData", "lblProcentSumLineData"})
        EXPECT_EQ(text(figure), QStringLiteral("0")) << figure;
    // The button that opens the list stays as the last location left it, and so does the address.
    EXPECT_TRUE(visible("tlbWatchFullSurLocation"));
    EXPECT_EQ(box("txtShelf"), QStringLiteral("1"));
    EXPECT_EQ(box("txtLocation"), QStringLiteral("1"));
    EXPECT_TRUE(warehouse.batches().isEmpty());
}

}  // namespace
}  // namespace regalon
