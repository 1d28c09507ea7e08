#pragma once

#include <QString>
#include <QVariant>

namespace regalon {

/// A quoted text literal; "NULL" for NULL and for text that is empty or all blanks. "" on a failure.
/// Blanks at the ends stay in the literal.
QString SqlText(const QVariant& value, bool noNationalPrefix = false);

/// A number literal with a decimal point; "NULL" for NULL and for empty text. Text is read by the regional
/// format, so that "12,5" gives "12.5" in a Polish one.
/// Throws RunTimeError 0x80040201, source "modSQL", for anything else.
QString SqlNumber(const QVariant& value);

/// 1 if the value is exactly "Y", else 0.
qint16 FlagToCheck(const QVariant& value);

/// "Y" if the value is 1, else "N".
QString CheckToFlag(const QVariant& value);

/// The value, or the default if it is NULL.
QVariant NullToValue(const QVariant& value, const QVariant& fallback = QString());

}  // namespace regalon
