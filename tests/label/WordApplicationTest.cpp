// The word processor of the labels: the real one, printing to a real print service.

#include "label/PrintService.h"
#include "label/Template.h"
#include "platform/RunTimeError.h"
#include "platform/WordApplication.h"
#include "support/Events.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <functional>

namespace regalon {
namespace {

class WordApplicationTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(printers.start()) << qPrintable(printers.why());
        ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("Etykiety")));
        // Tests that run beside this one leave and take their files elsewhere.
        ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("tmp")));
        for (const char* name : {"TMPDIR", "TEMP", "TMP"})
            qputenv(name, QFile::encodeName(root.filePath(QStringLiteral("tmp"))));
        WordApplication::setSetup({});
    }
    void TearDown() override { WordApplication::setSetup({}); }

    QString folder() const { return root.filePath(QStringLiteral("Etykiety")); }
    QString path(const char* name) const { return folder() + u'/' + QString::fromUtf8(name); }

    void open(WordApplication& word, const QString& source,
              const QString& library = QStringLiteral("Standard"),
              const QString& module = QStringLiteral("Label")) {
        ASSERT_TRUE(test::writeTemplate(path("a.fodt"), source, library, module));
        word.Open(path("a.fodt"), folder());
    }
    template <class Body>
    static ErrorRecord failureOf(Body&& body) {
        try {
            body();
        } catch (...) {
            return currentError();
        }
        return {};
    }
    ErrorRecord failureOfRun(const QString& source, const QString& macro = QStringLiteral("Generate")) {
        WordApplication word;
        open(word, source);
        return failureOf([&] { word.Run(macro, {QStringLiteral("1")}); });
    }
    static bool runs(qint64 process) { return ::kill(static_cast<pid_t>(process), 0) == 0; }
    /// As runs(), for a process that is nobody's child here: one that its new parent has not yet taken note
    /// of has ended.
    static bool works(qint64 process) {
        QFile status(QStringLiteral("/proc/%1/stat").arg(process));
        if (!status.open(QIODevice::ReadOnly))
            return false;
        const QByteArray line = status.readAll();
        return line.mid(line.lastIndexOf(')') + 2, 1) != "Z";
    }
    /// A line of a macro that starts a program which runs for ten minutes and leaves its number in a file.
    QString startSleeper() const {
        const QString script = root.filePath(QStringLiteral("sleeper"));
        QFile file(script);
        if (file.open(QIODevice::WriteOnly))
            file.write("echo $$ >" + QFile::encodeName(numberFile()) + "\nexec sleep 600\n");
        return QStringLiteral(
                   "  Shell(\"/bin/sh\", 0, \"%1\", False)\n"
                   "  Do While Not FileExists(\"%2\")\n    Wait 10\n  Loop\n")
            .arg(script, numberFile());
    }
    QString numberFile() const { return root.filePath(QStringLiteral("number")); }
    /// What the file says, once it is there.
    qint64 number() const {
        QFile file(numberFile());
        EXPECT_TRUE(test::waitFor([&] { return file.size() > 0; }));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        return file.readAll().trimmed().toLongLong();
    }
    /// What this program and those that it starts have in the temporary folder.
    static QStringList temporaryFiles() {
        return QDir::temp().entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    test::PrintService printers;
    QTemporaryDir root;
};

const QString kShow = QStringLiteral(
    "Sub Generate(a, b)\n  ThisComponent.Text.setString(a & \"|\" & b & \"|\" & TypeName(b))\nEnd Sub\n");

TEST_F(WordApplicationTest, TheMacroGetsItsTextsAndThePagesGoToTheDefaultPrinter) {
    WordApplication word;
    open(word, kShow);
    word.Run(QStringLiteral("Generate"), {QStringLiteral("zażółć \"x\", 50%"), QStringLiteral("007")});
    EXPECT_EQ(word.ActivePrinter(), QStringLiteral("Biuro"));
    word.PrintOut();
    word.Close();
    word.Quit();
    EXPECT_EQ(word.processId(), 0);
    const QStringList pages = printers.printed(QStringLiteral("Biuro"));
    ASSERT_EQ(pages.size(), 1);
    EXPECT_EQ(test::textOf(pages.front()).trimmed(), QStringLiteral("zażółć \"x\", 50%|007|String"));
    EXPECT_EQ(printers.count(QStringLiteral("Etykiety")), 0);
}

TEST_F(WordApplicationTest, AnotherPrinterIsTakenAndPutBack) {
    WordApplication word;
    open(word, kShow);
    word.Run(QStringLiteral("Generate"), {QStringLiteral("a"), QStringLiteral("b")});
    word.setActivePrinter(QStringLiteral("Etykiety"));
    word.PrintOut();
    word.setActivePrinter(QStringLiteral("Biuro"));
    EXPECT_EQ(word.ActivePrinter(), QStringLiteral("Biuro"));
    EXPECT_EQ(printers.printed(QStringLiteral("Etykiety")).size(), 1);
    EXPECT_EQ(printers.count(QStringLiteral("Biuro")), 0);
}

TEST_F(WordApplicationTest, AnUnknownPrinterIsAnError) {
    WordApplication word;
    const ErrorRecord error = failureOf([&] { word.setActivePrinter(QStringLiteral("Nieznana")); });
    EXPECT_EQ(error.Number, RunTime::AutomationError);
    EXPECT_TRUE(error.Description.startsWith(QStringLiteral("Nie ma drukarki \"Nieznana\"")))
        << qPrintable(error.Description);
    EXPECT_EQ(word.ActivePrinter(), QStringLiteral("Biuro"));
}

TEST_F(WordApplicationTest, WithoutAPrintServicePrintingIsAnError) {
    printers.stop();
    WordApplication word;
    open(word, kShow);
    EXPECT_EQ(word.ActivePrinter(), QString());
    const ErrorRecord error = failureOf([&] { word.PrintOut(); });
    EXPECT_EQ(error.Number, RunTime::AutomationError);
    EXPECT_EQ(error.Description,
              QStringLiteral("Nie wskazano drukarki etykiet i nie ma drukarki domyślnej. "));
}

TEST_F(WordApplicationTest, TheMacroIsFoundInWhicheverModuleItIs) {
    WordApplication word;
    open(word,
         QStringLiteral(
             "Option VBASupport 1\n\nPublic Sub generate (a)\n  ThisComponent.Text.setString(a)\nEnd Sub\n"),
         QStringLiteral("Project"), QStringLiteral("NewMacros"));
    word.Run(QStringLiteral("Generate"), {QStringLiteral("znalezione")});
    word.PrintOut();
    EXPECT_EQ(test::textOf(printers.printed(QStringLiteral("Biuro")).value(0)).trimmed(),
              QStringLiteral("znalezione"));
}

TEST_F(WordApplicationTest, ATemplateWithoutTheMacroIsAnError) {
    const ErrorRecord error = failureOfRun(QStringLiteral("Sub GenerateAll(a)\nEnd Sub\n"));
    EXPECT_EQ(error.Number, RunTime::AutomationError);
    EXPECT_EQ(error.Description, QStringLiteral("Szablon nie ma makra \"Generate\". "));
}

TEST_F(WordApplicationTest, AMacroThatFailsIsAnErrorWithItsReason) {
    const ErrorRecord error =
        failureOfRun(QStringLiteral("Sub Generate(a)\n  z = 0\n  a = 1 / z\nEnd Sub\n"));
    EXPECT_EQ(error.Number, RunTime::AutomationError);
    EXPECT_TRUE(error.Description.startsWith(QStringLiteral("Makro \"Generate\" zakończyło się błędem 11:")))
        << qPrintable(error.Description);
}

TEST_F(WordApplicationTest, AMacroWithAnotherNumberOfArgumentsIsAnError) {
    EXPECT_EQ(failureOfRun(QStringLiteral("Sub Generate(a, b)\n  x = b & \"\"\nEnd Sub\n")).Number,
              RunTime::AutomationError);
}

TEST_F(WordApplicationTest, AMacroThatDoesNotCompileIsAnError) {
    const ErrorRecord error = failureOfRun(QStringLiteral("Sub Generate(a)\n  x = = (\nEnd Sub\n"));
    EXPECT_EQ(error.Number, RunTime::AutomationError);
    EXPECT_EQ(error.Description, QStringLiteral("Makro \"Generate\" ma błąd składni i nie działa. "));
}

TEST_F(WordApplicationTest, AMessageOfAMacroHoldsNothingUp) {
    const ErrorRecord error = failureOfRun(QStringLiteral("Sub Generate(a)\n  MsgBox \"uwaga\"\nEnd Sub\n"));
    EXPECT_EQ(error.Number, 0) << qPrintable(error.Description);
}

TEST_F(WordApplicationTest, AFileThatIsNoDocumentIsAnError) {
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/ls"), path("program.odt")));
    QFile empty(path("empty.odt"));
    ASSERT_TRUE(empty.open(QIODevice::WriteOnly));
    WordApplication word;
    EXPECT_EQ(failureOf([&] { word.Open(path("program.odt"), folder()); }).Number, RunTime::AutomationError);
    // An empty file opens as an empty document, without macros.
    EXPECT_NE(failureOf([&] {
                  word.Open(path("empty.odt"), folder());
                  word.Run(QStringLiteral("Generate"), {});
              }).Number,
              0);
    EXPECT_EQ(failureOf([&] {
                  word.Close();
                  word.PrintOut();
              }).Number,
              RunTime::AutomationError);
}

TEST_F(WordApplicationTest, OnlyDocumentsOfTheFolderAreOpened) {
    const QString outside = root.filePath(QStringLiteral("outside.fodt"));
    ASSERT_TRUE(test::writeTemplate(outside, kShow));
    ASSERT_TRUE(QFile::link(outside, path("link.fodt")));
    WordApplication word;
    for (const char* name : {"../outside.fodt", "link.fodt", "missing.fodt"})
        EXPECT_EQ(failureOf([&] { word.Open(path(name), folder()); }).Number, RunTime::PermissionDenied)
            << name;
}

TEST_F(WordApplicationTest, AWordProcessorThatIsKilledIsAnErrorAndNothingStays) {
    {
        WordApplication word;
        open(word, kShow);
        ASSERT_EQ(::kill(static_cast<pid_t>(word.processId()), SIGKILL), 0);
        const ErrorRecord error = failureOf([&] { word.Run(QStringLiteral("Generate"), {}); });
        EXPECT_EQ(error.Number, RunTime::RemoteServerGone);
        EXPECT_EQ(error.Description,
                  QStringLiteral("Program drukujący etykiety zakończył się nieoczekiwanie. "));
        EXPECT_EQ(failureOf([&] { word.PrintOut(); }).Number, RunTime::RemoteServerGone);
    }
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(WordApplicationTest, AMacroThatHangsIsEndedWithAllThatItStarted) {
    WordApplication::setSetup({.TimeLimit = 30});
    WordApplication word;
    const qint64 process = word.processId();
    open(word, QStringLiteral("Sub Generate(a)\n  Shell(\"/bin/sleep\", 0, \"600\", False)\n"
                              "  Do\n    Wait 10\n  Loop\nEnd Sub\n"));
    const ErrorRecord error = failureOf([&] { word.Run(QStringLiteral("Generate"), {QStringLiteral("1")}); });
    EXPECT_EQ(error.Number, RunTime::RemoteServerGone);
    EXPECT_TRUE(error.Description.contains(QStringLiteral("nie odpowiedział w ciągu 30 s")))
        << qPrintable(error.Description);
    EXPECT_EQ(word.processId(), 0);
    EXPECT_FALSE(runs(process));
    // Nobody is left in its group.
    EXPECT_TRUE(test::waitFor([&] { return !runs(-process); }));
}

TEST_F(WordApplicationTest, WhatAMacroHasStartedEndsWithAWordProcessorThatWasKilled) {
    WordApplication word;
    open(word, QStringLiteral("Sub Generate(a)\n") + startSleeper() +
                   QStringLiteral(
                       "  Shell(\"/bin/sh\", 0, \"-c 'kill -9 $PPID'\", True)\n  Wait 60000\nEnd Sub\n"));
    const ErrorRecord error = failureOf([&] { word.Run(QStringLiteral("Generate"), {QStringLiteral("1")}); });
    EXPECT_EQ(error.Number, RunTime::RemoteServerGone);
    const qint64 sleeper = number();
    ASSERT_GT(sleeper, 0);
    EXPECT_TRUE(test::waitFor([&] { return !works(sleeper); }));
}

TEST_F(WordApplicationTest, WhatAMacroHasStartedEndsWithTheLabel) {
    WordApplication word;
    open(word, QStringLiteral("Sub Generate(a)\n") + startSleeper() + QStringLiteral("End Sub\n"));
    word.Run(QStringLiteral("Generate"), {QStringLiteral("1")});
    const qint64 sleeper = number();
    ASSERT_GT(sleeper, 0);
    EXPECT_TRUE(works(sleeper));
    word.Close();
    word.Quit();
    EXPECT_TRUE(test::waitFor([&] { return !works(sleeper); }));
}

/// A client that is killed while a macro runs; leaves the number of its word processor.
void dieWhilePrinting(const std::function<void(WordApplication&)>& openTemplate, const QString& numberFile) {
    WordApplication word;
    openTemplate(word);
    QFile file(numberFile);
    if (file.open(QIODevice::WriteOnly))
        file.write(QByteArray::number(word.processId()));
    file.close();
    word.Run(QStringLiteral("Generate"), {QString::number(getpid())});
}

TEST_F(WordApplicationTest, AClientThatDiesTakesItsWordProcessorAlongAndTheNextOneClearsUp) {
    const auto openTemplate = [this](WordApplication& word) {
        open(word, QStringLiteral("Sub Generate(a)\n  Shell(\"/bin/kill\", 0, \"-9 \" & a, True)\n"
                                  "  Do\n    Wait 10\n  Loop\nEnd Sub\n"));
    };
    EXPECT_EXIT(dieWhilePrinting(openTemplate, numberFile()), ::testing::KilledBySignal(SIGKILL), "");
    const qint64 process = number();
    ASSERT_GT(process, 0);
    EXPECT_TRUE(test::waitFor([&] { return !works(process); }));
    const QStringList left = temporaryFiles();
    ASSERT_EQ(left.size(), 1);
    {
        const WordApplication next;
        EXPECT_FALSE(temporaryFiles().contains(left.front()));
        EXPECT_EQ(temporaryFiles().size(), 1);
    }
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(WordApplicationTest, OnlyWorkspacesOfClientsThatAreGoneAreCleared) {
    // A process that has been waited for is gone.
    QProcess gone;
    gone.start(QStringLiteral("/bin/sleep"), {QStringLiteral("600")});
    ASSERT_TRUE(gone.waitForStarted());
    const QString number = QString::number(gone.processId());
    gone.kill();
    ASSERT_TRUE(gone.waitForFinished());
    const QStringList kept{
        QStringLiteral("other-%1-a").arg(number), QStringLiteral("regalon-label-%1-a").arg(getpid()),
        QStringLiteral("regalon-label--%1-a").arg(number), QStringLiteral("regalon-label-x-a")};
    const QString swept = QStringLiteral("regalon-label-%1-a").arg(number);
    for (const QString& name : kept + QStringList(swept))
        ASSERT_TRUE(QDir::temp().mkpath(name + QStringLiteral("/user")));
    const QString link = QStringLiteral("regalon-label-%1-link").arg(number);
    ASSERT_TRUE(QFile::link(folder(), QDir::temp().filePath(link)));
    { const WordApplication word; }
    QStringList expected = kept + QStringList(link);
    expected.sort();
    QStringList found = temporaryFiles();
    found.sort();
    EXPECT_EQ(found, expected) << qPrintable(found.join(u' '));
    EXPECT_TRUE(QDir(folder()).exists());
}

TEST_F(WordApplicationTest, NothingIsLeftBesideTheTemplateOrInTheTemporaryFolder) {
    QByteArray content;
    {
        WordApplication word;
        open(word, kShow);
        QFile file(path("a.fodt"));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        content = file.readAll();
        word.Run(QStringLiteral("Generate"), {QStringLiteral("a"), QStringLiteral("b")});
        EXPECT_EQ(QDir(folder()).entryList(QDir::Files | QDir::Hidden),
                  QStringList(QStringLiteral("a.fodt")));
        EXPECT_NE(temporaryFiles(), QStringList());
    }
    QFile file(path("a.fodt"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), content);
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(WordApplicationTest, WithoutLibreOfficeTheErrorSaysWhatToInstall) {
    WordApplication::setSetup({.OfficeFolder = root.path()});
    const ErrorRecord error = failureOf([] { const WordApplication word; });
    EXPECT_EQ(error.Number, RunTime::CannotCreateObject);
    EXPECT_TRUE(error.Description.contains(QStringLiteral("Zainstaluj pakiet libreoffice-writer-nogui")))
        << qPrintable(error.Description);
}

TEST_F(WordApplicationTest, AMissingProgramIsAnError) {
    WordApplication::setSetup({.Program = root.filePath(QStringLiteral("nothing"))});
    EXPECT_EQ(failureOf([] { const WordApplication word; }).Number, RunTime::CannotCreateObject);
}

TEST_F(WordApplicationTest, AProgramThatSaysSomethingElseIsAnError) {
    WordApplication::setSetup({.Program = QStringLiteral("/bin/echo")});
    EXPECT_EQ(failureOf([] { const WordApplication word; }).Number, RunTime::AutomationError);
}

}  // namespace
}  // namespace regalon
