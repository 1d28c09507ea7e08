#pragma once

#include "tsql/Ast.h"

#include <string>

namespace magdb::tsql {

/// The tree as one S-expression, for tests and for looking at what the parser understood. Every field of a
/// node that differs from its default is in the text.
[[nodiscard]] std::string print(const Batch& batch);
[[nodiscard]] std::string print(const Expr& expr);
[[nodiscard]] std::string print(const Query& query);
[[nodiscard]] std::string print(const Statement& statement);

}  // namespace magdb::tsql
