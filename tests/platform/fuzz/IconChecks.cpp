#include "platform/fuzz/IconChecks.h"

#include "platform/IconBitmap.h"
#include "platform/Picture.h"
#include "platform/RunTimeError.h"
#include "support/Require.h"

namespace regalon::test {
namespace {

void checkEntries(const QByteArray& bytes) {
    for (int entry = -1; entry <= 4; ++entry) {
        const QImage image = iconBitmap(bytes, entry);
        require(image.isNull() || (image.width() <= 256 && image.height() <= 256),
                "an entry is not larger than an icon can be");
    }
}

void checkPicture(const QByteArray& bytes) {
    const Picture picture = Picture::fromBytes(bytes);
    require(!picture.isEmpty() && !picture.size().isEmpty(), "a picture that was read has a size");
    for (const qreal scale : {0.0, 1.0, 1.5, 4.0, 100.0})
        require(!picture.pixmap(scale).isNull(), "a picture can be drawn at every scale");
}

}  // namespace

void checkIcon(const QByteArray& bytes) {
    checkEntries(bytes);
    try {
        checkPicture(bytes);
    } catch (const RunTimeError& refused) {
        require(refused.number() == RunTime::InvalidPicture, "bytes are refused as no picture");
    }
}

}  // namespace regalon::test
