#pragma once

#include <QFrame>
#include <QIcon>
#include <QList>
#include <QString>
#include <QToolBar>

class QAction;
class QHBoxLayout;

namespace regalon {

/// A row of keyed buttons and separators, both counted from 1. A button is a QAction whose objectName is its
/// key: enable, show and name it through the action. A caption's "&" marks its Alt letter.
class ToolBar : public QToolBar {
    Q_OBJECT

public:
    explicit ToolBar(QWidget* parent = nullptr);

    /// Raises 35602 if the key is taken; an empty key is never taken.
    QAction* addButton(const QString& key, const QString& caption, const QString& toolTip = QString(),
                       const QIcon& icon = QIcon());
    QAction* addSeparator(const QString& key = QString());

    int buttonCount() const { return static_cast<int>(m_buttons.size()); }
    /// Raises 35600 for a number outside 1 to buttonCount().
    QAction* button(int number) const;
    /// Raises 35601 for an unknown key.
    QAction* button(const QString& key) const;

Q_SIGNALS:
    void buttonClick(const QString& key);

private:
    QList<QAction*> m_buttons;
};

/// A strip along the top of a window that holds toolbars side by side.
class CoolBar : public QFrame {
    Q_OBJECT

public:
    explicit CoolBar(QWidget* parent = nullptr);

    /// Takes the toolbar as a child at the right end of the strip.
    void addBand(QWidget* band);

private:
    QHBoxLayout* m_layout;
};

}  // namespace regalon
