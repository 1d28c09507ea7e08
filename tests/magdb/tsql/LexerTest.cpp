#include "tsql/Lexer.h"
#include "tsql/Parser.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace magdb::tsql;

/// The decoded tokens of a text, joined by "|".
std::string tokens(std::string_view text, bool quotedIdentifier = true) {
    std::string out;
    for (const Token& token : tokenize(text, quotedIdentifier)) {
        if (token.kind != TokenKind::End)
            out += (out.empty() ? "" : "|") + decodeToken(text, token);
    }
    return out;
}

std::vector<TokenKind> kinds(std::string_view text, bool quotedIdentifier = true) {
    std::vector<TokenKind> out;
    for (const Token& token : tokenize(text, quotedIdentifier))
        out.push_back(token.kind);
    return out;
}

TEST(Lexer, HalvesDoubledQuotesOfEveryKind) {
    EXPECT_EQ(tokens("'it''s' N'ż''' [a]]b] \"c\"\"d\""), "it's|ż'|a]b|c\"d");
}

TEST(Lexer, TakesDoubleQuotesAsStringsWhenTheOptionSaysSo) {
    using K = TokenKind;
    EXPECT_EQ(kinds("\"x\"", true), (std::vector<K>{K::QuotedName, K::End}));
    EXPECT_EQ(kinds("\"x\"", false), (std::vector<K>{K::String, K::End}));
    EXPECT_EQ(tokens("\"it's\"", false), "it's");
}

TEST(Lexer, RemovesABackslashAtTheEndOfALineInStrings) {
    EXPECT_EQ(tokens("'ab\\\ncd' 'ef\\\r\ngh' 'i\\j'"), "abcd|efgh|i\\j");
}

TEST(Lexer, SkipsNestedCommentsAndLineComments) {
    EXPECT_EQ(tokens("a /* b /* c */ d */ e -- f\ng --"), "a|e|g");
}

TEST(Lexer, TellsTheNumbersApart) {
    using K = TokenKind;
    EXPECT_EQ(kinds("1 1. .5 1.5 1e5 1.5E-3 1e 0xAf 0x $1,234.50 € £3"),
              (std::vector<K>{K::Integer, K::Decimal, K::Decimal, K::Decimal, K::Float, K::Float, K::Float,
                              K::Binary, K::Binary, K::Money, K::Money, K::Money, K::End}));
    EXPECT_EQ(tokens("0xAf $1,234.50 €"), "Af|1234.50|0");
}

TEST(Lexer, EndsANumberWhereANameBegins) {
    EXPECT_EQ(tokens("12ab"), "12|ab");
}

TEST(Lexer, CountsLinesAlsoInsideStringsAndComments) {
    const auto list = tokenize("a\n/* x\n */ 'y\nz'\r\nb", true);
    ASSERT_EQ(list.size(), 4U);
    EXPECT_EQ(list[0].line, 1U);
    EXPECT_EQ(list[1].line, 3U);
    EXPECT_EQ(list[2].line, 5U);
}

TEST(Lexer, ReadsNamesWithPolishLettersAndSigns) {
    EXPECT_EQ(tokens("łódź_1#@$ #t ##T @zmienna @@SPID"), "łódź_1#@$|#t|##T|@zmienna|@@SPID");
}

TEST(Lexer, TakesNoBreakSpaceAndByteOrderMarkAsBlanks) {
    EXPECT_EQ(tokens("\xEF\xBB\xBFSELECT\xC2\xA0"
                     "1"),
              "SELECT|1");
}

TEST(Lexer, KnowsEverySpellingOfComparisons) {
    using K = TokenKind;
    EXPECT_EQ(kinds("= <> != < <= !> > >= !<"),
              (std::vector<K>{K::Equal, K::NotEqual, K::NotEqual, K::Less, K::LessEqual, K::LessEqual,
                              K::Greater, K::GreaterEqual, K::GreaterEqual, K::End}));
}

TEST(Lexer, FindsKeywordsWhateverTheirCase) {
    EXPECT_EQ(findKeyword("SeLeCt"), Keyword::Select);
    EXPECT_EQ(findKeyword("selects"), Keyword::None);
    EXPECT_TRUE(isReserved(findKeyword("writetext")));
    EXPECT_FALSE(isReserved(findKeyword("throw")));
    EXPECT_FALSE(isReserved(Keyword::None));
}

struct LexerError {
    const char* text;
    int number;
    std::uint32_t line;
    const char* message;
};

class LexerErrors : public testing::TestWithParam<LexerError> {};

TEST_P(LexerErrors, CarryNumberAndLine) {
    try {
        (void)tokenize(GetParam().text, true);
        FAIL() << "no error";
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.number, GetParam().number);
        EXPECT_EQ(error.line, GetParam().line);
        EXPECT_STREQ(error.what(), GetParam().message);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Texts, LexerErrors,
    testing::Values(LexerError{"a\n'x", 105, 2, "Unclosed quotation mark after the character string 'x'."},
                    LexerError{"'x''", 105, 1, "Unclosed quotation mark after the character string 'x'''."},
                    LexerError{"[x", 105, 1, "Unclosed quotation mark after the character string 'x'."},
                    LexerError{"\n\n/* /* */", 113, 3, "Missing end comment mark '*/'."},
                    LexerError{"a ! b", 102, 1, "Incorrect syntax near '!'."},
                    LexerError{"a\n?", 102, 2, "Incorrect syntax near '?'."},
                    LexerError{"@", 102, 1, "Incorrect syntax near '@'."}));

TEST(Lexer, RefusesNamesLongerThan128Characters) {
    const std::string letter = "ż";
    std::string name;
    for (int i = 0; i < 128; ++i)
        name += letter;
    EXPECT_NO_THROW((void)tokenize(name, true));
    EXPECT_NO_THROW((void)tokenize("[" + name + "]", true));
    try {
        (void)tokenize("[" + name + "x]", true);
        FAIL() << "no error";
    } catch (const SyntaxError& error) {
        EXPECT_EQ(error.number, 103);
        EXPECT_EQ(error.what(),
                  "The identifier that starts with '" + name + "' is too long. Maximum length is 128.");
    }
}

}  // namespace
