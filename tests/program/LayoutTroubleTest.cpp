// The server goes away while a manager lays stands out.
#include "common/DbConnection.h"
#include "program/LayoutDesk.h"
#include "program/Tables.h"

namespace regalon::test {
namespace {

constexpr int kSaveStand = 2;
constexpr int kRemoveStand = 3;

/// A transaction of another program that has written and goes on: who reads is answered, who writes waits.
class BusyWriter {
public:
    explicit BusyWriter(const LocalWarehouse& warehouse) {
        m_connection.Open(warehouse.connectionString());
        m_connection.Execute(
            QStringLiteral("begin transaction; update kolv_mag_Rank set RankName = RankName"));
    }

private:
    DbConnection m_connection;
};

class LayoutTrouble : public LayoutDesk {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(LayoutDesk::SetUp());
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openEditor());
    }

    void defineStand() {
        choose(kRank, 1);
        chooseLast(kStand);
        chooseLast(kShelf);
        enter(countOfShelf(1), QStringLiteral("2"));
        enter(kIconName, QStringLiteral("R1_S_01.ico"));
        enter(kLeft, QStringLiteral("2000"));
        enter(kTop, QStringLiteral("2500"));
    }
    /// The part of the form that a text cursor does not blink in.
    QRect choices() const { return {at({StandFrame, 30, 30}), at({StandFrame, 5400, 2000})}; }

    /// Presses a button whose check passes and whose call that changes waits, and ends the server meanwhile.
    void loseServerBetween(int button, const QString& check, const QString& change, const QString& routine) {
        const BusyWriter writer(warehouse);
        warehouse.clearTrace();
        press(kStandBar, button);
        if (button == kRemoveStand) {
            ASSERT_NO_FATAL_FAILURE(answer(messageTitle(), QStringLiteral("Return")));
        }
        ASSERT_TRUE(called(change));
        EXPECT_EQ(calls(check).size(), 1);
        warehouse.kill();
        expectFailures({routine});
    }
    /// The failures are told once each, and the window stays.
    void expectFailures(const QStringList& routines) {
        for (const QString& routine : routines) {
            const QString title = QStringLiteral("Error - clsMagCreate [%1]").arg(routine);
            ASSERT_EQ(client->messageTitle(), title);
            keep(display.settledPicture(), QStringLiteral("layout-server-gone-") + routine);
            ASSERT_NO_FATAL_FAILURE(answer(title, QStringLiteral("Return")));
        }
        EXPECT_EQ(display.titles(client->process()), QStringList(Client::mainTitle()));
    }
    void startServerAgain() {
        ASSERT_TRUE(warehouse.start({QStringLiteral("--port"), QString::number(warehouse.port())}))
            << qPrintable(warehouse.why());
    }
    void startClientAgain() {
        client = newClient();
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openEditor());
    }
};

TEST_F(LayoutTrouble, AServerGoneBetweenTheCheckAndTheChangeLeavesNothingHalfDoneAndTheManagerGoesOn) {
    const QStringList before = everyRow(warehouse);
    ASSERT_NO_FATAL_FAILURE(defineStand());
    const QImage filled = display.settledPicture().copy(choices());
    loseServerBetween(kSaveStand, QStringLiteral("kolv_mag_AddBookstandValidate"),
                      QStringLiteral("kolv_mag_AddBookstand"), QStringLiteral("AddBookStandToDB"));
    EXPECT_EQ(display.settledPicture().copy(choices()), filled) << "the form keeps what was entered";
    ASSERT_NO_FATAL_FAILURE(startServerAgain());
    EXPECT_EQ(everyRow(warehouse), before);

    // A lost connection stays lost: each call tells it again, and the program starts anew.
    press(kStandBar, kSaveStand);
    expectFailures({QStringLiteral("GetShelfCountOnStand"), QStringLiteral("AddBookStandValidate")});
    EXPECT_EQ(leave(), 0);
    ASSERT_NO_FATAL_FAILURE(startClientAgain());
    ASSERT_NO_FATAL_FAILURE(defineStand());
    press(kStandBar, kSaveStand);
    expectStands({QStringLiteral("1/1/Regał 1/R1_S_01.ico/1/2000/2500/Y/Y/Y/")});
    expectOnPlan(1);

    const QStringList saved = everyRow(warehouse);
    loseServerBetween(kRemoveStand, QStringLiteral("kolv_mag_RemoveBookstandValidate"),
                      QStringLiteral("kolv_mag_RemoveBookstand"), QStringLiteral("RemoveBookStandDB"));
    ASSERT_NO_FATAL_FAILURE(startServerAgain());
    EXPECT_EQ(everyRow(warehouse), saved);
    EXPECT_EQ(leave(), 0);
}

}  // namespace
}  // namespace regalon::test
