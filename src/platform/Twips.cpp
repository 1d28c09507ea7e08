#include "platform/Twips.h"

#include <QWidget>

namespace regalon {

void place(QWidget* widget, int left, int top, int width, int height) {
    const int x = toPixels(left);
    const int y = toPixels(top);
    widget->setGeometry(x, y, toPixels(left + width) - x, toPixels(top + height) - y);
}

}  // namespace regalon
