#include "IcoWriter.h"

#include <QBuffer>
#include <QDataStream>
#include <QImage>

namespace regalon::artwork {

namespace {

constexpr int fileHeaderBytes = 6;
constexpr int entryHeaderBytes = 16;
constexpr int largestSide = 256;
constexpr int bitmapHeaderBytes = 40;
/// Images of up to this many pixels are kept as bitmaps: a plan reads some two hundred files when it opens,
/// and setting up a decompressor costs more than so few pixels.
constexpr int mostBitmapPixels = 48 * 48;

QByteArray pngOf(const QImage& image) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    // Colour keys and text chunks would only make the file longer.
    QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    plain.setDotsPerMeterX(0);
    plain.setDotsPerMeterY(0);
    if (!plain.save(&buffer, "PNG")) {
        return {};
    }
    return bytes;
}

/// The bitmap form of an entry: bottom row first, blue, green, red and alpha, then a mask of one bit a pixel
/// that readers of the alpha ignore. The header counts the rows of both.
QByteArray bitmapOf(const QImage& image) {
    const QImage plain = image.convertToFormat(QImage::Format_ARGB32);
    const int maskRowBytes = (plain.width() + 31) / 32 * 4;
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint32(bitmapHeaderBytes) << qint32(plain.width()) << qint32(2 * plain.height()) << quint16(1)
        << quint16(32) << quint32(0) << quint32(plain.sizeInBytes()) << qint32(0) << qint32(0) << quint32(0)
        << quint32(0);
    for (int y = plain.height() - 1; y >= 0; --y) {
        for (int x = 0; x < plain.width(); ++x) {
            out << quint32(plain.pixel(x, y));
        }
    }
    for (int y = plain.height() - 1; y >= 0; --y) {
        QByteArray row(maskRowBytes, 0);
        for (int x = 0; x < plain.width(); ++x) {
            if (qAlpha(plain.pixel(x, y)) == 0) {
                row[x / 8] = static_cast<char>(row[x / 8] | (0x80 >> (x % 8)));
            }
        }
        out.writeRawData(row.constData(), maskRowBytes);
    }
    return bytes;
}

QByteArray pictureOf(const QImage& image) {
    return image.width() * image.height() <= mostBitmapPixels ? bitmapOf(image) : pngOf(image);
}

/// A side of 256 is written as 0: the field has one byte.
quint8 sideByte(int side) {
    return static_cast<quint8>(side == largestSide ? 0 : side);
}

}  // namespace

QByteArray icoFile(const QList<QImage>& images) {
    QList<QByteArray> pictures;
    for (const QImage& image : images) {
        if (image.isNull() || image.width() > largestSide || image.height() > largestSide) {
            return {};
        }
        pictures.append(pictureOf(image));
        if (pictures.last().isEmpty()) {
            return {};
        }
    }

    QByteArray file;
    QDataStream out(&file, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    out << quint16(0) << quint16(1) << static_cast<quint16>(images.size());
    auto offset = static_cast<quint32>(fileHeaderBytes + entryHeaderBytes * images.size());
    for (qsizetype i = 0; i < images.size(); ++i) {
        const auto length = static_cast<quint32>(pictures[i].size());
        out << sideByte(images[i].width()) << sideByte(images[i].height()) << quint8(0) << quint8(0)
            << quint16(1) << quint16(32) << length << offset;
        offset += length;
    }
    for (const QByteArray& picture : pictures) {
        out.writeRawData(picture.constData(), static_cast<int>(picture.size()));
    }
    return file;
}

}  // namespace regalon::artwork
