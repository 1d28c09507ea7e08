#include "platform/RunTimeError.h"
#include "support/Events.h"
#include "views/WatchWindow.h"

#include <QAction>

namespace regalon {
namespace {

using test::WatchWindow;

/// The list of all materials of a location; the location 1 2 1 1 holds two materials of a group and a
/// stranger.
class LocationList : public WatchWindow {
protected:
    void SetUp() override {
        WatchWindow::SetUp();
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("delete from kolv_mag_Location_Item where Rank = 1 and Stand = 2"),
             QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,"
                            "StatLocation_cmb) values (1,2,1,1,N'SUR-77',N'Śruba',N'1'),"
                            "(1,2,2,1,N'SUR-78',N'Nakrętka',N'1')"),
             QStringLiteral("drop procedure kolv_mag_Watch_Detal_Item_On_Location"),
             QStringLiteral("create procedure kolv_mag_Watch_Detal_Item_On_Location @Rank smallint, @Stand "
                            "smallint, @Shelf "
                            "smallint, @Location smallint, @UserSign smallint, @Aplication nvarchar(1), "
                            "@Phase smallint as begin "
                            "set nocount on; if @Phase <> 1 return 0; "
                            "select N'półka ' + cast(@Shelf as nvarchar(5)) as [Kod:1700;0], N'A' as "
                            "[St.:500;2], N'g' as "
                            "[Grupa:1000;0], 1 as xxx_Key union all select N'drugi', N'B', N'', 2 union all "
                            "select N'trzeci', N'C', N'', 3; return 0; end")}))
            << qPrintable(warehouse.why());
        open();
    }

    QAction* button(int number) const { return toolBar("tlbWatchFullSurLocation")->button(number); }
    bool press(const char* key) { return test::clickToolButton(window.get(), QString::fromLatin1(key)); }
    void openList() {
        clickLocation(QStringLiteral("1_2_1_1"));
        ASSERT_TRUE(press("key_Akcept"));
    }
    void fillBoxes(const QString& rank, const QString& stand, const QString& shelf, const QString& location) {
        box("txtRank")->setText(rank);
        box("txtStand")->setText(stand);
        box("txtShelf")->setText(shelf);
        box("txtLocation")->setText(location);
    }
};

TEST_F(LocationList, OpensWithBothPhasesOfTheProcedure) {
    clickLocation(QStringLiteral("1_2_1_1"));
    warehouse.server.clearTrace();
    ASSERT_TRUE(press("key_Akcept"));
    EXPECT_EQ(
        warehouse.batches(),
        QStringList({QStringLiteral("exec kolv_mag_Watch_Detal_Item_On_Location 1,2,1,1,N'1',N'P',0"),
                     QStringLiteral("exec kolv_mag_Watch_Detal_Item_On_Location 1,2,1,1,N'1',N'P',1")}));
    EXPECT_TRUE(frame("frmWathLocationShiftItem")->isVisible());
    EXPECT_TRUE(list()->isVisible());
    EXPECT_FALSE(button(1)->isEnabled());
    EXPECT_TRUE(button(2)->isEnabled());
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(LocationList, NumbersItsRowsAndSortsByTheNumber) {
    openList();
    ASSERT_EQ(list()->headerCount(), 4);
    EXPECT_EQ(list()->headerText(1), QStringLiteral("Lp"));
    EXPECT_EQ(list()->headerWidth(1), 700);
    EXPECT_EQ(list()->headerText(2), QStringLiteral("Kod"));
    EXPECT_TRUE(list()->sorted());
    EXPECT_EQ(list()->sortKey(), 0);
    ASSERT_EQ(list()->itemCount(), 3);
    EXPECT_EQ(list()->item(1)->text(), QStringLiteral("1"));
    EXPECT_EQ(list()->item(3)->text(), QStringLiteral("3"));
    EXPECT_EQ(list()->item(3)->subItem(1), QStringLiteral("półka 1"));
}

TEST_F(LocationList, MarksTheRowsByTheVisibleColumnBeforeTheLast) {
    openList();
    ASSERT_EQ(list()->itemCount(), 3);
    EXPECT_EQ(list()->item(3)->smallIcon(), 42);
    EXPECT_EQ(list()->item(2)->smallIcon(), 40);
    EXPECT_EQ(list()->item(1)->smallIcon(), 0);
}

TEST_F(LocationList, WhileOpenAClickOnALocationChangesOnlyTheFourTexts) {
    openList();
    const QString before = label("lblObjectClick")->text();
    warehouse.server.clearTrace();
    clickLocation(QStringLiteral("1_2_2_1"));
    EXPECT_EQ(address(), QStringLiteral("1 2 2 1"));
    EXPECT_EQ(label("lblObjectClick")->text(), before);
    EXPECT_TRUE(button(2)->isEnabled());
    EXPECT_TRUE(warehouse.batches().isEmpty());
}

TEST_F(LocationList, WhileOpenAClickOnAStandDoesNothing) {
    openList();
    const QString before = label("lblObjectClick")->text();
    clickStand(QStringLiteral("1_2"));
    EXPECT_EQ(label("lblObjectClick")->text(), before);
    EXPECT_EQ(address(), QStringLiteral("1 2 1 1"));
    EXPECT_TRUE(details.isEmpty());
}

TEST_F(LocationList, ClosedAndOpenedAgainItShowsTheLocationPickedMeanwhile) {
    openList();
    clickLocation(QStringLiteral("1_2_2_1"));
    ASSERT_TRUE(press("key_Cancel"));
    EXPECT_FALSE(frame("frmWathLocationShiftItem")->isVisible());
    EXPECT_TRUE(button(1)->isEnabled());
    EXPECT_FALSE(button(2)->isEnabled());
    ASSERT_TRUE(press("key_Akcept"));
    EXPECT_EQ(list()->item(3)->subItem(1), QStringLiteral("półka 2"));
}

TEST_F(LocationList, AfterAStandTheFourTextsOpenNothing) {
    clickLocation(QStringLiteral("1_2_1_1"));
    clickStand(QStringLiteral("1_2"));
    EXPECT_EQ(address(), QStringLiteral("-1 -1 -1 -1"));
    warehouse.server.clearTrace();
    button(1)->trigger();
    EXPECT_FALSE(frame("frmWathLocationShiftItem")->isVisible());
    EXPECT_TRUE(warehouse.batches().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(LocationList, TextsThatAreNoNumbersOfAtLeastOneOpenNothing) {
    clickLocation(QStringLiteral("1_2_1_1"));
    warehouse.server.clearTrace();
    for (const char* wrong : {"", "x", "0", "-1", "1.5"}) {
        fillBoxes(QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("1"), QString::fromLatin1(wrong));
        ASSERT_TRUE(press("key_Akcept"));
        EXPECT_FALSE(frame("frmWathLocationShiftItem")->isVisible()) << wrong;
    }
    EXPECT_TRUE(warehouse.batches().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(LocationList, ATypedAddressIsTaken) {
    clickLocation(QStringLiteral("1_2_1_1"));
    fillBoxes(QStringLiteral("1"), QStringLiteral("2"), QString(), QStringLiteral("1"));
    test::type(box("txtShelf"), QStringLiteral("2"));
    ASSERT_TRUE(press("key_Akcept"));
    EXPECT_EQ(list()->item(3)->subItem(1), QStringLiteral("półka 2"));
}

TEST_F(LocationList, ANumberBeyond16BitsIsReported) {
    clickLocation(QStringLiteral("1_2_1_1"));
    fillBoxes(QStringLiteral("1"), QStringLiteral("2"), QStringLiteral("1"), QStringLiteral("40000"));
    ASSERT_TRUE(press("key_Akcept"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - tlbWatchFullSurLocation_ButtonClick"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(6));
    EXPECT_FALSE(frame("frmWathLocationShiftItem")->isVisible());
}

TEST_F(LocationList, AFailingProcedureIsReportedAndTheListOpensEmpty) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_Watch_Detal_Item_On_Location")}));
    openList();
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages().at(0).Title, QStringLiteral("Error - clsMagWatch [EcexProcedure]"));
    EXPECT_EQ(messages.messages().at(1).Title, QStringLiteral("Error - modListBox [FilleListView]"));
    EXPECT_TRUE(frame("frmWathLocationShiftItem")->isVisible());
    EXPECT_EQ(list()->itemCount(), 0);
}

TEST_F(LocationList, AnAnswerWithoutAColumnBeforeTheLastIsReportedUnderTheShiftWindowsName) {
    // The list has "Lp" and one column at the most: no row has a text that could mark it.
    for (const char* columns : {"N'x' as [Kod:1700;0], 1 as xxx_Key", "1 as xxx_Key"}) {
        messages.clear();
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("drop procedure kolv_mag_Watch_Detal_Item_On_Location"),
             QStringLiteral("create procedure kolv_mag_Watch_Detal_Item_On_Location @Rank smallint, @Stand "
                            "smallint, @Shelf smallint, @Location smallint, @UserSign smallint, @Aplication "
                            "nvarchar(1), @Phase smallint as begin set nocount on; select %1; return 0; end")
                 .arg(QString::fromLatin1(columns))}))
            << qPrintable(warehouse.why());
        openList();
        ASSERT_EQ(messages.count(), 1) << columns;
        EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - FiilItemOnLocation"));
        EXPECT_EQ(messages.last().Flags, 4112);
        EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::InvalidPropertyValue));
        EXPECT_EQ(list()->itemCount(), 1);
        EXPECT_TRUE(frame("frmWathLocationShiftItem")->isVisible());
        ASSERT_TRUE(press("key_Cancel"));
        list()->clearHeaders();
    }
}

class DemoLocationList : public WatchWindow {};

TEST_F(DemoLocationList, CoversNoLocationOfAnotherRowThanTheLowest) {
    open();
    const QRectF panel = frame("frmWathLocationShiftItem")->geometry();
    int covered = 0;
    canvas()->imglocation().forEach([&](const PictureItem& location) {
        if (location.index() == 0 || !location.sceneBoundingRect().intersects(panel))
            return;
        ++covered;
        EXPECT_TRUE(location.tag().startsWith(QStringLiteral("4_"))) << qPrintable(location.tag());
    });
    EXPECT_GT(covered, 0);
}

TEST_F(DemoLocationList, AMultiLocationOfTheDemoListsItsMaterials) {
    const QString multi =
        warehouse.value(QStringLiteral("select min(L.LocationName) from kolv_mag_Location L inner join "
                                       "kolv_mag_Location_Item I on I.Rank = L.Rank "
                                       "and I.Stand = L.Stand and I.Shelf = L.Shelf and I.Location = "
                                       "L.Location where I.StatLocation_cmb = N'1'"));
    ASSERT_NE(multi, QStringLiteral("NULL"));
    open();
    clickLocation(multi.section(QLatin1Char('_'), 0, 3));
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Akcept")));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_GE(list()->itemCount(), 1);
    bool marked = false;
    for (int row = 1; row <= list()->itemCount(); ++row)
        marked = marked || list()->item(row)->smallIcon() == 42 || list()->item(row)->smallIcon() == 40;
    EXPECT_TRUE(marked);
}

}  // namespace
}  // namespace regalon
