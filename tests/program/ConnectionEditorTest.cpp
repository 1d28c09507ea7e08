// The editor of the connection file, filled in by keys.
#include "program/ProgramTest.h"

#include <QFile>
#include <QFileInfo>

namespace regalon::test {
namespace {

const QString editor = QStringLiteral("Konfiguracja pliku połączenia");
const QString notice = QStringLiteral("Komunikat");

class ConnectionEditorWindow : public ProgramTest {
protected:
    void openEditor() {
        ASSERT_NO_FATAL_FAILURE(chooseInMenu(QStringLiteral("alt+u")));
        window = client->turnTo(editor);
        ASSERT_FALSE(window.isEmpty());
        display.settledPicture();
    }

    /// A point of the window; twips.
    QPoint at(int left, int top) const {
        return display.geometry(window).topLeft() + QPoint(left / 15, top / 15);
    }

    void fill(int row, const QString& text) const {
        display.click(at(2400, 180 + 495 * row + 180));
        display.key(QStringLiteral("ctrl+a"));
        display.type(text);
    }

    QString target() const { return inDriveC(QStringLiteral("Regalon/connect.txt")); }

    QString window;
};

TEST_F(ConnectionEditorWindow, WritesAFileForItsOwnerAloneThatTheNextStartReads) {
    // The login fails for want of a file; the editor is how the program gets one.
    ASSERT_TRUE(client->start({}));
    ASSERT_NO_FATAL_FAILURE(answer(QStringLiteral("Błąd logowania"), QStringLiteral("Return")));
    ASSERT_FALSE(client->mainWindow().isEmpty());
    ASSERT_NO_FATAL_FAILURE(openEditor());
    fill(1, warehouse.server());
    fill(2, LocalWarehouse::login());
    fill(3, LocalWarehouse::password());
    fill(4, LocalWarehouse::database());
    keep(display.settledPicture(), QStringLiteral("editor"));
    display.key(QStringLiteral("alt+z"));
    ASSERT_NO_FATAL_FAILURE(answer(notice, QStringLiteral("alt+t")));
    ASSERT_TRUE(eventually([this] { return QFileInfo::exists(target()); }));
    ASSERT_NO_FATAL_FAILURE(answer(notice, QStringLiteral("Return")));
    ASSERT_TRUE(client->windowGone(editor));
    EXPECT_EQ(QFileInfo(target()).permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
    closeFrame();
    answerExit(true);
    ASSERT_EQ(client->exitCode(), 0);

    client = newClient();
    ASSERT_TRUE(client->start({}));
    ASSERT_FALSE(client->mainWindow().isEmpty());
    EXPECT_EQ(sessions(), 2);
    EXPECT_EQ(leave(), 0);
}

TEST_F(ConnectionEditorWindow, WritesNothingOnNo) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openEditor());
    fill(4, QStringLiteral("INNA"));
    display.key(QStringLiteral("alt+z"));
    ASSERT_NO_FATAL_FAILURE(answer(notice, QStringLiteral("alt+n")));
    EXPECT_TRUE(client->windowGone(editor));
    EXPECT_FALSE(QFileInfo::exists(target()));
}

TEST_F(ConnectionEditorWindow, ReadsTheListOfDatabasesFromTheServer) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openEditor());
    warehouse.clearTrace();
    const QImage before = display.settledPicture();
    // The arrow of the combo.
    display.click(at(1755 + 3465 - 150, 180 + 495 * 4 + 180));
    EXPECT_TRUE(traced(QStringLiteral("select name from sysdatabases order by name")));
    const QRect below = QRect(at(1755, 180 + 495 * 5), QSize(231, 30));
    EXPECT_FALSE(display.changedPicture(before, below).isNull());
    keep(display.settledPicture(), QStringLiteral("editor-databases"));
    // The connection of the list does not stay.
    EXPECT_TRUE(eventually([this] { return sessions() == 2; }));
    display.key(QStringLiteral("Escape"));
    display.key(QStringLiteral("Escape"));
    EXPECT_TRUE(client->windowGone(editor));
}

TEST_F(ConnectionEditorWindow, TellsOfAWrongPasswordWhenTheListDropsDown) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openEditor());
    fill(3, QStringLiteral("zle"));
    display.click(at(1755 + 3465 - 150, 180 + 495 * 4 + 180));
    ASSERT_NO_FATAL_FAILURE(answer(notice, QStringLiteral("Return")));
    EXPECT_TRUE(client->running());
}

}  // namespace
}  // namespace regalon::test
