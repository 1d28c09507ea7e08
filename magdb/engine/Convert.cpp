#include "engine/Convert.h"

#include "engine/ConvertDetail.h"
#include "engine/Decimal.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <array>
#include <cmath>
#include <cstdio>

namespace magdb {

std::string messageName(const SqlType& type) {
    return type.id == TypeId::Decimal ? "numeric" : baseName(type.id);
}

Conversion conversionBetween(const SqlType& from, const SqlType& to) {
    if (from.id == TypeId::Null || from.id == to.id || (isText(from) && isText(to)) ||
        (isNumber(from) && isNumber(to))) {
        return Conversion::Implicit;
    }
    if (to.id == TypeId::VarBinary) {
        if (isText(from)) {
            return Conversion::Explicit;
        }
        return isInteger(from) || from.id == TypeId::UniqueIdentifier ? Conversion::Implicit
                                                                      : Conversion::None;
    }
    if (from.id == TypeId::VarBinary) {
        return isText(to) || isInteger(to) || to.id == TypeId::UniqueIdentifier ? Conversion::Implicit
                                                                                : Conversion::None;
    }
    if (isText(from)) {
        return Conversion::Implicit;
    }
    if (isText(to)) {
        return from.id == TypeId::Money ? Conversion::Explicit : Conversion::Implicit;
    }
    if (isDate(from) && isDate(to)) {
        return Conversion::Implicit;
    }
    if (isNumber(from) && to.id == TypeId::DateTime) {
        return Conversion::Implicit;
    }
    if (from.id == TypeId::DateTime && isNumber(to)) {
        return Conversion::Explicit;
    }
    return Conversion::None;
}

void checkConversion(const SqlType& from, const SqlType& to, bool isExplicit) {
    switch (conversionBetween(from, to)) {
        case Conversion::Implicit:
            return;
        case Conversion::Explicit:
            if (!isExplicit) {
                raise(257, {messageName(from), messageName(to)});
            }
            return;
        case Conversion::None:
            raise(isExplicit ? 529 : 206, {messageName(from), messageName(to)});
    }
}

bool isSameRepresentation(const SqlType& from, const SqlType& to) {
    if (from == to || from.id == TypeId::Null) {
        return true;
    }
    if (isInteger(from) && isInteger(to)) {
        return to.id >= from.id;
    }
    if (isText(from) && isText(to)) {
        const bool narrows = isUnicode(from) && !isUnicode(to);
        const bool roomy = to.length < 0 || (from.length >= 0 && from.length <= to.length);
        return !narrows && roomy && to.id != TypeId::Char && to.id != TypeId::NChar;
    }
    if (from.id == TypeId::VarBinary && to.id == TypeId::VarBinary) {
        return to.length < 0 || (from.length >= 0 && from.length <= to.length);
    }
    if (from.id == TypeId::Decimal && to.id == TypeId::Decimal) {
        return from.scale == to.scale && to.precision >= from.precision;
    }
    return (from.id == TypeId::Real && to.id == TypeId::Float) ||
           (from.id == TypeId::Date && to.id == TypeId::DateTime);
}

std::string toHex(const Bytes& bytes) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text += kDigits[byte >> 4];
        text += kDigits[byte & 15];
    }
    return text;
}

std::string parseGuid(std::string_view text) {
    if (text.size() >= 38 && text.front() == '{' && text[37] == '}') {
        text = text.substr(1);
    }
    if (text.size() < 36) {
        return {};
    }
    std::string guid = upper(text.substr(0, 36));
    for (std::size_t i = 0; i < guid.size(); ++i) {
        const bool dash = i == 8 || i == 13 || i == 18 || i == 23;
        const char c = guid[i];
        const bool hex = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'F');
        if (dash ? c != '-' : !hex) {
            return {};
        }
    }
    return guid;
}

std::string formatFloat(double value, int style) {
    std::array<char, 64> buffer{};
    if (style == 0) {
        std::snprintf(buffer.data(), buffer.size(), "%.6g", value);
    } else {
        std::snprintf(buffer.data(), buffer.size(), "%.*e", style == 1 ? 7 : (style == 2 ? 15 : 16), value);
    }
    std::string text(buffer.data());
    // The server writes three digits of exponent.
    const std::size_t e = text.find('e');
    if (e != std::string::npos && text.size() - e < 5) {
        text.insert(e + 2, 5 - (text.size() - e), '0');
    }
    return text == "-0" ? "0" : text;
}

bool isTooLong(const Value& value, const SqlType& type) {
    if (type.length < 0) {
        return false;
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        return type.id == TypeId::VarBinary && bytes->size() > static_cast<std::size_t>(type.length);
    }
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr || !isText(type) || text->size() <= static_cast<std::size_t>(type.length)) {
        return false;
    }
    return utf16Length(trimRight(*text)) > type.length;
}

std::string displayText(const Value& value, const SqlType& type) {
    if (isNull(value)) {
        return "<NULL>";
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        return "0x" + toHex(*bytes);
    }
    const Value text = convert(value, type, textType(TypeId::NVarChar, -1));
    return std::get<std::string>(text);
}

namespace detail {

std::int64_t integerOf(const Value& value) {
    return std::get<std::int64_t>(value);
}

namespace {

struct IntegerRange {
    std::int64_t low;
    std::int64_t high;
};

IntegerRange rangeOf(TypeId id) {
    switch (id) {
        case TypeId::TinyInt:
            return {0, 255};
        case TypeId::SmallInt:
            return {-32768, 32767};
        case TypeId::Int:
            return {INT32_MIN, INT32_MAX};
        default:
            return {INT64_MIN, INT64_MAX};
    }
}

Value checkedInteger(std::int64_t number, const SqlType& from, const SqlType& to) {
    const IntegerRange range = rangeOf(to.id);
    if (number >= range.low && number <= range.high) {
        return number;
    }
    if ((to.id == TypeId::TinyInt || to.id == TypeId::SmallInt) && isInteger(from) &&
        from.id != TypeId::BigInt) {
        raise(220, {baseName(to.id), std::to_string(number)});
    }
    raise(8115, {"expression", baseName(to.id)});
}

Value textToInteger(const std::string& text, const SqlType& from, const SqlType& to) {
    std::string_view rest = trimRight(trimLeft(text));
    const std::string_view all = rest;
    bool negative = false;
    if (!rest.empty() && (rest.front() == '-' || rest.front() == '+')) {
        negative = rest.front() == '-';
        rest.remove_prefix(1);
        rest = trimLeft(rest);
    }
    const auto syntax = [&]() {
        if (to.id == TypeId::BigInt) {
            raise(8114, {baseName(from.id), "bigint"});
        }
        raise(245, {baseName(from.id), text, baseName(to.id)});
    };
    if (rest.empty()) {
        if (!all.empty() && to.id == TypeId::BigInt) {
            syntax();
        }
        return std::int64_t{0};
    }
    Int128 number = 0;
    for (const char c : rest) {
        if (c < '0' || c > '9') {
            syntax();
        }
        number = number > powerOfTen(30) ? number : number * 10 + (c - '0');
    }
    number = negative ? -number : number;
    const IntegerRange range = rangeOf(to.id);
    if (number < range.low || number > range.high) {
        if (to.id == TypeId::Int) {
            raise(248, {baseName(from.id), text});
        }
        if (to.id == TypeId::BigInt) {
            raise(8115, {"expression", "bigint"});
        }
        raise(244, {baseName(from.id), text, to.id == TypeId::TinyInt ? "INT1" : "INT2"});
    }
    return static_cast<std::int64_t>(number);
}

Value floatToInteger(double number, const SqlType& from, const SqlType& to) {
    const double whole = std::trunc(number);
    const IntegerRange range = rangeOf(to.id);
    if (!(whole >= static_cast<double>(range.low) && whole <= static_cast<double>(range.high)) ||
        whole >= 9223372036854775808.0) {
        static_cast<void>(from);
        std::array<char, 400> text{};
        std::snprintf(text.data(), text.size(), "%f", number);
        raise(232, {baseName(to.id), text.data()});
    }
    return static_cast<std::int64_t>(whole);
}

Value bytesToInteger(const Bytes& bytes, const SqlType& to) {
    const std::size_t width = to.id == TypeId::BigInt     ? 8
                              : to.id == TypeId::Int      ? 4
                              : to.id == TypeId::SmallInt ? 2
                                                          : 1;
    std::uint64_t number = 0;
    const std::size_t start = bytes.size() > width ? bytes.size() - width : 0;
    for (std::size_t i = start; i < bytes.size(); ++i) {
        number = number << 8 | bytes[i];
    }
    if (width == 4) {
        return std::int64_t{static_cast<std::int32_t>(number)};
    }
    if (width == 2) {
        return std::int64_t{static_cast<std::int16_t>(number)};
    }
    return static_cast<std::int64_t>(number);
}

Value toBit(const Value& value, const SqlType& from) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        const std::string word = lower(trimRight(trimLeft(*text)));
        if (word == "true" || word == "false") {
            return std::int64_t{word == "true"};
        }
        const std::optional<DecimalValue> number = parseDecimal(word);
        if ((!number && !word.empty()) || word.find('.') != std::string::npos) {
            raise(245, {baseName(from.id), *text, "bit"});
        }
        return std::int64_t{number && number->unscaled != 0};
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return std::int64_t{*number != 0};
    }
    if (const auto* number = std::get_if<DecimalValue>(&value)) {
        return std::int64_t{number->unscaled != 0};
    }
    if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        return std::int64_t{date->days != 0 || date->ticks != 0};
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        return std::int64_t{integerOf(bytesToInteger(*bytes, plainType(TypeId::TinyInt))) != 0};
    }
    return std::int64_t{integerOf(value) != 0};
}

}  // namespace

Value toInteger(const Value& value, const SqlType& from, const SqlType& to) {
    if (to.id == TypeId::Bit) {
        return toBit(value, from);
    }
    if (const auto* number = std::get_if<std::int64_t>(&value)) {
        return checkedInteger(*number, from, to);
    }
    if (const auto* text = std::get_if<std::string>(&value)) {
        return textToInteger(*text, from, to);
    }
    if (const auto* number = std::get_if<double>(&value)) {
        return floatToInteger(*number, from, to);
    }
    if (const auto* number = std::get_if<DecimalValue>(&value)) {
        // decimal is cut, money is rounded.
        const DecimalValue whole =
            from.id == TypeId::Money ? *rescale(*number, 0) : *truncateScale(*number, 0);
        if (whole.unscaled < INT64_MIN || whole.unscaled > INT64_MAX) {
            raise(8115, {"expression", baseName(to.id)});
        }
        return checkedInteger(static_cast<std::int64_t>(whole.unscaled), plainType(TypeId::BigInt), to);
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        return bytesToInteger(*bytes, to);
    }
    const auto& date = std::get<DateTimeValue>(value);
    // Noon and later count as the next day.
    return checkedInteger(date.days + (date.ticks >= kTicksPerDay / 2 ? 1 : 0), plainType(TypeId::BigInt),
                          to);
}

Value toDecimal(const Value& value, const SqlType& from, const SqlType& to) {
    const bool money = to.id == TypeId::Money;
    std::optional<DecimalValue> number;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        number = DecimalValue{*integer, 0};
    } else if (const auto* real = std::get_if<double>(&value)) {
        number = fromDouble(*real, to.scale);
    } else if (const auto* decimal = std::get_if<DecimalValue>(&value)) {
        number = *decimal;
    } else if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        number = fromDouble(toDays(*date), to.scale);
    } else {
        std::string text(trimRight(trimLeft(std::get<std::string>(value))));
        if (money) {
            std::erase(text, ',');
            if (!text.empty() && text.front() == '$') {
                text.erase(0, 1);
            }
            if (text.empty()) {
                return DecimalValue{0, 4};
            }
        }
        number = text.find_first_of("eE") == std::string::npos ? parseDecimal(text) : std::nullopt;
        if (!number) {
            const bool digitsOnly = !text.empty() &&
                                    text.find_first_not_of("0123456789.+-") == std::string::npos &&
                                    text.find_first_of("0123456789") != std::string::npos && text.size() > 38;
            if (!digitsOnly && money) {
                raise(235);
            }
            if (!digitsOnly) {
                raise(8114, {baseName(from.id), "numeric"});
            }
        }
    }
    number = number ? rescale(*number, to.scale) : std::nullopt;
    if (money) {
        if (!number || number->unscaled < INT64_MIN || number->unscaled > INT64_MAX) {
            raise(8115, {isText(from) ? "varchar" : "expression", "money"});
        }
        return *number;
    }
    if (!number || !fitsPrecision(number->unscaled, to.precision)) {
        raise(8115, {messageName(from), "numeric"});
    }
    return *number;
}

Value toFloat(const Value& value, const SqlType& from, const SqlType& to) {
    double number = 0;
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        number = static_cast<double>(*integer);
    } else if (const auto* real = std::get_if<double>(&value)) {
        number = *real;
    } else if (const auto* decimal = std::get_if<DecimalValue>(&value)) {
        number = toDouble(*decimal);
    } else if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        number = toDays(*date);
    } else {
        const std::string text(trimRight(trimLeft(std::get<std::string>(value))));
        if (!text.empty()) {
            char* end = nullptr;
            number = std::strtod(text.c_str(), &end);
            // strtod also takes hexadecimal, inf and nan, which are no numbers here.
            if (*end != '\0' || text.find_first_not_of("0123456789+-.eE") != std::string::npos) {
                raise(8114, {baseName(from.id), baseName(to.id)});
            }
        }
    }
    if (to.id == TypeId::Real) {
        const auto single = static_cast<float>(number);
        if (!std::isfinite(single)) {
            raise(8115, {"expression", "real"});
        }
        return static_cast<double>(single);
    }
    if (!std::isfinite(number)) {
        raise(8115, {"expression", "float"});
    }
    return number;
}

Value toDateTime(const Value& value, const SqlType& from, const SqlType& to, int style,
                 const ConvertSettings& settings) {
    DateTimeValue result;
    if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        result = *date;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        DateOrder order = settings.dateOrder;
        const int base = style % 100;
        if (base == 3 || base == 4 || base == 5) {
            order = DateOrder::Dmy;
        } else if (base == 1 || base == 10) {
            order = DateOrder::Mdy;
        } else if (base == 2 || base == 11 || base == 20 || base == 21) {
            order = DateOrder::Ymd;
        }
        const DateFault fault = parseDateTime(*text, order, result);
        if (fault == DateFault::Syntax || (fault == DateFault::Range && to.id == TypeId::Date)) {
            raise(241);
        }
        if (fault == DateFault::Range) {
            raise(242, {baseName(from.id), baseName(to.id)});
        }
    } else {
        const double days = std::get<double>(toFloat(value, from, plainType(TypeId::Float)));
        const std::optional<DateTimeValue> converted = fromDays(days);
        if (!converted) {
            raise(8115, {"expression", "datetime"});
        }
        result = *converted;
    }
    if (to.id == TypeId::Date) {
        result.ticks = 0;
    } else if (!isInRange(result.days)) {
        raise(242, {baseName(from.id), baseName(to.id)});
    }
    return result;
}

}  // namespace detail

Value convert(const Value& value, const SqlType& from, const SqlType& to, int style,
              const ConvertSettings& settings) {
    if (isNull(value) || to.id == TypeId::Null) {
        return value;
    }
    if (isText(to)) {
        return detail::toText(value, from, to, style);
    }
    if (isInteger(to)) {
        return detail::toInteger(value, from, to);
    }
    if (isExact(to)) {
        return detail::toDecimal(value, from, to);
    }
    if (isApproximate(to)) {
        return detail::toFloat(value, from, to);
    }
    if (isDate(to)) {
        return detail::toDateTime(value, from, to, style, settings);
    }
    if (to.id == TypeId::UniqueIdentifier) {
        return detail::toGuid(value);
    }
    return detail::toBinary(value, from, to, style);
}

}  // namespace magdb
