// Goods-in: staging the packages of an order line, booking them into the buffer, and what refuses them.

#include "database/DocumentDesk.h"
#include "database/EditorCalls.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

class GoodsIn : public ::testing::Test {
protected:
    void expectRefused(const Incoming& package, const std::string& reason) {
        const std::string before = hall.books();
        const Answer answer = desk.stage(package);
        EXPECT_GT(answer.value, 0) << reason;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(staged(), 0);
        EXPECT_EQ(hall.books(), before);
    }

    void expectBookingRefused(const std::string& reason) {
        const std::string before = hall.books();
        const long rows = staged();
        const Answer answer = desk.book();
        EXPECT_GT(answer.value, 0);
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(hall.books(), before);
        EXPECT_EQ(staged(), rows) << "what was in hand stays in hand";
    }

    /// The client's own question whether work is staged.
    long staged() {
        return desk
            .run(
                "select Count(*) as Count from Kolv_Mag_BarCode_Input_Sur_tym(nolock) where HostName = "
                "host_name() AND SPID = -@@SPID AND USerSign = 1")
            .whole(0);
    }

    DocumentHall hall;
    DocumentDesk desk = hall.documents();
};

}  // namespace

TEST_F(GoodsIn, AStagedPackageIsBookedIntoTheBufferWithItsHistory) {
    ASSERT_EQ(desk.stage({.barCode = "P1", .quantity = 5}).value, 0);
    ASSERT_EQ(staged(), 1);
    EXPECT_EQ(hall.count("Kolv_Mag_BarCode_Sur"), 0) << "staging changes no stock";
    const Answer answer = desk.book();
    EXPECT_EQ(answer.value, 0);
    EXPECT_EQ(answer.message, "");
    const Rows rows = hall.connection.run(
        "SELECT BarCode, YearCode, NumberCode, DocEntry, DocNum, LineNum, ItemCode, Quantity, PackLength, "
        "PackWidth, PackHeight, PackWeight, Rank, LinePercent, Active, UserSign, DATEDIFF(second, "
        "CreateDate, GETDATE()) / 60 FROM Kolv_Mag_BarCode_Sur");
    ASSERT_EQ(rows.size(), 1U);
    // Half a purchase package has half its weight and takes the room of a whole one.
    const std::vector<std::string> expected{"P1",     "2026",     "1",   "10",  "1010", "0",
                                            "A-1",    "5.000000", "800", "600", "500",  "50.000",
                                            "<NULL>", "0.00",     "Y",   "1",   "0"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(rows.text(0, c), expected[c]) << rows.columns[c].name;
    EXPECT_EQ(hall.one("SELECT Operation + N' ' + HostName + N' ' + CAST(UserSign AS nvarchar(9)) FROM "
                       "Kolv_Mag_BarCode_Sur_History"),
              "I MAG-PRZYJECIA 1");
    EXPECT_EQ(staged(), 0) << "its staged row is used up";
    expectBalance(hall.connection);
}

TEST_F(GoodsIn, APackageIsBookedOnce) {
    ASSERT_EQ(desk.stage({}).value, 0);
    ASSERT_EQ(desk.book().value, 0);
    expectBookingRefused("Żadne opakowanie nie jest wybrane.");
    expectRefused({}, "Opakowanie „P1” jest już w magazynie.");
}

TEST_F(GoodsIn, OfTwoUsersWhoStageOnePackageTheSecondIsToldAndTheFirstToBookHasIt) {
    DocumentDesk other = hall.documents(2, "MAG-WOZEK-2");
    ASSERT_EQ(other.stage({}).value, 0);
    const Answer answer = desk.stage({});
    EXPECT_EQ(answer.value, -1) << "a success with a message";
    EXPECT_NE(answer.message.find("wybrał także użytkownik 2 na stanowisku MAG-WOZEK-2"), std::string::npos)
        << answer.message;
    EXPECT_EQ(other.book().value, 0);
    expectBookingRefused("Opakowanie „P1” jest już w magazynie.");
    EXPECT_EQ(hall.count("Kolv_Mag_BarCode_Sur_History"), 1);
}

TEST_F(GoodsIn, APackageThatAnotherUserHasReceivedIsLetGoByTheNextProposals) {
    DocumentDesk other = hall.documents(2, "MAG-WOZEK-2");
    ASSERT_EQ(desk.stage({.barCode = "P1"}).value, 0);
    ASSERT_EQ(desk.stage({.barCode = "P2"}).value, 0);
    ASSERT_EQ(other.stage({.barCode = "P1"}).value, -1);
    ASSERT_EQ(other.book().value, 0);
    const Answer answer = desk.confirm();
    EXPECT_EQ(answer.value, 1);
    EXPECT_EQ(answer.message, "Opakowanie „P1” przyjął w międzyczasie inny użytkownik. Wycofano z wyboru.");
    EXPECT_EQ(desk.confirm().value, 0);
    EXPECT_EQ(staged(), 1);
}

TEST_F(GoodsIn, AllPackagesOfADocumentAreBookedOrNone) {
    for (const char* code : {"P1", "P2", "P3"})
        ASSERT_EQ(desk.stage({.barCode = code}).value, 0);
    hall.put({.barCode = "P2"});
    expectBookingRefused("Opakowanie „P2” jest już w magazynie.");
    ASSERT_EQ(desk.stage({.barCode = "P2"}, "Y").value, 0);
    ASSERT_EQ(desk.book().value, 0);
    EXPECT_EQ(hall.one("SELECT STRING_AGG(BarCode + N' ' + CAST(NumberCode AS nvarchar(9)), N', ') FROM "
                       "(SELECT TOP 10 BarCode, NumberCode FROM Kolv_Mag_BarCode_Sur WHERE NumberCode IS NOT "
                       "NULL ORDER BY BarCode) AS X"),
              "P1 1, P3 2");
}

TEST_F(GoodsIn, AFailureInTheMiddleUndoesTheWholeDocument) {
    for (const char* code : {"P1", "P2"})
        ASSERT_EQ(desk.stage({.barCode = code}).value, 0);
    hall.connection.run(
        "ALTER TABLE Kolv_Mag_BarCode_Sur_History ADD CONSTRAINT CK_Test CHECK (BarCode <> N'P2')");
    expectBookingRefused("Błąd księgowania w buforze: ");
    hall.connection.run("ALTER TABLE Kolv_Mag_BarCode_Sur_History DROP CONSTRAINT CK_Test");
    EXPECT_EQ(desk.book().value, 0);
    expectBalance(hall.connection);
}

TEST_F(GoodsIn, ABookingInsideATransactionThatSomebodyHasLeftOpenIsRefused) {
    ASSERT_EQ(desk.stage({}).value, 0);
    desk.run("BEGIN TRANSACTION");
    expectBookingRefused("połączenie z bazą ma niezakończoną operację");
    desk.run("ROLLBACK TRANSACTION");
    EXPECT_EQ(desk.book().value, 0);
}

TEST_F(GoodsIn, APackageTakenOutIsNotBooked) {
    ASSERT_EQ(desk.stage({.barCode = "P1"}).value, 0);
    ASSERT_EQ(desk.stage({.barCode = "P2"}).value, 0);
    EXPECT_EQ(desk.stage({.barCode = "P1"}, "Y").value, 0);
    EXPECT_EQ(desk.stage({.barCode = "P1"}, "Y").value, 0) << "out is out";
    ASSERT_EQ(desk.book().value, 0);
    EXPECT_EQ(hall.one("SELECT MIN(BarCode) + MAX(BarCode) FROM Kolv_Mag_BarCode_Sur"), "P2P2");
}

TEST_F(GoodsIn, APackageStagedOnceMoreChangesAndOnlyAChosenOneIsBooked) {
    ASSERT_EQ(desk.stage({.quantity = 3, .lineGrd = 7}).value, 0);
    EXPECT_EQ(staged(), 1);
    expectBookingRefused("Żadne opakowanie nie jest wybrane.");
    ASSERT_EQ(desk.confirm().value, 0);
    EXPECT_EQ(desk.one("SELECT COUNT(*) FROM ##Temp_Prop_Location"), "0");
    ASSERT_EQ(desk.stage({.quantity = 4}).value, 0);
    EXPECT_EQ(staged(), 1);
    ASSERT_EQ(desk.book().value, 0);
    EXPECT_EQ(hall.one("SELECT Quantity FROM Kolv_Mag_BarCode_Sur"), "4.000000");
}

TEST_F(GoodsIn, WhatIsStagedBelongsToItsKey) {
    DocumentDesk sameUser = hall.documents(1);
    DocumentDesk sameConnectionOtherUser = hall.documents(2);
    ASSERT_EQ(desk.stage({}).value, 0);
    EXPECT_GT(sameUser.book().value, 0) << "another connection";
    EXPECT_GT(sameConnectionOtherUser.book().value, 0) << "another user";
    EXPECT_EQ(sameUser.stage({}, "Y").value, 0);
    EXPECT_EQ(sameUser.clear("I", 1), 0);
    EXPECT_EQ(staged(), 1) << "nobody else takes it out";
    ASSERT_EQ(desk.stage({.barCode = "P9", .application = "X"}).value, 0);
    EXPECT_EQ(desk.book().value, 0);
    EXPECT_EQ(staged(), 1) << "the other application's row stays";
}

TEST_F(GoodsIn, ClearingLetsGoOfOneOperationOrOfAll) {
    ASSERT_EQ(desk.stage({}).value, 0);
    EXPECT_EQ(desk.clear("R"), 0);
    EXPECT_EQ(staged(), 1);
    EXPECT_EQ(desk.clear("I"), 0);
    EXPECT_EQ(staged(), 0);
    ASSERT_EQ(desk.stage({}).value, 0);
    EXPECT_EQ(desk.clear("S", 1), 0);
    EXPECT_EQ(staged(), 0);
}

TEST_F(GoodsIn, WrongOrdersLinesAndMaterialsAreRefused) {
    expectRefused({.entry = 99}, "Zamówienie o identyfikatorze 99 nie istnieje.");
    expectRefused({.num = 1011}, "Zamówienie o identyfikatorze 10 ma numer 1010, a nie 1011.");
    expectRefused({.line = 7}, "Zamówienie 1010 nie ma pozycji 7.");
    expectRefused({.line = 2, .item = "A-2"}, "Pozycja 2 zamówienia 1010 jest zamknięta.");
    expectRefused({.entry = 11, .num = 1011}, "Pozycja 0 zamówienia 1011 jest zamknięta.");
    expectRefused({.item = "A-2"}, "zamawia surowiec „A-1”, a nie „A-2”.");
    expectRefused({.item = ""}, "zamawia surowiec „A-1”, a nie „”.");
    hall.connection.run("DELETE FROM OITM WHERE ItemCode = N'A-1'");
    expectRefused({}, "Surowca „A-1” nie ma w kartotece.");
}

TEST_F(GoodsIn, WrongOperationsAreRefused) {
    for (const char* operation : {"S", "R", "O", ""})
        expectRefused({.operation = operation}, "Przyjęcie ma operację I, a nie „");
    for (const char* operation : {"S", "O", ""})
        EXPECT_GT(desk.book(operation).value, 0) << operation;
}

TEST_F(GoodsIn, WrongBarcodesAndQuantitiesAreRefused) {
    expectRefused({.barCode = ""}, "Podaj kod kreskowy opakowania.");
    expectRefused({.barCode = std::string(51, 'x')}, "za długi");
    expectRefused({.barCode = labelOf(1, 1, 1, 1)}, "jest etykietą lokalizacji, a nie opakowania.");
    expectRefused({.quantity = 0}, "Podaj ilość większą od zera");
    expectRefused({.quantity = -1}, "Podaj ilość większą od zera");
    expectRefused({.number = -1}, "Numer opakowania nie może być ujemny");
    hall.connection.run("INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, Active) VALUES (N'OUT', N'N')");
    expectRefused({.barCode = "OUT"}, "Opakowanie „OUT” zostało wydane. Przyjmij je jako zwrot z produkcji.");
}

TEST_F(GoodsIn, ALineTakesATenthMoreThanWasOrderedAndNoMore) {
    ASSERT_EQ(desk.stage({.barCode = "P1", .quantity = 60}).value, 0);
    const Answer much = desk.stage({.barCode = "P2", .quantity = 50.5});
    EXPECT_EQ(much.value, 1);
    EXPECT_EQ(much.message,
              "Za dużo na pozycji 0 zamówienia 1010: zamówiono 100, przyjęto 0, teraz 110,50. Pozycja "
              "przyjmuje najwyżej o jedną dziesiątą więcej.");
    EXPECT_EQ(desk.stage({.barCode = "P2", .quantity = 50}).value, 0);
    DocumentDesk other = hall.documents(2);
    ASSERT_EQ(other.stage({.barCode = "Q1", .quantity = 20}).value, 0);
    ASSERT_EQ(other.book().value, 0);
    expectBookingRefused("zamówiono 100, przyjęto 20, teraz 110");
    hall.connection.run("UPDATE POR1 SET Quantity = NULL");
    EXPECT_EQ(desk.book().value, 0) << "nobody has entered what was ordered";
}

TEST_F(GoodsIn, ABarcodeGivenToALineIsReceivedThereOnly) {
    ASSERT_EQ(desk.saveBarCode({.barCode = "K1", .number = 4}).value, 0);
    expectRefused({.barCode = "K1", .line = 1, .item = "B-1"}, "Kod „K1” nadano pozycji 0 zamówienia 1010.");
    expectRefused({.barCode = "K1", .number = 3}, "Kod „K1” ma na tej pozycji numer 4, a nie 3.");
    expectRefused({.barCode = "P1", .number = 4}, "Numer 4 ma na tej pozycji zamówienia inne opakowanie.");
    ASSERT_EQ(desk.stage({.barCode = "K1"}).value, 0);
    ASSERT_EQ(desk.stage({.barCode = "P1"}).value, 0);
    ASSERT_EQ(desk.stage({.barCode = "P2", .number = 9}).value, 0);
    ASSERT_EQ(desk.book().value, 0);
    EXPECT_EQ(hall.one("SELECT STRING_AGG(BarCode + N' ' + CAST(NumberCode AS nvarchar(9)), N', ') FROM "
                       "(SELECT TOP 10 BarCode, NumberCode FROM Kolv_Mag_BarCode_Sur ORDER BY BarCode) AS X"),
              "K1 4, P1 10, P2 9");
    EXPECT_EQ(hall.count("Kolv_Mag_BarCode_Sur_Code"), 3);
    EXPECT_EQ(desk.lastNumber(2026, 10, 1010, 0), 10);
}

TEST_F(GoodsIn, TwoPackagesWithOneNumberAreRefused) {
    ASSERT_EQ(desk.stage({.barCode = "P1", .number = 2}).value, 0);
    ASSERT_EQ(desk.stage({.barCode = "P2", .number = 2}).value, 0);
    expectBookingRefused("Opakowania „P1” i „P2” mają ten sam numer 2");
}

TEST_F(GoodsIn, AnOrderWithoutDateAndStatusIsOpenAndCountsInYearZero) {
    ASSERT_EQ(desk.stage({.entry = 12, .num = 1012}).value, 0);
    ASSERT_EQ(desk.book().value, 0);
    EXPECT_EQ(hall.one("SELECT YearCode FROM Kolv_Mag_BarCode_Sur"), "0");
    EXPECT_EQ(desk.lastNumber(0, 12, 1012, 0), 1);
    EXPECT_EQ(desk.lineStatus(12, 0).value, 2);
}

TEST_F(GoodsIn, AMaterialWithoutSizesIsReceivedAllTheSame) {
    hall.connection.run(
        "UPDATE OITM SET Blength1 = NULL, Bwidth1 = NULL, BHeight1 = NULL, BWeight1 = NULL, PurPackUn = "
        "NULL");
    ASSERT_EQ(desk.stage({}).value, 0);
    EXPECT_EQ(desk.confirm().value, 0);
    ASSERT_EQ(desk.book().value, 0);
    EXPECT_EQ(hall.one("SELECT PackLength FROM Kolv_Mag_BarCode_Sur"), "<NULL>");
    EXPECT_EQ(desk.putAway("P1", labelOf(1, 1, 1, 1)).value, 0);
}

TEST_F(GoodsIn, ValuesThatNobodyHasSetAreRefusedOrMeanStaging) {
    const auto stage = [this](const std::string& arguments) {
        return call(desk.connection(), "Kolv_mag_BarCode_Add_Temp", arguments);
    };
    for (const char* arguments : {"NULL, NULL, NULL, NULL, NULL, NULL, 1, NULL, NULL, NULL, N'P', N'I'",
                                  "10, 1010, NULL, N'P1', 0, 1, 1, -1, N'N', N'A-1', N'P', N'I'",
                                  "10, NULL, 0, N'P1', 0, 1, 1, -1, N'N', N'A-1', N'P', N'I'",
                                  "10, 1010, 0, NULL, 0, 1, 1, -1, N'N', N'A-1', N'P', N'I'",
                                  "10, 1010, 0, N'P1', 0, NULL, 1, -1, N'N', N'A-1', N'P', N'I'",
                                  "10, 1010, 0, N'P1', 0, 1, 1, -1, NULL, NULL, N'P', N'I'",
                                  "10, 1010, 0, N'P1', 0, 1, 1, -1, N'N', N'A-1', N'P', NULL"}) {
        const Answer answer = stage(arguments);
        EXPECT_EQ(answer.value, 1) << arguments;
        EXPECT_NE(answer.message, "<NULL>") << arguments;
    }
    EXPECT_EQ(staged(), 0);
    EXPECT_EQ(stage("10, 1010, 0, N'P1', NULL, 1, 1, -1, NULL, N'A-1', N'P', N'I'").value, 0);
    EXPECT_EQ(desk.book().value, 0);
    EXPECT_EQ(hall.one("SELECT NumberCode FROM Kolv_Mag_BarCode_Sur"), "1");
}

TEST_F(GoodsIn, RowsOfLastYearAreNotBooked) {
    ASSERT_EQ(desk.stage({}).value, 0);
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Input_Sur_tym SET YearCode = YearCode - 1");
    expectBookingRefused("Żadne opakowanie nie jest wybrane.");
}

}  // namespace regalon::test
