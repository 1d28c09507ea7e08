#pragma once

#include <QString>
#include <QtGlobal>

namespace regalon {

/// True if the content of a file is a JPEG picture, an icon or a bitmap; the ending of its name does not
/// count. Raises 53, 76 or 75 for a file that cannot be read.
[[nodiscard]] bool isPictureFile(const QString& path);

/// Size of a file in bytes; 0 for one that is not there.
[[nodiscard]] qint64 fileSize(const QString& path);

}  // namespace regalon
