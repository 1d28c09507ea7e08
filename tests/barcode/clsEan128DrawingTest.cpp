#include "barcode/BarcodeForm.h"
#include "barcode/clsEan128.h"
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

class Code128Drawing : public testing::Test {
protected:
    bool print(const QString& code, double width = 1, qint16 size = points) {
        return encoder.PrintCodeEan128C(&barcode.form, code, beginX, beginY, height, width, size);
    }
    bool printForReader(const QString& code, bool brackets, double width = 1) {
        return encoder.PrintCodeEan128CCzytnik(&barcode.form, code, beginX, beginY, height, width, points,
                                               brackets);
    }
    int lengthOfSymbol(const QString& code) const {
        return static_cast<int>(11 * ((code.size() + 1) / 2 + 2) + 13);
    }

    clsEan128 encoder;
    BarcodeForm barcode;
    MsgBoxRecorder messages;
};

struct SpreadRow {
    int from, to, factor, offset;
};

const QList<SpreadRow> plainRows = {{1, 1, 6, -5},   {2, 2, 16, -5},  {3, 3, 15, -5}, {4, 4, 13, -5},
                                    {5, 5, 12, -5},  {6, 7, 10, -5},  {8, 9, 9, -5},  {10, 15, 8, -5},
                                    {16, 16, 7, -2}, {17, 25, 7, -5}, {26, 39, 6, 2}, {40, 60, 0, -5}};

TEST_F(Code128Drawing, BarsAreLinesOfOnePixelAtModuleWidth1) {
    EXPECT_TRUE(print(u"01"_s));
    const QString modules = modulesOf(encoder.GetCodeStringEAN128C(u"01"_s));
    QList<QRect> expected;
    for (int i = 0; i < modules.size(); ++i) {
        if (modules[i] == u'1')
            expected.append(QRect(20 + i, 5, 1, 40));
    }
    EXPECT_EQ(barcode.bars(), expected);
}

TEST_F(Code128Drawing, EachModuleIsTwoLinesAtModuleWidth2) {
    EXPECT_TRUE(print(u"01"_s, 2));
    const QString modules = modulesOf(encoder.GetCodeStringEAN128C(u"01"_s));
    QList<QRect> expected;
    for (int i = 0; i < modules.size(); ++i) {
        if (modules[i] == u'1')
            expected << QRect(20 + 2 * i, 5, 1, 40) << QRect(21 + 2 * i, 5, 1, 40);
    }
    EXPECT_EQ(barcode.bars(), expected);
}

TEST_F(Code128Drawing, ThePictureShowsTheModules) {
    for (const int width : {1, 2}) {
        barcode.picBarCode.clearMarks();
        EXPECT_TRUE(print(u"590123"_s, width));
        EXPECT_EQ(modulesInRow(barcode.image(), 20, width),
                  modulesOf(encoder.GetCodeStringEAN128C(u"590123"_s)));
    }
}

TEST_F(Code128Drawing, DigitsAreSpreadBelowTheBarsByTheLengthOfTheCode) {
    for (const SpreadRow& row : plainRows) {
        for (int length = row.from; length <= row.to; ++length) {
            const QString code = QString(u"0123456789"_s).repeated(6).left(length);
            for (const int width : {1, 2}) {
                barcode.picBarCode.clearMarks();
                EXPECT_TRUE(print(code, width));
                EXPECT_EQ(barcode.printed(), spread(code, beginX + row.offset, row.factor * width, below))
                    << length;
            }
        }
    }
}

TEST_F(Code128Drawing, FortyDigitsAndMoreArePrintedOverEachOther) {
    EXPECT_TRUE(print(QString(40, u'8')));
    for (const auto& digit : barcode.printed())
        EXPECT_EQ(digit.at, QPoint(15, below));
}

TEST_F(Code128Drawing, StepIsTheWholePartOfWidthTimesFactor) {
    EXPECT_TRUE(print(u"123"_s, 1.5));
    EXPECT_EQ(barcode.printed(), spread(u"123"_s, 15, 22, below));
}

TEST_F(Code128Drawing, DigitsAreBlackOfTheGivenSizeAndNotBold) {
    barcode.picBarCode.setForeColor(Qt::red);
    barcode.picBarCode.setFontBold(true);
    EXPECT_TRUE(print(u"12"_s, 1, 9));
    // The bars came first, in the colour that the box had.
    EXPECT_EQ(barcode.picBarCode.marks().front().Color, QColor(Qt::red));
    const PictureMark& digit = barcode.picBarCode.marks().back();
    EXPECT_EQ(digit.Color, QColor(Qt::black));
    EXPECT_EQ(digit.Font.pixelSize(), 12);
    EXPECT_FALSE(digit.Font.bold());
}

TEST_F(Code128Drawing, TheBoxIsATenthWiderThanTheEndOfTheSymbolAndTwiceAsHigh) {
    EXPECT_TRUE(print(u"1234"_s, 2));
    // 16.5 and 30 twips are 1.1 and 2 pixels.
    const double end = 20 + 2 * lengthOfSymbol(u"1234"_s);
    EXPECT_EQ(barcode.picBarCode.size(), QSize(qRound(end * 1.1), 80));
}

TEST_F(Code128Drawing, AnOddNumberOfDigitsIsPrintedWithoutTheZeroInFront) {
    EXPECT_TRUE(print(u"123"_s));
    EXPECT_EQ(modulesInRow(barcode.image(), 20, 1), modulesOf(encoder.GetCodeStringEAN128C(u"0123"_s)));
    EXPECT_EQ(barcode.printed(), spread(u"123"_s, 15, 15, below));
}

TEST_F(Code128Drawing, ModuleWidth3DrawsNoBarsButPrintsTheDigitsAndResizes) {
    EXPECT_TRUE(print(u"1234"_s, 3));
    EXPECT_TRUE(barcode.bars().isEmpty());
    EXPECT_EQ(barcode.printed(), spread(u"1234"_s, 15, 39, below));
    EXPECT_EQ(barcode.picBarCode.size(), QSize(22, 80));
    EXPECT_TRUE(printForReader(u"1234"_s, true, 3));
    EXPECT_TRUE(barcode.bars().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128Drawing, AnEmptyCodeIsStartCheckAndStopWithoutDigits) {
    EXPECT_TRUE(print({}));
    EXPECT_EQ(modulesInRow(barcode.image(), 20, 1), modulesOf(encoder.GetCodeStringEAN128C({})));
    EXPECT_TRUE(printForReader({}, true));
    EXPECT_TRUE(barcode.printed().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128Drawing, ACodeThatCannotBeEncodedIsReportedOnceAndPrintedWithoutBars) {
    for (const QString& code : {u"12A4"_s, u"    "_s}) {
        barcode.picBarCode.clearMarks();
        messages.clear();
        EXPECT_TRUE(print(code));
        EXPECT_TRUE(barcode.bars().isEmpty());
        EXPECT_EQ(barcode.printed(), spread(code, 15, 13, below));
        EXPECT_EQ(barcode.picBarCode.size(), QSize(22, 80));
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, u"clsEan128BC - GetCodeStringEAN128C"_s);
    }
    EXPECT_TRUE(printForReader(u"12A4"_s, true));
    EXPECT_EQ(messages.count(), 2);
}

TEST_F(Code128Drawing, TenThousandDigitsAreDrawn) {
    EXPECT_TRUE(print(QString(10000, u'7'), 2));
    EXPECT_EQ(barcode.printed().size(), 10000);
    EXPECT_EQ(barcode.picBarCode.width(), qRound((20 + 2.0 * lengthOfSymbol(QString(10000, u'7'))) * 1.1));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(Code128Drawing, SeveralSymbolsShareABox) {
    EXPECT_TRUE(print(u"12"_s));
    const qsizetype bars = barcode.bars().size();
    EXPECT_TRUE(encoder.PrintCodeEan128C(&barcode.form, u"12"_s, beginX, 105, height, 1, points));
    EXPECT_EQ(barcode.bars().size(), 2 * bars);
    EXPECT_EQ(barcode.bars().last().top(), 105);
}

TEST_F(Code128Drawing, AFormWithoutThePictureBoxIsReported) {
    const QWidget other;
    EXPECT_FALSE(encoder.PrintCodeEan128C(&other, u"12"_s, 0, 0, height, 1, points));
    EXPECT_EQ(messages.last().Title, u"clsEan128BC - PrintCodeEan128C"_s);
    EXPECT_EQ(messages.last().Text, u"Error:438:Object doesn't support this property or method"_s);
    EXPECT_EQ(messages.last().Flags, 48);
    EXPECT_FALSE(encoder.PrintCodeEan128CCzytnik(nullptr, u"12"_s, 0, 0, height, 1, points, false));
    EXPECT_EQ(messages.last().Title, u"clsEan128BC - PrintCodeEan128CCzytnik"_s);
    EXPECT_EQ(messages.last().Text, u"Error:91:Object variable or With block variable not set"_s);
    EXPECT_EQ(messages.last().Flags, 48);
    EXPECT_EQ(messages.count(), 2);
}

TEST_F(Code128Drawing, AFontSizeOfNothingIsReportedAndLeavesTheBarsAndTheSize) {
    barcode.picBarCode.resize(200, 100);
    EXPECT_FALSE(print(u"12"_s, 1, 0));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, u"Error:380:Invalid property value"_s);
    EXPECT_FALSE(barcode.bars().isEmpty());
    EXPECT_TRUE(barcode.printed().isEmpty());
    EXPECT_EQ(barcode.picBarCode.size(), QSize(200, 100));
}

TEST_F(Code128Drawing, ReaderFormPutsBracketsAroundTheIdentifiers) {
    const QString code = u"01590123412345710AB12"_s.replace(u"AB"_s, u"77"_s);
    EXPECT_TRUE(printForReader(code, true));
    QString text;
    for (const auto& character : barcode.printed())
        text += character.text;
    EXPECT_EQ(text, u"(01)5901234123457(10)7712"_s);
    EXPECT_EQ(modulesInRow(barcode.image(), 20, 1), modulesOf(encoder.GetCodeStringEAN128C(code)));
}

TEST_F(Code128Drawing, BracketsOfTheReaderFormStandByPlaceAlone) {
    const QList<std::pair<int, QString>> texts = {
        {1, u"(0"_s},
        {2, u"(01"_s},
        {3, u"(01)2"_s},
        {15, u"(01)2345678901234"_s},
        {16, u"(01)2345678901234(5"_s},
        {17, u"(01)2345678901234(56"_s},
        {18, u"(01)2345678901234(56)7"_s},
    };
    for (const auto& [length, text] : texts) {
        barcode.picBarCode.clearMarks();
        EXPECT_TRUE(printForReader(u"012345678901234567"_s.left(length), true));
        QString printed;
        for (const auto& character : barcode.printed())
            printed += character.text;
        EXPECT_EQ(printed, text);
    }
}

TEST_F(Code128Drawing, ReaderFormWithBracketsIsSpreadByTheLengthWithoutThem) {
    const QList<SpreadRow> rows = {{1, 1, 6, -5},    {2, 2, 16, -5},  {3, 3, 15, -5},  {4, 4, 13, -5},
                                   {5, 5, 12, -5},   {6, 7, 10, -5},  {8, 9, 9, -5},   {10, 14, 8, -5},
                                   {15, 15, 7, -5},  {16, 21, 6, -5}, {22, 22, 6, -7}, {23, 23, 6, -5},
                                   {24, 24, 6, -7},  {25, 25, 6, -5}, {26, 26, 6, -8}, {27, 31, 6, -7},
                                   {32, 32, 6, -10}, {33, 33, 6, -6}, {34, 39, 6, -7}, {40, 60, 0, -5}};
    for (const SpreadRow& row : rows) {
        for (int length = row.from; length <= row.to; ++length) {
            const QString code = QString(u"0123456789"_s).repeated(6).left(length);
            QString text = code;
            for (const auto& [place, bracket] :
                 {std::pair(17, u")"_s), {15, u"("_s}, {2, u")"_s}, {0, u"("_s}}) {
                if (place < length)
                    text.insert(place, bracket);
            }
            for (const int width : {1, 2}) {
                barcode.picBarCode.clearMarks();
                EXPECT_TRUE(printForReader(code, true, width));
                EXPECT_EQ(barcode.printed(), spread(text, beginX + row.offset, row.factor * width, below))
                    << length;
            }
        }
    }
}

TEST_F(Code128Drawing, ReaderFormWithoutBracketsIsSpreadAsThePlainFormButFor10And14) {
    for (const SpreadRow& row : plainRows) {
        for (int length = row.from; length <= row.to; ++length) {
            SpreadRow expected = row;
            if (length == 10)
                expected = {10, 10, 9, -12};
            if (length == 14)
                expected = {14, 14, 8, -8};
            const QString code = QString(u"0123456789"_s).repeated(6).left(length);
            barcode.picBarCode.clearMarks();
            EXPECT_TRUE(printForReader(code, false, 2));
            EXPECT_EQ(barcode.printed(), spread(code, beginX + expected.offset, expected.factor * 2, below))
                << length;
        }
    }
}

TEST_F(Code128Drawing, ReaderFormHasSizesOfItsOwn) {
    const int end = 20 + lengthOfSymbol(u"1234567890"_s);
    EXPECT_TRUE(printForReader(u"1234567890"_s, true));
    EXPECT_EQ(barcode.picBarCode.size(), QSize(qRound(end * 17 / 15.0), qRound(height * 23 / 15)));
    EXPECT_TRUE(printForReader(u"1234567890"_s, false));
    EXPECT_EQ(barcode.picBarCode.size(), QSize(qRound(end * 17 / 15.0), qRound(height * 25 / 15)));
}

}  // namespace
}  // namespace regalon::test
