#include "database/DocumentDesk.h"

#include "database/EditorCalls.h"

#include <gtest/gtest.h>

#include <array>

namespace regalon::test {
namespace {

std::string two(int number) {
    const std::string text = "0" + std::to_string(number);
    return text.substr(text.size() - 2);
}

}  // namespace

DocumentDesk::DocumentDesk(OdbcConnection connection, int user)
    : connection_(std::move(connection)), user_(std::to_string(user)) {}

long DocumentDesk::clear(const std::string& operation, int param) {
    return statusOf(connection_, "Kolv_mag_BarCode_Clear_Temp",
                    user_ + ", " + std::to_string(param) + ", N'P', " + literal(operation));
}

Answer DocumentDesk::stageBy(const std::string& procedure, const Incoming& package,
                             const std::string& deleteLine) {
    return call(connection_, procedure,
                std::to_string(package.entry) + ", " + std::to_string(package.num) + ", " +
                    std::to_string(package.line) + ", " + literal(package.barCode) + ", " +
                    std::to_string(package.number) + ", " + std::to_string(package.quantity) + ", " + user_ +
                    ", " + std::to_string(package.lineGrd) + ", " + literal(deleteLine) + ", " +
                    literal(package.item) + ", " + literal(package.application) + ", " +
                    literal(package.operation));
}

Answer DocumentDesk::stage(const Incoming& package, const std::string& deleteLine) {
    return stageBy("Kolv_mag_BarCode_Add_Temp", package, deleteLine);
}

Answer DocumentDesk::stageReturn(const Incoming& package, const std::string& deleteLine) {
    Incoming back = package;
    if (back.operation == "I")
        back.operation = "R";
    return stageBy("Kolv_mag_BarCode_Input_Kolv_Temp", back, deleteLine);
}

Answer DocumentDesk::confirm(const std::string& operation) {
    return call(connection_, "Kolv_mag_Watch_Prop_Location_Confirm", user_ + ", N'P', " + literal(operation));
}

Answer DocumentDesk::book(const std::string& operation) {
    return call(connection_, "Kolv_mag_Add_Sur_On_Bufor", user_ + ", N'P', " + literal(operation));
}

Answer DocumentDesk::putAway(const std::string& barCode, const std::string& label, int entry, int line,
                             const std::string& operation) {
    return call(connection_, "Kolv_mag_Add_Sur_On_Location",
                std::to_string(entry) + ", " + std::to_string(line) + ", " + literal(barCode) + ", " +
                    literal(label) + ", " + user_ + ", " + literal(operation));
}

Answer DocumentDesk::stageOut(const Outgoing& package) {
    return call(connection_, "Kolv_mag_BarCode_Add_Temp_Out",
                std::to_string(package.num) + ", " + literal(package.item) + ", " +
                    std::to_string(package.proposed) + ", " + std::to_string(package.quantity) + ", " +
                    user_ + ", -1, " + literal(package.propOrOut) + ", " + literal(package.deleteLine) +
                    ", N'P', " + std::to_string(package.param) + ", " + literal(package.barCode));
}

DocumentDesk::GiveOut DocumentDesk::giveOut(int line, int entry, int num, int receiver) {
    const Rows rows = connection_.run(
        "DECLARE @Value int; DECLARE @Document int; DECLARE @Message nvarchar(250); EXEC "
        "@Value = Kolv_mag_GiveOut_Sur_On_Location " +
        std::to_string(num) + ", " + std::to_string(entry) + ", " + std::to_string(line) + ", " + user_ +
        ", " + std::to_string(receiver) +
        ", N'P', @Document OUTPUT, @Message OUTPUT; SELECT @Value, @Message, @Document;");
    return {.value = rows.whole(0, 0), .message = rows.text(0, 1), .document = rows.text(0, 2)};
}

DocumentDesk::Back DocumentDesk::confirmBack(const ComingBack& back) {
    const Rows rows = connection_.run(
        "DECLARE @Value int; DECLARE @Message nvarchar(250); DECLARE @Quantity decimal(19, 6); EXEC @Value = "
        "kolv_mag_Confirm_Quantity_Input_Prod " +
        std::to_string(back.document) + ", " + std::to_string(back.line) + ", " + literal(back.barCode) +
        ", " + literal(back.item) + ", " + std::to_string(back.quantity) + ", N'P', " +
        literal(back.operation) + ", @Message OUTPUT, @Quantity OUTPUT; SELECT @Value, @Message, @Quantity;");
    return {.value = rows.whole(0, 0), .message = rows.text(0, 1), .quantity = rows.text(0, 2)};
}

long DocumentDesk::lastNumber(int year, int entry, int num, int line) {
    return statusOf(connection_, "Kolv_mag_GetLastBarCode_Sur",
                    std::to_string(year) + ", " + std::to_string(entry) + ", " + std::to_string(num) + ", " +
                        std::to_string(line));
}

Answer DocumentDesk::saveBarCode(const Incoming& package, int year) {
    return call(connection_, "dbo.Kolv_mag_SaveBarCode_Sur",
                std::to_string(year) + ", " + std::to_string(package.entry) + ", " +
                    std::to_string(package.num) + ", " + std::to_string(package.line) + ", " +
                    std::to_string(package.number) + ", " + literal(package.barCode) + ", " + user_ + ", " +
                    literal(package.item));
}

Answer DocumentDesk::lineStatus(int entry, int line) {
    return call(connection_, "kolv_mag_Line_Status_PurchaseOrder",
                std::to_string(entry) + ", " + std::to_string(line) + ", " + user_);
}

DocumentHall::DocumentHall() {
    connection.run(
        "UPDATE OITM SET Blength1 = 800, Bwidth1 = 600, BHeight1 = 500, BWeight1 = 100, PurPackUn = CASE "
        "ItemCode WHEN N'B-1' THEN 5 ELSE 10 END, PurPackMsr = N'paczka'");
    connection.run("INSERT INTO OUSR (UserID, User_Code) VALUES (1, N'jeden'), (2, N'dwa'), (3, N'trzy')");
    connection.run(
        "INSERT INTO OPOR (DocEntry, DocNum, DocDate, DocStatus) VALUES (10, 1010, '20260105', N'O'), (11, "
        "1011, '20260105', N'C'), (12, 1012, NULL, NULL)");
    connection.run(
        "INSERT INTO POR1 (DocEntry, LineNum, ItemCode, Quantity, LineStatus) VALUES (10, 0, N'A-1', 100, "
        "N'O'), (10, 1, N'B-1', 50, N'O'), (10, 2, N'A-2', 20, N'C'), (11, 0, N'A-1', 100, N'O'), (12, 0, "
        "N'A-1', 100, NULL)");
    connection.run(
        "INSERT INTO ORDR (DocEntry, DocNum, DocDate, DocStatus) VALUES (20, 2020, '20260110', N'O'), (21, "
        "2021, NULL, N'C')");
    connection.run(
        "INSERT INTO RDR1 (DocEntry, LineNum, Dscription, Quantity, LineStatus) VALUES (20, 0, N'Rama', 5, "
        "N'O'), (20, 1, N'Wspornik', 5, N'C'), (21, 0, N'Rama', 5, N'O')");
    connection.run(
        "INSERT INTO kolv_mag_Order_Material (DocEntry, LineNum, ItemCode, Quantity) VALUES (20, 0, N'A-1', "
        "8), (20, 0, N'B-1', 5), (20, 1, N'A-1', 5), (21, 0, N'A-1', 5)");
}

void DocumentHall::receive(DocumentDesk& desk, const std::string& barCode, double quantity,
                           const std::string& label) {
    const Answer staged = desk.stage({.barCode = barCode, .quantity = quantity});
    ASSERT_LE(staged.value, 0) << staged.message;
    const Answer booked = desk.book();
    ASSERT_EQ(booked.value, 0) << booked.message;
    if (label.empty())
        return;
    const Answer placed = desk.putAway(barCode, label);
    ASSERT_EQ(placed.value, 0) << placed.message;
}

std::string DocumentHall::books() {
    std::string out = stock();
    for (const char* read :
         {"SELECT * FROM Kolv_Mag_BarCode_Sur_Code ORDER BY BarCode",
          "SELECT * FROM Kolv_Mag_GiveOut ORDER BY GiveOutDocNum",
          "SELECT * FROM Kolv_Mag_BarCode_Sur_Production ORDER BY GiveOutDocNum, GiveOutLineNum"}) {
        const Rows rows = connection.run(read);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            for (std::size_t c = 0; c < rows.columns.size(); ++c)
                out += rows.text(i, c) + "|";
            out += "\n";
        }
    }
    return out;
}

std::string labelOf(int rank, int stand, int shelf, int location, const std::string& day) {
    return "7" + day + "1" + two(rank) + two(stand) + std::to_string(shelf) + std::to_string(location);
}

void expectBalance(OdbcConnection& connection) {
    const Rows rows = connection.run(
        "SELECT B.BarCode, CASE WHEN B.Active = N'Y' THEN ISNULL(B.Quantity, 0) ELSE 0 END, ISNULL((SELECT "
        "SUM(CASE WHEN H.Operation IN (N'I', N'R') THEN H.Quantity WHEN H.Operation = N'O' THEN -H.Quantity "
        "ELSE 0 END) FROM Kolv_Mag_BarCode_Sur_History AS H WHERE H.BarCode = B.BarCode), 0) FROM "
        "Kolv_Mag_BarCode_Sur AS B");
    EXPECT_GT(rows.size(), 0U);
    for (std::size_t i = 0; i < rows.size(); ++i)
        EXPECT_NEAR(rows.number(i, 1), rows.number(i, 2), 0.0000005) << rows.text(i, 0);
}

}  // namespace regalon::test
