#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace magdb {

/// Added to the number of the text order in a call of t_like: the value may have blanks at its end.
inline constexpr int kLikeTrailingBlanks = 8;

/// A pattern of LIKE: %, _, [sets] and [^sets], with an escape character.
class LikePattern {
public:
    LikePattern(std::string_view pattern, std::optional<char32_t> escape, bool ignoreCase);

    [[nodiscard]] const std::string& text() const { return m_text; }
    /// trailingBlanks: the value may have more blanks at its end than the pattern, as values of varchar may.
    [[nodiscard]] bool matches(std::string_view value, bool trailingBlanks = false) const;
    /// Position of the first match of the pattern inside the value, as PATINDEX counts: 1-based, 0 for none.
    [[nodiscard]] std::int64_t find(std::string_view value) const;

private:
    struct Range {
        char32_t low;
        char32_t high;
    };
    struct Token {
        enum class Kind : std::uint8_t { Char, AnyOne, AnyRun, Set };
        Kind kind = Kind::Char;
        char32_t value = 0;
        bool negated = false;
        std::vector<Range> ranges;
    };

    [[nodiscard]] bool matchesOne(const Token& token, char32_t c) const;
    [[nodiscard]] bool matchesFrom(const std::u32string& value, std::size_t at) const;
    [[nodiscard]] char32_t fold(char32_t c) const;
    void readSet(const std::u32string& pattern, std::size_t& at, std::optional<char32_t> escape);

    std::string m_text;
    bool m_ignoreCase;
    std::vector<Token> m_tokens;
};

/// Code points of a text.
[[nodiscard]] std::u32string toUtf32(std::string_view text);

}  // namespace magdb
