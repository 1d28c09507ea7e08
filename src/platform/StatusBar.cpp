#include "platform/StatusBar.h"

#include "platform/RunTimeError.h"
#include "platform/Twips.h"

namespace regalon {

StatusBar::StatusBar(QWidget* parent) : QStatusBar(parent) {
    setSizeGripEnabled(false);
}

QLabel* StatusBar::addPanel(const QString& key, int width, AutoSize autoSize, int minWidth) {
    for (const QLabel* other : std::as_const(m_panels)) {
        if (!key.isEmpty() && other->objectName() == key)
            throw RunTimeError(RunTime::KeyNotUnique);
    }
    auto* label = new QLabel(this);
    label->setObjectName(key);
    label->setTextFormat(Qt::PlainText);
    label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
    // A long text is cut, it never widens the panel or the window.
    if (autoSize == AutoSize::Spring) {
        label->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
        label->setMinimumWidth(toPixels(minWidth));
    } else {
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
        label->setFixedWidth(toPixels(width));
    }
    addWidget(label, autoSize == AutoSize::Spring ? 1 : 0);
    m_panels.append(label);
    return label;
}

QLabel* StatusBar::panel(int number) const {
    if (number < 1 || number > panelCount())
        throw RunTimeError(RunTime::IndexOutOfBounds);
    return m_panels[number - 1];
}

QLabel* StatusBar::panel(const QString& key) const {
    for (QLabel* label : m_panels) {
        if (!key.isEmpty() && label->objectName() == key)
            return label;
    }
    throw RunTimeError(RunTime::ElementNotFound);
}

}  // namespace regalon
