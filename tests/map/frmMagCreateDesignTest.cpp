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
    /// Expects that every control lies whole in its frame and shows its text whole.
    void expectNothingCut(const char* state) const {
        for (const QGroupBox* outer : window->findChildren<QGroupBox*>()) {
            const QFontMetrics metrics(outer->font());
            EXPECT_LE(metrics.horizontalAdvance(outer->title()) + 2 * metrics.averageCharWidth(),
                      outer->width())
                << state << ": the caption of " << qPrintable(outer->objectName());
            for (const QWidget* inner : controlsOf(outer))
                EXPECT_TRUE(outer->rect().contains(inner->geometry()))
                    << state << ": " << qPrintable(outer->objectName()) << " cuts "
                    << qPrintable(inner->objectName());
        }
        for (const QLabel* text : window->findChildren<QLabel*>()) {
            // The name of a material may be longer than any form is wide.
            if (text->objectName() != u"lblSurOnLOcationData")
                expectRoom(text, state);
        }
        for (const QCheckBox* flag : window->findChildren<QCheckBox*>())
            expectRoom(flag, state);
        for (const ToolBar* bar : window->findChildren<ToolBar*>()) {
            if (bar->isVisible())
                expectButtonsWhole(bar, state);
        }
    }
    /// A button for which a toolbar has no room is taken away; a picture alone needs none beside it.
    static void expectButtonsWhole(const ToolBar* bar, const char* state) {
        for (int number = 1; number <= bar->buttonCount(); ++number) {
            const QWidget* button = bar->widgetForAction(bar->button(number));
            EXPECT_TRUE(button->isVisible() && bar->rect().contains(button->geometry()))
                << state << ": button " << number << " of " << qPrintable(bar->objectName());
            if (!bar->button(number)->text().isEmpty())
                expectRoom(button, state);
        }
    }
    static void expectRoom(const QWidget* widget, const char* state) {
        EXPECT_GE(widget->width(), widget->sizeHint().width())
            << state << ": " << qPrintable(widget->objectName());
    }

    /// Expects that of the visible controls of each frame none lies over another, nor another frame over one
    /// of them. `meant` are those that do.
    void expectOverlaps(const char* state, const QStringList& meant = {}) const {
        QStringList pairs;
        for (const QGroupBox* outer : window->findChildren<QGroupBox*>())
            pairs += overlaps(controlsOf(outer));
        pairs += overlaps(controlsOf(control<QWidget>("surface")));
        EXPECT_EQ(pairs.join(u'\n').toStdString(), meant.join(u'\n').toStdString()) << state;
    }
    static QStringList overlaps(const QList<const QWidget*>& controls) {
        QStringList pairs;
        for (qsizetype upper = 0; upper < controls.size(); ++upper) {
            for (qsizetype lower = 0; lower < upper; ++lower) {
                for (const QWidget* covered : partsOf(controls[lower])) {
                    if (areaOf(covered).intersects(areaOf(controls[upper])))
                        pairs.append(covered->objectName() + QStringLiteral(" under ") +
                                     controls[upper]->objectName());
                }
            }
        }
        return pairs;
    }
    /// The edge of a frame may be covered, its controls not.
    static QList<const QWidget*> partsOf(const QWidget* control) {
        return qobject_cast<const QGroupBox*>(control) != nullptr ? controlsOf(control)
                                                                  : QList<const QWidget*>({control});
    }
    static QRect areaOf(const QWidget* control) {
        return control->isVisible() ? QRect(control->mapTo(control->window(), QPoint()), control->size())
                                    : QRect();
    }
    /// Without the plan, over which all of them lie, and what is only painted: its letters and doors, and the
    /// edges of the frames.
    static QList<const QWidget*> controlsOf(const QWidget* outer) {
        QList<const QWidget*> controls;
        for (const QWidget* inner : outer->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            if (!inner->testAttribute(Qt::WA_TransparentForMouseEvents) &&
                qobject_cast<const MapCanvas*>(inner) == nullptr)
                controls.append(inner);
        }
        return controls;
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
    EXPECT_EQ(keys("tlbDefineGroupOnLocation"), QStringList(QStringLiteral("key_Define")));
    EXPECT_EQ(keys("tlbSaveSurLocalization"),
              QStringList({QStringLiteral("key_Save"), QStringLiteral("key_Cancel")}));
    EXPECT_EQ(keys("tlbSaveParamLocalization"), QStringList(QStringLiteral("key_Save")));
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
    struct Caption {
        const char* name;
        QString text;
    };
    const QString countOfLocations = QStringLiteral("Ilość lokalizacji:");
    const QList<Caption> labels = {{"lblRow", QStringLiteral("Rząd")},
                                   {"lblStand", QStringLiteral("Regał")},
                                   {"lblShelf", QStringLiteral("Półki")},
                                   {"lblShelf_1", countOfLocations},
                                   {"lblShelf_2", countOfLocations},
                                   {"lblShelf_3", countOfLocations},
                                   {"lblShelf_4", countOfLocations},
                                   {"lblIconFileName", QStringLiteral("Nazwa ikonki")},
                                   {"lblLeft", QStringLiteral("Polożenie   X:")},
                                   {"lblTop", QStringLiteral("Y:")},
                                   {"lblDescStand", QStringLiteral("Opis Regału")},
                                   {"lblSurOnLOcation", QStringLiteral("Surowiec na lokalizacji:")},
                                   {"lblNewSurOnLOcation", QStringLiteral("Nowy surowiec  dla lokalizacji:")},
                                   {"lblGroupONLocation", QStringLiteral("Grupa surowców dla lokalizacji:")},
                                   {"lblParamsLocaton", QStringLiteral("Parametry statyczne lokalizacji:")},
                                   {"lblGroupSur", QStringLiteral("Grupy zdefiniowane")},
                                   {"lblNewGroupName", QStringLiteral("Nazwa nowej grupy definiowanej")}};
    for (const Caption& caption : labels)
        EXPECT_EQ(label(caption.name)->text().toStdString(), caption.text.toStdString()) << caption.name;
    // The first shelf begins with a small letter, the picture ends in a blank.
    const QList<Caption> frames = {{"frmShelf_1", QStringLiteral("półka 1")},
                                   {"frmShelf_2", QStringLiteral("Półka 2")},
                                   {"frmShelf_3", QStringLiteral("Półka 3")},
                                   {"frmShelf_4", QStringLiteral("Półka 4")},
                                   {"frmWathSurPicture", QStringLiteral("obraz surowca ")},
                                   {"frmSurowceOnChoise", QStringLiteral("Surowce w magazynie")},
                                   {"frmSurOnGroup", QStringLiteral("Surowce w danej grupie")}};
    for (const Caption& caption : frames)
        EXPECT_EQ(frame(caption.name)->title().toStdString(), caption.text.toStdString()) << caption.name;
    const QList<Caption> checks = {{"chkStandVisable", QStringLiteral("Regał widoczny")},
                                   {"chkStandEnable", QStringLiteral("Regał włączony")},
                                   {"chkStandFrameArround", QStringLiteral("Otoczka regału")},
                                   {"chkFramePozytion", QStringLiteral("Góra")}};
    for (const Caption& caption : checks)
        EXPECT_EQ(check(caption.name)->text().toStdString(), caption.text.toStdString()) << caption.name;
    for (const char* name : {"cmdAddSurOnGroup", "cmdRemovroup"})
        EXPECT_FALSE(control<QPushButton>(name)->icon().isNull()) << name;
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

TEST_F(FrmMagCreateDesign, NothingIsCutAndNothingLiesOverAControlInAnyStateOfTheFrames) {
    // "Góra" and the status of the labels stand in the tool strip.
    const QStringList strip{QStringLiteral("clbData under chkFramePozytion"),
                            QStringLiteral("clbData under lblStatus")};
    open();
    expectNothingCut("at the start");
    expectOverlaps("at the start", strip);
    clickStand(QStringLiteral("1_1"));
    clickLocation(QStringLiteral("1_1_1_1"));
    for (const char* parameter : {"Zdjęcie", "Opis", "Wysokość [mm]", "Status lokalizacji"}) {
        pick("dtcParamLocation", QString::fromUtf8(parameter));
        expectNothingCut(parameter);
        expectOverlaps(parameter, strip);
    }
    test::click(check("chkFramePozytion"));
    expectOverlaps("moved up", strip);
    test::click(check("chkFramePozytion"));
    clickButton("tlbSaveSurLocalization", "key_Cancel");
    // The groups lie over the frame of a location, which therefore is closed here.
    clickButton("tlbCmd", "key_GroupSur");
    choose("dtcGroupSur", QStringLiteral("nowa"));
    expectNothingCut("with the groups");
    expectOverlaps("with the groups", strip);
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

}  // namespace
}  // namespace regalon
