#include "tsql/ParserImpl.h"

#include <algorithm>
#include <array>
#include <utility>

namespace magdb::tsql {

namespace {

std::string lower(std::string text) {
    for (char& c : text) {
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return text;
}

bool takesDatePart(const std::string& function) {
    constexpr std::array kNames = {"dateadd",  "datediff", "datediff_big",
                                   "datename", "datepart", "datetrunc"};
    return std::find(kNames.begin(), kNames.end(), function) != kNames.end();
}

bool isRefusedFunction(const std::string& function) {
    constexpr std::array kNames = {"parse", "try_parse", "openjson", "grouping", "grouping_id"};
    return std::find(kNames.begin(), kNames.end(), function) != kNames.end();
}

}  // namespace

/// From the opening parenthesis on.
ExprPtr Parser::functionCall(ObjectName called) {
    const Nesting nesting(*this);
    auto node = std::make_unique<FunctionExpr>();
    node->pos = called.pos;
    node->name = std::move(called);
    expect(TokenKind::LeftParen);
    functionArguments(*node);
    expect(TokenKind::RightParen);
    for (const ExprPtr& argument : node->arguments)
        include(*node, argument.get());
    if (is(Keyword::Within))
        withinGroup(*node);
    if (is(Keyword::Over))
        over(*node);
    return finish(std::move(node));
}

void Parser::functionArguments(FunctionExpr& call) {
    const std::string function = call.name.schema.empty() ? lower(call.name.name) : std::string();
    if (isRefusedFunction(function))
        unsupported(call.name.name);
    if (is(TokenKind::RightParen))
        return;
    if (is(TokenKind::Star) && is(TokenKind::RightParen, 1)) {
        advance();
        call.star = true;
        return;
    }
    if (takesDatePart(function)) {
        call.datePart = lower(name());
        expect(TokenKind::Comma);
    } else if (function == "iif") {
        call.arguments.push_back(condition());
        expect(TokenKind::Comma);
    } else {
        call.distinct = accept(Keyword::Distinct);
        if (!call.distinct)
            accept(Keyword::All);
    }
    do {
        call.arguments.push_back(defaultOrExpression());
    } while (accept(TokenKind::Comma));
}

void Parser::withinGroup(FunctionExpr& call) {
    advance();
    expect(Keyword::Group);
    expect(TokenKind::LeftParen);
    expect(Keyword::Order);
    expect(Keyword::By);
    call.withinGroup = orderItems();
    expect(TokenKind::RightParen);
    for (const OrderItem& item : call.withinGroup)
        include(call, item.expr.get());
}

void Parser::over(FunctionExpr& call) {
    advance();
    if (!is(TokenKind::LeftParen))
        unsupported("a named window");
    call.over = window();
    for (const ExprPtr& expr : call.over->partitionBy)
        include(call, expr.get());
    for (const OrderItem& item : call.over->orderBy)
        include(call, item.expr.get());
}

Window Parser::window() {
    Window out;
    expect(TokenKind::LeftParen);
    if (accept(Keyword::Partition)) {
        expect(Keyword::By);
        out.partitionBy = expressionList();
    }
    if (accept(Keyword::Order)) {
        expect(Keyword::By);
        out.orderBy = orderItems();
    }
    if (is(Keyword::Rows) || is(Keyword::Range))
        out.frame = windowFrame();
    expect(TokenKind::RightParen);
    return out;
}

WindowFrame Parser::windowFrame() {
    WindowFrame frame;
    frame.unit = is(Keyword::Rows) ? WindowFrame::Unit::Rows : WindowFrame::Unit::Range;
    advance();
    if (accept(Keyword::Between)) {
        frame.start = frameBound(frame.startCount);
        expect(Keyword::And);
        frame.end = frameBound(frame.endCount);
    } else {
        frame.start = frameBound(frame.startCount);
    }
    return frame;
}

WindowFrame::Bound Parser::frameBound(ExprPtr& count) {
    using Bound = WindowFrame::Bound;
    if (accept(Keyword::Current)) {
        expect(Keyword::Row);
        return Bound::CurrentRow;
    }
    const bool unbounded = accept(Keyword::Unbounded);
    if (!unbounded) {
        if (!is(TokenKind::Integer))
            failHere();
        count = literal(LiteralKind::Integer);
    }
    if (accept(Keyword::Preceding))
        return unbounded ? Bound::UnboundedPreceding : Bound::Preceding;
    expect(Keyword::Following);
    return unbounded ? Bound::UnboundedFollowing : Bound::Following;
}

}  // namespace magdb::tsql
