#include "tsql/ParserImpl.h"

#include <algorithm>
#include <array>
#include <utility>

// SET, EXEC, transactions and cursors.

namespace magdb::tsql {

namespace {

constexpr std::array<std::string_view, 31> kSwitches = {
    "ANSI_DEFAULTS",
    "ANSI_NULLS",
    "ANSI_NULL_DFLT_OFF",
    "ANSI_NULL_DFLT_ON",
    "ANSI_PADDING",
    "ANSI_WARNINGS",
    "ARITHABORT",
    "ARITHIGNORE",
    "CONCAT_NULL_YIELDS_NULL",
    "CURSOR_CLOSE_ON_COMMIT",
    "FMTONLY",
    "FORCEPLAN",
    "IMPLICIT_TRANSACTIONS",
    "NOCOUNT",
    "NOEXEC",
    "NO_BROWSETABLE",
    "NUMERIC_ROUNDABORT",
    "PARSEONLY",
    "QUOTED_IDENTIFIER",
    "REMOTE_PROC_TRANSACTIONS",
    "SHOWPLAN_ALL",
    "SHOWPLAN_TEXT",
    "SHOWPLAN_XML",
    "XACT_ABORT",
    "STATISTICS IO",
    "STATISTICS TIME",
    "STATISTICS PROFILE",
    "STATISTICS XML",
    "IDENTITY_INSERT",
    "DISABLE_DEF_CNST_CHK",
    "RESULT_SET_CACHING",
};

constexpr std::array<std::string_view, 8> kValues = {
    "TEXTSIZE", "ROWCOUNT",   "LOCK_TIMEOUT",      "DATEFIRST",
    "LANGUAGE", "DATEFORMAT", "DEADLOCK_PRIORITY", "QUERY_GOVERNOR_COST_LIMIT",
};

template <class Table>
bool contains(const Table& table, std::string_view word) {
    return std::find(table.begin(), table.end(), word) != table.end();
}

}  // namespace

// ---------------------------------------------------------------------------------------------------------
// SET

StatementPtr Parser::setStatement() {
    if (is(TokenKind::Variable, 1))
        return setVariable();
    auto node = start<SetOptionStatement>();
    advance();
    if (accept(Keyword::Transaction)) {
        setIsolationLevel(*node);
        return node;
    }
    do {
        if (!is(TokenKind::Word))
            failHere();
        std::string option = upperText(token());
        advance();
        if (option == "STATISTICS") {
            option += " " + upperText(token());
            advance();
        }
        if (option == "CONTEXT_INFO" || option == "OFFSETS")
            unsupported("SET " + option);
        if (!contains(kSwitches, option) && !contains(kValues, option))
            throw SyntaxError(195, 15, previous().line, "'" + option + "' is not a recognized SET option.");
        node->names.push_back(std::move(option));
    } while (accept(TokenKind::Comma));
    setOptionValue(*node);
    return node;
}

void Parser::setOptionValue(SetOptionStatement& statement) {
    const std::string& option = statement.names.front();
    if (contains(kValues, option) && statement.names.size() == 1) {
        if (is(TokenKind::Word) && !isReserved(token().keyword)) {
            statement.value = upperText(token());
            advance();
        } else {
            statement.number = expression();
        }
        return;
    }
    if (option == "IDENTITY_INSERT")
        statement.table = objectName();
    if (accept(Keyword::On)) {
        statement.on = true;
    } else {
        expect(Keyword::Off);
        statement.on = false;
    }
}

void Parser::setIsolationLevel(SetOptionStatement& statement) {
    statement.names.emplace_back("TRANSACTION ISOLATION LEVEL");
    expect(Keyword::Isolation);
    expect(Keyword::Level);
    if (accept(Keyword::Read)) {
        statement.value = is(Keyword::Committed) ? "READ COMMITTED" : "READ UNCOMMITTED";
        if (!accept(Keyword::Committed))
            expect(Keyword::Uncommitted);
    } else if (accept(Keyword::Repeatable)) {
        expect(Keyword::Read);
        statement.value = "REPEATABLE READ";
    } else if (accept(Keyword::Snapshot)) {
        statement.value = "SNAPSHOT";
    } else {
        expect(Keyword::Serializable);
        statement.value = "SERIALIZABLE";
    }
}

StatementPtr Parser::setVariable() {
    auto node = start<SetVariableStatement>();
    advance();
    node->variable = variableName();
    const auto op = assignOperator();
    if (!op)
        failHere();
    node->op = *op;
    advance();
    if (is(Keyword::Cursor))
        unsupported("a cursor variable");
    node->value = expression();
    return node;
}

// --------------------------------------------------------------------------------------------------------
// EXEC

StatementPtr Parser::executeStatement() {
    const SourcePos pos = here();
    advance();
    if (is(Keyword::As))
        unsupported("EXECUTE AS");
    if (is(TokenKind::LeftParen))
        return executeText(pos);
    return procedureCall(pos);
}

StatementPtr Parser::executeText(SourcePos pos) {
    auto node = std::make_unique<ExecuteTextStatement>();
    node->pos = pos;
    expect(TokenKind::LeftParen);
    node->text = expression();
    expect(TokenKind::RightParen);
    if (is(Keyword::As) || is(Keyword::At))
        unsupported("EXEC (...) " + upperText(token()));
    node->end = endOffset();
    return node;
}

/// From the name of the procedure, or the variable for its return value, on.
StatementPtr Parser::procedureCall(SourcePos pos) {
    auto node = std::make_unique<ExecuteStatement>();
    node->pos = pos;
    if (is(TokenKind::Variable) && is(TokenKind::Equal, 1)) {
        node->returnVariable = variableName();
        advance();
    }
    if (is(TokenKind::Variable))
        node->procedureVariable = variableName();
    else
        node->procedure = objectName();
    if (isArgumentStart()) {
        bool named = false;
        do {
            const SourcePos at = here();
            node->arguments.push_back(executeArgument());
            if (named && node->arguments.back().name.empty()) {
                throw SyntaxError(
                    119, 15, at.line,
                    "Must pass parameter number " + std::to_string(node->arguments.size()) +
                        " and subsequent parameters as '@name = value'. After the form '@name = "
                        "value' has been used, all subsequent parameters must be passed in the form "
                        "'@name = value'.");
            }
            named = !node->arguments.back().name.empty();
        } while (accept(TokenKind::Comma));
    }
    if (is(Keyword::With) && is(Keyword::Recompile, 1)) {
        advance();
        advance();
    } else if (is(Keyword::With) && isWord("RESULT", 1)) {
        unsupported("EXEC ... WITH RESULT SETS");
    }
    node->end = endOffset();
    return node;
}

bool Parser::isArgumentStart() const {
    switch (token().kind) {
        case TokenKind::Variable:
        case TokenKind::GlobalVariable:
        case TokenKind::Integer:
        case TokenKind::Decimal:
        case TokenKind::Float:
        case TokenKind::Money:
        case TokenKind::String:
        case TokenKind::NationalString:
        case TokenKind::Binary:
        case TokenKind::Plus:
        case TokenKind::Minus:
            return true;
        default:
            return isName() || is(Keyword::Null) || is(Keyword::Default);
    }
}

ExecuteArgument Parser::executeArgument() {
    ExecuteArgument argument;
    if (is(TokenKind::Variable) && is(TokenKind::Equal, 1)) {
        argument.name = variableName();
        advance();
    }
    argument.value = argumentValue();
    argument.output = accept(Keyword::Output) || accept(Keyword::Out);
    if (argument.output && argument.value->kind != ExprKind::Variable)
        fail(179, "Cannot use the OUTPUT option when passing a constant to a stored procedure.");
    return argument;
}

/// Arguments are constants and variables; expressions are not allowed there. A bare word is a text.
ExprPtr Parser::argumentValue() {
    if (is(Keyword::Default))
        return defaultOrExpression();
    if (isName()) {
        auto node = start<LiteralExpr>();
        node->type = LiteralKind::String;
        node->text = name();
        return finish(std::move(node));
    }
    if (!isArgumentStart())
        failHere();
    if (!is(TokenKind::Plus) && !is(TokenKind::Minus))
        return atom(false);
    auto node = start<UnaryExpr>();
    node->op = is(TokenKind::Minus) ? UnaryOp::Minus : UnaryOp::Plus;
    advance();
    const bool number =
        is(TokenKind::Integer) || is(TokenKind::Decimal) || is(TokenKind::Float) || is(TokenKind::Money);
    if (!number)
        failHere();
    node->operand = atom(false);
    const Expr* operand = node->operand.get();
    return finish(std::move(node), {operand});
}

// ------------------------------------------------------------------------------------------------
// transactions

StatementPtr Parser::transactionStatement() {
    auto node = start<TransactionStatement>();
    using Action = TransactionStatement::Action;
    if (accept(Keyword::Begin))
        node->action = Action::Begin;
    else if (accept(Keyword::Commit))
        node->action = Action::Commit;
    else if (accept(Keyword::Rollback))
        node->action = Action::Rollback;
    else if (accept(Keyword::Save))
        node->action = Action::Save;
    if (accept(Keyword::Tran) || accept(Keyword::Transaction)) {
        transactionName(*node);
    } else if (node->action == Action::Begin || node->action == Action::Save) {
        failHere();
    } else {
        accept(Keyword::Work);
    }
    if (node->action == Action::Save && node->name.empty() && node->variable.empty())
        failHere();
    if (is(Keyword::With) && !is(TokenKind::LeftParen, 1)) {
        if (isWord("MARK", 1))
            unsupported("BEGIN TRANSACTION ... WITH MARK");
    } else if (is(Keyword::With) && isWord("DELAYED_DURABILITY", 2)) {
        unsupported("DELAYED_DURABILITY");
    }
    return node;
}

void Parser::transactionName(TransactionStatement& statement) {
    if (is(TokenKind::Variable))
        statement.variable = variableName();
    else if (isName())
        statement.name = name();
}

// -----------------------------------------------------------------------------------------------------
// cursors

StatementPtr Parser::cursorStatement(StatementKind kind) {
    auto node = std::make_unique<CursorStatement>(kind);
    node->pos = here();
    advance();
    if (isWord("SYMMETRIC") || (isWord("MASTER") && is(Keyword::Key, 1)))
        unsupported("encryption keys");
    if (is(TokenKind::Variable))
        unsupported("a cursor variable");
    if (isWord("GLOBAL") && isName(1))
        advance();
    node->name = name();
    return node;
}

StatementPtr Parser::fetchStatement() {
    using Direction = FetchCursorStatement::Direction;
    auto node = start<FetchCursorStatement>();
    advance();
    constexpr std::array<std::pair<Keyword, Direction>, 6> kDirections = {{
        {Keyword::Next, Direction::Next},
        {Keyword::Prior, Direction::Prior},
        {Keyword::First, Direction::First},
        {Keyword::Last, Direction::Last},
        {Keyword::Absolute, Direction::Absolute},
        {Keyword::Relative, Direction::Relative},
    }};
    bool from = false;
    for (const auto& [keyword, direction] : kDirections) {
        if (!is(keyword))
            continue;
        advance();
        node->direction = direction;
        if (direction == Direction::Absolute || direction == Direction::Relative)
            node->position = expression();
        from = true;
        break;
    }
    if (from)
        expect(Keyword::From);
    else
        accept(Keyword::From);
    if (is(TokenKind::Variable))
        unsupported("a cursor variable");
    if (isWord("GLOBAL") && isName(1))
        advance();
    node->name = name();
    if (!accept(Keyword::Into))
        return node;
    do {
        node->into.push_back(variableName());
    } while (accept(TokenKind::Comma));
    return node;
}

}  // namespace magdb::tsql
