#include "platform/PlanItems.h"

#include "platform/Twips.h"

#include <QGraphicsScene>
#include <QGraphicsSceneMouseEvent>
#include <QPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace regalon {
namespace {

/// Paints in whole pixels of the device while it lives, so that icons and lines stay crisp at every zoom and
/// density. Only for transforms that move and scale: a plan is never turned.
class DevicePainter {
public:
    explicit DevicePainter(QPainter& painter)
        : m_painter(painter),
          m_toDevice(painter.deviceTransform()),
          m_pixelRatio(painter.device()->devicePixelRatio()) {
        painter.save();
        painter.setWorldTransform(m_toDevice.inverted() * painter.worldTransform());
    }
    ~DevicePainter() { m_painter.restore(); }
    DevicePainter(const DevicePainter&) = delete;
    DevicePainter& operator=(const DevicePainter&) = delete;

    /// Device pixels of a pixel of the scene.
    qreal scale() const { return m_toDevice.m11(); }
    /// Device pixels of a logical pixel of the window, whatever the zoom.
    qreal pixelRatio() const { return m_pixelRatio; }

    QPoint at(const QPointF& point) const {
        const QPointF device = m_toDevice.map(point);
        return {static_cast<int>(std::lround(device.x())), static_cast<int>(std::lround(device.y()))};
    }
    QSize size(qreal width, qreal height) const {
        return {static_cast<int>(std::lround(width * m_toDevice.m11())),
                static_cast<int>(std::lround(height * m_toDevice.m22()))};
    }

private:
    QPainter& m_painter;
    QTransform m_toDevice;
    qreal m_pixelRatio;
};

/// Room around a line for its width at small zooms, in pixels of the scene.
constexpr qreal LineMargin = 2;

}  // namespace

PlanItem::PlanItem(const QString& arrayName, int index) : m_arrayName(arrayName), m_index(index) {
    setData(PlanData::Index, m_index);
    setData(PlanData::Tag, m_tag);
    setData(PlanData::ArrayName, m_arrayName);
}

void PlanItem::setTag(const QString& tag) {
    if (tag == m_tag)
        return;
    m_tag = tag;
    setData(PlanData::Tag, tag);
}

void PlanItem::retire() {
    m_retired = true;
    setVisible(false);
    // The index and the tag stay: without a name they are nobody's.
    setData(PlanData::ArrayName, {});
}

void PlanItem::revive() {
    if (!m_retired)
        return;
    m_retired = false;
    setData(PlanData::ArrayName, m_arrayName);
}

PictureItem::PictureItem(const QString& arrayName, int index) : PlanItem(arrayName, index) {
    setAcceptedMouseButtons(Qt::LeftButton);
}

void PictureItem::setPosition(int left, int top) {
    m_left = left;
    m_top = top;
    setPos(toPixelsF(left), toPixelsF(top));
}

void PictureItem::setWidth(int twips) {
    prepareGeometryChange();
    m_width = twips;
    fitToPicture();
}

void PictureItem::setHeight(int twips) {
    prepareGeometryChange();
    m_height = twips;
    fitToPicture();
}

void PictureItem::setPicture(const Picture& picture) {
    prepareGeometryChange();
    m_picture = picture;
    fitToPicture();
    update();
}

void PictureItem::loadPicture(const QString& path) {
    setLoadedPicture(Picture::load(path), path);
}

void PictureItem::setLoadedPicture(const Picture& picture, const QString& path) {
    setPicture(picture);
    m_picturePath = path;
}

void PictureItem::setStretch(bool stretch) {
    prepareGeometryChange();
    m_stretch = stretch;
    fitToPicture();
    update();
}

void PictureItem::fitToPicture() {
    if (m_stretch || m_picture.isEmpty())
        return;
    m_width = m_picture.widthTwips();
    m_height = m_picture.heightTwips();
}

void PictureItem::copyDesign(const PictureItem& design) {
    prepareGeometryChange();
    setPosition(design.m_left, design.m_top);
    m_picture = design.m_picture;
    m_picturePath = design.m_picturePath;
    m_width = design.m_width;
    m_height = design.m_height;
    m_stretch = design.m_stretch;
    m_click = design.m_click;
    if (design.scene() != nullptr && scene() == nullptr)
        design.scene()->addItem(this);
}

QRectF PictureItem::boundingRect() const {
    return {0, 0, toPixelsF(m_width), toPixelsF(m_height)};
}

void PictureItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    if (m_picture.isEmpty())
        return;
    const DevicePainter device(*painter);
    const QSize natural = m_picture.size();
    const qreal stretched = toPixelsF(m_width) / natural.width();
    const QPixmap pixmap = m_picture.pixmap(device.scale() * stretched);
    const QRect target(device.at({0, 0}), device.size(toPixelsF(m_width), toPixelsF(m_height)));
    painter->setRenderHint(QPainter::SmoothPixmapTransform, target.size() != pixmap.size());
    painter->drawPixmap(target, pixmap);
}

void PictureItem::mousePressEvent(QGraphicsSceneMouseEvent* event) {
    event->accept();
}

void PictureItem::mouseReleaseEvent(QGraphicsSceneMouseEvent* event) {
    event->accept();
    if (!contains(event->pos()) || !m_click)
        return;
    // A copy: the handler may rebuild the plan and so destroy this item with its handler.
    const ClickHandler click = m_click;
    click(*this);
}

LineItem::LineItem(const QString& arrayName, int index) : PlanItem(arrayName, index) {
    setAcceptedMouseButtons(Qt::NoButton);
}

void LineItem::setX1(int twips) {
    setEnds(twips, m_y1, m_x2, m_y2);
}
void LineItem::setX2(int twips) {
    setEnds(m_x1, m_y1, twips, m_y2);
}
void LineItem::setY1(int twips) {
    setEnds(m_x1, twips, m_x2, m_y2);
}
void LineItem::setY2(int twips) {
    setEnds(m_x1, m_y1, m_x2, twips);
}

void LineItem::setEnds(int x1, int y1, int x2, int y2) {
    prepareGeometryChange();
    m_x1 = x1;
    m_y1 = y1;
    m_x2 = x2;
    m_y2 = y2;
}

void LineItem::setBorderColor(const QColor& color) {
    m_color = color;
    update();
}

void LineItem::setBorderWidth(int pixels) {
    prepareGeometryChange();
    m_borderWidth = std::max(1, pixels);
}

void LineItem::copyDesign(const LineItem& design) {
    setEnds(design.m_x1, design.m_y1, design.m_x2, design.m_y2);
    m_color = design.m_color;
    m_borderWidth = design.m_borderWidth;
    if (design.scene() != nullptr && scene() == nullptr)
        design.scene()->addItem(this);
}

QRectF LineItem::boundingRect() const {
    const qreal margin = LineMargin + m_borderWidth;
    const QRectF ends(QPointF(toPixelsF(m_x1), toPixelsF(m_y1)), QPointF(toPixelsF(m_x2), toPixelsF(m_y2)));
    return ends.normalized().adjusted(-margin, -margin, margin, margin);
}

void LineItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*) {
    const DevicePainter device(*painter);
    const QPoint from = device.at({toPixelsF(m_x1), toPixelsF(m_y1)});
    const QPoint to = device.at({toPixelsF(m_x2), toPixelsF(m_y2)});
    const int width = std::max(1, static_cast<int>(std::lround(m_borderWidth * device.pixelRatio())));
    if (from.x() != to.x() && from.y() != to.y()) {
        painter->setPen(QPen(m_color, width));
        painter->drawLine(from, to);
        return;
    }
    const QRect line = QRect(from, QSize(1, 1)).united(QRect(to, QSize(1, 1)));
    const int before = (width - 1) / 2;
    const bool upright = from.x() == to.x();
    painter->fillRect(upright ? QRect(line.x() - before, line.y(), width, line.height())
                              : QRect(line.x(), line.y() - before, line.width(), width),
                      m_color);
}

}  // namespace regalon
