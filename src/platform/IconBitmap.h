#pragma once

#include <QByteArray>
#include <QImage>

namespace regalon {

/// Decodes one entry of an .ico file, counted from 0, if it is an uncompressed bitmap of 32 bits a pixel, the
/// form of nearly every small icon. Any other entry, and one that does not lie whole within the file, gives a
/// null image: it is for the toolkit's reader, which is slower by its search through all its formats.
QImage iconBitmap(const QByteArray& file, int entry);

}  // namespace regalon
