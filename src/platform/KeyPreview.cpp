#include "platform/KeyPreview.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include <utility>

namespace regalon {
namespace {

int shiftMask(const QKeyEvent& event) {
    int mask = 0;
    if (event.modifiers().testFlag(Qt::ShiftModifier))
        mask |= ShiftMask::Shift;
    if (event.modifiers().testFlag(Qt::ControlModifier))
        mask |= ShiftMask::Ctrl;
    if (event.modifiers().testFlag(Qt::AltModifier))
        mask |= ShiftMask::Alt;
    return mask;
}

}  // namespace

KeyPreview::KeyPreview(QWidget* window, std::function<void(int, int)> keyDown)
    : QObject(window), m_window(window), m_keyDown(std::move(keyDown)) {
    qApp->installEventFilter(this);
}

void KeyPreview::claim(int keyCode, int shift) {
    m_claimed.insert({keyCode, shift});
}

bool KeyPreview::eventFilter(QObject* watched, QEvent* event) {
    const bool press = event->type() == QEvent::KeyPress;
    if ((!press && event->type() != QEvent::ShortcutOverride) || !watched->isWidgetType())
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (widget != m_window && !m_window->isAncestorOf(widget))
        return false;

    auto* key = static_cast<QKeyEvent*>(event);
    const bool claimed = m_claimed.contains({key->key(), shiftMask(*key)});
    if (!press) {
        if (claimed)
            key->accept();
        return claimed;
    }
    // An ignored key climbs from the control to its parents as the same event; the window sees it once.
    const bool climbing = key == m_lastEvent && widget == m_lastParent;
    m_lastEvent = key;
    m_lastParent = widget->parentWidget();
    if (climbing)
        return false;
    const QPointer<KeyPreview> alive(this);
    m_keyDown(key->key(), shiftMask(*key));
    return claimed || !alive;
}

}  // namespace regalon
