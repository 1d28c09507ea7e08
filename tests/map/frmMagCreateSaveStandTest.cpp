// Saving and removing a stand: the tests of the form, the calls, and what is left after a refusal.
#include "map/LayoutEditor.h"
#include "support/Events.h"

#include <QPlainTextEdit>

namespace regalon {
namespace {

using test::EmptyHallEditor;

const QString kFarRight = QStringLiteral(
    "Położenie ragału poza granicami magazynu, zmien parametr położenia X - (X(min) = 200 ; "
    "X(max) = 14500) !!!");
const QString kFarDown = QStringLiteral(
    "Położenie ragału poza granicami magazynu, zmien parametr położenia Y  - (Y(min) = 1100 ; "
    "Y(max) = 8500) !!!");
const QString kBadIcon = QStringLiteral("Podana nazwa dla ikony regału jest błędna !!!");
const QString kBadFirst = QStringLiteral("Podana ilość lokalizacji na półce pierwszej jest nie poprawna !!!");

class FrmMagCreateSaveStand : public EmptyHallEditor {
protected:
    void save() { clickButton("tlbSaveStand", "key_Add"); }
    void remove() { clickButton("tlbSaveStand", "key_Remove"); }
    QList<QStringList> validations() const {
        return warehouse.calls(QStringLiteral("kolv_mag_AddBookstandValidate"));
    }
    QList<QStringList> savings() const { return warehouse.calls(QStringLiteral("kolv_mag_AddBookstand")); }

    /// Saves and expects this one message from the test of the form, and no call.
    void refusedByForm(const QString& text) {
        const QString before = tables();
        messages.clear();
        save();
        expectNotice(text);
        EXPECT_EQ(validations().size() + savings().size(), 0);
        EXPECT_EQ(tables(), before);
    }

    /// Saves and expects a failure of the form's test with this number, and no call.
    void failsInForm(qint32 number) {
        const QString before = tables();
        messages.clear();
        save();
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - ValidateDataOnForm"));
        EXPECT_EQ(messages.last().Text, test::windowMessage(number));
        EXPECT_EQ(validations().size() + savings().size(), 0);
        EXPECT_EQ(tables(), before);
    }
};

TEST_F(FrmMagCreateSaveStand, ANewStandGetsTheNumberOfStandsOfItsRow) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    defineNewStand();
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(
        warehouse.value(QStringLiteral("select StandIcon from kolv_mag_Stand where Rank = 1 and Stand = 2")),
        QStringLiteral("R1_S_01.ico"));
    EXPECT_EQ(warehouse.value(QStringLiteral(
                  "select count(*) from kolv_mag_Location where Rank = 1 and Stand = 2 and Shelf = 1")),
              QStringLiteral("2"));
    EXPECT_TRUE(warehouse.batches().contains(
        QStringLiteral("select count(*) as CountStand from kolv_mag_Stand(nolock) where Rank = 1")));
    EXPECT_EQ(choice("dtcRank")->boundText(), QStringLiteral("1"));
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("2"));
    EXPECT_EQ(box("txtLeft")->text(), QStringLiteral("5000"));
    EXPECT_EQ(box("txtTop")->text(), QStringLiteral("4000"));
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 2);
    EXPECT_NE(item("imgBookStand", QStringLiteral("R_1_2_R1_S_01.ico")), nullptr);
}

TEST_F(FrmMagCreateSaveStand, BothProceduresGetTheSameValuesInTheirOrder) {
    addStand(1, 3, QStringLiteral("123"));
    open();
    clickStand(QStringLiteral("1_1"));
    choose("dtcShelfCount", QStringLiteral("Półka 2"));
    enter(combo("cmbShelf_2"), QStringLiteral("3"));
    enter(box("txtImageName"), QStringLiteral("R1_S_05.ico"));
    enter(box("txtLeft"), QStringLiteral("6000"));
    enter(box("txtTop"), QStringLiteral("4500"));
    test::click(check("chkStandEnable"));
    enter(control<QPlainTextEdit>("txtDescStand"), QStringLiteral("Nowy opis"));
    warehouse.server.clearTrace();
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    // Row, stand, shelf, icon, top, left, shelves 1 to 4, three flags, description. The shelf above the
    // chosen one goes as 0 and keeps its locations.
    const QStringList values = {
        QStringLiteral("1"),           QStringLiteral("1"),        QStringLiteral("2"),
        QStringLiteral("R1_S_05.ico"), QStringLiteral("4500"),     QStringLiteral("6000"),
        QStringLiteral("1"),           QStringLiteral("3"),        QStringLiteral("0"),
        QStringLiteral("0"),           QStringLiteral("Y"),        QStringLiteral("Y"),
        QStringLiteral("Y"),           QStringLiteral("Nowy opis")};
    ASSERT_EQ(validations().size(), 1);
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(validations().first().mid(0, values.size()).join(u';').toStdString(),
              values.join(u';').toStdString());
    EXPECT_EQ(savings().first().mid(0, values.size()).join(u';').toStdString(),
              values.join(u';').toStdString());
    EXPECT_EQ(tables().section(u'|', 0, 0), QStringLiteral("1/1/R1_S_05.ico/6000/4500/3/YYY/Nowy opis "));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Location where Shelf = 3")),
              QStringLiteral("3"));
}

TEST_F(FrmMagCreateSaveStand, ANewShelfIsSavedAboveTheOthers) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    choose("dtcShelfCount", QStringLiteral("Nowa"));
    enter(combo("cmbShelf_2"), QStringLiteral("3"));
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(warehouse.value(QStringLiteral("select ShelfCount from kolv_mag_Stand")), QStringLiteral("2"));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Location where Shelf = 2")),
              QStringLiteral("3"));
    EXPECT_FALSE(frame("frmShelf_2")->isHidden());
    EXPECT_EQ(canvas()->imglocation().Count() - 1, 5);
}

TEST_F(FrmMagCreateSaveStand, AShelfWithoutANumberMustBeGivenOne) {
    open();
    defineNewStand();
    enter(combo("cmbShelf_1"), QStringLiteral("-----"));
    refusedByForm(kBadFirst);
    enter(combo("cmbShelf_1"), QStringLiteral("1"));
    save();
    EXPECT_EQ(savings().size(), 1);
}

TEST_F(FrmMagCreateSaveStand, TheCountsAreTestedFromTheFirstShelfUpAndBeforeAllElse) {
    addStand(1, 4, QStringLiteral("1111"));
    open();
    clickStand(QStringLiteral("1_1"));
    enter(box("txtImageName"), QStringLiteral("nie ma.ico"));
    enter(box("txtLeft"), QStringLiteral("1"));
    const std::array<QString, 4> words = {QStringLiteral("pierwszej"), QStringLiteral("drugiej"),
                                          QStringLiteral("trzeciej"), QStringLiteral("czwartej")};
    for (int number = 4; number >= 1; --number) {
        combo(qPrintable(QStringLiteral("cmbShelf_%1").arg(number)))->setCurrentText(QStringLiteral("dwa"));
        refusedByForm(QStringLiteral("Podana ilość lokalizacji na półce %1 jest nie poprawna !!!")
                          .arg(words[static_cast<std::size_t>(number - 1)]));
    }
}

TEST_F(FrmMagCreateSaveStand, TheIconIsTestedBeforeThePlace) {
    open();
    defineNewStand(QStringLiteral("1"), QStringLiteral("1"));
    enter(box("txtImageName"), QStringLiteral("nie ma.ico"));
    refusedByForm(kBadIcon);
    enter(box("txtImageName"), QStringLiteral("  R1_S_01.ico "));
    refusedByForm(kFarRight);
    enter(box("txtLeft"), QStringLiteral("5000"));
    refusedByForm(kFarDown);
}

TEST_F(FrmMagCreateSaveStand, AnIconMustBeNamed) {
    open();
    defineNewStand();
    enter(box("txtImageName"), QString());
    refusedByForm(kBadIcon);
}

TEST_F(FrmMagCreateSaveStand, AnIconFromAnotherFolderIsRefused) {
    open();
    defineNewStand();
    files.answer(QStringLiteral("C:\\Regalon\\Obrazy\\polka.ico"));
    clickButton("tlbPathIconFile", "key_Path");
    EXPECT_EQ(box("txtImageName")->text(), QStringLiteral("polka.ico"));
    refusedByForm(kBadIcon);
}

TEST_F(FrmMagCreateSaveStand, AMarkLeftInAHiddenShelfRefusesAStandOfFewerShelves) {
    addStand(1, 3, QStringLiteral("110"));
    addStand(2, 1, QStringLiteral("1"));
    open();
    clickStand(QStringLiteral("1_1"));
    ASSERT_EQ(combo("cmbShelf_3")->currentText(), QStringLiteral("-----"));
    clickStand(QStringLiteral("1_2"));
    ASSERT_TRUE(frame("frmShelf_3")->isHidden());
    warehouse.server.clearTrace();
    refusedByForm(QStringLiteral("Podana ilość lokalizacji na półce trzeciej jest nie poprawna !!!"));
}

TEST_F(FrmMagCreateSaveStand, TheFarthestPlacesPassAndOneTwipBeyondIsRefused) {
    open();
    defineNewStand(QStringLiteral("14501"), QStringLiteral("8501"));
    refusedByForm(kFarRight);
    enter(box("txtLeft"), QStringLiteral("199"));
    refusedByForm(kFarRight);
    enter(box("txtLeft"), QStringLiteral("14500"));
    refusedByForm(kFarDown);
    enter(box("txtTop"), QStringLiteral("1099"));
    refusedByForm(kFarDown);
    enter(box("txtTop"), QStringLiteral("8500"));
    save();
    EXPECT_EQ(savings().size(), 1) << qPrintable(messages.last().Text);
    EXPECT_EQ(tables().section(u'|', 0, 0).section(u'/', 3, 4), QStringLiteral("14500/8500"));
}

TEST_F(FrmMagCreateSaveStand, TheNearestPlacesPass) {
    open();
    defineNewStand(QStringLiteral("200"), QStringLiteral("1100"));
    save();
    EXPECT_EQ(savings().size(), 1) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagCreateSaveStand, ANumberBeyondSixteenBitsIsAFailureAndNoFaultOfThePlace) {
    open();
    defineNewStand(QStringLiteral("40000"));
    failsInForm(RunTime::Overflow);
    enter(box("txtLeft"), QStringLiteral("5000"));
    enter(box("txtTop"), QStringLiteral("40000"));
    failsInForm(RunTime::Overflow);
}

TEST_F(FrmMagCreateSaveStand, APositionThatIsNoNumberIsAFailure) {
    open();
    defineNewStand();
    for (const char* name : {"txtLeft", "txtTop"}) {
        for (const QString& bad : {QStringLiteral("daleko"), QStringLiteral("12a"), QString()}) {
            enter(box(name), bad);
            failsInForm(RunTime::TypeMismatch);
        }
        enter(box(name), QStringLiteral("4000"));
    }
}

TEST_F(FrmMagCreateSaveStand, ARefusalOfTheDatabaseIsToldAndTheFormKeepsItsEntries) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    const QString before = tables();
    defineNewStand(QStringLiteral("2100"), QStringLiteral("3000"));
    save();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("W tym miejscu stoi już ")))
        << qPrintable(messages.last().Text);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(savings().size(), 0);
    EXPECT_EQ(tables(), before);
    EXPECT_EQ(box("txtLeft")->text(), QStringLiteral("2100"));
    EXPECT_EQ(box("txtImageName")->text(), QStringLiteral("R1_S_01.ico"));
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("-1"));
    EXPECT_EQ(combo("cmbShelf_1")->currentText(), QStringLiteral("2"));
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 1);
}

TEST_F(FrmMagCreateSaveStand, AStandThatAnotherManagerRemovedIsNotMadeAgain) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("delete from kolv_mag_Location where Rank = 1"),
                               QStringLiteral("delete from kolv_mag_Stand where Rank = 1")}));
    save();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_TRUE(messages.last().Text.contains(QStringLiteral("nie istnieje")))
        << qPrintable(messages.last().Text);
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Stand")), QStringLiteral("0"));
}

TEST_F(FrmMagCreateSaveStand, ASaveThatFailsBehindTheValidationLeavesNothingHalfSaved) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    defineNewStand();
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_AddBookstand")}));
    const QString before = tables();
    save();
    EXPECT_EQ(validations().size(), 1);
    expectTitles({QStringLiteral("Error - clsMagCreate [AddBookStandToDB]")});
    EXPECT_EQ(tables(), before);
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("-1"));
    EXPECT_EQ(box("txtLeft")->text(), QStringLiteral("5000"));
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 1);
}

TEST_F(FrmMagCreateSaveStand, AServerThatIsGoneIsToldAndTheFormKeepsItsEntriesForTheNextTry) {
    open();
    defineNewStand();
    warehouse.server.kill();
    save();
    // The number of shelves that a new one goes above, then the validation; nothing behind it.
    expectTitles({QStringLiteral("Error - clsMagCreate [GetShelfCountOnStand]"),
                  QStringLiteral("Error - clsMagCreate [AddBookStandValidate]")});
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("-1"));
    EXPECT_EQ(box("txtLeft")->text(), QStringLiteral("5000"));
    EXPECT_EQ(combo("cmbShelf_1")->currentText(), QStringLiteral("2"));
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    EXPECT_EQ(tables(), QStringLiteral("NULL | NULL"));
}

TEST_F(FrmMagCreateSaveStand, RemovingAsksFirstAndCancelKeepsTheStand) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    messages.answer(MsgResult::Cancel);
    remove();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, QStringLiteral("Jesteś pewien że chcesz usunąc wskazany regał ?"));
    EXPECT_EQ(messages.last().Flags, MsgFlag::OkCancel + MsgFlag::Question);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Stand")), QStringLiteral("1"));
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("1"));
}

TEST_F(FrmMagCreateSaveStand, ARemovedStandLeavesTheListsAndThePlan) {
    addStand(1, 1, QStringLiteral("2"));
    addStand(2, 2, QStringLiteral("21"));
    open();
    clickStand(QStringLiteral("1_2"));
    messages.answer(MsgResult::Ok);
    remove();
    EXPECT_EQ(messages.count(), 1) << qPrintable(messages.last().Text);
    EXPECT_EQ(tables(), QStringLiteral("1/1/R1_S_01.ico/2000/3000/1/YNY/Opis 1 | 1/1/1/1;1/1/1/2"));
    EXPECT_EQ(choice("dtcRank")->boundText(), QStringLiteral("1"));
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("0"));
    EXPECT_EQ(rows("dtcStand"),
              QStringList({QStringLiteral("wybierz"), QStringLiteral("Regał 1"), QStringLiteral("Nowy")}));
    EXPECT_EQ(box("txtImageName")->text(), QString());
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 1);
}

TEST_F(FrmMagCreateSaveStand, WithANewShelfChosenARemovalAsksForTheShelvesAndTakesTheWholeStand) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    choice("dtcShelfCount")->setBoundText(QStringLiteral("-1"));
    warehouse.server.clearTrace();
    messages.answer(MsgResult::Ok);
    remove();
    const QStringList asked = warehouse.batches();
    ASSERT_FALSE(asked.isEmpty());
    EXPECT_EQ(asked.first(),
              QStringLiteral("select ShelfCount from kolv_mag_Stand(nolock) where Rank = 1 AND Stand = 1"));
    EXPECT_EQ(tables(), QStringLiteral("NULL | NULL"));
}

TEST_F(FrmMagCreateSaveStand, ARefusedRemovalIsToldAndChangesNothing) {
    addStand(1, 1, QStringLiteral("2"));
    addStand(2, 1, QStringLiteral("2"));
    open();
    const QString before = tables();
    clickStand(QStringLiteral("1_1"));
    messages.answer(MsgResult::Ok);
    remove();
    ASSERT_EQ(messages.count(), 2);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("Numery regałów")))
        << qPrintable(messages.last().Text);
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_RemoveBookstand")).size(), 0);
    EXPECT_EQ(tables(), before);
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("1"));
}

TEST_F(FrmMagCreateSaveStand, ARemovalThatFailsBehindTheValidationIsToldOnceAndKeepsTheStand) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_RemoveBookstand")}));
    const QString before = tables();
    messages.answer(MsgResult::Ok);
    remove();
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_RemoveBookstandValidate")).size(), 1);
    expectTitles({QStringLiteral("Komunikat"), QStringLiteral("Error - clsMagCreate [RemoveBookStandDB]")});
    EXPECT_EQ(tables(), before);
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("1"));
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 1);
}

TEST_F(FrmMagCreateSaveStand, RemovingWithoutARowOrAStandIsRefusedWithoutAQuestion) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    const QString text = QStringLiteral("Próba usunięcia regału bez wskaznaia rzędu i regału !!");
    remove();
    EXPECT_EQ(messages.last().Text, text);
    choose("dtcRank", QStringLiteral("Rząd A"));
    remove();
    EXPECT_EQ(messages.last().Text, text);
    choose("dtcStand", QStringLiteral("Nowy"));
    remove();
    EXPECT_EQ(messages.last().Text, text);
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_EQ(messages.count(), 3);
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_RemoveBookstandValidate")).size(), 0);
}

}  // namespace
}  // namespace regalon
