#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace magdb::tds {

/// UTF-16LE to UTF-8. Lone surrogates become U+FFFD; an odd last byte is left out.
[[nodiscard]] std::string fromUtf16(std::span<const std::uint8_t> bytes);

/// UTF-8 to UTF-16LE, appended to out. Bytes that are not UTF-8 become U+FFFD.
void appendUtf16(std::string_view utf8, std::vector<std::uint8_t>& out);

/// Text of the 8-bit code page of the server's collation (windows-1250) to UTF-8.
[[nodiscard]] std::string fromWindows1250(std::span<const std::uint8_t> bytes);

/// UTF-8 to windows-1250, appended to out. What the code page lacks becomes "?", as on the server meant here.
void appendWindows1250(std::string_view utf8, std::vector<std::uint8_t>& out);

}  // namespace magdb::tds
