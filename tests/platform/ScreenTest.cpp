#include "platform/Screen.h"

#include <QCursor>
#include <QGuiApplication>
#include <QIcon>
#include <QPixmap>

#include <gtest/gtest.h>

using namespace regalon;

namespace {

TEST(Screen, ThePointerIsShownOverAllWindows) {
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    Screen::setMousePointer(MousePointer::Hourglass);
    ASSERT_NE(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    Screen::setMousePointer(MousePointer::Arrow);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::ArrowCursor);
    Screen::setMousePointer(MousePointer::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(Screen, TheCustomPointerIsTheMouseIcon) {
    Screen::setMousePointer(MousePointer::Custom);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    QPixmap picture(32, 32);
    picture.fill(Qt::green);
    Screen::setMouseIcon(QIcon(picture));
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::BitmapCursor);
    Screen::setMousePointer(MousePointer::Default);
    Screen::setMouseIcon(QIcon());
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(Screen, TheBusyPointerGivesWayToTheDefaultWhateverWasThere) {
    Screen::setMousePointer(MousePointer::Hourglass);
    {
        const BusyPointer busy;
        EXPECT_EQ(Screen::mousePointer(), MousePointer::Custom);
    }
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    try {
        const BusyPointer busy;
        throw 1;
    } catch (int) {
    }
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST(Screen, ThePlainPointerStandsOverAMessageAndGivesTheOldOneBack) {
    const BusyPointer busy;
    {
        const PlainPointer plain;
        EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    }
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Custom);
}

}  // namespace
