#include "program/ToolButtons.h"

#include <cstdlib>

namespace regalon::test {

namespace {

constexpr int contrast = 25;  // of 255
// Logical pixels: the least blank between two buttons, and the least width of a button.
constexpr int betweenButtons = 10;
constexpr int leastButton = 12;

bool isEmptyColumn(const QImage& picture, const QRect& strip, int x) {
    const int ground = qGray(picture.pixel(strip.left(), strip.center().y()));
    for (int y = strip.top(); y <= strip.bottom(); ++y) {
        if (std::abs(qGray(picture.pixel(x, y)) - ground) > contrast) {
            return false;
        }
    }
    return true;
}

}  // namespace

QList<QRect> toolButtons(const QImage& picture, const QRect& strip, double scale) {
    QList<QRect> buttons;
    const auto add = [&](int first, int last) {
        if (last - first + 1 >= leastButton * scale) {
            buttons.append(QRect(QPoint(first, strip.top()), QPoint(last, strip.bottom())));
        }
    };
    int first = -1;
    int last = -1;
    for (int x = strip.left(); x <= strip.right(); ++x) {
        if (isEmptyColumn(picture, strip, x)) {
            continue;
        }
        if (first >= 0 && x - last > betweenButtons * scale) {
            add(first, last);
            first = -1;
        }
        first = first < 0 ? x : first;
        last = x;
    }
    if (first >= 0) {
        add(first, last);
    }
    return buttons;
}

}  // namespace regalon::test
