#pragma once

#include <QByteArray>
#include <QList>

class QImage;

namespace regalon::artwork {

/// Packs images into one .ico file, in the given order; readers that take the first entry get images.first().
/// Small images are kept as bitmaps, larger ones as PNG, of at most 256 by 256 pixels. Returns an empty array
/// if an image does not fit or cannot be encoded. The same images give the same bytes.
QByteArray icoFile(const QList<QImage>& images);

}  // namespace regalon::artwork
