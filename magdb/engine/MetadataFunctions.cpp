#include "engine/Binder.h"
#include "engine/SystemCatalogue.h"
#include "engine/SystemTypes.h"
#include "engine/SystemViewSet.h"
#include "engine/Text.h"
#include "tsql/Parser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <unordered_map>

namespace magdb {

namespace {

using Arguments = std::span<const Value>;

std::optional<std::string> textAt(Arguments arguments, std::size_t index) {
    if (index >= arguments.size()) {
        return std::nullopt;
    }
    if (const auto* value = std::get_if<std::string>(&arguments[index])) {
        return *value;
    }
    return std::nullopt;
}

/// A number, also when written as a text.
std::optional<std::int64_t> numberAt(Arguments arguments, std::size_t index) {
    if (index >= arguments.size()) {
        return std::nullopt;
    }
    if (const auto* value = std::get_if<std::int64_t>(&arguments[index])) {
        return *value;
    }
    if (const auto* written = std::get_if<std::string>(&arguments[index])) {
        std::int64_t value = 0;
        const auto [end, error] = std::from_chars(written->data(), written->data() + written->size(), value);
        if (error == std::errc{} && end == written->data() + written->size()) {
            return value;
        }
    }
    return std::nullopt;
}

bool given(Arguments arguments, std::size_t index) {
    return index < arguments.size();
}

/// The parts of a name of up to three parts, from the last; nothing when the text is no name.
struct NameParts {
    std::string database;
    std::string schema;
    std::string name;
};

std::optional<NameParts> splitName(const std::string& written) {
    try {
        const tsql::ExprPtr expr = tsql::parseExpression(written);
        if (expr->kind != tsql::ExprKind::Column) {
            return std::nullopt;
        }
        const auto& column = tsql::as<tsql::ColumnExpr>(*expr);
        const std::size_t count = column.qualifier.size();
        if (count > 2) {
            return std::nullopt;
        }
        NameParts parts;
        parts.name = column.name;
        if (count >= 1) {
            parts.schema = column.qualifier.back();
        }
        if (count == 2) {
            parts.database = column.qualifier.front();
        }
        return parts;
    } catch (const tsql::SyntaxError&) {
        return std::nullopt;
    }
}

// --------------------------------------------------------------------------------------------- objects

DatabaseRole currentRole(CatalogContext& context) {
    return databaseRole(context, context.currentDatabase()).value_or(DatabaseRole::User);
}

std::shared_ptr<const SchemaObject> objectByName(CatalogContext& context, const std::string& written) {
    const auto parts = splitName(written);
    if (!parts || !(parts->schema.empty() || sameName(parts->schema, "dbo"))) {
        return nullptr;
    }
    const auto role = parts->database.empty() ? std::optional(currentRole(context))
                                              : databaseRole(context, parts->database);
    if (!role) {
        return nullptr;
    }
    for (const auto& object : objectsOf(context, *role)) {
        if (sameName(object->name, parts->name)) {
            return object;
        }
    }
    return nullptr;
}

/// Numbers of ## and # tables are found from every database.
std::shared_ptr<const SchemaObject> objectById(CatalogContext& context, std::optional<std::int64_t> id) {
    if (!id) {
        return nullptr;
    }
    for (const DatabaseRole role : {currentRole(context), DatabaseRole::Tempdb}) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->id == *id) {
                return object;
            }
        }
    }
    return nullptr;
}

Value objectId(CatalogContext& context, Arguments arguments) {
    const auto written = textAt(arguments, 0);
    if (!written) {
        return nothing();
    }
    const std::string wanted = upper(textAt(arguments, 1).value_or(""));
    if (const auto object = objectByName(context, *written)) {
        const bool matches = wanted.empty() || wanted == typeCode(object->kind);
        return matches ? number(object->id) : nothing();
    }
    // Constraints are objects, too.
    const auto parts = splitName(*written);
    if (!parts || !parts->database.empty()) {
        return nothing();
    }
    for (const auto& object : objectsOf(context, currentRole(context))) {
        if (object->kind != ObjectKind::Table) {
            continue;
        }
        for (const ConstraintInfo& constraint : constraintsOf(static_cast<const Table&>(*object))) {
            if (sameName(constraint.name, parts->name) && (wanted.empty() || wanted == constraint.type)) {
                return number(constraint.id);
            }
        }
    }
    return nothing();
}

Value objectName(CatalogContext& context, Arguments arguments) {
    const auto object = objectById(context, numberAt(arguments, 0));
    return object ? text(object->name) : nothing();
}

Value objectSchemaName(CatalogContext& context, Arguments arguments) {
    return objectById(context, numberAt(arguments, 0)) ? text("dbo") : nothing();
}

Value objectDefinition(CatalogContext& context, Arguments arguments) {
    const auto object = objectById(context, numberAt(arguments, 0));
    if (!object || object->kind == ObjectKind::Table) {
        return nothing();
    }
    return text(static_cast<const Module&>(*object).source);
}

Value objectProperty(CatalogContext& context, Arguments arguments) {
    const auto object = objectById(context, numberAt(arguments, 0));
    const auto property = textAt(arguments, 1);
    if (!object || !property) {
        return nothing();
    }
    const std::string name = lower(*property);
    const bool isTable = object->kind == ObjectKind::Table;
    const bool isFunction = object->kind >= ObjectKind::ScalarFunction;
    const std::unordered_map<std::string, bool> answers = {
        {"istable", isTable},
        {"isusertable", isTable},
        {"isview", object->kind == ObjectKind::View},
        {"isprocedure", object->kind == ObjectKind::Procedure},
        {"isscalarfunction", object->kind == ObjectKind::ScalarFunction},
        {"isinlinefunction", object->kind == ObjectKind::InlineFunction},
        {"istablefunction", isFunction && object->kind != ObjectKind::ScalarFunction},
        {"isexecuted", !isTable},
        {"ismsshipped", false},
        {"issystemtable", false},
        {"istrigger", false},
        {"execisquotedidenton", true},
        {"execisansinullson", true},
        {"tablehasidentity", isTable && static_cast<const Table&>(*object).identityColumn() >= 0},
    };
    if (name == "ownerid" || name == "schemaid") {
        return number(kDboSchema);
    }
    const auto found = answers.find(name);
    return found == answers.end() ? nothing() : truth(found->second);
}

// --------------------------------------------------------------------------------------------- columns

Value columnLength(CatalogContext& context, Arguments arguments) {
    const auto table = textAt(arguments, 0);
    const auto column = textAt(arguments, 1);
    const auto object = table ? objectByName(context, *table) : nullptr;
    if (!object || !column) {
        return nothing();
    }
    for (const Column& entry : columnsOf(context, *object)) {
        if (sameName(entry.name, *column)) {
            return number(storedLength(entry.type));
        }
    }
    return nothing();
}

Value columnName(CatalogContext& context, Arguments arguments) {
    const auto object = objectById(context, numberAt(arguments, 0));
    const auto position = numberAt(arguments, 1);
    if (!object || !position) {
        return nothing();
    }
    const std::vector<Column> columns = columnsOf(context, *object);
    const bool inside = *position >= 1 && *position <= static_cast<std::int64_t>(columns.size());
    return inside ? text(columns[static_cast<std::size_t>(*position - 1)].name) : nothing();
}

Value propertyOfColumn(const Column& column, int position, const std::string& property) {
    if (property == "allowsnull") {
        return truth(column.nullable);
    }
    if (property == "columnid") {
        return number(position);
    }
    if (property == "isidentity") {
        return truth(column.identity);
    }
    if (property == "iscomputed") {
        return truth(!column.computedText.empty());
    }
    if (property == "precision") {
        const bool sized = isText(column.type) || column.type.id == TypeId::VarBinary;
        return number(sized                                      ? column.type.length
                      : typeFacts(column.type.id).precision == 0 ? storedPrecision(column.type)
                                                                 : typeFacts(column.type.id).precision);
    }
    if (property == "scale") {
        return isExact(column.type) || isInteger(column.type) ? number(storedScale(column.type)) : nothing();
    }
    if (property == "charmaxlen") {
        return isText(column.type) ? number(column.type.length) : nothing();
    }
    if (property == "isoutparam" || property == "isrowguidcol" || property == "isfulltextindexed") {
        return truth(false);
    }
    return nothing();
}

Value columnProperty(CatalogContext& context, Arguments arguments) {
    const auto object = objectById(context, numberAt(arguments, 0));
    const auto name = textAt(arguments, 1);
    const auto property = textAt(arguments, 2);
    if (!object || !name || !property) {
        return nothing();
    }
    int position = 0;
    for (const Column& column : columnsOf(context, *object)) {
        ++position;
        if (sameName(column.name, *name)) {
            return propertyOfColumn(column, position, lower(*property));
        }
    }
    return nothing();
}

/// Identities are numeric(38,0) here, wide enough for every type of column.
Value whole(std::int64_t value) {
    return DecimalValue{value, 0};
}

Value identityOf(CatalogContext& context, Arguments arguments,
                 const std::function<Value(const Table&)>& answer) {
    const auto written = textAt(arguments, 0);
    const auto object = written ? objectByName(context, *written) : nullptr;
    if (!object || object->kind != ObjectKind::Table) {
        return nothing();
    }
    const auto& table = static_cast<const Table&>(*object);
    return table.identityColumn() < 0 ? nothing() : answer(table);
}

Value identCurrent(CatalogContext& context, Arguments arguments) {
    return identityOf(context, arguments, [&](const Table& table) {
        return whole(context.lastIdentity(table).value_or(table.identitySeed));
    });
}

Value identSeed(CatalogContext& context, Arguments arguments) {
    return identityOf(context, arguments, [](const Table& table) { return whole(table.identitySeed); });
}

Value identIncrement(CatalogContext& context, Arguments arguments) {
    return identityOf(context, arguments, [](const Table& table) { return whole(table.identityIncrement); });
}

// ----------------------------------------------------------------------------------- databases and schemas

Value databaseIdOf(CatalogContext& context, Arguments arguments) {
    const auto name = given(arguments, 0) ? textAt(arguments, 0) : std::optional(context.currentDatabase());
    const auto role = name ? databaseRole(context, *name) : std::nullopt;
    return role ? number(databaseId(*role)) : nothing();
}

Value databaseNameOf(CatalogContext& context, Arguments arguments) {
    if (!given(arguments, 0)) {
        return text(context.currentDatabase());
    }
    const auto id = numberAt(arguments, 0);
    for (const DatabaseRole role : {DatabaseRole::User, DatabaseRole::Master, DatabaseRole::Tempdb}) {
        if (id == databaseId(role)) {
            return text(databaseName(context, role));
        }
    }
    return nothing();
}

constexpr std::array<const char*, 4> kSchemas = {"dbo", "guest", "INFORMATION_SCHEMA", "sys"};

Value schemaId(CatalogContext& /*context*/, Arguments arguments) {
    const auto name = given(arguments, 0) ? textAt(arguments, 0) : std::optional<std::string>("dbo");
    for (std::size_t i = 0; name && i < kSchemas.size(); ++i) {
        if (sameName(*name, kSchemas[i])) {
            return number(static_cast<std::int64_t>(i) + 1);
        }
    }
    return nothing();
}

Value schemaName(CatalogContext& /*context*/, Arguments arguments) {
    const auto id = given(arguments, 0) ? numberAt(arguments, 0) : std::optional<std::int64_t>(kDboSchema);
    const bool known = id && *id >= 1 && *id <= static_cast<std::int64_t>(kSchemas.size());
    return known ? text(kSchemas[static_cast<std::size_t>(*id - 1)]) : nothing();
}

Value typeIdOf(CatalogContext& /*context*/, Arguments arguments) {
    const auto name = textAt(arguments, 0);
    for (const TypeFacts& facts : allTypeFacts()) {
        if (name && sameName(*name, facts.name)) {
            return number(facts.systemType);
        }
    }
    return name && sameName(*name, "sysname") ? number(256) : nothing();
}

Value typeNameOf(CatalogContext& /*context*/, Arguments arguments) {
    const auto id = numberAt(arguments, 0);
    for (const TypeFacts& facts : allTypeFacts()) {
        if (id == facts.systemType) {
            return text(facts.name);
        }
    }
    return id == 256 ? text("sysname") : nothing();
}

/// Level of T-SQL that clients may expect: that of SQL Server 2017, in which the reference database is
/// written.
constexpr const char* kProductVersion = "14.0.1000.169";

Value serverProperty(CatalogContext& /*context*/, Arguments arguments) {
    static const std::unordered_map<std::string, std::string> kProperties = {
        {"productversion", kProductVersion},
        {"productlevel", "RTM"},
        {"productmajorversion", "14"},
        {"productminorversion", "0"},
        {"edition", "Express Edition (64-bit)"},
        {"engineedition", "4"},
        {"editionid", "-1592396055"},
        {"collation", "Polish_CI_AS"},
        {"sqlcharsetname", "cp1250"},
        {"lcid", "1045"},
        {"servername", "MAGDB"},
        {"machinename", "MAGDB"},
        {"isclustered", "0"},
        {"isfulltextinstalled", "0"},
        {"isintegratedsecurityonly", "0"},
        {"issingleuser", "0"},
        {"ishadrenabled", "0"},
        {"licensetype", "DISABLED"},
    };
    const auto name = textAt(arguments, 0);
    const auto found = name ? kProperties.find(lower(*name)) : kProperties.end();
    return found == kProperties.end() ? nothing() : text(found->second);
}

Value databaseProperty(CatalogContext& context, Arguments arguments) {
    static const std::unordered_map<std::string, std::string> kProperties = {
        {"collation", "Polish_CI_AS"}, {"status", "ONLINE"},       {"updateability", "READ_WRITE"},
        {"useraccess", "MULTI_USER"},  {"recovery", "SIMPLE"},     {"lcid", "1045"},
        {"comparisonstyle", "196609"}, {"isautoclose", "0"},       {"isautoshrink", "0"},
        {"isansinullsenabled", "0"},   {"isfulltextenabled", "0"}, {"version", "869"},
    };
    const auto database = textAt(arguments, 0);
    const auto property = textAt(arguments, 1);
    if (!database || !property || !databaseRole(context, *database)) {
        return nothing();
    }
    const auto found = kProperties.find(lower(*property));
    return found == kProperties.end() ? nothing() : text(found->second);
}

Value databasePropertyNumber(CatalogContext& context, Arguments arguments) {
    const Value value = databaseProperty(context, arguments);
    const auto parsed = numberAt(std::span(&value, 1), 0);
    return parsed ? number(*parsed) : nothing();
}

Value collationProperty(CatalogContext& /*context*/, Arguments arguments) {
    const auto collation = textAt(arguments, 0);
    const auto property = lower(textAt(arguments, 1).value_or(""));
    if (!collation || !lower(*collation).starts_with("polish")) {
        return nothing();
    }
    if (property == "codepage") {
        return number(1250);
    }
    return property == "lcid" ? number(1045) : nothing();
}

// ------------------------------------------------------------------------------------------------ rights

Value hasDatabaseAccess(CatalogContext& context, Arguments arguments) {
    const auto name = textAt(arguments, 0);
    if (!name) {
        return nothing();
    }
    return databaseRole(context, *name) ? number(1) : nothing();
}

/// Every login owns the database, and none administers the server.
Value isMember(CatalogContext& /*context*/, Arguments arguments) {
    const auto role = textAt(arguments, 0);
    if (!role) {
        return nothing();
    }
    const std::string name = lower(*role);
    return name == "db_owner" || name == "public" ? number(1) : nothing();
}

Value isServerMember(CatalogContext& /*context*/, Arguments arguments) {
    const auto role = textAt(arguments, 0);
    if (!role) {
        return nothing();
    }
    return number(lower(*role) == "public" ? 1 : 0);
}

Value always(CatalogContext& /*context*/, Arguments /*arguments*/) {
    return number(1);
}

Value never(CatalogContext& /*context*/, Arguments /*arguments*/) {
    return number(0);
}

Value noSuchCursor(CatalogContext& /*context*/, Arguments /*arguments*/) {
    return number(-3);
}

Value parseName(CatalogContext& /*context*/, Arguments arguments) {
    const auto written = textAt(arguments, 0);
    const auto piece = numberAt(arguments, 1);
    if (!written || !piece || *piece < 1 || *piece > 4) {
        return nothing();
    }
    try {
        const tsql::ExprPtr expr = tsql::parseExpression(*written);
        if (expr->kind != tsql::ExprKind::Column) {
            return nothing();
        }
        const auto& column = tsql::as<tsql::ColumnExpr>(*expr);
        if (*piece == 1) {
            return text(column.name);
        }
        const auto back = static_cast<std::size_t>(*piece) - 1;
        return back > column.qualifier.size()
                   ? nothing()
                   : optionalText(column.qualifier[column.qualifier.size() - back]);
    } catch (const tsql::SyntaxError&) {
        return nothing();
    }
}

std::vector<MetadataFunction> makeFunctions() {
    const SqlType name = textType(TypeId::NVarChar, 128);
    const SqlType whole = textType(TypeId::NVarChar, -1);
    const SqlType integer = plainType(TypeId::Int);
    const SqlType small = plainType(TypeId::SmallInt);
    const SqlType identity = decimalType(38, 0);
    return {
        {"object_id", 1, 2, integer, objectId},
        {"object_name", 1, 2, name, objectName},
        {"object_schema_name", 1, 2, name, objectSchemaName},
        {"object_definition", 1, 1, whole, objectDefinition},
        {"objectproperty", 2, 2, integer, objectProperty},
        {"objectpropertyex", 2, 2, integer, objectProperty},
        {"col_length", 2, 2, small, columnLength},
        {"col_name", 2, 2, name, columnName},
        {"columnproperty", 3, 3, integer, columnProperty},
        {"ident_current", 1, 1, identity, identCurrent},
        {"ident_seed", 1, 1, identity, identSeed},
        {"ident_incr", 1, 1, identity, identIncrement},
        {"db_id", 0, 1, small, databaseIdOf},
        {"db_name", 0, 1, name, databaseNameOf},
        {"schema_id", 0, 1, integer, schemaId},
        {"schema_name", 0, 1, name, schemaName},
        {"type_id", 1, 1, integer, typeIdOf},
        {"type_name", 1, 1, name, typeNameOf},
        {"serverproperty", 1, 1, name, serverProperty},
        {"databasepropertyex", 2, 2, name, databaseProperty},
        {"databaseproperty", 2, 2, integer, databasePropertyNumber},
        {"collationproperty", 2, 2, integer, collationProperty},
        {"fulltextserviceproperty", 1, 1, integer, never},
        {"has_dbaccess", 1, 1, integer, hasDatabaseAccess},
        {"has_perms_by_name", 3, 5, integer, always},
        {"is_member", 1, 1, integer, isMember},
        {"is_rolemember", 1, 2, integer, isMember},
        {"is_srvrolemember", 1, 2, integer, isServerMember},
        {"user_id", 0, 1, integer, always},
        {"suser_id", 0, 1, integer, always},
        {"database_principal_id", 0, 1, integer, always},
        {"cursor_status", 2, 2, small, noSuchCursor},
        {"parsename", 2, 2, name, parseName},
    };
}

}  // namespace

const MetadataFunction* findMetadataFunction(std::string_view name) {
    static const std::vector<MetadataFunction> functions = makeFunctions();
    const auto found =
        std::find_if(functions.begin(), functions.end(),
                     [&](const MetadataFunction& function) { return sameName(function.name, name); });
    return found == functions.end() ? nullptr : &*found;
}

}  // namespace magdb
