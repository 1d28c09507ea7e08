#include "engine/Core.h"
#include "engine/Text.h"

#include <utility>

// The interpreter: control of flow, variables, and the way of an error.

namespace magdb {

namespace {

/// True for SELECT ... INTO, which stands in the first query of a UNION.
bool makesTable(const tsql::QueryBody& body) {
    return body.kind == tsql::QueryBodyKind::SetOperation
               ? makesTable(*tsql::as<tsql::SetOperationBody>(body).left)
               : tsql::as<tsql::SelectBody>(body).into.has_value();
}

/// True for statements that change rows or definitions and do nothing else.
bool changesDatabase(tsql::StatementKind kind) {
    using Kind = tsql::StatementKind;
    switch (kind) {
        case Kind::Insert:
        case Kind::Update:
        case Kind::Delete:
        case Kind::Truncate:
        case Kind::CreateTable:
        case Kind::AlterTable:
        case Kind::CreateIndex:
        case Kind::DropIndex:
        case Kind::DropObject:
        case Kind::CreateView:
        case Kind::CreateProcedure:
        case Kind::CreateFunction:
            return true;
        default:
            return false;
    }
}

}  // namespace

Flow Core::runList(const tsql::StatementList& statements) {
    for (const tsql::StatementPtr& statement : statements) {
        const Flow flow = runStatement(*statement);
        if (flow != Flow::Next) {
            return flow;
        }
    }
    return Flow::Next;
}

Flow Core::runStatement(const tsql::Statement& statement) {
    checkCancelled();
    m_nowKnown = false;
    try {
        try {
            if (isSkipped(statement)) {
                return Flow::Next;
            }
            if (m_options.implicitTransactions && m_tranCount == 0 && opensTransaction(statement)) {
                beginTransaction();
            }
            const Flow flow = dispatch(statement);
            const bool keepsError = statement.kind == tsql::StatementKind::RaiseError ||
                                    statement.kind == tsql::StatementKind::Execute ||
                                    statement.kind == tsql::StatementKind::If ||
                                    statement.kind == tsql::StatementKind::While ||
                                    statement.kind == tsql::StatementKind::Block ||
                                    statement.kind == tsql::StatementKind::TryCatch;
            if (!keepsError) {
                m_error = 0;
            }
            return flow;
        } catch (const SqliteError& error) {
            raise(40001, {error.what()});
        }
    } catch (SqlError& error) {
        place(error, statement);
        m_error = error.number();
        // Outside procedures and TRY, an error that ends its statement alone lets the batch go on.
        const bool container =
            statement.kind == tsql::StatementKind::If || statement.kind == tsql::StatementKind::While ||
            statement.kind == tsql::StatementKind::Block || statement.kind == tsql::StatementKind::TryCatch;
        if (container || m_frame->depth > 0 || m_frame->isFunction || insideTry() || m_options.xactAbort ||
            endsBatch(error.number(), error.message().severity) || error.binding ||
            statement.kind == tsql::StatementKind::Throw) {
            throw;
        }
        m_rowCount = 0;
        send(error.message());
        // Ends this statement, else the next one's end would carry the error.
        if (m_sink != nullptr) {
            m_sink->statementDone(std::nullopt, false, false);
        }
        return Flow::Next;
    }
}

bool Core::isSkipped(const tsql::Statement& statement) const {
    using Kind = tsql::StatementKind;
    if (m_options.noExec) {
        return statement.kind != Kind::SetOption;
    }
    if (!m_options.formatOnly) {
        return false;
    }
    // Only what describes results runs, without its rows.
    return statement.kind == Kind::Select
               ? makesTable(*tsql::as<tsql::SelectStatement>(statement).query->body)
               : statement.kind == Kind::Transaction || changesDatabase(statement.kind);
}

bool Core::opensTransaction(const tsql::Statement& statement) {
    using Kind = tsql::StatementKind;
    if (statement.kind == Kind::Select) {
        const tsql::QueryBody& body = *tsql::as<tsql::SelectStatement>(statement).query->body;
        return body.kind != tsql::QueryBodyKind::Select || !tsql::as<tsql::SelectBody>(body).from.empty();
    }
    return statement.kind == Kind::OpenCursor || statement.kind == Kind::FetchCursor ||
           changesDatabase(statement.kind);
}

Flow Core::dispatch(const tsql::Statement& statement) {
    using tsql::as;
    using Kind = tsql::StatementKind;
    switch (statement.kind) {
        case Kind::Block:
            return runList(as<tsql::BlockStatement>(statement).body);
        case Kind::If:
            return runIf(as<tsql::IfStatement>(statement));
        case Kind::While:
            return runWhile(as<tsql::WhileStatement>(statement));
        case Kind::Break:
            return Flow::Break;
        case Kind::Continue:
            return Flow::Continue;
        case Kind::Return:
            return runReturn(as<tsql::ReturnStatement>(statement));
        case Kind::TryCatch:
            return runTry(as<tsql::TryCatchStatement>(statement));
        case Kind::DeclareVariables:
            runDeclare(as<tsql::DeclareVariablesStatement>(statement));
            break;
        case Kind::DeclareCursor:
            runDeclareCursor(as<tsql::DeclareCursorStatement>(statement));
            break;
        case Kind::SetVariable:
            runSet(as<tsql::SetVariableStatement>(statement));
            break;
        case Kind::SetOption:
            runOption(as<tsql::SetOptionStatement>(statement));
            break;
        case Kind::Select:
            runSelect(as<tsql::SelectStatement>(statement));
            break;
        case Kind::Insert:
            runInsert(as<tsql::InsertStatement>(statement));
            break;
        case Kind::Update:
            runUpdate(as<tsql::UpdateStatement>(statement));
            break;
        case Kind::Delete:
            runDelete(as<tsql::DeleteStatement>(statement));
            break;
        case Kind::Truncate:
            runTruncate(as<tsql::TruncateStatement>(statement));
            break;
        case Kind::Execute:
            runExecute(as<tsql::ExecuteStatement>(statement));
            break;
        case Kind::ExecuteText:
            runExecuteText(as<tsql::ExecuteTextStatement>(statement));
            break;
        case Kind::Transaction:
            runTransaction(as<tsql::TransactionStatement>(statement));
            break;
        case Kind::RaiseError:
            runRaiseError(as<tsql::RaiseErrorStatement>(statement));
            break;
        case Kind::Throw:
            runThrow(as<tsql::ThrowStatement>(statement));
        case Kind::Print:
            runPrint(as<tsql::PrintStatement>(statement));
            break;
        case Kind::OpenCursor:
        case Kind::CloseCursor:
        case Kind::DeallocateCursor:
            runCursor(as<tsql::CursorStatement>(statement));
            break;
        case Kind::FetchCursor:
            runFetch(as<tsql::FetchCursorStatement>(statement));
            break;
        case Kind::Use:
            runUse(as<tsql::UseStatement>(statement));
            break;
        case Kind::Permission:
            // Every login owns the database, so rights change nothing.
            break;
        case Kind::Principal:
            refuse("logins, users and roles in T-SQL; add logins with magdb add-login");
        default:
            dispatchDefinition(statement);
            break;
    }
    return Flow::Next;
}

void Core::dispatchDefinition(const tsql::Statement& statement) {
    using tsql::as;
    using Kind = tsql::StatementKind;
    if (m_frame->isFunction) {
        refuse("this statement in a function");
    }
    switch (statement.kind) {
        case Kind::CreateTable:
            runCreateTable(as<tsql::CreateTableStatement>(statement));
            break;
        case Kind::AlterTable:
            runAlterTable(as<tsql::AlterTableStatement>(statement));
            break;
        case Kind::CreateIndex:
            runCreateIndex(as<tsql::CreateIndexStatement>(statement));
            break;
        case Kind::DropIndex:
            runDropIndex(as<tsql::DropIndexStatement>(statement));
            break;
        case Kind::DropObject:
            runDrop(as<tsql::DropObjectStatement>(statement));
            break;
        case Kind::CreateView: {
            const auto& node = as<tsql::CreateViewStatement>(statement);
            createModule(node.name, ObjectKind::View, node.alter);
            break;
        }
        case Kind::CreateProcedure: {
            const auto& node = as<tsql::CreateProcedureStatement>(statement);
            createModule(node.name, ObjectKind::Procedure, node.alter);
            break;
        }
        case Kind::CreateFunction: {
            const auto& node = as<tsql::CreateFunctionStatement>(statement);
            const ObjectKind kind = node.returns == tsql::CreateFunctionStatement::Returns::Scalar
                                        ? ObjectKind::ScalarFunction
                                    : node.returns == tsql::CreateFunctionStatement::Returns::InlineTable
                                        ? ObjectKind::InlineFunction
                                        : ObjectKind::TableFunction;
            createModule(node.name, kind, node.alter);
            break;
        }
        default:
            refuse("this statement");
    }
    m_rowCount = 0;
}

Flow Core::runIf(const tsql::IfStatement& statement) {
    bool condition = false;
    try {
        condition = holds(*statement.condition);
    } catch (SqlError& error) {
        place(error, statement);
        throw;
    }
    m_rowCount = 0;
    if (condition) {
        return runStatement(*statement.then);
    }
    return statement.otherwise ? runStatement(*statement.otherwise) : Flow::Next;
}

Flow Core::runWhile(const tsql::WhileStatement& statement) {
    while (holds(*statement.condition)) {
        m_rowCount = 0;
        const Flow flow = runStatement(*statement.body);
        if (flow == Flow::Break) {
            break;
        }
        if (flow == Flow::Return) {
            return flow;
        }
        // What would end the loop may be skipped, so once is enough for a description.
        if (m_options.formatOnly) {
            break;
        }
        checkCancelled();
    }
    m_rowCount = 0;
    return Flow::Next;
}

Flow Core::runTry(const tsql::TryCatchStatement& statement) {
    Frame* const frame = m_frame;
    const std::size_t caught = m_caught.size();
    ++m_tryDepth;
    try {
        const Flow flow = runList(statement.tryBody);
        --m_tryDepth;
        return flow;
    } catch (const SqlError& error) {
        --m_tryDepth;
        m_frame = frame;
        m_caught.resize(caught);
        // Some errors, and all under XACT_ABORT, leave a transaction that can only be rolled back.
        if (m_tranCount > 0 && (m_options.xactAbort || endsBatch(error.number(), error.message().severity))) {
            m_doomed = true;
        }
        m_error = error.number();
        m_caught.push_back(error.message());
    } catch (...) {
        --m_tryDepth;
        throw;
    }
    try {
        const Flow flow = runList(statement.catchBody);
        m_caught.resize(caught);
        return flow;
    } catch (...) {
        m_caught.resize(caught);
        throw;
    }
}

Flow Core::runReturn(const tsql::ReturnStatement& statement) {
    if (m_frame->isFunction) {
        if (statement.value && m_frame->hasResultType) {
            m_frame->functionResult = evaluateAs(*statement.value, m_frame->resultType);
        }
        return Flow::Return;
    }
    if (statement.value) {
        if (!m_frame->isProcedure) {
            raise(178);
        }
        const Value value = evaluateAs(*statement.value, plainType(TypeId::Int));
        m_frame->returnStatus = isNull(value) ? 0 : static_cast<int>(std::get<std::int64_t>(value));
    }
    return Flow::Return;
}

void Core::runDeclare(const tsql::DeclareVariablesStatement& statement) {
    for (const tsql::VariableDeclaration& declared : statement.variables) {
        if (declared.table || !declared.value) {
            continue;
        }
        const Variable* found = variable(declared.name);
        Plan& value = plan<Plan>(&declared, [&](Binder& binder) {
            return binder.assignment(declared.name, tsql::AssignOp::Set, *declared.value);
        });
        SqliteStatement& running = start(value);
        const SqliteReset reset(running);
        step(running);
        m_frame->values[static_cast<std::size_t>(found->slot)] = running.value(0, found->type);
    }
}

void Core::runSet(const tsql::SetVariableStatement& statement) {
    Plan& value = plan<Plan>(&statement, [&](Binder& binder) {
        return binder.assignment(statement.variable, statement.op, *statement.value);
    });
    SqliteStatement& running = start(value);
    const SqliteReset reset(running);
    step(running);
    const Variable* found = variable(statement.variable);
    m_frame->values[static_cast<std::size_t>(found->slot)] = running.value(0, found->type);
    m_rowCount = 1;
}

void Core::runPrint(const tsql::PrintStatement& statement) {
    SqlType type;
    const Value value = evaluate(*statement.value, &type);
    ServerMessage message;
    message.severity = 0;
    message.text = isNull(value) ? std::string(" ") : displayText(value, type);
    message.line = static_cast<int>(statement.pos.line);
    message.procedure = m_frame->module->name;
    m_rowCount = 0;
    m_sink->message(message);
}

void Core::runUse(const tsql::UseStatement& statement) {
    std::string target;
    for (const std::string& known : {databaseName(), std::string("master"), std::string("tempdb")}) {
        if (sameName(known, statement.database)) {
            target = known;
        }
    }
    if (target.empty()) {
        raise(911, {statement.database});
    }
    const std::string before = std::exchange(m_database, target);
    m_sink->databaseChanged(before, target);
    ServerMessage message = serverMessage(5701, {target});
    message.line = static_cast<int>(statement.pos.line);
    m_sink->message(message);
    m_rowCount = 0;
}

/// Binds every statement of a batch before the first one runs, so that a wrong column stops the batch as a
/// whole. Names of objects that do not exist yet are left for their time.
void Core::bindAhead(const tsql::StatementList& statements) {
    using tsql::as;
    if (statements.size() < 2) {
        return;
    }
    for (const tsql::StatementPtr& statement : statements) {
        try {
            switch (statement->kind) {
                case tsql::StatementKind::Select: {
                    const auto& node = as<tsql::SelectStatement>(*statement);
                    plan<SelectPlan>(&node, [&](Binder& binder) { return binder.select(*node.query); });
                    break;
                }
                case tsql::StatementKind::Insert: {
                    const auto& node = as<tsql::InsertStatement>(*statement);
                    if (node.source != tsql::InsertStatement::Source::Execute) {
                        plan<InsertPlan>(&node, [&](Binder& binder) { return binder.insert(node); });
                    }
                    break;
                }
                case tsql::StatementKind::Update: {
                    const auto& node = as<tsql::UpdateStatement>(*statement);
                    plan<UpdatePlan>(&node, [&](Binder& binder) { return binder.update(node); });
                    break;
                }
                case tsql::StatementKind::Delete: {
                    const auto& node = as<tsql::DeleteStatement>(*statement);
                    plan<DeletePlan>(&node, [&](Binder& binder) { return binder.remove(node); });
                    break;
                }
                case tsql::StatementKind::CreateTable:
                case tsql::StatementKind::AlterTable:
                case tsql::StatementKind::DropObject:
                case tsql::StatementKind::Execute:
                case tsql::StatementKind::ExecuteText:
                case tsql::StatementKind::Use:
                    // What follows may mean something else by then.
                    return;
                default:
                    break;
            }
        } catch (SqlError& error) {
            if (error.number() != 208) {
                place(error, *statement);
                error.message().severity = std::max(error.message().severity, 16);
                throw;
            }
            return;
        }
    }
}

}  // namespace magdb
