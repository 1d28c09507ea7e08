#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapWarehouse.h"
#include "map/clsMagWatch.h"
#include "platform/MsgBox.h"
#include "platform/Screen.h"

#include <QFile>

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;
using test::windowMessage;

/// Two stands: one shelf of two locations, one of one. The database stores icons for all three.
class ChangeIcon : public testing::Test {
protected:
    ChangeIcon() : warehouse(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
        ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("1"), 5000));
        setIcon(1, 1, QStringLiteral("LA_P_10.ico"));
        setIcon(1, 2, QStringLiteral("LB_P_20.ico"));
        setIcon(2, 1, QStringLiteral("LC_P_30.ico"));
        data = std::make_unique<clsMagWatch>(warehouse.context);
        builder = std::make_unique<MapBuilder>(warehouse.context, canvas, *data,
                                               MapReportNames::of(QStringLiteral("frmMagWatch")));
        builder->setIconFolder(warehouse.context.PathBitmapMagSur);
        ASSERT_TRUE(builder->WathStore(true));
    }

    void setIcon(int stand, int location, const QString& icon) {
        set(stand, location, QStringLiteral("LocationIcon = N'%1'").arg(icon));
    }
    void set(int stand, int location, const QString& assignment) {
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("update kolv_mag_Location set %1 where Stand = %2 and Location = %3")
                 .arg(assignment)
                 .arg(stand)
                 .arg(location)}))
            << qPrintable(warehouse.why());
    }
    void setStatus(int stand, int location, const QString& status) {
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral(
                 "insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,StatLocation_cmb) values "
                 "(1,%1,1,%2,%3)")
                 .arg(stand)
                 .arg(location)
                 .arg(status)}))
            << qPrintable(warehouse.why());
    }
    void loseName(int stand, int location) { set(stand, location, QStringLiteral("LocationName = N'gone'")); }

    bool change() { return builder->ChangeIconLocation(canvas.imglocation()); }
    QStringList pictures() {
        QStringList names;
        for (int index = 1; index < canvas.imglocation().Count(); ++index)
            names.append(canvas.imglocation()[index].picturePath().section(QLatin1Char('\\'), -1));
        return names;
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    MapCanvas canvas{15210, 9375};
    std::unique_ptr<clsMagWatch> data;
    std::unique_ptr<MapBuilder> builder;
};

QStringList texts(std::initializer_list<const char*> names) {
    QStringList list;
    for (const char* name : names)
        list.append(QString::fromLatin1(name));
    return list;
}

TEST_F(ChangeIcon, EachLocationGetsItsIconAndTheResultStaysFalse) {
    EXPECT_FALSE(change());
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "LB_P_20.ico", "LC_P_30.ico"}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ChangeIcon, TheTemplateWithoutATagIsNeverReached) {
    ASSERT_EQ(canvas.imglocation()[0].tag(), QString());
    change();
    EXPECT_TRUE(canvas.imglocation()[0].picture().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ChangeIcon, AnEmptyIconShowsTheErrorIconOfTheFamily) {
    set(1, 1, QStringLiteral("LocationIcon = N''"));
    set(1, 2, QStringLiteral("LocationIcon = NULL"));
    set(2, 1, QStringLiteral("LocationIcon = NULL"));
    change();
    EXPECT_EQ(pictures(), texts({"LA_R_Err.ico", "LB_R_Err.ico", "LC_R_Err.ico"}));
}

TEST_F(ChangeIcon, StatusOneShowsTheMultiIconWhateverTheStoredIcon) {
    setStatus(1, 1, QStringLiteral("N'1'"));
    setStatus(1, 2, QStringLiteral("N'1'"));
    set(1, 2, QStringLiteral("LocationIcon = NULL"));
    setStatus(2, 1, QStringLiteral("N'1'"));
    change();
    EXPECT_EQ(pictures(), texts({"LA_M_00.ico", "LB_M_00.ico", "LC_M_00.ico"}));
}

TEST_F(ChangeIcon, ANullStatusCountsAsZero) {
    setStatus(1, 1, QStringLiteral("NULL"));
    change();
    EXPECT_EQ(pictures().first(), QStringLiteral("LA_P_10.ico"));
}

TEST_F(ChangeIcon, ALocationWithoutANameTakesIconAndStatusOfTheOneBefore) {
    loseName(1, 2);
    change();
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "LA_P_10.ico", "LC_P_30.ico"}));
}

TEST_F(ChangeIcon, ANullNameIsNoName) {
    set(1, 2, QStringLiteral("LocationName = NULL"));
    change();
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "LA_P_10.ico", "LC_P_30.ico"}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ChangeIcon, AfterAMultiLocationOneWithoutANameIsMultiInItsOwnFamily) {
    setStatus(1, 1, QStringLiteral("N'1'"));
    loseName(1, 2);
    change();
    EXPECT_EQ(pictures(), texts({"LA_M_00.ico", "LB_M_00.ico", "LC_P_30.ico"}));
}

TEST_F(ChangeIcon, AfterAnErrorIconOneWithoutANameKeepsThatErrorIcon) {
    set(1, 1, QStringLiteral("LocationIcon = NULL"));
    loseName(1, 2);
    change();
    EXPECT_EQ(pictures(), texts({"LA_R_Err.ico", "LA_R_Err.ico", "LC_P_30.ico"}));
}

TEST_F(ChangeIcon, AFirstLocationWithoutANameShowsItsFamilysErrorIcon) {
    loseName(1, 1);
    change();
    EXPECT_EQ(pictures().first(), QStringLiteral("LA_R_Err.ico"));
}

TEST_F(ChangeIcon, AnyOtherStatusKeepsThePathOfTheOneBefore) {
    setStatus(1, 2, QStringLiteral("N'2'"));
    change();
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "LA_P_10.ico", "LC_P_30.ico"}));
}

TEST_F(ChangeIcon, AFirstLocationOfAnyOtherStatusLosesItsPicture) {
    setStatus(1, 1, QStringLiteral("N'2'"));
    change();
    EXPECT_TRUE(canvas.imglocation()[1].picture().isEmpty());
    EXPECT_EQ(pictures(), texts({"", "LB_P_20.ico", "LC_P_30.ico"}));
}

TEST_F(ChangeIcon, OfEqualNamesTheFirstOneCounts) {
    set(2, 1, QStringLiteral("LocationName = N'1_1_1_1_LA_2'"));
    change();
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "LB_P_20.ico", "LB_P_20.ico"}));
}

TEST_F(ChangeIcon, NamesDifferByLetterCase) {
    set(1, 2, QStringLiteral("LocationName = N'1_1_1_2_lb_3'"));
    change();
    EXPECT_EQ(pictures().at(1), QStringLiteral("LA_P_10.ico"));
}

TEST_F(ChangeIcon, AnIconWithoutATagIsABoundsErrorThatEndsTheRound) {
    canvas.imglocation()[2].setTag(QString());
    change();
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "xx.ico", "xxx.ico"}));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - ChangeIconLocation"));
    EXPECT_EQ(messages.last().Text, windowMessage(9));
}

TEST_F(ChangeIcon, AMissingIconFileEndsTheRoundWithItsMessage) {
    setIcon(1, 2, QStringLiteral("LB_P_nic.ico"));
    change();
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "xx.ico", "xxx.ico"}));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - ChangeIconLocation"));
    EXPECT_EQ(messages.last().Text, windowMessage(53));
}

TEST_F(ChangeIcon, AStatusThatIsNoNumberIsAMismatch) {
    setStatus(1, 1, QStringLiteral("N'X'"));
    change();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - ChangeIconLocation"));
    EXPECT_EQ(messages.last().Text, windowMessage(13));
    EXPECT_EQ(pictures().first(), QStringLiteral("x.ico"));
}

TEST_F(ChangeIcon, ADeadServerIsReportedByTheDataClassAndNothingChanges) {
    warehouse.server.kill();
    change();
    EXPECT_EQ(pictures(), texts({"x.ico", "xx.ico", "xxx.ico"}));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetIconLoactionName]"));
}

TEST_F(ChangeIcon, RebulidMagHasTheFillsRecomputed) {
    warehouse.server.clearTrace();
    builder->RebulidMag(true);
    const auto calls = warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location"));
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first(), QStringList(QStringLiteral("N")));
    EXPECT_EQ(canvas.imglocation().Count(), 4);
    // The demo's procedure finds nothing on these shelves.
    EXPECT_EQ(pictures(), texts({"LA_P_00.ico", "LB_P_00.ico", "LC_P_00.ico"}));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(ChangeIcon, RebulidMagHasTheFillsRecomputedBeforeItReadsThePlan) {
    warehouse.server.clearTrace();
    builder->RebulidMag(true);
    QStringList steps;
    for (const auto& entry : warehouse.server.entries()) {
        for (const char* step : {"Kolv_mag_Refresh_Percent_Location", "from kolv_mag_Stand order",
                                 "kolv_mag_SaveLocationIDTab", " select LocationName"}) {
            if (entry.text.contains(QLatin1String(step)))
                steps.append(QString::fromLatin1(step));
        }
    }
    EXPECT_EQ(steps, texts({"Kolv_mag_Refresh_Percent_Location", "from kolv_mag_Stand order",
                            "kolv_mag_SaveLocationIDTab", " select LocationName"}));
}

TEST_F(ChangeIcon, RebulidMagShowsTheBusyPointerToItsEndAndThenTheDefaultOne) {
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("update kolv_mag_Stand set StandIcon = N'brak.ico' where "
                                      "Stand = 1")}));
    setIcon(2, 1, QStringLiteral("LC_P_nic.ico"));
    QList<MousePointer> seen;
    QStringList titles;
    messages.onMessage([&](const MsgBoxRecorder::Message& message) {
        titles.append(message.Title);
        seen.append(Screen::mousePointer());
    });
    Screen::setMousePointer(MousePointer::Hourglass);
    builder->RebulidMag(false);
    EXPECT_EQ(titles, texts({"frmMagWatch - GenerateBookstand", "frmMagWatch - ChangeIconLocation"}));
    EXPECT_EQ(seen, QList<MousePointer>({MousePointer::Custom, MousePointer::Custom}));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(ChangeIcon, RefreschWatchStoreLeavesThePointerAlone) {
    ASSERT_TRUE(
        warehouse.run({QStringLiteral("update kolv_mag_Stand set StandIcon = N'brak.ico' where "
                                      "Stand = 1")}));
    MousePointer during = MousePointer::Custom;
    messages.onMessage([&](const MsgBoxRecorder::Message&) { during = Screen::mousePointer(); });
    builder->RefreschWatchStore();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(during, MousePointer::Default);
}

TEST_F(ChangeIcon, RebulidMagWithoutRefreshCallsNoRefresh) {
    warehouse.server.clearTrace();
    builder->RebulidMag(false);
    EXPECT_TRUE(warehouse.calls(QStringLiteral("Kolv_mag_Refresh_Percent_Location")).isEmpty());
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "LB_P_20.ico", "LC_P_30.ico"}));
}

TEST_F(ChangeIcon, AFailingRefreshIsReportedAndTheRebuildGoesOn) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure Kolv_mag_Refresh_Percent_Location")}));
    MousePointer during = MousePointer::Default;
    messages.onMessage([&](const MsgBoxRecorder::Message&) { during = Screen::mousePointer(); });
    builder->RebulidMag(true);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [RefreshQuantityOnLocationIcon]"));
    // The error service takes the busy pointer off its own messages.
    EXPECT_EQ(during, MousePointer::Default);
    EXPECT_EQ(pictures(), texts({"LA_P_10.ico", "LB_P_20.ico", "LC_P_30.ico"}));
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

}  // namespace
}  // namespace regalon
