#pragma once

#include "tsql/Ast.h"

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace magdb::tsql {

/// Writes nodes as S-expressions: (head part part ...).
class Writer {
public:
    [[nodiscard]] std::string take() { return std::move(out_); }

    void expr(const Expr& expr);
    void query(const Query& query);
    void statement(const Statement& statement);
    void statements(const StatementList& list);

private:
    void open(std::string_view head);
    void close() { out_ += ')'; }
    void atom(std::string_view text);
    /// A text in double quotes, so that blanks, quotes and nothing at all stay visible.
    void text(std::string_view text);
    /// (head "text"), or nothing for an empty text.
    void field(std::string_view head, std::string_view text);
    /// The word when it holds.
    void flag(std::string_view word, bool holds);
    void child(std::string_view head, const ExprPtr& expr);
    void exprs(const std::vector<ExprPtr>& list);
    void names(std::string_view head, const std::vector<std::string>& list);
    void object(const ObjectName& name);
    void type(const DataType& type);
    void optional(const ExprPtr& expr);

    void literal(const LiteralExpr& expr);
    void column(const ColumnExpr& expr);
    void function(const FunctionExpr& expr);
    void window(const Window& window);
    void frame(const WindowFrame& frame);
    void bound(WindowFrame::Bound bound, const ExprPtr& count);
    void cast(const CastExpr& expr);
    void caseOf(const CaseExpr& expr);
    void between(const BetweenExpr& expr);
    void like(const LikeExpr& expr);
    void in(const InExpr& expr);
    void order(std::string_view head, const std::vector<OrderItem>& items);

    void body(const QueryBody& body);
    void select(const SelectBody& body);
    void item(const SelectItem& item);
    void items(const std::vector<SelectItem>& items);
    void top(const std::optional<TopClause>& top);
    void from(const std::vector<TableSourcePtr>& list);
    void source(const TableSource& source);
    void join(const JoinTable& join);
    void rows(const std::vector<std::vector<ExprPtr>>& rows);
    void with(const std::vector<CommonTable>& tables);
    void output(const std::optional<OutputClause>& output);

    void simpleStatement(const Statement& statement);
    void definition(const Statement& statement);
    void declare(const DeclareVariablesStatement& s);
    void setOption(const SetOptionStatement& s);
    void target(const TableTarget& target);
    void insert(const InsertStatement& s);
    void update(const UpdateStatement& s);
    void remove(const DeleteStatement& s);
    void execute(const ExecuteStatement& s);
    void transaction(const TransactionStatement& s);
    void raise(const RaiseErrorStatement& s);
    void fetch(const FetchCursorStatement& s);
    void flow(const Statement& statement);
    void table(const TableDefinition& table);
    void columnDefinition(const ColumnDefinition& column);
    void constraint(const TableConstraint& constraint);
    void keys(std::string_view head, const std::vector<IndexColumn>& columns);
    void alterTable(const AlterTableStatement& s);
    void index(const CreateIndexStatement& s);
    void drop(const DropObjectStatement& s);
    void view(const CreateViewStatement& s);
    void parameters(const std::vector<Parameter>& list);
    void procedure(const CreateProcedureStatement& s);
    void createFunction(const CreateFunctionStatement& s);
    void principal(const PrincipalStatement& s);
    void permission(const PermissionStatement& s);

    std::string out_;
};

}  // namespace magdb::tsql
