#include "engine/Collation.h"
#include "engine/Convert.h"
#include "engine/Like.h"
#include "engine/Password.h"
#include "engine/Text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace magdb;

namespace {

TEST(Collation, IgnoresCaseAndBlanksAtTheEndButNotAccents) {
    EXPECT_EQ(collate("ABC", "abc  "), 0);
    EXPECT_EQ(collate("ŁÓDŹ", "łódź"), 0);
    EXPECT_NE(collate("lodz", "łódź"), 0);
    EXPECT_NE(collate("a", "ą"), 0);
    EXPECT_NE(collate(" a", "a"), 0);
    EXPECT_EQ(collate("", "   "), 0);
    EXPECT_NE(collateCase("a", "A"), 0);
    EXPECT_NE(collateBinary("a", "A"), 0);
}

TEST(Collation, FollowsThePolishAlphabet) {
    std::vector<std::string> words = {"żaba", "źrebię", "zebra",  "Łukasz", "lampa",
                                      "łza",  "ćma",    "cebula", "ąż",     "azot"};
    std::sort(words.begin(), words.end(), [](const auto& a, const auto& b) { return collate(a, b) < 0; });
    EXPECT_EQ(words, (std::vector<std::string>{"azot", "ąż", "cebula", "ćma", "lampa", "Łukasz", "łza",
                                               "zebra", "źrebię", "żaba"}));
}

// The quick way for ASCII must give the order of the full rules.
TEST(Collation, OrdersAsciiAsTheFullRulesDo) {
    std::vector<std::string> texts;
    for (char c = ' '; c < 0x7F; ++c) {
        texts.emplace_back(1, c);
        texts.push_back(std::string("a") + c + "b");
    }
    for (const std::string& a : texts) {
        for (const std::string& b : texts) {
            // A letter from outside ASCII in front of both sends the comparison through the rules.
            const int full = collate("ż" + a, "ż" + b);
            const int quick = collate("z" + a, "z" + b);
            EXPECT_EQ(full < 0, quick < 0) << a << " / " << b;
            EXPECT_EQ(full == 0, quick == 0) << a << " / " << b;
        }
    }
}

TEST(Text, SeesALetterOutsideAsciiAtEveryPlaceOfALongText) {
    for (std::size_t length : {1U, 63U, 64U, 65U, 200U}) {
        const std::string plain(length, 'a');
        EXPECT_TRUE(isAscii(plain));
        for (std::size_t at = 0; at < length; ++at) {
            std::string mixed = plain;
            mixed.replace(at, 1, "ł");
            const auto size = static_cast<std::int64_t>(length);
            EXPECT_FALSE(isAscii(mixed));
            EXPECT_EQ(utf16Length(mixed), size);
            EXPECT_EQ(substringUnits(mixed, static_cast<std::int64_t>(at), size), "ł" + plain.substr(at + 1));
            EXPECT_EQ(substringUnits(mixed, 0, static_cast<std::int64_t>(at)), plain.substr(0, at));
        }
    }
}

TEST(Text, CountsUtf16Units) {
    EXPECT_EQ(utf16Length("Półka"), 5);
    EXPECT_EQ(utf16Length("a😀"), 3);
    EXPECT_EQ(substringUnits("Półka", 1, 2), "ół");
    EXPECT_EQ(substringUnits("abc", -1, 3), "ab");
    EXPECT_EQ(substringUnits("abc", 5, 3), "");
    EXPECT_EQ(substringUnits("a😀b", 1, 2), "😀");
    EXPECT_EQ(toUtf8(toUtf16("zażółć 😀")), "zażółć 😀");
}

TEST(Text, CodePageKeepsPolishAndLosesTheRest) {
    EXPECT_EQ(toCodePage("zażółć gęślą jaźń €"), "zażółć gęślą jaźń €");
    EXPECT_EQ(toCodePage("日本"), "??");
    EXPECT_EQ(codePageCode("ł"), 0xB3);
    EXPECT_EQ(codePageChar(0xA5), "Ą");
}

struct LikeCase {
    const char* value;
    const char* pattern;
    bool matches;
};

TEST(Like, MatchesAsTheLanguageSays) {
    const LikeCase kCases[] = {
        {"abc", "abc", true},     {"abc", "ABC", true},
        {"abc", "a%", true},      {"abc", "%c", true},
        {"abc", "a_c", true},     {"abc", "_b", false},
        {"abc", "[a-c]bc", true}, {"abc", "[^a]bc", false},
        {"abc", "[^x]bc", true},  {"a%c", "a[%]c", true},
        {"abc", "a[%]c", false},  {"a-c", "a[-x]c", true},
        {"", "%", true},          {"", "_", false},
        {"abc", "", false},       {"abc", "%%%", true},
        {"łódka", "Ł%", true},    {"lodka", "ł%", false},
        {"a]c", "a]c", true},     {"5", "[0-9]", true},
        {"aXbXc", "a%x%c", true}, {"abc", "[ab", false},
        {"1_1_2", "%[_]2", true}, {"aaaaaaaaaaaaaaaaaaaaaaaaaaaab", "%a%a%a%a%a%a%a%c", false}};
    for (const LikeCase& one : kCases) {
        EXPECT_EQ(LikePattern(one.pattern, std::nullopt, true).matches(one.value), one.matches)
            << one.value << " LIKE " << one.pattern;
    }
    EXPECT_TRUE(LikePattern("10!%", U'!', true).matches("10%"));
    EXPECT_FALSE(LikePattern("10!%", U'!', true).matches("10x"));
    EXPECT_EQ(LikePattern("%[0-9]%", std::nullopt, true).find("abc5"), 4);
    EXPECT_EQ(LikePattern("%ó%", std::nullopt, true).find("PÓŁKA"), 2);
}

std::string hex(const Bytes& bytes) {
    return toHex(bytes);
}

Bytes bytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

// The vectors of FIPS 180-4 and of RFC 7914, section 11.
TEST(Password, HashesAgreeWithThePublishedVectors) {
    EXPECT_EQ(hex(sha256(bytesOf("abc"))),
              "BA7816BF8F01CFEA414140DE5DAE2223B00361A396177A9CB410FF61F20015AD");
    EXPECT_EQ(hex(sha256(bytesOf("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"))),
              "248D6A61D20638B8E5C026930C3E6039A33CE45964FF2167F6ECEDD419DB06C1");
    EXPECT_EQ(hex(deriveKey("passwd", bytesOf("salt"), 1)),
              "55AC046E56E3089FEC1691C22544B605F94185216DDE0465E68B9D57C20DACBC");
    EXPECT_EQ(hex(deriveKey("Password", bytesOf("NaCl"), 80000)),
              "4DDCD8F60B98BE21830CEE5EF22701F9641A4418D04C0414AEFF08876B34AB56");
    // A key of more than one block is hashed first; by Python's hashlib.
    EXPECT_EQ(hex(deriveKey(std::string(80, 'x'), bytesOf("salt"), 2)),
              "6E9B06A8E25BB1D0FE2639ACA59AE98D7B7A71445E557C5CD72C2DAAAFFC54C6");
}

TEST(Password, OnlyTheRightOneVerifies) {
    const PasswordHash hash = hashPassword("Magazyn");
    EXPECT_TRUE(verifyPassword("Magazyn", hash));
    EXPECT_FALSE(verifyPassword("magazyn", hash));
    EXPECT_FALSE(verifyPassword("", hash));
    EXPECT_FALSE(verifyPassword("", PasswordHash()));
    EXPECT_NE(hex(hash.hash), hex(hashPassword("Magazyn").hash));
}

}  // namespace
