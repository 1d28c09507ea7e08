#pragma once

#include "database/ShiftDesk.h"

#include <map>
#include <string>

namespace regalon::test {

/// What lies where, read at one moment.
struct Stock {
    struct Package {
        std::string item;
        std::string quantity;
        std::string place;  ///< "rank, stand, shelf, location"
    };
    std::map<std::string, Package> packages;  ///< by barcode
    long moves = 0;                           ///< rows of history of moves

    [[nodiscard]] static Stock read(OdbcConnection& connection);
};

/// A ShiftHall with a hundred packages that fill two thirds of it, each location as its assignment wants it:
/// stand 1 free, stand 2 for the whole of group 1, stand 3 for group 2, the wide location for everything.
void fillForMovers(ShiftHall& hall);

/// What holds after any moves whatever, told here a second time: every package of the beginning lies on one
/// location that exists, with its material and quantity; the history leads it from its first place to its
/// last; no location holds more than it can, or materials that it does not take; fills and icons are those of
/// what lies there.
void expectWholeMoves(OdbcConnection& connection, const Stock& before);

/// Fill and icon of every location are those of what lies there.
void expectFills(OdbcConnection& connection);

}  // namespace regalon::test
