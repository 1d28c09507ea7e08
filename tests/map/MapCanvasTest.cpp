#include "map/MapCanvas.h"
#include "platform/Twips.h"
#include "support/Events.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

/// A stand image and a location icon above it, as big as their pictures would be.
class Canvas : public testing::Test {
protected:
    void SetUp() override {
        add(canvas.imgBookStand(), 3000, 4000, 615, 270);
        add(canvas.imglocation(), 3000, 3785, 195, 165);
        add(canvas.imglocation(), 3205, 3785, 195, 165);
        QObject::connect(&canvas, &MapCanvas::standClicked, &canvas,
                         [this](int index) { stands.append(index); });
        QObject::connect(&canvas, &MapCanvas::locationClicked, &canvas,
                         [this](int index) { locations.append(index); });
        test::showAndWait(&canvas);
    }

    static void add(ControlArray<PictureItem>& controls, int left, int top, int width, int height) {
        PictureItem& item = controls.Load(controls.Count());
        item.setLeft(left);
        item.setTop(top);
        item.setWidth(width);
        item.setHeight(height);
        item.setVisible(true);
    }
    void clickTwips(int x, int y) { test::clickAt(canvas.viewport(), QPoint(toPixels(x), toPixels(y))); }

    MapCanvas canvas{6000, 6000};
    QList<int> stands;
    QList<int> locations;
};

TEST_F(Canvas, TellsWhichElementWasClicked) {
    clickTwips(3300, 4100);
    clickTwips(3100, 3860);
    clickTwips(3300, 3860);
    EXPECT_EQ(stands, QList<int>({1}));
    EXPECT_EQ(locations, QList<int>({1, 2}));
}

TEST_F(Canvas, AClickBetweenTheElementsTellsNothing) {
    clickTwips(3300, 3980);
    clickTwips(100, 100);
    EXPECT_TRUE(stands.isEmpty());
    EXPECT_TRUE(locations.isEmpty());
}

TEST_F(Canvas, LinesLetTheMouseThrough) {
    LineItem& line = canvas.lnnFrameBookStand().Load(1);
    line.setEnds(2900, 4100, 3700, 4100);
    line.setVisible(true);
    clickTwips(3300, 4100);
    EXPECT_EQ(stands, QList<int>({1}));
}

TEST_F(Canvas, TheTemplatesAreHiddenAndTakeNoClick) {
    for (ControlArray<PictureItem>* pictures : {&canvas.imgBookStand(), &canvas.imglocation(),
                                                &canvas.imgBookStandWath(), &canvas.imglocationWath()}) {
        EXPECT_EQ((*pictures)[0].data(PlanData::ArrayName).toString(), pictures->name());
        EXPECT_FALSE((*pictures)[0].isVisible());
    }
    EXPECT_FALSE(canvas.lnnFrameBookStand()[0].isVisible());
    EXPECT_EQ(canvas.lnnFrameBookStand()[0].x1(), 3720);
    EXPECT_EQ(canvas.lnnFrameBookStand()[0].y1(), 10320);
    EXPECT_EQ(canvas.lnnFrameBookStand()[0].y2(), 11070);
    EXPECT_FALSE(canvas.lnnFrameBookStandWath()[0].isVisible());
    canvas.imgBookStand()[0].setWidth(615);
    canvas.imgBookStand()[0].setHeight(270);
    clickTwips(100, 100);
    EXPECT_TRUE(stands.isEmpty());
}

TEST_F(Canvas, ShowsTheWholeSurfaceAndNeverScrolls) {
    EXPECT_EQ(canvas.size(), QSize(400, 400));
    EXPECT_EQ(canvas.mapToScene(0, 0), QPointF(0, 0));
    // An element beyond the surface changes nothing.
    add(canvas.imglocation(), 30000, 30000, 195, 165);
    EXPECT_EQ(canvas.mapToScene(0, 0), QPointF(0, 0));
    EXPECT_EQ(canvas.sceneRect(), QRectF(0, 0, 400, 400));
}

}  // namespace
}  // namespace regalon
