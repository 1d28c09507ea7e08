// kolv_mag_Watch_Detal_Item_On_Location and kolv_mag_Sur_On_Mag, called with the texts of the client.

#include "database/Warehouse.h"

#include <gtest/gtest.h>

#include <map>

namespace regalon::test {
namespace {

class MaterialList : public ::testing::Test {
protected:
    Rows list(const std::string& address, const std::string& phase = "1") {
        return connection_.run("exec kolv_mag_Watch_Detal_Item_On_Location " + address + ",N'1',N'P'," +
                               phase);
    }

    /// Makes 3/1/1/1 a location of the given material and group with no packages.
    void assign(const std::string& item, const std::string& group) {
        connection_.run(
            "DELETE FROM kolv_mag_Location_Item WHERE Rank = 3 AND Stand = 1 AND Shelf = 1 AND Location = 1");
        connection_.run(
            "DELETE FROM Kolv_Mag_BarCode_Sur WHERE Rank = 3 AND Stand = 1 AND Shelf = 1 AND Location = 1");
        connection_.run(
            "INSERT INTO kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, GroupSur) VALUES "
            "(3, 1, 1, 1, " +
            item + ", " + group + ")");
    }

    void put(const std::string& code, const std::string& item, const std::string& quantity,
             const std::string& active = "Y") {
        connection_.run(
            "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, PackWeight, Rank, Stand, Shelf, "
            "Location, Active) VALUES (N'" +
            code + "', N'" + item + "', " + quantity + ", 12.5, 3, 1, 1, 1, N'" + active + "')");
    }

    static std::size_t visible(const Rows& rows) {
        std::size_t count = 0;
        for (const auto& column : rows.columns)
            if (column.name.find("xxx_") == std::string::npos)
                ++count;
        return count;
    }

    Warehouse warehouse_;
    OdbcConnection connection_ = warehouse_.connect();
};

}  // namespace

TEST_F(MaterialList, PhaseZeroReturnsNoRows) {
    const Rows rows = list("3,1,1,1", "0");
    EXPECT_TRUE(rows.columns.empty());
}

TEST_F(MaterialList, VisibleColumnsAreStyledAndHiddenOnesStandLastWithoutWidth) {
    const Rows rows = list("3,1,1,1");
    ASSERT_GE(rows.columns.size(), 4U);
    bool hidden = false;
    for (const auto& column : rows.columns) {
        if (column.name.find("xxx_") != std::string::npos) {
            hidden = true;
            EXPECT_EQ(column.name.find(':'), std::string::npos) << column.name;
        } else {
            EXPECT_FALSE(hidden) << column.name << " stands behind a hidden column";
            const auto colon = column.name.find(':');
            const auto semicolon = column.name.find(';');
            ASSERT_NE(colon, std::string::npos) << column.name;
            ASSERT_NE(semicolon, std::string::npos) << column.name;
            EXPECT_GT(std::stoi(column.name.substr(colon + 1)), 0) << column.name;
            EXPECT_NE(std::string("012").find(column.name.substr(semicolon + 1)), std::string::npos);
        }
    }
    EXPECT_EQ(rows.columns.front().name.substr(0, rows.columns.front().name.find(':')), "Kod surowca");
}

TEST_F(MaterialList, PackagesOfAMaterialAreSummed) {
    assign("N'GR-PP-001'", "0");
    put("1", "GR-PP-001", "125");
    put("2", "GR-PP-001", "50.5");
    put("3", "GR-PP-001", "1000", "N");
    const Rows rows = list("3,1,1,1");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, 0), "GR-PP-001");
    EXPECT_EQ(rows.text(0, 1), "Granulat PP homopolimer naturalny");
    EXPECT_DOUBLE_EQ(rows.number(0, 2), 175.5);
    EXPECT_EQ(rows.text(0, 3), "kg");
    EXPECT_EQ(rows.text(0, 4), "2");
    EXPECT_DOUBLE_EQ(rows.number(0, 5), 25.0);
}

TEST_F(MaterialList, TheColumnBeforeTheLastTellsWhoBelongsThere) {
    assign("N'GR-PP-001'", "5");
    put("1", "GR-PP-001", "1");
    put("2", "BA-MB-010", "1");
    put("3", "OL-HY-046", "1");
    const Rows rows = list("3,1,1,1");
    const std::size_t status = visible(rows) - 2;
    std::map<std::string, std::string> seen;
    for (std::size_t i = 0; i < rows.size(); ++i)
        seen[rows.text(i, 0)] = rows.text(i, status);
    const std::map<std::string, std::string> expected{
        {"BA-MB-010", "A"}, {"GR-PP-001", "A"}, {"OL-HY-046", "B"}};
    EXPECT_EQ(seen, expected);
}

TEST_F(MaterialList, AnAssignedMaterialIsListedWithoutStock) {
    assign("N'GR-PP-001'", "0");
    const Rows rows = list("3,1,1,1");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_DOUBLE_EQ(rows.number(0, 2), 0.0);
    EXPECT_EQ(rows.text(0, 4), "0");
}

TEST_F(MaterialList, NullsInTheAssignmentReadAsNothingAssigned) {
    assign("NULL", "NULL");
    EXPECT_EQ(list("3,1,1,1").size(), 0U);
    put("1", "GR-PP-001", "1");
    const Rows rows = list("3,1,1,1");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, visible(rows) - 2), "B");
}

TEST_F(MaterialList, AnUnknownLocationHasNoRowsButColumns) {
    const Rows rows = list("9,9,9,9");
    EXPECT_EQ(rows.size(), 0U);
    EXPECT_FALSE(rows.columns.empty());
}

TEST_F(MaterialList, EveryLocationOfTheDemoShowsOnlyAAndB) {
    const Rows locations = connection_.run(
        "SELECT Rank, Stand, Shelf, Location FROM kolv_mag_Location_Item WHERE StatLocation_cmb = N'1'");
    ASSERT_GT(locations.size(), 10U);
    std::size_t withSeveral = 0;
    for (std::size_t i = 0; i < locations.size(); ++i) {
        const Rows rows = list(locations.text(i, 0) + "," + locations.text(i, 1) + "," +
                               locations.text(i, 2) + "," + locations.text(i, 3));
        if (rows.size() > 1)
            ++withSeveral;
        for (std::size_t k = 0; k < rows.size(); ++k) {
            const std::string status = rows.text(k, visible(rows) - 2);
            EXPECT_TRUE(status == "A" || status == "B") << status;
        }
    }
    EXPECT_GT(withSeveral, locations.size() / 2);
}

TEST_F(MaterialList, MaterialsOfTheWarehouseBeginWithNothingChosen) {
    connection_.run("INSERT INTO OITM (ItemCode, ItemName) VALUES (N'ZZ-NIGDZIE', N'Surowiec bez miejsca')");
    const Rows rows = connection_.run("exec kolv_mag_Sur_On_Mag N'P'");
    ASSERT_GT(rows.size(), 40U);
    EXPECT_EQ(rows.text(0, 0), "0");
    EXPECT_EQ(rows.text(0, 1), "wybierz");
    for (std::size_t i = 1; i < rows.size(); ++i) {
        EXPECT_EQ(rows.text(i, 1).rfind(rows.text(i, 0) + " - ", 0), 0U);
        EXPECT_NE(rows.text(i, 0), "ZZ-NIGDZIE");
    }
}

}  // namespace regalon::test
