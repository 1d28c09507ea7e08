// The ways out of the main window and its unload routine.
#include "platform/UserSettings.h"
#include "shell/MainWindowFixture.h"

#include <QDir>

namespace regalon::test {
namespace {

const QString exitQuestion = QStringLiteral("Czy na pewno chcesz zakończyć pracę z programem?");

TEST_F(MainWindow, StaysOpenWhenItCannotAskWhetherToEnd) {
    window = std::make_unique<mdiKolvestra>(context, ChildWindows());
    showAndWait(window.get());
    window->close();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmKolvestra - ExitProg"));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("91\r\n")))
        << qPrintable(messages.last().Text);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MainWindow, StaysOpenWhenTheExitQuestionIsAnsweredNo) {
    startWithChild();
    openView();
    messages.answer(MsgResult::No);
    clickToolButton(window.get(), QStringLiteral("Wyjscie"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, exitQuestion);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Info..."));
    EXPECT_EQ(messages.last().Flags, 68);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(child->isVisible());
    EXPECT_EQ(child->unloads, 0);
    ASSERT_NE(context.ConnMain, nullptr);
    EXPECT_EQ(context.ConnMain->State(), 1);
}

TEST_F(MainWindow, AsksAtEveryWayOut) {
    start({});
    for (int i = 0; i < 4; ++i) {
        messages.answer(MsgResult::No);
    }
    chooseItem(QStringLiteral("mnuProg"), QStringLiteral("mnuPKoniec"));
    EXPECT_EQ(messages.count(), 1);
    window->activateWindow();
    key(window.get(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(messages.count(), 2);
    clickToolButton(window.get(), QStringLiteral("Wyjscie"));
    EXPECT_EQ(messages.count(), 3);
    window->close();
    EXPECT_EQ(messages.count(), 4);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MainWindow, UnloadsItsChildrenBeforeItsConnections) {
    startWithChild();
    openView();
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(child->unloads, 1);
    EXPECT_TRUE(child->connectedAtUnload);
    EXPECT_EQ(context.ConnMain, nullptr);
    EXPECT_EQ(context.ConnClient, nullptr);
    EXPECT_NE(context.ErrorService, nullptr);
}

TEST_F(MainWindow, UnloadsAChildOnceThatWasClosedBefore) {
    startWithChild();
    openView();
    area()->subWindowList().first()->close();
    ASSERT_EQ(child->unloads, 1);
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(child->unloads, 1);
}

TEST_F(MainWindow, UnloadsAMinimisedChild) {
    startWithChild();
    openView();
    area()->subWindowList().first()->showMinimized();
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_EQ(child->unloads, 1);
}

TEST_F(MainWindow, SkipsTheRestOfItsUnloadAfterAFailure) {
    start({});
    QFile dsn(inRegalon(QStringLiteral("run.dsn")));
    ASSERT_TRUE(dsn.open(QIODevice::WriteOnly));
    dsn.close();
    context.DsnFilePath = QStringLiteral("C:\\Regalon\\run.dsn");
    // A folder in the place of the settings of the user.
    const QString store =
        qEnvironmentVariable("XDG_CONFIG_HOME") + QStringLiteral("/Kolvestra/Kolvestra.ini");
    QFile::remove(store);
    ASSERT_TRUE(QDir().mkpath(store));
    messages.answer(MsgResult::Yes);
    window->close();
    QDir(store).removeRecursively();
    ASSERT_EQ(messages.count(), 2) << qPrintable(messageTexts().join(u'|'));
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmKolvestra - MDIForm_Unload"));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("75\r\n")))
        << qPrintable(messages.last().Text);
    // The connections stand before the failing step; language texts and data source file stand behind it.
    EXPECT_EQ(context.ConnMain, nullptr);
    EXPECT_NE(window->language(), nullptr);
    EXPECT_TRUE(dsn.exists());
    EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindow, StoresTheLanguageAtExitAndDoesNotReadItBack) {
    start({});
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuAngielski"));
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_EQ(GetSetting(QStringLiteral("Kolvestra"), QStringLiteral("Login"), QStringLiteral("strLang")),
              QStringLiteral("UK"));
    context.Language.clear();
    start({});
    EXPECT_EQ(context.Language, QString());
    EXPECT_EQ(panel(QStringLiteral("keyLanguage")), QStringLiteral("PL"));
}

TEST_F(MainWindow, DeletesTheDataSourceFileAtExitAndMindsNoFailure) {
    start({});
    QFile dsn(inRegalon(QStringLiteral("run.dsn")));
    ASSERT_TRUE(dsn.open(QIODevice::WriteOnly));
    dsn.close();
    context.DsnFilePath = QStringLiteral("C:\\Regalon\\run.dsn");
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_FALSE(dsn.exists());

    start({});
    context.DsnFilePath = QStringLiteral("C:\\Regalon\\nie ma.dsn");
    messages.clear();
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_EQ(messages.count(), 1) << qPrintable(messageTexts().join(u'|'));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(MainWindow, ClosesAfterTheServerHasGone) {
    start({});
    warehouse.kill();
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(context.ConnMain, nullptr);
}

TEST_F(MainWindow, ClosesAfterAFailedLogin) {
    warehouse.kill();
    start({});
    messages.clear();
    messages.answer(MsgResult::Yes);
    // The program menu is off, and with it its shortcut; toolbar and close box still work.
    key(window.get(), Qt::Key_X, Qt::ControlModifier);
    EXPECT_EQ(messages.count(), 0);
    clickToolButton(window.get(), QStringLiteral("Wyjscie"));
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace regalon::test
