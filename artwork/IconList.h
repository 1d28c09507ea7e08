#pragma once

#include <QByteArray>
#include <QList>
#include <QSize>
#include <QString>

#include <functional>

class QPainter;

namespace regalon::artwork {

/// One file of the icon folder.
struct Icon {
    QString fileName;
    QSize size;  ///< pixels of the 1x picture
    std::function<void(QPainter&)> draw;
};

/// Every file of the icon folder, sorted as drawn. File names differ.
QList<Icon> iconList();

/// The bytes of the .ico file: entries for 1x, 2x and 3x screens, in this order.
QByteArray icoBytes(const Icon& icon);

}  // namespace regalon::artwork
