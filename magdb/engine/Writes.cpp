#include "engine/Writes.h"

#include "engine/SystemCatalogue.h"
#include "engine/Text.h"

#include <set>
#include <string>

namespace magdb {

namespace {

class WriteFinder {
public:
    explicit WriteFinder(const Schema& schema) : m_schema(schema) {}

    bool procedure(std::string_view name) {
        if (!m_seen.insert(nameKey(name)).second) {
            return false;
        }
        std::shared_ptr<const Module> module = m_schema.findModule(name);
        if (!module || module->kind != ObjectKind::Procedure) {
            module = findSystemProcedure(name);
        }
        return !module || list(module->procedure().body);
    }

private:
    static bool isLocal(std::string_view name) {
        return name.starts_with("@") || (name.starts_with("#") && !name.starts_with("##"));
    }

    static bool isLocal(const tsql::TableTarget& target) {
        return !target.variable.empty() || isLocal(target.name.name);
    }

    /// UPDATE and DELETE may name an alias; then the table behind it decides.
    static bool isLocalTarget(const tsql::TableTarget& target,
                              const std::vector<tsql::TableSourcePtr>& from) {
        for (const tsql::TableSourcePtr& source : from) {
            if (const tsql::TableSource* found = findAlias(*source, target.name.name)) {
                return found->kind == tsql::TableSourceKind::Variable ||
                       (found->kind == tsql::TableSourceKind::Named &&
                        isLocal(tsql::as<tsql::NamedTable>(*found).name.name));
            }
        }
        return isLocal(target);
    }

    static const tsql::TableSource* findAlias(const tsql::TableSource& source, std::string_view alias) {
        if (source.kind == tsql::TableSourceKind::Join) {
            const auto& join = tsql::as<tsql::JoinTable>(source);
            const tsql::TableSource* found = findAlias(*join.left, alias);
            return found != nullptr ? found : findAlias(*join.right, alias);
        }
        return !source.alias.empty() && sameName(source.alias, alias) ? &source : nullptr;
    }

    static bool intoDatabase(const tsql::QueryBody& body) {
        if (body.kind == tsql::QueryBodyKind::SetOperation) {
            return intoDatabase(*tsql::as<tsql::SetOperationBody>(body).left);
        }
        const auto& select = tsql::as<tsql::SelectBody>(body);
        return select.into && !isLocal(select.into->name);
    }

    static bool intoDatabase(const std::optional<tsql::OutputClause>& output) {
        return output && output->intoTable && !isLocal(output->intoTable->name);
    }

    bool list(const tsql::StatementList& statements) {
        for (const tsql::StatementPtr& statement : statements) {
            if (statement && one(*statement)) {
                return true;
            }
        }
        return false;
    }

    bool one(const tsql::Statement& statement) {
        using tsql::as;
        using Kind = tsql::StatementKind;
        switch (statement.kind) {
            case Kind::Block:
                return list(as<tsql::BlockStatement>(statement).body);
            case Kind::If: {
                const auto& node = as<tsql::IfStatement>(statement);
                return one(*node.then) || (node.otherwise && one(*node.otherwise));
            }
            case Kind::While:
                return one(*as<tsql::WhileStatement>(statement).body);
            case Kind::TryCatch:
                return list(as<tsql::TryCatchStatement>(statement).tryBody) ||
                       list(as<tsql::TryCatchStatement>(statement).catchBody);
            case Kind::Select:
                return intoDatabase(*as<tsql::SelectStatement>(statement).query->body);
            case Kind::Insert: {
                const auto& node = as<tsql::InsertStatement>(statement);
                return !isLocal(node.target) || intoDatabase(node.output) ||
                       (node.execute && one(*node.execute));
            }
            case Kind::Update: {
                const auto& node = as<tsql::UpdateStatement>(statement);
                return !isLocalTarget(node.target, node.from) || intoDatabase(node.output);
            }
            case Kind::Delete: {
                const auto& node = as<tsql::DeleteStatement>(statement);
                return !isLocalTarget(node.target, node.from) || intoDatabase(node.output);
            }
            case Kind::Truncate:
                return !isLocal(as<tsql::TruncateStatement>(statement).table.name);
            case Kind::CreateTable:
                return !isLocal(as<tsql::CreateTableStatement>(statement).name.name);
            case Kind::AlterTable:
                return !isLocal(as<tsql::AlterTableStatement>(statement).name.name);
            case Kind::CreateIndex:
                return !isLocal(as<tsql::CreateIndexStatement>(statement).table.name);
            case Kind::DropIndex:
                return !isLocal(as<tsql::DropIndexStatement>(statement).table.name);
            case Kind::DropObject:
                for (const tsql::ObjectName& name : as<tsql::DropObjectStatement>(statement).names) {
                    if (!isLocal(name.name)) {
                        return true;
                    }
                }
                return false;
            case Kind::Execute: {
                const auto& node = as<tsql::ExecuteStatement>(statement);
                return node.procedure.name.empty() || procedure(node.procedure.name);
            }
            case Kind::ExecuteText:
            case Kind::Transaction:
            case Kind::CreateView:
            case Kind::CreateProcedure:
            case Kind::CreateFunction:
                return true;
            default:
                return false;
        }
    }

    const Schema& m_schema;
    std::set<std::string> m_seen;
};

}  // namespace

bool procedureWrites(const Schema& schema, std::string_view name) {
    return WriteFinder(schema).procedure(name);
}

}  // namespace magdb
