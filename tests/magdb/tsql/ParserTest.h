#pragma once

#include "tsql/Parser.h"
#include "tsql/Print.h"

#include <ostream>
#include <string>

/// A text and the tree, or the error, that it must give.
struct TreeCase {
    const char* text;
    const char* tree;
};

inline std::ostream& operator<<(std::ostream& out, const TreeCase& entry) {
    return out << entry.text;
}

/// The tree of a batch, or "error <number> line <line>: <text>".
inline std::string parsed(std::string_view text, const magdb::tsql::ParseOptions& options = {}) {
    try {
        return print(*magdb::tsql::parseBatch(text, options));
    } catch (const magdb::tsql::SyntaxError& error) {
        return "error " + std::to_string(error.number) + " line " + std::to_string(error.line) + ": " +
               error.what();
    }
}
