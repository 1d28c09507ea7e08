#include "Symbols.h"

#include "Palette.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPolygonF>

namespace regalon::artwork {

namespace {

void setLine(QPainter& painter, QRgb color, double width) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(color), width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
}

void setArea(QPainter& painter, QRgb color) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(color));
}

void drawDisc(QPainter& painter, QRgb color) {
    setArea(painter, color);
    painter.drawEllipse(QRectF(1, 1, 14, 14));
}

void drawTick(QPainter& painter, QRgb color) {
    setLine(painter, color, 2);
    painter.drawPolyline(QPolygonF{{4.5, 8.5}, {7, 11}, {11.5, 5.5}});
}

void drawCarton(QPainter& painter, QRgb color, QRgb lid) {
    setArea(painter, color);
    painter.drawRect(QRectF(2, 5, 12, 9));
    setArea(painter, lid);
    painter.drawRect(QRectF(1, 2, 14, 4));
    setArea(painter, palette::paper);
    painter.drawRect(QRectF(6, 8, 4, 1.5));
}

void drawArrowHead(QPainter& painter, QRgb color, const QPolygonF& head) {
    setArea(painter, color);
    painter.drawPolygon(head);
}

}  // namespace

void drawRowReady(QPainter& painter) {
    drawDisc(painter, palette::teal);
    drawTick(painter, palette::paper);
}

void drawRowPartly(QPainter& painter) {
    drawDisc(painter, palette::blue);
    drawTick(painter, palette::paper);
}

void drawRowConfirmed(QPainter& painter) {
    setLine(painter, palette::blue, 1.5);
    painter.drawEllipse(QRectF(1.75, 1.75, 12.5, 12.5));
    drawTick(painter, palette::blue);
}

void drawRowPending(QPainter& painter) {
    setLine(painter, palette::amber, 1.5);
    painter.setBrush(QColor(palette::paper));
    painter.drawEllipse(QRectF(1.75, 1.75, 12.5, 12.5));
    setLine(painter, palette::ink, 1.5);
    painter.drawPolyline(QPolygonF{{8, 4.5}, {8, 8.5}, {10.5, 10}});
}

void drawRowClosed(QPainter& painter) {
    drawDisc(painter, palette::red);
    setLine(painter, palette::paper, 2);
    painter.drawLine(QPointF(5.5, 5.5), QPointF(10.5, 10.5));
    painter.drawLine(QPointF(10.5, 5.5), QPointF(5.5, 10.5));
}

void drawBack(QPainter& painter) {
    setLine(painter, palette::blue, 2);
    QPainterPath path(QPointF(5, 6));
    path.lineTo(10.5, 6);
    path.cubicTo(14.5, 6, 14.5, 12.5, 10.5, 12.5);
    path.lineTo(6, 12.5);
    painter.drawPath(path);
    drawArrowHead(painter, palette::blue, QPolygonF{{1.5, 6}, {6.5, 2}, {6.5, 10}});
}

void drawRowOther(QPainter& painter) {
    setLine(painter, palette::grey, 1.5);
    painter.setBrush(QColor(palette::paper));
    painter.drawRect(QRectF(2.5, 4.5, 11, 9));
    painter.drawLine(QPointF(2.5, 7.5), QPointF(13.5, 7.5));
}

void drawRowAssigned(QPainter& painter) {
    drawCarton(painter, palette::blue, palette::steel);
}

void drawRowStock(QPainter& painter) {
    drawCarton(painter, palette::amber, palette::brown);
}

void drawSortMark(QPainter& painter) {
    drawArrowHead(painter, palette::ink, QPolygonF{{3, 6}, {13, 6}, {8, 12}});
}

void drawSearchMark(QPainter& painter) {
    drawLens(painter);
}

void drawPointerUp(QPainter& painter) {
    drawArrowHead(painter, palette::red,
                  QPolygonF{{8, 1}, {15, 8}, {10.5, 8}, {10.5, 15}, {5.5, 15}, {5.5, 8}, {1, 8}});
}

void drawPointerDown(QPainter& painter) {
    drawArrowHead(painter, palette::red,
                  QPolygonF{{8, 15}, {15, 8}, {10.5, 8}, {10.5, 1}, {5.5, 1}, {5.5, 8}, {1, 8}});
}

void drawExit(QPainter& painter) {
    setArea(painter, palette::steel);
    painter.drawRect(QRectF(1, 1, 8, 14));
    setArea(painter, palette::paper);
    painter.drawRect(QRectF(2, 2, 6, 12));
    setArea(painter, palette::beam);
    painter.drawPolygon(QPolygonF{{2, 2}, {6, 4}, {6, 15}, {2, 14}});
    setLine(painter, palette::blue, 2);
    painter.drawLine(QPointF(8, 8), QPointF(12, 8));
    drawArrowHead(painter, palette::blue, QPolygonF{{15.5, 8}, {11, 4.5}, {11, 11.5}});
}

void drawRefresh(QPainter& painter) {
    setLine(painter, palette::teal, 2);
    constexpr int sixteenthsPerDegree = 16;
    painter.drawArc(QRectF(2.5, 2.5, 11, 11), 40 * sixteenthsPerDegree, 280 * sixteenthsPerDegree);
    drawArrowHead(painter, palette::teal, QPolygonF{{14.5, 1.5}, {14.5, 7.5}, {9, 5.5}});
}

void drawClock(QPainter& painter) {
    setLine(painter, palette::teal, 1.5);
    painter.setBrush(QColor(palette::paper));
    painter.drawEllipse(QRectF(1.75, 1.75, 12.5, 12.5));
    setLine(painter, palette::ink, 1.5);
    painter.drawPolyline(QPolygonF{{8, 4}, {8, 8}, {11, 8}});
}

void drawLens(QPainter& painter) {
    setLine(painter, palette::ink, 2.5);
    painter.drawLine(QPointF(10, 10), QPointF(14, 14));
    setLine(painter, palette::blue, 1.5);
    painter.setBrush(QColor(palette::paper));
    painter.drawEllipse(QRectF(1.75, 1.75, 9, 9));
}

void drawList(QPainter& painter) {
    for (const double top : {3.0, 7.0, 11.0}) {
        setArea(painter, palette::blue);
        painter.drawRect(QRectF(2, top, 2, 2));
        setArea(painter, palette::ink);
        painter.drawRect(QRectF(6, top, 8, 2));
    }
}

void drawClose(QPainter& painter) {
    setLine(painter, palette::red, 2.5);
    painter.drawLine(QPointF(4, 4), QPointF(12, 12));
    painter.drawLine(QPointF(12, 4), QPointF(4, 12));
}

void drawSave(QPainter& painter) {
    setArea(painter, palette::steel);
    painter.drawPolygon(QPolygonF{{1.5, 1.5}, {12, 1.5}, {14.5, 4}, {14.5, 14.5}, {1.5, 14.5}});
    setArea(painter, palette::paper);
    painter.drawRect(QRectF(4.5, 2.5, 6, 4));
    painter.drawRect(QRectF(4, 9, 8, 5.5));
    setArea(painter, palette::blue);
    painter.drawRect(QRectF(5.5, 11, 5, 1.5));
}

void drawFolder(QPainter& painter) {
    setArea(painter, palette::brown);
    painter.drawPolygon(QPolygonF{{1.5, 3}, {6.5, 3}, {8, 5}, {14.5, 5}, {14.5, 13}, {1.5, 13}});
    setArea(painter, palette::amber);
    painter.drawPolygon(QPolygonF{{1.5, 13}, {3.5, 7}, {15.5, 7}, {14, 13}});
}

void drawLabelPrint(QPainter& painter) {
    setArea(painter, palette::steel);
    painter.drawRect(QRectF(1.5, 5, 13, 6));
    setLine(painter, palette::ink, 1);
    painter.setBrush(QColor(palette::paper));
    painter.drawRect(QRectF(4, 1.5, 8, 3.5));
    painter.drawRect(QRectF(4, 8.5, 8, 6));
    for (const double left : {5.5, 7.5, 10.0})
        painter.drawLine(QPointF(left, 10.5), QPointF(left, 12.5));
}

void drawCartons(QPainter& painter) {
    setArea(painter, palette::amber);
    painter.drawRect(QRectF(1.5, 8.5, 6, 6));
    setArea(painter, palette::blue);
    painter.drawRect(QRectF(8.5, 8.5, 6, 6));
    setArea(painter, palette::teal);
    painter.drawRect(QRectF(5, 1.5, 6, 6));
}

void drawToRight(QPainter& painter) {
    drawArrowHead(painter, palette::blue,
                  QPolygonF{{15, 8}, {8, 15}, {8, 10.5}, {1, 10.5}, {1, 5.5}, {8, 5.5}, {8, 1}});
}

void drawToLeft(QPainter& painter) {
    drawArrowHead(painter, palette::blue,
                  QPolygonF{{1, 8}, {8, 15}, {8, 10.5}, {15, 10.5}, {15, 5.5}, {8, 5.5}, {8, 1}});
}

void drawEntranceDoor(QPainter& painter) {
    // A door as on a building plan: the leaf and the quarter circle that it sweeps, with the way in.
    setLine(painter, palette::steel, 2);
    painter.drawLine(QPointF(4, 29), QPointF(4, 6));
    setLine(painter, palette::faded, 1);
    constexpr int sixteenthsPerDegree = 16;
    painter.drawArc(QRectF(-19, 6, 46, 46), 0, 90 * sixteenthsPerDegree);
    setLine(painter, palette::beam, 2.5);
    painter.drawLine(QPointF(15, 30), QPointF(15, 19));
    drawArrowHead(painter, palette::beam, QPolygonF{{15, 11}, {21, 19}, {9, 19}});
}

void drawGate(QPainter& painter) {
    // A roller gate, half open.
    setArea(painter, palette::steel);
    painter.drawRect(QRectF(2, 3, 28, 4));
    painter.drawRect(QRectF(2, 3, 3, 27));
    painter.drawRect(QRectF(27, 3, 3, 27));
    for (const double top : {8.0, 12.0, 16.0}) {
        setArea(painter, palette::faded);
        painter.drawRect(QRectF(5, top, 22, 3));
    }
    setArea(painter, palette::beam);
    painter.drawRect(QRectF(11, 23, 10, 7));
}

void drawBusyPointer(QPainter& painter) {
    // The arrow keeps its place and an hourglass stands beside it, so that the pointer does not jump.
    setLine(painter, palette::paper, 1);
    painter.setBrush(QColor(palette::ink));
    painter.drawPolygon(
        QPolygonF{{1, 1}, {1, 17}, {4.8, 13.4}, {7.4, 19}, {10, 17.8}, {7.5, 12.4}, {12.5, 12}});

    const QPolygonF glass{{15, 13}, {29, 13}, {29, 15.5}, {23.5, 21.5}, {29, 27.5},
                          {29, 30}, {15, 30}, {15, 27.5}, {20.5, 21.5}, {15, 15.5}};
    setArea(painter, palette::paper);
    painter.drawPolygon(glass);
    setArea(painter, palette::beam);
    painter.drawPolygon(QPolygonF{
        {17, 16}, {27, 16}, {22.5, 21}, {22.5, 26}, {27, 29.5}, {17, 29.5}, {21.5, 26}, {21.5, 21}});
    setLine(painter, palette::ink, 1.2);
    painter.drawPolygon(glass);
    setLine(painter, palette::ink, 2.4);
    painter.drawLine(QPointF(14.5, 12.8), QPointF(29.5, 12.8));
    painter.drawLine(QPointF(14.5, 30.2), QPointF(29.5, 30.2));
}

void drawProgram(QPainter& painter) {
    setArea(painter, palette::steel);
    painter.drawRect(QRectF(3, 2, 3, 28));
    painter.drawRect(QRectF(26, 2, 3, 28));
    for (const double top : {10.0, 19.0, 27.0}) {
        setArea(painter, palette::beam);
        painter.drawRect(QRectF(3, top, 26, 2.5));
    }
    const auto carton = [&painter](double left, double bottom, int percent, double width) {
        setArea(painter, fillColor(percent).rgb());
        painter.drawRect(QRectF(left, bottom - 6, width, 6));
    };
    carton(7, 10, 20, 6);
    carton(14, 10, 60, 11);
    carton(7, 19, 100, 8.5);
    carton(16.5, 19, 40, 8.5);
    carton(7, 27, 80, 18);
}

}  // namespace regalon::artwork
