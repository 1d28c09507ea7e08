#include "map/LayoutEditor.h"

#include "artwork/Icons.h"
#include "support/Events.h"

#include <QAbstractItemView>
#include <QAction>

namespace regalon::test {

LayoutEditor::LayoutEditor(LocalWarehouse::Content content) : warehouse(content) {}

void LayoutEditor::SetUp() {
    loadProgramIcons();  // a toolbar is wider with them
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

void LayoutEditor::pick(const char* comboName, const QString& text) {
    DataCombo* list = choice(comboName);
    const int row = list->findText(text);
    ASSERT_GE(row, 0) << comboName << " does not offer " << qPrintable(text);
    test::key(list, Qt::Key_F4);
    ASSERT_TRUE(waitFor([list] { return list->view()->isVisible(); }));
    while (list->view()->currentIndex().row() != row)
        key(list->view(), list->view()->currentIndex().row() < row ? Qt::Key_Down : Qt::Key_Up);
    key(list->view(), Qt::Key_Return);
    ASSERT_EQ(list->currentIndex(), row);
}

QStringList LayoutEditor::rows(const char* comboName) const {
    QStringList texts;
    const QComboBox* list = combo(comboName);
    for (int row = 0; row < list->count(); ++row)
        texts.append(list->itemText(row));
    return texts;
}

void LayoutEditor::expectTitles(const QStringList& titles) const {
    QStringList found;
    for (const MsgBoxRecorder::Message& message : messages.messages())
        found.append(message.Title);
    EXPECT_EQ(found.join(u'\n').toStdString(), titles.join(u'\n').toStdString());
}

void LayoutEditor::expectNotice(const QString& text) const {
    expectTitles({QStringLiteral("Komunikat")});
    EXPECT_EQ(messages.last().Text.toStdString(), text.toStdString());
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
}

EmptyHallEditor::EmptyHallEditor() : LayoutEditor(LocalWarehouse::Content::Empty) {}

void EmptyHallEditor::SetUp() {
    LayoutEditor::SetUp();
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("insert into kolv_mag_Rank (Rank,RankName,RankIconFamily) values "
                                      "(1,N'Rząd A',N'R1_S_*.ico'),(2,N'Rząd B',N'R2_S_*.ico')")}))
        << qPrintable(warehouse.why());
}

void EmptyHallEditor::addStand(int stand, int shelfCount, const QString& locations) {
    ASSERT_TRUE(warehouse.addStand(1, stand, shelfCount, locations, 1000 + stand * 1000, 3000,
                                   QStringLiteral("R1_S_0%1.ico").arg(stand)))
        << qPrintable(warehouse.why());
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Stand set StandName = N'Regał %1', "
                                              "StandVisable = N'Y', StandEnable = N'N', StandFrameArround = "
                                              "N'Y', StandDescription = N'Opis %1' where Stand = %1")
                                   .arg(stand)}))
        << qPrintable(warehouse.why());
}

void EmptyHallEditor::defineNewStand(const QString& left, const QString& top, const QString& locations) {
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Nowy"));
    choose("dtcShelfCount", QStringLiteral("Nowa"));
    enter(combo("cmbShelf_1"), locations);
    enter(box("txtImageName"), QStringLiteral("R1_S_01.ico"));
    enter(box("txtLeft"), left);
    enter(box("txtTop"), top);
    warehouse.server.clearTrace();
}

QString EmptyHallEditor::tables() {
    return warehouse.value(QStringLiteral(
               "select string_agg(concat(Rank,'/',Stand,'/',StandIcon,'/',StandLeft,'/',StandTop,'/',"
               "ShelfCount,'/',StandVisable,StandEnable,StandFrameArround,'/',StandDescription),';') "
               "from kolv_mag_Stand")) +
           QStringLiteral(" | ") +
           warehouse.value(
               QStringLiteral("select string_agg(concat(Rank,'/',Stand,'/',Shelf,'/',Location),';') from "
                              "kolv_mag_Location"));
}

}  // namespace regalon::test
