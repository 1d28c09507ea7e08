#include "engine/Compiled.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <functional>

// Tables from their definitions, and what SQLite is told of them. SQLite keeps rows and unique indexes;
// types, NULLs, checks, defaults and foreign keys are kept by the engine.

namespace magdb {

namespace {

/// The end of a name that the server makes: 8 hexadecimal digits that stay the same for the same text.
std::string nameTail(const std::string& text) {
    const std::size_t hash = std::hash<std::string>{}(text);
    Bytes bytes;
    for (int shift = 56; shift >= 32; shift -= 8) {
        bytes.push_back(static_cast<std::uint8_t>(hash >> shift));
    }
    return toHex(bytes);
}

std::string madeName(const char* prefix, const Table& table, const std::string& detail) {
    return std::string(prefix) + "__" + table.name.substr(0, 9) + "__" +
           (detail.empty() ? std::string() : detail.substr(0, 5) + "__") +
           nameTail(table.name + "/" + detail);
}

std::string textOf(const std::string& source, const tsql::TextRange& range) {
    return source.substr(range.begin, range.end - range.begin);
}

std::vector<int> columnPositions(const Table& table, const std::vector<tsql::IndexColumn>& columns) {
    std::vector<int> positions;
    for (const tsql::IndexColumn& column : columns) {
        const int index = table.columnIndex(column.name);
        if (index < 0) {
            raise(1911, {column.name});
        }
        positions.push_back(index);
    }
    return positions;
}

void addKey(Table& table, const tsql::TableConstraint& constraint, bool makesNotNull) {
    Key key;
    const bool primary = constraint.kind == tsql::TableConstraint::Kind::PrimaryKey;
    key.kind = primary ? Key::Kind::PrimaryKey : Key::Kind::Unique;
    key.clustered = constraint.clustered.value_or(primary);
    key.columns = columnPositions(table, constraint.columns);
    std::string detail;
    for (const tsql::IndexColumn& column : constraint.columns) {
        key.descending.push_back(column.descending);
        detail += column.name;
    }
    if (primary) {
        for (const Key& other : table.keys) {
            if (other.kind == Key::Kind::PrimaryKey) {
                raise(1779, {table.name});
            }
        }
        for (const int index : key.columns) {
            Column& column = table.columns[static_cast<std::size_t>(index)];
            if (column.nullable && !makesNotNull) {
                raise(8111, {table.name});
            }
            column.nullable = false;
        }
    }
    key.name = !constraint.name.empty() ? constraint.name
                                        : madeName(primary ? "PK" : "UQ", table, primary ? "" : detail);
    table.keys.push_back(std::move(key));
}

void addForeignKey(Table& table, const tsql::TableConstraint& constraint) {
    ForeignKey key;
    key.columns = columnPositions(table, constraint.columns);
    key.referenced = constraint.referenced.name;
    key.referencedColumns = constraint.referencedColumns;
    key.onDelete = constraint.onDelete;
    key.onUpdate = constraint.onUpdate;
    key.name = !constraint.name.empty()
                   ? constraint.name
                   : madeName("FK", table, constraint.columns.empty() ? "" : constraint.columns.front().name);
    table.foreignKeys.push_back(std::move(key));
}

}  // namespace

void addConstraint(Table& table, const tsql::TableConstraint& constraint, const std::string& source,
                   bool makesKeysNotNull) {
    switch (constraint.kind) {
        case tsql::TableConstraint::Kind::PrimaryKey:
        case tsql::TableConstraint::Kind::Unique:
            addKey(table, constraint, makesKeysNotNull);
            break;
        case tsql::TableConstraint::Kind::Check: {
            Check check;
            check.text = textOf(source, constraint.exprText);
            check.name =
                !constraint.name.empty() ? constraint.name : madeName("CK", table, check.text.substr(1));
            table.checks.push_back(std::move(check));
            break;
        }
        case tsql::TableConstraint::Kind::ForeignKey:
            addForeignKey(table, constraint);
            break;
        case tsql::TableConstraint::Kind::Default: {
            const int index = table.columnIndex(constraint.columns.front().name);
            if (index < 0) {
                raise(1911, {constraint.columns.front().name});
            }
            Column& column = table.columns[static_cast<std::size_t>(index)];
            column.defaultText = textOf(source, constraint.exprText);
            column.defaultName =
                !constraint.name.empty() ? constraint.name : madeName("DF", table, column.name);
            break;
        }
    }
}

void addColumn(Table& table, const tsql::ColumnDefinition& definition, const std::string& source) {
    if (table.columnIndex(definition.name) >= 0) {
        raise(2705, {definition.name, table.name});
    }
    Column column;
    column.name = definition.name;
    column.collation = definition.collation;
    if (!column.collation.empty()) {
        static_cast<void>(textOrder(column.collation));
    }
    if (definition.computed) {
        column.computedText = textOf(source, definition.computedText);
    } else {
        column.type = resolveType(definition.type, static_cast<int>(table.columns.size()) + 1);
    }
    column.identity = definition.identity;
    column.nullable = definition.nullable.value_or(!definition.identity);
    if (definition.identity) {
        if (table.identityColumn() >= 0) {
            raise(2744, {table.name});
        }
        const bool whole =
            isInteger(column.type) || (column.type.id == TypeId::Decimal && column.type.scale == 0);
        if (!whole || column.type.id == TypeId::Bit || definition.nullable.value_or(false)) {
            raise(2749, {column.name});
        }
        table.identitySeed = definition.identitySeed;
        table.identityIncrement = definition.identityIncrement;
    }
    if (definition.defaultValue) {
        column.defaultText = textOf(source, definition.defaultText);
        column.defaultName = !definition.defaultConstraint.empty() ? definition.defaultConstraint
                                                                   : madeName("DF", table, column.name);
    }
    table.columns.push_back(std::move(column));
    for (const tsql::TableConstraint& constraint : definition.constraints) {
        // An inline key makes a column NOT NULL unless NULL is written.
        addConstraint(table, constraint, source, !definition.nullable.value_or(false));
    }
}

std::shared_ptr<Table> buildTable(const std::string& name, const tsql::TableDefinition& definition,
                                  const std::string& source) {
    auto table = std::make_shared<Table>();
    table->name = name;
    for (const tsql::ColumnDefinition& column : definition.columns) {
        addColumn(*table, column, source);
    }
    for (const tsql::TableConstraint& constraint : definition.constraints) {
        // In CREATE TABLE a key of the table makes its columns NOT NULL where nothing is written.
        bool written = false;
        for (const tsql::IndexColumn& key : constraint.columns) {
            for (const tsql::ColumnDefinition& column : definition.columns) {
                written = written || (sameName(column.name, key.name) && column.nullable.value_or(false));
            }
        }
        addConstraint(*table, constraint, source, !written);
    }
    return table;
}

std::string createTableSql(const Table& table) {
    std::string sql = "CREATE TABLE " + table.physical + "(";
    bool first = true;
    for (const Column& column : table.columns) {
        if (!column.computedText.empty()) {
            continue;
        }
        sql += (first ? "" : ",") + quoted(column.name) + " " + storageClass(column.type);
        first = false;
    }
    return sql + ")";
}

std::string physicalIndex(const Table& table, const Key& key, bool withStore) {
    const std::string store = table.physical.substr(0, table.physical.find('.') + 1);
    // Names of indexes are unique within a store of SQLite, within a table of T-SQL.
    const std::string own = table.physical.substr(store.size());
    const std::string name = quoted("magdb_ix_" + own.substr(1, own.size() - 2) + "_" + nameKey(key.name));
    return withStore ? store + name : name;
}

std::vector<std::string> createIndexSql(const Table& table, const Key& key, const std::string& filterSql) {
    std::string columns;
    std::string nullable;
    std::string nullColumns;
    for (std::size_t i = 0; i < key.columns.size(); ++i) {
        const Column& column = table.columns[static_cast<std::size_t>(key.columns[i])];
        const std::string name = quoted(column.name);
        const std::string collate = column.collation.empty() || !isText(column.type)
                                        ? std::string()
                                        : " COLLATE " + std::string(collationOf(textOrder(column.collation)));
        const bool descending = i < key.descending.size() && key.descending[i];
        columns += (i == 0 ? "" : ",") + name + collate + (descending ? " DESC" : "");
        if (column.nullable) {
            nullable += (nullable.empty() ? "" : " OR ") + name + " IS NULL";
        }
        // A blob of a length that no value has stands for NULL.
        nullColumns += (i == 0 ? "ifnull(" : ",ifnull(") + name + ",x'6E756C6C00')" + collate;
    }
    const bool unique = key.kind != Key::Kind::Index;
    const std::string bareTable = table.physical.substr(table.physical.find('.') + 1);
    std::vector<std::string> statements = {std::string("CREATE ") + (unique ? "UNIQUE " : "") + "INDEX " +
                                           physicalIndex(table, key, true) + " ON " + bareTable + "(" +
                                           columns + ")" + (filterSql.empty() ? "" : " WHERE " + filterSql)};
    if (unique && !nullable.empty()) {
        // For SQLite no two NULLs are the same, for T-SQL all are.
        Key shadow = key;
        shadow.name += " null";
        statements.push_back("CREATE UNIQUE INDEX " + physicalIndex(table, shadow, true) + " ON " +
                             bareTable + "(" + nullColumns + ") WHERE (" + nullable + ")" +
                             (filterSql.empty() ? "" : " AND " + filterSql));
    }
    return statements;
}

}  // namespace magdb
