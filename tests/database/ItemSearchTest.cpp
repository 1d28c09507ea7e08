// Kolv_mag_LookFor_Item and Kolv_mag_LookFor_Item_2, called with the texts of the item search dialog.

#include "database/Warehouse.h"

#include <gtest/gtest.h>
#include <sqlext.h>

namespace regalon::test {
namespace {

class ItemSearch : public ::testing::Test {
protected:
    /// `text` is what the user typed; `column` is ItemCode or ItemName.
    Rows find(const std::string& text, const std::string& column = "ItemCode", const std::string& suffix = "",
              int step = 1) {
        return connection_.run("exec Kolv_mag_LookFor_Item" + suffix + " '" + text + "%' , '" + column +
                               "'," + std::to_string(step));
    }
    Rows findInWarehouse(const std::string& text, const std::string& column = "ItemCode") {
        return find(text, column, "_2");
    }

    static std::vector<std::string> codes(const Rows& rows) {
        std::vector<std::string> found;
        for (std::size_t i = 0; i < rows.size(); ++i)
            found.push_back(rows.text(i, 0));
        return found;
    }

    using Codes = std::vector<std::string>;

    Warehouse warehouse_;
    OdbcConnection connection_ = warehouse_.connect();
};

}  // namespace

TEST_F(ItemSearch, StepZeroReturnsNoRows) {
    EXPECT_TRUE(find("", "ItemCode", "", 0).columns.empty());
    EXPECT_TRUE(find("", "ItemCode", "_2", 0).columns.empty());
}

TEST_F(ItemSearch, TheFirstColumnIsTheCodeAsNationalText) {
    for (const char* suffix : {"", "_2"}) {
        for (const char* column : {"ItemCode", "ItemName"}) {
            const Rows rows = find("", column, suffix);
            ASSERT_FALSE(rows.columns.empty());
            EXPECT_EQ(rows.columns.front().odbcType, SQL_WVARCHAR);
            ASSERT_GT(rows.size(), 0U);
            EXPECT_EQ(
                connection_.run("SELECT ItemName FROM OITM WHERE ItemCode = N'" + rows.text(0) + "'").text(0),
                rows.text(0, 1));
        }
    }
}

TEST_F(ItemSearch, BothProceduresShowTheSameStyledColumns) {
    const Rows all = find("");
    const Rows known = findInWarehouse("", "ItemName");
    ASSERT_EQ(all.columns.size(), known.columns.size());
    for (std::size_t i = 0; i < all.columns.size(); ++i) {
        EXPECT_EQ(all.columns[i].name, known.columns[i].name);
        const auto colon = all.columns[i].name.find(':');
        const auto semicolon = all.columns[i].name.find(';');
        ASSERT_NE(colon, std::string::npos);
        ASSERT_NE(semicolon, std::string::npos);
        EXPECT_GT(std::stoi(all.columns[i].name.substr(colon + 1)), 0);
    }
}

TEST_F(ItemSearch, AnEmptyTextFindsEveryMaterialAlsoOneWithoutAName) {
    connection_.run("INSERT INTO OITM (ItemCode) VALUES (N'ZZ-BEZ-NAZWY')");
    const long count = connection_.run("SELECT COUNT(*) FROM OITM").whole(0);
    EXPECT_EQ(find("").size(), static_cast<std::size_t>(count));
    EXPECT_EQ(find("", "ItemName").size(), static_cast<std::size_t>(count));
}

TEST_F(ItemSearch, TheTextIsTheBeginningOfTheChosenColumn) {
    EXPECT_EQ(codes(find("OL-")), (Codes{"OL-HY-046", "OL-PR-068"}));
    EXPECT_EQ(codes(find("HY-046")), Codes{});
    EXPECT_EQ(codes(find("Olej", "ItemName")), (Codes{"OL-PR-068", "OL-HY-046"}));
    EXPECT_EQ(codes(find("OL-", "ItemName")), Codes{});
}

TEST_F(ItemSearch, RowsComeInTheOrderOfTheColumnSearched) {
    const Rows byCode = find("");
    for (std::size_t i = 1; i < byCode.size(); ++i)
        EXPECT_LT(byCode.text(i - 1, 0), byCode.text(i, 0));
    // By code C45 would come last: PR-OK-020 before PR-OK-035.
    EXPECT_EQ(codes(find("Pręt", "ItemName")), (Codes{"PR-KW-016", "PR-MO-058", "PR-OK-035", "PR-OK-020"}));
    EXPECT_EQ(codes(findInWarehouse("Pręt", "ItemName")), codes(find("Pręt", "ItemName")));
}

TEST_F(ItemSearch, LetterCaseIsThatOfTheCollation) {
    EXPECT_EQ(codes(find("ol-hy")), Codes{"OL-HY-046"});
    EXPECT_EQ(codes(find("EMULSJA CHŁODZĄCA", "ItemName")), Codes{"CH-EM-020"});
}

TEST_F(ItemSearch, WildcardsOfTheTextActAsWildcards) {
    EXPECT_EQ(codes(find("%046")), Codes{"OL-HY-046"});
    EXPECT_EQ(codes(find("OL-__-0")), (Codes{"OL-HY-046", "OL-PR-068"}));
    EXPECT_EQ(codes(find("[OC][LH]-")), (Codes{"CH-EM-020", "OL-HY-046", "OL-PR-068"}));
    EXPECT_EQ(codes(find("%RAL _0", "ItemName")), (Codes{"BA-MB-020", "FA-PR-701", "FA-PR-901"}));
}

TEST_F(ItemSearch, ADoubledQuoteSearchesForAQuote) {
    connection_.run("INSERT INTO OITM (ItemCode, ItemName) VALUES (N'RU-CAL', N'Rura 1'' stalowa')");
    EXPECT_EQ(codes(find("Rura 1''", "ItemName")), Codes{"RU-CAL"});
}

TEST_F(ItemSearch, ALongTextIsNotCutToAMatch) {
    // Without its end the text would find a material.
    EXPECT_EQ(codes(find("OL-HY-046" + std::string(3000, '%'))), Codes{"OL-HY-046"});
    EXPECT_EQ(find("OL-HY-046" + std::string(3000, '%') + "x").size(), 0U);
}

TEST_F(ItemSearch, TheSecondProcedureFindsWhatHasAPlaceInTheWarehouse) {
    connection_.run(
        "INSERT INTO OITM (ItemCode, ItemName) VALUES (N'ZZ-1', N'Przypisany'), (N'ZZ-2', N'W grupie'), "
        "(N'ZZ-3', N'Nigdzie'), (N'ZZ-4', N'Paczka bez miejsca')");
    connection_.run(
        "UPDATE kolv_mag_Location_Item SET ItemCode = N'ZZ-1' WHERE Rank = 1 AND Stand = 1 AND Shelf = 1 AND "
        "Location = 1");
    connection_.run("INSERT INTO kolv_mag_Group_Item (GroupSur, ItemCode) VALUES (1, N'ZZ-2')");
    connection_.run(
        "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, Active) VALUES (N'1', N'ZZ-4', 5, "
        "N'Y')");
    EXPECT_EQ(codes(find("ZZ-")), (Codes{"ZZ-1", "ZZ-2", "ZZ-3", "ZZ-4"}));
    EXPECT_EQ(codes(findInWarehouse("ZZ-")), (Codes{"ZZ-1", "ZZ-2"}));
    EXPECT_EQ(codes(findInWarehouse("%w grupie", "ItemName")), Codes{"ZZ-2"});
}

TEST_F(ItemSearch, WhatTheSecondProcedureFindsIsInTheListOfTheSearchPanel) {
    const Rows panel = connection_.run("exec kolv_mag_Sur_On_Mag N'P'");
    Codes listed = codes(panel);
    listed.erase(listed.begin());  // the row "nothing chosen"
    EXPECT_EQ(codes(findInWarehouse("")), listed);
}

}  // namespace regalon::test
