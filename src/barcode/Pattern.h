#pragma once

#include <QChar>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>

namespace regalon {

/// The text of one character of a symbology, of a length that the symbology fixes. It is filled up to eight
/// characters: sixteen bytes are copied at one stroke, and a symbol is a handful of patterns.
template <std::size_t Length>
struct Pattern {
    static constexpr std::size_t Room = 8;
    static_assert(Length <= Room);

    consteval Pattern(const char16_t (&text)[Length + 1]) { std::copy_n(text, Length, Text.begin()); }

    alignas(Room * sizeof(QChar)) std::array<QChar, Room> Text{};
};

/// Writes a pattern and answers the place behind it. What fills it up is written, too: there must be room for
/// it at `out`, which the next pattern takes.
template <std::size_t Length>
QChar* write(QChar* out, const Pattern<Length>& pattern) {
    std::memcpy(static_cast<void*>(out), pattern.Text.data(), sizeof(pattern.Text));
    return out + Length;
}

/// The same for the end of a symbol, without what fills the pattern up.
template <std::size_t Length>
QChar* writeLast(QChar* out, const Pattern<Length>& pattern) {
    return std::copy_n(pattern.Text.begin(), Length, out);
}

}  // namespace regalon
