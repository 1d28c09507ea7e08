#pragma once

#include "engine/Binder.h"
#include "engine/Compiled.h"
#include "engine/EngineState.h"
#include "engine/Functions.h"
#include "engine/RowWriter.h"
#include "engine/Session.h"
#include "engine/SqlError.h"
#include "engine/Sqlite.h"
#include "engine/SystemViews.h"

#include <atomic>
#include <deque>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace magdb {

/// A cursor: the rows of its query, taken when it was opened.
struct Cursor {
    Plan plan;
    Row variables;  ///< values at the declaration, which its query goes on using
    std::vector<Row> rows;
    bool open = false;
    bool scroll = false;
    std::int64_t position = 0;  ///< 1-based; 0 before the first row
};

/// One running batch, procedure or function.
struct Frame {
    Compiled* module = nullptr;
    Frame* caller = nullptr;
    Row values;
    int depth = 0;
    int returnStatus = 0;
    bool isProcedure = false;
    bool isFunction = false;
    bool hasResultType = false;
    SqlType resultType;  ///< of a scalar function
    Value functionResult;
    std::optional<DecimalValue> scopeIdentity;
    std::map<std::string, std::shared_ptr<Cursor>> cursors;
    std::size_t temporaryMark = 0;
};

/// Settings that SET changes.
struct SessionOptions {
    bool noCount = false;
    bool xactAbort = false;
    bool implicitTransactions = false;
    bool formatOnly = false;
    bool quotedIdentifier = true;
    bool noExec = false;
    std::int64_t rowCount = 0;
    int lockTimeout = -1;
    int textSize = 2147483647;
    std::string identityInsert;  ///< key of the table that takes explicit identities
    int dateFirst = 7;
};

/// What leaves a list of statements early.
enum class Flow : std::uint8_t { Next, Break, Continue, Return };

/// The inside of a session: names, plans, transactions, and the interpreter. One thread at a time, except
/// cancel().
class Core final : public BindContext, public Runtime, public CatalogContext {
public:
    Core(EngineState& engine, std::string loginName, std::string hostName, std::string applicationName,
         std::string database);
    ~Core() override;
    Core(const Core&) = delete;
    Core& operator=(const Core&) = delete;

    bool runBatch(std::string_view text, ResultSink& sink);
    CallOutcome runProcedure(std::string_view name, std::vector<CallParameter> parameters, ResultSink& sink);
    void cancel() { m_cancelled = true; }
    void reset();

    [[nodiscard]] std::int16_t spid() const { return m_spid; }
    [[nodiscard]] bool isWriting() const { return m_turn != nullptr; }

    // BindContext and CatalogContext
    [[nodiscard]] const Schema& schema() const override { return *m_schema; }
    [[nodiscard]] const std::string& databaseName() const override;
    [[nodiscard]] const std::string& currentDatabase() const override { return m_database; }
    [[nodiscard]] const std::string& loginName() const override { return m_loginName; }
    [[nodiscard]] const Variable* variable(const std::string& name) const override;
    [[nodiscard]] std::shared_ptr<const Table> temporaryTable(const std::string& name) const override;
    [[nodiscard]] std::string prefillTable(const std::string& hint) override;
    [[nodiscard]] std::vector<Column> columnsOf(const Module& module) override;
    [[nodiscard]] std::vector<std::shared_ptr<const Table>> temporaryTables() const override;

    [[nodiscard]] std::optional<std::int64_t> lastIdentity(const Table& table) override;

    // Runtime
    [[nodiscard]] Value variableNow(int slot) override;
    [[nodiscard]] Value callFunction(std::int32_t objectId, sqlite3_value** arguments, int count) override;
    [[nodiscard]] Value catalogFunction(std::string_view name, const std::vector<Value>& arguments) override;

    // For RowWriter and the transaction units
    [[nodiscard]] SqliteConnection& connection() { return m_connection; }
    /// Prepares and binds; the caller steps and resets. `row` feeds the Row parameters.
    SqliteStatement& start(Plan& plan, const Row* row = nullptr);
    /// One step; errors of functions inside SQLite come out as themselves.
    bool step(SqliteStatement& statement);
    /// All rows of a plan, in the types of its columns.
    [[nodiscard]] std::vector<Row> fetchAll(Plan& plan, const Row* row = nullptr);
    void checkCancelled() const;
    [[nodiscard]] RowWriter& childWriter(const std::string& tableName);

private:
    friend class UnitOfWork;
    friend class SystemProcedures;

    // Requests (Core.cpp)
    struct Argument;
    void beginRequest(ResultSink& sink);
    /// Whatever ran is over, also when it was left by an error.
    void leaveFrames();
    bool runTopBatch(const std::string& text);
    void endTopBatch(Frame& frame) noexcept;
    void callFromClient(std::string_view name, std::vector<Argument>& arguments, CallOutcome& outcome);
    void preparedCall(const std::string& name, std::vector<Argument>& arguments, CallOutcome& outcome);
    static void collectOutputs(const std::vector<Argument>& arguments, CallOutcome& outcome);

    // Statements (Interpreter.cpp)
    Flow runList(const tsql::StatementList& statements);
    Flow runStatement(const tsql::Statement& statement);
    /// True while SET NOEXEC or SET FMTONLY keeps the statement from running.
    [[nodiscard]] bool isSkipped(const tsql::Statement& statement) const;
    /// True for statements that begin a transaction under SET IMPLICIT_TRANSACTIONS ON.
    [[nodiscard]] static bool opensTransaction(const tsql::Statement& statement);
    Flow dispatch(const tsql::Statement& statement);
    void dispatchDefinition(const tsql::Statement& statement);
    Flow runIf(const tsql::IfStatement& statement);
    Flow runWhile(const tsql::WhileStatement& statement);
    Flow runTry(const tsql::TryCatchStatement& statement);
    Flow runReturn(const tsql::ReturnStatement& statement);
    void runDeclare(const tsql::DeclareVariablesStatement& statement);
    void runSet(const tsql::SetVariableStatement& statement);
    void runPrint(const tsql::PrintStatement& statement);
    void runUse(const tsql::UseStatement& statement);
    [[nodiscard]] bool holds(const tsql::Expr& condition);
    [[nodiscard]] Value evaluate(const tsql::Expr& expr, SqlType* type = nullptr);
    [[nodiscard]] Value evaluateAs(const tsql::Expr& expr, const SqlType& type);
    void bindAhead(const tsql::StatementList& statements);

    // Options (InterpreterOptions.cpp)
    void runOption(const tsql::SetOptionStatement& statement);
    void setSwitch(const std::string& name, bool on, const tsql::SetOptionStatement& statement);

    // Errors (InterpreterErrors.cpp)
    void runRaiseError(const tsql::RaiseErrorStatement& statement);
    [[noreturn]] void runThrow(const tsql::ThrowStatement& statement);
    void send(ServerMessage message);
    void place(SqlError& error, const tsql::Statement& statement) const;
    [[nodiscard]] bool insideTry() const;
    [[nodiscard]] static bool endsBatch(int number, int severity);

    // Queries and changes (InterpreterQuery.cpp, InterpreterChange.cpp)
    void runSelect(const tsql::SelectStatement& statement);
    void sendRows(Plan& plan);
    void assignRows(SelectPlan& plan);
    void selectInto(SelectPlan& plan);
    void runInsert(const tsql::InsertStatement& statement);
    void insertRows(InsertPlan& plan, PlanEntry& entry, const std::vector<Row>& rows,
                    const std::vector<SqlType>& types);
    [[nodiscard]] std::vector<Row> executeForRows(const tsql::Statement& statement, std::size_t width,
                                                  std::vector<SqlType>& types);
    void runUpdate(const tsql::UpdateStatement& statement);
    [[nodiscard]] std::vector<Row> updateRows(UpdatePlan& update);
    void runDelete(const tsql::DeleteStatement& statement);
    void runTruncate(const tsql::TruncateStatement& statement);
    void sendOutput(OutputPlan& plan, PlanEntry& entry, const std::vector<Row>& inserted,
                    const std::vector<Row>& deleted, std::size_t width);
    void setLastIdentity(const Table& table, std::optional<std::int64_t> value);
    void done(std::int64_t rows, bool hadResult = false);

    // Plans (Plans.cpp)
    PlanEntry& entry(const void* node);
    template <class PlanType, class Make>
    PlanType& plan(const void* node, Make make, PlanEntry** holder = nullptr);
    [[nodiscard]] bool isValid(PlanEntry& entry);
    void collectDependencies(PlanEntry& entry);
    void fill(Plan& plan);
    void fillFromView(const Prefill& prefill);
    void fillFromFunction(const Prefill& prefill);
    [[nodiscard]] Value systemValue(SystemValue value);

    // Calls (InterpreterCall.cpp)
    void runExecute(const tsql::ExecuteStatement& statement);
    void runExecuteText(const tsql::ExecuteTextStatement& statement);
    struct Argument {
        std::string name;
        Value value;
        SqlType type;
        bool output = false;
        bool byDefault = false;
        int slot = -1;  ///< variable of the caller that takes the output
        SqlType slotType;
        Value result;
        SqlType resultType;
    };
    int callProcedure(const tsql::ObjectName& name, std::vector<Argument>& arguments);
    int callModule(const Module& module, std::vector<Argument>& arguments);
    void runDynamic(const std::string& text, const std::vector<tsql::Parameter>* declarations,
                    std::vector<Argument>* arguments);
    [[nodiscard]] std::vector<Argument> argumentsOf(const tsql::ExecuteStatement& statement);
    void bindArguments(const std::vector<tsql::Parameter>& parameters, const std::string& procedure,
                       std::vector<Argument>& arguments, Frame& frame, std::vector<int>& positions);
    /// Runs the frame's module; `before` sees its tables before they are emptied.
    Flow runFrame(Frame& frame, const std::function<void()>& before = {});
    void leaveFrame(Frame& frame) noexcept;
    void executeSql(std::vector<Argument>& arguments);
    [[nodiscard]] Value parameterDefault(const tsql::Parameter& parameter, const SqlType& type);
    /// The parts of `a.b.c`, brackets and quotes removed.
    [[nodiscard]] static tsql::ObjectName procedureName(std::string_view text);
    [[nodiscard]] Compiled& compiledModule(const Module& module);
    [[nodiscard]] Compiled& compiledBatch(const std::string& text,
                                          const std::vector<tsql::Parameter>* declarations,
                                          const std::string& key);
    [[nodiscard]] bool writesAnything(const tsql::ObjectName& procedure) const;

    // Definitions (InterpreterDefinition.cpp)
    void runCreateTable(const tsql::CreateTableStatement& statement);
    void createTable(const std::shared_ptr<Table>& table);
    void createTemporary(std::shared_ptr<Table> table);
    void runAlterTable(const tsql::AlterTableStatement& statement);
    void alterAdd(Table& table, const tsql::AlterTableStatement& statement);
    void alterColumn(Table& table, const tsql::AlterTableStatement& statement);
    void alterDrop(Table& table, const tsql::AlterTableStatement& statement);
    void runCreateIndex(const tsql::CreateIndexStatement& statement);
    void runDropIndex(const tsql::DropIndexStatement& statement);
    void runDrop(const tsql::DropObjectStatement& statement);
    void createModule(const tsql::ObjectName& name, ObjectKind kind, bool alter);
    void finishTable(Table& table);
    void makeIndexes(const Table& table, std::size_t firstKey);
    [[nodiscard]] std::string filterOf(const Table& table, const Key& key);
    void dropTemporary(std::size_t index);
    void saveTable(const std::shared_ptr<Table>& table);
    [[nodiscard]] bool dropConstraint(Table& table, const std::string& name);
    void dropIndex(const Table& table, const Key& key);
    void storeObject(const std::shared_ptr<SchemaObject>& object);
    void removeObject(const SchemaObject& object);
    [[nodiscard]] std::shared_ptr<const Table> tableToChange(const tsql::ObjectName& name);
    void dropGlobalTables();

    // Cursors (InterpreterCursor.cpp)
    void runDeclareCursor(const tsql::DeclareCursorStatement& statement);
    void runCursor(const tsql::CursorStatement& statement);
    void runFetch(const tsql::FetchCursorStatement& statement);
    [[nodiscard]] Cursor* findCursor(const std::string& name);

    // Transactions (Transactions.cpp)
    void runTransaction(const tsql::TransactionStatement& statement);
    void beginTransaction();
    void commitTransaction();
    void rollbackTransaction();
    void rollbackTo(const std::string& name);
    void beginUnit(bool writes);
    void commitUnit();
    void rollbackUnit() noexcept;
    void afterRollback();
    void refreshSchema();
    void setSchema(std::shared_ptr<const Schema> schema);
    [[nodiscard]] Schema& changingSchema();
    void requireCommittable() const;
    struct SavedTables {
        std::vector<std::pair<std::shared_ptr<const Table>, std::vector<Row>>> rows;
    };
    [[nodiscard]] SavedTables saveTableVariables();
    void restoreTableVariables(const SavedTables& saved);
    void makeTableVariables(Compiled& module);
    /// Empty tables for a run of the module that begins.
    void beginTableVariables(Compiled& module);
    void emptyTableVariables(const Compiled& module);

    EngineState& m_engine;
    std::int16_t m_spid;
    std::string m_loginName;
    std::string m_hostName;
    std::string m_applicationName;
    std::string m_database;
    std::string m_homeDatabase;  ///< after login
    SqliteConnection m_connection;
    std::shared_ptr<const Schema> m_schema;
    std::shared_ptr<const Schema> m_committedSchema;
    std::shared_ptr<Schema> m_ownSchema;  ///< while this session's transaction has changed the schema
    std::atomic<bool> m_cancelled{false};

    SessionOptions m_options;
    ResultSink* m_sink = nullptr;
    Frame* m_frame = nullptr;
    Frame m_idle;  ///< stands in where no batch runs
    int m_prefillCount = 0;
    std::map<std::string, std::string> m_prefillTables;
    std::set<std::string> m_madePrefills;

    // Values that @@ functions show
    std::int64_t m_rowCount = 0;
    int m_error = 0;
    int m_fetchStatus = 0;
    std::int64_t m_cursorRows = 0;
    std::optional<DecimalValue> m_identity;
    std::vector<ServerMessage> m_caught;  ///< errors of the CATCH blocks that are running
    DateTimeValue m_now;
    DateTimeValue m_nowUtc;
    bool m_nowKnown = false;
    bool m_raisedInCall = false;
    int m_tryDepth = 0;

    // Transactions
    int m_tranCount = 0;
    int m_unitDepth = 0;  ///< calls that are atomic around the running statement
    bool m_explicitInUnit = false;
    bool m_doomed = false;
    std::string m_transactionName;
    std::uint64_t m_transactionEpoch = 0;  ///< counts ends of SQLite's transaction
    std::uint64_t m_unitCount = 0;
    std::unique_ptr<WriteTurn> m_turn;
    std::shared_ptr<const Schema> m_schemaAtExplicit;
    std::map<std::string, std::shared_ptr<const Schema>> m_schemaAtSavepoint;

    // Temporary tables
    struct Temporary {
        std::string key;
        std::shared_ptr<const Table> table;
        std::string signature;
    };
    std::vector<Temporary> m_temporaries;
    std::multimap<std::string, std::shared_ptr<const Table>> m_spareTables;  ///< by signature
    std::uint64_t m_temporaryEpoch = 1;
    int m_temporaryCount = 0;
    std::set<std::string> m_ownGlobals;
    std::unordered_map<std::string, std::int64_t> m_localIdentity;

    // Code
    std::unordered_map<std::int32_t, std::vector<std::unique_ptr<Compiled>>> m_modules;
    std::unordered_map<std::int32_t, const SchemaObject*> m_moduleIdentity;
    std::list<std::string> m_batchOrder;
    struct CachedBatch {
        std::vector<std::unique_ptr<Compiled>> instances;
        std::shared_ptr<const tsql::Batch> tree;
        std::list<std::string>::iterator position;
    };
    std::unordered_map<std::string, CachedBatch> m_batches;
    int m_compiledCount = 0;
    std::map<std::string, std::shared_ptr<Cursor>> m_cursors;
    std::map<int, std::pair<std::string, std::string>> m_prepared;  ///< sp_prepare: declarations and text
    int m_nextHandle = 1;
    std::map<std::string, std::unique_ptr<RowWriter>> m_childWriters;
    std::unique_ptr<SqliteStatement> m_versionQuery;
};

/// What must be done whole or not at all: a statement that writes, or a call. Undone unless commit() ran.
class UnitOfWork {
public:
    /// call: a procedure's call, inside which BEGIN TRANSACTION opens a part of the unit.
    UnitOfWork(Core& core, bool writes, bool call);
    ~UnitOfWork();
    UnitOfWork(const UnitOfWork&) = delete;
    UnitOfWork& operator=(const UnitOfWork&) = delete;
    void commit();

private:
    Core& m_core;
    bool m_call;
    bool m_owner = false;  ///< opened SQLite's transaction
    bool m_done = false;
    std::string m_savepoint;
    std::shared_ptr<const Schema> m_schema;
    std::uint64_t m_epoch = 0;
    int m_tranCount = 0;
};

template <class PlanType, class Make>
PlanType& Core::plan(const void* node, Make make, PlanEntry** holder) {
    PlanEntry& found = entry(node);
    if (!std::holds_alternative<PlanType>(found.plan) || !isValid(found)) {
        found.writer.reset();
        found.outputWriter.reset();
        found.plan = std::monostate{};
        try {
            Binder binder(*this);
            found.plan = make(binder);
        } catch (SqlError& error) {
            error.binding = true;
            throw;
        }
        collectDependencies(found);
    }
    if (holder != nullptr) {
        *holder = &found;
    }
    return std::get<PlanType>(found.plan);
}

}  // namespace magdb
