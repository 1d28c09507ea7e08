#include "platform/DesignControls.h"

#include "platform/FileIcon.h"
#include "platform/ImageList.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace regalon {

QGroupBox* addFrame(QWidget* parent, const char* name, const QString& caption) {
    auto* frame = new QGroupBox(caption, parent);
    frame->setObjectName(QString::fromLatin1(name));
    frame->setAutoFillBackground(true);
    return frame;
}

QFrame* addPanel(QWidget* parent, const char* name) {
    auto* panel = new QFrame(parent);
    panel->setObjectName(QString::fromLatin1(name));
    panel->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    panel->setAutoFillBackground(true);
    return panel;
}

QLabel* addLabel(QWidget* parent, const char* name, const QString& text, bool bold) {
    auto* label = new QLabel(text, parent);
    label->setObjectName(QString::fromLatin1(name));
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setBold(bold);
    label->setFont(font);
    return label;
}

QLineEdit* addNumberBox(QWidget* parent, const char* name, const QString& meaning) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(meaning);
    box->setAlignment(Qt::AlignHCenter);
    return box;
}

QIcon programIcon(const QString& file) {
    return fileIcon(QStringLiteral(":/icons/") + file);
}

void setRowIcons(ImageList& icons, std::initializer_list<int> numbers) {
    for (const int number : numbers)
        icons.set(number, programIcon(QStringLiteral("img_%1.ico").arg(number, 2, 10, QLatin1Char('0'))));
}

}  // namespace regalon
