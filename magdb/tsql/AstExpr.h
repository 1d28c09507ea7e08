#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

// The syntax tree of T-SQL. It says what was written, not what it means: names are unresolved, literals are
// text. Expressions, table sources, query bodies and statements are small class hierarchies with a `kind`;
// as<T>() goes from the base to the node that the kind promises. Every node owns its children and its
// strings.

namespace magdb::tsql {

/// Where a node begins in the text of its batch.
struct SourcePos {
    std::uint32_t offset = 0;  ///< bytes from the start of the batch
    std::uint32_t line = 1;    ///< 1-based
};

/// Bytes [begin, end) of the text of the batch.
struct TextRange {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
};

/// The name of an object: `name`, `schema.name`, `database.schema.name` or `database..name`. Brackets and
/// quotes are removed, case is kept. Temporary tables keep their `#` or `##`.
struct ObjectName {
    std::string database;  ///< empty when not written
    std::string schema;    ///< empty when not written
    std::string name;
    SourcePos pos;
};

/// A type as written, under one spelling for each type (`integer` is `int`, `dec` is `decimal`,
/// `character varying` is `varchar`, `double precision` is `float`, `rowversion` is `timestamp`), in lower
/// case. Anything else (`numeric`, `sysname`, `datetime2`, `xml`, a user's own name) stays as written, for
/// the binder to know or to refuse.
struct DataType {
    std::string name;
    std::optional<int> length;  ///< first number in parentheses: length or precision
    std::optional<int> scale;   ///< second number in parentheses
    bool max = false;           ///< (max)
    SourcePos pos;
};

struct Expr;
struct Query;
struct TableSource;
struct Statement;
using ExprPtr = std::unique_ptr<Expr>;
using QueryPtr = std::unique_ptr<Query>;
using TableSourcePtr = std::unique_ptr<TableSource>;
using StatementPtr = std::unique_ptr<Statement>;
using StatementList = std::vector<StatementPtr>;

/// The node of type T behind a base, which must be of T's kind.
template <class T, class Base>
[[nodiscard]] const T& as(const Base& node) {
    return static_cast<const T&>(node);
}
template <class T, class Base>
[[nodiscard]] T& as(Base& node) {
    return static_cast<T&>(node);
}

enum class ExprKind : std::uint8_t {
    Literal,
    Column,
    Variable,
    GlobalVariable,
    Default,
    Unary,
    Binary,
    Collate,
    Function,
    Cast,
    Case,
    Between,
    Like,
    In,
    IsNull,
    Exists,
    Quantified,
    Subquery,
};

/// Base of all expressions and conditions. T-SQL has no truth value as a value: whether a node is a condition
/// follows from its kind (and from the operator of Unary and Binary); the parser has checked that conditions
/// stand where conditions belong.
struct Expr {
    const ExprKind kind;
    SourcePos pos;
    std::uint32_t end = 0;    ///< offset behind the last token
    std::uint16_t depth = 1;  ///< levels of the tree below and with this node; bounded by the parser

    virtual ~Expr() = default;
    Expr(const Expr&) = delete;
    Expr& operator=(const Expr&) = delete;

protected:
    explicit Expr(ExprKind k) : kind(k) {}
};

enum class LiteralKind : std::uint8_t {
    Null,
    Integer,         ///< digits; may exceed bigint, then it is a decimal
    Decimal,         ///< digits with a point
    Float,           ///< with an exponent
    Money,           ///< written with a currency sign; text without the sign and without commas
    String,          ///< 'x'
    NationalString,  ///< N'x'
    Binary,          ///< text is the hexadecimal digits without 0x; may be empty or of odd count
};

struct LiteralExpr : Expr {
    LiteralExpr() : Expr(ExprKind::Literal) {}
    LiteralKind type = LiteralKind::Null;
    std::string text;  ///< decoded: no quotes, doubled quotes halved
};

/// `name`, `t.name`, `dbo.t.name`, `db.dbo.t.name`.
struct ColumnExpr : Expr {
    ColumnExpr() : Expr(ExprKind::Column) {}
    std::vector<std::string> qualifier;  ///< without the column, outermost first; `db..t.c` has an empty part
    std::string name;
};

struct VariableExpr : Expr {
    VariableExpr() : Expr(ExprKind::Variable) {}
    std::string name;  ///< with @
};

struct GlobalVariableExpr : Expr {
    GlobalVariableExpr() : Expr(ExprKind::GlobalVariable) {}
    std::string name;  ///< with @@, as written
};

/// DEFAULT as a value: in VALUES, SET and arguments of procedures and functions.
struct DefaultExpr : Expr {
    DefaultExpr() : Expr(ExprKind::Default) {}
};

enum class UnaryOp : std::uint8_t { Plus, Minus, BitNot, Not };

struct UnaryExpr : Expr {
    UnaryExpr() : Expr(ExprKind::Unary) {}
    UnaryOp op = UnaryOp::Plus;
    ExprPtr operand;
};

enum class BinaryOp : std::uint8_t {
    Add,
    Subtract,
    Multiply,
    Divide,
    Modulo,
    BitAnd,
    BitOr,
    BitXor,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    And,
    Or,
};

/// True for = <> < <= > >= (also written != !< !>).
[[nodiscard]] inline bool isComparison(BinaryOp op) {
    return op >= BinaryOp::Equal && op <= BinaryOp::GreaterEqual;
}

struct BinaryExpr : Expr {
    BinaryExpr() : Expr(ExprKind::Binary) {}
    BinaryOp op = BinaryOp::Add;
    ExprPtr left;
    ExprPtr right;
};

struct CollateExpr : Expr {
    CollateExpr() : Expr(ExprKind::Collate) {}
    ExprPtr operand;
    std::string collation;
};

/// `expr [ASC|DESC]` of an ORDER BY.
struct OrderItem {
    ExprPtr expr;
    bool descending = false;
};

/// OVER (...). A frame is kept only as far as ROWS/RANGE bounds go.
struct WindowFrame {
    enum class Unit : std::uint8_t { Rows, Range };
    enum class Bound : std::uint8_t {
        UnboundedPreceding,
        Preceding,
        CurrentRow,
        Following,
        UnboundedFollowing
    };
    Unit unit = Unit::Rows;
    Bound start = Bound::UnboundedPreceding;
    ExprPtr startCount;  ///< for Preceding and Following
    Bound end = Bound::CurrentRow;
    ExprPtr endCount;
};

struct Window {
    std::vector<ExprPtr> partitionBy;
    std::vector<OrderItem> orderBy;
    std::optional<WindowFrame> frame;
};

/// A call of a built-in or user function, an aggregate or a window function. COALESCE, ISNULL, NULLIF, IIF,
/// LEFT, RIGHT and the like are ordinary calls here.
struct FunctionExpr : Expr {
    FunctionExpr() : Expr(ExprKind::Function) {}
    ObjectName name;
    std::vector<ExprPtr> arguments;  ///< conditions are allowed only as the first of IIF
    /// The first argument of DATEADD, DATEDIFF, DATEDIFF_BIG, DATENAME, DATEPART and DATETRUNC, in lower case
    /// as written (`dd`, `day`...); it is not among the arguments. Empty for all others.
    std::string datePart;
    bool distinct = false;               ///< COUNT(DISTINCT x)
    bool star = false;                   ///< COUNT(*): no arguments
    bool niladic = false;                ///< written without parentheses: CURRENT_TIMESTAMP, SYSTEM_USER...
    std::vector<OrderItem> withinGroup;  ///< WITHIN GROUP (ORDER BY ...)
    std::optional<Window> over;
};

struct CastExpr : Expr {
    CastExpr() : Expr(ExprKind::Cast) {}
    ExprPtr operand;
    DataType type;
    ExprPtr style;         ///< of CONVERT; null when not given
    bool tryForm = false;  ///< TRY_CAST, TRY_CONVERT: NULL instead of an error
    bool convert = false;  ///< written as CONVERT
};

struct CaseExpr : Expr {
    CaseExpr() : Expr(ExprKind::Case) {}
    struct Branch {
        ExprPtr when;  ///< a value when there is an operand, else a condition
        ExprPtr then;
    };
    ExprPtr operand;  ///< null in the searched form
    std::vector<Branch> branches;
    ExprPtr otherwise;  ///< null without ELSE
};

struct BetweenExpr : Expr {
    BetweenExpr() : Expr(ExprKind::Between) {}
    bool negated = false;
    ExprPtr operand;
    ExprPtr low;
    ExprPtr high;
};

struct LikeExpr : Expr {
    LikeExpr() : Expr(ExprKind::Like) {}
    bool negated = false;
    ExprPtr operand;
    ExprPtr pattern;
    ExprPtr escape;  ///< null without ESCAPE
};

struct InExpr : Expr {
    InExpr() : Expr(ExprKind::In) {}
    bool negated = false;
    ExprPtr operand;
    std::vector<ExprPtr> list;  ///< empty when there is a query
    QueryPtr query;
};

struct IsNullExpr : Expr {
    IsNullExpr() : Expr(ExprKind::IsNull) {}
    bool negated = false;
    ExprPtr operand;
};

struct ExistsExpr : Expr {
    ExistsExpr() : Expr(ExprKind::Exists) {}
    QueryPtr query;
};

/// `left op ALL|ANY|SOME (query)`.
struct QuantifiedExpr : Expr {
    QuantifiedExpr() : Expr(ExprKind::Quantified) {}
    BinaryOp op = BinaryOp::Equal;
    bool all = false;
    ExprPtr left;
    QueryPtr query;
};

/// A query in parentheses as a value.
struct SubqueryExpr : Expr {
    SubqueryExpr() : Expr(ExprKind::Subquery) {}
    QueryPtr query;
};

}  // namespace magdb::tsql
