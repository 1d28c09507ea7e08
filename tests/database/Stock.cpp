#include "database/Stock.h"

#include <gtest/gtest.h>

#include <array>
#include <set>

namespace regalon::test {
namespace {

std::string place(const Rows& rows, std::size_t row, std::size_t column) {
    return rows.text(row, column) + ", " + rows.text(row, column + 1) + ", " + rows.text(row, column + 2) +
           ", " + rows.text(row, column + 3);
}

/// Litres and kilograms of the rack: row 2 has locations of three slots.
bool holds(const std::string& address, double litres, double kilograms) {
    const double slots = address.front() == '2' ? 3 : 1;
    return litres <= slots * 1188.001 && kilograms <= slots * 1000.001;
}

/// Whether the materials may lie together at an address of fillForMovers.
bool takes(const std::string& address, const std::set<std::string>& items) {
    if (address.front() == '2')
        return true;
    if (address.rfind("1, 1,", 0) == 0)
        return items.size() <= 1;
    const bool sheets = address.rfind("1, 2,", 0) == 0;
    for (const std::string& item : items)
        if (sheets ? item.rfind("A-", 0) != 0 : item != "B-1")
            return false;
    return true;
}

}  // namespace

Stock Stock::read(OdbcConnection& connection) {
    Stock stock;
    const Rows rows = connection.run(
        "SELECT BarCode, ItemCode, Quantity, Rank, Stand, Shelf, Location FROM Kolv_Mag_BarCode_Sur WHERE "
        "Active = N'Y'");
    for (std::size_t i = 0; i < rows.size(); ++i)
        stock.packages[rows.text(i, 0)] = {
            .item = rows.text(i, 1), .quantity = rows.text(i, 2), .place = place(rows, i, 3)};
    stock.moves =
        connection.run("SELECT COUNT(*) FROM Kolv_Mag_BarCode_Sur_History WHERE Operation = N'S'").whole(0);
    return stock;
}

namespace {

/// The n-th group of three locations of a stand, from its first shelf up.
std::string spotOf(const std::string& stand, int spot) {
    return stand + ", " + std::to_string(spot / 3 + 1) + ", " + std::to_string(spot % 3 + 1);
}

/// Where the packages of a material begin, four to a location.
std::string beginning(const std::string& item, int spot) {
    if (item == "L-1")
        return "2, 1, 1, 1";
    if (item == "B-1")
        return spotOf("1, 3", spot);
    if (item == "A-1")
        return spot < 7 ? spotOf("1, 2", spot) : spotOf("1, 1", spot - 7);
    return spot < 6 ? spotOf("1, 1", spot + 3) : spotOf("1, 2", spot + 1);
}

}  // namespace

void fillForMovers(ShiftHall& hall) {
    struct Kind {
        const char* item;
        int count;
        int length;
        int weight;
    };
    // 500 wide and 600 high: 210 to 300 litres.
    constexpr std::array<Kind, 4> Kinds{
        {{"A-1", 40, 700, 160}, {"A-2", 28, 800, 190}, {"B-1", 22, 900, 120}, {"L-1", 10, 1000, 60}}};
    for (int spot = 0; spot < 9; ++spot) {
        hall.assign(spotOf("1, 2", spot), "", 1, 1);
        hall.assign(spotOf("1, 3", spot), "", 2, 0);
    }
    hall.assign("2, 1, 1, 1", "", 0, 1);

    int code = 100;
    for (const Kind& kind : Kinds)
        for (int i = 0; i < kind.count; ++i) {
            ++code;
            hall.connection.run(
                "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, PackLength, PackWidth, "
                "PackHeight, PackWeight, Rank, Stand, Shelf, Location, Active) VALUES (N'" +
                std::to_string(code) + "', N'" + kind.item + "', " + std::to_string(code) + ".25, " +
                std::to_string(kind.length) + ", 500, 600, " + std::to_string(kind.weight) + ", " +
                beginning(kind.item, i / 4) + ", N'Y')");
        }
    hall.connection.run("EXEC Kolv_mag_Refresh_Percent_Location N'Y'");
}

namespace {

void expectSamePackages(const Stock& before, const Stock& after) {
    ASSERT_EQ(after.packages.size(), before.packages.size());
    for (const auto& [code, package] : before.packages) {
        ASSERT_TRUE(after.packages.contains(code)) << code;
        EXPECT_EQ(after.packages.at(code).item, package.item) << code;
        EXPECT_EQ(after.packages.at(code).quantity, package.quantity) << code;
    }
}

void expectChains(OdbcConnection& connection, const Stock& before, const Stock& after) {
    std::map<std::string, std::string> at;
    for (const auto& [code, package] : before.packages)
        at[code] = package.place;
    const Rows rows = connection.run(
        "SELECT BarCode, FromRank, FromStand, FromShelf, FromLocation, ToRank, ToStand, ToShelf, ToLocation, "
        "Quantity FROM Kolv_Mag_BarCode_Sur_History WHERE Operation = N'S' AND ID > (SELECT ISNULL(MIN(ID), "
        "0) "
        "+ " +
        std::to_string(before.moves) +
        " - 1 FROM Kolv_Mag_BarCode_Sur_History WHERE Operation = N'S') ORDER BY ID");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string code = rows.text(i);
        ASSERT_TRUE(at.contains(code)) << code;
        EXPECT_EQ(place(rows, i, 1), at[code]) << "move " << i << " of " << code << " begins elsewhere";
        EXPECT_EQ(rows.text(i, 9), before.packages.at(code).quantity) << code;
        at[code] = place(rows, i, 5);
    }
    for (const auto& [code, package] : after.packages)
        EXPECT_EQ(at[code], package.place) << code << " lies where no move has put it";
}

void expectRoom(OdbcConnection& connection) {
    const Rows rows = connection.run(
        "SELECT B.Rank, B.Stand, B.Shelf, B.Location, L.Rank, B.ItemCode, B.PackLength * B.PackWidth * "
        "B.PackHeight / 1000000.0, B.PackWeight FROM Kolv_Mag_BarCode_Sur AS B LEFT JOIN kolv_mag_Location "
        "AS L "
        "ON L.Rank = B.Rank AND L.Stand = B.Stand AND L.Shelf = B.Shelf AND L.Location = B.Location");
    struct Load {
        double litres = 0;
        double kilograms = 0;
        std::set<std::string> items;
    };
    std::map<std::string, Load> loads;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_NE(rows.text(i, 4), "<NULL>") << place(rows, i, 0) << " is no location";
        Load& load = loads[place(rows, i, 0)];
        load.litres += rows.number(i, 6);
        load.kilograms += rows.number(i, 7);
        load.items.insert(rows.text(i, 5));
    }
    for (const auto& [address, load] : loads) {
        EXPECT_TRUE(holds(address, load.litres, load.kilograms))
            << address << ": " << load.litres << " litres, " << load.kilograms << " kg";
        EXPECT_TRUE(takes(address, load.items)) << address << " with " << load.items.size() << " materials";
    }
}

}  // namespace

void expectFills(OdbcConnection& connection) {
    const Rows rows = connection.run(
        "SELECT L.LocationIcon, F.LocationIcon, L.LocationPercent, F.LocationPercent FROM kolv_mag_Location "
        "AS L "
        "INNER JOIN Kolv_vv_mag_Location_Fill AS F ON F.Rank = L.Rank AND F.Stand = L.Stand AND F.Shelf = "
        "L.Shelf AND F.Location = L.Location");
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(rows.text(i, 0), rows.text(i, 1));
        EXPECT_EQ(rows.text(i, 2), rows.text(i, 3));
    }
}

void expectWholeMoves(OdbcConnection& connection, const Stock& before) {
    const Stock after = Stock::read(connection);
    expectSamePackages(before, after);
    expectChains(connection, before, after);
    expectRoom(connection);
    expectFills(connection);
}

}  // namespace regalon::test
