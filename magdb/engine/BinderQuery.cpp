#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <utility>

// SELECT, set operations, ORDER BY, and putting the parts together. Every item of a query is named c1, c2...
// inside SQLite; the names that T-SQL gives go with the plan.

namespace magdb {

namespace {

constexpr std::size_t kMostCompounds = 400;

const char* setOperator(tsql::SetOp op) {
    switch (op) {
        case tsql::SetOp::UnionAll:
            return " UNION ALL ";
        case tsql::SetOp::Union:
            return " UNION ";
        case tsql::SetOp::Except:
            return " EXCEPT ";
        case tsql::SetOp::Intersect:
            return " INTERSECT ";
    }
    return "";
}

std::string itemName(std::size_t index) {
    return "c" + std::to_string(index + 1);
}

std::string collateSuffix(const Bound& item) {
    return isText(item.type) ? " COLLATE " + std::string(collationOf(item.order)) : std::string();
}

/// The name a select item gets without an alias.
std::string naturalName(const tsql::Expr& node) {
    return node.kind == tsql::ExprKind::Column ? tsql::as<tsql::ColumnExpr>(node).name : std::string();
}

}  // namespace

std::string assemble(const BoundQuery& query) {
    if (!query.compound.empty()) {
        return query.compound + query.order + query.limit;
    }
    std::string sql = query.distinct ? "SELECT DISTINCT " : "SELECT ";
    for (std::size_t i = 0; i < query.items.size(); ++i) {
        sql += (i == 0 ? "" : ",") + query.items[i].sql;
        if (query.distinct && isText(query.items[i].type)) {
            sql += collateSuffix(query.items[i]);
        }
        sql += " AS " + itemName(i);
    }
    return sql + query.tail + query.order + query.limit;
}

BoundQuery Binder::query(const tsql::Query& node) {
    const std::size_t visible = m_commonsVisible;
    const std::size_t count = m_commons.size();
    for (const tsql::CommonTable& common : node.with) {
        CommonEntry entry;
        entry.table = &common;
        entry.maxRecursion = node.maxRecursion;
        m_commons.push_back(std::move(entry));
        m_commonsVisible = m_commons.size();
    }
    BoundQuery bound = body(*node.body, &node);
    m_commons.resize(count);
    m_commonsVisible = visible;
    return bound;
}

BoundQuery Binder::body(const tsql::QueryBody& node, const tsql::Query* owner) {
    if (node.kind == tsql::QueryBodyKind::Select) {
        return selectBody(tsql::as<tsql::SelectBody>(node), owner);
    }
    BoundQuery bound = setOperation(tsql::as<tsql::SetOperationBody>(node));
    if (owner != nullptr) {
        // Names of the ORDER BY are those of the result.
        Scope scope;
        Scope* const outer = std::exchange(m_scope, &scope);
        orderBy(*owner, bound);
        m_scope = outer;
        tsql::SelectBody none;
        limits(none, owner, bound);
    }
    return bound;
}

BoundQuery Binder::selectBody(const tsql::SelectBody& node, const tsql::Query* owner) {
    Scope scope;
    // The caller's scope is the one around, whether it was opened for this query or is none at all.
    scope.parent = m_scope;
    Scope* const outer = std::exchange(m_scope, &scope);
    BoundQuery out;
    out.tail = from(node.from);
    if (node.where) {
        std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
        out.tail += " WHERE " + where(*node.where);
        m_captured = captured;
    }
    out.distinct = node.distinct;
    scope.aggregatesAllowed = true;
    groupBy(node, out);
    limits(node, owner, out);
    m_scope = outer;
    return out;
}

void Binder::groupBy(const tsql::SelectBody& node, BoundQuery& out) {
    Scope& scope = *m_scope;
    for (const tsql::ExprPtr& group : node.groupBy) {
        std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
        const Bound bound = expr(*group);
        m_captured = captured;
        scope.groupTexts.push_back(bound.sql);
        scope.groupsExpressions = scope.groupsExpressions || group->kind != tsql::ExprKind::Column;
        out.tail += (scope.groupTexts.size() == 1 ? " GROUP BY " : ",") + bound.sql + collateSuffix(bound);
    }
    const auto bindRest = [&](BoundQuery& target) {
        selectItems(node, target);
        if (node.having) {
            scope.groupError = 8121;
            target.tail += (scope.groupTexts.empty() ? " GROUP BY NULL" : std::string());
            target.tail += " HAVING " + where(*node.having);
            scope.groupError = 8120;
        }
    };
    if (!node.groupBy.empty() || node.having) {
        scope.grouped = true;
        bindRest(out);
        out.singleRow = node.groupBy.empty();
        return;
    }
    // Whether the query is one group is known only after its items: an aggregate among them makes it one.
    const std::string tail = out.tail;
    const std::size_t parameters = m_parameters.size();
    const std::size_t captured = m_captured != nullptr ? m_captured->size() : 0;
    selectItems(node, out);
    if (scope.sawAggregate) {
        m_parameters.resize(parameters);
        if (m_captured != nullptr) {
            m_captured->resize(captured);
        }
        out.items.clear();
        out.names.clear();
        out.tail = tail;
        scope.grouped = true;
        selectItems(node, out);
        out.singleRow = true;
    }
}

void Binder::selectItems(const tsql::SelectBody& node, BoundQuery& out) {
    for (const tsql::SelectItem& item : node.items) {
        if (item.kind == tsql::SelectItem::Kind::Star) {
            star(item, out);
            continue;
        }
        if (item.kind == tsql::SelectItem::Kind::Assignment) {
            if (!m_allowAssignments) {
                raise(141);
            }
            out.items.push_back(expr(*item.expr));
            out.names.push_back(item.variable);
            continue;
        }
        Bound bound = expr(*item.expr);
        out.names.push_back(!item.alias.empty() ? item.alias
                            : !bound.name.empty() && item.expr->kind == tsql::ExprKind::Column
                                ? bound.name
                                : naturalName(*item.expr));
        if (item.expr->kind != tsql::ExprKind::Column) {
            bound.identity = false;
        }
        out.items.push_back(std::move(bound));
    }
    if (out.items.empty()) {
        raise(102, {"FROM"});
    }
}

void Binder::star(const tsql::SelectItem& item, BoundQuery& out) {
    bool known = false;
    const std::string qualifier =
        item.starQualifier.empty() ? std::string() : nameKey(item.starQualifier.back());
    for (const Source& source : m_scope->sources) {
        if (qualifier.empty() ? source.hidden : nameKey(source.name) != qualifier) {
            continue;
        }
        known = true;
        for (const SourceColumn& column : source.columns) {
            if (m_scope->grouped && std::find(m_scope->groupTexts.begin(), m_scope->groupTexts.end(),
                                              column.value.sql) == m_scope->groupTexts.end()) {
                raise(8120, {source.name + "." + column.name});
            }
            out.items.push_back(column.value);
            out.items.back().name = column.name;
            out.names.push_back(column.name);
        }
    }
    if (!known) {
        if (qualifier.empty()) {
            raise(263);
        }
        raise(107, {item.starQualifier.back()});
    }
}

void Binder::orderBy(const tsql::Query& owner, BoundQuery& out) {
    std::vector<std::string>* const captured = m_captured;
    for (const tsql::OrderItem& item : owner.orderBy) {
        std::string text;
        const tsql::Expr& node = *item.expr;
        TextOrder order = TextOrder::Database;
        const tsql::Expr* inner = &node;
        if (node.kind == tsql::ExprKind::Collate) {
            inner = tsql::as<tsql::CollateExpr>(node).operand.get();
            order = textOrder(tsql::as<tsql::CollateExpr>(node).collation);
        }
        std::size_t position = out.items.size();
        if (inner->kind == tsql::ExprKind::Literal &&
            tsql::as<tsql::LiteralExpr>(*inner).type == tsql::LiteralKind::Integer) {
            const std::string& digits = tsql::as<tsql::LiteralExpr>(*inner).text;
            position = digits.size() > 6 ? 0 : static_cast<std::size_t>(std::stoi(digits));
            if (position < 1 || position > out.items.size()) {
                raise(108, {digits});
            }
            --position;
        } else if (inner->kind == tsql::ExprKind::Column &&
                   tsql::as<tsql::ColumnExpr>(*inner).qualifier.empty()) {
            const std::string wanted = nameKey(tsql::as<tsql::ColumnExpr>(*inner).name);
            for (std::size_t i = 0; i < out.names.size(); ++i) {
                if (nameKey(out.names[i]) != wanted) {
                    continue;
                }
                if (position < out.items.size() && out.items[position].sql != out.items[i].sql) {
                    raise(209, {tsql::as<tsql::ColumnExpr>(*inner).name});
                }
                position = std::min(position, i);
            }
        }
        if (position == out.items.size()) {
            m_captured = nullptr;
            m_scope->groupError = 8127;
            const Bound bound = expr(*inner);
            m_scope->groupError = 8120;
            m_captured = captured;
            for (std::size_t i = 0; i < out.items.size() && position == out.items.size(); ++i) {
                position = out.items[i].sql == bound.sql ? i : position;
            }
            if (position == out.items.size()) {
                if (out.distinct) {
                    raise(145);
                }
                if (!out.compound.empty()) {
                    raise(207, {"ORDER BY"});
                }
                text = bound.sql;
                text += isText(bound.type)
                            ? " COLLATE " +
                                  std::string(collationOf(order != TextOrder::Database ? order : bound.order))
                            : std::string();
            }
        }
        if (position < out.items.size()) {
            const Bound& bound = out.items[position];
            text = itemName(position);
            text += isText(bound.type)
                        ? " COLLATE " +
                              std::string(collationOf(order != TextOrder::Database ? order : bound.order))
                        : std::string();
        }
        out.order += (out.order.empty() ? " ORDER BY " : ",") + text + (item.descending ? " DESC" : "");
    }
}

std::string Binder::limitCount(const tsql::Expr& node) {
    const Bound bound = to(expr(node), plainType(TypeId::BigInt));
    if (bound.constant) {
        return bound.sql;
    }
    // SQLite takes a negative limit for none.
    return "max(0," + bound.sql + ")";
}

void Binder::limits(const tsql::SelectBody& node, const tsql::Query* owner, BoundQuery& out) {
    if (owner != nullptr && out.order.empty() && out.compound.empty()) {
        orderBy(*owner, out);
    }
    if (node.top) {
        if (node.top->percent) {
            refuse("TOP ... PERCENT");
        }
        std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
        const bool grouped = std::exchange(m_scope->grouped, false);
        out.limit = " LIMIT " + limitCount(*node.top->count);
        m_scope->grouped = grouped;
        m_captured = captured;
        out.singleRow = out.singleRow || out.limit == " LIMIT 1";
    }
    if (owner != nullptr && owner->offset) {
        Scope scope;
        Scope* const outer = std::exchange(m_scope, &scope);
        out.limit = " LIMIT " + (owner->fetch ? limitCount(*owner->fetch) : std::string("-1")) + " OFFSET " +
                    limitCount(*owner->offset);
        m_scope = outer;
    }
}

// ---------------------------------------------------------------------------------------- set operations

void Binder::unify(std::vector<BoundQuery>& parts) {
    const std::size_t count = parts.front().items.size();
    for (const BoundQuery& part : parts) {
        if (part.items.size() != count) {
            raise(205);
        }
    }
    for (std::size_t i = 0; i < count; ++i) {
        SqlType type;
        for (const BoundQuery& part : parts) {
            const Bound& item = part.items[i];
            type = type.id == TypeId::Decimal && item.digits > 0 ? commonType(type, asDecimal(item))
                                                                 : commonType(type, item.type);
        }
        for (BoundQuery& part : parts) {
            Bound& item = part.items[i];
            if (!part.compound.empty() && !isSameRepresentation(item.type, type)) {
                // The converted column needs a query of its own around the set operation.
                part.tail = " FROM (" + assemble(part) + ")";
                part.compound.clear();
                part.order.clear();
                part.limit.clear();
            }
            item = to(item, type.id == TypeId::Null ? plainType(TypeId::Int) : type);
        }
    }
}

BoundQuery Binder::setOperation(const tsql::SetOperationBody& node) {
    // A long chain of one operator leans left; its parts are bound side by side.
    std::vector<const tsql::QueryBody*> nodes;
    std::vector<tsql::SetOp> operators;
    const tsql::QueryBody* left = &node;
    while (left->kind == tsql::QueryBodyKind::SetOperation) {
        const auto& set = tsql::as<tsql::SetOperationBody>(*left);
        nodes.push_back(set.right.get());
        operators.push_back(set.op);
        left = set.left.get();
    }
    nodes.push_back(left);
    std::reverse(nodes.begin(), nodes.end());
    std::reverse(operators.begin(), operators.end());

    std::vector<BoundQuery> parts;
    parts.reserve(nodes.size());
    for (const tsql::QueryBody* part : nodes) {
        parts.push_back(body(*part, nullptr));
    }
    unify(parts);

    const bool compares = std::any_of(operators.begin(), operators.end(),
                                      [](tsql::SetOp op) { return op != tsql::SetOp::UnionAll; });
    if (compares && parts.size() > kMostCompounds) {
        raise(8623);
    }
    BoundQuery out;
    std::string chunk;
    std::size_t inChunk = 0;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        BoundQuery& part = parts[i];
        if (inChunk > 0) {
            chunk += setOperator(operators[i - 1]);
        }
        if (compares) {
            for (Bound& item : part.items) {
                item.sql += part.compound.empty() && !part.distinct ? collateSuffix(item) : std::string();
            }
        }
        const bool wrapped = !part.limit.empty() || !part.compound.empty();
        chunk += wrapped ? "SELECT * FROM (" + assemble(part) + ")" : assemble(part);
        // SQLite joins some hundred queries at a time.
        if (++inChunk == kMostCompounds && i + 1 < parts.size()) {
            out.compound +=
                (out.compound.empty() ? "SELECT * FROM (" : " UNION ALL SELECT * FROM (") + chunk + ")";
            chunk.clear();
            inChunk = 0;
        }
    }
    out.compound += out.compound.empty() ? chunk : " UNION ALL SELECT * FROM (" + chunk + ")";
    out.names = parts.front().names;
    for (std::size_t i = 0; i < out.names.size(); ++i) {
        Bound item;
        item.sql = itemName(i);
        item.type = parts.front().items[i].type;
        item.order = parts.front().items[i].order;
        item.nullable = std::any_of(parts.begin(), parts.end(),
                                    [&](const BoundQuery& part) { return part.items[i].nullable; });
        out.items.push_back(std::move(item));
    }
    return out;
}

}  // namespace magdb
