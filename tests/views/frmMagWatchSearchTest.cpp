// The search for a material in the warehouse view, worked with mouse and keys.

#include "map/frmMagLookForItem.h"
#include "platform/DataCombo.h"
#include "platform/RunTimeError.h"
#include "platform/Screen.h"
#include "support/Events.h"
#include "views/WatchWindow.h"

#include <QAction>
#include <QCheckBox>
#include <QFile>
#include <QPushButton>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::WatchWindow;

const QString kNowhere = QStringLiteral("Surowiec nie wystepuje na magazynie");

/// Three stands of one shelf: FARBA lies on the first stand, KLEJ on the second, nothing on the third. ŻYWICA
/// is only a member of a group, BRAK stands in the master file alone.
class FrmMagWatchSearch : public WatchWindow {
protected:
    FrmMagWatchSearch() : WatchWindow(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(WatchWindow::SetUp());
        for (int stand = 1; stand <= 3; ++stand)
            ASSERT_TRUE(warehouse.addStand(1, stand, 1, QStringLiteral("1"), 2000 * stand, 4000,
                                           QStringLiteral("R1_S_0%1.ico").arg(stand)));
        run(
            QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'FARBA',N'Farba żółta'),"
                           "(N'KLEJ',N'Klej'),(N'ŻYWICA',N'Żywica'),(N'BRAK',N'Brak')"));
        run(QStringLiteral(
            "update kolv_mag_Location set LocationIcon = N'LC_P_30.ico', LocationPercent = 30"));
        run(QStringLiteral(
            "insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values (7,N'Żywice',N'Y')"));
        run(QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (7,N'ŻYWICA')"));
        run(QStringLiteral(
            "insert into kolv_mag_Location_Item "
            "(Rank,Stand,Shelf,Location,ItemCode,GroupSur,StatLocation_cmb) "
            "values (1,1,1,1,N'FARBA',0,N'0'),(1,2,1,1,N'KLEJ',0,N'0'),(1,3,1,1,NULL,7,N'0')"));
        open();
    }

    void run(const QString& statement) {
        ASSERT_TRUE(warehouse.run({statement})) << qPrintable(warehouse.why());
    }
    void press(const char* name) {
        ASSERT_TRUE(test::clickToolButton(window.get(), QString::fromLatin1(name))) << name;
    }
    void pressCancel() {
        ASSERT_TRUE(test::clickToolButton(toolBar("tlbLookForSur"), QStringLiteral("key_Cancel")));
    }
    void openSearch() {
        press("key_LokkFor");
        warehouse.server.clearTrace();
    }
    DataCombo* materials() const { return control<DataCombo>("dtcLookForSur"); }
    QCheckBox* allItems() const { return control<QCheckBox>("chkAllItem"); }
    /// Takes the material by the keyboard.
    void choose(const char* item) {
        const QString code = QString::fromUtf8(item);
        materials()->setFocus();
        test::key(materials(), Qt::Key_Home);
        for (int step = 0; step < materials()->count() && materials()->boundText() != code; ++step)
            test::key(materials(), Qt::Key_Down);
        ASSERT_EQ(materials()->boundText(), code);
    }
    void lookFor(const char* item) {
        choose(item);
        warehouse.server.clearTrace();
        press("key_LookFor");
    }
    QStringList codes() const {
        QStringList all;
        for (const auto& row : materials()->rowSource().Rows)
            all.append(row.first().toString());
        return all;
    }
    QString found() const { return label("lblSurLookFor")->text(); }
    QString groupNote() const { return label("lblSurLookForGroup")->text(); }

    static QString pictures(ControlArray<PictureItem>& array) {
        QStringList names;
        for (int index = 1; index < array.Count(); ++index)
            names.append(array[index].picturePath().section(QLatin1Char('\\'), -1).section(u'.', 0, 0));
        return names.join(u' ');
    }
    QString locations() { return pictures(canvas()->imglocation()); }
    QString stands() { return pictures(canvas()->imgBookStand()); }
    void expectPlain() {
        EXPECT_EQ(locations(), QStringLiteral("LC_P_30 LC_P_30 LC_P_30"));
        EXPECT_EQ(stands(), QStringLiteral("R1_S_01 R1_S_02 R1_S_03"));
    }
    void expectFarba() {
        EXPECT_EQ(locations(), QStringLiteral("LC_P_30 LC_G_30 LC_G_30"));
        EXPECT_EQ(stands(), QStringLiteral("R1_S_01 RR1_S_02 RR1_S_03"));
    }

    /// Opens the item search dialog by its button and works it.
    void withDialog(const std::function<void(frmMagLookForItem* dialog)>& act) {
        bool acted = false;
        test::whenModal([&](QWidget* modal) {
            auto* dialog = qobject_cast<frmMagLookForItem*>(modal);
            acted = dialog != nullptr;
            if (dialog != nullptr)
                act(dialog);
            if (modal->isVisible())
                modal->close();
        });
        test::click(control<QPushButton>("cmdLookFor"));
        EXPECT_TRUE(acted);
    }
};

TEST_F(FrmMagWatchSearch, ThePanelHasItsCaptionsAndButtons) {
    openSearch();
    EXPECT_EQ(frame("frmLookForSur")->title(), QStringLiteral("Wyszukiwanie surowca"));
    EXPECT_EQ(label("Label3")->text(), QStringLiteral("Surowiec:"));
    EXPECT_EQ(label("lblLookForSur")->text(), QStringLiteral("Surowiec szukany:"));
    EXPECT_EQ(allItems()->text(), QStringLiteral("Wszystkie surowce z kartoteki"));
    EXPECT_FALSE(allItems()->isChecked());
    const ToolBar* bar = toolBar("tlbLookForSur");
    ASSERT_EQ(bar->buttonCount(), 2);
    EXPECT_EQ(bar->button(QStringLiteral("key_LookFor"))->text(), QStringLiteral("&Szukaj surowiec"));
    EXPECT_EQ(bar->button(QStringLiteral("key_Cancel"))->text(), QStringLiteral("&Anuluj szukanie"));
}

TEST_F(FrmMagWatchSearch, OpensOverAPlainPlanWithTheMaterialsOfTheWarehouse) {
    warehouse.server.clearTrace();
    press("key_LokkFor");
    EXPECT_TRUE(frame("frmLookForSur")->isVisible());
    EXPECT_FALSE(frame("frmWatchData")->isVisible());
    EXPECT_EQ(codes(), QStringList({QStringLiteral("0"), QStringLiteral("FARBA"), QStringLiteral("KLEJ"),
                                    QStringLiteral("ŻYWICA")}));
    EXPECT_EQ(materials()->boundText(), QStringLiteral("0"));
    EXPECT_EQ(materials()->text(), QStringLiteral("wybierz"));
    const QStringList batches = warehouse.batches();
    ASSERT_EQ(batches.size(), 3);
    EXPECT_TRUE(batches[0].startsWith(QStringLiteral(" select LocationName,LocationIcon")));
    EXPECT_EQ(batches[1],
              QStringLiteral("select Rank,Stand,StandIcon from kolv_mag_Stand order by Rank,Stand"));
    EXPECT_EQ(batches[2], QStringLiteral("exec kolv_mag_Sur_On_Mag N'P'"));
}

TEST_F(FrmMagWatchSearch, OpenedAgainItClearsTheResultAndTheGreyButKeepsNoteAndCheckBox) {
    openSearch();
    label("lblSurLookForGroup")->setText(QStringLiteral("uwaga"));
    lookFor("FARBA");
    label("lblSurLookForGroup")->setText(QStringLiteral("uwaga"));
    test::key(allItems(), Qt::Key_Space);
    press("key_LokkFor");
    EXPECT_EQ(found(), QString());
    EXPECT_EQ(groupNote(), QStringLiteral("uwaga"));
    EXPECT_TRUE(allItems()->isChecked());
    EXPECT_EQ(codes().size(), 4) << "the warehouse's materials, whatever the check box shows";
    expectPlain();
}

TEST_F(FrmMagWatchSearch, ShowsWhereTheMaterialLies) {
    openSearch();
    lookFor("FARBA");
    expectFarba();
    EXPECT_EQ(found(), QStringLiteral("FARBA - Farba żółta"));
    EXPECT_EQ(groupNote(), QString());
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(FrmMagWatchSearch, OtherWindowsCanAskForThePlacesOfAMaterial) {
    window->ChangeIconOnLocation(QStringLiteral("FARBA"), 0);
    expectFarba();
    openSearch();
    expectPlain();
    window->ChangeIconOnLocation(QStringLiteral("ŻYWICA"), 1);
    EXPECT_EQ(locations(), QStringLiteral("LC_G_30 LC_G_30 LC_P_30"));
    EXPECT_EQ(messages.count(), 0);

    frmMagWatch(warehouse.context).ChangeIconOnLocation(QStringLiteral("FARBA"), 0);
    ASSERT_EQ(messages.count(), 1) << "a window that was never open has no plan";
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - ChangeIconOnLocation"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::ObjectNotSet));
}

TEST_F(FrmMagWatchSearch, SendsItsStatementsInOrderAndOneForThePass) {
    openSearch();
    lookFor("FARBA");
    const QStringList batches = warehouse.server.trace();
    ASSERT_EQ(batches.size(), 4);
    EXPECT_EQ(batches[0],
              QStringLiteral(" select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = "
                             "N'FARBA'  UNION ALL  select Top 1 1 from kolv_mag_Group_Item  where "
                             "ItemCode = N'FARBA'"));
    EXPECT_TRUE(batches[1].startsWith(QStringLiteral(" select LocationName,LocationIcon")));
    EXPECT_TRUE(batches[2].startsWith(QStringLiteral("select Rank,Stand,StandIcon")));
    EXPECT_TRUE(batches[3].startsWith(QStringLiteral(" select A.LocationName,A.LocationPercent,B.ItemCode")));
}

TEST_F(FrmMagWatchSearch, ASearchAfterASearchLeavesNoGreyOfTheEarlierOne) {
    openSearch();
    lookFor("FARBA");
    lookFor("KLEJ");
    EXPECT_EQ(locations(), QStringLiteral("LC_G_30 LC_P_30 LC_G_30"));
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 R1_S_02 RR1_S_03"));
    EXPECT_EQ(found(), QStringLiteral("KLEJ - Klej"));
}

TEST_F(FrmMagWatchSearch, ALocationThatHoldsTheMaterialTakesTheIconThatItHasNow) {
    openSearch();
    run(QStringLiteral("update kolv_mag_Location set LocationIcon = N'LC_P_80.ico' where Stand = 1"));
    lookFor("FARBA");
    EXPECT_EQ(locations(), QStringLiteral("LC_P_80 LC_G_30 LC_G_30"));
}

TEST_F(FrmMagWatchSearch, AMaterialOfAGroupAloneGreysTheWholePlanWithoutANote) {
    openSearch();
    lookFor("ŻYWICA");
    EXPECT_EQ(locations(), QStringLiteral("LC_G_30 LC_G_30 LC_G_30"));
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 RR1_S_02 RR1_S_03"));
    EXPECT_EQ(found(), QStringLiteral("ŻYWICA - Żywica"));
    EXPECT_EQ(groupNote(), QString());
}

TEST_F(FrmMagWatchSearch, AMaterialThatComesIntoAGroupBetweenTheTestsIsShownByItsGroup) {
    openSearch();
    test::key(allItems(), Qt::Key_Space);
    // The first test fails, as it does while the row of the group is not there yet, and the second finds it.
    run(QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (7,N'BRAK')"));
    run(QStringLiteral("delete from kolv_mag_Group_Item where ItemCode = N'ŻYWICA'"));
    run(QStringLiteral("select * into zabrane from kolv_mag_Location_Item"));
    run(QStringLiteral("drop table kolv_mag_Location_Item"));
    choose("BRAK");
    messages.onMessage([this](const MsgBoxRecorder::Message& message) {
        if (message.Title != u"Error - clsMagWatch [GetLocationPercent]")
            return;
        EXPECT_TRUE(warehouse.run({QStringLiteral("select * into kolv_mag_Location_Item from zabrane")}));
    });
    press("key_LookFor");
    EXPECT_EQ(groupNote(), QStringLiteral("Syrowiec przpisany grupie"));
    EXPECT_EQ(found(), QStringLiteral("BRAK - Brak"));
    EXPECT_EQ(locations(), QStringLiteral("LC_G_30 LC_G_30 LC_P_30"));
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 RR1_S_02 R1_S_03"));
    EXPECT_EQ(messages.count(), 1) << qPrintable(messages.last().Title);
}

TEST_F(FrmMagWatchSearch, AMaterialOfNoLocationAndNoGroupChangesNothingOnThePlan) {
    openSearch();
    lookFor("FARBA");
    test::key(allItems(), Qt::Key_Space);
    label("lblSurLookForGroup")->setText(QStringLiteral("uwaga"));
    lookFor("BRAK");
    EXPECT_EQ(found(), kNowhere);
    EXPECT_EQ(groupNote(), QStringLiteral("uwaga"));
    expectFarba();
    EXPECT_EQ(warehouse.server.trace().size(), 2) << "the two tests and nothing else";
    EXPECT_EQ(warehouse.server.trace().last(),
              QStringLiteral(" select Top 1 1 from kolv_mag_Group_Item  where ItemCode = N'BRAK'"));
}

TEST_F(FrmMagWatchSearch, WithTheRow0NothingIsChosenAndNothingIsAsked) {
    openSearch();
    lookFor("FARBA");
    label("lblSurLookForGroup")->setText(QStringLiteral("uwaga"));
    lookFor("0");
    EXPECT_EQ(found(), QStringLiteral("Brak wskazania surowca"));
    EXPECT_EQ(groupNote(), QString());
    EXPECT_EQ(warehouse.server.trace(), QStringList());
    expectFarba();
}

TEST_F(FrmMagWatchSearch, AnEmptyCodeIsLookedForAsNullAndFoundNowhere) {
    openSearch();
    withDialog([](frmMagLookForItem* dialog) { dialog->close(); });
    EXPECT_EQ(materials()->boundText(), QString());
    warehouse.server.clearTrace();
    press("key_LookFor");
    EXPECT_EQ(found(), kNowhere);
    ASSERT_EQ(warehouse.server.trace().size(), 2);
    EXPECT_EQ(
        warehouse.server.trace().first(),
        QStringLiteral(" select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = NULL  UNION "
                       "ALL  select Top 1 1 from kolv_mag_Group_Item  where ItemCode = NULL"));
    expectPlain();
}

TEST_F(FrmMagWatchSearch, TheCheckBoxChangesTheListToTheMasterFileAndBack) {
    openSearch();
    test::key(allItems(), Qt::Key_Space);
    EXPECT_TRUE(codes().contains(QStringLiteral("BRAK")));
    EXPECT_EQ(materials()->boundText(), QStringLiteral("0"));
    test::key(allItems(), Qt::Key_Space);
    EXPECT_FALSE(codes().contains(QStringLiteral("BRAK")));
    EXPECT_EQ(warehouse.batches(), QStringList({QStringLiteral("select * from Kolv_vv_mag_Sur_On_Add"),
                                                QStringLiteral("exec kolv_mag_Sur_On_Mag N'P'")}));
}

TEST_F(FrmMagWatchSearch, AListWithoutRowsLeavesTheComboEmpty) {
    run(QStringLiteral("drop procedure kolv_mag_Sur_On_Mag"));
    run(QStringLiteral(
        "create procedure kolv_mag_Sur_On_Mag @Aplication nvarchar(1) as select ItemCode,ItemName "
        "from OITM where 1 = 0"));
    press("key_LokkFor");
    EXPECT_EQ(materials()->count(), 0);
    EXPECT_EQ(materials()->boundText(), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchSearch, TheDialogSearchesTheWarehouseOrTheMasterFileByTheCheckBox) {
    openSearch();
    withDialog([](frmMagLookForItem*) {});
    EXPECT_FALSE(warehouse.batches().filter(QStringLiteral("exec Kolv_mag_LookFor_Item_2 '")).isEmpty());
    test::key(allItems(), Qt::Key_Space);
    warehouse.server.clearTrace();
    withDialog([](frmMagLookForItem*) {});
    EXPECT_FALSE(warehouse.batches().filter(QStringLiteral("exec Kolv_mag_LookFor_Item '")).isEmpty());
}

TEST_F(FrmMagWatchSearch, AMaterialTakenInTheDialogIsChosenInTheList) {
    openSearch();
    withDialog([](frmMagLookForItem* dialog) {
        test::type(dialog->findChild<QLineEdit*>(QStringLiteral("txtItemCode")), QStringLiteral("KL"));
        auto* list = dialog->findChild<ListView*>(QStringLiteral("lstSurOnMag"));
        test::clickCell(list, list->model()->index(0, 0));
        test::clickToolButton(dialog->findChild<ToolBar*>(QStringLiteral("tlbLookFor")),
                              QStringLiteral("key_Akcept"));
    });
    EXPECT_EQ(materials()->boundText(), QStringLiteral("KLEJ"));
    EXPECT_EQ(materials()->text(), QStringLiteral("KLEJ - Klej"));
    press("key_LookFor");
    EXPECT_EQ(found(), QStringLiteral("KLEJ - Klej"));
    // Closed by its frame the dialog writes nothing: the code is then that of the last search.
    choose("FARBA");
    withDialog([](frmMagLookForItem* dialog) { dialog->close(); });
    EXPECT_EQ(materials()->boundText(), QStringLiteral("KLEJ"));
}

TEST_F(FrmMagWatchSearch, ACancelledDialogGivesBackTheChosenMaterial) {
    openSearch();
    const auto cancel = [](frmMagLookForItem* dialog) {
        test::clickToolButton(dialog->findChild<ToolBar*>(QStringLiteral("tlbLookFor")),
                              QStringLiteral("key_Cancel"));
    };
    choose("FARBA");
    withDialog(cancel);
    EXPECT_EQ(materials()->boundText(), QStringLiteral("FARBA"));
    choose("0");
    withDialog(cancel);
    EXPECT_EQ(materials()->boundText(), QStringLiteral("0"));
}

TEST_F(FrmMagWatchSearch, CancelEndsTheSearchByAFullRebuild) {
    openSearch();
    lookFor("FARBA");
    run(QStringLiteral("update kolv_mag_Stand set StandIcon = N'R2_S_05.ico' where Stand = 2"));
    bool dataShown = true;
    messages.onMessage(
        [&](const MsgBoxRecorder::Message&) { dataShown = frame("frmWatchData")->isVisible(); });
    warehouse.server.clearTrace();
    pressCancel();
    EXPECT_FALSE(frame("frmLookForSur")->isVisible());
    EXPECT_TRUE(frame("frmWatchData")->isVisible());
    EXPECT_EQ(stands(), QStringLiteral("R1_S_01 R2_S_05 R1_S_03"));
    EXPECT_FALSE(locations().contains(QStringLiteral("_G_")));
    EXPECT_EQ(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).size(), 1);
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab")).size(), 1);
    EXPECT_EQ(messages.count(), 0);

    // The rebuild comes before the panel: while its message shows, neither panel is there.
    warehouse.server.kill();
    press("key_LokkFor");
    messages.clear();
    pressCancel();
    EXPECT_GT(messages.count(), 0);
    EXPECT_FALSE(dataShown);
    EXPECT_TRUE(frame("frmWatchData")->isVisible());
}

TEST_F(FrmMagWatchSearch, ARefreshTakesTheGreyAwayAndLeavesThePanelAsItIs) {
    openSearch();
    lookFor("FARBA");
    press("key_ReBulid");
    EXPECT_FALSE(locations().contains(QStringLiteral("_G_")));
    EXPECT_EQ(stands(), QStringLiteral("R1_S_01 R1_S_02 R1_S_03"));
    EXPECT_TRUE(frame("frmLookForSur")->isVisible());
    EXPECT_EQ(found(), QStringLiteral("FARBA - Farba żółta"));
}

TEST_F(FrmMagWatchSearch, AMissingGreyIconEndsThePassAndTheResultIsWrittenAllTheSame) {
    ASSERT_TRUE(warehouse.useOwnIcons());
    for (const char* icon : {"LC_P_30.ico", "LC_P_00.ico", "LC_G_30.ico", "R1_S_01.ico", "R1_S_02.ico",
                             "R1_S_03.ico", "RR1_S_03.ico"}) {
        const QString name = QString::fromLatin1(icon);
        ASSERT_TRUE(QFile::copy(warehouse.server.driveC() + QStringLiteral("/Regalon/Ikony/") + name,
                                warehouse.ownIcon(name)));
    }
    open();
    openSearch();
    MousePointer during = MousePointer::Default;
    messages.onMessage([&](const MsgBoxRecorder::Message&) { during = Screen::mousePointer(); });
    lookFor("FARBA");
    ASSERT_EQ(messages.count(), 1) << qPrintable(messages.last().Title);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - ChangeIconOnLocation"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::FileNotFound));
    EXPECT_EQ(locations(), QStringLiteral("LC_P_30 LC_G_30 LC_G_30"));
    EXPECT_EQ(stands(), QStringLiteral("R1_S_01 R1_S_02 R1_S_03"));
    EXPECT_EQ(found(), QStringLiteral("FARBA - Farba żółta"));
    EXPECT_EQ(during, MousePointer::Custom);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(FrmMagWatchSearch, ADeadServerIsReportedByEachReadAndTheWindowStaysUsable) {
    openSearch();
    choose("FARBA");
    warehouse.server.kill();
    press("key_LookFor");
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages().at(0).Title, QStringLiteral("Error - clsMagWatch [GetLocationPercent]"));
    EXPECT_EQ(messages.messages().at(1).Title,
              QStringLiteral("Error - clsMagWatch [TestExistsSurOnMagGroup]"));
    EXPECT_EQ(found(), kNowhere);
    expectPlain();
    messages.clear();
    test::key(allItems(), Qt::Key_Space);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error -  [FillComboBox]"));
}

TEST_F(FrmMagWatchSearch, AWindowOpenedOnceMoreStartsItsSearchAnew) {
    openSearch();
    test::key(allItems(), Qt::Key_Space);
    lookFor("FARBA");
    withDialog([](frmMagLookForItem* dialog) {
        test::clickToolButton(dialog->findChild<ToolBar*>(QStringLiteral("tlbLookFor")),
                              QStringLiteral("key_Cancel"));
    });
    press("key_Exit");
    test::showAndWait(window.get());
    EXPECT_FALSE(frame("frmLookForSur")->isVisible());
    EXPECT_TRUE(frame("frmWatchData")->isVisible());
    openSearch();
    EXPECT_FALSE(allItems()->isChecked());
    EXPECT_EQ(found(), QString());
    withDialog([](frmMagLookForItem* dialog) { dialog->close(); });
    EXPECT_EQ(materials()->boundText(), QString()) << "no code of a search before";
    expectPlain();
}

}  // namespace
}  // namespace regalon
