// The assembly of the main window; its start-up, menus and closing have files of their own.
#include "shell/mdiKolvestra.h"

#include "artwork/Icons.h"
#include "common/ErrorTrap.h"
#include "common/clsLanguage.h"
#include "platform/FileIcon.h"
#include "platform/Screen.h"
#include "platform/StatusBar.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "shell/clsSAPGetData.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QResizeEvent>
#include <QVBoxLayout>

namespace regalon {

namespace {

// Twips.
constexpr int formWidth = 15450;
constexpr int formHeight = 11400;

constexpr int busyImage = 1;

}  // namespace

mdiKolvestra::mdiKolvestra(AppContext& context, ChildWindows children) : m_context(context) {
    setObjectName(QStringLiteral("mdiKolvestra"));
    setWindowTitle(QStringLiteral("Regalon "));
    setWindowFlag(Qt::WindowMaximizeButtonHint, false);
    addImages();

    auto* content = new QWidget(this);
    auto* layout = new QVBoxLayout(content);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    addToolBar(layout);
    m_area = new QMdiArea(content);
    m_area->setObjectName(QStringLiteral("mdiArea"));
    m_area->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_area->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    layout->addWidget(m_area, 1);
    setCentralWidget(content);

    addStatusPanels();
    addMenus();
    addProgramMenu();
    addMaterialMenu(children);
    addSettingsMenu();
    addLanguageMenu();
    addWindowMenu();
}

mdiKolvestra::~mdiKolvestra() {
    // The area goes with the base class and tells of each child that goes; nobody is here to hear it then.
    m_area->disconnect(this);
}

void mdiKolvestra::addImages() {
    loadProgramIcons();
    setWindowIcon(fileIcon(QStringLiteral(":/icons/regalon.ico")));
    imgSmall.add(fileIcon(QStringLiteral(":/icons/exit.ico")));
    ilsMouse.add(fileIcon(QStringLiteral(":/icons/busy.ico")));
    Screen::setMouseIcon(ilsMouse.icon(busyImage));
}

void mdiKolvestra::addToolBar(QVBoxLayout* layout) {
    auto* clbCmd = new CoolBar(this);
    clbCmd->setObjectName(QStringLiteral("clbCmd"));
    auto* tlbCmd = new ToolBar(clbCmd);
    tlbCmd->setObjectName(QStringLiteral("tlbCmd"));
    tlbCmd->addSeparator(QStringLiteral("sep"));
    tlbCmd->addButton(QStringLiteral("Wyjscie"), QStringLiteral("Wyjście"), {}, imgSmall.icon(1));
    tlbCmd->addSeparator(QStringLiteral("sep2"));
    clbCmd->addBand(tlbCmd);
    layout->addWidget(clbCmd);
    connect(tlbCmd, &ToolBar::buttonClick, this, [this](const QString& key) {
        WindowTrap("frmKolvestra - MDIForm_Unload", [&] { tlbCmd_ButtonClick(key); });
    });
}

void mdiKolvestra::addStatusPanels() {
    stbOK = new StatusBar(this);
    stbOK->setObjectName(QStringLiteral("stbOK"));
    stbOK->addPanel({}, 11809, StatusBar::AutoSize::Spring, 882);
    stbOK->addPanel(QStringLiteral("keyRecordCount"), 3528);
    stbOK->addPanel(QStringLiteral("keyLanguage"), 706);
    stbOK->addPanel(QStringLiteral("keyDataName"), 2822);
    stbOK->addPanel(QStringLiteral("keyLoginName"), 3881);
    setStatusBar(stbOK);
}

void mdiKolvestra::addMenus() {
    mnuProg = addMenu(QStringLiteral("mnuProg"), QStringLiteral("&Program"));
    mnuMaterial = addMenu(QStringLiteral("mnuMaterial"), QStringLiteral("M&agazyny"));
    mnuUUstawienia = addMenu(QStringLiteral("mnuUUstawienia"), QStringLiteral("&Ustawienia"));
    mnuWersje = addMenu(QStringLiteral("mnuWersje"), QStringLiteral("&Wersje językowe"));
    mnuOkno = addMenu(QStringLiteral("mnuOkno"), QStringLiteral("&Okno"));
}

QMenu* mdiKolvestra::addMenu(const QString& name, const QString& caption) {
    QMenu* menu = menuBar()->addMenu(caption);
    menu->setObjectName(name);
    menu->menuAction()->setObjectName(name);
    return menu;
}

QAction* mdiKolvestra::addItem(QMenu* menu, const QString& name, const QString& caption) {
    QAction* item = menu->addAction(caption);
    item->setObjectName(name);
    return item;
}

void mdiKolvestra::addProgramMenu() {
    QAction* mnuPKoniec = addItem(mnuProg, QStringLiteral("mnuPKoniec"), QStringLiteral("&Koniec"));
    mnuPKoniec->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_X));
    connect(mnuPKoniec, &QAction::triggered, this,
            [this] { WindowTrap("frmKolvestra - mnuPKoniec_Click", [this] { close(); }); });
}

void mdiKolvestra::addMaterialMenu(ChildWindows& children) {
    const auto add = [this](const QString& name, const QString& caption, Child& child, ChildWindow& window) {
        child.window = std::move(window);
        child.caption = QString(caption).remove(u'&');
        const QString reportName = QStringLiteral("frmKolvestra - ") + name + QStringLiteral("_Click");
        child.item = addItem(mnuMaterial, name, caption);
        connect(child.item, &QAction::triggered, this,
                [this, reportName, &child] { WindowTrap(reportName, [&] { openChild(child); }); });
    };
    add(QStringLiteral("mnuMagWatch"), QStringLiteral("&Podgląd magazynu"), m_magWatch, children.MagWatch);
    add(QStringLiteral("mnuMagCreate"), QStringLiteral("&Zarzadzanie magazynem"), m_magCreate,
        children.MagCreate);
    add(QStringLiteral("mnuMagWatchShiftLoc"), QStringLiteral("&Przesunięcia surowców na magazynie"),
        m_magWatchShiftLoc, children.MagWatchShiftLoc);
    mnuMaterial->addSeparator()->setObjectName(QStringLiteral("mnuMagSurSeparator"));
    add(QStringLiteral("mnuMagSurBarCodeLoc"), QStringLiteral("&Zawartość lokalizacji - kody kreskowe"),
        m_magWatchBarCodeLoc, children.MagWatchBarCodeLoc);
}

void mdiKolvestra::addSettingsMenu() {
    mnuKonfPlikuPol = addItem(mnuUUstawienia, QStringLiteral("mnuKonfPlikuPol"),
                              QStringLiteral("&Konfiguracja pliku połączenia"));
    connect(mnuKonfPlikuPol, &QAction::triggered, this, [this] {
        WindowTrap("frmKolvestra - mnuKonfPlikuPol_Click", [this] { openConnectionEditor(); });
    });
}

void mdiKolvestra::addLanguageMenu() {
    mnuPolski = addItem(mnuWersje, QStringLiteral("mnuPolski"), QStringLiteral("&Polski"));
    mnuAngielski = addItem(mnuWersje, QStringLiteral("mnuAngielski"), QStringLiteral("&Angielski"));
    mnuNiemiecki = addItem(mnuWersje, QStringLiteral("mnuNiemiecki"), QStringLiteral("&Niemiecki"));
    for (QAction* item : {mnuPolski, mnuAngielski, mnuNiemiecki}) {
        item->setCheckable(true);
    }
    for (QAction* item : {mnuPolski, mnuAngielski}) {
        connect(item, &QAction::triggered, this, [this, item] { chooseLanguage(item); });
    }
    // Off by design, and nothing turns it on, although there are German texts.
    mnuNiemiecki->setEnabled(false);
}

void mdiKolvestra::addWindowMenu() {
    connect(mnuOkno, &QMenu::aboutToShow, this, &mdiKolvestra::updateWindowList);
    connect(m_area, &QMdiArea::subWindowActivated, this, &mdiKolvestra::updateWindowList);
}

void mdiKolvestra::forceSize() {
    setFixedSize(toPixels(formWidth), toPixels(formHeight));
}

void mdiKolvestra::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    forceSize();
}

void mdiKolvestra::SetMousePointer(bool busy) {
    try {
        if (busy) {
            Screen::setMouseIcon(ilsMouse.icon(busyImage));
        }
        Screen::setMousePointer(busy ? MousePointer::Custom : MousePointer::Default);
    } catch (const std::exception&) {
        // A wrong pointer is no reason to stop anything.
    }
}

}  // namespace regalon
