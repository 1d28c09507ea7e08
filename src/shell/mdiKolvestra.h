#pragma once

#include "common/modINIModule.h"
#include "platform/ImageList.h"
#include "shell/ChildWindow.h"

#include <QMainWindow>
#include <QPointer>
#include <QString>

#include <memory>

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QVBoxLayout;

namespace regalon {

struct AppContext;
class StatusBar;
class clsLanguage;
class clsSAPGetData;

/// The main window and with it the program: its load routine brings everything up, its unload routine takes
/// everything down, and it is the parent of all warehouse windows.
class mdiKolvestra : public QMainWindow {
    Q_OBJECT

public:
    /// Assembles the window. The context must outlive it.
    mdiKolvestra(AppContext& context, ChildWindows children);
    ~mdiKolvestra() override;

    /// The load routine: reads the command line (arguments joined by one blank each), logs in and fills the
    /// context. To be called once, before the window is shown. It has told the user about every failure and
    /// leaves a window that can at least reach the editor of the connection file.
    void MDIForm_Load(const QString& commandLine);

    /// True sets the busy cursor, false the default one. Never fails.
    void SetMousePointer(bool busy);

    /// The texts of the user's language. Null before the load routine and after the unload routine.
    const clsLanguage* language() const { return objLanguage.get(); }

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A child window of the menu and what exists of it.
    struct Child {
        ChildWindow window;
        QAction* item = nullptr;
        QString caption;  ///< of its menu item, without the mark of the access key
        QPointer<QMdiSubWindow> frame;
        QWidget* content = nullptr;
    };

    // Assembly (mdiKolvestra.cpp)
    void addImages();
    void addToolBar(QVBoxLayout* layout);
    void addStatusPanels();
    void addMenus();
    void addProgramMenu();
    void addMaterialMenu(ChildWindows& children);
    void addSettingsMenu();
    void addLanguageMenu();
    void addWindowMenu();
    QMenu* addMenu(const QString& name, const QString& caption);
    QAction* addItem(QMenu* menu, const QString& name, const QString& caption);
    void forceSize();

    // Start-up (mdiKolvestra_Start.cpp)
    void startUp(const QString& commandLine);
    void takeCommandLine(const QString& commandLine);
    void fillContext();
    void chooseLanguageFile();
    void fillPanels();

    // Rights (mdiKolvestra_Rights.cpp)
    void applyRights();
    void setMenusByRights();

    // Menus (mdiKolvestra_Menu.cpp)
    void openChild(Child& child);
    QMdiSubWindow* frameOf(Child& child);
    void openConnectionEditor();
    void chooseLanguage(QAction* item);
    void takeLanguage(QAction* item);
    void updateWindowList();
    void bringForward(QMdiSubWindow* frame);
    void tlbCmd_ButtonClick(const QString& key);

    // Closing (mdiKolvestra_Close.cpp)
    bool MDIForm_QueryUnload();
    bool ExitProg();
    void MDIForm_Unload();

    AppContext& m_context;
    std::unique_ptr<clsLanguage> objLanguage;
    std::unique_ptr<clsSAPGetData> cSapGetData;
    modINIModule m_profile;

    ImageList imgSmall;
    ImageList ilsMouse;
    QMdiArea* m_area = nullptr;
    StatusBar* stbOK = nullptr;
    QMenu* mnuProg = nullptr;
    QMenu* mnuMaterial = nullptr;
    QMenu* mnuUUstawienia = nullptr;
    QMenu* mnuWersje = nullptr;
    QMenu* mnuOkno = nullptr;
    QAction* mnuKonfPlikuPol = nullptr;
    QAction* mnuPolski = nullptr;
    QAction* mnuAngielski = nullptr;
    QAction* mnuNiemiecki = nullptr;

    Child m_magWatch;
    Child m_magCreate;
    Child m_magWatchShiftLoc;
    Child m_magWatchBarCodeLoc;
    bool m_unloaded = false;
};

}  // namespace regalon
