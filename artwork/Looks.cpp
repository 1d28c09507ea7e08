#include "Looks.h"

#include "Palette.h"
#include "Strokes.h"

#include <QPainter>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace regalon::artwork {

namespace {

constexpr int fullPercent = 100;

/// Length of the bar in pixels of the 1x picture. Only 0 shows nothing and only 100 touches the far end.
/// Finer pictures use their finer steps.
double barLength(int percent, int room, double scale) {
    if (percent <= 0) {
        return 0;
    }
    if (percent >= fullPercent) {
        return room;
    }
    if (scale > 1) {
        const double edge = 1 / scale;
        return edge + (room - 2 * edge) * percent / fullPercent;
    }
    return std::clamp(static_cast<int>(std::lround(room * percent / 100.0)), 1, room - 1);
}

void drawBox(QPainter& painter, QSize size, QRgb frame, QRgb ground) {
    painter.fillRect(0, 0, size.width(), size.height(), QColor(frame));
    painter.fillRect(1, 1, size.width() - 2, size.height() - 2, QColor(ground));
}

double scaleOf(const QPainter& painter) {
    return painter.worldTransform().m11();
}

}  // namespace

void drawFill(QPainter& painter, QSize size, int percent, Tone tone) {
    const bool gray = tone == Tone::Grey;
    const bool full = percent >= fullPercent;
    const QRgb frame = gray ? palette::faded : full ? palette::full : palette::frame;
    drawBox(painter, size, frame, gray ? palette::fadedPaper : palette::paper);
    const QColor color = gray ? grayColor(percent) : fillColor(percent);
    if (full) {
        painter.fillRect(1, 1, size.width() - 2, size.height() - 2, color);
        return;
    }
    const int room = size.width() - 2;
    const double length = barLength(percent, room, scaleOf(painter));
    painter.setRenderHint(QPainter::Antialiasing, scaleOf(painter) > 1);
    painter.fillRect(QRectF(1, 2, length, size.height() - 4), color);
    painter.fillRect(QRectF(1, size.height() - 3, length, 1), color.darker(125));
}

void drawMulti(QPainter& painter, QSize size) {
    drawBox(painter, size, palette::violet, palette::violetPaper);
    const auto square = [&painter](double left, double top) {
        painter.fillRect(QRectF(left, top, 5, 5), QColor(palette::violet));
        painter.fillRect(QRectF(left + 1, top + 1, 3, 3), QColor(palette::violetLight));
    };
    // One stack for each slot that the icon covers.
    const int slots = size.width() / oneSlot.width();
    for (int slot = 0; slot < slots; ++slot) {
        const int left = (2 * slot + 1) * size.width() / (2 * slots) - 3;
        square(left + 2, 2);
        square(left, 4);
    }
}

void drawError(QPainter& painter, QSize size) {
    drawBox(painter, size, palette::red, palette::redLight);
    if (scaleOf(painter) <= 1) {
        drawPixels(painter, (size.width() - 7) / 2, 2,
                   "##...## ###.### .#####. ..###.. .#####. ###.### ##...##", QColor(palette::red));
        return;
    }
    const QPointF middle(size.width() / 2.0, size.height() / 2.0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(palette::red), 2));
    painter.drawLine(middle + QPointF(-3, -3), middle + QPointF(3, 3));
    painter.drawLine(middle + QPointF(3, -3), middle + QPointF(-3, 3));
}

void drawFirstLook(QPainter& painter, QSize size) {
    painter.fillRect(0, 0, size.width(), size.height(), QColor(palette::fadedPaper));
    const QColor dash(palette::grey);
    for (int x = 0; x < size.width(); x += 4) {
        const int length = std::min(2, size.width() - x);
        painter.fillRect(x, 0, length, 1, dash);
        painter.fillRect(x, size.height() - 1, length, 1, dash);
    }
    for (int y = 0; y < size.height(); y += 4) {
        const int length = std::min(2, size.height() - y);
        painter.fillRect(0, y, 1, length, dash);
        painter.fillRect(size.width() - 1, y, 1, length, dash);
    }
}

void drawStand(QPainter& painter, const QString& text, Tone tone) {
    const bool gray = tone == Tone::Grey;
    const int width = standSize.width();
    const int height = standSize.height();
    const QColor upright(gray ? palette::faded : palette::steel);
    painter.fillRect(0, 0, 3, height, upright);
    painter.fillRect(width - 3, 0, 3, height, upright);
    painter.fillRect(0, 0, width, 3, QColor(gray ? qRgb(0xc3, 0xc8, 0xcc) : palette::beam));
    painter.fillRect(3, 3, width - 6, height - 3, QColor(gray ? palette::fadedPaper : palette::paper));
    painter.fillRect(3, height - 1, width - 6, 1, upright);
    const int left = (width - strokeTextWidth(text)) / 2;
    drawStrokeText(painter, left, 6, text, QColor(gray ? palette::faded : palette::ink));
}

}  // namespace regalon::artwork
