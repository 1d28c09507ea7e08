#include "map/MapWarehouse.h"
#include "map/clsMagWatch.h"
#include "platform/MsgBox.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;

/// One stand with three locations: material, group, nothing.
class ClsMagWatch : public testing::Test {
protected:
    ClsMagWatch() : warehouse(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        ASSERT_TRUE(
            warehouse.addStand(1, 1, 1, QStringLiteral("3"), 3000, 4000, QStringLiteral("R1_S_01.ico")));
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                            "(7,N'Farby',N'Y')"),
             QStringLiteral(
                 "insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (7,N'F-1'),(7,N'F-2')"),
             QStringLiteral(
                 "insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,GroupSur,"
                 "StatLocation_cmb) values (1,1,1,1,N'M-1',N'Rura',NULL,NULL),"
                 "(1,1,1,2,NULL,NULL,7,N'1')"),
             QStringLiteral(
                 "update kolv_mag_Location set LocationName = N'n' + cast(Location as nvarchar(5))"),
             QStringLiteral("update kolv_mag_Location set LocationPercent = 40 where Location = 1")}))
            << qPrintable(warehouse.why());
        data = std::make_unique<clsMagWatch>(warehouse.context);
    }

    void TearDown() override {
        EXPECT_EQ(messages.count(), expectedMessages) << qPrintable(messages.last().Text);
    }

    bool readParam(qint16 location) {
        return data->GetParamLocalization(1, 1, 1, location, itemCode, itemName, group, groupName, status);
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    int expectedMessages = 0;
    std::unique_ptr<clsMagWatch> data;
    QString itemCode = QStringLiteral("before");
    QString itemName = QStringLiteral("before");
    QString groupName = QStringLiteral("before");
    qint16 group = 99;
    qint16 status = 99;
    qint16 percent = 99;
};

TEST_F(ClsMagWatch, NullColumnsOfALocationReadAsEmptyAndZero) {
    EXPECT_TRUE(readParam(1));
    EXPECT_EQ(itemCode, QStringLiteral("M-1"));
    EXPECT_EQ(itemName, QStringLiteral("Rura"));
    EXPECT_EQ(group, 0);
    EXPECT_EQ(groupName, QString());
    EXPECT_EQ(status, 0);
    EXPECT_TRUE(readParam(2));
    EXPECT_EQ(itemCode, QString());
    EXPECT_EQ(itemName, QString());
    EXPECT_EQ(group, 7);
    EXPECT_EQ(groupName, QStringLiteral("Farby"));
    EXPECT_EQ(status, 1);
}

TEST_F(ClsMagWatch, ALocationWithoutARowLeavesTheOutputsAlone) {
    EXPECT_FALSE(readParam(3));
    EXPECT_EQ(itemCode, QStringLiteral("before"));
    EXPECT_EQ(group, 99);
    EXPECT_EQ(status, 99);
}

TEST_F(ClsMagWatch, AFailureAnswersFalseWithTheDefaults) {
    warehouse.server.kill();
    expectedMessages = 1;
    EXPECT_FALSE(readParam(1));
    EXPECT_EQ(itemCode, QString());
    EXPECT_EQ(groupName, QString());
    EXPECT_EQ(group, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetParamLocalization]"));
}

TEST_F(ClsMagWatch, CountsShelvesAndLocationsOfAStand) {
    qint16 shelves = 99;
    qint16 locations = 99;
    EXPECT_TRUE(data->GetStandParam(1, 1, shelves, locations));
    EXPECT_EQ(shelves, 1);
    EXPECT_EQ(locations, 3);
    EXPECT_TRUE(data->GetStandParam(1, 2, shelves, locations));
    EXPECT_EQ(shelves, 0);
    EXPECT_EQ(locations, 0);
}

TEST_F(ClsMagWatch, TellsTheFillOfALocation) {
    EXPECT_TRUE(data->GetLocationPercent(1, 1, 1, 1, percent, itemCode, group));
    EXPECT_EQ(percent, 40);
    EXPECT_EQ(itemCode, QStringLiteral("M-1"));
    EXPECT_EQ(group, 0);
    EXPECT_TRUE(data->GetLocationPercent(1, 1, 1, 3, percent, itemCode, group));
    EXPECT_EQ(percent, 0);
    EXPECT_EQ(itemCode, QString());
    warehouse.server.clearTrace();
    EXPECT_FALSE(data->GetLocationPercent(1, 1, 1, 4, percent, itemCode, group));
    EXPECT_EQ(percent, -1);
    EXPECT_EQ(itemCode, QStringLiteral("0"));
    EXPECT_EQ(group, -1);
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(QStringLiteral(
            " select A.LocationPercent,B.ItemCode,B.GroupSur from kolv_mag_Location A left join "
            "kolv_mag_Location_item B ON A.Rank = B.Rank AND A.Stand = B.Stand AND A.Shelf = B.Shelf AND "
            "A.Location = B.LOcation  Where A.Rank = 1 And A.Stand = 1 And A.Shelf = 1 And A.Location = 4")));
}

TEST_F(ClsMagWatch, FindsMaterialsAssignedAndInGroups) {
    EXPECT_TRUE(data->TestExistsSurOnMag(QStringLiteral("M-1")));
    EXPECT_TRUE(data->TestExistsSurOnMag(QStringLiteral("F-2")));
    EXPECT_FALSE(data->TestExistsSurOnMag(QStringLiteral("O'Nic")));
    EXPECT_FALSE(data->TestExistsSurOnMagGroup(QStringLiteral("M-1")));
    EXPECT_TRUE(data->TestExistsSurOnMagGroup(QStringLiteral("F-1")));
    warehouse.server.clearTrace();
    EXPECT_FALSE(data->TestExistsSurOnMag(QString()));
    EXPECT_FALSE(data->TestExistsSurOnMagGroup(QString()));
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(
            {QStringLiteral(
                 " select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = NULL  UNION ALL  "
                 "select Top 1 1 from kolv_mag_Group_Item  where ItemCode = NULL"),
             QStringLiteral(" select Top 1 1 from kolv_mag_Group_Item  where ItemCode = NULL")}));
}

TEST_F(ClsMagWatch, AFailingMaterialTestReportsUnderTheOtherName) {
    warehouse.server.kill();
    expectedMessages = 1;
    EXPECT_FALSE(data->TestExistsSurOnMag(QStringLiteral("M-1")));
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetLocationPercent]"));
}

TEST_F(ClsMagWatch, ListsTheIconsOfStandsAndLocationsSideBySide) {
    QStringList ranks;
    QStringList stands;
    QStringList icons;
    EXPECT_TRUE(data->GetIconStandName(ranks, stands, icons));
    EXPECT_EQ(ranks, QStringList(QStringLiteral("1")));
    EXPECT_EQ(stands, QStringList(QStringLiteral("1")));
    EXPECT_EQ(icons, QStringList(QStringLiteral("R1_S_01.ico")));
    QStringList names;
    QStringList statuses;
    EXPECT_TRUE(data->GetIconLoactionName(names, icons, statuses));
    EXPECT_EQ(names, QStringList({QStringLiteral("n1"), QStringLiteral("n2"), QStringLiteral("n3")}));
    EXPECT_EQ(icons, QStringList({QString(), QString(), QString()}));
    EXPECT_EQ(statuses, QStringList({QStringLiteral("0"), QStringLiteral("1"), QStringLiteral("0")}));
}

TEST_F(ClsMagWatch, ListsTheMaterialOfEachLocationOrTheMembersOfItsGroup) {
    QStringList names;
    QStringList percents;
    QStringList items;
    QStringList groups;
    warehouse.server.clearTrace();
    EXPECT_TRUE(data->GetIconLoactionNameItem(names, percents, items, groups, 0));
    EXPECT_EQ(names.size(), 3);
    EXPECT_EQ(percents, QStringList({QStringLiteral("40"), QStringLiteral("0"), QStringLiteral("0")}));
    EXPECT_EQ(items, QStringList({QStringLiteral("M-1"), QString(), QString()}));
    EXPECT_EQ(groups, QStringList({QStringLiteral("0"), QStringLiteral("7"), QStringLiteral("0")}));
    EXPECT_TRUE(data->GetIconLoactionNameItem(names, percents, items, groups, 1));
    items.sort();
    EXPECT_EQ(items, QStringList({QStringLiteral("EMPTY"), QStringLiteral("EMPTY"), QStringLiteral("F-1"),
                                  QStringLiteral("F-2")}));
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(
            {QStringLiteral(
                 " select A.LocationName,A.LocationPercent,B.ItemCode,B.GroupSur from kolv_mag_Location A "
                 "left join kolv_mag_Location_item B ON A.Rank = B.Rank AND A.Stand = B.Stand AND A.Shelf "
                 "= B.Shelf AND A.Location = B.LOcation order by A.Rank,A.Stand,A.Shelf,A.Location"),
             QStringLiteral(
                 " select A.LocationName,A.LocationPercent,ISNULL(C.ItemCode,'EMPTY') as ItemCode,"
                 "ISNULL(B.GroupSur,0) as GroupSur from kolv_mag_Group_Item C inner join "
                 "kolv_mag_Location_item B ON C.GroupSur = B.GroupSur right join kolv_mag_Location A ON  "
                 "B.Rank = a.Rank And B.Stand = a.Stand And B.Shelf = a.Shelf And B.Location = a.Location "
                 "order by A.Rank,A.Stand,A.Shelf,A.Location")}));
}

TEST_F(ClsMagWatch, StoresTheNameOfOneLocation) {
    QString message;
    EXPECT_TRUE(data->SaveLocalizationID(1, 1, 1, 2, QStringLiteral("1_1_1_2_LA_3"), message))
        << qPrintable(message);
    EXPECT_EQ(
        warehouse.value(QStringLiteral("select LocationName from kolv_mag_Location where Location = 2")),
        QStringLiteral("1_1_1_2_LA_3"));
}

TEST_F(ClsMagWatch, ARefusedNameHandsOverTheProceduresMessage) {
    QString message;
    EXPECT_FALSE(data->SaveLocalizationIDTab(QStringLiteral("garbage"), QString(), QString(), message));
    EXPECT_NE(message, QString());
    EXPECT_EQ(
        warehouse.value(QStringLiteral("select LocationName from kolv_mag_Location where Location = 2")),
        QStringLiteral("n2"));
}

TEST_F(ClsMagWatch, TellsTheReturnValueOfTheRefresh) {
    EXPECT_EQ(data->RefreshQuantityOnLocationIcon(QStringLiteral("N")), 0);
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("drop procedure Kolv_mag_Refresh_Percent_Location"),
         QStringLiteral(
             "create procedure Kolv_mag_Refresh_Percent_Location @RefreshLinePercent nvarchar(1) as begin "
             "return 5; end")}));
    EXPECT_EQ(data->RefreshQuantityOnLocationIcon(QStringLiteral("N")), 5);
}

}  // namespace
}  // namespace regalon
