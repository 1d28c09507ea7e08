// Kolv_mag_Param_Location and kolv_mag_Watch_Item_On_Location, called with the texts of the client.

#include "database/Warehouse.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace regalon::test {
namespace {

/// 3/1/1/1 is the location of the tests: it holds what they put there and nothing else.
class StandDetailData : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string here = " WHERE Rank = 3 AND Stand = 1 AND Shelf = 1 AND Location = 1";
        connection_.run("DELETE FROM kolv_mag_Location_Item" + here);
        connection_.run("DELETE FROM Kolv_Mag_BarCode_Sur" + here);
        connection_.run("DELETE FROM Kolv_Mag_BarCode_Sur WHERE Rank IS NULL");
    }

    void assign(const std::string& item, const std::string& group, const std::string& status = "NULL") {
        connection_.run(
            "INSERT INTO kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, GroupSur, "
            "StatLocation_cmb) VALUES (3, 1, 1, 1, " +
            item + ", " + group + ", " + status + ")");
    }

    void put(const std::string& item, const std::string& quantity, const std::string& percent,
             const std::string& active = "Y", const std::string& address = "3, 1, 1, 1") {
        connection_.run(
            "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, LinePercent, Rank, Stand, Shelf, "
            "Location, Active) VALUES (N'T" +
            std::to_string(++packages_) + "', N'" + item + "', " + quantity + ", " + percent + ", " +
            address + ", N'" + active + "')");
    }
    void buffer(const std::string& item, const std::string& quantity, const std::string& active = "Y") {
        put(item, quantity, "NULL", active, "NULL, NULL, NULL, NULL");
    }

    Rows figures(const std::string& address = "3,1,1,1") {
        return connection_.run(" exec Kolv_mag_Param_Location " + address);
    }
    Rows list(const std::string& phase = "1") {
        return connection_.run("exec kolv_mag_Watch_Item_On_Location 3,1,1,1,N'1',N'P'," + phase + ",N'W'");
    }

    Warehouse warehouse_;
    OdbcConnection connection_ = warehouse_.connect();
    int packages_ = 0;
};

}  // namespace

TEST_F(StandDetailData, FiguresCountTheAssignedMaterialOnTheLocationAndInTheBuffer) {
    connection_.run(
        "UPDATE kolv_mag_Location SET LocationPercent = 37 WHERE Rank = 3 AND Stand = 1 AND Shelf = 1 AND "
        "Location = 1");
    assign("N'GR-PP-001'", "0");
    put("GR-PP-001", "125", "20.25");
    put("GR-PP-001", "50.5", "10");
    put("GR-PP-001", "1000", "40", "N");
    put("OL-HY-046", "7", "3.5");
    put("GR-PP-001", "11", "1", "Y", "3, 1, 1, 2");
    buffer("GR-PP-001", "300");
    buffer("GR-PP-001", "25.75");
    buffer("GR-PP-001", "4000", "N");
    buffer("OL-HY-046", "9");
    const Rows rows = figures();
    ASSERT_EQ(rows.size(), 1U);
    ASSERT_EQ(rows.columns.size(), 4U);
    EXPECT_EQ(rows.columns[0].name, "LocationPercent");
    EXPECT_EQ(rows.columns[1].name, "QuantityLocation");
    EXPECT_EQ(rows.columns[2].name, "QuantityBufor");
    EXPECT_EQ(rows.columns[3].name, "QuantityPer");
    EXPECT_EQ(rows.whole(0, 0), 37);
    EXPECT_DOUBLE_EQ(rows.number(0, 1), 175.5);
    EXPECT_DOUBLE_EQ(rows.number(0, 2), 325.75);
    EXPECT_DOUBLE_EQ(rows.number(0, 3), 33.75);
}

TEST_F(StandDetailData, FiguresOfAGroupCountAllItsMembersOnce) {
    assign("N'GR-PP-001'", "4");
    const Rows group =
        connection_.run("SELECT ItemCode FROM kolv_mag_Group_Item WHERE GroupSur = 4 ORDER BY ItemCode");
    ASSERT_GT(group.size(), 1U);
    for (std::size_t i = 0; i < group.size(); ++i) {
        put(group.text(i), "10", "1");
        buffer(group.text(i), "3");
    }
    const Rows rows = figures();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_DOUBLE_EQ(rows.number(0, 1), 10.0 * static_cast<double>(group.size()));
    EXPECT_DOUBLE_EQ(rows.number(0, 2), 3.0 * static_cast<double>(group.size()));
}

TEST_F(StandDetailData, FiguresOfALocationWithoutAssignmentAreZeroApartFromTheLines) {
    put("GR-PP-001", "125", "20.25");
    buffer("GR-PP-001", "300");
    const Rows rows = figures();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_DOUBLE_EQ(rows.number(0, 1), 0.0);
    EXPECT_DOUBLE_EQ(rows.number(0, 2), 0.0);
    EXPECT_DOUBLE_EQ(rows.number(0, 3), 20.25);
}

TEST_F(StandDetailData, NullsInTheAssignmentAndInThePackagesCountNothing) {
    assign("NULL", "NULL");
    connection_.run("UPDATE kolv_mag_Location SET LocationPercent = NULL WHERE Rank = 3 AND Stand = 1");
    put("GR-PP-001", "NULL", "NULL");
    const Rows rows = figures();
    ASSERT_EQ(rows.size(), 1U);
    for (std::size_t column = 0; column < 4; ++column)
        EXPECT_DOUBLE_EQ(rows.number(0, column), 0.0) << column;
}

TEST_F(StandDetailData, ALocationThatDoesNotExistHasNoFigures) {
    EXPECT_EQ(figures("9,9,9,9").size(), 0U);
    EXPECT_EQ(figures("-1,-1,-1,-1").size(), 0U);
}

TEST_F(StandDetailData, PhaseZeroOfTheListReturnsNoRows) {
    assign("N'GR-PP-001'", "0");
    EXPECT_TRUE(list("0").columns.empty());
}

TEST_F(StandDetailData, TheListEndsInFlagQuantityKindAndCode) {
    assign("N'GR-PP-001'", "5", "N'1'");
    put("GR-PP-001", "125", "1");
    put("GR-PP-001", "50.5", "1");
    put("BA-MB-010", "1", "1");
    put("OL-HY-046", "2", "1");
    put("SR-OC-022", "2", "1", "N");
    const Rows rows = list();
    ASSERT_EQ(rows.size(), 3U);
    const std::size_t last = rows.columns.size() - 1;
    const std::vector<std::vector<std::string>> expected = {
        {"1", "A", "BA-MB-010"}, {"1", "A", "GR-PP-001"}, {"1", "B", "OL-HY-046"}};
    const std::vector<double> quantities = {1, 175.5, 2};
    for (std::size_t row = 0; row < rows.size(); ++row) {
        EXPECT_EQ(rows.text(row, last), expected[row][2]);
        EXPECT_EQ(rows.text(row, last - 1), expected[row][1]);
        EXPECT_DOUBLE_EQ(rows.number(row, last - 2), quantities[row]);
        EXPECT_EQ(rows.text(row, last - 3), expected[row][0]);
    }
    for (const auto& column : rows.columns) {
        EXPECT_EQ(column.name.find("xxx_"), std::string::npos) << column.name;
        EXPECT_LT(column.name.find(':'), column.name.find(';')) << column.name;
    }
}

TEST_F(StandDetailData, ALocationOfOneMaterialHasTheFlagDownAndListsItWithoutStock) {
    assign("N'GR-PP-001'", "0", "NULL");
    const Rows rows = list();
    ASSERT_EQ(rows.size(), 1U);
    const std::size_t last = rows.columns.size() - 1;
    EXPECT_EQ(rows.text(0, last), "GR-PP-001");
    EXPECT_DOUBLE_EQ(rows.number(0, last - 2), 0.0);
    EXPECT_EQ(rows.text(0, last - 3), "0");
}

TEST_F(StandDetailData, BothListsOfALocationAgree) {
    assign("N'GR-PP-001'", "5", "N'1'");
    put("BA-MB-010", "1", "1");
    put("OL-HY-046", "2", "1");
    const Rows here = list();
    const Rows there = connection_.run("exec kolv_mag_Watch_Detal_Item_On_Location 3,1,1,1,N'1',N'P',1");
    ASSERT_EQ(here.size(), 3U);
    ASSERT_EQ(there.size(), here.size());
    const std::size_t last = here.columns.size() - 1;
    for (std::size_t row = 0; row < here.size(); ++row) {
        EXPECT_EQ(here.text(row, last), there.text(row, 0));
        EXPECT_DOUBLE_EQ(here.number(row, last - 2), there.number(row, 2));
        EXPECT_EQ(here.text(row, last - 1), there.text(row, 6));
    }
}

}  // namespace regalon::test
