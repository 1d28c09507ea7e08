// The main window: start-up, design and languages.
#include "platform/Screen.h"
#include "platform/StatusBar.h"
#include "platform/ToolBar.h"
#include "shell/ConnectionFile.h"
#include "shell/MainWindowFixture.h"

#include <QGuiApplication>
#include <QLabel>

#include <string>

namespace regalon::test {
namespace {

const QString noServerTitle = QStringLiteral("Błąd logowania");
const QString noServerText = QStringLiteral(
    "Serwer nie jest dostępny.\r\nNależy sprawdzić czy serwer został uruchomiony lub czy masz dostęp do "
    "zasobu sieciowego Kolvestra.");

QStringList rightsStatements(int user) {
    QStringList statements;
    for (const char* form : {"frmSlownikGrupa", "frmMagCreate", "frmMagWatch", "MagSur"}) {
        statements.append(QStringLiteral("select LpShow from kolv_RightsName where FormName  = N'%1'")
                              .arg(QString::fromLatin1(form)));
        statements.append(
            QStringLiteral("select RightsNumber,RightsUser  from kolv_user where UserID = %1").arg(user));
    }
    return statements;
}

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

TEST_F(MainWindow, StartedAsAnUnknownUserShowsNoNameAndNoMessage) {
    start(QStringLiteral("-c:\\Regalon\\connect.txt -32767"));
    EXPECT_EQ(context.UserSign, 32767);
    EXPECT_EQ(panel(QStringLiteral("keyLoginName")), QStringLiteral("Zalogowany: "));
    EXPECT_EQ(panel(QStringLiteral("keyDataName")), QStringLiteral("Baza: MAGAZYN"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
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
    EXPECT_EQ(languageFile(), QString());
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(MainWindow, ReadsUserFoldersAndRightsInTheirOrder) {
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
                           } +
                           rightsStatements(1)));
}

TEST_F(MainWindow, WithAMissingFileOffersOnlyWarehousesAndSettings) {
    const ClosedDefaultPort nobodyListens;
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    start({});
    EXPECT_EQ(messages.count(), 1) << qPrintable(messageTexts().join(u'|'));
    EXPECT_EQ(messages.last().Title, noServerTitle);
    EXPECT_EQ(messages.last().Text, noServerText);
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

struct BadFile {
    const char* name;
    QByteArray (*bytes)(const QByteArray& good);
};

class BadConnectionFile : public MainWindow, public ::testing::WithParamInterface<BadFile> {};

TEST_P(BadConnectionFile, EndsInOneMessageThatTheServerIsNotThere) {
    const ClosedDefaultPort nobodyListens;
    ConnectionSettings settings = settingsOf(warehouse);
    // The over-long line loses what stands behind its password: server and database.
    settings.Haslo = QByteArray(GetParam().name) == "OverLong" ? QString(300, u'h') : settings.Haslo;
    putConnectFile(GetParam().bytes(ConnectionFile::bytes(settings)));
    start({});
    ASSERT_EQ(messages.count(), 1) << qPrintable(messageTexts().join(u'|'));
    EXPECT_EQ(messages.last().Title, noServerTitle);
    EXPECT_EQ(messages.last().Text, noServerText);
    EXPECT_EQ(messages.last().Flags, 48);
    EXPECT_EQ(context.Settings.Server, QString());
    EXPECT_EQ(context.ConnMain, nullptr);
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(action(QStringLiteral("mnuKonfPlikuPol"))->isEnabled());
}

INSTANTIATE_TEST_SUITE_P(
    Start, BadConnectionFile,
    ::testing::Values(BadFile{"Empty", [](const QByteArray&) { return QByteArray(); }},
                      BadFile{"Truncated", [](const QByteArray& good) { return good.left(20); }},
                      BadFile{"OverLong", [](const QByteArray& good) { return good; }},
                      BadFile{"Garbage", [](const QByteArray&) { return QByteArray(3000, '\x80'); }}),
    [](const auto& file) { return std::string(file.param.name); });

TEST_F(MainWindow, ReachesTheEditorAfterAFailedLogin) {
    const ClosedDefaultPort nobodyListens;
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

TEST_F(MainWindow, StaysUpWhenItsLoadRoutineFails) {
    window = std::make_unique<mdiKolvestra>(context, ChildWindows());
    // Without its name the panel cannot be found.
    window->findChild<QLabel*>(QStringLiteral("keyLanguage"))->setObjectName(QString());
    window->MDIForm_Load({});
    showAndWait(window.get());
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmKolvestra - setPerms"));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("35601\r\n")))
        << qPrintable(messages.last().Text);
    EXPECT_TRUE(window->isVisible());
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
    EXPECT_NEAR(status->panel(2)->width(), 3528 / 15, 1);
    EXPECT_NEAR(status->panel(3)->width(), 706 / 15, 1);
    EXPECT_NEAR(status->panel(4)->width(), 2822 / 15, 1);
    EXPECT_NEAR(status->panel(5)->width(), 3881 / 15, 1);
    EXPECT_GE(status->panel(1)->width(), 882 / 15);
    EXPECT_LT(status->panel(1)->width(), 11809 / 15);
}

TEST_F(MainWindow, CannotBeResized) {
    start({});
    EXPECT_EQ(window->size(), QSize(1030, 760));
    window->resize(1400, 900);
    EXPECT_EQ(window->size(), QSize(1030, 760));
    window->resize(200, 100);
    EXPECT_EQ(window->size(), QSize(1030, 760));
}

TEST_F(MainWindow, SpeaksEnglishInItsPanelsAfterEnglishWasChosen) {
    start({});
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuAngielski"));
    EXPECT_EQ(panel(QStringLiteral("keyLoginName")), QStringLiteral("Login: ") + LocalWarehouse::login());
    EXPECT_EQ(panel(QStringLiteral("keyDataName")), QStringLiteral("Database: MAGAZYN"));
    EXPECT_EQ(panel(QStringLiteral("keyLanguage")), QStringLiteral("UK"));
    EXPECT_EQ(context.Language, QStringLiteral("UK"));
    EXPECT_EQ(languageFile(), QStringLiteral("English"));
    EXPECT_TRUE(action(QStringLiteral("mnuAngielski"))->isChecked());
    EXPECT_FALSE(action(QStringLiteral("mnuPolski"))->isChecked());
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);

    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuPolski"));
    EXPECT_EQ(panel(QStringLiteral("keyLoginName")),
              QStringLiteral("Użytkownik: ") + LocalWarehouse::login());
    EXPECT_EQ(panel(QStringLiteral("keyDataName")), QStringLiteral("Baza: MAGAZYN"));
    EXPECT_EQ(panel(QStringLiteral("keyLanguage")), QStringLiteral("PL"));
    EXPECT_EQ(languageFile(), QStringLiteral("Polish"));
    EXPECT_TRUE(action(QStringLiteral("mnuPolski"))->isChecked());
    EXPECT_FALSE(action(QStringLiteral("mnuAngielski"))->isChecked());
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuPolski"));
    EXPECT_TRUE(action(QStringLiteral("mnuPolski"))->isChecked());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MainWindow, IsBusyWhileItTakesALanguageOver) {
    start({});
    MousePointer seen = MousePointer::Default;
    // The tick comes and goes in the middle of the change.
    QObject::connect(action(QStringLiteral("mnuAngielski")), &QAction::toggled, window.get(),
                     [&seen] { seen = Screen::mousePointer(); });
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuAngielski"));
    EXPECT_EQ(seen, MousePointer::Custom);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(MainWindow, TakesTheBusyCursorOffWhenTheLanguageCannotBeTakenOver) {
    start({});
    // Without its name the panel cannot be found.
    window->findChild<QLabel*>(QStringLiteral("keyDataName"))->setObjectName(QString());
    chooseItem(QStringLiteral("mnuWersje"), QStringLiteral("mnuAngielski"));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_EQ(messages.count(), 0);
    EXPECT_TRUE(window->isVisible());
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
