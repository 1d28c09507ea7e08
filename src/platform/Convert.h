#pragma once

#include <QChar>
#include <QDateTime>
#include <QString>
#include <QVariant>
#include <QtGlobal>

namespace regalon {

/// How numbers look in texts. The groups of an integer part may be parted by any of the group separators.
struct RegionalFormat {
    QString Locale = QStringLiteral("pl_PL");
    QChar Decimal = u',';
    QString GroupSeparators = QStringLiteral(" \u00A0");

    /// Format of a locale such as "pl_PL" or "en_US". Where the groups are parted by a blank or a no-break
    /// blank, both are taken. Returns false and leaves `format` as it was for a name that no locale has.
    static bool fromLocale(const QString& name, RegionalFormat& format);
};

/// The regional format in use; pl_PL until another is set. Set once at the program's start.
const RegionalFormat& regionalFormat();
void setRegionalFormat(const RegionalFormat& format);

/// The text without the blanks (U+0020) at its ends. Other white space stays: only blanks are trimmed
/// anywhere in the system.
QString TrimBlanks(const QString& text);

/// True if the value is a number, or a text that ToDouble can read apart from its size: blanks at the ends, a
/// sign, digits with an optional group separator between two of them, the regional decimal sign, an exponent.
/// An empty text and NULL are not numeric.
bool IsNumeric(const QVariant& value);
bool IsNumeric(const QString& text);

/// Conversions to numbers. Halves round to the even neighbour. Raise 13 for a text that is no number, 6 for a
/// value out of the range of the type, 94 for NULL. True converts to -1.
qint16 ToInt16(const QVariant& value);
qint16 ToInt16(const QString& text);
qint16 ToInt16(double value);
qint32 ToInt32(const QVariant& value);
qint32 ToInt32(const QString& text);
qint32 ToInt32(double value);
double ToDouble(const QVariant& value);
double ToDouble(const QString& text);

/// The default text form of a number: at most 15 significant digits, the regional decimal sign, no groups;
/// "1E+15" and beyond, and below 0.0001, with an exponent.
QString NumberText(double value);

/// Date as yyyy-MM-dd, with " HH:mm:ss" behind unless the time is midnight.
QString DateTimeText(const QDateTime& value);

/// The default text form of a value: texts as they are, numbers by NumberText, dates by DateTimeText.
/// Raises 94 for NULL and 13 for a value without a text form (binary data).
QString ToText(const QVariant& value);

}  // namespace regalon
