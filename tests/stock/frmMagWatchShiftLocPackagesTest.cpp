// The packages of the staged material, the way back to the materials, and the cancels.

#include "artwork/Icons.h"
#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>
#include <QImage>

namespace regalon {
namespace {

const QString kClear = QStringLiteral("Kolv_mag_BarCode_Clear_Temp 1 0 P S");
const QString kConfirm = QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm 1 P S NULL");
const QString kPrepare = QStringLiteral("Kolv_mag_Watch_Prop_Location 1 P S 0 NULL");
const QString kShow = QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL");

class ShiftPackages : public test::ShiftWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShiftWindow::SetUp());
        loadProgramIcons();
        open();
    }
    static QImage picture(const QIcon& icon) { return icon.pixmap(16, 16).toImage(); }
    QImage pictureOfCancel() const { return picture(toolBar("tlbAkceptItem")->button(2)->icon()); }
    QImage pictureOfReturn() const { return picture(items()->smallIcons()->icon(11)); }
    int chosen() { return staged(QStringLiteral("LineGrd = -1")); }
};

TEST_F(ShiftPackages, AConfirmedMaterialShowsItsPackages) {
    pickSource();
    EXPECT_NE(pictureOfCancel(), pictureOfReturn());
    warehouse.server.clearTrace();
    acceptItem();
    expectChoosingBarCode();
    EXPECT_EQ(traced(), QStringList(QStringLiteral("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',1")));
    EXPECT_EQ(column(barCodes(), 1),
              QStringList({QStringLiteral("F1"), QStringLiteral("F2"), QStringLiteral("F3")}));
    EXPECT_EQ(barCodes()->headerText(1), QStringLiteral("Lp"));
    EXPECT_EQ(barCodes()->headerWidth(1), 800);
    EXPECT_FALSE(barCodes()->sorted());
    EXPECT_EQ(selected(barCodes()), 1);
    EXPECT_EQ(ticked(barCodes()), QList<int>());
    EXPECT_EQ(pictureOfCancel(), pictureOfReturn());
}

TEST_F(ShiftPackages, WithoutATickedMaterialTheConfirmationDoesNothing) {
    pickSource();
    tick(items(), 2);
    ASSERT_EQ(ticked(items()), QList<int>());
    warehouse.server.clearTrace();
    acceptItem();
    EXPECT_EQ(traced(), QStringList());
    expectChoosingItem();
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftPackages, AMaterialWithoutPackagesShowsAnEmptyList) {
    pickSource();
    run(QStringLiteral("delete from Kolv_Mag_BarCode_Input_Sur_tym"));
    acceptItem();
    expectChoosingBarCode();
    EXPECT_EQ(barCodes()->itemCount(), 0);
    EXPECT_EQ(selected(barCodes()), 0);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftPackages, ATickChoosesThePackageAndReadsTheProposalsAnew) {
    pickPackages();
    warehouse.server.clearTrace();
    tick(barCodes(), 2);
    EXPECT_EQ(traced(), QStringList({QStringLiteral("kolv_mag_Shift_Location_BarCode_Status F2 1 P N S NULL"),
                                     kConfirm, kPrepare, kShow}));
    EXPECT_EQ(chosen(), 1);
    EXPECT_EQ(selected(barCodes()), 2);
    EXPECT_GT(proposals()->itemCount(), 0);
    EXPECT_EQ(ticked(barCodes()), QList<int>({2}));

    warehouse.server.clearTrace();
    tick(barCodes(), 2);
    EXPECT_EQ(traced(), QStringList({QStringLiteral("kolv_mag_Shift_Location_BarCode_Status F2 1 P Y S NULL"),
                                     kConfirm, kPrepare, kShow}));
    EXPECT_EQ(chosen(), 0);
    EXPECT_EQ(proposals()->itemCount(), 0);
    expectChoosingBarCode();
}

TEST_F(ShiftPackages, TheSpaceKeyTicksAPackageToo) {
    pickPackages();
    barCodes()->setFocus();
    test::key(barCodes(), Qt::Key_Space);
    EXPECT_EQ(ticked(barCodes()), QList<int>({1}));
    EXPECT_EQ(chosen(), 1);
}

TEST_F(ShiftPackages, ARefusedChoiceShowsNoMessage) {
    pickPackages();
    run(QStringLiteral("delete from Kolv_Mag_BarCode_Input_Sur_tym"));
    tickPackage("F1");
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(proposals()->itemCount(), 0);
}

TEST_F(ShiftPackages, TheirConfirmationReadsTheProposalsAnew) {
    pickPackages();
    tickPackage("F1");
    warehouse.server.clearTrace();
    acceptItem();
    EXPECT_EQ(traced(), QStringList({kConfirm, kPrepare, kShow}));
    expectChoosingBarCode();
    EXPECT_EQ(ticked(barCodes()), QList<int>({1}));
}

TEST_F(ShiftPackages, TheReturnStagesTheMaterialsAnew) {
    pickPackages();
    tickPackage("F1");
    ASSERT_EQ(chosen(), 1);
    warehouse.server.clearTrace();
    cancelItem();
    expectChoosingItem();
    EXPECT_EQ(pictureOfCancel(), pictureOfReturn()) << "the picture stays";
    EXPECT_EQ(chosen(), 0);
    EXPECT_EQ(staged(), 3);
    EXPECT_EQ(proposals()->itemCount(), 0);
    const QStringList calls = traced();
    ASSERT_GE(calls.size(), 5);
    EXPECT_EQ(calls.mid(0, 5), QStringList({kClear, kConfirm, kPrepare, kShow, kClear}));
    EXPECT_EQ(ticked(items()), QList<int>({2}));
}

TEST_F(ShiftPackages, TheReturnTakesTheAddressOfTheBoxes) {
    pickPackages();
    clickLocation(QStringLiteral("5_1_1_1"));
    cancelItem();
    expectChoosingItem();
    EXPECT_EQ(column(items(), 1), QStringList(QStringLiteral("KLEJ")));
}

TEST_F(ShiftPackages, ACancelOfTheMaterialsGoesBackToThePlan) {
    pickSource();
    run(QStringLiteral("delete from kolv_mag_Stand where Stand = 2"));
    warehouse.server.clearTrace();
    cancelItem();
    expectBrowsing();
    EXPECT_EQ(staged(), 0);
    EXPECT_EQ(items()->itemCount(), 0);
    EXPECT_EQ(address(), QStringLiteral("-1 -1 -1 -1"));
    EXPECT_EQ(label("lblObjectClick")->text(), QString());
    EXPECT_EQ(label("lblObjectParam")->text(), QString());
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 2) << "the plan is rebuilt";
    const QStringList calls = traced();
    EXPECT_EQ(
        calls.mid(0, 6),
        QStringList({kClear,
                     QStringLiteral("exec kolv_mag_Watch_Item_On_Location -1,-1,-1,-1,N'1',N'P',0,N'S'"),
                     QStringLiteral("exec kolv_mag_Watch_Item_On_Location -1,-1,-1,-1,N'1',N'P',1,N'S'"),
                     kConfirm, kPrepare, kShow}));
    EXPECT_TRUE(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftPackages, ACancelOfTheProposalsGoesBackToThePlanAsWell) {
    pickSource();
    cancelShift();
    expectBrowsing();
    EXPECT_EQ(staged(), 0);
    EXPECT_EQ(address(), QStringLiteral("-1 -1 -1 -1"));
    pickSource();
    expectChoosingItem();
}

TEST_F(ShiftPackages, AfterACancelOfTheProposalsTheStalePackagesShowUntilTheReturn) {
    pickPackages();
    tickPackage("F1");
    cancelShift();
    expectBrowsing();
    clickLocation(QStringLiteral("5_1_1_1"));
    acceptLocation();
    expectChoosingBarCode();
    EXPECT_EQ(column(barCodes(), 1),
              QStringList({QStringLiteral("F1"), QStringLiteral("F2"), QStringLiteral("F3")}));
    EXPECT_EQ(column(items(), 1), QStringList(QStringLiteral("KLEJ"))) << "read, and out of sight";
    cancelItem();
    expectChoosingItem();
    EXPECT_EQ(column(items(), 1), QStringList(QStringLiteral("KLEJ")));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftPackages, AStalePackageCannotBeChosen) {
    pickPackages();
    cancelShift();
    clickLocation(QStringLiteral("5_1_1_1"));
    acceptLocation();
    tickPackage("F1");
    EXPECT_EQ(chosen(), 0);
    EXPECT_EQ(proposals()->itemCount(), 0);
    acceptShift();
    EXPECT_EQ(placeOf("F1"), QStringLiteral("1 1 1 1"));
    EXPECT_EQ(messages.count(), 0);
}

}  // namespace
}  // namespace regalon
