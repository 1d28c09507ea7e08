#include "platform/CommonDialog.h"
#include "platform/Screen.h"
#include "platform/Twips.h"
#include "support/Events.h"
#include "views/WatchWindow.h"

#include <QAction>
#include <QTimer>

#include <array>
#include <tuple>

namespace regalon {
namespace {

using test::captionsOf;
using test::keysOf;
using test::WatchWindow;

/// What the window is made of shows without a database, too; loading then ends in a recorded message.
class FrmMagWatchDesign : public WatchWindow {
protected:
    void SetUp() override {}
};

TEST_F(FrmMagWatchDesign, HasItsToolbarsInOrder) {
    open();
    EXPECT_EQ(captionsOf(toolBar("tlbCmd")),
              QStringList({QStringLiteral("&Wyjście"), QStringLiteral("-"), QStringLiteral("Odśwież magazyn"),
                           QStringLiteral("Auto odświeżanie "), QStringLiteral("&Znajdź surowiec")}));
    EXPECT_EQ(toolBar("tlbCmd")->button(QStringLiteral("key_Exit"))->toolTip(), QStringLiteral("Wyjscie"));
    EXPECT_EQ(captionsOf(toolBar("tlbWatchFullSurLocation")),
              QStringList({QStringLiteral("&Podglad wszytkich surowców na lokalizacji"),
                           QStringLiteral("&Zamknij podglad surowców na lokalizacji")}));
    EXPECT_EQ(keysOf(toolBar("tlbCmd")),
              QStringList({QStringLiteral("key_Exit"), QStringLiteral("keySeparator"),
                           QStringLiteral("key_ReBulid"), QStringLiteral("key_AutoRebulid"),
                           QStringLiteral("key_LokkFor")}));
    EXPECT_EQ(keysOf(toolBar("tlbWatchFullSurLocation")),
              QStringList({QStringLiteral("key_Akcept"), QStringLiteral("key_Cancel")}));
    EXPECT_EQ(keysOf(toolBar("tlbStatusRefresh")), QStringList(QStringLiteral("key_Time")));
}

TEST_F(FrmMagWatchDesign, ItsUpperToolbarsLieInTheirCoolBar) {
    open();
    const auto* bar = control<CoolBar>("clbData");
    for (const char* name : {"tlbCmd", "tlbStatusRefresh"})
        EXPECT_TRUE(bar->isAncestorOf(toolBar(name))) << name;
    EXPECT_TRUE(toolBar("tlbStatusRefresh")->isAncestorOf(label("Label9")));
    EXPECT_EQ(label("Label9")->text(), QStringLiteral("[minuta]"));
}

TEST_F(FrmMagWatchDesign, CarriesAFileDialogThatNothingOpens) {
    open();
    EXPECT_NE(control<CommonDialog>("CommonDialog"), nullptr);
}

TEST_F(FrmMagWatchDesign, ShowsTheHallWithItsLettersAndDoors) {
    open();
    const QList<std::array<int, 4>> walls = {{600, 840, 600, 8280},     {14760, 840, 14760, 8280},
                                             {600, 840, 14760, 840},    {600, 8280, 1560, 8280},
                                             {2760, 8280, 12480, 8280}, {13920, 8280, 14760, 8280}};
    for (int number = 1; number <= walls.size(); ++number) {
        const QString name = QStringLiteral("Line%1").arg(number);
        const LineItem* wall = nullptr;
        for (QGraphicsItem* found : canvas()->scene()->items()) {
            if (found->data(PlanData::ArrayName).toString() == name)
                wall = dynamic_cast<LineItem*>(found);
        }
        ASSERT_NE(wall, nullptr) << qPrintable(name);
        EXPECT_EQ((std::array<int, 4>{wall->x1(), wall->y1(), wall->x2(), wall->y2()}), walls.at(number - 1));
    }
    const QList<std::tuple<const char*, QString, int, int>> marks = {
        {"Label1", QStringLiteral("Wejście"), 1800, 7920},
        {"Label2", QStringLiteral("Kolvestra"), 12600, 7560},
        {"Label4", QStringLiteral("A"), 14280, 1600},
        {"Label5", QStringLiteral("B"), 14280, 3960},
        {"Label6", QStringLiteral("C"), 14280, 5160},
        {"Label7", QStringLiteral("D"), 14280, 7560},
        {"Label8", QStringLiteral("E"), 120, 4080}};
    for (const auto& [name, text, left, top] : marks) {
        EXPECT_EQ(label(name)->text(), text);
        EXPECT_EQ(label(name)->pos(), QPoint(toPixels(left), toPixels(top))) << name;
    }
    for (const char* name : {"Label4", "Label5", "Label6", "Label7", "Label8"})
        EXPECT_EQ(label(name)->size(), QSize(toPixels(375), toPixels(495))) << name;
    EXPECT_NE(control<QLabel>("Image1"), nullptr);
    EXPECT_NE(control<QLabel>("Image2"), nullptr);
}

TEST_F(FrmMagWatchDesign, NoCaptionIsCut) {
    open();
    toolBar("tlbWatchFullSurLocation")->show();
    for (const char* name : {"tlbCmd", "tlbWatchFullSurLocation"}) {
        EXPECT_LE(toolBar(name)->sizeHint().width(), toolBar(name)->width()) << name;
        EXPECT_LE(toolBar(name)->sizeHint().height(), toolBar(name)->height()) << name;
    }
    label("lblObjectClick")->setText(QStringLiteral("Rząd: D Regał: 88 Półka: 4 Lokazliacja: 3"));
    for (const char* name :
         {"Label1", "Label2", "Label4", "Label5", "Label6", "Label7", "Label8", "lblObjectClick"}) {
        EXPECT_LE(label(name)->sizeHint().width(), label(name)->width()) << name;
        EXPECT_LE(label(name)->sizeHint().height(), label(name)->height()) << name;
    }
    for (const char* name : {"txtRank", "txtStand", "txtShelf", "txtLocation"})
        EXPECT_TRUE(frame("frmWatchData")->rect().contains(box(name)->geometry())) << name;
}

TEST_F(FrmMagWatchDesign, AltWUnloadsTheWindow) {
    open();
    test::key(window.get(), Qt::Key_W, Qt::AltModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMagWatchDesign, AltWUnloadsTheWindowFromAnyControl) {
    open();
    box("txtRank")->setFocus();
    test::key(box("txtRank"), Qt::Key_W, Qt::AltModifier);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(box("txtRank")->text(), QString());
}

TEST_F(FrmMagWatchDesign, AltWithShiftAndWDoesNotUnload) {
    open();
    test::key(window.get(), Qt::Key_W, Qt::AltModifier | Qt::ShiftModifier);
    EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmMagWatchDesign, AnyKeyTakesTheBusyPointerOff) {
    open();
    Screen::setMousePointer(MousePointer::Custom);
    test::key(window.get(), Qt::Key_F5);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(FrmMagWatchDesign, TheExitButtonUnloadsTheWindow) {
    open();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Exit")));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMagWatchDesign, TheTabKeyWalksThroughTheAddress) {
    open();
    box("txtRank")->setFocus();
    for (const char* next : {"txtStand", "txtShelf", "txtLocation"}) {
        test::key(window->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(window->focusWidget()->objectName(), QString::fromLatin1(next));
    }
}

}  // namespace
}  // namespace regalon
