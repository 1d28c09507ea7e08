// The frame of a location: what a click shows, the material and the group that are saved, and the search.
#include "common/DbConnection.h"
#include "map/LayoutEditor.h"
#include "map/frmMagLookForItem.h"
#include "support/Events.h"

#include <QAction>
#include <QDialog>
#include <QPushButton>

namespace regalon {
namespace {

using test::EmptyHallEditor;

const QString kBadAddress =
    QStringLiteral("Błąd w przekazaniu głównych parametrów do definiowania parametrów lokalizacji !!!");

/// A stand with two shelves in row A; the location 1/1/1/1 has a row of its own, the others have none.
class FrmMagCreateLocation : public EmptyHallEditor {
protected:
    void SetUp() override {
        EmptyHallEditor::SetUp();
        addStand(1, 2, QStringLiteral("21"));
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("delete from OITM where ItemCode in (N'SUR-1',N'SUR-2')"),
             QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'SUR-1',N'Śruba'),"
                            "(N'SUR-2',N'Żywica')"),
             QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                            "(7,N'Złącza',N'Y'),(8,N'Wyłączona',N'N')"),
             QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,"
                            "ItemName,GroupSur,Height_int) values (1,1,1,1,N'SUR-1',N'Śruba',7,900)")}))
            << qPrintable(warehouse.why());
        warehouse.context.UserSign = 4;
    }

    void save() { clickButton("tlbSaveSurLocalization", "key_Save"); }
    QList<QStringList> savings() const {
        return warehouse.calls(QStringLiteral("kolv_mag_Save_Sur_Location"));
    }
    QString stored(const QString& column, const QString& address = QStringLiteral("1/1/1/1")) {
        return warehouse.value(QStringLiteral("select ") + column +
                               QStringLiteral(" from kolv_mag_Location_Item where concat(Rank,'/',Stand,'/',"
                                              "Shelf,'/',Location) = '%1'")
                                   .arg(address));
    }
    /// Searches and takes SUR-2.
    void searchSecond() {
        test::whenModal([](QWidget* modal) {
            auto* found = modal->findChild<ListView*>(QStringLiteral("lstSurOnMag"));
            for (int row = 1; row <= found->itemCount(); ++row) {
                if (found->item(row)->text() == u"SUR-2")
                    found->setSelectedItem(found->item(row));
            }
            test::key(found, Qt::Key_Return);
            static_cast<QDialog*>(modal)->reject();  // stays open without a marked row
        });
        test::click(control<QPushButton>("cmdLookFor"));
    }
    QAction* labelButton() const { return toolBar("tlbCmd")->button(3); }
    QStringList keys() const {
        return {choice("dtcSurOnLOcalization")->boundText(), choice("dtcGroupOnLocalization")->boundText(),
                choice("dtcParamLocation")->boundText()};
    }
};

TEST_F(FrmMagCreateLocation, AClickShowsWhatIsAssigned) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_TRUE(frame("frmAddSurOnLocalization")->isVisible());
    EXPECT_EQ(frame("frmAddSurOnLocalization")->title(),
              QStringLiteral("Rząd: A Regał: 1 Półka: 1 Lokazliacja: 1"));
    EXPECT_EQ(label("lblSurOnLOcationData")->text(), QStringLiteral("SUR-1 - Śruba"));
    EXPECT_EQ(keys(), QStringList({QStringLiteral("SUR-1"), QStringLiteral("7"), QStringLiteral("0")}));
    EXPECT_EQ(choice("dtcSurOnLOcalization")->text(), QStringLiteral("SUR-1 - Śruba"));
    EXPECT_EQ(choice("dtcGroupOnLocalization")->text(), QStringLiteral("Złącza"));
    EXPECT_TRUE(labelButton()->isEnabled());
    EXPECT_EQ(box("txtFrmRank")->text(), QStringLiteral("1"));
    EXPECT_EQ(box("txtFrmStand")->text(), QStringLiteral("1"));
    EXPECT_EQ(box("txtFrmShelf")->text(), QStringLiteral("1"));
    EXPECT_EQ(box("txtFrmLocation")->text(), QStringLiteral("1"));
    EXPECT_EQ(warehouse.batches(), QStringList(QStringLiteral(
                                       "select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item where "
                                       "Rank = 1 and Stand = 1 and  Shelf = 1 and Location = 1")));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateLocation, ALocationWithoutARowHasAllThreeKeysAtZeroAndNoMaterial) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", QStringLiteral("Wysokość [mm]"));
    clickLocation(QStringLiteral("1_1_2_1"));
    EXPECT_EQ(frame("frmAddSurOnLocalization")->title(),
              QStringLiteral("Rząd: A Regał: 1 Półka: 2 Lokazliacja: 1"));
    EXPECT_EQ(label("lblSurOnLOcationData")->text(), QStringLiteral("Brak przypisanego surowca"));
    EXPECT_EQ(keys(), QStringList({QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")}));
    EXPECT_FALSE(labelButton()->isEnabled());
    EXPECT_TRUE(box("txtParamValueLocalization")->isHidden());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateLocation, AnotherLocationBeginsWithoutAParameter) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", QStringLiteral("Opis"));
    EXPECT_TRUE(box("txtParamValueLocalization")->isVisible());
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_EQ(choice("dtcParamLocation")->boundText(), QStringLiteral("0"));
    EXPECT_TRUE(box("txtParamValueLocalization")->isHidden());
}

TEST_F(FrmMagCreateLocation, SavingWritesMaterialGroupAndUser) {
    open();
    clickLocation(QStringLiteral("1_1_1_2"));
    choose("dtcSurOnLOcalization", QStringLiteral("SUR-2 - Żywica"));
    choose("dtcGroupOnLocalization", QStringLiteral("Złącza"));
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(savings().first().mid(0, 7),
              QStringList({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("2"),
                           QStringLiteral("SUR-2"), QStringLiteral("7"), QStringLiteral("4")}));
    EXPECT_EQ(stored(QStringLiteral("concat(ItemCode,'/',ItemName,'/',GroupSur,'/',UserSign)"),
                     QStringLiteral("1/1/1/2")),
              QStringLiteral("SUR-2/Żywica/7/4"));
}

TEST_F(FrmMagCreateLocation, TheLabelKeepsTheOldMaterialUntilTheNextClick) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcSurOnLOcalization", QStringLiteral("SUR-2 - Żywica"));
    save();
    EXPECT_EQ(stored(QStringLiteral("ItemCode")), QStringLiteral("SUR-2"));
    EXPECT_EQ(stored(QStringLiteral("Height_int")), QStringLiteral("900"));
    EXPECT_EQ(label("lblSurOnLOcationData")->text(), QStringLiteral("SUR-1 - Śruba"));
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_EQ(label("lblSurOnLOcationData")->text(), QStringLiteral("SUR-2 - Żywica"));
}

TEST_F(FrmMagCreateLocation, SavingWithTheMaterialListAtChooseDoesNothingAndSaysNothing) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcSurOnLOcalization", QStringLiteral("wybierz"));
    choose("dtcGroupOnLocalization", QStringLiteral("wybierz"));
    save();
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(savings().size(), 0);
    EXPECT_EQ(stored(QStringLiteral("concat(ItemCode,'/',GroupSur)")), QStringLiteral("SUR-1/7"));
}

TEST_F(FrmMagCreateLocation, AnAddressThatIsNoNumberIsRefusedBeforeTheCall) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    for (const char* name : {"txtFrmRank", "txtFrmStand", "txtFrmShelf", "txtFrmLocation"}) {
        for (const QString& bad : {QStringLiteral("x"), QString()}) {
            messages.clear();
            enter(box(name), bad);
            save();
            expectNotice(kBadAddress);
        }
        enter(box(name), QStringLiteral("1"));
    }
    EXPECT_EQ(savings().size(), 0);
}

TEST_F(FrmMagCreateLocation, AnAddressOutOfRangeIsAFailureAndNothingIsWritten) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    enter(box("txtFrmStand"), QStringLiteral("40000"));
    save();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - tlbSaveSur_ButtonClick"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::Overflow));
    EXPECT_EQ(savings().size(), 0);
}

TEST_F(FrmMagCreateLocation, ALocationThatAnotherManagerTookAwayIsRefusedWithTheReason) {
    open();
    clickLocation(QStringLiteral("1_1_1_2"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("delete from kolv_mag_Location where Location = 2")}));
    choose("dtcSurOnLOcalization", QStringLiteral("SUR-2 - Żywica"));
    save();
    expectNotice(
        QStringLiteral("Ta lokalizacja nie istnieje. Mógł ją usunąć inny użytkownik: odśwież magazyn."));
    EXPECT_EQ(stored(QStringLiteral("ItemCode"), QStringLiteral("1/1/1/2")), QStringLiteral("none"));
}

TEST_F(FrmMagCreateLocation, AGroupSwitchedOffMeanwhileIsRefusedWithTheReason) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Location_Group set OnOrOff = N'N'")}));
    choose("dtcSurOnLOcalization", QStringLiteral("SUR-2 - Żywica"));
    save();
    expectNotice(QStringLiteral("Wskazana grupa surowców nie istnieje lub jest wyłączona."));
    EXPECT_EQ(stored(QStringLiteral("ItemCode")), QStringLiteral("SUR-1"));
}

TEST_F(FrmMagCreateLocation, WithTheServerGoneASaveReportsOnceAndKeepsTheEntries) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcSurOnLOcalization", QStringLiteral("SUR-2 - Żywica"));
    warehouse.server.kill();
    save();
    expectTitles({QStringLiteral("Error - clsMagCreate [AddSurOnLocalization]")});
    EXPECT_EQ(choice("dtcSurOnLOcalization")->boundText(), QStringLiteral("SUR-2"));
    ASSERT_TRUE(warehouse.server.start());
    EXPECT_EQ(stored(QStringLiteral("ItemCode")), QStringLiteral("SUR-1"));
}

TEST_F(FrmMagCreateLocation, AClickWithTheServerGoneShowsNoMaterialOfTheLocationBefore) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    warehouse.server.kill();
    clickLocation(QStringLiteral("1_1_1_2"));
    expectTitles({QStringLiteral("Error - clsMagCreate [GetParamLocalization]")});
    EXPECT_EQ(label("lblSurOnLOcationData")->text(), QStringLiteral("Brak przypisanego surowca"));
    EXPECT_EQ(keys(), QStringList({QStringLiteral("0"), QStringLiteral("0"), QStringLiteral("0")}));
    EXPECT_FALSE(labelButton()->isEnabled());
}

TEST_F(FrmMagCreateLocation, CancelHidesTheFrameAndTakesTheLabelButtonAway) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    clickButton("tlbSaveSurLocalization", "key_Cancel");
    EXPECT_TRUE(frame("frmAddSurOnLocalization")->isHidden());
    EXPECT_FALSE(labelButton()->isEnabled());
    EXPECT_EQ(savings().size(), 0);
}

TEST_F(FrmMagCreateLocation, TheSearchGivesItsMaterialToTheList) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    warehouse.server.clearTrace();
    searchSecond();
    EXPECT_EQ(choice("dtcSurOnLOcalization")->boundText(), QStringLiteral("SUR-2"));
    // All materials, not those in the warehouse alone.
    EXPECT_TRUE(warehouse.batches().contains(QStringLiteral("exec Kolv_mag_LookFor_Item '%' , 'ItemCode',1")))
        << qPrintable(warehouse.batches().join(u'\n'));
}

TEST_F(FrmMagCreateLocation, OpenedAgainItKnowsNoMaterialOfASearchBefore) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    searchSecond();
    ASSERT_EQ(choice("dtcSurOnLOcalization")->boundText(), QStringLiteral("SUR-2"));
    window->unload();
    window->show();
    clickLocation(QStringLiteral("1_1_1_1"));
    // Closed by its frame the dialog writes nothing.
    test::whenModal([](QWidget* modal) { modal->close(); });
    test::click(control<QPushButton>("cmdLookFor"));
    EXPECT_EQ(choice("dtcSurOnLOcalization")->boundText(), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateLocation, ACancelledSearchGivesTheListItsOldMaterial) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    test::whenModal([](QWidget* modal) { test::key(modal, Qt::Key_Escape); });
    test::click(control<QPushButton>("cmdLookFor"));
    EXPECT_EQ(choice("dtcSurOnLOcalization")->boundText(), QStringLiteral("SUR-1"));
    clickLocation(QStringLiteral("1_1_1_2"));
    test::whenModal([](QWidget* modal) { test::key(modal, Qt::Key_Escape); });
    test::click(control<QPushButton>("cmdLookFor"));
    EXPECT_EQ(choice("dtcSurOnLOcalization")->boundText(), QStringLiteral("0"));
}

}  // namespace
}  // namespace regalon
