#include "platform/Failing.h"
#include "platform/Paths.h"
#include "platform/PictureBox.h"
#include "support/Events.h"

#include <QImage>

#include <gtest/gtest.h>

#include <limits>

using namespace regalon;
using namespace regalon::test;

namespace {

Picture pictureOf(int width, int height, const QColor& color) {
    const QString path = QStringLiteral("C:\\Regalon\\box.bmp");
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    image.save(Paths::toFile(path));
    return Picture::read(path);
}

class PictureBoxTest : public ::testing::Test {
protected:
    PictureBoxTest() {
        box.setFixedSize(300, 100);
        showAndWait(&box);
    }

    /// Where the box shows the colour.
    QRect shown(const QColor& color) {
        const QImage image = box.grab().toImage();
        QRect found;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (image.pixelColor(x, y) == color)
                    found = found.united(QRect(x, y, 1, 1));
            }
        }
        return found;
    }

    PictureBox box;
};

TEST_F(PictureBoxTest, ASmallPictureStandsInTheMiddleAsItIs) {
    box.setPicture(pictureOf(40, 20, Qt::red));
    EXPECT_EQ(shown(Qt::red), QRect(130, 40, 40, 20));
    EXPECT_EQ(box.pictureRect(), QRect(130, 40, 40, 20));
}

TEST_F(PictureBoxTest, ALargePictureFitsWithItsProportions) {
    box.setPicture(pictureOf(1200, 800, Qt::red));
    EXPECT_EQ(shown(Qt::red), QRect(75, 0, 150, 100));
    box.setPicture(pictureOf(3000, 20, Qt::blue));
    EXPECT_EQ(shown(Qt::blue), QRect(0, 49, 300, 2));
}

TEST_F(PictureBoxTest, ALineOfOnePixelIsStillSeen) {
    box.setPicture(pictureOf(2000, 1, Qt::red));
    EXPECT_EQ(box.pictureRect().height(), 1);
}

TEST_F(PictureBoxTest, TheEmptyPictureShowsNothing) {
    box.setPicture(pictureOf(40, 20, Qt::red));
    box.setPicture(Picture());
    EXPECT_TRUE(shown(Qt::red).isNull());
    EXPECT_TRUE(box.pictureRect().isNull());
    EXPECT_TRUE(box.picture().isEmpty());
}

TEST_F(PictureBoxTest, AVerticalLineEndsBeforeItsSecondPoint) {
    box.setForeColor(Qt::red);
    box.drawVertical(10, 20, 50);
    EXPECT_EQ(shown(Qt::red), QRect(10, 20, 1, 30));
    box.setForeColor(Qt::blue);
    box.drawVertical(12, 50, 20);
    EXPECT_EQ(shown(Qt::blue), QRect(12, 21, 1, 30));
}

TEST_F(PictureBoxTest, ALineOfNoLengthDrawsNothing) {
    box.drawVertical(10, 20, 20);
    EXPECT_TRUE(box.marks().empty());
}

TEST_F(PictureBoxTest, FractionsAreRoundedHalvesUp) {
    box.setForeColor(Qt::red);
    box.drawVertical(10.5, 19.5, 50.4);
    EXPECT_EQ(shown(Qt::red), QRect(11, 20, 1, 30));
}

TEST_F(PictureBoxTest, TextStandsRightBelowThePosition) {
    box.setForeColor(Qt::red);
    box.setFontSize(30);
    box.moveTo(20, 30);
    box.print(QStringLiteral("8"));
    const QImage image = box.grab().toImage();
    QRect ink;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white))
                ink = ink.united(QRect(x, y, 1, 1));
        }
    }
    ASSERT_EQ(box.marks().size(), 1U);
    EXPECT_EQ(box.marks().front().Area.topLeft(), QPoint(20, 30));
    EXPECT_TRUE(box.marks().front().Area.contains(ink));
    EXPECT_GT(ink.height(), 20);
}

TEST_F(PictureBoxTest, WhatIsPrintedNextStandsBehind) {
    box.moveTo(20, 30);
    box.print(QStringLiteral("12"));
    box.print(QStringLiteral("3"));
    EXPECT_EQ(box.marks()[1].Area.topLeft(), box.marks()[0].Area.topRight() + QPoint(1, 0));
}

TEST_F(PictureBoxTest, AFontSizeIsMeasuredInTwipsAndNotByTheScreen) {
    box.setFontSize(9);
    EXPECT_EQ(box.font().pixelSize(), 12);
    EXPECT_EQ(failureOf([this] { box.setFontSize(0); }), RunTime::InvalidPropertyValue);
    EXPECT_EQ(failureOf([this] { box.setFontSize(2161); }), RunTime::InvalidPropertyValue);
}

TEST_F(PictureBoxTest, ColourAndFontHoldForWhatIsDrawnLater) {
    box.setFontBold(true);
    box.print(QStringLiteral("1"));
    box.setFontBold(false);
    box.setForeColor(Qt::red);
    box.print(QStringLiteral("2"));
    EXPECT_TRUE(box.marks()[0].Font.bold());
    EXPECT_EQ(box.marks()[0].Color, QColor(Qt::black));
    EXPECT_FALSE(box.marks()[1].Font.bold());
    EXPECT_EQ(box.marks()[1].Color, QColor(Qt::red));
}

TEST_F(PictureBoxTest, WhatIsDrawnLiesOverThePictureOnWhite) {
    box.setPicture(pictureOf(40, 20, Qt::red));
    box.setForeColor(Qt::blue);
    box.drawVertical(150, 45, 55);
    EXPECT_EQ(shown(Qt::blue), QRect(150, 45, 1, 10));
    EXPECT_EQ(shown(Qt::red), QRect(130, 40, 40, 20));
    EXPECT_EQ(shown(Qt::white), box.rect());
}

TEST_F(PictureBoxTest, WhatLiesOutsideAppearsWhenTheBoxGrows) {
    box.setForeColor(Qt::red);
    box.drawVertical(310, 0, 10);
    EXPECT_TRUE(shown(Qt::red).isNull());
    box.setFixedSize(400, 100);
    EXPECT_EQ(shown(Qt::red), QRect(310, 0, 1, 10));
}

TEST_F(PictureBoxTest, ClearingTakesAwayWhatWasDrawnAndNotThePicture) {
    box.setPicture(pictureOf(40, 20, Qt::red));
    box.setForeColor(Qt::blue);
    box.drawVertical(10, 20, 50);
    box.clearMarks();
    EXPECT_TRUE(shown(Qt::blue).isNull());
    EXPECT_EQ(shown(Qt::red), QRect(130, 40, 40, 20));
    box.print(QStringLiteral("1"));
    EXPECT_EQ(box.marks().front().Area.topLeft(), QPoint(0, 0));
}

TEST_F(PictureBoxTest, SizesInTwipsAreRoundedToPixels) {
    PictureBox free;
    free.setWidthTwips(1666.5);
    free.setHeightTwips(1500);
    EXPECT_EQ(free.size(), QSize(111, 100));
    EXPECT_EQ(failureOf([&] { free.setWidthTwips(-15); }), RunTime::InvalidPropertyValue);
    EXPECT_EQ(failureOf([&] { free.setHeightTwips(1e12); }), RunTime::Overflow);
    EXPECT_EQ(free.size(), QSize(111, 100));
}

TEST_F(PictureBoxTest, CoordinatesThatNoControlHasOverflow) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(failureOf([this] { box.moveTo(1e9, 0); }), RunTime::Overflow);
    EXPECT_EQ(failureOf([this, nan] { box.moveTo(0, nan); }), RunTime::Overflow);
    EXPECT_EQ(failureOf([this] { box.drawVertical(0, 0, -1e300); }), RunTime::Overflow);
    EXPECT_TRUE(box.marks().empty());
}

}  // namespace
