#pragma once

#include "engine/SqlType.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace magdb {

/// The numbers by which the catalogue and ODBC know a type.
struct TypeFacts {
    TypeId id;
    const char* name;
    int systemType;   ///< system_type_id of sys.types
    int oldType;      ///< type of syscolumns when NOT NULL; also SS_DATA_TYPE
    int oldNullType;  ///< the same when NULL is allowed
    int odbc;         ///< ODBC 3 type
    int odbc2;        ///< ODBC 2 type
    int precision;    ///< digits or characters of the widest value; 0: from the declaration
    int length;       ///< bytes that ODBC transfers; 0: from the declaration
    int scale;        ///< -1: none
    int radix;        ///< 0: none
};

/// One for each type that a column can have, in the order of TypeId.
[[nodiscard]] std::span<const TypeFacts> allTypeFacts();
[[nodiscard]] const TypeFacts& typeFacts(TypeId id);

/// max_length of sys.columns: bytes, -1 for (max).
[[nodiscard]] int storedLength(const SqlType& type);
/// Precision and scale of sys.columns: 0 for types without.
[[nodiscard]] int storedPrecision(const SqlType& type);
[[nodiscard]] int storedScale(const SqlType& type);

/// A type as the ODBC catalogue procedures describe it.
struct OdbcFacts {
    int type = 0;
    int type2 = 0;  ///< for ODBC 2 clients
    std::string name;
    int precision = 0;
    int length = 0;
    std::optional<int> scale;
    std::optional<int> radix;
    int sqlType = 0;
    std::optional<int> datetimeSub;
    std::optional<int> octetLength;
    int tdsType = 0;
};
[[nodiscard]] OdbcFacts odbcFacts(const SqlType& type, bool nullable);

}  // namespace magdb
