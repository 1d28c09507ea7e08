#include "Failing.h"
#include "IconFile.h"
#include "platform/ControlArray.h"
#include "platform/PlanItems.h"
#include "support/Events.h"

#include <QDir>
#include <QGraphicsScene>
#include <QGraphicsView>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

QString iconPath(const QList<IconSize>& sizes, const char* name = "x.ico") {
    const QDir folder(qEnvironmentVariable("REGALON_DRIVE_C") + QStringLiteral("/Regalon"));
    writeFile(folder.filePath(QString::fromUtf8(name)), iconBytes(sizes));
    return QStringLiteral("C:\\Regalon\\") + QString::fromUtf8(name);
}

const QList<IconSize> slot{{QSize(13, 11), Qt::red}, {QSize(26, 22), Qt::green}, {QSize(39, 33), Qt::blue}};

/// The scene's top left corner as a screen of a pixel ratio shows it.
QImage shownAt(QGraphicsScene& scene, qreal ratio, qreal zoom = 1) {
    QImage image(QSize(100, 100) * ratio, QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    QPainter painter(&image);
    scene.render(&painter, QRectF(0, 0, 100, 100), QRectF(0, 0, 100 / zoom, 100 / zoom));
    return image;
}

QRect painted(const QImage& image) {
    QRect all;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != QColor(Qt::white))
                all |= QRect(x, y, 1, 1);
        }
    }
    return all;
}

TEST(PictureItem, TakesTheSizeOfItsPicture) {
    PictureItem item(QStringLiteral("imglocation"), 4);
    item.setLeft(300);
    item.setTop(900);
    item.loadPicture(iconPath(slot));
    EXPECT_EQ(item.width(), 195);
    EXPECT_EQ(item.height(), 165);
    EXPECT_EQ(item.pos(), QPointF(20, 60));
    EXPECT_EQ(item.boundingRect(), QRectF(0, 0, 13, 11));
    item.setWidth(9999);
    EXPECT_EQ(item.width(), 195);
    item.setPicture(Picture());
    EXPECT_EQ(item.width(), 195);
}

TEST(PictureItem, StretchKeepsTheSizeOfTheItem) {
    PictureItem item;
    item.setStretch(true);
    item.setWidth(600);
    item.setHeight(300);
    item.loadPicture(iconPath(slot));
    EXPECT_EQ(item.boundingRect(), QRectF(0, 0, 40, 20));
    item.setStretch(false);
    EXPECT_EQ(item.width(), 195);
}

TEST(PictureItem, CarriesArrayNameIndexAndTagForOutsideDrivers) {
    PictureItem item(QStringLiteral("imglocation"), 4);
    item.setTag(QStringLiteral("2_5_1_3_LA_117"));
    EXPECT_EQ(item.data(0).toString(), QStringLiteral("imglocation"));
    EXPECT_EQ(item.data(1).toInt(), 4);
    EXPECT_EQ(item.data(2).toString(), QStringLiteral("2_5_1_3_LA_117"));
    EXPECT_EQ(item.tag(), QStringLiteral("2_5_1_3_LA_117"));
}

TEST(PictureItem, AFailedLoadKeepsTheOldPicture) {
    PictureItem item;
    const QString path = iconPath(slot);
    item.loadPicture(path);
    EXPECT_EQ(failureOf([&] { item.loadPicture(QStringLiteral("C:\\Regalon\\none.ico")); }),
              RunTime::FileNotFound);
    EXPECT_FALSE(item.picture().isEmpty());
    EXPECT_EQ(item.picturePath(), path);
    item.loadPicture(QString());
    EXPECT_TRUE(item.picture().isEmpty());
}

TEST(PictureItem, IsDrawnInWholePixelsAtEveryDensity) {
    QGraphicsScene scene;
    PictureItem item;
    scene.addItem(&item);
    item.setLeft(205);
    item.setTop(160);
    item.loadPicture(iconPath(slot));
    const QImage single = shownAt(scene, 1);
    EXPECT_EQ(painted(single), QRect(14, 11, 13, 11));
    EXPECT_EQ(single.pixelColor(14, 11), QColor(Qt::red));
    EXPECT_EQ(single.pixelColor(26, 21), QColor(Qt::red));
    const QImage dense = shownAt(scene, 2);
    EXPECT_EQ(painted(dense), QRect(27, 21, 26, 22));
    EXPECT_EQ(dense.pixelColor(27, 21), QColor(Qt::green));
    EXPECT_EQ(dense.pixelColor(52, 42), QColor(Qt::green));
    const QImage zoomed = shownAt(scene, 1, 3);
    EXPECT_EQ(zoomed.pixelColor(41, 32), QColor(Qt::blue));
    scene.removeItem(&item);
}

class ClickTest : public ::testing::Test {
protected:
    ClickTest() : view(&scene), array(QStringLiteral("imglocation")) {
        view.resize(300, 300);
        view.setSceneRect(0, 0, 280, 280);
        scene.addItem(&array[0]);
        array[0].setVisible(false);
        array[0].setClickHandler([this](PictureItem& item) { clicked.append(item.index()); });
        const QString path = iconPath(slot);
        for (int i = 1; i <= 3; ++i) {
            PictureItem& item = array.Load(i);
            item.setLeft(i * 600);
            item.setTop(600);
            item.loadPicture(path);
            item.setVisible(true);
        }
        showAndWait(&view);
    }

    QGraphicsScene scene;
    QGraphicsView view;
    ControlArray<PictureItem> array;
    QList<int> clicked;
};

TEST_F(ClickTest, AClickReachesTheSharedHandlerWithTheElement) {
    clickItem(&view, &array[2]);
    clickItem(&view, &array[3]);
    EXPECT_EQ(clicked, (QList<int>{2, 3}));
}

TEST_F(ClickTest, ClicksBesideOrByOtherButtonsDoNothing) {
    clickAt(view.viewport(), view.mapFromScene(QPointF(70, 45)));
    QTest::mouseClick(view.viewport(), Qt::RightButton, {},
                      view.mapFromScene(array[1].sceneBoundingRect().center()));
    EXPECT_TRUE(clicked.isEmpty());
}

TEST_F(ClickTest, AReleaseElsewhereIsNoClick) {
    const QPoint on = view.mapFromScene(array[1].sceneBoundingRect().center());
    QTest::mousePress(view.viewport(), Qt::LeftButton, {}, on);
    QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, on + QPoint(60, 60));
    EXPECT_TRUE(clicked.isEmpty());
}

TEST_F(ClickTest, ALineAboveAPictureTakesNoClicks) {
    LineItem line;
    scene.addItem(&line);
    line.setZValue(5);
    line.setEnds(600, 690, 1200, 690);
    clickItem(&view, &array[1]);
    EXPECT_EQ(clicked, (QList<int>{1}));
    scene.removeItem(&line);
}

TEST_F(ClickTest, TheHandlerMayUnloadTheClickedElement) {
    array[1].setClickHandler([this](PictureItem& item) {
        clicked.append(item.index());
        array.Unload(item.index());
    });
    clickItem(&view, &array[1]);
    EXPECT_EQ(clicked, (QList<int>{1}));
    EXPECT_EQ(array.Count(), 3);
    clickItem(&view, &array[2]);
    EXPECT_EQ(clicked, (QList<int>{1, 2}));
}

TEST(LineItem, IsOnePixelWideWhereItsEndsAre) {
    QGraphicsScene scene;
    LineItem line(QStringLiteral("Line1"));
    scene.addItem(&line);
    line.setX1(300);
    line.setY1(305);
    line.setX2(900);
    line.setY2(305);
    EXPECT_EQ(painted(shownAt(scene, 1)), QRect(20, 20, 41, 1));
    EXPECT_EQ(shownAt(scene, 1).pixelColor(30, 20), QColor(Qt::black));
    EXPECT_EQ(painted(shownAt(scene, 1, 2)).height(), 1);
    EXPECT_EQ(painted(shownAt(scene, 2)).height(), 2);
    line.setEnds(300, 150, 300, 750);
    EXPECT_EQ(painted(shownAt(scene, 1)), QRect(20, 10, 1, 41));
    line.setBorderWidth(3);
    EXPECT_EQ(painted(shownAt(scene, 1)), QRect(19, 10, 3, 41));
    scene.removeItem(&line);
}

}  // namespace
