// Many copies of the program work on one database at once.
#include "program/ProgramTest.h"

namespace regalon::test {
namespace {

class SeveralClients : public ProgramTest {
protected:
    SeveralClients() : ProgramTest(QSize(2300, 900)) {}

    /// The plan inside a client's main window.
    Plan planOf(const Client& shown) {
        seePlan(display.geometry(shown.mainWindow()));
        return plan;
    }

    /// Moves every package of a location to another one, through a program that is not ours.
    void movePackages(const Spot& from, const Spot& to) const {
        QProcess process;
        process.start(QStringLiteral("tsql"),
                      {QStringLiteral("-H"), QStringLiteral("127.0.0.1"), QStringLiteral("-p"),
                       QString::number(warehouse.port()), QStringLiteral("-U"), LocalWarehouse::login(),
                       QStringLiteral("-P"), LocalWarehouse::password(), QStringLiteral("-D"),
                       LocalWarehouse::database(), QStringLiteral("-o"), QStringLiteral("q")});
        process.write(QStringLiteral("update Kolv_Mag_BarCode_Sur set Rank = %1, Stand = %2, Shelf = %3, "
                                     "Location = %4 where %5\ngo\nexit\n")
                          .arg(to.rank)
                          .arg(to.stand)
                          .arg(to.shelf)
                          .arg(to.location)
                          .arg(from.key())
                          .toUtf8());
        ASSERT_TRUE(process.waitForFinished());
        ASSERT_EQ(process.exitCode(), 0) << process.readAll().constData();
    }

    /// Whether a client's plan shows a location with the icon of a file.
    bool shows(const Plan& where, const Spot& spot, const QString& file) const {
        return showsIcon(display.settledPicture(), where, warehouse, spot, file);
    }
    void refresh(const Client& shown, const Plan& where) {
        display.activate(shown.mainWindow());
        plan = where;
        clickToolBar(2);
    }
};

TEST_F(SeveralClients, EachShowsThePlanAndTheOtherGoesOnWhenOneEnds) {
    const Spot spot = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1'"));
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openPlan());
    std::unique_ptr<Client> first = std::move(client);
    client = newClient();
    ASSERT_NO_FATAL_FAILURE(startClient());
    EXPECT_EQ(sessions(), 4);
    ASSERT_NO_FATAL_FAILURE(openPlan());
    EXPECT_EQ(leave(), 0);
    EXPECT_TRUE(eventually([this] { return sessions() == 2; }));

    client = std::move(first);
    display.activate(client->mainWindow());
    ASSERT_NO_FATAL_FAILURE(seePlan());
    warehouse.clearTrace();
    click(spot);
    EXPECT_TRUE(traced(materialStatement(spot)));
    EXPECT_EQ(leave(), 0);
}

TEST_F(SeveralClients, AMoveOfStockByAnotherProcessShowsInAPlanAfterItsRefresh) {
    const QString single = QStringLiteral(
        "ISNULL(A.StatLocation_cmb,N'0') = N'0' and A.Rank = %1 and exists "
        "(select 1 from kolv_mag_Location L where L.Rank = A.Rank and "
        "L.Stand = A.Stand and L.Shelf = A.Shelf and L.Location = A.Location "
        "and L.LocationPercent %2)");
    const Spot emptied = spotWhere(warehouse, single.arg(1).arg(QStringLiteral("between 30 and 90")));
    const Spot filled = spotWhere(warehouse, single.arg(3).arg(QStringLiteral("= 0")));
    const QString oldIcon = iconFile(warehouse, emptied);
    const QString oldEmpty = iconFile(warehouse, filled);
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openPlan());
    const std::unique_ptr<Client> first = std::move(client);
    const Plan firstPlan = planOf(*first);
    ASSERT_TRUE(shows(firstPlan, emptied, oldIcon));
    ASSERT_TRUE(shows(firstPlan, filled, oldEmpty));
    client = newClient();
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openPlan());
    const Plan secondPlan = planOf(*client);

    ASSERT_NO_FATAL_FAILURE(movePackages(emptied, filled));
    ASSERT_NO_FATAL_FAILURE(refresh(*client, secondPlan));
    EXPECT_TRUE(eventually([&] { return iconFile(warehouse, emptied) != oldIcon; }));
    const QString newIcon = iconFile(warehouse, emptied);
    EXPECT_TRUE(newIcon.endsWith(QStringLiteral("_P_00.ico"))) << qPrintable(newIcon);
    const QString newFill = iconFile(warehouse, filled);
    EXPECT_NE(newFill, oldEmpty);
    EXPECT_TRUE(eventually([&] { return shows(secondPlan, emptied, newIcon); }));
    EXPECT_TRUE(shows(secondPlan, filled, newFill));

    // The windows lie one over the other.
    display.activate(first->mainWindow());
    EXPECT_TRUE(eventually([&] { return shows(firstPlan, emptied, oldIcon); })) << "not refreshed yet";
    ASSERT_NO_FATAL_FAILURE(refresh(*first, firstPlan));
    EXPECT_TRUE(eventually([&] { return shows(firstPlan, emptied, newIcon); }));
    EXPECT_TRUE(shows(firstPlan, filled, newFill));
    keep(display.settledPicture(), QStringLiteral("two-clients-after-a-move"));
}

}  // namespace
}  // namespace regalon::test
