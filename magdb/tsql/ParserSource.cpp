#include "tsql/ParserImpl.h"

#include <algorithm>
#include <array>
#include <utility>

// Table sources: the FROM clause.

namespace magdb::tsql {

namespace {

constexpr std::array<std::string_view, 21> kTableHints = {
    "NOLOCK",         "READUNCOMMITTED", "UPDLOCK",           "HOLDLOCK",
    "ROWLOCK",        "TABLOCK",         "TABLOCKX",          "PAGLOCK",
    "XLOCK",          "READPAST",        "NOEXPAND",          "READCOMMITTED",
    "REPEATABLEREAD", "SERIALIZABLE",    "FASTFIRSTROW",      "FORCESEEK",
    "FORCESCAN",      "NOWAIT",          "READCOMMITTEDLOCK", "KEEPIDENTITY",
    "SNAPSHOT"};

}  // namespace

std::vector<TableSourcePtr> Parser::fromList() {
    std::vector<TableSourcePtr> list;
    do {
        list.push_back(tableSource());
    } while (accept(TokenKind::Comma));
    return list;
}

/// The join operator at this place, taken, or nothing.
std::optional<JoinType> Parser::joinOperator() {
    if (accept(Keyword::Join))
        return JoinType::Inner;
    if (accept(Keyword::Cross, Keyword::Join))
        return JoinType::Cross;
    if (accept(Keyword::Cross, Keyword::Apply))
        return JoinType::CrossApply;
    if (accept(Keyword::Outer, Keyword::Apply))
        return JoinType::OuterApply;
    JoinType type = JoinType::Inner;
    if (is(Keyword::Left))
        type = JoinType::Left;
    else if (is(Keyword::Right))
        type = JoinType::Right;
    else if (is(Keyword::Full))
        type = JoinType::Full;
    else if (!is(Keyword::Inner))
        return std::nullopt;
    advance();
    if (type != JoinType::Inner)
        accept(Keyword::Outer);
    // A join hint chooses the algorithm, nothing else.
    if (!accept(Keyword::Loop) && !accept(Keyword::Hash))
        accept(Keyword::Merge);
    expect(Keyword::Join);
    return type;
}

TableSourcePtr Parser::tableSource() {
    const Nesting nesting(*this);
    TableSourcePtr left = tablePrimary();
    while (const auto type = joinOperator())
        left = joinOf(std::move(left), *type);
    if (is(Keyword::Pivot) || is(Keyword::Unpivot) || is(Keyword::Tablesample))
        unsupported(upperText(token()));
    return left;
}

/// The right side and the condition of a join. `a JOIN b JOIN c ON .. ON ..` nests to the right.
TableSourcePtr Parser::joinOf(TableSourcePtr left, JoinType type) {
    const Nesting nesting(*this);
    auto node = std::make_unique<JoinTable>();
    node->pos = left->pos;
    node->type = type;
    node->left = std::move(left);
    node->right = tablePrimary();
    if (type == JoinType::Cross || type == JoinType::CrossApply || type == JoinType::OuterApply)
        return node;
    while (!is(Keyword::On)) {
        const auto inner = joinOperator();
        if (!inner)
            failHere();
        node->right = joinOf(std::move(node->right), *inner);
    }
    expect(Keyword::On);
    node->on = condition();
    return node;
}

TableSourcePtr Parser::tablePrimary() {
    if (++tables_ > kMaxTables) {
        fail(106, "Too many table names in the query. The maximum allowable is " +
                      std::to_string(kMaxTables) + ".");
    }
    if (is(TokenKind::LeftParen))
        return parenthesisedSource();
    if (is(TokenKind::Variable)) {
        auto node = start<VariableTable>();
        node->name = variableName();
        tableAlias(*node, false, false);
        return node;
    }
    if (is(Keyword::Openquery) || is(Keyword::Openrowset) || is(Keyword::Opendatasource) ||
        is(Keyword::Openxml) || is(Keyword::Containstable) || is(Keyword::Freetexttable) ||
        isWord("OPENJSON"))
        unsupported(upperText(token()));
    return namedSource();
}

/// A derived table, a VALUES list or a join in parentheses.
TableSourcePtr Parser::parenthesisedSource() {
    if (is(Keyword::Values, 1)) {
        auto node = start<ValuesTable>();
        advance();
        advance();
        node->rows = valueRows();
        expect(TokenKind::RightParen);
        tableAlias(*node, true, true);
        return node;
    }
    if (isQueryStart(1)) {
        auto node = start<DerivedTable>();
        node->query = parenthesisedQuery();
        tableAlias(*node, true, true);
        return node;
    }
    expect(TokenKind::LeftParen);
    TableSourcePtr inner = tableSource();
    expect(TokenKind::RightParen);
    return inner;
}

TableSourcePtr Parser::namedSource() {
    const SourcePos pos = here();
    ObjectName object = objectName();
    if (is(TokenKind::LeftParen) && !isHintList(0)) {
        auto node = std::make_unique<FunctionTable>();
        node->pos = pos;
        node->name = std::move(object);
        advance();
        if (!is(TokenKind::RightParen)) {
            do {
                node->arguments.push_back(defaultOrExpression());
            } while (accept(TokenKind::Comma));
        }
        expect(TokenKind::RightParen);
        tableAlias(*node, true, false);
        return node;
    }
    auto node = std::make_unique<NamedTable>();
    node->pos = pos;
    node->name = std::move(object);
    hints(node->hints);
    tableAlias(*node, false, false);
    hints(node->hints);
    if (is(Keyword::For) && isWord("SYSTEM_TIME", 1))
        unsupported("FOR SYSTEM_TIME");
    return node;
}

void Parser::tableAlias(TableSource& source, bool columnsAllowed, bool required) {
    const bool written = accept(Keyword::As);
    if (!written && !isName()) {
        if (required)
            failHere();
        return;
    }
    source.alias = name();
    if (columnsAllowed && is(TokenKind::LeftParen))
        source.columns = nameList();
}

/// True for "(" followed by the word of a hint: `T(nolock)` is a table with a hint, not a call.
bool Parser::isHintList(std::size_t ahead) const {
    if (!is(TokenKind::LeftParen, ahead) || !is(TokenKind::Word, ahead + 1))
        return false;
    if (!is(TokenKind::RightParen, ahead + 2) && !is(TokenKind::Comma, ahead + 2))
        return false;
    const std::string word = upperText(token(ahead + 1));
    return std::find(kTableHints.begin(), kTableHints.end(), word) != kTableHints.end();
}

/// Hints with or without WITH, or nothing.
void Parser::hints(std::vector<std::string>& out) {
    if (is(Keyword::With) && is(TokenKind::LeftParen, 1)) {
        advance();
        hintList(out);
    } else if (isHintList(0)) {
        hintList(out);
    }
}

void Parser::hintList(std::vector<std::string>& out) {
    expect(TokenKind::LeftParen);
    do {
        if (is(TokenKind::RightParen))
            break;
        if (accept(Keyword::Index)) {
            indexHint();
            continue;
        }
        const std::string word = upperText(token());
        if (!is(TokenKind::Word) ||
            std::find(kTableHints.begin(), kTableHints.end(), word) == kTableHints.end())
            failHere();
        advance();
        out.push_back(word);
        // Commas between hints may be left out.
    } while (accept(TokenKind::Comma) || !is(TokenKind::RightParen));
    expect(TokenKind::RightParen);
}

/// What follows INDEX in a hint: it chooses an access path and is dropped.
void Parser::indexHint() {
    if (accept(TokenKind::Equal)) {
        name();
        return;
    }
    nameList();
}

std::vector<std::vector<ExprPtr>> Parser::valueRows() {
    std::vector<std::vector<ExprPtr>> rows;
    do {
        std::vector<ExprPtr> row;
        expect(TokenKind::LeftParen);
        do {
            row.push_back(defaultOrExpression());
        } while (accept(TokenKind::Comma));
        expect(TokenKind::RightParen);
        if (!rows.empty() && rows.front().size() != row.size())
            fail(10709, "The number of columns for each row in a table value constructor must be the same.");
        rows.push_back(std::move(row));
    } while (accept(TokenKind::Comma));
    return rows;
}

}  // namespace magdb::tsql
