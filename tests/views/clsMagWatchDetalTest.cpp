#include "map/MapWarehouse.h"
#include "platform/MsgBox.h"
#include "views/clsMagWatchDetal.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;

class ClsMagWatchDetal : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why()); }

    void assign(const QString& columns, const QString& values) {
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("delete from kolv_mag_Location_Item where Rank = 1 and Stand = 2 and Shelf = 3"),
             QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location") + columns +
                 QStringLiteral(") values (1,2,3,1") + values + QStringLiteral(")")}))
            << qPrintable(warehouse.why());
    }
    static LocationItemParams itemBefore() {
        LocationItemParams item;
        item.ItemCode = QStringLiteral("before");
        item.GroupSur = 9;
        item.StatLocation_cmb = 1;
        return item;
    }
    QString sent() const { return warehouse.batches().join(QStringLiteral(" | ")); }

    MapWarehouse warehouse{LocalWarehouse::Content::Demo};
    MsgBoxRecorder messages;
    clsMagWatchDetal data{warehouse.context};
    const LocationAddress here{1, 2, 3, 1};
    const LocationAddress nowhere{9, 9, 9, 9};
};

TEST_F(ClsMagWatchDetal, ReadsTheFiguresOfALocation) {
    assign(QStringLiteral(",ItemCode"), QStringLiteral(",N'GR-PP-001'"));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Location set LocationPercent = 42 where Rank = 1 and Stand = 2"),
         QStringLiteral("delete from Kolv_Mag_BarCode_Sur where Rank = 1 or ItemCode = N'GR-PP-001'"),
         QStringLiteral("insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,LinePercent,Rank,Stand,"
                        "Shelf,Location,Active) values (N'T1',N'GR-PP-001',12.5,7.25,1,2,3,1,N'Y'),"
                        "(N'T2',N'GR-PP-001',300,NULL,NULL,NULL,NULL,NULL,N'Y')")}));
    LocationFigures figures;
    EXPECT_TRUE(data.GetParamLocalization(here, figures));
    EXPECT_EQ(sent(), QStringLiteral(" exec Kolv_mag_Param_Location 1,2,3,1"));
    EXPECT_EQ(figures.LocationPercent, 42);
    EXPECT_EQ(figures.QuantityLocation, 12.5);
    EXPECT_EQ(figures.QuantityBufor, 300);
    EXPECT_EQ(figures.QuantityPer, 7.25);
}

TEST_F(ClsMagWatchDetal, FiguresThatAreNullReadAsZero) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("drop procedure Kolv_mag_Param_Location"),
         QStringLiteral("create procedure Kolv_mag_Param_Location @Rank smallint, @Stand smallint, @Shelf "
                        "smallint, @Location smallint as begin set nocount on; select cast(NULL as smallint)"
                        " as LocationPercent, cast(NULL as float) as QuantityLocation, cast(NULL as float)"
                        " as QuantityBufor, cast(NULL as float) as QuantityPer; return 0; end")}));
    LocationFigures figures{.LocationPercent = 1, .QuantityLocation = 2, .QuantityBufor = 3};
    EXPECT_TRUE(data.GetParamLocalization(here, figures));
    EXPECT_EQ(figures.LocationPercent, 0);
    EXPECT_EQ(figures.QuantityLocation, 0);
    EXPECT_EQ(figures.QuantityBufor, 0);
}

TEST_F(ClsMagWatchDetal, WithoutARowTheOutputStaysAsItWas) {
    LocationFigures figures{.LocationPercent = 5, .QuantityBufor = 6};
    EXPECT_FALSE(data.GetParamLocalization(nowhere, figures));
    EXPECT_EQ(figures.LocationPercent, 5);
    EXPECT_EQ(figures.QuantityBufor, 6);
    LocationItemParams item = itemBefore();
    EXPECT_FALSE(data.GetParamLocalizationItem(nowhere, item));
    EXPECT_EQ(item.ItemCode, QStringLiteral("before"));
    QString text = QStringLiteral("before");
    EXPECT_FALSE(data.GetParamLocalizationStatic(nowhere, QStringLiteral("ItemCode"), text));
    EXPECT_FALSE(data.GetParamStand(9, 9, text));
    EXPECT_EQ(text, QStringLiteral("before"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ClsMagWatchDetal, ReadsWhatIsAssigned) {
    assign(QStringLiteral(",ItemCode,ItemName,GroupSur,Height_int,Width_int,Depth_int,Weight_int,"
                          "Picture_pic,Description_char,StatLocation_cmb"),
           QStringLiteral(",N'SUR-1',N'Śruba',3,1200,900,1100,1000,N'Qk0=',N'uwaga',N'1'"));
    LocationItemParams item;
    EXPECT_TRUE(data.GetParamLocalizationItem(here, item));
    EXPECT_EQ(sent(), QStringLiteral(
                          "select ItemCode,ItemName,GroupSur,Height_int,Width_int,Depth_int,Weight_int,"
                          "Picture_pic,Description_char,StatLocation_cmb from kolv_mag_Location_Item(nolock)"
                          "  where Rank = 1 and Stand = 2 and  Shelf = 3 and Location = 1"));
    EXPECT_EQ(item.ItemCode, QStringLiteral("SUR-1"));
    EXPECT_EQ(item.ItemName, QStringLiteral("Śruba"));
    EXPECT_EQ(item.GroupSur, 3);
    EXPECT_EQ(item.Height_int, 1200);
    EXPECT_EQ(item.Width_int, 900);
    EXPECT_EQ(item.Depth_int, 1100);
    EXPECT_EQ(item.Weight_int, 1000);
    EXPECT_EQ(item.Picture_pic, QStringLiteral("Qk0="));
    EXPECT_EQ(item.Description_char, QStringLiteral("uwaga"));
    EXPECT_EQ(item.StatLocation_cmb, 1);
}

TEST_F(ClsMagWatchDetal, AnAssignmentOfNullsReadsAsEmptyTextsAndZeros) {
    assign({}, {});
    LocationItemParams item = itemBefore();
    EXPECT_TRUE(data.GetParamLocalizationItem(here, item));
    EXPECT_EQ(item.ItemCode, QString());
    EXPECT_EQ(item.Picture_pic, QString());
    EXPECT_EQ(item.GroupSur, 0);
    EXPECT_EQ(item.Weight_int, 0);
    EXPECT_EQ(item.StatLocation_cmb, 0);
}

TEST_F(ClsMagWatchDetal, AParameterBeyond16BitsIsReportedAndNothingIsRead) {
    assign(QStringLiteral(",ItemCode,Width_int"), QStringLiteral(",N'SUR-1',40000"));
    LocationItemParams item = itemBefore();
    EXPECT_FALSE(data.GetParamLocalizationItem(here, item));
    EXPECT_EQ(item.ItemCode, QString());
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatchDetal [GetParamLocalizationItem]"));
}

TEST_F(ClsMagWatchDetal, ReadsOneColumnByItsName) {
    assign(QStringLiteral(",Description_char"), QStringLiteral(",N'uwaga'"));
    QString value;
    EXPECT_TRUE(data.GetParamLocalizationStatic(here, QStringLiteral("Description_char"), value));
    EXPECT_EQ(sent(), QStringLiteral("select Description_char from kolv_mag_Location_Item where Rank = 1 and "
                                     "Stand = 2 and  Shelf = 3 and Location = 1"));
    EXPECT_EQ(value, QStringLiteral("uwaga"));
}

TEST_F(ClsMagWatchDetal, ReadsTheDescriptionOfAStand) {
    ASSERT_TRUE(warehouse.run({QStringLiteral(
        "update kolv_mag_Stand set StandDescription = N'przy ścianie' where Rank = 1 and Stand = 2")}));
    QString description;
    EXPECT_TRUE(data.GetParamStand(1, 2, description));
    EXPECT_EQ(sent(), QStringLiteral("select StandDescription from kolv_mag_Stand(nolock) Where Rank = 1 And "
                                     "Stand = 2"));
    EXPECT_EQ(description, QStringLiteral("przy ścianie"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Stand set StandDescription = NULL")}));
    EXPECT_TRUE(data.GetParamStand(1, 2, description));
    EXPECT_EQ(description, QString());
}

TEST_F(ClsMagWatchDetal, TellsTheNameOfAGroupOrThatThereIsNone) {
    EXPECT_EQ(data.GetGroupName(4), QStringLiteral("Granulaty"));
    EXPECT_EQ(sent(),
              QStringLiteral(" select GroupSurName from kolv_mag_Location_Group(nolock) where GroupSur = 4"));
    EXPECT_EQ(data.GetGroupName(0), QStringLiteral("Brak przypisania"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Location_Group set GroupSurName = NULL")}));
    EXPECT_EQ(data.GetGroupName(4), QStringLiteral("Brak przypisania"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ClsMagWatchDetal, AFailureIsReportedUnderTheMethodAndEmptiesTheOutput) {
    warehouse.server.kill();
    LocationFigures figures{.LocationPercent = 5};
    LocationItemParams item = itemBefore();
    QString text = QStringLiteral("before");
    EXPECT_FALSE(data.GetParamLocalization(here, figures));
    EXPECT_FALSE(data.GetParamLocalizationItem(here, item));
    EXPECT_FALSE(data.GetParamLocalizationStatic(here, QStringLiteral("ItemCode"), text));
    EXPECT_FALSE(data.GetParamStand(1, 2, text));
    EXPECT_EQ(data.GetGroupName(4), QStringLiteral("Error"));
    EXPECT_TRUE(data.EcexProcedure(QStringLiteral("select 1")));
    EXPECT_EQ(figures.LocationPercent, 0);
    EXPECT_EQ(item.ItemCode, QString());
    EXPECT_EQ(text, QString());
    QStringList titles;
    for (const auto& message : messages.messages())
        titles.append(message.Title);
    const QString head = QStringLiteral("Error - clsMagWatchDetal [");
    EXPECT_EQ(titles,
              QStringList({head + QStringLiteral("GetParamLocalization]"),
                           head + QStringLiteral("GetParamLocalizationItem]"),
                           head + QStringLiteral("GetParamLocalizationStatic]"),
                           head + QStringLiteral("GetParamStand]"), head + QStringLiteral("GetGroupName]"),
                           head + QStringLiteral("EcexProcedure]")}));
}

}  // namespace
}  // namespace regalon
