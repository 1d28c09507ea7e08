// The frame of the material groups: members edited in the list, and what goes to the database when.
#include "common/DbConnection.h"
#include "map/LayoutEditor.h"
#include "platform/Twips.h"
#include "support/Events.h"

#include <QAction>
#include <QPushButton>
#include <QScrollBar>

namespace regalon {
namespace {

using test::EmptyHallEditor;

const QString kChoose = QStringLiteral("wybierz");
const QString kNew = QStringLiteral("nowa");

/// Three materials; group 1 has the first two and a location, group 2 has the third and none.
class FrmMagCreateGroups : public EmptyHallEditor {
protected:
    void SetUp() override {
        EmptyHallEditor::SetUp();
        addStand(1, 1, QStringLiteral("2"));
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("insert into OITM (ItemCode,ItemName,InvntryUom) values (N'AA-1',N'Śruba',"
                            "N'szt'),(N'AA-2',N'Żywica',N'kg'),(N'AA-3',N'Taśma',N'mb')"),
             QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                            "(1,N'Złącza',N'Y'),(2,N'Taśmy',N'Y'),(3,N'Wycofane',N'N')"),
             QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (1,N'AA-1'),"
                            "(1,N'AA-2'),(2,N'AA-3')"),
             QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,"
                            "ItemName,GroupSur) values (1,1,1,1,N'',N'',1)")}))
            << qPrintable(warehouse.why());
        warehouse.context.UserSign = 4;
    }

    void openGroups() {
        open();
        clickButton("tlbCmd", "key_GroupSur");
    }
    void openOn(const QString& group) {
        openGroups();
        choose("dtcGroupSur", group);
        warehouse.server.clearTrace();
    }

    QStringList codes(const char* name) const {
        const ListView* view = list(name);
        QStringList found;
        for (int row = 1; row <= view->itemCount(); ++row)
            found.append(view->item(row)->text());
        return found;
    }
    QStringList members() const { return codes("lstSurOnGroup"); }
    /// Marks a row by a click on it.
    void mark(const char* name, const QString& code) {
        ListView* view = list(name);
        const int row = static_cast<int>(codes(name).indexOf(code));
        ASSERT_GE(row, 0) << name << " does not hold " << qPrintable(code);
        test::clickCell(view, view->model()->index(row, 0));
    }
    void add(const QString& code) {
        mark("lstSurOnMag", code);
        test::click(addButton());
    }
    void remove(const QString& code) {
        mark("lstSurOnGroup", code);
        test::click(removeButton());
    }
    void save() { clickButton("tlbSaveGroupLocation", "key_Save"); }
    void pressDelete() { clickButton("tlbSaveGroupLocation", "key_Delete"); }

    QPushButton* addButton() const { return control<QPushButton>("cmdAddSurOnGroup"); }
    QPushButton* removeButton() const { return control<QPushButton>("cmdRemovroup"); }
    QAction* deleteButton() const { return toolBar("tlbSaveGroupLocation")->button(1); }
    QString chosen() const { return choice("dtcGroupSur")->boundText(); }

    QList<QStringList> memberSavings() const {
        return warehouse.calls(QStringLiteral("kolv_mag_Add_Sur_On_Group"));
    }
    QList<QStringList> groupSavings() const {
        return warehouse.calls(QStringLiteral("kolv_mag_Save_Group_Sur"));
    }
    QString storedMembers(int group) {
        return warehouse.value(
            QStringLiteral("select string_agg(ItemCode,',') from kolv_mag_Group_Item where "
                           "GroupSur = %1")
                .arg(group));
    }
    QString storedGroups() {
        return warehouse.value(
            QStringLiteral("select string_agg(concat(GroupSur,'=',GroupSurName),';') from "
                           "kolv_mag_Location_Group"));
    }
};

// ---------------------------------------------------------------- opening and choosing

TEST_F(FrmMagCreateGroups, TheFrameOpensWithAllMaterialsAndTheGroupsInUse) {
    openGroups();
    EXPECT_TRUE(frame("frmDefGroupLocation")->isVisible());
    EXPECT_NEAR(toTwips(frame("frmDefGroupLocation")->y()),
                toTwips(window->y()) + 2 * toTwips(toolBar("tlbCmd")->height()) + 300, TwipsPerPixel);
    EXPECT_EQ(codes("lstSurOnMag"),
              QStringList({QStringLiteral("AA-1"), QStringLiteral("AA-2"), QStringLiteral("AA-3")}));
    EXPECT_EQ(list("lstSurOnMag")->item(1)->subItem(1), QStringLiteral("Śruba"));
    EXPECT_EQ(rows("dtcGroupSur"),
              QStringList({kChoose, QStringLiteral("Złącza"), QStringLiteral("Taśmy"), kNew}));
    EXPECT_EQ(chosen(), QStringLiteral("0"));
    EXPECT_FALSE(deleteButton()->isEnabled());
    EXPECT_FALSE(addButton()->isEnabled());
    EXPECT_FALSE(removeButton()->isEnabled());
    EXPECT_TRUE(label("lblNewGroupName")->isHidden());
    EXPECT_TRUE(box("txtNewGroupName")->isHidden());
    EXPECT_EQ(
        warehouse.batches(),
        QStringList({QStringLiteral("select * from Kolv_vv_mag_Sur_Mag"),
                     QStringLiteral("select 0 as GroupSur , N'wybierz' as GroupSurName UNION ALL select "
                                    "GroupSur,GroupSurName from kolv_mag_Location_Group where OnOrOff = 'Y' "
                                    "UNION ALL select -1 as GroupSur , N'nowa' as GroupSurName"),
                     QStringLiteral("select * from Kolv_vv_mag_Sur_Location_group where xxx_GroupSur = 0")}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateGroups, TheColumnsOfBothListsFitWithoutScrolling) {
    openOn(QStringLiteral("Złącza"));
    for (const char* name : {"lstSurOnMag", "lstSurOnGroup"})
        EXPECT_EQ(list(name)->horizontalScrollBar()->maximum(), 0) << name;
}

TEST_F(FrmMagCreateGroups, TheFrameOpensFromTheLocationEditorTooAndCancelClosesIt) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    clickButton("tlbDefineGroupOnLocation", "key_Define");
    EXPECT_TRUE(frame("frmDefGroupLocation")->isVisible());
    clickButton("tlbSaveGroupLocation", "key_Cancel");
    EXPECT_TRUE(frame("frmDefGroupLocation")->isHidden());
    EXPECT_TRUE(frame("frmAddSurOnLocalization")->isVisible());
}

TEST_F(FrmMagCreateGroups, AGroupShowsItsMembersWithoutTheHiddenColumn) {
    openGroups();
    warehouse.server.clearTrace();
    choose("dtcGroupSur", QStringLiteral("Złącza"));
    EXPECT_EQ(members(), QStringList({QStringLiteral("AA-1"), QStringLiteral("AA-2")}));
    EXPECT_EQ(list("lstSurOnGroup")->headerCount(), 2);
    EXPECT_EQ(list("lstSurOnGroup")->item(2)->subItem(1), QStringLiteral("Żywica"));
    EXPECT_TRUE(addButton()->isEnabled());
    EXPECT_TRUE(removeButton()->isEnabled());
    EXPECT_TRUE(warehouse.batches().contains(
        QStringLiteral("select * from Kolv_vv_mag_Sur_Location_group where xxx_GroupSur = 1")));
}

TEST_F(FrmMagCreateGroups, TheDeleteButtonOfAGroupInUseStaysDisabled) {
    openGroups();
    choose("dtcGroupSur", QStringLiteral("Złącza"));
    EXPECT_FALSE(deleteButton()->isEnabled());
    choose("dtcGroupSur", QStringLiteral("Taśmy"));
    EXPECT_TRUE(deleteButton()->isEnabled());
    choose("dtcGroupSur", QStringLiteral("Złącza"));
    EXPECT_FALSE(deleteButton()->isEnabled());
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_ConfirmGroupSur")),
              QList<QStringList>({{QStringLiteral("1")}, {QStringLiteral("2")}, {QStringLiteral("1")}}));
}

TEST_F(FrmMagCreateGroups, ANewGroupAsksForItsNameAndTakesNoMembersYet) {
    openOn(kNew);
    EXPECT_TRUE(label("lblNewGroupName")->isVisible());
    EXPECT_TRUE(box("txtNewGroupName")->isVisible());
    EXPECT_EQ(members(), QStringList());
    EXPECT_FALSE(addButton()->isEnabled());
    EXPECT_FALSE(removeButton()->isEnabled());
    enter(box("txtNewGroupName"), QStringLiteral("abc"));
    choose("dtcGroupSur", kChoose);
    EXPECT_TRUE(box("txtNewGroupName")->isHidden());
    choose("dtcGroupSur", kNew);
    EXPECT_EQ(box("txtNewGroupName")->text(), QString());
}

// ---------------------------------------------------------------- the list

TEST_F(FrmMagCreateGroups, AnAddedMaterialStandsAtTheEndAndNothingIsWrittenBeforeTheSave) {
    openOn(QStringLiteral("Taśmy"));
    add(QStringLiteral("AA-1"));
    EXPECT_EQ(members(), QStringList({QStringLiteral("AA-3"), QStringLiteral("AA-1")}));
    EXPECT_EQ(list("lstSurOnGroup")->item(2)->subItem(1), QStringLiteral("Śruba"));
    remove(QStringLiteral("AA-3"));
    EXPECT_EQ(members(), QStringList(QStringLiteral("AA-1")));
    EXPECT_EQ(warehouse.server.entries().size(), 0);
    EXPECT_EQ(storedMembers(2), QStringLiteral("AA-3"));
}

TEST_F(FrmMagCreateGroups, AMaterialThatIsInTheListIsNotAddedTwice) {
    openOn(QStringLiteral("Złącza"));
    add(QStringLiteral("AA-2"));
    EXPECT_EQ(members(), QStringList({QStringLiteral("AA-1"), QStringLiteral("AA-2")}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateGroups, TheMarkedMaterialIsTakenOutOfSeveral) {
    openOn(QStringLiteral("Złącza"));
    remove(QStringLiteral("AA-2"));
    EXPECT_EQ(members(), QStringList(QStringLiteral("AA-1")));
}

TEST_F(FrmMagCreateGroups, WithoutAMarkedRowTheArrowsDoNothing) {
    openOn(QStringLiteral("Taśmy"));
    test::click(addButton());
    test::click(removeButton());
    EXPECT_EQ(members(), QStringList(QStringLiteral("AA-3")));
    remove(QStringLiteral("AA-3"));
    test::click(removeButton());
    EXPECT_EQ(members(), QStringList());
    EXPECT_EQ(messages.count(), 0);
}

// ---------------------------------------------------------------- saving members

TEST_F(FrmMagCreateGroups, SeveralMembersGoAsOneTextWithCommasInTheOrderOfTheList) {
    openOn(QStringLiteral("Złącza"));
    remove(QStringLiteral("AA-1"));
    add(QStringLiteral("AA-3"));
    add(QStringLiteral("AA-1"));
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(memberSavings().size(), 1);
    EXPECT_EQ(memberSavings().first().mid(0, 3),
              QStringList({QStringLiteral("1"), QStringLiteral("AA-2,AA-3,AA-1"), QStringLiteral("4")}));
    EXPECT_EQ(storedMembers(1), QStringLiteral("AA-1,AA-2,AA-3"));
}

TEST_F(FrmMagCreateGroups, AGroupLeftWithoutMembersPassesAnEmptyText) {
    openOn(QStringLiteral("Taśmy"));
    remove(QStringLiteral("AA-3"));
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(memberSavings().size(), 1);
    EXPECT_EQ(memberSavings().first().mid(0, 3),
              QStringList({QStringLiteral("2"), QString(), QStringLiteral("4")}));
    EXPECT_EQ(storedMembers(2), QStringLiteral("NULL"));
}

TEST_F(FrmMagCreateGroups, ACommaInACodeIsRefusedByTheDatabaseAndTheListStays) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'AA-1,AA-2',N'Zestaw')")}));
    openOn(QStringLiteral("Taśmy"));
    add(QStringLiteral("AA-1,AA-2"));
    save();
    ASSERT_EQ(memberSavings().size(), 1);
    EXPECT_EQ(memberSavings().first().at(1), QStringLiteral("AA-3,AA-1,AA-2"));
    expectNotice(QStringLiteral(
        "Kod surowca „AA-1,AA-2” zawiera przecinek, dlatego surowiec nie może należeć do grupy."));
    EXPECT_EQ(members(), QStringList({QStringLiteral("AA-3"), QStringLiteral("AA-1,AA-2")}));
    EXPECT_EQ(storedMembers(2), QStringLiteral("AA-3"));
}

TEST_F(FrmMagCreateGroups, OfTwoManagersOfOneGroupTheLastSaveStandsWhole) {
    openOn(QStringLiteral("Taśmy"));
    add(QStringLiteral("AA-1"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("delete from kolv_mag_Group_Item where GroupSur = 2"),
         QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (2,N'AA-2')")}));
    save();
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(storedMembers(2), QStringLiteral("AA-1,AA-3"));
}

TEST_F(FrmMagCreateGroups, AGroupThatAnotherManagerDeletedIsRefusedAndTheListStays) {
    openOn(QStringLiteral("Taśmy"));
    add(QStringLiteral("AA-1"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("delete from kolv_mag_Location_Group where GroupSur = 2")}));
    save();
    expectNotice(QStringLiteral("Ta grupa surowców nie istnieje. Mógł ją usunąć inny użytkownik."));
    EXPECT_EQ(members(), QStringList({QStringLiteral("AA-3"), QStringLiteral("AA-1")}));
    EXPECT_EQ(storedMembers(2), QStringLiteral("NULL"));
}

TEST_F(FrmMagCreateGroups, WithTheServerGoneASaveReportsOnceAndTheListStays) {
    openOn(QStringLiteral("Taśmy"));
    add(QStringLiteral("AA-1"));
    warehouse.server.kill();
    save();
    expectTitles({QStringLiteral("Error - clsMagCreate [AddSurOnGroup]")});
    EXPECT_EQ(members(), QStringList({QStringLiteral("AA-3"), QStringLiteral("AA-1")}));
    ASSERT_TRUE(warehouse.server.start());
    EXPECT_EQ(storedMembers(2), QStringLiteral("AA-3"));
}

TEST_F(FrmMagCreateGroups, WithoutAGroupSavingAndDeletingDoNothing) {
    openGroups();
    warehouse.server.clearTrace();
    save();
    deleteButton()->setEnabled(true);
    pressDelete();
    choose("dtcGroupSur", kNew);
    warehouse.server.clearTrace();
    pressDelete();
    EXPECT_EQ(warehouse.server.entries().size(), 0);
    EXPECT_EQ(messages.count(), 0);
}

// ---------------------------------------------------------------- a new group

TEST_F(FrmMagCreateGroups, ANewGroupIsChosenOnceItIsSavedAndGetsItsMembersByASecondSave) {
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    clickButton("tlbDefineGroupOnLocation", "key_Define");
    choose("dtcGroupSur", kNew);
    box("txtNewGroupName")->insert(QStringLiteral("Kleje i żywice"));
    warehouse.server.clearTrace();
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(groupSavings().size(), 1);
    EXPECT_EQ(groupSavings().first().mid(0, 3),
              QStringList({QStringLiteral("-1"), QStringLiteral("Kleje i żywice"), QStringLiteral("4")}));
    EXPECT_EQ(chosen(), QStringLiteral("4"));
    EXPECT_EQ(choice("dtcGroupSur")->text(), QStringLiteral("Kleje i żywice"));
    EXPECT_TRUE(box("txtNewGroupName")->isHidden());
    EXPECT_TRUE(addButton()->isEnabled());
    EXPECT_TRUE(rows("dtcGroupOnLocalization").contains(QStringLiteral("Kleje i żywice")));
    add(QStringLiteral("AA-2"));
    save();
    EXPECT_EQ(storedMembers(4), QStringLiteral("AA-2"));
    EXPECT_EQ(storedGroups(), QStringLiteral("1=Złącza;2=Taśmy;3=Wycofane;4=Kleje i żywice"));
}

TEST_F(FrmMagCreateGroups, AnEmptyNameGoesToTheDatabaseWhichRefusesIt) {
    openOn(kNew);
    save();
    ASSERT_EQ(groupSavings().size(), 1);
    EXPECT_EQ(groupSavings().first().mid(0, 3),
              QStringList({QStringLiteral("-1"), QString(), QStringLiteral("4")}));
    expectNotice(QStringLiteral("Podaj nazwę grupy surowców."));
    EXPECT_EQ(storedGroups(), QStringLiteral("1=Złącza;2=Taśmy;3=Wycofane"));
}

TEST_F(FrmMagCreateGroups, ANameThatIsTakenIsRefusedAndStaysInTheBox) {
    ASSERT_TRUE(warehouse.run({QStringLiteral(
        "insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values (9,N'Kleje',N'Y')")}));
    openOn(kNew);
    enter(box("txtNewGroupName"), QStringLiteral("Kleje"));
    save();
    expectNotice(QStringLiteral("Grupa surowców o nazwie „Kleje” już istnieje."));
    EXPECT_EQ(box("txtNewGroupName")->text(), QStringLiteral("Kleje"));
    EXPECT_EQ(chosen(), QStringLiteral("-1"));
}

TEST_F(FrmMagCreateGroups, WithTheServerGoneANewGroupReportsOnceAndItsNameStays) {
    openOn(kNew);
    enter(box("txtNewGroupName"), QStringLiteral("Kleje"));
    warehouse.server.kill();
    save();
    expectTitles({QStringLiteral("Error - clsMagCreate [AddOrRemoveNewGroup]")});
    EXPECT_EQ(box("txtNewGroupName")->text(), QStringLiteral("Kleje"));
    ASSERT_TRUE(warehouse.server.start());
    EXPECT_EQ(storedGroups(), QStringLiteral("1=Złącza;2=Taśmy;3=Wycofane"));
}

// ---------------------------------------------------------------- deleting

TEST_F(FrmMagCreateGroups, AGroupThatNoLocationUsesIsDeletedAndTheFrameBeginsAnew) {
    openOn(QStringLiteral("Taśmy"));
    pressDelete();
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_ConfirmGroupSur")).size(), 1);
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_DeleteGroupSur")).size(), 1);
    EXPECT_EQ(storedGroups(), QStringLiteral("1=Złącza;3=Wycofane"));
    EXPECT_EQ(rows("dtcGroupSur"), QStringList({kChoose, QStringLiteral("Złącza"), kNew}));
    EXPECT_EQ(chosen(), QStringLiteral("0"));
    EXPECT_EQ(members(), QStringList());
    EXPECT_FALSE(deleteButton()->isEnabled());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateGroups, AGroupGivenToALocationMeanwhileIsNotDeletedAndNothingIsSaid) {
    openOn(QStringLiteral("Taśmy"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Location_Item set GroupSur = 2")}));
    pressDelete();
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_ConfirmGroupSur")).size(), 1);
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_DeleteGroupSur")).size(), 0);
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(chosen(), QStringLiteral("2"));
    EXPECT_EQ(storedMembers(2), QStringLiteral("AA-3"));
}

}  // namespace
}  // namespace regalon
