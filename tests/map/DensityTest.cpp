#include "common/AppContext.h"
#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/clsMagWatch.h"
#include "platform/MsgBox.h"
#include "support/Events.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace regalon {
namespace {

/// Runs with QT_SCALE_FACTOR=2, the density of a desk screen twice as fine.
class TwiceTheDensity : public testing::Test {
protected:
    TwiceTheDensity() {
        builder.setIconFolder(QStringLiteral(REGALON_BINARY_DIR "/share/Ikony"));
        BookstandData stand;
        stand.Rank = 1;
        stand.Stand = 1;
        stand.ShelfCount = 3;
        stand.LocationsOnShelf = {1, 2, 3, 0};
        // Off the grid of whole pixels, as positions in a database are.
        stand.StandLeft = 3007;
        stand.StandTop = 4004;
        LocationNameBatches batches;
        built = builder.GenerateBookstand(canvas.imgBookStand(), canvas.imglocation(),
                                          canvas.lnnFrameBookStand(), stand, true, batches);
        test::showAndWait(&canvas);
        screen = canvas.viewport()->grab().toImage().convertToFormat(QImage::Format_RGB32);
    }

    /// Whether the opaque pixels of the item's picture of twice the size stand on the screen as they are.
    bool isPixelExact(const PictureItem& item) const {
        const QImage picture = item.picture().pixmap(2).toImage().convertToFormat(QImage::Format_ARGB32);
        const QPointF corner = canvas.viewportTransform().map(item.pos()) * screen.devicePixelRatio();
        const QPoint at(static_cast<int>(std::lround(corner.x())), static_cast<int>(std::lround(corner.y())));
        int opaque = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                if (qAlpha(picture.pixel(x, y)) != 255)
                    continue;
                ++opaque;
                if (screen.pixelColor(at.x() + x, at.y() + y).rgb() != picture.pixelColor(x, y).rgb())
                    return false;
            }
        }
        return opaque > 0 && picture.width() == 2 * item.width() / 15;
    }

    MsgBoxRecorder messages;
    AppContext context;
    clsMagWatch data{context};
    MapCanvas canvas{6000, 6000};
    MapBuilder builder{context, canvas, data, MapReportNames::of(QStringLiteral("frmMagWatch"))};
    bool built = false;
    QImage screen;
};

TEST_F(TwiceTheDensity, ShowsEveryPictureFromItsLargerSizePixelForPixel) {
    ASSERT_TRUE(built) << qPrintable(messages.last().Text);
    ASSERT_EQ(screen.devicePixelRatio(), 2);
    EXPECT_TRUE(isPixelExact(canvas.imgBookStand()[1]));
    ASSERT_EQ(canvas.imglocation().Count(), 7);
    for (int index = 1; index < canvas.imglocation().Count(); ++index)
        EXPECT_TRUE(isPixelExact(canvas.imglocation()[index])) << index;
}

}  // namespace
}  // namespace regalon
