#include "tds/Encoding.h"
#include "tds/WireType.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <optional>
#include <string>

namespace magdb::tds {

namespace {

__extension__ using Int128 = __int128;
__extension__ using UInt128 = unsigned __int128;

/// Days from 0001-01-01 to 1900-01-01, the zero of datetime.
constexpr std::int32_t daysToZero = 693595;
/// 1753-01-01 and 9999-12-31, the ends of datetime.
constexpr std::int32_t firstDay = -53690;
constexpr std::int32_t lastDay = 2958463;
constexpr std::int32_t ticksPerDay = 300 * 86400;
constexpr std::uint16_t maxMarker = 0xFFFF;
constexpr std::uint16_t nullLength16 = 0xFFFF;
constexpr std::uint32_t nullLength32 = 0xFFFFFFFF;
constexpr std::uint64_t nullLength64 = ~std::uint64_t{0};

[[noreturn]] void refuse(WireId id, const char* why) {
    char text[128];
    std::snprintf(text, sizeof text, "Data type 0x%02X %s.", static_cast<unsigned>(id), why);
    throw RequestError(brokenCallNumber, text);
}

[[noreturn]] void refuseLength(WireId id) {
    refuse(id, "has an invalid data length or metadata length");
}

[[noreturn]] void refuseValue(WireId id) {
    refuse(id, "has an invalid value");
}

/// How 8-bit text of a parameter is to be read.
class TextCode {
public:
    TextCode() = default;
    explicit TextCode(std::span<const std::uint8_t> collation)
        : language_(collation[0] | collation[1] << 8 | (collation[2] & 0x0F) << 16),
          utf8_((collation[3] & 0x04) != 0) {}

    [[nodiscard]] std::string decode(WireId id, std::span<const std::uint8_t> bytes) const {
        const bool plain = std::all_of(bytes.begin(), bytes.end(), [](auto byte) { return byte < 0x80; });
        if (utf8_ || plain) {
            return {bytes.begin(), bytes.end()};
        }
        if (!isCentralEuropean()) {
            refuse(id, "carries text of a code page other than windows-1250");
        }
        return fromWindows1250(bytes);
    }

private:
    [[nodiscard]] bool isCentralEuropean() const {
        // Czech, Hungarian, Polish, Romanian, Croatian, Slovak, Albanian, Slovenian, Serbian in Latin script.
        static constexpr int languages[] = {0x0405, 0x040E, 0x0415, 0x0418, 0x041A,
                                            0x041B, 0x041C, 0x0424, 0x081A};
        return std::find(std::begin(languages), std::end(languages), language_) != std::end(languages);
    }

    int language_ = 0x0415;
    bool utf8_ = false;
};

Value decimalOf(Int128 unscaled, std::uint8_t scale) {
    return DecimalValue{unscaled, scale};
}

Value dateTimeOf(WireId id, std::int64_t days, std::int64_t ticks) {
    if (days < firstDay || days > lastDay || ticks < 0 || ticks >= ticksPerDay) {
        refuseValue(id);
    }
    return DateTimeValue{static_cast<std::int32_t>(days), static_cast<std::int32_t>(ticks)};
}

Value readInteger(ByteReader& reader, WireId id, std::size_t width) {
    switch (width) {
        case 1:
            return std::int64_t{reader.u8()};
        case 2:
            return std::int64_t{reader.i16()};
        case 4:
            return std::int64_t{reader.i32()};
        case 8:
            return reader.i64();
        default:
            refuseLength(id);
    }
}

TypeId integerType(WireId id, std::size_t width) {
    switch (width) {
        case 1:
            return TypeId::TinyInt;
        case 2:
            return TypeId::SmallInt;
        case 4:
            return TypeId::Int;
        case 8:
            return TypeId::BigInt;
        default:
            refuseLength(id);
    }
}

Value readFloat(ByteReader& reader, WireId id, std::size_t width) {
    if (width != 4 && width != 8) {
        refuseLength(id);
    }
    const double value = width == 4 ? static_cast<double>(reader.f32()) : reader.f64();
    if (!std::isfinite(value)) {
        refuseValue(id);
    }
    return value;
}

/// The eight-byte form has its high half first.
Value readMoney(ByteReader& reader, WireId id, std::size_t width) {
    if (width == 4) {
        return decimalOf(reader.i32(), 4);
    }
    if (width != 8) {
        refuseLength(id);
    }
    const auto high = static_cast<std::uint64_t>(reader.u32());
    const std::uint64_t low = reader.u32();
    return decimalOf(static_cast<std::int64_t>(high << 32 | low), 4);
}

Value readDateTime(ByteReader& reader, WireId id, std::size_t width) {
    if (width == 4) {
        const std::int64_t days = reader.u16();
        return dateTimeOf(id, days, std::int64_t{reader.u16()} * 60 * 300);
    }
    if (width != 8) {
        refuseLength(id);
    }
    const std::int64_t days = reader.i32();
    return dateTimeOf(id, days, reader.u32());
}

std::int64_t readDays(ByteReader& reader) {
    const auto bytes = reader.take(3);
    return std::int64_t{bytes[0] | bytes[1] << 8 | bytes[2] << 16} - daysToZero;
}

/// datetime2 is rounded to the 1/300 s of datetime, as by assignment to a datetime parameter.
Value readDateTime2(ByteReader& reader, WireId id, std::size_t width, int scale) {
    const std::size_t timeWidth = scale < 3 ? 3 : scale < 5 ? 4 : 5;
    if (width != timeWidth + 3) {
        refuseLength(id);
    }
    std::int64_t time = 0;
    std::size_t shift = 0;
    for (const std::uint8_t byte : reader.take(timeWidth)) {
        time |= std::int64_t{byte} << shift;
        shift += 8;
    }
    std::int64_t unitsPerSecond = 1;
    for (int i = 0; i < scale; ++i) {
        unitsPerSecond *= 10;
    }
    if (time >= unitsPerSecond * 86400) {
        refuseValue(id);
    }
    std::int64_t ticks = (time * 300 + unitsPerSecond / 2) / unitsPerSecond;
    std::int64_t days = readDays(reader);
    if (ticks == ticksPerDay) {
        ticks = 0;
        ++days;
    }
    return dateTimeOf(id, days, ticks);
}

Value readGuid(ByteReader& reader) {
    const auto b = reader.take(16);
    char text[37];
    std::snprintf(text, sizeof text, "%02X%02X%02X%02X-%02X%02X-%02X%02X-%02X%02X-%02X%02X%02X%02X%02X%02X",
                  b[3], b[2], b[1], b[0], b[5], b[4], b[7], b[6], b[8], b[9], b[10], b[11], b[12], b[13],
                  b[14], b[15]);
    return std::string(text);
}

/// Types with a length byte in front of the value, zero for NULL.
WireValue readByteLength(ByteReader& reader, WireId id) {
    const std::size_t declared = reader.u8();
    const std::size_t width = reader.u8();
    if (width != 0 && width > declared) {
        refuseLength(id);
    }
    const auto value = [&](auto read) { return width == 0 ? Value{} : read(reader, id, width); };
    switch (id) {
        case WireId::IntN:
            return {{integerType(id, declared)}, value(readInteger)};
        case WireId::BitN:
            if (width > 1) {
                refuseLength(id);
            }
            return {{TypeId::Bit}, width == 0 ? Value{} : Value{std::int64_t{reader.u8() != 0}}};
        case WireId::FloatN:
            return {{declared == 4 ? TypeId::Real : TypeId::Float}, value(readFloat)};
        case WireId::MoneyN:
            return {{TypeId::Money}, value(readMoney)};
        case WireId::DateTimeN:
            return {{TypeId::DateTime}, value(readDateTime)};
        default:
            if (width != 0 && width != 16) {
                refuseLength(id);
            }
            return {{TypeId::UniqueIdentifier}, width == 0 ? Value{} : readGuid(reader)};
    }
}

WireValue readDecimal(ByteReader& reader, WireId id) {
    reader.take(1);  // width, which the value repeats
    SqlType type{TypeId::Decimal};
    type.precision = reader.u8();
    type.scale = reader.u8();
    if (type.precision == 0 || type.precision > 38 || type.scale > type.precision) {
        refuseLength(id);
    }
    const std::size_t width = reader.u8();
    if (width == 0) {
        return {type, {}};
    }
    if (width > 17 || width < 2) {
        refuseLength(id);
    }
    const bool negative = reader.u8() == 0;
    UInt128 magnitude = 0;
    unsigned shift = 0;
    for (const std::uint8_t byte : reader.take(width - 1)) {
        magnitude |= static_cast<UInt128>(byte) << shift;
        shift += 8;
    }
    UInt128 limit = 1;
    for (int i = 0; i < type.precision; ++i) {
        limit *= 10;
    }
    if (magnitude >= limit) {
        refuseValue(id);
    }
    const auto number = static_cast<Int128>(magnitude);
    return {type, decimalOf(negative ? -number : number, type.scale)};
}

WireValue readDate(ByteReader& reader, WireId id) {
    const std::size_t width = reader.u8();
    if (width == 0) {
        return {{TypeId::Date}, {}};
    }
    if (width != 3) {
        refuseLength(id);
    }
    const std::int64_t days = readDays(reader);
    if (days > lastDay) {
        refuseValue(id);
    }
    return {{TypeId::Date}, DateTimeValue{static_cast<std::int32_t>(days), 0}};
}

WireValue readNewDateTime(ByteReader& reader, WireId id) {
    const int scale = reader.u8();
    if (scale > 7) {
        refuseLength(id);
    }
    const std::size_t width = reader.u8();
    return {{TypeId::DateTime}, width == 0 ? Value{} : readDateTime2(reader, id, width, scale)};
}

/// The body of a text or binary value once its bytes are known.
Value decodeBytes(WireId id, std::span<const std::uint8_t> bytes, const TextCode& code) {
    switch (id) {
        case WireId::NVarChar:
        case WireId::NChar:
        case WireId::NText:
            if (bytes.size() % 2 != 0) {
                refuseLength(id);
            }
            return fromUtf16(bytes);
        case WireId::BigVarChar:
        case WireId::BigChar:
        case WireId::OldVarChar:
        case WireId::OldChar:
        case WireId::Text:
            return code.decode(id, bytes);
        default:
            return Bytes(bytes.begin(), bytes.end());
    }
}

TypeId textTypeId(WireId id) {
    switch (id) {
        case WireId::NVarChar:
        case WireId::NText:
            return TypeId::NVarChar;
        case WireId::NChar:
            return TypeId::NChar;
        case WireId::BigVarChar:
        case WireId::OldVarChar:
        case WireId::Text:
            return TypeId::VarChar;
        case WireId::BigChar:
        case WireId::OldChar:
            return TypeId::Char;
        default:
            return TypeId::VarBinary;
    }
}

bool hasCollation(WireId id) {
    switch (id) {
        case WireId::NVarChar:
        case WireId::NChar:
        case WireId::BigVarChar:
        case WireId::BigChar:
        case WireId::Text:
        case WireId::NText:
            return true;
        default:
            return false;
    }
}

SqlType declaredText(WireId id, int bytes) {
    SqlType type{textTypeId(id)};
    const bool wide = type.id == TypeId::NVarChar || type.id == TypeId::NChar;
    // SQL Server counts a parameter declared without room as having room for one.
    type.length = bytes < 0 ? -1 : std::max(1, wide ? bytes / 2 : bytes);
    return type;
}

/// Value in chunks, for the max types (MS-TDS 2.2.5.2.3 Partially Length-prefixed Bytes).
std::optional<Bytes> readChunks(ByteReader& reader) {
    if (reader.u64() == nullLength64) {
        return std::nullopt;
    }
    Bytes all;
    for (std::uint32_t size = reader.u32(); size != 0; size = reader.u32()) {
        const auto chunk = reader.take(size);
        all.insert(all.end(), chunk.begin(), chunk.end());
    }
    return all;
}

WireValue readShortLength(ByteReader& reader, WireId id) {
    const std::uint16_t declared = reader.u16();
    TextCode code;
    if (hasCollation(id)) {
        code = TextCode(reader.take(sizeof polishCollation));
    }
    // The chunked form belongs to 7.2, but there are clients that send it in 7.1 too; nothing else begins so.
    if (declared == maxMarker) {
        const auto bytes = readChunks(reader);
        return {declaredText(id, -1), bytes ? decodeBytes(id, *bytes, code) : Value{}};
    }
    const std::uint16_t width = reader.u16();
    if (width == nullLength16) {
        return {declaredText(id, declared), {}};
    }
    if (width > declared) {
        refuseLength(id);
    }
    return {declaredText(id, declared), decodeBytes(id, reader.take(width), code)};
}

WireValue readLongLength(ByteReader& reader, WireId id) {
    reader.take(4);  // declared length
    TextCode code;
    if (hasCollation(id)) {
        code = TextCode(reader.take(sizeof polishCollation));
    }
    const std::uint32_t width = reader.u32();
    return {declaredText(id, -1),
            width == nullLength32 ? Value{} : decodeBytes(id, reader.take(width), code)};
}

WireValue readOldText(ByteReader& reader, WireId id) {
    const int declared = reader.u8();
    const std::size_t width = reader.u8();
    return {declaredText(id, declared),
            width == 0 ? Value{} : decodeBytes(id, reader.take(width), TextCode())};
}

/// Types without any length, and the end of what is known.
WireValue readFixed(ByteReader& reader, WireId id) {
    switch (id) {
        case WireId::Null:
            return {};
        case WireId::Int1:
            return {{TypeId::TinyInt}, readInteger(reader, id, 1)};
        case WireId::Int2:
            return {{TypeId::SmallInt}, readInteger(reader, id, 2)};
        case WireId::Int4:
            return {{TypeId::Int}, readInteger(reader, id, 4)};
        case WireId::Int8:
            return {{TypeId::BigInt}, readInteger(reader, id, 8)};
        case WireId::Bit:
            return {{TypeId::Bit}, std::int64_t{reader.u8() != 0}};
        case WireId::Real:
            return {{TypeId::Real}, readFloat(reader, id, 4)};
        case WireId::Float:
            return {{TypeId::Float}, readFloat(reader, id, 8)};
        case WireId::SmallMoney:
            return {{TypeId::Money}, readMoney(reader, id, 4)};
        case WireId::Money:
            return {{TypeId::Money}, readMoney(reader, id, 8)};
        case WireId::SmallDateTime:
            return {{TypeId::DateTime}, readDateTime(reader, id, 4)};
        case WireId::DateTime:
            return {{TypeId::DateTime}, readDateTime(reader, id, 8)};
        default:
            refuse(id, "is unknown or not supported");
    }
}

}  // namespace

WireValue readWireValue(ByteReader& reader) {
    const auto id = static_cast<WireId>(reader.u8());
    switch (id) {
        case WireId::IntN:
        case WireId::BitN:
        case WireId::FloatN:
        case WireId::MoneyN:
        case WireId::DateTimeN:
        case WireId::Guid:
            return readByteLength(reader, id);
        case WireId::DecimalN:
        case WireId::NumericN:
            return readDecimal(reader, id);
        case WireId::DateN:
            return readDate(reader, id);
        case WireId::DateTime2N:
            return readNewDateTime(reader, id);
        case WireId::OldVarChar:
        case WireId::OldChar:
        case WireId::OldVarBinary:
        case WireId::OldBinary:
            return readOldText(reader, id);
        case WireId::BigVarBinary:
        case WireId::BigBinary:
        case WireId::BigVarChar:
        case WireId::BigChar:
        case WireId::NVarChar:
        case WireId::NChar:
            return readShortLength(reader, id);
        case WireId::Text:
        case WireId::NText:
        case WireId::Image:
            return readLongLength(reader, id);
        default:
            return readFixed(reader, id);
    }
}

}  // namespace magdb::tds
