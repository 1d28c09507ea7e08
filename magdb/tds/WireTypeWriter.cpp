#include "tds/Encoding.h"
#include "tds/WireType.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

namespace magdb::tds {

namespace {

__extension__ using Int128 = __int128;
__extension__ using UInt128 = unsigned __int128;

constexpr std::int32_t daysToZero = 693595;
constexpr int longestBytes = 8000;
constexpr std::uint16_t maxMarker = 0xFFFF;
/// Declared size of text and image, and of ntext in bytes.
constexpr std::uint32_t longObjectSize = 0x7FFFFFFF;
constexpr std::uint32_t longWideObjectSize = 0x7FFFFFFE;
/// SQL Server's numbers for an overflow and for text that is too long.
constexpr int overflowNumber = 8115;
constexpr int truncatedNumber = 8152;

bool isWide(const SqlType& type) {
    return type.id == TypeId::NChar || type.id == TypeId::NVarChar;
}

bool isBytesLike(const SqlType& type) {
    return isWide(type) || type.id == TypeId::Char || type.id == TypeId::VarChar ||
           type.id == TypeId::VarBinary;
}

/// Bytes a short text or binary may have, or -1 for the max types.
int declaredBytes(const SqlType& type) {
    const int bytes = isWide(type) ? 2 * type.length : type.length;
    if (type.length < 0 || bytes > longestBytes) {
        return -1;
    }
    return std::max(bytes, isWide(type) ? 2 : 1);
}

std::uint8_t decimalWidth(std::uint8_t precision) {
    return precision <= 9 ? 5 : precision <= 19 ? 9 : precision <= 28 ? 13 : 17;
}

WireId bytesId(const SqlType& type) {
    switch (type.id) {
        case TypeId::NChar:
            return WireId::NChar;
        case TypeId::NVarChar:
            return WireId::NVarChar;
        case TypeId::Char:
            return WireId::BigChar;
        case TypeId::VarChar:
            return WireId::BigVarChar;
        default:
            return WireId::BigVarBinary;
    }
}

void writeId(ByteWriter& out, WireId id) {
    out.u8(static_cast<std::uint8_t>(id));
}

void writeSized(ByteWriter& out, WireId id, std::uint8_t size) {
    writeId(out, id);
    out.u8(size);
}

void writeBytesInfo(ByteWriter& out, const SqlType& type, Version version) {
    const bool binary = type.id == TypeId::VarBinary;
    if (isLongObject(type, version)) {
        writeId(out, binary ? WireId::Image : isWide(type) ? WireId::NText : WireId::Text);
        out.u32(isWide(type) ? longWideObjectSize : longObjectSize);
    } else {
        const int bytes = declaredBytes(type);
        writeId(out, bytesId(type));
        out.u16(bytes < 0 ? maxMarker : static_cast<std::uint16_t>(bytes));
    }
    if (!binary) {
        out.bytes(polishCollation);
    }
}

[[noreturn]] void overflow(const SqlType& type) {
    throw RequestError(overflowNumber,
                       "Arithmetic overflow error converting a value to " + typeName(type) + ".");
}

/// Value * 10^scale as the engine's exact form; rounds half away from zero.
Int128 rescale(const DecimalValue& value, std::uint8_t scale, const SqlType& type) {
    Int128 number = value.unscaled;
    for (int i = value.scale; i < scale; ++i) {
        if (__builtin_mul_overflow(number, Int128{10}, &number)) {
            overflow(type);
        }
    }
    for (int i = value.scale; i > scale; --i) {
        const auto last = static_cast<int>(number % 10);
        number = number / 10 + (i == scale + 1 ? (last >= 5) - (last <= -5) : 0);
    }
    return number;
}

Int128 exact(const Value& value, std::uint8_t scale, const SqlType& type) {
    if (const auto* decimal = std::get_if<DecimalValue>(&value)) {
        return rescale(*decimal, scale, type);
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return rescale({*integer, 0}, scale, type);
    }
    overflow(type);
}

std::int64_t integerOf(const Value& value, const SqlType& type) {
    const Int128 number = exact(value, 0, type);
    if (number < std::numeric_limits<std::int64_t>::min() ||
        number > std::numeric_limits<std::int64_t>::max()) {
        overflow(type);
    }
    return static_cast<std::int64_t>(number);
}

double floatOf(const Value& value, const SqlType& type) {
    if (const auto* number = std::get_if<double>(&value)) {
        return *number;
    }
    if (const auto* integer = std::get_if<std::int64_t>(&value)) {
        return static_cast<double>(*integer);
    }
    overflow(type);
}

void writeInteger(ByteWriter& out, const SqlType& type, const Value& value) {
    const std::int64_t number = integerOf(value, type);
    const auto checked = [&](std::int64_t least, std::int64_t most, std::uint8_t width) {
        if (number < least || number > most) {
            overflow(type);
        }
        out.u8(width);
        for (int i = 0; i < width; ++i) {
            out.u8(static_cast<std::uint8_t>(static_cast<std::uint64_t>(number) >> (8 * i)));
        }
    };
    switch (type.id) {
        case TypeId::Bit:
            return checked(0, 1, 1);
        case TypeId::TinyInt:
            return checked(0, 255, 1);
        case TypeId::SmallInt:
            return checked(INT16_MIN, INT16_MAX, 2);
        case TypeId::BigInt:
            return checked(INT64_MIN, INT64_MAX, 8);
        default:
            return checked(INT32_MIN, INT32_MAX, 4);
    }
}

void writeMoney(ByteWriter& out, const SqlType& type, const Value& value) {
    const Int128 number = exact(value, 4, type);
    if (number < INT64_MIN || number > INT64_MAX) {
        overflow(type);
    }
    const auto bits = static_cast<std::uint64_t>(number);
    out.u8(8);
    out.u32(static_cast<std::uint32_t>(bits >> 32));
    out.u32(static_cast<std::uint32_t>(bits));
}

void writeDecimal(ByteWriter& out, const SqlType& type, const Value& value) {
    const Int128 number = exact(value, type.scale, type);
    auto magnitude = static_cast<UInt128>(number < 0 ? -number : number);
    const std::uint8_t width = decimalWidth(type.precision);
    out.u8(width);
    out.u8(number < 0 ? 0 : 1);
    for (int i = 1; i < width; ++i) {
        out.u8(static_cast<std::uint8_t>(magnitude));
        magnitude >>= 8;
    }
    if (magnitude != 0) {
        overflow(type);
    }
}

const DateTimeValue& dateOf(const Value& value, const SqlType& type) {
    if (const auto* date = std::get_if<DateTimeValue>(&value)) {
        return *date;
    }
    overflow(type);
}

/// The proleptic Gregorian date of a day number, for clients without a date type.
std::string isoDate(std::int32_t days) {
    // Years begin in March, so that the leap day is the last of its year.
    std::int32_t day = days + daysToZero + 306;
    const std::int32_t era = day / 146097;
    day -= era * 146097;
    const std::int32_t yearOfEra = (day - day / 1460 + day / 36524 - day / 146096) / 365;
    day -= 365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100;
    const std::int32_t shifted = (5 * day + 2) / 153;
    day -= (153 * shifted + 2) / 5;
    const std::int32_t month = shifted < 10 ? shifted + 3 : shifted - 9;
    const std::int32_t year = era * 400 + yearOfEra + (month <= 2 ? 1 : 0);
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d", year, month, day + 1);
    return text;
}

void writeDate(ByteWriter& out, const SqlType& type, const Value& value, Version version) {
    const std::int32_t days = dateOf(value, type).days;
    if (version < Version::Tds73) {
        out.u16(20);
        out.text(isoDate(days));
        return;
    }
    const std::int32_t fromYearOne = days + daysToZero;
    out.u8(3);
    out.u8(static_cast<std::uint8_t>(fromYearOne));
    out.u8(static_cast<std::uint8_t>(fromYearOne >> 8));
    out.u8(static_cast<std::uint8_t>(fromYearOne >> 16));
}

int hexDigit(char c) {
    return c >= '0' && c <= '9'   ? c - '0'
           : c >= 'A' && c <= 'F' ? c - 'A' + 10
           : c >= 'a' && c <= 'f' ? c - 'a' + 10
                                  : -1;
}

/// Accepts the 36-character form and the sixteen bytes as the wire has them.
void writeGuid(ByteWriter& out, const SqlType& type, const Value& value) {
    Bytes bytes;
    if (const auto* raw = std::get_if<Bytes>(&value)) {
        bytes = *raw;
    } else if (const auto* text = std::get_if<std::string>(&value)) {
        int high = -1;
        for (const char c : *text) {
            const int digit = hexDigit(c);
            if (digit < 0) {
                continue;
            }
            if (high < 0) {
                high = digit;
            } else {
                bytes.push_back(static_cast<std::uint8_t>(high << 4 | digit));
                high = -1;
            }
        }
        // The first three groups are little-endian numbers.
        if (bytes.size() == 16) {
            std::reverse(bytes.begin(), bytes.begin() + 4);
            std::reverse(bytes.begin() + 4, bytes.begin() + 6);
            std::reverse(bytes.begin() + 6, bytes.begin() + 8);
        }
    }
    if (bytes.size() != 16) {
        overflow(type);
    }
    out.u8(16);
    out.bytes(bytes);
}

/// The bytes of text or binary as the type's encoding has them; char types are padded to their length.
void encodeBytes(const SqlType& type, const Value& value, Bytes& out) {
    if (const auto* raw = std::get_if<Bytes>(&value)) {
        out = *raw;
        return;
    }
    const auto* text = std::get_if<std::string>(&value);
    if (text == nullptr || type.id == TypeId::VarBinary) {
        throw RequestError(overflowNumber,
                           "A value has another type than its column " + typeName(type) + ".");
    }
    out.reserve(text->size() * 2);
    if (isWide(type)) {
        appendUtf16(*text, out);
    } else {
        appendWindows1250(*text, out);
    }
    const int declared = declaredBytes(type);
    const auto wanted = static_cast<std::size_t>(std::max(declared, 0));
    if (type.id == TypeId::NChar) {
        while (out.size() + 1 < wanted) {
            out.insert(out.end(), {' ', 0});
        }
    } else if (type.id == TypeId::Char && out.size() < wanted) {
        out.insert(out.end(), wanted - out.size(), ' ');
    }
}

void writeBytes(ByteWriter& out, const SqlType& type, const Value& value, Version version) {
    static thread_local Bytes bytes;
    bytes.clear();
    encodeBytes(type, value, bytes);
    const int declared = declaredBytes(type);
    if (isLongObject(type, version)) {
        // A pointer and a time stamp stand before the bytes; clients only skip them.
        out.u8(16);
        out.fill(0, 16 + 8);
        out.u32(static_cast<std::uint32_t>(bytes.size()));
        out.bytes(bytes);
    } else if (declared < 0) {
        out.u64(bytes.size());
        if (!bytes.empty()) {
            out.u32(static_cast<std::uint32_t>(bytes.size()));
            out.bytes(bytes);
        }
        out.u32(0);
    } else {
        if (bytes.size() > static_cast<std::size_t>(declared)) {
            throw RequestError(truncatedNumber, "String or binary data would be truncated.");
        }
        out.u16(static_cast<std::uint16_t>(bytes.size()));
        out.bytes(bytes);
    }
}

void writeNull(ByteWriter& out, const SqlType& type, Version version) {
    if (type.id == TypeId::Date && version < Version::Tds73) {
        out.u16(0xFFFF);
    } else if (!isBytesLike(type) || isLongObject(type, version)) {
        out.u8(0);
    } else if (declaredBytes(type) < 0) {
        out.u64(~std::uint64_t{0});
    } else {
        out.u16(0xFFFF);
    }
}

}  // namespace

bool isLongObject(const SqlType& type, Version version) {
    return version < Version::Tds72 && isBytesLike(type) && declaredBytes(type) < 0;
}

void writeTypeInfo(ByteWriter& out, const SqlType& type, Version version) {
    switch (type.id) {
        case TypeId::Null:
        case TypeId::Int:
            return writeSized(out, WireId::IntN, 4);
        case TypeId::TinyInt:
            return writeSized(out, WireId::IntN, 1);
        case TypeId::SmallInt:
            return writeSized(out, WireId::IntN, 2);
        case TypeId::BigInt:
            return writeSized(out, WireId::IntN, 8);
        case TypeId::Bit:
            return writeSized(out, WireId::BitN, 1);
        case TypeId::Real:
            return writeSized(out, WireId::FloatN, 4);
        case TypeId::Float:
            return writeSized(out, WireId::FloatN, 8);
        case TypeId::Money:
            return writeSized(out, WireId::MoneyN, 8);
        case TypeId::DateTime:
            return writeSized(out, WireId::DateTimeN, 8);
        case TypeId::UniqueIdentifier:
            return writeSized(out, WireId::Guid, 16);
        case TypeId::Decimal:
            writeSized(out, WireId::NumericN, decimalWidth(type.precision));
            out.u8(type.precision);
            out.u8(type.scale);
            return;
        case TypeId::Date:
            if (version >= Version::Tds73) {
                return writeId(out, WireId::DateN);
            }
            return writeBytesInfo(out, {.id = TypeId::NVarChar, .length = 10}, version);
        case TypeId::VarBinary:
        case TypeId::Char:
        case TypeId::VarChar:
        case TypeId::NChar:
        case TypeId::NVarChar:
            return writeBytesInfo(out, type, version);
    }
}

void writeValue(ByteWriter& out, const SqlType& type, const Value& value, Version version) {
    if (isNull(value)) {
        return writeNull(out, type, version);
    }
    switch (type.id) {
        case TypeId::Null:
        case TypeId::Bit:
        case TypeId::TinyInt:
        case TypeId::SmallInt:
        case TypeId::Int:
        case TypeId::BigInt:
            return writeInteger(out, type, value);
        case TypeId::Money:
            return writeMoney(out, type, value);
        case TypeId::Decimal:
            return writeDecimal(out, type, value);
        case TypeId::Real:
            out.u8(4);
            return out.f32(static_cast<float>(floatOf(value, type)));
        case TypeId::Float:
            out.u8(8);
            return out.f64(floatOf(value, type));
        case TypeId::Date:
            return writeDate(out, type, value, version);
        case TypeId::DateTime: {
            const DateTimeValue& date = dateOf(value, type);
            out.u8(8);
            out.i32(date.days);
            return out.i32(date.ticks);
        }
        case TypeId::UniqueIdentifier:
            return writeGuid(out, type, value);
        case TypeId::VarBinary:
        case TypeId::Char:
        case TypeId::VarChar:
        case TypeId::NChar:
        case TypeId::NVarChar:
            return writeBytes(out, type, value, version);
    }
}

}  // namespace magdb::tds
