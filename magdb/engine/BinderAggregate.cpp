#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <utility>

// Aggregates and window functions.

namespace magdb {

namespace {

/// SUM and AVG of small integers are int; of decimals they have 38 digits.
SqlType sumType(const std::string& name, const SqlType& type) {
    if (isInteger(type)) {
        return plainType(type.id == TypeId::BigInt ? TypeId::BigInt : TypeId::Int);
    }
    if (type.id == TypeId::Decimal) {
        return decimalType(38, name == "avg" ? std::max<int>(type.scale, 6) : type.scale);
    }
    return type.id == TypeId::Real ? plainType(TypeId::Float) : type;
}

std::string collateSuffix(const Bound& item) {
    return isText(item.type) ? " COLLATE " + std::string(collationOf(item.order)) : std::string();
}

}  // namespace

Bound Binder::aggregate(const tsql::FunctionExpr& node, const std::string& name) {
    // The aggregate belongs to the nearest query around it that can hold one.
    Scope* owner = m_scope;
    while (owner != nullptr && owner->sources.empty() && owner->parent != nullptr &&
           !owner->aggregatesAllowed) {
        owner = owner->parent;
    }
    if (owner == nullptr || !owner->aggregatesAllowed) {
        raise(147);
    }
    if (owner->aggregateDepth > 0) {
        raise(130);
    }
    owner->sawAggregate = true;
    ++owner->aggregateDepth;
    std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
    Bound result;
    try {
        result = name == "string_agg" ? stringAgg(node) : aggregateCall(name, node, false);
    } catch (...) {
        --owner->aggregateDepth;
        m_captured = captured;
        throw;
    }
    m_captured = captured;
    --owner->aggregateDepth;
    result.sql = capture(std::move(result.sql));
    return result;
}

Bound Binder::aggregateCall(const std::string& name, const tsql::FunctionExpr& node, bool window) {
    Bound result;
    const std::string distinct = node.distinct ? "DISTINCT " : "";
    if (node.distinct && window) {
        refuse("DISTINCT in a window function");
    }
    if (name == "count" || name == "count_big") {
        result.type = plainType(name == "count" ? TypeId::Int : TypeId::BigInt);
        result.nullable = false;
        if (node.star) {
            result.sql = "count(*)";
            return result;
        }
        if (node.arguments.size() != 1) {
            raise(174, {name, "1"});
        }
        const Bound value = expr(*node.arguments.front());
        result.sql = "count(" + distinct + value.sql + (node.distinct ? collateSuffix(value) : "") + ")";
        return result;
    }
    if (node.arguments.size() != 1) {
        raise(174, {name, "1"});
    }
    Bound value = expr(*node.arguments.front());
    if (value.isNullLiteral() || (value.type.id == TypeId::Bit && (name != "count"))) {
        raise(8117, {value.isNullLiteral() ? "NULL" : baseName(value.type.id), name});
    }
    if (name == "min" || name == "max") {
        result = value;
        result.nullable = true;
        result.identity = false;
        result.name.clear();
        result.constant.reset();
        result.digits = 0;
        result.sql = name + "(" + value.sql + collateSuffix(value) + ")";
        return result;
    }
    if (!isNumber(value.type)) {
        raise(8117, {baseName(value.type.id), name});
    }
    if (name == "sum" || name == "avg") {
        result.type = sumType(name, value.type);
        // Rows of the same number count once with DISTINCT, so the function gets the bare value.
        const std::string kind = isInteger(value.type) ? "int" : (isExact(value.type) ? "dec" : "flt");
        const std::string function = "t_" + name + "_" + kind;
        if (node.distinct && kind == "dec") {
            refuse("SUM or AVG (DISTINCT) of decimals");
        }
        if (kind == "flt") {
            result.sql = function + "(" + distinct + value.sql + ")";
        } else if (kind == "int") {
            const bool big = result.type.id == TypeId::BigInt;
            result.sql = function + (big ? "8(" : "4(") + distinct + value.sql + ")";
        } else {
            result.sql = function + "(" + value.sql + "," + std::to_string(packType(value.type)) + "," +
                         std::to_string(packType(result.type)) + ")";
        }
        return result;
    }
    if (window) {
        refuse(upper(name) + " as a window function");
    }
    result.type = plainType(TypeId::Float);
    result.sql = "t_" + name + "(" + distinct + to(value, result.type).sql + ")";
    return result;
}

Bound Binder::stringAgg(const tsql::FunctionExpr& node) {
    if (node.arguments.size() != 2) {
        raise(174, {"string_agg", "2"});
    }
    Bound value = expr(*node.arguments[0]);
    if (!isText(value.type)) {
        value = to(value, textType(TypeId::NVarChar, 4000));
    }
    const Bound separator = to(expr(*node.arguments[1]), textType(TypeId::NVarChar, -1));
    Bound result;
    result.type = textType(isUnicode(value.type) ? TypeId::NVarChar : TypeId::VarChar,
                           value.type.length < 0 ? -1 : (isUnicode(value.type) ? 4000 : 8000));
    result.sql = "t_string_agg(" + value.sql + "," + separator.sql;
    for (const tsql::OrderItem& item : node.withinGroup) {
        const Bound key = expr(*item.expr);
        result.sql += "," + key.sql + "," + (item.descending ? "1" : "0");
    }
    result.sql += ")";
    return result;
}

std::string Binder::overClause(const tsql::Window& window) {
    std::string text = " OVER (";
    std::string blank;
    for (std::size_t i = 0; i < window.partitionBy.size(); ++i) {
        const Bound value = expr(*window.partitionBy[i]);
        text += (i == 0 ? "PARTITION BY " : ",") + value.sql + collateSuffix(value);
        blank = " ";
    }
    for (std::size_t i = 0; i < window.orderBy.size(); ++i) {
        const Bound value = expr(*window.orderBy[i].expr);
        text += (i == 0 ? blank + "ORDER BY " : ",") + value.sql + collateSuffix(value) +
                (window.orderBy[i].descending ? " DESC" : "");
        blank = " ";
    }
    if (window.frame) {
        const auto bound = [&](tsql::WindowFrame::Bound kind, const tsql::ExprPtr& count) -> std::string {
            switch (kind) {
                case tsql::WindowFrame::Bound::UnboundedPreceding:
                    return "UNBOUNDED PRECEDING";
                case tsql::WindowFrame::Bound::Preceding:
                    return limitCount(*count) + " PRECEDING";
                case tsql::WindowFrame::Bound::CurrentRow:
                    return "CURRENT ROW";
                case tsql::WindowFrame::Bound::Following:
                    return limitCount(*count) + " FOLLOWING";
                case tsql::WindowFrame::Bound::UnboundedFollowing:
                    return "UNBOUNDED FOLLOWING";
            }
            return {};
        };
        text += std::string(window.frame->unit == tsql::WindowFrame::Unit::Rows ? " ROWS" : " RANGE") +
                " BETWEEN " + bound(window.frame->start, window.frame->startCount) + " AND " +
                bound(window.frame->end, window.frame->endCount);
    }
    return text + ")";
}

Bound Binder::windowed(const tsql::FunctionExpr& node, const std::string& name) {
    if (!node.over) {
        raise(10753, {node.name.name});
    }
    if (m_scope == nullptr || !m_scope->aggregatesAllowed) {
        raise(4108);
    }
    std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
    Bound result;
    const auto argument = [&](std::size_t i) { return expr(*node.arguments[i]); };
    const auto needs = [&](std::size_t least, std::size_t most) {
        if (node.arguments.size() < least || node.arguments.size() > most) {
            raise(174, {name, std::to_string(least)});
        }
    };
    if (name == "row_number" || name == "rank" || name == "dense_rank") {
        needs(0, 0);
        result.type = plainType(TypeId::BigInt);
        result.nullable = false;
        result.sql = name + "()";
    } else if (name == "ntile") {
        needs(1, 1);
        result.type = plainType(TypeId::BigInt);
        result.sql = "ntile(" + to(argument(0), result.type).sql + ")";
    } else if (name == "percent_rank" || name == "cume_dist") {
        result.type = plainType(TypeId::Float);
        result.sql = name + "()";
    } else if (name == "first_value" || name == "last_value") {
        needs(1, 1);
        result = argument(0);
        result.sql = name + "(" + result.sql + ")";
    } else if (name == "lag" || name == "lead") {
        needs(1, 3);
        result = argument(0);
        std::string sql = name + "(" + result.sql;
        sql += node.arguments.size() > 1 ? "," + to(argument(1), plainType(TypeId::BigInt)).sql : "";
        sql += node.arguments.size() > 2 ? "," + to(argument(2), result.type).sql : "";
        result.sql = sql + ")";
    } else if (name == "string_agg") {
        refuse("STRING_AGG as a window function");
    } else {
        result = aggregateCall(name, node, true);
    }
    result.sql += overClause(*node.over);
    result.constant.reset();
    result.digits = 0;
    result.identity = false;
    result.name.clear();
    m_captured = captured;
    // The rows must be numbered before any row of them is taken on its own.
    result.sql = capture(std::move(result.sql));
    return result;
}

}  // namespace magdb
