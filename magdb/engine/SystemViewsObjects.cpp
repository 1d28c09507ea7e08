#include "engine/Binder.h"
#include "engine/SqlError.h"
#include "engine/SystemTypes.h"
#include "engine/SystemViewSet.h"

// sys.objects and the views of its parts.

namespace magdb {

namespace {

using Rows = std::function<void(CatalogContext&, const RowTaker&)>;

void add(ViewList& list, std::string name, std::vector<Column> columns, Rows fill) {
    list.push_back({"sys", std::move(name), std::move(columns), std::move(fill)});
}

std::vector<Column> objectColumns() {
    return {sysnameColumn("name"),       intColumn("object_id"),        intColumn("principal_id", true),
            intColumn("schema_id"),      intColumn("parent_object_id"), ansiColumn("type", 2, false),
            textColumn("type_desc", 60), dateColumn("create_date"),     dateColumn("modify_date"),
            bitColumn("is_ms_shipped"),  bitColumn("is_published"),     bitColumn("is_schema_published")};
}

std::vector<Value> objectRow(const SchemaObject& object) {
    return {text(object.name),
            number(object.id),
            nothing(),
            number(kDboSchema),
            number(0),
            text(typeCode(object.kind)),
            text(typeDescription(object.kind)),
            object.created,
            object.modified,
            truth(false),
            truth(false),
            truth(false)};
}

std::vector<Value> constraintRow(const Table& table, const ConstraintInfo& constraint) {
    return {text(constraint.name),
            number(constraint.id),
            nothing(),
            number(kDboSchema),
            number(table.id),
            text(constraint.type),
            text(constraint.description),
            table.created,
            table.modified,
            truth(false),
            truth(false),
            truth(false)};
}

/// Objects of some kinds, as sys.tables and its like show them.
Rows objectsOfKinds(DatabaseRole role, std::vector<ObjectKind> kinds) {
    return [role, kinds = std::move(kinds)](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            for (const ObjectKind kind : kinds) {
                if (object->kind == kind) {
                    take(objectRow(*object));
                }
            }
        }
    };
}

Rows allObjects(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            take(objectRow(*object));
            if (object->kind != ObjectKind::Table) {
                continue;
            }
            const auto& table = static_cast<const Table&>(*object);
            for (const ConstraintInfo& constraint : constraintsOf(table)) {
                take(constraintRow(table, constraint));
            }
        }
    };
}

std::int32_t defaultId(const SchemaObject& object, int column) {
    if (object.kind == ObjectKind::Table) {
        for (const ConstraintInfo& constraint : constraintsOf(static_cast<const Table&>(object))) {
            if (constraint.column == column) {
                return constraint.id;
            }
        }
    }
    return 0;
}

std::vector<Value> columnRow(const SchemaObject& object, const Column& column, int position) {
    const TypeFacts& facts = typeFacts(column.type.id);
    return {
        number(object.id),
        text(column.name),
        number(position),
        number(facts.systemType),
        number(facts.systemType),
        number(storedLength(column.type)),
        number(storedPrecision(column.type)),
        number(storedScale(column.type)),
        isText(column.type) ? text(column.collation.empty() ? "Polish_CI_AS" : column.collation) : nothing(),
        truth(column.nullable),
        truth(true),
        truth(false),
        truth(column.identity),
        truth(!column.computedText.empty()),
        number(column.defaultText.empty() ? 0 : defaultId(object, position))};
}

Rows allColumns(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            int position = 0;
            for (const Column& column : columnsOf(context, *object)) {
                take(columnRow(*object, column, ++position));
            }
        }
    };
}

std::vector<Column> columnColumns() {
    return {intColumn("object_id"),       sysnameColumn("name"),       intColumn("column_id"),
            tinyColumn("system_type_id"), intColumn("user_type_id"),   smallColumn("max_length"),
            tinyColumn("precision"),      tinyColumn("scale"),         sysnameColumn("collation_name", true),
            bitColumn("is_nullable"),     bitColumn("is_ansi_padded"), bitColumn("is_rowguidcol"),
            bitColumn("is_identity"),     bitColumn("is_computed"),    intColumn("default_object_id")};
}

std::vector<Value> parameterRow(const SchemaObject& object, const std::string& name, int position,
                                const SqlType& type, bool output, bool readOnly) {
    const TypeFacts& facts = typeFacts(type.id);
    return {number(object.id), text(name), number(position), number(facts.systemType),
            number(facts.systemType), number(storedLength(type)), number(storedPrecision(type)),
            number(storedScale(type)), truth(output),
            // Only modules that are not T-SQL tell their defaults here.
            truth(false), truth(readOnly), truth(true)};
}

Rows allParameters(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (const auto type = returnTypeOf(*object)) {
                take(parameterRow(*object, "", 0, *type, true, false));
            }
            const auto* parameters = parametersOf(*object);
            for (std::size_t i = 0; parameters != nullptr && i < parameters->size(); ++i) {
                const tsql::Parameter& parameter = (*parameters)[i];
                const int position = static_cast<int>(i) + 1;
                take(parameterRow(*object, parameter.name, position, resolveType(parameter.type, position),
                                  parameter.output, parameter.readOnly));
            }
        }
    };
}

std::vector<Column> parameterColumns() {
    return {intColumn("object_id"),         sysnameColumn("name", true), intColumn("parameter_id"),
            tinyColumn("system_type_id"),   intColumn("user_type_id"),   smallColumn("max_length"),
            tinyColumn("precision"),        tinyColumn("scale"),         bitColumn("is_output"),
            bitColumn("has_default_value"), bitColumn("is_readonly"),    bitColumn("is_nullable")};
}

Rows allModules(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind == ObjectKind::Table) {
                continue;
            }
            const auto& module = static_cast<const Module&>(*object);
            take({number(module.id), text(module.source), truth(true), truth(module.quotedIdentifier),
                  truth(false)});
        }
    };
}

Rows identityColumns(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind != ObjectKind::Table) {
                continue;
            }
            const auto& table = static_cast<const Table&>(*object);
            if (const int index = table.identityColumn(); index >= 0) {
                take({number(table.id), text(table.columns[static_cast<std::size_t>(index)].name),
                      number(index + 1), number(table.identitySeed), number(table.identityIncrement)});
            }
        }
    };
}

Rows computedColumns(DatabaseRole role) {
    return [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            int position = 0;
            for (const Column& column : columnsOf(context, *object)) {
                ++position;
                if (!column.computedText.empty()) {
                    take(
                        {number(object->id), text(column.name), number(position), text(column.computedText)});
                }
            }
        }
    };
}

}  // namespace

void addObjectViews(ViewList& list, DatabaseRole role) {
    add(list, "objects", objectColumns(), allObjects(role));
    add(list, "all_objects", objectColumns(), allObjects(role));
    add(list, "tables", objectColumns(), objectsOfKinds(role, {ObjectKind::Table}));
    add(list, "views", objectColumns(), objectsOfKinds(role, {ObjectKind::View}));
    add(list, "procedures", objectColumns(), objectsOfKinds(role, {ObjectKind::Procedure}));
    add(list, "columns", columnColumns(), allColumns(role));
    add(list, "all_columns", columnColumns(), allColumns(role));
    add(list, "parameters", parameterColumns(), allParameters(role));
    add(list, "sql_modules",
        {intColumn("object_id"), textColumn("definition", -1), bitColumn("uses_ansi_nulls"),
         bitColumn("uses_quoted_identifier"), bitColumn("is_schema_bound")},
        allModules(role));
    add(list, "identity_columns",
        {intColumn("object_id"), sysnameColumn("name"), intColumn("column_id"), intColumn("seed_value"),
         intColumn("increment_value")},
        identityColumns(role));
    add(list, "computed_columns",
        {intColumn("object_id"), sysnameColumn("name"), intColumn("column_id"), textColumn("definition", -1)},
        computedColumns(role));
}

}  // namespace magdb
