// A manager comes to an empty hall, lays a small warehouse out, and takes all of it away again.
#include "program/LayoutDesk.h"
#include "program/Tables.h"

#include <QFile>

namespace regalon::test {
namespace {

const QString kTaken = QStringLiteral(
    "W tym miejscu stoi już „Regał 1” (Rząd A). Zmień położenie X lub Y tak, aby półki regałów nie "
    "zachodziły na "
    "siebie.");

const QString kMaterialRows = QStringLiteral("select * from Kolv_vv_mag_Sur_Mag");
const QString kParamRows = QStringLiteral("select * from Kolv_vv_mag_Param_Location");
const QString kGroups =
    QStringLiteral("select GroupSur,GroupSurName,OnOrOff from kolv_mag_Location_Group order by GroupSur");
const QString kMembersOfGroups =
    QStringLiteral("select GroupSur,ItemCode from kolv_mag_Group_Item order by GroupSur,ItemCode");

// Buttons of the bars, from the left.
constexpr int kPreview = 1;
constexpr int kSaveStand = 2;
constexpr int kRemoveStand = 3;
constexpr int kSave = 1;
constexpr int kCancel = 2;
constexpr int kDeleteGroup = 1;
constexpr int kCancelGroups = 2;
constexpr int kSaveGroup = 3;
constexpr int kRefresh = 5;

constexpr int kRowA = 1;
constexpr int kRowB = 2;

class LayoutPath : public LayoutDesk {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(LayoutDesk::SetUp());
        before = everyRow(warehouse);
        QImage drawn(64, 48, QImage::Format_RGB888);
        drawn.fill(Qt::darkGreen);
        ASSERT_TRUE(drawn.save(inDriveC(QStringLiteral("Regalon/obraz.bmp"))));
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openEditor());
        EXPECT_EQ(everyRow(warehouse), before) << "opening the editor writes nothing";
    }

    /// Chooses "Nowy" and "Nowa" in a row and fills the form in.
    void defineStand(int row, const QString& icon, int left, int top, const QString& locations) {
        choose(kRank, row);
        chooseLast(kStand);
        chooseLast(kShelf);
        enter(countOfShelf(1), locations);
        ASSERT_NO_FATAL_FAILURE(pickFile(kIconFile, icon));
        enter(kLeft, QString::number(left));
        enter(kTop, QString::number(top));
    }
    void refuse() {
        warehouse.clearTrace();
        press(kStandBar, kSaveStand);
    }

    void addMember(const QString& code);
    void saveParam(const QString& name, const QString& value);
    void removeStand(int rank, int stand);

    void layFirstStandOut();
    void giveItASecondShelf();
    void changeIt();
    void layASecondOneOut();
    void layARowUnderTheFramesOut();
    void assignMaterials();
    void makeAGroup();
    void editTheGroup();
    void assignTheGroup();
    void setParameters();
    void triesToDeleteTheGroup();
    void removeStands();
    void deleteTheGroup();

    QStringList before;
};

void LayoutPath::layFirstStandOut() {
    ASSERT_NO_FATAL_FAILURE(
        defineStand(kRowA, QStringLiteral("R1_S_01.ico"), 2000, 2500, QStringLiteral("2")));
    EXPECT_EQ(everyRow(warehouse), before) << "nothing is written before the save";
    press(kStandBar, kSaveStand);
    expectStands({QStringLiteral("1/1/Regał 1/R1_S_01.ico/1/2000/2500/Y/Y/Y/")});
    expectLocations(
        {QStringLiteral("1_1_1_1_LA_2/LA_P_00.ico/0"), QStringLiteral("1_1_1_2_LB_3/LB_P_00.ico/0")});
    expectOnPlan(kRowA);
    keep(display.settledPicture(), QStringLiteral("layout-first-stand"));
}

void LayoutPath::giveItASecondShelf() {
    chooseLast(kShelf);
    const QStringList saved = everyRow(warehouse);
    refuse();
    keep(display.settledPicture(), QStringLiteral("layout-shelf-without-number"));
    ASSERT_NO_FATAL_FAILURE(answer(messageTitle(), QStringLiteral("Return")));
    EXPECT_TRUE(calls(QStringLiteral("kolv_mag_AddBookstandValidate")).isEmpty());
    EXPECT_EQ(everyRow(warehouse), saved);

    enter(countOfShelf(2), QStringLiteral("3"));
    press(kStandBar, kSaveStand);
    expectStands({QStringLiteral("1/1/Regał 1/R1_S_01.ico/2/2000/2500/Y/Y/Y/")});
    expectLocations(
        {QStringLiteral("1_1_1_1_LA_2/LA_P_00.ico/0"), QStringLiteral("1_1_1_2_LB_3/LB_P_00.ico/0"),
         QStringLiteral("1_1_2_1_LA_4/LA_P_00.ico/0"), QStringLiteral("1_1_2_2_LA_5/LA_P_00.ico/0"),
         QStringLiteral("1_1_2_3_LA_6/LA_P_00.ico/0")});
    expectOnPlan(kRowA);
}

void LayoutPath::changeIt() {
    click(kEnabled);
    enter(kDescription, QStringLiteral("Mały regał"));
    enter(kLeft, QStringLiteral("2300"));
    press(kStandBar, kSaveStand);
    expectStands({QStringLiteral("1/1/Regał 1/R1_S_01.ico/2/2300/2500/Y/N/Y/Mały regał")});
    EXPECT_EQ(linesOf(warehouse, QStringLiteral("select * from kolv_mag_Location")).size(), 5);
    expectOnPlan(kRowA);
}

void LayoutPath::layASecondOneOut() {
    ASSERT_NO_FATAL_FAILURE(
        defineStand(kRowA, QStringLiteral("R1_S_02.ico"), 2700, 2500, QStringLiteral("1")));
    const QStringList saved = everyRow(warehouse);
    const QImage plain = display.settledPicture();
    press(kStandBar, kPreview);
    const QImage preview = display.changedPicture(plain, plan.hall());
    ASSERT_FALSE(preview.isNull());
    EXPECT_TRUE(showsPicture(preview, plan, warehouse, 2700, 2500, QStringLiteral("R1_S_02.ico")));
    keep(preview, QStringLiteral("layout-preview"));

    refuse();
    ASSERT_FALSE(client->window(messageTitle()).isEmpty());
    keep(display.settledPicture(), QStringLiteral("layout-refused"));
    copyMessage(messageTitle());
    ASSERT_NO_FATAL_FAILURE(answer(messageTitle(), QStringLiteral("Return")));
    EXPECT_EQ(calls(QStringLiteral("kolv_mag_AddBookstandValidate")).size(), 1);
    EXPECT_TRUE(calls(QStringLiteral("kolv_mag_AddBookstand")).isEmpty());
    EXPECT_EQ(everyRow(warehouse), saved);

    // The form kept what the manager entered: another place is all that it takes.
    enter(kLeft, QStringLiteral("4000"));
    press(kStandBar, kSaveStand);
    expectStands({QStringLiteral("1/1/Regał 1/R1_S_01.ico/2/2300/2500/Y/N/Y/Mały regał"),
                  QStringLiteral("1/2/Regał 2/R1_S_02.ico/1/4000/2500/Y/Y/Y/")});
    chooseLast(kShelf);
    enter(countOfShelf(2), QStringLiteral("2"));
    press(kStandBar, kSaveStand);
    expectRows(
        QStringLiteral("select LocationName,LocationIcon from kolv_mag_Location where Stand = 2 order by "
                       "Shelf,Location"),
        {QStringLiteral("1_2_1_1_LC_7/LC_P_00.ico"), QStringLiteral("1_2_2_1_LA_8/LA_P_00.ico"),
         QStringLiteral("1_2_2_2_LB_9/LB_P_00.ico")});
    expectOnPlan(kRowA);
}

void LayoutPath::layARowUnderTheFramesOut() {
    ASSERT_NO_FATAL_FAILURE(
        defineStand(kRowB, QStringLiteral("R2_S_01.ico"), 8000, 7700, QStringLiteral("3")));
    press(kStandBar, kSaveStand);
    expectRows(
        QStringLiteral("select StandName,StandIcon,ShelfCount,StandLeft,StandTop from kolv_mag_Stand where "
                       "Rank = 2"),
        {QStringLiteral("Regał 1/R2_S_01.ico/1/8000/7700")});
    expectRows(
        QStringLiteral("select LocationName from kolv_mag_Location where Rank = 2 order by Location"),
        {QStringLiteral("2_1_1_1_LA_10"), QStringLiteral("2_1_1_2_LA_11"), QStringLiteral("2_1_1_3_LA_12")});
    ASSERT_NO_FATAL_FAILURE(moveFramesUp());
    expectOnPlan(kRowB);
    keep(display.settledPicture(), QStringLiteral("layout-frames-up"));
    ASSERT_NO_FATAL_FAILURE(moveFramesDown());
    expectOnPlan(kRowA);
}

void LayoutPath::assignMaterials() {
    const QString assigned = QStringLiteral(
        "select Rank,Stand,Shelf,Location,ItemCode,ItemName,GroupSur,UserSign from kolv_mag_Location_Item "
        "order by "
        "Rank,Stand,Shelf,Location");
    clickLocation(1, 1, 1, 1);
    ASSERT_NO_FATAL_FAILURE(pasteIntoSearch(kTaken));
    ASSERT_NO_FATAL_FAILURE(lookFor(QStringLiteral("OL-HY-046")));
    EXPECT_EQ(linesOf(warehouse, assigned), QStringList()) << "nothing is written before the save";
    press(kLocationBar, kSave);
    expectRows(assigned, {QStringLiteral("1/1/1/1/OL-HY-046/Olej hydrauliczny HL 46/0/1")});
    clickLocation(1, 2, 2, 2);
    ASSERT_NO_FATAL_FAILURE(lookFor(QStringLiteral("PR-MO-058")));
    press(kLocationBar, kSave);
    expectRows(assigned, {QStringLiteral("1/1/1/1/OL-HY-046/Olej hydrauliczny HL 46/0/1"),
                          QStringLiteral("1/2/2/2/PR-MO-058/Pręt mosiężny CW614N fi 18, 1 m/0/1")});
    keep(display.settledPicture(), QStringLiteral("layout-location"));
}

void LayoutPath::makeAGroup() {
    ASSERT_NO_FATAL_FAILURE(openGroups());
    chooseLast(kGroup);
    enter(kGroupName, QStringLiteral("Oleje i smary"));
    press(kGroupBar, kSaveGroup);
    expectRows(kGroups, {QStringLiteral("1/Oleje i smary/Y")});
    expectRows(kMembersOfGroups, {});
}

void LayoutPath::addMember(const QString& code) {
    mark(kMaterials, rowOf(kMaterialRows, code));
    click(kAddMember);
}

void LayoutPath::editTheGroup() {
    // The new group is chosen: its materials come by a save of their own.
    addMember(QStringLiteral("OL-HY-046"));
    addMember(QStringLiteral("BL-OC-007"));
    addMember(QStringLiteral("OL-HY-046"));
    expectRows(kMembersOfGroups, {});
    press(kGroupBar, kSaveGroup);
    expectRows(kMembersOfGroups, {QStringLiteral("1/BL-OC-007"), QStringLiteral("1/OL-HY-046")});
    EXPECT_EQ(calls(QStringLiteral("kolv_mag_Add_Sur_On_Group")).last().values.value(1),
              QStringLiteral("?=OL-HY-046,BL-OC-007"));
    keep(display.settledPicture(), QStringLiteral("layout-groups"));

    mark(kMembers, 1);
    click(kRemoveMember);
    addMember(QStringLiteral("CH-EM-020"));
    addMember(QStringLiteral("OL-PR-068"));
    press(kGroupBar, kSaveGroup);
    expectRows(kMembersOfGroups,
               {QStringLiteral("1/CH-EM-020"), QStringLiteral("1/OL-HY-046"), QStringLiteral("1/OL-PR-068")});
    press(kGroupBar, kCancelGroups);
}

void LayoutPath::assignTheGroup() {
    clickLocation(1, 1, 1, 1);
    chooseLast(kGroupOfLocation);
    press(kLocationBar, kSave);
    expectRows(QStringLiteral("select ItemCode,GroupSur from kolv_mag_Location_Item order by Stand"),
               {QStringLiteral("OL-HY-046/1"), QStringLiteral("PR-MO-058/0")});
}

void LayoutPath::saveParam(const QString& name, const QString& value) {
    warehouse.clearTrace();
    press(kParamBar, kSave);
    expectRows(
        QStringLiteral("select ") + name +
            QStringLiteral(" from kolv_mag_Location_Item where Rank = 1 and Stand = 1 and Shelf = 1 and "
                           "Location = 1"),
        {value});
    EXPECT_EQ(calls(QStringLiteral("dbo.kolv_mag_Add_Value_Param")).size(), 1);
    keep(display.settledPicture(), QStringLiteral("layout-") + name);
}

void LayoutPath::setParameters() {
    const auto param = [this](const char* name) {
        choose(kParam, rowOf(kParamRows, QString::fromLatin1(name)));
    };
    param("Height_int");
    enter(kParamValue, QStringLiteral("1350"));
    saveParam(QStringLiteral("Height_int"), QStringLiteral("1350"));
    param("Description_char");
    enter(kParamValue, QStringLiteral("Beczki tylko na dole"));
    saveParam(QStringLiteral("Description_char"), QStringLiteral("Beczki tylko na dole"));
    param("Picture_pic");
    const QString file = inDriveC(QStringLiteral("Regalon/obraz.bmp"));
    ASSERT_NO_FATAL_FAILURE(pickFile(kPictureFile, file));
    QFile picture(file);
    ASSERT_TRUE(picture.open(QIODevice::ReadOnly));
    saveParam(QStringLiteral("Picture_pic"), QString::fromLatin1(picture.readAll().toBase64()));
    param("StatLocation_cmb");
    display.key(QStringLiteral("Down"));
    saveParam(QStringLiteral("StatLocation_cmb"), QStringLiteral("1"));

    // A location of several materials shows its own icon.
    pressInStrip(kRefresh);
    const Spot several = spotOf(warehouse, 1, 1, 1, 1);
    EXPECT_TRUE(eventually([&] {
        return showsIcon(display.picture(), plan, warehouse, several, QStringLiteral("LA_M_00.ico"));
    }));
    press(kLocationBar, kCancel);
}

void LayoutPath::triesToDeleteTheGroup() {
    ASSERT_NO_FATAL_FAILURE(openGroups());
    choose(kGroup, 1);
    ASSERT_TRUE(called(QStringLiteral("kolv_mag_ConfirmGroupSur")));
    press(kGroupBar, kDeleteGroup);
    press(kGroupBar, kCancelGroups);
    expectRows(kGroups, {QStringLiteral("1/Oleje i smary/Y")});
    EXPECT_TRUE(calls(QStringLiteral("kolv_mag_DeleteGroupSur")).isEmpty()) << "a location uses it";
}

void LayoutPath::removeStand(int rank, int stand) {
    clickStand(rank, stand);
    press(kStandBar, kRemoveStand);
    ASSERT_NO_FATAL_FAILURE(answer(messageTitle(), QStringLiteral("Return")));
}

void LayoutPath::removeStands() {
    const QStringList laidOut = everyRow(warehouse);
    clickStand(1, 2);
    press(kStandBar, kRemoveStand);
    ASSERT_FALSE(client->window(messageTitle()).isEmpty());
    keep(display.settledPicture(), QStringLiteral("layout-remove-question"));
    ASSERT_NO_FATAL_FAILURE(answer(messageTitle(), QStringLiteral("Escape")));
    EXPECT_EQ(everyRow(warehouse), laidOut);

    ASSERT_NO_FATAL_FAILURE(removeStand(1, 2));
    const QString stands = QStringLiteral("select Rank,Stand from kolv_mag_Stand order by Rank,Stand");
    expectRows(stands, {QStringLiteral("1/1"), QStringLiteral("2/1")});
    ASSERT_NO_FATAL_FAILURE(removeStand(1, 1));
    expectRows(stands, {QStringLiteral("2/1")});
    // Row B lies under the frames; its stand is chosen in the lists.
    choose(kRank, kRowB);
    choose(kStand, 1);
    press(kStandBar, kRemoveStand);
    ASSERT_NO_FATAL_FAILURE(answer(messageTitle(), QStringLiteral("Return")));
    expectRows(stands, {});
    expectRows(QStringLiteral("select * from kolv_mag_Location_Item"), {});
}

void LayoutPath::deleteTheGroup() {
    ASSERT_NO_FATAL_FAILURE(openGroups());
    warehouse.clearTrace();
    choose(kGroup, 1);
    ASSERT_TRUE(called(QStringLiteral("kolv_mag_ConfirmGroupSur")));
    press(kGroupBar, kDeleteGroup);
    expectRows(kGroups, {});
    EXPECT_EQ(calls(QStringLiteral("kolv_mag_ConfirmGroupSur")).size(), 2)
        << "asked once more before it goes";
    EXPECT_EQ(calls(QStringLiteral("kolv_mag_DeleteGroupSur")).size(), 1);
    press(kGroupBar, kCancelGroups);
}

TEST_F(LayoutPath, AManagerLaysAWarehouseOutFromAnEmptyHallAndTakesItAwayAgain) {
    keep(display.settledPicture(), QStringLiteral("layout-empty"));
    const QImage empty = display.settledPicture();
    ASSERT_NO_FATAL_FAILURE(layFirstStandOut());
    ASSERT_NO_FATAL_FAILURE(giveItASecondShelf());
    ASSERT_NO_FATAL_FAILURE(changeIt());
    ASSERT_NO_FATAL_FAILURE(layASecondOneOut());
    ASSERT_NO_FATAL_FAILURE(layARowUnderTheFramesOut());
    ASSERT_NO_FATAL_FAILURE(assignMaterials());
    ASSERT_NO_FATAL_FAILURE(makeAGroup());
    ASSERT_NO_FATAL_FAILURE(editTheGroup());
    ASSERT_NO_FATAL_FAILURE(assignTheGroup());
    ASSERT_NO_FATAL_FAILURE(setParameters());
    ASSERT_NO_FATAL_FAILURE(triesToDeleteTheGroup());
    ASSERT_NO_FATAL_FAILURE(removeStands());
    ASSERT_NO_FATAL_FAILURE(deleteTheGroup());
    EXPECT_EQ(everyRow(warehouse), before);
    keep(display.settledPicture(), QStringLiteral("layout-removed"));
    display.key(QStringLiteral("alt+w"));
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(everyRow(warehouse), before);
}

}  // namespace
}  // namespace regalon::test
