#pragma once

#include <QString>

class QWidget;

namespace regalon {

/// Encoder of EAN-13 and its drawing, for the number systems 5 and 7.
class clsEan13 {
public:
    /// The 95 modules of a 13-digit code, 1 for a bar. Its check digit is taken as it stands. Returns "" for
    /// fewer digits or anything but digits, without a message.
    /// A code that begins with another digit than 5 and 7 has its left half wholly in set B: no reader
    /// accepts it, and nobody is told.
    QString GetCodeStringEAN13(const QString& strCodeChar) const;

    /// The check digit of any number of digits. Of an odd number the first digit does not count. Anything but
    /// digits is reported, and the result is then 1.
    qint32 CalcPriceSumControl(const QString& strCodeChar) const;

    /// Draws the 12 digits, and the check digit behind them, on the picture box `picBarCode` of the form, in
    /// its scale units, which are pixels, and writes the check digit into the form's text box
    /// `txtSumaKontrolana`. The guard bars are longer than dblHeight. dblWidth is the width of a module: 1 or
    /// 2; with any other width no bar is drawn, but the digits are. False after a failure, which is reported.
    bool PrintCodeEan13(const QWidget* oForm, const QString& strCodeString, double dblBeginX,
                        double dblBeginY, double dblHeight, double dblWidth, qint16 intFontSize) const;
};

}  // namespace regalon
