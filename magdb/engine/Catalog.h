#pragma once

#include "engine/Schema.h"
#include "engine/Sqlite.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace magdb {

/// The catalogue inside the database file: tables of SQLite whose names begin with "magdb_". All functions
/// work on the transaction that the connection has open.
namespace catalog {

/// Makes the catalogue in a new file, and drops the ## tables that an earlier run left.
void prepare(SqliteConnection& connection);

[[nodiscard]] std::int64_t version(SqliteConnection& connection);
/// Reads everything.
[[nodiscard]] std::shared_ptr<Schema> load(SqliteConnection& connection);

/// Writes one object in the place of what stands under its id, and counts the version up.
void store(SqliteConnection& connection, Schema& schema, const SchemaObject& object);
void remove(SqliteConnection& connection, Schema& schema, std::int32_t objectId);

/// Last identity value given out; nothing before the first.
[[nodiscard]] std::optional<std::int64_t> lastIdentity(SqliteConnection& connection, std::int32_t objectId);
void setLastIdentity(SqliteConnection& connection, std::int32_t objectId, std::optional<std::int64_t> value);

void setLogin(SqliteConnection& connection, std::string_view name, std::string_view password);
[[nodiscard]] bool checkLogin(SqliteConnection& connection, std::string_view name, std::string_view password);

}  // namespace catalog

/// The name of SQLite's table for a table of the database.
[[nodiscard]] std::string physicalName(std::string_view tableName);

}  // namespace magdb
