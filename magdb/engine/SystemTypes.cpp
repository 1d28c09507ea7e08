#include "engine/SystemTypes.h"

#include <algorithm>
#include <array>

namespace magdb {

namespace {

constexpr int kMaxBytes = 2147483647;

constexpr std::array<TypeFacts, 17> kTypes = {{
    {TypeId::VarBinary, "varbinary", 165, 37, 37, -3, -3, 0, 0, -1, 0},
    {TypeId::Char, "char", 175, 47, 39, 1, 1, 0, 0, -1, 0},
    {TypeId::VarChar, "varchar", 167, 39, 39, 12, 12, 0, 0, -1, 0},
    {TypeId::NChar, "nchar", 239, 47, 39, -8, -8, 0, 0, -1, 0},
    {TypeId::NVarChar, "nvarchar", 231, 39, 39, -9, -9, 0, 0, -1, 0},
    {TypeId::UniqueIdentifier, "uniqueidentifier", 36, 37, 37, -11, -11, 36, 16, -1, 0},
    {TypeId::Bit, "bit", 104, 50, 50, -7, -7, 1, 1, -1, 0},
    {TypeId::TinyInt, "tinyint", 48, 48, 38, -6, -6, 3, 1, 0, 10},
    {TypeId::SmallInt, "smallint", 52, 52, 38, 5, 5, 5, 2, 0, 10},
    {TypeId::Int, "int", 56, 56, 38, 4, 4, 10, 4, 0, 10},
    {TypeId::BigInt, "bigint", 127, 63, 108, -5, -5, 19, 8, 0, 10},
    {TypeId::Money, "money", 60, 60, 110, 3, 3, 19, 21, 4, 10},
    {TypeId::Decimal, "decimal", 106, 106, 106, 3, 3, 0, 0, 0, 10},
    {TypeId::Real, "real", 59, 59, 109, 7, 7, 24, 4, -1, 2},
    {TypeId::Float, "float", 62, 62, 109, 6, 6, 53, 8, -1, 2},
    // Clients older than the type know a date as text.
    {TypeId::Date, "date", 40, 0, 0, -9, -9, 10, 20, -1, 0},
    {TypeId::DateTime, "datetime", 61, 61, 111, 93, 11, 23, 16, 3, 0},
}};

/// ODBC's types for (max): the long ones.
int longType(TypeId id) {
    switch (id) {
        case TypeId::VarChar:
            return -1;
        case TypeId::NVarChar:
            return -10;
        default:
            return -4;
    }
}

int bytesPerUnit(const SqlType& type) {
    return isUnicode(type) ? 2 : 1;
}

void describeLengths(const SqlType& type, OdbcFacts& out) {
    const int unit = bytesPerUnit(type);
    if (type.length < 0) {
        out.type = out.type2 = longType(type.id);
        out.precision = kMaxBytes / unit;
        out.length = kMaxBytes / unit * unit;
    } else {
        out.precision = type.length;
        out.length = type.length * unit;
    }
    out.octetLength = out.length;
}

}  // namespace

std::span<const TypeFacts> allTypeFacts() {
    return kTypes;
}

const TypeFacts& typeFacts(TypeId id) {
    const auto found =
        std::find_if(kTypes.begin(), kTypes.end(), [id](const TypeFacts& facts) { return facts.id == id; });
    // A bare NULL travels as int.
    return found == kTypes.end() ? typeFacts(TypeId::Int) : *found;
}

int storedLength(const SqlType& type) {
    if (isText(type) || type.id == TypeId::VarBinary) {
        return type.length < 0 ? -1 : type.length * bytesPerUnit(type);
    }
    switch (type.id) {
        case TypeId::Money:
            return 8;
        case TypeId::Decimal:
            return type.precision <= 9 ? 5 : type.precision <= 19 ? 9 : type.precision <= 28 ? 13 : 17;
        case TypeId::Date:
            return 3;
        case TypeId::DateTime:
            return 8;
        default:
            return typeFacts(type.id).length;
    }
}

int storedPrecision(const SqlType& type) {
    if (type.id == TypeId::Decimal) {
        return type.precision;
    }
    return isText(type) || type.id == TypeId::VarBinary || type.id == TypeId::UniqueIdentifier
               ? 0
               : typeFacts(type.id).precision;
}

int storedScale(const SqlType& type) {
    if (type.id == TypeId::Decimal) {
        return type.scale;
    }
    return std::max(0, typeFacts(type.id).scale);
}

OdbcFacts odbcFacts(const SqlType& type, bool nullable) {
    const TypeFacts& facts = typeFacts(type.id);
    OdbcFacts out;
    out.type = facts.odbc;
    out.type2 = facts.odbc2;
    out.name = facts.name;
    out.precision = facts.precision;
    out.length = facts.length;
    out.tdsType = nullable ? facts.oldNullType : facts.oldType;
    if (facts.scale >= 0) {
        out.scale = facts.scale;
    }
    if (facts.radix > 0) {
        out.radix = facts.radix;
    }
    if (isText(type) || type.id == TypeId::VarBinary) {
        describeLengths(type, out);
    } else if (type.id == TypeId::Decimal) {
        out.precision = type.precision;
        out.length = type.precision + 2;
        out.scale = type.scale;
    } else if (type.id == TypeId::Date) {
        out.octetLength = 20;
    }
    out.sqlType = out.type;
    if (type.id == TypeId::DateTime) {
        out.sqlType = 9;
        out.datetimeSub = 3;
    }
    return out;
}

}  // namespace magdb
