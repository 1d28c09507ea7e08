// Barcodes given to order lines: their numbers, the state of a line and of a material, and packing data.

#include "database/DocumentDesk.h"
#include "database/EditorCalls.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

class BarCodeNumber : public ::testing::Test {
protected:
    void expectRefused(const Incoming& code, const std::string& reason, int year = 2026) {
        const std::string before = hall.books();
        const Answer answer = desk.saveBarCode(code, year);
        EXPECT_GT(answer.value, 0) << reason;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(hall.books(), before);
    }

    std::string statusOfItem(const std::string& item, int entry = -1, int line = -1) {
        return desk.one("select dbo.kolv_mag_fn_Status_ItemCode(" + std::to_string(entry) + "," +
                        std::to_string(line) + "," + literal(item) + ") As Status");
    }

    std::string quantity(int entry, int line) {
        return desk.one("select dbo.kolv_mag_fn_Quantity_BarCode(" + std::to_string(entry) + "," +
                        std::to_string(line) + ") As Status");
    }

    DocumentHall hall;
    DocumentDesk desk = hall.documents();
};

}  // namespace

TEST_F(BarCodeNumber, TheNextNumberFollowsFromTheLastAndFirstFromZero) {
    EXPECT_EQ(desk.lastNumber(2026, 10, 1010, 0), 0);
    ASSERT_EQ(desk.saveBarCode({.barCode = "K1", .number = 1}).value, 0);
    ASSERT_EQ(desk.saveBarCode({.barCode = "K2", .number = 2}).value, 0);
    ASSERT_EQ(desk.saveBarCode({.barCode = "K7", .number = 7}).value, 0);
    EXPECT_EQ(desk.lastNumber(2026, 10, 1010, 0), 7);
    EXPECT_EQ(desk.lastNumber(2026, 10, 1010, 1), 0) << "each line counts by itself";
    EXPECT_EQ(desk.lastNumber(2025, 10, 1010, 0), 0) << "and each year";
    const Rows row = hall.connection.run(
        "SELECT BarCode, YearCode, DocEntry, DocNum, LineNum, NumberCode, ItemCode, UserSign FROM "
        "Kolv_Mag_BarCode_Sur_Code WHERE NumberCode = 7");
    const std::vector<std::string> expected{"K7", "2026", "10", "1010", "0", "7", "A-1", "1"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(row.text(0, c), expected[c]) << row.columns[c].name;
}

TEST_F(BarCodeNumber, AnOrderOrLineThatIsNotThereHasNoLastNumber) {
    EXPECT_EQ(desk.lastNumber(2026, 10, 1011, 0), -1);
    EXPECT_EQ(desk.lastNumber(2026, 1010, 10, 0), -1) << "number and entry crossed";
    EXPECT_EQ(desk.lastNumber(2026, 10, 1010, 9), -1);
}

TEST_F(BarCodeNumber, PackagesOfAnotherProgramCountToo) {
    hall.connection.run(
        "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, YearCode, DocEntry, LineNum, NumberCode, Active) VALUES "
        "(N'X', 2026, 10, 0, 12, N'Y')");
    EXPECT_EQ(desk.lastNumber(2026, 10, 1010, 0), 12);
    expectRefused({.barCode = "K1", .number = 12}, "Numer 12 ma na tej pozycji");
}

TEST_F(BarCodeNumber, ACodeOrNumberIsGivenOnce) {
    ASSERT_EQ(desk.saveBarCode({.barCode = "K1", .number = 1}).value, 0);
    expectRefused({.barCode = "K1", .number = 1}, "Kod „K1” jest już nadany.");
    expectRefused({.barCode = "K1", .line = 1, .item = "B-1", .number = 1}, "Kod „K1” jest już nadany.");
    expectRefused({.barCode = "K2", .number = 1}, "Numer 1 ma na tej pozycji");
    EXPECT_EQ(desk.saveBarCode({.barCode = "K2", .number = 1}, 2025).value, 0) << "of another year";
    hall.put({.barCode = "P1"});
    expectRefused({.barCode = "P1", .number = 3}, "Opakowanie „P1” jest już w magazynie.");
}

TEST_F(BarCodeNumber, WrongOrdersMaterialsNumbersAndCodesAreRefused) {
    expectRefused({.entry = 1010, .num = 10, .number = 1}, "nie istnieje");
    expectRefused({.num = 1011, .number = 1}, "ma numer 1010, a nie 1011");
    expectRefused({.line = 8, .number = 1}, "nie ma pozycji 8");
    expectRefused({.line = 2, .item = "A-2", .number = 1}, "jest zamknięta");
    expectRefused({.item = "B-1", .number = 1}, "zamawia surowiec „A-1”, a nie „B-1”");
    expectRefused({.number = 0}, "Numer opakowania musi być większy od zera.");
    expectRefused({.number = -3}, "Numer opakowania musi być większy od zera.");
    expectRefused({.barCode = "", .number = 1}, "Podaj kod kreskowy");
    expectRefused({.barCode = labelOf(1, 1, 1, 1), .number = 1}, "jest etykietą lokalizacji");
    for (const int year : {-1, 26, 10000})
        expectRefused({.number = 1}, "Rok numeracji", year);
}

TEST_F(BarCodeNumber, AnOrderWithoutADateCountsInYearZero) {
    EXPECT_EQ(desk.lastNumber(0, 12, 1012, 0), 0);
    EXPECT_EQ(desk.saveBarCode({.barCode = "K1", .entry = 12, .num = 1012, .number = 1}, 0).value, 0);
    EXPECT_EQ(desk.lastNumber(0, 12, 1012, 0), 1);
}

TEST_F(BarCodeNumber, TheStateOfALineFollowsWhatHasCome) {
    Answer answer = desk.lineStatus(10, 1);
    EXPECT_EQ(answer.value, 0);
    EXPECT_EQ(answer.message, "Pozycja bez kodów kreskowych.");
    ASSERT_EQ(desk.saveBarCode({.barCode = "K1", .line = 1, .item = "B-1", .number = 1}).value, 0);
    EXPECT_EQ(desk.lineStatus(10, 1).value, 1);
    ASSERT_EQ(desk.stage({.barCode = "K1", .line = 1, .item = "B-1", .quantity = 30}).value, 0);
    EXPECT_EQ(desk.lineStatus(10, 1).value, 1) << "staged is not received";
    ASSERT_EQ(desk.book().value, 0);
    answer = desk.lineStatus(10, 1);
    EXPECT_EQ(answer.value, 2);
    EXPECT_EQ(answer.message, "Przyjęto częściowo: 30 z 50.");
    ASSERT_EQ(desk.stage({.barCode = "K2", .line = 1, .item = "B-1", .quantity = 20}).value, 0);
    ASSERT_EQ(desk.book().value, 0);
    EXPECT_EQ(desk.lineStatus(10, 1).value, 3);
    EXPECT_EQ(desk.lineStatus(10, 2).value, 4) << "a closed line";
    EXPECT_EQ(desk.lineStatus(11, 0).value, 4) << "a line of a closed order";
    answer = desk.lineStatus(10, 9);
    EXPECT_EQ(answer.value, -1);
    EXPECT_EQ(answer.message, "Zamówienie nie ma takiej pozycji.");
}

TEST_F(BarCodeNumber, WhatIsGivenOutStaysReceived) {
    hall.receive(desk, "P1", 100);
    ASSERT_EQ(desk.stageOut({.barCode = "P1", .quantity = 40}).value, 0);
    ASSERT_EQ(desk.giveOut().value, 0);
    EXPECT_EQ(desk.lineStatus(10, 0).value, 3);
    EXPECT_EQ(quantity(10, 0), "100");
}

TEST_F(BarCodeNumber, TheStateOfAMaterialIsThatOfItsOpenLines) {
    EXPECT_EQ(statusOfItem("A-1"), "0");
    EXPECT_EQ(statusOfItem("A-2"), "4") << "its only line is closed";
    EXPECT_EQ(statusOfItem("L-1"), "4") << "never ordered";
    EXPECT_EQ(statusOfItem("nie ma"), "<NULL>");
    ASSERT_EQ(desk.saveBarCode({.barCode = "K1", .number = 1}).value, 0);
    EXPECT_EQ(statusOfItem("A-1"), "1");
    hall.receive(desk, "K1", 100);
    EXPECT_EQ(statusOfItem("A-1"), "2") << "order 12 still waits";
    hall.connection.run("UPDATE OPOR SET DocStatus = N'C' WHERE DocEntry = 12");
    EXPECT_EQ(statusOfItem("A-1"), "3");
    EXPECT_EQ(statusOfItem("", 10, 1), "0") << "one line, whatever the material";
    EXPECT_EQ(statusOfItem("", 10, 9), "<NULL>");
}

TEST_F(BarCodeNumber, TheQuantityUnderBarcodesCountsWhatCameAndAPurchasePackageForEachWaitingCode) {
    EXPECT_EQ(quantity(10, 0), "0");
    ASSERT_EQ(desk.saveBarCode({.barCode = "K1", .number = 1}).value, 0);
    ASSERT_EQ(desk.saveBarCode({.barCode = "K2", .number = 2}).value, 0);
    EXPECT_EQ(quantity(10, 0), "20");
    hall.receive(desk, "K1", 7.6);
    EXPECT_EQ(quantity(10, 0), "18") << "7.6 that came and 10 that wait";
    EXPECT_EQ(quantity(10, 9), "<NULL>");
}

TEST_F(BarCodeNumber, PackingDataOfAMaterialIsSavedAsItIs) {
    EXPECT_EQ(call(desk.connection(), "dbo.Kolv_mag_SaveItemCodeParam_Sur",
                   "N'A-1', 1200.5, 800, 300, 2.5, N'worek', 1")
                  .value,
              0);
    const Rows row = desk.run(
        "select Blength1,Bwidth1,BHeight1,PurPackUn,PurPackMsr from OITM(nolock) where ItemCode = N'A-1'");
    EXPECT_EQ(row.number(0, 0), 1200.5);
    EXPECT_EQ(row.number(0, 2), 300);
    EXPECT_EQ(row.number(0, 3), 2.5) << "whole only where it is read";
    EXPECT_EQ(row.text(0, 4), "worek");
    EXPECT_EQ(
        call(desk.connection(), "dbo.Kolv_mag_SaveItemCodeParam_Sur", "N'A-1', NULL, 0, 0, 0, NULL, 1").value,
        0)
        << "sizes that nobody knows";
}

TEST_F(BarCodeNumber, WrongPackingDataIsRefused) {
    const std::string before = hall.one("SELECT STRING_AGG(CAST(Blength1 AS nvarchar(20)), N',') FROM OITM");
    const std::vector<std::pair<std::string, std::string>> calls{
        {"N'nie ma', 1, 1, 1, 1, N'', 1", "nie ma w kartotece"},
        {"N'A-1', -1, 1, 1, 1, N'', 1", "nie mogą być ujemne"},
        {"N'A-1', 1, 1, 1000000, 1, N'', 1", "za duże"},
        {"N'A-1', 1, 1, 1, -0.5, N'', 1", "nie może być ujemna"},
        {"N'A-1', 1, 1, 1, 1, N'półpaleta, a na niej worki', 1", "za długa"}};
    for (const auto& [arguments, reason] : calls) {
        const Answer answer = call(desk.connection(), "dbo.Kolv_mag_SaveItemCodeParam_Sur", arguments);
        EXPECT_GT(answer.value, 0) << arguments;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
    }
    EXPECT_EQ(hall.one("SELECT STRING_AGG(CAST(Blength1 AS nvarchar(20)), N',') FROM OITM"), before);
}

}  // namespace regalon::test
