#pragma once

#include <QtGlobal>

namespace regalon {

/// The place of a location in the warehouse. All four numbers start at 1; locations count from the left,
/// shelves from the bottom. Every table that has these four columns joins on all of them together.
struct LocationAddress {
    qint16 Rank = 0;
    qint16 Stand = 0;
    qint16 Shelf = 0;
    qint16 Location = 0;

    bool operator==(const LocationAddress&) const = default;
};

}  // namespace regalon
