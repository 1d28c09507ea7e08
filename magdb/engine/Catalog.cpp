#include "engine/Catalog.h"

#include "engine/Password.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <sqlite3.h>

#include <sstream>
#include <stdexcept>

namespace magdb {

std::string physicalName(std::string_view tableName) {
    // ## tables live beside the others, under a prefix that no table of a user can have.
    if (tableName.starts_with("##")) {
        return "main." + quoted("magdb_gt_" + nameKey(tableName.substr(2)));
    }
    return "main." + quoted(tableName);
}

namespace catalog {

namespace {

constexpr const char* kTables = R"(
CREATE TABLE IF NOT EXISTS magdb_meta(id INTEGER PRIMARY KEY, version INTEGER, next_object INTEGER);
INSERT OR IGNORE INTO magdb_meta VALUES(1, 1, 2105058535);
CREATE TABLE IF NOT EXISTS magdb_object(id INTEGER PRIMARY KEY, name TEXT, kind INTEGER, source TEXT,
  quoted_identifier INTEGER, created INTEGER, modified INTEGER, owner TEXT, seed INTEGER, increment INTEGER);
CREATE TABLE IF NOT EXISTS magdb_column(object_id INTEGER, position INTEGER, name TEXT, type TEXT,
  packed_type INTEGER, nullable INTEGER, identity INTEGER, default_name TEXT, default_text TEXT,
  computed_text TEXT, collation TEXT, PRIMARY KEY(object_id, position)) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS magdb_key(object_id INTEGER, position INTEGER, name TEXT, kind INTEGER,
  clustered INTEGER, columns TEXT, filter TEXT, PRIMARY KEY(object_id, position)) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS magdb_check(object_id INTEGER, position INTEGER, name TEXT, text TEXT,
  PRIMARY KEY(object_id, position)) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS magdb_foreign_key(object_id INTEGER, position INTEGER, name TEXT, columns TEXT,
  referenced TEXT, referenced_columns TEXT, on_delete INTEGER, on_update INTEGER,
  PRIMARY KEY(object_id, position)) WITHOUT ROWID;
CREATE TABLE IF NOT EXISTS magdb_identity(object_id INTEGER PRIMARY KEY, last INTEGER);
CREATE TABLE IF NOT EXISTS magdb_login(name TEXT PRIMARY KEY, salt BLOB, hash BLOB, rounds INTEGER) WITHOUT ROWID;
)";

// Names of columns cannot hold this character, so it divides lists of them.
constexpr char kDivider = '\x1F';

std::string join(const std::vector<std::string>& parts) {
    std::string text;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        text += (i == 0 ? "" : std::string(1, kDivider)) + parts[i];
    }
    return text;
}

std::vector<std::string> split(const std::string& text) {
    std::vector<std::string> parts;
    std::string part;
    std::istringstream stream(text);
    while (std::getline(stream, part, kDivider)) {
        parts.push_back(part);
    }
    return parts;
}

std::string writeColumns(const std::vector<int>& columns, const std::vector<bool>& descending) {
    std::vector<std::string> parts;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        parts.push_back((i < descending.size() && descending[i] ? "-" : "+") + std::to_string(columns[i]));
    }
    return join(parts);
}

void readColumns(const std::string& text, std::vector<int>& columns, std::vector<bool>* descending) {
    for (const std::string& part : split(text)) {
        columns.push_back(std::stoi(part.substr(1)));
        if (descending != nullptr) {
            descending->push_back(part.front() == '-');
        }
    }
}

void loadColumns(SqliteConnection& connection, Table& table) {
    SqliteStatement rows = connection.prepare(
        "SELECT name, packed_type, nullable, identity, default_name, default_text, computed_text, collation "
        "FROM magdb_column WHERE object_id = ? ORDER BY position");
    rows.bind(1, std::int64_t{table.id});
    while (rows.step()) {
        Column column;
        column.name = rows.text(0);
        column.type = unpackType(rows.integer(1));
        column.nullable = rows.integer(2) != 0;
        column.identity = rows.integer(3) != 0;
        column.defaultName = rows.text(4);
        column.defaultText = rows.text(5);
        column.computedText = rows.text(6);
        column.collation = rows.text(7);
        table.columns.push_back(std::move(column));
    }
}

void loadConstraints(SqliteConnection& connection, Table& table) {
    SqliteStatement keys = connection.prepare(
        "SELECT name, kind, clustered, columns, filter FROM magdb_key WHERE object_id = ? ORDER BY position");
    keys.bind(1, std::int64_t{table.id});
    while (keys.step()) {
        Key key;
        key.name = keys.text(0);
        key.kind = static_cast<Key::Kind>(keys.integer(1));
        key.clustered = keys.integer(2) != 0;
        readColumns(keys.text(3), key.columns, &key.descending);
        key.filter = keys.text(4);
        table.keys.push_back(std::move(key));
    }
    SqliteStatement checks =
        connection.prepare("SELECT name, text FROM magdb_check WHERE object_id = ? ORDER BY position");
    checks.bind(1, std::int64_t{table.id});
    while (checks.step()) {
        table.checks.push_back({checks.text(0), checks.text(1)});
    }
    SqliteStatement foreign = connection.prepare(
        "SELECT name, columns, referenced, referenced_columns, on_delete, on_update FROM magdb_foreign_key "
        "WHERE object_id = ? ORDER BY position");
    foreign.bind(1, std::int64_t{table.id});
    while (foreign.step()) {
        ForeignKey key;
        key.name = foreign.text(0);
        readColumns(foreign.text(1), key.columns, nullptr);
        key.referenced = foreign.text(2);
        key.referencedColumns = split(foreign.text(3));
        key.onDelete = static_cast<tsql::ReferentialAction>(foreign.integer(4));
        key.onUpdate = static_cast<tsql::ReferentialAction>(foreign.integer(5));
        table.foreignKeys.push_back(std::move(key));
    }
}

void storeTable(SqliteConnection& connection, const Table& table) {
    SqliteStatement columns = connection.prepare("INSERT INTO magdb_column VALUES(?,?,?,?,?,?,?,?,?,?,?)");
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const Column& column = table.columns[i];
        columns.bind(1, std::int64_t{table.id});
        columns.bind(2, static_cast<std::int64_t>(i));
        columns.bind(3, std::string_view(column.name));
        columns.bind(4, std::string_view(typeName(column.type)));
        columns.bind(5, packType(column.type));
        columns.bind(6, std::int64_t{column.nullable});
        columns.bind(7, std::int64_t{column.identity});
        columns.bind(8, std::string_view(column.defaultName));
        columns.bind(9, std::string_view(column.defaultText));
        columns.bind(10, std::string_view(column.computedText));
        columns.bind(11, std::string_view(column.collation));
        columns.step();
        columns.reset();
    }
    SqliteStatement keys = connection.prepare("INSERT INTO magdb_key VALUES(?,?,?,?,?,?,?)");
    for (std::size_t i = 0; i < table.keys.size(); ++i) {
        const Key& key = table.keys[i];
        keys.bind(1, std::int64_t{table.id});
        keys.bind(2, static_cast<std::int64_t>(i));
        keys.bind(3, std::string_view(key.name));
        keys.bind(4, static_cast<std::int64_t>(key.kind));
        keys.bind(5, std::int64_t{key.clustered});
        keys.bind(6, std::string_view(writeColumns(key.columns, key.descending)));
        keys.bind(7, std::string_view(key.filter));
        keys.step();
        keys.reset();
    }
    SqliteStatement checks = connection.prepare("INSERT INTO magdb_check VALUES(?,?,?,?)");
    for (std::size_t i = 0; i < table.checks.size(); ++i) {
        checks.bind(1, std::int64_t{table.id});
        checks.bind(2, static_cast<std::int64_t>(i));
        checks.bind(3, std::string_view(table.checks[i].name));
        checks.bind(4, std::string_view(table.checks[i].text));
        checks.step();
        checks.reset();
    }
    SqliteStatement foreign = connection.prepare("INSERT INTO magdb_foreign_key VALUES(?,?,?,?,?,?,?,?)");
    for (std::size_t i = 0; i < table.foreignKeys.size(); ++i) {
        const ForeignKey& key = table.foreignKeys[i];
        foreign.bind(1, std::int64_t{table.id});
        foreign.bind(2, static_cast<std::int64_t>(i));
        foreign.bind(3, std::string_view(key.name));
        foreign.bind(4, std::string_view(writeColumns(key.columns, {})));
        foreign.bind(5, std::string_view(key.referenced));
        foreign.bind(6, std::string_view(join(key.referencedColumns)));
        foreign.bind(7, static_cast<std::int64_t>(key.onDelete));
        foreign.bind(8, static_cast<std::int64_t>(key.onUpdate));
        foreign.step();
        foreign.reset();
    }
}

void deleteRows(SqliteConnection& connection, std::int32_t objectId) {
    const std::string id = std::to_string(objectId);
    for (const char* table : {"magdb_column", "magdb_key", "magdb_check", "magdb_foreign_key"}) {
        connection.execute(std::string("DELETE FROM ") + table + " WHERE object_id = " + id);
    }
    connection.execute("DELETE FROM magdb_object WHERE id = " + id);
}

void countUp(SqliteConnection& connection, Schema& schema) {
    ++schema.version;
    SqliteStatement update = connection.prepare("UPDATE magdb_meta SET version = ?, next_object = ?");
    update.bind(1, schema.version);
    update.bind(2, std::int64_t{schema.nextObjectId});
    update.step();
}

void dropGlobalTemps(SqliteConnection& connection) {
    const std::shared_ptr<Schema> schema = load(connection);
    const auto objects = schema->objects();
    for (const auto& [key, object] : objects) {
        if (key.starts_with("##")) {
            connection.execute("DROP TABLE IF EXISTS " + physicalName(object->name));
            remove(connection, *schema, object->id);
        }
    }
}

}  // namespace

void prepare(SqliteConnection& connection) {
    connection.execute("BEGIN IMMEDIATE");
    try {
        connection.execute(kTables);
        dropGlobalTemps(connection);
        connection.execute("COMMIT");
    } catch (...) {
        if (connection.inTransaction()) {
            connection.execute("ROLLBACK");
        }
        throw;
    }
}

std::int64_t version(SqliteConnection& connection) {
    SqliteStatement row = connection.prepare("SELECT version FROM magdb_meta");
    return row.step() ? row.integer(0) : 0;
}

std::shared_ptr<Schema> load(SqliteConnection& connection) {
    auto schema = std::make_shared<Schema>();
    SqliteStatement meta = connection.prepare("SELECT version, next_object FROM magdb_meta");
    if (!meta.step()) {
        throw std::runtime_error("the file has no catalogue");
    }
    schema->version = meta.integer(0);
    schema->nextObjectId = static_cast<std::int32_t>(meta.integer(1));
    SqliteStatement rows = connection.prepare(
        "SELECT id, name, kind, source, quoted_identifier, created, modified, owner, seed, increment FROM "
        "magdb_object");
    while (rows.step()) {
        const auto kind = static_cast<ObjectKind>(rows.integer(2));
        std::shared_ptr<SchemaObject> object;
        if (kind == ObjectKind::Table) {
            auto table = std::make_shared<Table>();
            table->owner = rows.text(7);
            table->identitySeed = rows.integer(8);
            table->identityIncrement = rows.integer(9);
            object = table;
        } else {
            auto module = std::make_shared<Module>();
            module->source = rows.text(3);
            module->quotedIdentifier = rows.integer(4) != 0;
            module->batch = tsql::parseBatch(module->source, {module->quotedIdentifier});
            object = module;
        }
        object->id = static_cast<std::int32_t>(rows.integer(0));
        object->name = rows.text(1);
        object->kind = kind;
        object->created = decodeDateTime(rows.integer(5));
        object->modified = decodeDateTime(rows.integer(6));
        if (auto table = std::dynamic_pointer_cast<Table>(object)) {
            table->physical = physicalName(table->name);
            loadColumns(connection, *table);
            loadConstraints(connection, *table);
        }
        schema->put(object);
    }
    return schema;
}

void store(SqliteConnection& connection, Schema& schema, const SchemaObject& object) {
    deleteRows(connection, object.id);
    SqliteStatement insert = connection.prepare("INSERT INTO magdb_object VALUES(?,?,?,?,?,?,?,?,?,?)");
    insert.bind(1, std::int64_t{object.id});
    insert.bind(2, std::string_view(object.name));
    insert.bind(3, static_cast<std::int64_t>(object.kind));
    insert.bind(6, encodeDateTime(object.created));
    insert.bind(7, encodeDateTime(object.modified));
    const auto* table = dynamic_cast<const Table*>(&object);
    if (table != nullptr) {
        insert.bind(8, std::string_view(table->owner));
        insert.bind(9, table->identitySeed);
        insert.bind(10, table->identityIncrement);
    } else {
        const auto& module = dynamic_cast<const Module&>(object);
        insert.bind(4, std::string_view(module.source));
        insert.bind(5, std::int64_t{module.quotedIdentifier});
    }
    insert.step();
    if (table != nullptr) {
        storeTable(connection, *table);
    }
    countUp(connection, schema);
}

void remove(SqliteConnection& connection, Schema& schema, std::int32_t objectId) {
    deleteRows(connection, objectId);
    connection.execute("DELETE FROM magdb_identity WHERE object_id = " + std::to_string(objectId));
    countUp(connection, schema);
}

std::optional<std::int64_t> lastIdentity(SqliteConnection& connection, std::int32_t objectId) {
    SqliteStatement row = connection.prepare("SELECT last FROM magdb_identity WHERE object_id = ?");
    row.bind(1, std::int64_t{objectId});
    return row.step() ? std::optional(row.integer(0)) : std::nullopt;
}

void setLastIdentity(SqliteConnection& connection, std::int32_t objectId, std::optional<std::int64_t> value) {
    SqliteStatement row = connection.prepare(value ? "INSERT OR REPLACE INTO magdb_identity VALUES(?,?)"
                                                   : "DELETE FROM magdb_identity WHERE object_id = ?");
    row.bind(1, std::int64_t{objectId});
    if (value) {
        row.bind(2, *value);
    }
    row.step();
}

void setLogin(SqliteConnection& connection, std::string_view name, std::string_view password) {
    const PasswordHash hash = hashPassword(password);
    SqliteStatement row = connection.prepare("INSERT OR REPLACE INTO magdb_login VALUES(?,?,?,?)");
    row.bind(1, std::string_view(nameKey(name)));
    row.bind(2, Value(hash.salt));
    row.bind(3, Value(hash.hash));
    row.bind(4, std::int64_t{hash.rounds});
    row.step();
}

bool checkLogin(SqliteConnection& connection, std::string_view name, std::string_view password) {
    SqliteStatement row = connection.prepare("SELECT salt, hash, rounds FROM magdb_login WHERE name = ?");
    row.bind(1, std::string_view(nameKey(name)));
    const SqlType binary = textType(TypeId::VarBinary, -1);
    PasswordHash stored;
    const bool known = row.step();
    if (known) {
        stored.salt = std::get<Bytes>(row.value(0, binary));
        stored.hash = std::get<Bytes>(row.value(1, binary));
        stored.rounds = static_cast<int>(row.integer(2));
    }
    // An unknown name costs as much time as a wrong password.
    return verifyPassword(password, stored) && known;
}

}  // namespace catalog

}  // namespace magdb
