#pragma once

#include <QtGlobal>

class QWidget;

namespace regalon {

/// Geometry is in twips everywhere in the code; 15 twips are one logical pixel. High-density screens are the
/// toolkit's scaling and do not change this.
inline constexpr int TwipsPerPixel = 15;

/// Position of a twip value on the scene or widget, in logical pixels with fraction.
constexpr qreal toPixelsF(qreal twips) {
    return twips / TwipsPerPixel;
}

/// Nearest whole logical pixel; halves go up.
constexpr int toPixels(int twips) {
    const int shifted = 2 * twips + TwipsPerPixel;
    const int divisor = 2 * TwipsPerPixel;
    return shifted >= 0 ? shifted / divisor : -((-shifted + divisor - 1) / divisor);
}

constexpr int toTwips(int pixels) {
    return pixels * TwipsPerPixel;
}

/// Sets the geometry of a widget in its parent, all four values in twips. The edges are rounded, not the
/// sizes, so that widgets that touch in twips touch on the screen.
void place(QWidget* widget, int left, int top, int width, int height);

}  // namespace regalon
