#include "platform/Screen.h"
#include "support/Events.h"
#include "views/WatchWindow.h"

#include <QApplication>
#include <QKeyEvent>

namespace regalon {
namespace {

/// Form_KeyDown: what the window does with a key before the control that has the focus.
class FrmMagWatchFormKeyDown : public test::WatchWindow {
protected:
    /// Presses a key over the busy pointer and returns the pointer after it. The modifiers are held already:
    /// their own presses would take the pointer off before the key comes.
    MousePointer pointerAfter(Qt::Key pressed, Qt::KeyboardModifiers modifiers) {
        Screen::setMousePointer(MousePointer::Custom);
        QKeyEvent press(QEvent::KeyPress, pressed, modifiers);
        QApplication::sendEvent(window.get(), &press);
        const MousePointer after = Screen::mousePointer();
        Screen::setMousePointer(MousePointer::Default);
        return after;
    }
};

TEST_F(FrmMagWatchFormKeyDown, AltWUnloadsAndTakesTheBusyPointerOff) {
    open();
    EXPECT_EQ(pointerAfter(Qt::Key_W, Qt::AltModifier), MousePointer::Default);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchFormKeyDown, AltDTakesTheBusyPointerOffAndDoesNothingElse) {
    open();
    clickLocation(QStringLiteral("1_2_1_1"));
    const QString clicked = label("lblObjectClick")->text();
    warehouse.server.clearTrace();
    EXPECT_EQ(pointerAfter(Qt::Key_D, Qt::AltModifier), MousePointer::Default);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(label("lblObjectClick")->text(), clicked);
    EXPECT_EQ(warehouse.server.trace(), QStringList());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchFormKeyDown, EveryOtherKeyTakesTheBusyPointerOffAndLeavesTheWindow) {
    open();
    const QList<QPair<Qt::Key, Qt::KeyboardModifiers>> keys{
        {Qt::Key_W, Qt::NoModifier},
        {Qt::Key_W, Qt::ControlModifier},
        {Qt::Key_W, Qt::AltModifier | Qt::ShiftModifier},
        {Qt::Key_W, Qt::AltModifier | Qt::ControlModifier},
        {Qt::Key_D, Qt::NoModifier},
        {Qt::Key_F5, Qt::NoModifier},
        {Qt::Key_Escape, Qt::NoModifier},
        {Qt::Key_Return, Qt::NoModifier}};
    for (const auto& [pressed, modifiers] : keys) {
        EXPECT_EQ(pointerAfter(pressed, modifiers), MousePointer::Default) << pressed;
        EXPECT_TRUE(window->isVisible()) << pressed;
    }
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchFormKeyDown, AKeyInATextBoxTakesTheBusyPointerOffAndIsTyped) {
    open();
    Screen::setMousePointer(MousePointer::Custom);
    test::key(box("txtRank"), Qt::Key_W);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_EQ(box("txtRank")->text(), QStringLiteral("w"));
}

}  // namespace
}  // namespace regalon
