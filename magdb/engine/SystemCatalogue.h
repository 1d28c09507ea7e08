#pragma once

#include "engine/Schema.h"
#include "engine/Session.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

// What T-SQL can ask about the database itself: system views (sys.objects, INFORMATION_SCHEMA.COLUMNS,
// sysdatabases), metadata functions (OBJECT_ID, SERVERPROPERTY) and the system procedures that drivers call
// (sp_sproc_columns). Views are tables of values made on demand; procedures are T-SQL over these views, run
// like anybody's.

namespace magdb {

/// A connected session as sys.dm_exec_sessions and sysprocesses show it.
struct SessionInfo {
    std::int16_t spid = 0;
    std::string login;
    std::string host;
    std::string program;
    std::string database;
    DateTimeValue loginTime;
};

/// What the views and functions read, as one session sees it.
class CatalogueContext {
public:
    virtual ~CatalogueContext() = default;
    [[nodiscard]] virtual const Schema& schema() const = 0;
    [[nodiscard]] virtual const std::string& databaseName() const = 0;
    /// The session's current database: its own, or master, where no object of the user exists.
    [[nodiscard]] virtual const std::string& currentDatabase() const = 0;
    [[nodiscard]] virtual std::shared_ptr<const Table> temporaryTable(const std::string& name) const = 0;
    /// Columns of a view or of a table-valued function; empty when it cannot be bound any more.
    [[nodiscard]] virtual std::vector<ResultColumn> moduleColumns(const Module& module) const = 0;
    [[nodiscard]] virtual std::vector<SessionInfo> sessions() const = 0;
    [[nodiscard]] virtual std::vector<std::string> logins() const = 0;
};

/// A view that the server makes from what it knows.
struct SystemView {
    using Row = std::vector<Value>;
    using RowSink = std::function<void(const Row&)>;

    std::string name;  ///< with its schema: "sys.objects"
    std::vector<Column> columns;
    /// Gives the rows of the view in one database: the user's, master or tempdb.
    std::function<void(const CatalogueContext& context, const std::string& database, const RowSink& sink)>
        fill;
};

/// The view of that name or null. An empty schema, dbo and sys find the old names (sysobjects, sysdatabases);
/// the others need their schema (sys or INFORMATION_SCHEMA). The result lives as long as the program.
[[nodiscard]] const SystemView* findSystemView(std::string_view schema, std::string_view name);

/// A function of the system that reads the catalogue.
struct MetadataFunction {
    std::string name;  ///< in lower case
    int minArguments = 0;
    int maxArguments = 0;
    SqlType result;
    /// Arguments may be NULL and are of any type; an argument that is no text or number where one is needed
    /// gives NULL. Never throws.
    std::function<Value(const CatalogueContext& context, std::span<const Value> arguments)> call;
};

/// The function of that name, in any case, or null. The result lives as long as the program.
[[nodiscard]] const MetadataFunction* findMetadataFunction(std::string_view name);

/// The module of a system procedure written in T-SQL, or null. Those that run statements (sp_executesql,
/// sp_prepare and their kin) are not among them.
[[nodiscard]] std::shared_ptr<const Module> findSystemProcedure(std::string_view name);

/// The text of @@VERSION.
[[nodiscard]] const std::string& versionText();

}  // namespace magdb
