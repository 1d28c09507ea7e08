// The window as a whole: its load and unload, its states from the first click to the last, its toolbar, a
// click on a stand, the search and the timer.

#include "map/frmMagLookForItem.h"
#include "platform/DataCombo.h"
#include "platform/RunTimeError.h"
#include "platform/Screen.h"
#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>
#include <QCheckBox>
#include <QCoreApplication>
#include <QTimer>
#include <QTimerEvent>

namespace regalon {
namespace {

const QString kClear = QStringLiteral("Kolv_mag_BarCode_Clear_Temp 1 0 P S");
const QString kConfirm = QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm 1 P S NULL");
const QString kPrepare = QStringLiteral("Kolv_mag_Watch_Prop_Location 1 P S 0 NULL");
const QString kShow = QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL");

QString itemsText(const char* place, int phase) {
    return QStringLiteral("exec kolv_mag_Watch_Item_On_Location %1,N'1',N'P',%2,N'S'")
        .arg(QString::fromLatin1(place))
        .arg(phase);
}

/// One below the other, as a failing test shows them best.
std::string lines(const QStringList& texts) {
    return texts.join(u'\n').toStdString();
}

class FrmMagWatchShiftLoc : public test::ShiftWindow {
protected:
    /// Statements and calls from an index on, those of the plan left out.
    QStringList tracedShift() const {
        QStringList texts;
        for (const QString& text : traced()) {
            if (text.startsWith(QStringLiteral("Kolv_mag_BarCode_Clear")) ||
                text.contains(QStringLiteral("Watch_")) || text.contains(QStringLiteral("Shift_")) ||
                text.startsWith(QStringLiteral(" select Count")))
                texts.append(text);
        }
        return texts;
    }
};

TEST_F(FrmMagWatchShiftLoc, OpensWithThePlanDrawnNothingStagedAndTheFrameHidden) {
    open();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Przesunięcia surowców na magazynie"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 3);
    EXPECT_EQ(canvas()->imglocation().Count() - 1, 6);
    expectBrowsing();
    EXPECT_TRUE(frame("frmWatchData")->isVisible());
    EXPECT_FALSE(frame("frmLookForSur")->isVisible());
    EXPECT_EQ(label("lblObjectClick")->text(), QString());
    EXPECT_EQ(label("lblObjectParam")->text(), QString());
    EXPECT_EQ(address(), QStringLiteral("   "));
    EXPECT_EQ(staged(), 0);
    EXPECT_EQ(items()->itemCount(), 0);
    EXPECT_EQ(proposals()->itemCount(), 0);
    EXPECT_FALSE(control<QTimer>("Timer1")->isActive());
}

TEST_F(FrmMagWatchShiftLoc, LoadsInTheOrderOfItsSteps) {
    open();
    const QStringList all = traced();
    ASSERT_GE(all.size(), 8);
    EXPECT_EQ(all.first(), kClear);
    EXPECT_TRUE(all.at(1).startsWith(QStringLiteral("select ID,Rank,Stand")));
    EXPECT_EQ(lines(tracedShift()), lines({kClear, kClear, itemsText("-1,-1,-1,-1", 0),
                                           itemsText("-1,-1,-1,-1", 1), kConfirm, kPrepare, kShow}));
    EXPECT_TRUE(all.filter(QStringLiteral("Refresh_Percent")).isEmpty());
    const qsizetype drawn = all.lastIndexOf(kClear);
    EXPECT_TRUE(all.at(drawn - 1).startsWith(QStringLiteral(" select LocationName,LocationIcon")))
        << "the second clearing comes behind the icons";
}

TEST_F(FrmMagWatchShiftLoc, AClearingWithNothingToDeleteOpensTheWindowWithoutAMessage) {
    ASSERT_EQ(staged(), 0);
    open();
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchShiftLoc, ClearsAtItsLoadWhatAnEarlierRunOfTheSameKeyLeft) {
    warehouse.context.ConnMain->Execute(
        QStringLiteral("exec kolv_mag_BarCode_Shift_Tmp N'FARBA',1,1,1,1,1,N'P',N'N',N'S',NULL"));
    ASSERT_EQ(staged(), 3);
    open();
    EXPECT_EQ(staged(), 0);
}

TEST_F(FrmMagWatchShiftLoc, ShowsMessagesOfTheFirstRecomputationOverTheDrawnPlan) {
    ASSERT_TRUE(warehouse.run(test::replaceProcedure(
        QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm"),
        QStringLiteral("@UserSign smallint, @Aplication nvarchar(9), @Operation nvarchar(9), @ErrDesc "
                       "nvarchar(50) output as begin set @ErrDesc = N'Zajęte'; return 1; end"))));
    int drawn = 0;
    messages.onMessage([&](const MsgBoxRecorder::Message&) { drawn = canvas()->imglocation().Count() - 1; });
    open();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, QStringLiteral("Zajęte"));
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_EQ(drawn, 6);
    expectBrowsing();
}

TEST_F(FrmMagWatchShiftLoc, ClearsItsStagedRowsWhenItCloses) {
    open();
    pickSource();
    ASSERT_EQ(staged(), 3);
    warehouse.server.clearTrace();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Exit")));
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(traced(), QStringList(kClear));
    EXPECT_EQ(staged(), 0);
}

TEST_F(FrmMagWatchShiftLoc, ShownAgainAfterClosingItLoadsAnewInItsDesign) {
    open();
    pickPackages();
    tickPackage("F1");
    ASSERT_GT(proposals()->itemCount(), 0);
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_LokkFor")));
    const auto returnPicture = [this] {
        return toolBar("tlbAkceptItem")->button(2)->icon().pixmap(16).toImage();
    };
    const QImage cancelPicture = toolBar("tlbAkceptShiftItem")->button(2)->icon().pixmap(16).toImage();
    EXPECT_NE(returnPicture(), cancelPicture);
    window->close();
    addPackage("F4", "FARBA", 10, "1,1,1,2");
    window->show();
    EXPECT_EQ(returnPicture(), cancelPicture);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    expectBrowsing();
    EXPECT_TRUE(frame("frmWatchData")->isVisible());
    EXPECT_FALSE(frame("frmLookForSur")->isVisible());
    EXPECT_EQ(address(), QStringLiteral("   "));
    EXPECT_EQ(label("lblObjectClick")->text(), QString());
    EXPECT_EQ(proposals()->itemCount(), 0);
    pickSource();
    expectChoosingItem();
    EXPECT_EQ(barCodes()->itemCount(), 0);
}

TEST_F(FrmMagWatchShiftLoc, ShownAgainWithoutClosingItKeepsItsState) {
    open();
    pickPackages();
    warehouse.server.clearTrace();
    window->hide();
    window->show();
    expectChoosingBarCode();
    EXPECT_EQ(traced(), QStringList());
}

TEST_F(FrmMagWatchShiftLoc, GoesThroughItsStatesFromTheFirstClickToTheMovedPackage) {
    open();
    expectBrowsing();
    clickLocation(QStringLiteral("1_1_1_1"));
    expectLocationPicked();
    acceptLocation();
    expectChoosingItem();
    acceptItem();
    expectChoosingBarCode();
    acceptItem();
    expectChoosingBarCode();
    tickPackage("F2");
    expectChoosingBarCode();
    tickTarget("F2", QStringLiteral("1 2 1 1"));
    acceptShift();
    expectChoosingBarCode();
    EXPECT_EQ(placeOf("F2"), QStringLiteral("1 2 1 1"));
    cancelItem();
    expectChoosingItem();
    cancelItem();
    expectBrowsing();
    pickSource();
    expectChoosingItem();
    cancelShift();
    expectBrowsing();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatchShiftLoc, CallsTheDatabaseInTheOrderOfAShift) {
    open();
    warehouse.server.clearTrace();
    pickSource();
    acceptItem();
    tickPackage("F1");
    tickTarget("F1", QStringLiteral("1 2 1 2"));
    acceptShift();
    const auto stage = [](const char* item, const char* deleteLine) {
        return QStringLiteral("kolv_mag_BarCode_Shift_Tmp %1 1 1 1 1 1 P %2 S NULL")
            .arg(QLatin1String(item), QLatin1String(deleteLine));
    };
    const QString packages = QStringLiteral("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',1");
    QStringList expected;
    // The location: cleared, its materials read, the greatest one staged.
    expected << kClear << itemsText("1,1,1,1", 0) << itemsText("1,1,1,1", 1) << stage("KLEJ", "Y")
             << stage("FARBA", "N");
    // The packages of it; one of them chosen and its targets proposed.
    expected << packages << QStringLiteral("kolv_mag_Shift_Location_BarCode_Status F1 1 P N S NULL")
             << kConfirm << kPrepare << kShow;
    // The confirmation: counted, moved, cleared, all lists read anew.
    expected << QStringLiteral(
                    " select Count(*) as Count from Kolv_Mag_BarCode_Input_Sur_tym(nolock) where HostName = "
                    "Host_Name() AND YearCode = Year(getdate()) AND SPID = -@@SPID AND LineGrd = -1 AND "
                    "UserSign = 1 AND Operation = N'S'")
             << QStringLiteral("kolv_mag_Shift_Location_BarCode F1 1 2 1 2 1 P S NULL") << kClear
             << itemsText("1,1,1,1", 0) << itemsText("1,1,1,1", 1) << stage("KLEJ", "Y")
             << stage("FARBA", "N") << packages << kConfirm << kPrepare << kShow;
    EXPECT_EQ(lines(tracedShift()), lines(expected));
}

TEST_F(FrmMagWatchShiftLoc, RebuildsThePlanWithoutHavingTheFillsRecomputed) {
    open();
    ASSERT_TRUE(warehouse.addStand(1, 3, 1, QStringLiteral("2"), 9000, 4000, QStringLiteral("R1_S_03.ico")));
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_ReBulid")));
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 4);
    EXPECT_TRUE(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).isEmpty());
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchShiftLoc, AClickOnAStandOpensItsDetailAndKeepsTheAddress) {
    open();
    window->setTopStand(300);
    window->setLeftStand(450);
    clickLocation(QStringLiteral("1_1_1_1"));
    warehouse.server.clearTrace();
    clickStand(QStringLiteral("1_2"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: A Regał: 2"));
    EXPECT_EQ(label("lblObjectParam")->text(), QString());
    EXPECT_EQ(address(), QStringLiteral("1 1 1 1"));
    EXPECT_EQ(traced(), QStringList(QStringLiteral("select count(*) Location,max(Shelf) as Shelf from "
                                                   "kolv_mag_Location where  Stand = 2 AND Rank = 1")));
    ASSERT_EQ(details.size(), 1);
    EXPECT_EQ(details[0].TopStand, 300 + 3000 + 1450);
    EXPECT_EQ(details[0].LeftStand, 450 + 5000 + 50);
    EXPECT_EQ(details[0].Rank, 1);
    EXPECT_EQ(details[0].Stand, 2);
    EXPECT_EQ(details[0].ShelfCount, 1);
    EXPECT_EQ(details[0].LocationCount, 2);
    expectLocationPicked();
}

TEST_F(FrmMagWatchShiftLoc, AClickOnAStandOpensItsDetailWhileTheFrameIsOpenToo) {
    open();
    pickSource();
    clickStand(QStringLiteral("5_1"));
    EXPECT_EQ(details.size(), 1);
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: E Regał: 1"));
    EXPECT_EQ(address(), QStringLiteral("1 1 1 1"));
    expectChoosingItem();
}

class ShiftSearch : public FrmMagWatchShiftLoc {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(FrmMagWatchShiftLoc::SetUp());
        run(
            QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                           "(7,N'Żywice',N'Y')"));
        run(QStringLiteral(
            "insert into OITM (ItemCode,ItemName) values (N'ŻYWICA',N'Żywica'),(N'BRAK',N'B')"));
        run(QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (7,N'ŻYWICA')"));
        run(
            QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,GroupSur) values "
                           "(1,2,1,1,7)"));
        run(QStringLiteral(
            "update kolv_mag_Location set LocationIcon = N'LC_P_30.ico', LocationPercent = 30"));
        open();
    }
    void openSearch() {
        warehouse.server.clearTrace();
        ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_LokkFor")));
    }
    void choose(const char* item) {
        const QString code = QString::fromUtf8(item);
        auto* materials = control<DataCombo>("dtcLookForSur");
        materials->setFocus();
        test::key(materials, Qt::Key_Home);
        for (int step = 0; step < materials->count() && materials->boundText() != code; ++step)
            test::key(materials, Qt::Key_Down);
        ASSERT_EQ(materials->boundText(), code);
    }
    void lookFor(const char* item) {
        choose(item);
        warehouse.server.clearTrace();
        press("tlbLookForSur", "key_LookFor");
    }
    /// Grey stands, by their numbers.
    QStringList greyStands() {
        QStringList grey;
        for (int index = 1; index < canvas()->imgBookStand().Count(); ++index) {
            const PictureItem& stand = canvas()->imgBookStand()[index];
            if (stand.picturePath().contains(QStringLiteral("\\RR")))
                grey.append(stand.tag().section(u'_', 1, 2));
        }
        return grey;
    }
};

TEST_F(ShiftSearch, OpensOverAPlainPlanWithTheMaterialsOfTheWarehouse) {
    openSearch();
    EXPECT_TRUE(frame("frmLookForSur")->isVisible());
    EXPECT_FALSE(frame("frmWatchData")->isVisible());
    const QStringList texts = traced();
    ASSERT_EQ(texts.size(), 3);
    EXPECT_TRUE(texts[0].startsWith(QStringLiteral(" select LocationName,LocationIcon")));
    EXPECT_EQ(texts[1],
              QStringLiteral("select Rank,Stand,StandIcon from kolv_mag_Stand order by Rank,Stand"));
    EXPECT_EQ(texts[2], QStringLiteral("exec kolv_mag_Sur_On_Mag N'P'"));
}

TEST_F(ShiftSearch, AMaterialOfALocationIsShownByIt) {
    openSearch();
    lookFor("KLEJ");
    EXPECT_EQ(greyStands(), QStringList({QStringLiteral("1_1"), QStringLiteral("1_2")}));
    EXPECT_EQ(label("lblSurLookFor")->text(), QStringLiteral("KLEJ - Klej"));
    EXPECT_EQ(
        traced().first(),
        QStringLiteral(" select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = N'KLEJ'"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ShiftSearch, AMaterialOfAGroupAloneIsShownByItsGroup) {
    openSearch();
    lookFor("ŻYWICA");
    EXPECT_EQ(greyStands(), QStringList({QStringLiteral("1_1"), QStringLiteral("5_1")}));
    EXPECT_EQ(label("lblSurLookForGroup")->text(), QStringLiteral("Syrowiec przpisany grupie"));
}

TEST_F(ShiftSearch, AMaterialOfNothingKeepsTheNoteAboutGroups) {
    openSearch();
    lookFor("ŻYWICA");
    test::key(control<QCheckBox>("chkAllItem"), Qt::Key_Space);
    lookFor("BRAK");
    EXPECT_EQ(label("lblSurLookFor")->text(), QStringLiteral("Surowiec nie wystepuje na magazynie"));
    EXPECT_EQ(label("lblSurLookForGroup")->text(), QStringLiteral("Syrowiec przpisany grupie"));
}

TEST_F(ShiftSearch, ItsCancelShowsThePanelOfTheAddressBeforeItRebuildsThePlan) {
    openSearch();
    lookFor("KLEJ");
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_SaveLocationIDTab")}));
    bool shown = false;
    bool panel = true;
    messages.onMessage([&](const MsgBoxRecorder::Message&) {
        shown = frame("frmWatchData")->isVisible();
        panel = frame("frmLookForSur")->isVisible();
    });
    press("tlbLookForSur", "key_Cancel");
    EXPECT_GT(messages.count(), 0) << "a message of the rebuild, to look at the window meanwhile";
    EXPECT_TRUE(shown);
    EXPECT_FALSE(panel);
    EXPECT_EQ(greyStands(), QStringList());
    EXPECT_TRUE(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).isEmpty());
}

TEST_F(ShiftSearch, TheDialogWritesTheMaterialIntoTheWindow) {
    openSearch();
    test::whenModal([](QWidget* modal) {
        auto* list = modal->findChild<ListView*>(QStringLiteral("lstSurOnMag"));
        test::type(modal->findChild<QLineEdit*>(QStringLiteral("txtItemCode")), QStringLiteral("KL"));
        test::clickCell(list, list->model()->index(0, 0));
        test::clickToolButton(modal->findChild<ToolBar*>(QStringLiteral("tlbLookFor")),
                              QStringLiteral("key_Akcept"));
    });
    test::click(control<QWidget>("cmdLookFor"));
    EXPECT_EQ(control<DataCombo>("dtcLookForSur")->boundText(), QStringLiteral("KLEJ"));
}

TEST_F(FrmMagWatchShiftLoc, NothingStartsItsTimer) {
    open();
    pickPackages();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_ReBulid")));
    cancelShift();
    EXPECT_FALSE(control<QTimer>("Timer1")->isActive());
}

TEST_F(FrmMagWatchShiftLoc, ATickOfItsTimerWouldRebuildThePlan) {
    open();
    auto* timer = control<QTimer>("Timer1");
    timer->start();
    ASSERT_TRUE(warehouse.addStand(1, 3, 1, QStringLiteral("2"), 9000, 4000));
    QTimerEvent tick(timer->timerId());
    QCoreApplication::sendEvent(timer, &tick);
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 4) << "one second is more than the limit of none";
    window->close();
    EXPECT_FALSE(timer->isActive());
}

}  // namespace
}  // namespace regalon
