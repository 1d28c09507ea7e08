// The files of a run: data source file, profile, language files.
#include "program/ProgramTest.h"

#include <QDir>
#include <QFile>

#include <csignal>

namespace regalon::test {
namespace {

class RunFiles : public ProgramTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
        for (const QString& folder : {temporary(), config(), languages()}) {
            ASSERT_TRUE(QDir().mkpath(folder));
        }
        renewClient();
    }
    void renewClient() {
        client = newClient();
        client->setEnvironment(QStringLiteral("TMPDIR"), temporary());
    }
    QString temporary() const { return warehouse.folder() + QStringLiteral("/tmp"); }
    QString config() const { return warehouse.folder() + QStringLiteral("/config/Kolvestra"); }
    QString languages() const { return inDriveC(QStringLiteral("Regalon/Languages")); }
    QString dsnName() const {
        return QStringLiteral("Regalon%1%2.dsn").arg(warehouse.server(), LocalWarehouse::database());
    }

    static void put(const QString& name, const QByteArray& bytes) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    static QByteArray content(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    static QStringList files(const QString& folder, const QString& filter) {
        return QDir(folder).entryList({filter}, QDir::Files, QDir::Name);
    }
    QStringList dsnFiles() const {
        return files(inDriveC(QStringLiteral("Regalon")), QStringLiteral("*.dsn"));
    }
    QByteArray dsnText() const {
        return "[ODBC]\r\nDRIVER=SQL Server\r\nUID=regalon\r\nNetwork=DBMSSOCN\r\nLANGUAGE=us_english\r\n"
               "DATABASE=MAGAZYN\r\nSERVER=" +
               warehouse.server().toLatin1() + "\r\n\r\n";
    }
    void startAndLeave() {
        renewClient();
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_EQ(leave(), 0);
    }
    /// Picks English by keys, the language whose file a site can replace.
    void chooseEnglish() {
        ASSERT_TRUE(display.activate(client->mainWindow()));
        display.key(QStringLiteral("alt+w"));
        display.key(QStringLiteral("a"));
        display.settledPicture();
    }
};

TEST_F(RunFiles, TheDataSourceFileIsThereWhileTheProgramRunsAndGoneBehindIt) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    EXPECT_EQ(dsnFiles(), QStringList(dsnName()));
    EXPECT_EQ(content(inDriveC(QStringLiteral("Regalon/") + dsnName())), dsnText());
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(dsnFiles(), QStringList());
}

TEST_F(RunFiles, TheDataSourceFileOfAKilledProgramIsReplacedByTheNextAndGoneBehindIt) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_EQ(::kill(static_cast<pid_t>(client->process()), SIGKILL), 0);
    EXPECT_EQ(client->exitCode(), -1);
    const QString left = inDriveC(QStringLiteral("Regalon/") + dsnName());
    ASSERT_EQ(content(left), dsnText());
    put(left, "of the run before\r\n");
    renewClient();
    ASSERT_NO_FATAL_FAILURE(startClient());
    EXPECT_EQ(dsnFiles(), QStringList(dsnName()));
    EXPECT_EQ(content(left), dsnText());
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(dsnFiles(), QStringList());
}

TEST_F(RunFiles, TheDataSourceFileLiesInTheFolderOfTheSettings) {
    const QString folder = warehouse.folder() + QStringLiteral("/dsn");
    ASSERT_TRUE(QDir().mkpath(folder));
    put(config() + QStringLiteral("/Regalon.conf"), "[Files]\nDsnFolder = " + folder.toUtf8() + "\n");
    ASSERT_NO_FATAL_FAILURE(startClient());
    EXPECT_EQ(files(folder, QStringLiteral("*")), QStringList(dsnName()));
    EXPECT_EQ(dsnFiles(), QStringList());
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(files(folder, QStringLiteral("*")), QStringList());
}

TEST_F(RunFiles, TheProfileIsCarriedOverRunAfterRunWhereLoginAndUserAreOne) {
    ASSERT_TRUE(warehouse.run(QStringLiteral("update OUSR set User_Code = N'regalon' where UserID = 1")))
        << qPrintable(warehouse.why());
    const QString file = temporary() + QStringLiteral("/regalon.ini");
    ASSERT_NO_FATAL_FAILURE(startAndLeave());
    EXPECT_EQ(content(file), "[Forms]\r\n[Grids]\r\n[MSFlex]\r\n[ExtraFilter]\r\n");
    const QByteArray profile =
        "; of the site\r\n[Forms]\r\nfrmMagWatch=0,0,15450,11400\r\n[Grids]\r\nlstItems=3-12:0100500020\r\n"
        "[MSFlex]\r\ngrd=01005\r\n[ExtraFilter]\r\nflt=2:za\xBF\xF3\xB3\xE6#\r\n[Other]\r\nx=1";
    put(file, profile);
    ASSERT_NO_FATAL_FAILURE(startAndLeave());
    EXPECT_EQ(content(file), profile);
    ASSERT_NO_FATAL_FAILURE(startAndLeave());
    EXPECT_EQ(content(file), profile);
    EXPECT_EQ(files(temporary(), QStringLiteral("*")), QStringList(QStringLiteral("regalon.ini")));
}

TEST_F(RunFiles, TheProfileIsLoadedUnderTheLoginAndSavedUnderTheUser) {
    const QByteArray profile =
        "[Forms]\r\nfrmMagWatch=0,0,15450,11400\r\n[Grids]\r\n[MSFlex]\r\n[ExtraFilter]\r\n";
    put(temporary() + QStringLiteral("/regalon.ini"), profile);
    ASSERT_NO_FATAL_FAILURE(startAndLeave());
    EXPECT_EQ(content(temporary() + QStringLiteral("/manager.ini")), profile);
    EXPECT_EQ(content(temporary() + QStringLiteral("/regalon.ini")), profile);
}

TEST_F(RunFiles, TheExitQuestionComesInTheLanguageThatWasChosen) {
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_TRUE(display.activate(client->mainWindow()));
    display.key(QStringLiteral("ctrl+x"));
    ASSERT_FALSE(client->turnTo(QStringLiteral("Info...")).isEmpty());
    const QImage polish = display.settledPicture();
    answerExit(false);
    chooseEnglish();
    display.key(QStringLiteral("ctrl+x"));
    const QString question = client->turnTo(QStringLiteral("Info..."));
    ASSERT_FALSE(question.isEmpty());
    const QImage english = display.settledPicture();
    const QRect box = display.geometry(question);
    EXPECT_NE(english.copy(box), polish.copy(box));
    keep(english, QStringLiteral("exit-question-english"));
    answerExit(true);
    EXPECT_EQ(client->exitCode(), 0);
}

TEST_F(RunFiles, TheExitQuestionComesFromTheLanguageFileOfTheSite) {
    // Title and text of the question in German, in the 8-bit code page.
    put(languages() + QStringLiteral("/English.ini"),
        "[mdikolvestramsgbox]\r\nExitText = M\xF6"
        "chten Sie das Programm wirklich beenden?\r\n"
        "ExitTitle = Schlie\xDF"
        "en\r\n");
    ASSERT_NO_FATAL_FAILURE(startClient());
    chooseEnglish();
    display.key(QStringLiteral("ctrl+x"));
    const QString title = QStringLiteral("Schließen");
    ASSERT_FALSE(client->turnTo(title).isEmpty());
    keep(display.settledPicture(), QStringLiteral("exit-question-german"));
    ASSERT_TRUE(client->answer(title, QStringLiteral("alt+t")));
    EXPECT_EQ(client->exitCode(), 0);
}

}  // namespace
}  // namespace regalon::test
