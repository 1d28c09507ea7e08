#pragma once

#include "engine/Plan.h"
#include "engine/Schema.h"
#include "engine/Sqlite.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace magdb {

class Core;

using Row = std::vector<Value>;

/// Puts changes into one table row by row, under the rules of T-SQL: types, NULLs, checks, keys and foreign
/// keys, with the errors that name them. Runs inside a transaction; the caller undoes everything after an
/// error.
class RowWriter {
public:
    RowWriter(Core& core, std::shared_ptr<const Table> table);
    ~RowWriter();
    RowWriter(const RowWriter&) = delete;
    RowWriter& operator=(const RowWriter&) = delete;

    [[nodiscard]] const Table& table() const { return *m_table; }

    /// A value for a column: converted, and refused when it is too long. Errors 2628, 8152.
    [[nodiscard]] Value fit(const Value& value, const SqlType& from, int column) const;

    /// Forgets what a failed statement left. Call before each statement.
    void begin();
    /// Checks a row that is there already, as ALTER TABLE does for a new constraint.
    void verify(const Row& row, std::string_view statement);

    /// Inserts a full row. Values of identity and computed columns must be in place. Errors 515, 547, 2601,
    /// 2627.
    void insert(const Row& row);
    /// The row behind a rowid, computed columns included; empty when it is gone.
    [[nodiscard]] Row read(std::int64_t rowid);
    /// Writes the given columns of the new row.
    void update(std::int64_t rowid, const Row& oldRow, const Row& newRow, const std::vector<int>& columns);
    void erase(std::int64_t rowid, const Row& oldRow);
    /// Takes rows away and puts them back changed, for updates of keys that pass through each other.
    void updateAll(const std::vector<std::int64_t>& rowids, const std::vector<Row>& oldRows,
                   const std::vector<Row>& newRows, const std::vector<int>& columns);
    /// Checks the foreign keys after a whole statement, and follows cascades. Error 547.
    void finish(std::string_view statement);

    /// True when other tables refer to this one, so that a DELETE must know the rows that it takes.
    [[nodiscard]] bool isReferenced() const { return m_referenced; }
    [[nodiscard]] bool touchesKey(const std::vector<int>& columns) const;
    /// Puts values into the computed columns of a row.
    void compute(Row& row);

private:
    struct Change {
        Row oldRow;
        Row newRow;  ///< empty for a deleted row
    };
    void checkRow(const Row& row, std::string_view statement);
    void checkNulls(const Row& row, std::string_view statement) const;
    [[noreturn]] void explainDuplicate(const SqliteError& error, const Row& row, std::int64_t exceptRowid);
    void checkParents(const Row& row, std::string_view statement);
    /// Rows of another table that a change leaves without their parent.
    struct Orphans {
        std::shared_ptr<const Table> child;
        const ForeignKey* key = nullptr;
        std::vector<std::int64_t> rowids;
        const Change* change = nullptr;
    };
    void findOrphans(const Change& change, std::vector<Orphans>& found);
    [[nodiscard]] std::vector<int> parentColumns(const ForeignKey& key) const;
    [[nodiscard]] bool isHeld(const std::vector<int>& columns, const Row& row);
    void settle(const Orphans& orphans, std::string_view statement);
    SqliteStatement& cached(const std::string& sql);
    void bindRow(SqliteStatement& statement, const Row& row);
    [[nodiscard]] std::string keyText(const Key& key, const Row& row) const;

    Core& m_core;
    std::shared_ptr<const Table> m_table;
    std::vector<std::unique_ptr<Plan>> m_checks;
    std::unique_ptr<Plan> m_computed;
    std::vector<int> m_computedColumns;
    std::vector<int> m_stored;  ///< columns that SQLite holds
    SqliteStatement m_insert;
    bool m_prepared = false;
    std::unordered_map<std::string, SqliteStatement> m_statements;
    bool m_referenced = false;
    std::vector<Row> m_newRows;  ///< whose foreign keys are to be checked
    std::vector<Change> m_gone;  ///< rows whose old keys may be missed
    std::uint64_t m_schemaUid = 0;
};

/// `database.dbo.table`, `dbo.table`; tempdb for local tables.
[[nodiscard]] std::string fullName(const Core& core, const Table& table);

}  // namespace magdb
