#pragma once

#include "engine/SqlType.h"
#include "engine/Value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace magdb {

__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

/// 10^exponent, exponent 0 to 38.
[[nodiscard]] Int128 powerOfTen(int exponent);
/// Number of decimal digits of the magnitude, at least 1.
[[nodiscard]] int digitCount(Int128 value);
/// True when the unscaled number has at most `precision` digits.
[[nodiscard]] bool fitsPrecision(Int128 unscaled, int precision);

/// The number at another scale, rounded half away from zero; nothing when it leaves 38 digits.
[[nodiscard]] std::optional<DecimalValue> rescale(const DecimalValue& value, int scale);
/// The same, cut instead of rounded.
[[nodiscard]] std::optional<DecimalValue> truncateScale(const DecimalValue& value, int scale);

/// Reads digits with sign, point and exponent, blanks around allowed. Nothing when it is not a number or
/// leaves 38 digits.
[[nodiscard]] std::optional<DecimalValue> parseDecimal(std::string_view text);
[[nodiscard]] std::string formatDecimal(const DecimalValue& value);
[[nodiscard]] double toDouble(const DecimalValue& value);
/// The nearest number of that scale; nothing when it leaves 38 digits.
[[nodiscard]] std::optional<DecimalValue> fromDouble(double value, int scale);
/// -1, 0 or 1; the scales may differ.
[[nodiscard]] int compare(const DecimalValue& left, const DecimalValue& right);

enum class ArithmeticOp : std::uint8_t { Add, Subtract, Multiply, Divide, Modulo };

/// The type that T-SQL gives the result of decimal arithmetic: precision and scale by its published rules,
/// with the scale cut when the precision would exceed 38.
[[nodiscard]] SqlType decimalResult(ArithmeticOp op, const SqlType& left, const SqlType& right);

/// Calculates at the precision and scale of `result`. Errors 8115 and 8134. Division cuts, multiplication
/// rounds.
[[nodiscard]] DecimalValue calculate(ArithmeticOp op, const DecimalValue& left, const DecimalValue& right,
                                     const SqlType& result);

}  // namespace magdb
