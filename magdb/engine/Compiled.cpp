#include "engine/Compiled.h"

#include "engine/RowWriter.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

namespace magdb {

PlanEntry::PlanEntry() = default;
PlanEntry::~PlanEntry() = default;

Compiled::Compiled(std::shared_ptr<const tsql::Batch> tree, const tsql::StatementList& statements,
                   std::string moduleName, std::int32_t id, std::string tablePrefix)
    : batch(std::move(tree)),
      body(statements),
      name(std::move(moduleName)),
      objectId(id),
      m_tablePrefix(std::move(tablePrefix)) {}

void Compiled::add(const std::string& variable, Variable value) {
    if (!m_variables.emplace(nameKey(variable), std::move(value)).second) {
        raise(134, {variable});
    }
}

void Compiled::addParameter(const std::string& parameter, const SqlType& type) {
    Variable variable;
    variable.slot = static_cast<int>(types.size());
    variable.type = type;
    types.push_back(type);
    add(parameter, std::move(variable));
}

void Compiled::addTable(const std::string& variable, const tsql::TableDefinition& definition) {
    Variable entry;
    std::shared_ptr<Table> table = buildTable(variable, definition, batch->source);
    table->local = true;
    table->physical = "tmp." + quoted(m_tablePrefix + variable);
    entry.table = table;
    tables.push_back(std::move(table));
    add(variable, std::move(entry));
}

void Compiled::declareAll() {
    declare(body);
}

void Compiled::declare(const tsql::StatementList& statements) {
    for (const tsql::StatementPtr& statement : statements) {
        if (statement) {
            declare(*statement);
        }
    }
}

void Compiled::declare(const tsql::Statement& statement) {
    using tsql::as;
    switch (statement.kind) {
        case tsql::StatementKind::Block:
            declare(as<tsql::BlockStatement>(statement).body);
            break;
        case tsql::StatementKind::If: {
            const auto& node = as<tsql::IfStatement>(statement);
            declare(*node.then);
            if (node.otherwise) {
                declare(*node.otherwise);
            }
            break;
        }
        case tsql::StatementKind::While:
            declare(*as<tsql::WhileStatement>(statement).body);
            break;
        case tsql::StatementKind::TryCatch:
            declare(as<tsql::TryCatchStatement>(statement).tryBody);
            declare(as<tsql::TryCatchStatement>(statement).catchBody);
            break;
        case tsql::StatementKind::DeclareVariables:
            for (const tsql::VariableDeclaration& declared :
                 as<tsql::DeclareVariablesStatement>(statement).variables) {
                if (declared.table) {
                    addTable(declared.name, *declared.table);
                } else {
                    addParameter(declared.name, resolveType(declared.type, 1));
                }
            }
            break;
        default:
            break;
    }
}

const Variable* Compiled::find(const std::string& variable) const {
    const auto found = m_variables.find(nameKey(variable));
    return found == m_variables.end() ? nullptr : &found->second;
}

}  // namespace magdb
