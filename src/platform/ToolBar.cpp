#include "platform/ToolBar.h"

#include "platform/RunTimeError.h"

#include <QAction>
#include <QHBoxLayout>
#include <QToolButton>

namespace regalon {
namespace {

/// A tool button shows the action's icon text, and only a set icon text keeps its Alt letter.
void keepLetter(QAction* action) {
    if (action->iconText() != action->text())
        action->setIconText(action->text());
}

}  // namespace

ToolBar::ToolBar(QWidget* parent) : QToolBar(parent) {
    setMovable(false);
    setContextMenuPolicy(Qt::PreventContextMenu);
    setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    setIconSize(QSize(16, 16));
}

QAction* ToolBar::addButton(const QString& key, const QString& caption, const QString& toolTip,
                            const QIcon& icon) {
    for (const QAction* other : std::as_const(m_buttons)) {
        if (!key.isEmpty() && other->objectName() == key)
            throw RunTimeError(RunTime::KeyNotUnique);
    }
    QAction* action = addAction(icon, caption);
    action->setObjectName(key);
    action->setToolTip(toolTip.isEmpty() ? QString(caption).remove(u'&').trimmed() : toolTip);
    keepLetter(action);
    connect(action, &QAction::changed, this, [action] { keepLetter(action); });
    connect(action, &QAction::triggered, this, [this, action] { Q_EMIT buttonClick(action->objectName()); });
    widgetForAction(action)->setObjectName(key);
    m_buttons.append(action);
    return action;
}

QAction* ToolBar::addSeparator(const QString& key) {
    QAction* action = QToolBar::addSeparator();
    action->setObjectName(key);
    m_buttons.append(action);
    return action;
}

QAction* ToolBar::button(int number) const {
    if (number < 1 || number > buttonCount())
        throw RunTimeError(RunTime::IndexOutOfBounds);
    return m_buttons[number - 1];
}

QAction* ToolBar::button(const QString& key) const {
    for (QAction* action : m_buttons) {
        if (!key.isEmpty() && action->objectName() == key)
            return action;
    }
    throw RunTimeError(RunTime::ElementNotFound);
}

CoolBar::CoolBar(QWidget* parent) : QFrame(parent), m_layout(new QHBoxLayout(this)) {
    setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_layout->addStretch(1);
}

void CoolBar::addBand(QWidget* band) {
    m_layout->insertWidget(m_layout->count() - 1, band);
}

}  // namespace regalon
