#include "tsql/ParserImpl.h"

#include <algorithm>
#include <array>
#include <utility>

namespace magdb::tsql {

namespace {

constexpr std::string_view kOrderByRefused =
    "The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and common table "
    "expressions, unless TOP, OFFSET or FOR XML is also specified.";

constexpr std::array<std::string_view, 31> kQueryHints = {"RECOMPILE",
                                                          "FAST",
                                                          "FORCE",
                                                          "ORDER",
                                                          "LOOP",
                                                          "MERGE",
                                                          "HASH",
                                                          "JOIN",
                                                          "CONCAT",
                                                          "UNION",
                                                          "KEEP",
                                                          "KEEPFIXED",
                                                          "PLAN",
                                                          "MAXDOP",
                                                          "OPTIMIZE",
                                                          "FOR",
                                                          "UNKNOWN",
                                                          "ROBUST",
                                                          "EXPAND",
                                                          "VIEWS",
                                                          "GROUP",
                                                          "IGNORE_NONCLUSTERED_COLUMNSTORE_INDEX",
                                                          "NO_PERFORMANCE_SPOOL",
                                                          "LABEL",
                                                          "PARAMETERIZATION",
                                                          "SIMPLE",
                                                          "FORCED",
                                                          "QUERYTRACEON",
                                                          "MIN_GRANT_PERCENT",
                                                          "MAX_GRANT_PERCENT",
                                                          "DISABLE_OPTIMIZED_PLAN_FORCING"};

bool hasTop(const QueryBody& body) {
    return body.kind == QueryBodyKind::Select && as<SelectBody>(body).top.has_value();
}

}  // namespace

bool Parser::isQueryStart(std::size_t ahead) const {
    return is(Keyword::Select, ahead);
}

QueryPtr Parser::query(bool withAllowed, bool optionAllowed) {
    const Nesting nesting(*this);
    auto out = std::make_unique<Query>();
    out->pos = here();
    if (withAllowed && is(Keyword::With))
        out->with = commonTables();
    out->body = setOperations();
    orderByTail(*out);
    refuseForClause();
    if (optionAllowed)
        out->maxRecursion = optionClause();
    out->end = endOffset();
    return out;
}

QueryPtr Parser::innerQuery(bool withAllowed) {
    QueryPtr out = query(withAllowed, false);
    if (!out->orderBy.empty() && !out->offset && !hasTop(*out->body))
        fail(1033, std::string(kOrderByRefused));
    return out;
}

QueryPtr Parser::parenthesisedQuery() {
    expect(TokenKind::LeftParen);
    QueryPtr out = innerQuery();
    expect(TokenKind::RightParen);
    return out;
}

std::vector<CommonTable> Parser::commonTables() {
    std::vector<CommonTable> tables;
    expect(Keyword::With);
    if (isWord("XMLNAMESPACES") || isWord("CHANGE_TRACKING_CONTEXT"))
        unsupported("WITH " + upperText(token()));
    do {
        CommonTable table;
        table.pos = here();
        table.name = name();
        if (is(TokenKind::LeftParen))
            table.columns = nameList();
        expect(Keyword::As);
        table.query = parenthesisedQuery();
        tables.push_back(std::move(table));
    } while (accept(TokenKind::Comma));
    return tables;
}

// ---------------------------------------------------------------------------------------------- set
// operations

std::unique_ptr<SetOperationBody> Parser::combine(SetOp op, QueryBodyPtr left) {
    if (++setOperations_ > kMaxSetOperations)
        failTooDeep();
    auto node = std::make_unique<SetOperationBody>();
    node->pos = left->pos;
    node->op = op;
    node->left = std::move(left);
    return node;
}

/// INTERSECT binds more than UNION and EXCEPT, which are taken from left to right.
QueryBodyPtr Parser::setOperations() {
    QueryBodyPtr left = intersections();
    for (;;) {
        SetOp op = SetOp::Union;
        if (accept(Keyword::Union))
            op = accept(Keyword::All) ? SetOp::UnionAll : SetOp::Union;
        else if (accept(Keyword::Except))
            op = SetOp::Except;
        else
            return left;
        auto node = combine(op, std::move(left));
        node->right = intersections();
        left = std::move(node);
    }
}

QueryBodyPtr Parser::intersections() {
    QueryBodyPtr left = queryTerm();
    while (accept(Keyword::Intersect)) {
        auto node = combine(SetOp::Intersect, std::move(left));
        node->right = queryTerm();
        left = std::move(node);
    }
    return left;
}

QueryBodyPtr Parser::queryTerm() {
    if (is(Keyword::Select))
        return selectBody();
    expect(TokenKind::LeftParen);
    const Nesting nesting(*this);
    QueryBodyPtr inner = setOperations();
    expect(TokenKind::RightParen);
    return inner;
}

// ------------------------------------------------------------------------------------------------------
// SELECT

QueryBodyPtr Parser::selectBody() {
    auto body = std::make_unique<SelectBody>();
    body->pos = here();
    const int outerTables = std::exchange(tables_, 0);
    expect(Keyword::Select);
    body->distinct = accept(Keyword::Distinct);
    if (!body->distinct)
        accept(Keyword::All);
    if (is(Keyword::Top))
        body->top = topClause();
    body->items = selectItems();
    if (accept(Keyword::Into))
        body->into = objectName();
    if (accept(Keyword::From))
        body->from = fromList();
    if (accept(Keyword::Where))
        body->where = condition();
    if (is(Keyword::Group))
        groupBy(*body);
    if (accept(Keyword::Having))
        body->having = condition();
    tables_ = outerTables;
    return body;
}

TopClause Parser::topClause() {
    TopClause top;
    advance();
    if (accept(TokenKind::LeftParen)) {
        top.count = expression();
        expect(TokenKind::RightParen);
    } else if (is(TokenKind::Integer)) {
        top.count = literal(LiteralKind::Integer);
    } else if (is(TokenKind::Decimal)) {
        top.count = literal(LiteralKind::Decimal);
    } else {
        failHere();
    }
    top.percent = accept(Keyword::Percent);
    if (is(Keyword::With) && is(Keyword::Ties, 1))
        unsupported("TOP ... WITH TIES");
    return top;
}

std::vector<SelectItem> Parser::selectItems() {
    std::vector<SelectItem> items;
    do {
        items.push_back(selectItem());
    } while (accept(TokenKind::Comma));
    return items;
}

SelectItem Parser::selectItem() {
    SelectItem item;
    item.pos = here();
    if (starItem(item) || assignmentItem(item) || aliasFirstItem(item))
        return item;
    item.expr = expression();
    if (accept(Keyword::As))
        item.alias = alias();
    else if (isAlias())
        item.alias = alias();
    return item;
}

/// `*` and `t.*`.
bool Parser::starItem(SelectItem& item) {
    std::size_t ahead = 0;
    while (isName(ahead) && is(TokenKind::Dot, ahead + 1))
        ahead += 2;
    if (!is(TokenKind::Star, ahead))
        return false;
    item.kind = SelectItem::Kind::Star;
    while (!is(TokenKind::Star)) {
        item.starQualifier.push_back(name());
        expect(TokenKind::Dot);
    }
    advance();
    return true;
}

std::optional<AssignOp> Parser::assignOperator(std::size_t ahead) const {
    switch (token(ahead).kind) {
        case TokenKind::Equal:
            return AssignOp::Set;
        case TokenKind::PlusEqual:
            return AssignOp::Add;
        case TokenKind::MinusEqual:
            return AssignOp::Subtract;
        case TokenKind::StarEqual:
            return AssignOp::Multiply;
        case TokenKind::SlashEqual:
            return AssignOp::Divide;
        case TokenKind::PercentEqual:
            return AssignOp::Modulo;
        case TokenKind::AmpersandEqual:
            return AssignOp::BitAnd;
        case TokenKind::BarEqual:
            return AssignOp::BitOr;
        case TokenKind::CaretEqual:
            return AssignOp::BitXor;
        default:
            return std::nullopt;
    }
}

/// `@v = expr`.
bool Parser::assignmentItem(SelectItem& item) {
    const auto op = assignOperator(1);
    if (!is(TokenKind::Variable) || !op)
        return false;
    item.kind = SelectItem::Kind::Assignment;
    item.variable = variableName();
    item.op = *op;
    advance();
    item.expr = expression();
    return true;
}

/// `alias = expr`.
bool Parser::aliasFirstItem(SelectItem& item) {
    if (!isAlias() || !is(TokenKind::Equal, 1))
        return false;
    item.alias = alias();
    advance();
    item.expr = expression();
    return true;
}

void Parser::groupBy(SelectBody& body) {
    advance();
    expect(Keyword::By);
    do {
        if ((isWord("ROLLUP") || isWord("CUBE") || isWord("GROUPING")) &&
            (is(TokenKind::LeftParen, 1) || isWord("SETS", 1)))
            unsupported("GROUP BY " + upperText(token()));
        body.groupBy.push_back(expression());
    } while (accept(TokenKind::Comma));
    if (is(Keyword::With) && (isWord("ROLLUP", 1) || isWord("CUBE", 1)))
        unsupported("GROUP BY ... WITH " + upperText(token(1)));
}

void Parser::orderByTail(Query& out) {
    if (!accept(Keyword::Order))
        return;
    expect(Keyword::By);
    out.orderBy = orderItems();
    if (!accept(Keyword::Offset))
        return;
    out.offset = expression();
    if (!accept(Keyword::Rows))
        expect(Keyword::Row);
    if (!accept(Keyword::Fetch))
        return;
    if (!accept(Keyword::First))
        expect(Keyword::Next);
    out.fetch = expression();
    if (!accept(Keyword::Rows))
        expect(Keyword::Row);
    expect(Keyword::Only);
}

void Parser::refuseForClause() const {
    if (is(Keyword::For) && (isWord("XML", 1) || isWord("JSON", 1) || is(Keyword::Browse, 1)))
        unsupported("FOR " + upperText(token(1)));
}

/// OPTION (hints). The hints guide a planner that is not here; only the recursion limit shows in results.
std::optional<int> Parser::optionClause() {
    std::optional<int> maxRecursion;
    if (!accept(Keyword::Option))
        return maxRecursion;
    expect(TokenKind::LeftParen);
    do {
        if (accept(Keyword::Maxrecursion)) {
            maxRecursion = smallInteger();
            continue;
        }
        bool any = false;
        while (is(TokenKind::Word) || is(TokenKind::Integer)) {
            const std::string word = upperText(token());
            if (is(TokenKind::Word) &&
                std::find(kQueryHints.begin(), kQueryHints.end(), word) == kQueryHints.end())
                failHere();
            any = true;
            advance();
        }
        if (!any)
            failHere();
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen);
    return maxRecursion;
}

}  // namespace magdb::tsql
