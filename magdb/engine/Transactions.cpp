#include "engine/Catalog.h"
#include "engine/Core.h"
#include "engine/Text.h"

// Transactions: what BEGIN, COMMIT and ROLLBACK of T-SQL do to SQLite's one transaction, and the units around
// statements and calls. A call is whole or nothing; inside one, a transaction of T-SQL is a savepoint.

namespace magdb {

namespace {

constexpr int kDefaultLockTimeoutMs = 60000;
constexpr const char* kExplicit = "explicit_part";

}  // namespace

void Core::refreshSchema() {
    if (m_ownSchema) {
        return;
    }
    if (!m_versionQuery) {
        m_versionQuery =
            std::make_unique<SqliteStatement>(m_connection.prepare("SELECT version FROM magdb_meta"));
    }
    const SqliteReset reset(*m_versionQuery);
    m_versionQuery->step();
    const std::int64_t version = m_versionQuery->integer(0);
    if (!m_schema || m_schema->version != version) {
        m_schema = m_engine.schemaAt(version, m_connection);
    }
    m_committedSchema = m_schema;
}

void Core::setSchema(std::shared_ptr<const Schema> schema) {
    m_schema = std::move(schema);
    // What this transaction changed before the point it went back to is still to be published.
    m_ownSchema = m_schema == m_committedSchema ? nullptr : std::const_pointer_cast<Schema>(m_schema);
}

Schema& Core::changingSchema() {
    // Always a new object: plans tell schemas apart by identity.
    m_ownSchema = std::make_shared<Schema>(*m_schema);
    m_schema = m_ownSchema;
    return *m_ownSchema;
}

void Core::requireCommittable() const {
    if (m_doomed) {
        raise(3930);
    }
}

void Core::beginUnit(bool writes) {
    if (writes && !m_turn) {
        const int timeout = m_options.lockTimeout >= 0 ? m_options.lockTimeout : kDefaultLockTimeoutMs;
        if (!m_engine.writers.enter(m_cancelled, timeout)) {
            checkCancelled();
            raise(1222);
        }
        m_turn = std::make_unique<WriteTurn>(m_engine.writers);
    }
    if (m_connection.inTransaction()) {
        return;
    }
    try {
        m_connection.execute(writes ? "BEGIN IMMEDIATE" : "BEGIN");
        refreshSchema();
    } catch (...) {
        m_turn.reset();
        throw;
    }
}

void Core::commitUnit() {
    m_connection.execute("COMMIT");
    ++m_transactionEpoch;
    if (m_ownSchema) {
        m_engine.publish(m_ownSchema);
        m_ownSchema.reset();
        m_committedSchema = m_schema;
    }
    m_turn.reset();
    m_schemaAtSavepoint.clear();
    m_explicitInUnit = false;
    m_doomed = false;
}

void Core::rollbackUnit() noexcept {
    try {
        if (m_connection.inTransaction()) {
            m_connection.execute("ROLLBACK");
        }
        ++m_transactionEpoch;
        afterRollback();
    } catch (...) {
        // Nothing is left to do: SQLite rolls back what is open when the connection closes.
    }
    m_turn.reset();
    m_schemaAtSavepoint.clear();
    m_explicitInUnit = false;
    m_doomed = false;
    m_tranCount = 0;
}

void Core::afterRollback() {
    // Tables in the session's own store go with the transaction that made them.
    std::set<std::string> present;
    SqliteStatement names = m_connection.prepare("SELECT name FROM tmp.sqlite_master WHERE type = 'table'");
    while (names.step()) {
        present.insert("tmp." + quoted(names.text(0)));
    }
    const auto gone = [&](const std::shared_ptr<const Table>& table) {
        return present.count(table->physical) == 0;
    };
    const std::size_t before = m_temporaries.size();
    std::erase_if(m_temporaries, [&](const Temporary& entry) { return gone(entry.table); });
    std::erase_if(m_spareTables, [&](const auto& entry) { return gone(entry.second); });
    if (m_temporaries.size() != before) {
        ++m_temporaryEpoch;
    }
    m_madePrefills.clear();
    for (auto& [id, instances] : m_modules) {
        for (const std::unique_ptr<Compiled>& instance : instances) {
            instance->tablesMade = false;
        }
    }
    for (auto& [text, cached] : m_batches) {
        for (const std::unique_ptr<Compiled>& instance : cached.instances) {
            instance->tablesMade = false;
        }
    }
}

// ------------------------------------------------------------------------------------- table variables

Core::SavedTables Core::saveTableVariables() {
    SavedTables saved;
    for (Frame* frame = m_frame; frame != nullptr; frame = frame->caller) {
        for (std::size_t i = 0; frame->module != nullptr && i < frame->module->tables.size(); ++i) {
            const std::shared_ptr<const Table>& table = frame->module->tables[i];
            std::string columns;
            for (const Column& column : table->columns) {
                columns += (columns.empty() ? "" : ",") + quoted(column.name);
            }
            SqliteStatement rows = m_connection.prepare("SELECT " + columns + " FROM " + table->physical);
            std::vector<Row> content;
            while (rows.step()) {
                Row row;
                for (std::size_t c = 0; c < table->columns.size(); ++c) {
                    row.push_back(rows.value(static_cast<int>(c), table->columns[c].type));
                }
                content.push_back(std::move(row));
            }
            saved.rows.emplace_back(table, std::move(content));
        }
    }
    return saved;
}

void Core::makeTableVariables(Compiled& module) {
    for (const std::shared_ptr<const Table>& table : module.tables) {
        SqliteStatement known = m_connection.prepare(
            "SELECT 1 FROM tmp.sqlite_master WHERE type = 'table' AND 'tmp.\"' || name || '\"' = ?");
        known.bind(1, std::string_view(table->physical));
        if (!known.step()) {
            m_connection.execute(createTableSql(*table));
            makeIndexes(*table, 0);
        }
    }
    module.tablesMade = true;
}

void Core::beginTableVariables(Compiled& module) {
    if (!module.tables.empty() && !module.tablesMade) {
        makeTableVariables(module);
        // A run around something that was undone has left its rows.
        emptyTableVariables(module);
    }
}

void Core::emptyTableVariables(const Compiled& module) {
    if (!module.tablesMade) {
        return;
    }
    for (const std::shared_ptr<const Table>& table : module.tables) {
        m_connection.execute("DELETE FROM " + table->physical);
        m_localIdentity.erase(table->physical);
    }
}

void Core::restoreTableVariables(const SavedTables& saved) {
    for (Frame* frame = m_frame; frame != nullptr; frame = frame->caller) {
        if (frame->module != nullptr && !frame->module->tables.empty()) {
            makeTableVariables(*frame->module);
        }
    }
    for (const auto& [table, rows] : saved.rows) {
        m_connection.execute("DELETE FROM " + table->physical);
        RowWriter writer(*this, table);
        for (const Row& row : rows) {
            writer.insert(row);
        }
    }
}

// ----------------------------------------------------------------------------------------- statements

void Core::beginTransaction() {
    if (m_tranCount == 0) {
        if (m_connection.inTransaction()) {
            m_connection.execute(std::string("SAVEPOINT ") + kExplicit);
            m_explicitInUnit = true;
            m_schemaAtExplicit = m_schema;
        } else {
            beginUnit(true);
        }
    }
    ++m_tranCount;
}

void Core::commitTransaction() {
    if (m_tranCount == 0) {
        raise(3902);
    }
    requireCommittable();
    if (--m_tranCount > 0) {
        return;
    }
    if (m_explicitInUnit) {
        m_connection.execute(std::string("RELEASE ") + kExplicit);
        m_explicitInUnit = false;
        m_schemaAtSavepoint.clear();
        return;
    }
    commitUnit();
    if (m_unitDepth > 0) {
        beginUnit(true);
    }
}

void Core::rollbackTransaction() {
    if (m_tranCount == 0) {
        raise(3903);
    }
    // Table variables keep their rows whatever happens to the transaction.
    const SavedTables saved = saveTableVariables();
    m_tranCount = 0;
    if (m_explicitInUnit) {
        m_connection.execute(std::string("ROLLBACK TO ") + kExplicit);
        m_connection.execute(std::string("RELEASE ") + kExplicit);
        m_explicitInUnit = false;
        m_doomed = false;
        m_schemaAtSavepoint.clear();
        setSchema(m_schemaAtExplicit);
        afterRollback();
    } else {
        rollbackUnit();
        m_ownSchema.reset();
        m_schema.reset();
        refreshSchema();
        if (m_unitDepth > 0) {
            beginUnit(true);
        }
    }
    restoreTableVariables(saved);
}

void Core::rollbackTo(const std::string& name) {
    if (m_tranCount == 0) {
        raise(3903);
    }
    const auto found = m_schemaAtSavepoint.find(nameKey(name));
    if (found == m_schemaAtSavepoint.end()) {
        if (!m_transactionName.empty() && sameName(name, m_transactionName)) {
            rollbackTransaction();
            return;
        }
        raise(6401, {name});
    }
    const SavedTables saved = saveTableVariables();
    m_connection.execute("ROLLBACK TO " + quoted("save_" + nameKey(name)));
    setSchema(found->second);
    afterRollback();
    restoreTableVariables(saved);
}

void Core::runTransaction(const tsql::TransactionStatement& statement) {
    std::string name = statement.name;
    if (!statement.variable.empty()) {
        const Variable* found = variable(statement.variable);
        if (found == nullptr) {
            raise(137, {statement.variable});
        }
        name = displayText(m_frame->values[static_cast<std::size_t>(found->slot)], found->type);
    }
    switch (statement.action) {
        case tsql::TransactionStatement::Action::Begin:
            if (m_tranCount == 0) {
                m_transactionName = name;
            }
            beginTransaction();
            break;
        case tsql::TransactionStatement::Action::Commit:
            commitTransaction();
            break;
        case tsql::TransactionStatement::Action::Rollback:
            if (name.empty()) {
                rollbackTransaction();
            } else {
                rollbackTo(name);
            }
            break;
        case tsql::TransactionStatement::Action::Save:
            if (m_tranCount == 0) {
                raise(628);
            }
            m_connection.execute("SAVEPOINT " + quoted("save_" + nameKey(name)));
            m_schemaAtSavepoint[nameKey(name)] = m_schema;
            break;
    }
    m_rowCount = 0;
}

// ----------------------------------------------------------------------------------------------- units

UnitOfWork::UnitOfWork(Core& core, bool writes, bool call) : m_core(core), m_call(call) {
    if (writes) {
        core.requireCommittable();
    }
    m_owner = !core.m_connection.inTransaction();
    if (m_owner || writes) {
        core.beginUnit(writes);
    }
    if (!m_owner && (writes || call)) {
        m_savepoint = "unit_" + std::to_string(++core.m_unitCount);
        core.m_connection.execute("SAVEPOINT " + m_savepoint);
    }
    m_epoch = core.m_transactionEpoch;
    m_schema = core.m_schema;
    m_tranCount = core.m_tranCount;
    if (call) {
        ++core.m_unitDepth;
    }
}

void UnitOfWork::commit() {
    m_done = true;
    if (m_call) {
        --m_core.m_unitDepth;
    }
    const bool intact = m_epoch == m_core.m_transactionEpoch;
    if (!m_owner && intact) {
        if (!m_savepoint.empty()) {
            m_core.m_connection.execute("RELEASE " + m_savepoint);
        }
        return;
    }
    if (m_core.m_unitDepth > 0 || !m_core.m_connection.inTransaction()) {
        return;
    }
    if (m_core.m_tranCount == 0) {
        try {
            m_core.commitUnit();
        } catch (...) {
            m_core.rollbackUnit();
            throw;
        }
        return;
    }
    // A transaction that the call has left open goes on as the session's.
    if (m_core.m_explicitInUnit) {
        m_core.m_connection.execute(std::string("RELEASE ") + kExplicit);
        m_core.m_explicitInUnit = false;
    }
}

UnitOfWork::~UnitOfWork() {
    if (m_done) {
        return;
    }
    if (m_call) {
        --m_core.m_unitDepth;
    }
    const bool intact = m_epoch == m_core.m_transactionEpoch;
    try {
        if (!m_owner && intact) {
            if (m_savepoint.empty()) {
                return;
            }
            m_core.m_connection.execute("ROLLBACK TO " + m_savepoint);
            m_core.m_connection.execute("RELEASE " + m_savepoint);
            m_core.setSchema(m_schema);
            m_core.afterRollback();
            if (m_call) {
                m_core.m_tranCount = m_tranCount;
                m_core.m_explicitInUnit = m_core.m_explicitInUnit && m_tranCount > 0;
            }
            return;
        }
        if (m_owner || (m_core.m_unitDepth == 0 && m_core.m_tranCount == 0)) {
            m_core.rollbackUnit();
            m_core.m_ownSchema.reset();
            m_core.m_schema.reset();
            m_core.refreshSchema();
        }
    } catch (...) {
        m_core.rollbackUnit();
    }
}

}  // namespace magdb
