#pragma once

#include "map/LocationAddress.h"

#include <QString>

namespace regalon {

/// Pieces of statements that name one location. They go to the server byte for byte as they stand here.

/// "Rank = 1 and Stand = 2 and  Shelf = 3 and Location = 4", with two blanks before "Shelf".
[[nodiscard]] QString locationCondition(const LocationAddress& address);

/// "1,2,3,4", the first arguments of a procedure that works on one location.
[[nodiscard]] QString locationArguments(const LocationAddress& address);

}  // namespace regalon
