#pragma once

#include "map/MapConstants.h"

#include <QString>

#include <array>
#include <optional>

namespace regalon {

/// Where the parts of one stand lie on the plan. Plain functions of numbers, all in twips; a result that
/// leaves 32 bits raises run-time error 6.

/// Family of a location icon, by how many slots of the shelf it covers: "LA", "LB" or "LC". Empty for a count
/// of locations other than 1, 2 or 3: such an icon keeps the family of the icon before it.
[[nodiscard]] QString locationFamily(int locationsOnShelf, int position);

/// File name of the first look of a family, shown until the location's own icon is known; empty for no
/// family.
[[nodiscard]] QString firstLook(const QString& family);

/// Top of the icons of a shelf above a stand image at `top`. None outside shelf 1 to 4: such icons get no
/// Top.
[[nodiscard]] std::optional<qint32> shelfTop(const MapConstants& measures, qint32 top, int shelf);

/// X of the icon behind the one at `left` that holds position `position` (from 1) of its shelf.
[[nodiscard]] qint32 nextLocationLeft(const MapConstants& measures, qint32 left, int position);

/// One line of a stand's frame. Without Y the line keeps the Y values of the template.
struct FrameLine {
    qint32 X1 = 0;
    qint32 X2 = 0;
    std::optional<qint32> Y1;
    std::optional<qint32> Y2;

    bool operator==(const FrameLine&) const = default;
};

/// Bottom, top, left and right line of the frame of a stand image at (left, top), in this order.
[[nodiscard]] std::array<FrameLine, 4> standFrame(const MapConstants& measures, qint32 left, qint32 top,
                                                  qint16 shelfCount, qint16 margin);

}  // namespace regalon
