#include "tsql/ParserImpl.h"

#include <utility>

// CREATE, ALTER and DROP of modules: views, procedures and functions.

namespace magdb::tsql {

StatementPtr Parser::createStatement() {
    const std::size_t create = at_;
    advance();
    if (is(Keyword::Or) && is(Keyword::Alter, 1))
        unsupported("CREATE OR ALTER");
    switch (token().keyword) {
        case Keyword::Table:
            return createTable();
        case Keyword::Unique:
        case Keyword::Clustered:
        case Keyword::Nonclustered:
        case Keyword::Index:
            return createIndex();
        case Keyword::View:
            requireFirst(create, "CREATE VIEW");
            return createView(false);
        case Keyword::Proc:
        case Keyword::Procedure:
            requireFirst(create, "CREATE/ALTER PROCEDURE");
            return createProcedure(false);
        case Keyword::Function:
            requireFirst(create, "CREATE FUNCTION");
            return createFunction(false);
        case Keyword::Login:
        case Keyword::User:
        case Keyword::Role:
            return principal(PrincipalStatement::Action::Create);
        default:
            if (is(TokenKind::Word))
                unsupported("CREATE " + upperText(token()));
            failHere();
    }
}

StatementPtr Parser::alterStatement() {
    const std::size_t alter = at_;
    advance();
    switch (token().keyword) {
        case Keyword::Table:
            return alterTable();
        case Keyword::View:
            requireFirst(alter, "ALTER VIEW");
            return createView(true);
        case Keyword::Proc:
        case Keyword::Procedure:
            requireFirst(alter, "CREATE/ALTER PROCEDURE");
            return createProcedure(true);
        case Keyword::Function:
            requireFirst(alter, "ALTER FUNCTION");
            return createFunction(true);
        case Keyword::Login:
        case Keyword::User:
        case Keyword::Role:
            return principal(PrincipalStatement::Action::Alter);
        default:
            if (is(TokenKind::Word))
                unsupported("ALTER " + upperText(token()));
            failHere();
    }
}

StatementPtr Parser::dropStatement() {
    advance();
    switch (token().keyword) {
        case Keyword::Table:
            return dropObject(ObjectType::Table);
        case Keyword::View:
            return dropObject(ObjectType::View);
        case Keyword::Proc:
        case Keyword::Procedure:
            return dropObject(ObjectType::Procedure);
        case Keyword::Function:
            return dropObject(ObjectType::Function);
        case Keyword::Index:
            return dropIndex();
        case Keyword::Login:
        case Keyword::User:
        case Keyword::Role:
            return principal(PrincipalStatement::Action::Drop);
        default:
            if (is(TokenKind::Word))
                unsupported("DROP " + upperText(token()));
            failHere();
    }
}

StatementPtr Parser::dropObject(ObjectType type) {
    auto node = start<DropObjectStatement>();
    node->type = type;
    advance();
    if (accept(Keyword::If)) {
        expect(Keyword::Exists);
        node->ifExists = true;
    }
    do {
        node->names.push_back(objectName());
    } while (accept(TokenKind::Comma));
    return node;
}

/// Modules are a batch of their own, so that their text is that of the batch.
void Parser::requireFirst(std::size_t position, std::string_view what) const {
    if (position != 0)
        fail(111, "'" + std::string(what) + "' must be the first statement in a query batch.");
}

std::vector<std::string> Parser::moduleOptions() {
    std::vector<std::string> options;
    if (!accept(Keyword::With))
        return options;
    do {
        if (accept(Keyword::Execute) || accept(Keyword::Exec)) {
            expect(Keyword::As);
            if (!is(TokenKind::Word) && !is(TokenKind::String))
                failHere();
            options.push_back("EXECUTE AS " + upperText(token()));
            advance();
        } else if (acceptWord("RETURNS")) {
            unsupported("RETURNS NULL ON NULL INPUT");
        } else {
            if (!is(Keyword::Recompile) && !isWord("SCHEMABINDING") && !isWord("ENCRYPTION") &&
                !isWord("VIEW_METADATA"))
                failHere();
            options.push_back(upperText(token()));
            advance();
        }
    } while (accept(TokenKind::Comma));
    return options;
}

// -------------------------------------------------------------------------------------------------------
// views

StatementPtr Parser::createView(bool alter) {
    auto node = start<CreateViewStatement>();
    node->alter = alter;
    advance();
    node->name = objectName();
    if (is(TokenKind::LeftParen))
        node->columns = nameList();
    for (const std::string& option : moduleOptions()) {
        if (option != "SCHEMABINDING")
            unsupported("WITH " + option + " on a view");
        node->schemaBinding = true;
    }
    expect(Keyword::As);
    node->query = innerQuery(true);
    if (is(Keyword::With))
        unsupported("WITH CHECK OPTION");
    accept(TokenKind::Semicolon);
    if (!atEnd())
        failHere();
    return node;
}

// --------------------------------------------------------------------------------------------------
// procedures

StatementPtr Parser::createProcedure(bool alter) {
    auto node = start<CreateProcedureStatement>();
    node->alter = alter;
    advance();
    node->name = objectName();
    if (is(TokenKind::Semicolon) && is(TokenKind::Integer, 1))
        unsupported("a numbered procedure");
    if (accept(TokenKind::LeftParen)) {
        node->parameters = parameters(TokenKind::RightParen);
        expect(TokenKind::RightParen);
    } else if (is(TokenKind::Variable)) {
        node->parameters = parameters(TokenKind::End);
    }
    node->options = moduleOptions();
    if (is(Keyword::For) && is(Keyword::Replication, 1))
        unsupported("FOR REPLICATION");
    expect(Keyword::As);
    if (is(Keyword::External))
        unsupported("EXTERNAL NAME");
    node->bodyText.begin = here().offset;
    statementsUntilEnd(node->body);
    if (!atEnd())
        failHere();
    node->bodyText.end = endOffset();
    return node;
}

std::vector<Parameter> Parser::parameters(TokenKind end) {
    std::vector<Parameter> list;
    if (is(end))
        return list;
    do {
        list.push_back(parameter());
    } while (accept(TokenKind::Comma));
    return list;
}

Parameter Parser::parameter() {
    Parameter out;
    out.pos = here();
    out.name = variableName();
    accept(Keyword::As);
    out.type = dataType();
    if (accept(Keyword::Not, Keyword::Null))
        unsupported("NOT NULL on a parameter");
    accept(Keyword::Null);
    if (accept(TokenKind::Equal))
        out.defaultValue = parameterDefault();
    if (accept(Keyword::Output) || accept(Keyword::Out))
        out.output = true;
    if (accept(Keyword::Readonly))
        out.readOnly = true;
    return out;
}

/// Defaults are constants; a bare word is a text.
ExprPtr Parser::parameterDefault() {
    if (is(TokenKind::Variable) || is(TokenKind::GlobalVariable) || is(Keyword::Default))
        failHere();
    return argumentValue();
}

// ---------------------------------------------------------------------------------------------------
// functions

StatementPtr Parser::createFunction(bool alter) {
    auto node = start<CreateFunctionStatement>();
    node->alter = alter;
    advance();
    node->name = objectName();
    expect(TokenKind::LeftParen);
    node->parameters = parameters(TokenKind::RightParen);
    expect(TokenKind::RightParen);
    expect(Keyword::Returns);
    functionReturns(*node);
    node->options = moduleOptions();
    accept(Keyword::As);
    if (is(Keyword::External))
        unsupported("EXTERNAL NAME");
    node->bodyText.begin = here().offset;
    functionBody(*node);
    node->bodyText.end = endOffset();
    accept(TokenKind::Semicolon);
    if (!atEnd())
        failHere();
    return node;
}

void Parser::functionReturns(CreateFunctionStatement& function) {
    using Returns = CreateFunctionStatement::Returns;
    if (is(TokenKind::Variable)) {
        function.returns = Returns::Table;
        function.tableVariable = variableName();
        expect(Keyword::Table);
        function.table = tableDefinition();
    } else if (accept(Keyword::Table)) {
        function.returns = Returns::InlineTable;
    } else {
        function.returns = Returns::Scalar;
        function.returnType = dataType();
    }
}

void Parser::functionBody(CreateFunctionStatement& function) {
    if (function.returns == CreateFunctionStatement::Returns::InlineTable) {
        expect(Keyword::Return);
        if (is(TokenKind::LeftParen) && (isQueryStart(1) || is(Keyword::With, 1))) {
            advance();
            function.query = innerQuery(true);
            expect(TokenKind::RightParen);
        } else {
            function.query = innerQuery(true);
        }
        return;
    }
    expect(Keyword::Begin);
    statementsUntilEnd(function.body);
    if (function.body.empty())
        failHere();
    if (function.body.back()->kind != StatementKind::Return)
        fail(455, "The last statement included within a function must be a return statement.");
    expect(Keyword::End);
}

}  // namespace magdb::tsql
