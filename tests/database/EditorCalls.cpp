#include "database/EditorCalls.h"

#include <gtest/gtest.h>

namespace regalon::test {

std::string literal(const std::string& text) {
    std::string out = "N'";
    for (const char c : text)
        out.append(c == '\'' ? 2 : 1, c);
    return out + "'";
}

std::string StandCall::arguments() const {
    std::string out = std::to_string(rank) + ", " + std::to_string(stand) + ", " + std::to_string(shelf) +
                      ", " + literal(icon) + ", " + std::to_string(top) + ", " + std::to_string(left);
    for (const int count : locations)
        out += ", " + std::to_string(count);
    for (const std::string& text : {visible, enabled, frame, description})
        out += ", " + literal(text);
    return out;
}

Answer validateStand(OdbcConnection& connection, const StandCall& stand) {
    return call(connection, "kolv_mag_AddBookstandValidate", stand.arguments());
}

Answer saveStand(OdbcConnection& connection, const StandCall& stand) {
    return call(connection, "kolv_mag_AddBookstand", stand.arguments());
}

Answer removeStand(OdbcConnection& connection, int rank, int stand) {
    return call(connection, "kolv_mag_RemoveBookstand", std::to_string(rank) + ", " + std::to_string(stand));
}

long statusOf(OdbcConnection& connection, const std::string& procedure, const std::string& arguments) {
    return connection
        .run("DECLARE @Value int; EXEC @Value = " + procedure + " " + arguments + "; SELECT @Value;")
        .whole(0);
}

std::string editorTables(OdbcConnection& connection) {
    std::string out;
    for (const char* read :
         {"SELECT Rank, Stand, StandName, StandIcon, ShelfCount, StandLeft, StandTop, StandVisable, "
          "StandEnable, StandFrameArround, StandDescription FROM kolv_mag_Stand ORDER BY Rank, Stand",
          "SELECT * FROM kolv_mag_Location ORDER BY Rank, Stand, Shelf, Location",
          "SELECT * FROM kolv_mag_Location_Item ORDER BY Rank, Stand, Shelf, Location",
          "SELECT * FROM kolv_mag_Location_Group ORDER BY GroupSur",
          "SELECT * FROM kolv_mag_Group_Item ORDER BY GroupSur, ItemCode"}) {
        const Rows rows = connection.run(read);
        for (std::size_t i = 0; i < rows.size(); ++i) {
            for (std::size_t c = 0; c < rows.columns.size(); ++c)
                out += rows.text(i, c) + "|";
            out += "\n";
        }
        out += "--\n";
    }
    return out;
}

EmptyHall::EmptyHall() {
    connection.run(
        "INSERT INTO kolv_mag_Rank (Rank, RankName) VALUES (1, N'Rząd A'), (2, N'Rząd B'), (3, NULL)");
    connection.run(
        "INSERT INTO OITM (ItemCode, ItemName) VALUES (N'BL-1', N'Blacha'), (N'PR-1', N'Pręt'), (N'RU-1', "
        "NULL)");
}

void EmptyHall::put(const std::string& barCode, const std::string& address, const std::string& active) {
    connection.run(
        "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, PackLength, PackWidth, PackHeight, "
        "PackWeight, Rank, Stand, Shelf, Location, Active) VALUES (" +
        literal(barCode) + ", N'BL-1', 1, 900, 600, 600, 100, " + address + ", " + literal(active) + ")");
}

void EmptyHall::build(int rank, const std::string& profile, int left, int top) {
    StandCall stand{.rank = rank, .shelf = profile.empty() ? 0 : 1, .left = left, .top = top};
    for (std::size_t shelf = 0; shelf == 0 || shelf < profile.size(); ++shelf) {
        if (!profile.empty()) {
            stand.shelf = static_cast<int>(shelf) + 1;
            stand.locations.at(shelf) = profile[shelf] - '0';
        }
        const Answer answer = saveStand(connection, stand);
        ASSERT_EQ(answer.value, 0) << answer.message;
        if (stand.stand == -1)
            stand.stand = static_cast<int>(
                connection.run("SELECT COUNT(*) FROM kolv_mag_Stand WHERE Rank = " + std::to_string(rank))
                    .whole(0));
    }
}

}  // namespace regalon::test
