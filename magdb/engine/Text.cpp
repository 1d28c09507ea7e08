#include "engine/Text.h"

#include <unicode/uchar.h>
#include <unicode/ucnv.h>
#include <unicode/utf16.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <array>
#include <unordered_map>

namespace magdb {

namespace {

/// The upper half of windows-1250 as code points; 0 where the page has no character.
const std::array<UChar32, 128>& upperHalf() {
    static const std::array<UChar32, 128> table = [] {
        std::array<UChar32, 128> t{};
        UErrorCode status = U_ZERO_ERROR;
        UConverter* converter = ucnv_open("windows-1250", &status);
        for (int code = 128; code < 256 && U_SUCCESS(status); ++code) {
            const char byte = static_cast<char>(code);
            const char* source = &byte;
            UErrorCode one = U_ZERO_ERROR;
            const UChar32 c = ucnv_getNextUChar(converter, &source, source + 1, &one);
            t[static_cast<std::size_t>(code - 128)] = U_SUCCESS(one) && c != 0xFFFD ? c : 0;
        }
        ucnv_close(converter);
        return t;
    }();
    return table;
}

const std::unordered_map<UChar32, int>& codes() {
    static const std::unordered_map<UChar32, int> table = [] {
        std::unordered_map<UChar32, int> t;
        for (std::size_t i = 0; i < upperHalf().size(); ++i) {
            if (upperHalf()[i] != 0) {
                t.emplace(upperHalf()[i], static_cast<int>(i) + 128);
            }
        }
        return t;
    }();
    return table;
}

void append(std::string& text, UChar32 c) {
    std::array<std::uint8_t, 4> buffer{};
    std::int32_t length = 0;
    U8_APPEND_UNSAFE(buffer.data(), length, c);
    text.append(reinterpret_cast<const char*>(buffer.data()), static_cast<std::size_t>(length));
}

UChar32 nextChar(std::string_view text, std::int32_t& index) {
    UChar32 c = 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    U8_NEXT_OR_FFFD(bytes, index, static_cast<std::int32_t>(text.size()), c);
    return c;
}

template <class Map>
std::string mapChars(std::string_view text, char from, char to, Map map) {
    std::string result;
    result.reserve(text.size());
    if (isAscii(text)) {
        for (const char c : text) {
            result += c >= from && c <= to ? static_cast<char>(c ^ 0x20) : c;
        }
        return result;
    }
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(text.size());) {
        append(result, map(nextChar(text, i)));
    }
    return result;
}

}  // namespace

bool isAscii(std::string_view text) {
    // Lists of thousands of characters are looked through for each of their parts, so whole blocks are joined
    // without a decision in between: the compiler makes wide instructions of it.
    constexpr std::size_t kBlock = 64;
    const auto highBits = [](std::string_view part) {
        unsigned bits = 0;
        for (const char c : part) {
            bits |= static_cast<unsigned char>(c);
        }
        return bits & 0x80U;
    };
    for (; text.size() >= kBlock; text.remove_prefix(kBlock)) {
        if (highBits(text.substr(0, kBlock)) != 0) {
            return false;
        }
    }
    return highBits(text) == 0;
}

std::int64_t utf16Length(std::string_view text) {
    if (isAscii(text)) {
        return static_cast<std::int64_t>(text.size());
    }
    std::int64_t units = 0;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80) {
            units += byte >= 0xF0 ? 2 : 1;
        }
    }
    return units;
}

std::u16string toUtf16(std::string_view text) {
    std::u16string result;
    result.reserve(text.size());
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(text.size());) {
        const UChar32 c = nextChar(text, i);
        if (c > 0xFFFF) {
            result += static_cast<char16_t>(U16_LEAD(c));
            result += static_cast<char16_t>(U16_TRAIL(c));
        } else {
            result += static_cast<char16_t>(c);
        }
    }
    return result;
}

std::string toUtf8(std::u16string_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        UChar32 c = text[i];
        if (U16_IS_LEAD(c) && i + 1 < text.size() && U16_IS_TRAIL(text[i + 1])) {
            c = U16_GET_SUPPLEMENTARY(c, text[i + 1]);
            ++i;
        } else if (U16_IS_SURROGATE(c)) {
            c = 0xFFFD;
        }
        append(result, c);
    }
    return result;
}

std::string substringUnits(std::string_view text, std::int64_t start, std::int64_t count) {
    if (start < 0) {
        count += start;
        start = 0;
    }
    if (count <= 0) {
        return {};
    }
    // What stands behind the part does not matter.
    if (isAscii(text.substr(0, static_cast<std::size_t>(start + count)))) {
        if (start >= static_cast<std::int64_t>(text.size())) {
            return {};
        }
        return std::string(text.substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count)));
    }
    const std::u16string units = toUtf16(text);
    if (start >= static_cast<std::int64_t>(units.size())) {
        return {};
    }
    return toUtf8(
        std::u16string_view(units).substr(static_cast<std::size_t>(start), static_cast<std::size_t>(count)));
}

std::string_view trimRight(std::string_view text) {
    while (!text.empty() && text.back() == ' ') {
        text.remove_suffix(1);
    }
    return text;
}

std::string_view trimLeft(std::string_view text) {
    while (!text.empty() && text.front() == ' ') {
        text.remove_prefix(1);
    }
    return text;
}

std::string upper(std::string_view text) {
    return mapChars(text, 'a', 'z', [](UChar32 c) { return u_toupper(c); });
}

std::string lower(std::string_view text) {
    return mapChars(text, 'A', 'Z', [](UChar32 c) { return u_tolower(c); });
}

std::string toCodePage(std::string_view text) {
    if (isAscii(text)) {
        return std::string(text);
    }
    std::string result;
    result.reserve(text.size());
    for (std::int32_t i = 0; i < static_cast<std::int32_t>(text.size());) {
        const UChar32 c = nextChar(text, i);
        if (c < 0x80 || codes().count(c) != 0) {
            append(result, c);
        } else {
            result += c > 0xFFFF ? "??" : "?";
        }
    }
    return result;
}

int codePageCode(std::string_view text) {
    std::int32_t i = 0;
    const UChar32 c = nextChar(text, i);
    if (c < 0x80) {
        return c;
    }
    const auto found = codes().find(c);
    return found == codes().end() ? '?' : found->second;
}

std::string codePageChar(int code) {
    std::string result;
    const UChar32 c = code < 128 ? code : upperHalf()[static_cast<std::size_t>(code - 128)];
    append(result, c == 0 && code != 0 ? UChar32{'?'} : c);
    return result;
}

bool sameName(std::string_view left, std::string_view right) {
    return nameKey(left) == nameKey(right);
}

std::string nameKey(std::string_view name) {
    return lower(name);
}

std::string quoted(std::string_view name) {
    std::string result = "\"";
    for (const char c : name) {
        result += c;
        if (c == '"') {
            result += c;
        }
    }
    return result + '"';
}

std::string textLiteral(std::string_view text) {
    std::string result = "'";
    for (const char c : text) {
        // SQLite's parser ends at a zero byte.
        if (c == '\0') {
            result += "'||char(0)||'";
            continue;
        }
        result += c;
        if (c == '\'') {
            result += c;
        }
    }
    return text.find('\0') == std::string_view::npos ? result + '\'' : '(' + result + "')";
}

}  // namespace magdb
