#pragma once

#include <QColor>

namespace regalon::artwork {

/// All colours of the icon folder. They stay apart for the common kinds of colour blindness: neighbours
/// differ in lightness, and no pair relies on red against green.
namespace palette {
inline constexpr QRgb ink = 0xff1c2b3a;         // outlines and text
inline constexpr QRgb paper = 0xfffdfdfb;       // empty room
inline constexpr QRgb frame = 0xff5d6f80;       // frame of a location
inline constexpr QRgb full = 0xff10243e;        // frame of a location with no room left
inline constexpr QRgb faded = 0xffaab2b9;       // frames and lines of grey looks
inline constexpr QRgb fadedPaper = 0xfff4f5f6;  // empty room of grey looks
inline constexpr QRgb steel = 0xff2f5d8a;       // uprights of a stand
inline constexpr QRgb beam = 0xffe8912d;        // beam of a stand
inline constexpr QRgb violet = 0xff8e3a80;      // several materials
inline constexpr QRgb violetLight = 0xffe7c3df;
inline constexpr QRgb violetPaper = 0xfffaf1f8;
inline constexpr QRgb red = 0xffc23b12;  // errors
inline constexpr QRgb redLight = 0xfffbe3d8;
inline constexpr QRgb blue = 0xff1f6fb2;
inline constexpr QRgb teal = 0xff0f8a78;
inline constexpr QRgb amber = 0xffe39a12;
inline constexpr QRgb brown = 0xffb26a10;
inline constexpr QRgb grey = 0xff7d8790;
}  // namespace palette

/// Colour of a bar at a fill of 0 to 100 per cent: from light to dark, so that it also reads as lightness
/// alone.
QColor fillColor(int percent);
/// The same for grey looks.
QColor grayColor(int percent);

}  // namespace regalon::artwork
