#pragma once

#include "map/LocationAddress.h"

#include <QAnyStringView>
#include <QString>

namespace regalon {

class PictureBox;

/// Where the picture of a location is written on its way into a control. The ending says nothing of the
/// picture's format.
[[nodiscard]] QString temporaryPictureFile(const LocationAddress& address);

/// Shows the picture that a Base64 text stands for, by way of a file that is deleted again on request.
/// Reports its failure under the window's name for it. A text that is no picture ends the routine where it
/// fails: the control keeps what it showed, and what was written stays in the temporary folder until it is
/// written over or the program ends.
void ShowPictureOnImageFields(QAnyStringView reportName, PictureBox& image, const QString& base64,
                              const QString& file, bool deleteFile);

}  // namespace regalon
