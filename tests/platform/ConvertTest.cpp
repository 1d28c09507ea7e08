#include "Failing.h"
#include "platform/Convert.h"

#include <QLocale>

#include <gtest/gtest.h>

using namespace regalon;
using regalon::test::failureOf;

namespace {

QString text(const char* utf8) {
    return QString::fromUtf8(utf8);
}

TEST(Convert, PolishNumbersAreNumeric) {
    for (const char* good : {"12,5", "0", "-3", "+3", "  7  ", "1 000", "1\u00A0000,25", "1E3", "1e-3",
                             "-1,5E+2", ",5", "5,", "00012", "1 000 000"})
        EXPECT_TRUE(IsNumeric(text(good))) << good;
}

TEST(Convert, OtherTextsAreNotNumeric) {
    for (const char* bad :
         {"",       " ",        "abc", "12.5", "1,2,3", "--1",     "- 1",   "1e",  "1e+", ",",  "e3",
          "1  000", "1 000 ,5", "\t1", "1\n",  "0x10",  "\u00A01", "1,5 0", "NaN", "inf", "1-", "١٢"})
        EXPECT_FALSE(IsNumeric(text(bad))) << bad;
}

TEST(Convert, NumbersOfAnyTypeAreNumericButNullIsNot) {
    EXPECT_TRUE(IsNumeric(QVariant(5)));
    EXPECT_TRUE(IsNumeric(QVariant(5.5)));
    EXPECT_TRUE(IsNumeric(QVariant(qlonglong{1} << 40)));
    EXPECT_TRUE(IsNumeric(QVariant(text("5"))));
    EXPECT_FALSE(IsNumeric(QVariant()));
    EXPECT_FALSE(IsNumeric(QVariant(QDateTime::currentDateTime())));
    EXPECT_FALSE(IsNumeric(QVariant(QByteArray("5"))));
}

TEST(Convert, TextReadsByTheDecimalComma) {
    EXPECT_EQ(ToDouble(text("12,5")), 12.5);
    EXPECT_EQ(ToDouble(text(" -1\u00A0234,5e-1 ")), -123.45);
    EXPECT_EQ(ToDouble(text(",25")), 0.25);
    EXPECT_EQ(ToDouble(text("7,")), 7.0);
    EXPECT_EQ(failureOf([] { ToDouble(text("12.5")); }), RunTime::TypeMismatch);
    EXPECT_EQ(failureOf([] { ToDouble(QString()); }), RunTime::TypeMismatch);
}

TEST(Convert, HalvesRoundToTheEvenNeighbour) {
    EXPECT_EQ(ToInt16(0.5), 0);
    EXPECT_EQ(ToInt16(1.5), 2);
    EXPECT_EQ(ToInt16(2.5), 2);
    EXPECT_EQ(ToInt16(-2.5), -2);
    EXPECT_EQ(ToInt16(-3.5), -4);
    EXPECT_EQ(ToInt32(text("2,5")), 2);
    EXPECT_EQ(ToInt32(text("3,5")), 4);
    EXPECT_EQ(ToInt32(text("2,51")), 3);
}

TEST(Convert, ValuesOutOfRangeOverflow) {
    EXPECT_EQ(ToInt16(32767.49), 32767);
    EXPECT_EQ(ToInt16(-32768.5), -32768);
    EXPECT_EQ(failureOf([] { ToInt16(32767.5); }), RunTime::Overflow);
    EXPECT_EQ(failureOf([] { ToInt16(text("-32769")); }), RunTime::Overflow);
    EXPECT_EQ(ToInt32(text("2147483647")), 2147483647);
    EXPECT_EQ(failureOf([] { ToInt32(text("2147483648")); }), RunTime::Overflow);
    EXPECT_EQ(failureOf([] { ToInt32(QVariant(qlonglong{1} << 40)); }), RunTime::Overflow);
    EXPECT_EQ(failureOf([] { ToDouble(text("1e400")); }), RunTime::Overflow);
    EXPECT_EQ(failureOf([] { ToDouble(text("1e99999")); }), RunTime::Overflow);
    EXPECT_EQ(ToDouble(text("1e-400")), 0.0);
    EXPECT_EQ(ToDouble(text("1e-99999")), 0.0);
}

TEST(Convert, NullAndOtherTypesFailByTheirNumbers) {
    EXPECT_EQ(failureOf([] { ToInt16(QVariant()); }), RunTime::InvalidUseOfNull);
    EXPECT_EQ(failureOf([] { ToInt32(QVariant(QByteArray("1"))); }), RunTime::TypeMismatch);
    EXPECT_EQ(ToInt16(QVariant(true)), -1);
    EXPECT_EQ(ToInt16(QVariant(false)), 0);
}

TEST(Convert, NumberTextHasFifteenDigitsAndAComma) {
    EXPECT_EQ(NumberText(12.5), text("12,5"));
    EXPECT_EQ(NumberText(1000), text("1000"));
    EXPECT_EQ(NumberText(0.1 + 0.2), text("0,3"));
    EXPECT_EQ(NumberText(1.0 / 3), text("0,333333333333333"));
    EXPECT_EQ(NumberText(123456789012345.0), text("123456789012345"));
    EXPECT_EQ(NumberText(1e15), text("1E+15"));
    EXPECT_EQ(NumberText(-1.25e-7), text("-1,25E-07"));
    EXPECT_EQ(NumberText(0.0001), text("0,0001"));
    EXPECT_EQ(NumberText(-0.0), text("0"));
}

TEST(Convert, TextFormOfValues) {
    EXPECT_EQ(ToText(QVariant(text(" a "))), text(" a "));
    EXPECT_EQ(ToText(QVariant(-7)), text("-7"));
    EXPECT_EQ(ToText(QVariant(2.5)), text("2,5"));
    EXPECT_EQ(ToText(QVariant(QDateTime(QDate(2024, 3, 5), QTime(14, 7, 9)))), text("2024-03-05 14:07:09"));
    EXPECT_EQ(ToText(QVariant(QDateTime(QDate(2024, 3, 5), QTime(0, 0)))), text("2024-03-05"));
    EXPECT_EQ(failureOf([] { ToText(QVariant()); }), RunTime::InvalidUseOfNull);
    EXPECT_EQ(failureOf([] { ToText(QVariant(QByteArray("x"))); }), RunTime::TypeMismatch);
}

TEST(Convert, TrimmingTakesBlanksOnly) {
    EXPECT_EQ(TrimBlanks(text("  a b  ")), text("a b"));
    EXPECT_EQ(TrimBlanks(text("\ta\n")), text("\ta\n"));
    EXPECT_EQ(TrimBlanks(text("\u00A0a")), text("\u00A0a"));
    EXPECT_EQ(TrimBlanks(text("   ")), QString());
}

TEST(Convert, AnotherRegionalFormatReadsAndWritesItsOwnWay) {
    const RegionalFormat polish = regionalFormat();
    RegionalFormat english;
    ASSERT_TRUE(RegionalFormat::fromLocale(text("en_US"), english));
    setRegionalFormat(english);
    EXPECT_TRUE(IsNumeric(text("1,000.5")));
    EXPECT_FALSE(IsNumeric(text("12,5 ")) && ToDouble(text("12,5")) == 12.5);
    EXPECT_EQ(ToDouble(text("1,000.5")), 1000.5);
    EXPECT_EQ(NumberText(12.5), text("12.5"));
    setRegionalFormat(polish);
}

TEST(Convert, UnknownLocaleLeavesTheFormat) {
    RegionalFormat format;
    EXPECT_FALSE(RegionalFormat::fromLocale(text("xx_YY"), format));
    EXPECT_FALSE(RegionalFormat::fromLocale(QString(), format));
    EXPECT_EQ(format.Locale, text("pl_PL"));
    EXPECT_EQ(format.Decimal, QChar(u','));
}

// The program's numbers must not follow the locale that the desktop gives the C library.
TEST(Convert, TheDesktopsLocaleDoesNotMatter) {
    setlocale(LC_ALL, "de_DE.UTF-8");
    QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
    EXPECT_EQ(ToDouble(text("1,5")), 1.5);
    EXPECT_EQ(NumberText(1.5), text("1,5"));
    QLocale::setDefault(QLocale(QLocale::Polish, QLocale::Poland));
}

}  // namespace
