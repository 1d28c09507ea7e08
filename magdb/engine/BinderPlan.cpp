#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <utility>

// Plans: what the interpreter asks a binder for.

namespace magdb {

Plan Binder::finish(std::string sql, std::vector<ResultColumn> columns) {
    Plan plan;
    plan.sql = std::move(sql);
    plan.columns = std::move(columns);
    plan.parameters = std::move(m_parameters);
    plan.dependencies = std::move(m_dependencies);
    plan.prefills = std::move(m_prefills);
    m_parameters.clear();
    m_dependencies.clear();
    m_prefills.clear();
    return plan;
}

Plan Binder::finish(const BoundQuery& bound) {
    std::vector<ResultColumn> columns;
    for (std::size_t i = 0; i < bound.items.size(); ++i) {
        ResultColumn column;
        column.name = bound.names[i];
        // A bare NULL travels as int.
        column.type = bound.items[i].isNullLiteral() ? plainType(TypeId::Int) : bound.items[i].type;
        column.nullable = bound.items[i].nullable;
        column.identity = bound.items[i].identity;
        columns.push_back(std::move(column));
    }
    return finish(assemble(bound), std::move(columns));
}

Plan Binder::rows(const tsql::Query& node) {
    return finish(query(node));
}

Plan Binder::scalar(const tsql::Expr& node) {
    Scope scope;
    m_scope = &scope;
    BoundQuery bound;
    bound.items.push_back(expr(node));
    bound.names.emplace_back();
    m_scope = nullptr;
    return finish(bound);
}

Plan Binder::scalarAs(const tsql::Expr& node, const SqlType& type) {
    Scope scope;
    m_scope = &scope;
    BoundQuery bound;
    bound.items.push_back(to(expr(node), type));
    bound.names.emplace_back();
    m_scope = nullptr;
    return finish(bound);
}

Plan Binder::condition(const tsql::Expr& node) {
    Scope scope;
    m_scope = &scope;
    ResultColumn column;
    column.type = plainType(TypeId::Int);
    const std::string sql = "SELECT " + where(node);
    m_scope = nullptr;
    return finish(sql, {column});
}

Plan Binder::assignment(const std::string& name, tsql::AssignOp op, const tsql::Expr& value) {
    const Variable* variable = m_context.variable(name);
    if (variable == nullptr || variable->table) {
        raise(137, {name});
    }
    Scope scope;
    m_scope = &scope;
    Bound bound = expr(value);
    if (op != tsql::AssignOp::Set) {
        tsql::VariableExpr self;
        self.name = name;
        const auto code = static_cast<int>(op) - static_cast<int>(tsql::AssignOp::Add);
        bound = arithmetic(static_cast<tsql::BinaryOp>(static_cast<int>(tsql::BinaryOp::Add) + code),
                           this->variable(self), std::move(bound));
    }
    BoundQuery out;
    out.items.push_back(to(bound, variable->type));
    out.names.emplace_back();
    m_scope = nullptr;
    return finish(out);
}

SelectPlan Binder::select(const tsql::Query& node) {
    SelectPlan plan;
    std::unordered_map<std::string, SqlType> assigned;
    const tsql::SelectBody* select =
        node.body->kind == tsql::QueryBodyKind::Select ? &tsql::as<tsql::SelectBody>(*node.body) : nullptr;
    if (select != nullptr) {
        plan.into = select->into;
        for (const tsql::SelectItem& item : select->items) {
            if (item.kind != tsql::SelectItem::Kind::Assignment) {
                if (!assigned.empty()) {
                    raise(141);
                }
                continue;
            }
            const Variable* variable = m_context.variable(item.variable);
            if (variable == nullptr || variable->table) {
                raise(137, {item.variable});
            }
            assigned.emplace(nameKey(item.variable), variable->type);
            plan.assignedSlots.push_back(variable->slot);
            plan.assignedTypes.push_back(variable->type);
            m_selfReference = m_selfReference || item.op != tsql::AssignOp::Set;
        }
        if (!assigned.empty() && plan.assignedSlots.size() != select->items.size()) {
            raise(141);
        }
    }
    m_allowAssignments = !assigned.empty();
    if (assigned.empty()) {
        plan.query = rows(node);
        return plan;
    }
    m_accumulators = &assigned;
    std::vector<std::string> captured;
    if (!select->from.empty()) {
        m_captured = &captured;
    }
    BoundQuery bound = query(node);
    m_captured = nullptr;
    m_accumulators = nullptr;
    if (!m_selfReference) {
        // No value depends on the row before: the plain form does.
        m_parameters.clear();
        m_dependencies.clear();
        m_prefills.clear();
        bound = query(node);
        captured.clear();
    }
    // SELECT @v op= x is SELECT @v = @v op x.
    for (std::size_t i = 0; i < bound.items.size(); ++i) {
        if (select->items[i].op != tsql::AssignOp::Set) {
            Bound self;
            self.type = plan.assignedTypes[i];
            self.sql = "t_now(" + std::to_string(plan.assignedSlots[i]) + ")";
            const auto code = static_cast<int>(select->items[i].op) - static_cast<int>(tsql::AssignOp::Add);
            bound.items[i] =
                arithmetic(static_cast<tsql::BinaryOp>(static_cast<int>(tsql::BinaryOp::Add) + code), self,
                           bound.items[i]);
        }
        bound.items[i] = to(bound.items[i], plan.assignedTypes[i]);
    }
    if (select->from.empty() || !m_selfReference) {
        plan.query = finish(bound);
        return plan;
    }
    // The rows come first, in their order; the expressions are then taken row by row.
    BoundQuery inner = bound;
    inner.items.clear();
    for (const std::string& column : captured) {
        Bound item;
        item.sql = column;
        inner.items.push_back(item);
    }
    if (inner.items.empty()) {
        Bound one;
        one.sql = "1";
        inner.items.push_back(one);
    }
    std::string rowsSql = assemble(inner);
    std::string sql = "WITH q(";
    for (std::size_t i = 0; i < inner.items.size(); ++i) {
        sql += (i == 0 ? "k" : ",k") + std::to_string(i + 1);
    }
    sql += ") AS MATERIALIZED (" + rowsSql + ") SELECT ";
    for (std::size_t i = 0; i < bound.items.size(); ++i) {
        sql += (i == 0 ? "" : ",") + bound.items[i].sql;
    }
    std::vector<ResultColumn> columns;
    for (const Bound& item : bound.items) {
        ResultColumn column;
        column.type = item.type;
        columns.push_back(column);
    }
    plan.query = finish(sql + " FROM q", std::move(columns));
    return plan;
}

}  // namespace magdb
