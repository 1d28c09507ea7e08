// The load routine of the main window.
#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/ProgramFolder.h"
#include "common/clsLanguage.h"
#include "common/modFunctions.h"
#include "platform/StatusBar.h"
#include "shell/StartArguments.h"
#include "shell/clsSAPGetData.h"
#include "shell/mdiKolvestra.h"
#include "shell/modConnection.h"
#include "shell/modMain.h"

#include <QAction>
#include <QMenu>

namespace regalon {

namespace {

constexpr qint16 defaultUserSign = 1;

}  // namespace

void mdiKolvestra::MDIForm_Load(const QString& commandLine) {
    WindowTrap("frmKolvestra - setPerms", [&] { startUp(commandLine); });
}

void mdiKolvestra::startUp(const QString& commandLine) {
    objLanguage = std::make_unique<clsLanguage>();
    cSapGetData = std::make_unique<clsSAPGetData>(m_context);
    forceSize();
    takeCommandLine(commandLine);
    if (TestConnection(m_context)) {
        fillContext();
    } else {
        // The menu of the editor stays on, so that a wrong connection file can be mended.
        for (QMenu* menu : {mnuProg, mnuWersje, mnuOkno}) {
            menu->menuAction()->setEnabled(false);
        }
    }
    fillPanels();
    chooseLanguageFile();
    // It is saved under UserName: where that is not the SQL login, the next start does not find it.
    m_profile.LoadUserProfile(m_context.Settings.Login);
    SetMousePointer(false);
    applyRights();
    const ConnectionSettings& settings = m_context.Settings;
    m_context.DsnFilePath = WriteDsnFile(settings.Server, settings.Baza, settings.Login);
}

void mdiKolvestra::takeCommandLine(const QString& commandLine) {
    StartArguments arguments;
    if (!StartArguments::read(commandLine, arguments)) {
        arguments.ConnectionFilePath = QStringLiteral("c:\\Regalon\\connect.txt");
        arguments.UserSign = defaultUserSign;
    }
    m_context.ConnectionFilePath = arguments.ConnectionFilePath;
    m_context.UserSign = arguments.UserSign;
}

void mdiKolvestra::fillContext() {
    Main(m_context);
    m_context.UserName = cSapGetData->GetUserName(m_context.UserSign);
    m_context.PathFile = cSapGetData->GetKolvestraPatch();
    m_context.ProgramFolder = programFolder();
    m_context.PathBitmapMagSur = cSapGetData->GetPathBitmapMagSur();
    m_context.PathBitmapPlanProd = cSapGetData->GetPathBitmapPlanProd();
    for (QMenu* menu : {mnuProg, mnuWersje, mnuOkno, mnuUUstawienia}) {
        menu->menuAction()->setEnabled(true);
    }
}

void mdiKolvestra::fillPanels() {
    stbOK->setPanelText(QStringLiteral("keyLoginName"), QStringLiteral("Zalogowany: ") + m_context.UserName);
    stbOK->setPanelText(QStringLiteral("keyDataName"), QStringLiteral("Baza: ") + m_context.Settings.Baza);
    stbOK->setPanelText(QStringLiteral("keyLanguage"), QStringLiteral("PL"));
}

/// Nothing has set the language at this moment: the one of the last run is stored at exit but not read back.
/// So the program speaks by its literals until the user chooses.
void mdiKolvestra::chooseLanguageFile() {
    if (m_context.Language == QStringLiteral("PL")) {
        objLanguage->setFileName(QStringLiteral("Polish"));
    } else if (m_context.Language == QStringLiteral("UK")) {
        objLanguage->setFileName(QStringLiteral("English"));
    } else if (m_context.Language == QStringLiteral("D")) {
        objLanguage->setFileName(QStringLiteral("Germany"));
    }
}

}  // namespace regalon
