// The reads of the barcode window's data class.

#include "map/MapWarehouse.h"
#include "platform/MsgBox.h"
#include "views/clsMagWatchBarCodeLoc.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;

constexpr LocationAddress kPlace{1, 2, 3, 4};

/// Procedures that answer what a test wants take the place of the real ones.
class ClsMagWatchBarCodeLoc : public testing::Test {
protected:
    ClsMagWatchBarCodeLoc() : warehouse(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        data = std::make_unique<clsMagWatchBarCodeLoc>(warehouse.context);
    }

    void figuresAre(const QString& select) {
        answer(QStringLiteral("Kolv_mag_Param_Location_BarCode"),
               QStringLiteral("@Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint"),
               select);
    }
    void placeIs(const QString& select) {
        answer(QStringLiteral("Kolv_mag_Param_BarCode"), QStringLiteral("@BarCode nvarchar(max)"), select);
    }
    void answer(const QString& procedure, const QString& parameters, const QString& select) {
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("drop procedure ") + procedure,
             QStringLiteral("create procedure %1 %2 as begin %3 end").arg(procedure, parameters, select)}))
            << qPrintable(warehouse.why());
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    std::unique_ptr<clsMagWatchBarCodeLoc> data;
    BarCodeFigures figures;
    BarCodePlace place;
};

TEST_F(ClsMagWatchBarCodeLoc, ReadsTheFiguresOfALocation) {
    figuresAre(QStringLiteral(
        "select N'M-1' as ItemCode, N'Rura' as ItemName, 12.5 as Quantity, 37.25 as QuantityPer, 70000 as "
        "CodeActive, 80000 as CodeGlobal, 7 as GroupCode, N'Farby' as GroupName, 40.5 as "
        "QuantityPerCalculate, 0 as Error"));
    EXPECT_TRUE(data->GetParamLocalizationProcedure(kPlace, figures));
    EXPECT_EQ(figures.ItemCode, QStringLiteral("M-1"));
    EXPECT_EQ(figures.ItemName, QStringLiteral("Rura"));
    EXPECT_EQ(figures.Quantity, 12.5);
    EXPECT_EQ(figures.QuantityPer, 37.25);
    EXPECT_EQ(figures.CodeActive, 70000);
    EXPECT_EQ(figures.CodeGlobal, 80000);
    EXPECT_EQ(figures.GroupCode, 7);
    EXPECT_EQ(figures.GroupName, QStringLiteral("Farby"));
    EXPECT_EQ(figures.QuantityPerCalculate, 40.5);
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral("exec Kolv_mag_Param_Location_BarCode 1,2,3,4")));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ClsMagWatchBarCodeLoc, NullsInTheFiguresBecomeTheWordForNothingAndZeros) {
    figures.ItemCode = QStringLiteral("x");
    figures.GroupCode = 9;
    figures.Quantity = 9;
    figuresAre(
        QStringLiteral("select cast(null as nvarchar(20)) as ItemCode, cast(null as nvarchar(20)) as "
                       "ItemName, cast(null as float) as Quantity, cast(null as float) as QuantityPer, "
                       "cast(null as int) as CodeActive, cast(null as int) as CodeGlobal, cast(null as "
                       "smallint) as GroupCode, cast(null as nvarchar(20)) as GroupName, cast(null as "
                       "float) as QuantityPerCalculate, cast(null as smallint) as Error"));
    EXPECT_TRUE(data->GetParamLocalizationProcedure(kPlace, figures));
    EXPECT_EQ(figures.ItemCode, QStringLiteral("BRAK"));
    EXPECT_EQ(figures.ItemName, QString());
    EXPECT_EQ(figures.Quantity, 0);
    EXPECT_EQ(figures.CodeActive, 0);
    EXPECT_EQ(figures.CodeGlobal, 0);
    EXPECT_EQ(figures.GroupCode, 0);
    EXPECT_EQ(figures.QuantityPerCalculate, 0);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ClsMagWatchBarCodeLoc, AnErrorInTheFiguresIsFalseWithoutAMessage) {
    EXPECT_FALSE(data->GetParamLocalizationProcedure({9, 9, 9, 9}, figures)) << "no such location";
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ClsMagWatchBarCodeLoc, NoRowOfFiguresIsTrueAndTouchesNothing) {
    figuresAre(QStringLiteral("select 1 as ItemCode where 1 = 0"));
    figures.ItemCode = QStringLiteral("x");
    figures.CodeActive = 5;
    EXPECT_TRUE(data->GetParamLocalizationProcedure(kPlace, figures));
    EXPECT_EQ(figures.ItemCode, QStringLiteral("x"));
    EXPECT_EQ(figures.CodeActive, 5);
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(ClsMagWatchBarCodeLoc, AFailureOfTheFiguresIsReportedUnderTheirName) {
    figuresAre(QStringLiteral("raiserror(N'Nie teraz', 16, 1)"));
    EXPECT_FALSE(data->GetParamLocalizationProcedure(kPlace, figures));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("Error - clsMagWatchBarCodeLoc [GetParamLocalizationProcedure]"));
}

TEST_F(ClsMagWatchBarCodeLoc, AFailureHalfWayThroughTheFiguresLeavesThoseOfAnAnswerOfNulls) {
    figures.ItemName = QStringLiteral("x");
    figures.CodeGlobal = 9;
    figuresAre(QStringLiteral(
        "select N'M-1' as ItemCode, N'Rura' as ItemName, 12.5 as Quantity, 37.25 as QuantityPer, N'siedem' "
        "as "
        "CodeActive, 8 as CodeGlobal, 7 as GroupCode, N'Farby' as GroupName, 40.5 as QuantityPerCalculate, 0 "
        "as Error"));
    EXPECT_FALSE(data->GetParamLocalizationProcedure(kPlace, figures));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(figures.ItemCode, QStringLiteral("BRAK"));
    EXPECT_EQ(figures.ItemName, QString());
    EXPECT_EQ(figures.Quantity, 0);
    EXPECT_EQ(figures.CodeGlobal, 0);
}

TEST_F(ClsMagWatchBarCodeLoc, ReadsThePlaceOfACode) {
    placeIs(QStringLiteral(
        "select N'M-1' as ItemCode, N'Rura' as ItemName, 2 as Rank, 3 as Stand, 4 as Shelf, 1 as Location, "
        "70000 as NumberCode, 0 as Error"));
    EXPECT_EQ(data->GetParamBarCodeProcedure(QStringLiteral("0059'012"), place), BarCodeAnswer::Known);
    EXPECT_EQ(place.ItemCode, QStringLiteral("M-1"));
    EXPECT_EQ(place.ItemName, QStringLiteral("Rura"));
    EXPECT_EQ(place.Address.Rank, 2);
    EXPECT_EQ(place.Address.Stand, 3);
    EXPECT_EQ(place.Address.Shelf, 4);
    EXPECT_EQ(place.Address.Location, 1);
    EXPECT_EQ(place.NumberCode, 70000);
    EXPECT_EQ(warehouse.batches(), QStringList(QStringLiteral("exec Kolv_mag_Param_BarCode N'0059''012'")));
}

TEST_F(ClsMagWatchBarCodeLoc, TellsAnUnknownCodeFromAFailureAndFromNoRow) {
    EXPECT_EQ(data->GetParamBarCodeProcedure(QStringLiteral("123"), place), BarCodeAnswer::Unknown);
    EXPECT_EQ(messages.count(), 0);
    placeIs(QStringLiteral("select 1 as ItemCode where 1 = 0"));
    place.NumberCode = 5;
    EXPECT_EQ(data->GetParamBarCodeProcedure(QStringLiteral("123"), place), BarCodeAnswer::Known);
    EXPECT_EQ(place.NumberCode, 5) << "untouched";
    placeIs(QStringLiteral("raiserror(N'Nie teraz', 16, 1)"));
    EXPECT_EQ(data->GetParamBarCodeProcedure(QStringLiteral("123"), place), BarCodeAnswer::Failed);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("Error - clsMagWatchBarCodeLoc [GetParamBarCodeProcedure]"));
    EXPECT_EQ(place.NumberCode, 0) << "none after a failure";
}

TEST_F(ClsMagWatchBarCodeLoc, NullsInAPlaceBecomeZerosAndEmptyTexts) {
    place.Address = {9, 9, 9, 9};
    place.ItemCode = QStringLiteral("x");
    place.NumberCode = 9;
    placeIs(QStringLiteral(
        "select cast(null as nvarchar(20)) as ItemCode, cast(null as nvarchar(20)) as ItemName, cast(null as "
        "smallint) as Rank, cast(null as smallint) as Stand, cast(null as smallint) as Shelf, cast(null as "
        "smallint) as Location, cast(null as int) as NumberCode, cast(null as smallint) as Error"));
    EXPECT_EQ(data->GetParamBarCodeProcedure(QStringLiteral("1"), place), BarCodeAnswer::Known);
    EXPECT_EQ(place.ItemCode, QString());
    EXPECT_EQ(place.Address.Rank, 0);
    EXPECT_EQ(place.Address.Location, 0);
    EXPECT_EQ(place.NumberCode, 0);
}

TEST_F(ClsMagWatchBarCodeLoc, LooksForAMaterialOnLocationsAndInGroups) {
    EXPECT_FALSE(data->TestExistsSurOnMag(QStringLiteral("M-1")));
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral(
                  " select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = N'M-1'  UNION ALL  "
                  "select Top 1 1 from kolv_mag_Group_Item  where ItemCode = N'M-1'")));
}

TEST_F(ClsMagWatchBarCodeLoc, ReadsWhatIsAssignedToALocation) {
    QString code;
    QString name;
    qint16 group = 0;
    EXPECT_FALSE(data->GetParamLocalization(kPlace, code, name, group));
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral("select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item "
                                         "where Rank = 1 and Stand = 2 and  Shelf = 3 and Location = 4")));
}

}  // namespace
}  // namespace regalon
