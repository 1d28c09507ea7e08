#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

namespace regalon {

struct ConnectionSettings;

/// The connection file: one scrambled line of "key:value;" pieces, in the 8-bit code page, ended by CR LF.
namespace ConnectionFile {

/// The setting that a key of the file names, letter case included; null for an unknown key.
QString* setting(ConnectionSettings& settings, QStringView key);

/// Takes over what the plain line holds; settings that it does not name stay. Blanks disappear wherever they
/// stand, a value cannot hold ";", unknown keys and pieces without ":" are passed over.
void parse(const QString& plainLine, ConnectionSettings& settings);

/// The plain line of the settings, in the order of the file.
QString compose(const ConnectionSettings& settings);

/// The same from the bytes of a file: only the first line counts. Bytes that are no scrambled line leave the
/// settings as they were. Never throws.
void readBytes(const QByteArray& bytes, ConnectionSettings& settings);

/// Reads a file by a path of the system. A file that cannot be opened leaves the settings as they were. Never
/// throws.
void read(const QString& path, ConnectionSettings& settings);

/// The bytes of a file. Raises 5 for a character that cannot be scrambled.
QByteArray bytes(const ConnectionSettings& settings);

/// Replaces a file; only its owner may read it. Raises 5 for a character that cannot be scrambled, and the
/// failures of opening and writing files; the old file stays after any of them.
void write(const QString& path, const ConnectionSettings& settings);

}  // namespace ConnectionFile
}  // namespace regalon
