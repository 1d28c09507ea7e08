#include "tsql/Print.h"

#include "tsql/Writer.h"

// Expressions and queries; statements are in PrintStatement.cpp.

namespace magdb::tsql {

namespace {

constexpr std::string_view kBinary[] = {"+", "-",  "*", "/",  "%", "&",  "|",   "^",
                                        "=", "<>", "<", "<=", ">", ">=", "and", "or"};
constexpr std::string_view kUnary[] = {"plus", "neg", "~", "not"};
constexpr std::string_view kJoin[] = {"join",       "left-join",   "right-join", "full-join",
                                      "cross-join", "cross-apply", "outer-apply"};
constexpr std::string_view kSetOp[] = {"union", "union-all", "except", "intersect"};
constexpr std::string_view kAssign[] = {"=", "+=", "-=", "*=", "/=", "%=", "&=", "|=", "^="};

template <class Table, class Enum>
std::string_view nameOf(const Table& table, Enum value) {
    return table[static_cast<std::size_t>(value)];
}

}  // namespace

void Writer::atom(std::string_view word) {
    if (!out_.empty() && out_.back() != '(')
        out_ += ' ';
    out_ += word;
}

void Writer::open(std::string_view head) {
    atom("(");
    out_ += head;
}

void Writer::text(std::string_view content) {
    atom("\"");
    for (const char c : content) {
        if (c == '"' || c == '\\')
            out_ += '\\';
        out_ += c;
    }
    out_ += '"';
}

void Writer::field(std::string_view head, std::string_view content) {
    if (content.empty())
        return;
    open(head);
    text(content);
    close();
}

void Writer::flag(std::string_view word, bool holds) {
    if (holds)
        atom(word);
}

void Writer::optional(const ExprPtr& node) {
    if (node)
        expr(*node);
}

void Writer::child(std::string_view head, const ExprPtr& node) {
    if (!node)
        return;
    open(head);
    expr(*node);
    close();
}

void Writer::exprs(const std::vector<ExprPtr>& list) {
    for (const ExprPtr& node : list)
        expr(*node);
}

void Writer::names(std::string_view head, const std::vector<std::string>& list) {
    if (list.empty())
        return;
    open(head);
    for (const std::string& entry : list)
        atom(entry);
    close();
}

void Writer::object(const ObjectName& name) {
    std::string whole = name.database;
    if (!name.database.empty())
        whole += '.';
    whole += name.schema;
    if (!whole.empty())
        whole += '.';
    atom(whole + name.name);
}

void Writer::type(const DataType& type) {
    std::string whole = type.name;
    if (type.max)
        whole += "(max)";
    else if (type.length) {
        whole += "(" + std::to_string(*type.length);
        if (type.scale)
            whole += "," + std::to_string(*type.scale);
        whole += ")";
    }
    atom(whole);
}

// -------------------------------------------------------------------------------------------------
// expressions

void Writer::expr(const Expr& node) {
    switch (node.kind) {
        case ExprKind::Literal:
            return literal(as<LiteralExpr>(node));
        case ExprKind::Column:
            return column(as<ColumnExpr>(node));
        case ExprKind::Variable:
            return atom(as<VariableExpr>(node).name);
        case ExprKind::GlobalVariable:
            return atom(as<GlobalVariableExpr>(node).name);
        case ExprKind::Default:
            return atom("default");
        case ExprKind::Function:
            return function(as<FunctionExpr>(node));
        case ExprKind::Cast:
            return cast(as<CastExpr>(node));
        case ExprKind::Case:
            return caseOf(as<CaseExpr>(node));
        case ExprKind::Between:
            return between(as<BetweenExpr>(node));
        case ExprKind::Like:
            return like(as<LikeExpr>(node));
        case ExprKind::In:
            return in(as<InExpr>(node));
        default:
            break;
    }
    if (node.kind == ExprKind::Unary) {
        open(nameOf(kUnary, as<UnaryExpr>(node).op));
        expr(*as<UnaryExpr>(node).operand);
    } else if (node.kind == ExprKind::Binary) {
        open(nameOf(kBinary, as<BinaryExpr>(node).op));
        expr(*as<BinaryExpr>(node).left);
        expr(*as<BinaryExpr>(node).right);
    } else if (node.kind == ExprKind::Collate) {
        open("collate");
        expr(*as<CollateExpr>(node).operand);
        atom(as<CollateExpr>(node).collation);
    } else if (node.kind == ExprKind::IsNull) {
        open(as<IsNullExpr>(node).negated ? "is-not-null" : "is-null");
        expr(*as<IsNullExpr>(node).operand);
    } else if (node.kind == ExprKind::Exists) {
        open("exists");
        query(*as<ExistsExpr>(node).query);
    } else if (node.kind == ExprKind::Quantified) {
        const auto& quantified = as<QuantifiedExpr>(node);
        open(nameOf(kBinary, quantified.op));
        atom(quantified.all ? "all" : "any");
        expr(*quantified.left);
        query(*quantified.query);
    } else {
        open("subquery");
        query(*as<SubqueryExpr>(node).query);
    }
    close();
}

void Writer::literal(const LiteralExpr& node) {
    switch (node.type) {
        case LiteralKind::Null:
            return atom("null");
        case LiteralKind::Integer:
        case LiteralKind::Decimal:
        case LiteralKind::Float:
            return atom(node.text);
        case LiteralKind::Money:
            return atom("$" + node.text);
        case LiteralKind::Binary:
            return atom("0x" + node.text);
        case LiteralKind::String:
            return atom("'" + node.text + "'");
        case LiteralKind::NationalString:
            return atom("N'" + node.text + "'");
    }
}

void Writer::column(const ColumnExpr& node) {
    std::string whole;
    for (const std::string& part : node.qualifier)
        whole += part + ".";
    atom(whole + node.name);
}

void Writer::function(const FunctionExpr& node) {
    open("call");
    object(node.name);
    flag("niladic", node.niladic);
    flag("distinct", node.distinct);
    flag("*", node.star);
    if (!node.datePart.empty())
        atom(node.datePart);
    exprs(node.arguments);
    order("within", node.withinGroup);
    if (node.over)
        window(*node.over);
    close();
}

void Writer::window(const Window& window) {
    open("over");
    if (!window.partitionBy.empty()) {
        open("partition");
        exprs(window.partitionBy);
        close();
    }
    order("order", window.orderBy);
    if (window.frame)
        frame(*window.frame);
    close();
}

void Writer::frame(const WindowFrame& node) {
    open(node.unit == WindowFrame::Unit::Rows ? "rows" : "range");
    bound(node.start, node.startCount);
    bound(node.end, node.endCount);
    close();
}

void Writer::bound(WindowFrame::Bound kind, const ExprPtr& count) {
    constexpr std::string_view kBounds[] = {"unbounded-preceding", "preceding", "current-row", "following",
                                            "unbounded-following"};
    if (count)
        child(nameOf(kBounds, kind), count);
    else
        atom(nameOf(kBounds, kind));
}

void Writer::cast(const CastExpr& node) {
    open(std::string(node.tryForm ? "try-" : "") + (node.convert ? "convert" : "cast"));
    expr(*node.operand);
    type(node.type);
    optional(node.style);
    close();
}

void Writer::caseOf(const CaseExpr& node) {
    open("case");
    optional(node.operand);
    for (const CaseExpr::Branch& branch : node.branches) {
        open("when");
        expr(*branch.when);
        expr(*branch.then);
        close();
    }
    child("else", node.otherwise);
    close();
}

void Writer::between(const BetweenExpr& node) {
    open(node.negated ? "not-between" : "between");
    expr(*node.operand);
    expr(*node.low);
    expr(*node.high);
    close();
}

void Writer::like(const LikeExpr& node) {
    open(node.negated ? "not-like" : "like");
    expr(*node.operand);
    expr(*node.pattern);
    child("escape", node.escape);
    close();
}

void Writer::in(const InExpr& node) {
    open(node.negated ? "not-in" : "in");
    expr(*node.operand);
    exprs(node.list);
    if (node.query)
        query(*node.query);
    close();
}

void Writer::order(std::string_view head, const std::vector<OrderItem>& entries) {
    if (entries.empty())
        return;
    open(head);
    for (const OrderItem& entry : entries) {
        if (entry.descending)
            child("desc", entry.expr);
        else
            expr(*entry.expr);
    }
    close();
}

// -----------------------------------------------------------------------------------------------------
// queries

void Writer::query(const Query& node) {
    const bool plain = node.with.empty() && node.orderBy.empty() && !node.maxRecursion;
    if (plain)
        return body(*node.body);
    open("query");
    with(node.with);
    body(*node.body);
    order("order", node.orderBy);
    child("offset", node.offset);
    child("fetch", node.fetch);
    if (node.maxRecursion)
        atom("maxrecursion=" + std::to_string(*node.maxRecursion));
    close();
}

void Writer::with(const std::vector<CommonTable>& tables) {
    for (const CommonTable& table : tables) {
        open("with");
        atom(table.name);
        names("columns", table.columns);
        query(*table.query);
        close();
    }
}

void Writer::body(const QueryBody& node) {
    if (node.kind == QueryBodyKind::Select)
        return select(as<SelectBody>(node));
    const auto& operation = as<SetOperationBody>(node);
    open(nameOf(kSetOp, operation.op));
    body(*operation.left);
    body(*operation.right);
    close();
}

void Writer::select(const SelectBody& node) {
    open("select");
    flag("distinct", node.distinct);
    top(node.top);
    items(node.items);
    if (node.into) {
        open("into");
        object(*node.into);
        close();
    }
    from(node.from);
    child("where", node.where);
    if (!node.groupBy.empty()) {
        open("group");
        exprs(node.groupBy);
        close();
    }
    child("having", node.having);
    close();
}

void Writer::top(const std::optional<TopClause>& node) {
    if (!node)
        return;
    child(node->percent ? "top-percent" : "top", node->count);
}

void Writer::items(const std::vector<SelectItem>& list) {
    open("items");
    for (const SelectItem& entry : list)
        item(entry);
    close();
}

void Writer::item(const SelectItem& node) {
    if (node.kind == SelectItem::Kind::Star) {
        std::string whole;
        for (const std::string& part : node.starQualifier)
            whole += part + ".";
        return atom(whole + "*");
    }
    if (node.kind == SelectItem::Kind::Assignment) {
        open(nameOf(kAssign, node.op));
        atom(node.variable);
        expr(*node.expr);
        return close();
    }
    if (node.alias.empty())
        return expr(*node.expr);
    open("as");
    text(node.alias);
    expr(*node.expr);
    close();
}

void Writer::from(const std::vector<TableSourcePtr>& list) {
    if (list.empty())
        return;
    open("from");
    for (const TableSourcePtr& entry : list)
        source(*entry);
    close();
}

void Writer::source(const TableSource& node) {
    if (node.kind == TableSourceKind::Join)
        return join(as<JoinTable>(node));
    if (node.kind == TableSourceKind::Named) {
        const auto& named = as<NamedTable>(node);
        open("table");
        object(named.name);
        names("hints", named.hints);
    } else if (node.kind == TableSourceKind::Variable) {
        open("table");
        atom(as<VariableTable>(node).name);
    } else if (node.kind == TableSourceKind::Function) {
        open("table-call");
        object(as<FunctionTable>(node).name);
        exprs(as<FunctionTable>(node).arguments);
    } else if (node.kind == TableSourceKind::Derived) {
        open("derived");
        query(*as<DerivedTable>(node).query);
    } else {
        open("values");
        rows(as<ValuesTable>(node).rows);
    }
    field("as", node.alias);
    names("columns", node.columns);
    close();
}

void Writer::join(const JoinTable& node) {
    open(nameOf(kJoin, node.type));
    source(*node.left);
    source(*node.right);
    optional(node.on);
    close();
}

void Writer::rows(const std::vector<std::vector<ExprPtr>>& list) {
    for (const auto& entry : list) {
        open("row");
        exprs(entry);
        close();
    }
}

std::string print(const Expr& expr) {
    Writer writer;
    writer.expr(expr);
    return writer.take();
}

std::string print(const Query& query) {
    Writer writer;
    writer.query(query);
    return writer.take();
}

std::string print(const Statement& statement) {
    Writer writer;
    writer.statement(statement);
    return writer.take();
}

std::string print(const Batch& batch) {
    Writer writer;
    writer.statements(batch.statements);
    return writer.take();
}

}  // namespace magdb::tsql
