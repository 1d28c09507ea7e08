#include "barcode/clsEan13.h"
#include "platform/MsgBox.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

using namespace Qt::StringLiterals;

class Ean13 : public testing::Test {
protected:
    clsEan13 encoder;
    MsgBoxRecorder messages;
};

TEST_F(Ean13, CheckDigitOf590123412345Is7) {
    EXPECT_EQ(encoder.CalcPriceSumControl(u"590123412345"_s), 7);
}

TEST_F(Ean13, ACheckSumOfWholeTensHasTheCheckDigit0) {
    EXPECT_EQ(encoder.CalcPriceSumControl(u"000000000000"_s), 0);
    // 3 * 5 + 5
    EXPECT_EQ(encoder.CalcPriceSumControl(u"500000000005"_s), 0);
    EXPECT_EQ(encoder.CalcPriceSumControl({}), 0);
}

TEST_F(Ean13, CheckDigitIsCountedFromTheEndForAnyLength) {
    EXPECT_EQ(encoder.CalcPriceSumControl(u"12"_s), 3);
    EXPECT_EQ(encoder.CalcPriceSumControl(u"1234"_s), 8);
    EXPECT_EQ(encoder.CalcPriceSumControl(u"00590123412345"_s), 7);
}

TEST_F(Ean13, TheFirstOfAnOddNumberOfDigitsDoesNotCount) {
    EXPECT_EQ(encoder.CalcPriceSumControl(u"7"_s), 0);
    EXPECT_EQ(encoder.CalcPriceSumControl(u"912"_s), encoder.CalcPriceSumControl(u"12"_s));
    EXPECT_EQ(encoder.CalcPriceSumControl(u"A12"_s), encoder.CalcPriceSumControl(u"12"_s));
    EXPECT_EQ(messages.count(), 0);
    // The check digit of EAN-8 would be 7.
    EXPECT_EQ(encoder.CalcPriceSumControl(u"5512345"_s), 2);
}

TEST_F(Ean13, TenThousandDigitsHaveACheckDigit) {
    // 5000 * 9 * 4 is a multiple of ten.
    EXPECT_EQ(encoder.CalcPriceSumControl(QString(10000, u'9')), 0);
    EXPECT_EQ(encoder.CalcPriceSumControl(QString(9998, u'9') + u"98"_s), 3);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Ean13, ACheckDigitOfAnythingButDigitsIsReportedAndIs1) {
    for (const QString& code : {u"59012341234A"_s, u"A90123412345"_s, u"590123 12345"_s, u"  "_s, u"-1"_s,
                                u"59012341234\u0665"_s}) {
        messages.clear();
        EXPECT_EQ(encoder.CalcPriceSumControl(code), 1);
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, u" CalcPriceSumControl clsEan13"_s);
        EXPECT_EQ(messages.last().Text, u"13 Type mismatch"_s);
        EXPECT_EQ(messages.last().Flags, 16);
    }
}

TEST_F(Ean13, ModulesOfACodeThatBeginsWith5) {
    EXPECT_EQ(encoder.GetCodeStringEAN13(u"5901234123457"_s),
              u"101"
              "0001011"
              "0100111"
              "0110011"
              "0010011"
              "0111101"
              "0011101"
              "01010"
              "1100110"
              "1101100"
              "1000010"
              "1011100"
              "1001110"
              "1000100"
              "101"_s);
}

TEST_F(Ean13, AModuleStringHas95Modules) {
    for (int first = 0; first <= 9; ++first)
        EXPECT_EQ(encoder.GetCodeStringEAN13(QString::number(first) + u"901234123457"_s).size(), 95);
}

TEST_F(Ean13, AnotherFirstDigitThan5And7HasItsLeftHalfInSetBWithoutAMessage) {
    const QString right = encoder.GetCodeStringEAN13(u"5000000012345"_s).mid(45);
    for (const int first : {0, 1, 2, 3, 4, 6, 8, 9}) {
        EXPECT_EQ(encoder.GetCodeStringEAN13(QString::number(first) + u"012345012345"_s),
                  u"101"
                  "0100111"
                  "0110011"
                  "0011011"
                  "0100001"
                  "0011101"
                  "0111001"_s +
                      right);
    }
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Ean13, TheCheckDigitIsTakenAsItStands) {
    const QString modules = encoder.GetCodeStringEAN13(u"5901234123450"_s);
    EXPECT_EQ(modules.mid(85, 7), u"1110010"_s);
}

TEST_F(Ean13, ACodeThatIsTooShortOrNoDigitsGivesNothingAndNoMessage) {
    for (const QString& code : {u""_s, u"5"_s, u"590123412345"_s, u"590123412345A"_s, u"A901234123457"_s,
                                u" 901234123457"_s, u"5901 34123457"_s, u"590123412345\u0667"_s})
        EXPECT_EQ(encoder.GetCodeStringEAN13(code), QString()) << qPrintable(code);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Ean13, WhatStandsBehindThirteenDigitsIsNotEncoded) {
    const QString modules = encoder.GetCodeStringEAN13(u"5901234123457"_s);
    EXPECT_EQ(encoder.GetCodeStringEAN13(u"5901234123457X"_s), modules);
    EXPECT_EQ(encoder.GetCodeStringEAN13(u"5901234123457"_s + QString(10000, u'1')), modules);
}

}  // namespace
}  // namespace regalon::test
