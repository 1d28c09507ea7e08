#include "platform/ReplaceFile.h"

#include "platform/RunTimeError.h"

#include <QFile>
#include <QTemporaryFile>

#include <cstdio>

namespace regalon {

void replaceFile(const QString& file, const QByteArray& bytes) {
    QTemporaryFile fresh(file);
    if (!fresh.open()) {
        throw RunTimeError(RunTime::PathFileAccess);
    }
    const QByteArray from = QFile::encodeName(fresh.fileName());
    if (fresh.write(bytes) != bytes.size() || !fresh.flush()) {
        throw RunTimeError(fresh.error() == QFileDevice::ResourceError ? RunTime::DiskFull
                                                                       : RunTime::DeviceIOError);
    }
    if (std::rename(from.constData(), QFile::encodeName(file).constData()) != 0) {
        throw RunTimeError(RunTime::PathFileAccess);
    }
    fresh.setAutoRemove(false);
}

}  // namespace regalon
