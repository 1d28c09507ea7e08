// The barcode window: its four states, and the content of a location.

#include "platform/DataCombo.h"
#include "views/BarCodeWindow.h"

#include <QTimer>

namespace regalon {
namespace {

using test::captionsOf;
using test::keysOf;

const QString kList = QStringLiteral("exec Kolv_mag_Watch_BarCode_Location ");

class FrmMagWatchBarCodeLoc : public test::BarCodeWindow {};

TEST_F(FrmMagWatchBarCodeLoc, OpensWithThePlanAndNothingOverIt) {
    open();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Zawartość lokalizacji - kody kreskowe"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(canvas()->imglocation().Count() - 1, 9);
    expectMap();
    EXPECT_TRUE(active()->isChecked());
    EXPECT_FALSE(enabled("tlbAkceptLocation", 1));
    EXPECT_FALSE(enabled("tlbLookForBarCode", 3));
    EXPECT_FALSE(enabled("tlbLookForBarCode", 5));
    EXPECT_FALSE(control<QTimer>("Timer1")->isActive());
    EXPECT_TRUE(control<QWidget>("oleWatchTemplete")->isHidden());
    EXPECT_TRUE(control<QWidget>("picBarCode")->isHidden());
}

TEST_F(FrmMagWatchBarCodeLoc, HasItsToolbarsInOrder) {
    open();
    EXPECT_EQ(captionsOf(toolBar("tlbCmd")),
              QStringList({QStringLiteral("&Wyjście"), QStringLiteral("-"), QStringLiteral("Odśwież magazyn"),
                           QStringLiteral("&Znajdź surowiec"), QStringLiteral("Z&najdź kod")}));
    const QStringList keys = keysOf(toolBar("tlbCmd"));
    EXPECT_EQ(keys.first(), QStringLiteral("key_Exit"));
    EXPECT_EQ(keys.mid(2), QStringList({QStringLiteral("key_ReBulid"), QStringLiteral("key_LokkFor"),
                                        QStringLiteral("key_LokkForBarCode")}));
    EXPECT_EQ(captionsOf(toolBar("tlbAkceptLocation")),
              QStringList(QStringLiteral("&Zatwierdź wybraną lokalizacje")));
    EXPECT_EQ(text("Label10"), QStringLiteral("Status operacji:"));
    EXPECT_EQ(text("lblStatusOperation"), QStringLiteral("Oczekiwanie"));
}

TEST_F(FrmMagWatchBarCodeLoc, ItsPanelsLieWhereTheyBelong) {
    open();
    const QList<std::pair<const char*, QRect>> places = {{"frmWathLocationShift", {120, 480, 12975, 7935}},
                                                         {"frmLocationDesc", {0, 0, 12855, 1335}},
                                                         {"frmFiltr", {120, 1330, 12735, 735}},
                                                         {"frmWatch", {120, 2040, 12735, 4695}},
                                                         {"frmPodglad", {13080, 480, 2055, 9255}}};
    for (const auto& [name, twips] : places) {
        const QRect at = frame(name)->geometry();
        EXPECT_NEAR(at.x(), twips.x() / 15.0, 0.5) << name;
        EXPECT_NEAR(at.y(), twips.y() / 15.0, 0.7) << name;
        EXPECT_NEAR(at.width(), twips.width() / 15.0, 0.5) << name;
        EXPECT_NEAR(at.height(), twips.height() / 15.0, 0.5) << name;
    }
    EXPECT_EQ(box("txtNumberCode")->x(), 7680 / 15);
    EXPECT_EQ(frame("frmLookForSur")->width(), 15015 / 15);
}

TEST_F(FrmMagWatchBarCodeLoc, AClickOnALocationTellsItsMaterialAndReleasesTheButton) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_EQ(address(), QStringLiteral("1 1 1 1"));
    EXPECT_EQ(text("lblObjectClick"), QStringLiteral("Rząd: A Regał: 1 Półka: 1 Lokazliacja: 1"));
    EXPECT_EQ(text("lblObjectParam"), QStringLiteral("FARBA - Farba: żółta"));
    EXPECT_TRUE(enabled("tlbAkceptLocation", 1));
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral("select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item "
                                         "where Rank = 1 and Stand = 1 and  Shelf = 1 and Location = 1")));
}

TEST_F(FrmMagWatchBarCodeLoc, AClickOnAStandLeavesTheButtonAndTheAddressAsTheyAre) {
    open();
    clickStand(QStringLiteral("1_2"));
    EXPECT_FALSE(enabled("tlbAkceptLocation", 1)) << "before any click on a location";
    EXPECT_EQ(address(), QStringLiteral("   "));
    clickLocation(QStringLiteral("1_1_1_1"));
    clickStand(QStringLiteral("1_2"));
    EXPECT_TRUE(enabled("tlbAkceptLocation", 1));
    EXPECT_EQ(address(), QStringLiteral("1 1 1 1"));
    EXPECT_EQ(text("lblObjectClick"), QStringLiteral("Rząd: A Regał: 2"));
    EXPECT_EQ(text("lblObjectParam"), QString());
}

TEST_F(FrmMagWatchBarCodeLoc, AClickOnAStandOpensItsDetailAndThenShowsTheMap) {
    open();
    window->setTopStand(300);
    window->setLeftStand(450);
    openLookup();
    clickStand(QStringLiteral("1_2"));
    ASSERT_EQ(details.size(), 1);
    EXPECT_EQ(details.first().Rank, 1);
    EXPECT_EQ(details.first().Stand, 2);
    EXPECT_EQ(details.first().ShelfCount, 1);
    EXPECT_EQ(details.first().LocationCount, 3);
    EXPECT_EQ(details.first().TopStand, 300 + 4000 + 1300 + 150);
    EXPECT_EQ(details.first().LeftStand, 450 + 4000 + 50);
    expectMap();
}

TEST_F(FrmMagWatchBarCodeLoc, TheContentShowsFiguresAndActiveCodes) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    warehouse.server.clearTrace();
    press("tlbAkceptLocation", "key_AkceptLoc");
    expectContent();
    EXPECT_EQ(text("lblRankData"), QStringLiteral("A"));
    EXPECT_EQ(text("lblStandData"), QStringLiteral("1"));
    EXPECT_EQ(text("lblShelfData"), QStringLiteral("1"));
    EXPECT_EQ(text("lblLocationData"), QStringLiteral("1"));
    EXPECT_EQ(text("lblQuantityData"), QStringLiteral("42,5"));
    EXPECT_EQ(text("lblQuantityPercentData"), QStringLiteral("30"));
    EXPECT_EQ(text("lblItemCodeData"), QStringLiteral("FARBA : Farba: żółta"));
    EXPECT_EQ(text("lblBarCodeActiveData"), QStringLiteral("2"));
    EXPECT_EQ(text("lblBarCodeGlobalData"), QStringLiteral("3"));
    EXPECT_EQ(codes(), QStringList({QStringLiteral("1001"), QStringLiteral("1003")}));
    EXPECT_EQ(list()->headerCount(), 7);
    EXPECT_EQ(list()->headerWidth(1), 800);
    EXPECT_EQ(list()->item(1)->text(), QStringLiteral("2")) << "the running number counts down";
    EXPECT_FALSE(list()->sorted());
    EXPECT_EQ(warehouse.batches(),
              QStringList({QStringLiteral("exec Kolv_mag_Param_Location_BarCode 1,1,1,1"),
                           kList + QStringLiteral("1,1,1,1,N'Y',1")}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchBarCodeLoc, ALocationWithoutAssignmentReadsAsHavingNoneAndOpens) {
    open();
    clickLocation(QStringLiteral("1_1_1_2"));
    EXPECT_EQ(text("lblObjectParam"), QStringLiteral("Brak przypisanego surowca"));
    press("tlbAkceptLocation", "key_AkceptLoc");
    expectContent();
    EXPECT_EQ(text("lblItemCodeData"), QStringLiteral("BRAK : "));
    EXPECT_EQ(text("lblQuantityData"), QStringLiteral("0"));
    EXPECT_EQ(list()->itemCount(), 0);
}

TEST_F(FrmMagWatchBarCodeLoc, UncheckingTheFilterListsAllCodes) {
    open();
    openContent();
    warehouse.server.clearTrace();
    test::clickAt(active(), QPoint(8, active()->height() / 2));
    EXPECT_FALSE(active()->isChecked());
    EXPECT_EQ(warehouse.batches(), QStringList(kList + QStringLiteral("1,1,1,1,N'N',1")));
    EXPECT_EQ(codes(), QStringList({QStringLiteral("1001"), QStringLiteral("1002"), QStringLiteral("1003")}));
}

TEST_F(FrmMagWatchBarCodeLoc, AnotherLocationClearsTheFilterAgainAndReadsItsListTwice) {
    open();
    openContent();
    test::clickAt(active(), QPoint(8, active()->height() / 2));
    clickLocation(QStringLiteral("1_2_1_1"));
    EXPECT_EQ(text("lblStandData"), QStringLiteral("1")) << "the figures wait for the button";
    warehouse.server.clearTrace();
    press("tlbAkceptLocation", "key_AkceptLoc");
    EXPECT_TRUE(active()->isChecked());
    EXPECT_EQ(text("lblStandData"), QStringLiteral("2"));
    EXPECT_EQ(warehouse.batches(),
              QStringList({kList + QStringLiteral("1,2,1,1,N'Y',1"),
                           QStringLiteral("exec Kolv_mag_Param_Location_BarCode 1,2,1,1"),
                           kList + QStringLiteral("1,2,1,1,N'Y',1")}));
}

TEST_F(FrmMagWatchBarCodeLoc, TheFilterListsTheLocationInTheBoxesUnderTheFiguresOfTheOneBefore) {
    open();
    openContent();
    clickLocation(QStringLiteral("2_1_1_2"));
    warehouse.server.clearTrace();
    test::clickAt(active(), QPoint(8, active()->height() / 2));
    EXPECT_EQ(warehouse.batches(), QStringList(kList + QStringLiteral("2,1,1,2,N'N',1")));
    EXPECT_EQ(codes(), QStringList(QStringLiteral("2001")));
    EXPECT_EQ(text("lblRankData"), QStringLiteral("A"));
    EXPECT_EQ(text("lblQuantityData"), QStringLiteral("42,5"));
    expectContent();
}

TEST_F(FrmMagWatchBarCodeLoc, TheFilterReadsNothingForAnAddressThatIsNone) {
    open();
    openContent();
    warehouse.server.clearTrace();
    for (const char* typed : {"", "x", "0", "-1"}) {
        box("txtLocation")->setText(QString::fromLatin1(typed));
        test::clickAt(active(), QPoint(8, active()->height() / 2));
        EXPECT_EQ(warehouse.batches(), QStringList()) << typed;
        EXPECT_EQ(codes().size(), 2) << typed;
    }
    EXPECT_EQ(messages.count(), 0);
    box("txtLocation")->setText(QStringLiteral("32768"));
    test::clickAt(active(), QPoint(8, active()->height() / 2));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchBarCodeLoc - chkActiveBarCode_Click"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(6));
}

TEST_F(FrmMagWatchBarCodeLoc, AClickOnARowTakesItsCodeAndLeavesItsCheckBox) {
    open();
    openContent();
    test::clickCell(list(), list()->model()->index(0, 2));
    EXPECT_EQ(box("txtBarCodeOnUse")->text(), QStringLiteral("1001"));
    EXPECT_FALSE(list()->item(1)->checked());
    test::clickCell(list(), list()->model()->index(1, 0));
    EXPECT_EQ(box("txtBarCodeOnUse")->text(), QStringLiteral("1003"));
    EXPECT_FALSE(list()->item(2)->checked());
}

TEST_F(FrmMagWatchBarCodeLoc, ATickSelectsItsRow) {
    open();
    openContent();
    test::clickCell(list(), list()->model()->index(0, 2));
    test::clickCheckBox(list(), 1);
    EXPECT_TRUE(list()->item(2)->checked());
    EXPECT_EQ(list()->selectedItem(), list()->item(2));
}

TEST_F(FrmMagWatchBarCodeLoc, TypedAddressesThatAreNoneOpenNothing) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    for (const char* typed : {"", "x", "0", "-1"}) {
        box("txtShelf")->setText(QString::fromLatin1(typed));
        warehouse.server.clearTrace();
        press("tlbAkceptLocation", "key_AkceptLoc");
        expectMap();
        EXPECT_EQ(warehouse.batches(), QStringList()) << typed;
        EXPECT_EQ(messages.count(), 0) << typed;
    }
    box("txtShelf")->setText(QStringLiteral("99999"));
    press("tlbAkceptLocation", "key_AkceptLoc");
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchBarCodeLoc - AkceptLocation"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(6));
    expectMap();
}

TEST_F(FrmMagWatchBarCodeLoc, WithoutFiguresThePanelOpensWithThoseBefore) {
    open();
    openContent();
    press("tlbPodlad", "key_Close");
    clickLocation(QStringLiteral("1_2_1_1"));
    answer(QStringLiteral("Kolv_mag_Param_Location_BarCode"),
           QStringLiteral("@Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint"),
           QStringLiteral("select N'X' as ItemCode, N'' as ItemName, 0 as Quantity, 0 as QuantityPer, 0 as "
                          "CodeActive, 0 as CodeGlobal, 0 as GroupCode, N'' as GroupName, 0 as "
                          "QuantityPerCalculate, 1 as Error"));
    press("tlbAkceptLocation", "key_AkceptLoc");
    expectContent();
    EXPECT_EQ(text("lblStandData"), QStringLiteral("2"));
    EXPECT_EQ(text("lblItemCodeData"), QStringLiteral("FARBA : Farba: żółta"));
    EXPECT_EQ(codes().size(), 2);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchBarCodeLoc, FiguresWithoutARowReadAsNothing) {
    open();
    answer(QStringLiteral("Kolv_mag_Param_Location_BarCode"),
           QStringLiteral("@Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint"),
           QStringLiteral("select 1 as ItemCode where 1 = 0"));
    openContent();
    EXPECT_EQ(text("lblItemCodeData"), QStringLiteral(" : "));
    EXPECT_EQ(text("lblQuantityData"), QStringLiteral("0"));
    EXPECT_EQ(text("lblBarCodeGlobalData"), QStringLiteral("0"));
    EXPECT_EQ(codes().size(), 2);
}

TEST_F(FrmMagWatchBarCodeLoc, FiguresAndRowsOfNullsReadAsNothing) {
    open();
    answer(QStringLiteral("Kolv_mag_Param_Location_BarCode"),
           QStringLiteral("@Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint"),
           QStringLiteral(
               "select cast(null as nvarchar(20)) as ItemCode, cast(null as nvarchar(20)) as ItemName, "
               "cast(null as float) as Quantity, cast(null as float) as QuantityPer, cast(null as int) as "
               "CodeActive, cast(null as int) as CodeGlobal, cast(null as smallint) as GroupCode, cast(null "
               "as nvarchar(20)) as GroupName, cast(null as float) as QuantityPerCalculate, cast(null as "
               "smallint) as Error"));
    answer(QStringLiteral("Kolv_mag_Watch_BarCode_Location"),
           QStringLiteral("@Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint, @Filter "
                          "nvarchar(1), @Mode smallint"),
           QStringLiteral("select cast(null as nvarchar(20)) as A, cast(null as int) as B, cast(null as int) "
                          "as C, cast(null as int) as D, cast(null as int) as E, cast(null as int) as F"));
    openContent();
    expectContent();
    EXPECT_EQ(text("lblItemCodeData"), QStringLiteral("BRAK : "));
    EXPECT_EQ(text("lblQuantityData"), QStringLiteral("0"));
    EXPECT_EQ(text("lblQuantityPercentData"), QStringLiteral("0"));
    EXPECT_EQ(text("lblBarCodeActiveData"), QStringLiteral("0"));
    EXPECT_EQ(codes(), QStringList(QString()));
    test::clickCell(list(), list()->model()->index(0, 2));
    EXPECT_EQ(box("txtBarCodeOnUse")->text(), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchBarCodeLoc, WithTheServerGoneEachStepIsToldOnceAndTheWindowStays) {
    open();
    openContent();
    press("tlbPodlad", "key_Close");
    warehouse.server.kill();
    clickLocation(QStringLiteral("2_1_1_2"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatchBarCodeLoc [GetParamLocalization]"));
    EXPECT_EQ(text("lblObjectParam"), QStringLiteral("Brak przypisanego surowca"));
    messages.clear();
    press("tlbAkceptLocation", "key_AkceptLoc");
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("Error - clsMagWatchBarCodeLoc [GetParamLocalizationProcedure]"));
    EXPECT_EQ(text("lblRankData"), QStringLiteral("B"));
    EXPECT_EQ(text("lblItemCodeData"), QStringLiteral("FARBA : Farba: żółta")) << "the old one";
    EXPECT_EQ(codes().size(), 2) << "the old ones";
    expectContent();
}

TEST_F(FrmMagWatchBarCodeLoc, ItsStandsAreReportedUnderTheNameOfAnotherWindow) {
    open();
    run(QStringLiteral("update kolv_mag_Stand set StandIcon = N'nigdzie.ico' where Rank = 1 and Stand = 2"));
    press("tlbCmd", "key_LokkFor");
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagSurInput - ChangeIconStand"));
    expectSearch();
}

TEST_F(FrmMagWatchBarCodeLoc, AClickOnThePlanEndsTheSearchAndLeavesItsGrey) {
    open();
    press("tlbCmd", "key_LokkFor");
    auto* materials = control<DataCombo>("dtcLookForSur");
    materials->setFocus();
    test::key(materials, Qt::Key_End);
    ASSERT_EQ(materials->boundText(), QStringLiteral("FARBA"));
    press("tlbLookForSur", "key_LookFor");
    const QString grey = locations();
    EXPECT_TRUE(grey.contains(QStringLiteral("_G_"))) << qPrintable(grey);
    clickLocation(QStringLiteral("1_1_1_1"));
    expectMap();
    EXPECT_EQ(locations(), grey);
    clickStand(QStringLiteral("1_2"));
    expectMap();
    EXPECT_EQ(locations(), grey);
}

TEST_F(FrmMagWatchBarCodeLoc, ShowsOnePanelAtATime) {
    open();
    openContent();
    expectContent();
    press("tlbCmd", "key_LokkFor");
    expectSearch();
    press("tlbCmd", "key_LokkForBarCode");
    expectLookup();
    press("tlbCmd", "key_LokkFor");
    expectSearch();
    clickLocation(QStringLiteral("1_1_1_1"));
    expectMap();
    openContent();
    press("tlbCmd", "key_LokkForBarCode");
    expectLookup();
    press("tlbLookForSurBarCode", "key_Close");
    expectMap();
    openContent();
    clickStand(QStringLiteral("1_2"));
    press("tlbPodlad", "key_Close");
    expectMap();
}

TEST_F(FrmMagWatchBarCodeLoc, CancellingTheSearchShowsTheStatusAndDrawsThePlanAnew) {
    open();
    press("tlbCmd", "key_LokkFor");
    warehouse.server.clearTrace();
    ASSERT_TRUE(test::clickToolButton(toolBar("tlbLookForSur"), QStringLiteral("key_Cancel")));
    expectMap();
    EXPECT_EQ(warehouse.batches().filter(QStringLiteral("from kolv_mag_Stand")).size(), 1);
    EXPECT_TRUE(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).isEmpty());
}

TEST_F(FrmMagWatchBarCodeLoc, TheRefreshDrawsThePlanAndLeavesTheFillsAlone) {
    open();
    press("tlbCmd", "key_ReBulid");
    EXPECT_EQ(warehouse.batches().filter(QStringLiteral("from kolv_mag_Stand")).size(), 1);
    EXPECT_TRUE(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).isEmpty());
    press("tlbCmd", "key_Exit");
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMagWatchBarCodeLoc, OpenedAgainItStartsAnew) {
    open();
    openContent();
    test::clickAt(active(), QPoint(8, active()->height() / 2));
    window->unload();
    warehouse.server.clearTrace();
    test::showAndWait(window.get());
    expectMap();
    EXPECT_TRUE(active()->isChecked());
    EXPECT_EQ(address(), QStringLiteral("   "));
    EXPECT_EQ(text("lblObjectClick"), QString());
    EXPECT_EQ(list()->itemCount(), 0);
    EXPECT_FALSE(enabled("tlbAkceptLocation", 1));
    EXPECT_TRUE(warehouse.batches().filter(kList).isEmpty());
}

TEST_F(FrmMagWatchBarCodeLoc, AltAndWClosesIt) {
    open();
    test::key(window.get(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(window->isVisible());
    test::key(window.get(), Qt::Key_W, Qt::AltModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMagWatchBarCodeLoc, AListThatCannotBeReadIsReportedAndThePanelOpens) {
    open();
    run(QStringLiteral("drop procedure Kolv_mag_Watch_BarCode_Location"));
    openContent();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - modListBox [FilleListView]"));
    expectContent();
}

}  // namespace
}  // namespace regalon
