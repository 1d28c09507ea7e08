// What the window is made of, without a database: its load then ends in recorded messages.

#include "artwork/Icons.h"
#include "platform/Screen.h"
#include "platform/Twips.h"
#include "stock/ShiftWindow.h"
#include "support/Events.h"

#include <QAction>
#include <QImage>
#include <QSet>

namespace regalon {
namespace {

using test::captionsOf;
using test::keysOf;

class FrmMagWatchShiftLocDesign : public test::ShiftWindow {
protected:
    void SetUp() override {
        loadProgramIcons();
        open();
    }

    /// Shows the frame of the shift with its toolbars as they are in use.
    void showShift() {
        shiftFrame()->show();
        ASSERT_TRUE(shiftFrame()->isVisible());
    }
};

TEST_F(FrmMagWatchShiftLocDesign, HasItsToolbarsInOrder) {
    EXPECT_EQ(captionsOf(toolBar("tlbCmd")),
              QStringList({QStringLiteral("&Wyjście"), QStringLiteral("-"), QStringLiteral("Odśwież magazyn"),
                           QStringLiteral("&Znajdź surowiec")}));
    const QStringList commands = keysOf(toolBar("tlbCmd"));
    EXPECT_EQ(commands.first(), QStringLiteral("key_Exit"));
    EXPECT_EQ(commands.mid(2), QStringList({QStringLiteral("key_ReBulid"), QStringLiteral("key_LokkFor")}));
    EXPECT_EQ(captionsOf(toolBar("tlbAkceptLocation")),
              QStringList(QStringLiteral("&Zatwierdź wybraną lokalizacje")));
    EXPECT_EQ(keysOf(toolBar("tlbAkceptLocation")), QStringList(QStringLiteral("key_AkceptLoc")));
    EXPECT_EQ(captionsOf(toolBar("tlbAkceptItem")),
              QStringList({QStringLiteral("Zatwierdź surowiec do przesunięcia"),
                           QStringLiteral("Anuluj przesunięcie surowca")}));
    EXPECT_EQ(keysOf(toolBar("tlbAkceptItem")),
              QStringList({QStringLiteral("key_AkceptItem"), QStringLiteral("key_Cancel")}));
    EXPECT_EQ(captionsOf(toolBar("tlbAkceptShiftItem")),
              QStringList({QStringLiteral("&Zatwierdź przesunięcie"),
                           QStringLiteral("&Anuluj przesunięcie surowca")}));
    EXPECT_EQ(keysOf(toolBar("tlbAkceptShiftItem")),
              QStringList({QStringLiteral("key_AkceptShiftItem"), QStringLiteral("key_Cancel")}));
    EXPECT_EQ(captionsOf(toolBar("tlbLookForSur")),
              QStringList({QStringLiteral("&Szukaj surowiec"), QStringLiteral("&Anuluj szukanie")}));
    EXPECT_TRUE(control<CoolBar>("clbData")->isAncestorOf(toolBar("tlbCmd")));
}

TEST_F(FrmMagWatchShiftLocDesign, ItsFramesHoldWhatBelongsToThem) {
    EXPECT_EQ(frame("frmWatchData")->title(), QStringLiteral("Status czynności"));
    for (const char* name : {"txtRank", "txtStand", "txtShelf", "txtLocation", "lblObjectClick",
                             "lblObjectParam", "tlbAkceptLocation"})
        EXPECT_TRUE(frame("frmWatchData")->isAncestorOf(control<QWidget>(name))) << name;
    for (const char* name : {"frmWathLocationShiftItem", "frmWathLocationShiftPropLoc"})
        EXPECT_TRUE(shiftFrame()->isAncestorOf(frame(name))) << name;
    for (const char* name : {"lstLocationItem", "lstLocationBarCode", "tlbAkceptItem"})
        EXPECT_TRUE(frame("frmWathLocationShiftItem")->isAncestorOf(control<QWidget>(name))) << name;
    for (const char* name : {"lstSurPropLocation", "tlbAkceptShiftItem"})
        EXPECT_TRUE(frame("frmWathLocationShiftPropLoc")->isAncestorOf(control<QWidget>(name))) << name;
    EXPECT_EQ(items()->geometry(), barCodes()->geometry()) << "one stands in the place of the other";
    for (const ListView* list : {items(), barCodes(), proposals()})
        EXPECT_TRUE(list->checkBoxes()) << qPrintable(list->objectName());
}

TEST_F(FrmMagWatchShiftLocDesign, TheUnitOfTheRefreshIsThereAndHidden) {
    EXPECT_EQ(label("Label9")->text(), QStringLiteral("[minuta]"));
    EXPECT_FALSE(label("Label9")->isVisible());
}

TEST_F(FrmMagWatchShiftLocDesign, TheFrameOfTheShiftLeavesTheRowAtTheLeftWallAndTheAddressFree) {
    showShift();
    const QRect place = shiftFrame()->geometry();
    EXPECT_GT(place.left(), toPixels(650 + 615 + 35)) << "the stands along the wall";
    EXPECT_GE(place.top(), control<QWidget>("clbData")->geometry().bottom());
    EXPECT_LT(place.bottom(), frame("frmWatchData")->geometry().top());
}

TEST_F(FrmMagWatchShiftLocDesign, NoCaptionIsCut) {
    showShift();
    const auto fits = [this](const char* name) {
        EXPECT_LE(toolBar(name)->sizeHint().width(), toolBar(name)->width()) << name;
        EXPECT_LE(toolBar(name)->sizeHint().height(), toolBar(name)->height()) << name;
    };
    for (const char* name : {"tlbCmd", "tlbAkceptLocation", "tlbAkceptItem", "tlbAkceptShiftItem"})
        fits(name);
    toolBar("tlbAkceptItem")->button(1)->setText(QStringLiteral("Zatwierdź jednostkowy surowiec"));
    toolBar("tlbAkceptItem")->button(2)->setText(QStringLiteral("Powrót do wyboru surowca"));
    fits("tlbAkceptItem");
    for (const char* name : {"frmWathLocationShiftItem", "frmWathLocationShiftPropLoc"}) {
        for (const QWidget* inside : frame(name)->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            EXPECT_TRUE(frame(name)->rect().contains(inside->geometry())) << qPrintable(inside->objectName());
    }
    EXPECT_FALSE(toolBar("tlbAkceptItem")->geometry().intersects(items()->geometry()));
    EXPECT_FALSE(toolBar("tlbAkceptShiftItem")->geometry().intersects(proposals()->geometry()));
    EXPECT_FALSE(toolBar("tlbAkceptLocation")->geometry().intersects(label("lblObjectParam")->geometry()));
}

TEST_F(FrmMagWatchShiftLocDesign, ThePicturesOfItsRowsAreThereAndDiffer) {
    QSet<QByteArray> pictures;
    for (const int number : {1, 2, 11, 14, 16, 37, 40, 41, 42, 43}) {
        ListItem* row = items()->addItem(QString());
        ASSERT_NO_THROW(row->setSmallIcon(number)) << number;
        const QImage picture = items()->smallIcons()->icon(number).pixmap(16, 16).toImage().convertToFormat(
            QImage::Format_ARGB32);
        ASSERT_FALSE(picture.isNull()) << number;
        pictures.insert(
            QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
    }
    EXPECT_EQ(pictures.size(), 10);
    items()->clearItems();
}

TEST_F(FrmMagWatchShiftLocDesign, AltWUnloadsTheWindowFromAnyControl) {
    box("txtRank")->setFocus();
    test::key(box("txtRank"), Qt::Key_W, Qt::AltModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMagWatchShiftLocDesign, AltDAndOtherKeysOnlyTakeTheBusyPointerOff) {
    for (const auto& [pressed, modifiers] :
         QList<QPair<Qt::Key, Qt::KeyboardModifiers>>{{Qt::Key_D, Qt::AltModifier},
                                                      {Qt::Key_W, Qt::AltModifier | Qt::ShiftModifier},
                                                      {Qt::Key_W, Qt::NoModifier},
                                                      {Qt::Key_F5, Qt::NoModifier}}) {
        Screen::setMousePointer(MousePointer::Custom);
        test::key(window.get(), pressed, modifiers);
        EXPECT_EQ(Screen::mousePointer(), MousePointer::Default) << pressed;
        EXPECT_TRUE(window->isVisible()) << pressed;
    }
}

TEST_F(FrmMagWatchShiftLocDesign, TheTabKeyWalksThroughTheAddress) {
    box("txtRank")->setFocus();
    for (const char* next : {"txtStand", "txtShelf", "txtLocation"}) {
        test::key(window->focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(window->focusWidget()->objectName(), QString::fromLatin1(next));
    }
}

}  // namespace
}  // namespace regalon
