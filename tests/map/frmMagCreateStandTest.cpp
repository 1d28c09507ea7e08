// The choice of row, stand and shelf, and what the form shows of them.
#include "map/LayoutEditor.h"
#include "support/Events.h"

#include <QFile>
#include <QPlainTextEdit>

namespace regalon {
namespace {

using test::EmptyHallEditor;

const QString kShelf1 = QStringLiteral("select 1 as ShelfID ,N'Półka 1' as ShelfName Union ALL ");
const QString kShelf2 = QStringLiteral("select 2 as ShelfID ,N'Półka 2' as ShelfName Union ALL ");
const QString kShelf3 = QStringLiteral("select 3 as ShelfID ,N'Półka 3' as ShelfName Union ALL ");
const QString kChooseShelf = QStringLiteral("select 0 as ShelfID ,N'wybierz' as ShelfName Union all ");
const QString kNewShelf = QStringLiteral("select -1 as ShelfID ,N'Nowa' as ShelfName");

class FrmMagCreateStand : public EmptyHallEditor {
protected:
    /// Numbers of the shelves whose frames show, and of those whose count can be changed.
    QString shownShelves() const {
        return shelvesWhere([this](int n) { return !shelf(n)->isHidden(); });
    }
    QString openShelves() const {
        return shelvesWhere([this](int n) { return count(n)->isEnabled(); });
    }
    QString markedShelves() const {
        return shelvesWhere(
            [this](int n) { return shelf(n)->font().bold() && isBlue(shelf(n)) && isBlue(count(n)); });
    }
    QGroupBox* shelf(int number) const {
        return frame(qPrintable(QStringLiteral("frmShelf_%1").arg(number)));
    }
    QComboBox* count(int number) const {
        return combo(qPrintable(QStringLiteral("cmbShelf_%1").arg(number)));
    }
    QString flags() const {
        QString text;
        for (const char* name : {"chkStandVisable", "chkStandEnable", "chkStandFrameArround"})
            text += check(name)->isChecked() ? QLatin1Char('1') : QLatin1Char('0');
        return text;
    }
    /// What the shelves were asked by, one statement a line.
    QString shelfStatements() const {
        return warehouse.batches().filter(QStringLiteral("as ShelfID")).join(u'\n');
    }
    QString description() const { return control<QPlainTextEdit>("txtDescStand")->toPlainText(); }
    bool hasIcon() const { return !control<PictureBox>("imgWathFindIcon")->picture().isEmpty(); }

private:
    static QString shelvesWhere(const std::function<bool(int)>& holds) {
        QString text;
        for (int number = 1; number <= 4; ++number) {
            if (holds(number))
                text += QString::number(number);
        }
        return text;
    }
    static bool isBlue(const QWidget* widget) {
        return widget->palette().color(QPalette::Active, QPalette::WindowText) == QColor(0, 0, 255);
    }
};

TEST_F(FrmMagCreateStand, WithoutARowTheListsOfferNothingButChoosingAndANewStand) {
    addStand(1, 2, QStringLiteral("12"));
    open();
    EXPECT_EQ(rows("dtcRank"),
              QStringList({QStringLiteral("wybierz"), QStringLiteral("Rząd A"), QStringLiteral("Rząd B")}));
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcRank", QStringLiteral("wybierz"));
    EXPECT_EQ(rows("dtcStand"), QStringList({QStringLiteral("wybierz"), QStringLiteral("Nowy")}));
    EXPECT_EQ(rows("dtcShelfCount"), QStringList(QStringLiteral("wybierz")));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagCreateStand, LoadingBindsTheRowsByTheirStatement) {
    window = std::make_unique<frmMagCreate>(warehouse.context);
    test::showAndWait(window.get());
    EXPECT_EQ(warehouse.batches().first(),
              QStringLiteral("select '0' as Rank,'wybierz' RankName UNION ALL select Rank,RankName from "
                             "kolv_mag_Rank(nolock) order by Rank"));
}

TEST_F(FrmMagCreateStand, ARowOffersItsStandsAndANewOneByTheirStatement) {
    addStand(1, 0, {});
    addStand(2, 0, {});
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    EXPECT_EQ(rows("dtcStand"), QStringList({QStringLiteral("wybierz"), QStringLiteral("Regał 1"),
                                             QStringLiteral("Regał 2"), QStringLiteral("Nowy")}));
    EXPECT_EQ(warehouse.batches().first(),
              QStringLiteral("select 0 as stand , N'wybierz' as StandName UNION ALL select Stand,StandName "
                             "from kolv_mag_Stand(nolock) Where Rank = 1 UNION ALL select -1 as stand , "
                             "N'Nowy' as StandName"));
    EXPECT_TRUE(warehouse.batches().contains(QStringLiteral("select 0 as ShelfID ,N'wybierz' as ShelfName")));
}

TEST_F(FrmMagCreateStand, AClickOnAStandFillsTheForm) {
    addStand(1, 3, QStringLiteral("123"));
    addStand(2, 2, QStringLiteral("31"));
    open();
    clickStand(QStringLiteral("1_2"));
    EXPECT_EQ(choice("dtcRank")->text(), QStringLiteral("Rząd A"));
    EXPECT_EQ(choice("dtcStand")->text(), QStringLiteral("Regał 2"));
    EXPECT_EQ(choice("dtcShelfCount")->text(), QStringLiteral("Półka 1"));
    EXPECT_EQ(box("txtImageName")->text(), QStringLiteral("R1_S_02.ico"));
    EXPECT_EQ(box("txtLeft")->text(), QStringLiteral("3000"));
    EXPECT_EQ(box("txtTop")->text(), QStringLiteral("3000"));
    EXPECT_EQ(flags(), QStringLiteral("101"));
    EXPECT_FALSE(frame("frmDetailsStand")->isHidden());
    EXPECT_EQ(description(), QStringLiteral("Opis 2"));
    EXPECT_TRUE(hasIcon());
    EXPECT_EQ(shownShelves(), QStringLiteral("12"));
    EXPECT_EQ(count(1)->currentText(), QStringLiteral("3"));
    EXPECT_EQ(count(2)->currentText(), QStringLiteral("1"));
    EXPECT_EQ(markedShelves(), QStringLiteral("1"));
    EXPECT_EQ(openShelves(), QStringLiteral("1"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateStand, AChosenStandIsReadByItsStatements) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    warehouse.server.clearTrace();
    choose("dtcStand", QStringLiteral("Regał 1"));
    const QString shelfCount =
        QStringLiteral("select ShelfCount from kolv_mag_Stand(nolock) where Rank = 1 AND Stand = 1");
    const QString locations = QStringLiteral(
        "select count(*) as Location from kolv_mag_Location where Rank = 1 AND Stand = 1 AND Shelf = 1");
    EXPECT_EQ(
        warehouse.batches(),
        QStringList({shelfCount,
                     QStringLiteral("select StandIcon,StandLeft,StandTop,StandVisable,StandEnable,"
                                    "StandFrameArround,StandDescription from kolv_mag_Stand Where Rank = 1 "
                                    "And Stand = 1"),
                     locations, kShelf1 + kNewShelf, shelfCount, locations}));
}

TEST_F(FrmMagCreateStand, TheShelvesOfAStandComeByTheStatementOfItsNumberOfShelves) {
    addStand(1, 2, QStringLiteral("11"));
    addStand(2, 3, QStringLiteral("111"));
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Regał 1"));
    EXPECT_EQ(warehouse.batches().filter(kShelf1), QStringList(kShelf1 + kShelf2 + kNewShelf));
    warehouse.server.clearTrace();
    choose("dtcStand", QStringLiteral("Regał 2"));
    EXPECT_EQ(warehouse.batches().filter(kShelf1), QStringList(kShelf1 + kShelf2 + kShelf3 + kNewShelf));
}

TEST_F(FrmMagCreateStand, AStandOfFourShelvesOffersNoNewOne) {
    addStand(1, 4, QStringLiteral("1111"));
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Regał 1"));
    EXPECT_EQ(rows("dtcShelfCount"), QStringList({QStringLiteral("Półka 1"), QStringLiteral("Półka 2"),
                                                  QStringLiteral("Półka 3"), QStringLiteral("Półka 4")}));
    EXPECT_EQ(warehouse.batches().filter(kShelf1),
              QStringList(kShelf1 + kShelf2 + kShelf3 +
                          QStringLiteral("select 4 as ShelfID ,N'Półka 4' as ShelfName ")));
}

TEST_F(FrmMagCreateStand, TheShelvesOfANewStandComeByTheirStatementWithItsSmallLetters) {
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    warehouse.server.clearTrace();
    choose("dtcStand", QStringLiteral("Nowy"));
    EXPECT_EQ(shelfStatements().toStdString(), (kChooseShelf + kNewShelf).toStdString());
}

TEST_F(FrmMagCreateStand, AStandWhoseNumberOfShelvesIsNotKnownYetOffersThree) {
    addStand(1, -1, {});
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    warehouse.server.clearTrace();
    choose("dtcStand", QStringLiteral("Regał 1"));
    EXPECT_EQ(shelfStatements().toStdString(),
              (kChooseShelf + kShelf1 + kShelf2 + kShelf3 + kNewShelf).toStdString());
    EXPECT_EQ(shownShelves(), QString());
}

TEST_F(FrmMagCreateStand, OnlyTheChosenShelfIsMarkedAndCanBeChanged) {
    addStand(1, 3, QStringLiteral("123"));
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Regał 1"));
    choose("dtcShelfCount", QStringLiteral("Półka 3"));
    EXPECT_EQ(shownShelves(), QStringLiteral("123"));
    EXPECT_EQ(markedShelves(), QStringLiteral("3"));
    EXPECT_EQ(openShelves(), QStringLiteral("3"));
    choose("dtcShelfCount", QStringLiteral("Półka 2"));
    EXPECT_EQ(markedShelves(), QStringLiteral("2"));
    EXPECT_EQ(openShelves(), QStringLiteral("2"));
}

TEST_F(FrmMagCreateStand, ANewShelfIsOfferedAboveTheOthersWithoutANumber) {
    addStand(1, 2, QStringLiteral("12"));
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Regał 1"));
    choose("dtcShelfCount", QStringLiteral("Nowa"));
    EXPECT_EQ(shownShelves(), QStringLiteral("123"));
    EXPECT_EQ(markedShelves(), QStringLiteral("3"));
    EXPECT_EQ(openShelves(), QStringLiteral("3"));
    EXPECT_EQ(count(3)->currentText(), QStringLiteral("-----"));
}

TEST_F(FrmMagCreateStand, ANewStandWithANewShelfOffersShelfOne) {
    addStand(1, 2, QStringLiteral("12"));
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Nowy"));
    EXPECT_EQ(rows("dtcShelfCount"), QStringList({QStringLiteral("wybierz"), QStringLiteral("Nowa")}));
    EXPECT_EQ(shownShelves(), QString());
    EXPECT_EQ(flags(), QStringLiteral("111"));
    EXPECT_EQ(box("txtLeft")->text(), QStringLiteral("0"));
    EXPECT_EQ(box("txtImageName")->text(), QString());
    EXPECT_TRUE(frame("frmDetailsStand")->isHidden());
    choose("dtcShelfCount", QStringLiteral("Nowa"));
    EXPECT_EQ(shownShelves(), QStringLiteral("1"));
    EXPECT_EQ(markedShelves(), QStringLiteral("1"));
    EXPECT_EQ(openShelves(), QStringLiteral("1"));
    EXPECT_EQ(count(1)->currentText(), QStringLiteral("-----"));
}

TEST_F(FrmMagCreateStand, ANewStandAndNoStandShowNothingOfTheOneBefore) {
    addStand(1, 2, QStringLiteral("12"));
    open();
    for (const QString& other : {QStringLiteral("Nowy"), QStringLiteral("wybierz")}) {
        clickStand(QStringLiteral("1_1"));
        ASSERT_TRUE(hasIcon());
        pick("dtcStand", other);
        EXPECT_FALSE(hasIcon()) << qPrintable(other);
        EXPECT_EQ(box("txtImageName")->text(), QString());
        EXPECT_EQ(box("txtLeft")->text() + u'/' + box("txtTop")->text(), QStringLiteral("0/0"));
        EXPECT_EQ(flags(), other == u"Nowy" ? QStringLiteral("111") : QStringLiteral("000"));
        EXPECT_TRUE(frame("frmDetailsStand")->isHidden());
        EXPECT_EQ(description(), QString());
        EXPECT_EQ(shownShelves(), QString());
    }
}

TEST_F(FrmMagCreateStand, AShelfWithoutLocationsShowsTheMarkAlsoBehindAStandWithTheSameShelf) {
    addStand(1, 2, QStringLiteral("12"));
    addStand(2, 2, QStringLiteral("01"));
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Regał 1"));
    choose("dtcStand", QStringLiteral("Regał 2"));
    EXPECT_EQ(count(1)->currentText(), QStringLiteral("-----"));
    EXPECT_EQ(count(2)->currentText(), QStringLiteral("1"));
}

TEST_F(FrmMagCreateStand, AStandWithoutShelvesShowsNoShelf) {
    addStand(1, 0, {});
    open();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Regał 1"));
    EXPECT_EQ(shownShelves(), QString());
    EXPECT_EQ(markedShelves(), QString());
    EXPECT_EQ(openShelves(), QString());
}

TEST_F(FrmMagCreateStand, AMissingIconIsReportedAndTheStandShownWhole) {
    ASSERT_TRUE(warehouse.useOwnIcons());
    addStand(1, 1, QStringLiteral("2"));
    addStand(2, 1, QStringLiteral("3"));
    ASSERT_TRUE(QFile::copy(warehouse.ownIcon(QStringLiteral("Reg.ico")),
                            warehouse.ownIcon(QStringLiteral("R1_S_01.ico"))));
    open();
    messages.clear();
    choose("dtcRank", QStringLiteral("Rząd A"));
    choose("dtcStand", QStringLiteral("Regał 1"));
    EXPECT_EQ(messages.count(), 0);
    EXPECT_TRUE(hasIcon());
    choose("dtcStand", QStringLiteral("Regał 2"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - dtcStand_Change_Object"));
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("53\r\n")))
        << qPrintable(messages.last().Text);
    EXPECT_FALSE(hasIcon());
    EXPECT_EQ(description(), QStringLiteral("Opis 2"));
    EXPECT_EQ(count(1)->currentText(), QStringLiteral("3"));
}

TEST_F(FrmMagCreateStand, APositionThatIsNoNumberKeepsTheKeyboardWithoutAWord) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    for (const char* name : {"txtLeft", "txtTop"}) {
        enter(box(name), QStringLiteral("12a"));
        test::click(box("txtImageName"));
        EXPECT_TRUE(test::waitFor([this, name] { return box(name)->hasFocus(); })) << name;
        enter(box(name), QStringLiteral("1200"));
        test::click(box("txtImageName"));
        EXPECT_TRUE(test::waitFor([this] { return box("txtImageName")->hasFocus(); })) << name;
    }
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateStand, TheIconIsChosenAmongTheFamilyOfTheRow) {
    open();
    choose("dtcRank", QStringLiteral("Rząd B"));
    files.answer(QStringLiteral("C:\\Regalon\\Ikony\\R2_S_07.ico"));
    clickButton("tlbPathIconFile", "key_Path");
    ASSERT_EQ(files.openings().size(), 1);
    EXPECT_EQ(files.openings().first().Filter, QStringLiteral("Pliki graficzne|R2_S_*.ico*"));
    EXPECT_EQ(files.openings().first().Title, QStringLiteral("Wybór pliku graficznego"));
    EXPECT_EQ(files.openings().first().InitDir, QStringLiteral("C:\\Regalon\\Ikony"));
    EXPECT_EQ(box("txtImageName")->text(), QStringLiteral("R2_S_07.ico"));
    EXPECT_TRUE(hasIcon());
}

TEST_F(FrmMagCreateStand, ACancelledChoiceOfAnIconLeavesTheOldOne) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    clickStand(QStringLiteral("1_1"));
    clickButton("tlbPathIconFile", "key_Path");
    EXPECT_EQ(files.openings().size(), 1);
    EXPECT_EQ(box("txtImageName")->text(), QStringLiteral("R1_S_01.ico"));
    EXPECT_TRUE(hasIcon());
}

TEST_F(FrmMagCreateStand, AServerThatIsGoneIsReportedAndTheWindowStays) {
    addStand(1, 1, QStringLiteral("2"));
    open();
    warehouse.server.kill();
    choose("dtcRank", QStringLiteral("Rząd A"));
    // The stands of the row, the number of shelves of the one that stays chosen, and the list of these.
    expectTitles({QStringLiteral("Error -  [FillComboBox]"),
                  QStringLiteral("Error - clsMagCreate [GetShelfCountOnStand]"),
                  QStringLiteral("Error -  [FillComboBox]")});
    EXPECT_TRUE(window->isVisible());
}

}  // namespace
}  // namespace regalon
