#pragma once

#include <QString>

class QWidget;

namespace regalon {

/// Encoder of Code 128 and its drawing. Codes become strings of widths, in modules: bar, space, bar and so
/// on.
///
/// The drawing routines work on any form with a picture box `picBarCode`, in its scale units, which are
/// pixels. They always use set C. dblHeight is the height of the bars, dblWidth the width of a narrow module:
/// 1 or 2; with any other width no bar is drawn, but the digits are. Each draws over what the box shows
/// already, so that several symbols can share it.
///
/// Every routine reports its own failures. A code that cannot be encoded is reported by the encoder, and the
/// drawing routine then prints it without bars and succeeds.
class clsEan128 {
public:
    /// Pairs of digits in set C, an odd number of them with "0" in front. There is no FNC1 behind the start:
    /// the symbol is not an EAN-128 to a reader, whatever the names say. Returns "" after a failure, such as
    /// anything but a digit.
    QString GetCodeStringEAN128C(const QString& strCodeChar) const;

    /// Text in set B, by the codes of the 8-bit code page. Characters below 32 add nothing but their weight;
    /// those above 137 are a failure. Returns "" after one.
    QString GetCodeStringEAN128B(const QString& strCodeChar) const;

    /// False after a failure.
    bool PrintCodeEan128C(const QWidget* oForm, const QString& strCodeString, double dblBeginX,
                          double dblBeginY, double dblHeight, double dblWidth, qint16 intFontSize) const;

    /// The same for codes that a reader scans, with a spread of the digits of its own. With blnVTSBarCode the
    /// identifiers of a code 01, thirteen digits, 10, batch are shown in brackets, by their places alone.
    bool PrintCodeEan128CCzytnik(const QWidget* oForm, const QString& strCodeString, double dblBeginX,
                                 double dblBeginY, double dblHeight, double dblWidth, qint16 intFontSize,
                                 bool blnVTSBarCode) const;
};

}  // namespace regalon
