#include "tds/ByteWriter.h"

#include <gtest/gtest.h>

namespace magdb::tds {
namespace {

using Data = std::vector<std::uint8_t>;

TEST(ByteWriter, WritesNumbersLittleEndian) {
    ByteWriter out;
    out.u16(0x1234);
    out.u32(0x01020304);
    out.i32(-2);
    EXPECT_EQ(out.data(), (Data{0x34, 0x12, 4, 3, 2, 1, 0xFE, 0xFF, 0xFF, 0xFF}));
}

TEST(ByteWriter, FillsLengthsInWhenTheyCloseAndNests) {
    ByteWriter out;
    {
        const LengthAhead<std::uint16_t> outer(out);
        out.u8(9);
        {
            const LengthAhead<std::uint32_t> inner(out);
            out.u16(7);
        }
    }
    EXPECT_EQ(out.data(), (Data{7, 0, 9, 2, 0, 0, 0, 7, 0}));
}

TEST(ByteWriter, CountsTextInUtf16Units) {
    ByteWriter out;
    out.shortText("ł\xF0\x9F\x99\x82");
    EXPECT_EQ(out.data(), (Data{3, 0x42, 0x01, 0x3D, 0xD8, 0x42, 0xDE}));
}

TEST(ByteWriter, CutsTextAtWhatItsLengthCanTell) {
    ByteWriter out;
    out.shortText(std::string(300, 'x'));
    EXPECT_EQ(out.size(), 1U + 2 * 255);
    EXPECT_EQ(out.data()[0], 255);
}

}  // namespace
}  // namespace magdb::tds
