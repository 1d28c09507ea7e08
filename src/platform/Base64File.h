#pragma once

#include <QString>

namespace regalon {

/// Writes the bytes that a Base64 text stands for to a file on a path of the system, over what the file held.
/// Blanks and line ends in the text do not count. Raises 481 for a text that is no Base64, and then leaves
/// the file alone; 76, 75 or 57 when the file cannot be written.
void writeBase64(const QString& base64, const QString& path);

/// The bytes of a file as Base64 text in one line. Raises 53, 76 or 75 for a file that cannot be read.
[[nodiscard]] QString readBase64(const QString& path);

}  // namespace regalon
