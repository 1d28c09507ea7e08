// What users of different rights can open.
#include "program/ProgramTest.h"

#include <QFile>

namespace regalon::test {
namespace {

const QString editor = QStringLiteral("Konfiguracja pliku połączenia");

class UserOfTheProgram : public ProgramTest {
protected:
    void startAs(int user) {
        ASSERT_TRUE(client->start({u'-' + warehouse.connectFile(), u'-' + QString::number(user)}));
        ASSERT_FALSE(client->mainWindow().isEmpty());
        ASSERT_TRUE(display.activate(client->mainWindow()));
    }
    /// The menu of the warehouse, open, kept for people to look at.
    void keepMenu(const QString& name) {
        display.key(QStringLiteral("alt+a"));
        keep(display.settledPicture(), name);
        display.key(QStringLiteral("Escape"), 2);
    }
    QStringList titles() const {
        display.settledPicture();
        return display.titles(client->process());
    }
    /// Opens the menu of the settings and takes its item, as far as that goes.
    void askForTheEditor() {
        display.key(QStringLiteral("alt+u"));
        display.key(QStringLiteral("Return"));
    }
};

TEST_F(UserOfTheProgram, WhoOnlyLooksComesToTheWarehouseViewAlone) {
    ASSERT_NO_FATAL_FAILURE(startAs(4));
    keepMenu(QStringLiteral("menu-of-user-4"));
    // The items behind the first one are off, so that the arrow comes back to it.
    ASSERT_NO_FATAL_FAILURE(openPlan(3));
    const Spot spot = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1'"));
    warehouse.clearTrace();
    click(spot);
    EXPECT_TRUE(traced(materialStatement(spot)));
    askForTheEditor();
    EXPECT_EQ(titles(), QStringList(Client::mainTitle()));
    EXPECT_EQ(leave(), 0);
}

TEST_F(UserOfTheProgram, WhoHasEveryRightComesToTheSettings) {
    ASSERT_NO_FATAL_FAILURE(startAs(1));
    keepMenu(QStringLiteral("menu-of-user-1"));
    askForTheEditor();
    ASSERT_FALSE(client->turnTo(editor).isEmpty());
    answer(editor, QStringLiteral("Escape"));
    EXPECT_EQ(leave(), 0);
}

TEST_F(UserOfTheProgram, WhomTheTablesDoNotKnowComesToTheSettings) {
    ASSERT_NO_FATAL_FAILURE(startAs(5));
    askForTheEditor();
    ASSERT_FALSE(client->turnTo(editor).isEmpty());
    answer(editor, QStringLiteral("Escape"));
    EXPECT_EQ(leave(), 0);
}

}  // namespace
}  // namespace regalon::test
