#pragma once

#include <QChar>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace regalon {

/// The text of one character of a symbology, of a length that the symbology fixes.
template <std::size_t Length>
struct Pattern {
    consteval Pattern(const char16_t (&text)[Length + 1]) { std::copy_n(text, Length, Text.begin()); }

    std::array<QChar, Length> Text;
};

/// Writes a pattern and answers the place behind it. A symbol is a handful of short patterns, and appending
/// each to a string would cost more than all the rest of its encoding.
template <std::size_t Length>
QChar* write(QChar* out, const Pattern<Length>& pattern) {
    std::memcpy(static_cast<void*>(out), pattern.Text.data(), sizeof(pattern.Text));
    return out + Length;
}

}  // namespace regalon
