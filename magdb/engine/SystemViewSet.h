#pragma once

#include "engine/SystemViews.h"

#include <cstdint>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// How the system views are put together: groups of views, each in a file of its own.

namespace magdb {

/// Which of the three databases a view shows.
enum class DatabaseRole : std::uint8_t { User, Master, Tempdb };

/// Fixed numbers of the databases and schemas.
inline constexpr int kMasterId = 1;
inline constexpr int kTempdbId = 2;
inline constexpr int kUserDatabaseId = 5;
inline constexpr int kDboSchema = 1;

[[nodiscard]] int databaseId(DatabaseRole role);
[[nodiscard]] std::string databaseName(CatalogContext& context, DatabaseRole role);
/// The role of a database by its name in any case; nothing for names that are no database.
[[nodiscard]] std::optional<DatabaseRole> databaseRole(CatalogContext& context, std::string_view name);

/// The objects that exist in a database: none in master, the ## and # tables in tempdb.
[[nodiscard]] std::vector<std::shared_ptr<const SchemaObject>> objectsOf(CatalogContext& context,
                                                                         DatabaseRole role);
/// Columns of a table, a view or a table-valued function; none for other objects.
[[nodiscard]] std::vector<Column> columnsOf(CatalogContext& context, const SchemaObject& object);
/// Parameters of a procedure or function; none for other objects.
[[nodiscard]] const std::vector<tsql::Parameter>* parametersOf(const SchemaObject& object);
/// Type of a scalar function's result; nothing for other objects.
[[nodiscard]] std::optional<SqlType> returnTypeOf(const SchemaObject& object);
[[nodiscard]] const char* typeDescription(ObjectKind kind);

/// An expression as the catalogue of the server shows it: in parentheses, numbers in two pairs.
[[nodiscard]] std::string storedExpression(std::string_view written);

/// A constraint with the number under which the catalogue shows it. Numbers lie beside that of the table.
struct ConstraintInfo {
    std::int32_t id = 0;
    std::string name;
    const char* type = "";         ///< PK, UQ, F, C, D
    const char* description = "";  ///< PRIMARY_KEY_CONSTRAINT...
    std::string definition;        ///< of checks and defaults
    int column = 0;                ///< 1-based; of a default
    const Key* key = nullptr;
    const ForeignKey* foreignKey = nullptr;
};
[[nodiscard]] std::vector<ConstraintInfo> constraintsOf(const Table& table);

// Types of columns.
[[nodiscard]] Column sysnameColumn(std::string name, bool nullable = false);
[[nodiscard]] Column textColumn(std::string name, int length, bool nullable = true);
[[nodiscard]] Column ansiColumn(std::string name, int length, bool nullable = true);
[[nodiscard]] Column intColumn(std::string name, bool nullable = false);
[[nodiscard]] Column smallColumn(std::string name, bool nullable = false);
[[nodiscard]] Column tinyColumn(std::string name, bool nullable = false);
[[nodiscard]] Column bitColumn(std::string name, bool nullable = false);
[[nodiscard]] Column dateColumn(std::string name, bool nullable = false);

[[nodiscard]] inline Value number(std::int64_t value) {
    return value;
}
[[nodiscard]] inline Value truth(bool value) {
    return std::int64_t{value ? 1 : 0};
}
[[nodiscard]] inline Value text(std::string_view value) {
    return std::string(value);
}
[[nodiscard]] inline Value nothing() {
    return std::monostate{};
}
[[nodiscard]] inline Value optionalNumber(const std::optional<int>& value) {
    return value ? number(*value) : nothing();
}
/// NULL for an empty text.
[[nodiscard]] inline Value optionalText(std::string_view value) {
    return value.empty() ? nothing() : text(value);
}

using ViewList = std::vector<SystemView>;
void addObjectViews(ViewList& list, DatabaseRole role);       ///< sys.objects and its kin
void addConstraintViews(ViewList& list, DatabaseRole role);   ///< sys.indexes, keys, checks
void addServerViews(ViewList& list, DatabaseRole role);       ///< databases, sessions, principals, types
void addOldViews(ViewList& list, DatabaseRole role);          ///< sysobjects and its kin
void addInformationViews(ViewList& list, DatabaseRole role);  ///< INFORMATION_SCHEMA
void addOdbcViews(ViewList& list, DatabaseRole role);         ///< what the ODBC catalogue procedures read

}  // namespace magdb
