#pragma once

#include "engine/Plan.h"

#include <optional>
#include <string>
#include <vector>

namespace magdb {

/// How texts compare: by the database's rule unless COLLATE says otherwise.
enum class TextOrder : std::uint8_t { Database, CaseSensitive, Binary };

/// A translated expression: SQLite's text with the type that T-SQL gives it.
struct Bound {
    std::string sql;
    SqlType type;
    bool nullable = true;
    std::optional<Value> constant;  ///< of a literal
    int digits = 0;                 ///< of an integer literal: decimal digits it is written with
    TextOrder order = TextOrder::Database;
    bool identity = false;
    std::string name;  ///< of a column, as declared

    [[nodiscard]] bool isNullLiteral() const { return type.id == TypeId::Null; }
};

struct SourceColumn {
    std::string name;
    Bound value;
};

/// A table of a FROM clause as names see it.
struct Source {
    std::string name;      ///< alias or the table's own name
    bool aliased = false;  ///< then only the alias names it
    std::string sqlAlias;
    std::shared_ptr<const Table> table;  ///< null for views and queries
    std::vector<SourceColumn> columns;
    bool hidden = false;  ///< found only by its qualifier
};

/// The names that an expression can use, and those around it.
struct Scope {
    Scope* parent = nullptr;
    std::vector<Source> sources;
    bool grouped = false;                 ///< columns must be in a group or in an aggregate
    std::vector<std::string> groupTexts;  ///< SQL of the GROUP BY expressions
    bool groupsExpressions = false;       ///< one of them is more than a column
    int groupError = 8120;
    bool aggregatesAllowed = false;
    bool sawAggregate = false;
    int aggregateDepth = 0;
};

/// One SELECT or a set operation, before it is put together.
struct BoundQuery {
    std::vector<std::string> names;
    std::vector<Bound> items;
    std::string tail;  ///< FROM ... HAVING, with a blank in front
    bool distinct = false;
    std::string order;     ///< ORDER BY ..., with a blank in front
    std::string limit;     ///< LIMIT ..., with a blank in front
    std::string compound;  ///< a set operation: its whole text; items are then its columns
    bool singleRow = false;
};

[[nodiscard]] std::string assemble(const BoundQuery& query);
/// VALUES (...), (...) of rows that have the same types.
[[nodiscard]] std::string valuesText(const std::vector<BoundQuery>& rows);

}  // namespace magdb
