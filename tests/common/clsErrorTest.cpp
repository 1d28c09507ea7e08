#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/clsError.h"
#include "platform/MsgBox.h"
#include "platform/Paths.h"
#include "platform/Screen.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QObject>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <stdexcept>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

constexpr qint32 databaseError = static_cast<qint32>(0x80040E14U);
const QString numberText = u"-2147217900"_s;

class clsErrorTest : public ::testing::Test {
protected:
    // The text of the box that a report of the description shows.
    QString shown(const QString& description, qint32 number = databaseError) {
        service.ShowError(eErrType::Error, u"clsMagWatch"_s, u"EcexProcedure"_s,
                          {number, description, u"src"_s, 0});
        return boxes.last().Text;
    }

    clsError service;
    MsgBoxRecorder boxes;
};

TEST_F(clsErrorTest, MarkedSecondLineAloneIsShownAndTheWholeMessageKept) {
    EXPECT_EQ(shown(u"Transaction refused\n##Brak miejsca na lokalizacji"_s),
              u"Brak miejsca na lokalizacji"_s);
    EXPECT_EQ(service.LastErrorDescription(),
              numberText + u"\r\nTransaction refused\n##Brak miejsca na lokalizacji"_s);
    EXPECT_EQ(service.LastErrorNumber(), databaseError);
}

TEST_F(clsErrorTest, TwoMarkedLinesAreJoinedByCrLf) {
    EXPECT_EQ(shown(u"server\n##Pierwsza\nnoise\n##Druga"_s), u"Pierwsza\r\nDruga"_s);
}

TEST_F(clsErrorTest, CarriageReturnBelongsToTheMarkedLine) {
    EXPECT_EQ(shown(u"server\r\n##Pierwsza\r\n##Druga"_s), u"Pierwsza\r\r\nDruga"_s);
}

TEST_F(clsErrorTest, TextBehindTheFirstMarkOfALineIsTaken) {
    EXPECT_EQ(shown(u"server\nkod 17 ##Lokalizacja ## zajęta"_s), u"Lokalizacja ## zajęta"_s);
}

TEST_F(clsErrorTest, MarkWithNothingBehindItDoesNotCount) {
    EXPECT_EQ(shown(u"server\n##"_s), numberText + u"\r\nserver\n##"_s);
    EXPECT_EQ(shown(u"server\n##\n##Tekst"_s), u"Tekst"_s);
}

TEST_F(clsErrorTest, MessageWithoutMarkIsShownWholeUnderItsNumber) {
    EXPECT_EQ(shown(u"Invalid object name 'x'."_s), numberText + u"\r\nInvalid object name 'x'."_s);
}

TEST_F(clsErrorTest, UserErrorIsShownWithoutNumber) {
    EXPECT_EQ(shown(u"Nieprawidłowy format liczby."_s, static_cast<qint32>(0x80040201U)),
              u"Nieprawidłowy format liczby."_s);
    EXPECT_EQ(service.UserErrorNumber(), static_cast<qint32>(0x80040201U));
}

TEST_F(clsErrorTest, EmptyFirstLineEndsTheSearchForMarks) {
    const QString message = u"\nsecond\n##Tekst"_s;
    EXPECT_EQ(shown(message, clsError::userErrorNumber), message);
}

TEST_F(clsErrorTest, EmptyLineInTheMiddleKeepsWhatWasCollectedBefore) {
    EXPECT_EQ(shown(u"x\n##Jeden\n\n##Dwa"_s), u"Jeden"_s);
}

TEST_F(clsErrorTest, TitleOfAnErrorNamesClassAndRoutine) {
    shown(u"x"_s);
    EXPECT_EQ(boxes.last().Title, u"Error - clsMagWatch [EcexProcedure]"_s);
    EXPECT_EQ(boxes.last().Flags, 16);
}

TEST_F(clsErrorTest, EmptyObjectNameLeavesTwoBlanksInTheTitle) {
    service.ShowError(eErrType::Error, QString(), u"FillComboBox"_s, {1, u"x"_s, u"s"_s, 0});
    EXPECT_EQ(boxes.last().Title, u"Error -  [FillComboBox]"_s);
}

TEST_F(clsErrorTest, InfoHasNoNamesInItsTitleAndNoNumber) {
    service.ShowError(eErrType::Info, u"clsX"_s, u"Routine"_s, {5, u"Gotowe"_s, u"s"_s, 0});
    EXPECT_EQ(boxes.last().Title, u"Info  "_s);
    EXPECT_EQ(boxes.last().Text, u"Gotowe"_s);
    EXPECT_EQ(boxes.last().Flags, 64);
}

TEST_F(clsErrorTest, WarningHasItsOwnLookAndLabel) {
    service.ShowError(eErrType::Warning, u"clsX"_s, u"Routine"_s, {5, u"x"_s, u"s"_s, 0});
    EXPECT_EQ(boxes.last().Title, u"Warning - clsX [Routine]"_s);
    EXPECT_EQ(boxes.last().Flags, 48);
}

TEST_F(clsErrorTest, DebugReportIsShownInDebugModeOnlyAndWithItsMarks) {
    const ErrorRecord error{5, u"x\n##y"_s, u"s"_s, 0};
    service.ShowError(eErrType::Debug, u"clsX"_s, u"Routine"_s, error);
    EXPECT_EQ(boxes.count(), 0);
    EXPECT_EQ(service.LastErrorNumber(), 5);
    service.setDebugMode(true);
    service.ShowError(eErrType::Debug, u"clsX"_s, u"Routine"_s, error);
    EXPECT_EQ(boxes.last().Text, u"5\r\nx\n##y"_s);
    EXPECT_EQ(boxes.last().Title, u"Debug - clsX [Routine]"_s);
    EXPECT_EQ(boxes.last().Flags, 0);
}

TEST_F(clsErrorTest, GivenTextReplacesTheErrorsOwn) {
    service.ShowError(eErrType::Error, u"clsX"_s, u"Routine"_s, {5, u"x"_s, u"s"_s, 0}, u"Inny tekst"_s);
    EXPECT_EQ(boxes.last().Text, u"Inny tekst"_s);
    EXPECT_EQ(service.LastErrorDescription(), u"Inny tekst"_s);
}

TEST_F(clsErrorTest, HourglassGivesWayToTheArrowDuringTheMessage) {
    MousePointer during = MousePointer::Custom;
    boxes.onMessage([&](const MsgBoxRecorder::Message&) { during = Screen::mousePointer(); });
    Screen::setMousePointer(MousePointer::Hourglass);
    shown(u"x"_s);
    EXPECT_EQ(during, MousePointer::Default);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Hourglass);
    Screen::setMousePointer(MousePointer::Default);
}

TEST_F(clsErrorTest, SaveErrorRemembersAndShowsNothing) {
    service.SaveError({77, u"opis"_s, u"s"_s, 0});
    EXPECT_EQ(service.LastErrorNumber(), 77);
    EXPECT_EQ(service.LastErrorDescription(), u"opis"_s);
    EXPECT_EQ(boxes.count(), 0);
}

class Listener : public QObject {
    Q_OBJECT
public:
    Q_INVOKABLE void show(const QString& text, int flags, const QString& title) {
        calls.append(text + u'|' + QString::number(flags) + u'|' + title);
    }
    QStringList calls;
};

TEST_F(clsErrorTest, ShowFunctionTakesTheMessageInsteadOfTheBox) {
    Listener listener;
    service.SetShowErrorFunction(&listener, u"show"_s);
    service.ShowError(eErrType::Error, u"clsX"_s, u"Routine"_s, {5, u"x"_s, u"s"_s, 0});
    EXPECT_EQ(listener.calls, QStringList{u"5\r\nx|16|Error - clsX [Routine]"_s});
    EXPECT_EQ(boxes.count(), 0);
}

TEST_F(clsErrorTest, BoxComesBackWhenTheShowObjectIsGone) {
    {
        Listener listener;
        service.SetShowErrorFunction(&listener, u"show"_s);
    }
    EXPECT_EQ(shown(u"x"_s), numberText + u"\r\nx"_s);
}

TEST_F(clsErrorTest, MissingShowMethodIsReportedInTheServicesOwnBox) {
    Listener listener;
    service.SetShowErrorFunction(&listener, u"display"_s);
    service.ShowError(eErrType::Error, u"clsX"_s, u"Routine"_s, {5, u"x"_s, u"s"_s, 0});
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"clsError [ShowMessage]"_s);
    EXPECT_EQ(boxes.last().Flags, 16);
    EXPECT_TRUE(boxes.last().Text.startsWith(u"438\r\n"_s)) << qPrintable(boxes.last().Text);
}

TEST_F(clsErrorTest, FailureOfTheReportItselfIsShownInTheServicesOwnBox) {
    // The message cannot be shown, and neither can the box that says so.
    boxes.onMessage([this](const MsgBoxRecorder::Message&) {
        if (boxes.count() < 3) {
            throw RunTimeError(RunTime::OutOfMemory);
        }
    });
    service.ShowError(eErrType::Error, u"clsX"_s, u"Routine"_s, {5, u"x"_s, u"s"_s, 0});
    ASSERT_EQ(boxes.count(), 3);
    EXPECT_EQ(boxes.messages().at(0).Title, u"Error - clsX [Routine]"_s);
    EXPECT_EQ(boxes.messages().at(1).Title, u"clsError [ShowMessage]"_s);
    EXPECT_EQ(boxes.last().Title, u"clsError [ShowError]"_s);
    EXPECT_EQ(boxes.last().Flags, 16);
    EXPECT_TRUE(boxes.last().Text.startsWith(u"7\r\n"_s)) << qPrintable(boxes.last().Text);
    EXPECT_EQ(service.LastErrorNumber(), 5);
}

class ErrorLogTest : public clsErrorTest {
protected:
    void SetUp() override {
        ASSERT_TRUE(alone.lock());
        service.SetLogging(eLogMode::ToFile);
        path = service.logFileName();
        QFile::remove(Paths::toFile(path));
    }
    void TearDown() override { QFile::remove(Paths::toFile(path)); }

    QString log() const {
        QFile file(Paths::toFile(path));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
    void report(const QString& description, qint32 lastDllError = 0) {
        service.ShowError(eErrType::Error, u"clsX"_s, u"Routine"_s,
                          {5, description, u" source "_s, lastDllError});
    }

    // Tests of this program that start within one second would share a log.
    QLockFile alone{QCoreApplication::applicationFilePath() + u".lock"_s};
    QString path;
};

TEST_F(ErrorLogTest, EntryHoldsMomentNamesMessageSourceAndEventType) {
    report(u"x\n##y"_s);
    const QRegularExpression form(
        u"^\r\n\\d{4}-\\d\\d-\\d\\d( \\d\\d:\\d\\d:\\d\\d)?:Error - clsX \\[Routine\\]\r\n5\r\nx\n##y\r\n"
        "Source: source\r\nEvent type: 1\r\n$"_s);
    EXPECT_TRUE(form.match(log()).hasMatch()) << qPrintable(log());
}

TEST_F(ErrorLogTest, LastDllErrorIsWrittenWhenThereIsOne) {
    report(u"x"_s, 1722);
    EXPECT_TRUE(log().contains(u"\r\nSource: source\r\nLastDllError: 1722\r\n"_s)) << qPrintable(log());
}

TEST_F(ErrorLogTest, OneEntryIsSkippedOnRequestAndTheNextWritten) {
    service.setDoNotLogNextError(true);
    report(u"pierwszy"_s);
    report(u"drugi"_s);
    EXPECT_FALSE(log().contains(u"pierwszy"_s));
    EXPECT_TRUE(log().contains(u"drugi"_s));
    EXPECT_EQ(boxes.count(), 2);
}

TEST_F(ErrorLogTest, DebugModeWritesEvenASkippedEntry) {
    service.setDebugMode(true);
    service.setDoNotLogNextError(true);
    report(u"pierwszy"_s);
    EXPECT_TRUE(log().contains(u"pierwszy"_s));
}

TEST_F(ErrorLogTest, EntriesAreAppended) {
    report(u"pierwszy"_s);
    report(u"drugi"_s);
    EXPECT_LT(log().indexOf(u"pierwszy"_s), log().indexOf(u"drugi"_s));
    EXPECT_GE(log().indexOf(u"pierwszy"_s), 0);
}

TEST_F(ErrorLogTest, TurningOffStopsWriting) {
    service.SetLogging(eLogMode::Off);
    report(u"x"_s);
    EXPECT_EQ(log(), QString());
    EXPECT_EQ(service.logFileName(), QString());
}

TEST_F(ErrorLogTest, FailureToWriteIsSilentAndEndsLogging) {
    ASSERT_TRUE(QDir().mkpath(Paths::toFile(path)));
    report(u"x"_s);
    EXPECT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - clsX [Routine]"_s);
    EXPECT_EQ(service.logFileName(), QString());
    QDir().rmdir(Paths::toFile(path));
}

TEST_F(ErrorLogTest, FailureToWriteIsShownInDebugMode) {
    service.setDebugMode(true);
    ASSERT_TRUE(QDir().mkpath(Paths::toFile(path)));
    report(u"x"_s);
    ASSERT_EQ(boxes.count(), 2);
    EXPECT_EQ(boxes.messages().first().Title, u"clsError [LogError]"_s);
    EXPECT_EQ(boxes.messages().first().Flags, 16);
    QDir().rmdir(Paths::toFile(path));
}

TEST(NewErrorService, IsQuiet) {
    const clsError service;
    EXPECT_FALSE(service.DebugMode());
    EXPECT_EQ(service.logFileName(), QString());
    EXPECT_EQ(service.LastErrorNumber(), 0);
}

TEST(ClassHandler, ReportsUnderTheGivenNamesAndKeepsTheResultOfTheMoment) {
    AppContext context;
    context.ErrorService = std::make_unique<clsError>();
    MsgBoxRecorder boxes;
    bool result = false;
    const bool ended = ClassTrap(context, "clsMagWatch", "GetStandParam", [&] {
        result = true;
        throw RunTimeError(13);
    });
    EXPECT_FALSE(ended);
    EXPECT_TRUE(result);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Title, u"Error - clsMagWatch [GetStandParam]"_s);
    EXPECT_TRUE(boxes.last().Text.startsWith(u"13\r\n"_s));
}

TEST(ClassHandler, IsSilentWhenTheBodyEndsNormally) {
    AppContext context;
    context.ErrorService = std::make_unique<clsError>();
    MsgBoxRecorder boxes;
    EXPECT_TRUE(ClassTrap(context, "clsX", "Y", [] {}));
    EXPECT_EQ(boxes.count(), 0);
}

// So a window that opens after a failed login fails in its own handler.
TEST(ClassHandler, WithoutAnErrorServiceFailsWithObjectNotSet) {
    AppContext context;
    MsgBoxRecorder boxes;
    const bool ended = WindowTrap("frmMagWatch - Form_Load", [&] {
        ClassTrap(context, "clsMagWatch", "GetStandParam", [] { throw RunTimeError(5, u"gone"_s); });
    });
    EXPECT_FALSE(ended);
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_TRUE(boxes.last().Text.startsWith(u"91\r\n"_s)) << qPrintable(boxes.last().Text);
    EXPECT_EQ(boxes.last().Title, u"frmMagWatch - Form_Load"_s);
}

TEST(ClassHandler, StandardExceptionsAreReportedToo) {
    AppContext context;
    context.ErrorService = std::make_unique<clsError>();
    MsgBoxRecorder boxes;
    ClassTrap(context, "clsX", "Y", [] { throw std::out_of_range("index"); });
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 9);
}

TEST(WindowHandler, ShowsNumberDescriptionAndSourceInAModalStopBox) {
    MsgBoxRecorder boxes;
    WindowTrap("frmKolvestra - ExitProg",
               [] { throw RunTimeError(75, u"Nie można zapisać."_s, u"Regalon"_s); });
    ASSERT_EQ(boxes.count(), 1);
    EXPECT_EQ(boxes.last().Text, u"75\r\nNie można zapisać.Regalon"_s);
    EXPECT_EQ(boxes.last().Flags, 4112);
    EXPECT_EQ(boxes.last().Title, u"frmKolvestra - ExitProg"_s);
}

TEST(WindowHandler, TouchesNeitherLastErrorNorLog) {
    AppContext context;
    context.ErrorService = std::make_unique<clsError>();
    MsgBoxRecorder boxes;
    WindowTrap("frmX - Y", [] { throw RunTimeError(75); });
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 0);
}

}  // namespace
}  // namespace regalon

#include "clsErrorTest.moc"
