#include "platform/Screen.h"

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>

namespace regalon {
namespace {

struct State {
    MousePointer pointer = MousePointer::Default;
    QIcon icon;
    bool overriding = false;
};

State& state() {
    static State current;
    return current;
}

QCursor cursor(MousePointer pointer) {
    if (pointer == MousePointer::Arrow)
        return QCursor(Qt::ArrowCursor);
    if (pointer == MousePointer::Custom && !state().icon.isNull())
        return QCursor(state().icon.pixmap(32, 32), 1, 1);
    return QCursor(Qt::WaitCursor);
}

/// The toolkit keeps a stack of override cursors; the program's pointer takes one place on it.
void show() {
    if (qGuiApp == nullptr)
        return;
    State& current = state();
    if (current.pointer == MousePointer::Default) {
        if (current.overriding)
            QGuiApplication::restoreOverrideCursor();
        current.overriding = false;
    } else if (current.overriding) {
        QGuiApplication::changeOverrideCursor(cursor(current.pointer));
    } else {
        QGuiApplication::setOverrideCursor(cursor(current.pointer));
        current.overriding = true;
    }
}

}  // namespace

MousePointer Screen::mousePointer() {
    return state().pointer;
}

void Screen::setMousePointer(MousePointer pointer) {
    state().pointer = pointer;
    show();
}

void Screen::setMouseIcon(const QIcon& icon) {
    state().icon = icon;
    if (state().pointer == MousePointer::Custom)
        show();
}

BusyPointer::BusyPointer() {
    Screen::setMousePointer(MousePointer::Custom);
}

BusyPointer::~BusyPointer() {
    Screen::setMousePointer(MousePointer::Default);
}

PlainPointer::PlainPointer() : m_before(Screen::mousePointer()) {
    Screen::setMousePointer(MousePointer::Default);
}

PlainPointer::~PlainPointer() {
    Screen::setMousePointer(m_before);
}

}  // namespace regalon
