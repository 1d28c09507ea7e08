#include "platform/Paths.h"
#include "platform/PictureBox.h"
#include "support/Events.h"

#include <QImage>

#include <gtest/gtest.h>

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

}  // namespace
