#include "engine/Binder.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <utility>

// What names in expressions mean: columns, variables, @@ values; and the parameters that carry values into a
// plan.

namespace magdb {

std::string Binder::parameter(const PlanParameter& wanted) {
    for (std::size_t i = 0; i < m_parameters.size(); ++i) {
        const PlanParameter& known = m_parameters[i];
        if (known.kind == wanted.kind && known.index == wanted.index && known.system == wanted.system) {
            return "?" + std::to_string(i + 1);
        }
    }
    m_parameters.push_back(wanted);
    return "?" + std::to_string(m_parameters.size());
}

Bound Binder::systemValue(SystemValue value, const SqlType& type) {
    PlanParameter wanted;
    wanted.kind = PlanParameter::Kind::System;
    wanted.system = value;
    Bound bound;
    bound.sql = parameter(wanted);
    bound.type = type;
    return bound;
}

Binder::Found Binder::find(const tsql::ColumnExpr& node) {
    const std::string wanted = nameKey(node.name);
    const std::string qualifier = node.qualifier.empty() ? std::string() : nameKey(node.qualifier.back());
    bool sourceKnown = false;
    for (Scope* scope = m_scope; scope != nullptr; scope = scope->parent) {
        Found found;
        for (const Source& source : scope->sources) {
            if (!qualifier.empty()
                    ? nameKey(source.name) != qualifier || (source.aliased && node.qualifier.size() > 1)
                    : source.hidden) {
                continue;
            }
            sourceKnown = true;
            for (const SourceColumn& candidate : source.columns) {
                if (nameKey(candidate.name) != wanted) {
                    continue;
                }
                if (found.column != nullptr) {
                    raise(209, {node.name});
                }
                found = {&candidate, scope};
            }
        }
        if (found.column != nullptr) {
            return found;
        }
    }
    if (!qualifier.empty() && !sourceKnown) {
        std::string text;
        for (const std::string& part : node.qualifier) {
            text += part + ".";
        }
        raise(4104, {text + node.name});
    }
    raise(207, {node.name});
}

Bound Binder::column(const tsql::ColumnExpr& node) {
    const Found found = find(node);
    Bound bound = found.column->value;
    bound.name = found.column->name;
    Scope& scope = *found.scope;
    if (scope.grouped && scope.aggregateDepth == 0 &&
        std::find(scope.groupTexts.begin(), scope.groupTexts.end(), bound.sql) == scope.groupTexts.end()) {
        std::string name = node.name;
        for (const Source& source : scope.sources) {
            for (const SourceColumn& candidate : source.columns) {
                if (&candidate == found.column) {
                    name = source.name + "." + candidate.name;
                }
            }
        }
        raise(scope.groupError, {name});
    }
    if (found.scope == m_scope) {
        bound.sql = capture(std::move(bound.sql));
    }
    return bound;
}

std::string Binder::capture(std::string sql) {
    if (m_captured == nullptr) {
        return sql;
    }
    m_captured->push_back(std::move(sql));
    return "q.k" + std::to_string(m_captured->size());
}

Bound Binder::variable(const tsql::VariableExpr& node) {
    if (m_arguments != nullptr) {
        const auto found = m_arguments->find(nameKey(node.name));
        if (found != m_arguments->end()) {
            return found->second;
        }
    }
    const Variable* variable =
        m_hideVariables || m_arguments != nullptr ? nullptr : m_context.variable(node.name);
    if (variable == nullptr || variable->table) {
        raise(137, {node.name});
    }
    Bound bound;
    bound.type = variable->type;
    if (m_accumulators != nullptr && m_accumulators->count(nameKey(node.name)) != 0) {
        // The value as the rows before this one left it.
        m_selfReference = true;
        bound.sql = "t_now(" + std::to_string(variable->slot) + ")";
        return bound;
    }
    PlanParameter wanted;
    wanted.index = variable->slot;
    bound.sql = parameter(wanted);
    return bound;
}

Bound Binder::globalVariable(const tsql::GlobalVariableExpr& node) {
    static const std::unordered_map<std::string, std::pair<SystemValue, TypeId>> kValues = {
        {"@@rowcount", {SystemValue::RowCount, TypeId::Int}},
        {"@@error", {SystemValue::Error, TypeId::Int}},
        {"@@trancount", {SystemValue::TranCount, TypeId::Int}},
        {"@@fetch_status", {SystemValue::FetchStatus, TypeId::Int}},
        {"@@spid", {SystemValue::Spid, TypeId::SmallInt}},
        {"@@nestlevel", {SystemValue::NestLevel, TypeId::Int}},
        {"@@procid", {SystemValue::ProcedureId, TypeId::Int}},
        {"@@datefirst", {SystemValue::DateFirst, TypeId::TinyInt}},
        {"@@cursor_rows", {SystemValue::CursorRows, TypeId::Int}},
        {"@@lock_timeout", {SystemValue::LockTimeout, TypeId::Int}},
        {"@@textsize", {SystemValue::TextSize, TypeId::Int}},
        {"@@options", {SystemValue::Options, TypeId::Int}},
    };
    const std::string name = lower(node.name);
    if (const auto found = kValues.find(name); found != kValues.end()) {
        Bound bound = systemValue(found->second.first, plainType(found->second.second));
        bound.nullable = false;
        return bound;
    }
    if (name == "@@identity") {
        return systemValue(SystemValue::Identity, decimalType(38, 0));
    }
    const auto text = [](const std::string& value) {
        Bound bound;
        bound.type = textType(TypeId::NVarChar, 300);
        bound.constant = value;
        bound.sql = textLiteral(value);
        return bound;
    };
    if (name == "@@version") {
        return text("magdb, a local database server for T-SQL");
    }
    if (name == "@@servername") {
        return text("MAGDB");
    }
    if (name == "@@language") {
        return text("us_english");
    }
    const auto number = [](std::int64_t value, TypeId id) {
        Bound bound;
        bound.type = plainType(id);
        bound.constant = value;
        bound.sql = std::to_string(value);
        return bound;
    };
    if (name == "@@max_precision") {
        return number(38, TypeId::TinyInt);
    }
    if (name == "@@microsoftversion") {
        return number(0x0E000000, TypeId::Int);
    }
    if (name == "@@langid") {
        return number(0, TypeId::SmallInt);
    }
    raise(137, {node.name});
}

}  // namespace magdb
