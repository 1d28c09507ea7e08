#include "engine/Core.h"
#include "engine/Text.h"

#include <sqlite3.h>

#include <utility>

// Running plans: their cache, their parameters, and the tables that must be filled before.

namespace magdb {

PlanEntry& Core::entry(const void* node) {
    std::unique_ptr<PlanEntry>& found = m_frame->module->plans[node];
    if (!found) {
        found = std::make_unique<PlanEntry>();
    }
    return *found;
}

bool Core::isValid(PlanEntry& entry) {
    if (entry.schemaUid == m_schema->uid && entry.temporaryEpoch == m_temporaryEpoch) {
        return true;
    }
    for (const PlanDependency& dependency : entry.dependencies) {
        std::shared_ptr<const SchemaObject> now;
        if (dependency.name.starts_with("#")) {
            now = temporaryTable(dependency.name);
        }
        if (!now && !(dependency.name.starts_with("#") && !dependency.name.starts_with("##"))) {
            now = m_schema->find(dependency.name);
        }
        if (now.get() != dependency.object) {
            return false;
        }
    }
    entry.schemaUid = m_schema->uid;
    entry.temporaryEpoch = m_temporaryEpoch;
    return true;
}

void Core::collectDependencies(PlanEntry& entry) {
    entry.dependencies.clear();
    const auto take = [&](const Plan& plan) {
        entry.dependencies.insert(entry.dependencies.end(), plan.dependencies.begin(),
                                  plan.dependencies.end());
    };
    const auto takeOutput = [&](const std::optional<OutputPlan>& output) {
        if (output) {
            take(output->query);
        }
    };
    if (const auto* plain = std::get_if<Plan>(&entry.plan)) {
        take(*plain);
    } else if (const auto* select = std::get_if<SelectPlan>(&entry.plan)) {
        take(select->query);
    } else if (const auto* insert = std::get_if<InsertPlan>(&entry.plan)) {
        take(insert->source);
        take(insert->defaults);
        takeOutput(insert->output);
    } else if (const auto* update = std::get_if<UpdatePlan>(&entry.plan)) {
        take(update->source);
        takeOutput(update->output);
    } else if (const auto* remove = std::get_if<DeletePlan>(&entry.plan)) {
        take(remove->source);
        takeOutput(remove->output);
    }
    entry.schemaUid = m_schema->uid;
    entry.temporaryEpoch = m_temporaryEpoch;
}

void Core::checkCancelled() const {
    if (m_cancelled) {
        throw Cancelled();
    }
}

SqliteStatement& Core::start(Plan& plan, const Row* row) {
    fill(plan);
    if (!plan.prepared) {
        try {
            plan.statement = m_connection.prepare(plan.sql);
        } catch (const SqliteError& error) {
            // The limits of SQLite's parser are the only faults that a text made by the binder can have.
            const std::string_view text = error.what();
            if (text.find("too large") != std::string_view::npos ||
                text.find("too many") != std::string_view::npos ||
                text.find("overflow") != std::string_view::npos ||
                text.find("at most") != std::string_view::npos) {
                raise(8623);
            }
            throw;
        }
        plan.prepared = true;
    }
    SqliteStatement& statement = plan.statement;
    statement.reset();
    for (std::size_t i = 0; i < plan.parameters.size(); ++i) {
        const PlanParameter& parameter = plan.parameters[i];
        const int position = static_cast<int>(i) + 1;
        switch (parameter.kind) {
            case PlanParameter::Kind::Variable:
                statement.bind(position, m_frame->values[static_cast<std::size_t>(parameter.index)]);
                break;
            case PlanParameter::Kind::System:
                statement.bind(position, systemValue(parameter.system));
                break;
            case PlanParameter::Kind::Row:
                statement.bind(position, (*row)[static_cast<std::size_t>(parameter.index)]);
                break;
        }
    }
    return statement;
}

bool Core::step(SqliteStatement& statement) {
    try {
        return statement.step();
    } catch (const SqliteError& error) {
        if (pending) {
            const std::exception_ptr cause = std::exchange(pending, nullptr);
            std::rethrow_exception(cause);
        }
        if ((error.code & 0xFF) == SQLITE_INTERRUPT) {
            throw Cancelled();
        }
        if ((error.code & 0xFF) == SQLITE_BUSY) {
            raise(1205, {std::to_string(m_spid)});
        }
        throw;
    }
}

std::vector<Row> Core::fetchAll(Plan& plan, const Row* row) {
    SqliteStatement& statement = start(plan, row);
    const SqliteReset reset(statement);
    std::vector<Row> rows;
    while (step(statement)) {
        Row values;
        values.reserve(plan.columns.size());
        for (std::size_t i = 0; i < plan.columns.size(); ++i) {
            values.push_back(statement.value(static_cast<int>(i), plan.columns[i].type));
        }
        rows.push_back(std::move(values));
    }
    return rows;
}

Value Core::evaluate(const tsql::Expr& expr, SqlType* type) {
    Plan& found = plan<Plan>(&expr, [&](Binder& binder) { return binder.scalar(expr); });
    SqliteStatement& statement = start(found);
    const SqliteReset reset(statement);
    step(statement);
    if (type != nullptr) {
        *type = found.columns.front().type;
    }
    return statement.value(0, found.columns.front().type);
}

Value Core::evaluateAs(const tsql::Expr& expr, const SqlType& type) {
    SqlType from;
    const Value value = evaluate(expr, &from);
    return convert(value, from, type, 0, settings);
}

bool Core::holds(const tsql::Expr& condition) {
    Plan& found = plan<Plan>(&condition, [&](Binder& binder) { return binder.condition(condition); });
    SqliteStatement& statement = start(found);
    const SqliteReset reset(statement);
    return step(statement) && !statement.isNull(0) && statement.integer(0) != 0;
}

Value Core::variableNow(int slot) {
    return m_frame->values[static_cast<std::size_t>(slot)];
}

Value Core::systemValue(SystemValue value) {
    const auto caught = [&]() { return m_caught.empty() ? nullptr : &m_caught.back(); };
    const auto known = [&](auto take) -> Value {
        const ServerMessage* message = caught();
        return message == nullptr ? Value() : Value(take(*message));
    };
    switch (value) {
        case SystemValue::RowCount:
            return m_rowCount;
        case SystemValue::Error:
            return std::int64_t{m_error};
        case SystemValue::TranCount:
            return std::int64_t{m_tranCount};
        case SystemValue::FetchStatus:
            return std::int64_t{m_fetchStatus};
        case SystemValue::Identity:
            return m_identity ? Value(*m_identity) : Value();
        case SystemValue::ScopeIdentity:
            return m_frame->scopeIdentity ? Value(*m_frame->scopeIdentity) : Value();
        case SystemValue::Now:
        case SystemValue::NowUtc:
            // One moment for the whole statement.
            if (!m_nowKnown) {
                m_now = currentDateTime(false);
                m_nowUtc = currentDateTime(true);
                m_nowKnown = true;
            }
            return value == SystemValue::Now ? m_now : m_nowUtc;
        case SystemValue::Spid:
            return std::int64_t{m_spid};
        case SystemValue::NestLevel:
            return std::int64_t{m_frame->depth};
        case SystemValue::HostName:
            return m_hostName;
        case SystemValue::LoginName:
            return m_loginName;
        case SystemValue::ApplicationName:
            return m_applicationName;
        case SystemValue::DatabaseName:
            return m_database;
        case SystemValue::ProcedureId:
            return std::int64_t{m_frame->module != nullptr ? m_frame->module->objectId : 0};
        case SystemValue::XactState:
            return std::int64_t{m_tranCount == 0 ? 0 : (m_doomed ? -1 : 1)};
        case SystemValue::ErrorNumber:
            return known([](const ServerMessage& m) { return std::int64_t{m.number}; });
        case SystemValue::ErrorSeverity:
            return known([](const ServerMessage& m) { return std::int64_t{m.severity}; });
        case SystemValue::ErrorState:
            return known([](const ServerMessage& m) { return std::int64_t{m.state}; });
        case SystemValue::ErrorLine:
            return known([](const ServerMessage& m) { return std::int64_t{m.line}; });
        case SystemValue::ErrorMessage:
            return known([](const ServerMessage& m) { return m.text; });
        case SystemValue::ErrorProcedure: {
            const ServerMessage* message = caught();
            return message == nullptr || message->procedure.empty() ? Value() : Value(message->procedure);
        }
        case SystemValue::DateFirst:
            return std::int64_t{settings.firstWeekday};
        case SystemValue::CursorRows:
            return m_cursorRows;
        case SystemValue::LockTimeout:
            return std::int64_t{m_options.lockTimeout};
        case SystemValue::TextSize:
            return std::int64_t{m_options.textSize};
        case SystemValue::Options:
            return std::int64_t{5432 | (m_options.noCount ? 512 : 0) | (m_options.xactAbort ? 16384 : 0)};
    }
    return {};
}

// --------------------------------------------------------------------------------------------- prefills

std::string Core::prefillTable(const std::string& hint) {
    const std::string key = hint.starts_with("call") ? hint + " " + std::to_string(m_frame->depth) : hint;
    std::string& name = m_prefillTables[key];
    if (name.empty()) {
        name = "tmp." + quoted("fill_" + std::to_string(++m_prefillCount));
    }
    return name;
}

void Core::fill(Plan& plan) {
    for (const Prefill& prefill : plan.prefills) {
        if (prefill.view != nullptr) {
            fillFromView(prefill);
        } else {
            fillFromFunction(prefill);
        }
    }
}

void Core::fillFromView(const Prefill& prefill) {
    Table table;
    table.physical = prefill.physical;
    table.columns = prefill.view->columns;
    if (m_madePrefills.insert(prefill.physical).second) {
        m_connection.execute("DROP TABLE IF EXISTS " + prefill.physical);
        m_connection.execute(createTableSql(table));
    } else {
        m_connection.execute("DELETE FROM " + prefill.physical);
    }
    std::string marks;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        marks += i == 0 ? "?" : ",?";
    }
    SqliteStatement insert =
        m_connection.prepare("INSERT INTO " + prefill.physical + " VALUES(" + marks + ")");
    prefill.view->fill(*this, [&](std::vector<Value> values) {
        if (values.size() != table.columns.size()) {
            throw std::logic_error("a row of " + prefill.view->name + " has another width than its view");
        }
        for (std::size_t i = 0; i < values.size(); ++i) {
            insert.bind(static_cast<int>(i) + 1, values[i]);
        }
        insert.step();
        insert.reset();
    });
}

void Core::fillFromFunction(const Prefill& prefill) {
    const tsql::CreateFunctionStatement& definition = prefill.function->function();
    const std::vector<Row> rows = fetchAll(*prefill.arguments);
    Compiled& module = compiledModule(*prefill.function);
    Frame frame;
    frame.module = &module;
    frame.isFunction = true;
    frame.values.resize(module.types.size());
    for (std::size_t i = 0; i < definition.parameters.size(); ++i) {
        frame.values[i] = rows.front()[i];
    }
    const Variable* result = module.find(definition.tableVariable);
    runFrame(frame, [&] {
        Table table(*result->table);
        table.physical = prefill.physical;
        if (m_madePrefills.insert(prefill.physical).second) {
            m_connection.execute("DROP TABLE IF EXISTS " + prefill.physical);
            m_connection.execute(createTableSql(table));
        } else {
            m_connection.execute("DELETE FROM " + prefill.physical);
        }
        m_connection.execute("INSERT INTO " + prefill.physical + " SELECT * FROM " + result->table->physical);
    });
}

}  // namespace magdb
