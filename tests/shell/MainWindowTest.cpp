// The main window: start-up, menus, languages, closing.
#include "platform/Screen.h"
#include "platform/StatusBar.h"
#include "platform/ToolBar.h"
#include "platform/UserSettings.h"
#include "shell/ConnectionFile.h"
#include "shell/ShellFixture.h"
#include "shell/mdiKolvestra.h"
#include "support/Events.h"

#include <QAction>
#include <QFile>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

namespace regalon::test {
namespace {

const QString exitQuestion = QStringLiteral("Czy na pewno chcesz zakończyć pracę z programem?");

class MainWindow : public WarehouseFixture {
protected:
    /// Starts with a stand-in behind one menu item and keeps hold of it.
    void startWithChild(ChildWindow ChildWindows::*item = &ChildWindows::MagWatch) {
        ChildWindows children;
        (children.*item).create = [this] {
            ++created;
            return child = new ChildStandIn(&context);
        };
        (children.*item).beforeShow = [](QWidget* made, qint32 top, qint32 left) {
            auto* standIn = static_cast<ChildStandIn*>(made);
            standIn->top = top;
            standIn->left = left;
        };
        start({}, children);
    }
    void openView() { chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagWatch")); }
    QMdiArea* area() const { return window->findChild<QMdiArea*>(); }
    QStringList windowList() const {
        QStringList titles;
        for (const QAction* item : window->findChild<QMenu*>(QStringLiteral("mnuOkno"))->actions()) {
            titles.append((item->isChecked() ? QStringLiteral("*") : QString()) + item->text());
        }
        return titles;
    }

    QPointer<ChildStandIn> child;
    int created = 0;
};

TEST_F(MainWindow, StartedWithoutArgumentsReadsTheDefaultFileAsUserOne) {
    start({});
    EXPECT_EQ(context.ConnectionFilePath, QStringLiteral("c:\\Regalon\\connect.txt"));
    EXPECT_EQ(context.UserSign, 1);
    EXPECT_EQ(context.Settings.Login, LocalWarehouse::login());
    EXPECT_FALSE(context.UserName.isEmpty());
    EXPECT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
}

TEST_F(MainWindow, StartedWithAFileAndANumberUsesBoth) {
    ASSERT_TRUE(QFile::rename(inRegalon(QStringLiteral("connect.txt")), warehouse.connectFile()));
    start(QStringLiteral("-") + warehouse.connectFile() + QStringLiteral(" -5"));
    EXPECT_EQ(context.ConnectionFilePath, warehouse.connectFile());
    EXPECT_EQ(context.UserSign, 5);
    ASSERT_NE(context.ConnMain, nullptr);
    EXPECT_TRUE(warehouse.trace().contains(QStringLiteral("select User_Code from OUSR where UserID = 5")));
}

TEST_F(MainWindow, StartedWithALineThatDoesNotBeginWithADashUsesTheDefaults) {
    start(QStringLiteral("x -5"));
    EXPECT_EQ(context.ConnectionFilePath, QStringLiteral("c:\\Regalon\\connect.txt"));
    EXPECT_EQ(context.UserSign, 1);
}

TEST_F(MainWindow, FillsTheContextAndThePanels) {
    start({});
    EXPECT_NE(context.ErrorService, nullptr);
    EXPECT_EQ(context.ProgramFolder, QStringLiteral("C:\\Regalon"));
    EXPECT_EQ(context.PathBitmapMagSur, QStringLiteral("C:\\Regalon\\Ikony"));
    EXPECT_EQ(panel(QStringLiteral("keyLoginName")), QStringLiteral("Zalogowany: ") + context.UserName);
    EXPECT_EQ(panel(QStringLiteral("keyDataName")), QStringLiteral("Baza: MAGAZYN"));
    EXPECT_EQ(panel(QStringLiteral("keyLanguage")), QStringLiteral("PL"));
    EXPECT_EQ(panel(QStringLiteral("keyRecordCount")), QString());
    EXPECT_EQ(context.Language, QString());
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(MainWindow, ReadsUserAndFoldersInTheirOrder) {
    start({});
    QStringList statements = warehouse.trace();
    statements.erase(
        std::remove_if(statements.begin(), statements.end(),
                       [](const QString& text) { return !text.startsWith(QStringLiteral("select ")); }),
        statements.end());
    EXPECT_EQ(statements, (QStringList{
                              QStringLiteral("select User_Code from OUSR where UserID = 1"),
                              QStringLiteral("select PathFile from Kolv_setup(nolock)"),
                              QStringLiteral("select PathBitmapMagSur from Kolv_setup(nolock)"),
                              QStringLiteral("select PathBitmapPlanProd from Kolv_setup(nolock)"),
                          }));
}

TEST_F(MainWindow, WithAMissingFileOffersOnlyWarehousesAndSettings) {
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    start({});
    EXPECT_EQ(messages.count(), 1) << qPrintable(messageTexts().join(u'|'));
    EXPECT_EQ(messages.last().Flags, 48);
    EXPECT_TRUE(window->isVisible());
    QStringList enabled;
    for (const QAction* menu : window->menuBar()->actions()) {
        if (menu->isEnabled()) {
            enabled.append(menu->objectName());
        }
    }
    EXPECT_EQ(enabled, (QStringList{QStringLiteral("mnuMaterial"), QStringLiteral("mnuUUstawienia")}));
    EXPECT_EQ(panel(QStringLiteral("keyLoginName")), QStringLiteral("Zalogowany: "));
    EXPECT_EQ(panel(QStringLiteral("keyDataName")), QStringLiteral("Baza: "));
    EXPECT_EQ(panel(QStringLiteral("keyLanguage")), QStringLiteral("PL"));
    EXPECT_EQ(context.ErrorService, nullptr);
    EXPECT_EQ(context.ProgramFolder, QString());
}

TEST_F(MainWindow, ReachesTheEditorAfterAFailedLogin) {
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    start({});
    QString seen;
    whenModal([&seen](QWidget* editor) {
        seen = editor->objectName();
        editor->close();
    });
    chooseItem(QStringLiteral("mnuUUstawienia"), QStringLiteral("mnuKonfPlikuPol"));
    EXPECT_EQ(seen, QStringLiteral("frmZapisParamPlik"));
}

TEST_F(MainWindow, HasItsMenuTree) {
    start({});
    QStringList tree;
    for (const QAction* top : window->menuBar()->actions()) {
        tree.append(top->objectName() + u'=' + top->text());
        if (top->objectName() == QStringLiteral("mnuOkno")) {
            continue;
        }
        for (const QAction* item : top->menu()->actions()) {
            tree.append(item->isSeparator()
                            ? QStringLiteral("  ") + item->objectName() + QStringLiteral("=-")
                            : QStringLiteral("  ") + item->objectName() + u'=' + item->text());
        }
    }
    EXPECT_EQ(tree.join(u'\n'),
              QStringLiteral("mnuProg=&Program\n"
                             "  mnuPKoniec=&Koniec\n"
                             "mnuMaterial=M&agazyny\n"
                             "  mnuMagWatch=&Podgląd magazynu\n"
                             "  mnuMagCreate=&Zarzadzanie magazynem\n"
                             "  mnuMagWatchShiftLoc=&Przesunięcia surowców na magazynie\n"
                             "  mnuMagSurSeparator=-\n"
                             "  mnuMagSurBarCodeLoc=&Zawartość lokalizacji - kody kreskowe\n"
                             "mnuUUstawienia=&Ustawienia\n"
                             "  mnuKonfPlikuPol=&Konfiguracja pliku połączenia\n"
                             "mnuWersje=&Wersje językowe\n"
                             "  mnuPolski=&Polski\n"
                             "  mnuAngielski=&Angielski\n"
                             "  mnuNiemiecki=&Niemiecki\n"
                             "mnuOkno=&Okno"));
    EXPECT_EQ(action(QStringLiteral("mnuPKoniec"))->shortcut(), QKeySequence(QStringLiteral("Ctrl+X")));
    EXPECT_FALSE(action(QStringLiteral("mnuNiemiecki"))->isEnabled());
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Regalon "));
}

TEST_F(MainWindow, HasItsToolbarAndPanels) {
    start({});
    auto* bar = window->findChild<ToolBar*>(QStringLiteral("tlbCmd"));
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->parentWidget()->objectName(), QStringLiteral("clbCmd"));
    ASSERT_EQ(bar->buttonCount(), 3);
    EXPECT_TRUE(bar->button(1)->isSeparator());
    EXPECT_EQ(bar->button(1)->objectName(), QStringLiteral("sep"));
    EXPECT_EQ(bar->button(2)->objectName(), QStringLiteral("Wyjscie"));
    EXPECT_EQ(bar->button(2)->text(), QStringLiteral("Wyjście"));
    EXPECT_FALSE(bar->button(2)->icon().isNull());
    EXPECT_TRUE(bar->button(3)->isSeparator());
    EXPECT_EQ(bar->button(3)->objectName(), QStringLiteral("sep2"));

    auto* status = window->findChild<StatusBar*>(QStringLiteral("stbOK"));
    ASSERT_NE(status, nullptr);
    ASSERT_EQ(status->panelCount(), 5);
    EXPECT_EQ(status->panel(1)->objectName(), QString());
    EXPECT_EQ(status->panel(2)->objectName(), QStringLiteral("keyRecordCount"));
    EXPECT_EQ(status->panel(3)->objectName(), QStringLiteral("keyLanguage"));
    EXPECT_EQ(status->panel(4)->objectName(), QStringLiteral("keyDataName"));
    EXPECT_EQ(status->panel(5)->objectName(), QStringLiteral("keyLoginName"));
    EXPECT_NEAR(status->panel(5)->width(), 3881 / 15, 1);
    EXPECT_GE(status->panel(1)->width(), 882 / 15);
}

TEST_F(MainWindow, CannotBeResized) {
    start({});
    EXPECT_EQ(window->size(), QSize(1030, 760));
    window->resize(1400, 900);
    EXPECT_EQ(window->size(), QSize(1030, 760));
    window->resize(200, 100);
    EXPECT_EQ(window->size(), QSize(1030, 760));
}

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
        EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("429\r\n")));
    }
    EXPECT_TRUE(window->isVisible());
}

TEST_F(MainWindow, SpeaksEnglishInItsPanelsAfterEnglishWasChosen) {
    start({});
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuAngielski"));
    EXPECT_EQ(panel(QStringLiteral("keyLoginName")), QStringLiteral("Login: ") + LocalWarehouse::login());
    EXPECT_EQ(panel(QStringLiteral("keyDataName")), QStringLiteral("Database: MAGAZYN"));
    EXPECT_EQ(panel(QStringLiteral("keyLanguage")), QStringLiteral("UK"));
    EXPECT_EQ(context.Language, QStringLiteral("UK"));
    EXPECT_TRUE(action(QStringLiteral("mnuAngielski"))->isChecked());
    EXPECT_FALSE(action(QStringLiteral("mnuPolski"))->isChecked());
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);

    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuPolski"));
    EXPECT_EQ(panel(QStringLiteral("keyLoginName")),
              QStringLiteral("Użytkownik: ") + LocalWarehouse::login());
    EXPECT_EQ(panel(QStringLiteral("keyDataName")), QStringLiteral("Baza: MAGAZYN"));
    EXPECT_EQ(panel(QStringLiteral("keyLanguage")), QStringLiteral("PL"));
    EXPECT_TRUE(action(QStringLiteral("mnuPolski"))->isChecked());
    EXPECT_FALSE(action(QStringLiteral("mnuAngielski"))->isChecked());
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuPolski"));
    EXPECT_TRUE(action(QStringLiteral("mnuPolski"))->isChecked());
    EXPECT_EQ(messages.count(), 0);
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

TEST_F(MainWindow, ShowsTheBusyCursorAndTakesItOff) {
    start({});
    window->SetMousePointer(true);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Custom);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_FALSE(QGuiApplication::overrideCursor()->pixmap().isNull());
    window->SetMousePointer(false);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

}  // namespace
}  // namespace regalon::test
