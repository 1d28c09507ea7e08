#include "engine/Catalog.h"
#include "engine/Core.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <algorithm>

// ALTER TABLE and indexes.

namespace magdb {

namespace {

std::vector<std::int64_t> allRows(SqliteConnection& connection, const Table& table) {
    SqliteStatement rows = connection.prepare("SELECT rowid FROM " + table.physical + " ORDER BY rowid");
    std::vector<std::int64_t> ids;
    while (rows.step()) {
        ids.push_back(rows.integer(0));
    }
    return ids;
}

/// Positions of columns behind a removed one move down.
void shiftColumns(std::vector<int>& columns, int removed) {
    for (int& column : columns) {
        column -= column > removed ? 1 : 0;
    }
}

}  // namespace

void Core::saveTable(const std::shared_ptr<Table>& table) {
    if (!table->local) {
        storeObject(table);
        return;
    }
    for (Temporary& entry : m_temporaries) {
        if (entry.table->physical == table->physical) {
            entry.table = table;
            // Its shape is no longer that of its CREATE TABLE, so it cannot serve again.
            entry.signature.clear();
        }
    }
    ++m_temporaryEpoch;
}

void Core::runAlterTable(const tsql::AlterTableStatement& statement) {
    const bool local = statement.name.name.starts_with("#") && !statement.name.name.starts_with("##");
    UnitOfWork unit(*this, !local, false);
    const std::shared_ptr<const Table> old = tableToChange(statement.name);
    auto table = std::make_shared<Table>(*old);
    switch (statement.action) {
        case tsql::AlterTableStatement::Action::Add:
            alterAdd(*table, statement);
            break;
        case tsql::AlterTableStatement::Action::AlterColumn:
            alterColumn(*table, statement);
            break;
        default:
            alterDrop(*table, statement);
            break;
    }
    saveTable(table);
    // Rows that were there must obey what was added.
    if (statement.action == tsql::AlterTableStatement::Action::Add &&
        (table->checks.size() > old->checks.size() || table->foreignKeys.size() > old->foreignKeys.size())) {
        RowWriter writer(*this, table);
        writer.begin();
        for (const std::int64_t row : allRows(m_connection, *table)) {
            writer.verify(writer.read(row), "ALTER TABLE");
        }
        writer.finish("ALTER TABLE");
    }
    unit.commit();
}

void Core::alterAdd(Table& table, const tsql::AlterTableStatement& statement) {
    const std::string& source = m_frame->module->batch->source;
    const std::size_t firstColumn = table.columns.size();
    const std::size_t firstKey = table.keys.size();
    for (const tsql::ColumnDefinition& column : statement.added.columns) {
        addColumn(table, column, source);
    }
    for (const tsql::TableConstraint& constraint : statement.added.constraints) {
        addConstraint(table, constraint, source, false);
    }
    finishTable(table);
    const std::vector<std::int64_t> rows =
        firstColumn < table.columns.size() ? allRows(m_connection, table) : std::vector<std::int64_t>();
    for (std::size_t i = firstColumn; i < table.columns.size(); ++i) {
        const Column& column = table.columns[i];
        if (!column.computedText.empty()) {
            continue;
        }
        if (!column.nullable && column.defaultText.empty() && !column.identity && !rows.empty()) {
            raise(4901, {column.name, table.name});
        }
        m_connection.execute("ALTER TABLE " + table.physical + " ADD COLUMN " + quoted(column.name) + " " +
                             storageClass(column.type));
        if (rows.empty() || (column.nullable && !column.identity)) {
            continue;
        }
        SqliteStatement update = m_connection.prepare("UPDATE " + table.physical + " SET " +
                                                      quoted(column.name) + " = ? WHERE rowid = ?");
        std::int64_t next = table.identitySeed;
        std::optional<Plan> value;
        tsql::ExprPtr tree;
        if (!column.identity) {
            tree = tsql::parseExpression(column.defaultText);
            Binder binder(*this);
            value = binder.scalarAs(*tree, column.type);
        }
        for (const std::int64_t row : rows) {
            update.bind(1, column.identity ? convert(Value(next), plainType(TypeId::BigInt), column.type)
                                           : fetchAll(*value).front().front());
            update.bind(2, row);
            update.step();
            update.reset();
            next += table.identityIncrement;
        }
        if (column.identity) {
            setLastIdentity(table, next - table.identityIncrement);
        }
    }
    for (std::size_t k = firstKey; k < table.keys.size(); ++k) {
        for (const int column : table.keys[k].columns) {
            const Column& declared = table.columns[static_cast<std::size_t>(column)];
            if (table.keys[k].kind == Key::Kind::PrimaryKey && declared.nullable) {
                raise(8111, {table.name});
            }
        }
    }
    makeIndexes(table, firstKey);
}

void Core::alterColumn(Table& table, const tsql::AlterTableStatement& statement) {
    const tsql::ColumnDefinition& definition = statement.added.columns.front();
    const int index = table.columnIndex(definition.name);
    if (index < 0) {
        raise(4924, {"ALTER TABLE ALTER COLUMN", definition.name, table.name});
    }
    const Column before = table.columns[static_cast<std::size_t>(index)];
    if (!before.computedText.empty() || before.identity) {
        refuse("ALTER COLUMN of computed and identity columns");
    }
    const SqlType type = resolveType(definition.type, 1);
    const auto uses = [&](const Key& key) {
        return std::find(key.columns.begin(), key.columns.end(), index) != key.columns.end();
    };
    const bool wider = before.type.id == type.id && isText(type) &&
                       (type.length < 0 || (before.type.length >= 0 && type.length >= before.type.length));
    for (const Key& key : table.keys) {
        if (uses(key) && !wider) {
            raise(5074, {key.kind == Key::Kind::Index ? "index" : "object", key.name, before.name});
        }
    }
    Table old(table);
    Column& column = table.columns[static_cast<std::size_t>(index)];
    column.type = type;
    column.nullable = definition.nullable.value_or(true);
    RowWriter reader(*this, std::make_shared<Table>(old));
    RowWriter writer(*this, std::make_shared<Table>(table));
    std::vector<std::pair<std::int64_t, Value>> values;
    for (const std::int64_t row : allRows(m_connection, old)) {
        const Row content = reader.read(row);
        Value value = writer.fit(content[static_cast<std::size_t>(index)], before.type, index);
        if (isNull(value) && !column.nullable) {
            raise(515, {column.name, fullName(*this, table), "UPDATE"});
        }
        values.emplace_back(row, std::move(value));
    }
    if (!wider) {
        const std::string interim = quoted("magdb_new");
        m_connection.execute("ALTER TABLE " + table.physical + " ADD COLUMN " + interim + " " +
                             storageClass(type));
        SqliteStatement update =
            m_connection.prepare("UPDATE " + table.physical + " SET " + interim + " = ? WHERE rowid = ?");
        for (const auto& [row, value] : values) {
            update.bind(1, value);
            update.bind(2, row);
            update.step();
            update.reset();
        }
        m_connection.execute("ALTER TABLE " + table.physical + " DROP COLUMN " + quoted(column.name));
        m_connection.execute("ALTER TABLE " + table.physical + " RENAME COLUMN " + interim + " TO " +
                             quoted(column.name));
    }
}

void Core::alterDrop(Table& table, const tsql::AlterTableStatement& statement) {
    for (const std::string& name : statement.dropped) {
        if (statement.action == tsql::AlterTableStatement::Action::DropConstraint) {
            if (!dropConstraint(table, name) && !statement.ifExists) {
                raise(3728, {name});
            }
            continue;
        }
        const int index = table.columnIndex(name);
        if (index < 0) {
            if (statement.ifExists) {
                continue;
            }
            raise(4924, {"ALTER TABLE DROP COLUMN", name, table.name});
        }
        const Column column = table.columns[static_cast<std::size_t>(index)];
        if (!column.defaultName.empty()) {
            raise(5074, {"object", column.defaultName, name});
        }
        const auto depends = [&](const std::vector<int>& columns, const std::string& kind,
                                 const std::string& by) {
            if (std::find(columns.begin(), columns.end(), index) != columns.end()) {
                raise(5074, {kind, by, name});
            }
        };
        for (const Key& key : table.keys) {
            depends(key.columns, key.kind == Key::Kind::Index ? "index" : "object", key.name);
        }
        for (const ForeignKey& key : table.foreignKeys) {
            depends(key.columns, "object", key.name);
        }
        for (const Check& check : table.checks) {
            if (nameKey(check.text).find(nameKey(name)) != std::string::npos) {
                raise(5074, {"object", check.name, name});
            }
        }
        if (column.computedText.empty()) {
            m_connection.execute("ALTER TABLE " + table.physical + " DROP COLUMN " + quoted(column.name));
        }
        table.columns.erase(table.columns.begin() + index);
        for (Key& key : table.keys) {
            shiftColumns(key.columns, index);
        }
        for (ForeignKey& key : table.foreignKeys) {
            shiftColumns(key.columns, index);
        }
    }
}

bool Core::dropConstraint(Table& table, const std::string& name) {
    for (Column& column : table.columns) {
        if (!column.defaultName.empty() && sameName(column.defaultName, name)) {
            column.defaultName.clear();
            column.defaultText.clear();
            return true;
        }
    }
    const auto named = [&](const auto& constraint) { return sameName(constraint.name, name); };
    if (std::erase_if(table.checks, named) + std::erase_if(table.foreignKeys, named) > 0) {
        return true;
    }
    for (auto key = table.keys.begin(); key != table.keys.end(); ++key) {
        const bool constraint = key->kind == Key::Kind::PrimaryKey || key->kind == Key::Kind::Unique;
        if (constraint && sameName(key->name, name)) {
            dropIndex(table, *key);
            table.keys.erase(key);
            return true;
        }
    }
    return false;
}

void Core::dropIndex(const Table& table, const Key& key) {
    Key shadow = key;
    shadow.name += " null";
    m_connection.execute("DROP INDEX IF EXISTS " + physicalIndex(table, key, true));
    m_connection.execute("DROP INDEX IF EXISTS " + physicalIndex(table, shadow, true));
}

void Core::runCreateIndex(const tsql::CreateIndexStatement& statement) {
    const bool local = statement.table.name.starts_with("#") && !statement.table.name.starts_with("##");
    UnitOfWork unit(*this, !local, false);
    const std::shared_ptr<const Table> old = tableToChange(statement.table);
    auto table = std::make_shared<Table>(*old);
    Key key;
    key.kind = statement.unique ? Key::Kind::UniqueIndex : Key::Kind::Index;
    key.name = statement.name;
    key.clustered = statement.clustered;
    for (const tsql::IndexColumn& column : statement.columns) {
        const int index = table->columnIndex(column.name);
        if (index < 0) {
            raise(1911, {column.name});
        }
        if (!table->columns[static_cast<std::size_t>(index)].computedText.empty()) {
            refuse("indexes on computed columns");
        }
        key.columns.push_back(index);
        key.descending.push_back(column.descending);
    }
    if (statement.where) {
        const std::string& source = m_frame->module->batch->source;
        key.filter =
            source.substr(statement.where->pos.offset, statement.where->end - statement.where->pos.offset);
    }
    for (const Key& other : table->keys) {
        if (sameName(other.name, key.name)) {
            raise(1913, {key.name, table->name});
        }
    }
    table->keys.push_back(std::move(key));
    makeIndexes(*table, table->keys.size() - 1);
    saveTable(table);
    unit.commit();
}

void Core::runDropIndex(const tsql::DropIndexStatement& statement) {
    const bool local = statement.table.name.starts_with("#") && !statement.table.name.starts_with("##");
    UnitOfWork unit(*this, !local, false);
    const std::shared_ptr<const Table> old = tableToChange(statement.table);
    auto table = std::make_shared<Table>(*old);
    for (auto key = table->keys.begin(); key != table->keys.end(); ++key) {
        const bool index = key->kind == Key::Kind::Index || key->kind == Key::Kind::UniqueIndex;
        if (index && sameName(key->name, statement.name)) {
            dropIndex(*table, *key);
            table->keys.erase(key);
            saveTable(table);
            unit.commit();
            return;
        }
    }
    if (!statement.ifExists) {
        raise(3701, {"index", table->name + "." + statement.name});
    }
}

}  // namespace magdb
