// regalon-artwork FOLDER: writes the icon folder. Needs no display and no fonts.

#include "IconList.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <cstdio>

namespace {

/// A file that already holds these bytes keeps its time, so that a build has nothing to do after it.
bool writeFile(const QString& path, const QByteArray& bytes) {
    QFile present(path);
    if (present.open(QIODevice::ReadOnly) && present.readAll() == bytes) {
        return true;
    }
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: regalon-artwork FOLDER\n", stderr);
        return 2;
    }
    const QString folder = QFile::decodeName(argv[1]);
    if (!QDir().mkpath(folder)) {
        std::fprintf(stderr, "regalon-artwork: cannot make the folder %s\n", argv[1]);
        return 1;
    }
    for (const regalon::artwork::Icon& icon : regalon::artwork::iconList()) {
        const QByteArray bytes = regalon::artwork::icoBytes(icon);
        if (bytes.isEmpty() || !writeFile(folder + QLatin1Char('/') + icon.fileName, bytes)) {
            std::fprintf(stderr, "regalon-artwork: cannot write %s\n", qPrintable(icon.fileName));
            return 1;
        }
    }
    return 0;
}
