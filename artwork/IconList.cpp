#include "IconList.h"

#include "IcoWriter.h"
#include "Looks.h"
#include "Symbols.h"

#include <QImage>
#include <QPainter>

namespace regalon::artwork {

namespace {

constexpr int rows = 6;
constexpr int standsOfRow = 40;
constexpr int fullPercent = 100;
constexpr int screenScales[] = {1, 2, 3};

/// How much of the shelf's width an icon covers.
struct Family {
    const char* name;
    const char* firstLook;
    QSize size;
};
constexpr Family families[] = {
    {"LA", "x.ico", oneSlot},
    {"LB", "xx.ico", twoSlots},
    {"LC", "xxx.ico", threeSlots},
};

constexpr QSize small(16, 16);
constexpr QSize large(32, 32);

struct Symbol {
    const char* fileName;
    QSize size;
    void (*draw)(QPainter&);
};
// The numbers of row icons are those of the windows' image lists.
constexpr Symbol symbols[] = {
    {"img_01.ico", small, drawRowReady},     {"img_02.ico", small, drawRowPartly},
    {"img_11.ico", small, drawBack},         {"img_14.ico", small, drawRowConfirmed},
    {"img_16.ico", small, drawRowPending},   {"img_24.ico", small, drawRowReady},
    {"img_25.ico", small, drawSave},         {"img_37.ico", small, drawRowClosed},
    {"img_39.ico", small, drawSearchMark},   {"img_40.ico", small, drawRowOther},
    {"img_41.ico", small, drawRowStock},     {"img_42.ico", small, drawRowAssigned},
    {"img_43.ico", small, drawSortMark},     {"k1.ico", small, drawPointerDown},
    {"k2.ico", small, drawPointerUp},        {"exit.ico", small, drawExit},
    {"refresh.ico", small, drawRefresh},     {"clock.ico", small, drawClock},
    {"find.ico", small, drawLens},           {"list.ico", small, drawList},
    {"close.ico", small, drawClose},         {"folder.ico", small, drawFolder},
    {"label.ico", small, drawLabelPrint},    {"groups.ico", small, drawCartons},
    {"right.ico", small, drawToRight},       {"left.ico", small, drawToLeft},
    {"door_1.ico", large, drawEntranceDoor}, {"door_2.ico", large, drawGate},
    {"busy.ico", large, drawBusyPointer},    {"regalon.ico", large, drawProgram},
};

QString twoDigits(int number) {
    return QStringLiteral("%1").arg(number, 2, 10, QLatin1Char('0'));
}

void addLocations(QList<Icon>& icons) {
    for (const Family& family : families) {
        const QString name = QString::fromLatin1(family.name);
        const QSize size = family.size;
        icons.append(
            {QString::fromLatin1(family.firstLook), size, [size](QPainter& p) { drawFirstLook(p, size); }});
        icons.append(
            {name + QStringLiteral("_R_Err.ico"), size, [size](QPainter& p) { drawError(p, size); }});
        icons.append({name + QStringLiteral("_M_00.ico"), size, [size](QPainter& p) { drawMulti(p, size); }});
        for (int percent = 0; percent <= fullPercent; ++percent) {
            const QString number = twoDigits(percent) + QStringLiteral(".ico");
            icons.append({name + QStringLiteral("_P_") + number, size,
                          [size, percent](QPainter& p) { drawFill(p, size, percent, Tone::Normal); }});
            icons.append({name + QStringLiteral("_G_") + number, size,
                          [size, percent](QPainter& p) { drawFill(p, size, percent, Tone::Grey); }});
        }
    }
}

void addStands(QList<Icon>& icons) {
    icons.append({QStringLiteral("Reg.ico"), standSize, [](QPainter& p) { drawStand(p, {}, Tone::Normal); }});
    for (int row = 1; row <= rows; ++row) {
        for (int stand = 1; stand <= standsOfRow; ++stand) {
            const QString text = QChar(u'A' + row - 1) + QString::number(stand);
            const QString name =
                QString::number(row) + QStringLiteral("_S_") + twoDigits(stand) + QStringLiteral(".ico");
            icons.append({QStringLiteral("R") + name, standSize,
                          [text](QPainter& p) { drawStand(p, text, Tone::Normal); }});
            icons.append({QStringLiteral("RR") + name, standSize,
                          [text](QPainter& p) { drawStand(p, text, Tone::Grey); }});
        }
    }
}

}  // namespace

QList<Icon> iconList() {
    QList<Icon> icons;
    addLocations(icons);
    addStands(icons);
    for (const Symbol& symbol : symbols) {
        icons.append({QString::fromLatin1(symbol.fileName), symbol.size, symbol.draw});
    }
    return icons;
}

QByteArray icoBytes(const Icon& icon) {
    QList<QImage> pictures;
    for (const int scale : screenScales) {
        QImage picture(icon.size * scale, QImage::Format_ARGB32_Premultiplied);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        painter.scale(scale, scale);
        icon.draw(painter);
        painter.end();
        pictures.append(picture);
    }
    return icoFile(pictures);
}

}  // namespace regalon::artwork
