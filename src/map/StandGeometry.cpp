#include "map/StandGeometry.h"

#include "platform/RunTimeError.h"

#include <limits>

namespace regalon {

namespace {

qint32 toTwips(qint64 value) {
    if (value < std::numeric_limits<qint32>::min() || value > std::numeric_limits<qint32>::max())
        throw RunTimeError(RunTime::Overflow);
    return static_cast<qint32>(value);
}

/// Y of the top line of the frame. Only stands of 0 to 4 shelves have one.
std::optional<qint32> frameTop(const MapConstants& measures, qint32 top, qint16 shelfCount, qint16 margin) {
    if (shelfCount < 0 || shelfCount > 4)
        return std::nullopt;
    // The highest stand alone allows for the gap between its two topmost shelves.
    const qint64 gaps = shelfCount == 4 ? 3 : 2;
    return toTwips(qint64{top} - shelfCount * qint64{measures.LocationHeight} -
                   (gaps * measures.ShelfGap + measures.ShelfBaseGap) - margin);
}

}  // namespace

QString locationFamily(int locationsOnShelf, int position) {
    switch (locationsOnShelf) {
        case 1:
            return QStringLiteral("LC");
        case 2:
            return position == 1 ? QStringLiteral("LA") : QStringLiteral("LB");
        case 3:
            return QStringLiteral("LA");
        default:
            return {};
    }
}

QString firstLook(const QString& family) {
    if (family == u"LA")
        return QStringLiteral("x.ico");
    if (family == u"LB")
        return QStringLiteral("xx.ico");
    if (family == u"LC")
        return QStringLiteral("xxx.ico");
    return {};
}

std::optional<qint32> shelfTop(const MapConstants& measures, qint32 top, int shelf) {
    if (shelf < 1 || shelf > 4)
        return std::nullopt;
    // Shelves 3 and 4 get 5 twips back, so that the first gap is 20 twips high and the ones above it 15.
    const int raised = shelf >= 3 ? 5 : 0;
    return toTwips(qint64{top} - shelf * qint64{measures.LocationHeight} -
                   ((shelf - 1) * qint64{measures.ShelfGap} + measures.ShelfBaseGap) + raised);
}

qint32 nextLocationLeft(const MapConstants& measures, qint32 left, int position) {
    return toTwips(qint64{left} + measures.LocationWidth + (position + 1) * qint64{measures.LocationGap});
}

std::array<FrameLine, 4> standFrame(const MapConstants& measures, qint32 left, qint32 top, qint16 shelfCount,
                                    qint16 margin) {
    const qint64 right = qint64{left} + measures.StandWidth + margin;
    const qint64 leftSide = qint64{left} - margin - 5;
    const qint32 bottom = toTwips(qint64{top} + measures.StandHeight + margin);
    const std::optional<qint32> topLine = frameTop(measures, top, shelfCount, margin);
    // The frame does not close: the top line overshoots on the right, the sides on top, and the bottom line
    // starts inside the left side. The drawing is known to its users in this form.
    std::optional<qint32> sideBottom;
    std::optional<qint32> sideTop;
    if (topLine) {
        sideBottom = bottom;
        sideTop = toTwips(qint64{*topLine} - 10);
    }
    return {FrameLine{toTwips(qint64{left} - margin), toTwips(right), bottom, bottom},
            FrameLine{toTwips(leftSide), toTwips(right + 10), topLine, topLine},
            FrameLine{toTwips(leftSide), toTwips(leftSide), sideBottom, sideTop},
            FrameLine{toTwips(right), toTwips(right), sideBottom, sideTop}};
}

}  // namespace regalon
