// The word processor of the labels: the real one, printing to a real print service.

#include "label/PrintService.h"
#include "label/Template.h"
#include "platform/RunTimeError.h"
#include "platform/WordApplication.h"
#include "support/Events.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

namespace regalon {
namespace {

class WordApplicationTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(printers.start()) << qPrintable(printers.why());
        ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("Etykiety")));
        // Tests that run beside this one leave and take their files elsewhere.
        ASSERT_TRUE(QDir(root.path()).mkpath(QStringLiteral("tmp")));
        qputenv("TMPDIR", QFile::encodeName(root.filePath(QStringLiteral("tmp"))));
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
