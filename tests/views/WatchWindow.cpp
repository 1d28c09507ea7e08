#include "views/WatchWindow.h"

#include "support/Events.h"

namespace regalon::test {

WatchWindow::WatchWindow(LocalWarehouse::Content content) : warehouse(content) {}

void WatchWindow::SetUp() {
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
}

void WatchWindow::open() {
    window = std::make_unique<frmMagWatch>(
        warehouse.context, [this](const StandDetailRequest& request) { details.append(request); });
    window->resize(window->sizeHint());
    showAndWait(window.get());
}

PictureItem* WatchWindow::item(const char* array, const QString& tag) const {
    for (QGraphicsItem* found : canvas()->scene()->items()) {
        if (found->data(PlanData::ArrayName).toString() == QLatin1String(array) &&
            found->data(PlanData::Tag).toString().startsWith(tag))
            return dynamic_cast<PictureItem*>(found);
    }
    ADD_FAILURE() << "No " << array << " with a Tag like " << qPrintable(tag);
    return nullptr;
}

void WatchWindow::clickLocation(const QString& address) {
    if (const PictureItem* found = item("imglocation", address + QLatin1Char('_')))
        clickItem(canvas(), found);
}

void WatchWindow::clickStand(const QString& address) {
    if (const PictureItem* found = item("imgBookStand", QStringLiteral("R_") + address + QLatin1Char('_')))
        clickItem(canvas(), found);
}

QString WatchWindow::address() const {
    return QStringList({box("txtRank")->text(), box("txtStand")->text(), box("txtShelf")->text(),
                        box("txtLocation")->text()})
        .join(QLatin1Char(' '));
}

}  // namespace regalon::test
