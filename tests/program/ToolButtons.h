#pragma once

#include <QImage>
#include <QList>
#include <QRect>

namespace regalon::test {

/// The buttons in a strip of a toolbar, from left to right: what stands apart from its neighbours by more
/// than the blank between two words. Lines that part buttons are left out. In pixels of the picture.
QList<QRect> toolButtons(const QImage& picture, const QRect& strip, double scale = 1);

}  // namespace regalon::test
