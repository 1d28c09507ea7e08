#include "engine/Binder.h"
#include "engine/SystemTypes.h"
#include "engine/SystemViewSet.h"

// INFORMATION_SCHEMA, as the standard of SQL names these things.

namespace magdb {

namespace {

void add(ViewList& list, std::string name, std::vector<Column> columns,
         std::function<void(CatalogContext&, const RowTaker&)> fill) {
    list.push_back({"INFORMATION_SCHEMA", std::move(name), std::move(columns), std::move(fill)});
}

/// The facets of a type in the order of the standard's columns: character lengths, precision, radix, scale,
/// precision of dates.
std::vector<Value> typeValues(const SqlType& type) {
    const bool text = isText(type);
    const bool sized = text || type.id == TypeId::VarBinary;
    const bool approximate = isApproximate(type);
    const bool number = isNumber(type) && type.id != TypeId::Bit;
    const auto when = [](bool holds, std::int64_t value) { return holds ? magdb::number(value) : nothing(); };
    return {magdb::text(baseName(type.id)),
            when(sized, type.length),
            when(sized, storedLength(type)),
            when(number, storedPrecision(type)),
            when(number, approximate ? 2 : 10),
            when(number && !approximate, storedScale(type)),
            when(isDate(type), type.id == TypeId::DateTime ? 3 : 0),
            text ? magdb::text(isUnicode(type) ? "UNICODE" : "cp1250") : nothing(),
            text ? magdb::text("Polish_CI_AS") : nothing()};
}

std::vector<Column> typeColumns() {
    return {textColumn("DATA_TYPE", 128),
            intColumn("CHARACTER_MAXIMUM_LENGTH", true),
            intColumn("CHARACTER_OCTET_LENGTH", true),
            tinyColumn("NUMERIC_PRECISION", true),
            smallColumn("NUMERIC_PRECISION_RADIX", true),
            intColumn("NUMERIC_SCALE", true),
            smallColumn("DATETIME_PRECISION", true),
            sysnameColumn("CHARACTER_SET_NAME", true),
            sysnameColumn("COLLATION_NAME", true)};
}

template <class T>
void append(std::vector<T>& target, std::vector<T> more) {
    for (T& value : more) {
        target.push_back(std::move(value));
    }
}

/// catalog, schema and name of an object under a prefix: TABLE_CATALOG, TABLE_SCHEMA, TABLE_NAME.
std::vector<Column> nameColumns(const std::string& prefix) {
    return {textColumn(prefix + "_CATALOG", 128), sysnameColumn(prefix + "_SCHEMA", true),
            sysnameColumn(prefix + "_NAME")};
}

std::vector<Value> nameValues(const std::string& catalog, const std::string& name) {
    return {text(catalog), text("dbo"), text(name)};
}

void addTables(ViewList& list, DatabaseRole role) {
    std::vector<Column> columns = nameColumns("TABLE");
    columns.push_back(ansiColumn("TABLE_TYPE", 10));
    add(list, "TABLES", columns, [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind == ObjectKind::Table || object->kind == ObjectKind::View) {
                auto row = nameValues(databaseName(context, role), object->name);
                row.push_back(text(object->kind == ObjectKind::View ? "VIEW" : "BASE TABLE"));
                take(std::move(row));
            }
        }
    });
    columns = nameColumns("TABLE");
    append(columns, {textColumn("VIEW_DEFINITION", 4000), ansiColumn("CHECK_OPTION", 7),
                     ansiColumn("IS_UPDATABLE", 2)});
    add(list, "VIEWS", columns, [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind == ObjectKind::View) {
                auto row = nameValues(databaseName(context, role), object->name);
                append(row, {text(static_cast<const Module&>(*object).source), text("NONE"), text("NO")});
                take(std::move(row));
            }
        }
    });
}

void addColumns(ViewList& list, DatabaseRole role) {
    std::vector<Column> columns = nameColumns("TABLE");
    append(columns, {sysnameColumn("COLUMN_NAME", true), intColumn("ORDINAL_POSITION"),
                     textColumn("COLUMN_DEFAULT", 4000), ansiColumn("IS_NULLABLE", 3)});
    append(columns, typeColumns());
    add(list, "COLUMNS", columns, [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind != ObjectKind::Table && object->kind != ObjectKind::View) {
                continue;
            }
            int position = 0;
            for (const Column& column : columnsOf(context, *object)) {
                auto row = nameValues(databaseName(context, role), object->name);
                append(row, {text(column.name), number(++position),
                             optionalText(storedExpression(column.defaultText)),
                             text(column.nullable ? "YES" : "NO")});
                append(row, typeValues(column.type));
                take(std::move(row));
            }
        }
    });
}

void addRoutines(ViewList& list, DatabaseRole role) {
    std::vector<Column> columns = nameColumns("SPECIFIC");
    append(columns, nameColumns("ROUTINE"));
    append(columns,
           {textColumn("ROUTINE_TYPE", 20), textColumn("DATA_TYPE", 128),
            textColumn("ROUTINE_DEFINITION", 4000), dateColumn("CREATED"), dateColumn("LAST_ALTERED")});
    add(list, "ROUTINES", columns, [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind == ObjectKind::Table || object->kind == ObjectKind::View) {
                continue;
            }
            auto row = nameValues(databaseName(context, role), object->name);
            append(row, nameValues(databaseName(context, role), object->name));
            const bool procedure = object->kind == ObjectKind::Procedure;
            const auto type = returnTypeOf(*object);
            append(row,
                   {text(procedure ? "PROCEDURE" : "FUNCTION"),
                    procedure ? nothing()
                    : type    ? text(baseName(type->id))
                              : text("TABLE"),
                    text(static_cast<const Module&>(*object).source), object->created, object->modified});
            take(std::move(row));
        }
    });
}

void addParameters(ViewList& list, DatabaseRole role) {
    std::vector<Column> columns = nameColumns("SPECIFIC");
    append(columns, {intColumn("ORDINAL_POSITION"), textColumn("PARAMETER_MODE", 10),
                     textColumn("IS_RESULT", 10), sysnameColumn("PARAMETER_NAME", true)});
    append(columns, typeColumns());
    add(list, "PARAMETERS", columns, [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            const auto give = [&](int position, const char* mode, bool result, const std::string& name,
                                  const SqlType& type) {
                auto row = nameValues(databaseName(context, role), object->name);
                append(row, {number(position), text(mode), text(result ? "YES" : "NO"), text(name)});
                append(row, typeValues(type));
                take(std::move(row));
            };
            if (const auto type = returnTypeOf(*object)) {
                give(0, "OUT", true, "", *type);
            }
            const auto* parameters = parametersOf(*object);
            for (std::size_t i = 0; parameters != nullptr && i < parameters->size(); ++i) {
                const int position = static_cast<int>(i) + 1;
                const tsql::Parameter& parameter = (*parameters)[i];
                give(position, parameter.output ? "INOUT" : "IN", false, parameter.name,
                     resolveType(parameter.type, position));
            }
        }
    });
}

void addConstraints(ViewList& list, DatabaseRole role) {
    std::vector<Column> columns = nameColumns("CONSTRAINT");
    append(columns, nameColumns("TABLE"));
    columns.push_back(ansiColumn("CONSTRAINT_TYPE", 11));
    std::vector<Column> usage = nameColumns("CONSTRAINT");
    append(usage, nameColumns("TABLE"));
    append(usage, {sysnameColumn("COLUMN_NAME", true), intColumn("ORDINAL_POSITION")});
    const auto eachConstraint = [role](CatalogContext& context, const auto& give) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind != ObjectKind::Table) {
                continue;
            }
            const auto& table = static_cast<const Table&>(*object);
            for (const ConstraintInfo& constraint : constraintsOf(table)) {
                auto row = nameValues(databaseName(context, role), constraint.name);
                append(row, nameValues(databaseName(context, role), table.name));
                give(table, constraint, row);
            }
        }
    };
    add(list, "TABLE_CONSTRAINTS", columns, [eachConstraint](CatalogContext& context, const RowTaker& take) {
        eachConstraint(context, [&](const Table&, const ConstraintInfo& constraint, std::vector<Value> row) {
            const std::string_view type = constraint.type;
            if (type != "D") {
                row.push_back(text(type == "PK"   ? "PRIMARY KEY"
                                   : type == "UQ" ? "UNIQUE"
                                   : type == "F"  ? "FOREIGN KEY"
                                                  : "CHECK"));
                take(std::move(row));
            }
        });
    });
    add(list, "KEY_COLUMN_USAGE", usage, [eachConstraint](CatalogContext& context, const RowTaker& take) {
        eachConstraint(context, [&](const Table& table, const ConstraintInfo& constraint,
                                    const std::vector<Value>& row) {
            const std::vector<int>* keys = constraint.key != nullptr ? &constraint.key->columns
                                           : constraint.foreignKey != nullptr
                                               ? &constraint.foreignKey->columns
                                               : nullptr;
            for (std::size_t i = 0; keys != nullptr && i < keys->size(); ++i) {
                auto whole = row;
                append(whole, {text(table.columns.at(static_cast<std::size_t>((*keys)[i])).name),
                               number(static_cast<std::int64_t>(i) + 1)});
                take(std::move(whole));
            }
        });
    });
}

}  // namespace

void addInformationViews(ViewList& list, DatabaseRole role) {
    addTables(list, role);
    addColumns(list, role);
    addRoutines(list, role);
    addParameters(list, role);
    addConstraints(list, role);
}

}  // namespace magdb
