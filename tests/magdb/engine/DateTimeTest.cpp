#include "engine/DateTime.h"

#include <gtest/gtest.h>

using namespace magdb;

namespace {

std::string read(std::string_view text, DateOrder order = DateOrder::Mdy) {
    DateTimeValue value;
    switch (parseDateTime(text, order, value)) {
        case DateFault::Syntax:
            return "syntax";
        case DateFault::Range:
            return "range";
        case DateFault::None:
            break;
    }
    return *formatDateTime(value, 121);
}

DateTimeValue at(std::string_view text) {
    DateTimeValue value;
    EXPECT_EQ(parseDateTime(text, DateOrder::Ymd, value), DateFault::None) << text;
    return value;
}

TEST(DateTime, DaysAndDatesAgreeOverTheWholeRange) {
    for (std::int32_t days = -53690; days <= 2958463; days += 97) {
        EXPECT_EQ(daysFromCivil(civilFromDays(days)), days);
    }
    EXPECT_EQ(daysFromCivil({1900, 1, 1}), 0);
    EXPECT_EQ(daysFromCivil({1753, 1, 1}), -53690);
    EXPECT_EQ(daysFromCivil({9999, 12, 31}), 2958463);
    EXPECT_EQ(daysFromCivil({2000, 2, 29}) + 1, daysFromCivil({2000, 3, 1}));
}

TEST(DateTime, ReadsTheFormsOfTheLanguage) {
    EXPECT_EQ(read("20240229"), "2024-02-29 00:00:00.000");
    EXPECT_EQ(read("2024-02-29T13:45:10.123"), "2024-02-29 13:45:10.123");
    EXPECT_EQ(read("2024-02-29 13:45"), "2024-02-29 13:45:00.000");
    EXPECT_EQ(read("02/29/2024 1:45PM"), "2024-02-29 13:45:00.000");
    EXPECT_EQ(read("29.02.2024", DateOrder::Dmy), "2024-02-29 00:00:00.000");
    EXPECT_EQ(read("Feb 29 2024 12:05AM"), "2024-02-29 00:05:00.000");
    EXPECT_EQ(read("29 February 2024"), "2024-02-29 00:00:00.000");
    EXPECT_EQ(read("12:30:15"), "1900-01-01 12:30:15.000");
    EXPECT_EQ(read(""), "1900-01-01 00:00:00.000");
    EXPECT_EQ(read("491231"), "2049-12-31 00:00:00.000");
    EXPECT_EQ(read("500101"), "1950-01-01 00:00:00.000");
}

TEST(DateTime, TellsWrongFormsFromImpossibleDates) {
    EXPECT_EQ(read("20240230"), "range");
    EXPECT_EQ(read("2024-13-01"), "range");
    EXPECT_EQ(read("2024-01-01 24:00"), "range");
    EXPECT_EQ(read("29/02/2024"), "range");
    EXPECT_EQ(read("tomorrow"), "syntax");
    EXPECT_EQ(read("2024-01"), "syntax");
    EXPECT_EQ(read("1:2:3:4:5"), "syntax");
}

// Milliseconds end in 0, 3 or 7.
TEST(DateTime, KeepsThreeHundredthsOfASecond) {
    EXPECT_EQ(read("20240101 23:59:59.994"), "2024-01-01 23:59:59.993");
    EXPECT_EQ(read("20240101 23:59:59.995"), "2024-01-01 23:59:59.997");
    EXPECT_EQ(read("20240101 23:59:59.999"), "2024-01-02 00:00:00.000");
    EXPECT_EQ(read("20240101 00:00:00.001"), "2024-01-01 00:00:00.000");
    EXPECT_EQ(read("20240101 00:00:00.002"), "2024-01-01 00:00:00.003");
}

TEST(DateTime, WritesTheStylesOfConvert) {
    const DateTimeValue value = at("2024-03-05 14:07:09.123");
    const std::pair<int, const char*> kStyles[] = {{0, "Mar  5 2024  2:07PM"},
                                                   {1, "03/05/24"},
                                                   {101, "03/05/2024"},
                                                   {102, "2024.03.05"},
                                                   {103, "05/03/2024"},
                                                   {104, "05.03.2024"},
                                                   {105, "05-03-2024"},
                                                   {106, "05 Mar 2024"},
                                                   {107, "Mar 05, 2024"},
                                                   {108, "14:07:09"},
                                                   {109, "Mar  5 2024  2:07:09:123PM"},
                                                   {110, "03-05-2024"},
                                                   {111, "2024/03/05"},
                                                   {112, "20240305"},
                                                   {113, "05 Mar 2024 14:07:09:123"},
                                                   {114, "14:07:09:123"},
                                                   {120, "2024-03-05 14:07:09"},
                                                   {121, "2024-03-05 14:07:09.123"},
                                                   {126, "2024-03-05T14:07:09.123"}};
    for (const auto& [style, text] : kStyles) {
        EXPECT_EQ(formatDateTime(value, style).value_or("none"), text) << style;
    }
    EXPECT_FALSE(formatDateTime(value, 77));
}

TEST(DateTime, AddsPartsAndClipsMonths) {
    EXPECT_EQ(*formatDateTime(*addPart(DatePart::Month, 1, at("20240131")), 112), "20240229");
    EXPECT_EQ(*formatDateTime(*addPart(DatePart::Year, -1, at("20240229")), 112), "20230228");
    EXPECT_EQ(*formatDateTime(*addPart(DatePart::Quarter, 2, at("20241130")), 112), "20250530");
    EXPECT_EQ(*formatDateTime(*addPart(DatePart::Hour, -1, at("20240101")), 120), "2023-12-31 23:00:00");
    EXPECT_FALSE(addPart(DatePart::Year, 9000, at("20240101")));
    EXPECT_FALSE(addPart(DatePart::Day, INT32_MAX, at("20240101")));
}

TEST(DateTime, CountsBoundariesCrossed) {
    EXPECT_EQ(partsBetween(DatePart::Year, at("20231231"), at("20240101")), 1);
    EXPECT_EQ(partsBetween(DatePart::Day, at("20240101 23:59"), at("20240102 00:01")), 1);
    EXPECT_EQ(partsBetween(DatePart::Hour, at("20240101 10:59"), at("20240101 11:01")), 1);
    EXPECT_EQ(partsBetween(DatePart::Month, at("20240301"), at("20240101")), -2);
    // Sunday begins the week.
    EXPECT_EQ(partsBetween(DatePart::Week, at("20240106"), at("20240107")), 1);
    EXPECT_EQ(partsBetween(DatePart::Week, at("20240107"), at("20240113")), 0);
    EXPECT_EQ(partsBetween(DatePart::Minute, at("18991231 23:59"), at("19000101 00:01")), 2);
}

TEST(DateTime, TakesPartsOut) {
    EXPECT_EQ(partOf(DatePart::Weekday, at("20240107"), 7), 1);  // Sunday
    EXPECT_EQ(partOf(DatePart::Weekday, at("20240107"), 1), 7);
    EXPECT_EQ(partOf(DatePart::IsoWeek, at("20210101"), 7), 53);
    EXPECT_EQ(partOf(DatePart::IsoWeek, at("20241230"), 7), 1);
    EXPECT_EQ(partOf(DatePart::Week, at("20240101"), 7), 1);
    EXPECT_EQ(partOf(DatePart::Week, at("20240107"), 7), 2);
    EXPECT_EQ(partOf(DatePart::DayOfYear, at("20241231"), 7), 366);
    EXPECT_EQ(partOf(DatePart::Quarter, at("20241001"), 7), 4);
    EXPECT_EQ(partName(DatePart::Month, at("20240301"), 7), "March");
    EXPECT_EQ(partName(DatePart::Weekday, at("20240229"), 7), "Thursday");
}

}  // namespace
