#include "IcoWriter.h"

#include <QBuffer>
#include <QDataStream>
#include <QImage>

namespace regalon::artwork {

namespace {

constexpr int fileHeaderBytes = 6;
constexpr int entryHeaderBytes = 16;
constexpr int largestSide = 256;

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
        pictures.append(pngOf(image));
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
