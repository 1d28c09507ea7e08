#pragma once

#include "engine/SqlType.h"
#include "engine/Value.h"
#include "tds/ByteReader.h"
#include "tds/ByteWriter.h"
#include "tds/Protocol.h"

#include <cstdint>

namespace magdb::tds {

/// Type tokens (MS-TDS 2.2.5.4 Data Types).
enum class WireId : std::uint8_t {
    Null = 0x1F,
    Image = 0x22,
    Text = 0x23,
    Guid = 0x24,
    OldVarBinary = 0x25,
    IntN = 0x26,
    OldVarChar = 0x27,
    DateN = 0x28,
    TimeN = 0x29,
    DateTime2N = 0x2A,
    DateTimeOffsetN = 0x2B,
    OldBinary = 0x2D,
    OldChar = 0x2F,
    Int1 = 0x30,
    Bit = 0x32,
    Int2 = 0x34,
    Int4 = 0x38,
    SmallDateTime = 0x3A,
    Real = 0x3B,
    Money = 0x3C,
    DateTime = 0x3D,
    Float = 0x3E,
    BitN = 0x68,
    DecimalN = 0x6A,
    NumericN = 0x6C,
    FloatN = 0x6D,
    MoneyN = 0x6E,
    DateTimeN = 0x6F,
    SmallMoney = 0x7A,
    Int8 = 0x7F,
    NText = 0x63,
    BigVarBinary = 0xA5,
    BigVarChar = 0xA7,
    BigBinary = 0xAD,
    BigChar = 0xAF,
    NVarChar = 0xE7,
    NChar = 0xEF,
};

/// A value as a client sent it, with the type that the client declared.
struct WireValue {
    SqlType type;
    Value value;
};

/// Reads TYPE_INFO and the value behind it (MS-TDS 2.2.5.6, 2.2.5.5). Throws RequestError for a type that
/// the engine has not, or for a value that does not fit its type.
[[nodiscard]] WireValue readWireValue(ByteReader& reader);

/// Writes TYPE_INFO for a column or a return value. Types that a protocol version lacks travel as the type
/// that SQL Server sends such clients: date as nvarchar(10) before 7.3, (n)varchar(max) as (n)text
/// before 7.2.
void writeTypeInfo(ByteWriter& out, const SqlType& type, Version version);

/// True for the types whose column description carries the name of a table (text, ntext, image).
[[nodiscard]] bool isLongObject(const SqlType& type, Version version);

/// Writes a value in the form that writeTypeInfo() told. Throws RequestError when the value does not fit the
/// type, leaving out in an undefined state behind its former end.
void writeValue(ByteWriter& out, const SqlType& type, const Value& value, Version version);

}  // namespace magdb::tds
