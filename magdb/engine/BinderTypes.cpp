#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/Decimal.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <unordered_map>

// Types of T-SQL expressions: literals, declared types, the common type of two operands, conversions.

namespace magdb {

namespace {

SqlType exactAsDecimal(const SqlType& type) {
    switch (type.id) {
        case TypeId::Bit:
            return decimalType(1, 0);
        case TypeId::TinyInt:
            return decimalType(3, 0);
        case TypeId::SmallInt:
            return decimalType(5, 0);
        case TypeId::Int:
            return decimalType(10, 0);
        case TypeId::BigInt:
            return decimalType(19, 0);
        case TypeId::Money:
            return decimalType(19, 4);
        default:
            return type;
    }
}

SqlType commonDecimal(const SqlType& left, const SqlType& right) {
    const int whole = std::max(left.precision - left.scale, right.precision - right.scale);
    int scale = std::max(left.scale, right.scale);
    if (whole + scale > 38) {
        scale = std::max(0, 38 - whole);
    }
    return decimalType(std::min(38, whole + scale), scale);
}

int declaredLength(const tsql::DataType& type, int fallback, int limit) {
    if (type.max) {
        return -1;
    }
    const int length = type.length.value_or(fallback);
    if (length < 1 || length > limit) {
        raise(131, {std::to_string(length), type.name});
    }
    return length;
}

}  // namespace

SqlType asDecimal(const Bound& value) {
    if (value.digits > 0 && isInteger(value.type)) {
        return decimalType(value.digits, 0);
    }
    return exactAsDecimal(value.type);
}

SqlType commonType(const SqlType& left, const SqlType& right) {
    if (left.id == TypeId::Null) {
        return right;
    }
    if (right.id == TypeId::Null || left == right) {
        return left;
    }
    if (isText(left) && isText(right)) {
        const bool unlimited = left.length < 0 || right.length < 0;
        TypeId id = std::max(left.id, right.id);
        // Blank-padded and free lengths meet as the free kind.
        if (id == TypeId::NChar && (left.id == TypeId::VarChar || right.id == TypeId::VarChar)) {
            id = TypeId::NVarChar;
        }
        return textType(id, unlimited ? -1 : std::max(left.length, right.length));
    }
    if (left.id == TypeId::VarBinary && right.id == TypeId::VarBinary) {
        return textType(TypeId::VarBinary,
                        left.length < 0 || right.length < 0 ? -1 : std::max(left.length, right.length));
    }
    const SqlType& strong = left.id > right.id ? left : right;
    const SqlType& weak = left.id > right.id ? right : left;
    if (strong.id == TypeId::Decimal && (isInteger(weak) || isExact(weak))) {
        return commonDecimal(exactAsDecimal(left), exactAsDecimal(right));
    }
    checkConversion(weak, strong, false);
    return strong;
}

SqlType resolveType(const tsql::DataType& type, int position, bool inCast) {
    static const std::unordered_map<std::string, TypeId> kPlain = {
        {"uniqueidentifier", TypeId::UniqueIdentifier},
        {"bit", TypeId::Bit},
        {"tinyint", TypeId::TinyInt},
        {"smallint", TypeId::SmallInt},
        {"int", TypeId::Int},
        {"bigint", TypeId::BigInt},
        {"money", TypeId::Money},
        {"real", TypeId::Real},
        {"date", TypeId::Date},
        {"datetime", TypeId::DateTime},
    };
    static const std::unordered_map<std::string, TypeId> kText = {
        {"char", TypeId::Char},         {"varchar", TypeId::VarChar},     {"nchar", TypeId::NChar},
        {"nvarchar", TypeId::NVarChar}, {"varbinary", TypeId::VarBinary},
    };
    const std::string name = lower(type.name);
    if (const auto found = kPlain.find(name); found != kPlain.end()) {
        if (type.length) {
            raise(2716, {std::to_string(position), name});
        }
        return plainType(found->second);
    }
    if (const auto found = kText.find(name); found != kText.end()) {
        const bool wide = found->second == TypeId::NChar || found->second == TypeId::NVarChar;
        return textType(found->second, declaredLength(type, inCast ? 30 : 1, wide ? 4000 : 8000));
    }
    if (name == "decimal" || name == "numeric") {
        const int precision = type.length.value_or(18);
        const int scale = type.scale.value_or(0);
        if (precision < 1 || precision > 38 || scale < 0 || scale > precision) {
            ServerMessage message = serverMessage(2716, {std::to_string(position), name});
            message.number = scale > precision ? 183 : 2750;
            message.text = "The scale or precision of the type '" + name + "' is out of range.";
            throw SqlError(message);
        }
        return decimalType(precision, scale);
    }
    if (name == "float") {
        return plainType(type.length.value_or(53) <= 24 ? TypeId::Real : TypeId::Float);
    }
    if (name == "sysname") {
        return textType(TypeId::NVarChar, 128);
    }
    if (name == "text") {
        return textType(TypeId::VarChar, -1);
    }
    if (name == "ntext") {
        return textType(TypeId::NVarChar, -1);
    }
    if (name == "image") {
        return textType(TypeId::VarBinary, -1);
    }
    static const std::vector<std::string> kUnsupported = {
        "binary",    "datetime2", "datetimeoffset", "smalldatetime", "time",   "smallmoney", "sql_variant",
        "timestamp", "xml",       "hierarchyid",    "geometry",      "cursor", "geography",  "table"};
    if (std::find(kUnsupported.begin(), kUnsupported.end(), name) != kUnsupported.end()) {
        refuse("the data type " + name);
    }
    if (inCast) {
        raise(243, {type.name});
    }
    raise(2715, {std::to_string(position), type.name});
}

Bound literal(const tsql::LiteralExpr& node) {
    Bound bound;
    bound.nullable = false;
    switch (node.type) {
        case tsql::LiteralKind::Null:
            bound.sql = "NULL";
            bound.nullable = true;
            bound.type = plainType(TypeId::Null);
            return bound;
        case tsql::LiteralKind::Integer: {
            const std::optional<DecimalValue> number = parseDecimal(node.text);
            if (!number) {
                raise(8115, {"expression", "numeric"});
            }
            if (number->unscaled <= INT32_MAX) {
                bound.type = plainType(TypeId::Int);
                bound.constant = static_cast<std::int64_t>(number->unscaled);
                bound.digits = digitCount(number->unscaled);
            } else {
                // Digits beyond int are a decimal, also where bigint would hold them.
                bound.type = decimalType(digitCount(number->unscaled), 0);
                bound.constant = *number;
            }
            break;
        }
        case tsql::LiteralKind::Decimal: {
            const std::optional<DecimalValue> number = parseDecimal(node.text);
            if (!number) {
                raise(8115, {"expression", "numeric"});
            }
            bound.type = decimalType(std::max(digitCount(number->unscaled), std::max<int>(number->scale, 1)),
                                     number->scale);
            bound.constant = *number;
            break;
        }
        case tsql::LiteralKind::Float:
            bound.type = plainType(TypeId::Float);
            bound.constant = std::strtod(node.text.c_str(), nullptr);
            break;
        case tsql::LiteralKind::Money:
            bound.type = plainType(TypeId::Money);
            bound.constant = convert(node.text, textType(TypeId::VarChar, -1), bound.type);
            break;
        case tsql::LiteralKind::String:
        case tsql::LiteralKind::NationalString: {
            const bool national = node.type == tsql::LiteralKind::NationalString;
            const std::string text = national ? node.text : toCodePage(node.text);
            const std::int64_t length = utf16Length(text);
            bound.type = textType(
                national ? TypeId::NVarChar : TypeId::VarChar,
                length > (national ? 4000 : 8000) ? -1 : static_cast<int>(std::max<std::int64_t>(length, 1)));
            bound.constant = text;
            break;
        }
        case tsql::LiteralKind::Binary: {
            const std::string digits = (node.text.size() % 2 != 0 ? "0" : "") + node.text;
            bound.constant =
                convert(digits, textType(TypeId::VarChar, -1), textType(TypeId::VarBinary, -1), 2);
            const auto size = static_cast<int>(digits.size() / 2);
            bound.type = textType(TypeId::VarBinary, size > 8000 ? -1 : std::max(size, 1));
            break;
        }
    }
    bound.sql = sqliteLiteral(*bound.constant);
    return bound;
}

TextOrder textOrder(const std::string& collation) {
    const std::string name = upper(collation);
    if (name == "DATABASE_DEFAULT" || name == "CATALOG_DEFAULT") {
        return TextOrder::Database;
    }
    const auto endsWith = [&](std::string_view part) {
        return name.size() > part.size() && name.ends_with(part);
    };
    if (endsWith("_BIN") || endsWith("_BIN2")) {
        return TextOrder::Binary;
    }
    if (endsWith("_CS_AS")) {
        return TextOrder::CaseSensitive;
    }
    if (endsWith("_CI_AS")) {
        return TextOrder::Database;
    }
    refuse("the collation " + collation);
}

std::string_view collationOf(TextOrder order) {
    switch (order) {
        case TextOrder::Database:
            return "T";
        case TextOrder::CaseSensitive:
            return "TCS";
        case TextOrder::Binary:
            return "TBIN";
    }
    return "T";
}

std::string dotted(const tsql::ObjectName& name) {
    std::string text = name.name;
    if (!name.schema.empty() || !name.database.empty()) {
        text = name.schema + "." + text;
    }
    return name.database.empty() ? text : name.database + "." + text;
}

Bound Binder::to(const Bound& value, const SqlType& type, bool isExplicit, int style) {
    Bound result = value;
    result.type = type;
    result.digits = 0;
    if (value.isNullLiteral()) {
        return result;
    }
    checkConversion(value.type, type, isExplicit);
    if (isSameRepresentation(value.type, type)) {
        return result;
    }
    if (value.constant && !isDate(type)) {
        // Dates wait for the session's date format, and errors for the moment of the run.
        try {
            result.constant = convert(*value.constant, value.type, type, style);
            result.sql = sqliteLiteral(*result.constant);
            return result;
        } catch (const SqlError&) {
            result.constant.reset();
        }
    }
    result.constant.reset();
    if (isInteger(value.type) && type.id == TypeId::Float) {
        result.sql = "CAST(" + value.sql + " AS REAL)";
    } else {
        result.sql = "t_conv(" + value.sql + "," + std::to_string(packType(value.type)) + "," +
                     std::to_string(packType(type)) + "," + std::to_string(style) + ")";
    }
    return result;
}

}  // namespace magdb
