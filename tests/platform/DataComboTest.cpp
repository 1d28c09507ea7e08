#include "platform/DataCombo.h"
#include "support/Events.h"

#include <QAbstractItemView>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

class DataComboTest : public ::testing::Test {
protected:
    DataComboTest() {
        combo.resize(200, 25);
        RowSource rows;
        rows.Columns = {QStringLiteral("Rank"), QStringLiteral("RankName")};
        rows.Rows = {{0, QStringLiteral("wybierz")},
                     {1, QStringLiteral("Rząd A")},
                     {2, QStringLiteral("Rząd B")},
                     {3, QVariant()}};
        combo.setRowSource(rows);
        combo.setBoundColumn(QStringLiteral("rank"));
        combo.setListField(QStringLiteral("RankName"));
    }

    DataCombo combo;
};

TEST_F(DataComboTest, NothingIsChosenAtFirst) {
    EXPECT_EQ(combo.boundText(), QString());
    EXPECT_EQ(combo.text(), QString());
    EXPECT_EQ(combo.currentIndex(), -1);
    EXPECT_EQ(combo.count(), 4);
}

TEST_F(DataComboTest, TheBoundTextChoosesItsRow) {
    QSignalSpy changes(&combo, &DataCombo::userChanged);
    combo.setBoundText(QStringLiteral("2"));
    EXPECT_EQ(combo.text(), QStringLiteral("Rząd B"));
    EXPECT_EQ(combo.boundText(), QStringLiteral("2"));
    combo.setBoundText(QStringLiteral("3"));
    EXPECT_EQ(combo.text(), QString());
    EXPECT_EQ(combo.currentIndex(), 3);
    EXPECT_EQ(changes.count(), 0);
}

TEST_F(DataComboTest, AnUnknownBoundTextIsKeptAndShowsNothing) {
    combo.setBoundText(QStringLiteral("1"));
    combo.setBoundText(QStringLiteral("77"));
    EXPECT_EQ(combo.boundText(), QStringLiteral("77"));
    EXPECT_EQ(combo.text(), QString());
    EXPECT_EQ(combo.currentIndex(), -1);
}

TEST_F(DataComboTest, TheTextChoosesItsRowOrStandsFree) {
    combo.setText(QStringLiteral("Rząd A"));
    EXPECT_EQ(combo.boundText(), QStringLiteral("1"));
    combo.setText(QStringLiteral("inny"));
    EXPECT_EQ(combo.text(), QStringLiteral("inny"));
    EXPECT_EQ(combo.boundText(), QString());
}

TEST_F(DataComboTest, WithoutRowsItIsEmpty) {
    combo.setBoundText(QStringLiteral("1"));
    combo.clearRowSource();
    combo.setBoundText(QString());
    combo.setText(QString());
    EXPECT_EQ(combo.count(), 0);
    EXPECT_EQ(combo.boundText(), QString());
    EXPECT_EQ(combo.text(), QString());
}

TEST_F(DataComboTest, NewRowsKeepTheBoundText) {
    combo.setBoundText(QStringLiteral("2"));
    combo.setRowSource(combo.rowSource());
    EXPECT_EQ(combo.boundText(), QStringLiteral("2"));
    EXPECT_EQ(combo.text(), QStringLiteral("Rząd B"));
    EXPECT_EQ(combo.currentIndex(), 2);
}

TEST_F(DataComboTest, AUsersChoiceChangesTheBoundTextAndRaisesTheEvent) {
    QSignalSpy changes(&combo, &DataCombo::userChanged);
    combo.setBoundText(QStringLiteral("0"));
    showAndWait(&combo);
    combo.setFocus();
    key(&combo, Qt::Key_Down);
    EXPECT_EQ(combo.boundText(), QStringLiteral("1"));
    EXPECT_EQ(changes.count(), 1);
    combo.showPopup();
    QAbstractItemView* popup = combo.view();
    ASSERT_TRUE(waitFor([popup] { return popup->isVisible(); }));
    clickAt(popup->viewport(), popup->visualRect(popup->model()->index(2, 0)).center());
    ASSERT_TRUE(waitFor([&changes] { return changes.count() == 2; }));
    EXPECT_EQ(combo.boundText(), QStringLiteral("2"));
    EXPECT_EQ(combo.text(), QStringLiteral("Rząd B"));
}

TEST_F(DataComboTest, AnotherKeyFromCodeRaisesChangedAndTheSameKeyDoesNot) {
    QSignalSpy changes(&combo, &DataCombo::changed);
    combo.setBoundText(QStringLiteral("1"));
    EXPECT_EQ(changes.count(), 1);
    combo.setBoundText(QStringLiteral("1"));
    EXPECT_EQ(changes.count(), 1);
    combo.setText(QStringLiteral("Rząd B"));
    EXPECT_EQ(changes.count(), 2);
    combo.setBoundText(QStringLiteral("77"));
    EXPECT_EQ(changes.count(), 3);
}

TEST_F(DataComboTest, TheSameKeyInNewRowsRaisesChanged) {
    combo.setBoundText(QStringLiteral("1"));
    QSignalSpy changes(&combo, &DataCombo::changed);
    combo.setRowSource(combo.rowSource());
    EXPECT_EQ(changes.count(), 0);
    combo.setBoundText(QStringLiteral("1"));
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(DataComboTest, AUsersChoiceRaisesChangedOnlyForAnotherRow) {
    combo.setBoundText(QStringLiteral("0"));
    showAndWait(&combo);
    combo.setFocus();
    QSignalSpy changes(&combo, &DataCombo::changed);
    key(&combo, Qt::Key_Down);
    EXPECT_EQ(changes.count(), 1);
    combo.showPopup();
    QAbstractItemView* popup = combo.view();
    ASSERT_TRUE(waitFor([popup] { return popup->isVisible(); }));
    QSignalSpy choices(&combo, &DataCombo::userChanged);
    clickAt(popup->viewport(), popup->visualRect(popup->model()->index(1, 0)).center());
    ASSERT_TRUE(waitFor([&choices] { return choices.count() == 1; }));
    EXPECT_EQ(changes.count(), 1);
}

}  // namespace
