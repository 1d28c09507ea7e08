#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapSearch.h"
#include "map/MapWarehouse.h"
#include "map/clsMagWatch.h"
#include "platform/MsgBox.h"
#include "platform/RunTimeError.h"

#include <QFile>

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;
using test::windowMessage;

constexpr qint16 kOwnMaterials = 0;
constexpr qint16 kGroups = 1;

const QString kItems = QStringLiteral(
    " select A.LocationName,A.LocationPercent,B.ItemCode,B.GroupSur from kolv_mag_Location A left join "
    "kolv_mag_Location_item B ON A.Rank = B.Rank AND A.Stand = B.Stand AND A.Shelf = B.Shelf AND A.Location "
    "= B.LOcation order by A.Rank,A.Stand,A.Shelf,A.Location");
const QString kGroupItems = QStringLiteral(
    " select A.LocationName,A.LocationPercent,ISNULL(C.ItemCode,'EMPTY') as ItemCode,ISNULL(B.GroupSur,0) "
    "as GroupSur from kolv_mag_Group_Item C inner join kolv_mag_Location_item B ON C.GroupSur = B.GroupSur "
    "right join kolv_mag_Location A ON  B.Rank = a.Rank And B.Stand = a.Stand And B.Shelf = a.Shelf And "
    "B.Location = a.Location order by A.Rank,A.Stand,A.Shelf,A.Location");

QStringList texts(std::initializer_list<const char*> names) {
    QStringList list;
    for (const char* name : names)
        list.append(QString::fromLatin1(name));
    return list;
}

/// Three stands of row A with one shelf each: two locations (LA, LB), one (LC), one (LC). Material M-1 lies
/// on the first location of the first stand, M-2 on the second stand.
class MapSearchPass : public testing::Test {
protected:
    MapSearchPass() : warehouse(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        for (int stand = 1; stand <= 3; ++stand)
            ASSERT_TRUE(warehouse.addStand(1, stand, 1,
                                           stand == 1 ? QStringLiteral("2") : QStringLiteral("1"),
                                           2000 * stand, 4000, QStringLiteral("R1_S_0%1.ico").arg(stand)));
        assign(1, 1, QStringLiteral("N'M-1'"));
        assign(2, 1, QStringLiteral("N'M-2'"));
        set(1, 1, QStringLiteral("LocationIcon = N'LA_P_10.ico', LocationPercent = 10"));
        set(1, 2, QStringLiteral("LocationIcon = N'LB_P_20.ico', LocationPercent = 7"));
        set(2, 1, QStringLiteral("LocationIcon = N'LC_P_30.ico', LocationPercent = 45"));
        set(3, 1, QStringLiteral("LocationIcon = N'LC_P_40.ico', LocationPercent = 100"));
        build();
    }

    void build(const char* window = "frmMagWatch") {
        const QString name = QString::fromLatin1(window);
        data = std::make_unique<clsMagWatch>(warehouse.context);
        map = std::make_unique<MapBuilder>(warehouse.context, canvas, *data, MapReportNames::of(name));
        map->setIconFolder(warehouse.context.PathBitmapMagSur);
        search = std::make_unique<MapSearch>(*map, canvas, *data, SearchReportNames::of(name));
        map->RefreschWatchStore();
        ASSERT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
        warehouse.server.clearTrace();
    }

    void run(const QString& statement) {
        ASSERT_TRUE(warehouse.run({statement})) << qPrintable(warehouse.why());
    }
    void set(int stand, int location, const QString& assignment) {
        run(QStringLiteral("update kolv_mag_Location set %1 where Stand = %2 and Location = %3")
                .arg(assignment)
                .arg(stand)
                .arg(location));
    }
    void assign(int stand, int location, const QString& item, int group = 0) {
        run(QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,GroupSur,"
                           "StatLocation_cmb) values (1,%1,1,%2,%3,%4,N'0')")
                .arg(stand)
                .arg(location)
                .arg(item)
                .arg(group));
    }
    void addMember(int group, const QString& item) {
        run(QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (%1,N'%2')")
                .arg(group)
                .arg(item));
    }

    void grey(const char* item, qint16 mode = kOwnMaterials) {
        search->ChangeIconOnLocation(QString::fromUtf8(item), mode);
    }
    static QStringList pictures(ControlArray<PictureItem>& array) {
        QStringList names;
        for (int index = 1; index < array.Count(); ++index)
            names.append(array[index].picturePath().section(QLatin1Char('\\'), -1));
        return names;
    }
    QStringList locations() { return pictures(canvas.imglocation()); }
    QStringList stands() { return pictures(canvas.imgBookStand()); }
    void expectOneMessage(const char* title, qint32 number) {
        ASSERT_EQ(messages.count(), 1) << qPrintable(messages.last().Title);
        EXPECT_EQ(messages.last().Title, QString::fromLatin1(title));
        EXPECT_EQ(messages.last().Flags, 4112);
        EXPECT_EQ(messages.last().Text, windowMessage(number));
    }
    /// Takes a plan's own icons and leaves out one of them.
    void useIconsWithout(const char* missing) {
        ASSERT_TRUE(warehouse.useOwnIcons());
        const QString folder = warehouse.server.driveC() + QStringLiteral("/Regalon/Ikony/");
        for (const QString& icon :
             texts({"LA_P_10.ico", "LB_P_20.ico", "LC_P_30.ico", "LC_P_40.ico", "R1_S_01.ico", "R1_S_02.ico",
                    "R1_S_03.ico", "LA_G_10.ico", "LB_G_07.ico", "LC_G_45.ico", "LC_G_100.ico",
                    "RR1_S_01.ico", "RR1_S_02.ico", "RR1_S_03.ico"})) {
            ASSERT_TRUE(icon == QLatin1String(missing) || QFile::copy(folder + icon, warehouse.ownIcon(icon)))
                << qPrintable(icon);
        }
        build();
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    MapCanvas canvas{15210, 9375};
    std::unique_ptr<clsMagWatch> data;
    std::unique_ptr<MapBuilder> map;
    std::unique_ptr<MapSearch> search;
};

TEST_F(MapSearchPass, GreysEverythingThatDoesNotHoldTheMaterial) {
    grey("M-1");
    // 7 per cent of an LB location and 100 per cent of an LC one; the holder keeps its own icon.
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_G_07.ico", "LC_G_45.ico", "LC_G_100.ico"}));
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "RR1_S_02.ico", "RR1_S_03.ico"}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MapSearchPass, EveryPlaceOfTheMaterialStandsOut) {
    assign(3, 1, QStringLiteral("N'M-1'"));
    grey("M-1");
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_G_07.ico", "LC_G_45.ico", "LC_P_40.ico"}));
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "RR1_S_02.ico", "R1_S_03.ico"}));
}

TEST_F(MapSearchPass, OneQueryServesTheWholePass) {
    grey("M-1");
    EXPECT_EQ(warehouse.server.trace(), QStringList(kItems));
    warehouse.server.clearTrace();
    grey("M-1", kGroups);
    EXPECT_EQ(warehouse.server.trace(), QStringList(kGroupItems));
}

TEST_F(MapSearchPass, AMaterialOfNoLocationGreysAllLocationsAndStands) {
    grey("M-9");
    EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_G_07.ico", "LC_G_45.ico", "LC_G_100.ico"}));
    EXPECT_EQ(stands(), texts({"RR1_S_01.ico", "RR1_S_02.ico", "RR1_S_03.ico"}));
}

TEST_F(MapSearchPass, CodesDifferByLetterCase) {
    grey("m-1");
    EXPECT_EQ(locations().first(), QStringLiteral("LA_G_10.ico"));
    EXPECT_EQ(stands().first(), QStringLiteral("RR1_S_01.ico"));
}

TEST_F(MapSearchPass, ANullCodeReadsAsAnEmptyOne) {
    grey("");
    // No material at all lies on the second location and on the third stand.
    EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_P_20.ico", "LC_G_45.ico", "LC_P_40.ico"}));
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "RR1_S_02.ico", "R1_S_03.ico"}));
}

TEST_F(MapSearchPass, AFillOf120TakesTheGreyIconOfTheLocationBefore) {
    set(2, 1, QStringLiteral("LocationPercent = 120"));
    grey("M-1");
    EXPECT_EQ(locations().mid(1), texts({"LB_G_07.ico", "LB_G_07.ico", "LC_G_100.ico"}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MapSearchPass, AHolderGivesTheNameOfItsGreyIconOnAsWell) {
    set(1, 2, QStringLiteral("LocationPercent = 120"));
    grey("M-1");
    EXPECT_EQ(locations().at(1), QStringLiteral("LA_G_10.ico"));
}

TEST_F(MapSearchPass, AFirstFillOver100IsAFileErrorThatEndsThePass) {
    set(1, 1, QStringLiteral("LocationPercent = 120"));
    grey("M-2");
    expectOneMessage("frmMagWatch - ChangeIconOnLocation", RunTime::PathFileAccess);
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_P_20.ico", "LC_P_30.ico", "LC_P_40.ico"}));
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "R1_S_02.ico", "R1_S_03.ico"}));
}

TEST_F(MapSearchPass, AFirstFillOver100OfAHolderIsNoError) {
    set(1, 1, QStringLiteral("LocationPercent = 120"));
    grey("M-1");
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_G_07.ico", "LC_G_45.ico", "LC_G_100.ico"}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MapSearchPass, ALocationWithoutANameTakesFillAndMaterialOfTheOneBefore) {
    set(1, 2, QStringLiteral("LocationName = N'gone'"));
    set(3, 1, QStringLiteral("LocationName = NULL"));
    grey("M-1");
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_P_20.ico", "LC_G_45.ico", "LC_G_45.ico"}));
    // The second location of the first stand counts as a holder now.
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "RR1_S_02.ico", "RR1_S_03.ico"}));
    grey("M-2");
    EXPECT_EQ(locations().mid(1, 1), texts({"LB_G_10.ico"}));
    EXPECT_EQ(stands().last(), QStringLiteral("RR1_S_03.ico"));
}

TEST_F(MapSearchPass, AStandWhoseOnlyHolderTookOverTheMaterialStandsOut) {
    set(3, 1, QStringLiteral("LocationName = N'gone'"));
    grey("M-2");
    EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_G_07.ico", "LC_P_30.ico", "LC_P_40.ico"}));
    EXPECT_EQ(stands(), texts({"RR1_S_01.ico", "R1_S_02.ico", "R1_S_03.ico"}));
}

TEST_F(MapSearchPass, AFirstLocationWithoutANameHoldsNothingAtNoFill) {
    set(1, 1, QStringLiteral("LocationName = N'gone'"));
    grey("M-1");
    EXPECT_EQ(locations().first(), QStringLiteral("LA_G_00.ico"));
    EXPECT_EQ(stands().first(), QStringLiteral("RR1_S_01.ico"));
}

TEST_F(MapSearchPass, ARowInFrontOfTheOneFoundLastIsNotFound) {
    // The third location's name stands in the first row: the second location has passed it.
    set(1, 1, QStringLiteral("LocationName = N'") + canvas.imglocation()[3].tag() + u'\'');
    set(2, 1, QStringLiteral("LocationName = N'gone'"));
    grey("M-1");
    EXPECT_EQ(locations().at(2), QStringLiteral("LC_G_07.ico"));
}

TEST_F(MapSearchPass, AMissingGreyIconInTheMiddleEndsThePassThere) {
    useIconsWithout("LC_G_45.ico");
    grey("M-1");
    expectOneMessage("frmMagWatch - ChangeIconOnLocation", RunTime::FileNotFound);
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_G_07.ico", "LC_P_30.ico", "LC_P_40.ico"}));
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "R1_S_02.ico", "R1_S_03.ico"}));
}

TEST_F(MapSearchPass, AMissingGreyStandEndsThePassAtThatStand) {
    useIconsWithout("RR1_S_02.ico");
    grey("M-9");
    expectOneMessage("frmMagWatch - ChangeIconOnLocation", RunTime::FileNotFound);
    EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_G_07.ico", "LC_G_45.ico", "LC_G_100.ico"}));
    EXPECT_EQ(stands(), texts({"RR1_S_01.ico", "R1_S_02.ico", "R1_S_03.ico"}));
}

TEST_F(MapSearchPass, EachWindowReportsThePassUnderItsNameAndTheStandsUnderOne) {
    useIconsWithout("LC_G_45.ico");
    for (const char* window : {"frmMagWatchShiftLoc", "frmMagWatchBarCodeLoc"}) {
        messages.clear();
        build(window);
        run(QStringLiteral("update kolv_mag_Stand set StandIcon = N'nic.ico' where Stand = 1"));
        grey("M-1");
        search->ChangeIconStand(canvas.imgBookStand());
        run(QStringLiteral("update kolv_mag_Stand set StandIcon = N'R1_S_01.ico' where Stand = 1"));
        ASSERT_EQ(messages.count(), 2);
        EXPECT_EQ(messages.messages().at(0).Title,
                  QString::fromLatin1(window) + QStringLiteral(" - ChangeIconOnLocation"));
        EXPECT_EQ(messages.messages().at(1).Title, QStringLiteral("frmMagSurInput - ChangeIconStand"));
        messages.clear();
    }
}

TEST_F(MapSearchPass, AnIconWithoutATagIsABoundsErrorThatEndsThePass) {
    canvas.imglocation()[2].setTag(QString());
    grey("M-9");
    expectOneMessage("frmMagWatch - ChangeIconOnLocation", RunTime::SubscriptOutOfRange);
    EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_P_20.ico", "LC_P_30.ico", "LC_P_40.ico"}));
}

TEST_F(MapSearchPass, InTheModeOfGroupsTheFirstMemberDecides) {
    run(
        QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                       "(7,N'Żywice',N'Y')"));
    addMember(7, QStringLiteral("M-5"));
    addMember(7, QStringLiteral("M-6"));
    addMember(7, QStringLiteral("M-8"));
    assign(1, 2, QStringLiteral("N''"), 7);
    const QString first = warehouse.value(
        QStringLiteral("select Top 1 C.ItemCode from kolv_mag_Group_Item C inner join kolv_mag_Location_item "
                       "B ON C.GroupSur = B.GroupSur where C.GroupSur = 7"));
    grey(first.toUtf8().constData(), kGroups);
    EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_P_20.ico", "LC_G_45.ico", "LC_G_100.ico"}));
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "RR1_S_02.ico", "RR1_S_03.ico"}));
    search->showPlain();
    for (const char* later : {"M-5", "M-6", "M-8"}) {
        if (first == QLatin1String(later))
            continue;
        grey(later, kGroups);
        EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_G_07.ico", "LC_G_45.ico", "LC_G_100.ico"})) << later;
    }
}

TEST_F(MapSearchPass, InTheModeOfGroupsALocationWithoutAMemberReadsAsEMPTY) {
    grey("EMPTY", kGroups);
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_P_20.ico", "LC_P_30.ico", "LC_P_40.ico"}));
}

TEST_F(MapSearchPass, AnUnknownModeAndADeadServerLeaveThePlanAsItWas) {
    const QStringList before = locations();
    grey("M-1", 2);
    EXPECT_EQ(locations(), before);
    EXPECT_EQ(messages.count(), 0);
    warehouse.server.kill();
    grey("M-1");
    EXPECT_EQ(locations(), before);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetIconLoactionNameItem]"));
}

TEST_F(MapSearchPass, ShowPlainTakesTheGreyAwayFromLocationsAndStands) {
    grey("M-9");
    search->showPlain();
    EXPECT_EQ(locations(), texts({"LA_P_10.ico", "LB_P_20.ico", "LC_P_30.ico", "LC_P_40.ico"}));
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "R1_S_02.ico", "R1_S_03.ico"}));
}

TEST_F(MapSearchPass, ASearchAfterASearchLeavesNoGreyOfTheEarlierOne) {
    grey("M-1");
    search->showPlain();
    grey("M-2");
    EXPECT_EQ(locations(), texts({"LA_G_10.ico", "LB_G_07.ico", "LC_P_30.ico", "LC_G_100.ico"}));
    EXPECT_EQ(stands(), texts({"RR1_S_01.ico", "R1_S_02.ico", "RR1_S_03.ico"}));
}

TEST_F(MapSearchPass, TheStandsAreReadByOneStatement) {
    EXPECT_TRUE(search->ChangeIconStand(canvas.imgBookStand()));
    EXPECT_EQ(warehouse.server.trace(),
              texts({"select Rank,Stand,StandIcon from kolv_mag_Stand order by Rank,Stand"}));
}

TEST_F(MapSearchPass, AStandWithoutARowKeepsItsPicture) {
    grey("M-9");
    run(QStringLiteral("delete from kolv_mag_Stand where Stand = 2"));
    search->ChangeIconStand(canvas.imgBookStand());
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "RR1_S_02.ico", "R1_S_03.ico"}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MapSearchPass, StandsAreComparedAsNumbers) {
    grey("M-9");
    canvas.imgBookStand()[2].setTag(QStringLiteral("R_01_02_x"));
    search->ChangeIconStand(canvas.imgBookStand());
    EXPECT_EQ(stands().at(1), QStringLiteral("R1_S_02.ico"));
    canvas.imgBookStand()[2].setTag(QStringLiteral("R_1_x"));
    search->ChangeIconStand(canvas.imgBookStand());
    expectOneMessage("frmMagSurInput - ChangeIconStand", RunTime::TypeMismatch);
}

TEST_F(MapSearchPass, AStandWithoutAnIconIsAFileErrorThatEndsTheRound) {
    grey("M-9");
    run(QStringLiteral("update kolv_mag_Stand set StandIcon = N'' where Stand = 2"));
    EXPECT_FALSE(search->ChangeIconStand(canvas.imgBookStand()));
    expectOneMessage("frmMagSurInput - ChangeIconStand", RunTime::PathFileAccess);
    EXPECT_EQ(stands(), texts({"R1_S_01.ico", "RR1_S_02.ico", "RR1_S_03.ico"}));
}

TEST_F(MapSearchPass, WhenTheStandsCannotBeReadNothingHappensToThem) {
    grey("M-9");
    warehouse.server.kill();
    EXPECT_FALSE(search->ChangeIconStand(canvas.imgBookStand()));
    EXPECT_EQ(stands(), texts({"RR1_S_01.ico", "RR1_S_02.ico", "RR1_S_03.ico"}));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetIconStandName]"));
}

TEST(MapSearchOnTheDemo, EveryLocationAndEveryStandHasItsGreyIcon) {
    MapWarehouse warehouse(LocalWarehouse::Content::Demo);
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    const MsgBoxRecorder messages;
    MapCanvas canvas(15210, 9375);
    clsMagWatch data(warehouse.context);
    const QString window = QStringLiteral("frmMagWatch");
    MapBuilder map(warehouse.context, canvas, data, MapReportNames::of(window));
    map.setIconFolder(warehouse.context.PathBitmapMagSur);
    map.RefreschWatchStore();
    MapSearch search(map, canvas, data, SearchReportNames::of(window));
    search.ChangeIconOnLocation(QStringLiteral("nowhere"), kOwnMaterials);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_GT(canvas.imglocation().Count(), 400);
    for (int index = 1; index < canvas.imglocation().Count(); ++index)
        EXPECT_TRUE(canvas.imglocation()[index].picturePath().contains(QStringLiteral("_G_"))) << index;
    for (int index = 1; index < canvas.imgBookStand().Count(); ++index)
        EXPECT_TRUE(canvas.imgBookStand()[index].picturePath().contains(QStringLiteral("\\RR"))) << index;
    search.showPlain();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

}  // namespace
}  // namespace regalon
