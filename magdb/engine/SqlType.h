#pragma once

#include <cstdint>
#include <string>

namespace magdb {

/// The types of T-SQL that the engine knows. The order is that of implicit conversion: of two operands the
/// one whose type stands later is the type of the result.
enum class TypeId : std::uint8_t {
    Null,  ///< the type of a bare NULL; travels as int
    VarBinary,
    Char,
    VarChar,
    NChar,
    NVarChar,
    UniqueIdentifier,
    Bit,
    TinyInt,
    SmallInt,
    Int,
    BigInt,
    Money,
    Decimal,
    Real,
    Float,
    Date,
    DateTime,
};

/// A declared type with its facets.
struct SqlType {
    TypeId id = TypeId::Null;
    /// Characters (n)char and (n)varchar can hold, bytes of varbinary; -1 means max.
    int length = 0;
    /// Decimal digits in all, 1 to 38; decimal only.
    std::uint8_t precision = 18;
    /// Decimal digits after the point; decimal only.
    std::uint8_t scale = 0;

    bool operator==(const SqlType&) const = default;
};

[[nodiscard]] bool isText(const SqlType& type);
[[nodiscard]] bool isNumber(const SqlType& type);
/// bit to bigint.
[[nodiscard]] bool isInteger(const SqlType& type);
/// money and decimal.
[[nodiscard]] bool isExact(const SqlType& type);
[[nodiscard]] bool isApproximate(const SqlType& type);
[[nodiscard]] bool isDate(const SqlType& type);
[[nodiscard]] bool isUnicode(const SqlType& type);

[[nodiscard]] SqlType textType(TypeId id, int length);
[[nodiscard]] SqlType decimalType(int precision, int scale);
[[nodiscard]] SqlType plainType(TypeId id);

/// The name without facets, as error messages write it.
[[nodiscard]] std::string baseName(TypeId id);
/// The type as T-SQL writes it, such as nvarchar(50) or decimal(18,4).
[[nodiscard]] std::string typeName(const SqlType& type);

}  // namespace magdb
