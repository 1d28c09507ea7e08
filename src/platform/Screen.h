#pragma once

class QIcon;

namespace regalon {

enum class MousePointer { Default = 0, Arrow = 1, Hourglass = 11, Custom = 99 };

/// The mouse pointer over all windows of the program.
namespace Screen {
MousePointer mousePointer();
/// Custom shows the icon of setMouseIcon, or the hourglass while there is none.
void setMousePointer(MousePointer pointer);
/// The picture of the custom pointer; its hot spot is the top left corner of the arrow, one pixel inside.
void setMouseIcon(const QIcon& icon);
}  // namespace Screen

/// Shows the custom (busy) pointer from construction to destruction, then the default one, whatever was there
/// before: the end of the inner of two busy routines is the end of both.
class BusyPointer {
public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;
};

/// Shows the default pointer from construction to destruction, then the one that was there before: no
/// hourglass stands over a message.
class PlainPointer {
public:
    PlainPointer();
    ~PlainPointer();
    PlainPointer(const PlainPointer&) = delete;
    PlainPointer& operator=(const PlainPointer&) = delete;

private:
    MousePointer m_before;
};

}  // namespace regalon
