#include "support/Events.h"

#include <QAction>
#include <QApplication>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QStyle>
#include <QStyleOptionViewItem>
#include <QTest>
#include <QTimer>
#include <QToolButton>
#include <QTreeView>
#include <QWidget>

namespace regalon::test {

void click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton);
}

void clickAt(QWidget* widget, const QPoint& at) {
    QTest::mouseClick(widget, Qt::LeftButton, {}, at);
}

void doubleClick(QWidget* widget) {
    QTest::mouseDClick(widget, Qt::LeftButton);
}

bool clickToolButton(QWidget* window, const QString& key) {
    const QList<QToolButton*> buttons = window->findChildren<QToolButton*>();
    for (QToolButton* button : buttons) {
        const QAction* action = button->defaultAction();
        if (action != nullptr && action->objectName() == key && action->isVisible() && button->isVisible()) {
            click(button);
            return true;
        }
    }
    return false;
}

void clickItem(QGraphicsView* view, const QGraphicsItem* item) {
    const QPoint at = view->mapFromScene(item->sceneBoundingRect().center());
    clickAt(view->viewport(), at);
}

void clickCell(QTreeView* list, const QModelIndex& cell) {
    list->scrollTo(cell);
    clickAt(list->viewport(), list->visualRect(cell).center());
}

void clickCheckBox(QTreeView* list, int row) {
    const QModelIndex cell = list->model()->index(row, 0);
    list->scrollTo(cell);
    QStyleOptionViewItem option;
    option.initFrom(list);
    option.rect = list->visualRect(cell);
    option.features = QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDisplay;
    const QRect box = list->style()->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &option, list);
    clickAt(list->viewport(), box.center());
}

void type(QWidget* widget, const QString& text) {
    QTest::keyClicks(widget, text);
}

void key(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QTest::keyClick(widget, key, modifiers);
}

bool waitFor(const std::function<bool()>& condition, int milliseconds) {
    return QTest::qWaitFor(condition, milliseconds);
}

void showAndWait(QWidget* window) {
    window->show();
    if (!QTest::qWaitForWindowExposed(window))
        qFatal("A window did not come up on the screen.");
}

void whenModal(const std::function<void(QWidget* modal)>& act) {
    auto* look = new QTimer(qApp);
    QObject::connect(look, &QTimer::timeout, look, [look, act] {
        QWidget* modal = QApplication::activeModalWidget();
        if (modal == nullptr || !modal->isVisible())
            return;
        look->stop();
        look->deleteLater();
        act(modal);
    });
    look->start(5);
}

}  // namespace regalon::test
