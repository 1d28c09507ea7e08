#include "platform/KeyPreview.h"

#include <QApplication>
#include <QHash>
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

/// The classic virtual key of a key of the toolkit.
int keyCode(const QKeyEvent& event) {
    static const QHash<int, int> codes{
        {Qt::Key_Backspace, 8}, {Qt::Key_Tab, 9},     {Qt::Key_Backtab, 9},   {Qt::Key_Return, 13},
        {Qt::Key_Enter, 13},    {Qt::Key_Shift, 16},  {Qt::Key_Control, 17},  {Qt::Key_Alt, 18},
        {Qt::Key_Escape, 27},   {Qt::Key_PageUp, 33}, {Qt::Key_PageDown, 34}, {Qt::Key_End, 35},
        {Qt::Key_Home, 36},     {Qt::Key_Left, 37},   {Qt::Key_Up, 38},       {Qt::Key_Right, 39},
        {Qt::Key_Down, 40},     {Qt::Key_Insert, 45}, {Qt::Key_Delete, 46},
    };
    const int key = event.key();
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24)
        return 112 + (key - Qt::Key_F1);
    return codes.value(key, key);
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
    const bool claimed = m_claimed.contains({keyCode(*key), shiftMask(*key)});
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
    m_keyDown(keyCode(*key), shiftMask(*key));
    return claimed || !alive;
}

}  // namespace regalon
