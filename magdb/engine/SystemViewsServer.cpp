#include "engine/SystemTypes.h"
#include "engine/SystemViewSet.h"

#include <array>

// Databases, schemas, principals and types, and the old names of what sys holds.

namespace magdb {

namespace {

constexpr std::array kAllRoles = {DatabaseRole::Master, DatabaseRole::Tempdb, DatabaseRole::User};

/// No date of a database is kept; this one stands for "long ago", as the server shows it for master.
DateTimeValue longAgo() {
    return {37717, 0};  // 2003-04-08
}

void databases(CatalogContext& context, const RowTaker& take) {
    for (const DatabaseRole role : kAllRoles) {
        take({text(databaseName(context, role)), number(databaseId(role)), longAgo(), number(140),
              text("Polish_CI_AS"), number(0), text("ONLINE"), truth(false)});
    }
}

void oldDatabases(CatalogContext& context, const RowTaker& take) {
    for (const DatabaseRole role : kAllRoles) {
        take({text(databaseName(context, role)), number(databaseId(role)), number(0), number(0), number(0),
              longAgo(), number(140)});
    }
}

void schemas(CatalogContext& /*context*/, const RowTaker& take) {
    constexpr std::array<const char*, 4> kSchemas = {"dbo", "guest", "INFORMATION_SCHEMA", "sys"};
    for (std::size_t i = 0; i < kSchemas.size(); ++i) {
        const auto id = static_cast<std::int64_t>(i) + 1;
        take({text(kSchemas[i]), number(id), number(id)});
    }
}

/// One user for all: every login works as the owner of the database.
void principals(CatalogContext& /*context*/, const RowTaker& take) {
    take({text("public"), number(0), text("R"), text("DATABASE_ROLE"), nothing()});
    take({text("dbo"), number(1), text("S"), text("SQL_USER"), text("dbo")});
    take({text("db_owner"), number(16384), text("R"), text("DATABASE_ROLE"), nothing()});
}

void types(CatalogContext& /*context*/, const RowTaker& take) {
    for (const TypeFacts& facts : allTypeFacts()) {
        const SqlType type = plainType(facts.id);
        const bool sized = isText(type) || facts.id == TypeId::VarBinary;
        const bool decimal = facts.id == TypeId::Decimal;
        take({text(facts.name), number(facts.systemType), number(facts.systemType), number(4),
              number(sized     ? 8000
                     : decimal ? 17
                               : storedLength(type)),
              number(decimal ? 38 : storedPrecision(type)), number(decimal ? 38 : storedScale(type)),
              isText(type) ? text("Polish_CI_AS") : nothing(), truth(true), truth(false)});
    }
    take({text("sysname"), number(231), number(256), number(4), number(256), number(0), number(0),
          text("Polish_CI_AS"), truth(false), truth(false)});
}

void oldTypes(CatalogContext& /*context*/, const RowTaker& take) {
    for (const TypeFacts& facts : allTypeFacts()) {
        const SqlType type = plainType(facts.id);
        take({text(facts.name), number(facts.systemType), number(0), number(facts.systemType),
              number(storedLength(type)), number(storedPrecision(type)), number(storedScale(type)),
              truth(true)});
    }
}

}  // namespace

void addServerViews(ViewList& list, DatabaseRole /*role*/) {
    list.push_back({"sys",
                    "databases",
                    {sysnameColumn("name"), intColumn("database_id"), dateColumn("create_date"),
                     tinyColumn("compatibility_level"), sysnameColumn("collation_name", true),
                     tinyColumn("state"), textColumn("state_desc", 60), bitColumn("is_read_only")},
                    databases});
    list.push_back({"",
                    "sysdatabases",
                    {sysnameColumn("name"), smallColumn("dbid"), smallColumn("mode"), intColumn("status"),
                     intColumn("status2"), dateColumn("crdate"), tinyColumn("cmptlevel")},
                    oldDatabases});
    list.push_back({"sys",
                    "schemas",
                    {sysnameColumn("name"), intColumn("schema_id"), intColumn("principal_id")},
                    schemas});
    list.push_back({"sys",
                    "database_principals",
                    {sysnameColumn("name"), intColumn("principal_id"), ansiColumn("type", 1, false),
                     textColumn("type_desc", 60), sysnameColumn("default_schema_name", true)},
                    principals});
    list.push_back(
        {"sys",
         "types",
         {sysnameColumn("name"), tinyColumn("system_type_id"), intColumn("user_type_id"),
          intColumn("schema_id"), smallColumn("max_length"), tinyColumn("precision"), tinyColumn("scale"),
          sysnameColumn("collation_name", true), bitColumn("is_nullable"), bitColumn("is_user_defined")},
         types});
    list.push_back({"",
                    "systypes",
                    {sysnameColumn("name"), tinyColumn("xtype"), tinyColumn("status"),
                     smallColumn("xusertype"), smallColumn("length"), smallColumn("prec", true),
                     tinyColumn("scale", true), bitColumn("allownulls")},
                    oldTypes});
}

}  // namespace magdb
