#include "engine/Binder.h"
#include "engine/Convert.h"
#include "engine/SqlError.h"
#include "engine/SystemViews.h"
#include "engine/Text.h"

#include <algorithm>
#include <utility>

// The FROM clause: tables, views, common tables, functions, joins.

namespace magdb {

namespace {

constexpr int kMaxViewDepth = 32;

std::vector<std::string> columnNames(const BoundQuery& bound, const std::vector<std::string>& declared,
                                     const std::string& name) {
    if (!declared.empty()) {
        if (declared.size() != bound.items.size()) {
            raise(declared.size() < bound.items.size() ? 8158 : 8159, {name});
        }
        return declared;
    }
    for (std::size_t i = 0; i < bound.names.size(); ++i) {
        if (bound.names[i].empty()) {
            raise(8155, {std::to_string(i + 1), name});
        }
    }
    return bound.names;
}

void checkUnique(const std::vector<std::string>& names, const std::string& source) {
    std::vector<std::string> keys;
    for (const std::string& name : names) {
        const std::string key = nameKey(name);
        if (std::find(keys.begin(), keys.end(), key) != keys.end()) {
            raise(8156, {name, source});
        }
        keys.push_back(key);
    }
}

}  // namespace

std::string valuesText(const std::vector<BoundQuery>& rows) {
    std::string text = "VALUES ";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        text += i == 0 ? "(" : ",(";
        for (std::size_t k = 0; k < rows[i].items.size(); ++k) {
            text += (k == 0 ? "" : ",") + rows[i].items[k].sql;
        }
        text += ")";
    }
    return text;
}

std::shared_ptr<const SchemaObject> Binder::object(const tsql::ObjectName& name) {
    std::shared_ptr<const SchemaObject> found;
    if (name.name.starts_with("#")) {
        found = m_context.temporaryTable(name.name);
        if (!found && name.name.starts_with("##")) {
            found = m_context.schema().find(name.name);
        }
    } else {
        const bool ownDatabase = name.database.empty()
                                     ? sameName(m_context.currentDatabase(), m_context.databaseName())
                                     : sameName(name.database, m_context.databaseName());
        const bool ownSchema = name.schema.empty() || sameName(name.schema, "dbo");
        found = ownDatabase && ownSchema ? m_context.schema().find(name.name) : nullptr;
    }
    m_dependencies.push_back({name.name, found.get(), found});
    return found;
}

void Binder::addSource(Source source) {
    if (m_scope == nullptr) {
        throw std::logic_error("a source without a scope");
    }
    for (const Source& other : m_scope->sources) {
        if (!source.hidden && !other.hidden && sameName(other.name, source.name)) {
            raise(1013, {other.name, source.name});
        }
    }
    m_scope->sources.push_back(std::move(source));
}

std::string Binder::from(const std::vector<tsql::TableSourcePtr>& sources) {
    std::string text;
    for (const tsql::TableSourcePtr& node : sources) {
        // A comma is a cross join; SQLite's reordering of them changes no result.
        text += (text.empty() ? " FROM " : " CROSS JOIN ") + source(*node, false);
    }
    return text;
}

std::string Binder::source(const tsql::TableSource& node, bool optional) {
    switch (node.kind) {
        case tsql::TableSourceKind::Named:
            return named(tsql::as<tsql::NamedTable>(node), optional);
        case tsql::TableSourceKind::Variable: {
            const auto& table = tsql::as<tsql::VariableTable>(node);
            const Variable* variable = m_context.variable(table.name);
            if (variable == nullptr || !variable->table) {
                raise(1087, {table.name});
            }
            return tableSource(variable->table, table.alias.empty() ? table.name : table.alias,
                               !table.alias.empty(), optional);
        }
        case tsql::TableSourceKind::Function:
            return functionTable(tsql::as<tsql::FunctionTable>(node), optional);
        case tsql::TableSourceKind::Derived: {
            const auto& derived = tsql::as<tsql::DerivedTable>(node);
            // A derived table does not see its neighbours.
            Scope* const outer = std::exchange(m_scope, m_scope->parent);
            std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
            const BoundQuery bound = query(*derived.query);
            m_captured = captured;
            m_scope = outer;
            return querySource(bound, derived.alias, true, derived.columns, optional);
        }
        case tsql::TableSourceKind::Values:
            return valuesTable(tsql::as<tsql::ValuesTable>(node), optional);
        case tsql::TableSourceKind::Join:
            return joined(tsql::as<tsql::JoinTable>(node), optional);
    }
    return {};
}

std::string Binder::joined(const tsql::JoinTable& node, bool optional) {
    std::string word;
    bool leftOptional = optional;
    bool rightOptional = optional;
    switch (node.type) {
        case tsql::JoinType::Inner:
            word = " JOIN ";
            break;
        case tsql::JoinType::Left:
            word = " LEFT JOIN ";
            rightOptional = true;
            break;
        case tsql::JoinType::Right:
            word = " RIGHT JOIN ";
            leftOptional = true;
            break;
        case tsql::JoinType::Full:
            word = " FULL JOIN ";
            leftOptional = rightOptional = true;
            break;
        case tsql::JoinType::Cross:
        case tsql::JoinType::CrossApply:
            word = " CROSS JOIN ";
            break;
        case tsql::JoinType::OuterApply:
            word = " LEFT JOIN ";
            rightOptional = true;
            break;
    }
    std::string text = source(*node.left, leftOptional) + word;
    const bool nested = node.right->kind == tsql::TableSourceKind::Join;
    const bool apply = node.type == tsql::JoinType::CrossApply || node.type == tsql::JoinType::OuterApply;
    std::string right;
    try {
        right = source(*node.right, rightOptional);
    } catch (const SqlError& error) {
        // SQLite has no joins whose right side is computed for each row of the left one.
        if (apply && (error.number() == 207 || error.number() == 4104)) {
            refuse("APPLY of a query that uses columns of the table to its left");
        }
        throw;
    }
    text += nested ? "(" + right + ")" : right;
    if (node.on) {
        std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
        text += " ON " + where(*node.on);
        m_captured = captured;
    } else if (node.type == tsql::JoinType::OuterApply) {
        text += " ON 1";
    }
    return text;
}

std::string Binder::tableSource(const std::shared_ptr<const Table>& table, const std::string& name,
                                bool aliased, bool optional) {
    Source entry;
    entry.name = name;
    entry.aliased = aliased;
    entry.sqlAlias = newAlias();
    entry.table = table;
    for (const Column& column : table->columns) {
        SourceColumn entryColumn;
        entryColumn.name = column.name;
        entryColumn.value.sql = entry.sqlAlias + "." + quoted(column.name);
        entryColumn.value.type = column.type;
        entryColumn.value.nullable = column.nullable || optional;
        entryColumn.value.identity = column.identity;
        entryColumn.value.order =
            column.collation.empty() ? TextOrder::Database : textOrder(column.collation);
        entry.columns.push_back(std::move(entryColumn));
    }
    addComputed(entry);
    std::string text = table->physical + " AS " + entry.sqlAlias;
    addSource(std::move(entry));
    return text;
}

std::string Binder::querySource(const BoundQuery& bound, const std::string& name, bool aliased,
                                const std::vector<std::string>& columns, bool optional) {
    const std::vector<std::string> names = columnNames(bound, columns, name);
    checkUnique(names, name);
    Source entry;
    entry.name = name;
    entry.aliased = aliased;
    entry.sqlAlias = newAlias();
    for (std::size_t i = 0; i < names.size(); ++i) {
        SourceColumn column;
        column.name = names[i];
        column.value = bound.items[i];
        column.value.constant.reset();
        column.value.digits = 0;
        column.value.sql = entry.sqlAlias + ".c" + std::to_string(i + 1);
        column.value.nullable = bound.items[i].nullable || optional;
        if (column.value.isNullLiteral()) {
            column.value.type = plainType(TypeId::Int);
        }
        entry.columns.push_back(std::move(column));
    }
    std::string text = "(" + assemble(bound) + ") AS " + entry.sqlAlias;
    addSource(std::move(entry));
    return text;
}

BoundQuery Binder::view(const Module& module) {
    if (++m_viewDepth > kMaxViewDepth) {
        raise(217);
    }
    const tsql::CreateViewStatement& definition = module.view();
    // A view sees neither the names around it nor variables.
    Scope* const outer = std::exchange(m_scope, nullptr);
    std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
    std::vector<CommonEntry> commons = std::exchange(m_commons, {});
    const std::size_t visible = std::exchange(m_commonsVisible, 0);
    const bool hidden = std::exchange(m_hideVariables, true);
    const auto* arguments = std::exchange(m_arguments, nullptr);
    BoundQuery bound = query(*definition.query);
    m_arguments = arguments;
    m_hideVariables = hidden;
    m_commons = std::move(commons);
    m_commonsVisible = visible;
    m_captured = captured;
    m_scope = outer;
    --m_viewDepth;
    bound.names = columnNames(bound, definition.columns, module.name);
    return bound;
}

std::vector<SourceColumn> Binder::viewColumns(const Module& module) {
    BoundQuery bound;
    if (module.kind == ObjectKind::View) {
        bound = view(module);
    } else {
        std::unordered_map<std::string, Bound> arguments;
        for (const tsql::Parameter& parameter : module.function().parameters) {
            Bound value;
            value.sql = "NULL";
            value.type = resolveType(parameter.type, 1);
            arguments.emplace(nameKey(parameter.name), value);
        }
        m_arguments = &arguments;
        bound = query(*module.function().query);
        m_arguments = nullptr;
    }
    std::vector<SourceColumn> columns;
    for (std::size_t i = 0; i < bound.items.size(); ++i) {
        columns.push_back({bound.names[i], bound.items[i]});
        if (columns.back().value.isNullLiteral()) {
            columns.back().value.type = plainType(TypeId::Int);
        }
    }
    return columns;
}

std::string Binder::named(const tsql::NamedTable& node, bool optional) {
    const std::string name = node.alias.empty() ? node.name.name : node.alias;
    const bool aliased = !node.alias.empty();
    if (node.name.schema.empty() && node.name.database.empty()) {
        const std::string key = nameKey(node.name.name);
        for (std::size_t i = m_commonsVisible; i-- > 0;) {
            if (nameKey(m_commons[i].table->name) != key) {
                continue;
            }
            if (!m_commons[i].recursiveName.empty()) {
                m_commons[i].used = true;
                Source entry;
                entry.name = name;
                entry.aliased = aliased;
                entry.sqlAlias = newAlias();
                entry.columns = m_commons[i].anchor;
                for (std::size_t k = 0; k < entry.columns.size(); ++k) {
                    entry.columns[k].value.sql = entry.sqlAlias + ".c" + std::to_string(k + 1);
                }
                std::string text = m_commons[i].recursiveName + " AS " + entry.sqlAlias;
                addSource(std::move(entry));
                return text;
            }
            const BoundQuery bound = commonTable(i);
            return querySource(bound, name, aliased, bound.names, optional);
        }
    }
    const std::shared_ptr<const SchemaObject> found = object(node.name);
    if (const auto table = std::dynamic_pointer_cast<const Table>(found)) {
        return tableSource(table, name, aliased, optional);
    }
    if (found && found->kind == ObjectKind::View) {
        const BoundQuery bound = view(dynamic_cast<const Module&>(*found));
        return querySource(bound, name, aliased, bound.names, optional);
    }
    const SystemView* system =
        found ? nullptr
              : findSystemView(node.name.database.empty() ? m_context.currentDatabase() : node.name.database,
                               node.name.schema, node.name.name);
    if (system == nullptr) {
        raise(208, {dotted(node.name)});
    }
    Prefill prefill;
    prefill.view = system;
    prefill.physical = m_context.prefillTable("view " + system->schema + "." + system->name);
    Table table;
    table.physical = prefill.physical;
    table.columns = system->columns;
    const bool known = std::any_of(m_prefills.begin(), m_prefills.end(),
                                   [&](const Prefill& other) { return other.physical == prefill.physical; });
    if (!known) {
        m_prefills.push_back(std::move(prefill));
    }
    return tableSource(std::make_shared<Table>(table), name, aliased, optional);
}

// ------------------------------------------------------------------------------------- common tables

BoundQuery Binder::commonTable(std::size_t index) {
    // Bound anew at each use, with only the tables before it in sight (and itself, when it recurs).
    const tsql::CommonTable& table = *m_commons[index].table;
    const std::optional<int> limit = m_commons[index].maxRecursion;
    const std::size_t visible = std::exchange(m_commonsVisible, index);
    Scope* const outer = std::exchange(m_scope, nullptr);
    std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
    BoundQuery bound;
    const tsql::QueryBody& body = *table.query->body;
    if (body.kind == tsql::QueryBodyKind::SetOperation &&
        tsql::as<tsql::SetOperationBody>(body).op == tsql::SetOp::UnionAll) {
        m_commonsVisible = index + 1;
        bound = recursiveTable(table, limit);
    } else {
        bound = query(*table.query);
    }
    m_captured = captured;
    m_scope = outer;
    m_commonsVisible = visible;
    bound.names = columnNames(bound, table.columns, table.name);
    return bound;
}

BoundQuery Binder::recursiveTable(const tsql::CommonTable& table, std::optional<int> limit) {
    const std::size_t index = m_commonsVisible - 1;
    const auto& set = tsql::as<tsql::SetOperationBody>(*table.query->body);
    const std::size_t parameters = m_parameters.size();
    m_commonsVisible = index;
    BoundQuery anchor = body(*set.left, nullptr);
    const std::vector<std::string> names = columnNames(anchor, table.columns, table.name);
    CommonEntry& entry = m_commons[index];
    entry.anchor.clear();
    for (std::size_t i = 0; i < names.size(); ++i) {
        SourceColumn column;
        column.name = names[i];
        column.value = anchor.items[i];
        column.value.constant.reset();
        column.value.digits = 0;
        column.value.nullable = true;
        entry.anchor.push_back(std::move(column));
    }
    entry.recursiveName = "r" + std::to_string(++m_aliases);
    entry.used = false;
    m_commonsVisible = index + 1;
    BoundQuery step = body(*set.right, nullptr);
    const std::string name = std::exchange(m_commons[index].recursiveName, {});
    if (!m_commons[index].used) {
        m_parameters.resize(parameters);
        m_commonsVisible = index;
        return query(*table.query);
    }
    if (!step.compound.empty() || step.distinct || step.singleRow) {
        refuse("a recursive common table whose step is not one plain SELECT");
    }
    // A column of levels stops a runaway recursion with the server's error. The step's own name for the
    // recursive table is the source whose text is its SQLite name.
    const std::string needle = name + " AS ";
    const std::size_t at = step.tail.find(needle);
    std::size_t end = at + needle.size();
    while (end < step.tail.size() && (std::isalnum(static_cast<unsigned char>(step.tail[end])) != 0)) {
        ++end;
    }
    const std::string alias = step.tail.substr(at + needle.size(), end - at - needle.size());
    std::string columns;
    std::string anchorItems;
    std::string stepItems;
    BoundQuery out;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i >= step.items.size()) {
            raise(205);
        }
        const std::string column = "c" + std::to_string(i + 1);
        columns += column + ",";
        stepItems += to(step.items[i], anchor.items[i].type).sql + ",";
        Bound item = m_commons[index].anchor[i].value;
        item.sql = column;
        out.items.push_back(std::move(item));
    }
    for (std::size_t i = 0; i < anchor.items.size(); ++i) {
        anchorItems += "c" + std::to_string(i + 1) + ",";
    }
    const std::string limitText = std::to_string(limit.value_or(100));
    out.names = names;
    out.tail = " FROM (WITH RECURSIVE " + name + "(" + columns + "lv) AS (SELECT " + anchorItems +
               "0 FROM (" + assemble(anchor) + ") UNION ALL SELECT " + stepItems + "t_level(" + alias +
               ".lv + 1," + limitText + ")" + step.tail + ") SELECT * FROM " + name + ")";
    return out;
}

// ----------------------------------------------------------------------------------------- functions, VALUES

std::string Binder::functionTable(const tsql::FunctionTable& node, bool optional) {
    const std::shared_ptr<const SchemaObject> found = object(node.name);
    if (!found) {
        raise(208, {dotted(node.name)});
    }
    const std::string name = node.alias.empty() ? node.name.name : node.alias;
    if (found->kind != ObjectKind::InlineFunction && found->kind != ObjectKind::TableFunction) {
        raise(215, {dotted(node.name)});
    }
    const auto module = std::dynamic_pointer_cast<const Module>(found);
    const tsql::CreateFunctionStatement& definition = module->function();
    if (node.arguments.size() != definition.parameters.size()) {
        raise(node.arguments.size() < definition.parameters.size() ? 313 : 8144, {dotted(node.name)});
    }
    // Arguments do not see the other tables of the FROM clause.
    Scope argumentScope;
    argumentScope.parent = m_scope->parent;
    Scope* const outer = std::exchange(m_scope, &argumentScope);
    BoundQuery arguments;
    std::unordered_map<std::string, Bound> byName;
    for (std::size_t i = 0; i < node.arguments.size(); ++i) {
        const tsql::Parameter& parameter = definition.parameters[i];
        const bool byDefault = node.arguments[i]->kind == tsql::ExprKind::Default;
        if (byDefault && !parameter.defaultValue) {
            raise(201, {node.name.name, parameter.name});
        }
        Bound value = to(expr(byDefault ? *parameter.defaultValue : *node.arguments[i]),
                         resolveType(parameter.type, static_cast<int>(i) + 1));
        value.sql = "(" + value.sql + ")";
        byName.emplace(nameKey(parameter.name), value);
        arguments.items.push_back(std::move(value));
        arguments.names.push_back(parameter.name);
    }
    if (module->kind == ObjectKind::InlineFunction) {
        if (++m_viewDepth > kMaxViewDepth) {
            raise(217);
        }
        m_scope = nullptr;
        std::vector<std::string>* const captured = std::exchange(m_captured, nullptr);
        std::vector<CommonEntry> commons = std::exchange(m_commons, {});
        const std::size_t visible = std::exchange(m_commonsVisible, 0);
        const auto* before = std::exchange(m_arguments, &byName);
        const BoundQuery bound = query(*definition.query);
        m_arguments = before;
        m_commons = std::move(commons);
        m_commonsVisible = visible;
        m_captured = captured;
        m_scope = outer;
        --m_viewDepth;
        return querySource(bound, name, !node.alias.empty(), node.columns, optional);
    }
    m_scope = outer;
    if (argumentScope.parent != nullptr) {
        for (const Scope* around = argumentScope.parent; around != nullptr; around = around->parent) {
            for (const Source& other : around->sources) {
                for (const Bound& argument : arguments.items) {
                    if (argument.sql.find(other.sqlAlias + ".") != std::string::npos) {
                        refuse("a table-valued function whose arguments are columns");
                    }
                }
            }
        }
    }
    Prefill prefill;
    prefill.function = module;
    prefill.physical =
        m_context.prefillTable("call " + module->name + " " + std::to_string(m_prefills.size()));
    auto plan = std::make_shared<Plan>();
    plan->sql = arguments.items.empty() ? "SELECT 1" : assemble(arguments);
    plan->parameters = m_parameters;
    for (const Bound& item : arguments.items) {
        ResultColumn column;
        column.type = item.type;
        plan->columns.push_back(column);
    }
    prefill.arguments = std::move(plan);
    auto table = std::make_shared<Table>();
    table->physical = prefill.physical;
    int position = 0;
    for (const tsql::ColumnDefinition& column : definition.table.columns) {
        Column entry;
        entry.name = column.name;
        entry.type = resolveType(column.type, ++position);
        table->columns.push_back(std::move(entry));
    }
    m_prefills.push_back(std::move(prefill));
    return tableSource(table, name, !node.alias.empty(), optional);
}

std::string Binder::valuesTable(const tsql::ValuesTable& node, bool optional) {
    Scope* const outer = std::exchange(m_scope, m_scope->parent);
    std::vector<BoundQuery> rows;
    Scope scope;
    scope.parent = m_scope;
    m_scope = &scope;
    for (const std::vector<tsql::ExprPtr>& row : node.rows) {
        BoundQuery bound;
        for (const tsql::ExprPtr& value : row) {
            bound.items.push_back(expr(*value));
            bound.names.emplace_back();
        }
        rows.push_back(std::move(bound));
    }
    m_scope = outer;
    unify(rows);
    BoundQuery out;
    out.names = node.columns;
    out.tail = " FROM (" + valuesText(rows) + ")";
    for (const Bound& item : rows.front().items) {
        out.items.push_back(item);
        out.items.back().sql = "column" + std::to_string(out.items.size());
        out.items.back().nullable = true;
        out.items.back().constant.reset();
        out.items.back().digits = 0;
    }
    return querySource(out, node.alias, true, node.columns, optional);
}

}  // namespace magdb
