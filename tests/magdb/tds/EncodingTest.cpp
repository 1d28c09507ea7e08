#include "tds/Encoding.h"

#include <gtest/gtest.h>
#include <unicode/ucnv.h>
#include <unicode/ustring.h>

#include <string>

namespace magdb::tds {
namespace {

std::string utf8(char32_t point) {
    std::string out;
    UChar units[2];
    int32_t length = 0;
    U16_APPEND_UNSAFE(units, length, static_cast<UChar32>(point));
    char text[8];
    UErrorCode error = U_ZERO_ERROR;
    int32_t written = 0;
    u_strToUTF8(text, sizeof text, &written, units, length, &error);
    return {text, static_cast<std::size_t>(written)};
}

TEST(Encoding, ReadsWindows1250AsIcuDoes) {
    UErrorCode error = U_ZERO_ERROR;
    UConverter* converter = ucnv_open("windows-1250", &error);
    ASSERT_TRUE(U_SUCCESS(error));
    for (int code = 0; code < 256; ++code) {
        const auto byte = static_cast<std::uint8_t>(code);
        const char source = static_cast<char>(byte);
        UChar expected[4];
        error = U_ZERO_ERROR;
        const int32_t length = ucnv_toUChars(converter, expected, 4, &source, 1, &error);
        ASSERT_EQ(length, 1);
        const std::string text = fromWindows1250(std::span(&byte, 1));
        EXPECT_EQ(text, utf8(expected[0])) << code;
        std::vector<std::uint8_t> back;
        appendWindows1250(text, back);
        EXPECT_EQ(back, std::vector<std::uint8_t>{byte}) << code;
    }
    ucnv_close(converter);
}

TEST(Encoding, WritesAQuestionMarkForWhatTheCodePageLacks) {
    std::vector<std::uint8_t> out;
    appendWindows1250("aЖñ日z", out);
    EXPECT_EQ(std::string(out.begin(), out.end()), "a???z");
}

TEST(Encoding, CarriesEveryPlaneThroughUtf16) {
    for (const char32_t point : {U'A', U'ł', U'日', U'\U0001F642', U'\U0010FFFF', U'\uFFFF', U'\u0800'}) {
        std::vector<std::uint8_t> wide;
        appendUtf16(utf8(point), wide);
        EXPECT_EQ(fromUtf16(wide), utf8(point));
    }
}

TEST(Encoding, ReplacesLoneSurrogates) {
    const std::uint8_t bytes[] = {0x3D, 0xD8, 'a', 0, 0x42, 0xDE};
    EXPECT_EQ(fromUtf16(bytes), "\uFFFDa\uFFFD");
}

TEST(Encoding, ReplacesBrokenUtf8) {
    for (const char* text : {"\xC0\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80", "\xE5\xBC", "\xFF"}) {
        std::vector<std::uint8_t> out;
        appendUtf16(text, out);
        ASSERT_GE(out.size(), 2U);
        EXPECT_EQ(out[0], 0xFD);
        EXPECT_EQ(out[1], 0xFF);
    }
}

}  // namespace
}  // namespace magdb::tds
