#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QColor>
#include <QFile>
#include <QImage>
#include <QList>
#include <QSize>
#include <QString>

namespace regalon::test {

/// One size of an icon file: a square of one colour.
struct IconSize {
    QSize size;
    QColor color;
    int depth = 32;
};

/// The bytes of an .ico whose sizes are PNG pictures, in the order given.
inline QByteArray iconBytes(const QList<IconSize>& sizes) {
    const auto word = [](int value) {
        return QByteArray(1, static_cast<char>(value & 255)) + static_cast<char>((value >> 8) & 255);
    };
    const auto dword = [&word](int value) { return word(value & 0xFFFF) + word(value >> 16); };
    QByteArray head = word(0) + word(1) + word(static_cast<int>(sizes.size()));
    QByteArray body;
    const int bodyStart = 6 + 16 * static_cast<int>(sizes.size());
    for (const IconSize& one : sizes) {
        QImage image(one.size, QImage::Format_ARGB32);
        image.fill(one.color);
        QByteArray png;
        QBuffer buffer(&png);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, "PNG");
        head += static_cast<char>(one.size.width());
        head += static_cast<char>(one.size.height());
        head += word(0) + word(1) + word(one.depth);
        head += dword(static_cast<int>(png.size())) + dword(bodyStart + static_cast<int>(body.size()));
        body += png;
    }
    return head + body;
}

inline void writeFile(const QString& name, const QByteArray& bytes) {
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size())
        qFatal("A test file could not be written.");
}

}  // namespace regalon::test
