#pragma once

#include "tsql/AstExpr.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace magdb::tsql {

enum class TableSourceKind : std::uint8_t { Named, Variable, Function, Derived, Values, Join };

struct TableSource {
    const TableSourceKind kind;
    SourcePos pos;
    std::string alias;                 ///< empty when not given
    std::vector<std::string> columns;  ///< column aliases behind the alias; Function, Derived and Values only

    virtual ~TableSource() = default;
    TableSource(const TableSource&) = delete;
    TableSource& operator=(const TableSource&) = delete;

protected:
    explicit TableSource(TableSourceKind k) : kind(k) {}
};

/// A table, view or common table expression.
struct NamedTable : TableSource {
    NamedTable() : TableSource(TableSourceKind::Named) {}
    ObjectName name;
    std::vector<std::string> hints;  ///< in upper case: NOLOCK, UPDLOCK...
};

struct VariableTable : TableSource {
    VariableTable() : TableSource(TableSourceKind::Variable) {}
    std::string name;  ///< with @
};

/// A call of a table-valued function.
struct FunctionTable : TableSource {
    FunctionTable() : TableSource(TableSourceKind::Function) {}
    ObjectName name;
    std::vector<ExprPtr> arguments;
};

/// (SELECT ...) AS alias
struct DerivedTable : TableSource {
    DerivedTable() : TableSource(TableSourceKind::Derived) {}
    QueryPtr query;
};

/// (VALUES (...), (...)) AS alias (columns)
struct ValuesTable : TableSource {
    ValuesTable() : TableSource(TableSourceKind::Values) {}
    std::vector<std::vector<ExprPtr>> rows;
};

enum class JoinType : std::uint8_t { Inner, Left, Right, Full, Cross, CrossApply, OuterApply };

struct JoinTable : TableSource {
    JoinTable() : TableSource(TableSourceKind::Join) {}
    JoinType type = JoinType::Inner;
    TableSourcePtr left;
    TableSourcePtr right;
    ExprPtr on;  ///< null for Cross, CrossApply and OuterApply
};

// -------------------------------------------------------------------------------------------------- queries

enum class AssignOp : std::uint8_t { Set, Add, Subtract, Multiply, Divide, Modulo, BitAnd, BitOr, BitXor };

struct SelectItem {
    enum class Kind : std::uint8_t { Expression, Star, Assignment };
    Kind kind = Kind::Expression;
    SourcePos pos;
    ExprPtr expr;                            ///< null for Star
    std::string alias;                       ///< Expression only; empty when not given
    std::vector<std::string> starQualifier;  ///< Star only: `t` of t.*
    std::string variable;                    ///< Assignment only, with @
    AssignOp op = AssignOp::Set;             ///< Assignment only
};

struct TopClause {
    ExprPtr count;
    bool percent = false;
};

enum class QueryBodyKind : std::uint8_t { Select, SetOperation };

struct QueryBody {
    const QueryBodyKind kind;
    SourcePos pos;

    virtual ~QueryBody() = default;
    QueryBody(const QueryBody&) = delete;
    QueryBody& operator=(const QueryBody&) = delete;

protected:
    explicit QueryBody(QueryBodyKind k) : kind(k) {}
};
using QueryBodyPtr = std::unique_ptr<QueryBody>;

/// One SELECT without ORDER BY.
struct SelectBody : QueryBody {
    SelectBody() : QueryBody(QueryBodyKind::Select) {}
    bool distinct = false;
    std::optional<TopClause> top;
    std::vector<SelectItem> items;
    std::optional<ObjectName> into;
    std::vector<TableSourcePtr> from;  ///< the parts between commas
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
};

enum class SetOp : std::uint8_t { Union, UnionAll, Except, Intersect };

struct SetOperationBody : QueryBody {
    SetOperationBody() : QueryBody(QueryBodyKind::SetOperation) {}
    SetOp op = SetOp::Union;
    QueryBodyPtr left;
    QueryBodyPtr right;
};

struct CommonTable {
    std::string name;
    std::vector<std::string> columns;
    QueryPtr query;
    SourcePos pos;
};

struct Query {
    SourcePos pos;
    std::uint32_t end = 0;          ///< offset behind the last token
    std::vector<CommonTable> with;  ///< only on statements and views
    QueryBodyPtr body;
    std::vector<OrderItem> orderBy;
    ExprPtr offset;  ///< OFFSET n ROWS
    ExprPtr fetch;   ///< FETCH NEXT n ROWS ONLY
    std::optional<int>
        maxRecursion;  ///< OPTION (MAXRECURSION n); other query hints change no result and are dropped
};

/// OUTPUT list [INTO table (columns)]. inserted.x and deleted.x are ColumnExpr with that qualifier.
struct OutputClause {
    std::vector<SelectItem> items;
    std::optional<ObjectName> intoTable;
    std::string intoVariable;  ///< with @; empty when not into a table variable
    std::vector<std::string> intoColumns;
};

}  // namespace magdb::tsql
