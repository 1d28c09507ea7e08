// The unload routines of the main window.
#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/clsLanguage.h"
#include "common/modFunctions.h"
#include "platform/MsgBox.h"
#include "platform/RunTimeError.h"
#include "platform/UserSettings.h"
#include "shell/clsSAPGetData.h"
#include "shell/mdiKolvestra.h"
#include "shell/modConnection.h"

#include <QCloseEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace regalon {

void mdiKolvestra::closeEvent(QCloseEvent* event) {
    if (m_unloaded) {
        event->accept();
        return;
    }
    if (!MDIForm_QueryUnload()) {
        event->ignore();
        return;
    }
    // The children go first: what they do at their own unload needs the connection. A hidden frame is that of
    // a child which was closed, and so unloaded, before.
    for (QMdiSubWindow* frame : m_area->subWindowList()) {
        if (!frame->isHidden()) {
            frame->close();
        }
    }
    m_unloaded = true;
    MDIForm_Unload();
    event->accept();
}

/// True if the window may go.
bool mdiKolvestra::MDIForm_QueryUnload() {
    bool cancel = true;
    WindowTrap("frmKolvestra - MDIForm_QueryUnload", [&] {
        if (ExitProg()) {
            cancel = false;
        }
    });
    return !cancel;
}

bool mdiKolvestra::ExitProg() {
    bool exit = false;
    WindowTrap("frmKolvestra - ExitProg", [&] {
        if (!objLanguage) {
            throw RunTimeError(RunTime::ObjectNotSet);
        }
        const QString window = objectName();
        const QString name = QStringLiteral("Exit");
        const QString text = objLanguage->GetMsgBoxText(
            window, name, QStringLiteral("Czy na pewno chcesz zakończyć pracę z programem?"));
        const QString title = objLanguage->GetMsgBoxTitle(window, name, QStringLiteral("Info..."));
        exit = MsgBox(text, MsgFlag::YesNo | MsgFlag::Information, title) == MsgResult::Yes;
    });
    return exit;
}

void mdiKolvestra::MDIForm_Unload() {
    WindowTrap("frmKolvestra - MDIForm_Unload", [this] {
        m_profile.SaveUserProfile(m_context.UserName);
        CloseConnections(m_context);
        SaveSetting(QStringLiteral("Kolvestra"), QStringLiteral("Login"), QStringLiteral("strLang"),
                    m_context.Language);
        objLanguage.reset();
        DeleteDsnFile(m_context.DsnFilePath);
    });
}

}  // namespace regalon
