// The names under which the routines of the window report, each reached by a fault of files or data. What a
// data class, a list or a search reads reports by itself; these are the faults that get past them.
#include "map/LayoutEditor.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "support/Events.h"

#include <QAction>
#include <QFile>
#include <QPushButton>

namespace regalon {
namespace {

using test::EmptyHallEditor;

const QString kComboFailed = QStringLiteral("Error -  [FillComboBox]");
const QString kListFailed = QStringLiteral("Error - modListBox [FilleListView]");

class FrmMagCreateFailure : public EmptyHallEditor {
protected:
    void run(const QStringList& statements) {
        ASSERT_TRUE(warehouse.run(statements)) << qPrintable(warehouse.why());
    }
    /// Expects this one failure of a routine of the window.
    void expectFailure(const char* routine, qint32 number) {
        expectTitles({QStringLiteral("frmMagCreate - ") + QLatin1String(routine)});
        EXPECT_EQ(messages.last().Text.toStdString(), test::windowMessage(number).toStdString());
        EXPECT_EQ(messages.last().Flags, MsgFlag::Critical + MsgFlag::SystemModal);
        messages.clear();
    }
    void addGroup() {
        run({QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'AA-1',N'Śruba')"),
             QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                            "(1,N'Złącza',N'Y')")});
    }
};

// ---------------------------------------------------------------- rows, stands and shelves

TEST_F(FrmMagCreateFailure, ARowWhoseNumberIsTooWideIsReportedWhereverItIsRead) {
    run({QStringLiteral("drop table kolv_mag_Rank"),
         QStringLiteral("create table kolv_mag_Rank (Rank int, RankName nvarchar(50), RankIconFamily "
                        "nvarchar(50))"),
         QStringLiteral("insert into kolv_mag_Rank values (40000,N'Daleki',N'*.ico')")});
    open();
    choose("dtcRank", QStringLiteral("Daleki"));
    expectFailure("dtcRank_Change_Object", RunTime::Overflow);
    choose("dtcStand", QStringLiteral("Nowy"));
    expectFailure("dtcStand_Change_Object", RunTime::Overflow);
    clickButton("tlbPathIconFile", "key_Path");
    expectFailure("tlbPathIconFile_ButtonClick", RunTime::Overflow);
    clickButton("tlbSaveStand", "key_Remove");
    expectFailure("tlbSaveStand_ButtonClick", RunTime::Overflow);
    clickButton("tlbSaveStand", "key_Wath");
    expectFailure("WatchStandOnFormOneStand", RunTime::Overflow);
}

TEST_F(FrmMagCreateFailure, StandsThatCannotBeReadAtTheStartAreReportedByTheirList) {
    run({QStringLiteral("alter table kolv_mag_Stand drop column StandName")});
    open();
    ASSERT_EQ(messages.count(), 3);
    expectTitles({kComboFailed, QStringLiteral("frmMagCreate - FillComboStand"),
                  QStringLiteral("frmMagWatch - WathStore")});
    EXPECT_EQ(messages.messages().at(1).Text.toStdString(),
              test::windowMessage(RunTime::TypeMismatch).toStdString());
    EXPECT_EQ(rows("dtcParamLocation").size(), 8) << "the lists behind it are read";
}

TEST_F(FrmMagCreateFailure, AFileThatIsNoIconIsReportedByItsChoice) {
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    const QString path = QStringLiteral("C:\\Regalon\\zepsuta.ico");
    QFile file(Paths::toFile(path));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write("to nie jest ikona") > 0);
    file.close();
    files.answer(path);
    clickButton("tlbPathIconFile", "key_Path");
    expectFailure("tlbPathIconFile_ButtonClick", RunTime::InvalidPicture);
    EXPECT_EQ(box("txtImageName")->text(), QStringLiteral("zepsuta.ico"));
}

TEST_F(FrmMagCreateFailure, ANumberOfLocationsThatIsTooLargeIsReportedByTheSaveAndByThePreview) {
    open();
    defineNewStand(QStringLiteral("5000"), QStringLiteral("4000"), QStringLiteral("40000"));
    const QString before = tables();
    clickButton("tlbSaveStand", "key_Add");
    expectFailure("AddBookStand", RunTime::Overflow);
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_AddBookstandValidate")).size(), 0);
    EXPECT_EQ(tables(), before);
    clickButton("tlbSaveStand", "key_Wath");
    expectFailure("WatchStandOnFormOneStand", RunTime::Overflow);
}

TEST_F(FrmMagCreateFailure, AStandWhoseShelvesTheEditorDoesNotKnowIsReportedByItsSaveAndItsRemoval) {
    // No list of shelves is told for seven of them, so that from the start on none is chosen.
    run(
        {QStringLiteral("insert into kolv_mag_Stand (Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,"
                        "StandTop) values (0,0,N'-',N'',7,1000,3000),(1,0,N'-',N'',7,2000,3000),"
                        "(1,1,N'Wysoki',N'R1_S_01.ico',7,3000,3000)")});
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Wysoki"));
    ASSERT_EQ(choice("dtcShelfCount")->boundText(), QString());
    EXPECT_EQ(messages.count(), 0);
    clickButton("tlbSaveStand", "key_Add");
    expectFailure("AddBookStand", RunTime::TypeMismatch);
    messages.answer(MsgResult::Ok);
    clickButton("tlbSaveStand", "key_Remove");
    expectTitles({QStringLiteral("Komunikat"), QStringLiteral("frmMagCreate - RemoveBookStand")});
    EXPECT_EQ(messages.last().Text.toStdString(), test::windowMessage(RunTime::TypeMismatch).toStdString());
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_RemoveBookstandValidate")).size(), 0);
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Stand")), QStringLiteral("3"));
}

// ---------------------------------------------------------------- locations

TEST_F(FrmMagCreateFailure, AnAddressThatIsNoNumberIsReportedByTheChangeOfTheParameter) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    enter(box("txtFrmStand"), QStringLiteral("x"));
    choose("dtcParamLocation", QStringLiteral("Wysokość [mm]"));
    expectFailure("dtcParamLocation_Change_Object", RunTime::TypeMismatch);
    EXPECT_TRUE(box("txtParamValueLocalization")->isHidden());
}

// ---------------------------------------------------------------- groups

TEST_F(FrmMagCreateFailure, AGroupWhoseNumberIsTooWideIsReportedByItsChoiceAndByItsSave) {
    run({QStringLiteral("drop table kolv_mag_Group_Item"),
         QStringLiteral("drop table kolv_mag_Location_Group"),
         QStringLiteral("create table kolv_mag_Location_Group (GroupSur int, GroupSurName nvarchar(100), "
                        "OnOrOff nvarchar(1))"),
         QStringLiteral("create table kolv_mag_Group_Item (GroupSur int, ItemCode nvarchar(20))"),
         QStringLiteral("insert into kolv_mag_Location_Group values (40000,N'Daleka',N'Y')")});
    open();
    messages.clear();
    clickButton("tlbCmd", "key_GroupSur");
    choose("dtcGroupSur", QStringLiteral("Daleka"));
    expectFailure("dtcGroupSur_Change", RunTime::Overflow);
    clickButton("tlbSaveGroupLocation", "key_Save");
    expectFailure("tlbSaveGroupLocation_ButtonClick", RunTime::Overflow);
}

TEST_F(FrmMagCreateFailure, MaterialsWithoutANameAreReportedWhenOneIsAdded) {
    addGroup();
    run({QStringLiteral("drop view Kolv_vv_mag_Sur_Mag"),
         QStringLiteral("create view Kolv_vv_mag_Sur_Mag as select ItemCode as [Kod surowca:1450;0] from "
                        "OITM")});
    open();
    clickButton("tlbCmd", "key_GroupSur");
    choose("dtcGroupSur", QStringLiteral("Złącza"));
    ListView* materials = list("lstSurOnMag");
    test::clickCell(materials, materials->model()->index(0, 0));
    test::click(control<QPushButton>("cmdAddSurOnGroup"));
    expectFailure("cmdAddSurOnGroup_Click", RunTime::InvalidPropertyValue);
    EXPECT_EQ(list("lstSurOnGroup")->itemCount(), 0);
}

TEST_F(FrmMagCreateFailure, MaterialsThatCannotBeReadAreReportedByTheListAndTheGroupsOpen) {
    addGroup();
    open();
    run({QStringLiteral("drop view Kolv_vv_mag_Sur_Mag")});
    clickButton("tlbCmd", "key_GroupSur");
    expectTitles({kListFailed});
    EXPECT_TRUE(frame("frmDefGroupLocation")->isVisible());
    EXPECT_EQ(rows("dtcGroupSur").size(), 3);
}

TEST_F(FrmMagCreateFailure, GroupsThatCannotBeReadAreReportedByTheirList) {
    open();
    run({QStringLiteral("drop table kolv_mag_Group_Item"),
         QStringLiteral("drop table kolv_mag_Location_Group")});
    clickButton("tlbCmd", "key_GroupSur");
    expectTitles({kComboFailed});
    EXPECT_TRUE(frame("frmDefGroupLocation")->isVisible());
    EXPECT_EQ(rows("dtcGroupSur"), QStringList());
}

TEST_F(FrmMagCreateFailure, AGroupWhoseMembersOrUseCannotBeReadCannotBeDeleted) {
    addGroup();
    open();
    run({QStringLiteral("drop view Kolv_vv_mag_Sur_Location_group"),
         QStringLiteral("drop procedure kolv_mag_ConfirmGroupSur")});
    clickButton("tlbCmd", "key_GroupSur");
    expectTitles({kListFailed});
    messages.clear();
    choose("dtcGroupSur", QStringLiteral("Złącza"));
    expectTitles({kListFailed, QStringLiteral("Error - clsMagCreate [ConfirmGroupUse]")});
    EXPECT_FALSE(toolBar("tlbSaveGroupLocation")->button(1)->isEnabled());
}

TEST_F(FrmMagCreateFailure, ADeletionThatFailsIsReportedOnceAndTheGroupStaysChosen) {
    addGroup();
    open();
    clickButton("tlbCmd", "key_GroupSur");
    choose("dtcGroupSur", QStringLiteral("Złącza"));
    run({QStringLiteral("drop procedure kolv_mag_DeleteGroupSur")});
    clickButton("tlbSaveGroupLocation", "key_Delete");
    expectTitles({QStringLiteral("Error - clsMagCreate [DeleteGroupSur]")});
    EXPECT_EQ(choice("dtcGroupSur")->boundText(), QStringLiteral("1"));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Location_Group")),
              QStringLiteral("1"));
}

}  // namespace
}  // namespace regalon
