#include "magdb/tds/ClientBytes.h"
#include "tds/WireType.h"

#include <gtest/gtest.h>

namespace magdb::tds {
namespace {

using Data = std::vector<std::uint8_t>;

WireValue read(const Data& bytes) {
    ByteReader reader(bytes);
    WireValue value = readWireValue(reader);
    EXPECT_TRUE(reader.atEnd());
    return value;
}

Data written(const SqlType& type, const Value& value, Version version = Version::Tds74) {
    ByteWriter out;
    writeTypeInfo(out, type, version);
    writeValue(out, type, value, version);
    return out.data();
}

std::int64_t integer(const Data& bytes) {
    return std::get<std::int64_t>(read(bytes).value);
}

TEST(WireType, ReadsIntegersOfEveryWidth) {
    EXPECT_EQ(integer({0x26, 1, 1, 200}), 200);
    EXPECT_EQ(integer({0x26, 2, 2, 0xFE, 0xFF}), -2);
    EXPECT_EQ(integer({0x26, 4, 4, 0, 0, 0, 0x80}), INT32_MIN);
    EXPECT_EQ(integer({0x26, 8, 8, 0, 0, 0, 0, 0, 0, 0, 0x80}), INT64_MIN);
    EXPECT_EQ(integer({0x30, 255}), 255);
    EXPECT_EQ(integer({0x34, 1, 0}), 1);
    EXPECT_EQ(integer({0x38, 1, 0, 0, 0}), 1);
    EXPECT_EQ(integer({0x7F, 1, 0, 0, 0, 0, 0, 0, 0}), 1);
    EXPECT_EQ(integer({0x32, 7}), 1);
    EXPECT_EQ(integer({0x68, 1, 1, 1}), 1);
    EXPECT_EQ(read({0x26, 8, 0}).type.id, TypeId::BigInt);
    EXPECT_TRUE(isNull(read({0x26, 8, 0}).value));
}

TEST(WireType, ReadsFloats) {
    EXPECT_EQ(std::get<double>(read({0x6D, 4, 4, 0, 0, 0xC0, 0x3F}).value), 1.5);
    EXPECT_EQ(read({0x6D, 4, 4, 0, 0, 0xC0, 0x3F}).type.id, TypeId::Real);
    EXPECT_EQ(std::get<double>(read({0x3E, 0, 0, 0, 0, 0, 0, 4, 0xC0}).value), -2.5);
}

TEST(WireType, ReadsMoneyWithItsHighHalfFirst) {
    // 12.3456 and -0.0001
    EXPECT_EQ(std::get<DecimalValue>(read({0x6E, 8, 8, 0, 0, 0, 0, 0x40, 0xE2, 1, 0}).value),
              (DecimalValue{123456, 4}));
    EXPECT_EQ(std::get<DecimalValue>(read({0x6E, 4, 4, 0xFF, 0xFF, 0xFF, 0xFF}).value),
              (DecimalValue{-1, 4}));
}

TEST(WireType, ReadsDecimals) {
    const WireValue value = read({0x6C, 5, 9, 3, 5, 0, 0x39, 0x30, 0, 0});
    EXPECT_EQ(value.type, (SqlType{TypeId::Decimal, 0, 9, 3}));
    EXPECT_EQ(std::get<DecimalValue>(value.value), (DecimalValue{-12345, 3}));
}

TEST(WireType, ReadsDatesAtTheirEnds) {
    EXPECT_EQ(std::get<DateTimeValue>(read({0x28, 3, 0, 0, 0}).value), (DateTimeValue{-693595, 0}));
    EXPECT_EQ(std::get<DateTimeValue>(read({0x28, 3, 0xDA, 0xB9, 0x37}).value), (DateTimeValue{2958463, 0}));
    // smalldatetime: 1900-01-02 00:10
    EXPECT_EQ(std::get<DateTimeValue>(read({0x3A, 1, 0, 10, 0}).value), (DateTimeValue{1, 180000}));
}

TEST(WireType, ReadsDateTimes) {
    EXPECT_EQ(std::get<DateTimeValue>(read({0x6F, 8, 8, 0xFF, 0xFF, 0xFF, 0xFF, 0x2C, 1, 0, 0}).value),
              (DateTimeValue{-1, 300}));
    EXPECT_EQ(std::get<DateTimeValue>(read({0x6F, 4, 4, 2, 0, 1, 0}).value), (DateTimeValue{2, 18000}));
}

TEST(WireType, RoundsNewDateTimesToThoseOfTheEngine) {
    // 23:59:59.9999999 on 1900-01-01 becomes midnight of the next day.
    const std::int64_t time = 863'999'999'999;
    client::Build build;
    build.raw({0x2A, 7, 8}).u32(static_cast<std::uint32_t>(time)).u8(static_cast<unsigned>(time >> 32));
    build.raw({0x5B, 0x95, 0x0A});
    EXPECT_EQ(std::get<DateTimeValue>(read(build.bytes()).value), (DateTimeValue{1, 0}));
}

TEST(WireType, ReadsTextInItsEncodings) {
    const Data collation = {0x15, 0x04, 0xD0, 0, 0};
    client::Build wide;
    wide.raw({0xE7, 20, 0}).raw(collation).u16(4).text(u"łą");
    EXPECT_EQ(std::get<std::string>(read(wide.bytes()).value), "łą");
    EXPECT_EQ(read(wide.bytes()).type, (SqlType{TypeId::NVarChar, 10}));
    client::Build narrow;
    narrow.raw({0xA7, 10, 0}).raw(collation).u16(2).raw({0xB3, 0xB9});
    EXPECT_EQ(std::get<std::string>(read(narrow.bytes()).value), "łą");
    client::Build utf8;
    utf8.raw({0xA7, 10, 0, 0x15, 0x04, 0xD0, 0x04, 0}).u16(2).raw({0xC5, 0x82});
    EXPECT_EQ(std::get<std::string>(read(utf8.bytes()).value), "ł");
}

TEST(WireType, RefusesTextOfAnotherCodePageUnlessItIsPlain) {
    client::Build plain;
    plain.raw({0xA7, 10, 0, 0x09, 0x04, 0xD0, 0, 0x34}).u16(2).raw({'a', 'b'});
    EXPECT_EQ(std::get<std::string>(read(plain.bytes()).value), "ab");
    client::Build french;
    french.raw({0xA7, 10, 0, 0x09, 0x04, 0xD0, 0, 0x34}).u16(1).raw({0xE6});
    EXPECT_THROW(static_cast<void>(read(french.bytes())), RequestError);
}

TEST(WireType, ReadsMaxTypesInChunks) {
    client::Build build;
    build.raw({0xE7, 0xFF, 0xFF, 0x15, 0x04, 0xD0, 0, 0}).u64(6).u32(2).text(u"a").u32(4).text(u"bc").u32(0);
    const WireValue value = read(build.bytes());
    EXPECT_EQ(value.type, (SqlType{TypeId::NVarChar, -1}));
    EXPECT_EQ(std::get<std::string>(value.value), "abc");
    client::Build null;
    null.raw({0xA5, 0xFF, 0xFF}).u64(~std::uint64_t{0});
    EXPECT_TRUE(isNull(read(null.bytes()).value));
}

TEST(WireType, ReadsLongObjects) {
    client::Build build;
    build.raw({0x63}).u32(100).raw({0x15, 0x04, 0xD0, 0, 0}).u32(4).text(u"ńx");
    EXPECT_EQ(std::get<std::string>(read(build.bytes()).value), "ńx");
}

TEST(WireType, ReadsUniqueIdentifiers) {
    const WireValue value = read({0x24, 16, 16, 0xFF, 0x19, 0x96, 0x6F, 0x86, 0x8B, 0x11, 0xD0, 0xB4, 0x2D,
                                  0x00, 0xC0, 0x4F, 0xC9, 0x64, 0xFF});
    EXPECT_EQ(std::get<std::string>(value.value), "6F9619FF-8B86-D011-B42D-00C04FC964FF");
}

TEST(WireType, RefusesWhatItCannotServe) {
    const Data broken[] = {
        {0xF1, 0},                                         // xml
        {0x62, 1, 0, 0, 0},                                // sql_variant
        {0xF3, 0, 0},                                      // table
        {0x29, 7, 5, 0, 0, 0, 0, 0},                       // time
        {0x2B, 7, 10},                                     // datetimeoffset
        {0x26, 3, 3, 0, 0, 0},                             // integer of three bytes
        {0x26, 4, 8, 0, 0, 0, 0, 0, 0, 0, 0},              // longer than declared
        {0x6C, 17, 39, 0, 0},                              // too precise
        {0x6C, 5, 2, 5, 0},                                // scale above precision
        {0x6C, 5, 2, 0, 5, 1, 100, 0, 0, 0},               // more digits than declared
        {0x6F, 8, 8, 0, 0, 0, 0, 0, 0, 0, 0x7F},           // after midnight
        {0x6F, 8, 8, 0, 0, 0, 0x80, 0, 0, 0, 0},           // before 1753
        {0x28, 3, 0xFF, 0xFF, 0xFF},                       // after 9999
        {0x6D, 8, 8, 0, 0, 0, 0, 0, 0, 0xF0, 0x7F},        // infinite
        {0x6D, 8, 3, 0, 0, 0},                             // float of three bytes
        {0xE7, 4, 0, 0x15, 4, 0xD0, 0, 0, 3, 0, 1, 2, 3},  // half a character
        {0xE7, 2, 0, 0x15, 4, 0xD0, 0, 0, 4, 0, 1, 2, 3, 4},
        {0x24, 16, 15},
    };
    for (const Data& bytes : broken) {
        ByteReader reader(bytes);
        EXPECT_THROW(static_cast<void>(readWireValue(reader)), RequestError) << int{bytes[0]};
    }
}

TEST(WireType, ReadsBackWhatItWrites) {
    struct Case {
        SqlType type;
        Value value;
    };
    const Case cases[] = {
        {{TypeId::Bit}, std::int64_t{1}},
        {{TypeId::TinyInt}, std::int64_t{255}},
        {{TypeId::SmallInt}, std::int64_t{-32768}},
        {{TypeId::Int}, std::int64_t{INT32_MAX}},
        {{TypeId::BigInt}, std::int64_t{INT64_MIN}},
        {{TypeId::Money}, DecimalValue{-9223372036854775807, 4}},
        {{TypeId::Decimal, 0, 38, 10}, DecimalValue{__extension__(__int128{1} << 120), 10}},
        {{TypeId::Decimal, 0, 18, 4}, DecimalValue{-1, 4}},
        {{TypeId::Real}, 0.25},
        {{TypeId::Float}, -1e300},
        {{TypeId::Date}, DateTimeValue{-693595, 0}},
        {{TypeId::DateTime}, DateTimeValue{2958463, 25919999}},
        {{TypeId::UniqueIdentifier}, std::string("6F9619FF-8B86-D011-B42D-00C04FC964FF")},
        {{TypeId::VarBinary, 5}, Bytes{0, 1, 255}},
        {{TypeId::VarBinary, -1}, Bytes(10'000, 7)},
        {{TypeId::Char, 4}, std::string("żółw")},
        {{TypeId::VarChar, 8000}, std::string("gęś")},
        {{TypeId::VarChar, -1}, std::string("gęś")},
        {{TypeId::NChar, 3}, std::string("日ł!")},
        {{TypeId::NVarChar, 4000}, std::string("")},
        {{TypeId::NVarChar, -1}, std::string("")},
    };
    for (const Case& entry : cases) {
        const WireValue back = read(written(entry.type, entry.value));
        EXPECT_EQ(back.type.id, entry.type.id) << typeName(entry.type);
        EXPECT_EQ(back.type.length, entry.type.length) << typeName(entry.type);
        EXPECT_EQ(back.value, entry.value) << typeName(entry.type);
        EXPECT_TRUE(isNull(read(written(entry.type, {})).value)) << typeName(entry.type);
    }
}

TEST(WireType, PadsCharToItsLength) {
    EXPECT_EQ(std::get<std::string>(read(written({TypeId::Char, 4}, std::string("ó"))).value), "ó   ");
    EXPECT_EQ(std::get<std::string>(read(written({TypeId::NChar, 3}, std::string("ó"))).value), "ó  ");
}

TEST(WireType, FitsExactNumbersToTheScaleOfTheirColumn) {
    EXPECT_EQ(std::get<DecimalValue>(read(written({TypeId::Decimal, 0, 9, 3}, DecimalValue{125, 1})).value),
              (DecimalValue{12500, 3}));
    EXPECT_EQ(std::get<DecimalValue>(read(written({TypeId::Decimal, 0, 9, 1}, DecimalValue{-1250, 3})).value),
              (DecimalValue{-13, 1}));
    EXPECT_EQ(std::get<DecimalValue>(read(written({TypeId::Decimal, 0, 9, 2}, std::int64_t{3})).value),
              (DecimalValue{300, 2}));
}

TEST(WireType, SendsOlderClientsTheTypesTheyKnow) {
    const WireValue date = read(written({TypeId::Date}, DateTimeValue{45349, 0}, Version::Tds72));
    EXPECT_EQ(date.type, (SqlType{TypeId::NVarChar, 10}));
    EXPECT_EQ(std::get<std::string>(date.value), "2024-02-29");
    EXPECT_EQ(
        std::get<std::string>(read(written({TypeId::Date}, DateTimeValue{-693595, 0}, Version::Tds71)).value),
        "0001-01-01");
    EXPECT_EQ(
        std::get<std::string>(read(written({TypeId::Date}, DateTimeValue{2958463, 0}, Version::Tds71)).value),
        "9999-12-31");
    // ntext: type, size, collation; then in a row a pointer of 16 bytes, 8 of a time stamp, length, text.
    const Data text = written({TypeId::NVarChar, -1}, std::string("a"), Version::Tds71);
    EXPECT_EQ(text[0], 0x63);
    ASSERT_EQ(text.size(), 1U + 4 + 5 + 1 + 16 + 8 + 4 + 2);
    EXPECT_EQ(text[10], 16);
    EXPECT_EQ(text[35], 2);
    EXPECT_EQ(text[39], 'a');
    EXPECT_EQ(written({TypeId::NVarChar, -1}, {}, Version::Tds71).back(), 0);
}

TEST(WireType, RefusesToWriteWhatDoesNotFit) {
    ByteWriter out;
    const auto write = [&](const SqlType& type, const Value& value) {
        writeValue(out, type, value, Version::Tds74);
    };
    EXPECT_THROW(write({TypeId::TinyInt}, std::int64_t{256}), RequestError);
    EXPECT_THROW(write({TypeId::Int}, std::int64_t{1} << 31), RequestError);
    EXPECT_THROW(write({TypeId::Int}, std::string("1")), RequestError);
    EXPECT_THROW(write({TypeId::VarChar, 2}, std::string("abc")), RequestError);
    EXPECT_THROW(write({TypeId::Decimal, 0, 9, 0}, DecimalValue{std::int64_t{1} << 40, 0}), RequestError);
    EXPECT_THROW(write({TypeId::DateTime}, std::int64_t{1}), RequestError);
    EXPECT_THROW(write({TypeId::UniqueIdentifier}, std::string("6F96")), RequestError);
}

}  // namespace
}  // namespace magdb::tds
