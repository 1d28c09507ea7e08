#include "map/LocationPicture.h"

#include "common/ErrorTrap.h"
#include "platform/Base64File.h"
#include "platform/Paths.h"
#include "platform/PictureBox.h"

namespace regalon {

QString temporaryPictureFile(const LocationAddress& address) {
    return QStringLiteral("C:\\Windows\\Temp\\%1_%2_%3_%4.bmp")
        .arg(address.Rank)
        .arg(address.Stand)
        .arg(address.Shelf)
        .arg(address.Location);
}

void ShowPictureOnImageFields(QAnyStringView reportName, PictureBox& image, const QString& base64,
                              const QString& file, bool deleteFile) {
    WindowTrap(reportName, [&] {
        writeBase64(base64, file);
        image.setPicture(Picture::read(file));
        if (deleteFile && Paths::fileExists(file))
            Paths::remove(file);
    });
}

}  // namespace regalon
