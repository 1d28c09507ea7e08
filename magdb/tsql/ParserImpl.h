#pragma once

#include "tsql/Ast.h"
#include "tsql/Lexer.h"
#include "tsql/Parser.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace magdb::tsql {

/// A recursive-descent parser over the tokens of one batch, one file for each part of the grammar. Functions
/// named xxxStatement begin at the first token of the statement.
class Parser {
public:
    Parser(std::string_view text, bool quotedIdentifier);

    StatementList batch();
    std::vector<Parameter> parameterText();
    ExprPtr expressionText();
    ExprPtr conditionText();

private:
    /// Nesting of parentheses, subqueries and blocks that a text may have. It keeps the stack of the parser,
    /// and of whoever walks the tree, within bounds whatever the text.
    static constexpr int kMaxNesting = 200;
    /// Levels of one expression: long chains of operators are deep trees without nesting.
    static constexpr std::size_t kMaxDepth = 1000;
    static constexpr int kMaxTables = 256;
    static constexpr int kMaxSetOperations = 4000;
    static constexpr std::size_t kMaxValueRows = 1000;

    class Nesting {
    public:
        explicit Nesting(Parser& parser);
        ~Nesting() { --parser_.nesting_; }
        Nesting(const Nesting&) = delete;
        Nesting& operator=(const Nesting&) = delete;

    private:
        Parser& parser_;
    };

    // ------------------------------------------------------------------ tokens
    [[nodiscard]] const Token& token(std::size_t ahead = 0) const;
    [[nodiscard]] const Token& previous() const { return tokens_[at_ > 0 ? at_ - 1 : 0]; }
    void advance() { at_ += at_ + 1 < tokens_.size() ? 1 : 0; }
    [[nodiscard]] bool is(TokenKind kind, std::size_t ahead = 0) const { return token(ahead).kind == kind; }
    [[nodiscard]] bool is(Keyword keyword, std::size_t ahead = 0) const {
        return token(ahead).keyword == keyword;
    }
    [[nodiscard]] bool atEnd() const { return is(TokenKind::End); }
    bool accept(TokenKind kind);
    bool accept(Keyword keyword);
    /// Both words or none.
    bool accept(Keyword first, Keyword second);
    void expect(TokenKind kind);
    void expect(Keyword keyword);
    /// An unquoted word that is no keyword of the table, compared without case.
    [[nodiscard]] bool isWord(std::string_view upperText, std::size_t ahead = 0) const;
    bool acceptWord(std::string_view upperText);
    void expectWord(std::string_view upperText);
    [[nodiscard]] std::string_view raw(const Token& token) const;
    [[nodiscard]] std::string decode(const Token& token) const { return decodeToken(text_, token); }
    [[nodiscard]] std::string upperText(const Token& token) const;
    [[nodiscard]] SourcePos here() const { return {token().offset, token().line}; }
    /// Offset behind the last token taken.
    [[nodiscard]] std::uint32_t endOffset() const {
        return at_ > 0 ? previous().offset + previous().length : 0;
    }

    // ------------------------------------------------------------------ errors
    /// 156 for a reserved word, else 102; at the end of the text it names the last token.
    [[noreturn]] void failHere() const;
    [[noreturn]] void fail(int number, const std::string& text) const;
    [[noreturn]] void unsupported(std::string_view construct) const;
    [[noreturn]] void failTooDeep() const;

    // ------------------------------------------------------------------ names and types
    [[nodiscard]] bool isName(std::size_t ahead = 0) const;
    std::string name();
    /// The text of the current token, which must not be empty.
    std::string nameText();
    /// An alias: a name or a string.
    [[nodiscard]] bool isAlias() const;
    std::string alias();
    std::string variableName();
    ObjectName objectName();
    std::vector<std::string> nameList();
    DataType dataType();
    void typeName(DataType& type);
    void typeFacets(DataType& type);
    int smallInteger();

    // ------------------------------------------------------------------ expressions
    template <class Node>
    std::unique_ptr<Node> start() const;
    ExprPtr finish(ExprPtr node, std::initializer_list<const Expr*> children = {}) const;
    /// Grows node.depth so that it stands above child.
    void include(Expr& node, const Expr* child) const;
    ExprPtr expression();
    ExprPtr condition();
    ExprPtr defaultOrExpression();
    ExprPtr either();
    ExprPtr andLevel();
    ExprPtr notLevel();
    ExprPtr predicate();
    ExprPtr predicateTail(ExprPtr left);
    ExprPtr comparison(ExprPtr left, BinaryOp op);
    ExprPtr inTail(ExprPtr left, bool negated);
    ExprPtr likeTail(ExprPtr left, bool negated);
    ExprPtr betweenTail(ExprPtr left, bool negated);
    ExprPtr existsPredicate();
    void requireCondition(const Expr& expr) const;
    void requireValue(const Expr& expr) const;
    /// conditionAllowed: a condition in parentheses may come back.
    ExprPtr sum(bool conditionAllowed);
    ExprPtr product(bool conditionAllowed);
    ExprPtr unary(bool conditionAllowed);
    ExprPtr primary(bool conditionAllowed);
    ExprPtr atom(bool conditionAllowed);
    ExprPtr parenthesised(bool conditionAllowed);
    ExprPtr literal(LiteralKind kind);
    ExprPtr keywordAtom();
    ExprPtr nameAtom();
    ExprPtr columnAtom(std::vector<std::string> parts, SourcePos pos);
    ExprPtr functionCall(ObjectName name);
    void functionArguments(FunctionExpr& call);
    void withinGroup(FunctionExpr& call);
    void over(FunctionExpr& call);
    Window window();
    WindowFrame windowFrame();
    WindowFrame::Bound frameBound(ExprPtr& count);
    ExprPtr caseExpression();
    ExprPtr castExpression();
    ExprPtr convertExpression();
    ExprPtr niladic();
    std::vector<ExprPtr> expressionList();
    std::vector<OrderItem> orderItems();
    std::optional<BinaryOp> comparisonOperator() const;
    std::optional<AssignOp> assignOperator(std::size_t ahead = 0) const;

    // ------------------------------------------------------------------ queries
    [[nodiscard]] bool isQueryStart(std::size_t ahead = 0) const;
    /// A query with ORDER BY, FETCH and OPTION; WITH only where a statement may have it.
    QueryPtr query(bool withAllowed, bool optionAllowed);
    /// A query inside of another or of a module: ORDER BY needs TOP or OFFSET there.
    QueryPtr innerQuery(bool withAllowed = false);
    QueryPtr parenthesisedQuery();
    std::vector<CommonTable> commonTables();
    QueryBodyPtr setOperations();
    QueryBodyPtr intersections();
    QueryBodyPtr queryTerm();
    QueryBodyPtr selectBody();
    std::unique_ptr<SetOperationBody> combine(SetOp op, QueryBodyPtr left);
    TopClause topClause();
    std::vector<SelectItem> selectItems();
    SelectItem selectItem();
    bool starItem(SelectItem& item);
    bool assignmentItem(SelectItem& item);
    bool aliasFirstItem(SelectItem& item);
    void groupBy(SelectBody& body);
    void orderByTail(Query& query);
    void refuseForClause() const;
    std::optional<int> optionClause();
    std::vector<TableSourcePtr> fromList();
    TableSourcePtr tableSource();
    TableSourcePtr joinOf(TableSourcePtr left, JoinType type);
    std::optional<JoinType> joinOperator();
    TableSourcePtr tablePrimary();
    TableSourcePtr parenthesisedSource();
    TableSourcePtr namedSource();
    void tableAlias(TableSource& source, bool columnsAllowed, bool required);
    [[nodiscard]] bool isHintList(std::size_t ahead) const;
    void hints(std::vector<std::string>& out);
    void hintList(std::vector<std::string>& out);
    void indexHint();
    std::vector<std::vector<ExprPtr>> valueRows();
    OutputClause outputClause();

    // ------------------------------------------------------------------ statements
    StatementPtr statement();
    StatementPtr unfinishedStatement();
    StatementPtr wordStatement();
    StatementPtr createStatement();
    StatementPtr alterStatement();
    StatementPtr dropStatement();
    [[nodiscard]] bool refusedStatement() const;
    StatementPtr statementWithCommonTables();
    /// Statements up to END or the end of the text.
    void statementsUntilEnd(StatementList& out);
    StatementPtr beginStatement();
    StatementPtr tryCatchStatement();
    StatementPtr blockStatement();
    StatementPtr ifStatement();
    StatementPtr whileStatement();
    StatementPtr loopStatement();
    StatementPtr returnStatement();
    [[nodiscard]] static bool startsValue(Keyword keyword);
    StatementPtr declareStatement();
    VariableDeclaration variableDeclaration();
    StatementPtr declareCursor();
    [[nodiscard]] std::string cursorOption() const;
    StatementPtr printStatement();
    StatementPtr raiseErrorStatement();
    StatementPtr throwStatement();
    StatementPtr useStatement();
    StatementPtr truncateStatement();

    StatementPtr setStatement();
    StatementPtr setVariable();
    void setOptionValue(SetOptionStatement& statement);
    void setIsolationLevel(SetOptionStatement& statement);
    StatementPtr executeStatement();
    StatementPtr executeText(SourcePos pos);
    StatementPtr procedureCall(SourcePos pos);
    [[nodiscard]] bool isArgumentStart() const;
    ExecuteArgument executeArgument();
    ExprPtr argumentValue();
    StatementPtr transactionStatement();
    void transactionName(TransactionStatement& statement);
    StatementPtr cursorStatement(StatementKind kind);
    StatementPtr fetchStatement();

    StatementPtr selectStatement(std::vector<CommonTable> with);
    StatementPtr insertStatement(std::vector<CommonTable> with);
    void insertSource(InsertStatement& insert);
    StatementPtr updateStatement(std::vector<CommonTable> with);
    SetClause setClause();
    void setTarget(SetClause& clause);
    StatementPtr deleteStatement(std::vector<CommonTable> with);
    TableTarget tableTarget();
    void changeTail(ExprPtr& where);

    StatementPtr createTable();
    TableDefinition tableDefinition();
    void tableElement(TableDefinition& table);
    ColumnDefinition columnDefinition();
    void computedColumn(ColumnDefinition& column);
    bool columnProperty(ColumnDefinition& column);
    void identityProperty(ColumnDefinition& column);
    void defaultProperty(ColumnDefinition& column);
    [[nodiscard]] bool isTableConstraint() const;
    TableConstraint constraint(const std::string* column);
    void keyConstraint(TableConstraint& constraint, const std::string* column);
    void foreignKey(TableConstraint& constraint, const std::string* column);
    void checkConstraint(TableConstraint& constraint);
    ReferentialAction referentialAction();
    std::vector<IndexColumn> indexColumns();
    void indexOptions();
    std::int64_t signedInteger();
    StatementPtr alterTable();
    void alterTableDrop(AlterTableStatement& statement);
    StatementPtr createIndex();
    StatementPtr dropIndex();

    void requireFirst(std::size_t position, std::string_view what) const;
    StatementPtr createView(bool alter);
    StatementPtr createProcedure(bool alter);
    StatementPtr createFunction(bool alter);
    void functionReturns(CreateFunctionStatement& function);
    void functionBody(CreateFunctionStatement& function);
    std::vector<Parameter> parameters(TokenKind end);
    Parameter parameter();
    ExprPtr parameterDefault();
    std::vector<std::string> moduleOptions();
    StatementPtr dropObject(ObjectType type);
    StatementPtr principal(PrincipalStatement::Action action);
    void principalOptions(PrincipalStatement& statement);
    void principalOption(PrincipalStatement& statement);
    void alterRole(PrincipalStatement& statement);
    StatementPtr permission(PermissionStatement::Action action);
    std::string permissionName();

    std::string_view text_;
    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    int nesting_ = 0;
    int tables_ = 0;          ///< table sources of the query being read
    int setOperations_ = 0;   ///< set operations of the statement being read
    int loops_ = 0;           ///< WHILE around the statement being read
    bool terminated_ = true;  ///< the statement before ended with a semicolon, or there is none in its list
};

template <class Node>
std::unique_ptr<Node> Parser::start() const {
    auto node = std::make_unique<Node>();
    node->pos = here();
    return node;
}

}  // namespace magdb::tsql
