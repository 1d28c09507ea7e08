// What the menus and the toolbar of the main window do.
#include "common/AppContext.h"
#include "platform/RunTimeError.h"
#include "platform/StatusBar.h"
#include "platform/Twips.h"
#include "shell/clsLanguage.h"
#include "shell/clsSAPGetData.h"
#include "shell/frmZapisParamPlik.h"
#include "shell/mdiKolvestra.h"

#include <QAction>
#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

namespace regalon {

void mdiKolvestra::openChild(Child& child) {
    QMdiSubWindow* frame = frameOf(child);
    if (child.window.beforeShow) {
        child.window.beforeShow(child.content, toTwips(frameGeometry().top()),
                                toTwips(frameGeometry().left()));
    }
    if (frame->isMinimized()) {
        frame->showNormal();
    }
    frame->show();
    child.content->show();
    m_area->setActiveSubWindow(frame);
    updateWindowList();
}

/// The frame of the one instance, made at first use.
QMdiSubWindow* mdiKolvestra::frameOf(Child& child) {
    if (!child.frame) {
        if (!child.window.create) {
            throw RunTimeError(RunTime::CannotCreateObject);
        }
        child.content = child.window.create();
        child.frame = m_area->addSubWindow(child.content);
        // Closing unloads the window; the instance lives on for the next opening.
        child.frame->setAttribute(Qt::WA_DeleteOnClose, false);
        child.content->setAttribute(Qt::WA_DeleteOnClose, false);
        child.content->installEventFilter(this);
    }
    return child.frame;
}

/// A child that closes itself hides its content only; its frame has to go with it.
bool mdiKolvestra::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::HideToParent) {
        for (const Child* child : {&m_magWatch, &m_magCreate, &m_magWatchShiftLoc, &m_magWatchBarCodeLoc}) {
            if (child->content == watched && child->frame) {
                child->frame->hide();
                QMetaObject::invokeMethod(this, &mdiKolvestra::updateWindowList, Qt::QueuedConnection);
            }
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void mdiKolvestra::openConnectionEditor() {
    frmZapisParamPlik editor(m_context, this);
    editor.exec();
}

/// Runs without the standard handler: nothing of it may stop the user's work.
void mdiKolvestra::chooseLanguage(QAction* item) {
    SetMousePointer(true);
    for (QAction* language : {mnuPolski, mnuNiemiecki, mnuAngielski}) {
        language->setChecked(false);
    }
    item->setChecked(true);
    const ConnectionSettings& settings = m_context.Settings;
    if (mnuAngielski->isChecked()) {
        objLanguage->setFileName(QStringLiteral("English"));
        m_context.Language = QStringLiteral("UK");
        stbOK->setPanelText(QStringLiteral("keyDataName"), QStringLiteral("Database: ") + settings.Baza);
        stbOK->setPanelText(QStringLiteral("keyLoginName"), QStringLiteral("Login: ") + settings.Login);
    } else if (mnuPolski->isChecked()) {
        objLanguage->setFileName(QStringLiteral("Polish"));
        m_context.Language = QStringLiteral("PL");
        stbOK->setPanelText(QStringLiteral("keyDataName"), QStringLiteral("Baza: ") + settings.Baza);
        stbOK->setPanelText(QStringLiteral("keyLoginName"), QStringLiteral("Użytkownik: ") + settings.Login);
    } else {
        // The start-up knows this file as "Germany"; both names are in use at sites.
        objLanguage->setFileName(QStringLiteral("Niemiecki"));
        m_context.Language = QStringLiteral("D");
    }
    stbOK->setPanelText(QStringLiteral("keyLanguage"), m_context.Language);
    SetMousePointer(false);
}

void mdiKolvestra::updateWindowList() {
    mnuOkno->clear();
    int number = 0;
    for (QMdiSubWindow* frame : m_area->subWindowList(QMdiArea::CreationOrder)) {
        if (frame->isHidden()) {
            continue;
        }
        ++number;
        QAction* item = mnuOkno->addAction(QStringLiteral("&%1 %2").arg(number).arg(frame->windowTitle()));
        item->setCheckable(true);
        item->setChecked(frame == m_area->activeSubWindow());
        connect(item, &QAction::triggered, frame, [this, frame] { m_area->setActiveSubWindow(frame); });
    }
}

void mdiKolvestra::tlbCmd_ButtonClick(const QString& key) {
    if (key == QStringLiteral("Wyjscie")) {
        close();
    }
}

}  // namespace regalon
