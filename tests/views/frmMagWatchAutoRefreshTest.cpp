// The refresh of the warehouse view by its timer. A tick is what counts, so the tests fire the timer's tick
// themselves instead of waiting for its seconds.

#include "platform/DataCombo.h"
#include "platform/RunTimeError.h"
#include "support/Events.h"
#include "views/WatchWindow.h"
#include "views/frmMagWatchDetal.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QTimerEvent>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::WatchWindow;

const QString kOn = QStringLiteral("Auto odświeżanie-ON");
const QString kOff = QStringLiteral("Auto odświeżanie-OFF");

class FrmMagWatchAutoRefresh : public WatchWindow {
protected:
    FrmMagWatchAutoRefresh() : WatchWindow(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(WatchWindow::SetUp());
        ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1")));
        open();
        warehouse.server.clearTrace();
    }

    QTimer* timer() const { return control<QTimer>("Timer1"); }
    QComboBox* time() const { return control<QComboBox>("cmbTime"); }
    QCheckBox* on() const { return control<QCheckBox>("chkAutoRebulidOn"); }
    QGroupBox* panel() const { return frame("frmAutoRebulidCOnfig"); }
    QString caption() const { return toolBar("tlbCmd")->button(4)->text(); }
    QString secondsLeft() const { return toolBar("tlbStatusRefresh")->button(1)->text(); }
    int rebuilds() const {
        return static_cast<int>(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).size());
    }

    void openPanel() {
        ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_AutoRebulid")));
        ASSERT_TRUE(panel()->isVisible());
    }
    void press(const char* name) {
        ASSERT_TRUE(test::clickToolButton(toolBar("tlbSaveAutoRebulidParam"), QString::fromLatin1(name)));
    }
    void typeTime(const char* minutes) {
        time()->setFocus();
        test::key(time(), Qt::Key_A, Qt::ControlModifier);
        test::type(time(), QString::fromUtf8(minutes));
    }
    void check(bool checked) {
        if (on()->isChecked() != checked)
            test::key(on(), Qt::Key_Space);
    }
    void save(const char* minutes, bool checked) {
        openPanel();
        typeTime(minutes);
        check(checked);
        press("key_Save");
    }
    /// One tick of the running timer.
    void tick() {
        ASSERT_TRUE(timer()->isActive());
        QTimerEvent event(timer()->timerId());
        QCoreApplication::sendEvent(timer(), &event);
    }
    void tick(int times) {
        for (int i = 0; i < times; ++i)
            ASSERT_NO_FATAL_FAILURE(tick());
    }
};

TEST_F(FrmMagWatchAutoRefresh, ThePanelHasItsCaptionsAndPeriods) {
    EXPECT_EQ(caption(), QStringLiteral("Auto odświeżanie "));
    openPanel();
    EXPECT_EQ(panel()->title(), QStringLiteral("Konfiguracja odświeżania magazynu"));
    EXPECT_EQ(on()->text(), QStringLiteral("Włączone automatyczne odświeżanie"));
    EXPECT_EQ(label("lblTime")->text(), QStringLiteral("Czas odświeżania:"));
    EXPECT_EQ(label("lblTimeJed")->text(), QStringLiteral("[minuta]"));
    QStringList periods;
    for (int row = 0; row < time()->count(); ++row)
        periods.append(time()->itemText(row));
    EXPECT_EQ(periods.join(u' '), QStringLiteral("0 0,5 1 2 3 4 5"));
    EXPECT_TRUE(time()->isEditable());
    EXPECT_EQ(time()->currentText(), QStringLiteral("0"));
    const ToolBar* bar = toolBar("tlbSaveAutoRebulidParam");
    ASSERT_EQ(bar->buttonCount(), 2);
    EXPECT_EQ(bar->button(QStringLiteral("key_Save"))->text(), QStringLiteral("&Zapisz"));
    EXPECT_EQ(bar->button(QStringLiteral("key_Cancel"))->text(), QStringLiteral("&Anuluj"));
}

TEST_F(FrmMagWatchAutoRefresh, APeriodWithTheBoxCheckedTurnsTheTimerOn) {
    save("1", true);
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(timer()->interval(), 1000);
    EXPECT_EQ(caption(), kOn);
    EXPECT_TRUE(toolBar("tlbStatusRefresh")->isVisible());
    EXPECT_TRUE(label("Label9")->isVisible());
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(FrmMagWatchAutoRefresh, APeriodWithoutTheCheckBoxSavesAsOff) {
    save("1", false);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(caption(), kOff);
    EXPECT_FALSE(toolBar("tlbStatusRefresh")->isVisible());
    EXPECT_FALSE(panel()->isVisible());
}

TEST_F(FrmMagWatchAutoRefresh, Period0WithTheBoxCheckedSavesAsOff) {
    save("1", true);
    save("0", true);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(caption(), kOff);
    EXPECT_FALSE(toolBar("tlbStatusRefresh")->isVisible());
    save("1", true);
    save("-2", true);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(caption(), kOff);
}

TEST_F(FrmMagWatchAutoRefresh, ATextThatIsNoNumberHidesThePanelAndKeepsTheFormerState) {
    save("1", true);
    tick(3);
    save("minuta", false);
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_TRUE(timer()->isActive());
    EXPECT_EQ(caption(), kOn);
    EXPECT_EQ(messages.count(), 0);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("57"));
    save("", true);
    EXPECT_TRUE(timer()->isActive());
    // The decimal sign is that of the region.
    save("0.5", true);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("56"));
}

TEST_F(FrmMagWatchAutoRefresh, ATextThatIsNoNumberAtStartLeavesTheButtonAsDesigned) {
    save("x", true);
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(caption(), QStringLiteral("Auto odświeżanie "));
}

TEST_F(FrmMagWatchAutoRefresh, OneMinuteCountsFrom60To0AndRebuildsWithTheTickThatShows0) {
    save("1", true);
    for (int left = 60; left > 0; --left) {
        tick();
        EXPECT_EQ(secondsLeft(), QString::number(left));
    }
    EXPECT_EQ(rebuilds(), 0);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("0"));
    EXPECT_EQ(rebuilds(), 1);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("60"));
    tick(60);
    EXPECT_EQ(rebuilds(), 2);
}

TEST_F(FrmMagWatchAutoRefresh, HalfAMinuteCountsFrom30To0AndRebuildsAfter31Ticks) {
    openPanel();
    check(true);
    time()->setFocus();
    test::key(time(), Qt::Key_Down);
    ASSERT_EQ(time()->currentText(), QStringLiteral("0,5"));
    press("key_Save");
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("30"));
    tick(29);
    EXPECT_EQ(secondsLeft(), QStringLiteral("1"));
    EXPECT_EQ(rebuilds(), 0);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("0"));
    EXPECT_EQ(rebuilds(), 1);
}

TEST_F(FrmMagWatchAutoRefresh, APeriodOfAFractionShowsItsFraction) {
    save("0,02", true);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("1,2"));
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("0,2"));
    EXPECT_EQ(rebuilds(), 1);
}

TEST_F(FrmMagWatchAutoRefresh, ATickRedrawsThePlanWithTheDatabasesIcons) {
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("2"), 6000));
    save("0,01", true);
    tick();
    EXPECT_EQ(canvas()->imgBookStand().Count(), 3);
    EXPECT_EQ(canvas()->imglocation().Count(), 4);
    EXPECT_EQ(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")),
              QList<QStringList>({{QStringLiteral("N")}}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchAutoRefresh, AShorterPeriodSavedAfterALongWaitRebuildsWithTheNextTick) {
    save("1", true);
    tick(40);
    save("0,5", true);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("-10"));
    EXPECT_EQ(rebuilds(), 1);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("30"));
}

TEST_F(FrmMagWatchAutoRefresh, SavingLeavesTheSecondOfARunningTimerAsItIs) {
    save("1", true);
    // A minute instead of the second, so that none ends while the test looks.
    constexpr int interval = 60000;
    timer()->setTimerType(Qt::PreciseTimer);
    timer()->setInterval(interval);
    ASSERT_TRUE(test::waitFor([this] { return timer()->remainingTime() < interval - 10; }));
    const int left = timer()->remainingTime();
    save("2", true);
    EXPECT_LE(timer()->remainingTime(), left);
    save("2", false);
    save("2", true);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(FrmMagWatchAutoRefresh, SwitchedOffTheCounterKeepsItsValue) {
    save("1", true);
    tick(10);
    save("1", false);
    save("1", true);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("50"));
}

TEST_F(FrmMagWatchAutoRefresh, CancelHidesThePanelAndKeepsWhatWasSet) {
    openPanel();
    typeTime("3");
    check(true);
    press("key_Cancel");
    EXPECT_FALSE(panel()->isVisible());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(caption(), QStringLiteral("Auto odświeżanie "));
    openPanel();
    EXPECT_EQ(time()->currentText(), QStringLiteral("3"));
    EXPECT_TRUE(on()->isChecked());
}

TEST_F(FrmMagWatchAutoRefresh, TheRunningTimerTicksByItself) {
    save("0,01", true);
    timer()->setInterval(10);
    EXPECT_TRUE(test::waitFor([this] { return rebuilds() >= 2; }));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchAutoRefresh, WithTheDatabaseAwayEachTickShowsItsMessageAndTheTimerGoesOn) {
    save("0,01", true);
    tick();
    warehouse.server.kill();
    for (int round = 0; round < 3; ++round) {
        messages.clear();
        tick();
        ASSERT_EQ(messages.count(), 2);
        EXPECT_EQ(messages.messages().at(0).Title,
                  QStringLiteral("Error - clsMagWatch [RefreshQuantityOnLocationIcon]"));
        EXPECT_EQ(messages.messages().at(1).Title, QStringLiteral("frmMagWatch - WathStore"));
        EXPECT_TRUE(timer()->isActive());
    }
}

TEST_F(FrmMagWatchAutoRefresh, NothingPilesUpWhileAMessageOfATickIsOpen) {
    save("0,01", true);
    warehouse.server.kill();
    int depth = 0;
    int deepest = 0;
    messages.onMessage([&](const MsgBoxRecorder::Message&) {
        deepest = std::max(deepest, ++depth);
        if (depth < 5)
            tick(3);
        --depth;
    });
    tick();
    EXPECT_EQ(deepest, 1);
    EXPECT_EQ(messages.count(), 2);
    tick();
    EXPECT_EQ(messages.count(), 4) << "the timer goes on afterwards";
}

TEST_F(FrmMagWatchAutoRefresh, TicksOverAnyOpenMessageAreLost) {
    save("1", true);
    tick();
    messages.onMessage([&](const MsgBoxRecorder::Message&) { tick(100); });
    MsgBox(QStringLiteral("pytanie"));
    EXPECT_EQ(rebuilds(), 0);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("59"));
}

TEST_F(FrmMagWatchAutoRefresh, AFailingRefreshOfTheFillsIsReportedAndThePlanIsDrawnAllTheSame) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure Kolv_mag_Refresh_Percent_Location")}));
    save("0,01", true);
    warehouse.server.clearTrace();
    tick();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [RefreshQuantityOnLocationIcon]"));
    EXPECT_EQ(canvas()->imglocation().Count(), 2);
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab")).size(), 1);
    EXPECT_TRUE(timer()->isActive());
}

TEST_F(FrmMagWatchAutoRefresh, ARecomputationThatFailsInTheDatabaseIsReportedEachTime) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Location set LocationIcon = NULL"),
         QStringLiteral("alter table kolv_mag_Location alter column LocationIcon nvarchar(3) NULL")}));
    save("0,01", true);
    for (int round = 0; round < 2; ++round) {
        messages.clear();
        tick();
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title,
                  QStringLiteral("Error - clsMagWatch [RefreshQuantityOnLocationIcon]"));
        EXPECT_EQ(canvas()->imglocation().Count(), 2) << "the plan is drawn with the fills that it had";
    }
}

TEST_F(FrmMagWatchAutoRefresh, APeriodBeyondAllNumbersIsAnOverflowAndThePanelStays) {
    save("1", true);
    openPanel();
    typeTime("1E308");
    press("key_Save");
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - tlbSaveAutoRebulidParam_ButtonClick"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::Overflow));
    EXPECT_TRUE(panel()->isVisible());
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("60"));
}

TEST_F(FrmMagWatchAutoRefresh, TheSettingsLiveAsLongAsTheWindow) {
    save("1", true);
    tick(10);
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Exit")));
    EXPECT_FALSE(timer()->isActive()) << "a closed window does not refresh";
    test::showAndWait(window.get());
    EXPECT_FALSE(timer()->isActive());
    EXPECT_EQ(caption(), QStringLiteral("Auto odświeżanie "));
    EXPECT_FALSE(toolBar("tlbStatusRefresh")->isVisible());
    openPanel();
    EXPECT_EQ(time()->count(), 7);
    EXPECT_EQ(time()->currentText(), QStringLiteral("0"));
    EXPECT_FALSE(on()->isChecked());
    press("key_Cancel");
    save("1", true);
    tick();
    EXPECT_EQ(secondsLeft(), QStringLiteral("60"));
}

/// The timer runs and a modal window of the view is open over the plan.
class FrmMagWatchAutoRefreshUnderAWindow : public FrmMagWatchAutoRefresh {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(FrmMagWatchAutoRefresh::SetUp());
        ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("2"), 6000));
        window = std::make_unique<frmMagWatch>(warehouse.context, standDetail(warehouse.context));
        window->resize(window->sizeHint());
        test::showAndWait(window.get());
        save("0,01", true);
        warehouse.server.clearTrace();
    }
    void deleteStand() {
        ASSERT_TRUE(
            warehouse.run({QStringLiteral("delete from kolv_mag_Stand where Rank = 1 and Stand = 2")}));
    }
    /// Calls `act` with the detail that a click on the second stand opens, and closes it by a corner.
    void withDetail(const std::function<void(QWidget* detail)>& act) {
        bool acted = false;
        test::whenModal([&](QWidget* modal) {
            acted = modal->objectName() == u"frmMagWatchDetal";
            act(modal);
            test::click(modal->findChild<QPushButton*>(QStringLiteral("cmdClose_3")));
        });
        clickStand(QStringLiteral("1_2"));
        EXPECT_TRUE(acted);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
};

TEST_F(FrmMagWatchAutoRefreshUnderAWindow, TheStandDetailStaysAndThePlanIsDrawnBehindIt) {
    withDetail([this](const QWidget* detail) {
        tick();
        EXPECT_TRUE(detail->isVisible());
    });
    EXPECT_EQ(rebuilds(), 1);
    EXPECT_EQ(canvas()->imgBookStand().Count(), 3);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchAutoRefreshUnderAWindow, TheClickedStandMayBeGoneWhenItsDetailCloses) {
    withDetail([this](const QWidget* detail) {
        deleteStand();
        tick();
        EXPECT_TRUE(detail->isVisible());
        EXPECT_EQ(canvas()->imgBookStand().Count(), 2);
        tick(2);
    });
    EXPECT_EQ(rebuilds(), 3);
    EXPECT_EQ(messages.count(), 0);
    // The plan takes clicks as before.
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_EQ(address(), QStringLiteral("1 1 1 1"));
}

TEST_F(FrmMagWatchAutoRefreshUnderAWindow, TheItemSearchStaysAndGivesItsResult) {
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'FARBA',N'Farba')"),
                       // The search shows each stand by its own picture.
                       QStringLiteral("update kolv_mag_Stand set StandIcon = N'R1_S_01.ico'")}));
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_LokkFor")));
    test::key(control<QCheckBox>("chkAllItem"), Qt::Key_Space);
    bool acted = false;
    test::whenModal([&](QWidget* modal) {
        acted = modal->objectName() == u"frmMagLookForItem";
        deleteStand();
        tick(2);
        EXPECT_TRUE(modal->isVisible());
        auto* rows = modal->findChild<ListView*>(QStringLiteral("lstSurOnMag"));
        test::clickCell(rows, rows->model()->index(0, 0));
        test::key(rows, Qt::Key_Return);
        if (modal->isVisible())
            modal->close();
    });
    test::click(control<QPushButton>("cmdLookFor"));
    EXPECT_TRUE(acted);
    EXPECT_EQ(control<DataCombo>("dtcLookForSur")->boundText(), QStringLiteral("FARBA"));
    EXPECT_EQ(rebuilds(), 2);
    EXPECT_EQ(canvas()->imgBookStand().Count(), 2);
    EXPECT_EQ(messages.count(), 0);
}

}  // namespace
}  // namespace regalon
