#pragma once

#include "common/clsLanguage.h"
#include "shell/ShellFixture.h"
#include "shell/mdiKolvestra.h"
#include "support/Events.h"

#include <QAction>
#include <QFile>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>

namespace regalon::test {

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
    /// Starts with stand-ins behind the two first items of the warehouse menu and opens both; the second one
    /// is then in front.
    void openTwoChildren() {
        ChildWindows children;
        children.MagWatch.create = [this] { return child = titled(QStringLiteral("Pierwsze")); };
        children.MagCreate.create = [this] { return second = titled(QStringLiteral("Drugie & ostatnie")); };
        start({}, children);
        openView();
        chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagCreate"));
    }
    ChildStandIn* titled(const QString& title) {
        auto* made = new ChildStandIn(&context);
        made->setWindowTitle(title);
        return made;
    }
    QWidget* active() const {
        const QMdiSubWindow* frame = area()->activeSubWindow();
        return frame == nullptr ? nullptr : frame->widget();
    }
    /// Chooses an entry of the list of windows with the mouse, counted from 0.
    void chooseWindow(int entry) {
        auto* menu = window->findChild<QMenu*>(QStringLiteral("mnuOkno"));
        QMenuBar* bar = window->menuBar();
        clickAt(bar, bar->actionGeometry(menu->menuAction()).center());
        ASSERT_TRUE(waitFor([menu] { return menu->isVisible(); }));
        clickAt(menu, menu->actionGeometry(menu->actions().at(entry)).center());
    }
    QString languageFile() const { return window->language()->FileName(); }
    void putConnectFile(const QByteArray& bytes) {
        QFile file(inRegalon(QStringLiteral("connect.txt")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        ASSERT_EQ(file.write(bytes), bytes.size());
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
    QPointer<ChildStandIn> second;
    int created = 0;
};

}  // namespace regalon::test
