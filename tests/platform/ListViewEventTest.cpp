#include "platform/ListView.h"
#include "support/Events.h"

#include <QHeaderView>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

class ListViewEvents : public ::testing::Test {
protected:
    ListViewEvents() {
        list.addHeader(QStringLiteral("Indeks"), 2000);
        list.addHeader(QStringLiteral("Nazwa"), 2000);
        for (int i = 1; i <= 5; ++i)
            list.addItem(QStringLiteral("S%1").arg(i))->setSubItem(1, QStringLiteral("Mąka"));
        list.resize(400, 300);
        showAndWait(&list);
    }

    static ListItem* given(const QSignalSpy& spy) { return spy.last().first().value<ListItem*>(); }

    ListView list;
};

TEST_F(ListViewEvents, AUsersTickRaisesTheEventWithTheNewState) {
    list.setCheckBoxes(true);
    QSignalSpy checks(&list, &ListView::itemCheck);
    QSignalSpy clicks(&list, &ListView::itemClick);
    clickCheckBox(&list, 2);
    ASSERT_EQ(checks.count(), 1);
    EXPECT_EQ(given(checks), list.item(3));
    EXPECT_TRUE(list.item(3)->checked());
    EXPECT_EQ(clicks.count(), 0);
    clickCheckBox(&list, 2);
    EXPECT_EQ(checks.count(), 2);
    EXPECT_FALSE(list.item(3)->checked());
}

TEST_F(ListViewEvents, ATickFromCodeRaisesNone) {
    list.setCheckBoxes(true);
    QSignalSpy checks(&list, &ListView::itemCheck);
    list.item(3)->setChecked(true);
    EXPECT_EQ(checks.count(), 0);
    EXPECT_EQ(list.model()->index(2, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
}

TEST_F(ListViewEvents, WithoutCheckBoxesNothingIsTicked) {
    QSignalSpy checks(&list, &ListView::itemCheck);
    clickCheckBox(&list, 2);
    key(&list, Qt::Key_Space);
    EXPECT_EQ(checks.count(), 0);
    EXPECT_FALSE(list.item(3)->checked());
}

TEST_F(ListViewEvents, TheSpaceKeyTicksTheRowFromAnyColumn) {
    list.setCheckBoxes(true);
    QSignalSpy checks(&list, &ListView::itemCheck);
    clickCell(&list, list.model()->index(1, 1));
    key(&list, Qt::Key_Space);
    ASSERT_EQ(checks.count(), 1);
    EXPECT_EQ(given(checks), list.item(2));
    EXPECT_TRUE(list.item(2)->checked());
}

TEST_F(ListViewEvents, AClickOnAnyCellIsAClickOnItsRow) {
    QSignalSpy clicks(&list, &ListView::itemClick);
    clickCell(&list, list.model()->index(3, 1));
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(given(clicks), list.item(4));
    EXPECT_EQ(list.selectedItem(), list.item(4));
}

TEST_F(ListViewEvents, AClickOnAHeaderTellsItsNumberAndSortsNothing) {
    QSignalSpy clicks(&list, &ListView::columnClick);
    QHeaderView* header = list.header();
    clickAt(header->viewport(), QPoint(header->sectionViewportPosition(1) + 30, header->height() / 2));
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks.last().first().toInt(), 2);
    EXPECT_FALSE(list.sorted());
}

TEST_F(ListViewEvents, AHandlerMayRefillTheList) {
    QObject::connect(&list, &ListView::itemClick, &list, [this] {
        list.clearItems();
        list.addItem(QStringLiteral("new"));
    });
    clickCell(&list, list.model()->index(3, 1));
    EXPECT_EQ(list.itemCount(), 1);
    EXPECT_EQ(list.item(1)->text(), QStringLiteral("new"));
}

TEST_F(ListViewEvents, ATickHandlerMayRefillTheList) {
    list.setCheckBoxes(true);
    QObject::connect(&list, &ListView::itemCheck, &list, [this] {
        list.clearItems();
        list.addItem(QStringLiteral("new"));
    });
    clickCheckBox(&list, 3);
    EXPECT_EQ(list.itemCount(), 1);
}

}  // namespace
