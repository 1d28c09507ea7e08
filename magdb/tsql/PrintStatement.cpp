#include "tsql/Writer.h"

// Statements other than definitions.

namespace magdb::tsql {

namespace {

constexpr std::string_view kAssign[] = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^="};

std::string_view assignText(AssignOp op) {
    return kAssign[static_cast<std::size_t>(op)];
}

}  // namespace

void Writer::statements(const StatementList& list) {
    for (const StatementPtr& entry : list)
        statement(*entry);
}

void Writer::statement(const Statement& node) {
    switch (node.kind) {
        case StatementKind::Select:
            return query(*as<SelectStatement>(node).query);
        case StatementKind::Insert:
            return insert(as<InsertStatement>(node));
        case StatementKind::Update:
            return update(as<UpdateStatement>(node));
        case StatementKind::Delete:
            return remove(as<DeleteStatement>(node));
        case StatementKind::DeclareVariables:
            return declare(as<DeclareVariablesStatement>(node));
        case StatementKind::SetOption:
            return setOption(as<SetOptionStatement>(node));
        case StatementKind::Execute:
            return execute(as<ExecuteStatement>(node));
        case StatementKind::Transaction:
            return transaction(as<TransactionStatement>(node));
        case StatementKind::RaiseError:
            return raise(as<RaiseErrorStatement>(node));
        case StatementKind::FetchCursor:
            return fetch(as<FetchCursorStatement>(node));
        case StatementKind::Block:
        case StatementKind::If:
        case StatementKind::While:
        case StatementKind::Break:
        case StatementKind::Continue:
        case StatementKind::Return:
        case StatementKind::TryCatch:
            return flow(node);
        case StatementKind::CreateTable:
        case StatementKind::AlterTable:
        case StatementKind::CreateIndex:
        case StatementKind::DropIndex:
        case StatementKind::DropObject:
        case StatementKind::CreateView:
        case StatementKind::CreateProcedure:
        case StatementKind::CreateFunction:
        case StatementKind::Principal:
        case StatementKind::Permission:
            return definition(node);
        default:
            return simpleStatement(node);
    }
}

void Writer::flow(const Statement& node) {
    if (node.kind == StatementKind::Block) {
        open("block");
        statements(as<BlockStatement>(node).body);
    } else if (node.kind == StatementKind::If) {
        const auto& branch = as<IfStatement>(node);
        open("if");
        expr(*branch.condition);
        statement(*branch.then);
        if (branch.otherwise)
            statement(*branch.otherwise);
    } else if (node.kind == StatementKind::While) {
        open("while");
        expr(*as<WhileStatement>(node).condition);
        statement(*as<WhileStatement>(node).body);
    } else if (node.kind == StatementKind::TryCatch) {
        open("try");
        statements(as<TryCatchStatement>(node).tryBody);
        open("catch");
        statements(as<TryCatchStatement>(node).catchBody);
        close();
    } else if (node.kind == StatementKind::Return) {
        open("return");
        optional(as<ReturnStatement>(node).value);
    } else {
        open(node.kind == StatementKind::Break ? "break" : "continue");
    }
    close();
}

void Writer::simpleStatement(const Statement& node) {
    switch (node.kind) {
        case StatementKind::DeclareCursor: {
            const auto& cursor = as<DeclareCursorStatement>(node);
            open("declare-cursor");
            atom(cursor.name);
            names("options", cursor.options);
            query(*cursor.query);
            break;
        }
        case StatementKind::SetVariable: {
            const auto& set = as<SetVariableStatement>(node);
            open("set");
            atom(assignText(set.op));
            atom(set.variable);
            expr(*set.value);
            break;
        }
        case StatementKind::Truncate:
            open("truncate");
            object(as<TruncateStatement>(node).table);
            break;
        case StatementKind::ExecuteText:
            open("exec-text");
            expr(*as<ExecuteTextStatement>(node).text);
            break;
        case StatementKind::Throw:
            open("throw");
            optional(as<ThrowStatement>(node).number);
            optional(as<ThrowStatement>(node).message);
            optional(as<ThrowStatement>(node).state);
            break;
        case StatementKind::Print:
            open("print");
            expr(*as<PrintStatement>(node).value);
            break;
        case StatementKind::Use:
            open("use");
            atom(as<UseStatement>(node).database);
            break;
        default:
            open(node.kind == StatementKind::OpenCursor    ? "open"
                 : node.kind == StatementKind::CloseCursor ? "close"
                                                           : "deallocate");
            atom(as<CursorStatement>(node).name);
    }
    close();
}

void Writer::declare(const DeclareVariablesStatement& s) {
    open("declare");
    for (const VariableDeclaration& variable : s.variables) {
        open(variable.name);
        if (variable.table)
            table(*variable.table);
        else
            type(variable.type);
        optional(variable.value);
        close();
    }
    close();
}

void Writer::setOption(const SetOptionStatement& s) {
    open("set-option");
    for (const std::string& option : s.names)
        text(option);
    if (s.table)
        object(*s.table);
    if (s.on)
        atom(*s.on ? "on" : "off");
    if (!s.value.empty())
        text(s.value);
    optional(s.number);
    close();
}

void Writer::target(const TableTarget& node) {
    open("target");
    if (node.variable.empty())
        object(node.name);
    else
        atom(node.variable);
    names("hints", node.hints);
    close();
}

void Writer::output(const std::optional<OutputClause>& node) {
    if (!node)
        return;
    open("output");
    items(node->items);
    if (node->intoTable) {
        open("into");
        object(*node->intoTable);
        names("columns", node->intoColumns);
        close();
    } else if (!node->intoVariable.empty()) {
        open("into");
        atom(node->intoVariable);
        names("columns", node->intoColumns);
        close();
    }
    close();
}

void Writer::insert(const InsertStatement& s) {
    open("insert");
    with(s.with);
    top(s.top);
    target(s.target);
    names("columns", s.columns);
    output(s.output);
    switch (s.source) {
        case InsertStatement::Source::Values:
            rows(s.rows);
            break;
        case InsertStatement::Source::Query:
            query(*s.query);
            break;
        case InsertStatement::Source::Execute:
            statement(*s.execute);
            break;
        case InsertStatement::Source::DefaultValues:
            atom("default-values");
            break;
    }
    close();
}

void Writer::update(const UpdateStatement& s) {
    open("update");
    with(s.with);
    top(s.top);
    target(s.target);
    for (const SetClause& clause : s.set) {
        open("set");
        atom(assignText(clause.op));
        if (!clause.variable.empty())
            atom(clause.variable);
        if (!clause.column.empty()) {
            std::string whole;
            for (const std::string& part : clause.qualifier)
                whole += part + ".";
            atom(whole + clause.column);
        }
        expr(*clause.value);
        close();
    }
    output(s.output);
    from(s.from);
    child("where", s.where);
    close();
}

void Writer::remove(const DeleteStatement& s) {
    open("delete");
    with(s.with);
    top(s.top);
    target(s.target);
    output(s.output);
    from(s.from);
    child("where", s.where);
    close();
}

void Writer::execute(const ExecuteStatement& s) {
    open("exec");
    field("return", s.returnVariable);
    if (s.procedureVariable.empty())
        object(s.procedure);
    else
        atom(s.procedureVariable);
    for (const ExecuteArgument& argument : s.arguments) {
        if (argument.name.empty() && !argument.output) {
            expr(*argument.value);
            continue;
        }
        open("arg");
        if (!argument.name.empty())
            atom(argument.name);
        expr(*argument.value);
        flag("output", argument.output);
        close();
    }
    close();
}

void Writer::transaction(const TransactionStatement& s) {
    constexpr std::string_view kActions[] = {"begin-tran", "commit", "rollback", "save-tran"};
    open(kActions[static_cast<std::size_t>(s.action)]);
    if (!s.name.empty())
        atom(s.name);
    if (!s.variable.empty())
        atom(s.variable);
    close();
}

void Writer::raise(const RaiseErrorStatement& s) {
    open("raiserror");
    expr(*s.message);
    expr(*s.severity);
    expr(*s.state);
    exprs(s.arguments);
    flag("log", s.log);
    flag("nowait", s.noWait);
    flag("seterror", s.setError);
    close();
}

void Writer::fetch(const FetchCursorStatement& s) {
    constexpr std::string_view kDirections[] = {"next", "prior", "first", "last", "absolute", "relative"};
    open("fetch");
    atom(kDirections[static_cast<std::size_t>(s.direction)]);
    optional(s.position);
    atom(s.name);
    names("into", s.into);
    close();
}

}  // namespace magdb::tsql
