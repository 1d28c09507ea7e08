// What waits in the buffer: its proposals before the booking, and the way onto a location by the location's
// label.

#include "database/DocumentDesk.h"
#include "database/EditorCalls.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace regalon::test {
namespace {

const std::string Label = labelOf(1, 2, 2, 2);
const std::string Target = "1, 2, 2, 2";

class PutAway : public ::testing::Test {
protected:
    void expectRefused(const Answer& answer, const std::string& before, const std::string& reason) {
        EXPECT_GT(answer.value, 0) << reason;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(hall.books(), before);
    }

    std::string fill(const std::string& address) {
        return hall.one("SELECT LocationIcon FROM kolv_mag_Location WHERE " + whereAddress(address));
    }

    /// The proposals of the goods-in of user 1, as a list that a dialog would show.
    std::vector<Proposal> proposals() {
        return proposalsOf(desk.run("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'I',1,NULL"));
    }

    DocumentHall hall;
    DocumentDesk desk = hall.documents();
};

}  // namespace

TEST_F(PutAway, APackageGoesFromTheBufferOntoTheLocationOfALabel) {
    hall.receive(desk, "P1");
    const Answer answer = desk.putAway("P1", Label);
    EXPECT_EQ(answer.value, 0);
    EXPECT_EQ(answer.message, "");
    EXPECT_EQ(hall.place("P1"), Target);
    // 240 litres of 1188, 100 kg of 1000.
    EXPECT_EQ(fill(Target), "LA_P_20.ico");
    EXPECT_EQ(hall.one("SELECT LinePercent FROM Kolv_Mag_BarCode_Sur"), "20.20");
    const Rows rows = hall.connection.run(
        "SELECT Operation, Quantity, FromRank, ToRank, ToStand, ToShelf, ToLocation, UserSign FROM "
        "Kolv_Mag_BarCode_Sur_History WHERE Operation <> N'I'");
    ASSERT_EQ(rows.size(), 1U);
    const std::vector<std::string> expected{"L", "10.000000", "<NULL>", "1", "2", "2", "2", "1"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(rows.text(0, c), expected[c]) << rows.columns[c].name;
    expectBalance(hall.connection);
}

TEST_F(PutAway, LabelsOfAnyDayHold) {
    for (const char* day : {"000101", "991231", "260229"}) {
        const std::string code = std::string("P") + day;
        hall.receive(desk, code);
        EXPECT_EQ(desk.putAway(code, labelOf(1, 1, 3, 3, day)).value, 0) << day;
        EXPECT_EQ(hall.place(code), "1, 1, 3, 3");
    }
}

TEST_F(PutAway, WhatIsNoLabelOfALocationIsRefused) {
    hall.receive(desk, "P1");
    const std::string before = hall.books();
    for (const std::string& code : {std::string(), std::string("5904172000017"), Label.substr(1), Label + "1",
                                    "8" + Label.substr(1), Label.substr(0, 7) + "2" + Label.substr(8),
                                    std::string("7260105100A011"), std::string("1_2_2_2_LA_14")})
        expectRefused(desk.putAway("P1", code), before, "nie jest etykietą lokalizacji");
    for (const std::string& code :
         {labelOf(1, 2, 2, 4), labelOf(1, 2, 4, 1), labelOf(1, 9, 1, 1), labelOf(9, 1, 1, 1)})
        expectRefused(desk.putAway("P1", code), before, "nie istnieje");
}

TEST_F(PutAway, ALabelThatTwoStandsShareIsRefusedAndThatOfAStandAboveNinetyNineFoundByItsLastDigits) {
    hall.receive(desk, "P1");
    hall.connection.run(
        "INSERT INTO kolv_mag_Stand (Rank, Stand, StandName, ShelfCount, StandEnable) VALUES (1, 102, N'R', "
        "1, N'Y'), (1, 104, N'R', 1, N'Y')");
    hall.connection.run(
        "INSERT INTO kolv_mag_Location (Rank, Stand, Shelf, Location) VALUES (1, 102, 2, 2), (1, 104, 1, 1)");
    expectRefused(desk.putAway("P1", Label), hall.books(), "pasuje do kilku lokalizacji");
    EXPECT_EQ(desk.putAway("P1", labelOf(1, 104, 1, 1)).value, 0);
    EXPECT_EQ(hall.place("P1"), "1, 104, 1, 1");
}

TEST_F(PutAway, WhatDoesNotWaitInTheBufferIsRefused) {
    std::string before = hall.books();
    expectRefused(desk.putAway("P1", Label), before, "nie ma w buforze: najpierw je przyjmij");
    hall.receive(desk, "P1", 10, Label);
    before = hall.books();
    expectRefused(desk.putAway("P1", labelOf(1, 1, 1, 1)), before, "leży już na lokalizacji");
    expectRefused(desk.putAway("P1", Label), before, "leży już na lokalizacji");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N'");
    expectRefused(desk.putAway("P1", Label), hall.books(), "zostało wydane");
}

TEST_F(PutAway, AnotherOrderLineOrOperationIsRefused) {
    hall.receive(desk, "P1");
    const std::string before = hall.books();
    expectRefused(desk.putAway("P1", Label, 11), before, "nie przyszło z podanej pozycji zamówienia");
    expectRefused(desk.putAway("P1", Label, 10, 1), before, "nie przyszło z podanej pozycji zamówienia");
    for (const char* operation : {"S", "O", ""})
        expectRefused(desk.putAway("P1", Label, 10, 0, operation), before, "a nie operacja");
}

TEST_F(PutAway, ALocationThatDoesNotTakeThePackageRefusesIt) {
    hall.receive(desk, "P1");
    hall.assign(Target, "B-1");
    expectRefused(desk.putAway("P1", Label), hall.books(),
                  "Opakowanie „P1” pozostało w buforze. Lokalizacja A 2-2-2: przypisana do innego surowca.");
    hall.assign(Target, "A-1");
    hall.put({.barCode = "11", .address = Target, .weight = 950});
    expectRefused(desk.putAway("P1", Label), hall.books(), "brak miejsca");
    hall.connection.run("UPDATE kolv_mag_Stand SET StandEnable = N'N' WHERE Stand = 3");
    expectRefused(desk.putAway("P1", labelOf(1, 3, 1, 1)), hall.books(), "regał jest wyłączony");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET PackHeight = 1300 WHERE BarCode = N'P1'");
    expectRefused(desk.putAway("P1", labelOf(1, 1, 1, 1)), hall.books(), "za duże lub za ciężkie");
}

TEST_F(PutAway, AFailureInTheMiddleLeavesThePackageInTheBuffer) {
    hall.receive(desk, "P1");
    hall.connection.run(
        "ALTER TABLE Kolv_Mag_BarCode_Sur_History ADD CONSTRAINT CK_Test CHECK (Operation <> N'L')");
    expectRefused(desk.putAway("P1", Label), hall.books(), "Błąd odłożenia na lokalizację: ");
    hall.connection.run("ALTER TABLE Kolv_Mag_BarCode_Sur_History DROP CONSTRAINT CK_Test");
    desk.run("BEGIN TRANSACTION");
    EXPECT_NE(desk.putAway("P1", Label).message.find("niezakończoną operację"), std::string::npos);
    desk.run("ROLLBACK TRANSACTION");
    EXPECT_EQ(desk.putAway("P1", Label).value, 0);
}

TEST_F(PutAway, APackageThatHasNotComeYetGetsTheProposalsOfItsFutureSize) {
    hall.assign(Target, "A-1");
    ASSERT_EQ(desk.stage({.barCode = "P1", .quantity = 20}).value, 0);
    ASSERT_EQ(desk.confirm().value, 0);
    const auto rows = proposals();
    ASSERT_EQ(rows.size(), 28U) << "every location of the hall";
    EXPECT_EQ(rows[0].address(), Target);
    EXPECT_EQ(rows[0].status, "D");
    EXPECT_EQ(rows[0].barCode, "P1");
    EXPECT_EQ(rows[0].percentAfter, 20) << "240 litres of 1188; twice the purchase package weighs 200 kg";
    EXPECT_EQ(rows[0].remark, "Proponowana, przypisana do surowca");
    EXPECT_EQ(std::count_if(rows.begin(), rows.end(), [](const auto& row) { return row.status == "C"; }), 27);
}

TEST_F(PutAway, ProposalsOfSeveralPackagesLeaveEachOtherRoom) {
    hall.assign(Target, "A-1");
    for (int i = 1; i <= 6; ++i)
        ASSERT_EQ(desk.stage({.barCode = "P" + std::to_string(i), .quantity = 18}).value, 0);
    ASSERT_EQ(desk.confirm().value, 0);
    long onTarget = 0;
    long proposed = 0;
    for (const Proposal& row : proposals())
        if (row.remark.rfind("Proponowana, ", 0) == 0) {
            ++proposed;
            onTarget += row.address() == Target ? 1 : 0;
        }
    EXPECT_EQ(proposed, 6);
    EXPECT_EQ(onTarget, 4) << "240 litres each of 1188";
}

TEST_F(PutAway, TheLocationOfAProposalIsReadAndChanged) {
    ASSERT_EQ(desk.stage({.barCode = "P1", .quantity = 10}).value, 0);
    ASSERT_EQ(desk.confirm().value, 0);
    const Rows line = desk.run(
        " select A.ItemCode,A.ItemName,B.BarCode,B.Quantity,B.QuantityAdd from ##Temp_Prop_Location "
        "A(nolock) "
        " inner join ##Temp_Prop_Location_BarCode B(nolock) ON A.IDCodeBar = B.IDCodeBar  where ID = 2 AND "
        "A.IDCodeBar = 1");
    ASSERT_EQ(line.size(), 1U);
    EXPECT_EQ(line.text(0, 0), "A-1");
    EXPECT_EQ(line.text(0, 1), "Blacha cienka");
    EXPECT_EQ(line.text(0, 2), "P1");
    EXPECT_EQ(line.number(0, 3), 10);
    EXPECT_EQ(call(desk.connection(), "Kolv_mag_Prop_Location_Change", "1, 2, 1").value, 0);
    EXPECT_EQ(desk.one("SELECT ID FROM ##Temp_Prop_Location WHERE Proposed = N'Y'"), "2");
    EXPECT_GT(call(desk.connection(), "Kolv_mag_Prop_Location_Change", "2, 3, 1").value, 0) << "another user";
    EXPECT_GT(call(desk.connection(), "Kolv_mag_Prop_Location_Change", "1, 99, 1").value, 0);
}

TEST_F(PutAway, ProposalsOfAShiftAndAGoodsInOfOneUserStandSideBySide) {
    ShiftDesk shift(hall.warehouse.connect("MAG-WOZEK-1"), 1);
    hall.put({.barCode = "10"});
    shift.take("A-1", "1, 1, 1, 1", "10");
    const Answer staged = call(shift.connection(), "Kolv_mag_BarCode_Add_Temp",
                               "10, 1010, 0, N'P1', 0, 10, 1, -1, N'N', N'A-1', N'P', N'I'");
    ASSERT_EQ(staged.value, 0) << staged.message;
    // Goods-out sends the user alone, which stands for all operations.
    ASSERT_EQ(statusOf(shift.connection(), "Kolv_mag_Watch_Prop_Location_Confirm", "1"), 0);
    EXPECT_EQ(shift.one("SELECT STRING_AGG(BarCode + Operation, N',') FROM (SELECT TOP 9 BarCode, Operation "
                        "FROM ##Temp_Prop_Location_BarCode ORDER BY BarCode) AS X"),
              "10S,P1I");
    EXPECT_EQ(shift.move("10", "1, 3, 1, 1").value, 0);
}

}  // namespace regalon::test
