#pragma once

#include "engine/Session.h"

#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace magdb::server {

/// A piece of a script between two GO lines.
struct ScriptBatch {
    std::string text;
    int firstLine = 1;  ///< of the text, in the script, from 1
};

/// Divides a script at the lines that hold GO alone, in any case, blanks around allowed. Batches without a
/// visible character are left out. A byte order mark at the start is dropped.
[[nodiscard]] std::vector<ScriptBatch> splitScript(std::string_view script);

/// Runs a script and prints its messages: PRINT and information to out, errors to err as
/// "name:line: Msg n, Level l, State s: text" with the line of the script. Stops at the first error; false
/// then.
bool runScript(Session& session, const std::string& name, std::string_view script, std::ostream& out,
               std::ostream& err);

}  // namespace magdb::server
