#include "engine/Binder.h"
#include "engine/Like.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <utility>

// Conditions: comparisons, LIKE, IN, EXISTS and their combinations.

namespace magdb {

namespace {

const char* comparisonText(tsql::BinaryOp op) {
    switch (op) {
        case tsql::BinaryOp::NotEqual:
            return " <> ";
        case tsql::BinaryOp::Less:
            return " < ";
        case tsql::BinaryOp::LessEqual:
            return " <= ";
        case tsql::BinaryOp::Greater:
            return " > ";
        case tsql::BinaryOp::GreaterEqual:
            return " >= ";
        default:
            return " = ";
    }
}

tsql::BinaryOp negated(tsql::BinaryOp op) {
    switch (op) {
        case tsql::BinaryOp::Equal:
            return tsql::BinaryOp::NotEqual;
        case tsql::BinaryOp::NotEqual:
            return tsql::BinaryOp::Equal;
        case tsql::BinaryOp::Less:
            return tsql::BinaryOp::GreaterEqual;
        case tsql::BinaryOp::LessEqual:
            return tsql::BinaryOp::Greater;
        case tsql::BinaryOp::Greater:
            return tsql::BinaryOp::LessEqual;
        default:
            return tsql::BinaryOp::Less;
    }
}

/// Joins conditions to a tree that is wide, not deep: SQLite limits the depth of expressions.
std::string joinConditions(const std::vector<std::string>& texts, const char* word) {
    constexpr std::size_t kInGroup = 100;
    std::vector<std::string> groups;
    for (std::size_t i = 0; i < texts.size(); i += kInGroup) {
        std::string group = "(";
        for (std::size_t k = i; k < std::min(texts.size(), i + kInGroup); ++k) {
            group += (k == i ? "" : word) + texts[k];
        }
        groups.push_back(group + ")");
    }
    return groups.size() == 1 ? groups.front() : joinConditions(groups, word);
}

TextOrder orderOf(const Bound& left, const Bound& right) {
    return left.order != TextOrder::Database ? left.order : right.order;
}

}  // namespace

std::string Binder::compare(tsql::BinaryOp op, const Bound& left, const Bound& right) {
    if (left.isNullLiteral() || right.isNullLiteral()) {
        // Never true, and never false either.
        return "(NULL)";
    }
    SqlType type = commonType(left.type, right.type);
    if (isText(type)) {
        // Lengths do not matter to a comparison.
        type.length = -1;
        type.id = isUnicode(type) ? TypeId::NVarChar : TypeId::VarChar;
    } else if (type.id == TypeId::Decimal) {
        const SqlType a = isText(left.type) || isText(right.type) ? type : asDecimal(left);
        const SqlType b = isText(left.type) || isText(right.type) ? type : asDecimal(right);
        type = isText(left.type) || isText(right.type) ? type : commonType(a, b);
        // A literal with more digits than the column holds must still compare, not overflow.
        if (!isText(left.type) && !isText(right.type)) {
            type.precision = 38;
        }
    }
    const std::string collate =
        isText(type) ? " COLLATE " + std::string(collationOf(orderOf(left, right))) : std::string();
    return "(" + to(left, type).sql + collate + comparisonText(op) + to(right, type).sql + ")";
}

std::string Binder::condition(const tsql::Expr& node, int level) {
    using tsql::as;
    switch (node.kind) {
        case tsql::ExprKind::Unary:
            if (as<tsql::UnaryExpr>(node).op == tsql::UnaryOp::Not) {
                return "(NOT " + condition(*as<tsql::UnaryExpr>(node).operand, level + 1) + ")";
            }
            break;
        case tsql::ExprKind::Binary: {
            const auto& binary = as<tsql::BinaryExpr>(node);
            if (binary.op == tsql::BinaryOp::And || binary.op == tsql::BinaryOp::Or) {
                std::vector<const tsql::Expr*> terms;
                const tsql::Expr* left = &node;
                while (left->kind == tsql::ExprKind::Binary && as<tsql::BinaryExpr>(*left).op == binary.op) {
                    terms.push_back(as<tsql::BinaryExpr>(*left).right.get());
                    left = as<tsql::BinaryExpr>(*left).left.get();
                }
                const char* const word = binary.op == tsql::BinaryOp::And ? " AND " : " OR ";
                std::vector<std::string> texts = {condition(*left, level + 1)};
                for (std::size_t i = terms.size(); i-- > 0;) {
                    texts.push_back(condition(*terms[i], level + 1));
                }
                return joinConditions(texts, word);
            }
            if (tsql::isComparison(binary.op)) {
                const Bound left = expr(*binary.left);
                return compare(binary.op, left, expr(*binary.right));
            }
            break;
        }
        case tsql::ExprKind::Between: {
            const auto& between = as<tsql::BetweenExpr>(node);
            const Bound value = expr(*between.operand);
            const Bound low = expr(*between.low);
            const Bound high = expr(*between.high);
            return std::string(between.negated ? "(NOT (" : "((") +
                   compare(tsql::BinaryOp::GreaterEqual, value, low) + " AND " +
                   compare(tsql::BinaryOp::LessEqual, value, high) + "))";
        }
        case tsql::ExprKind::Like:
            return like(as<tsql::LikeExpr>(node));
        case tsql::ExprKind::In:
            return in(as<tsql::InExpr>(node));
        case tsql::ExprKind::IsNull: {
            const auto& isNull = as<tsql::IsNullExpr>(node);
            return "(" + expr(*isNull.operand).sql + (isNull.negated ? " IS NOT NULL)" : " IS NULL)");
        }
        case tsql::ExprKind::Exists: {
            Scope scope;
            scope.parent = m_scope;
            Scope* const outer = std::exchange(m_scope, &scope);
            std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
            const BoundQuery bound = query(*as<tsql::ExistsExpr>(node).query);
            m_captured = captured;
            m_scope = outer;
            return capture("EXISTS(" + assemble(bound) + ")");
        }
        case tsql::ExprKind::Quantified:
            return quantified(as<tsql::QuantifiedExpr>(node));
        default:
            break;
    }
    raise(4145, {"expression"});
}

std::string Binder::in(const tsql::InExpr& node) {
    const Bound value = expr(*node.operand);
    const char* const word = node.negated ? " NOT IN (" : " IN (";
    if (node.query) {
        Scope scope;
        scope.parent = m_scope;
        Scope* const outer = std::exchange(m_scope, &scope);
        std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
        BoundQuery bound = query(*node.query);
        m_captured = captured;
        m_scope = outer;
        if (bound.items.size() != 1) {
            raise(116);
        }
        SqlType type = commonType(value.type, bound.items.front().type);
        if (type.id == TypeId::Decimal) {
            type.precision = 38;
        }
        if (isText(type)) {
            type.length = -1;
            type.id = TypeId::NVarChar;
        }
        std::string rows = assemble(bound);
        const Bound item = to(Bound{"c1", bound.items.front().type, true, {}, 0, {}, false, {}}, type);
        if (item.sql != "c1") {
            rows = "SELECT " + item.sql + " FROM (" + rows + ")";
        }
        const std::string collate =
            isText(type) ? " COLLATE " + std::string(collationOf(orderOf(value, bound.items.front())))
                         : std::string();
        return "(" + to(value, type).sql + collate + word + rows + "))";
    }
    // Each element is compared with its own common type, as if written out with OR. Where all meet in one
    // type the shorter form says the same.
    std::vector<Bound> items;
    bool same = !value.isNullLiteral();
    for (const tsql::ExprPtr& element : node.list) {
        items.push_back(expr(*element));
        const Bound& item = items.back();
        same = same && !item.isNullLiteral() && item.order == TextOrder::Database &&
               (isText(item.type) ? isText(value.type) : isInteger(item.type) && isInteger(value.type));
    }
    if (same) {
        SqlType type = value.type;
        for (const Bound& item : items) {
            type = commonType(type, item.type);
        }
        if (isText(type)) {
            type.length = -1;
            type.id = isUnicode(type) ? TypeId::NVarChar : TypeId::VarChar;
        }
        std::string text = "(" + to(value, type).sql;
        text += isText(type) ? " COLLATE " + std::string(collationOf(value.order)) + word : word;
        for (std::size_t i = 0; i < items.size(); ++i) {
            text += (i == 0 ? "" : ",") + to(items[i], type).sql;
        }
        return text + "))";
    }
    std::string text = node.negated ? "(NOT (" : "((";
    for (std::size_t i = 0; i < items.size(); ++i) {
        text += (i == 0 ? "" : " OR ") + compare(tsql::BinaryOp::Equal, value, items[i]);
    }
    return text + "))";
}

std::string Binder::like(const tsql::LikeExpr& node) {
    const Bound value = expr(*node.operand);
    const Bound pattern = expr(*node.pattern);
    const SqlType text = textType(TypeId::NVarChar, -1);
    const TextOrder order = orderOf(value, pattern);
    // Blanks at the end of a value do not count unless one of the two is Unicode.
    const int blanks = isUnicode(value.type) || isUnicode(pattern.type) ? 0 : kLikeTrailingBlanks;
    std::string sql = "t_like(" + to(value, text).sql + "," + to(pattern, text).sql + "," +
                      std::to_string(static_cast<int>(order) + blanks);
    if (node.escape) {
        sql += "," + to(expr(*node.escape), text).sql;
    }
    sql += ")";
    return node.negated ? "(NOT " + sql + ")" : sql;
}

std::string Binder::quantified(const tsql::QuantifiedExpr& node) {
    const Bound left = expr(*node.left);
    Scope scope;
    scope.parent = m_scope;
    Scope* const outer = std::exchange(m_scope, &scope);
    std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
    const BoundQuery bound = query(*node.query);
    m_captured = captured;
    m_scope = outer;
    if (bound.items.size() != 1) {
        raise(116);
    }
    Bound element = bound.items.front();
    element.sql = "e.c1";
    element.constant.reset();
    element.digits = 0;
    const std::string rows = " FROM (" + assemble(bound) + ") AS e";
    const std::string holds = compare(node.op, left, element);
    // Three answers: a decided one first, unknown when only NULLs stand in its way, else the other.
    if (node.all) {
        const std::string fails = compare(negated(node.op), left, element);
        return "(CASE WHEN EXISTS(SELECT 1" + rows + " WHERE " + fails + ") THEN 0 WHEN EXISTS(SELECT 1" +
               rows + " WHERE " + holds + " IS NULL) THEN NULL ELSE 1 END)";
    }
    return "(CASE WHEN EXISTS(SELECT 1" + rows + " WHERE " + holds + ") THEN 1 WHEN EXISTS(SELECT 1" + rows +
           " WHERE " + holds + " IS NULL) THEN NULL ELSE 0 END)";
}

}  // namespace magdb
