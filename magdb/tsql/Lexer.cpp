#include "tsql/Lexer.h"

#include "tsql/Parser.h"

#include <algorithm>
#include <cstddef>

namespace magdb::tsql {

namespace {

constexpr std::size_t kMaxIdentifier = 128;  // characters

bool isDigit(char c) {
    return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
    return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Every byte of a multi-byte UTF-8 letter counts as a letter; the server does not check which letters those
/// are.
bool isNameStart(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '#' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool isNamePart(char c) {
    return isNameStart(c) || isDigit(c) || c == '@' || c == '$';
}

/// Characters of a UTF-8 text: bytes that do not continue one.
std::size_t characterCount(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

/// The first characters of a text, cut between characters.
std::string firstCharacters(std::string_view text, std::size_t count) {
    std::size_t i = 0;
    while (i < text.size()) {
        const bool starts = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
        if (starts && count-- == 0)
            break;
        ++i;
    }
    return std::string(text.substr(0, i));
}

class Lexer {
public:
    Lexer(std::string_view text, bool quotedIdentifier) : text_(text), quotedIdentifier_(quotedIdentifier) {}

    std::vector<Token> run() {
        std::vector<Token> tokens;
        tokens.reserve(text_.size() / 5 + 8);
        for (;;) {
            skipBlanks();
            start_ = at_;
            startLine_ = line_;
            if (at_ >= text_.size())
                break;
            const TokenKind kind = next();
            Token token = make(kind);
            if (kind == TokenKind::Word)
                token.keyword = findKeyword(text_.substr(start_, at_ - start_));
            tokens.push_back(token);
        }
        tokens.push_back(make(TokenKind::End));
        return tokens;
    }

private:
    [[nodiscard]] Token make(TokenKind kind) const {
        Token token;
        token.kind = kind;
        token.offset = static_cast<std::uint32_t>(start_);
        token.length = static_cast<std::uint32_t>(at_ - start_);
        token.line = startLine_;
        return token;
    }

    [[nodiscard]] char peek(std::size_t ahead = 0) const {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
    }

    [[nodiscard]] bool startsWith(std::string_view what) const {
        return text_.substr(at_, what.size()) == what;
    }

    /// Length of the blank at this place: ASCII blanks and controls, no-break space, ideographic space and
    /// the byte order mark. 0 when there is none.
    [[nodiscard]] std::size_t blankHere() const {
        const char c = peek();
        if (at_ < text_.size() && c > '\0' && c <= ' ')
            return 1;
        if (startsWith("\xC2\xA0"))
            return 2;
        if (startsWith("\xE3\x80\x80") || startsWith("\xEF\xBB\xBF"))
            return 3;
        return 0;
    }

    void skipBlanks() {
        for (;;) {
            if (const std::size_t blank = blankHere(); blank > 0) {
                line_ += peek() == '\n' ? 1 : 0;
                at_ += blank;
            } else if (startsWith("--")) {
                at_ = std::min(text_.find('\n', at_), text_.size());
            } else if (startsWith("/*")) {
                skipComment();
            } else {
                return;
            }
        }
    }

    /// Block comments nest.
    void skipComment() {
        const std::uint32_t openedAt = line_;
        std::size_t depth = 0;
        do {
            if (at_ >= text_.size())
                throw SyntaxError(113, 15, openedAt, "Missing end comment mark '*/'.");
            if (startsWith("/*")) {
                ++depth;
                at_ += 2;
            } else if (startsWith("*/")) {
                --depth;
                at_ += 2;
            } else {
                line_ += peek() == '\n' ? 1 : 0;
                ++at_;
            }
        } while (depth > 0);
    }

    TokenKind next() {
        const char c = peek();
        if ((c == 'N' || c == 'n') && peek(1) == '\'') {
            ++at_;
            quoted('\'');
            return TokenKind::NationalString;
        }
        if (startsWith("\xE2\x82\xAC"))
            return money(3);
        if (startsWith("\xC2\xA3"))
            return money(2);
        if (isNameStart(c))
            return word();
        if (c == '0' && (peek(1) == 'x' || peek(1) == 'X'))
            return binary();
        if (isDigit(c) || (c == '.' && isDigit(peek(1))))
            return number();
        switch (c) {
            case '\'':
                quoted('\'');
                return TokenKind::String;
            case '"':
                return doubleQuoted();
            case '[':
                quoted(']');
                checkLength(start_ + 1, at_ - 1);
                return TokenKind::QuotedName;
            case '@':
                return variable();
            case '$':
                return money(1);
            default:
                return punctuation();
        }
    }

    /// Runs over the rest of a name; a no-break space and its like end it.
    void skipName() {
        while (isNamePart(peek()) && (static_cast<unsigned char>(peek()) < 0x80 || blankHere() == 0))
            ++at_;
    }

    TokenKind word() {
        skipName();
        checkLength(start_, at_);
        return TokenKind::Word;
    }

    TokenKind variable() {
        const TokenKind kind = peek(1) == '@' ? TokenKind::GlobalVariable : TokenKind::Variable;
        skipName();
        if (at_ - start_ == (kind == TokenKind::GlobalVariable ? 2U : 1U))
            throw SyntaxError(102, 15, startLine_, "Incorrect syntax near '@'.");
        checkLength(start_, at_);
        return kind;
    }

    TokenKind binary() {
        at_ += 2;
        while (isHexDigit(peek()))
            ++at_;
        return TokenKind::Binary;
    }

    void digits() {
        while (isDigit(peek()))
            ++at_;
    }

    TokenKind number() {
        TokenKind kind = TokenKind::Integer;
        digits();
        if (peek() == '.') {
            kind = TokenKind::Decimal;
            ++at_;
            digits();
        }
        if (peek() == 'e' || peek() == 'E') {
            // An exponent without digits is zero here, so that "1e" is 1.
            kind = TokenKind::Float;
            ++at_;
            if ((peek() == '+' || peek() == '-') && isDigit(peek(1)))
                ++at_;
            digits();
        }
        return kind;
    }

    TokenKind money(std::size_t signBytes) {
        at_ += signBytes;
        if (isNameStart(peek()))
            throw SyntaxError(102, 15, startLine_, "Incorrect syntax near '$'.");
        while (isDigit(peek()) || (peek() == ',' && isDigit(peek(1))))
            ++at_;
        if (peek() == '.') {
            ++at_;
            digits();
        }
        return TokenKind::Money;
    }

    TokenKind doubleQuoted() {
        quoted('"');
        if (!quotedIdentifier_)
            return TokenKind::String;
        checkLength(start_ + 1, at_ - 1);
        return TokenKind::QuotedName;
    }

    /// Runs over a quoted text whose closing mark is doubled inside.
    void quoted(char close) {
        const std::size_t content = ++at_;
        while (at_ < text_.size()) {
            const char c = text_[at_++];
            if (c == '\n')
                ++line_;
            if (c != close)
                continue;
            if (peek() != close || at_ >= text_.size())
                return;
            ++at_;
        }
        throw SyntaxError(105, 15, startLine_,
                          "Unclosed quotation mark after the character string '" +
                              firstCharacters(text_.substr(content), kMaxIdentifier) + "'.");
    }

    void checkLength(std::size_t begin, std::size_t end) const {
        if (end - begin <= kMaxIdentifier)
            return;
        const std::string_view name = text_.substr(begin, end - begin);
        if (characterCount(name) > kMaxIdentifier) {
            throw SyntaxError(103, 15, startLine_,
                              "The identifier that starts with '" + firstCharacters(name, kMaxIdentifier) +
                                  "' is too long. Maximum length is 128.");
        }
    }

    /// `simple`, or `compound` when "=" follows.
    TokenKind withEqual(TokenKind simple, TokenKind compound) {
        if (peek() != '=')
            return simple;
        ++at_;
        return compound;
    }

    TokenKind comparison(char c) {
        const char second = peek();
        if (c == '<' && second == '>') {
            ++at_;
            return TokenKind::NotEqual;
        }
        return c == '<' ? withEqual(TokenKind::Less, TokenKind::LessEqual)
                        : withEqual(TokenKind::Greater, TokenKind::GreaterEqual);
    }

    /// "!=", "!<" and "!>".
    TokenKind negatedComparison() {
        const char second = peek();
        ++at_;
        switch (second) {
            case '=':
                return TokenKind::NotEqual;
            case '<':
                return TokenKind::GreaterEqual;
            case '>':
                return TokenKind::LessEqual;
            default:
                throw SyntaxError(102, 15, startLine_, "Incorrect syntax near '!'.");
        }
    }

    TokenKind punctuation() {
        const char c = text_[at_++];
        switch (c) {
            case '(':
                return TokenKind::LeftParen;
            case ')':
                return TokenKind::RightParen;
            case ',':
                return TokenKind::Comma;
            case '.':
                return TokenKind::Dot;
            case ';':
                return TokenKind::Semicolon;
            case ':':
                if (peek() != ':')
                    return TokenKind::Colon;
                ++at_;
                return TokenKind::DoubleColon;
            case '~':
                return TokenKind::Tilde;
            case '=':
                return TokenKind::Equal;
            case '!':
                return negatedComparison();
            case '<':
            case '>':
                return comparison(c);
            default:
                return arithmetic(c);
        }
    }

    TokenKind arithmetic(char c) {
        switch (c) {
            case '+':
                return withEqual(TokenKind::Plus, TokenKind::PlusEqual);
            case '-':
                return withEqual(TokenKind::Minus, TokenKind::MinusEqual);
            case '*':
                return withEqual(TokenKind::Star, TokenKind::StarEqual);
            case '/':
                return withEqual(TokenKind::Slash, TokenKind::SlashEqual);
            case '%':
                return withEqual(TokenKind::Percent, TokenKind::PercentEqual);
            case '&':
                return withEqual(TokenKind::Ampersand, TokenKind::AmpersandEqual);
            case '|':
                return withEqual(TokenKind::Bar, TokenKind::BarEqual);
            case '^':
                return withEqual(TokenKind::Caret, TokenKind::CaretEqual);
            default:
                throw SyntaxError(102, 15, startLine_, std::string("Incorrect syntax near '") + c + "'.");
        }
    }

    std::string_view text_;
    bool quotedIdentifier_;
    std::size_t at_ = 0;
    std::uint32_t line_ = 1;
    std::size_t start_ = 0;
    std::uint32_t startLine_ = 1;
};

/// The content between quotes: doubled closing marks halved, and in strings a backslash at the end of a line
/// removed together with the line break.
std::string unquote(std::string_view content, char close, bool isString) {
    std::string out;
    out.reserve(content.size());
    for (std::size_t i = 0; i < content.size(); ++i) {
        const char c = content[i];
        if (isString && c == '\\') {
            const std::size_t lineBreak = content.substr(i + 1, 2) == "\r\n" ? 2
                                          : content.substr(i + 1, 1) == "\n" ? 1
                                                                             : 0;
            if (lineBreak > 0) {
                i += lineBreak;
                continue;
            }
        }
        out += c;
        if (c == close)
            ++i;
    }
    return out;
}

std::string moneyDigits(std::string_view raw) {
    std::string out;
    for (const char c : raw) {
        if (isDigit(c) || c == '.')
            out += c;
    }
    return out.empty() || out == "." ? "0" : out;
}

}  // namespace

std::vector<Token> tokenize(std::string_view text, bool quotedIdentifier) {
    return Lexer(text, quotedIdentifier).run();
}

std::string decodeToken(std::string_view text, const Token& token) {
    const std::string_view raw = text.substr(token.offset, token.length);
    switch (token.kind) {
        case TokenKind::String:
            return unquote(raw.substr(1, raw.size() - 2), raw.front(), true);
        case TokenKind::NationalString:
            return unquote(raw.substr(2, raw.size() - 3), '\'', true);
        case TokenKind::QuotedName:
            return unquote(raw.substr(1, raw.size() - 2), raw.back(), false);
        case TokenKind::Binary:
            return std::string(raw.substr(2));
        case TokenKind::Money:
            return moneyDigits(raw);
        default:
            return std::string(raw);
    }
}

}  // namespace magdb::tsql
