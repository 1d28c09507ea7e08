#include "engine/Binder.h"
#include "engine/SystemTypes.h"
#include "engine/SystemViewSet.h"

#include <algorithm>

// What the catalogue procedures of ODBC (sp_columns, sp_sproc_columns...) show, ready in their columns. The
// procedures only choose and sort. ODBC2_TYPE stands beside DATA_TYPE for clients of version 2.

namespace magdb {

namespace {

void append(std::vector<Value>& row, std::initializer_list<Value> values) {
    row.insert(row.end(), values);
}

std::vector<Column> typeColumns() {
    return {smallColumn("DATA_TYPE"),     smallColumn("ODBC2_TYPE"), sysnameColumn("TYPE_NAME"),
            intColumn("PRECISION", true), intColumn("LENGTH", true), smallColumn("SCALE", true),
            smallColumn("RADIX", true),   smallColumn("NULLABLE")};
}

std::vector<Column> tailColumns() {
    return {ansiColumn("REMARKS", 254),           textColumn("COLUMN_DEF", 4000),
            smallColumn("SQL_DATA_TYPE"),         smallColumn("SQL_DATETIME_SUB", true),
            intColumn("CHAR_OCTET_LENGTH", true), intColumn("ORDINAL_POSITION"),
            ansiColumn("IS_NULLABLE", 254),       tinyColumn("SS_DATA_TYPE", true)};
}

void appendType(std::vector<Value>& row, const OdbcFacts& facts, bool nullable, bool identity) {
    append(row, {number(facts.type), number(facts.type2), text(facts.name + (identity ? " identity" : "")),
                 number(facts.precision), number(facts.length), optionalNumber(facts.scale),
                 optionalNumber(facts.radix), number(nullable ? 1 : 0)});
}

void appendTail(std::vector<Value>& row, const OdbcFacts& facts, bool nullable, const std::string& definition,
                int position) {
    append(row, {nothing(), optionalText(definition), number(facts.sqlType),
                 optionalNumber(facts.datetimeSub), optionalNumber(facts.octetLength), number(position),
                 text(nullable ? "YES" : "NO"), number(facts.tdsType)});
}

void addColumns(ViewList& list, DatabaseRole role) {
    std::vector<Column> columns = {sysnameColumn("TABLE_QUALIFIER", true), sysnameColumn("TABLE_OWNER", true),
                                   sysnameColumn("TABLE_NAME"), sysnameColumn("COLUMN_NAME")};
    for (const auto& part : {typeColumns(), tailColumns()}) {
        columns.insert(columns.end(), part.begin(), part.end());
    }
    list.push_back({"sys", "spt_columns", columns, [role](CatalogContext& context, const RowTaker& take) {
                        for (const auto& object : objectsOf(context, role)) {
                            int position = 0;
                            for (const Column& column : columnsOf(context, *object)) {
                                const OdbcFacts facts = odbcFacts(column.type, column.nullable);
                                std::vector<Value> row = {text(databaseName(context, role)), text("dbo"),
                                                          text(object->name), text(column.name)};
                                appendType(row, facts, column.nullable, column.identity);
                                appendTail(row, facts, column.nullable, storedExpression(column.defaultText),
                                           ++position);
                                take(std::move(row));
                            }
                        }
                    }});
}

/// Kinds of parameters as ODBC numbers them.
enum ParameterKind : std::uint8_t { kInput = 1, kOutput = 2, kResultColumn = 3, kReturnValue = 5 };

class ParameterRows {
public:
    ParameterRows(std::string database, const RowTaker& take)
        : m_database(std::move(database)), m_take(take) {}

    void object(CatalogContext& context, const SchemaObject& object) {
        const auto* parameters = parametersOf(object);
        if (parameters == nullptr) {
            return;
        }
        m_object = &object;
        if (object.kind == ObjectKind::Procedure) {
            give("@RETURN_VALUE", kReturnValue, plainType(TypeId::Int), false, "", 0);
        } else if (const auto type = returnTypeOf(object)) {
            give("@RETURN_VALUE", kReturnValue, *type, true, "", 0);
        }
        for (std::size_t i = 0; i < parameters->size(); ++i) {
            const tsql::Parameter& parameter = (*parameters)[i];
            const int position = static_cast<int>(i) + 1;
            give(parameter.name, parameter.output ? kOutput : kInput, resolveType(parameter.type, position),
                 true, "", position);
        }
        int position = static_cast<int>(parameters->size());
        for (const Column& column : columnsOf(context, object)) {
            give(column.name, kResultColumn, column.type, column.nullable, "", ++position);
        }
    }

private:
    void give(const std::string& name, ParameterKind kind, const SqlType& type, bool nullable,
              const std::string& definition, int position) {
        const OdbcFacts facts = odbcFacts(type, nullable);
        // Procedures used to come in numbered groups; the number of the only one is still part of the name.
        std::vector<Value> row = {text(m_database), text("dbo"), text(m_object->name + ";1"), text(name),
                                  number(kind)};
        appendType(row, facts, nullable, false);
        appendTail(row, facts, nullable, definition, position);
        m_take(std::move(row));
    }

    std::string m_database;
    const RowTaker& m_take;
    const SchemaObject* m_object = nullptr;
};

void addParameters(ViewList& list, DatabaseRole role) {
    std::vector<Column> columns = {
        sysnameColumn("PROCEDURE_QUALIFIER", true), sysnameColumn("PROCEDURE_OWNER", true),
        textColumn("PROCEDURE_NAME", 134, false), sysnameColumn("COLUMN_NAME"), smallColumn("COLUMN_TYPE")};
    for (const auto& part : {typeColumns(), tailColumns()}) {
        columns.insert(columns.end(), part.begin(), part.end());
    }
    list.push_back(
        {"sys", "spt_sproc_columns", columns, [role](CatalogContext& context, const RowTaker& take) {
             ParameterRows rows(databaseName(context, role), take);
             for (const auto& object : objectsOf(context, role)) {
                 rows.object(context, *object);
             }
         }});
}

/// The lines of every module, as sp_helptext shows them: with their line ends, in pieces of 255 characters.
void addHelpText(ViewList& list, DatabaseRole role) {
    const auto fill = [role](CatalogContext& context, const RowTaker& take) {
        for (const auto& object : objectsOf(context, role)) {
            if (object->kind == ObjectKind::Table) {
                continue;
            }
            const std::string& source = static_cast<const Module&>(*object).source;
            int line = 0;
            for (std::size_t at = 0; at < source.size();) {
                std::size_t end = at;
                int characters = 0;
                while (end < source.size() && characters < 255 && (end == at || source[end - 1] != '\n')) {
                    ++end;
                    while (end < source.size() &&
                           (static_cast<unsigned char>(source[end]) & 0xC0U) == 0x80U) {
                        ++end;
                    }
                    ++characters;
                }
                take({number(object->id), number(++line), text(source.substr(at, end - at))});
                at = end;
            }
        }
    };
    list.push_back(
        {"sys", "spt_helptext", {intColumn("id"), intColumn("line"), textColumn("Text", 255)}, fill});
}

std::vector<Column> datatypeColumns() {
    return {sysnameColumn("TYPE_NAME"),
            smallColumn("DATA_TYPE"),
            smallColumn("ODBC2_TYPE"),
            intColumn("PRECISION", true),
            ansiColumn("LITERAL_PREFIX", 32),
            ansiColumn("LITERAL_SUFFIX", 32),
            ansiColumn("CREATE_PARAMS", 32),
            smallColumn("NULLABLE"),
            smallColumn("CASE_SENSITIVE"),
            smallColumn("SEARCHABLE"),
            smallColumn("UNSIGNED_ATTRIBUTE", true),
            smallColumn("MONEY"),
            smallColumn("AUTO_INCREMENT", true),
            sysnameColumn("LOCAL_TYPE_NAME", true),
            smallColumn("MINIMUM_SCALE", true),
            smallColumn("MAXIMUM_SCALE", true),
            smallColumn("SQL_DATA_TYPE"),
            smallColumn("SQL_DATETIME_SUB", true),
            intColumn("NUM_PREC_RADIX", true),
            smallColumn("INTERVAL_PRECISION", true),
            smallColumn("USERTYPE", true)};
}

void datatypeRow(const TypeFacts& facts, const RowTaker& take) {
    SqlType type = plainType(facts.id);
    const bool isTextType = isText(type);
    const bool binary = facts.id == TypeId::VarBinary;
    const bool quoted = isTextType || isDate(type) || facts.id == TypeId::UniqueIdentifier;
    const bool decimal = facts.id == TypeId::Decimal;
    const bool numeric = isNumber(type) && facts.id != TypeId::Bit;
    type.length = isUnicode(type) ? 4000 : 8000;
    type.precision = 38;
    const OdbcFacts odbc = odbcFacts(type, true);
    const char* prefix = isUnicode(type)             ? "N'"
                         : quoted                    ? "'"
                         : binary                    ? "0x"
                         : facts.id == TypeId::Money ? "$"
                                                     : "";
    const char* parameters =
        isTextType ? (facts.id == TypeId::VarChar || facts.id == TypeId::NVarChar ? "max length" : "length")
        : binary   ? "max length"
        : decimal  ? "precision,scale"
                   : "";
    const bool sized = isExact(type) || isInteger(type);
    take({text(facts.name),
          number(odbc.type),
          number(odbc.type2),
          number(odbc.precision),
          optionalText(prefix),
          quoted ? text("'") : nothing(),
          optionalText(parameters),
          number(1),
          number(0),
          number(isTextType ? 3 : 2),
          numeric ? number(facts.id == TypeId::TinyInt ? 1 : 0) : nothing(),
          number(facts.id == TypeId::Money ? 1 : 0),
          numeric ? number(0) : nothing(),
          text(facts.name),
          sized ? number(decimal ? 0 : storedScale(type)) : nothing(),
          sized ? number(decimal ? 38 : storedScale(type)) : nothing(),
          number(odbc.sqlType),
          optionalNumber(odbc.datetimeSub),
          optionalNumber(odbc.radix),
          nothing(),
          number(0)});
}

}  // namespace

void addOdbcViews(ViewList& list, DatabaseRole role) {
    addColumns(list, role);
    addParameters(list, role);
    addHelpText(list, role);
    list.push_back({"sys", "spt_datatype_info", datatypeColumns(),
                    [](CatalogContext& /*context*/, const RowTaker& take) {
                        for (const TypeFacts& facts : allTypeFacts()) {
                            datatypeRow(facts, take);
                        }
                    }});
}

}  // namespace magdb
