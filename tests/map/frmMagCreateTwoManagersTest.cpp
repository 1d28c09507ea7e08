// Two managers, each with an editor and a connection of his own, lay out the same hall at the same time.
#include "map/LayoutEditor.h"
#include "support/Events.h"

#include <QPlainTextEdit>

#include <utility>

namespace regalon {
namespace {

using test::EmptyHallEditor;

class FrmMagCreateTwoManagers : public EmptyHallEditor {
protected:
    /// Opens both editors; the first manager is at work.
    void openBoth() {
        second.ConnMain = std::make_unique<DbConnection>();
        second.ConnMain->Open(warehouse.server.connectionString());
        second.ErrorService = std::make_unique<clsError>();
        second.PathBitmapMagSur = warehouse.context.PathBitmapMagSur;
        waiting = std::make_unique<frmMagCreate>(second);
        waiting->resize(waiting->sizeHint());
        test::showAndWait(waiting.get());
        open();
    }
    /// The other manager takes his turn.
    void change() { std::swap(window, waiting); }

    void save() { clickButton("tlbSaveStand", "key_Add"); }
    void describe(const QString& text) { enter(control<QPlainTextEdit>("txtDescStand"), text); }
    QString messageText() const {
        return messages.count() == 0 ? QString() : messages.messages().last().Text;
    }

    AppContext second;
    std::unique_ptr<frmMagCreate> waiting;
};

TEST_F(FrmMagCreateTwoManagers, OfTwoWhoChangeOneStandTheLastSaveStandsWhole) {
    addStand(1, 1, QStringLiteral("2"));
    openBoth();
    clickStand(QStringLiteral("1_1"));
    change();
    clickStand(QStringLiteral("1_1"));
    enter(box("txtLeft"), QStringLiteral("6000"));
    enter(box("txtImageName"), QStringLiteral("R1_S_02.ico"));
    enter(combo("cmbShelf_1"), QStringLiteral("3"));
    save();
    const QString locations = QStringLiteral("1/1/1/1;1/1/1/2;1/1/1/3");
    EXPECT_EQ(tables(), QStringLiteral("1/1/R1_S_02.ico/6000/3000/1/YNY/Opis 1 | ") + locations);

    change();
    describe(QStringLiteral("Tylko opis"));
    save();
    // Place, icon and number of locations are those that the first manager had before him.
    EXPECT_EQ(tables(), QStringLiteral("1/1/R1_S_01.ico/2000/3000/1/YNY/Tylko opis | 1/1/1/1;1/1/1/2"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messageText());
}

TEST_F(FrmMagCreateTwoManagers, OfTwoWhoAddAShelfTheSecondGetsTheOneAboveAndTheFirstIsLeftAlone) {
    addStand(1, 1, QStringLiteral("2"));
    openBoth();
    clickStand(QStringLiteral("1_1"));
    choose("dtcShelfCount", QStringLiteral("Nowa"));
    enter(combo("cmbShelf_2"), QStringLiteral("2"));
    change();
    clickStand(QStringLiteral("1_1"));
    choose("dtcShelfCount", QStringLiteral("Nowa"));
    enter(combo("cmbShelf_2"), QStringLiteral("3"));
    save();
    change();
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messageText());
    // The number of a new shelf is asked for at the save; its locations are those of the box that is out of
    // sight until then.
    EXPECT_EQ(warehouse.value(QStringLiteral("select string_agg(concat(Shelf,'/',Location),';') from "
                                             "kolv_mag_Location where Shelf > 1")),
              QStringLiteral("2/1;2/2;2/3;3/1"));
    EXPECT_EQ(warehouse.value(QStringLiteral("select ShelfCount from kolv_mag_Stand")), QStringLiteral("3"));
}

TEST_F(FrmMagCreateTwoManagers, TwoWhoAddAStandToOneRowGetStandsOfTheirOwn) {
    openBoth();
    defineNewStand(QStringLiteral("5000"));
    change();
    defineNewStand(QStringLiteral("7000"));
    save();
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("1"));
    change();
    save();
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("2"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messageText());
    EXPECT_EQ(warehouse.value(QStringLiteral("select string_agg(concat(Stand,'/',StandLeft),';') from "
                                             "kolv_mag_Stand")),
              QStringLiteral("1/7000;2/5000"));
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1, 2);
}

TEST_F(FrmMagCreateTwoManagers, OfTwoWhoWantOnePlaceTheSecondIsRefusedAndNothingIsHalfSaved) {
    openBoth();
    defineNewStand();
    change();
    defineNewStand();
    save();
    const QString saved = tables();
    change();
    save();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messageText(),
              QStringLiteral("W tym miejscu stoi już „Regał 1” (Rząd A). Zmień położenie X lub "
                             "Y tak, aby półki regałów nie zachodziły na siebie."));
    EXPECT_EQ(tables(), saved);
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("-1"));
}

}  // namespace
}  // namespace regalon
