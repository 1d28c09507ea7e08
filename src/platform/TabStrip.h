#pragma once

#include <QString>
#include <QTabBar>

namespace regalon {

/// A row of keyed tabs, counted from 1. A caption of several words is shown in two lines where that makes its
/// tab narrower.
class TabStrip : public QTabBar {
    Q_OBJECT

public:
    explicit TabStrip(QWidget* parent = nullptr);

    /// Adds a tab at the right end; the first one is selected.
    void addKeyedTab(const QString& key, const QString& caption);
    QString tabKey(int number) const;

    /// 0 while there is no tab.
    int selectedTab() const { return currentIndex() + 1; }
    void setSelectedTab(int number) { setCurrentIndex(number - 1); }

Q_SIGNALS:
    /// Another tab was selected, by the user or from code.
    void tabClick(int number);

protected:
    QSize tabSizeHint(int index) const override;
    QSize minimumTabSizeHint(int index) const override;
    void paintEvent(QPaintEvent* event) override;
};

}  // namespace regalon
