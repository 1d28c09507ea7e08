// What the menus and the toolbar of the main window do.
#include "common/AppContext.h"
#include "common/clsLanguage.h"
#include "platform/RunTimeError.h"
#include "platform/StatusBar.h"
#include "platform/Twips.h"
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
    frame->show();
    child.content->show();
    bringForward(frame);
    updateWindowList();
}

/// The frame of the one instance, made at first use.
QMdiSubWindow* mdiKolvestra::frameOf(Child& child) {
    if (!child.frame) {
        if (!child.window.create) {
            raiseNotAvailable(child.caption);
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
    try {
        takeLanguage(item);
    } catch (const std::exception&) {
        // The language stays as far as it was taken over.
    }
    SetMousePointer(false);
}

void mdiKolvestra::takeLanguage(QAction* item) {
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
        // A kept oddity: the start-up names this file "Germany". The menu cannot come here, since the German
        // item is off.
        objLanguage->setFileName(QStringLiteral("Niemiecki"));
        m_context.Language = QStringLiteral("D");
    }
    stbOK->setPanelText(QStringLiteral("keyLanguage"), m_context.Language);
}

void mdiKolvestra::updateWindowList() {
    mnuOkno->clear();
    int number = 0;
    for (QMdiSubWindow* frame : m_area->subWindowList(QMdiArea::CreationOrder)) {
        if (frame->isHidden()) {
            continue;
        }
        ++number;
        const QString title = frame->windowTitle().replace(u'&', QStringLiteral("&&"));
        QAction* item = mnuOkno->addAction(u'&' + QString::number(number) + u' ' + title);
        item->setCheckable(true);
        item->setChecked(frame == m_area->activeSubWindow());
        connect(item, &QAction::triggered, frame, [this, frame] { bringForward(frame); });
    }
}

void mdiKolvestra::bringForward(QMdiSubWindow* frame) {
    if (frame->isMinimized()) {
        frame->showNormal();
    }
    m_area->setActiveSubWindow(frame);
}

void mdiKolvestra::tlbCmd_ButtonClick(const QString& key) {
    if (key == QStringLiteral("Wyjscie")) {
        close();
    }
}

}  // namespace regalon
