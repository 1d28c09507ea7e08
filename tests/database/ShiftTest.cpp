// The move of one package: what it changes, and what refuses it.

#include "database/EditorCalls.h"
#include "database/ShiftDesk.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

const std::string Source = "1, 1, 1, 1";
const std::string Target = "1, 2, 2, 2";

class Shift : public ::testing::Test {
protected:
    Shift() { hall.put({.barCode = "10"}); }

    /// Package 10 is chosen; then the move must be refused with this in its message, and change nothing.
    void expectRefused(const std::string& target, const std::string& reason) {
        const std::string before = hall.stock();
        const Answer answer = desk.move("10", target);
        EXPECT_GT(answer.value, 0);
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(hall.stock(), before);
        EXPECT_EQ(desk.chosen(), 1) << "the package stays chosen";
    }

    std::string fill(const std::string& address) {
        return hall.one("SELECT LocationIcon FROM kolv_mag_Location WHERE " + whereAddress(address));
    }

    ShiftHall hall;
    ShiftDesk desk = hall.desk();
};

}  // namespace

TEST_F(Shift, APackageMovesWithItsHistoryAndTheFillsOfBothShelves) {
    // 240 litres of 1188, 100 kg of 1000: a fifth.
    ASSERT_EQ(fill(Source), "LA_P_20.ico");
    desk.take("A-1", Source, "10");
    const Answer answer = desk.move("10", Target);
    EXPECT_EQ(answer.value, 0);
    EXPECT_EQ(answer.message, "");
    EXPECT_EQ(hall.place("10"), Target);
    EXPECT_EQ(fill(Source), "LA_P_00.ico");
    EXPECT_EQ(fill(Target), "LA_P_20.ico");
    EXPECT_EQ(hall.one("SELECT LocationPercent FROM kolv_mag_Location WHERE " + whereAddress(Target)), "20");
    const Rows rows = hall.connection.run(
        "SELECT BarCode, Operation, Quantity, FromRank, FromStand, FromShelf, FromLocation, ToRank, ToStand, "
        "ToShelf, ToLocation, UserSign, HostName, DATEDIFF(second, BookDate, GETDATE()) / 60 FROM "
        "Kolv_Mag_BarCode_Sur_History");
    ASSERT_EQ(rows.size(), 1U);
    const std::vector<std::string> expected{"10", "S", "10.000000", "1", "1", "1",           "1",
                                            "1",  "2", "2",         "2", "1", "MAG-WOZEK-1", "0"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(rows.text(0, c), expected[c]) << rows.columns[c].name;
    EXPECT_EQ(desk.chosen(), 0) << "its staged row is used up";
}

TEST_F(Shift, TheShareOfThePackageIsThatOfItsNewLocation) {
    desk.take("A-1", Source, "10");
    ASSERT_EQ(hall.one("SELECT LinePercent FROM Kolv_Mag_BarCode_Sur"), "20.20");
    ASSERT_EQ(desk.move("10", "2, 1, 1, 1").value, 0);
    EXPECT_EQ(hall.one("SELECT LinePercent FROM Kolv_Mag_BarCode_Sur"), "6.73");
    EXPECT_EQ(fill("2, 1, 1, 1"), "LC_P_07.ico");
}

TEST_F(Shift, TheOtherPackagesStayWhatTheyAre) {
    hall.put({.barCode = "11"});
    desk.take("A-1", Source, "10");
    ASSERT_EQ(desk.move("10", Target).value, 0);
    EXPECT_EQ(hall.place("11"), Source);
    EXPECT_EQ(desk.packages(), std::vector<std::string>{"11"});
    EXPECT_EQ(fill(Source), "LA_P_20.ico");
}

TEST_F(Shift, APackageGoesOnAndComesBack) {
    for (const auto& [from, to] : {std::pair(Source, Target), std::pair(Target, std::string("2, 1, 1, 1")),
                                   std::pair(std::string("2, 1, 1, 1"), Source)}) {
        desk.take("A-1", from, "10");
        ASSERT_EQ(desk.move("10", to).value, 0);
    }
    EXPECT_EQ(hall.place("10"), Source);
    EXPECT_EQ(hall.one("SELECT COUNT(*) FROM Kolv_Mag_BarCode_Sur_History"), "3");
}

TEST_F(Shift, APackageThatIsNotChosenIsRefused) {
    const std::string before = hall.stock();
    EXPECT_EQ(desk.move("10", Target).message, "Opakowanie „10” nie jest wybrane do przesunięcia.");
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    EXPECT_GT(desk.move("10", Target).value, 0) << "staged only";
    ASSERT_EQ(desk.choose("10").value, 0);
    ASSERT_EQ(desk.unchoose("10").value, 0);
    EXPECT_GT(desk.move("10", Target).value, 0) << "no longer chosen";
    EXPECT_GT(desk.move("nie ma", Target).value, 0);
    EXPECT_EQ(hall.stock(), before);
}

TEST_F(Shift, WhatAnotherUserHasChosenIsNotMine) {
    ShiftDesk other = hall.desk(2, "MAG-WOZEK-2");
    other.take("A-1", Source, "10");
    EXPECT_GT(desk.move("10", Target).value, 0);
    EXPECT_EQ(other.move("10", Target).value, 0);
}

TEST_F(Shift, AFullLocationIsRefused) {
    hall.put({.barCode = "11", .address = Target, .weight = 950});
    desk.take("A-1", Source, "10");
    expectRefused(Target, "Lokalizacja A 2-2-2: brak miejsca.");
}

TEST_F(Shift, ALocationThatFilledUpSinceTheProposalIsRefused) {
    desk.take("A-1", Source, "10");
    ASSERT_TRUE(desk.proposal(Target).canBeTicked());
    hall.put({.barCode = "11", .address = Target, .weight = 950});
    expectRefused(Target, "brak miejsca");
}

TEST_F(Shift, APackageThatIsTooLargeIsRefused) {
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET PackHeight = 1300");
    desk.take("A-1", Source, "10");
    expectRefused(Target, "opakowanie za duże lub za ciężkie");
}

TEST_F(Shift, AMonoLocationWithAnotherMaterialIsRefused) {
    hall.put({.barCode = "11", .item = "A-2", .address = Target});
    desk.take("A-1", Source, "10");
    expectRefused(Target, "jednoindeksowa, leży inny surowiec");
}

TEST_F(Shift, ALocationOfAnotherMaterialIsRefused) {
    hall.assign(Target, "B-1");
    desk.take("A-1", Source, "10");
    expectRefused(Target, "przypisana do innego surowca");
}

TEST_F(Shift, ALocationOfAnotherGroupIsRefused) {
    hall.assign(Target, "", 2, 1);
    desk.take("A-1", Source, "10");
    expectRefused(Target, "grupa nie obejmuje surowca");
}

TEST_F(Shift, ASwitchedOffStandIsRefusedAsTargetButCanBeCleared) {
    hall.connection.run("UPDATE kolv_mag_Stand SET StandEnable = N'N' WHERE Stand = 2");
    desk.take("A-1", Source, "10");
    expectRefused(Target, "regał jest wyłączony");
    hall.put({.barCode = "11", .address = Target});
    desk.take("A-1", Target, "11");
    EXPECT_EQ(desk.move("11", "1, 3, 1, 1").value, 0);
}

TEST_F(Shift, AnUnknownLocationIsRefused) {
    desk.take("A-1", Source, "10");
    for (const char* address :
         {"1, 9, 1, 1", "9, 1, 1, 1", "1, 1, 4, 1", "2, 1, 1, 2", "-1, -1, -1, -1", "0, 0, 0, 0"})
        expectRefused(address, "Wskazana lokalizacja nie istnieje.");
}

TEST_F(Shift, TheSourceItselfIsRefused) {
    desk.take("A-1", Source, "10");
    expectRefused(Source, "opakowanie już na niej leży");
}

TEST_F(Shift, APackageThatHasMovedSinceIsRefused) {
    desk.take("A-1", Source, "10");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Location = 2");
    expectRefused(Target, "Opakowanie „10” przesunął lub wydał w międzyczasie inny użytkownik.");
}

TEST_F(Shift, APackageThatWasGivenOutSinceIsRefused) {
    desk.take("A-1", Source, "10");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N'");
    expectRefused(Target, "przesunął lub wydał w międzyczasie inny użytkownik");
}

TEST_F(Shift, APackageThatIsGoneAltogetherIsRefused) {
    desk.take("A-1", Source, "10");
    hall.connection.run("DELETE FROM Kolv_Mag_BarCode_Sur");
    expectRefused(Target, "przesunął lub wydał w międzyczasie inny użytkownik");
}

TEST_F(Shift, OfTwoUsersWhoWantOnePackageTheSecondIsTold) {
    ShiftDesk other = hall.desk(2, "MAG-WOZEK-2");
    desk.take("A-1", Source, "10");
    other.take("A-1", Source, "10");
    EXPECT_EQ(other.move("10", "1, 3, 3, 3").value, 0);
    const Answer answer = desk.move("10", Target);
    EXPECT_GT(answer.value, 0);
    EXPECT_NE(answer.message.find("przesunął lub wydał w międzyczasie inny użytkownik"), std::string::npos);
    EXPECT_EQ(hall.place("10"), "1, 3, 3, 3");
    EXPECT_EQ(hall.one("SELECT COUNT(*) FROM Kolv_Mag_BarCode_Sur_History"), "1");
}

TEST_F(Shift, AFreeMonoLocationTakesTheMaterialThatComesFirst) {
    hall.put({.barCode = "20", .item = "A-2", .address = "1, 1, 1, 2"});
    ShiftDesk other = hall.desk(2, "MAG-WOZEK-2");
    desk.take("A-1", Source, "10");
    other.take("A-2", "1, 1, 1, 2", "20");
    EXPECT_EQ(desk.move("10", Target).value, 0);
    EXPECT_NE(other.move("20", Target).message.find("jednoindeksowa"), std::string::npos);
}

TEST_F(Shift, APackageLeavesALocationThatSomebodyHasMistyped) {
    hall.assign(Source, "A-1");
    hall.connection.run(
        "UPDATE kolv_mag_Location_Item SET Height_int = 1, Width_int = 1, Depth_int = 1, Weight_int = 1");
    desk.take("A-1", Source, "10");
    const Answer answer = desk.move("10", Target);
    EXPECT_EQ(answer.value, 0) << answer.message;
    EXPECT_EQ(hall.place("10"), Target);
}

TEST_F(Shift, AFailureInTheMiddleUndoesTheWholeMove) {
    desk.take("A-1", Source, "10");
    hall.connection.run(
        "ALTER TABLE Kolv_Mag_BarCode_Sur_History ADD CONSTRAINT CK_Test CHECK (BookDate < '20000101')");
    expectRefused(Target, "Błąd przesunięcia opakowania: ");
    hall.connection.run("ALTER TABLE Kolv_Mag_BarCode_Sur_History DROP CONSTRAINT CK_Test");
    EXPECT_EQ(desk.move("10", Target).value, 0);
}

TEST_F(Shift, AMoveInsideATransactionThatSomebodyHasLeftOpenIsRefused) {
    desk.take("A-1", Source, "10");
    desk.run("BEGIN TRANSACTION");
    expectRefused(Target, "połączenie z bazą ma niezakończoną operację");
    EXPECT_EQ(desk.one("SELECT @@TRANCOUNT"), "1") << "the transaction is its owner's";
    desk.run("ROLLBACK TRANSACTION");
    EXPECT_EQ(desk.move("10", Target).value, 0);
}

// magdb lets no procedure begin that would have to wait for a lock, so no move here fails by these numbers.
TEST_F(Shift, TheVictimOfADeadlockAndWhoWaitsTooLongForALockAreAskedToTryAgain) {
    const auto text = [this](const std::string& number) {
        return hall.one("SELECT dbo.kolv_mag_fn_FailureText(N'Błąd', " + number + ", N'Transaction was...')");
    };
    const std::string again =
        "W tej samej chwili ktoś inny zmieniał stan magazynu. Niczego nie zapisano: spróbuj ponownie.";
    EXPECT_EQ(text("1205"), again);
    EXPECT_EQ(text("1222"), again);
    EXPECT_EQ(text("547"), "Błąd: Transaction was...");
}

TEST_F(Shift, TheLastShelfOfAStandIsNotTakenFromUnderAMovedPackage) {
    desk.take("A-1", Source, "10");
    ASSERT_EQ(desk.move("10", "2, 1, 1, 1").value, 0);
    const Answer answer = call(hall.connection, "kolv_mag_RemoveBookstand", "2, 1");
    EXPECT_GT(answer.value, 0) << answer.message;
}

}  // namespace regalon::test
