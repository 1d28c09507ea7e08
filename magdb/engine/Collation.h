#pragma once

#include <string_view>

struct sqlite3;

namespace magdb {

/// Name of the collation of the database as T-SQL knows it: Polish letters in their alphabet, case ignored,
/// accents regarded.
inline constexpr std::string_view kCollationName = "Polish_CI_AS";

/// Order of two texts: -1, 0 or 1. Trailing blanks are ignored. Thread-safe.
[[nodiscard]] int collate(std::string_view left, std::string_view right);

/// The same with case regarded or compared byte for byte, for COLLATE clauses that ask for it.
[[nodiscard]] int collateCase(std::string_view left, std::string_view right);
[[nodiscard]] int collateBinary(std::string_view left, std::string_view right);

/// Registers the collations with a connection: T (the database's), TCS (case regarded), TBIN (code points).
void registerCollations(sqlite3* connection);

}  // namespace magdb
