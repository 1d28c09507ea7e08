#include "engine/SqlType.h"

namespace magdb {

bool isText(const SqlType& type) {
    return type.id == TypeId::Char || type.id == TypeId::VarChar || type.id == TypeId::NChar ||
           type.id == TypeId::NVarChar;
}

bool isInteger(const SqlType& type) {
    return type.id == TypeId::Bit || type.id == TypeId::TinyInt || type.id == TypeId::SmallInt ||
           type.id == TypeId::Int || type.id == TypeId::BigInt;
}

bool isExact(const SqlType& type) {
    return type.id == TypeId::Money || type.id == TypeId::Decimal;
}

bool isApproximate(const SqlType& type) {
    return type.id == TypeId::Real || type.id == TypeId::Float;
}

bool isDate(const SqlType& type) {
    return type.id == TypeId::Date || type.id == TypeId::DateTime;
}

bool isUnicode(const SqlType& type) {
    return type.id == TypeId::NChar || type.id == TypeId::NVarChar;
}

bool isNumber(const SqlType& type) {
    return isInteger(type) || isExact(type) || isApproximate(type);
}

SqlType textType(TypeId id, int length) {
    SqlType type;
    type.id = id;
    type.length = length;
    return type;
}

SqlType decimalType(int precision, int scale) {
    SqlType type;
    type.id = TypeId::Decimal;
    type.precision = static_cast<std::uint8_t>(precision);
    type.scale = static_cast<std::uint8_t>(scale);
    return type;
}

SqlType plainType(TypeId id) {
    SqlType type;
    type.id = id;
    if (id == TypeId::Money) {
        type.precision = 19;
        type.scale = 4;
    }
    return type;
}

std::string baseName(TypeId id) {
    switch (id) {
        case TypeId::Null:
            return "NULL";
        case TypeId::VarBinary:
            return "varbinary";
        case TypeId::Char:
            return "char";
        case TypeId::VarChar:
            return "varchar";
        case TypeId::NChar:
            return "nchar";
        case TypeId::NVarChar:
            return "nvarchar";
        case TypeId::UniqueIdentifier:
            return "uniqueidentifier";
        case TypeId::Bit:
            return "bit";
        case TypeId::TinyInt:
            return "tinyint";
        case TypeId::SmallInt:
            return "smallint";
        case TypeId::Int:
            return "int";
        case TypeId::BigInt:
            return "bigint";
        case TypeId::Money:
            return "money";
        case TypeId::Decimal:
            return "decimal";
        case TypeId::Real:
            return "real";
        case TypeId::Float:
            return "float";
        case TypeId::Date:
            return "date";
        case TypeId::DateTime:
            return "datetime";
    }
    return {};
}

std::string typeName(const SqlType& type) {
    std::string name = baseName(type.id);
    if (isText(type) || type.id == TypeId::VarBinary) {
        name += type.length < 0 ? "(max)" : "(" + std::to_string(type.length) + ")";
    } else if (type.id == TypeId::Decimal) {
        name += "(" + std::to_string(type.precision) + "," + std::to_string(type.scale) + ")";
    }
    return name;
}

}  // namespace magdb
