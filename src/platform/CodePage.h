#pragma once

#include <QByteArray>
#include <QChar>
#include <QString>

namespace regalon {

/// The 8-bit code page of files and character codes; windows-1250 until another is set. Bytes that a code
/// page leaves undefined stand for the control character of the same code, so that every byte survives both
/// ways.
namespace CodePage {

/// Sets the code page by its iconv name. Returns false, and keeps the old one, for a name that is unknown or
/// is not of eight bits.
bool set(const QString& name);
QString name();
/// True if set() would take the name.
bool isKnown(const QString& name);
/// True if every character of the text has a code in the code page of this name.
bool holds(const QString& name, const QString& text);

/// Characters without a code become "?".
QByteArray fromText(const QString& text);
QString toText(const QByteArray& bytes);

/// Code of a character, 0 to 255; 63 ("?") for one without a code.
int codeOf(QChar character);
/// Character of a code. Raises 5 outside 0 to 255.
QChar charOf(int code);

}  // namespace CodePage
}  // namespace regalon
