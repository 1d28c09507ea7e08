#include "platform/IconBitmap.h"

#include <QtEndian>

#include <algorithm>

namespace regalon {

namespace {

constexpr qint64 fileHeaderBytes = 6;
constexpr qint64 entryBytes = 16;
constexpr qint64 bitmapHeaderBytes = 40;
constexpr qint32 largestSide = 256;
constexpr qint64 pixelBytes = 4;

template <typename T>
T littleEndian(const QByteArray& file, qint64 at) {
    return qFromLittleEndian<T>(file.constData() + at);
}

}  // namespace

QImage iconBitmap(const QByteArray& file, int entry) {
    const qint64 head = fileHeaderBytes + entry * entryBytes;
    if (entry < 0 || head + entryBytes > file.size())
        return {};
    const qint64 length = littleEndian<quint32>(file, head + 8);
    const qint64 start = littleEndian<quint32>(file, head + 12);
    if (length < bitmapHeaderBytes || start + length > file.size())
        return {};
    const auto headerBytes = littleEndian<quint32>(file, start);
    const auto width = littleEndian<qint32>(file, start + 4);
    // The rows of the picture and those of its mask.
    const auto rows = littleEndian<qint32>(file, start + 8);
    const auto bits = littleEndian<quint16>(file, start + 14);
    const auto compression = littleEndian<quint32>(file, start + 16);
    const qint32 height = rows / 2;
    if (headerBytes != bitmapHeaderBytes || bits != 32 || compression != 0 || rows % 2 != 0 || width < 1 ||
        width > largestSide || height < 1 || height > largestSide ||
        length < bitmapHeaderBytes + pixelBytes * width * height)
        return {};

    QImage image(width, height, QImage::Format_ARGB32);
    const char* from = file.constData() + start + bitmapHeaderBytes;
    for (int y = height - 1; y >= 0; --y) {
        auto* to = reinterpret_cast<QRgb*>(image.scanLine(y));
        qFromLittleEndian<quint32>(from, width, to);
        from += pixelBytes * width;
    }
    return image;
}

}  // namespace regalon
