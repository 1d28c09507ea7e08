#pragma once

#include "engine/Schema.h"
#include "engine/SystemViews.h"

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>

// What T-SQL can ask about the database besides the system views: metadata functions (OBJECT_ID,
// SERVERPROPERTY) and the system procedures that drivers call (sp_sproc_columns), which are T-SQL over the
// system views.

namespace magdb {

/// A function of the system that reads the catalogue.
struct MetadataFunction {
    std::string name;  ///< in lower case
    std::size_t minArguments = 0;
    std::size_t maxArguments = 0;
    SqlType result;
    /// Arguments may be NULL and of any type, and as few or many as the bounds allow; one that is no text or
    /// number where one is needed gives NULL. Never throws for what the arguments are.
    std::function<Value(CatalogContext& context, std::span<const Value> arguments)> call;
};

/// The function of that name, in any case, or null. The result lives as long as the program.
[[nodiscard]] const MetadataFunction* findMetadataFunction(std::string_view name);

/// The module of a system procedure, or null. Those that run statements (sp_executesql, sp_prepare and their
/// kin) are not among them.
[[nodiscard]] std::shared_ptr<const Module> findSystemProcedure(std::string_view name);

}  // namespace magdb
