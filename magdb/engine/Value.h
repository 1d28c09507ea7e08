#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace magdb {

/// A point in time at the resolution of datetime.
struct DateTimeValue {
    std::int32_t days = 0;   ///< days since 1900-01-01, may be negative
    std::int32_t ticks = 0;  ///< 1/300 seconds since midnight, 0 to 25919999
    bool operator==(const DateTimeValue&) const = default;
};

/// An exact number: unscaled / 10^scale.
struct DecimalValue {
    __extension__ __int128 unscaled = 0;
    std::uint8_t scale = 0;
    bool operator==(const DecimalValue&) const = default;
};

using Bytes = std::vector<std::uint8_t>;

/// One value of a row, a parameter or a variable. Monostate is NULL. Integers of every width and bit are
/// int64, real and float are double, text is UTF-8, money is a DecimalValue of scale 4, date is a
/// DateTimeValue at midnight.
using Value =
    std::variant<std::monostate, std::int64_t, double, DecimalValue, std::string, Bytes, DateTimeValue>;

[[nodiscard]] inline bool isNull(const Value& value) {
    return std::holds_alternative<std::monostate>(value);
}

}  // namespace magdb
