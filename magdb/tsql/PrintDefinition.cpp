#include "tsql/Writer.h"

// Definitions: tables, modules, logins, permissions.

namespace magdb::tsql {

void Writer::definition(const Statement& node) {
    switch (node.kind) {
        case StatementKind::CreateTable:
            open("create-table");
            object(as<CreateTableStatement>(node).name);
            table(as<CreateTableStatement>(node).table);
            return close();
        case StatementKind::AlterTable:
            return alterTable(as<AlterTableStatement>(node));
        case StatementKind::CreateIndex:
            return index(as<CreateIndexStatement>(node));
        case StatementKind::DropIndex:
            open("drop-index");
            flag("if-exists", as<DropIndexStatement>(node).ifExists);
            atom(as<DropIndexStatement>(node).name);
            object(as<DropIndexStatement>(node).table);
            return close();
        case StatementKind::DropObject:
            return drop(as<DropObjectStatement>(node));
        case StatementKind::CreateView:
            return view(as<CreateViewStatement>(node));
        case StatementKind::CreateProcedure:
            return procedure(as<CreateProcedureStatement>(node));
        case StatementKind::CreateFunction:
            return createFunction(as<CreateFunctionStatement>(node));
        case StatementKind::Principal:
            return principal(as<PrincipalStatement>(node));
        default:
            return permission(as<PermissionStatement>(node));
    }
}

void Writer::table(const TableDefinition& node) {
    for (const ColumnDefinition& column : node.columns)
        columnDefinition(column);
    for (const TableConstraint& entry : node.constraints)
        constraint(entry);
}

void Writer::columnDefinition(const ColumnDefinition& node) {
    open("column");
    atom(node.name);
    if (node.computed) {
        child("computed", node.computed);
        flag("persisted", node.persisted);
    } else {
        type(node.type);
    }
    field("collate", node.collation);
    if (node.nullable)
        atom(*node.nullable ? "null" : "not-null");
    if (node.identity)
        atom("identity=" + std::to_string(node.identitySeed) + "," + std::to_string(node.identityIncrement));
    flag("rowguid", node.rowGuid);
    child("default", node.defaultValue);
    field("default-name", node.defaultConstraint);
    flag("with-values", node.withValues);
    for (const TableConstraint& entry : node.constraints)
        constraint(entry);
    close();
}

void Writer::constraint(const TableConstraint& node) {
    constexpr std::string_view kKinds[] = {"primary-key", "unique", "check", "foreign-key", "default-for"};
    constexpr std::string_view kActions[] = {"no-action", "cascade", "set-null", "set-default"};
    open(kKinds[static_cast<std::size_t>(node.kind)]);
    field("name", node.name);
    if (node.clustered)
        atom(*node.clustered ? "clustered" : "nonclustered");
    keys("columns", node.columns);
    optional(node.expr);
    if (node.kind == TableConstraint::Kind::ForeignKey) {
        open("references");
        object(node.referenced);
        names("columns", node.referencedColumns);
        close();
        if (node.onDelete != ReferentialAction::NoAction)
            field("on-delete", kActions[static_cast<std::size_t>(node.onDelete)]);
        if (node.onUpdate != ReferentialAction::NoAction)
            field("on-update", kActions[static_cast<std::size_t>(node.onUpdate)]);
    }
    close();
}

void Writer::keys(std::string_view head, const std::vector<IndexColumn>& columns) {
    if (columns.empty())
        return;
    open(head);
    for (const IndexColumn& column : columns) {
        atom(column.name);
        flag("desc", column.descending);
    }
    close();
}

void Writer::alterTable(const AlterTableStatement& s) {
    constexpr std::string_view kActions[] = {"add", "drop-column", "drop-constraint", "alter-column"};
    open("alter-table");
    object(s.name);
    open(kActions[static_cast<std::size_t>(s.action)]);
    flag("if-exists", s.ifExists);
    table(s.added);
    for (const std::string& name : s.dropped)
        atom(name);
    close();
    close();
}

void Writer::index(const CreateIndexStatement& s) {
    open("create-index");
    flag("unique", s.unique);
    flag("clustered", s.clustered);
    atom(s.name);
    object(s.table);
    keys("columns", s.columns);
    names("include", s.include);
    child("where", s.where);
    close();
}

void Writer::drop(const DropObjectStatement& s) {
    constexpr std::string_view kTypes[] = {"table", "view", "procedure", "function"};
    open("drop");
    atom(kTypes[static_cast<std::size_t>(s.type)]);
    flag("if-exists", s.ifExists);
    for (const ObjectName& name : s.names)
        object(name);
    close();
}

void Writer::view(const CreateViewStatement& s) {
    open(s.alter ? "alter-view" : "create-view");
    object(s.name);
    names("columns", s.columns);
    flag("schemabinding", s.schemaBinding);
    query(*s.query);
    close();
}

void Writer::parameters(const std::vector<Parameter>& list) {
    for (const Parameter& parameter : list) {
        open(parameter.name);
        type(parameter.type);
        child("default", parameter.defaultValue);
        flag("output", parameter.output);
        flag("readonly", parameter.readOnly);
        close();
    }
}

void Writer::procedure(const CreateProcedureStatement& s) {
    open(s.alter ? "alter-procedure" : "create-procedure");
    object(s.name);
    parameters(s.parameters);
    for (const std::string& option : s.options)
        field("option", option);
    open("body");
    statements(s.body);
    close();
    close();
}

void Writer::createFunction(const CreateFunctionStatement& s) {
    using Returns = CreateFunctionStatement::Returns;
    open(s.alter ? "alter-function" : "create-function");
    object(s.name);
    parameters(s.parameters);
    open("returns");
    if (s.returns == Returns::Scalar) {
        type(s.returnType);
    } else {
        atom("table");
        if (s.returns == Returns::Table)
            atom(s.tableVariable);
        table(s.table);
    }
    close();
    for (const std::string& option : s.options)
        field("option", option);
    if (s.query)
        query(*s.query);
    if (!s.body.empty()) {
        open("body");
        statements(s.body);
        close();
    }
    close();
}

void Writer::principal(const PrincipalStatement& s) {
    constexpr std::string_view kActions[] = {"create", "alter", "drop", "add-member", "drop-member"};
    constexpr std::string_view kTypes[] = {"login", "user", "role"};
    open(kActions[static_cast<std::size_t>(s.action)]);
    atom(kTypes[static_cast<std::size_t>(s.type)]);
    flag("if-exists", s.ifExists);
    atom(s.name);
    if (s.password) {
        open("password");
        text(*s.password);
        close();
    }
    field("for-login", s.login);
    field("member", s.member);
    close();
}

void Writer::permission(const PermissionStatement& s) {
    constexpr std::string_view kActions[] = {"grant", "deny", "revoke"};
    open(kActions[static_cast<std::size_t>(s.action)]);
    for (const std::string& permission : s.permissions)
        text(permission);
    field("class", s.securableClass);
    if (s.securable) {
        open("on");
        object(*s.securable);
        close();
    }
    names("to", s.principals);
    close();
}

}  // namespace magdb::tsql
