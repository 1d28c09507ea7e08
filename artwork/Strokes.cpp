#include "Strokes.h"

#include <QColor>
#include <QPainter>
#include <QPen>
#include <QPolygonF>
#include <QStringList>

#include <algorithm>
#include <iterator>

namespace regalon::artwork {

namespace {

constexpr int characterWidth = 6;
constexpr int characterGap = 1;

struct Character {
    char16_t sign;
    // Fine pictures: corners "xy" of a grid 0 to 4 by 0 to 8, blank between corners, "|" between strokes.
    const char* strokes;
    // The 1x picture: nine rows of pixels.
    const char* rows;
};

constexpr Character characters[] = {
    {u'0', "10 30 41 47 38 18 07 01 10", ".####. ##..## ##..## ##..## ##..## ##..## ##..## ##..## .####."},
    {u'1', "12 30 38|18 48", "..##.. .###.. ####.. ..##.. ..##.. ..##.. ..##.. ..##.. ######"},
    {u'2', "01 10 30 41 43 08 48", ".####. ##..## ....## ....## ...##. ..##.. .##... ##.... ######"},
    {u'3', "01 10 30 41 43 34 45 47 38 18 07|24 34",
     ".####. ##..## ....## ....## ..###. ....## ....## ##..## .####."},
    {u'4', "38 30 05 45", "....## ...### ..#### .##.## ##..## ###### ....## ....## ....##"},
    {u'5', "40 00 04 34 45 47 38 18 07", "###### ##.... ##.... #####. ....## ....## ....## ##..## .####."},
    {u'6', "41 30 10 01 07 18 38 47 45 34 14 05",
     ".####. ##..## ##.... ##.... #####. ##..## ##..## ##..## .####."},
    {u'7', "00 40 41 24 28", "###### ....## ....## ...##. ...##. ..##.. ..##.. ..##.. ..##.."},
    {u'8', "14 03 01 10 30 41 43 34 14 05 07 18 38 47 45 34",
     ".####. ##..## ##..## ##..## .####. ##..## ##..## ##..## .####."},
    {u'9', "43 34 14 03 01 10 30 41 47 38 18 07",
     ".####. ##..## ##..## ##..## .##### ....## ....## ##..## .####."},
    {u'A', "08 03 20 43 48|05 45", ".####. ##..## ##..## ##..## ###### ##..## ##..## ##..## ##..##"},
    {u'B', "08 00 30 41 43 34 45 47 38 08|04 34",
     "#####. ##..## ##..## ##..## #####. ##..## ##..## ##..## #####."},
    {u'C', "41 30 10 01 07 18 38 47", ".####. ##..## ##.... ##.... ##.... ##.... ##.... ##..## .####."},
    {u'D', "08 00 30 41 47 38 08", "#####. ##..## ##..## ##..## ##..## ##..## ##..## ##..## #####."},
    {u'E', "40 00 08 48|04 34", "###### ##.... ##.... ##.... #####. ##.... ##.... ##.... ######"},
    {u'F', "40 00 08|04 34", "###### ##.... ##.... ##.... #####. ##.... ##.... ##.... ##...."},
};

const Character* characterOf(QChar sign) {
    const auto found = std::find_if(std::begin(characters), std::end(characters),
                                    [sign](const Character& c) { return sign == QChar(c.sign); });
    return found == std::end(characters) ? nullptr : found;
}

void drawStrokes(QPainter& painter, const char* strokes) {
    for (const QString& stroke : QString::fromLatin1(strokes).split(u'|')) {
        QPolygonF line;
        for (const QString& corner : stroke.split(u' ')) {
            line << QPointF(corner[0].digitValue() + 1, corner[1].digitValue() + 0.5);
        }
        painter.drawPolyline(line);
    }
}

}  // namespace

int strokeTextWidth(const QString& text) {
    const auto count = static_cast<int>(text.size());
    return count == 0 ? 0 : count * characterWidth + (count - 1) * characterGap;
}

void drawPixels(QPainter& painter, int left, int top, const char* rows, const QColor& color) {
    int y = top;
    for (const QString& row : QString::fromLatin1(rows).split(u' ')) {
        for (int x = 0; x < row.size(); ++x) {
            if (row[x] == u'#') {
                painter.fillRect(left + x, y, 1, 1, color);
            }
        }
        ++y;
    }
}

void drawStrokeText(QPainter& painter, int left, int top, const QString& text, const QColor& color) {
    const bool coarse = painter.worldTransform().m11() <= 1;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.translate(left, top);
    for (const QChar sign : text) {
        if (const Character* character = characterOf(sign)) {
            if (coarse) {
                drawPixels(painter, 0, 0, character->rows, color);
            } else {
                drawStrokes(painter, character->strokes);
            }
        }
        painter.translate(characterWidth + characterGap, 0);
    }
    painter.restore();
}

}  // namespace regalon::artwork
