#include "barcode/clsEan128.h"
#include "platform/CodePage.h"
#include "platform/MsgBox.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace regalon::test {
namespace {

using namespace Qt::StringLiterals;

class Code128 : public testing::Test {
protected:
    QString inSetC(const QString& code) const { return encoder.GetCodeStringEAN128C(code); }
    QString inSetB(const QString& text) const { return encoder.GetCodeStringEAN128B(text); }

    /// The failure of the routine was reported, and nothing else.
    void expectFailure(const QString& routine, const QString& text) const {
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, u"clsEan128BC - "_s + routine);
        EXPECT_EQ(messages.last().Text, text);
        EXPECT_EQ(messages.last().Flags, 48);
    }

    clsEan128 encoder;
    MsgBoxRecorder messages;
};

/// The pattern of symbol i (from 0), the start being symbol 0.
QString symbol(const QString& widths, qsizetype i) {
    return widths.mid(6 * i, 6);
}

const QString startB = u"211214"_s;
const QString startC = u"211232"_s;
const QString stop = u"2331112"_s;

TEST_F(Code128, ThreeDigitsAreEncodedAsTwoPairs) {
    EXPECT_EQ(inSetC(u"123"_s), inSetC(u"0123"_s));
    // Values 1 and 23, check (105 + 1 + 46) mod 103 = 49.
    EXPECT_EQ(inSetC(u"123"_s), startC + u"222122"_s + u"312131"_s + u"211331"_s + stop);
}

TEST_F(Code128, TheCheckSymbolOf123456IsRow44) {
    EXPECT_EQ(symbol(inSetC(u"123456"_s), 4), u"132131"_s);
}

TEST_F(Code128, WidthsOfNPairsAreSixForEachSymbolAndSevenForTheStop) {
    for (int n = 0; n <= 40; ++n) {
        EXPECT_EQ(inSetC(QString(2 * n, u'7')).size(), 6 * (n + 2) + 7);
        const int odd = std::max(0, 2 * n - 1);
        EXPECT_EQ(inSetC(QString(odd, u'7')).size(), 6 * (n + 2) + 7);
    }
}

TEST_F(Code128, AnEmptyCodeIsStartCheckAndStop) {
    // Checks 105 mod 103 = 2 and 104 mod 103 = 1.
    EXPECT_EQ(inSetC({}), startC + u"222221"_s + stop);
    EXPECT_EQ(inSetB({}), startB + u"222122"_s + stop);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128, NoFunctionCharacterFollowsTheStart) {
    EXPECT_EQ(symbol(inSetC(u"00"_s), 1), u"212222"_s);
}

TEST_F(Code128, TextIsEncodedInSetBByItsCharacterCodes) {
    // R 50, e 69, check (104 + 50 + 2 * 69) mod 103 = 86.
    EXPECT_EQ(inSetB(u"Re"_s), startB + u"231131"_s + u"112214"_s + u"411212"_s + stop);
}

TEST_F(Code128, CharacterCodesAreThoseOfTheCodePage) {
    ASSERT_EQ(CodePage::codeOf(u'\u2026'), 133);
    EXPECT_EQ(symbol(inSetB(u"\u2026"_s), 1), u"311141"_s);
    // A character without a code is a question mark to the code page, and so to the symbol.
    EXPECT_EQ(inSetB(u"\u4E2D"_s), inSetB(u"?"_s));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128, ACheckValueOf96PrintsTheStartPattern) {
    // x 88, 0 16, : 26: (104 + 88 + 2 * 16 + 3 * 26) mod 103 = 96.
    EXPECT_EQ(symbol(inSetB(u"x0:"_s), 4), startB);
}

TEST_F(Code128, ACharacterOf128PrintsTheStartPatternAndOneOf136TheStartOfSetC) {
    EXPECT_EQ(symbol(inSetB(QString(CodePage::charOf(128))), 1), startB);
    EXPECT_EQ(symbol(inSetB(QString(CodePage::charOf(136))), 1), startC);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128, ACharacterOf137OrBelow32AddsNothingButItsWeight) {
    // Checks (104 + 105) mod 103 = 3 and (104 - 23) mod 103 = 81.
    EXPECT_EQ(inSetB(QString(CodePage::charOf(137))), startB + u"121223"_s + stop);
    EXPECT_EQ(inSetB(u"\t"_s), startB + u"121142"_s + stop);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128, ANegativeSumFindsNoCheckPattern) {
    // 104 - 31 * (1 + 2 + 3) = -82 lies below every pattern.
    EXPECT_EQ(inSetB(u"\u0001\u0001\u0001"_s), startB + stop);
    // 104 - 31 - 2 * 31 - 3 * 5 = -4 would be 99 without its sign.
    EXPECT_EQ(inSetB(u"\u0001\u0001\u001B"_s), startB + stop);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128, ACharacterAbove137IsReportedAndGivesNothing) {
    EXPECT_EQ(inSetB(u"A\u0160"_s), QString());
    expectFailure(u"GetCodeStringEAN128B"_s, u"Error:9:Subscript out of range"_s);
    messages.clear();
    EXPECT_EQ(inSetB(u"ąę"_s), QString());
    expectFailure(u"GetCodeStringEAN128B"_s, u"Error:9:Subscript out of range"_s);
}

TEST_F(Code128, AnythingButADigitInSetCIsReportedAndGivesNothing) {
    for (const QString& code : {u"12A4"_s, u"A"_s, u" "_s, u"1 "_s, u" 1"_s, u"-1"_s, u"1,5"_s, u"1e10"_s,
                                u"\u0661\u0662"_s, u"１２"_s, u"12\n4"_s}) {
        EXPECT_EQ(inSetC(code), QString()) << qPrintable(code);
        expectFailure(u"GetCodeStringEAN128C"_s, u"Error:13:Type mismatch"_s);
        messages.clear();
    }
}

TEST_F(Code128, TenThousandDigitsAreEncoded) {
    const QString nines = inSetC(QString(10000, u'9'));
    EXPECT_EQ(nines.size(), 6 * 5002 + 7);
    // (105 + 99 * 5000 * 5001 / 2) mod 103 = 4.
    EXPECT_EQ(symbol(nines, 5001), u"121322"_s);
    const QString text = inSetB(QString(10000, u'~'));
    EXPECT_EQ(text.size(), 6 * 10002 + 7);
    // (104 + 94 * 10000 * 10001 / 2) mod 103 = 8, beyond what 32 bits hold.
    EXPECT_EQ(symbol(text, 10001), u"132212"_s);
    EXPECT_EQ(messages.count(), 0);
}

}  // namespace
}  // namespace regalon::test
