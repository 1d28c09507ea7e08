#include "engine/SystemViews.h"

#include "engine/Binder.h"
#include "engine/SystemViewSet.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <array>
#include <unordered_map>

namespace magdb {

namespace {

/// The views of one database by "schema.name" in lower case. The old names stand under an empty schema.
using Registry = std::unordered_map<std::string, SystemView>;

Registry makeRegistry(DatabaseRole role) {
    ViewList list;
    addObjectViews(list, role);
    addConstraintViews(list, role);
    addServerViews(list, role);
    addOldViews(list, role);
    addInformationViews(list, role);
    addOdbcViews(list, role);
    Registry registry;
    for (SystemView& view : list) {
        const std::string key = nameKey(view.schema) + "." + nameKey(view.name);
        // One statement may read the same view of two databases: their rows are kept apart by this name.
        if (role != DatabaseRole::User) {
            view.schema.insert(0, role == DatabaseRole::Master ? "master." : "tempdb.");
        }
        registry.emplace(key, std::move(view));
    }
    return registry;
}

const Registry& registryOf(DatabaseRole role) {
    static const std::array<Registry, 3> registries = {makeRegistry(DatabaseRole::User),
                                                       makeRegistry(DatabaseRole::Master),
                                                       makeRegistry(DatabaseRole::Tempdb)};
    return registries[static_cast<std::size_t>(role)];
}

}  // namespace

const SystemView* findSystemView(std::string_view database, std::string_view schema, std::string_view name) {
    const DatabaseRole role = sameName(database, "master")   ? DatabaseRole::Master
                              : sameName(database, "tempdb") ? DatabaseRole::Tempdb
                                                             : DatabaseRole::User;
    const Registry& registry = registryOf(role);
    const bool old = schema.empty() || sameName(schema, "dbo");
    auto found = registry.find((old ? std::string() : nameKey(schema)) + "." + nameKey(name));
    // The old names also belong to sys.
    if (found == registry.end() && sameName(schema, "sys")) {
        found = registry.find("." + nameKey(name));
    }
    return found == registry.end() ? nullptr : &found->second;
}

// ------------------------------------------------------------------------------------------- databases

int databaseId(DatabaseRole role) {
    constexpr std::array kIds = {kUserDatabaseId, kMasterId, kTempdbId};
    return kIds[static_cast<std::size_t>(role)];
}

std::string databaseName(CatalogContext& context, DatabaseRole role) {
    switch (role) {
        case DatabaseRole::Master:
            return "master";
        case DatabaseRole::Tempdb:
            return "tempdb";
        case DatabaseRole::User:
            break;
    }
    return context.databaseName();
}

std::optional<DatabaseRole> databaseRole(CatalogContext& context, std::string_view name) {
    for (const DatabaseRole role : {DatabaseRole::User, DatabaseRole::Master, DatabaseRole::Tempdb}) {
        if (sameName(name, databaseName(context, role))) {
            return role;
        }
    }
    return std::nullopt;
}

// --------------------------------------------------------------------------------------------- objects

std::vector<std::shared_ptr<const SchemaObject>> objectsOf(CatalogContext& context, DatabaseRole role) {
    std::vector<std::shared_ptr<const SchemaObject>> list;
    if (role == DatabaseRole::Master) {
        return list;
    }
    for (const auto& [key, object] : context.schema().objects()) {
        if (key.starts_with("##") == (role == DatabaseRole::Tempdb)) {
            list.push_back(object);
        }
    }
    if (role == DatabaseRole::Tempdb) {
        for (const auto& table : context.temporaryTables()) {
            list.push_back(table);
        }
    }
    return list;
}

std::vector<Column> columnsOf(CatalogContext& context, const SchemaObject& object) {
    switch (object.kind) {
        case ObjectKind::Table:
            return static_cast<const Table&>(object).columns;
        case ObjectKind::View:
        case ObjectKind::InlineFunction:
        case ObjectKind::TableFunction:
            return context.columnsOf(static_cast<const Module&>(object));
        default:
            return {};
    }
}

const std::vector<tsql::Parameter>* parametersOf(const SchemaObject& object) {
    switch (object.kind) {
        case ObjectKind::Procedure:
            return &static_cast<const Module&>(object).procedure().parameters;
        case ObjectKind::ScalarFunction:
        case ObjectKind::InlineFunction:
        case ObjectKind::TableFunction:
            return &static_cast<const Module&>(object).function().parameters;
        default:
            return nullptr;
    }
}

std::optional<SqlType> returnTypeOf(const SchemaObject& object) {
    if (object.kind != ObjectKind::ScalarFunction) {
        return std::nullopt;
    }
    return resolveType(static_cast<const Module&>(object).function().returnType, 1);
}

const char* typeDescription(ObjectKind kind) {
    constexpr std::array kTexts = {"USER_TABLE",
                                   "VIEW",
                                   "SQL_STORED_PROCEDURE",
                                   "SQL_SCALAR_FUNCTION",
                                   "SQL_INLINE_TABLE_VALUED_FUNCTION",
                                   "SQL_TABLE_VALUED_FUNCTION"};
    return kTexts[static_cast<std::size_t>(kind)];
}

namespace {

/// The expression that a text is, or null.
tsql::ExprPtr readExpression(std::string_view text) {
    try {
        return tsql::parseExpression(text);
    } catch (const tsql::SyntaxError&) {
        return nullptr;
    }
}

}  // namespace

std::string storedExpression(std::string_view written) {
    if (written.empty()) {
        return {};
    }
    std::string_view inner = written;
    tsql::ExprPtr expr = readExpression(inner);
    while (expr && inner.starts_with('(') && inner.ends_with(')')) {
        tsql::ExprPtr within = readExpression(inner.substr(1, inner.size() - 2));
        if (!within) {
            break;  // the pairs at both ends are not one
        }
        expr = std::move(within);
        inner = inner.substr(1, inner.size() - 2);
    }
    const auto* literal =
        expr && expr->kind == tsql::ExprKind::Literal ? &tsql::as<tsql::LiteralExpr>(*expr) : nullptr;
    const bool isNumeric = literal != nullptr && literal->type >= tsql::LiteralKind::Integer &&
                           literal->type <= tsql::LiteralKind::Money;
    return isNumeric ? "((" + std::string(inner) + "))" : "(" + std::string(inner) + ")";
}

std::vector<ConstraintInfo> constraintsOf(const Table& table) {
    std::vector<ConstraintInfo> list;
    const auto add = [&](std::string name, const char* type, const char* description) -> ConstraintInfo& {
        ConstraintInfo info;
        // Objects are numbered far apart, so that constraints find room behind their table.
        info.id = table.id + static_cast<std::int32_t>(list.size()) + 1;
        info.name = std::move(name);
        info.type = type;
        info.description = description;
        return list.emplace_back(std::move(info));
    };
    for (const Key& key : table.keys) {
        if (key.kind == Key::Kind::PrimaryKey) {
            add(key.name, "PK", "PRIMARY_KEY_CONSTRAINT").key = &key;
        } else if (key.kind == Key::Kind::Unique) {
            add(key.name, "UQ", "UNIQUE_CONSTRAINT").key = &key;
        }
    }
    for (const ForeignKey& key : table.foreignKeys) {
        add(key.name, "F", "FOREIGN_KEY_CONSTRAINT").foreignKey = &key;
    }
    for (const Check& check : table.checks) {
        add(check.name, "C", "CHECK_CONSTRAINT").definition = check.text;
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (!table.columns[i].defaultText.empty()) {
            ConstraintInfo& info = add(table.columns[i].defaultName, "D", "DEFAULT_CONSTRAINT");
            info.definition = storedExpression(table.columns[i].defaultText);
            info.column = static_cast<int>(i) + 1;
        }
    }
    return list;
}

// --------------------------------------------------------------------------------------------- columns

namespace {

Column makeColumn(std::string name, const SqlType& type, bool nullable) {
    Column column;
    column.name = std::move(name);
    column.type = type;
    column.nullable = nullable;
    return column;
}

}  // namespace

Column sysnameColumn(std::string name, bool nullable) {
    return makeColumn(std::move(name), textType(TypeId::NVarChar, 128), nullable);
}

Column textColumn(std::string name, int length, bool nullable) {
    return makeColumn(std::move(name), textType(TypeId::NVarChar, length), nullable);
}

Column ansiColumn(std::string name, int length, bool nullable) {
    return makeColumn(std::move(name), textType(TypeId::VarChar, length), nullable);
}

Column intColumn(std::string name, bool nullable) {
    return makeColumn(std::move(name), plainType(TypeId::Int), nullable);
}

Column smallColumn(std::string name, bool nullable) {
    return makeColumn(std::move(name), plainType(TypeId::SmallInt), nullable);
}

Column tinyColumn(std::string name, bool nullable) {
    return makeColumn(std::move(name), plainType(TypeId::TinyInt), nullable);
}

Column bitColumn(std::string name, bool nullable) {
    return makeColumn(std::move(name), plainType(TypeId::Bit), nullable);
}

Column dateColumn(std::string name, bool nullable) {
    return makeColumn(std::move(name), plainType(TypeId::DateTime), nullable);
}

}  // namespace magdb
