#include "platform/TabStrip.h"

#include <QFontMetrics>
#include <QStyleOptionTab>
#include <QStylePainter>

#include <algorithm>

namespace regalon {

namespace {

// Logical pixels around a caption.
constexpr int kBeside = 9;
constexpr int kAbove = 2;

int lineWidth(const QFontMetrics& metrics, const QString& line) {
    return metrics.horizontalAdvance(line);
}

/// The caption divided where its two lines are shortest; a single word stays as it is.
QString inTwoLines(const QFontMetrics& metrics, const QString& caption) {
    QString best = caption;
    int narrowest = lineWidth(metrics, caption);
    for (qsizetype blank = caption.indexOf(u' '); blank >= 0; blank = caption.indexOf(u' ', blank + 1)) {
        const QString first = caption.first(blank);
        const QString second = caption.sliced(blank + 1);
        const int width = std::max(lineWidth(metrics, first), lineWidth(metrics, second));
        if (width < narrowest) {
            narrowest = width;
            best = first + u'\n' + second;
        }
    }
    return best;
}

}  // namespace

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(false);
    setUsesScrollButtons(false);
    setElideMode(Qt::ElideNone);
    connect(this, &QTabBar::currentChanged, this, [this](int index) { Q_EMIT tabClick(index + 1); });
}

void TabStrip::addKeyedTab(const QString& key, const QString& caption) {
    setTabData(addTab(caption), key);
}

QString TabStrip::tabKey(int number) const {
    return tabData(number - 1).toString();
}

QSize TabStrip::tabSizeHint(int index) const {
    const QFontMetrics metrics = fontMetrics();
    const QSize text = metrics.size(0, inTwoLines(metrics, tabText(index)));
    return {text.width() + 2 * kBeside, 2 * metrics.lineSpacing() + 2 * kAbove};
}

QSize TabStrip::minimumTabSizeHint(int index) const {
    return tabSizeHint(index);
}

/// The style draws a caption in one line only, so it draws the tabs without them.
void TabStrip::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    const auto draw = [&](int index) {
        QStyleOptionTab tab;
        initStyleOption(&tab, index);
        painter.drawControl(QStyle::CE_TabBarTabShape, tab);
        painter.drawItemText(tab.rect, Qt::AlignCenter, tab.palette, isTabEnabled(index),
                             inTwoLines(fontMetrics(), tabText(index)), QPalette::WindowText);
        if (index == currentIndex() && hasFocus()) {
            QStyleOptionFocusRect focus;
            focus.QStyleOption::operator=(tab);
            focus.rect = tab.rect.adjusted(3, 3, -3, -2);
            painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
        }
    };
    // The selected tab lies over its neighbours.
    for (int index = 0; index < count(); ++index) {
        if (index != currentIndex())
            draw(index);
    }
    if (currentIndex() >= 0)
        draw(currentIndex());
}

}  // namespace regalon
