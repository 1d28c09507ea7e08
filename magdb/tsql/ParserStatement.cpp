#include "tsql/ParserImpl.h"

#include <utility>

// Control of flow, declarations and the choice of the statement.

namespace magdb::tsql {

/// Statements up to END, which is not taken, or the end of the text.
void Parser::statementsUntilEnd(StatementList& out) {
    const bool outer = std::exchange(terminated_, true);
    for (;;) {
        while (accept(TokenKind::Semicolon))
            terminated_ = true;
        if (atEnd() || is(Keyword::End))
            break;
        out.push_back(statement());
        terminated_ = false;
    }
    terminated_ = outer;
}

StatementPtr Parser::statement() {
    const Nesting nesting(*this);
    tables_ = 0;
    setOperations_ = 0;
    const bool firstOfBatch = at_ == 0;
    if (is(TokenKind::LeftParen))
        return selectStatement({});
    if (firstOfBatch && isName() && !is(Keyword::Throw)) {
        if (is(TokenKind::Colon, 1))
            unsupported("a label for GOTO");
        return procedureCall(here());
    }
    const SourcePos pos = here();
    StatementPtr out = unfinishedStatement();
    out->pos = pos;
    out->end = endOffset();
    return out;
}

StatementPtr Parser::unfinishedStatement() {
    switch (token().keyword) {
        case Keyword::Select:
            return selectStatement({});
        case Keyword::With:
            return statementWithCommonTables();
        case Keyword::Insert:
            return insertStatement({});
        case Keyword::Update:
            return updateStatement({});
        case Keyword::Delete:
            return deleteStatement({});
        case Keyword::Truncate:
            return truncateStatement();
        case Keyword::Set:
            return setStatement();
        case Keyword::Declare:
            return declareStatement();
        case Keyword::If:
            return ifStatement();
        case Keyword::While:
            return whileStatement();
        case Keyword::Begin:
            return beginStatement();
        case Keyword::Return:
            return returnStatement();
        case Keyword::Exec:
        case Keyword::Execute:
            return executeStatement();
        case Keyword::Print:
            return printStatement();
        case Keyword::Raiserror:
            return raiseErrorStatement();
        default:
            return wordStatement();
    }
}

/// The less frequent statements.
StatementPtr Parser::wordStatement() {
    switch (token().keyword) {
        case Keyword::Create:
            return createStatement();
        case Keyword::Alter:
            return alterStatement();
        case Keyword::Drop:
            return dropStatement();
        case Keyword::Commit:
        case Keyword::Rollback:
        case Keyword::Save:
            return transactionStatement();
        case Keyword::Open:
            return cursorStatement(StatementKind::OpenCursor);
        case Keyword::Close:
            return cursorStatement(StatementKind::CloseCursor);
        case Keyword::Deallocate:
            return cursorStatement(StatementKind::DeallocateCursor);
        case Keyword::Fetch:
            return fetchStatement();
        case Keyword::Use:
            return useStatement();
        case Keyword::Throw:
            return throwStatement();
        case Keyword::Grant:
            return permission(PermissionStatement::Action::Grant);
        case Keyword::Deny:
            return permission(PermissionStatement::Action::Deny);
        case Keyword::Revoke:
            return permission(PermissionStatement::Action::Revoke);
        case Keyword::Break:
        case Keyword::Continue:
            return loopStatement();
        default:
            if (refusedStatement())
                unsupported(upperText(token()));
            if (is(TokenKind::Word) && is(TokenKind::Colon, 1))
                unsupported("a label for GOTO");
            failHere();
    }
}

/// True for statements of T-SQL that this server leaves out.
bool Parser::refusedStatement() const {
    switch (token().keyword) {
        case Keyword::Goto:
        case Keyword::Waitfor:
        case Keyword::Merge:
        case Keyword::Bulk:
        case Keyword::Backup:
        case Keyword::Restore:
        case Keyword::Dbcc:
        case Keyword::Kill:
        case Keyword::Shutdown:
        case Keyword::Reconfigure:
        case Keyword::Checkpoint:
        case Keyword::Revert:
        case Keyword::Readtext:
        case Keyword::Writetext:
        case Keyword::Updatetext:
        case Keyword::Setuser:
        case Keyword::Lineno:
        case Keyword::Load:
        case Keyword::Dump:
        case Keyword::Enable:
        case Keyword::Disable:
            return true;
        default:
            return false;
    }
}

StatementPtr Parser::statementWithCommonTables() {
    if (!terminated_) {
        fail(319,
             "Incorrect syntax near the keyword 'with'. If this statement is a common table expression, an "
             "xmlnamespaces clause or a change tracking context clause, the previous statement must be "
             "terminated "
             "with a semicolon.");
    }
    std::vector<CommonTable> with = commonTables();
    switch (token().keyword) {
        case Keyword::Insert:
            return insertStatement(std::move(with));
        case Keyword::Update:
            return updateStatement(std::move(with));
        case Keyword::Delete:
            return deleteStatement(std::move(with));
        case Keyword::Merge:
            unsupported("MERGE");
        default:
            if (!is(Keyword::Select) && !is(TokenKind::LeftParen))
                failHere();
            return selectStatement(std::move(with));
    }
}

// --------------------------------------------------------------------------------------------- control of
// flow

StatementPtr Parser::beginStatement() {
    if (is(Keyword::Tran, 1) || is(Keyword::Transaction, 1))
        return transactionStatement();
    if (is(Keyword::Distributed, 1))
        unsupported("BEGIN DISTRIBUTED TRANSACTION");
    if (isWord("DIALOG", 1) || isWord("CONVERSATION", 1) || isWord("ATOMIC", 1))
        unsupported("BEGIN " + upperText(token(1)));
    if (is(Keyword::Try, 1))
        return tryCatchStatement();
    return blockStatement();
}

StatementPtr Parser::blockStatement() {
    auto node = start<BlockStatement>();
    advance();
    statementsUntilEnd(node->body);
    if (node->body.empty())
        failHere();
    expect(Keyword::End);
    return node;
}

StatementPtr Parser::tryCatchStatement() {
    auto node = start<TryCatchStatement>();
    advance();
    expect(Keyword::Try);
    statementsUntilEnd(node->tryBody);
    expect(Keyword::End);
    expect(Keyword::Try);
    accept(TokenKind::Semicolon);
    expect(Keyword::Begin);
    expect(Keyword::Catch);
    statementsUntilEnd(node->catchBody);
    expect(Keyword::End);
    expect(Keyword::Catch);
    return node;
}

StatementPtr Parser::ifStatement() {
    auto node = start<IfStatement>();
    advance();
    node->condition = condition();
    terminated_ = true;
    node->then = statement();
    // One semicolon may stand before ELSE; it ends the inner statement, not the IF.
    if (is(TokenKind::Semicolon) && is(Keyword::Else, 1))
        advance();
    if (accept(Keyword::Else)) {
        terminated_ = true;
        node->otherwise = statement();
    }
    return node;
}

StatementPtr Parser::whileStatement() {
    auto node = start<WhileStatement>();
    advance();
    node->condition = condition();
    terminated_ = true;
    ++loops_;
    node->body = statement();
    --loops_;
    return node;
}

StatementPtr Parser::loopStatement() {
    const bool isBreak = is(Keyword::Break);
    if (loops_ == 0) {
        fail(isBreak ? 135 : 136, std::string("Cannot use a ") + (isBreak ? "BREAK" : "CONTINUE") +
                                      " statement outside the scope of a WHILE statement.");
    }
    advance();
    if (isBreak)
        return std::make_unique<BreakStatement>();
    return std::make_unique<ContinueStatement>();
}

StatementPtr Parser::returnStatement() {
    auto node = start<ReturnStatement>();
    advance();
    switch (token().kind) {
        case TokenKind::Integer:
        case TokenKind::Decimal:
        case TokenKind::Float:
        case TokenKind::Money:
        case TokenKind::String:
        case TokenKind::NationalString:
        case TokenKind::Binary:
        case TokenKind::Variable:
        case TokenKind::GlobalVariable:
        case TokenKind::LeftParen:
        case TokenKind::Plus:
        case TokenKind::Minus:
        case TokenKind::Tilde:
            node->value = expression();
            break;
        default:
            if (isName() || startsValue(token().keyword))
                node->value = expression();
    }
    return node;
}

/// Reserved words that begin a value.
bool Parser::startsValue(Keyword keyword) {
    switch (keyword) {
        case Keyword::Null:
        case Keyword::Case:
        case Keyword::Convert:
        case Keyword::TryConvert:
        case Keyword::Coalesce:
        case Keyword::Nullif:
        case Keyword::Left:
        case Keyword::Right:
        case Keyword::CurrentTimestamp:
        case Keyword::CurrentUser:
        case Keyword::SessionUser:
        case Keyword::SystemUser:
        case Keyword::User:
            return true;
        default:
            return false;
    }
}

// ------------------------------------------------------------------------------------------------
// declarations

StatementPtr Parser::declareStatement() {
    if (!is(TokenKind::Variable, 1))
        return declareCursor();
    auto node = start<DeclareVariablesStatement>();
    advance();
    do {
        node->variables.push_back(variableDeclaration());
    } while (accept(TokenKind::Comma));
    return node;
}

VariableDeclaration Parser::variableDeclaration() {
    VariableDeclaration variable;
    variable.pos = here();
    variable.name = variableName();
    accept(Keyword::As);
    if (accept(Keyword::Table)) {
        variable.table = std::make_unique<TableDefinition>(tableDefinition());
        return variable;
    }
    variable.type = dataType();
    if (accept(TokenKind::Equal))
        variable.value = expression();
    return variable;
}

StatementPtr Parser::declareCursor() {
    auto node = start<DeclareCursorStatement>();
    advance();
    node->name = name();
    while (is(Keyword::Insensitive) || is(Keyword::Scroll)) {
        node->options.push_back(upperText(token()));
        advance();
    }
    expect(Keyword::Cursor);
    while (isName()) {
        node->options.push_back(cursorOption());
        advance();
    }
    expect(Keyword::For);
    node->query = query(true, true);
    if (accept(Keyword::For)) {
        if (is(Keyword::Update))
            unsupported("a cursor FOR UPDATE");
        expect(Keyword::Read);
        expect(Keyword::Only);
    }
    return node;
}

std::string Parser::cursorOption() const {
    constexpr std::string_view kOptions[] = {"LOCAL",     "GLOBAL",     "FORWARD_ONLY", "SCROLL",
                                             "STATIC",    "KEYSET",     "DYNAMIC",      "FAST_FORWARD",
                                             "READ_ONLY", "OPTIMISTIC", "SCROLL_LOCKS", "TYPE_WARNING"};
    std::string word = upperText(token());
    for (const std::string_view option : kOptions) {
        if (word == option)
            return word;
    }
    failHere();
}

// -----------------------------------------------------------------------------------------------------
// messages

StatementPtr Parser::printStatement() {
    auto node = start<PrintStatement>();
    advance();
    node->value = expression();
    return node;
}

StatementPtr Parser::raiseErrorStatement() {
    auto node = start<RaiseErrorStatement>();
    advance();
    expect(TokenKind::LeftParen);
    node->message = expression();
    expect(TokenKind::Comma);
    node->severity = expression();
    expect(TokenKind::Comma);
    node->state = expression();
    while (accept(TokenKind::Comma))
        node->arguments.push_back(expression());
    expect(TokenKind::RightParen);
    if (!accept(Keyword::With))
        return node;
    do {
        if (acceptWord("LOG"))
            node->log = true;
        else if (accept(Keyword::Nowait))
            node->noWait = true;
        else if (accept(Keyword::Seterror))
            node->setError = true;
        else
            failHere();
    } while (accept(TokenKind::Comma));
    return node;
}

StatementPtr Parser::throwStatement() {
    if (!terminated_)
        failHere();
    auto node = start<ThrowStatement>();
    advance();
    if (!is(TokenKind::Integer) && !is(TokenKind::Variable))
        return node;
    node->number = expression();
    expect(TokenKind::Comma);
    node->message = expression();
    expect(TokenKind::Comma);
    node->state = expression();
    return node;
}

StatementPtr Parser::useStatement() {
    auto node = start<UseStatement>();
    advance();
    node->database = name();
    return node;
}

StatementPtr Parser::truncateStatement() {
    auto node = start<TruncateStatement>();
    advance();
    expect(Keyword::Table);
    node->table = objectName();
    return node;
}

}  // namespace magdb::tsql
