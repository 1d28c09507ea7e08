#include "platform/Twips.h"

#include <QWidget>

#include <gtest/gtest.h>

using namespace regalon;

namespace {

TEST(Twips, FifteenAreOnePixelAndHalvesGoUp) {
    EXPECT_EQ(toPixels(15450), 1030);
    EXPECT_EQ(toPixels(11400), 760);
    EXPECT_EQ(toPixels(7), 0);
    EXPECT_EQ(toPixels(8), 1);
    EXPECT_EQ(toPixels(-7), 0);
    EXPECT_EQ(toPixels(-8), -1);
    EXPECT_EQ(toPixels(-15), -1);
    EXPECT_EQ(toTwips(13), 195);
    EXPECT_DOUBLE_EQ(toPixelsF(205), 205.0 / 15);
}

TEST(Twips, WidgetsThatTouchInTwipsTouchOnTheScreen) {
    QWidget parent;
    QWidget first(&parent);
    QWidget second(&parent);
    for (int left = 0; left < 40; ++left) {
        place(&first, left, 0, 37, 100);
        place(&second, left + 37, 0, 37, 100);
        EXPECT_EQ(first.geometry().right() + 1, second.geometry().left()) << left;
    }
    place(&first, 600, 840, 14160, 7440);
    EXPECT_EQ(first.geometry(), QRect(40, 56, 944, 496));
}

}  // namespace
