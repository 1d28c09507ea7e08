#pragma once

#include "map/LocationAddress.h"

#include <QString>

#include <optional>

namespace regalon {

/// The location whose numbers stand in four texts; none unless all four are numbers. Raises 6 for a number
/// beyond 16 bits.
[[nodiscard]] std::optional<LocationAddress> numericLocation(const QString& rank, const QString& stand,
                                                             const QString& shelf, const QString& location);

/// The same for a location that can be there: none unless all four are numbers of at least 1.
[[nodiscard]] std::optional<LocationAddress> typedLocation(const QString& rank, const QString& stand,
                                                           const QString& shelf, const QString& location);

}  // namespace regalon
