#include "engine/ConvertDetail.h"
#include "engine/Decimal.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <array>

namespace magdb::detail {

namespace {

/// money: two decimals, with commas between thousands (style 1) or four decimals (style 2).
std::string formatMoney(const DecimalValue& value, int style) {
    std::string text = formatDecimal(style == 2 ? value : *rescale(value, 2));
    if (style == 1) {
        const std::size_t first = text.front() == '-' ? 1 : 0;
        for (std::size_t at = text.find('.'); at > first + 3; at -= 3) {
            text.insert(at - 3, ",");
        }
    }
    return text;
}

std::string cut(std::string text, const SqlType& to) {
    if (to.length < 0) {
        return text;
    }
    const auto limit = static_cast<std::size_t>(to.length);
    if (text.size() > limit && (isAscii(text) || utf16Length(text) > to.length)) {
        text = substringUnits(text, 0, to.length);
    }
    if (to.id == TypeId::Char || to.id == TypeId::NChar) {
        const std::int64_t length = utf16Length(text);
        if (length < to.length) {
            text.append(static_cast<std::size_t>(to.length - length), ' ');
        }
    }
    return text;
}

std::string bytesToText(const Bytes& bytes, const SqlType& to, int style) {
    if (style == 1 || style == 2) {
        return (style == 1 ? "0x" : "") + toHex(bytes);
    }
    std::string text;
    if (isUnicode(to)) {
        std::u16string units;
        for (std::size_t i = 0; i < bytes.size(); i += 2) {
            const int high = i + 1 < bytes.size() ? bytes[i + 1] : 0;
            units += static_cast<char16_t>(bytes[i] | high << 8);
        }
        return toUtf8(units);
    }
    for (const std::uint8_t byte : bytes) {
        text += codePageChar(byte);
    }
    return text;
}

/// The bytes of a uniqueidentifier: the first three groups are little-endian.
constexpr std::array<std::size_t, 16> kGuidOrder = {6,  4,  2,  0,  11, 9,  16, 14,
                                                    19, 21, 24, 26, 28, 30, 32, 34};

int hexDigit(char c) {
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    const char folded = static_cast<char>(c | 0x20);
    return folded >= 'a' && folded <= 'f' ? folded - 'a' + 10 : -1;
}

Bytes hexToBytes(std::string_view text, const SqlType& from, int style) {
    if (style == 1) {
        if (text.size() < 2 || text[0] != '0' || (text[1] | 0x20) != 'x') {
            raise(8114, {baseName(from.id), "varbinary"});
        }
        text.remove_prefix(2);
    }
    Bytes bytes;
    if (text.size() % 2 != 0) {
        raise(8114, {baseName(from.id), "varbinary"});
    }
    for (std::size_t i = 0; i < text.size(); i += 2) {
        const int high = hexDigit(text[i]);
        const int low = hexDigit(text[i + 1]);
        if (high < 0 || low < 0) {
            raise(8114, {baseName(from.id), "varbinary"});
        }
        bytes.push_back(static_cast<std::uint8_t>(high << 4 | low));
    }
    return bytes;
}

Bytes textToBytes(const std::string& text, const SqlType& from) {
    Bytes bytes;
    if (isUnicode(from)) {
        for (const char16_t unit : toUtf16(text)) {
            bytes.push_back(static_cast<std::uint8_t>(unit & 0xFF));
            bytes.push_back(static_cast<std::uint8_t>(unit >> 8));
        }
        return bytes;
    }
    for (const char16_t unit : toUtf16(text)) {
        bytes.push_back(static_cast<std::uint8_t>(codePageCode(toUtf8(std::u16string(1, unit)))));
    }
    return bytes;
}

}  // namespace

Value toText(const Value& value, const SqlType& from, const SqlType& to, int style) {
    std::string text;
    if (const auto* own = std::get_if<std::string>(&value)) {
        if (from.id == TypeId::UniqueIdentifier) {
            if (to.length >= 0 && to.length < 36) {
                raise(8170);
            }
            return cut(*own, to);
        }
        return cut(isUnicode(from) && !isUnicode(to) ? toCodePage(*own) : *own, to);
    }
    if (const auto* bytes = std::get_if<Bytes>(&value)) {
        return cut(bytesToText(*bytes, to, style), to);
    }
    if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        const std::optional<std::string> written = from.id == TypeId::Date
                                                       ? formatDate(*date, style == 0 ? 23 : style)
                                                       : formatDateTime(*date, style);
        if (!written) {
            raise(281, {std::to_string(style), baseName(from.id)});
        }
        return cut(*written, to);
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        text = std::to_string(*integer);
    } else if (const auto* real = std::get_if<double>(&value)) {
        text = formatFloat(*real, style);
    } else if (from.id == TypeId::Money) {
        text = formatMoney(std::get<DecimalValue>(value), style);
    } else {
        text = formatDecimal(std::get<DecimalValue>(value));
    }
    if (to.length >= 0 && text.size() > static_cast<std::size_t>(to.length)) {
        // Integers that do not fit become an asterisk in char and varchar, as they always did.
        if (isInteger(from) && !isUnicode(to)) {
            return cut("*", to);
        }
        raise(8115, {isInteger(from) ? "expression" : messageName(from), baseName(to.id)});
    }
    return cut(std::move(text), to);
}

Value toBinary(const Value& value, const SqlType& from, const SqlType& to, int style) {
    Bytes bytes;
    if (const auto* own = std::get_if<Bytes>(&value)) {
        bytes = *own;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        if (from.id == TypeId::UniqueIdentifier) {
            for (const std::size_t at : kGuidOrder) {
                bytes.push_back(
                    static_cast<std::uint8_t>(hexDigit((*text)[at]) << 4 | hexDigit((*text)[at + 1])));
            }
        } else {
            bytes = style == 1 || style == 2 ? hexToBytes(*text, from, style) : textToBytes(*text, from);
        }
    } else {
        const std::size_t width = from.id == TypeId::BigInt     ? 8
                                  : from.id == TypeId::Int      ? 4
                                  : from.id == TypeId::SmallInt ? 2
                                                                : 1;
        const auto number = static_cast<std::uint64_t>(integerOf(value));
        for (std::size_t i = 0; i < width; ++i) {
            bytes.push_back(static_cast<std::uint8_t>(number >> (8 * (width - 1 - i))));
        }
        // Numbers keep their low end when the room is short.
        if (to.length >= 0 && bytes.size() > static_cast<std::size_t>(to.length)) {
            bytes.erase(bytes.begin(), bytes.end() - to.length);
        }
    }
    if (to.length >= 0 && bytes.size() > static_cast<std::size_t>(to.length)) {
        bytes.resize(static_cast<std::size_t>(to.length));
    }
    return bytes;
}

Value toGuid(const Value& value) {
    if (const auto* text = std::get_if<std::string>(&value)) {
        const std::string guid = parseGuid(*text);
        if (guid.empty()) {
            raise(8169);
        }
        return guid;
    }
    Bytes bytes = std::get<Bytes>(value);
    bytes.resize(16);
    std::string guid(36, '-');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const std::string digits = toHex({bytes[i]});
        guid[kGuidOrder[i]] = digits[0];
        guid[kGuidOrder[i] + 1] = digits[1];
    }
    return guid;
}

}  // namespace magdb::detail
