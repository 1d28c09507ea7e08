#include "database/ShiftDesk.h"

#include "database/EditorCalls.h"

#include <gtest/gtest.h>

#include <array>

namespace regalon::test {

std::string Proposal::address() const {
    return std::to_string(rank) + ", " + std::to_string(stand) + ", " + std::to_string(shelf) + ", " +
           std::to_string(location);
}

ShiftDesk::ShiftDesk(OdbcConnection connection, int user, std::string application, std::string operation)
    : connection_(std::move(connection)),
      user_(std::to_string(user)),
      application_(std::move(application)),
      operation_(std::move(operation)) {}

std::string ShiftDesk::who() const {
    return user_ + ", " + application_;
}

long ShiftDesk::clear(int param) {
    return statusOf(connection_, "Kolv_mag_BarCode_Clear_Temp",
                    user_ + ", " + std::to_string(param) + ", " + application_ + ", " + operation_);
}

Answer ShiftDesk::stage(const std::string& item, const std::string& address) {
    return call(connection_, "kolv_mag_BarCode_Shift_Tmp",
                literal(item) + ", " + address + ", " + who() + ", N'N', " + operation_);
}

Answer ShiftDesk::unstage(const std::string& item, const std::string& address) {
    return call(connection_, "kolv_mag_BarCode_Shift_Tmp",
                literal(item) + ", " + address + ", " + who() + ", N'Y', " + operation_);
}

Answer ShiftDesk::choose(const std::string& barCode) {
    return call(connection_, "kolv_mag_Shift_Location_BarCode_Status",
                literal(barCode) + ", " + who() + ", N'N', " + operation_);
}

Answer ShiftDesk::unchoose(const std::string& barCode) {
    return call(connection_, "kolv_mag_Shift_Location_BarCode_Status",
                literal(barCode) + ", " + who() + ", N'Y', " + operation_);
}

Answer ShiftDesk::confirm() {
    return call(connection_, "Kolv_mag_Watch_Prop_Location_Confirm", who() + ", " + operation_);
}

Answer ShiftDesk::prepare(const std::string& message) {
    const Rows rows = connection_.run("DECLARE @Value int; DECLARE @Message nvarchar(250) = " + message +
                                      "; EXEC @Value = Kolv_mag_Watch_Prop_Location " + who() + ", " +
                                      operation_ + ", 0, @Message OUTPUT; SELECT @Value, @Message;");
    return {rows.whole(0, 0), rows.text(0, 1)};
}

Rows ShiftDesk::proposalRows(int mode, const std::string& message) {
    return connection_.run("exec Kolv_mag_Watch_Prop_Location " + user_ + "," + application_ + "," +
                           operation_ + "," + std::to_string(mode) + "," + message);
}

std::vector<Proposal> proposalsOf(const Rows& rows) {
    // The client's headers are these columns and the number of the row in front of them.
    const std::size_t headers = rows.columns.size() + 1;
    const auto column = [headers](std::size_t fromEnd) { return headers - fromEnd - 1; };
    std::vector<Proposal> list;
    for (std::size_t i = 0; i < rows.size(); ++i)
        list.push_back({.rank = static_cast<int>(rows.whole(i, column(10))),
                        .stand = static_cast<int>(rows.whole(i, column(9))),
                        .shelf = static_cast<int>(rows.whole(i, column(8))),
                        .location = static_cast<int>(rows.whole(i, column(7))),
                        .barCode = rows.text(i, column(6)),
                        .status = rows.text(i, column(3)),
                        .remark = rows.text(i, column(2)),
                        .occupied = rows.text(i, column(1)),
                        .percentAfter = static_cast<int>(rows.whole(i, column(4)))});
    return list;
}

std::vector<Proposal> ShiftDesk::proposals(int mode) {
    return proposalsOf(proposalRows(mode));
}

Proposal ShiftDesk::proposal(const std::string& address) {
    for (const Proposal& row : proposals())
        if (row.address() == address)
            return row;
    ADD_FAILURE() << "no proposal of " << address;
    return {};
}

Answer ShiftDesk::move(const std::string& barCode, const std::string& address) {
    return call(connection_, "kolv_mag_Shift_Location_BarCode",
                literal(barCode) + ", " + address + ", " + who() + ", " + operation_);
}

void ShiftDesk::take(const std::string& item, const std::string& address, const std::string& barCode) {
    ASSERT_LE(clear(), 0);
    const Answer staged = stage(item, address);
    ASSERT_EQ(staged.value, 0) << staged.message;
    ASSERT_EQ(choose(barCode).value, 0);
    const Answer confirmed = confirm();
    ASSERT_EQ(confirmed.value, 0) << confirmed.message;
}

long ShiftDesk::chosen() {
    return connection_
        .run(
            " select Count(*) as Count from Kolv_Mag_BarCode_Input_Sur_tym(nolock) where HostName = "
            "Host_Name() AND YearCode = Year(getdate()) AND SPID = -@@SPID AND LineGrd = -1 AND UserSign = " +
            user_ + " AND Operation = " + operation_)
        .whole(0);
}

std::vector<std::string> ShiftDesk::packages() {
    const Rows rows = connection_.run("exec kolv_mag_Watch_BarCode_On_Location " + user_ + "," +
                                      application_ + "," + operation_ + ",1");
    std::vector<std::string> codes;
    for (std::size_t i = 0; i < rows.size(); ++i)
        codes.push_back(rows.text(i, rows.columns.size() - 1));
    return codes;
}

ShiftHall::ShiftHall(Warehouse::Content content) : warehouse(content) {
    connection.run("INSERT INTO kolv_mag_Rank (Rank, RankName) VALUES (1, N'Rząd A'), (2, N'Rząd B')");
    connection.run(
        "INSERT INTO OITM (ItemCode, ItemName, InvntryUom) VALUES (N'A-1', N'Blacha cienka', N'kg'), "
        "(N'A-2', "
        "N'Blacha gruba', N'kg'), (N'B-1', N'Granulat', N'kg'), (N'L-1', N'Lina', N'mb')");
    connection.run(
        "INSERT INTO kolv_mag_Location_Group (GroupSur, GroupSurName, OnOrOff) VALUES (1, N'Blachy', N'Y'), "
        "(2, N'Granulaty', N'Y')");
    connection.run(
        "INSERT INTO kolv_mag_Group_Item (GroupSur, ItemCode) VALUES (1, N'A-1'), (1, N'A-2'), (2, N'B-1')");
    connection.run(
        "INSERT INTO kolv_mag_Stand (Rank, Stand, StandName, StandIcon, ShelfCount, StandLeft, StandTop, "
        "StandVisable, StandEnable, StandFrameArround) VALUES "
        "(1, 1, N'Regał 1', N'Reg.ico', 3, 2000, 3000, N'Y', N'Y', N'Y'), "
        "(1, 2, N'Regał 2', N'Reg.ico', 3, 2700, 3000, N'Y', N'Y', N'Y'), "
        "(1, 3, N'Regał 3', N'Reg.ico', 3, 6000, 3000, N'Y', N'Y', N'Y'), "
        "(2, 1, N'Regał 1', N'Reg.ico', 1, 2000, 6000, N'Y', N'Y', N'Y')");
    connection.run(
        "INSERT INTO kolv_mag_Location (Rank, Stand, Shelf, Location) SELECT 1, S.Number, H.Number, L.Number "
        "FROM kolv_mag_Number AS S CROSS JOIN kolv_mag_Number AS H CROSS JOIN kolv_mag_Number AS L WHERE "
        "S.Number <= 3 AND H.Number <= 3 AND L.Number <= 3 UNION ALL SELECT 2, 1, 1, 1");
    connection.run("EXEC Kolv_mag_Refresh_Percent_Location N'Y'");
}

void ShiftHall::put(const Package& package) {
    connection.run(
        "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, PackLength, PackWidth, PackHeight, "
        "PackWeight, Rank, Stand, Shelf, Location, Active) VALUES (" +
        literal(package.barCode) + ", " + literal(package.item) + ", " + std::to_string(package.quantity) +
        ", " + std::to_string(package.length) + ", " + std::to_string(package.width) + ", " +
        std::to_string(package.height) + ", " + std::to_string(package.weight) + ", " + package.address +
        ", N'Y')");
    connection.run("EXEC Kolv_mag_Refresh_Percent_Location N'Y'");
}

void ShiftHall::assign(const std::string& address, const std::string& item, int group, int multi) {
    connection.run("DELETE FROM kolv_mag_Location_Item WHERE " + whereAddress(address));
    connection.run(
        "INSERT INTO kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, GroupSur, "
        "StatLocation_cmb) VALUES (" +
        address + ", " + literal(item) + ", " + std::to_string(group) + ", N'" + std::to_string(multi) +
        "')");
}

std::string ShiftHall::place(const std::string& barCode) {
    const Rows rows = connection.run(
        "SELECT Rank, Stand, Shelf, Location FROM Kolv_Mag_BarCode_Sur WHERE BarCode = " + literal(barCode));
    return rows.text(0, 0) + ", " + rows.text(0, 1) + ", " + rows.text(0, 2) + ", " + rows.text(0, 3);
}

std::string ShiftHall::stock() {
    std::string out;
    for (const char* read : {"SELECT * FROM Kolv_Mag_BarCode_Sur ORDER BY BarCode",
                             "SELECT * FROM Kolv_Mag_BarCode_Sur_History ORDER BY ID",
                             "SELECT * FROM kolv_mag_Location ORDER BY Rank, Stand, Shelf, Location"}) {
        const Rows rows = connection.run(read);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            for (std::size_t c = 0; c < rows.columns.size(); ++c)
                out += rows.text(i, c) + "|";
            out += "\n";
        }
    }
    return out;
}

std::string whereAddress(const std::string& address) {
    constexpr std::array<const char*, 4> Columns{
        "Rank = ", " AND Stand = ", " AND Shelf = ", " AND Location = "};
    std::string out;
    std::size_t from = 0;
    for (const char* column : Columns) {
        const std::size_t comma = address.find(',', from);
        out += column + address.substr(from, comma - from);
        from = comma == std::string::npos ? address.size() : comma + 2;
    }
    return out;
}

}  // namespace regalon::test
