#include "engine/Like.h"

#include "engine/Collation.h"
#include "engine/Text.h"

#include <unicode/uchar.h>

#include <algorithm>

namespace magdb {

namespace {

std::string toUtf8(char32_t c) {
    std::u16string units;
    if (c > 0xFFFF) {
        units += static_cast<char16_t>(0xD7C0 + (c >> 10));
        units += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
    } else {
        units += static_cast<char16_t>(c);
    }
    return magdb::toUtf8(units);
}

}  // namespace

std::u32string toUtf32(std::string_view text) {
    std::u32string result;
    const std::u16string units = toUtf16(text);
    for (std::size_t i = 0; i < units.size(); ++i) {
        char32_t c = units[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < units.size()) {
            c = 0x10000 + ((c - 0xD800) << 10) + (units[++i] - 0xDC00u);
        }
        result += c;
    }
    return result;
}

LikePattern::LikePattern(std::string_view pattern, std::optional<char32_t> escape, bool ignoreCase)
    : m_text(pattern), m_ignoreCase(ignoreCase) {
    const std::u32string chars = toUtf32(pattern);
    for (std::size_t i = 0; i < chars.size(); ++i) {
        Token token;
        if (escape && chars[i] == *escape && i + 1 < chars.size()) {
            token.value = fold(chars[++i]);
        } else if (chars[i] == U'%') {
            token.kind = Token::Kind::AnyRun;
            if (!m_tokens.empty() && m_tokens.back().kind == Token::Kind::AnyRun) {
                continue;
            }
        } else if (chars[i] == U'_') {
            token.kind = Token::Kind::AnyOne;
        } else if (chars[i] == U'[') {
            readSet(chars, i, escape);
            continue;
        } else {
            token.value = fold(chars[i]);
        }
        m_tokens.push_back(std::move(token));
    }
}

void LikePattern::readSet(const std::u32string& pattern, std::size_t& at, std::optional<char32_t> escape) {
    Token token;
    token.kind = Token::Kind::Set;
    std::size_t i = at + 1;
    if (i < pattern.size() && pattern[i] == U'^') {
        token.negated = true;
        ++i;
    }
    bool closed = false;
    while (i < pattern.size()) {
        if (pattern[i] == U']' && !token.ranges.empty()) {
            closed = true;
            break;
        }
        if (pattern[i] == U']') {
            // An empty set matches nothing.
            closed = true;
            break;
        }
        if (escape && pattern[i] == *escape && i + 1 < pattern.size()) {
            ++i;
        }
        Range range{pattern[i], pattern[i]};
        if (i + 2 < pattern.size() && pattern[i + 1] == U'-' && pattern[i + 2] != U']') {
            range.high = pattern[i + 2];
            i += 2;
        }
        token.ranges.push_back(range);
        ++i;
    }
    // A set that never ends matches nothing either.
    if (!closed) {
        token.ranges.clear();
        token.negated = false;
        i = pattern.size();
    }
    at = i;
    m_tokens.push_back(std::move(token));
}

char32_t LikePattern::fold(char32_t c) const {
    if (!m_ignoreCase) {
        return c;
    }
    if (c < 0x80) {
        return c >= U'A' && c <= U'Z' ? c + 32 : c;
    }
    return static_cast<char32_t>(u_foldCase(static_cast<UChar32>(c), U_FOLD_CASE_DEFAULT));
}

bool LikePattern::matchesOne(const Token& token, char32_t c) const {
    switch (token.kind) {
        case Token::Kind::Char:
            return token.value == fold(c);
        case Token::Kind::AnyOne:
            return true;
        case Token::Kind::AnyRun:
            return false;
        case Token::Kind::Set:
            break;
    }
    bool inside = false;
    for (const Range& range : token.ranges) {
        if (range.low == range.high) {
            inside = inside || fold(range.low) == fold(c);
        } else if (c < 0x80 && c >= U'0' && c <= U'9' && range.low >= U'0' && range.high <= U'9') {
            inside = inside || (c >= range.low && c <= range.high);
        } else if (m_ignoreCase) {
            // Ranges go by the order of the collation: [a-z] holds the Polish letters too.
            const std::string text = toUtf8(c);
            inside =
                inside || (collate(text, toUtf8(range.low)) >= 0 && collate(text, toUtf8(range.high)) <= 0);
        } else {
            inside = inside || (c >= range.low && c <= range.high);
        }
    }
    return inside != token.negated && !(token.ranges.empty() && !token.negated);
}

bool LikePattern::matchesFrom(const std::u32string& value, std::size_t at) const {
    std::size_t token = 0;
    std::size_t runToken = std::u32string::npos;
    std::size_t runAt = 0;
    while (at < value.size()) {
        if (token < m_tokens.size() && m_tokens[token].kind == Token::Kind::AnyRun) {
            runToken = token++;
            runAt = at;
            if (token == m_tokens.size()) {
                return true;
            }
        } else if (token < m_tokens.size() && matchesOne(m_tokens[token], value[at])) {
            ++token;
            ++at;
        } else if (runToken != std::u32string::npos) {
            // The run takes one more character, and the rest is tried again.
            token = runToken + 1;
            at = ++runAt;
        } else {
            return false;
        }
    }
    while (token < m_tokens.size() && m_tokens[token].kind == Token::Kind::AnyRun) {
        ++token;
    }
    return token == m_tokens.size();
}

bool LikePattern::matches(std::string_view value, bool trailingBlanks) const {
    std::u32string chars = toUtf32(value);
    while (!matchesFrom(chars, 0)) {
        if (!trailingBlanks || chars.empty() || chars.back() != U' ') {
            return false;
        }
        chars.pop_back();
    }
    return true;
}

std::int64_t LikePattern::find(std::string_view value) const {
    const std::u32string chars = toUtf32(value);
    const bool leading = !m_tokens.empty() && m_tokens.front().kind == Token::Kind::AnyRun;
    if (!leading) {
        return matchesFrom(chars, 0) ? 1 : 0;
    }
    LikePattern rest(*this);
    rest.m_tokens.erase(rest.m_tokens.begin());
    std::int64_t units = 1;
    for (std::size_t at = 0; at <= chars.size(); ++at) {
        if (rest.matchesFrom(chars, at)) {
            return units;
        }
        units += at < chars.size() && chars[at] > 0xFFFF ? 2 : 1;
    }
    return 0;
}

}  // namespace magdb
