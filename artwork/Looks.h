#pragma once

#include <QSize>
#include <QString>

class QPainter;

namespace regalon::artwork {

/// The looks of things on the plan. Each function draws on a painter whose unit is a pixel of the 1x picture
/// and which is scaled by 1, 2 or 3; the ground is transparent before.

/// Pixels of the 1x picture: an icon covers one, two or three slots of a shelf with the gaps between them.
inline constexpr QSize oneSlot(13, 11);
inline constexpr QSize twoSlots(27, 11);
inline constexpr QSize threeSlots(41, 11);
inline constexpr QSize standSize(41, 18);

enum class Tone { Normal, Grey };

/// A bar whose length is the fill of 0 to 100 per cent.
void drawFill(QPainter& painter, QSize size, int percent, Tone tone);
/// Several materials lie in the location: stacked squares in the place of the bar.
void drawMulti(QPainter& painter, QSize size);
/// The location has no icon: a cross.
void drawError(QPainter& painter, QSize size);
/// The look before the fill is known: a dashed outline.
void drawFirstLook(QPainter& painter, QSize size);
/// A stand with its row's letter and its number ("A12"), or without a text.
void drawStand(QPainter& painter, const QString& text, Tone tone);

}  // namespace regalon::artwork
