#pragma once

#include "tsql/Keywords.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace magdb::tsql {

enum class TokenKind : std::uint8_t {
    End,
    Word,        ///< unquoted name or keyword
    QuotedName,  ///< [x] or "x"
    Variable,
    GlobalVariable,
    Integer,
    Decimal,
    Float,
    Money,
    String,
    NationalString,
    Binary,
    LeftParen,
    RightParen,
    Comma,
    Dot,
    Semicolon,
    Colon,
    DoubleColon,
    Plus,
    Minus,
    Star,
    Slash,
    Percent,
    Ampersand,
    Bar,
    Caret,
    Tilde,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
    PlusEqual,
    MinusEqual,
    StarEqual,
    SlashEqual,
    PercentEqual,
    AmpersandEqual,
    BarEqual,
    CaretEqual,
};

/// A piece of the text. It points into the text and owns nothing.
struct Token {
    TokenKind kind = TokenKind::End;
    Keyword keyword = Keyword::None;  ///< of a Word
    std::uint32_t offset = 0;
    std::uint32_t length = 0;
    std::uint32_t line = 1;
};

/// Cuts a text into tokens; the last one is of kind End. Comments and blanks are gone. Throws SyntaxError
/// 102, 103, 105 or 113. quotedIdentifier as in ParseOptions.
[[nodiscard]] std::vector<Token> tokenize(std::string_view text, bool quotedIdentifier);

/// What a token says without its quotes, brackets and prefixes: the content of a string or a quoted name, the
/// digits of a binary or money literal, else the text itself.
[[nodiscard]] std::string decodeToken(std::string_view text, const Token& token);

}  // namespace magdb::tsql
