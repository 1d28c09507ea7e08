#include "tds/Encoding.h"

#include "tds/ByteWriter.h"

#include <algorithm>
#include <array>

namespace magdb::tds {

namespace {

constexpr char32_t replacement = 0xFFFD;

/// Windows-1250 from 0x80 on; the five codes without a character map to the control of the same number.
constexpr std::array<char16_t, 128> upperHalf = {
    0x20AC, 0x0081, 0x201A, 0x0083, 0x201E, 0x2026, 0x2020, 0x2021, 0x0088, 0x2030, 0x0160, 0x2039, 0x015A,
    0x0164, 0x017D, 0x0179, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, 0x0098, 0x2122,
    0x0161, 0x203A, 0x015B, 0x0165, 0x017E, 0x017A, 0x00A0, 0x02C7, 0x02D8, 0x0141, 0x00A4, 0x0104, 0x00A6,
    0x00A7, 0x00A8, 0x00A9, 0x015E, 0x00AB, 0x00AC, 0x00AD, 0x00AE, 0x017B, 0x00B0, 0x00B1, 0x02DB, 0x0142,
    0x00B4, 0x00B5, 0x00B6, 0x00B7, 0x00B8, 0x0105, 0x015F, 0x00BB, 0x013D, 0x02DD, 0x013E, 0x017C, 0x0154,
    0x00C1, 0x00C2, 0x0102, 0x00C4, 0x0139, 0x0106, 0x00C7, 0x010C, 0x00C9, 0x0118, 0x00CB, 0x011A, 0x00CD,
    0x00CE, 0x010E, 0x0110, 0x0143, 0x0147, 0x00D3, 0x00D4, 0x0150, 0x00D6, 0x00D7, 0x0158, 0x016E, 0x00DA,
    0x0170, 0x00DC, 0x00DD, 0x0162, 0x00DF, 0x0155, 0x00E1, 0x00E2, 0x0103, 0x00E4, 0x013A, 0x0107, 0x00E7,
    0x010D, 0x00E9, 0x0119, 0x00EB, 0x011B, 0x00ED, 0x00EE, 0x010F, 0x0111, 0x0144, 0x0148, 0x00F3, 0x00F4,
    0x0151, 0x00F6, 0x00F7, 0x0159, 0x016F, 0x00FA, 0x0171, 0x00FC, 0x00FD, 0x0163, 0x02D9,
};

struct Reverse {
    char16_t unit;
    std::uint8_t code;
};

constexpr std::array<Reverse, 128> makeReverse() {
    std::array<Reverse, 128> table{};
    for (std::size_t i = 0; i < table.size(); ++i) {
        table[i] = {upperHalf[i], static_cast<std::uint8_t>(0x80 + i)};
    }
    std::sort(table.begin(), table.end(), [](const Reverse& a, const Reverse& b) { return a.unit < b.unit; });
    return table;
}

constexpr std::array<Reverse, 128> reverse = makeReverse();

void appendUtf8(char32_t point, std::string& out) {
    if (point < 0x80) {
        out.push_back(static_cast<char>(point));
    } else if (point < 0x800) {
        out.push_back(static_cast<char>(0xC0 | (point >> 6)));
        out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
    } else if (point < 0x10000) {
        out.push_back(static_cast<char>(0xE0 | (point >> 12)));
        out.push_back(static_cast<char>(0x80 | ((point >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
    } else {
        out.push_back(static_cast<char>(0xF0 | (point >> 18)));
        out.push_back(static_cast<char>(0x80 | ((point >> 12) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | ((point >> 6) & 0x3F)));
        out.push_back(static_cast<char>(0x80 | (point & 0x3F)));
    }
}

/// Reads one code point and moves past it; a broken sequence gives U+FFFD and moves by one byte.
char32_t nextPoint(std::string_view text, std::size_t& at) {
    const auto byte = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t first = byte(at);
    if (first < 0x80) {
        ++at;
        return first;
    }
    const int extra = first >= 0xF0 ? 3 : first >= 0xE0 ? 2 : first >= 0xC2 ? 1 : 0;
    if (extra == 0 || first > 0xF4 || at + static_cast<std::size_t>(extra) >= text.size()) {
        ++at;
        return replacement;
    }
    char32_t point = first & (0x3F >> extra);
    for (int i = 1; i <= extra; ++i) {
        const std::uint8_t next = byte(at + static_cast<std::size_t>(i));
        if ((next & 0xC0) != 0x80) {
            ++at;
            return replacement;
        }
        point = (point << 6) | (next & 0x3F);
    }
    constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    if (point < smallest[extra] || point > 0x10FFFF || (point >= 0xD800 && point <= 0xDFFF)) {
        ++at;
        return replacement;
    }
    at += static_cast<std::size_t>(extra) + 1;
    return point;
}

void appendUnit(char16_t unit, std::vector<std::uint8_t>& out) {
    out.push_back(static_cast<std::uint8_t>(unit));
    out.push_back(static_cast<std::uint8_t>(unit >> 8));
}

std::uint8_t toWindows1250(char32_t point) {
    if (point < 0x80) {
        return static_cast<std::uint8_t>(point);
    }
    const auto found = std::lower_bound(reverse.begin(), reverse.end(), point,
                                        [](const Reverse& entry, char32_t p) { return entry.unit < p; });
    return found != reverse.end() && found->unit == point ? found->code : static_cast<std::uint8_t>('?');
}

}  // namespace

std::string fromUtf16(std::span<const std::uint8_t> bytes) {
    std::string out;
    out.reserve(bytes.size() / 2);
    const std::size_t units = bytes.size() / 2;
    const auto unit = [&](std::size_t i) {
        return static_cast<char16_t>(bytes[2 * i] | (bytes[2 * i + 1] << 8));
    };
    for (std::size_t i = 0; i < units; ++i) {
        char32_t point = unit(i);
        if (point >= 0xD800 && point <= 0xDFFF) {
            const bool pair =
                point < 0xDC00 && i + 1 < units && unit(i + 1) >= 0xDC00 && unit(i + 1) <= 0xDFFF;
            point = pair ? 0x10000 + ((point - 0xD800) << 10) + (unit(i + 1) - 0xDC00U) : replacement;
            i += pair ? 1 : 0;
        }
        appendUtf8(point, out);
    }
    return out;
}

void appendUtf16(std::string_view utf8, std::vector<std::uint8_t>& out) {
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t point = nextPoint(utf8, at);
        if (point < 0x10000) {
            appendUnit(static_cast<char16_t>(point), out);
        } else {
            appendUnit(static_cast<char16_t>(0xD800 + ((point - 0x10000) >> 10)), out);
            appendUnit(static_cast<char16_t>(0xDC00 + ((point - 0x10000) & 0x3FF)), out);
        }
    }
}

std::string fromWindows1250(std::span<const std::uint8_t> bytes) {
    std::string out;
    out.reserve(bytes.size());
    for (const std::uint8_t byte : bytes) {
        appendUtf8(byte < 0x80 ? byte : static_cast<char32_t>(upperHalf[byte - 0x80U]), out);
    }
    return out;
}

void appendWindows1250(std::string_view utf8, std::vector<std::uint8_t>& out) {
    for (std::size_t at = 0; at < utf8.size();) {
        out.push_back(toWindows1250(nextPoint(utf8, at)));
    }
}

}  // namespace magdb::tds
