#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/Decimal.h"
#include "engine/SqlError.h"
#include "engine/Text.h"

#include <algorithm>
#include <utility>

// Values: columns, variables, operators, CASE and CAST.

namespace magdb {

namespace {

std::string operatorText(tsql::BinaryOp op) {
    switch (op) {
        case tsql::BinaryOp::Add:
            return "add";
        case tsql::BinaryOp::Subtract:
            return "subtract";
        case tsql::BinaryOp::Multiply:
            return "multiply";
        case tsql::BinaryOp::Divide:
            return "divide";
        case tsql::BinaryOp::Modulo:
            return "modulo";
        case tsql::BinaryOp::BitAnd:
            return "'&'";
        case tsql::BinaryOp::BitOr:
            return "'|'";
        case tsql::BinaryOp::BitXor:
            return "'^'";
        default:
            return {};
    }
}

ArithmeticOp arithmeticOp(tsql::BinaryOp op) {
    switch (op) {
        case tsql::BinaryOp::Subtract:
            return ArithmeticOp::Subtract;
        case tsql::BinaryOp::Multiply:
            return ArithmeticOp::Multiply;
        case tsql::BinaryOp::Divide:
            return ArithmeticOp::Divide;
        case tsql::BinaryOp::Modulo:
            return ArithmeticOp::Modulo;
        default:
            return ArithmeticOp::Add;
    }
}

bool isBitwise(tsql::BinaryOp op) {
    return op == tsql::BinaryOp::BitAnd || op == tsql::BinaryOp::BitOr || op == tsql::BinaryOp::BitXor;
}

/// Range check of integer results: ck1, ck2, ck4 or ck8.
std::string checkedInteger(const SqlType& type, const std::string& sql) {
    switch (type.id) {
        case TypeId::TinyInt:
            return "ck1(" + sql + ")";
        case TypeId::SmallInt:
            return "ck2(" + sql + ")";
        case TypeId::BigInt:
            return "ck8(" + sql + ")";
        default:
            return "ck4(" + sql + ")";
    }
}

std::string integerArithmetic(tsql::BinaryOp op, const std::string& left, const std::string& right) {
    switch (op) {
        case tsql::BinaryOp::Add:
            return left + " + " + right;
        case tsql::BinaryOp::Subtract:
            return left + " - " + right;
        case tsql::BinaryOp::Multiply:
            return left + " * " + right;
        case tsql::BinaryOp::Divide:
            return "t_div(" + left + "," + right + ")";
        case tsql::BinaryOp::Modulo:
            return "t_mod(" + left + "," + right + ")";
        case tsql::BinaryOp::BitAnd:
            return "(" + left + " & " + right + ")";
        case tsql::BinaryOp::BitOr:
            return "(" + left + " | " + right + ")";
        default:
            return "((" + left + " | " + right + ") - (" + left + " & " + right + "))";
    }
}

}  // namespace

Bound Binder::expr(const tsql::Expr& node) {
    // With GROUP BY on an expression, the same expression elsewhere stands for the group.
    if (m_scope != nullptr && m_scope->grouped && m_scope->groupsExpressions &&
        m_scope->aggregateDepth == 0 && node.kind != tsql::ExprKind::Literal &&
        node.kind != tsql::ExprKind::Variable) {
        return exprInGroup(node);
    }
    return exprPlain(node);
}

Bound Binder::exprInGroup(const tsql::Expr& node) {
    Scope* const scope = m_scope;
    scope->grouped = false;
    const bool sawAggregate = scope->sawAggregate;
    const std::size_t parameters = m_parameters.size();
    const std::size_t captured = m_captured != nullptr ? m_captured->size() : 0;
    Bound bound;
    bool whole = false;
    try {
        bound = exprPlain(node);
        whole = std::find(scope->groupTexts.begin(), scope->groupTexts.end(), bound.sql) !=
                scope->groupTexts.end();
    } catch (const SqlError&) {
        whole = false;
    }
    scope->grouped = true;
    if (whole) {
        return bound;
    }
    scope->sawAggregate = sawAggregate;
    m_parameters.resize(std::max(parameters, std::size_t{0}));
    if (m_captured != nullptr) {
        m_captured->resize(captured);
    }
    return exprPlain(node);
}

Bound Binder::exprPlain(const tsql::Expr& node) {
    using tsql::as;
    switch (node.kind) {
        case tsql::ExprKind::Literal:
            return literal(as<tsql::LiteralExpr>(node));
        case tsql::ExprKind::Column:
            return column(as<tsql::ColumnExpr>(node));
        case tsql::ExprKind::Variable:
            return variable(as<tsql::VariableExpr>(node));
        case tsql::ExprKind::GlobalVariable:
            return globalVariable(as<tsql::GlobalVariableExpr>(node));
        case tsql::ExprKind::Unary:
            return unary(as<tsql::UnaryExpr>(node));
        case tsql::ExprKind::Binary:
            return binary(as<tsql::BinaryExpr>(node));
        case tsql::ExprKind::Collate: {
            const auto& collate = as<tsql::CollateExpr>(node);
            Bound bound = expr(*collate.operand);
            if (!isText(bound.type) && !bound.isNullLiteral()) {
                raise(447, {baseName(bound.type.id)});
            }
            bound.order = textOrder(collate.collation);
            return bound;
        }
        case tsql::ExprKind::Function:
            return function(as<tsql::FunctionExpr>(node));
        case tsql::ExprKind::Cast:
            return cast(as<tsql::CastExpr>(node));
        case tsql::ExprKind::Case:
            return caseOf(as<tsql::CaseExpr>(node));
        case tsql::ExprKind::Subquery:
            return subquery(*as<tsql::SubqueryExpr>(node).query);
        case tsql::ExprKind::Default:
            refuse("DEFAULT in this place");
        default:
            raise(102, {"condition"});
    }
}

Bound Binder::unary(const tsql::UnaryExpr& node) {
    if (node.op == tsql::UnaryOp::Not) {
        raise(102, {"NOT"});
    }
    Bound value = expr(*node.operand);
    if (node.op == tsql::UnaryOp::Plus || value.isNullLiteral()) {
        return value;
    }
    if (!isNumber(value.type)) {
        raise(8117, {baseName(value.type.id), node.op == tsql::UnaryOp::Minus ? "minus" : "'~'"});
    }
    if (node.op == tsql::UnaryOp::BitNot) {
        if (!isInteger(value.type)) {
            raise(8117, {messageName(value.type), "'~'"});
        }
        value.constant.reset();
        value.sql = value.type.id == TypeId::Bit       ? "(1 - " + value.sql + ")"
                    : value.type.id == TypeId::TinyInt ? "(255 - " + value.sql + ")"
                                                       : "(~" + value.sql + ")";
        return value;
    }
    if (value.constant && !isInteger(value.type)) {
        if (auto* number = std::get_if<DecimalValue>(&*value.constant)) {
            number->unscaled = -number->unscaled;
            value.sql = sqliteLiteral(*value.constant);
            return value;
        }
    }
    if (isInteger(value.type)) {
        if (value.type.id == TypeId::Bit || value.type.id == TypeId::TinyInt) {
            value.type = plainType(TypeId::SmallInt);
        }
        if (value.constant) {
            value.constant = -std::get<std::int64_t>(*value.constant);
            value.sql = "(" + sqliteLiteral(*value.constant) + ")";
            return value;
        }
        value.sql = checkedInteger(value.type, "-(" + value.sql + ")");
    } else if (isExact(value.type)) {
        value.sql = "t_neg(" + value.sql + ")";
    } else {
        value.sql = "(-" + value.sql + ")";
    }
    value.constant.reset();
    return value;
}

Bound Binder::binary(const tsql::BinaryExpr& node) {
    // A chain of one operator is a deep left-leaning tree; walking down its spine keeps the stack flat.
    std::vector<const tsql::BinaryExpr*> spine;
    const tsql::Expr* left = &node;
    while (left->kind == tsql::ExprKind::Binary) {
        const auto& next = tsql::as<tsql::BinaryExpr>(*left);
        if (operatorText(next.op).empty()) {
            raise(102, {"condition"});
        }
        spine.push_back(&next);
        left = next.left.get();
        if (m_scope != nullptr && m_scope->grouped && m_scope->groupsExpressions) {
            break;
        }
    }
    Bound result = expr(*left);
    for (std::size_t i = spine.size(); i-- > 0;) {
        Bound right = expr(*spine[i]->right);
        result = arithmetic(spine[i]->op, result, right);
    }
    return result;
}

Bound Binder::concatenate(const Bound& left, const Bound& right) {
    Bound result;
    result.type = commonType(left.type, right.type);
    result.nullable = left.nullable || right.nullable;
    result.order = left.order != TextOrder::Database ? left.order : right.order;
    const bool binary = result.type.id == TypeId::VarBinary;
    if (!binary) {
        result.type.id = isUnicode(result.type) ? TypeId::NVarChar : TypeId::VarChar;
    }
    const int limit = isUnicode(result.type) ? 4000 : 8000;
    const auto lengthOf = [](const Bound& b) { return b.isNullLiteral() ? 1 : b.type.length; };
    const bool unlimited = lengthOf(left) < 0 || lengthOf(right) < 0;
    const int sum = unlimited ? -1 : lengthOf(left) + lengthOf(right);
    SqlType wide = result.type;
    wide.length = -1;
    const std::string a = to(left, wide).sql;
    const std::string b = to(right, wide).sql;
    // SQLite's operator makes text of its operands; the cast brings binary back.
    result.sql = binary ? "CAST(" + a + "||" + b + " AS BLOB)" : "(" + a + "||" + b + ")";
    result.type.length = unlimited ? -1 : std::min(sum, limit);
    if (sum > limit) {
        result.sql = "t_conv(" + result.sql + "," + std::to_string(packType(wide)) + "," +
                     std::to_string(packType(result.type)) + ",0)";
    }
    return result;
}

Bound Binder::arithmetic(tsql::BinaryOp op, const Bound& left, const Bound& right) {
    const SqlType strong = left.type.id > right.type.id ? left.type : right.type;
    Bound result;
    result.nullable = left.nullable || right.nullable;
    if (strong.id == TypeId::Null) {
        result.sql = "NULL";
        result.type = plainType(TypeId::Int);
        return result;
    }
    if (op == tsql::BinaryOp::Add && (isText(strong) || strong.id == TypeId::VarBinary)) {
        return concatenate(left, right);
    }
    if (strong.id == TypeId::DateTime && (op == tsql::BinaryOp::Add || op == tsql::BinaryOp::Subtract)) {
        result.type = strong;
        result.sql = "t_dtarith(" + std::to_string(op == tsql::BinaryOp::Add ? 1 : -1) + "," +
                     to(left, strong).sql + "," + to(right, strong).sql + ")";
        return result;
    }
    if (!isNumber(strong) || (strong.id == TypeId::Bit && !isBitwise(op))) {
        if (isText(strong) || strong.id == TypeId::Date || left.type.id == right.type.id) {
            raise(
                strong.id == TypeId::Date && left.type.id != right.type.id ? 206 : 8117,
                strong.id == TypeId::Date && left.type.id != right.type.id
                    ? std::initializer_list<std::string_view>{baseName(left.type.id), baseName(right.type.id)}
                    : std::initializer_list<std::string_view>{baseName(strong.id), operatorText(op)});
        }
        raise(402, {baseName(left.type.id), baseName(right.type.id), operatorText(op)});
    }
    if (isInteger(strong)) {
        const std::string a = to(left, strong).sql;
        const std::string b = to(right, strong).sql;
        result.type = strong;
        result.sql = integerArithmetic(op, a, b);
        if (!isBitwise(op)) {
            result.sql = checkedInteger(strong, result.sql);
        }
        return result;
    }
    if (isBitwise(op)) {
        raise(402, {messageName(left.type), messageName(right.type), operatorText(op)});
    }
    const auto code = static_cast<int>(arithmeticOp(op));
    if (isApproximate(strong)) {
        if (op == tsql::BinaryOp::Modulo) {
            raise(8117, {baseName(strong.id), "modulo"});
        }
        const SqlType type = plainType(left.type.id == TypeId::Real && right.type.id == TypeId::Real
                                           ? TypeId::Real
                                           : (strong.id == TypeId::Real ? TypeId::Real : TypeId::Float));
        result.type = type;
        result.sql =
            "t_flt(" + std::to_string(code) + "," + to(left, type).sql + "," + to(right, type).sql + ")";
        return result;
    }
    if (strong.id == TypeId::Money) {
        result.type = strong;
        result.sql = "t_dec(" + std::to_string(code) + "," + to(left, strong).sql + ",4," +
                     to(right, strong).sql + ",4," + std::to_string(packType(strong)) + ")";
        return result;
    }
    const SqlType leftType = isText(left.type) || left.isNullLiteral() ? strong : asDecimal(left);
    const SqlType rightType = isText(right.type) || right.isNullLiteral() ? strong : asDecimal(right);
    result.type = decimalResult(arithmeticOp(op), leftType, rightType);
    result.sql = "t_dec(" + std::to_string(code) + "," + to(left, leftType).sql + "," +
                 std::to_string(leftType.scale) + "," + to(right, rightType).sql + "," +
                 std::to_string(rightType.scale) + "," + std::to_string(packType(result.type)) + ")";
    return result;
}

Bound Binder::cast(const tsql::CastExpr& node) {
    const Bound value = expr(*node.operand);
    const SqlType type = resolveType(node.type, 1, true);
    std::string style = "0";
    int fixedStyle = 0;
    if (node.style) {
        const Bound bound = to(expr(*node.style), plainType(TypeId::Int));
        style = bound.sql;
        if (bound.constant) {
            fixedStyle = static_cast<int>(std::get<std::int64_t>(*bound.constant));
        }
    }
    if (!value.isNullLiteral()) {
        checkConversion(value.type, type, true);
    }
    if (!node.tryForm && (!node.style || style == std::to_string(fixedStyle))) {
        Bound result = to(value, type, true, fixedStyle);
        // Even where nothing is to be done the result is no column any more.
        result.identity = false;
        result.name.clear();
        return result;
    }
    Bound result = value;
    result.identity = false;
    result.name.clear();
    result.constant.reset();
    result.digits = 0;
    result.type = type;
    if (value.isNullLiteral()) {
        return result;
    }
    result.nullable = value.nullable || node.tryForm;
    result.sql = std::string(node.tryForm ? "t_try(" : "t_conv(") + value.sql + "," +
                 std::to_string(packType(value.type)) + "," + std::to_string(packType(type)) + "," + style +
                 ")";
    return result;
}

Bound Binder::caseOf(const tsql::CaseExpr& node) {
    std::vector<std::string> conditions;
    std::vector<Bound> values;
    std::optional<Bound> operand;
    if (node.operand) {
        operand = expr(*node.operand);
    }
    for (const tsql::CaseExpr::Branch& branch : node.branches) {
        conditions.push_back(operand ? compare(tsql::BinaryOp::Equal, *operand, expr(*branch.when))
                                     : where(*branch.when));
        values.push_back(expr(*branch.then));
    }
    if (node.otherwise) {
        values.push_back(expr(*node.otherwise));
    }
    SqlType type;
    Bound result;
    result.nullable = !node.otherwise;
    for (const Bound& value : values) {
        // An integer literal among decimals counts with its own digits.
        type = type.id == TypeId::Decimal && value.digits > 0 ? commonType(type, asDecimal(value))
                                                              : commonType(type, value.type);
        result.nullable = result.nullable || value.nullable;
        result.order = value.order != TextOrder::Database ? value.order : result.order;
    }
    if (type.id == TypeId::Null) {
        raise(8133);
    }
    result.type = type;
    result.sql = "(CASE";
    for (std::size_t i = 0; i < conditions.size(); ++i) {
        result.sql += " WHEN " + conditions[i] + " THEN " + to(values[i], type).sql;
    }
    if (node.otherwise) {
        result.sql += " ELSE " + to(values.back(), type).sql;
    }
    result.sql += " END)";
    return result;
}

Bound Binder::subquery(const tsql::Query& node) {
    Scope scope;
    scope.parent = m_scope;
    Scope* const outer = std::exchange(m_scope, &scope);
    std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
    const BoundQuery bound = query(node);
    m_captured = captured;
    m_scope = outer;
    if (bound.items.size() != 1) {
        raise(116);
    }
    Bound result = bound.items.front();
    result.nullable = true;
    result.identity = false;
    result.name.clear();
    result.constant.reset();
    result.digits = 0;
    // More than one row is an error, not the first row's value.
    result.sql = capture(bound.singleRow ? "(" + assemble(bound) + ")"
                                         : "(SELECT t_single(c1) FROM (" + assemble(bound) + "))");
    return result;
}

}  // namespace magdb
