#pragma once

#include "engine/Bound.h"
#include "engine/Schema.h"
#include "tsql/Ast.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace magdb {

/// A variable or parameter of a batch or module.
struct Variable {
    int slot = 0;
    SqlType type;
    std::shared_ptr<const Table> table;  ///< of a table variable
};

/// What names mean where a statement stands.
class BindContext {
public:
    virtual ~BindContext() = default;
    [[nodiscard]] virtual const Schema& schema() const = 0;
    [[nodiscard]] virtual const std::string& databaseName() const = 0;
    /// The session's current database: its own or master.
    [[nodiscard]] virtual const std::string& currentDatabase() const = 0;
    [[nodiscard]] virtual const Variable* variable(const std::string& name) const = 0;
    [[nodiscard]] virtual std::shared_ptr<const Table> temporaryTable(const std::string& name) const = 0;
    /// A new name in the session's store for rows of a prefill.
    [[nodiscard]] virtual std::string prefillTable(const std::string& hint) = 0;
};

/// Translates one statement: names to columns and variables with their types, T-SQL to SQLite. Used once.
/// Throws SqlError.
class Binder {
public:
    explicit Binder(BindContext& context) : m_context(context) {}
    Binder(const Binder&) = delete;
    Binder& operator=(const Binder&) = delete;

    [[nodiscard]] SelectPlan select(const tsql::Query& query);
    /// A query for its rows alone, such as that of a cursor.
    [[nodiscard]] Plan rows(const tsql::Query& query);
    /// One row with one column.
    [[nodiscard]] Plan scalar(const tsql::Expr& expr);
    /// One row with one column of the given type.
    [[nodiscard]] Plan scalarAs(const tsql::Expr& expr, const SqlType& type);
    /// One row with 1 when the condition holds, else 0.
    [[nodiscard]] Plan condition(const tsql::Expr& expr);
    [[nodiscard]] InsertPlan insert(const tsql::InsertStatement& statement);
    [[nodiscard]] UpdatePlan update(const tsql::UpdateStatement& statement);
    [[nodiscard]] DeletePlan remove(const tsql::DeleteStatement& statement);

    /// `@x op= value` as a value of the variable's type.
    [[nodiscard]] Plan assignment(const std::string& variable, tsql::AssignOp op, const tsql::Expr& value);

    /// 1 when a row of the table violates the condition; the row's values are Row parameters in the order of
    /// the table's columns.
    [[nodiscard]] Plan violation(const Table& table, const tsql::Expr& condition);
    /// Values of expressions over a row of the table (computed columns), converted to the given types.
    [[nodiscard]] Plan overRow(const Table& table, const std::vector<const tsql::Expr*>& exprs,
                               const std::vector<SqlType>& types);
    /// The type of an expression over a row of the table.
    [[nodiscard]] Bound typeOver(const Table& table, const tsql::Expr& expr);
    /// The columns of a view or of a table function's query.
    [[nodiscard]] std::vector<SourceColumn> viewColumns(const Module& view);
    /// Condition of a filtered index in terms of its bare columns.
    [[nodiscard]] std::string indexFilter(const Table& table, const tsql::Expr& condition);

private:
    friend class FunctionBinder;

    // Expressions
    [[nodiscard]] Bound expr(const tsql::Expr& node);
    [[nodiscard]] Bound exprInGroup(const tsql::Expr& node);
    [[nodiscard]] Bound exprPlain(const tsql::Expr& node);
    [[nodiscard]] std::string condition(const tsql::Expr& node, int level);
    [[nodiscard]] std::string where(const tsql::Expr& node) { return condition(node, 0); }
    [[nodiscard]] Bound column(const tsql::ColumnExpr& node);
    [[nodiscard]] Bound variable(const tsql::VariableExpr& node);
    [[nodiscard]] Bound globalVariable(const tsql::GlobalVariableExpr& node);
    [[nodiscard]] Bound unary(const tsql::UnaryExpr& node);
    [[nodiscard]] Bound binary(const tsql::BinaryExpr& node);
    [[nodiscard]] Bound arithmetic(tsql::BinaryOp op, const Bound& left, const Bound& right);
    [[nodiscard]] Bound concatenate(const Bound& left, const Bound& right);
    [[nodiscard]] Bound cast(const tsql::CastExpr& node);
    [[nodiscard]] Bound caseOf(const tsql::CaseExpr& node);
    [[nodiscard]] Bound subquery(const tsql::Query& query);
    [[nodiscard]] std::string compare(tsql::BinaryOp op, const Bound& left, const Bound& right);
    [[nodiscard]] std::string in(const tsql::InExpr& node);
    [[nodiscard]] std::string like(const tsql::LikeExpr& node);
    [[nodiscard]] std::string quantified(const tsql::QuantifiedExpr& node);
    /// While rows are gathered before their expressions: hands the text to the gathering query and gives the
    /// name of its column.
    [[nodiscard]] std::string capture(std::string sql);
    /// Source, column and the scope it was found in.
    struct Found {
        const SourceColumn* column = nullptr;
        Scope* scope = nullptr;
    };
    [[nodiscard]] Found find(const tsql::ColumnExpr& node);

    // Functions
    [[nodiscard]] Bound function(const tsql::FunctionExpr& node);
    [[nodiscard]] Bound aggregate(const tsql::FunctionExpr& node, const std::string& name);
    [[nodiscard]] Bound windowed(const tsql::FunctionExpr& node, const std::string& name);
    [[nodiscard]] Bound aggregateCall(const std::string& name, const tsql::FunctionExpr& node, bool window);
    [[nodiscard]] Bound stringAgg(const tsql::FunctionExpr& node);
    [[nodiscard]] std::string overClause(const tsql::Window& window);
    [[nodiscard]] Bound userFunction(const tsql::FunctionExpr& node);

    // Queries
    [[nodiscard]] BoundQuery query(const tsql::Query& query);
    [[nodiscard]] BoundQuery body(const tsql::QueryBody& body, const tsql::Query* owner);
    [[nodiscard]] BoundQuery selectBody(const tsql::SelectBody& body, const tsql::Query* owner);
    [[nodiscard]] BoundQuery setOperation(const tsql::SetOperationBody& body);
    void groupBy(const tsql::SelectBody& body, BoundQuery& out);
    void selectItems(const tsql::SelectBody& body, BoundQuery& out);
    void star(const tsql::SelectItem& item, BoundQuery& out);
    void orderBy(const tsql::Query& owner, BoundQuery& out);
    void limits(const tsql::SelectBody& body, const tsql::Query* owner, BoundQuery& out);
    [[nodiscard]] std::string limitCount(const tsql::Expr& node);
    void unify(std::vector<BoundQuery>& parts);
    [[nodiscard]] Plan finish(const BoundQuery& query);
    [[nodiscard]] Plan finish(std::string sql, std::vector<ResultColumn> columns);

    // Sources
    [[nodiscard]] std::string from(const std::vector<tsql::TableSourcePtr>& sources);
    [[nodiscard]] std::string source(const tsql::TableSource& node, bool optional);
    [[nodiscard]] std::string named(const tsql::NamedTable& node, bool optional);
    [[nodiscard]] std::string joined(const tsql::JoinTable& node, bool optional);
    [[nodiscard]] std::string functionTable(const tsql::FunctionTable& node, bool optional);
    [[nodiscard]] std::string valuesTable(const tsql::ValuesTable& node, bool optional);
    [[nodiscard]] std::string tableSource(const std::shared_ptr<const Table>& table, const std::string& name,
                                          bool aliased, bool optional);
    [[nodiscard]] std::string querySource(const BoundQuery& bound, const std::string& name, bool aliased,
                                          const std::vector<std::string>& columns, bool optional);
    [[nodiscard]] BoundQuery view(const Module& module);
    [[nodiscard]] BoundQuery commonTable(std::size_t index);
    [[nodiscard]] BoundQuery recursiveTable(const tsql::CommonTable& table, std::optional<int> limit);
    [[nodiscard]] std::shared_ptr<const Table> targetTable(const tsql::TableTarget& target);
    [[nodiscard]] std::shared_ptr<const SchemaObject> object(const tsql::ObjectName& name);
    void addSource(Source source);
    void addComputed(Source& source);
    [[nodiscard]] std::string newAlias() { return "s" + std::to_string(++m_aliases); }

    // Changes
    void insertColumns(const tsql::InsertStatement& statement, InsertPlan& plan);
    [[nodiscard]] BoundQuery valuesRows(const tsql::InsertStatement& statement, const InsertPlan& plan);
    void insertDefaults(InsertPlan& plan);
    [[nodiscard]] Bound defaultOf(const Table& table, int column);
    [[nodiscard]] OutputPlan output(const tsql::OutputClause& clause, const Table& table);
    struct ChangeTarget {
        std::shared_ptr<const Table> table;
        std::string alias;  ///< SQLite's
        std::string from;
    };
    /// What UPDATE and DELETE begin with: WITH, then the target in the open scope.
    template <class Statement>
    [[nodiscard]] ChangeTarget beginChange(const Statement& statement);
    /// A query of the target's rows, whose first column is their rowid.
    [[nodiscard]] static BoundQuery rowsOf(const ChangeTarget& target);
    /// WHERE and TOP of UPDATE and DELETE; closes the scope.
    template <class Statement>
    [[nodiscard]] Plan finishChange(const Statement& statement, BoundQuery& bound);
    [[nodiscard]] ChangeTarget changeTarget(const tsql::TableTarget& target,
                                            const std::vector<tsql::TableSourcePtr>& from);
    [[nodiscard]] Source rowSource(const Table& table, const std::string& name, int firstIndex);

    // Types
    [[nodiscard]] Bound to(const Bound& value, const SqlType& type, bool isExplicit = false, int style = 0);
    [[nodiscard]] std::string parameter(const PlanParameter& parameter);
    [[nodiscard]] Bound systemValue(SystemValue value, const SqlType& type);

    BindContext& m_context;
    std::vector<PlanParameter> m_parameters;
    std::vector<PlanDependency> m_dependencies;
    std::vector<Prefill> m_prefills;
    Scope* m_scope = nullptr;
    int m_aliases = 0;
    int m_viewDepth = 0;

    struct CommonEntry {
        const tsql::CommonTable* table = nullptr;
        std::optional<int> maxRecursion;
        /// While its own query is bound: the columns of the anchor and the name in SQLite.
        std::vector<SourceColumn> anchor;
        std::string recursiveName;
        bool used = false;
    };
    std::vector<CommonEntry> m_commons;
    std::size_t m_commonsVisible = 0;

    /// Arguments in the place of parameters while an inline function is bound; null outside.
    const std::unordered_map<std::string, Bound>* m_arguments = nullptr;
    bool m_hideVariables = false;
    const std::unordered_map<std::string, SqlType>* m_accumulators = nullptr;
    std::vector<std::string>* m_captured = nullptr;
    bool m_allowAssignments = false;
    bool m_selfReference = false;
};

/// Of two types the one that an expression of both has. Errors 206, 257.
[[nodiscard]] SqlType commonType(const SqlType& left, const SqlType& right);
/// The decimal that holds every value of an integer or money type.
[[nodiscard]] SqlType asDecimal(const Bound& value);
/// A declared type; errors 2715, 2716 and refusals.
[[nodiscard]] SqlType resolveType(const tsql::DataType& type, int position, bool inCast = false);
/// The value of a literal.
[[nodiscard]] Bound literal(const tsql::LiteralExpr& node);
/// The collation of a COLLATE clause; error for names that the server does not have.
[[nodiscard]] TextOrder textOrder(const std::string& collation);
[[nodiscard]] std::string_view collationOf(TextOrder order);
[[nodiscard]] std::string dotted(const tsql::ObjectName& name);

}  // namespace magdb
