#pragma once

#include <QByteArray>
#include <QString>

namespace regalon {

/// Gives a file of this machine new content. Until that is whole the old file stays, whatever fails or is
/// killed; from the start nobody but the owner may read the new one. A link is replaced itself, not what it
/// names. Raises 75 where no file can be made in the folder or the old one cannot be replaced, and 61 or 57
/// where writing fails.
void replaceFile(const QString& file, const QByteArray& bytes);

}  // namespace regalon
