#include "platform/Base64File.h"

#include "platform/Paths.h"
#include "platform/RunTimeError.h"

#include <QByteArray>

namespace regalon {

namespace {

bool isWhiteSpace(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

QByteArray decoded(const QString& base64) {
    QByteArray text = base64.toLatin1();
    text.removeIf(isWhiteSpace);
    auto result = QByteArray::fromBase64Encoding(
        text, QByteArray::Base64Encoding | QByteArray::AbortOnBase64DecodingErrors);
    if (!result)
        throw RunTimeError(RunTime::InvalidPicture);
    return result.decoded;
}

}  // namespace

void writeBase64(const QString& base64, const QString& path) {
    const QByteArray bytes = decoded(base64);
    QFile file;
    Paths::open(file, path, QIODevice::WriteOnly | QIODevice::Truncate);
    if (file.write(bytes) != bytes.size() || !file.flush())
        throw RunTimeError(RunTime::DeviceIOError);
}

QString readBase64(const QString& path) {
    QFile file;
    Paths::open(file, path, QIODevice::ReadOnly);
    return QString::fromLatin1(file.readAll().toBase64());
}

}  // namespace regalon
