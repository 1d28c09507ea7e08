#include "platform/Screen.h"
#include "platform/Twips.h"
#include "support/Events.h"
#include "views/WatchWindow.h"
#include "views/frmMagWatch.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QTimer>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::WatchWindow;

class FrmMagWatch : public WatchWindow {};

TEST_F(FrmMagWatch, OpensWithThePlanDrawnAndTheOptionalPanelsHidden) {
    open();
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Podgląd magazynu"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(canvas()->imgBookStand().Count() - 1,
              warehouse.value(QStringLiteral("select count(*) from kolv_mag_Stand")).toInt());
    EXPECT_EQ(canvas()->imglocation().Count() - 1,
              warehouse.value(QStringLiteral("select count(*) from kolv_mag_Location")).toInt());
    EXPECT_TRUE(frame("frmWatchData")->isVisible());
    EXPECT_EQ(frame("frmWatchData")->title(), QStringLiteral("Status czynności"));
    for (const char* name : {"frmAutoRebulidCOnfig", "frmLookForSur", "frmWathLocationShiftItem"})
        EXPECT_FALSE(frame(name)->isVisible()) << name;
    for (const char* name : {"tlbStatusRefresh", "tlbWatchFullSurLocation"})
        EXPECT_FALSE(toolBar(name)->isVisible()) << name;
    for (const char* name : {"lblObjectClick", "lblObjectParam", "lblObjectParam2"})
        EXPECT_EQ(label(name)->text(), QString()) << name;
    EXPECT_FALSE(control<QTimer>("Timer1")->isActive());
    EXPECT_EQ(control<QTimer>("Timer1")->interval(), 1000);
}

TEST_F(FrmMagWatch, AClickOnALocationTellsItsMaterial) {
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("delete from kolv_mag_Location_Item where Rank = 1 and Stand = 2 and "
                                      "Shelf = 1 and Location = 1"),
                       QStringLiteral("insert into kolv_mag_Location_Item "
                                      "(Rank,Stand,Shelf,Location,ItemCode,ItemName,GroupSur,"
                                      "StatLocation_cmb) values "
                                      "(1,2,1,1,N'SUR-77',N'Śruba żółta',0,N'0')")}))
        << qPrintable(warehouse.why());
    open();
    warehouse.server.clearTrace();
    clickLocation(QStringLiteral("1_2_1_1"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: A Regał: 2 Półka: 1 Lokazliacja: 1"));
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral("SUR-77 - Śruba żółta"));
    EXPECT_EQ(label("lblObjectParam2")->text(), QString());
    EXPECT_FALSE(toolBar("tlbWatchFullSurLocation")->isVisible());
    EXPECT_EQ(address(), QStringLiteral("1 2 1 1"));
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(QStringLiteral(
            " select A.ItemCode,A.ItemName,A.GroupSur,B.GroupSurName,A.StatLocation_cmb from "
            "kolv_mag_Location_Item A  left join kolv_mag_Location_Group B ON A.GroupSur = B.GroupSur where "
            "Rank = 1 and Stand = 2 and  Shelf = 1 and Location = 1")));
}

TEST_F(FrmMagWatch, ALocationWithoutARowReadsAsHavingNoMaterial) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral(
             "delete from kolv_mag_Location_Item where Rank = 1 and Stand in (2, 3) and Shelf = 1"),
         QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,GroupSur) values "
                        "(1,3,1,1,1)")}));
    open();
    clickLocation(QStringLiteral("1_3_1_1"));
    ASSERT_TRUE(toolBar("tlbWatchFullSurLocation")->isVisible());
    ASSERT_NE(label("lblObjectParam2")->text(), QString());
    clickLocation(QStringLiteral("1_2_1_1"));
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral("Brak przypisanego surowca"));
    EXPECT_EQ(label("lblObjectParam2")->text(), QString());
    EXPECT_FALSE(toolBar("tlbWatchFullSurLocation")->isVisible());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatch, ALocationWithAGroupOffersItsListAndNamesTheGroup) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("delete from kolv_mag_Location_Item where Rank = 1 and Stand = 2 and Shelf = 1"),
         QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                        "(900,N'Żywice',N'Y')"),
         QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,GroupSur) values "
                        "(1,2,1,1,900)")}))
        << qPrintable(warehouse.why());
    open();
    clickLocation(QStringLiteral("1_2_1_1"));
    EXPECT_EQ(label("lblObjectParam2")->text(), QStringLiteral("Grupa przypisana: Żywice"));
    // NULL code and name read as empty texts.
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral(" - "));
    EXPECT_TRUE(toolBar("tlbWatchFullSurLocation")->isVisible());
    EXPECT_TRUE(toolBar("tlbWatchFullSurLocation")->button(1)->isEnabled());
    EXPECT_FALSE(toolBar("tlbWatchFullSurLocation")->button(2)->isEnabled());
}

TEST_F(FrmMagWatch, SeveralMaterialsWithoutAGroupReadAsAGroupWithoutAName) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("delete from kolv_mag_Location_Item where Rank = 1 and Stand = 2 and Shelf = 1"),
         QStringLiteral(
             "insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,StatLocation_cmb) values "
             "(1,2,1,1,N'1')")}));
    open();
    clickLocation(QStringLiteral("1_2_1_1"));
    EXPECT_EQ(label("lblObjectParam2")->text(), QStringLiteral("Grupa przypisana: "));
    EXPECT_TRUE(toolBar("tlbWatchFullSurLocation")->isVisible());
}

TEST_F(FrmMagWatch, AClickOnAStandOpensItsDetail) {
    // From a location that shows its group: nothing of it may stay.
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("delete from kolv_mag_Location_Item where Rank = 1 and Stand = 2 and Shelf = 1"),
         QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,GroupSur) values "
                        "(1,2,1,1,1)")}))
        << qPrintable(warehouse.why());
    open();
    window->setTopStand(300);
    window->setLeftStand(450);
    clickLocation(QStringLiteral("1_2_1_1"));
    ASSERT_TRUE(toolBar("tlbWatchFullSurLocation")->isVisible());
    ASSERT_NE(label("lblObjectParam")->text(), QString());
    ASSERT_NE(label("lblObjectParam2")->text(), QString());
    warehouse.server.clearTrace();
    clickStand(QStringLiteral("1_2"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: A Regał: 2"));
    EXPECT_EQ(label("lblObjectParam")->text(), QString());
    EXPECT_EQ(label("lblObjectParam2")->text(), QString());
    EXPECT_FALSE(toolBar("tlbWatchFullSurLocation")->isVisible());
    EXPECT_EQ(address(), QStringLiteral("-1 -1 -1 -1"));
    EXPECT_EQ(warehouse.batches(),
              QStringList(
                  QStringLiteral("select count(*) Location,max(Shelf) as Shelf from kolv_mag_Location where  "
                                 "Stand = 2 AND Rank = 1")));
    ASSERT_EQ(details.size(), 1);
    const PictureItem* stand = item("imgBookStand", QStringLiteral("R_1_2_"));
    EXPECT_EQ(details[0].TopStand, 300 + stand->top() + 1300 + 150);
    EXPECT_EQ(details[0].LeftStand, 450 + stand->left() + 50);
    EXPECT_EQ(details[0].Rank, 1);
    EXPECT_EQ(details[0].Stand, 2);
    const QString where = QStringLiteral(" from kolv_mag_Location where Rank = 1 and Stand = 2");
    EXPECT_EQ(details[0].ShelfCount, warehouse.value(QStringLiteral("select max(Shelf)") + where).toInt());
    EXPECT_EQ(details[0].LocationCount, warehouse.value(QStringLiteral("select count(*)") + where).toInt());
}

TEST_F(FrmMagWatch, TheDetailOfAStandWithoutLocationsOpensWithNoneOfThem) {
    open();
    clickStand(QStringLiteral("5_6"));
    ASSERT_EQ(details.size(), 1);
    EXPECT_EQ(details[0].ShelfCount, 0);
    EXPECT_EQ(details[0].LocationCount, 0);
}

TEST_F(FrmMagWatch, ARowAboveSixShowsAnEmptyLetter) {
    ASSERT_TRUE(warehouse.addStand(7, 3, 1, QStringLiteral("1"), 12600, 7000));
    open();
    clickStand(QStringLiteral("7_3"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd:  Regał: 3"));
    clickLocation(QStringLiteral("7_3_1_1"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd:  Regał: 3 Półka: 1 Lokazliacja: 1"));
}

TEST_F(FrmMagWatch, AClickBesideEverythingDoesNothing) {
    open();
    test::clickAt(canvas()->viewport(), QPoint(toPixels(13500), toPixels(4600)));
    EXPECT_EQ(label("lblObjectClick")->text(), QString());
    EXPECT_TRUE(details.isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatch, RebuildingShowsTheWarehouseAsItIsNow) {
    open();
    const int before = canvas()->imgBookStand().Count();
    ASSERT_TRUE(warehouse.addStand(6, 1, 1, QStringLiteral("2"), 12600, 7000));
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_ReBulid")));
    EXPECT_EQ(canvas()->imgBookStand().Count(), before + 1);
    EXPECT_EQ(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")),
              QList<QStringList>({{QStringLiteral("N")}}));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    clickLocation(QStringLiteral("6_1_1_2"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: F Regał: 1 Półka: 1 Lokazliacja: 2"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatch, AltDHasNoEffect) {
    open();
    clickLocation(QStringLiteral("1_2_1_1"));
    const QString before = label("lblObjectClick")->text();
    test::key(window.get(), Qt::Key_D, Qt::AltModifier);
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(label("lblObjectClick")->text(), before);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatch, InsideTheMainWindowExitTakesItsFrameAlong) {
    QMdiArea area;
    auto* view = new frmMagWatch(warehouse.context);
    QPointer<QMdiSubWindow> sub = area.addSubWindow(view);
    sub->setAttribute(Qt::WA_DeleteOnClose);
    area.resize(1030, 690);
    test::showAndWait(&area);
    view->show();
    ASSERT_TRUE(test::clickToolButton(view, QStringLiteral("key_Exit")));
    EXPECT_TRUE(test::waitFor([&] { return sub.isNull(); }));
}

TEST_F(FrmMagWatch, ShownAgainWithoutClosingItKeepsItsState) {
    open();
    clickLocation(QStringLiteral("1_2_1_1"));
    warehouse.server.clearTrace();
    window->hide();
    window->show();
    EXPECT_NE(label("lblObjectClick")->text(), QString());
    EXPECT_TRUE(warehouse.batches().isEmpty());
}

TEST_F(FrmMagWatch, ShownAgainAfterClosingItLoadsAnew) {
    open();
    clickLocation(QStringLiteral("1_2_1_1"));
    window->close();
    ASSERT_TRUE(warehouse.addStand(6, 1, 1, QStringLiteral("1"), 12600, 7000));
    const int before = canvas()->imgBookStand().Count();
    window->show();
    EXPECT_EQ(canvas()->imgBookStand().Count(), before + 1);
    EXPECT_EQ(label("lblObjectClick")->text(), QString());
    EXPECT_EQ(address(), QStringLiteral("   "));
}

}  // namespace
}  // namespace regalon
