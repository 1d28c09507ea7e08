#include "tsql/ParserImpl.h"

#include <utility>

// Logins, users, roles and permissions.

namespace magdb::tsql {

/// From LOGIN, USER or ROLE on.
StatementPtr Parser::principal(PrincipalStatement::Action action) {
    using Action = PrincipalStatement::Action;
    using Type = PrincipalStatement::Type;
    auto node = start<PrincipalStatement>();
    node->action = action;
    node->type = is(Keyword::Login) ? Type::Login : is(Keyword::User) ? Type::User : Type::Role;
    advance();
    if (action == Action::Drop && accept(Keyword::If)) {
        expect(Keyword::Exists);
        node->ifExists = true;
    }
    node->name = name();
    if (action == Action::Drop)
        return node;
    if (node->type == Type::Role && action == Action::Alter)
        alterRole(*node);
    else
        principalOptions(*node);
    return node;
}

void Parser::alterRole(PrincipalStatement& statement) {
    if (accept(Keyword::Add)) {
        statement.action = PrincipalStatement::Action::AddMember;
    } else if (accept(Keyword::Drop)) {
        statement.action = PrincipalStatement::Action::DropMember;
    } else {
        unsupported("ALTER ROLE ... " + upperText(token()));
    }
    expect(Keyword::Member);
    statement.member = name();
}

void Parser::principalOptions(PrincipalStatement& statement) {
    using Type = PrincipalStatement::Type;
    if (statement.type == Type::Login && (is(Keyword::From) || is(Keyword::Enable) || is(Keyword::Disable) ||
                                          is(Keyword::Add) || is(Keyword::Drop)))
        unsupported("LOGIN ... " + upperText(token()));
    if (statement.type == Type::User && (accept(Keyword::For) || accept(Keyword::From))) {
        if (!is(Keyword::Login))
            unsupported("a user without a login");
        advance();
        statement.login = name();
    }
    if (isWord("WITHOUT"))
        unsupported("a user without a login");
    if (is(Keyword::Authorization))
        unsupported("AUTHORIZATION");
    if (!accept(Keyword::With)) {
        if (statement.type == Type::Login)
            failHere();
        return;
    }
    do {
        principalOption(statement);
    } while (accept(TokenKind::Comma));
}

void Parser::principalOption(PrincipalStatement& statement) {
    const std::string option = upperText(token());
    if (!is(TokenKind::Word))
        failHere();
    advance();
    expect(TokenKind::Equal);
    if (option == "PASSWORD") {
        if (!is(TokenKind::String) && !is(TokenKind::NationalString))
            unsupported("a hashed password");
        statement.password = decode(token());
        advance();
        if (isWord("HASHED") || isWord("MUST_CHANGE") || isWord("OLD_PASSWORD") || isWord("UNLOCK"))
            unsupported("PASSWORD ... " + upperText(token()));
    } else if (option == "CHECK_POLICY" || option == "CHECK_EXPIRATION") {
        if (is(Keyword::On))
            unsupported(option + " = ON");
        expect(Keyword::Off);
    } else if (option == "DEFAULT_SCHEMA") {
        if (!isWord("DBO"))
            unsupported("a default schema other than dbo");
        advance();
    } else if (option == "DEFAULT_DATABASE" || option == "DEFAULT_LANGUAGE") {
        // There is one database and one language.
        name();
    } else {
        unsupported(option);
    }
}

/// The words of a permission, such as SELECT or VIEW DEFINITION.
std::string Parser::permissionName() {
    std::string words;
    while (is(TokenKind::Word) && !is(Keyword::On) && !is(Keyword::To) && !is(Keyword::From)) {
        words += (words.empty() ? "" : " ") + upperText(token());
        advance();
    }
    if (words.empty())
        failHere();
    if (is(TokenKind::LeftParen))
        unsupported("a permission on columns");
    return words;
}

/// From GRANT, DENY or REVOKE on.
StatementPtr Parser::permission(PermissionStatement::Action action) {
    auto node = start<PermissionStatement>();
    node->action = action;
    advance();
    if (is(Keyword::Grant) && is(Keyword::Option, 1))
        unsupported("GRANT OPTION FOR");
    do {
        node->permissions.push_back(permissionName());
    } while (accept(TokenKind::Comma));
    if (accept(Keyword::On)) {
        if (is(TokenKind::DoubleColon, 1)) {
            node->securableClass = upperText(token());
            advance();
            advance();
        }
        node->securable = objectName();
        if (is(TokenKind::LeftParen))
            unsupported("a permission on columns");
    }
    if (action != PermissionStatement::Action::Revoke || !accept(Keyword::From))
        expect(Keyword::To);
    do {
        // PUBLIC is reserved, yet the name of a role.
        node->principals.push_back(is(Keyword::Public) ? "public" : name());
        if (is(Keyword::Public))
            advance();
    } while (accept(TokenKind::Comma));
    if (is(Keyword::With) && is(Keyword::Grant, 1))
        unsupported("WITH GRANT OPTION");
    if (is(Keyword::Cascade))
        unsupported("CASCADE");
    return node;
}

}  // namespace magdb::tsql
