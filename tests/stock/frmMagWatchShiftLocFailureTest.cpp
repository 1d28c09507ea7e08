// The names under which the routines of the window report.

#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>
#include <QHeaderView>

namespace regalon {
namespace {

QString nameOf(const char* routine) {
    return QStringLiteral("frmMagWatchShiftLoc - ") + QLatin1String(routine);
}

class ShiftFailure : public test::ShiftWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShiftWindow::SetUp());
        open();
    }
    void expectReport(const char* routine, int number) {
        ASSERT_GE(messages.count(), 1) << routine;
        EXPECT_EQ(messages.last().Title, nameOf(routine));
        EXPECT_EQ(messages.last().Text, test::windowMessage(number)) << routine;
        EXPECT_EQ(messages.last().Flags, 4112) << routine;
        messages.clear();
    }
    /// From now on the data class cannot even report: its failures end in the routines of the window.
    void loseServerAndErrorService() {
        warehouse.server.kill();
        warehouse.context.ErrorService.reset();
        messages.clear();
    }
    static constexpr int kNotSet = 91;
};

TEST_F(ShiftFailure, ClicksOnThePlan) {
    PictureItem* location = item("imglocation", QStringLiteral("1_1_1_1_"));
    location->setTag(QStringLiteral("1_1_1"));
    test::clickItem(canvas(), location);
    expectReport("imglocation_Click", 9);
    PictureItem* stand = item("imgBookStand", QStringLiteral("R_1_2_"));
    stand->setTag(QStringLiteral("R_1"));
    test::clickItem(canvas(), stand);
    expectReport("imgBookStand_Click", 9);
    stand->setTag(QString());
    test::clickItem(canvas(), stand);
    EXPECT_EQ(messages.count(), 0) << "a stand without a Tag is passed over";
    EXPECT_TRUE(details.isEmpty());
}

TEST_F(ShiftFailure, AStandWithoutADetail) {
    window = std::make_unique<frmMagWatchShiftLoc>(warehouse.context);
    show();
    clickStand(QStringLiteral("1_2"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, nameOf("imgBookStand_Click"));
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("429\r\n")));
}

TEST_F(ShiftFailure, AMainWindowBeyond16Bits) {
    window->setTopStand(40000);
    expectReport("TopStand", 6);
    window->setLeftStand(-40000);
    expectReport("LeftStand", 6);
}

TEST_F(ShiftFailure, TheConfirmationOfALocation) {
    clickLocation(QStringLiteral("1_1_1_1"));
    loseServerAndErrorService();
    acceptLocation();
    expectReport("AkceptLocation", kNotSet);
    EXPECT_FALSE(shiftFrame()->isVisible());
}

TEST_F(ShiftFailure, ATickOnAMaterialAndItsConfirmation) {
    pickSource();
    loseServerAndErrorService();
    tick(items(), 1);
    expectReport("lstLocationItem_ItemCheck", kNotSet);
    ASSERT_FALSE(ticked(items()).isEmpty());
    acceptItem();
    expectReport("WatchPropLocationSurChoseBarCode", kNotSet);
    expectChoosingItem();
}

TEST_F(ShiftFailure, ATickOnAPackageTheReturnAndTheConfirmations) {
    pickPackages();
    tickPackage("F1");
    loseServerAndErrorService();
    tickPackage("F2");
    expectReport("lstLocationBarCode_ItemCheck", kNotSet);
    acceptShift();
    expectReport("ShiftItemOnLocation", kNotSet);
    cancelItem();
    expectReport("tlbAkceptItem_ButtonClick", kNotSet);
    expectChoosingItem();
    cancelShift();
    expectReport("tlbAkceptShiftItem_ButtonClick", kNotSet);
}

TEST_F(ShiftFailure, TheProposalsUnderTheNameOfAnotherWindow) {
    pickPackages();
    loseServerAndErrorService();
    acceptItem();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagSurInput - WatchOrdersLineBarCode"));
    EXPECT_EQ(messages.last().Flags, 4112);
}

TEST_F(ShiftFailure, ASortWithoutPicturesOfHeaders) {
    pickPackages();
    tickPackage("F1");
    proposals()->setHeaderIcons(nullptr);
    QHeaderView* header = proposals()->header();
    test::clickAt(header->viewport(), QPoint(header->sectionSize(0) / 2, header->height() / 2));
    expectReport("lstSurPropLocation_ColumnClick", 35613);
}

TEST_F(ShiftFailure, TheUnloadUnderTheNameOfTheLoad) {
    loseServerAndErrorService();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Exit")));
    expectReport("Form_Load", kNotSet);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(ShiftFailure, TheLoad) {
    window->close();
    loseServerAndErrorService();
    window->show();
    expectReport("Form_Load", kNotSet);
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(shiftFrame()->isVisible());
}

TEST_F(ShiftFailure, TheRebuild) {
    warehouse.server.kill();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_ReBulid")));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, nameOf("WathStore"));
}

}  // namespace
}  // namespace regalon
