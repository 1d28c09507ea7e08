#include "platform/PictureBox.h"

#include <QPainter>
#include <QStyle>

namespace regalon {

PictureBox::PictureBox(QWidget* parent) : QWidget(parent) {}

void PictureBox::setPicture(const Picture& picture) {
    m_picture = picture;
    update();
}

QRect PictureBox::pictureRect() const {
    QSize shown = m_picture.size();
    if (shown.isEmpty())
        return {};
    if (shown.width() > width() || shown.height() > height())
        shown = shown.scaled(size(), Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, shown, rect());
}

void PictureBox::paintEvent(QPaintEvent*) {
    const QRect target = pictureRect();
    if (target.isEmpty())
        return;
    const qreal ratio = devicePixelRatioF();
    const QSize device = (QSizeF(target.size()) * ratio).toSize();
    QPixmap pixmap = m_picture.pixmap(qreal(device.width()) / m_picture.size().width());
    // A photograph loses its lines when the painter scales it that far by itself.
    if (pixmap.width() > device.width())
        pixmap = pixmap.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QPainter(this).drawPixmap(target, pixmap);
}

}  // namespace regalon
