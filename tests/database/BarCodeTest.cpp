// Kolv_mag_Param_Location_BarCode, Kolv_mag_Watch_BarCode_Location and Kolv_mag_Param_BarCode, called with
// the texts of the client.

#include "database/Warehouse.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace regalon::test {
namespace {

/// 3/1/1/1 is the location of the tests: it holds what they put there and nothing else.
class BarCodeData : public ::testing::Test {
protected:
    void SetUp() override {
        const std::string here = " WHERE Rank = 3 AND Stand = 1 AND Shelf = 1 AND Location = 1";
        connection_.run("DELETE FROM kolv_mag_Location_Item" + here);
        connection_.run("DELETE FROM Kolv_Mag_BarCode_Sur" + here);
    }

    void assign(const std::string& item, const std::string& name, const std::string& group) {
        connection_.run(
            "INSERT INTO kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, ItemName, GroupSur) "
            "VALUES (3, 1, 1, 1, " +
            item + ", " + name + ", " + group + ")");
    }
    void put(const std::string& code, const std::string& item, const std::string& quantity,
             const std::string& active = "Y", const std::string& address = "3, 1, 1, 1") {
        connection_.run(
            "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, LinePercent, DocNum, LineNum, "
            "NumberCode, Rank, Stand, Shelf, Location, Active) VALUES (N'" +
            code + "', " + item + ", " + quantity + ", 12.5, 1103, 7, 42, " + address + ", N'" + active +
            "')");
    }

    Rows figures(const std::string& address = "3,1,1,1") {
        return connection_.run("exec Kolv_mag_Param_Location_BarCode " + address);
    }
    Rows list(const std::string& filter, const std::string& mode = "1") {
        return connection_.run("exec Kolv_mag_Watch_BarCode_Location 3,1,1,1,N'" + filter + "'," + mode);
    }
    Rows find(const std::string& code) {
        return connection_.run("exec Kolv_mag_Param_BarCode N'" + code + "'");
    }

    Warehouse warehouse_;
    OdbcConnection connection_ = warehouse_.connect();
};

std::vector<std::string> namesOf(const Rows& rows) {
    std::vector<std::string> names;
    for (const auto& column : rows.columns)
        names.push_back(column.name);
    return names;
}

using Texts = std::vector<std::string>;

}  // namespace

TEST_F(BarCodeData, FiguresOfALocationCountItsCodesAndItsActivePackages) {
    connection_.run(
        "UPDATE kolv_mag_Location SET LocationPercent = 37 WHERE Rank = 3 AND Stand = 1 AND Shelf = 1 AND "
        "Location = 1");
    assign("N'GR-PP-001'", "N'Granulat'", "4");
    put("9001", "N'GR-PP-001'", "125");
    put("9002", "N'OL-HY-046'", "50.5");
    put("9003", "N'GR-PP-001'", "1000", "N");
    put("9004", "N'GR-PP-001'", "11", "Y", "3, 1, 1, 2");
    const Rows rows = figures();
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(namesOf(rows),
              (Texts{"ItemCode", "ItemName", "Quantity", "QuantityPer", "CodeActive", "CodeGlobal",
                     "GroupCode", "GroupName", "QuantityPerCalculate", "Error"}));
    EXPECT_EQ(rows.text(0, 0), "GR-PP-001");
    EXPECT_EQ(rows.text(0, 1), "Granulat");
    EXPECT_DOUBLE_EQ(rows.number(0, 2), 175.5);
    EXPECT_DOUBLE_EQ(rows.number(0, 3), 37.0);
    EXPECT_EQ(rows.whole(0, 4), 2);
    EXPECT_EQ(rows.whole(0, 5), 3);
    EXPECT_EQ(rows.whole(0, 6), 4);
    EXPECT_EQ(rows.text(0, 7),
              connection_.run("SELECT GroupSurName FROM kolv_mag_Location_Group WHERE GroupSur = 4").text(0));
    EXPECT_DOUBLE_EQ(rows.number(0, 8), 25.0);
    EXPECT_EQ(rows.whole(0, 9), 0);
}

TEST_F(BarCodeData, ALocationWithoutAssignmentHasNoMaterialAndNoError) {
    const Rows bare = figures();
    ASSERT_EQ(bare.size(), 1U);
    EXPECT_EQ(bare.text(0, 0), "<NULL>");
    EXPECT_DOUBLE_EQ(bare.number(0, 2), 0.0);
    EXPECT_EQ(bare.whole(0, 5), 0);
    EXPECT_EQ(bare.whole(0, 9), 0);
    assign("N''", "N''", "0");
    EXPECT_EQ(figures().text(0, 0), "<NULL>") << "an empty code is no material";
}

TEST_F(BarCodeData, ALocationThatDoesNotExistIsAnError) {
    for (const char* address : {"9,9,9,9", "-1,-1,-1,-1", "NULL,1,1,1"}) {
        const Rows rows = figures(address);
        ASSERT_EQ(rows.size(), 1U) << address;
        EXPECT_GT(rows.whole(0, 9), 0) << address;
    }
}

TEST_F(BarCodeData, TheListHasSixVisibleColumnsAndNoHiddenOnes) {
    const Rows rows = list("Y");
    ASSERT_EQ(rows.columns.size(), 6U);
    for (const auto& column : rows.columns) {
        EXPECT_EQ(column.name.find("xxx_"), std::string::npos) << column.name;
        EXPECT_LT(column.name.find(':'), column.name.find(';')) << column.name;
    }
}

TEST_F(BarCodeData, TheListShowsActiveCodesOrAllOfThem) {
    put("9001", "N'GR-PP-001'", "125");
    put("9002", "N'GR-PP-001'", "50.5", "N");
    put("9003", "N'OL-HY-046'", "7", "Y", "3, 1, 1, 2");
    const Rows active = list("Y");
    ASSERT_EQ(active.size(), 1U);
    EXPECT_EQ(active.text(0, 0), "9001");
    EXPECT_EQ(active.text(0, 1).find("GR-PP-001 - "), 0U);
    EXPECT_EQ(active.whole(0, 2), 1103);
    EXPECT_EQ(active.whole(0, 3), 7);
    EXPECT_EQ(active.whole(0, 4), 42);
    EXPECT_EQ(active.text(0, 5), "125,00 kg");
    const Rows all = list("N");
    ASSERT_EQ(all.size(), 2U);
    EXPECT_EQ(all.text(1, 0), "9002");
    EXPECT_EQ(all.text(1, 5), "wydano 50,50 kg");
    EXPECT_TRUE(list("Y", "0").columns.empty());
}

TEST_F(BarCodeData, NullsInAPackageReadAsNumbersInTheList) {
    connection_.run(
        "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, Rank, Stand, Shelf, Location, Active) VALUES (N'9001', "
        "3, 1, 1, 1, N'Y')");
    const Rows rows = list("Y");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, 1), "");
    for (std::size_t column = 2; column <= 4; ++column)
        EXPECT_EQ(rows.whole(0, column), 0) << column;
    EXPECT_EQ(rows.text(0, 5), "0,00");
}

TEST_F(BarCodeData, ACodeLeadsToThePlaceOfItsPackage) {
    put("0059012", "N'GR-PP-001'", "125");
    const Rows rows = find("0059012");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(namesOf(rows),
              (Texts{"ItemCode", "ItemName", "Rank", "Stand", "Shelf", "Location", "NumberCode", "Error"}));
    EXPECT_EQ(rows.text(0, 0), "GR-PP-001");
    EXPECT_EQ(rows.text(0, 1),
              connection_.run("SELECT ItemName FROM OITM WHERE ItemCode = N'GR-PP-001'").text(0));
    for (std::size_t column = 2; column <= 5; ++column)
        EXPECT_EQ(rows.whole(0, column), column == 2 ? 3 : 1) << column;
    EXPECT_EQ(rows.whole(0, 6), 42);
    EXPECT_EQ(rows.whole(0, 7), 0);
    EXPECT_EQ(find(" 0059012 ").whole(0, 7), 0) << "blanks around a code are not part of it";
    EXPECT_GT(find("59012").whole(0, 7), 0) << "a leading zero is";
}

TEST_F(BarCodeData, ACodeWithoutAPlaceIsAnError) {
    put("9001", "N'GR-PP-001'", "1", "Y", "NULL, NULL, NULL, NULL");
    put("9002", "N'GR-PP-001'", "1", "N");
    const std::string longest(50, '7');
    put(longest, "N'GR-PP-001'", "1");
    EXPECT_EQ(find(longest).whole(0, 7), 0);
    for (const std::string& code :
         {std::string("9001"), std::string("9002"), std::string("9003"), longest + "7",
          std::string(10000, '7'), std::string("7''; DROP TABLE OITM --")}) {
        const Rows rows = find(code);
        ASSERT_EQ(rows.size(), 1U) << code;
        EXPECT_EQ(rows.whole(0, 7), 1) << code;
        EXPECT_EQ(rows.whole(0, 2), 0) << code;
    }
    EXPECT_EQ(connection_.run("exec Kolv_mag_Param_BarCode NULL").whole(0, 7), 1);
}

TEST_F(BarCodeData, EveryActiveCodeOfTheDemoIsFoundWhereItsLocationListsIt) {
    const Rows codes = connection_.run(
        "SELECT TOP 40 BarCode, Rank, Stand, Shelf, Location FROM Kolv_Mag_BarCode_Sur WHERE Active = N'Y' "
        "AND Rank IS NOT NULL ORDER BY BarCode");
    ASSERT_EQ(codes.size(), 40U);
    for (std::size_t row = 0; row < codes.size(); ++row) {
        const Rows found = find(codes.text(row));
        std::string address;
        for (std::size_t part = 1; part <= 4; ++part) {
            EXPECT_EQ(found.text(0, part + 1), codes.text(row, part));
            address += codes.text(row, part) + ",";
        }
        const Rows listed = connection_.run("exec Kolv_mag_Watch_BarCode_Location " + address + "N'Y',1");
        bool there = false;
        for (std::size_t line = 0; line < listed.size(); ++line)
            there = there || listed.text(line) == codes.text(row);
        EXPECT_TRUE(there) << codes.text(row);
        address.pop_back();
        EXPECT_EQ(figures(address).whole(0, 4), static_cast<long>(listed.size())) << address;
    }
}

}  // namespace regalon::test
