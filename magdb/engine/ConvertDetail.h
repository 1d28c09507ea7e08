#pragma once

#include "engine/Convert.h"

// The conversions to each family of types, behind convert(). Values are not NULL here.

namespace magdb::detail {

[[nodiscard]] std::int64_t integerOf(const Value& value);
[[nodiscard]] Value toInteger(const Value& value, const SqlType& from, const SqlType& to);
[[nodiscard]] Value toDecimal(const Value& value, const SqlType& from, const SqlType& to);
[[nodiscard]] Value toFloat(const Value& value, const SqlType& from, const SqlType& to);
[[nodiscard]] Value toDateTime(const Value& value, const SqlType& from, const SqlType& to, int style,
                               const ConvertSettings& settings);
[[nodiscard]] Value toText(const Value& value, const SqlType& from, const SqlType& to, int style);
[[nodiscard]] Value toBinary(const Value& value, const SqlType& from, const SqlType& to, int style);
[[nodiscard]] Value toGuid(const Value& value);

}  // namespace magdb::detail
