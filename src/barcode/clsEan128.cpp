#include "barcode/clsEan128.h"

#include "barcode/Code128Patterns.h"
#include "barcode/Digit.h"
#include "barcode/DigitSpread.h"
#include "barcode/SymbolDrawing.h"
#include "platform/CodePage.h"
#include "platform/MsgBox.h"

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

constexpr int firstCharacter = 32;
constexpr int checkModulus = 103;
constexpr int startValueB = 104;
constexpr qsizetype patternLength = 6;
constexpr qsizetype stopLength = 7;

template <class Body>
bool trap(const QString& routine, Body&& body) {
    try {
        body();
        return true;
    } catch (...) {
        const ErrorRecord error = currentError();
        MsgBox(u"Error:"_s + QString::number(error.Number) + u':' + error.Description, MsgFlag::Exclamation,
               u"clsEan128BC - "_s + routine);
        return false;
    }
}

/// Room for the patterns of `symbols` and of start, check and stop.
QString roomFor(qsizetype symbols) {
    return QString(patternLength * (symbols + 2) + stopLength, Qt::Uninitialized);
}

QString widthsInSetC(const QString& code) {
    const QString digits = code.size() % 2 == 0 ? code : u'0' + code;
    QString widths = roomFor(digits.size() / 2);
    QChar* out = write(widths.data(), Code128::setC(Code128::StartC));
    qint64 sum = Code128::StartC;
    for (qsizetype i = 0; i < digits.size(); i += 2) {
        const int value = 10 * digitValue(digits[i]) + digitValue(digits[i + 1]);
        out = write(out, Code128::setC(value));
        sum += value * (i / 2 + 1);
    }
    out = write(out, Code128::setC(static_cast<int>(sum % checkModulus)));
    writeLast(out, Code128::Stop);
    return widths;
}

QChar* writeInSetB(QChar* out, int index) {
    const Code128::Widths* const pattern = Code128::setB(index);
    return pattern == nullptr ? out : write(out, *pattern);
}

QString widthsInSetB(const QString& text) {
    const QByteArray codes = CodePage::fromText(text);
    QString widths = roomFor(codes.size());
    QChar* out = writeInSetB(widths.data(), Code128::StartB);
    qint64 sum = startValueB;
    for (qsizetype i = 0; i < codes.size(); ++i) {
        const int code = static_cast<unsigned char>(codes[i]);
        out = writeInSetB(out, code);
        sum += (code - firstCharacter) * (i + 1);
    }
    // Control characters can make the sum negative. The remainder keeps the sign, and no pattern lies there.
    out = writeInSetB(out, static_cast<int>(sum % checkModulus) + firstCharacter);
    out = writeLast(out, Code128::Stop);
    widths.truncate(out - widths.constData());
    return widths;
}

void drawBars(SymbolDrawing& drawing, const QString& widths) {
    for (qsizetype i = 0; i < widths.size(); ++i) {
        const bool bar = i % 2 == 0;
        for (int module = digitValue(widths[i]); module > 0; --module)
            drawing.module(bar);
    }
}

/// A code of identifier 01, thirteen digits, identifier 10 and a batch, with its identifiers in brackets.
QString withBrackets(const QString& code) {
    QString text;
    for (qsizetype k = 0; k < code.size(); ++k) {
        if (k == 0 || k == 15)
            text += u'(';
        if (k == 2 || k == 17)
            text += u')';
        text += code[k];
    }
    return text;
}

}  // namespace

QString clsEan128::GetCodeStringEAN128C(const QString& strCodeChar) const {
    QString widths;
    trap(u"GetCodeStringEAN128C"_s, [&] { widths = widthsInSetC(strCodeChar); });
    return widths;
}

QString clsEan128::GetCodeStringEAN128B(const QString& strCodeChar) const {
    QString widths;
    trap(u"GetCodeStringEAN128B"_s, [&] { widths = widthsInSetB(strCodeChar); });
    return widths;
}

bool clsEan128::PrintCodeEan128C(const QWidget* oForm, const QString& strCodeString, double dblBeginX,
                                 double dblBeginY, double dblHeight, double dblWidth,
                                 qint16 intFontSize) const {
    return trap(u"PrintCodeEan128C"_s, [&] {
        const QString widths = GetCodeStringEAN128C(strCodeString);
        SymbolDrawing drawing(oForm, dblBeginX, dblBeginY, dblHeight, dblWidth);
        drawBars(drawing, widths);
        drawing.print(strCodeString, Code128Spread::plain(strCodeString.size(), dblWidth), intFontSize,
                      SymbolDrawing::Weight::Normal);
        drawing.resizeBox(16.5, 30);
    });
}

bool clsEan128::PrintCodeEan128CCzytnik(const QWidget* oForm, const QString& strCodeString, double dblBeginX,
                                        double dblBeginY, double dblHeight, double dblWidth,
                                        qint16 intFontSize, bool blnVTSBarCode) const {
    return trap(u"PrintCodeEan128CCzytnik"_s, [&] {
        const QString widths = GetCodeStringEAN128C(strCodeString);
        SymbolDrawing drawing(oForm, dblBeginX, dblBeginY, dblHeight, dblWidth);
        drawBars(drawing, widths);
        const qsizetype length = strCodeString.size();
        if (blnVTSBarCode) {
            drawing.print(withBrackets(strCodeString), Code128Spread::readerWithBrackets(length, dblWidth),
                          intFontSize, SymbolDrawing::Weight::Normal);
            drawing.resizeBox(17, 23);
        } else {
            drawing.print(strCodeString, Code128Spread::reader(length, dblWidth), intFontSize,
                          SymbolDrawing::Weight::Normal);
            drawing.resizeBox(17, 25);
        }
    });
}

}  // namespace regalon
