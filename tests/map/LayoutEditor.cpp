#include "map/LayoutEditor.h"

#include "support/Events.h"

#include <QAction>

namespace regalon::test {

LayoutEditor::LayoutEditor(LocalWarehouse::Content content) : warehouse(content) {}

void LayoutEditor::SetUp() {
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
}

void LayoutEditor::open() {
    window = std::make_unique<frmMagCreate>(warehouse.context);
    window->resize(window->sizeHint());
    showAndWait(window.get());
    warehouse.server.clearTrace();
}

PictureItem* LayoutEditor::item(const char* array, const QString& tag) const {
    for (QGraphicsItem* found : canvas()->scene()->items()) {
        if (found->data(PlanData::ArrayName).toString() == QLatin1String(array) &&
            found->data(PlanData::Tag).toString().startsWith(tag))
            return dynamic_cast<PictureItem*>(found);
    }
    ADD_FAILURE() << "No " << array << " with a Tag like " << qPrintable(tag);
    return nullptr;
}

void LayoutEditor::clickLocation(const QString& address) {
    if (const PictureItem* found = item("imglocation", address + QLatin1Char('_')))
        clickItem(canvas(), found);
}

void LayoutEditor::clickStand(const QString& address) {
    if (const PictureItem* found = item("imgBookStand", QStringLiteral("R_") + address + QLatin1Char('_')))
        clickItem(canvas(), found);
}

void LayoutEditor::clickButton(const char* toolBarName, const char* key) {
    EXPECT_TRUE(clickToolButton(toolBar(toolBarName), QString::fromLatin1(key)))
        << toolBarName << " has no button " << key << " to click";
}

void LayoutEditor::choose(const char* comboName, const QString& text) {
    DataCombo* list = choice(comboName);
    const int row = list->findText(text);
    ASSERT_GE(row, 0) << comboName << " does not offer " << qPrintable(text);
    list->setFocus();
    while (list->currentIndex() != row)
        key(list, list->currentIndex() < row ? Qt::Key_Down : Qt::Key_Up);
}

void LayoutEditor::enter(QWidget* widget, const QString& text) {
    widget->setFocus();
    key(widget, Qt::Key_A, Qt::ControlModifier);
    key(widget, Qt::Key_Delete);
    type(widget, text);
}

QStringList LayoutEditor::rows(const char* comboName) const {
    QStringList texts;
    const QComboBox* list = combo(comboName);
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->itemText(row));
    return texts;
}

}  // namespace regalon::test
