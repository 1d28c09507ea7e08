#pragma once

#include <QPoint>
#include <QString>
#include <Qt>

#include <functional>

class QGraphicsItem;
class QGraphicsView;
class QModelIndex;
class QTreeView;
class QWidget;

namespace regalon::test {

/// Real mouse and key events on controls, as a person makes them. The widgets must be shown.

void click(QWidget* widget);
void clickAt(QWidget* widget, const QPoint& at);
void doubleClick(QWidget* widget);
/// Clicks the button of an action on a toolbar, found by the action's objectName below `window`. Returns
/// false if there is no such button or it is hidden; a disabled button is clicked, to no effect.
bool clickToolButton(QWidget* window, const QString& key);
/// Clicks the middle of an item of a scene through the view.
void clickItem(QGraphicsView* view, const QGraphicsItem* item);
/// Clicks the text of a cell, and the check box of a row.
void clickCell(QTreeView* list, const QModelIndex& cell);
void clickCheckBox(QTreeView* list, int row);

void type(QWidget* widget, const QString& text);
void key(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

/// Runs the event loop until the condition holds; returns whether it did within the time in milliseconds.
bool waitFor(const std::function<bool()>& condition, int milliseconds = 5000);
/// Shows a window and waits until it is on the screen.
void showAndWait(QWidget* window);
/// Calls `act` with the next modal window once it is shown; to be set up before the call that opens the
/// window.
void whenModal(const std::function<void(QWidget* modal)>& act);

}  // namespace regalon::test
