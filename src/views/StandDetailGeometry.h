#pragma once

#include <QString>
#include <QtGlobal>

#include <optional>

namespace regalon {

/// Where the stand detail opens and how it draws a stand. Plain functions of numbers, all in twips.

struct StandDetailPlace {
    qint32 Top = 0;  ///< of the window, from the top of the screen
    qint32 Left = 0;
    qint32 PointerTop = 0;  ///< of the pointer towards the stand, inside the window
    qint32 PointerLeft = 0;
    QString PointerFile;

    bool operator==(const StandDetailPlace&) const = default;
};

/// Place of a detail of the given size beside a stand: below it and to the right, unless the window would
/// pass the end of the hall there. A wish of 0 is none. Raises 6 where a sum leaves 32 bits.
[[nodiscard]] StandDetailPlace standDetailPlace(qint32 topWish, qint32 leftWish, qint16 shelfCount,
                                                qint32 width, qint32 height);

/// Place of a location in the grid of twelve: the top shelf first, locations from the left. None outside
/// shelf 1 to 4 and location 1 to 3, which are not drawn.
[[nodiscard]] std::optional<int> standGridIndex(qint16 shelf, qint16 location);

/// Left and top of a place of the grid.
[[nodiscard]] qint32 standGridLeft(int index);
[[nodiscard]] qint32 standGridTop(int index);

/// Width of an icon by its family "LA", "LB" or "LC"; none for another text.
[[nodiscard]] std::optional<qint32> standGridWidth(const QString& family);

inline constexpr int kStandGridSize = 12;
inline constexpr qint32 kStandGridHeight = 555;  ///< of every icon

}  // namespace regalon
