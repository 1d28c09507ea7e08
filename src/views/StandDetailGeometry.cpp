#include "views/StandDetailGeometry.h"

#include "platform/Convert.h"

namespace regalon {

namespace {

constexpr int kLocations = 3;
constexpr int kShelves = 4;

// Ends of the hall as far as the detail is concerned.
constexpr qint32 kRightEnd = 14450;
constexpr qint32 kBottomEnd = 9800;

qint32 twips(qint64 value) {
    return ToInt32(double(value));
}

/// How far the window keeps above the stand image, so that it does not lie on the stand's shelves.
qint32 heightOfShelves(qint16 shelfCount) {
    switch (shelfCount) {
        case 1:
            return 700;
        case 2:
            return 850;
        case 3:
            return 1000;
        case 4:
            return 1250;
        default:
            return 0;
    }
}

}  // namespace

StandDetailPlace standDetailPlace(qint32 topWish, qint32 leftWish, qint16 shelfCount, qint32 width,
                                  qint32 height) {
    StandDetailPlace place{.Top = topWish == 0 ? 4000 - height : topWish,
                           .Left = leftWish == 0 ? 7000 - width : leftWish,
                           .PointerFile = QStringLiteral("k2.ico")};
    const qint32 leftOfStand = twips(qint64{place.Left} - width + 700);
    if (twips(qint64{place.Left} + width) > kRightEnd && leftOfStand > 0) {
        place.Left = leftOfStand;
        place.PointerLeft = 7800;
    }
    if (twips(qint64{place.Top} + height) > kBottomEnd) {
        // Also where that leads off the screen.
        place.Top = twips(qint64{place.Top} - height - heightOfShelves(shelfCount));
        place.PointerTop = 3700;
        place.PointerFile = QStringLiteral("k1.ico");
    }
    return place;
}

std::optional<int> standGridIndex(qint16 shelf, qint16 location) {
    if (shelf < 1 || shelf > kShelves || location < 1 || location > kLocations)
        return std::nullopt;
    return (kShelves - shelf) * kLocations + (location - 1);
}

qint32 standGridLeft(int index) {
    return 360 + index % kLocations * 600;
}

qint32 standGridTop(int index) {
    return 600 + index / kLocations * 600;
}

std::optional<qint32> standGridWidth(const QString& family) {
    if (family == u"LA")
        return 550;
    if (family == u"LB")
        return 1155;
    if (family == u"LC")
        return 1750;
    return std::nullopt;
}

}  // namespace regalon
