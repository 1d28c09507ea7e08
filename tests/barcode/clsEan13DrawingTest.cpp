#include "barcode/BarcodeForm.h"
#include "barcode/clsEan13.h"
#include "platform/MsgBox.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

using namespace Qt::StringLiterals;

constexpr double beginX = 20;
constexpr double beginY = 5;
constexpr double height = 40;
constexpr int below = 45;
constexpr qint16 points = 8;

const QString code = u"590123412345"_s;
const QString whole = u"5901234123457"_s;

class Ean13Drawing : public testing::Test {
protected:
    bool print(const QString& digits, double width = 1, qint16 size = points) {
        return encoder.PrintCodeEan13(&barcode.form, digits, beginX, beginY, height, width, size);
    }

    /// The digits of a code as they should stand at a module width.
    static QList<BarcodeForm::Printed> digitsOf(const QString& text, int width) {
        return spread(text.mid(1, 6), beginX - 1, 6 * width, below) +
               spread(text.mid(7, 6), beginX + 43 * width, 7 * width, below) +
               spread(text.left(1), beginX - 9, width, below);
    }

    clsEan13 encoder;
    BarcodeForm barcode;
    MsgBoxRecorder messages;
};

TEST_F(Ean13Drawing, GuardBarsAreThreeLonger) {
    for (const int width : {1, 2}) {
        barcode.picBarCode.clearMarks();
        EXPECT_TRUE(print(code, width));
        const QString modules = encoder.GetCodeStringEAN13(whole);
        QList<QRect> expected;
        for (int module = 1; module <= 95; ++module) {
            const int longer = QList{1, 3, 47, 49, 93, 95}.contains(module) ? 3 : 0;
            for (int line = 0; line < width && modules[module - 1] == u'1'; ++line)
                expected.append(QRect(20 + (module - 1) * width + line, 5, 1, 40 + longer));
        }
        EXPECT_EQ(barcode.bars(), expected);
    }
}

TEST_F(Ean13Drawing, ThePictureShowsTheModules) {
    for (const int width : {1, 2}) {
        barcode.picBarCode.clearMarks();
        EXPECT_TRUE(print(code, width));
        EXPECT_EQ(modulesInRow(barcode.image(), 20, width), encoder.GetCodeStringEAN13(whole));
    }
}

TEST_F(Ean13Drawing, DigitsStandInThreeGroupsBelowTheBars) {
    for (const int width : {1, 2}) {
        barcode.picBarCode.clearMarks();
        EXPECT_TRUE(print(code, width));
        EXPECT_EQ(barcode.printed(), digitsOf(whole, width));
    }
}

TEST_F(Ean13Drawing, StepsAndOffsetsAreWholeParts) {
    EXPECT_TRUE(print(code, 1.5));
    EXPECT_EQ(barcode.printed(), spread(u"901234"_s, 19, 9, below) + spread(u"123457"_s, 20 + 64, 10, below) +
                                     spread(u"5"_s, 11, 1, below));
}

TEST_F(Ean13Drawing, DigitsAreBlackOfTheGivenSizeAndAsBoldAsTheBoxHasIt) {
    barcode.picBarCode.setForeColor(Qt::red);
    barcode.picBarCode.setFontBold(true);
    EXPECT_TRUE(print(code, 1, 9));
    EXPECT_EQ(barcode.picBarCode.marks().front().Color, QColor(Qt::red));
    const PictureMark& digit = barcode.picBarCode.marks().back();
    EXPECT_EQ(digit.Color, QColor(Qt::black));
    EXPECT_EQ(digit.Font.pixelSize(), 12);
    EXPECT_TRUE(digit.Font.bold());
}

TEST_F(Ean13Drawing, TheBoxIsATenthWiderThanTheEndOfTheSymbolAndHalfAsHighAgain) {
    EXPECT_TRUE(print(code, 2));
    EXPECT_EQ(barcode.picBarCode.size(), QSize(qRound((20 + 2 * 95) * 1.1), 60));
}

TEST_F(Ean13Drawing, TheCheckDigitIsWrittenOnTheForm) {
    EXPECT_TRUE(print(code));
    EXPECT_EQ(barcode.txtSumaKontrolana.text(), u"7"_s);
    EXPECT_TRUE(print(u"700000000000"_s));
    EXPECT_EQ(barcode.txtSumaKontrolana.text(), u"3"_s);
}

TEST_F(Ean13Drawing, ModuleWidth3DrawsNoBarsButPrintsTheDigitsAndResizes) {
    EXPECT_TRUE(print(code, 3));
    EXPECT_TRUE(barcode.bars().isEmpty());
    EXPECT_EQ(barcode.printed(), digitsOf(whole, 3));
    EXPECT_EQ(barcode.picBarCode.size(), QSize(22, 60));
    EXPECT_EQ(barcode.txtSumaKontrolana.text(), u"7"_s);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Ean13Drawing, LettersAndBlanksAreReportedOnceAndPrintedWithoutBars) {
    for (const QString& text : {u"59012341234A"_s, u"            "_s}) {
        barcode.picBarCode.clearMarks();
        messages.clear();
        EXPECT_TRUE(print(text));
        EXPECT_TRUE(barcode.bars().isEmpty());
        EXPECT_EQ(barcode.printed(), digitsOf(text + u'1', 1));
        EXPECT_EQ(barcode.txtSumaKontrolana.text(), u"1"_s);
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, u" CalcPriceSumControl clsEan13"_s);
    }
}

TEST_F(Ean13Drawing, ACodeThatIsTooShortIsPrintedWithoutBarsAndWithoutAMessage) {
    EXPECT_TRUE(print({}));
    EXPECT_EQ(barcode.printed(), digitsOf(u"0"_s, 1));
    EXPECT_EQ(barcode.txtSumaKontrolana.text(), u"0"_s);
    barcode.picBarCode.clearMarks();
    EXPECT_TRUE(print(u"59012341"_s));
    EXPECT_TRUE(barcode.bars().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Ean13Drawing, OfTenThousandDigitsThirteenAreDrawn) {
    EXPECT_TRUE(print(u"5"_s + QString(9999, u'9')));
    EXPECT_EQ(modulesInRow(barcode.image(), 20, 1), encoder.GetCodeStringEAN13(u"5999999999999"_s));
    EXPECT_EQ(barcode.printed(), digitsOf(u"5999999999999"_s, 1));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Ean13Drawing, AStepBeyond16BitsIsReported) {
    EXPECT_FALSE(print(code, 5462));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, u" PrintCodeEan13 clsEan13"_s);
    EXPECT_EQ(messages.last().Text, u"6 Overflow"_s);
    EXPECT_EQ(messages.last().Flags, 16);
    EXPECT_TRUE(barcode.printed().isEmpty());
}

TEST_F(Ean13Drawing, AFormWithoutTheControlsIsReported) {
    barcode.picBarCode.setObjectName(u"picOther"_s);
    EXPECT_FALSE(print(code));
    EXPECT_EQ(messages.last().Title, u" PrintCodeEan13 clsEan13"_s);
    EXPECT_EQ(messages.last().Text, u"438 Object doesn't support this property or method"_s);
    barcode.picBarCode.setObjectName(u"picBarCode"_s);
    barcode.txtSumaKontrolana.setObjectName(u"txtOther"_s);
    EXPECT_FALSE(print(code));
    EXPECT_EQ(messages.count(), 2);
    EXPECT_EQ(barcode.printed(), digitsOf(whole, 1));
    EXPECT_FALSE(encoder.PrintCodeEan13(nullptr, code, 0, 0, height, 1, points));
    EXPECT_EQ(messages.last().Text, u"91 Object variable or With block variable not set"_s);
}

}  // namespace
}  // namespace regalon::test
