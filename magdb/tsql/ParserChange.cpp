#include "tsql/ParserImpl.h"

#include <utility>

// SELECT as a statement, INSERT, UPDATE and DELETE.

namespace magdb::tsql {

StatementPtr Parser::selectStatement(std::vector<CommonTable> with) {
    auto node = start<SelectStatement>();
    node->query = query(false, true);
    node->query->with = std::move(with);
    node->end = endOffset();
    return node;
}

TableTarget Parser::tableTarget() {
    TableTarget target;
    target.pos = here();
    if (is(TokenKind::Variable)) {
        target.variable = variableName();
        return target;
    }
    if (is(Keyword::Openquery) || is(Keyword::Openrowset) || is(Keyword::Opendatasource))
        unsupported(upperText(token()));
    target.name = objectName();
    hints(target.hints);
    return target;
}

StatementPtr Parser::insertStatement(std::vector<CommonTable> with) {
    auto node = start<InsertStatement>();
    node->with = std::move(with);
    advance();
    if (is(Keyword::Bulk))
        unsupported("INSERT BULK");
    if (is(Keyword::Top))
        node->top = topClause();
    accept(Keyword::Into);
    node->target = tableTarget();
    if (is(TokenKind::LeftParen) && isName(1))
        node->columns = nameList();
    if (is(Keyword::Output))
        node->output = outputClause();
    insertSource(*node);
    return node;
}

void Parser::insertSource(InsertStatement& insert) {
    using Source = InsertStatement::Source;
    if (accept(Keyword::Default)) {
        expect(Keyword::Values);
        insert.source = Source::DefaultValues;
    } else if (accept(Keyword::Values)) {
        insert.source = Source::Values;
        insert.rows = valueRows();
        if (insert.rows.size() > kMaxValueRows) {
            fail(10738,
                 "The number of row value expressions in the INSERT statement exceeds the maximum allowed "
                 "number "
                 "of 1000 row values.");
        }
    } else if (is(Keyword::Exec) || is(Keyword::Execute)) {
        insert.source = Source::Execute;
        insert.execute = executeStatement();
    } else {
        if (!is(Keyword::Select) && !is(TokenKind::LeftParen))
            failHere();
        insert.source = Source::Query;
        insert.query = query(false, true);
    }
}

StatementPtr Parser::updateStatement(std::vector<CommonTable> with) {
    auto node = start<UpdateStatement>();
    node->with = std::move(with);
    advance();
    if (is(Keyword::Statistics))
        unsupported("UPDATE STATISTICS");
    if (is(Keyword::Top))
        node->top = topClause();
    node->target = tableTarget();
    expect(Keyword::Set);
    do {
        node->set.push_back(setClause());
    } while (accept(TokenKind::Comma));
    if (is(Keyword::Output))
        node->output = outputClause();
    if (accept(Keyword::From))
        node->from = fromList();
    changeTail(node->where);
    return node;
}

SetClause Parser::setClause() {
    SetClause clause;
    clause.pos = here();
    if (is(TokenKind::Variable)) {
        clause.variable = variableName();
        // `@v = column = expr` stores the new value of the column in the variable as well.
        std::size_t ahead = 1;
        while (isName(ahead) && is(TokenKind::Dot, ahead + 1))
            ahead += 2;
        if (is(TokenKind::Equal) && isName(ahead) && assignOperator(ahead + 1)) {
            advance();
            setTarget(clause);
        }
    } else {
        setTarget(clause);
    }
    const auto op = assignOperator();
    if (!op)
        failHere();
    clause.op = *op;
    advance();
    clause.value = defaultOrExpression();
    return clause;
}

/// `column` or `t.column`.
void Parser::setTarget(SetClause& clause) {
    clause.column = name();
    while (accept(TokenKind::Dot)) {
        if (clause.qualifier.size() == 3)
            failHere();
        clause.qualifier.push_back(std::move(clause.column));
        clause.column = is(TokenKind::Dot) ? std::string() : name();
    }
    if (is(TokenKind::LeftParen))
        unsupported("a method call in SET");
}

StatementPtr Parser::deleteStatement(std::vector<CommonTable> with) {
    auto node = start<DeleteStatement>();
    node->with = std::move(with);
    advance();
    if (is(Keyword::Top))
        node->top = topClause();
    accept(Keyword::From);
    node->target = tableTarget();
    if (is(Keyword::Output))
        node->output = outputClause();
    if (accept(Keyword::From))
        node->from = fromList();
    changeTail(node->where);
    return node;
}

/// WHERE and OPTION of UPDATE and DELETE.
void Parser::changeTail(ExprPtr& where) {
    if (accept(Keyword::Where)) {
        if (is(Keyword::Current) && is(Keyword::Of, 1))
            unsupported("WHERE CURRENT OF");
        where = condition();
    }
    optionClause();
}

OutputClause Parser::outputClause() {
    OutputClause out;
    advance();
    out.items = selectItems();
    if (!accept(Keyword::Into))
        return out;
    if (is(TokenKind::Variable))
        out.intoVariable = variableName();
    else
        out.intoTable = objectName();
    if (is(TokenKind::LeftParen) && isName(1))
        out.intoColumns = nameList();
    if (is(Keyword::Output))
        unsupported("a second OUTPUT clause");
    return out;
}

}  // namespace magdb::tsql
