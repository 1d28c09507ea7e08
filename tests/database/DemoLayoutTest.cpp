// The demo hall as a planner would check it: nothing overlaps, everything lies inside, names fit their three
// lists.

#include "database/Warehouse.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <set>

namespace regalon::test {
namespace {

struct Box {
    std::string what;
    long left = 0;
    long top = 0;
    long right = 0;
    long bottom = 0;
};

bool overlap(const Box& a, const Box& b) {
    return a.left < b.right && b.left < a.right && a.top < b.bottom && b.top < a.bottom;
}

/// A stand with its frame and its locations. The side lines end above the top line, higher for more shelves.
Box standBox(const Rows& stands, std::size_t row) {
    constexpr std::array<long, 5> Up{120, 285, 450, 615, 800};
    const long left = stands.whole(row, 3);
    const long top = stands.whole(row, 4);
    return {"stand " + stands.text(row, 0) + "/" + stands.text(row, 1), left - 25,
            top - Up.at(static_cast<std::size_t>(stands.whole(row, 2))), left + 645, top + 290};
}

std::vector<Box> standBoxes(OdbcConnection& connection) {
    const Rows stands = connection.run(
        "SELECT Rank, Stand, ShelfCount, StandLeft, StandTop FROM kolv_mag_Stand ORDER BY Rank, Stand");
    std::vector<Box> boxes;
    for (std::size_t i = 0; i < stands.size(); ++i)
        boxes.push_back(standBox(stands, i));
    return boxes;
}

/// What the backdrop of the plan draws and what must stay free: letters, door marks with their pictures,
/// doors.
std::vector<Box> backdrop() {
    return {{"letter A", 14280, 1600, 14655, 2095},      {"letter B", 14280, 3960, 14655, 4455},
            {"letter C", 14280, 5160, 14655, 5655},      {"letter D", 14280, 7560, 14655, 8055},
            {"letter E", 120, 4080, 495, 4575},          {"door Wejście", 1200, 7750, 2760, 8280},
            {"door Kolvestra", 12480, 7300, 13920, 8280}};
}

}  // namespace

TEST(DemoLayout, HasAboutAHundredStandsAndFourToFiveHundredLocations) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const long stands = connection.run("SELECT COUNT(*) FROM kolv_mag_Stand").whole(0);
    const long locations = connection.run("SELECT COUNT(*) FROM kolv_mag_Location").whole(0);
    EXPECT_GE(stands, 90);
    EXPECT_LE(stands, 110);
    EXPECT_GE(locations, 400);
    EXPECT_LE(locations, 500);
}

TEST(DemoLayout, StandsStayInsideTheWalls) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    for (const Box& stand : standBoxes(connection)) {
        EXPECT_GT(stand.left, 600) << stand.what;
        EXPECT_LT(stand.right, 14760) << stand.what;
        EXPECT_GT(stand.top, 840) << stand.what;
        EXPECT_LT(stand.bottom, 8280) << stand.what;
    }
}

TEST(DemoLayout, PositionsAreOnesThatTheStandEditorAccepts) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    EXPECT_EQ(connection
                  .run("SELECT COUNT(*) FROM kolv_mag_Stand WHERE StandLeft NOT BETWEEN 200 AND 14500 OR "
                       "StandTop NOT BETWEEN 1100 AND 8500")
                  .whole(0),
              0);
}

TEST(DemoLayout, StandsOverlapNeitherEachOtherNorTheBackdrop) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const auto stands = standBoxes(connection);
    ASSERT_FALSE(stands.empty());
    for (std::size_t i = 0; i < stands.size(); ++i) {
        for (std::size_t k = i + 1; k < stands.size(); ++k)
            EXPECT_FALSE(overlap(stands[i], stands[k])) << stands[i].what << " and " << stands[k].what;
        for (const Box& mark : backdrop())
            EXPECT_FALSE(overlap(stands[i], mark)) << stands[i].what << " and " << mark.what;
    }
}

TEST(DemoLayout, RowsStandBesideTheirLetters) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const Rows rows = connection.run(
        "SELECT Rank, MIN(StandLeft), MAX(StandLeft), MIN(StandTop), MAX(StandTop) FROM kolv_mag_Stand "
        "GROUP BY Rank ORDER BY Rank");
    ASSERT_EQ(rows.size(), 5U);
    const auto letters = backdrop();
    for (std::size_t rank = 0; rank < 4; ++rank) {
        const Box& letter = letters[rank];
        const Rows beside =
            connection.run("SELECT COUNT(*) FROM kolv_mag_Stand WHERE Rank = " + rows.text(rank) +
                           " AND StandTop BETWEEN " + std::to_string(letter.top - 300) + " AND " +
                           std::to_string(letter.bottom) + " AND StandLeft > 11000");
        EXPECT_GT(beside.whole(0), 0) << letter.what;
    }
    // Row E is a column along the left wall, on both sides of its letter.
    EXPECT_EQ(rows.whole(4, 1), rows.whole(4, 2));
    EXPECT_LT(rows.whole(4, 3), 4080);
    EXPECT_GT(rows.whole(4, 4), 4575);
}

TEST(DemoLayout, ShelvesAndLocationsKeepTheirInvariants) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    EXPECT_EQ(
        connection
            .run("SELECT COUNT(*) FROM kolv_mag_Stand AS S WHERE S.ShelfCount <> ISNULL((SELECT MAX(L.Shelf) "
                 "FROM kolv_mag_Location AS L WHERE L.Rank = S.Rank AND L.Stand = S.Stand), 0)")
            .whole(0),
        0);
    EXPECT_EQ(
        connection.run("SELECT COUNT(*) FROM kolv_mag_Location WHERE Shelf NOT BETWEEN 1 AND 4").whole(0), 0);
    // Stands of a row and locations of a shelf are numbered without a gap.
    EXPECT_EQ(
        connection
            .run("SELECT COUNT(*) FROM (SELECT Rank FROM kolv_mag_Stand GROUP BY Rank HAVING MAX(Stand) <> "
                 "COUNT(*) OR MIN(Stand) <> 1) AS X")
            .whole(0),
        0);
    EXPECT_EQ(connection
                  .run("SELECT COUNT(*) FROM (SELECT Rank FROM kolv_mag_Location GROUP BY Rank, Stand, Shelf "
                       "HAVING MAX(Location) <> COUNT(*) OR MIN(Location) <> 1 OR COUNT(*) > 3) AS X")
                  .whole(0),
              0);
    const Rows shelves = connection.run("SELECT DISTINCT ShelfCount FROM kolv_mag_Stand ORDER BY ShelfCount");
    EXPECT_EQ(shelves.size(), 5U) << "every count of shelves from 0 to 4 is shown somewhere";
}

TEST(DemoLayout, StandPicturesAreOnesOfTheIconFolder) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const Rows stands =
        connection.run("SELECT Rank, Stand, StandIcon FROM kolv_mag_Stand ORDER BY Rank, Stand");
    int common = 0;
    for (std::size_t i = 0; i < stands.size(); ++i) {
        std::string number = stands.text(i, 1);
        if (number.size() == 1)
            number.insert(0, 1, '0');
        if (stands.text(i, 2) == "Reg.ico")
            ++common;
        else
            EXPECT_EQ(stands.text(i, 2), "R" + stands.text(i, 0) + "_S_" + number + ".ico");
        EXPECT_LE(stands.whole(i, 1), 40) << "the icon folder has forty pictures a row";
    }
    EXPECT_GT(common, 0);
    EXPECT_LT(common, 10);
}

/// The names of a build: stands in order, shelves from the bottom, locations from the left, the index from 2
/// on.
std::vector<std::string> namesOfABuild(OdbcConnection& connection) {
    const Rows rows = connection.run(
        "SELECT Rank, Stand, Shelf, COUNT(*) FROM kolv_mag_Location GROUP BY Rank, Stand, Shelf "
        "ORDER BY Rank, Stand, Shelf");
    std::vector<std::string> names;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const long count = rows.whole(i, 3);
        for (long k = 1; k <= count; ++k) {
            const char* family = count == 1 ? "LC" : count == 2 && k == 2 ? "LB" : "LA";
            names.push_back(rows.text(i, 0) + "_" + rows.text(i, 1) + "_" + rows.text(i, 2) + "_" +
                            std::to_string(k) + "_" + family + "_" + std::to_string(names.size() + 2));
        }
    }
    return names;
}

TEST(DemoLayout, NamesOfABuildFitTheThreeLists) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const auto names = namesOfABuild(connection);
    ASSERT_FALSE(names.empty());
    std::array<std::size_t, 3> length{};
    for (std::size_t i = 0; i < names.size(); ++i)
        length.at(std::min<std::size_t>(i / 251, 2)) += names[i].size() + (i % 251 == 0 ? 0 : 1);
    for (const std::size_t characters : length)
        EXPECT_LT(characters, 4000U);
}

TEST(DemoLayout, StoredNamesAreThoseOfABuild) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const Rows stored =
        connection.run("SELECT LocationName FROM kolv_mag_Location ORDER BY Rank, Stand, Shelf, Location");
    const auto names = namesOfABuild(connection);
    ASSERT_EQ(stored.size(), names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        EXPECT_EQ(stored.text(i), names[i]);
}

}  // namespace regalon::test
