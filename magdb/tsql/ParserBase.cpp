#include "tsql/ParserImpl.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace magdb::tsql {

namespace {

char upperChar(char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

char lowerChar(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string lower(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), lowerChar);
    return text;
}

constexpr std::string_view kEmptyName =
    "An object or column name is missing or empty. For SELECT INTO statements, verify each column has a "
    "name. "
    "For other statements, look for empty alias names. Aliases defined as \"\" or [] are not allowed. Change "
    "the "
    "alias to a valid name.";

}  // namespace

Parser::Parser(std::string_view text, bool quotedIdentifier)
    : text_(text), tokens_(tokenize(text, quotedIdentifier)) {}

Parser::Nesting::Nesting(Parser& parser) : parser_(parser) {
    if (parser_.nesting_ >= kMaxNesting)
        parser_.failTooDeep();
    ++parser_.nesting_;
}

// ---------------------------------------------------------------------------------------------------- tokens

const Token& Parser::token(std::size_t ahead) const {
    return tokens_[std::min(at_ + ahead, tokens_.size() - 1)];
}

bool Parser::accept(TokenKind kind) {
    if (!is(kind))
        return false;
    advance();
    return true;
}

bool Parser::accept(Keyword keyword) {
    if (!is(keyword))
        return false;
    advance();
    return true;
}

bool Parser::accept(Keyword first, Keyword second) {
    if (!is(first) || !is(second, 1))
        return false;
    advance();
    advance();
    return true;
}

void Parser::expect(TokenKind kind) {
    if (!accept(kind))
        failHere();
}

void Parser::expect(Keyword keyword) {
    if (!accept(keyword))
        failHere();
}

bool Parser::isWord(std::string_view upperText, std::size_t ahead) const {
    const Token& word = token(ahead);
    if (word.kind != TokenKind::Word)
        return false;
    const std::string_view text = raw(word);
    return std::equal(text.begin(), text.end(), upperText.begin(), upperText.end(),
                      [](char a, char b) { return upperChar(a) == b; });
}

bool Parser::acceptWord(std::string_view upperText) {
    if (!isWord(upperText))
        return false;
    advance();
    return true;
}

void Parser::expectWord(std::string_view upperText) {
    if (!acceptWord(upperText))
        failHere();
}

std::string_view Parser::raw(const Token& token) const {
    return text_.substr(token.offset, token.length);
}

std::string Parser::upperText(const Token& token) const {
    std::string text(raw(token));
    std::transform(text.begin(), text.end(), text.begin(), upperChar);
    return text;
}

// ---------------------------------------------------------------------------------------------------- errors

void Parser::failHere() const {
    // At the end there is nothing to name but the last thing that was read, and it is never called a keyword.
    const Token& culprit = atEnd() ? previous() : token();
    const std::string text = culprit.kind == TokenKind::End ? std::string() : decode(culprit);
    if (!atEnd() && isReserved(culprit.keyword))
        throw SyntaxError(156, 15, culprit.line, "Incorrect syntax near the keyword '" + text + "'.");
    throw SyntaxError(102, 15, culprit.line, "Incorrect syntax near '" + text + "'.");
}

void Parser::fail(int number, const std::string& text) const {
    throw SyntaxError(number, 15, atEnd() ? previous().line : token().line, text);
}

void Parser::unsupported(std::string_view construct) const {
    throw SyntaxError(kUnsupportedConstruct, 16, atEnd() ? previous().line : token().line,
                      "This server does not support " + std::string(construct) + ".");
}

void Parser::failTooDeep() const {
    fail(
        191,
        "Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller "
        "queries.");
}

// ---------------------------------------------------------------------------------------------------- names

bool Parser::isName(std::size_t ahead) const {
    const Token& word = token(ahead);
    return word.kind == TokenKind::QuotedName || (word.kind == TokenKind::Word && !isReserved(word.keyword));
}

std::string Parser::name() {
    if (!isName())
        failHere();
    return nameText();
}

std::string Parser::nameText() {
    std::string text = decode(token());
    if (text.empty())
        fail(1038, std::string(kEmptyName));
    advance();
    return text;
}

bool Parser::isAlias() const {
    return isName() || is(TokenKind::String) || is(TokenKind::NationalString);
}

std::string Parser::alias() {
    if (!isAlias())
        failHere();
    return nameText();
}

std::string Parser::variableName() {
    if (!is(TokenKind::Variable))
        failHere();
    std::string text = decode(token());
    advance();
    return text;
}

ObjectName Parser::objectName() {
    ObjectName out;
    out.pos = here();
    std::array<std::string, 3> parts;  // database, schema, name
    parts[2] = name();
    while (accept(TokenKind::Dot)) {
        if (!parts[0].empty())
            unsupported("a name with a server part");
        parts[0] = std::exchange(parts[1], std::exchange(parts[2], {}));
        if (!is(TokenKind::Dot))
            parts[2] = name();
    }
    out.database = std::move(parts[0]);
    out.schema = std::move(parts[1]);
    out.name = std::move(parts[2]);
    return out;
}

std::vector<std::string> Parser::nameList() {
    std::vector<std::string> names;
    expect(TokenKind::LeftParen);
    do {
        names.push_back(name());
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen);
    return names;
}

// ---------------------------------------------------------------------------------------------------- types

int Parser::smallInteger() {
    if (!is(TokenKind::Integer))
        failHere();
    const std::string_view digits = raw(token());
    int value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc{} || end != digits.data() + digits.size())
        failHere();
    advance();
    return value;
}

/// The words of a type's name. Types of several words become the one word that they mean.
void Parser::typeName(DataType& type) {
    if (accept(Keyword::Double)) {
        expect(Keyword::Precision);
        type.name = "float";
        type.length = 53;
        return;
    }
    const bool national = accept(Keyword::National);
    const bool quoted = is(TokenKind::QuotedName);
    std::string word = name();
    if (!national && is(TokenKind::Dot)) {
        advance();
        // Built-in types may be written as belonging to sys; every other schema holds a user's types.
        const bool builtIn = lower(word) == "sys";
        word = builtIn ? name() : word + "." + name();
    }
    type.name = lower(std::move(word));
    if (quoted)
        return;
    if (type.name == "character")
        type.name = "char";
    else if (type.name == "integer")
        type.name = "int";
    else if (type.name == "dec")
        type.name = "decimal";
    else if (type.name == "rowversion")
        type.name = "timestamp";
    if (national && type.name != "char" && type.name != "text")
        failHere();
    if (national)
        type.name.insert(0, "n");
    if (is(Keyword::Varying)) {
        if (type.name != "char" && type.name != "nchar" && type.name != "binary")
            failHere();
        advance();
        type.name.insert(type.name.front() == 'n' ? 1 : 0, "var");
    }
}

void Parser::typeFacets(DataType& type) {
    if (!accept(TokenKind::LeftParen))
        return;
    if (accept(Keyword::Max)) {
        type.max = true;
    } else {
        type.length = smallInteger();
        if (accept(TokenKind::Comma))
            type.scale = smallInteger();
    }
    expect(TokenKind::RightParen);
}

DataType Parser::dataType() {
    DataType type;
    type.pos = here();
    if (is(Keyword::Cursor))
        unsupported("a cursor variable or parameter");
    typeName(type);
    typeFacets(type);
    return type;
}

// ------------------------------------------------------------------------------------------------- entry
// points

StatementList Parser::batch() {
    StatementList statements;
    statementsUntilEnd(statements);
    if (!atEnd())
        failHere();
    return statements;
}

std::vector<Parameter> Parser::parameterText() {
    if (atEnd())
        return {};
    std::vector<Parameter> list = parameters(TokenKind::End);
    if (!atEnd())
        failHere();
    return list;
}

ExprPtr Parser::expressionText() {
    ExprPtr expr = expression();
    if (!atEnd())
        failHere();
    return expr;
}

ExprPtr Parser::conditionText() {
    ExprPtr expr = condition();
    if (!atEnd())
        failHere();
    return expr;
}

std::unique_ptr<Batch> parseBatch(std::string_view text, const ParseOptions& options) {
    auto batch = std::make_unique<Batch>();
    batch->source = text;
    batch->statements = Parser(batch->source, options.quotedIdentifier).batch();
    return batch;
}

std::vector<Parameter> parseParameters(std::string_view text) {
    return Parser(text, true).parameterText();
}

ExprPtr parseExpression(std::string_view text) {
    return Parser(text, true).expressionText();
}

ExprPtr parseCondition(std::string_view text) {
    return Parser(text, true).conditionText();
}

}  // namespace magdb::tsql
