#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <algorithm>
#include <utility>

// INSERT, UPDATE and DELETE: which rows change and to what. The changes themselves are made row by row by
// RowWriter, so that errors name columns and keys as T-SQL does.

namespace magdb {

std::shared_ptr<const Table> Binder::targetTable(const tsql::TableTarget& target) {
    if (!target.variable.empty()) {
        const Variable* variable = m_context.variable(target.variable);
        if (variable == nullptr || !variable->table) {
            raise(1087, {target.variable});
        }
        return variable->table;
    }
    for (const CommonEntry& common : m_commons) {
        if (target.name.schema.empty() && sameName(common.table->name, target.name.name)) {
            refuse("changes through a common table expression");
        }
    }
    const std::shared_ptr<const SchemaObject> found = object(target.name);
    if (!found) {
        raise(208, {dotted(target.name)});
    }
    if (found->kind == ObjectKind::View) {
        refuse("changes through a view");
    }
    auto table = std::dynamic_pointer_cast<const Table>(found);
    if (!table) {
        raise(208, {dotted(target.name)});
    }
    return table;
}

// ------------------------------------------------------------------------------------------------ INSERT

void Binder::insertColumns(const tsql::InsertStatement& statement, InsertPlan& plan) {
    const Table& table = *plan.target;
    if (statement.source == tsql::InsertStatement::Source::DefaultValues) {
        return;
    }
    if (statement.columns.empty()) {
        for (std::size_t i = 0; i < table.columns.size(); ++i) {
            if (!table.columns[i].identity && table.columns[i].computedText.empty()) {
                plan.columns.push_back(static_cast<int>(i));
            }
        }
        return;
    }
    for (const std::string& name : statement.columns) {
        const int index = table.columnIndex(name);
        if (index < 0) {
            raise(207, {name});
        }
        if (std::find(plan.columns.begin(), plan.columns.end(), index) != plan.columns.end()) {
            raise(264, {name});
        }
        if (!table.columns[static_cast<std::size_t>(index)].computedText.empty()) {
            raise(271, {name});
        }
        plan.columns.push_back(index);
    }
}

Bound Binder::defaultOf(const Table& table, int column) {
    const Column& declared = table.columns[static_cast<std::size_t>(column)];
    if (declared.defaultText.empty()) {
        Bound none;
        none.sql = "NULL";
        none.type = plainType(TypeId::Null);
        return none;
    }
    Scope scope;
    Scope* const outer = std::exchange(m_scope, &scope);
    const bool hidden = std::exchange(m_hideVariables, true);
    Bound bound = expr(*tsql::parseExpression(declared.defaultText));
    m_hideVariables = hidden;
    m_scope = outer;
    return bound;
}

BoundQuery Binder::valuesRows(const tsql::InsertStatement& statement, const InsertPlan& plan) {
    std::vector<BoundQuery> rows;
    const std::size_t width = plan.columns.size();
    for (const std::vector<tsql::ExprPtr>& row : statement.rows) {
        if (row.size() != width) {
            raise(statement.columns.empty() ? 213 : (row.size() < width ? 109 : 110));
        }
        Scope scope;
        Scope* const outer = std::exchange(m_scope, &scope);
        BoundQuery bound;
        for (std::size_t i = 0; i < row.size(); ++i) {
            bound.items.push_back(row[i]->kind == tsql::ExprKind::Default
                                      ? defaultOf(*plan.target, plan.columns[i])
                                      : expr(*row[i]));
            bound.names.emplace_back();
        }
        m_scope = outer;
        rows.push_back(std::move(bound));
    }
    if (rows.size() > 1) {
        unify(rows);
    }
    BoundQuery out = rows.front();
    if (rows.size() > 1) {
        out.compound = valuesText(rows);
    }
    return out;
}

void Binder::insertDefaults(InsertPlan& plan) {
    BoundQuery defaults;
    for (std::size_t i = 0; i < plan.target->columns.size(); ++i) {
        const int index = static_cast<int>(i);
        if (plan.target->columns[i].defaultText.empty() ||
            std::find(plan.columns.begin(), plan.columns.end(), index) != plan.columns.end()) {
            continue;
        }
        defaults.items.push_back(defaultOf(*plan.target, index));
        defaults.names.emplace_back();
        plan.defaultColumns.push_back(index);
    }
    if (!defaults.items.empty()) {
        plan.defaults = finish(defaults);
    }
}

InsertPlan Binder::insert(const tsql::InsertStatement& statement) {
    InsertPlan plan;
    plan.target = targetTable(statement.target);
    insertColumns(statement, plan);
    const std::vector<PlanDependency> dependencies = m_dependencies;
    switch (statement.source) {
        case tsql::InsertStatement::Source::Values: {
            if (statement.top) {
                refuse("TOP in INSERT ... VALUES");
            }
            plan.source = finish(valuesRows(statement, plan));
            break;
        }
        case tsql::InsertStatement::Source::Query: {
            for (const tsql::CommonTable& common : statement.with) {
                CommonEntry entry;
                entry.table = &common;
                m_commons.push_back(std::move(entry));
            }
            m_commonsVisible = m_commons.size();
            BoundQuery bound = query(*statement.query);
            m_commons.clear();
            m_commonsVisible = 0;
            if (bound.items.size() != plan.columns.size()) {
                if (statement.columns.empty()) {
                    raise(213);
                }
                raise(bound.items.size() < plan.columns.size() ? 120 : 121);
            }
            if (statement.top) {
                Scope scope;
                m_scope = &scope;
                const std::string limit = limitCount(*statement.top->count);
                m_scope = nullptr;
                BoundQuery wrapped = bound;
                wrapped.compound = "SELECT * FROM (" + assemble(bound) + ")";
                wrapped.order.clear();
                wrapped.limit = " LIMIT " + limit;
                bound = wrapped;
            }
            plan.source = finish(bound);
            break;
        }
        case tsql::InsertStatement::Source::DefaultValues: {
            BoundQuery one;
            plan.source = finish("SELECT 1", {});
            break;
        }
        case tsql::InsertStatement::Source::Execute:
            plan.source = finish("SELECT 1", {});
            break;
    }
    insertDefaults(plan);
    if (statement.output) {
        plan.output = output(*statement.output, *plan.target);
    }
    return plan;
}

// ------------------------------------------------------------------------------------------------ OUTPUT

Source Binder::rowSource(const Table& table, const std::string& name, int firstIndex) {
    Source source;
    source.name = name;
    source.hidden = true;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        SourceColumn column;
        PlanParameter wanted;
        wanted.kind = PlanParameter::Kind::Row;
        wanted.index = firstIndex + static_cast<int>(i);
        column.name = table.columns[i].name;
        column.value.sql = parameter(wanted);
        column.value.type = table.columns[i].type;
        column.value.nullable = table.columns[i].nullable;
        source.columns.push_back(std::move(column));
    }
    return source;
}

OutputPlan Binder::output(const tsql::OutputClause& clause, const Table& table) {
    OutputPlan plan;
    Scope scope;
    m_scope = &scope;
    scope.sources.push_back(rowSource(table, "inserted", 0));
    scope.sources.push_back(rowSource(table, "deleted", static_cast<int>(table.columns.size())));
    tsql::SelectBody body;
    BoundQuery bound;
    for (const tsql::SelectItem& item : clause.items) {
        if (item.kind == tsql::SelectItem::Kind::Star) {
            star(item, bound);
            continue;
        }
        bound.items.push_back(expr(*item.expr));
        bound.names.push_back(!item.alias.empty() ? item.alias : bound.items.back().name);
    }
    m_scope = nullptr;
    if (clause.intoTable || !clause.intoVariable.empty()) {
        tsql::TableTarget target;
        if (clause.intoTable) {
            target.name = *clause.intoTable;
        }
        target.variable = clause.intoVariable;
        plan.into = targetTable(target);
        for (std::size_t i = 0; clause.intoColumns.empty() && i < plan.into->columns.size(); ++i) {
            if (!plan.into->columns[i].identity && plan.into->columns[i].computedText.empty()) {
                plan.intoColumns.push_back(static_cast<int>(i));
            }
        }
        for (const std::string& name : clause.intoColumns) {
            const int index = plan.into->columnIndex(name);
            if (index < 0) {
                raise(207, {name});
            }
            plan.intoColumns.push_back(index);
        }
        if (plan.intoColumns.size() != bound.items.size()) {
            raise(213);
        }
    }
    plan.query = finish(bound);
    return plan;
}

// --------------------------------------------------------------------------------------- UPDATE and DELETE

Binder::ChangeTarget Binder::changeTarget(const tsql::TableTarget& target,
                                          const std::vector<tsql::TableSourcePtr>& from) {
    ChangeTarget result;
    const std::string name = target.variable.empty() ? target.name.name : target.variable;
    if (!from.empty()) {
        result.from = this->from(from);
        const Source* match = nullptr;
        // The alias comes first, then the one use of the table.
        for (const Source& source : m_scope->sources) {
            if (sameName(source.name, name) && target.name.schema.empty()) {
                match = &source;
            }
        }
        std::shared_ptr<const Table> named;
        if (match == nullptr) {
            named = targetTable(target);
            for (const Source& source : m_scope->sources) {
                if (source.table && source.table->physical == named->physical) {
                    if (match != nullptr) {
                        raise(8154, {name});
                    }
                    match = &source;
                }
            }
        }
        if (match != nullptr) {
            if (!match->table || match->table->physical.empty()) {
                refuse("changes through a view or a derived table");
            }
            result.table = match->table;
            result.alias = match->sqlAlias;
            return result;
        }
        // The table stands outside its FROM clause: every row pairs with every row there.
        const std::string text = tableSource(named, name, false, false);
        result.from += " CROSS JOIN " + text;
        result.table = named;
        result.alias = m_scope->sources.back().sqlAlias;
        return result;
    }
    result.table = targetTable(target);
    result.from = " FROM " + tableSource(result.table, name, false, false);
    result.alias = m_scope->sources.back().sqlAlias;
    return result;
}

template <class Statement>
Binder::ChangeTarget Binder::beginChange(const Statement& statement) {
    for (const tsql::CommonTable& common : statement.with) {
        CommonEntry entry;
        entry.table = &common;
        m_commons.push_back(std::move(entry));
    }
    m_commonsVisible = m_commons.size();
    return changeTarget(statement.target, statement.from);
}

BoundQuery Binder::rowsOf(const ChangeTarget& target) {
    BoundQuery bound;
    bound.tail = target.from;
    Bound rowid;
    rowid.sql = target.alias + ".rowid";
    rowid.type = plainType(TypeId::BigInt);
    bound.items.push_back(rowid);
    bound.names.emplace_back();
    return bound;
}

template <class Statement>
Plan Binder::finishChange(const Statement& statement, BoundQuery& bound) {
    if (statement.where) {
        bound.tail += " WHERE " + where(*statement.where);
    }
    if (statement.top) {
        if (statement.top->percent) {
            refuse("TOP ... PERCENT");
        }
        bound.limit = " LIMIT " + limitCount(*statement.top->count);
    }
    m_scope = nullptr;
    return finish(bound);
}

UpdatePlan Binder::update(const tsql::UpdateStatement& statement) {
    UpdatePlan plan;
    Scope scope;
    m_scope = &scope;
    const ChangeTarget target = beginChange(statement);
    plan.target = target.table;
    BoundQuery bound = rowsOf(target);
    std::vector<Bound> variableValues;
    // A variable that the statement sets has, in its expressions, the value that the row before left.
    std::unordered_map<std::string, SqlType> accumulators;
    for (const tsql::SetClause& clause : statement.set) {
        const Variable* assigned = clause.variable.empty() ? nullptr : m_context.variable(clause.variable);
        if (assigned != nullptr) {
            accumulators.emplace(nameKey(clause.variable), assigned->type);
        }
    }
    m_accumulators = &accumulators;
    for (const tsql::SetClause& clause : statement.set) {
        int index = -1;
        std::optional<Bound> current;
        if (!clause.column.empty()) {
            index = plan.target->columnIndex(clause.column);
            if (index < 0) {
                raise(207, {clause.column});
            }
            const Column& column = plan.target->columns[static_cast<std::size_t>(index)];
            if (column.identity) {
                raise(8102, {column.name});
            }
            if (!column.computedText.empty()) {
                raise(271, {column.name});
            }
            if (std::find(plan.columns.begin(), plan.columns.end(), index) != plan.columns.end()) {
                raise(264, {column.name});
            }
        }
        Bound value = clause.value->kind == tsql::ExprKind::Default ? defaultOf(*plan.target, index)
                                                                    : expr(*clause.value);
        if (clause.op != tsql::AssignOp::Set) {
            Bound self;
            if (index >= 0) {
                for (const Source& source : scope.sources) {
                    if (source.sqlAlias == target.alias) {
                        self = source.columns[static_cast<std::size_t>(index)].value;
                    }
                }
            } else {
                tsql::VariableExpr variableNode;
                variableNode.name = clause.variable;
                self = variable(variableNode);
            }
            const auto code = static_cast<int>(clause.op) - static_cast<int>(tsql::AssignOp::Add);
            value = arithmetic(static_cast<tsql::BinaryOp>(static_cast<int>(tsql::BinaryOp::Add) + code),
                               std::move(self), std::move(value));
        }
        if (index >= 0) {
            if (!value.isNullLiteral()) {
                checkConversion(value.type, plan.target->columns[static_cast<std::size_t>(index)].type,
                                false);
            }
            plan.columns.push_back(index);
            bound.items.push_back(value);
            bound.names.emplace_back();
        }
        if (!clause.variable.empty()) {
            const Variable* variable = m_context.variable(clause.variable);
            if (variable == nullptr || variable->table) {
                raise(137, {clause.variable});
            }
            if (index >= 0) {
                value = to(value, plan.target->columns[static_cast<std::size_t>(index)].type);
            }
            plan.variableSlots.push_back(variable->slot);
            plan.variableTypes.push_back(variable->type);
            variableValues.push_back(to(value, variable->type));
        }
    }
    m_accumulators = nullptr;
    for (const Bound& value : variableValues) {
        plan.variableColumns.push_back(static_cast<int>(bound.items.size()));
        bound.items.push_back(value);
        bound.names.emplace_back();
    }
    plan.source = finishChange(statement, bound);
    if (statement.output) {
        plan.output = output(*statement.output, *plan.target);
    }
    return plan;
}

DeletePlan Binder::remove(const tsql::DeleteStatement& statement) {
    DeletePlan plan;
    Scope scope;
    m_scope = &scope;
    const ChangeTarget target = beginChange(statement);
    plan.target = target.table;
    BoundQuery bound = rowsOf(target);
    plan.source = finishChange(statement, bound);
    if (statement.output) {
        plan.output = output(*statement.output, *plan.target);
    }
    return plan;
}

// ------------------------------------------------------------------------------- conditions over one row

Plan Binder::violation(const Table& table, const tsql::Expr& node) {
    Scope scope;
    m_scope = &scope;
    Source source = rowSource(table, table.name, 0);
    source.hidden = false;
    scope.sources.push_back(std::move(source));
    m_hideVariables = true;
    ResultColumn column;
    column.type = plainType(TypeId::Int);
    // Unknown is no violation.
    const std::string sql = "SELECT (" + where(node) + ") IS 0";
    m_scope = nullptr;
    return finish(sql, {column});
}

Plan Binder::overRow(const Table& table, const std::vector<const tsql::Expr*>& exprs,
                     const std::vector<SqlType>& types) {
    Scope scope;
    m_scope = &scope;
    Source source = rowSource(table, table.name, 0);
    source.hidden = false;
    scope.sources.push_back(std::move(source));
    m_hideVariables = true;
    BoundQuery bound;
    for (std::size_t i = 0; i < exprs.size(); ++i) {
        bound.items.push_back(to(expr(*exprs[i]), types[i]));
        bound.names.emplace_back();
    }
    m_scope = nullptr;
    return finish(bound);
}

Bound Binder::typeOver(const Table& table, const tsql::Expr& node) {
    Scope scope;
    m_scope = &scope;
    Source source = rowSource(table, table.name, 0);
    source.hidden = false;
    scope.sources.push_back(std::move(source));
    m_hideVariables = true;
    Bound bound = expr(node);
    m_scope = nullptr;
    return bound;
}

std::string Binder::indexFilter(const Table& table, const tsql::Expr& node) {
    Scope scope;
    m_scope = &scope;
    Source source;
    source.name = table.name;
    for (const Column& column : table.columns) {
        SourceColumn entry;
        entry.name = column.name;
        entry.value.sql = quoted(column.name);
        entry.value.type = column.type;
        source.columns.push_back(std::move(entry));
    }
    scope.sources.push_back(std::move(source));
    m_hideVariables = true;
    std::string text = where(node);
    m_scope = nullptr;
    return text;
}

void Binder::addComputed(Source& source) {
    for (std::size_t i = 0; i < source.columns.size(); ++i) {
        const Column& declared = source.table->columns[i];
        if (declared.computedText.empty()) {
            continue;
        }
        // The expression sees the row that it belongs to and nothing else.
        Scope scope;
        Source row = source;
        row.hidden = false;
        scope.sources.push_back(std::move(row));
        Scope* const outer = std::exchange(m_scope, &scope);
        const bool hidden = std::exchange(m_hideVariables, true);
        std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
        const Bound bound = to(expr(*tsql::parseExpression(declared.computedText)), declared.type, true);
        m_captured = captured;
        m_hideVariables = hidden;
        m_scope = outer;
        source.columns[i].value.sql = "(" + bound.sql + ")";
    }
}

}  // namespace magdb
