// The files that the main window reads and writes of itself: data source file, profile, language files.
#include "platform/Settings.h"
#include "platform/UserSettings.h"
#include "shell/MainWindowFixture.h"

#include <QCoreApplication>
#include <QDir>

namespace regalon::test {
namespace {

const QString exitQuestion = QStringLiteral("Czy na pewno chcesz zakończyć pracę z programem?");
const QByteArray profile =
    "[Forms]\r\nfrmMagWatch=0,0,15450,11400\r\n[Grids]\r\nlst=1-2:01\r\n[MSFlex]\r\n[ExtraFilter]\r\n";

class FilesOfTheMainWindow : public MainWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(MainWindow::SetUp());
        qputenv("TMPDIR", m_temporary.path().toUtf8());
    }
    void TearDown() override {
        qputenv("TMPDIR", m_before);
        Settings().apply();
    }
    void close() {
        messages.clear();
        messages.answer(MsgResult::Yes);
        window->close();
        EXPECT_FALSE(window->isVisible());
    }
    QString temporary(const QString& name) const { return m_temporary.filePath(name); }
    static void put(const QString& name, const QByteArray& bytes) {
        QFile file(name);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    static QByteArray content(const QString& name) {
        QFile file(name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    static QStringList currentFolder() {
        return QDir::current().entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                         QDir::NoDotAndDotDot);
    }
    QStringList dsnFiles() const {
        return QDir(inRegalon({})).entryList({QStringLiteral("*.dsn")}, QDir::Files);
    }

private:
    const QByteArray m_before = qgetenv("TMPDIR");
    QTemporaryDir m_temporary;
};

TEST_F(FilesOfTheMainWindow, AreADataSourceFileFromStartToEnd) {
    start({});
    const QString name = QStringLiteral("Regalon") + warehouse.server() + QStringLiteral("MAGAZYN.dsn");
    EXPECT_EQ(context.DsnFilePath, QStringLiteral("C:\\Regalon\\") + name);
    EXPECT_EQ(dsnFiles(), QStringList(name));
    EXPECT_TRUE(content(inRegalon(name)).contains("UID=regalon\r\n"));
    EXPECT_FALSE(content(inRegalon(name)).contains("Magazyn-2024"));
    close();
    EXPECT_EQ(dsnFiles(), QStringList());
    EXPECT_EQ(messages.count(), 1);
}

TEST_F(FilesOfTheMainWindow, AreADataSourceFileWithoutServerAndDatabaseAfterAFailedLogin) {
    const ClosedDefaultPort nobodyListens;
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    start({});
    EXPECT_EQ(context.DsnFilePath, QStringLiteral("C:\\Regalon\\Regalon.dsn"));
    close();
    EXPECT_EQ(dsnFiles(), QStringList());
}

TEST_F(FilesOfTheMainWindow, AreNoDataSourceFileWhereItCannotBeWritten) {
    Settings settings;
    settings.PathMapping.DriveC = warehouse.driveC();
    settings.DsnFolder = QStringLiteral("C:\\Nowhere");
    settings.apply();
    start({});
    EXPECT_EQ(context.DsnFilePath, QString());
    EXPECT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
    close();
    EXPECT_EQ(messages.count(), 1);
}

TEST_F(FilesOfTheMainWindow, AreAProfileLoadedUnderTheLoginAndSavedUnderTheUser) {
    put(temporary(QStringLiteral("regalon.ini")), profile);
    start({});
    ASSERT_EQ(context.UserName, QStringLiteral("manager"));
    // What happens to the file while the program runs does not matter.
    put(temporary(QStringLiteral("regalon.ini")), "changed");
    close();
    EXPECT_EQ(content(temporary(QStringLiteral("manager.ini"))), profile);
    EXPECT_EQ(content(temporary(QStringLiteral("regalon.ini"))), "changed");
}

TEST_F(FilesOfTheMainWindow, MayBeKeptOutOfTheTemporaryFolderWithoutHarm) {
    // A file stands in the place of the folder.
    put(temporary(QStringLiteral("file")), "");
    qputenv("TMPDIR", temporary(QStringLiteral("file")).toUtf8());
    const QStringList before = currentFolder();
    start({});
    EXPECT_EQ(messages.count(), 0);
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuAngielski"));
    close();
    EXPECT_EQ(messages.count(), 1) << "the exit question alone";
    EXPECT_EQ(dsnFiles(), QStringList());
    EXPECT_EQ(GetSetting(QStringLiteral("Kolvestra"), QStringLiteral("Login"), QStringLiteral("strLang")),
              QStringLiteral("UK"));
    EXPECT_EQ(currentFolder(), before);
}

TEST_F(FilesOfTheMainWindow, LieInTheCommonFolderWhereTheTemporaryOneIsNotThere) {
    // A name that no profile has on the machine of the test.
    const QString user = QStringLiteral("regalon-test-%1").arg(QCoreApplication::applicationPid());
    const QString saved = QStringLiteral("/tmp/%1.ini").arg(user);
    ASSERT_TRUE(warehouse.run(QStringLiteral("update OUSR set User_Code = N'%1'").arg(user)))
        << qPrintable(warehouse.why());
    qputenv("TMPDIR", temporary(QStringLiteral("nowhere")).toUtf8());
    const QStringList before = currentFolder();
    start({});
    ASSERT_EQ(context.UserName, user);
    close();
    EXPECT_TRUE(QFile::remove(saved));
    EXPECT_EQ(currentFolder(), before);
}

TEST_F(FilesOfTheMainWindow, LetItAskInTheLanguageThatWasChosen) {
    start({});
    const auto question = [this] {
        messages.clear();
        messages.answer(MsgResult::No);
        window->close();
        return messages.count() == 1 ? messages.last().Text : QString();
    };
    EXPECT_EQ(question(), exitQuestion) << "with no language chosen";
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuAngielski"));
    EXPECT_EQ(question(), QStringLiteral("Do you really want to exit the program?"));
    EXPECT_EQ(messages.last().Flags, 68);
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuPolski"));
    EXPECT_EQ(question(), exitQuestion);
}

TEST_F(FilesOfTheMainWindow, LetItAskInGermanWhereThatIsTheLanguageAtTheStart) {
    context.Language = QStringLiteral("D");
    start({});
    EXPECT_EQ(languageFile(), QStringLiteral("Germany"));
    close();
    EXPECT_EQ(messages.last().Text, QStringLiteral("Möchten Sie das Programm wirklich beenden?"));
    EXPECT_EQ(messages.last().Title, QStringLiteral("Info..."));
}

}  // namespace
}  // namespace regalon::test
