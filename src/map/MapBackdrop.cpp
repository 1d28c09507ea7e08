#include "map/MapBackdrop.h"

#include "platform/Twips.h"

#include <QIcon>
#include <QLabel>

#include <array>

namespace regalon {

namespace {

constexpr int kLetterWidth = 375;
constexpr int kLetterHeight = 495;
constexpr int kDoorSize = 480;
constexpr QColor kMarkColor(0x2f, 0x4b, 0x6e);

struct RowLetter {
    const char* name;
    const char* letter;
    int left, top;
};

/// The letters stand beside the rows of the hall as it was built; they do not follow the data.
constexpr std::array<RowLetter, 5> kRowLetters = {{{"Label4", "A", 14280, 1600},
                                                   {"Label5", "B", 14280, 3960},
                                                   {"Label6", "C", 14280, 5160},
                                                   {"Label7", "D", 14280, 7560},
                                                   {"Label8", "E", 120, 4080}}};

struct Door {
    const char* labelName;
    const char* imageName;
    const char* text;
    int labelLeft, labelTop;
    int imageLeft, imageTop;
    const char* icon;
};

constexpr std::array<Door, 2> kDoors = {
    {{"Label1", "Image1", "Wejście", 1800, 7920, 1920, 7425, ":/icons/door_1.ico"},
     {"Label2", "Image2", "Kolvestra", 12600, 7560, 12960, 7065, ":/icons/door_2.ico"}}};

QLabel* addLabel(QWidget* surface, const char* name, const char* text, int points) {
    auto* label = new QLabel(QString::fromUtf8(text), surface);
    label->setObjectName(QString::fromLatin1(name));
    label->setAttribute(Qt::WA_TransparentForMouseEvents);
    QFont font = label->font();
    font.setBold(true);
    font.setPointSize(points);
    label->setFont(font);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, kMarkColor);
    label->setPalette(palette);
    return label;
}

void addDoor(QWidget* surface, const Door& door) {
    QLabel* label = addLabel(surface, door.labelName, door.text, 10);
    label->adjustSize();
    place(label, door.labelLeft, door.labelTop, toTwips(label->width()), toTwips(label->height()));
    auto* image = new QLabel(surface);
    image->setObjectName(QString::fromLatin1(door.imageName));
    image->setAttribute(Qt::WA_TransparentForMouseEvents);
    const QSize size(toPixels(kDoorSize), toPixels(kDoorSize));
    image->setPixmap(QIcon(QString::fromLatin1(door.icon)).pixmap(size, surface->devicePixelRatioF()));
    place(image, door.imageLeft, door.imageTop, kDoorSize, kDoorSize);
}

}  // namespace

void addMapBackdrop(QWidget* surface) {
    for (const RowLetter& row : kRowLetters) {
        QLabel* label = addLabel(surface, row.name, row.letter, 20);
        label->setAlignment(Qt::AlignCenter);
        place(label, row.left, row.top, kLetterWidth, kLetterHeight);
    }
    for (const Door& door : kDoors)
        addDoor(surface, door);
}

}  // namespace regalon
