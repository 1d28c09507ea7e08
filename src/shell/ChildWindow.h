#pragma once

#include <QtGlobal>

#include <functional>

class QWidget;

namespace regalon {

/// One child window as the menu knows it. main() hands them in, so that the main window depends on none of
/// them. The widget runs its load routine when it is shown for the first time or again after it was closed,
/// and its unload routine when it is closed.
struct ChildWindow {
    /// Makes the one instance; the main window becomes its owner. Empty for a window that this program does
    /// not have: opening it then fails with 429, and the user is told that the window is not there.
    std::function<QWidget*()> create;
    /// Called before each showing with the main window's position on the screen, in twips. May be empty.
    std::function<void(QWidget* window, qint32 top, qint32 left)> beforeShow;
};

/// The child windows behind the menu items of the warehouse.
struct ChildWindows {
    ChildWindow MagWatch;
    ChildWindow MagCreate;
    ChildWindow MagWatchShiftLoc;
    ChildWindow MagWatchBarCodeLoc;
};

}  // namespace regalon
