// The confirmation of a shift, with the real procedures: what moves, what is refused, and what shows then.

#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>

namespace regalon {
namespace {

const QString kMismatch =
    QStringLiteral("Brak zgodności ilośći wybranych paczek a wskazanych lokalizacji do ich odłożenia. ");
const QString kFree = QStringLiteral("1 2 1 1");
const QString kFree2 = QStringLiteral("1 2 1 2");
const QString kSource = QStringLiteral("1 1 1 1");

class ShiftConfirmation : public test::ShiftWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ShiftWindow::SetUp());
        open();
    }
    void expectNotice(const QString& text) {
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Text, text);
        EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
        EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    }
    qsizetype moves() const {
        return warehouse.calls(QStringLiteral("kolv_mag_Shift_Location_BarCode")).size();
    }
    /// What another program does to a package meanwhile.
    void moveAway(const char* barCode) {
        run(QStringLiteral("update Kolv_Mag_BarCode_Sur set Rank = 5, Stand = 1 where BarCode = N'%1'")
                .arg(QLatin1String(barCode)));
    }
};

TEST_F(ShiftConfirmation, MovesTheTickedPackagesAndReadsTheListsAnew) {
    pickPackages();
    tickPackage("F1");
    tickPackage("F3");
    tickTarget("F1", kFree);
    tickTarget("F3", kFree2);
    acceptShift();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(placeOf("F1"), kFree);
    EXPECT_EQ(placeOf("F2"), kSource);
    EXPECT_EQ(placeOf("F3"), kFree2);
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from Kolv_Mag_BarCode_Sur_History")),
              QStringLiteral("2"));
    expectChoosingBarCode();
    EXPECT_EQ(column(barCodes(), 1), QStringList(QStringLiteral("F2")));
    EXPECT_EQ(ticked(barCodes()), QList<int>());
    EXPECT_EQ(proposals()->itemCount(), 0);
    EXPECT_EQ(staged(), 1);
    EXPECT_EQ(column(items(), 3), QStringList({QStringLiteral("5"), QStringLiteral("10")}));
}

TEST_F(ShiftConfirmation, MoreChosenPackagesThanTickedTargetsMoveNothing) {
    pickPackages();
    tickPackage("F1");
    tickPackage("F2");
    tickTarget("F1", kFree);
    warehouse.server.clearTrace();
    acceptShift();
    expectNotice(kMismatch);
    EXPECT_EQ(moves(), 0);
    EXPECT_EQ(placeOf("F1"), kSource);
    EXPECT_EQ(ticked(proposals()).size(), 1) << "the ticks stay";
}

TEST_F(ShiftConfirmation, FewerChosenPackagesThanTickedTargetsMoveNothing) {
    pickPackages();
    tickPackage("F1");
    tickPackage("F2");
    tickTarget("F1", kFree);
    tickTarget("F2", kFree2);
    run(QStringLiteral("update Kolv_Mag_BarCode_Input_Sur_tym set LineGrd = 0 where BarCode = N'F2'"));
    acceptShift();
    expectNotice(kMismatch);
    EXPECT_EQ(moves(), 0);
}

TEST_F(ShiftConfirmation, WithNoPackageChosenNothingIsSaid) {
    pickPackages();
    warehouse.server.clearTrace();
    acceptShift();
    EXPECT_EQ(messages.count(), 0);
    ASSERT_EQ(traced().size(), 1) << "the count alone";
    // Also when rows are ticked: a count of none has no box.
    tickPackage("F1");
    tickTarget("F1", kFree);
    run(QStringLiteral("update Kolv_Mag_BarCode_Input_Sur_tym set LineGrd = 0"));
    acceptShift();
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(moves(), 0);
}

TEST_F(ShiftConfirmation, AFailedCountIsTreatedLikeNoPackage) {
    pickPackages();
    tickPackage("F1");
    tickTarget("F1", kFree);
    run(QStringLiteral("select * into odlozone from Kolv_Mag_BarCode_Input_Sur_tym"));
    run(QStringLiteral("drop table Kolv_Mag_BarCode_Input_Sur_tym"));
    acceptShift();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("Error - clsMagWatchShiftLoc [GetCountChoseBarCodeOnShift]"));
    EXPECT_EQ(moves(), 0);
}

TEST_F(ShiftConfirmation, ARefusedPackageDoesNotHoldUpTheOthers) {
    pickPackages();
    tickPackage("F1");
    tickPackage("F2");
    tickTarget("F1", kFree);
    tickTarget("F2", kFree2);
    moveAway("F1");
    acceptShift();
    expectNotice(
        QStringLiteral("Opakowanie „F1” przesunął lub wydał w międzyczasie inny użytkownik. Nie zostało "
                       "przesunięte."));
    EXPECT_EQ(placeOf("F1"), QStringLiteral("5 1 1 1"));
    EXPECT_EQ(placeOf("F2"), kFree2);
    EXPECT_EQ(column(barCodes(), 1), QStringList(QStringLiteral("F3"))) << "read anew";
    EXPECT_EQ(proposals()->itemCount(), 0);
}

TEST_F(ShiftConfirmation, WhenNothingMovedTheListsStayAsTheyAre) {
    pickPackages();
    tickPackage("F1");
    tickTarget("F1", kFree);
    moveAway("F1");
    warehouse.server.clearTrace();
    acceptShift();
    EXPECT_EQ(messages.count(), 1);
    EXPECT_EQ(traced().size(), 2) << "the count and the refused move";
    EXPECT_EQ(column(barCodes(), 1).size(), 3);
    EXPECT_EQ(ticked(proposals()).size(), 1);
    expectChoosingBarCode();
}

TEST_F(ShiftConfirmation, EachRefusalShowsItsMessage) {
    pickPackages();
    tickPackage("F1");
    tickPackage("F2");
    tickTarget("F1", kFree);
    tickTarget("F2", kFree2);
    moveAway("F1");
    moveAway("F2");
    acceptShift();
    ASSERT_EQ(messages.count(), 2);
    EXPECT_TRUE(messages.messages().at(0).Text.contains(QStringLiteral("F1")));
    EXPECT_TRUE(messages.messages().at(1).Text.contains(QStringLiteral("F2")));
}

TEST_F(ShiftConfirmation, AfterTheLastPackageOfAMaterialTheNextMaterialFollows) {
    pickPackages();
    for (const char* barCode : {"F1", "F2", "F3"})
        tickPackage(barCode);
    for (const char* barCode : {"F1", "F2", "F3"})
        tickTarget(barCode, kFree);
    acceptShift();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    expectChoosingBarCode();
    EXPECT_EQ(column(barCodes(), 1), QStringList(QStringLiteral("K1")));
    EXPECT_EQ(staged(QStringLiteral("BarCode = N'K1'")), 1);
    tickPackage("K1");
    tickTarget("K1", QStringLiteral("5 1 1 1"));
    acceptShift();
    EXPECT_EQ(placeOf("K1"), QStringLiteral("5 1 1 1"));
}

TEST_F(ShiftConfirmation, AfterTheLastPackageOfAllTheOldRowsStayOnTheScreen) {
    clickLocation(QStringLiteral("5_1_1_1"));
    acceptLocation();
    acceptItem();
    tickPackage("K2");
    tickTarget("K2", kFree);
    acceptShift();
    EXPECT_EQ(placeOf("K2"), kFree);
    expectChoosingBarCode();
    EXPECT_EQ(column(barCodes(), 1), QStringList(QStringLiteral("K2"))) << "stale";
    EXPECT_EQ(ticked(items()), QList<int>());
    EXPECT_EQ(proposals()->itemCount(), 0);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftConfirmation, AnAddressThatIsNoNumberEndsItInItsHandler) {
    pickPackages();
    tickPackage("F1");
    tickTarget("F1", kFree);
    box("txtRank")->setFocus();
    test::type(box("txtRank"), QStringLiteral("x"));
    acceptShift();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - ShiftItemOnLocation"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(13));
    EXPECT_EQ(placeOf("F1"), kFree) << "what moved has moved";
}

/// A second window with a connection of its own.
class TwoShiftWindows : public ShiftConfirmation {
protected:
    void openOther(qint16 user) {
        other.ConnMain = std::make_unique<DbConnection>();
        other.ConnMain->Open(warehouse.server.connectionString());
        other.ErrorService = std::make_unique<clsError>();
        other.ProgramFolder = warehouse.context.ProgramFolder;
        other.PathBitmapMagSur = warehouse.context.PathBitmapMagSur;
        other.UserSign = user;
        first = std::move(window);
        window = std::make_unique<frmMagWatchShiftLoc>(other);
        show();
    }
    /// Works on with the other window.
    void change() { std::swap(first, window); }
    void TearDown() override {
        window.reset();
        first.reset();
    }
    /// Chooses a package of FARBA and its target.
    void choose(const char* barCode, const QString& target) {
        pickPackages();
        tickPackage(barCode);
        tickTarget(barCode, target);
    }

    AppContext other;
    std::unique_ptr<frmMagWatchShiftLoc> first;
};

TEST_F(TwoShiftWindows, OfTwoUsersSeeTheirOwnRowsAlone) {
    pickPackages();
    openOther(2);
    pickPackages();
    tickPackage("F2");
    EXPECT_EQ(staged(), 6);
    EXPECT_EQ(staged(QStringLiteral("LineGrd = -1")), 1);
    change();
    EXPECT_EQ(barCodes()->itemCount(), 3);
    acceptItem();
    EXPECT_EQ(proposals()->itemCount(), 0) << "nothing is chosen here";
    cancelShift();
    EXPECT_EQ(staged(), 3);
    change();
    acceptItem();
    EXPECT_GT(proposals()->itemCount(), 0);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(TwoShiftWindows, OfOneUserInTwoCopiesOfTheProgramKeepTheirRowsApart) {
    choose("F1", kFree);
    openOther(1);
    choose("F2", kFree2);
    acceptShift();
    EXPECT_EQ(placeOf("F2"), kFree2);
    EXPECT_EQ(placeOf("F1"), kSource);
    change();
    acceptShift();
    EXPECT_EQ(placeOf("F1"), kFree);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(TwoShiftWindows, APackageWantedByTwoMovesOnceAndTheOtherIsTold) {
    choose("F1", kFree);
    openOther(2);
    choose("F1", kFree2);
    acceptShift();
    EXPECT_EQ(placeOf("F1"), kFree2);
    change();
    acceptShift();
    expectNotice(
        QStringLiteral("Opakowanie „F1” przesunął lub wydał w międzyczasie inny użytkownik. Nie zostało "
                       "przesunięte."));
    EXPECT_EQ(placeOf("F1"), kFree2);
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from Kolv_Mag_BarCode_Sur_History")),
              QStringLiteral("1"));
}

/// The server goes while the window is open.
class ShiftWithoutServer : public ShiftConfirmation {
protected:
    QStringList titles() const {
        QStringList all;
        for (const MsgBoxRecorder::Message& box : messages.messages())
            all.append(box.Title);
        return all;
    }
    static QString ofClass(const char* routine) {
        return QStringLiteral("Error - clsMagWatchShiftLoc [%1]").arg(QLatin1String(routine));
    }
    const QString kList = QStringLiteral("Error - modListBox [FilleListView]");
};

TEST_F(ShiftWithoutServer, SaysSoForEachRowOfAConfirmationThatItInterrupts) {
    pickPackages();
    tickPackage("F1");
    tickPackage("F2");
    tickTarget("F1", kFree);
    tickTarget("F2", kFree2);
    // The first refusal is what the test knows of the middle of a confirmation.
    moveAway("F1");
    messages.onMessage([this](const MsgBoxRecorder::Message&) {
        if (warehouse.server.running())
            warehouse.server.kill();
    });
    acceptShift();
    EXPECT_EQ(titles(), QStringList({QStringLiteral("Komunikat"), ofClass("ShiftLocationItem")}));
    expectChoosingBarCode();
    EXPECT_EQ(ticked(proposals()).size(), 2) << "nothing moved: the lists stay";
    ASSERT_TRUE(warehouse.server.start());
    EXPECT_EQ(placeOf("F2"), kSource) << "whole or not at all";
}

TEST_F(ShiftWithoutServer, EachRoutineReportsAndTheWindowCanBeLeft) {
    pickPackages();
    warehouse.server.kill();
    tickPackage("F1");
    EXPECT_EQ(titles(),
              QStringList({ofClass("DeleteBarCodeShift"), ofClass("ConfirmPropozytionLocation"), kList}));
    messages.clear();
    acceptShift();
    EXPECT_EQ(titles(), QStringList(ofClass("GetCountChoseBarCodeOnShift")));
    messages.clear();
    cancelItem();
    EXPECT_EQ(titles().first(), ofClass("ClearBarCodeOnTemp"));
    EXPECT_TRUE(titles().contains(ofClass("EcexProcedure")));
    messages.clear();
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_EQ(titles(), QStringList(ofClass("GetParamLocalization")));
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral("Brak przypisanego surowca"));
    messages.clear();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Exit")));
    EXPECT_EQ(titles(), QStringList(ofClass("ClearBarCodeOnTemp")));
    EXPECT_FALSE(window->isVisible());
}

}  // namespace
}  // namespace regalon
