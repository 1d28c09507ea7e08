#include "barcode/clsEan13.h"

#include "barcode/Digit.h"
#include "barcode/DigitSpread.h"
#include "barcode/Ean13Patterns.h"
#include "barcode/SymbolDrawing.h"
#include "platform/Convert.h"
#include "platform/FormControl.h"
#include "platform/MsgBox.h"

#include <QLineEdit>

#include <algorithm>
#include <cmath>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype codeLength = 13;
constexpr qsizetype moduleCount = 95;
constexpr qsizetype halfLength = 6;

constexpr int checkDigitOfFailure = 1;

template <class Body>
bool trap(const QString& routine, Body&& body) {
    try {
        body();
        return true;
    } catch (...) {
        const ErrorRecord error = currentError();
        MsgBox(QString::number(error.Number) + u' ' + error.Description, MsgFlag::Critical,
               u' ' + routine + u" clsEan13"_s);
        return false;
    }
}

/// True for a text that begins with the digits of a whole code.
bool isCode(const QString& text) {
    return text.size() >= codeLength && std::all_of(text.begin(), text.begin() + codeLength, isDigit);
}

const Pattern<7>& pattern(const Ean13::DigitSet& set, QChar digit) {
    return set[digit.unicode() - u'0'];
}

/// How much longer the guard bars are than the others, by the number of the module.
double guardExtension(qsizetype module, qsizetype count) {
    constexpr double extension = 3;
    const bool guard =
        module == 1 || module == 3 || module == 47 || module == 49 || module == count - 2 || module == count;
    return guard ? extension : 0;
}

void drawBars(SymbolDrawing& drawing, const QString& modules) {
    for (qsizetype i = 1; i <= modules.size(); ++i)
        drawing.module(modules[i - 1] == u'1', guardExtension(i, modules.size()));
}

void printDigits(SymbolDrawing& drawing, const QString& code, double moduleWidth, int fontSize) {
    const auto print = [&](qsizetype from, qsizetype count, const DigitSpread& spread) {
        drawing.print(code.mid(from, count), spread, fontSize, SymbolDrawing::Weight::OfBox);
    };
    const double leftStep = ToInt16(std::floor(6 * moduleWidth));
    print(1, halfLength, {leftStep, -1});
    print(1 + halfLength, halfLength, {std::floor(7 * moduleWidth), std::floor(43 * moduleWidth)});
    print(0, 1, {std::floor(moduleWidth), -9});
}

}  // namespace

QString clsEan13::GetCodeStringEAN13(const QString& strCodeChar) const {
    if (!isCode(strCodeChar))
        return {};
    const QChar* digit = strCodeChar.constData();
    const Ean13::LeftSets& leftSets = Ean13::leftSets(digitValue(*digit++));
    QString modules(moduleCount, Qt::Uninitialized);
    QChar* out = write(modules.data(), Ean13::Guard);
    for (const Ean13::DigitSet* set : leftSets)
        out = write(out, pattern(*set, *digit++));
    out = write(out, Ean13::Middle);
    for (qsizetype i = 0; i < halfLength; ++i)
        out = write(out, pattern(Ean13::SetC, *digit++));
    writeLast(out, Ean13::Guard);
    return modules;
}

qint32 clsEan13::CalcPriceSumControl(const QString& strCodeChar) const {
    qint32 checkDigit = checkDigitOfFailure;
    trap(u"CalcPriceSumControl"_s, [&] {
        // By pairs from the end, of which the second digit counts three times. The first of an odd number has
        // no partner and is left out.
        qint64 sum = 0;
        for (qsizetype i = strCodeChar.size() - 1; i >= 1; i -= 2)
            sum += 3 * digitValue(strCodeChar[i]) + digitValue(strCodeChar[i - 1]);
        checkDigit = static_cast<qint32>((10 - sum % 10) % 10);
    });
    return checkDigit;
}

bool clsEan13::PrintCodeEan13(const QWidget* oForm, const QString& strCodeString, double dblBeginX,
                              double dblBeginY, double dblHeight, double dblWidth, qint16 intFontSize) const {
    return trap(u"PrintCodeEan13"_s, [&] {
        const QString checkDigit = QString::number(CalcPriceSumControl(strCodeString));
        const QString code = strCodeString + checkDigit;
        SymbolDrawing drawing(oForm, dblBeginX, dblBeginY, dblHeight, dblWidth);
        drawBars(drawing, GetCodeStringEAN13(code));
        printDigits(drawing, code, dblWidth, intFontSize);
        drawing.resizeBox(16.5, 22.5);
        controlOf<QLineEdit>(oForm, u"txtSumaKontrolana"_s).setText(checkDigit);
    });
}

}  // namespace regalon
