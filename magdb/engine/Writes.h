#pragma once

#include "engine/Schema.h"
#include "tsql/Ast.h"

#include <string_view>

namespace magdb {

/// True when a call of the procedure can change the database, itself or through what it calls. Dynamic SQL
/// and procedures that do not exist count as changes. Answers for a procedure whose source can be seen in
/// full are exact in one direction only: false means that nothing is written.
[[nodiscard]] bool procedureWrites(const Schema& schema, std::string_view name);

}  // namespace magdb
