// What may go wrong at a desk: the server goes away, icons are missing or broken, data has holes.
#include "program/ProgramTest.h"

#include <QDir>
#include <QFile>

namespace regalon::test {
namespace {

class Trouble : public ProgramTest {
protected:
    QString icons() const { return inDriveC(QStringLiteral("Regalon/Ikony")); }

    /// Answers every message until the main window is alone; how many there were.
    int dismissAll() const {
        int count = 0;
        const auto alone = [&] {
            QStringList titles = display.titles(client->process());
            titles.removeAll(Client::mainTitle());
            if (titles.isEmpty()) {
                return !client->running() || display.windows(client->process()).size() == 1;
            }
            ++count;
            client->answer(titles.first(), QStringLiteral("Return"));
            return false;
        };
        EXPECT_TRUE(eventually(alone));
        return count;
    }
};

TEST_F(Trouble, AServerKilledUnderAnOpenPlanIsToldAndTheWindowStaysOfUse) {
    const Spot spot = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1'"));
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openPlan());
    warehouse.kill();
    const QImage before = display.settledPicture();
    click(spot);
    EXPECT_EQ(client->messageTitle(), QStringLiteral("Error - clsMagWatch [GetParamLocalization]"));
    keep(display.settledPicture(), QStringLiteral("server-gone"));
    dismissAll();
    // The next click tells again, and the program ends as ever.
    click(spot);
    EXPECT_EQ(client->messageTitle(), QStringLiteral("Error - clsMagWatch [GetParamLocalization]"));
    dismissAll();
    EXPECT_EQ(display.settledPicture().copy(plan.hall()), before.copy(plan.hall()));
    EXPECT_EQ(leave(), 0);
}

TEST_F(Trouble, AMissingIconFolderIsToldAndThePlanStands) {
    ASSERT_TRUE(QFile::remove(icons()));
    ASSERT_TRUE(
        warehouse.run(QStringLiteral("delete from kolv_mag_Location where not (Rank = 1 and Stand = 1)")));
    ASSERT_TRUE(
        warehouse.run(QStringLiteral("delete from kolv_mag_Stand where not (Rank = 1 and Stand = 1)")));
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(chooseInMenu(QStringLiteral("alt+a")));
    EXPECT_EQ(client->messageTitle(), QStringLiteral("frmMagWatch - GenerateBookstand"));
    EXPECT_EQ(dismissAll(), 1);
    ASSERT_NO_FATAL_FAILURE(seePlan());
    EXPECT_EQ(leave(), 0);
}

TEST_F(Trouble, ABrokenIconIsToldAndTheOtherStandsAreDrawn) {
    const QString source = QFile::symLinkTarget(icons());
    ASSERT_TRUE(QFile::remove(icons()));
    ASSERT_TRUE(QDir().mkpath(icons()));
    const QStringList names = QDir(source).entryList(QDir::Files);
    for (const QString& name : names) {
        ASSERT_TRUE(QFile::copy(source + u'/' + name, icons() + u'/' + name));
    }
    QFile broken(icons() + QStringLiteral("/R1_S_02.ico"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly | QIODevice::Truncate));
    broken.write("no picture");
    broken.close();
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(chooseInMenu(QStringLiteral("alt+a")));
    EXPECT_EQ(client->messageTitle(), QStringLiteral("frmMagWatch - GenerateBookstand"));
    EXPECT_EQ(dismissAll(), 1);
    ASSERT_NO_FATAL_FAILURE(seePlan());
    keep(display.settledPicture(), QStringLiteral("broken-icon"));
    const Spot spot = spotWhere(warehouse, QStringLiteral("A.Rank = 4"));
    click(spot);
    EXPECT_TRUE(traced(materialStatement(spot)));
    EXPECT_EQ(leave(), 0);
}

TEST_F(Trouble, AnEmptyWarehouseShowsTheHall) {
    ASSERT_TRUE(warehouse.run(QStringLiteral("delete from kolv_mag_Location")));
    ASSERT_TRUE(warehouse.run(QStringLiteral("delete from kolv_mag_Stand")));
    ASSERT_NO_FATAL_FAILURE(startClient());
    warehouse.clearTrace();
    ASSERT_NO_FATAL_FAILURE(openPlan());
    EXPECT_EQ(display.titles(client->process()), QStringList(Client::mainTitle()));
    QStringList trace = warehouse.trace();
    trace.removeIf([](const QString& entry) { return entry.startsWith(QStringLiteral("sp_sproc_columns")); });
    // Three empty texts are saved, and there are no icons to ask for.
    EXPECT_EQ(trace,
              QStringList({QStringLiteral("select ID,Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,"
                                          "StandTop,StandVisable,StandEnable,StandFrameArround  from "
                                          "kolv_mag_Stand order by Rank,Stand"),
                           QStringLiteral("kolv_mag_SaveLocationIDTab\t?=\t?=\t?=\t?=NULL")}));
    keep(display.settledPicture(), QStringLiteral("empty-warehouse"));
    EXPECT_EQ(leave(), 0);
}

}  // namespace
}  // namespace regalon::test
