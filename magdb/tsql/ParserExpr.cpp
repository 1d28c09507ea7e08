#include "tsql/ParserImpl.h"

#include <algorithm>
#include <array>
#include <utility>

namespace magdb::tsql {

namespace {

bool isCondition(const Expr& expr) {
    switch (expr.kind) {
        case ExprKind::Between:
        case ExprKind::Like:
        case ExprKind::In:
        case ExprKind::IsNull:
        case ExprKind::Exists:
        case ExprKind::Quantified:
            return true;
        case ExprKind::Unary:
            return as<UnaryExpr>(expr).op == UnaryOp::Not;
        case ExprKind::Binary:
            return as<BinaryExpr>(expr).op >= BinaryOp::Equal;
        default:
            return false;
    }
}

std::optional<BinaryOp> sumOperator(TokenKind kind) {
    switch (kind) {
        case TokenKind::Plus:
            return BinaryOp::Add;
        case TokenKind::Minus:
            return BinaryOp::Subtract;
        case TokenKind::Ampersand:
            return BinaryOp::BitAnd;
        case TokenKind::Bar:
            return BinaryOp::BitOr;
        case TokenKind::Caret:
            return BinaryOp::BitXor;
        default:
            return std::nullopt;
    }
}

std::optional<BinaryOp> productOperator(TokenKind kind) {
    switch (kind) {
        case TokenKind::Star:
            return BinaryOp::Multiply;
        case TokenKind::Slash:
            return BinaryOp::Divide;
        case TokenKind::Percent:
            return BinaryOp::Modulo;
        default:
            return std::nullopt;
    }
}

std::unique_ptr<BinaryExpr> binary(BinaryOp op, ExprPtr left) {
    auto node = std::make_unique<BinaryExpr>();
    node->pos = left->pos;
    node->op = op;
    node->left = std::move(left);
    return node;
}

}  // namespace

void Parser::include(Expr& node, const Expr* child) const {
    if (child == nullptr || child->depth < node.depth)
        return;
    if (child->depth >= kMaxDepth)
        failTooDeep();
    node.depth = static_cast<std::uint16_t>(child->depth + 1);
}

ExprPtr Parser::finish(ExprPtr node, std::initializer_list<const Expr*> children) const {
    for (const Expr* child : children)
        include(*node, child);
    node->end = endOffset();
    return node;
}

void Parser::requireCondition(const Expr& expr) const {
    if (!isCondition(expr)) {
        const Token& near = atEnd() ? previous() : token();
        fail(
            4145,
            "An expression of non-boolean type specified in a context where a condition is expected, near '" +
                decode(near) + "'.");
    }
}

void Parser::requireValue(const Expr& expr) const {
    if (isCondition(expr))
        failHere();
}

ExprPtr Parser::expression() {
    const Nesting nesting(*this);
    return sum(false);
}

ExprPtr Parser::condition() {
    ExprPtr expr = either();
    requireCondition(*expr);
    return expr;
}

ExprPtr Parser::defaultOrExpression() {
    if (!is(Keyword::Default))
        return expression();
    auto node = start<DefaultExpr>();
    advance();
    return finish(std::move(node));
}

// -------------------------------------------------------------------------------------------------
// conditions

/// A condition or, without any operator of conditions, a value: what stands in parentheses is known only at
/// the end.
ExprPtr Parser::either() {
    const Nesting nesting(*this);
    ExprPtr left = andLevel();
    while (is(Keyword::Or)) {
        requireCondition(*left);
        advance();
        auto node = binary(BinaryOp::Or, std::move(left));
        node->right = andLevel();
        requireCondition(*node->right);
        const Expr* children[] = {node->left.get(), node->right.get()};
        left = finish(std::move(node), {children[0], children[1]});
    }
    return left;
}

ExprPtr Parser::andLevel() {
    ExprPtr left = notLevel();
    while (is(Keyword::And)) {
        requireCondition(*left);
        advance();
        auto node = binary(BinaryOp::And, std::move(left));
        node->right = notLevel();
        requireCondition(*node->right);
        const Expr* children[] = {node->left.get(), node->right.get()};
        left = finish(std::move(node), {children[0], children[1]});
    }
    return left;
}

ExprPtr Parser::notLevel() {
    if (!is(Keyword::Not))
        return predicate();
    const Nesting nesting(*this);
    auto node = start<UnaryExpr>();
    advance();
    node->op = UnaryOp::Not;
    node->operand = notLevel();
    requireCondition(*node->operand);
    const Expr* operand = node->operand.get();
    return finish(std::move(node), {operand});
}

ExprPtr Parser::existsPredicate() {
    auto node = start<ExistsExpr>();
    advance();
    node->query = parenthesisedQuery();
    return finish(std::move(node));
}

ExprPtr Parser::predicate() {
    if (is(Keyword::Exists))
        return existsPredicate();
    if (is(Keyword::Contains) || is(Keyword::Freetext))
        unsupported(upperText(token()));
    ExprPtr left = sum(true);
    if (isCondition(*left))
        return left;
    return predicateTail(std::move(left));
}

std::optional<BinaryOp> Parser::comparisonOperator() const {
    switch (token().kind) {
        case TokenKind::Equal:
            return BinaryOp::Equal;
        case TokenKind::NotEqual:
            return BinaryOp::NotEqual;
        case TokenKind::Less:
            return BinaryOp::Less;
        case TokenKind::LessEqual:
            return BinaryOp::LessEqual;
        case TokenKind::Greater:
            return BinaryOp::Greater;
        case TokenKind::GreaterEqual:
            return BinaryOp::GreaterEqual;
        default:
            return std::nullopt;
    }
}

ExprPtr Parser::predicateTail(ExprPtr left) {
    if (const auto op = comparisonOperator())
        return comparison(std::move(left), *op);
    if (accept(Keyword::Is)) {
        auto node = std::make_unique<IsNullExpr>();
        node->pos = left->pos;
        node->negated = accept(Keyword::Not);
        if (is(Keyword::Distinct))
            unsupported("IS DISTINCT FROM");
        expect(Keyword::Null);
        node->operand = std::move(left);
        const Expr* operand = node->operand.get();
        return finish(std::move(node), {operand});
    }
    const bool negated = accept(Keyword::Not);
    if (accept(Keyword::In))
        return inTail(std::move(left), negated);
    if (accept(Keyword::Like))
        return likeTail(std::move(left), negated);
    if (accept(Keyword::Between))
        return betweenTail(std::move(left), negated);
    if (negated)
        failHere();
    return left;
}

ExprPtr Parser::comparison(ExprPtr left, BinaryOp op) {
    advance();
    if (is(Keyword::All) || is(Keyword::Any) || is(Keyword::Some)) {
        auto node = std::make_unique<QuantifiedExpr>();
        node->pos = left->pos;
        node->op = op;
        node->all = is(Keyword::All);
        advance();
        node->left = std::move(left);
        node->query = parenthesisedQuery();
        const Expr* child = node->left.get();
        return finish(std::move(node), {child});
    }
    auto node = binary(op, std::move(left));
    node->right = sum(false);
    const Expr* children[] = {node->left.get(), node->right.get()};
    return finish(std::move(node), {children[0], children[1]});
}

ExprPtr Parser::inTail(ExprPtr left, bool negated) {
    auto node = std::make_unique<InExpr>();
    node->pos = left->pos;
    node->negated = negated;
    node->operand = std::move(left);
    include(*node, node->operand.get());
    if (is(TokenKind::LeftParen) && isQueryStart(1)) {
        node->query = parenthesisedQuery();
        return finish(std::move(node));
    }
    expect(TokenKind::LeftParen);
    node->list = expressionList();
    expect(TokenKind::RightParen);
    for (const ExprPtr& item : node->list)
        include(*node, item.get());
    return finish(std::move(node));
}

ExprPtr Parser::likeTail(ExprPtr left, bool negated) {
    auto node = std::make_unique<LikeExpr>();
    node->pos = left->pos;
    node->negated = negated;
    node->operand = std::move(left);
    node->pattern = sum(false);
    if (accept(Keyword::Escape))
        node->escape = sum(false);
    const Expr* children[] = {node->operand.get(), node->pattern.get(), node->escape.get()};
    return finish(std::move(node), {children[0], children[1], children[2]});
}

ExprPtr Parser::betweenTail(ExprPtr left, bool negated) {
    auto node = std::make_unique<BetweenExpr>();
    node->pos = left->pos;
    node->negated = negated;
    node->operand = std::move(left);
    node->low = sum(false);
    expect(Keyword::And);
    node->high = sum(false);
    const Expr* children[] = {node->operand.get(), node->low.get(), node->high.get()};
    return finish(std::move(node), {children[0], children[1], children[2]});
}

// -------------------------------------------------------------------------------------------------
// arithmetic

/// + - & | ^ bind alike and less than * / %.
ExprPtr Parser::sum(bool conditionAllowed) {
    ExprPtr left = product(conditionAllowed);
    while (const auto op = sumOperator(token().kind)) {
        requireValue(*left);
        advance();
        auto node = binary(*op, std::move(left));
        node->right = product(false);
        const Expr* children[] = {node->left.get(), node->right.get()};
        left = finish(std::move(node), {children[0], children[1]});
    }
    return left;
}

ExprPtr Parser::product(bool conditionAllowed) {
    ExprPtr left = unary(conditionAllowed);
    while (const auto op = productOperator(token().kind)) {
        requireValue(*left);
        advance();
        auto node = binary(*op, std::move(left));
        node->right = unary(false);
        const Expr* children[] = {node->left.get(), node->right.get()};
        left = finish(std::move(node), {children[0], children[1]});
    }
    return left;
}

/// A sign binds less than * / %: -100.0/-100.0*10.0 is -(100.0/(-(100.0*10.0))), that is 0.1.
ExprPtr Parser::unary(bool conditionAllowed) {
    const TokenKind kind = token().kind;
    if (kind != TokenKind::Plus && kind != TokenKind::Minus && kind != TokenKind::Tilde)
        return primary(conditionAllowed);
    const Nesting nesting(*this);
    auto node = start<UnaryExpr>();
    advance();
    if (kind == TokenKind::Tilde) {
        node->op = UnaryOp::BitNot;
        node->operand = unary(false);
    } else {
        node->op = kind == TokenKind::Minus ? UnaryOp::Minus : UnaryOp::Plus;
        node->operand = product(false);
    }
    const Expr* operand = node->operand.get();
    return finish(std::move(node), {operand});
}

ExprPtr Parser::primary(bool conditionAllowed) {
    ExprPtr expr = atom(conditionAllowed);
    while (is(Keyword::Collate)) {
        requireValue(*expr);
        advance();
        auto node = std::make_unique<CollateExpr>();
        node->pos = expr->pos;
        node->collation = name();
        node->operand = std::move(expr);
        const Expr* operand = node->operand.get();
        expr = finish(std::move(node), {operand});
    }
    if (is(Keyword::At) && isWord("TIME", 1))
        unsupported("AT TIME ZONE");
    return expr;
}

ExprPtr Parser::literal(LiteralKind kind) {
    auto node = start<LiteralExpr>();
    node->type = kind;
    if (kind != LiteralKind::Null)
        node->text = decode(token());
    advance();
    return finish(std::move(node));
}

ExprPtr Parser::atom(bool conditionAllowed) {
    switch (token().kind) {
        case TokenKind::Integer:
            return literal(LiteralKind::Integer);
        case TokenKind::Decimal:
            return literal(LiteralKind::Decimal);
        case TokenKind::Float:
            return literal(LiteralKind::Float);
        case TokenKind::Money:
            return literal(LiteralKind::Money);
        case TokenKind::String:
            return literal(LiteralKind::String);
        case TokenKind::NationalString:
            return literal(LiteralKind::NationalString);
        case TokenKind::Binary:
            return literal(LiteralKind::Binary);
        case TokenKind::Variable: {
            auto node = start<VariableExpr>();
            node->name = variableName();
            return finish(std::move(node));
        }
        case TokenKind::GlobalVariable: {
            auto node = start<GlobalVariableExpr>();
            node->name = decode(token());
            advance();
            return finish(std::move(node));
        }
        case TokenKind::LeftParen:
            return parenthesised(conditionAllowed);
        case TokenKind::QuotedName:
            return nameAtom();
        case TokenKind::Word:
            return keywordAtom();
        default:
            failHere();
    }
}

ExprPtr Parser::parenthesised(bool conditionAllowed) {
    if (isQueryStart(1)) {
        auto node = start<SubqueryExpr>();
        node->query = parenthesisedQuery();
        return finish(std::move(node));
    }
    expect(TokenKind::LeftParen);
    ExprPtr inner = conditionAllowed ? either() : expression();
    expect(TokenKind::RightParen);
    return inner;
}

ExprPtr Parser::keywordAtom() {
    switch (token().keyword) {
        case Keyword::Null:
            return literal(LiteralKind::Null);
        case Keyword::Case:
            return caseExpression();
        case Keyword::Cast:
        case Keyword::TryCast:
            return is(TokenKind::LeftParen, 1) ? castExpression() : nameAtom();
        case Keyword::Convert:
        case Keyword::TryConvert:
            return convertExpression();
        case Keyword::CurrentTimestamp:
        case Keyword::CurrentUser:
        case Keyword::SessionUser:
        case Keyword::SystemUser:
        case Keyword::User:
            return niladic();
        case Keyword::Coalesce:
        case Keyword::Nullif:
        case Keyword::Left:
        case Keyword::Right: {
            if (!is(TokenKind::LeftParen, 1))
                failHere();
            ObjectName called;
            called.pos = here();
            called.name = decode(token());
            advance();
            return functionCall(std::move(called));
        }
        case Keyword::Identity:
            unsupported("IDENTITY() in a SELECT list");
        case Keyword::Next:
            if (isWord("VALUE", 1) && is(Keyword::For, 2))
                unsupported("NEXT VALUE FOR");
            return nameAtom();
        default:
            return nameAtom();
    }
}

/// A column or a call of a function.
ExprPtr Parser::nameAtom() {
    const SourcePos pos = here();
    std::vector<std::string> parts;
    parts.push_back(name());
    while (accept(TokenKind::Dot)) {
        if (parts.size() == 4)
            unsupported("a name with a server part");
        parts.push_back(is(TokenKind::Dot) ? std::string() : name());
    }
    if (!is(TokenKind::LeftParen))
        return columnAtom(std::move(parts), pos);
    ObjectName called;
    called.pos = pos;
    if (parts.size() > 3)
        failHere();
    called.name = std::move(parts.back());
    if (parts.size() > 1)
        called.schema = std::move(parts[parts.size() - 2]);
    if (parts.size() > 2)
        called.database = std::move(parts[0]);
    return functionCall(std::move(called));
}

ExprPtr Parser::columnAtom(std::vector<std::string> parts, SourcePos pos) {
    auto node = std::make_unique<ColumnExpr>();
    node->pos = pos;
    node->name = std::move(parts.back());
    parts.pop_back();
    node->qualifier = std::move(parts);
    return finish(std::move(node));
}

ExprPtr Parser::niladic() {
    auto node = start<FunctionExpr>();
    node->name.pos = here();
    node->name.name = decode(token());
    node->niladic = true;
    advance();
    return finish(std::move(node));
}

ExprPtr Parser::caseExpression() {
    const Nesting nesting(*this);
    auto node = start<CaseExpr>();
    advance();
    if (!is(Keyword::When)) {
        node->operand = sum(false);
        include(*node, node->operand.get());
    }
    if (!is(Keyword::When))
        failHere();
    while (accept(Keyword::When)) {
        CaseExpr::Branch branch;
        branch.when = node->operand ? sum(false) : condition();
        expect(Keyword::Then);
        branch.then = sum(false);
        include(*node, branch.when.get());
        include(*node, branch.then.get());
        node->branches.push_back(std::move(branch));
    }
    if (accept(Keyword::Else)) {
        node->otherwise = sum(false);
        include(*node, node->otherwise.get());
    }
    expect(Keyword::End);
    return finish(std::move(node));
}

ExprPtr Parser::castExpression() {
    auto node = start<CastExpr>();
    node->tryForm = is(Keyword::TryCast);
    advance();
    expect(TokenKind::LeftParen);
    node->operand = expression();
    expect(Keyword::As);
    node->type = dataType();
    expect(TokenKind::RightParen);
    const Expr* operand = node->operand.get();
    return finish(std::move(node), {operand});
}

ExprPtr Parser::convertExpression() {
    auto node = start<CastExpr>();
    node->convert = true;
    node->tryForm = is(Keyword::TryConvert);
    advance();
    expect(TokenKind::LeftParen);
    node->type = dataType();
    expect(TokenKind::Comma);
    node->operand = expression();
    if (accept(TokenKind::Comma))
        node->style = expression();
    expect(TokenKind::RightParen);
    const Expr* children[] = {node->operand.get(), node->style.get()};
    return finish(std::move(node), {children[0], children[1]});
}

std::vector<ExprPtr> Parser::expressionList() {
    std::vector<ExprPtr> list;
    do {
        list.push_back(expression());
    } while (accept(TokenKind::Comma));
    return list;
}

std::vector<OrderItem> Parser::orderItems() {
    std::vector<OrderItem> items;
    do {
        OrderItem item;
        item.expr = expression();
        if (accept(Keyword::Desc))
            item.descending = true;
        else
            accept(Keyword::Asc);
        items.push_back(std::move(item));
    } while (accept(TokenKind::Comma));
    return items;
}

}  // namespace magdb::tsql
