#pragma once

#include "engine/Binder.h"
#include "engine/Plan.h"
#include "tsql/Ast.h"

#include <memory>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

namespace magdb {

class RowWriter;

/// The plan of one statement or expression, kept for the next run while what it was bound to stands.
struct PlanEntry {
    std::variant<std::monostate, Plan, SelectPlan, InsertPlan, UpdatePlan, DeletePlan> plan;
    std::vector<PlanDependency> dependencies;
    std::uint64_t schemaUid = 0;
    std::uint64_t temporaryEpoch = 0;
    std::unique_ptr<RowWriter> writer;
    std::unique_ptr<RowWriter> outputWriter;

    PlanEntry();
    ~PlanEntry();
    PlanEntry(const PlanEntry&) = delete;
    PlanEntry& operator=(const PlanEntry&) = delete;
};

/// A batch or the body of a module, with its variables and the plans of its statements. Belongs to one
/// session; while it runs, a recursive call of the same module uses another one.
class Compiled {
public:
    Compiled(std::shared_ptr<const tsql::Batch> batch, const tsql::StatementList& body, std::string name,
             std::int32_t objectId, std::string tablePrefix);
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;

    /// Adds parameters before declarations are read.
    void addParameter(const std::string& parameter, const SqlType& type);
    /// A table variable that the module is born with: the result of a table function.
    void addTable(const std::string& variable, const tsql::TableDefinition& definition);
    /// Reads all declarations of the body. Errors 134, 2715.
    void declareAll();

    [[nodiscard]] const Variable* find(const std::string& variable) const;

    std::shared_ptr<const tsql::Batch> batch;
    const tsql::StatementList& body;
    std::string name;            ///< of the module; empty for a batch
    std::int32_t objectId = 0;   ///< 0 for a batch
    std::string database;        ///< the current one while its statements were bound
    std::vector<SqlType> types;  ///< of the slots
    std::vector<std::shared_ptr<const Table>> tables;
    std::unordered_map<const void*, std::unique_ptr<PlanEntry>> plans;
    bool running = false;
    bool tablesMade = false;

private:
    void declare(const tsql::StatementList& statements);
    void declare(const tsql::Statement& statement);
    void add(const std::string& variable, Variable value);

    std::string m_tablePrefix;
    std::unordered_map<std::string, Variable> m_variables;
};

/// A table from its definition: columns with types, keys and constraints with names. Names that the
/// definition leaves open are made from the table's name. Errors 2705, 2715, 2744, 2749, 1779, 1911, 8111.
[[nodiscard]] std::shared_ptr<Table> buildTable(const std::string& name,
                                                const tsql::TableDefinition& definition,
                                                const std::string& source);
/// Adds one constraint of CREATE or ALTER TABLE.
void addConstraint(Table& table, const tsql::TableConstraint& constraint, const std::string& source,
                   bool makesKeysNotNull);
/// Adds one column with its inline constraints.
void addColumn(Table& table, const tsql::ColumnDefinition& definition, const std::string& source);

/// SQLite's statements that make the table and its indexes.
[[nodiscard]] std::string createTableSql(const Table& table);
[[nodiscard]] std::vector<std::string> createIndexSql(const Table& table, const Key& key,
                                                      const std::string& filterSql);
/// SQLite's name of an index, with its store in front and without.
[[nodiscard]] std::string physicalIndex(const Table& table, const Key& key, bool withStore);

}  // namespace magdb
