#include "platform/PictureFile.h"

#include "platform/Paths.h"

#include <QFileInfo>
#include <QMimeDatabase>

#include <algorithm>
#include <array>

namespace regalon {

namespace {

constexpr std::array<const char*, 3> kKinds = {"image/jpeg", "image/vnd.microsoft.icon", "image/bmp"};

}  // namespace

bool isPictureFile(const QString& path) {
    QFile file;
    Paths::open(file, path, QIODevice::ReadOnly);
    const QMimeType kind = QMimeDatabase().mimeTypeForData(&file);
    return std::any_of(kKinds.begin(), kKinds.end(),
                       [&kind](const char* name) { return kind.inherits(QLatin1String(name)); });
}

qint64 fileSize(const QString& path) {
    return QFileInfo(Paths::toFile(path)).size();
}

}  // namespace regalon
