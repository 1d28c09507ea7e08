#include "platform/RunTimeError.h"
#include "support/Events.h"
#include "views/WatchWindow.h"

#include <QFile>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::WatchWindow;

class FrmMagWatchFailure : public WatchWindow {};

TEST_F(FrmMagWatchFailure, WithoutADetailAClickOnAStandEndsInTheStandardHandler) {
    window = std::make_unique<frmMagWatch>(warehouse.context);
    window->resize(window->sizeHint());
    test::showAndWait(window.get());
    clickStand(QStringLiteral("1_2"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - imgBookStand_Click"));
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("429\r\n")));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: A Regał: 2"));
}

TEST_F(FrmMagWatchFailure, AStandWithoutATagIsPassedOver) {
    open();
    PictureItem* stand = item("imgBookStand", QStringLiteral("R_1_2_"));
    stand->setTag(QString());
    test::clickItem(canvas(), stand);
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(label("lblObjectClick")->text(), QString());
    EXPECT_TRUE(details.isEmpty());
}

TEST_F(FrmMagWatchFailure, ATagTooShortIsABoundsErrorOfTheClick) {
    open();
    PictureItem* stand = item("imgBookStand", QStringLiteral("R_1_2_"));
    stand->setTag(QStringLiteral("R_1"));
    test::clickItem(canvas(), stand);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - imgBookStand_Click"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(9));
    PictureItem* location = item("imglocation", QStringLiteral("1_2_1_1_"));
    location->setTag(QString());
    test::clickItem(canvas(), location);
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - imglocation_Click"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(9));
}

TEST_F(FrmMagWatchFailure, AServerKilledUnderTheOpenWindowIsReportedAndTheWindowStaysUsable) {
    open();
    warehouse.server.kill();
    clickLocation(QStringLiteral("1_2_1_1"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetParamLocalization]"));
    EXPECT_EQ(label("lblObjectClick")->text(), QStringLiteral("Rząd: A Regał: 2 Półka: 1 Lokazliacja: 1"));
    EXPECT_EQ(label("lblObjectParam")->text(), QStringLiteral("Brak przypisanego surowca"));

    messages.clear();
    clickStand(QStringLiteral("1_2"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetStandParam]"));
    // The detail opens all the same, with the counts it had.
    ASSERT_EQ(details.size(), 1);
    EXPECT_FALSE(details[0].ShelfCount.has_value());

    messages.clear();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_ReBulid")));
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages().at(0).Title,
              QStringLiteral("Error - clsMagWatch [RefreshQuantityOnLocationIcon]"));
    EXPECT_EQ(messages.messages().at(1).Title, QStringLiteral("frmMagWatch - WathStore"));
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Exit")));
    EXPECT_FALSE(window->isVisible());
}

TEST_F(FrmMagWatchFailure, UnderAMessageOfTheFirstOpeningNoPanelShowsThatIsHiddenAfterIt) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_SaveLocationIDTab")}));
    QStringList shown;
    messages.onMessage([&](const MsgBoxRecorder::Message&) {
        EXPECT_TRUE(frame("frmWatchData")->isVisible());
        for (const char* panel : {"frmAutoRebulidCOnfig", "frmLookForSur", "tlbStatusRefresh",
                                  "tlbWatchFullSurLocation", "frmWathLocationShiftItem"}) {
            if (control<QWidget>(panel)->isVisible())
                shown.append(QString::fromLatin1(panel));
        }
    });
    open();
    EXPECT_GT(messages.count(), 0);
    EXPECT_EQ(shown, QStringList());

    // The same with panels left open by the last time.
    messages.clear();
    clickLocation(QStringLiteral("1_2_1_1"));
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_LokkFor")));
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_AutoRebulid")));
    messages.clear();
    shown.clear();
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_Exit")));
    test::showAndWait(window.get());
    EXPECT_GT(messages.count(), 0);
    EXPECT_EQ(shown, QStringList());
}

TEST_F(FrmMagWatchFailure, OpenedAfterAFailedLoginItFailsInItsOwnHandlerAndStays) {
    warehouse.context.ConnMain.reset();
    warehouse.context.ErrorService.reset();
    open();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - WathStore"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(91));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmMagWatchFailure, WithoutAPictureFolderTheIconsComeFromTheProgramFolder) {
    warehouse.context.PathBitmapMagSur.clear();
    open();
    EXPECT_EQ(messages.count(), 0);
    EXPECT_TRUE(item("imgBookStand", QStringLiteral("R_1_2_"))
                    ->picturePath()
                    .startsWith(QStringLiteral("C:\\Regalon\\Ikony\\")));
}

TEST_F(FrmMagWatchFailure, AFolderThatDoesNotExistIsReportedForEachStandAndTheWindowStays) {
    warehouse.context.PathBitmapMagSur = QStringLiteral("C:\\Nigdzie");
    open();
    EXPECT_EQ(messages.count(),
              warehouse.value(QStringLiteral("select count(*) from kolv_mag_Stand")).toInt());
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - GenerateBookstand"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::PathNotFound));
    EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmMagWatchFailure, AMainWindowBeyond16BitsIsReportedAndTheOldPlaceStays) {
    open();
    window->setTopStand(100);
    window->setTopStand(40000);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - TopStand"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(6));
    messages.clear();
    clickStand(QStringLiteral("1_2"));
    ASSERT_EQ(details.size(), 1);
    EXPECT_EQ(details[0].TopStand, 100 + item("imgBookStand", QStringLiteral("R_1_2_"))->top() + 1450);
}

class FrmMagWatchOnEmptyDatabase : public WatchWindow {
protected:
    FrmMagWatchOnEmptyDatabase() : WatchWindow(LocalWarehouse::Content::Empty) {}
};

TEST_F(FrmMagWatchOnEmptyDatabase, OpensAnEmptyHallWithoutAMessage) {
    open();
    EXPECT_EQ(canvas()->imgBookStand().Count(), 1);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_TRUE(test::clickToolButton(window.get(), QStringLiteral("key_ReBulid")));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_TRUE(window->isVisible());
}

}  // namespace
}  // namespace regalon
