#include "platform/Twips.h"
#include "support/Events.h"
#include "views/DetailWindow.h"

#include <QAction>

#include <array>
#include <tuple>

namespace regalon {
namespace {

using test::DetailWindow;

/// What the window is made of shows without a database, too; loading then ends in recorded messages.
class FrmMagWatchDetalDesign : public DetailWindow {
protected:
    void SetUp() override {}

    /// Left, top, width and height of a control in its parent, as they are placed in whole pixels.
    static QRect pixels(int left, int top, int width, int height) {
        return {QPoint(toPixels(left), toPixels(top)),
                QPoint(toPixels(left + width) - 1, toPixels(top + height) - 1)};
    }
};

TEST_F(FrmMagWatchDetalDesign, HasAClientAreaOf8040By4155TwipsAndNoFrame) {
    open();
    EXPECT_EQ(window->size(), QSize(536, 277));
    EXPECT_TRUE(window->windowFlags().testFlag(Qt::FramelessWindowHint));
    EXPECT_EQ(window->objectName(), QStringLiteral("frmMagWatchDetal"));
}

TEST_F(FrmMagWatchDetalDesign, ItsControlsStandWhereTheyBelong) {
    open();
    const QList<std::tuple<const char*, const char*, QRect>> places = {
        {"frmParamStand", "frmMagWatchDetal", pixels(600, -90, 6855, 495)},
        {"frmSurLocation", "frmMagWatchDetal", pixels(720, 3630, 6615, 470)},
        {"frmSurLocationParamStatic", "frmMagWatchDetal", pixels(2355, 480, 5655, 3135)},
        {"frmLocationData", "frmParamStatic", pixels(120, 1800, 4935, 495)},
        {"txtShelf", "frmMagWatchDetal", pixels(6840, 120, 615, 285)},
        {"txtLocation", "frmMagWatchDetal", pixels(6120, 120, 615, 285)},
        {"frmParamStatic", "frmSurLocationParamStatic", pixels(240, 480, 5175, 2415)},
        {"frmParamPicture", "frmSurLocationParamStatic", pixels(240, 480, 5175, 2415)},
        {"impPictureParam", "frmParamPicture", pixels(120, 240, 4935, 1935)},
        {"frmParamInfo", "frmSurLocationParamStatic", pixels(240, 480, 5175, 2415)},
        {"frmWathLocationShiftItem", "frmMagWatchDetal", pixels(75, 480, 7935, 3195)},
        {"cmdClose_1", "frmMagWatchDetal", pixels(240, 0, 375, 375)},
        {"cmdClose_2", "frmMagWatchDetal", pixels(240, 3720, 375, 375)},
        {"cmdClose_3", "frmMagWatchDetal", pixels(7440, 0, 375, 375)},
        {"cmdClose_4", "frmMagWatchDetal", pixels(7440, 3720, 375, 375)}};
    for (const auto& [name, parent, place] : places) {
        EXPECT_EQ(control<QWidget>(name)->geometry(), place) << name;
        EXPECT_EQ(control<QWidget>(name)->parentWidget()->objectName(), QString::fromLatin1(parent)) << name;
    }
}

TEST_F(FrmMagWatchDetalDesign, TheDrawingHasTwelvePlacesAStandAndAFrame) {
    open();
    for (int index = 0; index < 12; ++index) {
        const PictureItem* place = item("imglocation", index);
        ASSERT_NE(place, nullptr);
        EXPECT_EQ(place->left(), 360 + index % 3 * 600);
        EXPECT_EQ(place->top(), 600 + index / 3 * 600);
        EXPECT_EQ(place->height(), 555);
        EXPECT_TRUE(place->stretch());
    }
    const PictureItem* stand = item("imgBookStand");
    EXPECT_EQ((std::array<int, 4>{stand->left(), stand->top(), stand->width(), stand->height()}),
              (std::array<int, 4>{360, 3000, 1755, 510}));
    EXPECT_TRUE(stand->stretch());
    const std::array<std::array<int, 4>, 4> lines = {
        {{280, 555, 280, 3555}, {2200, 550, 2200, 3555}, {285, 3555, 2205, 3555}, {285, 550, 2200, 550}}};
    for (int index = 0; index < 4; ++index) {
        const auto* line = item<LineItem>("lnnFrame", index);
        ASSERT_NE(line, nullptr);
        EXPECT_TRUE(line->isVisible());
        EXPECT_EQ((std::array<int, 4>{line->x1(), line->y1(), line->x2(), line->y2()}),
                  lines[static_cast<std::size_t>(index)]);
    }
}

TEST_F(FrmMagWatchDetalDesign, HasItsCaptionsTabsAndButtons) {
    open();
    const QList<std::pair<const char*, const char*>> captions = {
        {"Label1", "Surowiec:"},
        {"lblProcent", "Zapełnienie:"},
        {"Label11", "%"},
        {"Label5", "Wysokość:"},
        {"Label7", "[mm]"},
        {"Label6", "Szerokość:"},
        {"Label9", "[mm]"},
        {"Label8", "Głębokość:"},
        {"Label10", "[mm]"},
        {"label18", "Nośność:"},
        {"Label12", "[kg]"},
        {"Label2", "Grupa:"},
        {"Label13", "Magazyn:"},
        {"Label14", "Bufor:"},
        {"Label15", "Suma linijek procentu wypelnienia:"},
        {"Label16", "%"},
        {"Label4", "Informacja o regale"},
        {"Label3", "Informacja o lokalizacji"}};
    for (const auto& [name, caption] : captions)
        EXPECT_EQ(text(name), QString::fromUtf8(caption)) << name;
    const auto* tabs = control<TabStrip>("tabSurParam");
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(tabs->tabText(0), QStringLiteral("Parametry statyczne lokalizacji"));
    EXPECT_EQ(tabs->tabText(1), QStringLiteral("Rysunek surowca na lokalizacji"));
    EXPECT_EQ(tabs->tabText(2), QStringLiteral("Info"));
    EXPECT_EQ(tabs->tabKey(1), QStringLiteral("key_static_param"));
    EXPECT_EQ(tabs->tabKey(2), QStringLiteral("key_picture_param"));
    EXPECT_EQ(tabs->tabKey(3), QStringLiteral("key_info_param"));
    const auto* open = control<ToolBar>("tlbWatchFullSurLocation");
    ASSERT_EQ(open->buttonCount(), 1);
    EXPECT_EQ(open->button(1)->text(), QStringLiteral("&Surowce "));
    EXPECT_EQ(open->button(1)->objectName(), QStringLiteral("key_Akcept"));
    const auto* cancel = control<ToolBar>("tlbCancelWatchSur");
    ASSERT_EQ(cancel->buttonCount(), 1);
    EXPECT_EQ(cancel->button(1)->text(), QStringLiteral("&Zamknij podglad surowców"));
    EXPECT_EQ(cancel->button(1)->objectName(), QStringLiteral("key_Cancel"));
    EXPECT_TRUE(control<QPlainTextEdit>("txtParamInfoStand")->isReadOnly());
    EXPECT_TRUE(control<QPlainTextEdit>("txtParamInfoLocation")->isReadOnly());
}

TEST_F(FrmMagWatchDetalDesign, ShowsTheFirstTabAlone) {
    open();
    EXPECT_TRUE(visible("frmParamStatic"));
    for (const char* name :
         {"frmParamPicture", "frmParamInfo", "frmWathLocationShiftItem", "tlbWatchFullSurLocation"})
        EXPECT_FALSE(visible(name)) << name;
    clickTab(2);
    EXPECT_TRUE(visible("frmParamPicture"));
    EXPECT_FALSE(visible("frmParamStatic"));
    clickTab(3);
    EXPECT_TRUE(visible("frmParamInfo"));
    EXPECT_FALSE(visible("frmParamPicture"));
    clickTab(1);
    EXPECT_TRUE(visible("frmParamStatic"));
    EXPECT_FALSE(visible("frmParamInfo"));
}

TEST_F(FrmMagWatchDetalDesign, NoTextIsCut) {
    window = std::make_unique<frmMagWatchDetal>(warehouse.context);
    window->setShelfCount(4);
    window->setLocationCount(12);
    open(6, 100);
    control<QWidget>("tlbWatchFullSurLocation")->show();
    const QList<std::pair<const char*, const char*>> values = {{"lblProcentData", "100"},
                                                               {"lblHeight", "32767"},
                                                               {"lblWidth", "32767"},
                                                               {"lblDep", "32767"},
                                                               {"lblWeight", "32767"},
                                                               {"lblQuantityData", "12345678,25"},
                                                               {"lblQuantityBufData", "12345678,25"},
                                                               {"lblProcentSumLineData", "12345,67"},
                                                               {"lblGroup", "Pręty i kształtowniki"},
                                                               {"lblLocationData", "Rząd : F   Regał: 100"}};
    for (const auto& [name, value] : values)
        control<QLabel>(name)->setText(QString::fromUtf8(value));
    for (const QLabel* label : window->findChildren<QLabel*>()) {
        EXPECT_LE(label->sizeHint().width(), label->width()) << qPrintable(label->objectName());
        EXPECT_LE(label->sizeHint().height(), label->height()) << qPrintable(label->objectName());
    }
    for (const ToolBar* bar : window->findChildren<ToolBar*>()) {
        EXPECT_LE(bar->sizeHint().width(), bar->width()) << qPrintable(bar->objectName());
        EXPECT_LE(bar->sizeHint().height(), bar->height()) << qPrintable(bar->objectName());
    }
    const auto* tabs = control<TabStrip>("tabSurParam");
    EXPECT_TRUE(tabs->rect().contains(tabs->tabRect(2)));
    EXPECT_LE(control<QLabel>("lblParamStand")->mapTo(window.get(), QPoint()).x() +
                  control<QLabel>("lblParamStand")->width(),
              control<QLineEdit>("txtLocation")->x());
}

TEST_F(FrmMagWatchDetalDesign, EachOfTheFourButtonsClosesTheWindow) {
    for (const char* name : {"cmdClose_1", "cmdClose_2", "cmdClose_3", "cmdClose_4"}) {
        open();
        test::click(control<QPushButton>(name));
        EXPECT_FALSE(window->isVisible()) << name;
    }
}

TEST_F(FrmMagWatchDetalDesign, EscapeAndEnterDoNotCloseTheWindow) {
    open();
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter}) {
        test::key(control<QLineEdit>("txtShelf"), key);
        EXPECT_TRUE(window->isVisible()) << key;
        test::key(window.get(), key);
        EXPECT_TRUE(window->isVisible()) << key;
    }
}

}  // namespace
}  // namespace regalon
