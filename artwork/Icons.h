#pragma once

#include <QString>

namespace regalon {

/// Makes the icons that the program carries readable under ":/icons/", as in ":/icons/img_42.ico". May be
/// called any number of times.
void loadProgramIcons();

/// Path of a program icon by the number that a window's image list gives it; 42 gives ":/icons/img_42.ico".
QString rowIconPath(int number);

}  // namespace regalon
