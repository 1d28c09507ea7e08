#include "engine/Core.h"

#include "engine/Catalog.h"
#include "engine/SystemCatalogue.h"
#include "engine/Text.h"

#include <sqlite3.h>

// A session from outside: batches, calls, cancelling, resetting, and what functions ask of it.

namespace magdb {

namespace {

/// Steps of SQLite's machine between two looks at the wish to stop.
constexpr int kStepsBetweenLooks = 2000;

}  // namespace

Core::Core(EngineState& engine, std::string loginName, std::string hostName, std::string applicationName,
           std::string database)
    : m_engine(engine),
      m_spid(engine.takeSpid()),
      m_loginName(std::move(loginName)),
      m_hostName(std::move(hostName)),
      m_applicationName(std::move(applicationName)),
      m_database(std::move(database)),
      m_connection(engine.file) {
    m_homeDatabase = m_database;
    m_frame = &m_idle;
    registerFunctions(m_connection.handle(), *this);
    sqlite3_progress_handler(
        m_connection.handle(), kStepsBetweenLooks,
        [](void* core) { return static_cast<Core*>(core)->m_cancelled ? 1 : 0; }, this);
    refreshSchema();
}

Core::~Core() {
    rollbackUnit();
    try {
        dropGlobalTables();
    } catch (...) {
        // The next start of the engine drops what is left.
    }
    m_engine.giveSpid(m_spid);
}

const std::string& Core::databaseName() const {
    return m_engine.name;
}

const Variable* Core::variable(const std::string& name) const {
    return m_frame->module == nullptr ? nullptr : m_frame->module->find(name);
}

std::vector<Column> Core::columnsOf(const Module& module) {
    std::vector<Column> columns;
    if (module.kind == ObjectKind::TableFunction) {
        return buildTable(module.name, module.function().table, module.source)->columns;
    }
    if (module.kind != ObjectKind::View && module.kind != ObjectKind::InlineFunction) {
        return columns;
    }
    try {
        Binder binder(*this);
        for (const SourceColumn& source : binder.viewColumns(module)) {
            Column column;
            column.name = source.name;
            column.type = source.value.type;
            column.nullable = source.value.nullable;
            column.identity = source.value.identity;
            columns.push_back(std::move(column));
        }
    } catch (const SqlError&) {
        columns.clear();
    }
    return columns;
}

Value Core::catalogFunction(std::string_view name, const std::vector<Value>& arguments) {
    if (name == "cursor_status" && arguments.size() == 2) {
        const auto* cursorName = std::get_if<std::string>(&arguments[1]);
        const Cursor* cursor = cursorName == nullptr ? nullptr : findCursor(*cursorName);
        return std::int64_t{cursor == nullptr ? -3 : (!cursor->open ? -1 : (cursor->rows.empty() ? 0 : 1))};
    }
    const MetadataFunction* function = findMetadataFunction(name);
    return function == nullptr ? Value() : function->call(*this, arguments);
}

RowWriter& Core::childWriter(const std::string& tableName) {
    const std::shared_ptr<const Table> table = m_schema->findTable(tableName);
    std::unique_ptr<RowWriter>& writer = m_childWriters[nameKey(tableName)];
    if (!writer || &writer->table() != table.get()) {
        writer = std::make_unique<RowWriter>(*this, table);
    }
    return *writer;
}

void Core::beginRequest(ResultSink& sink) {
    m_cancelled = false;
    m_sink = &sink;
    leaveFrames();
}

void Core::leaveFrames() {
    m_frame = &m_idle;
    m_tryDepth = 0;
    m_caught.clear();
}

bool Core::runBatch(std::string_view text, ResultSink& sink) {
    beginRequest(sink);
    bool completed = false;
    try {
        if (!m_connection.inTransaction()) {
            refreshSchema();
        }
        completed = runTopBatch(std::string(text));
    } catch (const Cancelled&) {
        completed = false;
    } catch (const SqliteError& error) {
        send(serverMessage(40001, {error.what()}));
    } catch (...) {
        m_frame = &m_idle;
        m_sink = nullptr;
        throw;
    }
    leaveFrames();
    if (m_doomed) {
        rollbackUnit();
        m_ownSchema.reset();
        m_schema.reset();
        refreshSchema();
        send(serverMessage(3998));
        completed = false;
    }
    m_sink = nullptr;
    return completed;
}

bool Core::runTopBatch(const std::string& text) {
    Frame frame;
    try {
        Compiled& compiled = compiledBatch(text, nullptr, text);
        frame.module = &compiled;
        frame.caller = &m_idle;
        frame.values.resize(compiled.types.size());
        frame.scopeIdentity = m_idle.scopeIdentity;
        m_frame = &frame;
        compiled.running = true;
        beginTableVariables(compiled);
        if (compiled.plans.empty()) {
            bindAhead(compiled.body);
        }
        runList(compiled.body);
        endTopBatch(frame);
        return true;
    } catch (const SqlError& error) {
        m_error = error.number();
        m_rowCount = 0;
        const int number = error.number();
        // A failed conversion ends the batch and takes the transaction with it; a name that does not exist
        // ends the batch alone.
        const bool compileError = error.binding || error.message().severity == 15;
        endTopBatch(frame);
        if (m_tranCount > 0 &&
            (m_options.xactAbort || (endsBatch(number, error.message().severity) && !compileError))) {
            const SavedTables none;
            rollbackTransaction();
        }
        send(error.message());
        return false;
    } catch (...) {
        endTopBatch(frame);
        throw;
    }
}

void Core::endTopBatch(Frame& frame) noexcept {
    m_frame = &m_idle;
    m_idle.scopeIdentity = frame.scopeIdentity;
    if (frame.module == nullptr) {
        return;
    }
    frame.module->running = false;
    try {
        emptyTableVariables(*frame.module);
    } catch (...) {
        frame.module->tablesMade = false;
    }
    // Local cursors end with the batch.
    frame.cursors.clear();
}

CallOutcome Core::runProcedure(std::string_view name, std::vector<CallParameter> parameters,
                               ResultSink& sink) {
    beginRequest(sink);
    CallOutcome outcome;
    try {
        if (!m_connection.inTransaction()) {
            refreshSchema();
        }
        std::vector<Argument> arguments;
        for (CallParameter& parameter : parameters) {
            Argument argument;
            argument.name = parameter.name;
            argument.value = std::move(parameter.value);
            argument.type = parameter.type;
            argument.output = parameter.output;
            argument.byDefault = parameter.useDefault;
            arguments.push_back(std::move(argument));
        }
        try {
            callFromClient(name, arguments, outcome);
        } catch (const SqliteError& error) {
            raise(40001, {error.what()});
        }
    } catch (const SqlError& error) {
        m_frame = &m_idle;
        m_error = error.number();
        if (m_tranCount > 0 && (m_options.xactAbort || m_doomed)) {
            rollbackTransaction();
        }
        send(error.message());
        outcome.failed = true;
    } catch (const Cancelled&) {
        outcome.failed = true;
    } catch (...) {
        m_frame = &m_idle;
        m_sink = nullptr;
        throw;
    }
    leaveFrames();
    m_sink = nullptr;
    return outcome;
}

void Core::callFromClient(std::string_view name, std::vector<Argument>& arguments, CallOutcome& outcome) {
    const tsql::ObjectName parsed = procedureName(name);
    const std::string key = nameKey(parsed.name);
    if (key == "sp_prepare" || key == "sp_prepexec" || key == "sp_execute" || key == "sp_unprepare") {
        preparedCall(key, arguments, outcome);
        return;
    }
    if (key == "sp_reset_connection") {
        reset();
        return;
    }
    outcome.status = callProcedure(parsed, arguments);
    collectOutputs(arguments, outcome);
}

void Core::collectOutputs(const std::vector<Argument>& arguments, CallOutcome& outcome) {
    for (const Argument& argument : arguments) {
        if (argument.output) {
            outcome.outputs.push_back({argument.name, argument.resultType, argument.result});
        }
    }
}

void Core::preparedCall(const std::string& name, std::vector<Argument>& arguments, CallOutcome& outcome) {
    const auto textAt = [&](std::size_t index) {
        return index < arguments.size() && isText(arguments[index].type) && !isNull(arguments[index].value)
                   ? std::get<std::string>(arguments[index].value)
                   : std::string();
    };
    const auto handleAt = [&](std::size_t index) {
        if (index >= arguments.size() || isNull(arguments[index].value)) {
            raise(8179, {"0"});
        }
        return static_cast<int>(std::get<std::int64_t>(
            convert(arguments[index].value, arguments[index].type, plainType(TypeId::Int))));
    };
    int handle = 0;
    std::size_t firstValue = 1;
    if (name == "sp_prepare" || name == "sp_prepexec") {
        if (arguments.size() < 3) {
            raise(201, {name, "@stmt"});
        }
        handle = m_nextHandle++;
        m_prepared[handle] = {textAt(1), textAt(2)};
        arguments.front().result = std::int64_t{handle};
        arguments.front().resultType = plainType(TypeId::Int);
        firstValue = 3;
    } else {
        handle = handleAt(0);
        arguments.front().output = false;
    }
    if (m_prepared.count(handle) == 0) {
        raise(8179, {std::to_string(handle)});
    }
    if (name == "sp_unprepare") {
        m_prepared.erase(handle);
        return;
    }
    if (name != "sp_prepare") {
        std::vector<Argument> inner(2);
        inner[0].type = inner[1].type = textType(TypeId::NVarChar, -1);
        inner[0].value = m_prepared[handle].second;
        inner[1].value = m_prepared[handle].first;
        inner.insert(inner.end(), arguments.begin() + static_cast<std::ptrdiff_t>(firstValue),
                     arguments.end());
        executeSql(inner);
        for (std::size_t i = firstValue; i < arguments.size(); ++i) {
            arguments[i].result = inner[i - firstValue + 2].result;
            arguments[i].resultType = inner[i - firstValue + 2].resultType;
        }
    }
    collectOutputs(arguments, outcome);
}

void Core::reset() {
    m_cancelled = false;
    m_frame = &m_idle;
    rollbackUnit();
    m_ownSchema.reset();
    m_schema.reset();
    refreshSchema();
    while (!m_temporaries.empty()) {
        dropTemporary(m_temporaries.size() - 1);
    }
    dropGlobalTables();
    m_options = SessionOptions();
    settings = ConvertSettings();
    m_cursors.clear();
    m_prepared.clear();
    m_identity.reset();
    m_idle.scopeIdentity.reset();
    m_rowCount = 0;
    m_error = 0;
    m_fetchStatus = 0;
    m_database = m_homeDatabase;
}

}  // namespace magdb
