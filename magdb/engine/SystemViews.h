#pragma once

#include "engine/Schema.h"
#include "engine/Value.h"

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace magdb {

class Binder;

/// What a system view can ask of the session that reads it.
class CatalogContext {
public:
    virtual ~CatalogContext() = default;
    [[nodiscard]] virtual const Schema& schema() const = 0;
    /// The database of the file, and the current one of the session.
    [[nodiscard]] virtual const std::string& databaseName() const = 0;
    [[nodiscard]] virtual const std::string& currentDatabase() const = 0;
    [[nodiscard]] virtual const std::string& loginName() const = 0;
    /// Columns of a view or an inline function, as binding it now gives them. Empty when it does not bind.
    [[nodiscard]] virtual std::vector<Column> columnsOf(const Module& module) = 0;
    /// #tables of the session.
    [[nodiscard]] virtual std::vector<std::shared_ptr<const Table>> temporaryTables() const = 0;
    /// Last identity value that a table gave out; nothing before the first.
    [[nodiscard]] virtual std::optional<std::int64_t> lastIdentity(const Table& /*table*/) {
        return std::nullopt;
    }
};

/// Takes one row of a system view, a value for each of its columns.
using RowTaker = std::function<void(std::vector<Value>)>;

/// A view of the catalogue, computed each time that a statement reads it.
struct SystemView {
    std::string schema;  ///< "sys", "INFORMATION_SCHEMA", or empty for the old names in dbo
    std::string name;
    std::vector<Column> columns;
    std::function<void(CatalogContext&, const RowTaker&)> fill;
};

/// The view of that name. With an empty schema or "dbo" the old compatibility names (sysobjects,
/// sysdatabases...) are found. Null when there is none.
[[nodiscard]] const SystemView* findSystemView(std::string_view database, std::string_view schema,
                                               std::string_view name);

}  // namespace magdb
