#include "support/Events.h"
#include "views/DetailWindow.h"

#include <QAction>

namespace regalon {
namespace {

using test::DetailWindow;

/// The list of materials of the location 6/1/1/1, which has a group, two of its members and a stranger.
class DetailList : public DetailWindow {
protected:
    void SetUp() override {
        DetailWindow::SetUp();
        addStand(QStringLiteral("2"));
        assign(QStringLiteral("ItemCode,GroupSur,StatLocation_cmb"), QStringLiteral("N'',4,N'1'"));
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,Rank,Stand,Shelf,"
                            "Location,Active) values (N'T1',N'GR-PE-002',50.5,6,1,1,1,N'Y'),"
                            "(N'T2',N'GR-PP-001',125,6,1,1,1,N'Y'),(N'T3',N'OL-HY-046',7,6,1,1,1,N'Y'),"
                            "(N'T4',N'OL-HY-046',3,6,1,1,2,N'Y')")}))
            << qPrintable(warehouse.why());
        open();
    }

    void openList() {
        clickLocation(1, 1);
        ASSERT_TRUE(press("key_Akcept"));
    }
    void typeAddress(const char* shelf, const char* position) {
        control<QLineEdit>("txtShelf")->clear();
        control<QLineEdit>("txtLocation")->clear();
        test::type(control<QLineEdit>("txtShelf"), QString::fromLatin1(shelf));
        test::type(control<QLineEdit>("txtLocation"), QString::fromLatin1(position));
    }
};

TEST_F(DetailList, OpensWithBothPhasesOfTheProcedureAndItsEightArguments) {
    clickLocation(1, 1);
    warehouse.server.clearTrace();
    ASSERT_TRUE(press("key_Akcept"));
    EXPECT_EQ(warehouse.batches(),
              QStringList({QStringLiteral("exec kolv_mag_Watch_Item_On_Location 6,1,1,1,N'1',N'P',0,N'W'"),
                           QStringLiteral("exec kolv_mag_Watch_Item_On_Location 6,1,1,1,N'1',N'P',1,N'W'")}));
    EXPECT_TRUE(visible("frmWathLocationShiftItem"));
    EXPECT_TRUE(visible("lstLocationItem"));
    EXPECT_TRUE(visible("tlbCancelWatchSur"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(DetailList, NumbersItsRowsSortsByTheNumberAndMarksThemByKind) {
    openList();
    EXPECT_EQ(list()->headerText(1), QStringLiteral("Lp"));
    EXPECT_EQ(list()->headerWidth(1), 700);
    EXPECT_TRUE(list()->sorted());
    EXPECT_EQ(list()->sortKey(), 0);
    ASSERT_EQ(list()->itemCount(), 3);
    const int code = list()->headerCount() - 1;
    EXPECT_EQ(list()->item(3)->subItem(code), QStringLiteral("GR-PE-002"));
    EXPECT_EQ(list()->item(2)->subItem(code), QStringLiteral("GR-PP-001"));
    EXPECT_EQ(list()->item(1)->subItem(code), QStringLiteral("OL-HY-046"));
    EXPECT_EQ(list()->item(3)->smallIcon(), 42);
    EXPECT_EQ(list()->item(2)->smallIcon(), 42);
    EXPECT_EQ(list()->item(1)->smallIcon(), 40);
}

TEST_F(DetailList, ItsHeadersAndWidthsFitTheWindow) {
    openList();
    int width = 0;
    for (int header = 1; header <= list()->headerCount(); ++header)
        width += list()->headerWidth(header);
    EXPECT_LE(width / 15, list()->viewport()->width());
}

TEST_F(DetailList, ItsButtonClosesIt) {
    openList();
    ASSERT_TRUE(press("key_Cancel"));
    EXPECT_FALSE(visible("frmWathLocationShiftItem"));
    EXPECT_TRUE(visible("frmParamStatic"));
    ASSERT_TRUE(press("key_Akcept"));
    EXPECT_TRUE(visible("frmWathLocationShiftItem"));
}

TEST_F(DetailList, AfterAClickOnTheStandItHasNoButtonOfItsOwnWhileTheWindowLives) {
    clickLocation(1, 1);
    clickStand();
    ASSERT_TRUE(press("key_Akcept"));
    EXPECT_TRUE(visible("frmWathLocationShiftItem"));
    EXPECT_FALSE(visible("tlbCancelWatchSur"));
    EXPECT_FALSE(press("key_Cancel"));
    test::click(control<QPushButton>("cmdClose_2"));
    EXPECT_FALSE(window->isVisible());
    open();
    openList();
    EXPECT_TRUE(visible("tlbCancelWatchSur"));
}

TEST_F(DetailList, ShowsTheLocationOfTheTwoTexts) {
    clickLocation(1, 1);
    typeAddress("1", "2");
    ASSERT_TRUE(press("key_Akcept"));
    ASSERT_EQ(list()->itemCount(), 1);
    EXPECT_EQ(list()->item(1)->subItem(list()->headerCount() - 1), QStringLiteral("OL-HY-046"));
}

TEST_F(DetailList, TextsThatAreNoNumbersOfAtLeastOneOpenNothing) {
    clickLocation(1, 1);
    warehouse.server.clearTrace();
    const QList<std::pair<const char*, const char*>> wrong = {{"", "1"},  {"1", ""},  {"x", "1"}, {"1", "x"},
                                                              {"0", "1"}, {"1", "0"}, {"-1", "1"}};
    for (const auto& [shelf, position] : wrong) {
        typeAddress(shelf, position);
        ASSERT_TRUE(press("key_Akcept"));
        EXPECT_FALSE(visible("frmWathLocationShiftItem")) << shelf << "/" << position;
    }
    EXPECT_TRUE(warehouse.batches().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(DetailList, ANumberBeyond16BitsIsReported) {
    clickLocation(1, 1);
    typeAddress("40000", "1");
    ASSERT_TRUE(press("key_Akcept"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("frmMagWatchDetal - tlbWatchFullSurLocation_ButtonClick"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(6));
    EXPECT_FALSE(visible("frmWathLocationShiftItem"));
}

TEST_F(DetailList, AStandBelowOneOpensNothing) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Location set LocationName = N'6_1_1_1_LA_7'"),
         QStringLiteral("insert into kolv_mag_Stand (Rank,Stand,ShelfCount) values (6,0,1)"),
         QStringLiteral("insert into kolv_mag_Location (Rank,Stand,Shelf,Location,LocationName,LocationIcon) "
                        "values (6,0,1,1,N'6_1_1_1_LA_7',N'x.ico')")}));
    window->close();
    open(6, 0);
    clickLocation(1, 1);
    warehouse.server.clearTrace();
    ASSERT_TRUE(press("key_Akcept"));
    EXPECT_FALSE(visible("frmWathLocationShiftItem"));
    EXPECT_TRUE(warehouse.batches().isEmpty());
}

TEST_F(DetailList, AFailingProcedureIsReportedAndTheListOpensEmpty) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_Watch_Item_On_Location")}));
    openList();
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages().at(0).Title, QStringLiteral("Error - clsMagWatchDetal [EcexProcedure]"));
    EXPECT_EQ(messages.messages().at(1).Title, QStringLiteral("Error - modListBox [FilleListView]"));
    EXPECT_TRUE(visible("frmWathLocationShiftItem"));
    EXPECT_EQ(list()->itemCount(), 0);
}

TEST_F(DetailList, AListOfTooFewColumnsFailsUnderItsOwnName) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("drop procedure kolv_mag_Watch_Item_On_Location"),
         QStringLiteral("create procedure kolv_mag_Watch_Item_On_Location @Rank smallint, @Stand smallint, "
                        "@Shelf smallint, @Location smallint, @UserSign smallint, @Aplication nvarchar(1), "
                        "@Phase smallint, @Operation nvarchar(1) as begin set nocount on; select N'x' as "
                        "[Kod:1000;0]; return 0; end")}));
    openList();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchDetal - FiilItemOnLocation"));
    EXPECT_TRUE(visible("frmWathLocationShiftItem"));
}

TEST_F(DetailList, AFreshWindowForgetsTheOldList) {
    openList();
    window->close();
    open();
    EXPECT_FALSE(visible("frmWathLocationShiftItem"));
    EXPECT_EQ(list()->itemCount(), 0);
    EXPECT_EQ(list()->headerCount(), 0);
}

}  // namespace
}  // namespace regalon
