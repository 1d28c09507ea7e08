// The location from which packages are to go: its click and its confirmation.

#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>

namespace regalon {
namespace {

class ShiftLocation : public test::ShiftWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShiftWindow::SetUp());
        open();
        warehouse.server.clearTrace();
    }
    void typeAddress(const QStringList& texts) {
        const char* const boxes[] = {"txtRank", "txtStand", "txtShelf", "txtLocation"};
        for (int number = 0; number < 4; ++number) {
            box(boxes[number])->setFocus();
            test::key(box(boxes[number]), Qt::Key_A, Qt::ControlModifier);
            test::key(box(boxes[number]), Qt::Key_Delete);
            test::type(box(boxes[number]), texts.at(number));
        }
    }
};

TEST_F(ShiftLocation, AClickTellsTheLocationAndItsMaterialAndLetsItBeConfirmed) {
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_EQ(address(), QStringLiteral("1 1 1 1"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: A Regał: 1 Półka: 1 Lokazliacja: 1"));
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral("FARBA - Farba żółta"));
    EXPECT_EQ(traced(),
              QStringList(QStringLiteral(
                  "select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item where Rank = 1 and "
                  "Stand = 1 and  Shelf = 1 and Location = 1")));
    expectLocationPicked();
}

TEST_F(ShiftLocation, ALocationWithoutARowReadsAsHavingNoMaterial) {
    clickLocation(QStringLiteral("1_1_1_2"));
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral("Brak przypisanego surowca"));
    expectLocationPicked();
}

TEST_F(ShiftLocation, WithoutAClickTheConfirmationIsOff) {
    acceptLocation();
    EXPECT_EQ(traced(), QStringList());
    expectBrowsing();
}

TEST_F(ShiftLocation, AConfirmedLocationOpensTheFrameWithItsMaterials) {
    pickSource();
    expectChoosingItem();
    EXPECT_EQ(test::ShiftWindow::column(items(), 1),
              QStringList({QStringLiteral("KLEJ"), QStringLiteral("FARBA")}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftLocation, TypedNumbersConfirmALocationAsAClickDoes) {
    clickLocation(QStringLiteral("1_2_1_1"));
    typeAddress({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1")});
    acceptLocation();
    expectChoosingItem();
    EXPECT_EQ(items()->itemCount(), 2);
}

TEST_F(ShiftLocation, AnAddressThatIsNoneStopsTheConfirmationWithoutAMessage) {
    clickLocation(QStringLiteral("1_1_1_1"));
    const QStringList good(
        {QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1")});
    for (const char* bad : {"", "x", "1a", "0", "-1"}) {
        for (int number = 0; number < 4; ++number) {
            QStringList texts = good;
            texts[number] = QString::fromLatin1(bad);
            typeAddress(texts);
            warehouse.server.clearTrace();
            acceptLocation();
            EXPECT_EQ(traced(), QStringList()) << bad << number;
            EXPECT_FALSE(shiftFrame()->isVisible());
        }
    }
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftLocation, TheMinusOnesThatACancelLeavesStopTheConfirmation) {
    pickSource();
    cancelItem();
    EXPECT_EQ(address(), QStringLiteral("-1 -1 -1 -1"));
    acceptLocationButton()->setEnabled(true);
    warehouse.server.clearTrace();
    acceptLocation();
    EXPECT_EQ(traced(), QStringList());
    EXPECT_FALSE(shiftFrame()->isVisible());
}

TEST_F(ShiftLocation, ANumberBeyond16BitsEndsInTheHandlerOfTheConfirmation) {
    clickLocation(QStringLiteral("1_1_1_1"));
    typeAddress({QStringLiteral("40000"), QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1")});
    acceptLocation();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - AkceptLocation"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(6));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_FALSE(shiftFrame()->isVisible());
}

TEST_F(ShiftLocation, AClickWhileTheFrameIsOpenChangesTheAddressAndLeavesTheLists) {
    pickPackages();
    const QStringList shown = test::ShiftWindow::column(barCodes(), 1);
    clickLocation(QStringLiteral("5_1_1_1"));
    EXPECT_EQ(address(), QStringLiteral("5 1 1 1"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: E Regał: 1 Półka: 1 Lokazliacja: 1"));
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral("KLEJ - Klej"));
    EXPECT_EQ(test::ShiftWindow::column(barCodes(), 1), shown);
    expectChoosingBarCode();
}

TEST_F(ShiftLocation, AClickWhileTheFrameIsOpenMakesTheNextTickStageFromThere) {
    pickSource();
    clickLocation(QStringLiteral("5_1_1_1"));
    warehouse.server.clearTrace();
    tick(items(), 1);
    const QList<QStringList> calls = warehouse.calls(QStringLiteral("kolv_mag_BarCode_Shift_Tmp"));
    ASSERT_EQ(calls.size(), 2);
    EXPECT_EQ(calls[0].mid(0, 5).join(u' '), QStringLiteral("KLEJ 5 1 1 1"));
    EXPECT_EQ(calls[1].mid(0, 5).join(u' '), QStringLiteral("FARBA 5 1 1 1"));
    EXPECT_EQ(staged(QStringLiteral("BarCode = N'K2'")), 1) << "what lies on the new location";
}

TEST_F(ShiftLocation, AClickWhileTheFrameIsOpenMakesTheNewLocationNoTarget) {
    pickPackages();
    tickPackage("F1");
    const auto iconOf = [this](const QString& place) {
        for (int number = 1; number <= proposals()->itemCount(); ++number) {
            const ListItem* row = proposals()->item(number);
            QStringList target;
            for (int fromEnd = 10; fromEnd >= 7; --fromEnd)
                target.append(row->subItem(proposals()->headerCount() - fromEnd));
            if (target.join(u' ') == place)
                return row->smallIcon();
        }
        return -1;
    };
    ASSERT_NE(iconOf(QStringLiteral("1 2 1 1")), 40);
    ASSERT_NE(iconOf(QStringLiteral("1 2 1 1")), -1);
    clickLocation(QStringLiteral("1_2_1_1"));
    acceptItem();
    EXPECT_EQ(iconOf(QStringLiteral("1 2 1 1")), 40);
}

TEST_F(ShiftLocation, ALocationConfirmedWhileTheFrameIsOpenShowsItsMaterials) {
    pickSource();
    clickLocation(QStringLiteral("5_1_1_1"));
    acceptLocation();
    expectChoosingItem();
    EXPECT_EQ(test::ShiftWindow::column(items(), 1), QStringList(QStringLiteral("KLEJ")));
    EXPECT_EQ(staged(), 1) << "what was staged from the location before is cleared";
}

}  // namespace
}  // namespace regalon
