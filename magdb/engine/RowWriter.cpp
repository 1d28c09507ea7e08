#include "engine/RowWriter.h"

#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/Core.h"
#include "engine/SqlError.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

namespace magdb {

namespace {

std::string listOf(const Table& table, const std::vector<int>& columns, const char* each,
                   const char* divider) {
    std::string text;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        text +=
            (i == 0 ? "" : divider) + quoted(table.columns[static_cast<std::size_t>(columns[i])].name) + each;
    }
    return text;
}

std::string marks(std::size_t count) {
    std::string text;
    for (std::size_t i = 0; i < count; ++i) {
        text += i == 0 ? "?" : ",?";
    }
    return text;
}

/// How an error names the column of a check or key: only when there is just one.
std::string columnPart(const std::string& column) {
    return column.empty() ? "" : ", column '" + column + "'";
}

std::string singleColumn(const Table& table, const std::string& condition) {
    std::string found;
    for (const Column& column : table.columns) {
        const std::string key = nameKey(column.name);
        const std::string text = nameKey(condition);
        for (std::size_t at = text.find(key); at != std::string::npos; at = text.find(key, at + 1)) {
            const auto letter = [&](std::size_t i) {
                return i < text.size() &&
                       (std::isalnum(static_cast<unsigned char>(text[i])) != 0 || text[i] == '_');
            };
            if ((at == 0 || !letter(at - 1)) && !letter(at + key.size())) {
                if (!found.empty() && found != column.name) {
                    return {};
                }
                found = column.name;
            }
        }
    }
    return found;
}

}  // namespace

std::string fullName(const Core& core, const Table& table) {
    if (table.name.starts_with("@")) {
        return table.name;
    }
    return (table.name.starts_with("#") ? "tempdb.dbo." : core.databaseName() + ".dbo.") + table.name;
}

RowWriter::RowWriter(Core& core, std::shared_ptr<const Table> table)
    : m_core(core), m_table(std::move(table)) {
    std::vector<std::unique_ptr<tsql::Expr>> trees;
    std::vector<const tsql::Expr*> exprs;
    std::vector<SqlType> types;
    for (std::size_t i = 0; i < m_table->columns.size(); ++i) {
        const Column& column = m_table->columns[i];
        if (column.computedText.empty()) {
            m_stored.push_back(static_cast<int>(i));
            continue;
        }
        m_computedColumns.push_back(static_cast<int>(i));
        trees.push_back(tsql::parseExpression(column.computedText));
        exprs.push_back(trees.back().get());
        types.push_back(column.type);
    }
    if (!exprs.empty()) {
        Binder binder(core);
        m_computed = std::make_unique<Plan>(binder.overRow(*m_table, exprs, types));
    }
    for (const Check& check : m_table->checks) {
        const tsql::ExprPtr condition = tsql::parseCondition(check.text);
        Binder binder(core);
        m_checks.push_back(std::make_unique<Plan>(binder.violation(*m_table, *condition)));
    }
    m_referenced = !m_table->local && !core.schema().referencing(m_table->name).empty();
    m_schemaUid = core.schema().uid;
}

RowWriter::~RowWriter() = default;

void RowWriter::begin() {
    m_newRows.clear();
    m_gone.clear();
    if (m_schemaUid != m_core.schema().uid) {
        m_schemaUid = m_core.schema().uid;
        m_referenced = !m_table->local && !m_core.schema().referencing(m_table->name).empty();
    }
}

void RowWriter::verify(const Row& row, std::string_view statement) {
    checkRow(row, statement);
    m_newRows.push_back(row);
}

SqliteStatement& RowWriter::cached(const std::string& sql) {
    const auto found = m_statements.find(sql);
    if (found != m_statements.end()) {
        return found->second;
    }
    return m_statements.emplace(sql, m_core.connection().prepare(sql)).first->second;
}

Value RowWriter::fit(const Value& value, const SqlType& from, int column) const {
    const Column& declared = m_table->columns[static_cast<std::size_t>(column)];
    if (isNull(value)) {
        return value;
    }
    checkConversion(from, declared.type, false);
    if (!isText(declared.type) && declared.type.id != TypeId::VarBinary) {
        return isSameRepresentation(from, declared.type)
                   ? value
                   : convert(value, from, declared.type, 0, m_core.settings);
    }
    if (isSameRepresentation(from, declared.type)) {
        return value;
    }
    SqlType wide = declared.type;
    wide.length = -1;
    wide.id = declared.type.id == TypeId::Char    ? TypeId::VarChar
              : declared.type.id == TypeId::NChar ? TypeId::NVarChar
                                                  : declared.type.id;
    const Value text = convert(value, from, wide, 0, m_core.settings);
    if (isTooLong(text, declared.type)) {
        // Numbers that do not fit have errors of their own.
        if (!isText(from) && from.id != TypeId::VarBinary) {
            return convert(value, from, declared.type, 0, m_core.settings);
        }
        const std::string shown = displayText(convert(text, wide, declared.type), declared.type);
        raise(2628, {fullName(m_core, *m_table), declared.name, shown});
    }
    return convert(text, wide, declared.type, 0, m_core.settings);
}

void RowWriter::compute(Row& row) {
    if (!m_computed) {
        return;
    }
    const std::vector<Row> values = m_core.fetchAll(*m_computed, &row);
    for (std::size_t i = 0; i < m_computedColumns.size(); ++i) {
        row[static_cast<std::size_t>(m_computedColumns[i])] = values.front()[i];
    }
}

void RowWriter::checkNulls(const Row& row, std::string_view statement) const {
    for (const int index : m_stored) {
        const Column& column = m_table->columns[static_cast<std::size_t>(index)];
        if (!column.nullable && isNull(row[static_cast<std::size_t>(index)])) {
            raise(515, {column.name, fullName(m_core, *m_table), statement});
        }
    }
}

void RowWriter::checkRow(const Row& row, std::string_view statement) {
    checkNulls(row, statement);
    for (std::size_t i = 0; i < m_checks.size(); ++i) {
        SqliteStatement& check = m_core.start(*m_checks[i], &row);
        const SqliteReset reset(check);
        if (m_core.step(check) && check.integer(0) != 0) {
            raise(547, {statement, "CHECK", m_table->checks[i].name, m_core.databaseName(),
                        "dbo." + m_table->name, columnPart(singleColumn(*m_table, m_table->checks[i].text))});
        }
    }
}

void RowWriter::bindRow(SqliteStatement& statement, const Row& row) {
    int position = 0;
    for (const int index : m_stored) {
        statement.bind(++position, row[static_cast<std::size_t>(index)]);
    }
}

std::string RowWriter::keyText(const Key& key, const Row& row) const {
    std::string text;
    for (const int index : key.columns) {
        const Value& value = row[static_cast<std::size_t>(index)];
        text += (text.empty() ? "" : ", ") +
                displayText(value, m_table->columns[static_cast<std::size_t>(index)].type);
    }
    return text;
}

void RowWriter::explainDuplicate(const SqliteError& error, const Row& row, std::int64_t exceptRowid) {
    if ((error.code & 0xFF) != SQLITE_CONSTRAINT) {
        throw error;
    }
    for (const Key& key : m_table->keys) {
        if (key.kind == Key::Kind::Index) {
            continue;
        }
        std::string condition;
        for (const int index : key.columns) {
            condition += " AND " + quoted(m_table->columns[static_cast<std::size_t>(index)].name) + " IS ?";
        }
        SqliteStatement& twin =
            cached("SELECT 1 FROM " + m_table->physical + " WHERE rowid <> ?" + condition);
        const SqliteReset reset(twin);
        int position = 0;
        twin.bind(++position, exceptRowid);
        for (const int index : key.columns) {
            twin.bind(++position, row[static_cast<std::size_t>(index)]);
        }
        if (!twin.step()) {
            continue;
        }
        const std::string table = m_table->name.starts_with("@") ? m_table->name : "dbo." + m_table->name;
        if (key.kind == Key::Kind::UniqueIndex) {
            raise(2601, {table, key.name, keyText(key, row)});
        }
        raise(2627, {key.kind == Key::Kind::PrimaryKey ? "PRIMARY KEY" : "UNIQUE KEY", key.name, table,
                     keyText(key, row)});
    }
    throw error;
}

void RowWriter::insert(const Row& row) {
    Row full(row);
    checkRow(full, "INSERT");
    if (!m_prepared) {
        const std::string columns = listOf(*m_table, m_stored, "", ",");
        m_insert = m_core.connection().prepare("INSERT INTO " + m_table->physical + "(" + columns +
                                               ") VALUES(" + marks(m_stored.size()) + ")");
        m_prepared = true;
    }
    const SqliteReset reset(m_insert);
    bindRow(m_insert, full);
    try {
        m_insert.step();
    } catch (const SqliteError& error) {
        m_insert.reset();
        explainDuplicate(error, full, 0);
    }
    if (!m_table->foreignKeys.empty() && !m_table->local) {
        m_newRows.push_back(std::move(full));
    }
}

Row RowWriter::read(std::int64_t rowid) {
    SqliteStatement& rows = cached("SELECT " + listOf(*m_table, m_stored, "", ",") + " FROM " +
                                   m_table->physical + " WHERE rowid = ?");
    const SqliteReset reset(rows);
    rows.bind(1, rowid);
    if (!rows.step()) {
        return {};
    }
    Row row(m_table->columns.size());
    for (std::size_t i = 0; i < m_stored.size(); ++i) {
        const auto index = static_cast<std::size_t>(m_stored[i]);
        row[index] = rows.value(static_cast<int>(i), m_table->columns[index].type);
    }
    compute(row);
    return row;
}

bool RowWriter::touchesKey(const std::vector<int>& columns) const {
    return std::any_of(m_table->keys.begin(), m_table->keys.end(), [&](const Key& key) {
        return key.kind != Key::Kind::Index &&
               std::any_of(key.columns.begin(), key.columns.end(), [&](int index) {
                   return std::find(columns.begin(), columns.end(), index) != columns.end();
               });
    });
}

void RowWriter::update(std::int64_t rowid, const Row& oldRow, const Row& newRow,
                       const std::vector<int>& columns) {
    checkRow(newRow, "UPDATE");
    if (columns.empty()) {
        return;
    }
    SqliteStatement& statement = cached("UPDATE " + m_table->physical + " SET " +
                                        listOf(*m_table, columns, "=?", ",") + " WHERE rowid = ?");
    const SqliteReset reset(statement);
    int position = 0;
    for (const int index : columns) {
        statement.bind(++position, newRow[static_cast<std::size_t>(index)]);
    }
    statement.bind(++position, rowid);
    try {
        statement.step();
    } catch (const SqliteError& error) {
        statement.reset();
        explainDuplicate(error, newRow, rowid);
    }
    if (!m_table->foreignKeys.empty() && !m_table->local) {
        m_newRows.push_back(newRow);
    }
    if (m_referenced && touchesKey(columns)) {
        m_gone.push_back({oldRow, newRow});
    }
}

void RowWriter::updateAll(const std::vector<std::int64_t>& rowids, const std::vector<Row>& oldRows,
                          const std::vector<Row>& newRows, const std::vector<int>& columns) {
    SqliteStatement& remove = cached("DELETE FROM " + m_table->physical + " WHERE rowid = ?");
    for (const std::int64_t rowid : rowids) {
        const SqliteReset reset(remove);
        remove.bind(1, rowid);
        remove.step();
    }
    SqliteStatement& put =
        cached("INSERT INTO " + m_table->physical + "(" + listOf(*m_table, m_stored, "", ",") +
               ",rowid) VALUES(" + marks(m_stored.size() + 1) + ")");
    for (std::size_t i = 0; i < rowids.size(); ++i) {
        checkRow(newRows[i], "UPDATE");
        const SqliteReset reset(put);
        bindRow(put, newRows[i]);
        put.bind(static_cast<int>(m_stored.size()) + 1, rowids[i]);
        try {
            put.step();
        } catch (const SqliteError& error) {
            put.reset();
            explainDuplicate(error, newRows[i], rowids[i]);
        }
        if (!m_table->foreignKeys.empty() && !m_table->local) {
            m_newRows.push_back(newRows[i]);
        }
        if (m_referenced && touchesKey(columns)) {
            m_gone.push_back({oldRows[i], newRows[i]});
        }
    }
}

void RowWriter::erase(std::int64_t rowid, const Row& oldRow) {
    SqliteStatement& statement = cached("DELETE FROM " + m_table->physical + " WHERE rowid = ?");
    const SqliteReset reset(statement);
    statement.bind(1, rowid);
    statement.step();
    if (m_referenced) {
        m_gone.push_back({oldRow, {}});
    }
}

// ------------------------------------------------------------------------------------------ foreign keys

void RowWriter::checkParents(const Row& row, std::string_view statement) {
    for (const ForeignKey& key : m_table->foreignKeys) {
        const std::shared_ptr<const Table> parent = m_core.schema().findTable(key.referenced);
        if (!parent) {
            continue;
        }
        std::string condition;
        bool anyNull = false;
        for (std::size_t i = 0; i < key.columns.size(); ++i) {
            condition += (i == 0 ? "" : " AND ") + quoted(key.referencedColumns[i]) + " = ?";
            anyNull = anyNull || isNull(row[static_cast<std::size_t>(key.columns[i])]);
        }
        if (anyNull) {
            continue;
        }
        SqliteStatement& search = cached("SELECT 1 FROM " + parent->physical + " WHERE " + condition);
        const SqliteReset reset(search);
        for (std::size_t i = 0; i < key.columns.size(); ++i) {
            const auto own = static_cast<std::size_t>(key.columns[i]);
            const auto other = static_cast<std::size_t>(parent->columnIndex(key.referencedColumns[i]));
            search.bind(static_cast<int>(i) + 1,
                        convert(row[own], m_table->columns[own].type, parent->columns[other].type));
        }
        if (!search.step()) {
            raise(547, {statement,
                        sameName(parent->name, m_table->name) ? "FOREIGN KEY SAME TABLE" : "FOREIGN KEY",
                        key.name, m_core.databaseName(), "dbo." + parent->name,
                        columnPart(key.referencedColumns.size() == 1 ? key.referencedColumns.front() : "")});
        }
    }
}

std::vector<int> RowWriter::parentColumns(const ForeignKey& key) const {
    std::vector<int> columns;
    for (const std::string& name : key.referencedColumns) {
        columns.push_back(m_table->columnIndex(name));
    }
    return columns;
}

bool RowWriter::isHeld(const std::vector<int>& columns, const Row& row) {
    SqliteStatement& search =
        cached("SELECT 1 FROM " + m_table->physical + " WHERE " + listOf(*m_table, columns, " = ?", " AND "));
    const SqliteReset reset(search);
    for (std::size_t i = 0; i < columns.size(); ++i) {
        search.bind(static_cast<int>(i) + 1, row[static_cast<std::size_t>(columns[i])]);
    }
    return search.step();
}

void RowWriter::findOrphans(const Change& change, std::vector<Orphans>& found) {
    for (const std::shared_ptr<const Table>& child : m_core.schema().referencing(m_table->name)) {
        for (const ForeignKey& key : child->foreignKeys) {
            if (!sameName(key.referenced, m_table->name)) {
                continue;
            }
            const std::vector<int> columns = parentColumns(key);
            const bool removed = change.newRow.empty();
            const bool unchanged = std::all_of(columns.begin(), columns.end(), [&](int index) {
                const auto at = static_cast<std::size_t>(index);
                return !removed && change.oldRow[at] == change.newRow[at];
            });
            const bool anyNull = std::any_of(columns.begin(), columns.end(), [&](int index) {
                return isNull(change.oldRow[static_cast<std::size_t>(index)]);
            });
            if (unchanged || anyNull) {
                continue;
            }
            SqliteStatement& search = cached("SELECT rowid FROM " + child->physical + " WHERE " +
                                             listOf(*child, key.columns, " = ?", " AND "));
            const SqliteReset reset(search);
            for (std::size_t i = 0; i < columns.size(); ++i) {
                const auto own = static_cast<std::size_t>(columns[i]);
                search.bind(static_cast<int>(i) + 1,
                            convert(change.oldRow[own], m_table->columns[own].type,
                                    child->columns[static_cast<std::size_t>(key.columns[i])].type));
            }
            Orphans orphans{child, &key, {}, &change};
            while (search.step()) {
                orphans.rowids.push_back(search.integer(0));
            }
            if (!orphans.rowids.empty()) {
                found.push_back(std::move(orphans));
            }
        }
    }
}

void RowWriter::settle(const Orphans& orphans, std::string_view statement) {
    const ForeignKey& key = *orphans.key;
    const Table& child = *orphans.child;
    const std::vector<int> columns = parentColumns(key);
    const bool removed = orphans.change->newRow.empty();
    const tsql::ReferentialAction action = removed ? key.onDelete : key.onUpdate;
    if (action == tsql::ReferentialAction::NoAction) {
        // A key that another row has taken over is not missed.
        if (isHeld(columns, orphans.change->oldRow)) {
            return;
        }
        const std::string column =
            key.columns.size() == 1 ? child.columns[static_cast<std::size_t>(key.columns.front())].name : "";
        raise(547, {statement, sameName(child.name, m_table->name) ? "SAME TABLE REFERENCE" : "REFERENCE",
                    key.name, m_core.databaseName(), "dbo." + child.name, columnPart(column)});
    }
    if (action == tsql::ReferentialAction::SetDefault) {
        refuse("ON DELETE SET DEFAULT");
    }
    RowWriter& writer = m_core.childWriter(child.name);
    for (const std::int64_t rowid : orphans.rowids) {
        const Row before = writer.read(rowid);
        if (before.empty()) {
            continue;
        }
        if (action == tsql::ReferentialAction::Cascade && removed) {
            writer.erase(rowid, before);
            continue;
        }
        Row after = before;
        for (std::size_t i = 0; i < key.columns.size(); ++i) {
            after[static_cast<std::size_t>(key.columns[i])] =
                action == tsql::ReferentialAction::SetNull
                    ? Value()
                    : orphans.change->newRow[static_cast<std::size_t>(columns[i])];
        }
        writer.update(rowid, before, after, key.columns);
    }
    writer.finish(statement);
}

void RowWriter::finish(std::string_view statement) {
    const std::vector<Row> rows = std::exchange(m_newRows, {});
    const std::vector<Change> gone = std::exchange(m_gone, {});
    for (const Row& row : rows) {
        checkParents(row, statement);
    }
    // All orphans first: a cascade must not meet rows that an earlier one has moved to the same key.
    std::vector<Orphans> orphans;
    for (const Change& change : gone) {
        findOrphans(change, orphans);
    }
    for (const Orphans& group : orphans) {
        settle(group, statement);
    }
}

}  // namespace magdb
