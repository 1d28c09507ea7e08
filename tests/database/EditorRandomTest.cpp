// A thousand random actions of the editors against the procedures. After each one the warehouse keeps its
// invariants, a refusal has changed nothing, and stands are accepted exactly when the rules, told here a
// second time, let them be.

#include "database/EditorCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <map>
#include <random>

namespace regalon::test {
namespace {

constexpr unsigned Seed = 20261121;
constexpr int Actions = 1000;

/// What a location's row says of its size (0: nothing), and how many packages of 900 x 600 x 600 mm and 100
/// kg lie there.
struct Place {
    int width = 0;
    int height = 0;
    int weight = 0;
    int packages = 0;
};

struct Stand {
    int shelfCount = 0;
    int left = 0;
    int top = 0;
    std::array<int, 4> locations{};
    std::array<int, 4> packages{};
    std::array<std::array<Place, 3>, 4> places{};
};

/// The stands as they lie in the tables, by row and number.
using Hall = std::map<std::pair<int, int>, Stand>;

int whole(const Rows& rows, std::size_t row, std::size_t column) {
    return static_cast<int>(rows.whole(row, column));
}

Hall readHall(OdbcConnection& connection) {
    Hall hall;
    const Rows stands =
        connection.run("SELECT Rank, Stand, ShelfCount, StandLeft, StandTop FROM kolv_mag_Stand");
    for (std::size_t i = 0; i < stands.size(); ++i)
        hall[{whole(stands, i, 0), whole(stands, i, 1)}] = {
            .shelfCount = whole(stands, i, 2), .left = whole(stands, i, 3), .top = whole(stands, i, 4)};
    const auto count = [&](const char* sql, std::array<int, 4> Stand::*field) {
        const Rows rows = connection.run(sql);
        for (std::size_t i = 0; i < rows.size(); ++i)
            (hall.at({whole(rows, i, 0), whole(rows, i, 1)}).*field)
                .at(static_cast<std::size_t>(whole(rows, i, 2) - 1)) = whole(rows, i, 3);
    };
    count("SELECT Rank, Stand, Shelf, COUNT(*) FROM kolv_mag_Location GROUP BY Rank, Stand, Shelf",
          &Stand::locations);
    count(
        "SELECT Rank, Stand, Shelf, COUNT(*) FROM Kolv_Mag_BarCode_Sur WHERE Active = N'Y' GROUP BY Rank, "
        "Stand, Shelf",
        &Stand::packages);
    const Rows places = connection.run(
        "SELECT L.Rank, L.Stand, L.Shelf, L.Location, ISNULL(I.Width_int, 0), ISNULL(I.Height_int, 0), "
        "ISNULL(I.Weight_int, 0), (SELECT COUNT(*) FROM Kolv_Mag_BarCode_Sur AS B WHERE B.Rank = L.Rank AND "
        "B.Stand = L.Stand AND B.Shelf = L.Shelf AND B.Location = L.Location AND B.Active = N'Y') FROM "
        "kolv_mag_Location AS L LEFT JOIN kolv_mag_Location_Item AS I ON I.Rank = L.Rank AND I.Stand = "
        "L.Stand AND I.Shelf = L.Shelf AND I.Location = L.Location");
    for (std::size_t i = 0; i < places.size(); ++i)
        hall.at({whole(places, i, 0), whole(places, i, 1)})
            .places.at(static_cast<std::size_t>(whole(places, i, 2) - 1))
            .at(static_cast<std::size_t>(whole(places, i, 3) - 1)) = {.width = whole(places, i, 4),
                                                                      .height = whole(places, i, 5),
                                                                      .weight = whole(places, i, 6),
                                                                      .packages = whole(places, i, 7)};
    return hall;
}

int highestShelf(const std::array<int, 4>& locations) {
    int highest = 0;
    for (std::size_t shelf = 0; shelf < locations.size(); ++shelf)
        if (locations.at(shelf) > 0)
            highest = static_cast<int>(shelf) + 1;
    return highest;
}

bool overlap(const Stand& a, const Stand& b) {
    constexpr std::array<int, 5> Up{0, 215, 400, 580, 765};
    const auto roof = [&Up](const Stand& s) { return s.top - Up.at(static_cast<std::size_t>(s.shelfCount)); };
    return a.left < b.left + 615 && b.left < a.left + 615 && roof(a) < b.top + 270 && roof(b) < a.top + 270;
}

int standsOf(const Hall& hall, int rank) {
    return static_cast<int>(
        std::count_if(hall.begin(), hall.end(), [rank](const auto& s) { return s.first.first == rank; }));
}

/// Whether a location that keeps its packages has too few slots for them when its shelf has more locations.
bool tooNarrow(const Place& place, int location, int before, int after) {
    const auto slots = [location](int count) { return count == 1 ? 3 : count == 2 && location == 2 ? 2 : 1; };
    if (slots(after) >= slots(before))
        return false;
    const double width = 900.0 * slots(after);
    const double height = place.height > 0 ? place.height : 1200.0;
    const bool tooMuch = place.packages * 900.0 * 600.0 * 600.0 > width * height * 1100.0;
    const bool tooHeavy = place.packages * 100 > 1000 * slots(after);
    return (place.width == 0 && tooMuch) || (place.weight == 0 && tooHeavy);
}

/// The stand as it would be after the call, or nothing when the call is to be refused.
std::optional<Stand> wanted(const Hall& hall, const StandCall& call) {
    const auto old = hall.find({call.rank, call.stand});
    if (call.rank < 1 || call.rank > 3 || call.shelf < 0 || call.shelf > 4 ||
        (call.stand != -1 && old == hall.end()))
        return std::nullopt;
    Stand stand = old == hall.end() ? Stand{} : old->second;
    if (call.shelf > stand.shelfCount + 1 || call.left < 200 || call.left > 14500 || call.top < 1100 ||
        call.top > 8500)
        return std::nullopt;
    const Stand before = stand;
    stand.left = call.left;
    stand.top = call.top;
    if (call.shelf > 0) {
        const auto shelf = static_cast<std::size_t>(call.shelf - 1);
        const int count = call.locations.at(shelf);
        if (count < 0 || count > 3 || (count < stand.locations.at(shelf) && stand.packages.at(shelf) > 0))
            return std::nullopt;
        for (int location = 1; location <= stand.locations.at(shelf) && count > 0; ++location)
            if (tooNarrow(stand.places.at(shelf).at(static_cast<std::size_t>(location - 1)), location,
                          stand.locations.at(shelf), count))
                return std::nullopt;
        stand.locations.at(shelf) = count;
    }
    stand.shelfCount = highestShelf(stand.locations);
    if (old != hall.end() && stand.left == before.left && stand.top == before.top &&
        stand.shelfCount <= before.shelfCount)
        return stand;
    for (const auto& [key, other] : hall)
        if (key != std::pair(call.rank, call.stand) && overlap(stand, other))
            return std::nullopt;
    return stand;
}

bool removable(const Hall& hall, int rank, int stand) {
    const auto found = hall.find({rank, stand});
    return found != hall.end() && stand == standsOf(hall, rank) &&
           found->second.packages == std::array<int, 4>{};
}

class EditorRandom : public ::testing::Test {
protected:
    int pick(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random_); }
    bool chance(int percent) { return pick(1, 100) <= percent; }
    template <std::size_t N>
    std::string pick(const std::array<const char*, N>& values) {
        return values.at(static_cast<std::size_t>(pick(0, static_cast<int>(N) - 1)));
    }

    std::string anyAddress() {
        if (hall_.empty() || chance(5))
            return "1, 99, 1, 1";
        const auto stand = std::next(hall_.begin(), pick(0, static_cast<int>(hall_.size()) - 1));
        return std::to_string(stand->first.first) + ", " + std::to_string(stand->first.second) + ", " +
               std::to_string(pick(1, std::max(1, stand->second.shelfCount))) + ", " +
               std::to_string(pick(1, 3));
    }

    StandCall anyStand() {
        StandCall call{.rank = chance(3) ? 9 : pick(1, 3),
                       .shelf = pick(0, 4),
                       .left = chance(3) ? 199 : 200 + 310 * pick(0, 12),
                       .top = chance(3) ? 8501 : 1100 + 205 * pick(0, 18)};
        call.stand = chance(35) ? -1 : pick(0, standsOf(hall_, call.rank) + 1);
        const auto old = hall_.find({call.rank, call.stand});
        if (old != hall_.end() && chance(70)) {
            call.left = old->second.left;
            call.top = old->second.top;
            call.shelf = pick(1, std::min(4, old->second.shelfCount + 1));
        } else if (call.stand == -1 && chance(80)) {
            call.shelf = pick(0, 1);
        }
        for (int shelf = 1; shelf <= std::min(4, call.shelf); ++shelf)
            call.locations.at(static_cast<std::size_t>(shelf - 1)) = chance(4) ? 4 : pick(0, 3);
        return call;
    }

    void saveAStand() {
        const StandCall call = anyStand();
        const auto expected = wanted(hall_, call);
        tell("AddBookstand " + call.arguments());
        const Answer judged = validateStand(connection(), call);
        const Answer answer = saveStand(connection(), call);
        EXPECT_EQ(judged.value, answer.value);
        EXPECT_EQ(judged.message, answer.message);
        take(answer);
        EXPECT_EQ(answer.value == 0, expected.has_value()) << answer.message;
        if (!expected || answer.value != 0)
            return;
        const int number = call.stand == -1 ? standsOf(hall_, call.rank) : call.stand;
        const Stand& now = hall_.at({call.rank, number});
        EXPECT_EQ(now.locations, expected->locations);
        EXPECT_EQ(now.left, expected->left);
        EXPECT_EQ(now.top, expected->top);
    }

    void removeAStand() {
        const int rank = pick(1, 3);
        const int stand = chance(60) ? standsOf(hall_, rank) : pick(0, standsOf(hall_, rank) + 1);
        const bool expected = removable(hall_, rank, stand);
        tell("RemoveBookstand " + std::to_string(rank) + ", " + std::to_string(stand));
        const Answer answer = removeStand(connection(), rank, stand);
        EXPECT_EQ(answer.value == 0, expected) << answer.message;
        take(answer);
        EXPECT_EQ(hall_.contains({rank, stand}), !expected && before_.contains({rank, stand}));
    }

    void assign() {
        run("kolv_mag_Save_Sur_Location",
            anyAddress() + ", " + literal(pick(std::array{"BL-1", "PR-1", "RU-1", "0", "NIE-MA"})) + ", " +
                std::to_string(pick(-1, 6)) + ", 1");
    }

    void parameter() {
        const std::string name = pick(std::array{"Height_int", "Width_int", "Weight_int", "Description_char",
                                                 "StatLocation_cmb", "Picture_pic", "ItemCode", "Inne_int"});
        run("kolv_mag_Add_Value_Param",
            anyAddress() + ", " + literal(name) + ", " +
                literal(pick(std::array{"", "0", "1", "900", "1200", "-3", "tekst"})) + ", " +
                literal(pick(std::array{"", "Qk32", "zdjecie.bmp"})) + ", " +
                literal(name.substr(name.rfind('_') + 1)));
    }

    void saveAGroup() {
        run("kolv_mag_Save_Group_Sur",
            std::to_string(chance(60) ? -1 : pick(0, 6)) + ", " +
                literal(pick(std::array{"Blachy", "Pręty", "Rury", "Farby", "", "nowa"})) + ", 1");
    }

    void fillAGroup() {
        run("kolv_mag_Add_Sur_On_Group",
            std::to_string(pick(0, 6)) + ", " +
                literal(pick(std::array{"", "BL-1", "PR-1,RU-1", "BL-1,PR-1,RU-1", "BL-1,NIE-MA", ","})) +
                ", 1");
    }

    void deleteAGroup() {
        const std::string group = std::to_string(pick(0, 6));
        tell("DeleteGroupSur " + group);
        const long confirmed = statusOf(connection(), "kolv_mag_ConfirmGroupSur", group);
        const long deleted = statusOf(connection(), "kolv_mag_DeleteGroupSur", group);
        EXPECT_EQ(confirmed, deleted);
        take({deleted, deleted == 0 ? "" : "w użyciu"});
    }

    /// Storekeepers work meanwhile: a package comes to a location that is there, or goes.
    void moveStock() {
        if (chance(50))
            connection().run(
                "DELETE FROM Kolv_Mag_BarCode_Sur WHERE BarCode = (SELECT MIN(BarCode) FROM "
                "Kolv_Mag_BarCode_Sur)");
        else
            connection().run(
                "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, PackLength, PackWidth, PackHeight, "
                "PackWeight, Rank, Stand, Shelf, Location, Active) SELECT TOP 1 N'P" +
                std::to_string(100000 + package_++) +
                "', N'BL-1', 900, 600, 600, 100, Rank, Stand, Shelf, Location, N'Y' FROM kolv_mag_Location "
                "WHERE Stand >= " +
                std::to_string(pick(1, 4)) + " ORDER BY Stand, Shelf, Location, Rank");
        ASSERT_EQ(statusOf(connection(), "Kolv_mag_Refresh_Percent_Location", "N'Y'"), 0);
        look();
    }

    void run(const std::string& procedure, const std::string& arguments) {
        tell(procedure + " " + arguments);
        take(call(connection(), procedure, arguments));
    }

    void tell(const std::string& action) { action_ = action; }

    /// What every answer promises: a reason if and only if refused, and then nothing has changed.
    void take(const Answer& answer) {
        const std::string before = tables_;
        look();
        (answer.value == 0 ? accepted_ : refused_) += 1;
        EXPECT_EQ(answer.message.empty(), answer.value == 0) << answer.message;
        EXPECT_EQ(answer.message.find("Błąd"), std::string::npos) << answer.message;
        if (answer.value != 0) {
            EXPECT_EQ(tables_, before);
        }
    }

    void look() {
        tables_ = editorTables(connection());
        before_ = hall_;
        hall_ = readHall(connection());
    }

    void act() {
        const int kind = pick(1, 100);
        if (kind <= 50)
            saveAStand();
        else if (kind <= 62)
            removeAStand();
        else if (kind <= 72)
            assign();
        else if (kind <= 82)
            parameter();
        else if (kind <= 88)
            saveAGroup();
        else if (kind <= 95)
            fillAGroup();
        else
            deleteAGroup();
    }

    void expectInvariants() {
        for (const auto& [key, stand] : hall_) {
            EXPECT_EQ(stand.shelfCount, highestShelf(stand.locations));
            EXPECT_LE(key.second, standsOf(hall_, key.first)) << "numbers without gaps";
            EXPECT_TRUE(stand.left >= 200 && stand.left <= 14500 && stand.top >= 1100 && stand.top <= 8500);
            for (const auto& [otherKey, other] : hall_)
                EXPECT_FALSE(key < otherKey && overlap(stand, other));
        }
        const Rows broken = connection().run(
            "SELECT N'locations of a shelf' FROM kolv_mag_Location GROUP BY Rank, Stand, Shelf HAVING "
            "COUNT(*) > 3 OR MAX(Location) <> COUNT(*) OR MIN(Location) <> 1 OR Shelf NOT BETWEEN 1 AND 4 "
            "UNION ALL SELECT N'a package without its location' FROM Kolv_Mag_BarCode_Sur AS B WHERE NOT "
            "EXISTS (SELECT 1 FROM kolv_mag_Location AS L WHERE L.Rank = B.Rank AND L.Stand = B.Stand AND "
            "L.Shelf = B.Shelf AND L.Location = B.Location) "
            "UNION ALL SELECT N'an assignment' FROM kolv_mag_Location_Item AS I WHERE (I.ItemCode <> N'' AND "
            "NOT EXISTS (SELECT 1 FROM OITM AS O WHERE O.ItemCode = I.ItemCode)) OR (I.GroupSur <> 0 AND NOT "
            "EXISTS (SELECT 1 FROM kolv_mag_Location_Group AS G WHERE G.GroupSur = I.GroupSur)) OR "
            "I.ItemCode IS NULL OR I.GroupSur IS NULL OR ISNULL(I.StatLocation_cmb, N'0') NOT IN (N'0', "
            "N'1') OR I.Height_int < 0 OR I.Width_int < 0 OR I.Weight_int < 0 "
            "UNION ALL SELECT N'a group' FROM kolv_mag_Location_Group GROUP BY GroupSurName HAVING COUNT(*) "
            "> 1 OR MIN(GroupSur) < 1 OR MIN(GroupSurName) = N'' "
            "UNION ALL SELECT N'a member' FROM kolv_mag_Group_Item AS M WHERE NOT EXISTS (SELECT 1 FROM OITM "
            "AS O WHERE O.ItemCode = M.ItemCode) OR NOT EXISTS (SELECT 1 FROM kolv_mag_Location_Group AS G "
            "WHERE G.GroupSur = M.GroupSur) "
            "UNION ALL SELECT N'fill or icon of a location' FROM kolv_mag_Location AS L INNER JOIN "
            "Kolv_vv_mag_Location_Fill AS F ON F.Rank = L.Rank AND F.Stand = L.Stand AND F.Shelf = L.Shelf "
            "AND F.Location = L.Location WHERE L.LocationIcon IS NULL OR L.LocationIcon <> F.LocationIcon OR "
            "L.LocationPercent <> F.LocationPercent");
        for (std::size_t i = 0; i < broken.size(); ++i)
            ADD_FAILURE() << broken.text(i);
    }

    OdbcConnection& connection() { return ground_.connection; }

    EmptyHall ground_;
    std::mt19937 random_{Seed};
    Hall hall_;
    Hall before_;
    std::string tables_;
    std::string action_;
    int package_ = 0;
    int accepted_ = 0;
    int refused_ = 0;
};

}  // namespace

TEST_F(EditorRandom, AThousandActionsKeepTheInvariants) {
    look();
    std::size_t most = 0;
    for (int i = 1; i <= Actions && !HasFailure(); ++i) {
        if (i % 4 == 0)
            moveStock();
        act();
        SCOPED_TRACE("seed " + std::to_string(Seed) + ", action " + std::to_string(i) + ": " + action_);
        expectInvariants();
        most = std::max(most, hall_.size());
        if (HasFailure())
            ADD_FAILURE() << "the first action that went wrong";
    }
    std::cout << "seed " << Seed << ": " << Actions << " actions, " << accepted_ << " accepted, " << refused_
              << " refused, at most " << most << " stands\n";
    EXPECT_GT(accepted_, Actions / 4);
    EXPECT_GT(refused_, Actions / 4);
}

}  // namespace regalon::test
