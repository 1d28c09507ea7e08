#include "platform/RunTimeError.h"
#include "support/Events.h"
#include "views/DetailWindow.h"

#include <QAction>
#include <QFile>

namespace regalon {
namespace {

using test::DetailWindow;

class FrmMagWatchDetalFailure : public DetailWindow {
protected:
    void SetUp() override {
        DetailWindow::SetUp();
        addStand(QStringLiteral("3"));
    }
    QStringList titles() const {
        QStringList all;
        for (const auto& message : messages.messages())
            all.append(message.Title);
        return all;
    }
};

TEST_F(FrmMagWatchDetalFailure, ANameOfFewerThanFiveFieldsStopsTheDrawingThere) {
    for (const char* name : {"N'6_1_1_2'", "N''", "NULL"}) {
        changeLocations(QStringLiteral("Location = 2"),
                        QStringLiteral("LocationName = ") + QString::fromLatin1(name));
        messages.clear();
        open();
        ASSERT_EQ(messages.count(), 1) << name;
        EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchDetal - WathLocation"));
        EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::SubscriptOutOfRange));
        EXPECT_EQ(messages.last().Flags, 4112);
        EXPECT_EQ(drawn(), QList<int>({9})) << name;
        EXPECT_FALSE(item("imgBookStand")->isVisible());
        EXPECT_TRUE(window->isVisible());
        EXPECT_TRUE(visible("frmParamStatic"));
        window->close();
    }
}

TEST_F(FrmMagWatchDetalFailure, AMissingIconStopsTheDrawingThere) {
    changeLocations(QStringLiteral("Location = 2"), QStringLiteral("LocationIcon = N'none.ico'"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Stand set StandDescription = N'opis' where Rank = 6")}));
    open();
    ASSERT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - WathLocation")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::FileNotFound));
    EXPECT_EQ(drawn(), QList<int>({9}));
    EXPECT_FALSE(item("imgBookStand")->isVisible());
    EXPECT_EQ(note("txtParamInfoStand"), QStringLiteral("opis"));
}

TEST_F(FrmMagWatchDetalFailure, AFillThatIsNoNumberStopsTheDrawingThere) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("alter table kolv_mag_Location alter column LocationPercent nvarchar(10) NULL")}));
    changeLocations(QStringLiteral("Location = 1"), QStringLiteral("LocationPercent = NULL"));
    changeLocations(QStringLiteral("Location = 2"), QStringLiteral("LocationPercent = N'wiele'"));
    open();
    ASSERT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - WathLocation")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::TypeMismatch));
    EXPECT_EQ(drawn(), QList<int>({9})) << "a fill that is Null is none";
    EXPECT_FALSE(item("imgBookStand")->isVisible());
}

TEST_F(FrmMagWatchDetalFailure, AFamilyOfNoIconsStopsTheDrawingThere) {
    changeLocations(QStringLiteral("Location = 2"),
                    QStringLiteral("LocationIcon = N'', LocationName = N'6_1_1_2_XX_1'"));
    open();
    ASSERT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - WathLocation")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::FileNotFound));
}

TEST_F(FrmMagWatchDetalFailure, AStandPictureThatIsNoneIsReported) {
    // Beside the icon folder, which all tests share.
    QFile broken(warehouse.server.driveC() + QStringLiteral("/Regalon/broken.ico"));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("no picture");
    broken.close();
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Stand set StandIcon = N'..\\broken.ico' where Rank = 6")}));
    open();
    ASSERT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - WathLocation")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::InvalidPicture));
    EXPECT_EQ(drawn(), QList<int>({9, 10, 11}));
    EXPECT_FALSE(item("imgBookStand")->isVisible());
}

TEST_F(FrmMagWatchDetalFailure, AnAddressThatIsNoNumberIsReportedByTheClick) {
    changeLocations(QStringLiteral("Location = 1"), QStringLiteral("LocationName = N'6_1_x_1_LA_1'"));
    open();
    clickLocation(1, 1);
    ASSERT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - imglocation_Click")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::TypeMismatch));
    EXPECT_EQ(text("lblLocationData"), QString());
}

TEST_F(FrmMagWatchDetalFailure, AGroupThatCannotBeReadShowsTheWordError) {
    assign(QStringLiteral("ItemCode,GroupSur"), QStringLiteral("N'SUR-77',4"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop table kolv_mag_Group_Item"),
                               QStringLiteral("drop table kolv_mag_Location_Group")}));
    open();
    clickLocation(1, 1);
    EXPECT_EQ(titles(), QStringList({QStringLiteral("Error - clsMagWatchDetal [GetGroupName]"),
                                     QStringLiteral("Error - clsMagWatchDetal [GetParamLocalization]")}));
    EXPECT_EQ(text("lblGroup"), QStringLiteral("Error"));
}

TEST_F(FrmMagWatchDetalFailure, AServerKilledUnderTheOpenWindowIsReportedAndTheWindowStaysUsable) {
    open();
    warehouse.server.kill();
    clickLocation(1, 1);
    EXPECT_EQ(titles(), QStringList({QStringLiteral("Error - clsMagWatchDetal [GetParamLocalizationItem]"),
                                     QStringLiteral("Error - clsMagWatchDetal [GetParamLocalization]")}));
    EXPECT_EQ(text("lblSurowiecLocation"), QStringLiteral("Brak zdefiowanego surowca dla tej lokalizacji"));
    messages.clear();
    clickStand();
    EXPECT_EQ(messages.count(), 0);
    test::click(control<QPushButton>("cmdClose_1"));
    EXPECT_FALSE(window->isVisible());
    window->show();
    EXPECT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - WathLocation"),
                                     QStringLiteral("Error - clsMagWatchDetal [GetParamStand]")}));
    EXPECT_EQ(drawn(), QList<int>());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(FrmMagWatchDetalFailure, OpenedAfterAFailedLoginItFailsInItsOwnHandlersAndOpens) {
    warehouse.context.ConnMain.reset();
    warehouse.context.ErrorService.reset();
    open();
    EXPECT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - WathLocation"),
                                     QStringLiteral("frmMagWatchDetal - WathParamStand")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::ObjectNotSet));
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(visible("frmParamStatic"));
}

TEST_F(FrmMagWatchDetalFailure, APlaceBeyond32BitsIsReportedByTheLoad) {
    window = std::make_unique<frmMagWatchDetal>(warehouse.context);
    window->setTopStand(2147483647);
    window->show();
    ASSERT_EQ(titles(), QStringList({QStringLiteral("frmMagWatchDetal - Form_Load")}));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::Overflow));
}

TEST_F(FrmMagWatchDetalFailure, TheListsOwnButtonReportsUnderTheOtherToolbarsName) {
    open();
    // Whoever hears of the list's hiding can fail it; the message then carries the name of the button's
    // routine.
    struct Fail : QObject {
        bool eventFilter(QObject*, QEvent* event) override {
            if (event->type() == QEvent::Hide)
                throw RunTimeError(RunTime::InternalError);
            return false;
        }
    } fail;
    control<QWidget>("frmWathLocationShiftItem")->show();
    control<QWidget>("frmWathLocationShiftItem")->installEventFilter(&fail);
    Q_EMIT control<ToolBar>("tlbCancelWatchSur")->buttonClick(QStringLiteral("key_Cancel"));
    control<QWidget>("frmWathLocationShiftItem")->removeEventFilter(&fail);
    ASSERT_EQ(titles(),
              QStringList({QStringLiteral("frmMagWatchDetal - tlbWatchFullSurLocation_ButtonClick")}));
}

TEST_F(FrmMagWatchDetalFailure, TheKeyThatNoButtonBearsHidesTheList) {
    open();
    control<QWidget>("frmWathLocationShiftItem")->show();
    Q_EMIT control<ToolBar>("tlbWatchFullSurLocation")->buttonClick(QStringLiteral("key_Cancel"));
    EXPECT_FALSE(visible("frmWathLocationShiftItem"));
}

}  // namespace
}  // namespace regalon
