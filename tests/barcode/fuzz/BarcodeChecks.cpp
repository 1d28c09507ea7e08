#include "barcode/fuzz/BarcodeChecks.h"

#include "barcode/clsEan128.h"
#include "barcode/clsEan13.h"
#include "platform/CodePage.h"
#include "platform/MsgBox.h"
#include "support/Require.h"

#include <algorithm>

namespace regalon::test {
namespace {

bool areDigits(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

int modulesIn(QStringView widths) {
    int modules = 0;
    for (const QChar width : widths) {
        require(width >= u'1' && width <= u'4', "a bar or a space is one to four modules wide");
        modules += width.digitValue();
    }
    return modules;
}

void checkWidths(const QString& widths, const char* start) {
    constexpr qsizetype patternLength = 6;
    constexpr int modulesOfPattern = 11;
    require(widths.startsWith(QLatin1String(start)), "a symbol begins with the start of its set");
    require(widths.endsWith(QLatin1String("2331112")), "a symbol ends with the stop");
    require(widths.size() % patternLength == 1, "a symbol is made of whole patterns");
    for (qsizetype i = 0; i + patternLength < widths.size() - 1; i += patternLength)
        require(modulesIn(QStringView(widths).mid(i, patternLength)) == modulesOfPattern,
                "a pattern has eleven modules");
}

void checkSetC(const QString& text) {
    const MsgBoxRecorder messages;
    const QString widths = clsEan128().GetCodeStringEAN128C(text);
    require(widths.isEmpty() != areDigits(text), "digits and nothing else are encoded in set C");
    require(messages.count() == (widths.isEmpty() ? 1 : 0), "a failure in set C is told once");
    if (widths.isEmpty())
        return;
    checkWidths(widths, "211232");
    require(widths.size() == 6 * ((text.size() + 1) / 2 + 2) + 7, "two digits are one pattern");
}

void checkSetB(const QString& text) {
    const MsgBoxRecorder messages;
    const QString widths = clsEan128().GetCodeStringEAN128B(text);
    const QByteArray codes = CodePage::fromText(text);
    const bool fits = std::all_of(codes.begin(), codes.end(),
                                  [](char code) { return static_cast<unsigned char>(code) <= 137; });
    require(widths.isEmpty() != fits, "codes up to 137 are encoded in set B");
    require(messages.count() == (fits ? 0 : 1), "a failure in set B is told once");
    if (!fits)
        return;
    checkWidths(widths, "211214");
    const bool plain = std::all_of(codes.begin(), codes.end(), [](char code) { return code >= 32; });
    if (plain)
        require(widths.size() == 6 * (codes.size() + 3) + 1, "a character is one pattern");
}

void checkEan13(const QString& text) {
    const MsgBoxRecorder messages;
    const QString modules = clsEan13().GetCodeStringEAN13(text);
    require(messages.count() == 0, "EAN-13 is encoded silently");
    const bool fits = text.size() >= 13 && areDigits(text.left(13));
    require(modules.size() == (fits ? 95 : 0), "thirteen digits are 95 modules, and all else none");
    require(std::all_of(modules.begin(), modules.end(), [](QChar c) { return c == u'0' || c == u'1'; }),
            "a module is a bar or a space");
}

void checkSum(const QString& text) {
    const MsgBoxRecorder messages;
    const qint32 digit = clsEan13().CalcPriceSumControl(text);
    require(digit >= 0 && digit <= 9, "a check digit is a digit");
    if (areDigits(text))
        require(messages.count() == 0, "digits have a check digit");
    else
        require(messages.count() == 1 ? digit == 1 : text.size() % 2 == 1,
                "anything but digits has the check digit 1 and is told, unless it does not count");
}

}  // namespace

void checkBarcode(const QByteArray& bytes) {
    const QString text = QString::fromUtf8(bytes);
    checkSetC(text);
    checkSetB(text);
    checkEan13(text);
    checkSum(text);
}

}  // namespace regalon::test
