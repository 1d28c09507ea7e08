#include "map/PlanWindow.h"

#include "support/Events.h"

#include <QAction>

namespace regalon::test {

PlanWindow::PlanWindow(LocalWarehouse::Content content) : warehouse(content) {}

void PlanWindow::SetUp() {
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
}

void PlanWindow::show() {
    planWindow()->resize(planWindow()->sizeHint());
    showAndWait(planWindow());
}

StandDetail PlanWindow::recordedDetail() {
    return [this](const StandDetailRequest& request) { details.append(request); };
}

PictureItem* PlanWindow::item(const char* array, const QString& tag) const {
    for (QGraphicsItem* found : canvas()->scene()->items()) {
        if (found->data(PlanData::ArrayName).toString() == QLatin1String(array) &&
            found->data(PlanData::Tag).toString().startsWith(tag))
            return dynamic_cast<PictureItem*>(found);
    }
    ADD_FAILURE() << "No " << array << " with a Tag like " << qPrintable(tag);
    return nullptr;
}

void PlanWindow::clickLocation(const QString& address) {
    if (const PictureItem* found = item("imglocation", address + QLatin1Char('_')))
        clickItem(canvas(), found);
}

void PlanWindow::clickStand(const QString& address) {
    if (const PictureItem* found = item("imgBookStand", QStringLiteral("R_") + address + QLatin1Char('_')))
        clickItem(canvas(), found);
}

QString PlanWindow::address() const {
    return QStringList({box("txtRank")->text(), box("txtStand")->text(), box("txtShelf")->text(),
                        box("txtLocation")->text()})
        .join(QLatin1Char(' '));
}

QStringList captionsOf(const ToolBar* bar) {
    QStringList texts;
    for (int number = 1; number <= bar->buttonCount(); ++number)
        texts.append(bar->button(number)->isSeparator() ? QStringLiteral("-") : bar->button(number)->text());
    return texts;
}

QStringList keysOf(const ToolBar* bar) {
    QStringList names;
    for (int number = 1; number <= bar->buttonCount(); ++number)
        names.append(bar->button(number)->objectName());
    return names;
}

}  // namespace regalon::test
