#include "tsql/ParserImpl.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

// Tables and indexes.

namespace magdb::tsql {

namespace {

/// Options of an index that change nothing that a statement could see, as long as they are not among the two
/// below.
constexpr std::array<std::string_view, 11> kIndexOptions = {
    "PAD_INDEX",        "FILLFACTOR",       "STATISTICS_NORECOMPUTE",
    "ALLOW_ROW_LOCKS",  "ALLOW_PAGE_LOCKS", "SORT_IN_TEMPDB",
    "ONLINE",           "MAXDOP",           "IGNORE_DUP_KEY",
    "DATA_COMPRESSION", "DROP_EXISTING"};

}  // namespace

StatementPtr Parser::createTable() {
    auto node = start<CreateTableStatement>();
    expect(Keyword::Table);
    node->name = objectName();
    if (is(Keyword::As))
        unsupported("CREATE TABLE ... AS");
    node->table = tableDefinition();
    if (accept(Keyword::On))
        name();
    if (acceptWord("TEXTIMAGE_ON"))
        name();
    if (is(Keyword::With) && is(TokenKind::LeftParen, 1))
        unsupported("CREATE TABLE ... WITH");
    return node;
}

TableDefinition Parser::tableDefinition() {
    TableDefinition table;
    expect(TokenKind::LeftParen);
    do {
        if (is(TokenKind::RightParen) && !table.columns.empty())
            break;  // a comma behind the last element is allowed
        tableElement(table);
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen);
    return table;
}

bool Parser::isTableConstraint() const {
    return is(Keyword::Constraint) || is(Keyword::Primary) || is(Keyword::Unique) || is(Keyword::Check) ||
           is(Keyword::Foreign);
}

void Parser::tableElement(TableDefinition& table) {
    if (is(Keyword::Index))
        unsupported("an index inside CREATE TABLE");
    if (isWord("PERIOD") && is(Keyword::For, 1))
        unsupported("PERIOD FOR SYSTEM_TIME");
    if (isTableConstraint())
        table.constraints.push_back(constraint(nullptr));
    else
        table.columns.push_back(columnDefinition());
}

// -----------------------------------------------------------------------------------------------------
// columns

ColumnDefinition Parser::columnDefinition() {
    ColumnDefinition column;
    column.pos = here();
    column.name = name();
    if (accept(Keyword::As)) {
        computedColumn(column);
        return column;
    }
    column.type = dataType();
    while (columnProperty(column)) {
    }
    return column;
}

void Parser::computedColumn(ColumnDefinition& column) {
    column.computedText.begin = here().offset;
    column.computed = expression();
    column.computedText.end = endOffset();
    if (accept(Keyword::Persisted)) {
        column.persisted = true;
        if (accept(Keyword::Not)) {
            expect(Keyword::Null);
            column.nullable = false;
        }
    }
    while (isTableConstraint())
        column.constraints.push_back(constraint(&column.name));
}

/// One property behind the type. False when there is none left.
bool Parser::columnProperty(ColumnDefinition& column) {
    if (accept(Keyword::Collate)) {
        column.collation = name();
    } else if (accept(Keyword::Null)) {
        column.nullable = true;
    } else if (accept(Keyword::Not, Keyword::Null)) {
        column.nullable = false;
    } else if (is(Keyword::Not) && is(Keyword::For, 1)) {
        unsupported("NOT FOR REPLICATION");
    } else if (is(Keyword::Identity)) {
        identityProperty(column);
    } else if (accept(Keyword::Rowguidcol)) {
        column.rowGuid = true;
    } else if (is(Keyword::Default) || (is(Keyword::Constraint) && is(Keyword::Default, 2))) {
        defaultProperty(column);
    } else if (isTableConstraint() || is(Keyword::References)) {
        column.constraints.push_back(constraint(&column.name));
    } else if (is(Keyword::With) && is(Keyword::Values, 1)) {
        advance();
        advance();
        column.withValues = true;
    } else if (isWord("SPARSE") || isWord("MASKED") || isWord("ENCRYPTED") || isWord("FILESTREAM") ||
               isWord("HIDDEN") || isWord("GENERATED")) {
        unsupported("a column that is " + upperText(token()));
    } else {
        return false;
    }
    return true;
}

std::int64_t Parser::signedInteger() {
    const bool negative = accept(TokenKind::Minus);
    if (!negative)
        accept(TokenKind::Plus);
    if (!is(TokenKind::Integer))
        failHere();
    const std::string_view digits = raw(token());
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc{} || end != digits.data() + digits.size())
        failHere();
    advance();
    return negative ? -value : value;
}

void Parser::identityProperty(ColumnDefinition& column) {
    advance();
    column.identity = true;
    if (accept(TokenKind::LeftParen)) {
        column.identitySeed = signedInteger();
        expect(TokenKind::Comma);
        column.identityIncrement = signedInteger();
        expect(TokenKind::RightParen);
    }
}

void Parser::defaultProperty(ColumnDefinition& column) {
    if (accept(Keyword::Constraint))
        column.defaultConstraint = name();
    expect(Keyword::Default);
    column.defaultText.begin = here().offset;
    column.defaultValue = expression();
    column.defaultText.end = endOffset();
}

// -------------------------------------------------------------------------------------------------
// constraints

/// column: the column of an inline constraint, or null at table level.
TableConstraint Parser::constraint(const std::string* column) {
    TableConstraint out;
    out.pos = here();
    if (accept(Keyword::Constraint))
        out.name = name();
    if (is(Keyword::Primary) || is(Keyword::Unique)) {
        keyConstraint(out, column);
    } else if (is(Keyword::Check)) {
        checkConstraint(out);
        if (column != nullptr)
            out.columns.push_back({*column, false});
    } else if (is(Keyword::Foreign) || (column != nullptr && is(Keyword::References))) {
        foreignKey(out, column);
    } else if (column == nullptr && accept(Keyword::Default)) {
        out.kind = TableConstraint::Kind::Default;
        out.exprText.begin = here().offset;
        out.expr = expression();
        out.exprText.end = endOffset();
        expect(Keyword::For);
        out.columns.push_back({name(), false});
        if (is(Keyword::With) && is(Keyword::Values, 1))
            unsupported("WITH VALUES for an existing column");
    } else {
        failHere();
    }
    return out;
}

void Parser::keyConstraint(TableConstraint& out, const std::string* column) {
    out.kind = accept(Keyword::Unique) ? TableConstraint::Kind::Unique : TableConstraint::Kind::PrimaryKey;
    if (out.kind == TableConstraint::Kind::PrimaryKey) {
        expect(Keyword::Primary);
        expect(Keyword::Key);
    }
    if (accept(Keyword::Clustered))
        out.clustered = true;
    else if (accept(Keyword::Nonclustered))
        out.clustered = false;
    if (column != nullptr)
        out.columns.push_back({*column, false});
    else
        out.columns = indexColumns();
    indexOptions();
}

void Parser::checkConstraint(TableConstraint& out) {
    advance();
    if (is(Keyword::Not) && is(Keyword::For, 1))
        unsupported("NOT FOR REPLICATION");
    out.kind = TableConstraint::Kind::Check;
    out.exprText.begin = here().offset;
    expect(TokenKind::LeftParen);
    out.expr = condition();
    expect(TokenKind::RightParen);
    out.exprText.end = endOffset();
}

void Parser::foreignKey(TableConstraint& out, const std::string* column) {
    out.kind = TableConstraint::Kind::ForeignKey;
    if (accept(Keyword::Foreign))
        expect(Keyword::Key);
    if (column != nullptr) {
        out.columns.push_back({*column, false});
    } else {
        for (std::string& key : nameList())
            out.columns.push_back({std::move(key), false});
    }
    expect(Keyword::References);
    out.referenced = objectName();
    if (is(TokenKind::LeftParen))
        out.referencedColumns = nameList();
    while (is(Keyword::On) && (is(Keyword::Delete, 1) || is(Keyword::Update, 1))) {
        advance();
        ReferentialAction& action = is(Keyword::Delete) ? out.onDelete : out.onUpdate;
        advance();
        action = referentialAction();
    }
}

ReferentialAction Parser::referentialAction() {
    if (accept(Keyword::Cascade))
        return ReferentialAction::Cascade;
    if (accept(Keyword::Set, Keyword::Null))
        return ReferentialAction::SetNull;
    if (accept(Keyword::Set, Keyword::Default))
        return ReferentialAction::SetDefault;
    expect(Keyword::No);
    expect(Keyword::Action);
    return ReferentialAction::NoAction;
}

std::vector<IndexColumn> Parser::indexColumns() {
    std::vector<IndexColumn> columns;
    expect(TokenKind::LeftParen);
    do {
        IndexColumn column;
        column.name = name();
        if (accept(Keyword::Desc))
            column.descending = true;
        else
            accept(Keyword::Asc);
        columns.push_back(std::move(column));
    } while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen);
    return columns;
}

/// WITH (...) and ON filegroup behind a key or an index.
void Parser::indexOptions() {
    if (is(Keyword::With) && is(TokenKind::LeftParen, 1)) {
        advance();
        advance();
        do {
            const std::string option = upperText(token());
            if (std::find(kIndexOptions.begin(), kIndexOptions.end(), option) == kIndexOptions.end())
                failHere();
            advance();
            expect(TokenKind::Equal);
            if ((option == "IGNORE_DUP_KEY" || option == "DROP_EXISTING") && is(Keyword::On))
                unsupported(option + " = ON");
            if (!is(TokenKind::Word) && !is(TokenKind::Integer))
                failHere();
            advance();
        } while (accept(TokenKind::Comma));
        expect(TokenKind::RightParen);
    }
    if (is(Keyword::On) && isName(1)) {
        advance();
        name();
    }
}

// ------------------------------------------------------------------------------------------------- ALTER
// TABLE

StatementPtr Parser::alterTable() {
    auto node = start<AlterTableStatement>();
    expect(Keyword::Table);
    node->name = objectName();
    if (is(Keyword::With) && is(Keyword::Check, 1)) {
        advance();
        advance();
        if (!is(Keyword::Add))
            unsupported("ALTER TABLE ... CHECK CONSTRAINT");
    } else if (is(Keyword::With) && is(Keyword::Nocheck, 1)) {
        unsupported("ALTER TABLE ... WITH NOCHECK");
    }
    if (accept(Keyword::Add)) {
        do {
            if (is(Keyword::Default))
                node->added.constraints.push_back(constraint(nullptr));
            else
                tableElement(node->added);
        } while (accept(TokenKind::Comma));
    } else if (accept(Keyword::Drop)) {
        alterTableDrop(*node);
    } else if (accept(Keyword::Alter, Keyword::Column)) {
        node->action = AlterTableStatement::Action::AlterColumn;
        node->added.columns.push_back(columnDefinition());
    } else if (is(TokenKind::Word)) {
        if (is(Keyword::Set) || is(Keyword::Check) || is(Keyword::Nocheck) || is(Keyword::Enable) ||
            is(Keyword::Disable) || isWord("SWITCH") || isWord("REBUILD"))
            unsupported("ALTER TABLE ... " + upperText(token()));
        failHere();
    } else {
        failHere();
    }
    return node;
}

void Parser::alterTableDrop(AlterTableStatement& statement) {
    using Action = AlterTableStatement::Action;
    statement.action = accept(Keyword::Column) ? Action::DropColumn : Action::DropConstraint;
    if (statement.action == Action::DropConstraint)
        accept(Keyword::Constraint);
    if (accept(Keyword::If)) {
        expect(Keyword::Exists);
        statement.ifExists = true;
    }
    do {
        // CONSTRAINT a, COLUMN b in one statement mixes what the tree keeps apart.
        if (is(Keyword::Column) || is(Keyword::Constraint))
            unsupported("DROP of constraints and columns in one statement");
        statement.dropped.push_back(name());
    } while (accept(TokenKind::Comma));
}

// -----------------------------------------------------------------------------------------------------
// indexes

/// From UNIQUE, CLUSTERED, NONCLUSTERED or INDEX on.
StatementPtr Parser::createIndex() {
    auto node = start<CreateIndexStatement>();
    node->unique = accept(Keyword::Unique);
    node->clustered = accept(Keyword::Clustered);
    if (!node->clustered)
        accept(Keyword::Nonclustered);
    if (isWord("COLUMNSTORE"))
        unsupported("a columnstore index");
    expect(Keyword::Index);
    node->name = name();
    expect(Keyword::On);
    node->table = objectName();
    node->columns = indexColumns();
    if (accept(Keyword::Include))
        node->include = nameList();
    if (accept(Keyword::Where))
        node->where = condition();
    indexOptions();
    return node;
}

StatementPtr Parser::dropIndex() {
    auto node = start<DropIndexStatement>();
    expect(Keyword::Index);
    if (accept(Keyword::If)) {
        expect(Keyword::Exists);
        node->ifExists = true;
    }
    const ObjectName first = objectName();
    if (accept(Keyword::On)) {
        node->name = first.name;
        node->table = objectName();
    } else {
        // The old form: DROP INDEX table.index.
        if (first.schema.empty())
            failHere();
        node->name = first.name;
        node->table.name = first.schema;
        node->table.schema = first.database;
        node->table.pos = first.pos;
    }
    if (is(TokenKind::Comma))
        unsupported("DROP INDEX of several indexes");
    return node;
}

}  // namespace magdb::tsql
