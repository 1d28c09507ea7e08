// The child windows of the main window and its list of them.
#include "platform/Paths.h"
#include "shell/MainWindowFixture.h"

namespace regalon::test {
namespace {

TEST_F(MainWindow, OpensAChildOnceAndKeepsItsState) {
    startWithChild();
    openView();
    ASSERT_EQ(created, 1);
    EXPECT_TRUE(child->isVisible());
    EXPECT_EQ(child->loads, 1);
    child->state = QStringLiteral("w trakcie pracy");
    openView();
    EXPECT_EQ(created, 1);
    EXPECT_EQ(child->loads, 1);
    EXPECT_EQ(child->state, QStringLiteral("w trakcie pracy"));
    EXPECT_EQ(area()->subWindowList().size(), 1);
}

TEST_F(MainWindow, TellsAChildItsOwnPositionInTwips) {
    startWithChild();
    window->move(30, 40);
    ASSERT_TRUE(waitFor([this] { return window->pos() == QPoint(30, 40); }));
    openView();
    EXPECT_EQ(child->top, window->frameGeometry().top() * 15);
    EXPECT_EQ(child->left, window->frameGeometry().left() * 15);
}

TEST_F(MainWindow, LoadsAChildAgainAfterItWasClosed) {
    startWithChild();
    openView();
    area()->subWindowList().first()->close();
    EXPECT_FALSE(child->isVisible());
    EXPECT_EQ(child->unloads, 1);
    openView();
    EXPECT_EQ(created, 1);
    EXPECT_TRUE(child->isVisible());
    EXPECT_EQ(child->loads, 2);
}

TEST_F(MainWindow, HidesTheFrameOfAChildThatClosesItself) {
    startWithChild();
    openView();
    child->close();
    EXPECT_FALSE(area()->subWindowList().first()->isVisible());
    openView();
    EXPECT_TRUE(child->isVisible());
    EXPECT_TRUE(area()->subWindowList().first()->isVisible());
    EXPECT_EQ(child->loads, 2);
}

TEST_F(MainWindow, ListsOpenChildWindowsUnderOkno) {
    startWithChild();
    EXPECT_EQ(windowList(), QStringList());
    openView();
    EXPECT_EQ(windowList(), QStringList{QStringLiteral("*&1 Okno próbne")});
    child->close();
    EXPECT_TRUE(waitFor([this] { return windowList().isEmpty(); }));
}

TEST_F(MainWindow, BringsAnOpenChildForwardAtTheSecondClick) {
    openTwoChildren();
    ASSERT_EQ(active(), second);
    openView();
    EXPECT_EQ(active(), child);
    EXPECT_EQ(windowList(),
              (QStringList{QStringLiteral("*&1 Pierwsze"), QStringLiteral("&2 Drugie && ostatnie")}));
    EXPECT_EQ(child->loads, 1);
}

TEST_F(MainWindow, BringsTheWindowChosenUnderOknoForward) {
    openTwoChildren();
    chooseWindow(0);
    EXPECT_EQ(active(), child);
    chooseWindow(1);
    EXPECT_EQ(active(), second);
}

TEST_F(MainWindow, RestoresAMinimisedWindowChosenUnderOkno) {
    openTwoChildren();
    QMdiSubWindow* frame = area()->subWindowList(QMdiArea::CreationOrder).first();
    frame->showMinimized();
    ASSERT_TRUE(frame->isMinimized());
    chooseWindow(0);
    EXPECT_FALSE(frame->isMinimized());
    EXPECT_EQ(active(), child);
}

TEST_F(MainWindow, ReportsItsWindowsFailuresWithoutTheLog) {
    start({});
    context.ErrorService->SetLogging(eLogMode::ToFile);
    const QString log = Paths::toFile(context.ErrorService->logFileName());
    ASSERT_FALSE(log.isEmpty());
    QFile::remove(log);
    chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagWatch"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_FALSE(QFile::exists(log));
    EXPECT_EQ(context.ErrorService->LastErrorNumber(), 0);
    // The same log is written by a report of a data class.
    context.ErrorService->ShowError(eErrType::Error, QStringLiteral("clsX"), QStringLiteral("Y"), {});
    EXPECT_TRUE(QFile::remove(log));
}

TEST_F(MainWindow, AnswersForWindowsItDoesNotHaveWithTheStandardHandler) {
    start({});
    const QStringList items = {QStringLiteral("mnuMagWatch"), QStringLiteral("mnuMagCreate"),
                               QStringLiteral("mnuMagWatchShiftLoc"), QStringLiteral("mnuMagSurBarCodeLoc")};
    for (const QString& item : items) {
        messages.clear();
        chooseItem(QStringLiteral("mnuMaterial"), item);
        ASSERT_EQ(messages.count(), 1) << qPrintable(item);
        EXPECT_EQ(messages.last().Title, QStringLiteral("frmKolvestra - ") + item + QStringLiteral("_Click"));
        EXPECT_EQ(messages.last().Flags, 4112);
        EXPECT_EQ(messages.last().Text,
                  QStringLiteral("429\r\n") + action(item)->text().remove(u'&') +
                      QStringLiteral(" - funkcja niedostępna w tej wersji programu. Regalon"));
    }
    EXPECT_TRUE(window->isVisible());
}

}  // namespace
}  // namespace regalon::test
