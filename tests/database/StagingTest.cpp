// The staged rows of packages: whose they are, what stages and clears them, and the ## tables of proposals.

#include "database/EditorCalls.h"
#include "database/ShiftDesk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

namespace regalon::test {
namespace {

using Codes = std::vector<std::string>;

class Staging : public ::testing::Test {
protected:
    Staging() {
        hall.put({.barCode = "10"});
        hall.put({.barCode = "11"});
        hall.put({.barCode = "20", .item = "A-2", .address = "1, 1, 1, 2"});
    }

    long rows(const std::string& where = "1 = 1") {
        return hall.connection.run("SELECT COUNT(*) FROM Kolv_Mag_BarCode_Input_Sur_tym WHERE " + where)
            .whole(0);
    }

    /// A staged row that some connection has left. SPID as the table holds it.
    void leave(const std::string& spid, const std::string& host, int user, const std::string& code) {
        hall.connection.run(
            "INSERT INTO Kolv_Mag_BarCode_Input_Sur_tym (HostName, SPID, UserSign, YearCode, LineGrd, "
            "Aplication, Operation, BarCode, ItemCode, Rank, Stand, Shelf, Location) VALUES (" +
            literal(host) + ", " + spid + ", " + std::to_string(user) +
            ", YEAR(GETDATE()), -1, N'P', N'S', " + literal(code) + ", N'A-1', 1, 1, 1, 1)");
    }

    ShiftHall hall;
};

}  // namespace

TEST_F(Staging, RowsCarryTheKeyTheYearAndTheOperation) {
    ShiftDesk desk = hall.desk(7, "MAG-WOZEK-3");
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    const Rows rows = desk.run(
        "SELECT HostName, SPID + @@SPID, UserSign, YearCode - YEAR(GETDATE()), LineGrd, Aplication, "
        "Operation, "
        "BarCode, Quantity, Rank, Stand, Shelf, Location FROM Kolv_Mag_BarCode_Input_Sur_tym ORDER BY "
        "BarCode");
    ASSERT_EQ(rows.size(), 2U);
    const std::vector<std::string> expected{"MAG-WOZEK-3", "0",         "7", "0", "0", "P", "S",
                                            "10",          "10.000000", "1", "1", "1", "1"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(rows.text(0, c), expected[c]) << rows.columns[c].name;
    EXPECT_EQ(rows.text(1, 7), "11");
}

TEST_F(Staging, OnlyActivePackagesOfTheMaterialOnThatLocationAreStaged) {
    hall.put({.barCode = "12", .address = "1, 1, 1, 3"});
    hall.put({.barCode = "13", .item = "A-2"});
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N' WHERE BarCode = N'11'");
    ShiftDesk desk = hall.desk();
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    EXPECT_EQ(desk.packages(), Codes{"10"});
}

TEST_F(Staging, AChosenPackageIsMarkedAndCounted) {
    ShiftDesk desk = hall.desk();
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    EXPECT_EQ(desk.chosen(), 0);
    EXPECT_EQ(desk.choose("11").value, 0);
    EXPECT_EQ(desk.chosen(), 1);
    EXPECT_EQ(rows("LineGrd = -1 AND BarCode = N'11'"), 1);
    EXPECT_EQ(desk.choose("10").value, 0);
    EXPECT_EQ(desk.chosen(), 2);
    EXPECT_EQ(desk.unchoose("11").value, 0);
    EXPECT_EQ(desk.chosen(), 1);
    EXPECT_EQ(rows(), 2) << "a package that is not chosen stays staged";
}

TEST_F(Staging, APackageThatIsNotStagedCannotBeChosen) {
    ShiftDesk desk = hall.desk();
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    const Answer answer = desk.choose("20");
    EXPECT_GT(answer.value, 0);
    EXPECT_NE(answer.message.find("„20” nie należy do wybranego surowca"), std::string::npos)
        << answer.message;
    EXPECT_EQ(desk.chosen(), 0);
}

TEST_F(Staging, TakingAMaterialOutRemovesItsRowsWhateverTheAddress) {
    ShiftDesk desk = hall.desk();
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    ASSERT_EQ(desk.stage("A-2", "1, 1, 1, 2").value, 0);
    EXPECT_EQ(desk.unstage("A-1", "1, 3, 3, 3").value, 0);
    EXPECT_EQ(desk.packages(), Codes{"20"});
    EXPECT_EQ(desk.unstage("A-1", "1, 1, 1, 1").value, 0) << "twice is no refusal";
}

TEST_F(Staging, StagingAgainKeepsTheChoiceAndTakesInWhatHasCome) {
    ShiftDesk desk = hall.desk();
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    ASSERT_EQ(desk.choose("10").value, 0);
    hall.put({.barCode = "12"});
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    EXPECT_EQ(desk.packages(), (Codes{"10", "11", "12"}));
    EXPECT_EQ(desk.chosen(), 1);
}

TEST_F(Staging, StagingFromAnotherAddressDropsThePackagesOfTheFirst) {
    hall.put({.barCode = "30", .address = "1, 2, 1, 1"});
    ShiftDesk desk = hall.desk();
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    ASSERT_EQ(desk.choose("10").value, 0);
    ASSERT_EQ(desk.stage("A-1", "1, 2, 1, 1").value, 0);
    EXPECT_EQ(desk.packages(), Codes{"30"});
    EXPECT_EQ(desk.chosen(), 0);
}

TEST_F(Staging, AMaterialThatIsNotThereIsRefusedWithItsReason) {
    ShiftDesk desk = hall.desk();
    const Answer answer = desk.stage("A-2", "1, 1, 1, 1");
    EXPECT_GT(answer.value, 0);
    EXPECT_EQ(answer.message,
              "Na tej lokalizacji nie ma opakowań surowca „A-2”. Mógł je przesunąć inny użytkownik: wybierz "
              "lokalizację jeszcze raz.");
    EXPECT_GT(desk.stage("A-1", "9, 9, 9, 9").value, 0);
    EXPECT_EQ(rows(), 0);
}

TEST_F(Staging, TwoUsersOnTwoWorkstationsSeeOnlyTheirOwnRowsOfOneMaterial) {
    ShiftDesk first = hall.desk(2, "MAG-WOZEK-1");
    ShiftDesk second = hall.desk(3, "MAG-WOZEK-2");
    ASSERT_EQ(first.stage("A-1", "1, 1, 1, 1").value, 0);
    ASSERT_EQ(second.stage("A-1", "1, 1, 1, 1").value, 0);
    EXPECT_EQ(rows(), 4);
    EXPECT_EQ(first.packages(), (Codes{"10", "11"}));
    ASSERT_EQ(first.choose("10").value, 0);
    EXPECT_EQ(second.chosen(), 0);
    EXPECT_EQ(first.clear(), 0);
    EXPECT_TRUE(first.packages().empty());
    EXPECT_EQ(second.packages(), (Codes{"10", "11"}));
}

TEST_F(Staging, TheSameUserInTwoCopiesOfTheProgramIsKeptApart) {
    ShiftDesk first = hall.desk(2);
    ShiftDesk second = hall.desk(2);
    ASSERT_EQ(first.stage("A-1", "1, 1, 1, 1").value, 0);
    ASSERT_EQ(second.stage("A-1", "1, 1, 1, 1").value, 0);
    ASSERT_EQ(second.stage("A-2", "1, 1, 1, 2").value, 0);
    EXPECT_EQ(first.packages(), (Codes{"10", "11"}));
    EXPECT_EQ(second.packages(), (Codes{"10", "11", "20"}));
    ASSERT_EQ(first.choose("10").value, 0);
    ASSERT_EQ(second.choose("11").value, 0);
    ASSERT_EQ(second.choose("20").value, 0);
    EXPECT_EQ(first.chosen(), 1);
    EXPECT_EQ(second.chosen(), 2);
    ASSERT_EQ(first.confirm().value, 0);
    ASSERT_EQ(second.confirm().value, 0);
    for (const Proposal& row : first.proposals())
        EXPECT_EQ(row.barCode, "10");
    EXPECT_EQ(second.clear(), 0);
    EXPECT_EQ(first.chosen(), 1);
    EXPECT_FALSE(first.proposals().empty());
}

TEST_F(Staging, ClearingNothingIsNoRefusal) {
    ShiftDesk desk = hall.desk();
    EXPECT_LE(desk.clear(), 0);
    EXPECT_LE(desk.clear(), 0);
}

TEST_F(Staging, ClearingTouchesOnlyItsOwnUserApplicationAndOperation) {
    ShiftDesk desk = hall.desk(1);
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    for (const char* other : {"2, N'P', N'N', N'S'", "1, N'Q', N'N', N'S'", "1, N'P', N'N', N'I'"})
        ASSERT_EQ(statusOf(desk.connection(), "kolv_mag_BarCode_Shift_Tmp",
                           std::string("N'A-1', 1, 1, 1, 1, ") + other),
                  0);
    ASSERT_EQ(rows(), 8);
    EXPECT_EQ(desk.clear(), 0);
    EXPECT_EQ(rows(), 6);
    EXPECT_EQ(rows("UserSign = 1 AND Aplication = N'P' AND Operation = N'S'"), 0);
    EXPECT_EQ(desk.clear(1), 0);
    EXPECT_EQ(rows(), 2) << "1 clears all applications and operations of the user";
    EXPECT_EQ(rows("UserSign = 2"), 2);
}

TEST_F(Staging, ClearingRemovesWhatADeadConnectionOfTheSameNumberHasLeft) {
    ShiftDesk desk = hall.desk(1, "MAG-WOZEK-1");
    const std::string own = desk.one("SELECT -@@SPID");
    const std::string other = desk.one("SELECT -@@SPID - 1000");
    leave(own, "MAG-WOZEK-1", 1, "a run of this workstation and user");
    leave(own, "MAG-WOZEK-9", 5, "a run of another workstation");
    leave(own, "MAG-WOZEK-1", 2, "another user of this connection");
    leave(other, "MAG-WOZEK-1", 1, "another connection");
    ASSERT_EQ(desk.chosen(), 1) << "the dead run's row is in the way";
    EXPECT_EQ(desk.clear(), 0);
    EXPECT_EQ(desk.chosen(), 0);
    const Rows left =
        hall.connection.run("SELECT BarCode FROM Kolv_Mag_BarCode_Input_Sur_tym ORDER BY BarCode");
    ASSERT_EQ(left.size(), 2U);
    EXPECT_EQ(left.text(0), "another connection");
    EXPECT_EQ(left.text(1), "another user of this connection");
}

TEST_F(Staging, ClearingSucceedsWhateverHasBecomeOfTheTablesOfProposals) {
    ShiftDesk desk = hall.desk();
    desk.take("A-1", "1, 1, 1, 1", "10");
    desk.run("DROP TABLE ##Temp_Prop_Location; CREATE TABLE ##Temp_Prop_Location (Other int)");
    EXPECT_EQ(desk.clear(), 0);
    EXPECT_EQ(rows(), 0);
    desk.run("DROP TABLE ##Temp_Prop_Location");
}

TEST_F(Staging, ATextQuotedWithoutTheNationalPrefixArrivesWithItsQuotes) {
    // The client strips quotes only from N'...': what it sends then is the letter between two quotes.
    ShiftDesk desk(hall.warehouse.connect(), 1, "N'''P'''");
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    EXPECT_EQ(desk.one("SELECT MIN(Aplication) FROM Kolv_Mag_BarCode_Input_Sur_tym"), "'P'");
    EXPECT_EQ(desk.run("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',1").size(), 0U);
    EXPECT_EQ(desk.packages().size(), 2U);
}

TEST_F(Staging, ThePackageListIsReadInModeOneOnlyAndEndsWithTheBarcode) {
    ShiftDesk desk = hall.desk();
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    EXPECT_TRUE(desk.run("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',0").columns.empty());
    const Rows rows = desk.run("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',1");
    ASSERT_EQ(rows.size(), 2U);
    for (const auto& column : rows.columns) {
        EXPECT_EQ(column.name.find("xxx_"), std::string::npos) << column.name;
        EXPECT_NE(column.name.find(';'), std::string::npos) << column.name;
    }
    EXPECT_EQ(rows.columns.back().name.rfind("Kod kreskowy:", 0), 0U);
    EXPECT_EQ(rows.text(0, 0), "A-1");
    EXPECT_EQ(rows.text(0, 1), "10.00");
    EXPECT_EQ(rows.text(0, 4), "800×600×500");
}

TEST_F(Staging, AQuantityOfLessThanAHundredthCanStillBeTicked) {
    hall.put({.barCode = "40", .item = "B-1", .address = "1, 3, 1, 1", .quantity = 0.004});
    const Rows rows = hall.connection.run("exec kolv_mag_Watch_Item_On_Location 1,3,1,1,N'1',N'P',1,N'S'");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, rows.columns.size() - 3), "0.01");
}

TEST_F(Staging, WhatWasStagedLastYearIsNeitherListedNorChosenAndTheUserIsTold) {
    ShiftDesk desk = hall.desk();
    desk.take("A-1", "1, 1, 1, 1", "10");
    desk.run("UPDATE Kolv_Mag_BarCode_Input_Sur_tym SET YearCode = YearCode - 1");
    EXPECT_TRUE(desk.packages().empty());
    EXPECT_GT(desk.choose("11").value, 0);
    EXPECT_EQ(desk.chosen(), 0);
    const Answer answer = desk.confirm();
    EXPECT_EQ(answer.value, 1);
    EXPECT_EQ(answer.message,
              "Rozpoczął się nowy rok, a opakowania wybrano w poprzednim. Wybierz surowiec jeszcze raz.");
    EXPECT_EQ(rows(), 0);
    EXPECT_TRUE(desk.proposals().empty());
    EXPECT_EQ(desk.confirm().value, 0) << "told once";
}

TEST_F(Staging, WhatWasStagedLastYearIsStagedAnew) {
    ShiftDesk desk = hall.desk();
    desk.take("A-1", "1, 1, 1, 1", "10");
    desk.run("UPDATE Kolv_Mag_BarCode_Input_Sur_tym SET YearCode = YearCode - 1");
    ASSERT_EQ(desk.stage("A-1", "1, 1, 1, 1").value, 0);
    EXPECT_EQ(desk.packages(), (Codes{"10", "11"}));
    EXPECT_EQ(desk.chosen(), 0);
    EXPECT_EQ(rows(), 2);
    EXPECT_EQ(desk.choose("10").value, 0);
    EXPECT_EQ(desk.confirm().value, 0);
    EXPECT_EQ(desk.move("10", "1, 3, 1, 1").value, 0);
}

TEST_F(Staging, PackagesWithoutAQuantityAreListedWithTheirNumberAndZero) {
    hall.put({.barCode = "40", .item = "B-1", .address = "1, 3, 1, 1"});
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Quantity = NULL WHERE BarCode = N'40'");
    const Rows rows = hall.connection.run("exec kolv_mag_Watch_Item_On_Location 1,3,1,1,N'1',N'P',1,N'S'");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, rows.columns.size() - 3), "0.00");
    EXPECT_EQ(rows.text(0, 2), "1") << "packages";
}

TEST_F(Staging, APackageWithoutAQuantityMovesWithTheOthersOfItsMaterial) {
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Quantity = NULL WHERE BarCode = N'10'");
    ShiftDesk desk = hall.desk();
    desk.take("A-1", "1, 1, 1, 1", "10");
    EXPECT_EQ(desk.one("SELECT Quantity FROM ##Temp_Prop_Location_BarCode"), "0.000000");
    EXPECT_EQ(desk.move("10", "1, 3, 1, 1").value, 0);
}

TEST_F(Staging, PackagesWithoutACodeAreListedAsStrangersStagedAndMovedButBelongNowhere) {
    hall.put({.barCode = "40", .item = "", .address = "1, 3, 1, 1"});
    hall.put({.barCode = "41", .item = "", .address = "1, 3, 1, 1"});
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET ItemCode = NULL WHERE BarCode = N'40'");
    hall.assign("1, 3, 1, 1", "");
    hall.assign("1, 3, 1, 2", "");
    const Rows rows = hall.connection.run("exec kolv_mag_Watch_Item_On_Location 1,3,1,1,N'1',N'P',1,N'S'");
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, rows.columns.size() - 1), "");
    EXPECT_EQ(rows.text(0, rows.columns.size() - 2), "B");
    EXPECT_EQ(rows.text(0, 2), "2") << "packages";
    ShiftDesk desk = hall.desk();
    desk.take("", "1, 3, 1, 1", "40");
    EXPECT_EQ(desk.packages(), (Codes{"40", "41"}));
    for (const Proposal& row : desk.proposals())
        EXPECT_NE(row.status, "D") << row.address();
    EXPECT_EQ(desk.proposal("1, 3, 1, 1").status, "O") << "it lies there";
    EXPECT_EQ(desk.move("40", "1, 3, 1, 2").value, 0);
    EXPECT_EQ(hall.place("40"), "1, 3, 1, 2");
    EXPECT_EQ(desk.unstage("", "1, 3, 1, 1").value, 0);
    EXPECT_TRUE(desk.packages().empty());
}

TEST_F(Staging, TheGlobalTablesAreMadeByWhoeverNeedsThemFirst) {
    for (const char* first :
         {"exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL",
          "exec Kolv_mag_Watch_Prop_Location_Confirm 1,N'P',N'S'",
          "exec Kolv_mag_BarCode_Clear_Temp 1,0,N'P',N'S'", "exec Kolv_mag_Prop_Location_Change 1,1,1"}) {
        auto connection = hall.warehouse.connect();
        connection.run(
            "DROP TABLE IF EXISTS ##Temp_Prop_Location; DROP TABLE IF EXISTS ##Temp_Prop_Location_BarCode; "
            "DROP "
            "TABLE IF EXISTS ##Temp_mag_PurchesOrders_GiveOut; DROP TABLE IF EXISTS "
            "##Temp_mag_ItemCode_GiveOut");
        connection.run(first);
        for (const char* table : {"##Temp_Prop_Location", "##Temp_Prop_Location_BarCode",
                                  "##Temp_mag_PurchesOrders_GiveOut", "##Temp_mag_ItemCode_GiveOut"})
            EXPECT_EQ(connection.run(std::string("SELECT COUNT(*) FROM ") + table).whole(0), 0)
                << first << ", " << table;
    }
}

TEST_F(Staging, StagedRowsStandInTheOrderOfTheirKeySoThatTwoClientsLockNothingOfEachOther) {
    for (const char* table : {"Kolv_Mag_BarCode_Input_Sur_tym", "Kolv_Mag_BarCode_Output_Sur_tym"}) {
        const std::string of = std::string(" FROM sys.indexes WHERE object_id = OBJECT_ID(N'dbo.") + table +
                               "') AND type_desc = N'CLUSTERED'";
        EXPECT_EQ(hall.one("SELECT name" + of), std::string("IX_") + table);
        EXPECT_EQ(hall.one("SELECT is_unique" + of), "1") << table;
    }
    const Rows columns = hall.connection.run(
        "SELECT COL_NAME(C.object_id, C.column_id) FROM sys.index_columns AS C INNER JOIN sys.indexes AS I "
        "ON I.object_id = C.object_id AND I.index_id = C.index_id WHERE I.name = "
        "N'IX_Kolv_Mag_BarCode_Input_Sur_tym' ORDER BY C.key_ordinal");
    const Codes expected{"SPID", "HostName", "UserSign", "Aplication", "Operation", "BarCode"};
    ASSERT_EQ(columns.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(columns.text(i), expected[i]);
}

TEST_F(Staging, ManySessionsMayMakeTheGlobalTablesAtOnce) {
    std::vector<std::thread> threads;
    std::atomic<int> good{0};
    threads.reserve(8);
    for (int i = 0; i < 8; ++i)
        threads.emplace_back([&] {
            try {
                ShiftDesk desk = hall.desk();
                if (desk.clear() <= 0 && desk.confirm().value == 0 && desk.proposals().empty())
                    ++good;
            } catch (const SqlFailure& failure) {
                ADD_FAILURE() << failure.what();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(good, 8);
}

TEST_F(Staging, ProposalsAreMadeAnewWhenTheMakerOfTheTablesHasLeft) {
    ShiftDesk second = hall.desk(2, "MAG-WOZEK-2");
    {
        ShiftDesk maker = hall.desk(1, "MAG-WOZEK-1");
        ASSERT_EQ(maker.clear(), 0);
        second.take("A-1", "1, 1, 1, 1", "10");
        ASSERT_FALSE(second.proposals().empty());
    }
    // The server notices by itself that the maker is gone.
    constexpr std::chrono::milliseconds LookAgain{10};
    const std::string ask = "SELECT OBJECT_ID(N'tempdb..##Temp_Prop_Location')";
    for (int i = 0; i < 500 && second.one(ask) != "<NULL>"; ++i)
        std::this_thread::sleep_for(LookAgain);  // wait: nothing tells when it has noticed
    ASSERT_EQ(second.one(ask), "<NULL>");
    EXPECT_FALSE(second.proposals(4).empty());
    EXPECT_EQ(second.prepare().value, 0);
    EXPECT_EQ(second.proposals().at(0).barCode, "10");
}

TEST_F(Staging, ProposalsAreMadeAnewWhenEitherTableIsGone) {
    ShiftDesk desk = hall.desk();
    desk.take("A-1", "1, 1, 1, 1", "10");
    const std::size_t lines = desk.proposals().size();
    ASSERT_GT(lines, 1U);
    for (const char* table : {"##Temp_Prop_Location", "##Temp_Prop_Location_BarCode"}) {
        desk.run(std::string("DROP TABLE ") + table);
        EXPECT_EQ(desk.prepare().value, 0) << table;
        EXPECT_EQ(desk.proposals().size(), lines) << table;
    }
}

TEST_F(Staging, LinesWhosePackagesAreGoneMakeWayForTheNextOnes) {
    ShiftDesk other = hall.desk(2, "MAG-WOZEK-2");
    other.take("A-2", "1, 1, 1, 2", "20");
    other.run("DROP TABLE ##Temp_Prop_Location_BarCode");
    ASSERT_NE(other.one("SELECT COUNT(*) FROM ##Temp_Prop_Location"), "0");
    ShiftDesk desk = hall.desk();
    desk.take("A-1", "1, 1, 1, 1", "10");
    EXPECT_FALSE(desk.proposals().empty());
    EXPECT_EQ(desk.one("SELECT COUNT(*) FROM ##Temp_Prop_Location WHERE UserSign = 2"), "0");
}

TEST_F(Staging, ALineOfAnotherKeyUnderTheNumberOfMyPackageIsNotShown) {
    ShiftDesk desk = hall.desk();
    desk.take("A-1", "1, 1, 1, 1", "10");
    const std::size_t lines = desk.proposals().size();
    desk.run(
        "INSERT INTO ##Temp_Prop_Location (IDCodeBar, ID, HostName, SPID, UserSign, Aplication, Operation, "
        "Rank, Stand, Shelf, Location, Status, Reason) SELECT IDCodeBar, 9000, HostName, SPID, 2, "
        "Aplication, Operation, 1, 1, 1, 1, N'D', N'cudza' FROM ##Temp_Prop_Location_BarCode");
    EXPECT_EQ(desk.proposals().size(), lines);
}

}  // namespace regalon::test
