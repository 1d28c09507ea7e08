#pragma once

#include "engine/DateTime.h"
#include "engine/SqlType.h"
#include "engine/Value.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace magdb {

/// What of a session's settings conversions and date functions look at.
struct ConvertSettings {
    DateOrder dateOrder = DateOrder::Mdy;
    int firstWeekday = 7;  ///< SET DATEFIRST
};

enum class Conversion : std::uint8_t { Implicit, Explicit, None };

/// The conversion matrix of T-SQL for the types that the engine knows.
[[nodiscard]] Conversion conversionBetween(const SqlType& from, const SqlType& to);
/// Throws 206, 257, 402 or 529 where the matrix forbids the conversion.
void checkConversion(const SqlType& from, const SqlType& to, bool isExplicit);

/// True when every value of `from` is a value of `to` in the same representation, so that nothing is to be
/// done.
[[nodiscard]] bool isSameRepresentation(const SqlType& from, const SqlType& to);

/// CONVERT(to, value, style). Text that is too long is cut, as CONVERT and assignments to variables do.
/// Errors 220, 232, 235, 241, 242, 244, 245, 248, 281, 8114, 8115, 8169, 8170.
[[nodiscard]] Value convert(const Value& value, const SqlType& from, const SqlType& to, int style = 0,
                            const ConvertSettings& settings = {});

/// True when a text or binary value is longer than its column allows, trailing blanks apart.
[[nodiscard]] bool isTooLong(const Value& value, const SqlType& type);

/// The value as error messages and PRINT show it; NULL as "<NULL>".
[[nodiscard]] std::string displayText(const Value& value, const SqlType& type);

/// float as text by style 0 (six digits), 1 (8), 2 (16) or 3 (17).
[[nodiscard]] std::string formatFloat(double value, int style);

/// Reads 36 characters of a uniqueidentifier, in braces or not. Empty when it is none; upper case otherwise.
[[nodiscard]] std::string parseGuid(std::string_view text);

/// Upper-case hexadecimal digits.
[[nodiscard]] std::string toHex(const Bytes& bytes);

/// int as the server's messages write types: char and varchar tell apart, decimal is numeric.
[[nodiscard]] std::string messageName(const SqlType& type);

}  // namespace magdb
