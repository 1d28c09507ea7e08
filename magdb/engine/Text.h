#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Text is UTF-8 inside the engine, while T-SQL counts UTF-16 code units: lengths and positions here are code
// units. A surrogate that a cut leaves alone becomes U+FFFD.

namespace magdb {

[[nodiscard]] bool isAscii(std::string_view text);
[[nodiscard]] std::int64_t utf16Length(std::string_view text);
[[nodiscard]] std::u16string toUtf16(std::string_view text);
[[nodiscard]] std::string toUtf8(std::u16string_view text);

/// Units [start, start + count) of the text, 0-based; parts outside are left out.
[[nodiscard]] std::string substringUnits(std::string_view text, std::int64_t start, std::int64_t count);

[[nodiscard]] std::string_view trimRight(std::string_view text);
[[nodiscard]] std::string_view trimLeft(std::string_view text);

/// Full case mapping that keeps the number of characters, as the server's UPPER and LOWER do.
[[nodiscard]] std::string upper(std::string_view text);
[[nodiscard]] std::string lower(std::string_view text);

/// What is left of a text in the 8-bit code page of the database (windows-1250): letters outside it become
/// their plain form or "?".
[[nodiscard]] std::string toCodePage(std::string_view text);
/// Code of the first character in the code page, and back.
[[nodiscard]] int codePageCode(std::string_view text);
[[nodiscard]] std::string codePageChar(int code);

/// Equal as names are: without regard to case.
[[nodiscard]] bool sameName(std::string_view left, std::string_view right);
/// Key of a name in maps: two names that are the same have the same key.
[[nodiscard]] std::string nameKey(std::string_view name);

/// A name between double quotes, for SQLite.
[[nodiscard]] std::string quoted(std::string_view name);
/// A text literal of SQLite.
[[nodiscard]] std::string textLiteral(std::string_view text);

}  // namespace magdb
