#pragma once

#include <QLabel>
#include <QList>
#include <QStatusBar>
#include <QString>

namespace regalon {

/// A status bar of panels, counted from 1; each panel is a QLabel whose objectName is its key.
class StatusBar : public QStatusBar {
    Q_OBJECT

public:
    enum class AutoSize { None, Spring };

    explicit StatusBar(QWidget* parent = nullptr);

    /// Widths in twips. A spring panel takes the free room, but never less than `minWidth`; it gives way
    /// before the fixed panels do. Raises 35602 if the key is taken.
    QLabel* addPanel(const QString& key, int width, AutoSize autoSize = AutoSize::None, int minWidth = 0);

    int panelCount() const { return static_cast<int>(m_panels.size()); }
    /// Raises 35600 for a number outside 1 to panelCount().
    QLabel* panel(int number) const;
    /// Raises 35601 for an unknown key.
    QLabel* panel(const QString& key) const;
    void setPanelText(const QString& key, const QString& text) { panel(key)->setText(text); }
    QString panelText(const QString& key) const { return panel(key)->text(); }

private:
    QList<QLabel*> m_panels;
};

}  // namespace regalon
