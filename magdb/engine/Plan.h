#pragma once

#include "engine/Schema.h"
#include "engine/Session.h"
#include "engine/Sqlite.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace magdb {

struct SystemView;

/// Values that the session knows when a statement starts.
enum class SystemValue : std::uint8_t {
    RowCount,
    Error,
    TranCount,
    FetchStatus,
    Identity,
    ScopeIdentity,
    Now,
    NowUtc,
    Spid,
    NestLevel,
    HostName,
    LoginName,
    ApplicationName,
    DatabaseName,
    ProcedureId,
    XactState,
    ErrorNumber,
    ErrorSeverity,
    ErrorState,
    ErrorLine,
    ErrorMessage,
    ErrorProcedure,
    DateFirst,
    CursorRows,
    LockTimeout,
    TextSize,
    Options,
};

/// Where the value of ?N comes from when a plan runs.
struct PlanParameter {
    enum class Kind : std::uint8_t { Variable, System, Row };
    Kind kind = Kind::Variable;
    int index = 0;  ///< slot of the variable, position in the row
    SystemValue system = SystemValue::RowCount;
};

/// A name that the plan was bound by and what it meant then; null when it meant nothing.
struct PlanDependency {
    std::string name;
    const SchemaObject* object = nullptr;
    std::shared_ptr<const SchemaObject> keepAlive;
};

struct Plan;

/// A table in the session's store that must be filled before the plan runs: the rows of a system view or the
/// result of a multi-statement function.
struct Prefill {
    const SystemView* view = nullptr;
    std::shared_ptr<const Module> function;
    std::shared_ptr<Plan> arguments;  ///< one row, one column for each argument
    std::string physical;
};

/// A translated query: what SQLite runs and what its columns are in T-SQL.
struct Plan {
    std::string sql;
    std::vector<PlanParameter> parameters;
    std::vector<ResultColumn> columns;
    std::vector<PlanDependency> dependencies;
    std::vector<Prefill> prefills;

    std::uint64_t schemaUid = 0;
    std::uint64_t temporaryEpoch = 0;
    SqliteStatement statement;  ///< prepared at the first run
    bool prepared = false;
};

/// SELECT: rows to the client, into variables or into a new table.
struct SelectPlan {
    Plan query;
    std::vector<int> assignedSlots;  ///< one for each column; empty for a plain SELECT
    std::vector<SqlType> assignedTypes;
    std::optional<tsql::ObjectName> into;
};

/// OUTPUT: evaluated for each changed row from its values after (first) and before the change.
struct OutputPlan {
    Plan query;
    std::shared_ptr<const Table> into;
    std::vector<int> intoColumns;
};

struct InsertPlan {
    std::shared_ptr<const Table> target;
    Plan source;               ///< without rows of EXEC
    std::vector<int> columns;  ///< target column of each source column
    Plan defaults;             ///< defaults of the columns not named; one row
    std::vector<int> defaultColumns;
    std::optional<OutputPlan> output;
};

struct UpdatePlan {
    std::shared_ptr<const Table> target;
    Plan source;  ///< rowid, then the new values, then the values for variables
    std::vector<int> columns;
    std::vector<int> variableSlots;
    std::vector<SqlType> variableTypes;
    std::vector<int> variableColumns;  ///< column of the source for each variable
    std::optional<OutputPlan> output;
};

struct DeletePlan {
    std::shared_ptr<const Table> target;
    Plan source;  ///< rowid
    std::optional<OutputPlan> output;
};

}  // namespace magdb
