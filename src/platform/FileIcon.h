#pragma once

#include <QIcon>
#include <QString>

namespace regalon {

/// An icon of a file that is read when it is first shown, and then only in the size that is asked for: a
/// window has many more icons than it shows when it opens. `file` is a path of this machine or of the
/// program's resources. A file that cannot be read gives an icon that shows nothing.
QIcon fileIcon(const QString& file);

}  // namespace regalon
