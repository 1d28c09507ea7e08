// The storekeeper's day: look at the plan, click on a location, look at the list of its materials.
#include "program/ProgramTest.h"

#include <QRect>

namespace regalon::test {
namespace {

class WarehouseView : public ProgramTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
        single = spotWhere(warehouse, QStringLiteral("A.ItemCode <> N'' and ISNULL(A.GroupSur,0) = 0 and "
                                                     "ISNULL(A.StatLocation_cmb,N'0') = N'0'"));
        several = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1'"));
        another = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1' and A.Rank > 2"));
        stand = standSpot(warehouse, 1, 2);
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openPlan());
        warehouse.clearTrace();
    }

    void clickAndRead(const Spot& spot) {
        const QImage before = display.settledPicture();
        click(spot);
        ASSERT_TRUE(traced(materialStatement(spot)));
        ASSERT_FALSE(display.changedPicture(before, plan.panel()).isNull());
    }

    void openList(const Spot& spot) {
        ASSERT_NO_FATAL_FAILURE(clickAndRead(spot));
        const QImage before = display.settledPicture();
        clickPanelBar(1);
        ASSERT_TRUE(traced(listStatement(spot, 1)));
        ASSERT_FALSE(display.changedPicture(before, plan.hall()).isNull());
    }

    Spot single;
    Spot several;
    Spot another;
    Spot stand;
};

TEST_F(WarehouseView, ShowsThePlanInsideTheWindowWithAnIconForEveryLocation) {
    const QImage picture = display.settledPicture();
    keep(picture, QStringLiteral("plan"));
    const QRect window = display.geometry(client->mainWindow());
    EXPECT_TRUE(window.contains(plan.hall()));
    EXPECT_TRUE(window.contains(plan.panel()));
    // Ground, frames, icons of every fill: a plan without its icons has a handful of colours.
    QSet<QRgb> colours;
    for (int y = plan.hall().top(); y < plan.hall().bottom(); ++y) {
        for (int x = plan.hall().left(); x < plan.hall().right(); ++x) {
            colours.insert(picture.pixel(x, y));
        }
    }
    EXPECT_GT(colours.size(), 50);
}

TEST_F(WarehouseView, TellsWhatLiesOnTheLocationThatIsClicked) {
    ASSERT_NO_FATAL_FAILURE(clickAndRead(single));
    EXPECT_EQ(warehouse.trace(), QStringList(materialStatement(single)));
    const QImage first = display.settledPicture();
    keep(first, QStringLiteral("location"));
    ASSERT_NO_FATAL_FAILURE(clickAndRead(several));
    EXPECT_EQ(warehouse.trace(), QStringList({materialStatement(single), materialStatement(several)}));
    keep(display.settledPicture(), QStringLiteral("location-of-several-materials"));
    ASSERT_NO_FATAL_FAILURE(clickAndRead(single));
    EXPECT_EQ(display.settledPicture().copy(plan.panel()), first.copy(plan.panel()));
}

TEST_F(WarehouseView, ListsTheMaterialsOfALocationAndReadsTheNextOneOnlyAfterClosing) {
    ASSERT_NO_FATAL_FAILURE(openList(several));
    EXPECT_EQ(warehouse.trace(), QStringList({materialStatement(several), listStatement(several, 0),
                                              listStatement(several, 1)}));
    const QImage opened = display.settledPicture();
    keep(opened, QStringLiteral("materials"));

    // The four numbers change and nothing is read.
    warehouse.clearTrace();
    const Spot visible =
        spotWhere(warehouse, QStringLiteral("A.Rank = 1 and A.StatLocation_cmb = N'1' and A.Stand > 3"));
    warehouse.clearTrace();
    click(visible);
    ASSERT_FALSE(display.changedPicture(opened, plan.panel()).isNull());
    EXPECT_EQ(warehouse.trace(), QStringList());

    const QImage before = display.settledPicture();
    clickPanelBar(2);
    ASSERT_FALSE(display.changedPicture(before, plan.hall()).isNull());
    clickPanelBar(1);
    ASSERT_TRUE(traced(listStatement(visible, 1)));
    EXPECT_EQ(warehouse.trace(), QStringList({listStatement(visible, 0), listStatement(visible, 1)}));
    keep(display.settledPicture(), QStringLiteral("materials-of-the-next-location"));
}

TEST_F(WarehouseView, AsksNothingForAStandWhileTheListIsOpen) {
    ASSERT_NO_FATAL_FAILURE(openList(several));
    const QImage opened = display.settledPicture();
    warehouse.clearTrace();
    click(stand);
    // A click that does something follows, so that the first one has been handled when it has.
    const Spot next = spotOf(warehouse, 1, 3, 1, 1);
    warehouse.clearTrace();
    click(next);
    ASSERT_FALSE(display.changedPicture(opened, plan.panel()).isNull());
    EXPECT_EQ(warehouse.trace(), QStringList());
    EXPECT_EQ(display.titles(client->process()), QStringList(Client::mainTitle()));
}

TEST_F(WarehouseView, OpensTheStandThatIsClickedBesideIt) {
    const QString title = QStringLiteral("Szczegóły regału");
    click(stand);
    EXPECT_TRUE(
        traced(QStringLiteral("select count(*) Location,max(Shelf) as Shelf from kolv_mag_Location "
                              "where  Stand = 2 AND Rank = 1")));
    ASSERT_EQ(client->messageTitle(), title);
    const QRect detail = display.geometry(client->window(title));
    EXPECT_EQ(detail.size(), QSize(536, 277));
    EXPECT_LT((detail.topLeft() - plan.at(stand.left, stand.top)).manhattanLength(), 60);
    const QImage opened = display.settledPicture();
    display.click(detail.topLeft() + QPoint(40, 140));
    EXPECT_TRUE(traced(QStringLiteral(" exec Kolv_mag_Param_Location 1,2,2,1")));
    EXPECT_FALSE(display.changedPicture(opened, detail).isNull());
    keep(display.settledPicture(), QStringLiteral("stand-detail"));
    display.click(detail.topLeft() + QPoint(508, 12));
    EXPECT_TRUE(client->windowGone(title));
}

TEST_F(WarehouseView, ReadsThePlanAnewByTheRefreshButton) {
    const int stands = countOf(warehouse, QStringLiteral("kolv_mag_Stand"));
    ASSERT_TRUE(
        warehouse.run(QStringLiteral("update kolv_mag_Stand set StandLeft = StandLeft + 300 "
                                     "where Rank = 5 and Stand = 3")));
    warehouse.clearTrace();
    const QImage before = display.settledPicture();
    clickToolBar(2);
    const QImage after = display.changedPicture(before, plan.hall());
    ASSERT_FALSE(after.isNull());
    QStringList trace = warehouse.trace();
    // The parameters of a procedure are asked for before its first call, and kept.
    trace.removeIf([](const QString& entry) { return entry.startsWith(QStringLiteral("sp_sproc_columns")); });
    // Fills, stands, the shelves of each stand, names, icons.
    ASSERT_EQ(trace.size(), stands + 4);
    EXPECT_EQ(trace.first(), QStringLiteral("Kolv_mag_Refresh_Percent_Location\t?=N"));
    EXPECT_EQ(trace.filter(QStringLiteral("select Shelf,count(*) as LocationCount")).size(), stands);
    EXPECT_TRUE(trace.at(stands + 2).startsWith(QStringLiteral("kolv_mag_SaveLocationIDTab")));
    EXPECT_TRUE(trace.last().startsWith(QStringLiteral(" select LocationName,LocationIcon")));
    keep(after, QStringLiteral("plan-refreshed"));
}

TEST_F(WarehouseView, GoesByItsExitButtonAndComesBackByTheMenu) {
    const QImage open = display.settledPicture();
    clickToolBar(1);
    ASSERT_FALSE(display.changedPicture(open, plan.hall()).isNull());
    EXPECT_FALSE(findPlan(display.settledPicture()).has_value());
    EXPECT_TRUE(client->running());
    warehouse.clearTrace();
    ASSERT_NO_FATAL_FAILURE(openPlan());
    EXPECT_TRUE(
        traced(QStringLiteral("select ID,Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,StandTop,"
                              "StandVisable,StandEnable,StandFrameArround  from kolv_mag_Stand order by "
                              "Rank,Stand")));
}

TEST_F(WarehouseView, StaysOneWindowWithItsStateWhenTheMenuIsUsedAgain) {
    ASSERT_NO_FATAL_FAILURE(clickAndRead(several));
    const QImage before = display.settledPicture();
    warehouse.clearTrace();
    ASSERT_NO_FATAL_FAILURE(openPlan());
    EXPECT_EQ(display.settledPicture().copy(plan.panel()), before.copy(plan.panel()));
    EXPECT_EQ(warehouse.trace(), QStringList());
}

}  // namespace
}  // namespace regalon::test
