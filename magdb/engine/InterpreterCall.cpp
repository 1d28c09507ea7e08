#include "engine/Core.h"
#include "engine/SystemCatalogue.h"
#include "engine/Text.h"
#include "engine/Writes.h"
#include "tsql/Parser.h"

#include <sqlite3.h>

#include <algorithm>
#include <utility>

// Calls: procedures, functions, dynamic SQL.

namespace magdb {

namespace {

constexpr int kMaxNesting = 32;
constexpr std::size_t kKeptBatches = 400;

[[noreturn]] void rethrowSyntax(const tsql::SyntaxError& error) {
    ServerMessage message;
    message.number = error.number;
    message.severity = error.severity;
    message.state = error.state;
    message.text = error.what();
    message.line = static_cast<int>(error.line);
    SqlError converted(message);
    converted.placed = true;
    throw converted;
}

/// Collects the rows of INSERT ... EXEC and passes everything else on.
class RowCollector final : public ResultSink {
public:
    RowCollector(ResultSink& next, std::size_t width) : m_next(next), m_width(width) {}
    void columns(const std::vector<ResultColumn>& columns) override {
        if (columns.size() != m_width) {
            raise(213);
        }
        if (types.empty()) {
            for (const ResultColumn& column : columns) {
                types.push_back(column.type);
            }
        }
        m_current.clear();
        for (const ResultColumn& column : columns) {
            m_current.push_back(column.type);
        }
    }
    void row(std::span<const Value> values) override {
        Row copy(values.begin(), values.end());
        // Later results may have other types; all rows come in those of the first.
        for (std::size_t i = 0; i < copy.size(); ++i) {
            copy[i] = convert(copy[i], m_current[i], types[i]);
        }
        rows.push_back(std::move(copy));
    }
    void statementDone(std::optional<std::int64_t>, bool, bool) override {}
    void message(const ServerMessage& message) override { m_next.message(message); }
    void databaseChanged(const std::string& from, const std::string& to) override {
        m_next.databaseChanged(from, to);
    }

    std::vector<Row> rows;
    std::vector<SqlType> types;

private:
    ResultSink& m_next;
    std::size_t m_width;
    std::vector<SqlType> m_current;
};

}  // namespace

// ------------------------------------------------------------------------------------------------ frames

Flow Core::runFrame(Frame& frame, const std::function<void()>& before) {
    frame.caller = m_frame;
    frame.depth = m_frame->depth + 1;
    if (frame.depth > kMaxNesting) {
        raise(217);
    }
    frame.temporaryMark = m_temporaries.size();
    const SessionOptions options = m_options;
    const std::string database = std::exchange(m_database, frame.module->database);
    m_frame = &frame;
    frame.module->running = true;
    const auto leave = [&]() noexcept {
        leaveFrame(frame);
        m_options.noCount = options.noCount;
        m_options.xactAbort = options.xactAbort;
        m_options.rowCount = options.rowCount;
        m_options.identityInsert = options.identityInsert;
        // USE in dynamic SQL ends with it.
        m_database = database;
    };
    try {
        beginTableVariables(*frame.module);
        const Flow flow = runList(frame.module->body);
        if (before) {
            before();
        }
        leave();
        return flow;
    } catch (...) {
        leave();
        throw;
    }
}

void Core::leaveFrame(Frame& frame) noexcept {
    frame.module->running = false;
    m_frame = frame.caller;
    try {
        emptyTableVariables(*frame.module);
        while (m_temporaries.size() > frame.temporaryMark) {
            dropTemporary(m_temporaries.size() - 1);
        }
    } catch (...) {
        // The transaction is broken; what is left goes with its rollback.
        frame.module->tablesMade = false;
    }
}

Compiled& Core::compiledModule(const Module& module) {
    std::vector<std::unique_ptr<Compiled>>& instances = m_modules[module.id];
    const SchemaObject*& identity = m_moduleIdentity[module.id];
    if (identity != &module) {
        std::erase_if(instances,
                      [](const std::unique_ptr<Compiled>& instance) { return !instance->running; });
        identity = &module;
    }
    // A procedure of the server works in the database that is current, all others in their own.
    const std::string& database = module.system ? m_database : databaseName();
    for (const std::unique_ptr<Compiled>& instance : instances) {
        if (!instance->running && instance->batch == module.batch && instance->database == database) {
            return *instance;
        }
    }
    const bool procedure = module.kind == ObjectKind::Procedure;
    const tsql::StatementList& body = procedure ? module.procedure().body : module.function().body;
    const std::vector<tsql::Parameter>& parameters =
        procedure ? module.procedure().parameters : module.function().parameters;
    auto compiled = std::make_unique<Compiled>(module.batch, body, module.name, module.id,
                                               "v" + std::to_string(++m_compiledCount) + "_");
    compiled->database = database;
    int position = 0;
    for (const tsql::Parameter& parameter : parameters) {
        compiled->addParameter(parameter.name, resolveType(parameter.type, ++position));
    }
    if (module.kind == ObjectKind::TableFunction) {
        compiled->addTable(module.function().tableVariable, module.function().table);
    }
    compiled->declareAll();
    instances.push_back(std::move(compiled));
    return *instances.back();
}

Compiled& Core::compiledBatch(const std::string& text, const std::vector<tsql::Parameter>* declarations,
                              const std::string& textKey) {
    // The same text means another thing in another database, and quotes by their setting.
    const std::string key = m_database + (m_options.quotedIdentifier ? " q\n" : " u\n") + textKey;
    const auto found = m_batches.find(key);
    CachedBatch* cached = found == m_batches.end() ? nullptr : &found->second;
    if (cached == nullptr) {
        std::shared_ptr<const tsql::Batch> tree;
        try {
            tree = tsql::parseBatch(text, {m_options.quotedIdentifier});
        } catch (const tsql::SyntaxError& error) {
            rethrowSyntax(error);
        }
        m_batchOrder.push_front(key);
        cached = &m_batches[key];
        cached->tree = tree;
        cached->position = m_batchOrder.begin();
        for (auto oldest = m_batchOrder.end();
             m_batchOrder.size() > kKeptBatches && oldest != m_batchOrder.begin();) {
            --oldest;
            CachedBatch& candidate = m_batches[*oldest];
            const bool busy = std::any_of(candidate.instances.begin(), candidate.instances.end(),
                                          [](const auto& instance) { return instance->running; });
            if (busy || &candidate == cached) {
                continue;
            }
            m_batches.erase(*oldest);
            oldest = m_batchOrder.erase(oldest);
        }
    } else {
        m_batchOrder.splice(m_batchOrder.begin(), m_batchOrder, cached->position);
    }
    for (const std::unique_ptr<Compiled>& instance : cached->instances) {
        if (!instance->running) {
            return *instance;
        }
    }
    auto compiled = std::make_unique<Compiled>(cached->tree, cached->tree->statements, "", 0,
                                               "v" + std::to_string(++m_compiledCount) + "_");
    int position = 0;
    for (std::size_t i = 0; declarations != nullptr && i < declarations->size(); ++i) {
        compiled->addParameter((*declarations)[i].name, resolveType((*declarations)[i].type, ++position));
    }
    compiled->database = m_database;
    compiled->declareAll();
    cached->instances.push_back(std::move(compiled));
    return *cached->instances.back();
}

// ------------------------------------------------------------------------------------------- procedures

tsql::ObjectName Core::procedureName(std::string_view text) {
    std::vector<std::string> parts(1);
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '[' || c == '"') {
            const char close = c == '[' ? ']' : '"';
            for (++i; i < text.size() && (text[i] != close || text.substr(i + 1, 1) == std::string(1, close));
                 ++i) {
                parts.back() += text[i];
                i += text[i] == close ? 1 : 0;
            }
        } else if (c == '.') {
            parts.emplace_back();
        } else if (c == ';') {
            // The number of a procedure in a group, which is always 1.
            break;
        } else {
            parts.back() += c;
        }
    }
    tsql::ObjectName name;
    name.name = trimRight(trimLeft(parts.back()));
    name.schema = parts.size() > 1 ? parts[parts.size() - 2] : std::string();
    name.database = parts.size() > 2 ? parts[parts.size() - 3] : std::string();
    return name;
}

std::vector<Core::Argument> Core::argumentsOf(const tsql::ExecuteStatement& statement) {
    std::vector<Argument> arguments;
    for (const tsql::ExecuteArgument& node : statement.arguments) {
        Argument argument;
        argument.name = node.name;
        argument.output = node.output;
        if (node.value->kind == tsql::ExprKind::Default) {
            argument.byDefault = true;
        } else {
            argument.value = evaluate(*node.value, &argument.type);
        }
        if (node.output && node.value->kind == tsql::ExprKind::Variable) {
            const Variable* target = variable(tsql::as<tsql::VariableExpr>(*node.value).name);
            if (target != nullptr) {
                argument.slot = target->slot;
                argument.slotType = target->type;
            }
        }
        arguments.push_back(std::move(argument));
    }
    return arguments;
}

void Core::runExecute(const tsql::ExecuteStatement& statement) {
    tsql::ObjectName name = statement.procedure;
    if (!statement.procedureVariable.empty()) {
        const Variable* found = variable(statement.procedureVariable);
        if (found == nullptr) {
            raise(137, {statement.procedureVariable});
        }
        const Value& value = m_frame->values[static_cast<std::size_t>(found->slot)];
        name = procedureName(isNull(value) ? std::string() : displayText(value, found->type));
    }
    std::vector<Argument> arguments = argumentsOf(statement);
    const int status = callProcedure(name, arguments);
    if (m_frame->depth == 0 && m_sink != nullptr) {
        m_sink->procedureDone(status);
    }
    for (const Argument& argument : arguments) {
        if (argument.slot >= 0) {
            m_frame->values[static_cast<std::size_t>(argument.slot)] =
                convert(argument.result, argument.resultType, argument.slotType, 0, settings);
        }
    }
    if (!statement.returnVariable.empty()) {
        const Variable* target = variable(statement.returnVariable);
        if (target == nullptr || target->table) {
            raise(137, {statement.returnVariable});
        }
        m_frame->values[static_cast<std::size_t>(target->slot)] =
            convert(Value(std::int64_t{status}), plainType(TypeId::Int), target->type);
    }
}

int Core::callProcedure(const tsql::ObjectName& name, std::vector<Argument>& arguments) {
    if (sameName(name.name, "sp_executesql")) {
        executeSql(arguments);
        return 0;
    }
    const bool ownDatabase = name.database.empty() ? sameName(m_database, databaseName())
                                                   : sameName(name.database, databaseName());
    const bool ownSchema = name.schema.empty() || sameName(name.schema, "dbo");
    std::shared_ptr<const Module> module =
        ownDatabase && ownSchema ? m_schema->findModule(name.name) : nullptr;
    if (!module || module->kind != ObjectKind::Procedure) {
        module = findSystemProcedure(name.name);
    }
    if (!module) {
        raise(2812, {dotted(name)});
    }
    // The outermost call is whole or nothing, also one that stands in a text that a client or a batch runs.
    if (m_unitDepth > 0) {
        return callModule(*module, arguments);
    }
    m_raisedInCall = false;
    UnitOfWork unit(*this, writesAnything(name), true);
    if (const auto fresh = module->system ? module : m_schema->findModule(name.name)) {
        module = fresh;
    }
    const int status = callModule(*module, arguments);
    if (!m_raisedInCall) {
        unit.commit();
    }
    m_raisedInCall = false;
    return status;
}

bool Core::writesAnything(const tsql::ObjectName& procedure) const {
    return procedureWrites(*m_schema, procedure.name);
}

void Core::bindArguments(const std::vector<tsql::Parameter>& parameters, const std::string& procedure,
                         std::vector<Argument>& arguments, Frame& frame, std::vector<int>& positions) {
    if (parameters.empty() && !arguments.empty()) {
        raise(8146, {procedure});
    }
    if (arguments.size() > parameters.size()) {
        raise(8144, {procedure});
    }
    std::vector<bool> given(parameters.size(), false);
    positions.assign(arguments.size(), -1);
    bool named = false;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::size_t target = i;
        if (!arguments[i].name.empty()) {
            named = true;
            const auto found =
                std::find_if(parameters.begin(), parameters.end(),
                             [&](const tsql::Parameter& p) { return sameName(p.name, arguments[i].name); });
            if (found == parameters.end()) {
                raise(8145, {arguments[i].name, procedure});
            }
            target = static_cast<std::size_t>(found - parameters.begin());
        } else if (named) {
            raise(119, {std::to_string(i + 1)});
        }
        if (given[target]) {
            raise(8143, {parameters[target].name});
        }
        given[target] = true;
        if (arguments[i].output && !parameters[target].output) {
            raise(8162, {parameters[target].name});
        }
        positions[i] = static_cast<int>(target);
        if (arguments[i].byDefault) {
            given[target] = false;
            continue;
        }
        const SqlType& type = frame.module->types[target];
        if (!isNull(arguments[i].value)) {
            checkConversion(arguments[i].type, type, false);
        }
        frame.values[target] = convert(arguments[i].value, arguments[i].type, type, 0, settings);
    }
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        if (given[i]) {
            continue;
        }
        if (!parameters[i].defaultValue) {
            raise(201, {procedure, parameters[i].name});
        }
        frame.values[i] = parameterDefault(parameters[i], frame.module->types[i]);
    }
}

Value Core::parameterDefault(const tsql::Parameter& parameter, const SqlType& type) {
    Binder binder(*this);
    Plan plan = binder.scalarAs(*parameter.defaultValue, type);
    return fetchAll(plan).front().front();
}

int Core::callModule(const Module& module, std::vector<Argument>& arguments) {
    if (m_frame->depth >= kMaxNesting) {
        raise(217);
    }
    Compiled& compiled = compiledModule(module);
    const std::vector<tsql::Parameter>& parameters = module.procedure().parameters;
    Frame frame;
    frame.module = &compiled;
    frame.isProcedure = true;
    frame.values.resize(compiled.types.size());
    std::vector<int> positions;
    try {
        bindArguments(parameters, module.name, arguments, frame, positions);
    } catch (SqlError& error) {
        // Faults of a call are reported by the procedure that was called.
        if (!error.placed) {
            error.message().procedure = module.name;
            error.message().line = 0;
            error.placed = true;
        }
        throw;
    }
    const int transactions = m_tranCount;
    runFrame(frame);
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const auto at = static_cast<std::size_t>(positions[i]);
        arguments[i].result = frame.values[at];
        arguments[i].resultType = compiled.types[at];
    }
    if (m_tranCount != transactions && m_tryDepth == 0) {
        ServerMessage message =
            serverMessage(266, {std::to_string(transactions), std::to_string(m_tranCount)});
        message.procedure = module.name;
        send(message);
    }
    return frame.returnStatus;
}

Value Core::callFunction(std::int32_t objectId, sqlite3_value** arguments, int count) {
    const auto module = std::dynamic_pointer_cast<const Module>(m_schema->findById(objectId));
    if (!module) {
        raise(208, {"function"});
    }
    Compiled& compiled = compiledModule(*module);
    Frame frame;
    frame.module = &compiled;
    frame.isFunction = true;
    frame.hasResultType = true;
    frame.resultType = resolveType(module->function().returnType, 0);
    frame.values.resize(compiled.types.size());
    for (int i = 0; i < count; ++i) {
        frame.values[static_cast<std::size_t>(i)] =
            readValue(arguments[i], compiled.types[static_cast<std::size_t>(i)]);
    }
    runFrame(frame);
    return frame.functionResult;
}

// ------------------------------------------------------------------------------------------ dynamic SQL

void Core::runExecuteText(const tsql::ExecuteTextStatement& statement) {
    const Value text = evaluateAs(*statement.text, textType(TypeId::NVarChar, -1));
    if (!isNull(text)) {
        runDynamic(std::get<std::string>(text), nullptr, nullptr);
    }
}

void Core::runDynamic(const std::string& text, const std::vector<tsql::Parameter>* declarations,
                      std::vector<Argument>* arguments) {
    std::string key;
    for (std::size_t i = 0; declarations != nullptr && i < declarations->size(); ++i) {
        key += (*declarations)[i].name + " " + typeName(resolveType((*declarations)[i].type, 1)) + ",";
    }
    Compiled& compiled = compiledBatch(text, declarations, key + "\n" + text);
    Frame frame;
    frame.module = &compiled;
    frame.values.resize(compiled.types.size());
    std::vector<int> positions;
    if (arguments != nullptr && declarations != nullptr) {
        bindArguments(*declarations, "sp_executesql", *arguments, frame, positions);
    }
    runFrame(frame);
    for (std::size_t i = 0; i < positions.size(); ++i) {
        const auto at = static_cast<std::size_t>(positions[i]);
        (*arguments)[i].result = frame.values[at];
        (*arguments)[i].resultType = compiled.types[at];
    }
}

void Core::executeSql(std::vector<Argument>& arguments) {
    if (arguments.empty() || (!arguments.front().name.empty() && !sameName(arguments.front().name, "@stmt") &&
                              !sameName(arguments.front().name, "@statement"))) {
        raise(201, {"sp_executesql", "@statement"});
    }
    const auto textOf = [&](const Argument& argument) {
        if (!isText(argument.type)) {
            raise(214, {"@statement", "ntext/nchar/nvarchar"});
        }
        return isNull(argument.value) ? std::string() : std::get<std::string>(argument.value);
    };
    const std::string text = textOf(arguments.front());
    std::vector<tsql::Parameter> declarations;
    if (arguments.size() > 1) {
        try {
            declarations = tsql::parseParameters(textOf(arguments[1]));
        } catch (const tsql::SyntaxError& error) {
            rethrowSyntax(error);
        }
    }
    std::vector<Argument> rest;
    for (std::size_t i = 2; i < arguments.size(); ++i) {
        rest.push_back(arguments[i]);
    }
    try {
        runDynamic(text, &declarations, &rest);
    } catch (SqlError& error) {
        if (error.number() == 201) {
            const std::string& name = error.message().text;
            const std::size_t at = name.find('@');
            raise(8178, {text.substr(0, 100), name.substr(at, name.find('\'', at) - at)});
        }
        throw;
    }
    for (std::size_t i = 2; i < arguments.size(); ++i) {
        arguments[i].result = rest[i - 2].result;
        arguments[i].resultType = rest[i - 2].resultType;
    }
}

std::vector<Row> Core::executeForRows(const tsql::Statement& statement, std::size_t width,
                                      std::vector<SqlType>& types) {
    RowCollector collector(*m_sink, width);
    ResultSink* const outer = std::exchange(m_sink, &collector);
    try {
        if (statement.kind == tsql::StatementKind::Execute) {
            runExecute(tsql::as<tsql::ExecuteStatement>(statement));
        } else {
            runExecuteText(tsql::as<tsql::ExecuteTextStatement>(statement));
        }
    } catch (...) {
        m_sink = outer;
        throw;
    }
    m_sink = outer;
    types = collector.types;
    return std::move(collector.rows);
}

}  // namespace magdb
