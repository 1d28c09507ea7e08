#pragma once

#include <QPointF>
#include <QString>

class QColor;
class QPainter;

namespace regalon::artwork {

/// Lettering made of strokes: digits and the letters A to F. Text must look the same on every machine and at
/// 13 pixels' height must stay sharp, so no font of the system is used. Characters without strokes are
/// skipped. Positions are pixels of the 1x picture; the painter is scaled.

/// Height of a character in pixels of the 1x picture.
inline constexpr int strokeTextHeight = 9;

/// Width of a text in pixels of the 1x picture.
int strokeTextWidth(const QString& text);

/// Draws the text with its left upper corner at (left, top).
void drawStrokeText(QPainter& painter, int left, int top, const QString& text, const QColor& color);

/// Fills the pixels of a pattern: rows of "#" and "." with a blank between rows.
void drawPixels(QPainter& painter, int left, int top, const char* rows, const QColor& color);

}  // namespace regalon::artwork
