#pragma once

#include "platform/Picture.h"

#include <QColor>
#include <QFont>
#include <QRect>
#include <QString>
#include <QWidget>

#include <vector>

namespace regalon {

/// One thing that was drawn on a picture box, in logical pixels from its corner.
struct PictureMark {
    QRect Area;    ///< the bar itself, or the cell of the text
    QString Text;  ///< empty for a bar
    QFont Font;
    QColor Color;
};

/// An image control on a form. Its size is its own: a larger picture is scaled down to fit, with its
/// proportions kept, and a smaller one stands in the middle as it is.
///
/// Routines may also draw on it. Their scale unit is the logical pixel, fractions are rounded, halves up.
/// What is drawn lies over the picture on a white ground, in the order of drawing, until clearMarks(); what
/// lies outside the box appears when the box grows. Coordinates and sizes that no control can have raise 6.
class PictureBox : public QWidget {
    Q_OBJECT

public:
    explicit PictureBox(QWidget* parent = nullptr);

    const Picture& picture() const { return m_picture; }
    void setPicture(const Picture& picture);

    /// Where the picture is drawn, in logical pixels; empty for the empty picture.
    QRect pictureRect() const;

    /// Colour of what is drawn from now on; black at first.
    void setForeColor(const QColor& color) { m_foreColor = color; }
    /// In points of 20 twips, whatever the screen calls a point, so that texts keep their proportion to what
    /// is measured in twips. Raises 380 outside 1 to 2160.
    void setFontSize(int points);
    void setFontBold(bool bold);

    /// The drawing position, (0, 0) at first.
    void moveTo(double x, double y);
    /// A line of one pixel from y1 down or up to, not including, y2. The position is then (x, y2).
    void drawVertical(double x, double y1, double y2);
    /// Prints a text with its upper left corner at the position, which is then the upper right one.
    void print(const QString& text);

    const std::vector<PictureMark>& marks() const { return m_marks; }
    void clearMarks();

    /// Size of the box, rounded to pixels. Raises 380 for a negative value.
    void setWidthTwips(double width);
    void setHeightTwips(double height);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void addMark(const QRect& area, const QString& text = QString());
    void paintPicture(QPainter& painter) const;
    /// Behind the lines from `first` on that stand side by side: they are painted as one bar, so that no seam
    /// shows between them.
    std::size_t endOfBar(std::size_t first) const;
    void paintBar(QPainter& painter, const QRect& bar, const QColor& color) const;
    void paintText(QPainter& painter, const PictureMark& mark, const QRect& dirty) const;

    Picture m_picture;
    std::vector<PictureMark> m_marks;
    QColor m_foreColor = Qt::black;
    QPoint m_position;
};

}  // namespace regalon
