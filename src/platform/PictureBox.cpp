#include "platform/PictureBox.h"

#include "platform/RunTimeError.h"
#include "platform/Twips.h"

#include <QFontMetrics>
#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

#include <cmath>

namespace regalon {
namespace {

constexpr int twipsPerPoint = 20;
constexpr int largestFont = 2160;

/// Nearest whole pixel, halves up as in toPixels().
int wholePixel(double value) {
    const double whole = std::floor(value + 0.5);
    if (!(std::abs(whole) <= QWIDGETSIZE_MAX))
        throw RunTimeError(RunTime::Overflow);
    return static_cast<int>(whole);
}

int sizeInPixels(double twips) {
    if (twips < 0)
        throw RunTimeError(RunTime::InvalidPropertyValue);
    return wholePixel(toPixelsF(twips));
}

}  // namespace

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

void PictureBox::setFontSize(int points) {
    if (points < 1 || points > largestFont)
        throw RunTimeError(RunTime::InvalidPropertyValue);
    QFont sized = font();
    sized.setPixelSize(wholePixel(toPixelsF(points * twipsPerPoint)));
    setFont(sized);
}

void PictureBox::setFontBold(bool bold) {
    QFont weighted = font();
    weighted.setBold(bold);
    setFont(weighted);
}

void PictureBox::moveTo(double x, double y) {
    m_position = {wholePixel(x), wholePixel(y)};
}

void PictureBox::drawVertical(double x, double y1, double y2) {
    const int column = wholePixel(x);
    const int from = wholePixel(y1);
    const int to = wholePixel(y2);
    m_position = {column, to};
    if (from < to)
        addMark(QRect(column, from, 1, to - from));
    else if (from > to)
        addMark(QRect(column, to + 1, 1, from - to));
}

void PictureBox::print(const QString& text) {
    const QFontMetrics metrics(font());
    const QRect cell(m_position, QSize(metrics.horizontalAdvance(text), metrics.height()));
    m_position = {wholePixel(cell.x() + cell.width()), cell.y()};
    if (!text.isEmpty())
        addMark(cell, text);
}

void PictureBox::addMark(const QRect& area, const QString& text) {
    m_marks.push_back({area, text, text.isEmpty() ? QFont() : font(), m_foreColor});
    update();
}

void PictureBox::clearMarks() {
    m_marks.clear();
    m_position = {};
    update();
}

void PictureBox::setWidthTwips(double width) {
    resize(sizeInPixels(width), height());
}

void PictureBox::setHeightTwips(double height) {
    resize(width(), sizeInPixels(height));
}

void PictureBox::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    // Bars must stand out for a scanner whatever colours the desktop has.
    if (!m_marks.empty())
        painter.fillRect(event->rect(), Qt::white);
    paintPicture(painter);
    for (std::size_t i = 0; i < m_marks.size();) {
        const PictureMark& mark = m_marks[i];
        if (mark.Text.isEmpty()) {
            const std::size_t end = endOfBar(i);
            paintBar(painter, mark.Area | m_marks[end - 1].Area, mark.Color);
            i = end;
        } else {
            paintText(painter, mark, event->rect());
            ++i;
        }
    }
}

std::size_t PictureBox::endOfBar(std::size_t first) const {
    std::size_t end = first + 1;
    while (end < m_marks.size() && m_marks[end].Text.isEmpty() &&
           m_marks[end].Color == m_marks[first].Color &&
           m_marks[end].Area == m_marks[end - 1].Area.translated(1, 0))
        ++end;
    return end;
}

void PictureBox::paintBar(QPainter& painter, const QRect& bar, const QColor& color) const {
    const QRect visible = bar & rect();
    if (visible.isEmpty())
        return;
    // Rounded to the pixels of a screen of a broken density, bars would be of wrong widths to a scanner.
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(QRectF(visible), color);
    painter.setRenderHint(QPainter::Antialiasing, false);
}

void PictureBox::paintText(QPainter& painter, const PictureMark& mark, const QRect& dirty) const {
    // A letter may lean out of its cell.
    const int lean = mark.Area.height();
    if (!mark.Area.adjusted(-lean, 0, lean, 0).intersects(dirty))
        return;
    painter.setFont(mark.Font);
    painter.setPen(mark.Color);
    painter.drawText(mark.Area.topLeft() + QPoint(0, QFontMetrics(mark.Font).ascent()), mark.Text);
}

void PictureBox::paintPicture(QPainter& painter) const {
    const QRect target = pictureRect();
    if (target.isEmpty())
        return;
    const qreal ratio = devicePixelRatioF();
    const QSize device = (QSizeF(target.size()) * ratio).toSize();
    QPixmap pixmap = m_picture.pixmap(qreal(device.width()) / m_picture.size().width());
    // A photograph loses its lines when the painter scales it that far by itself.
    if (pixmap.width() > device.width())
        pixmap = pixmap.scaled(device, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    painter.drawPixmap(target, pixmap);
}

}  // namespace regalon
