// Starts that go well and starts that do not. After a failed login the window must stay of use: its editor of
// the connection file is the way out.
#include "program/ProgramTest.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

namespace regalon::test {
namespace {

const QString noServer = QStringLiteral("Błąd logowania");
const QString refused = QStringLiteral("Logowanie...");
const QString anythingElse = QStringLiteral("frmLogin: Sub cmdOK_Click");
const QString editor = QStringLiteral("Konfiguracja pliku połączenia");

class Start : public ProgramTest {
protected:
    QString defaultFile() const { return inDriveC(QStringLiteral("Regalon/connect.txt")); }

    void write(const QString& file, const QByteArray& content) const {
        QFile target(file);
        ASSERT_TRUE(target.open(QIODevice::WriteOnly));
        ASSERT_EQ(target.write(content), content.size());
    }

    /// A start that tells of a failed login, then a window whose editor opens and which ends well.
    void expectFailedLogin(const QStringList& arguments, const QString& title) {
        ASSERT_TRUE(client->start(arguments));
        EXPECT_EQ(client->messageTitle(), title);
        const QStringList before = filesOfDriveC();
        ASSERT_NO_FATAL_FAILURE(answer(title, QStringLiteral("Return")));
        ASSERT_NO_FATAL_FAILURE(chooseInMenu(QStringLiteral("alt+u")));
        ASSERT_NO_FATAL_FAILURE(answer(editor, QStringLiteral("Escape")));
        closeFrame();
        answerExit(true);
        EXPECT_EQ(client->exitCode(), 0);
        EXPECT_EQ(filesOfDriveC(), before);
        EXPECT_EQ(sessions(), 0);
    }

    QStringList filesOfDriveC() const {
        return QDir(inDriveC(QStringLiteral("Regalon"))).entryList(QDir::Files);
    }
};

TEST_F(Start, LogsInWithTwoSessionsAndReadsTheSite) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    QStringList statements{QStringLiteral("select User_Code from OUSR where UserID = 1"),
                           QStringLiteral("select PathFile from Kolv_setup(nolock)"),
                           QStringLiteral("select PathBitmapMagSur from Kolv_setup(nolock)"),
                           QStringLiteral("select PathBitmapPlanProd from Kolv_setup(nolock)")};
    for (const char* form : {"frmSlownikGrupa", "frmMagCreate", "frmMagWatch", "MagSur"}) {
        statements += QStringLiteral("select LpShow from kolv_RightsName where FormName  = N'%1'")
                          .arg(QString::fromLatin1(form));
        statements += QStringLiteral("select RightsNumber,RightsUser  from kolv_user where UserID = 1");
    }
    EXPECT_EQ(warehouse.trace(), statements);
    EXPECT_EQ(sessions(), 2);
    display.activate(client->mainWindow());
    keep(display.settledPicture(), QStringLiteral("started"));
    EXPECT_EQ(leave(), 0);
}

TEST_F(Start, ReadsTheDefaultFileWithoutArguments) {
    writeConnectionFile(warehouse, defaultFile());
    ASSERT_TRUE(client->start({}));
    ASSERT_FALSE(client->mainWindow().isEmpty());
    EXPECT_EQ(sessions(), 2);
}

TEST_F(Start, TellsThatNoServerAnswersWithoutAConnectionFile) {
    ASSERT_NO_FATAL_FAILURE(expectFailedLogin({}, noServer));
}

TEST_F(Start, TellsThatNoServerAnswersOnAMissingFileOfTheCommandLine) {
    expectFailedLogin({u'-' + warehouse.folder() + QStringLiteral("/nowhere.txt"), QStringLiteral("-1")},
                      noServer);
}

TEST_F(Start, TellsThatNoServerAnswersWhenItIsDown) {
    ASSERT_TRUE(warehouse.stop());
    ASSERT_NO_FATAL_FAILURE(
        expectFailedLogin({u'-' + warehouse.connectFile(), QStringLiteral("-1")}, noServer));
}

TEST_F(Start, TellsThatTheLoginIsWrong) {
    writeConnectionFile(warehouse, warehouse.connectFile(), QStringLiteral("Zle-haslo"));
    ASSERT_NO_FATAL_FAILURE(
        expectFailedLogin({u'-' + warehouse.connectFile(), QStringLiteral("-1")}, refused));
}

TEST_F(Start, TellsWhatElseTheServerSays) {
    writeConnectionFile(warehouse, warehouse.connectFile(), LocalWarehouse::password(),
                        QStringLiteral("NIE_MA"));
    ASSERT_NO_FATAL_FAILURE(
        expectFailedLogin({u'-' + warehouse.connectFile(), QStringLiteral("-1")}, anythingElse));
}

TEST_F(Start, SurvivesEveryKindOfConnectionFile) {
    QByteArray garbage(1 << 20, '\0');
    QRandomGenerator random(7);
    for (char& byte : garbage) {
        byte = static_cast<char>(random.bounded(256));
    }
    QFile file(warehouse.connectFile());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray good = file.readAll();
    for (const QByteArray& content :
         {QByteArray(), QByteArray("QX"), good.left(20), QByteArray(5000, 'Q') + "\r\n", garbage}) {
        write(warehouse.connectFile(), content);
        client = newClient();
        ASSERT_NO_FATAL_FAILURE(
            expectFailedLogin({u'-' + warehouse.connectFile(), QStringLiteral("-1")}, noServer));
    }
}

}  // namespace
}  // namespace regalon::test
