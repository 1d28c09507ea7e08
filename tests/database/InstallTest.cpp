// The scripts themselves: they install over an installed database, keep to the common ground, and every
// procedure keeps the contract of parameters.

#include "database/Warehouse.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <regex>

namespace regalon::test {
namespace {

std::vector<std::string> tableRows(OdbcConnection& connection) {
    const std::vector<std::string> reads{
        "SELECT Rank, Stand, StandName, StandIcon, ShelfCount, StandLeft, StandTop FROM kolv_mag_Stand ORDER "
        "BY Rank, "
        "Stand",
        "SELECT * FROM kolv_mag_Location ORDER BY Rank, Stand, Shelf, Location",
        "SELECT * FROM kolv_mag_Location_Item ORDER BY Rank, Stand, Shelf, Location",
        "SELECT * FROM Kolv_Mag_BarCode_Sur ORDER BY BarCode",
        "SELECT BarCode, Operation, Quantity, ToRank, BookDate FROM Kolv_Mag_BarCode_Sur_History ORDER BY "
        "BarCode, "
        "Operation",
        "SELECT * FROM OITM ORDER BY ItemCode",
        "SELECT * FROM kolv_mag_Group_Item ORDER BY GroupSur, ItemCode",
        "SELECT * FROM POR1 ORDER BY DocEntry, LineNum",
        "SELECT * FROM kolv_mag_Order_Material ORDER BY DocEntry, LineNum, ItemCode",
        "SELECT * FROM Kolv_Mag_BarCode_Sur_Code ORDER BY BarCode",
        "SELECT * FROM Kolv_Mag_BarCode_Sur_Production ORDER BY GiveOutDocNum, GiveOutLineNum",
        "SELECT * FROM kolv_user ORDER BY UserID",
        "SELECT * FROM Kolv_setup"};
    std::vector<std::string> lines;
    for (const std::string& read : reads) {
        const Rows rows = connection.run(read);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            std::string line;
            for (std::size_t c = 0; c < rows.columns.size(); ++c)
                line += rows.text(i, c) + "|";
            lines.push_back(line);
        }
    }
    return lines;
}

std::string withoutComments(const std::string& sql) {
    return std::regex_replace(sql, std::regex("--[^\n]*"), "");
}

}  // namespace

TEST(Install, RunningEverythingAgainGivesTheSameDatabase) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const auto before = tableRows(connection);
    ASSERT_GT(before.size(), 1000U);
    install(connection, "install.list");
    EXPECT_EQ(connection.run("SELECT COUNT(*) FROM kolv_mag_Stand").whole(0), 0);
    install(connection, "demo.list");
    const auto after = tableRows(connection);
    ASSERT_EQ(after.size(), before.size());
    for (std::size_t i = 0; i < after.size(); ++i)
        ASSERT_EQ(after[i], before[i]);
}

TEST(Install, AnUpdateReplacesTheGlobalTablesOfSessionsThatRun) {
    const Warehouse warehouse(Warehouse::Content::Schema);
    auto running = warehouse.connect();
    running.run("CREATE TABLE ##Temp_Prop_Location (ID int)");
    auto connection = warehouse.connect();
    install(connection, "install.list");
    EXPECT_EQ(running.run("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL").size(), 0U);
    EXPECT_EQ(running.run("SELECT COUNT(Place) FROM ##Temp_Prop_Location").whole(0), 0);
}

TEST(Install, TheSchemaAloneHasEverythingButRows) {
    const Warehouse warehouse(Warehouse::Content::Schema);
    auto connection = warehouse.connect();
    for (const char* table : {"kolv_mag_Rank",
                              "kolv_mag_Stand",
                              "kolv_mag_Location",
                              "kolv_mag_Location_Item",
                              "kolv_mag_Location_Group",
                              "kolv_mag_Group_Item",
                              "Kolv_setup",
                              "OUSR",
                              "OITM",
                              "OPOR",
                              "ORDR",
                              "POR1",
                              "RDR1",
                              "kolv_mag_Order_Material",
                              "Kolv_Mag_BarCode_Sur_Code",
                              "Kolv_Mag_GiveOut",
                              "Kolv_Mag_BarCode_Sur_Production",
                              "kolv_RightsName",
                              "kolv_user",
                              "Kolv_Mag_BarCode_Sur",
                              "Kolv_Mag_BarCode_Sur_History",
                              "Kolv_Mag_BarCode_Input_Sur_tym",
                              "Kolv_Mag_BarCode_Output_Sur_tym"})
        EXPECT_EQ(connection.run(std::string("SELECT COUNT(*) FROM ") + table).whole(0), 0) << table;
    EXPECT_EQ(call(connection, "kolv_mag_SaveLocationIDTab", "N'', N'', N''").value, 0);
    connection.run("EXEC Kolv_mag_Refresh_Percent_Location N'N'");
    EXPECT_EQ(connection.run("exec kolv_mag_Sur_On_Mag N'P'").size(), 1U);
}

TEST(Install, ProceduresHaveTheParametersOfTheirContract) {
    const Warehouse warehouse(Warehouse::Content::Schema);
    auto connection = warehouse.connect();
    const std::vector<std::pair<std::string, std::string>> contracts{
        {"kolv_mag_SaveLocationIDTab", "@LocationName_1 @LocationName_2 @LocationName_3 @ErrDesc*"},
        {"kolv_mag_SaveLocationID", "@Rank @Stand @Shelf @Location @LolcationID @ErrDesc*"},
        {"Kolv_mag_Refresh_Percent_Location", "@RefreshLinePercent"},
        {"kolv_mag_Watch_Detal_Item_On_Location",
         "@Rank @Stand @Shelf @Location @UserSign @Aplication @Phase"},
        {"kolv_mag_Watch_Item_On_Location",
         "@Rank @Stand @Shelf @Location @UserSign @Aplication @Phase @Operation"},
        {"Kolv_mag_Param_Location", "@Rank @Stand @Shelf @Location"},
        {"Kolv_mag_Param_Location_BarCode", "@Rank @Stand @Shelf @Location"},
        {"Kolv_mag_Watch_BarCode_Location", "@Rank @Stand @Shelf @Location @Filter @Mode"},
        {"Kolv_mag_Param_BarCode", "@BarCode"},
        {"kolv_mag_Sur_On_Mag", "@Aplication"},
        {"Kolv_mag_LookFor_Item", "@Pattern @Column @Step"},
        {"Kolv_mag_LookFor_Item_2", "@Pattern @Column @Step"},
        {"kolv_mag_AddBookstandValidate",
         "@Rank @Stand @Shelf @StandIcon @Top @Left @Shelf_1 @Shelf_2 @Shelf_3 @Shelf_4 @StandVisable "
         "@StandEnable @StandFrameArround @StandDescriprion @ErrDesc*"},
        {"kolv_mag_AddBookstand",
         "@Rank @Stand @Shelf @StandIcon @Top @Left @Shelf_1 @Shelf_2 @Shelf_3 @Shelf_4 @StandVisable "
         "@StandEnable @StandFrameArround @StandDescription @ErrDesc*"},
        {"kolv_mag_RemoveBookstandValidate", "@Rank @Stand @ErrDesc*"},
        {"kolv_mag_RemoveBookstand", "@Rank @Stand @ErrDesc*"},
        {"kolv_mag_Save_Sur_Location",
         "@Rank @Stand @Shelf @Location @ItemCode @GroupSur @UserSign @ErrDesc*"},
        {"kolv_mag_Add_Value_Param",
         "@Rank @Stand @Shelf @Location @ParamName @ParamValue @ParamImage @ParamType @ErrDesc*"},
        {"kolv_mag_Save_Group_Sur", "@GroupCode @NewGroupName @UserSign @ErrDesc*"},
        {"kolv_mag_Add_Sur_On_Group", "@GroupCode @ItemCode @UserSign @ErrDesc*"},
        {"kolv_mag_ConfirmGroupSur", "@GroupSur"},
        {"kolv_mag_DeleteGroupSur", "@GroupSur"},
        {"Kolv_mag_BarCode_Clear_Temp", "@UserSign @Param @Aplication @Operation"},
        {"kolv_mag_BarCode_Shift_Tmp",
         "@ItemCode @Rank @Stand @Shelf @Location @UserSign @Aplication @DeleteLine @Operation @ErrDesc*"},
        {"kolv_mag_Shift_Location_BarCode_Status",
         "@BarCode @UserSign @Aplication @Delete @Operation @ErrDesc*"},
        {"kolv_mag_Watch_BarCode_On_Location", "@UserSign @Aplication @Operation @Mode"},
        {"Kolv_mag_Watch_Prop_Location_Confirm", "@UserSign @Aplication @Operation @ErrDesc*"},
        {"Kolv_mag_Watch_Prop_Location", "@UserSign @Aplication @Operation @Mode @ErrDesc*"},
        {"Kolv_mag_Prop_Location_Change", "@UserSign @ID @IDCodeBar @ErrDesc*"},
        {"kolv_mag_Shift_Location_BarCode",
         "@BarCode @Rank @Stand @Shelf @Location @UserSign @Aplication @Operation @ErrDesc*"},
        {"Kolv_mag_BarCode_Add_Temp",
         "@DocEntry @DocNum @LineNum @BarCode @NumberCode @Quantity @UserSign @LineGrd @DeleteLine @ItemCode "
         "@Aplication @Operation @ErrDesc*"},
        {"Kolv_mag_BarCode_Input_Kolv_Temp",
         "@DocEntry @DocNum @LineNum @BarCode @NumberCode @Quantity @UserSign @LineGrd @DeleteLine @ItemCode "
         "@Aplication @Operation @ErrDesc*"},
        {"Kolv_mag_Add_Sur_On_Bufor", "@UserSign @Aplication @Operation @ErrDesc*"},
        {"Kolv_mag_Add_Sur_On_Location",
         "@DocEntry @LineNum @BarCodeSur @BarCodeLoc @UserSign @Operation @ErrDesc*"},
        {"Kolv_mag_GetLastBarCode_Sur", "@Year @DocEntry @DocNum @LineNum"},
        {"Kolv_mag_SaveBarCode_Sur",
         "@Year @DocEntry @DocNum @LineNum @NumberCode @BarCode @UserSign @ItemCode @ErrDesc*"},
        {"Kolv_mag_SaveItemCodeParam_Sur",
         "@ItemCode @SLength1 @SWidth1 @BHeight1 @PurPackUn @PurPackMsr @UserSign @ErrDesc*"},
        {"kolv_mag_Line_Status_PurchaseOrder", "@DocEntry @Linenum @UserSign @ErrDesc*"},
        {"Kolv_mag_BarCode_Add_Temp_Out",
         "@DocNum @ItemCode @QuantityProp @QuantityOut @UserSign @LineGrd @PropOrOut @DeleteLine @Aplication "
         "@Param @BarCode @ErrDesc*"},
        {"Kolv_mag_GiveOut_Sur_On_Location",
         "@DocNumProd @DocEntryProd @LineNumProd @UserSign @UserSignGiveOut @Aplication @GiveOutDocNum* "
         "@ErrDesc*"},
        {"Kolv_mag_Confirm_Item_GiveOut", "@ItemCode @Aplication @ErrDesc*"},
        {"Kolv_mag_Add_PurchesOrders_GiveOut",
         "@Aplication @UserSign @UserSignGiveOut @DocEntry @AddOrDelete @ErrDesc*"},
        {"Kolv_mag_Add_ItemCode_GiveOut",
         "@Aplication @UserSign @UserSignGiveOut @ItemCode @AddOrDelete @ErrDesc*"},
        {"Kolv_mag_Clear_PurchesOrders_GiveOut", "@Aplication @UserSign @Param"},
        {"Kolv_mag_Clear_ItemCode_GiveOut", "@Aplication @UserSign @Param"},
        {"kolv_mag_Confirm_Quantity_Input_Prod",
         "@GiveOutDocNum @GiveOutLineNum @BarCode @ItemCode @Quantity @Aplication @Operation @ErrDesc* "
         "@ConfirmedQuantity*"}};
    for (const auto& [procedure, expected] : contracts) {
        const Rows rows = connection.run("exec sp_sproc_columns N'" + procedure + "'");
        const auto place = [&rows](const char* name) {
            const auto at = std::find_if(rows.columns.begin(), rows.columns.end(),
                                         [name](const auto& column) { return column.name == name; });
            return static_cast<std::size_t>(at - rows.columns.begin());
        };
        const std::size_t name = place("COLUMN_NAME");
        const std::size_t kind = place("COLUMN_TYPE");
        std::string found;
        for (std::size_t i = 0; i < rows.size(); ++i)
            if (rows.text(i, kind) != "5")
                found +=
                    (found.empty() ? "" : " ") + rows.text(i, name) + (rows.text(i, kind) == "2" ? "*" : "");
        EXPECT_EQ(found, expected) << procedure;
    }
}

TEST(Install, ScriptsKeepToTheGroundThatEveryServerShares) {
    const std::regex forbidden(
        R"(CREATE\s+OR\s+ALTER|ALTER\s+(VIEW|FUNCTION)|\bMERGE\b|FOR\s+XML|WITH\s+TIES|\bWAITFOR\b|\bSYNONYM\b|\.nodes\(|\.value\(|\bOPENJSON\b)",
        std::regex::icase);
    for (const char* list : {"install.list", "demo.list"})
        for (const auto& script : scriptsOf(list))
            for (const std::string& batch : batchesOf(script)) {
                std::smatch match;
                const std::string sql = withoutComments(batch);
                EXPECT_FALSE(std::regex_search(sql, match, forbidden)) << script << ": " << match.str();
            }
}

// A client that gives up waiting leaves its transaction open on a server without this setting, and everything
// that it does afterwards is undone when it leaves.
TEST(Install, EveryProcedureWithATransactionUndoesItWhenTheCallIsCutOff) {
    const std::regex begins(R"(\bBEGIN\s+TRAN)", std::regex::icase);
    const std::regex set(R"(\bSET\s+XACT_ABORT\s+ON\b[\s\S]*?\bBEGIN\s+TRAN)", std::regex::icase);
    int found = 0;
    for (const auto& script : scriptsOf("install.list"))
        for (const std::string& batch : batchesOf(script)) {
            const std::string sql = withoutComments(batch);
            if (!std::regex_search(sql, begins))
                continue;
            ++found;
            EXPECT_TRUE(std::regex_search(sql, set)) << script;
        }
    EXPECT_GE(found, 13);
}

// Writers that take their locks in one order never wait for each other in a circle.
TEST(Install, EveryTransactionOnTheLayoutOrOnPackagesTakesTheLockOfTheStandsFirst) {
    const std::regex begins(R"(\bBEGIN\s+TRANSACTION;)", std::regex::icase);
    const std::regex layout(
        R"(\bdbo\.(kolv_mag_Stand|kolv_mag_Location|kolv_mag_Refresh_Percent_Shelf|Kolv_Mag_BarCode_Sur|)"
        R"(Kolv_Mag_BarCode_Sur_Code|Kolv_Mag_GiveOut|kolv_mag_Book_\w+)\b)");
    const std::regex lock(
        R"(^\s*SELECT @Stands = COUNT\(\*\) FROM dbo\.kolv_mag_Stand WITH \(UPDLOCK, HOLDLOCK\);)");
    int found = 0;
    for (const auto& script : scriptsOf("install.list"))
        for (const std::string& batch : batchesOf(script)) {
            const std::string sql = withoutComments(batch);
            std::smatch start;
            if (!std::regex_search(sql, start, begins))
                continue;
            const std::string inside = start.suffix();
            if (!std::regex_search(inside, layout))
                continue;
            ++found;
            EXPECT_TRUE(std::regex_search(inside, lock)) << script;
        }
    EXPECT_GE(found, 13);
}

TEST(Install, EveryProcedureHasAFileOfItsNameAndIsInstalled) {
    const std::filesystem::path room = std::filesystem::path(REGALON_SOURCE_DIR) / "database";
    const auto listed = scriptsOf("install.list");
    for (const auto& entry : std::filesystem::directory_iterator(room / "procedures")) {
        EXPECT_NE(std::find(listed.begin(), listed.end(), entry.path()), listed.end()) << entry.path();
        std::ifstream file(entry.path());
        const std::string text{std::istreambuf_iterator<char>(file), {}};
        const std::string name = "dbo." + entry.path().stem().string();
        EXPECT_NE(text.find("DROP PROCEDURE IF EXISTS " + name + ";"), std::string::npos) << name;
        EXPECT_NE(text.find("CREATE PROCEDURE " + name + "\n"), std::string::npos) << name;
        EXPECT_NE(text.find("SET NOCOUNT ON;"), std::string::npos) << name;
    }
}

}  // namespace regalon::test
