#pragma once

#include "tsql/Ast.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace magdb::tsql {

/// The number of the error for a construct of T-SQL that this server does not know. SQL Server's cloud
/// edition uses the same number for statement options that it leaves out.
inline constexpr int kUnsupportedConstruct = 40517;

/// A text that is not T-SQL, or not the part of it that this server knows. Severity is 15, or 16 for
/// constructs that are not supported.
class SyntaxError : public std::runtime_error {
public:
    SyntaxError(int errorNumber, int errorSeverity, std::uint32_t errorLine, const std::string& text)
        : std::runtime_error(text), number(errorNumber), severity(errorSeverity), line(errorLine) {}

    int number;          ///< SQL Server's: 102, 105, 111, 113, 156, 191, 319...
    int severity;        ///< 15 or 16
    int state = 1;       ///< always 1
    std::uint32_t line;  ///< 1-based, within the batch
};

struct ParseOptions {
    bool quotedIdentifier = true;  ///< "x" is a name; false: "x" is a string
};

/// Parses one batch (no GO). Throws SyntaxError for the first error of the text. The text may hold any bytes.
[[nodiscard]] std::unique_ptr<Batch> parseBatch(std::string_view text, const ParseOptions& options = {});

/// Parses a list of parameter declarations as sp_executesql and sp_prepare take it: `@a int, @b nvarchar(50)
/// OUTPUT`. An empty text is an empty list.
[[nodiscard]] std::vector<Parameter> parseParameters(std::string_view text);

/// Parses one expression that is not a condition, such as the stored text of a default.
[[nodiscard]] ExprPtr parseExpression(std::string_view text);

/// Parses one condition, such as the stored text of a CHECK constraint.
[[nodiscard]] ExprPtr parseCondition(std::string_view text);

}  // namespace magdb::tsql
