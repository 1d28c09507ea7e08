#include "map/LayoutEditor.h"
#include "platform/Screen.h"
#include "platform/Twips.h"
#include "support/Events.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTimer>

namespace regalon {
namespace {

using test::LayoutEditor;

class FrmMagCreateDesign : public LayoutEditor {
protected:
    QStringList captions(const char* name) const {
        const ToolBar* bar = toolBar(name);
        QStringList texts;
        for (int number = 1; number <= bar->buttonCount(); ++number)
            texts.append(bar->button(number)->isSeparator() ? QStringLiteral("-")
                                                            : bar->button(number)->text());
        return texts;
    }
    QStringList keys(const char* name) const {
        const ToolBar* bar = toolBar(name);
        QStringList names;
        for (int number = 1; number <= bar->buttonCount(); ++number)
            names.append(bar->button(number)->objectName());
        return names;
    }
    /// Top of a frame, twips. Places are whole pixels.
    int topOf(const char* name) const { return toTwips(frame(name)->y()); }
};

TEST_F(FrmMagCreateDesign, HasItsToolbarsInOrder) {
    open();
    EXPECT_EQ(captions("tlbCmd"),
              QStringList({QStringLiteral("&Wyjście"), QStringLiteral("-"),
                           QStringLiteral("Wy&druk etykiety"), QStringLiteral("&Szablon etykiety"),
                           QStringLiteral("Grupy surowców"), QStringLiteral("Odśwież magazyn")}));
    EXPECT_EQ(keys("tlbCmd"),
              QStringList({QStringLiteral("key_Exit"), QStringLiteral("keySeparator"),
                           QStringLiteral("key_PrintEtykieteLocation"), QStringLiteral("key_Templete"),
                           QStringLiteral("key_GroupSur"), QStringLiteral("key_RefreshMag")}));
    EXPECT_EQ(captions("tlbSaveStand"),
              QStringList({QStringLiteral("&Pokaż regał"), QStringLiteral("&Zapisz regał"),
                           QStringLiteral("&Usuń regał"), QStringLiteral("&Pokaż magazyn")}));
    EXPECT_EQ(keys("tlbSaveStand"),
              QStringList({QStringLiteral("key_Wath"), QStringLiteral("key_Add"),
                           QStringLiteral("key_Remove"), QStringLiteral("key_Wath_Mag")}));
    EXPECT_EQ(keys("tlbPathIconFile"), QStringList(QStringLiteral("key_Path")));
    EXPECT_EQ(keys("tlbPictureSur"), QStringList(QStringLiteral("key_Path")));
    EXPECT_EQ(captions("tlbDefineGroupOnLocation"), QStringList(QStringLiteral("&Grupy surowców")));
    EXPECT_EQ(captions("tlbSaveSurLocalization"),
              QStringList({QStringLiteral("&Zapisz"), QStringLiteral("&Anuluj")}));
    EXPECT_EQ(captions("tlbSaveParamLocalization"), QStringList(QStringLiteral("&Zapisz parametr")));
    EXPECT_EQ(captions("tlbSaveGroupLocation"),
              QStringList({QStringLiteral("&Usuń"), QStringLiteral("&Anuluj"), QStringLiteral("&Zapisz")}));
    EXPECT_EQ(keys("tlbSaveGroupLocation"),
              QStringList(
                  {QStringLiteral("key_Delete"), QStringLiteral("key_Cancel"), QStringLiteral("key_Save")}));
}

TEST_F(FrmMagCreateDesign, OpensWithThePlanAndTheFrameOfTheStandOnly) {
    open();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Zarządzanie magazynem"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1,
              warehouse.value(QStringLiteral("select count(*) from kolv_mag_Stand")).toInt());
    EXPECT_EQ(canvas()->imglocation().Count() - 1,
              warehouse.value(QStringLiteral("select count(*) from kolv_mag_Location")).toInt());
    EXPECT_TRUE(frame("frmCreate")->isVisible());
    for (const char* name : {"frmAddSurOnLocalization", "frmDetailsStand", "frmDefGroupLocation",
                             "frmWathSurPicture", "frmShelf_1", "frmShelf_2", "frmShelf_3", "frmShelf_4"})
        EXPECT_TRUE(frame(name)->isHidden()) << name;
    EXPECT_TRUE(combo("cmbStatusLocation")->isHidden());
    EXPECT_FALSE(toolBar("tlbCmd")->button(3)->isEnabled());
    EXPECT_FALSE(control<QTimer>("Timer1")->isActive());
    EXPECT_EQ(control<QTimer>("Timer1")->interval(), 1000);
}

TEST_F(FrmMagCreateDesign, ShelfListsHoldTheCountsWithTheMarkOfAnUndefinedOneSecond) {
    open();
    for (const char* name : {"cmbShelf_1", "cmbShelf_2", "cmbShelf_3", "cmbShelf_4"}) {
        EXPECT_EQ(rows(name), QStringList({QStringLiteral("0"), QStringLiteral("-----"), QStringLiteral("1"),
                                           QStringLiteral("2"), QStringLiteral("3")}))
            << name;
        EXPECT_EQ(combo(name)->currentText(), QStringLiteral("1")) << name;
    }
    EXPECT_EQ(rows("cmbStatusLocation"),
              QStringList({QStringLiteral("Mono Indeksowa"), QStringLiteral("Multi Indeksowa")}));
}

TEST_F(FrmMagCreateDesign, CaptionsStandAsTheManualShowsThem) {
    open();
    EXPECT_EQ(label("lblLeft")->text(), QStringLiteral("Polożenie   X:"));
    EXPECT_EQ(label("lblIconFileName")->text(), QStringLiteral("Nazwa ikonki"));
    EXPECT_EQ(label("lblNewSurOnLOcation")->text(), QStringLiteral("Nowy surowiec  dla lokalizacji:"));
    EXPECT_EQ(frame("frmShelf_1")->title(), QStringLiteral("półka 1"));
    EXPECT_EQ(frame("frmShelf_2")->title(), QStringLiteral("Półka 2"));
    EXPECT_EQ(frame("frmWathSurPicture")->title(), QStringLiteral("obraz surowca "));
    EXPECT_EQ(check("chkStandFrameArround")->text(), QStringLiteral("Otoczka regału"));
    EXPECT_EQ(check("chkFramePozytion")->text(), QStringLiteral("Góra"));
}

TEST_F(FrmMagCreateDesign, GoraMovesTheFramesUpAndBack) {
    open();
    const int height = toTwips(frame("frmAddSurOnLocalization")->height());
    EXPECT_NEAR(topOf("frmCreate"), 7000, TwipsPerPixel);
    EXPECT_NEAR(topOf("frmAddSurOnLocalization"), 7000 - height + 70, TwipsPerPixel);
    test::click(check("chkFramePozytion"));
    const int upper = toTwips(window->y()) + 2 * toTwips(toolBar("tlbCmd")->height()) + 100;
    EXPECT_NEAR(topOf("frmCreate"), upper, TwipsPerPixel);
    EXPECT_NEAR(topOf("frmAddSurOnLocalization"), upper + toTwips(frame("frmCreate")->height()),
                TwipsPerPixel);
    test::click(check("chkFramePozytion"));
    EXPECT_NEAR(topOf("frmCreate"), 7000, TwipsPerPixel);
    EXPECT_NEAR(topOf("frmAddSurOnLocalization"), 7000 - height + 70, TwipsPerPixel);
}

TEST_F(FrmMagCreateDesign, NoControlAndNoTextIsCut) {
    open();
    for (const char* name : {"frmCreate", "frmAddSurOnLocalization", "frmDefGroupLocation"}) {
        const QGroupBox* outer = frame(name);
        for (const QWidget* inner : outer->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            EXPECT_TRUE(outer->rect().contains(inner->geometry()))
                << name << " cuts " << qPrintable(inner->objectName());
        }
    }
    for (const QLabel* text : frame("frmCreate")->findChildren<QLabel*>())
        EXPECT_GE(text->width(), text->sizeHint().width()) << qPrintable(text->text());
    for (const char* name : {"lblSurOnLOcation", "lblNewSurOnLOcation", "lblGroupONLocation",
                             "lblParamsLocaton", "lblGroupSur", "lblNewGroupName"})
        EXPECT_GE(label(name)->width(), label(name)->sizeHint().width()) << name;
    for (const char* name : {"tlbSaveStand", "tlbSaveSurLocalization", "tlbSaveParamLocalization",
                             "tlbDefineGroupOnLocation", "tlbSaveGroupLocation"})
        EXPECT_GE(toolBar(name)->width(), toolBar(name)->sizeHint().width()) << name;
}

TEST_F(FrmMagCreateDesign, AltWClosesTheWindowAndTakesTheBusyPointerOff) {
    open();
    Screen::setMousePointer(MousePointer::Custom);
    test::key(box("txtImageName"), Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_TRUE(window->isVisible());
    test::key(box("txtImageName"), Qt::Key_W, Qt::AltModifier);
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMagCreateDesign, TheExitButtonClosesTheFrameInTheMainWindow) {
    QMdiArea area;
    window = std::make_unique<frmMagCreate>(warehouse.context);
    QMdiSubWindow* outer = area.addSubWindow(window.get());
    outer->setAttribute(Qt::WA_DeleteOnClose, false);
    area.resize(1030, 700);
    test::showAndWait(&area);
    clickButton("tlbCmd", "key_Exit");
    EXPECT_FALSE(outer->isVisible());
    window->setParent(nullptr);
}

TEST_F(FrmMagCreateDesign, OpenedAgainItReadsTheWarehouseAnewWithTheFormAsDesigned) {
    open();
    clickStand(QStringLiteral("1_2"));
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("2"));
    window->unload();
    window->show();
    EXPECT_EQ(choice("dtcRank")->boundText(), QStringLiteral("0"));
    EXPECT_EQ(choice("dtcStand")->boundText(), QStringLiteral("0"));
    EXPECT_TRUE(frame("frmShelf_1")->isHidden());
    EXPECT_EQ(warehouse.batches().filter(QStringLiteral("from kolv_mag_Stand order by Rank,Stand")).size(),
              1);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateDesign, RefreshingTheWarehouseHasTheFillsRecomputedFirst) {
    open();
    clickButton("tlbCmd", "key_RefreshMag");
    EXPECT_EQ(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).size(), 1);
    EXPECT_EQ(warehouse.batches().filter(QStringLiteral("from kolv_mag_Stand order by Rank,Stand")).size(),
              1);
}

}  // namespace
}  // namespace regalon
