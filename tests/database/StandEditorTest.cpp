// kolv_mag_AddBookstand, kolv_mag_RemoveBookstand and their Validate halves.

#include "database/EditorCalls.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

namespace regalon::test {
namespace {

class StandEditor : public ::testing::Test {
protected:
    Answer save(const StandCall& stand) { return saveStand(hall_.connection, stand); }

    /// Both halves refuse for the same reason, and nothing has changed. The reason.
    std::string refused(const StandCall& stand) {
        const std::string before = editorTables(hall_.connection);
        const Answer judged = validateStand(hall_.connection, stand);
        const Answer saved = save(stand);
        EXPECT_GT(judged.value, 0);
        EXPECT_GT(saved.value, 0);
        EXPECT_EQ(judged.message, saved.message);
        EXPECT_EQ(editorTables(hall_.connection), before);
        return saved.message;
    }

    void accepted(const StandCall& stand) {
        const std::string before = editorTables(hall_.connection);
        const Answer judged = validateStand(hall_.connection, stand);
        EXPECT_EQ(judged.value, 0) << judged.message;
        EXPECT_EQ(judged.message, "");
        EXPECT_EQ(editorTables(hall_.connection), before);
        const Answer saved = save(stand);
        EXPECT_EQ(saved.value, 0) << saved.message;
        EXPECT_EQ(saved.message, "");
    }

    /// Locations of the shelves of a stand from the bottom up, behind its ShelfCount: "2:13".
    std::string shelves(int rank, int stand) {
        const std::string where =
            " WHERE Rank = " + std::to_string(rank) + " AND Stand = " + std::to_string(stand);
        std::string out = hall_.one("SELECT ShelfCount FROM kolv_mag_Stand" + where) + ":";
        const Rows rows =
            hall_.connection.run("SELECT Shelf, COUNT(*) FROM kolv_mag_Location" + where + " GROUP BY Shelf");
        std::string counts(4, '0');
        for (std::size_t i = 0; i < rows.size(); ++i)
            counts.at(static_cast<std::size_t>(rows.whole(i) - 1)) =
                static_cast<char>('0' + rows.whole(i, 1));
        return out + counts.substr(0, counts.find_last_not_of('0') + 1);
    }

    EmptyHall hall_;
};

bool says(const std::string& message, const std::string& part) {
    return message.find(part) != std::string::npos;
}

}  // namespace

TEST_F(StandEditor, ANewStandGetsTheNumberBehindThoseOfItsRow) {
    accepted({.locations = {2}, .left = 3000});
    accepted({.locations = {3}, .left = 3680});
    accepted({.rank = 2, .locations = {1}, .left = 4360});
    EXPECT_EQ(shelves(1, 1), "1:2");
    EXPECT_EQ(shelves(1, 2), "1:3");
    EXPECT_EQ(shelves(2, 1), "1:1");
    EXPECT_EQ(hall_.one("SELECT StandName FROM kolv_mag_Stand WHERE Rank = 1 AND Stand = 2"), "Regał 2");
}

TEST_F(StandEditor, AStandKeepsEverythingThatTheEditorGives) {
    accepted({.locations = {1},
              .left = 14500,
              .top = 8500,
              .icon = "R1_S_01.ico",
              .visible = "N",
              .enabled = "Y",
              .frame = "N",
              .description = "Regał „zły” 'x'"});
    const Rows row = hall_.connection.run(
        "SELECT StandIcon, StandLeft, StandTop, StandVisable, StandEnable, StandFrameArround, "
        "StandDescription FROM kolv_mag_Stand");
    EXPECT_EQ(row.text(0, 0), "R1_S_01.ico");
    EXPECT_EQ(row.text(0, 1), "14500");
    EXPECT_EQ(row.text(0, 2), "8500");
    EXPECT_EQ(row.text(0, 3) + row.text(0, 4) + row.text(0, 5), "NYN");
    EXPECT_EQ(row.text(0, 6), "Regał „zły” 'x'");
    accepted({.stand = 1, .locations = {1}, .left = 200, .top = 1100, .description = "Nowy opis"});
    EXPECT_EQ(hall_.one("SELECT StandName FROM kolv_mag_Stand"), "Regał 1");
    EXPECT_EQ(hall_.one("SELECT StandDescription FROM kolv_mag_Stand"), "Nowy opis");
    EXPECT_EQ(hall_.one("SELECT StandLeft FROM kolv_mag_Stand"), "200");
}

TEST_F(StandEditor, BlanksAroundTheNameOfAnIconAreNotStored) {
    accepted({.locations = {1}, .icon = "  R1 S.ico "});
    EXPECT_EQ(hall_.one("SELECT N'<' + StandIcon + N'>' FROM kolv_mag_Stand"), "<R1 S.ico>");
}

TEST_F(StandEditor, OnlyTheShelfInQuestionChanges) {
    hall_.build(1, "213", 3000, 4000);
    EXPECT_EQ(shelves(1, 1), "3:213");
    accepted({.stand = 1, .shelf = 1, .locations = {3, 0, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "3:313");
    accepted({.stand = 1, .shelf = 2, .locations = {0, 2, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "3:323");
    accepted({.stand = 1, .shelf = 0, .description = "bez półki"});
    EXPECT_EQ(shelves(1, 1), "3:323");
    accepted({.stand = 1, .shelf = 4, .locations = {1, 1, 1, 2}});
    EXPECT_EQ(shelves(1, 1), "4:3232");
}

TEST_F(StandEditor, TheShelfCountIsTheHighestShelfWithLocations) {
    hall_.build(1, "213", 3000, 4000);
    accepted({.stand = 1, .shelf = 2, .locations = {2, 0, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "3:203");
    accepted({.stand = 1, .shelf = 3, .locations = {2, 0, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "1:2");
    accepted({.stand = 1, .shelf = 1, .locations = {0, 0, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "0:");
    accepted({.stand = 1, .shelf = 1, .locations = {1, 0, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "1:1");
}

TEST_F(StandEditor, AStandWithoutShelvesIsValid) {
    accepted({.shelf = 0});
    accepted({.shelf = 1, .left = 4000});
    EXPECT_EQ(shelves(1, 1), "0:");
    EXPECT_EQ(shelves(1, 2), "0:");
}

TEST_F(StandEditor, ShelvesAreBuiltFromTheBottomUp) {
    EXPECT_TRUE(says(refused({.shelf = 2, .locations = {1, 1, 0, 0}}), "nad półką 1"));
    hall_.build(1, "1", 3000, 4000);
    EXPECT_TRUE(says(refused({.stand = 1, .shelf = 3, .locations = {1, 1, 1, 0}}), "Półka 3"));
    EXPECT_TRUE(says(refused({.stand = 1, .shelf = 5, .locations = {1, 1, 1, 1}}), "4 półki"));
    EXPECT_TRUE(says(refused({.stand = 1, .shelf = -1}), "4 półki"));
}

TEST_F(StandEditor, AShelfHasThreeLocationsAtMost) {
    EXPECT_TRUE(says(refused({.locations = {4}}), "od 0 do 3"));
    EXPECT_TRUE(says(refused({.locations = {-1}}), "od 0 do 3"));
    accepted({.locations = {3, 9, 9, 9}});
    EXPECT_EQ(shelves(1, 1), "1:3") << "the counts above the shelf in question say nothing";
}

TEST_F(StandEditor, TheRowAndTheStandMustExist) {
    EXPECT_TRUE(says(refused({.rank = 0, .locations = {1}}), "rząd"));
    EXPECT_TRUE(says(refused({.rank = 9, .locations = {1}}), "rząd"));
    EXPECT_TRUE(says(refused({.stand = 0, .locations = {1}}), "Nowy"));
    EXPECT_TRUE(says(refused({.stand = -2, .locations = {1}}), "Nowy"));
    EXPECT_TRUE(
        says(refused({.stand = 1, .locations = {1}}), "„Regał 1” (Rząd A) nie istnieje. Mógł go usunąć"));
}

TEST_F(StandEditor, APositionOutsideTheHallIsRefused) {
    for (const int left : {199, 14501, -5, 2147483647})
        EXPECT_TRUE(says(refused({.locations = {1}, .left = left}), "X = " + std::to_string(left)));
    for (const int top : {1099, 8501, 0, -2147483647})
        EXPECT_TRUE(says(refused({.locations = {1}, .top = top}), "Y = " + std::to_string(top)));
    accepted({.locations = {1}, .left = 200, .top = 1100});
    accepted({.locations = {1}, .left = 14500, .top = 8500});
}

TEST_F(StandEditor, NoStandIsPutOnTopOfAnother) {
    hall_.build(2, "12", 3000, 4000);
    EXPECT_EQ(refused({.locations = {1}}),
              "W tym miejscu stoi już „Regał 1” (Rząd B). Zmień położenie X lub Y tak, aby półki regałów nie "
              "zachodziły na siebie.");
    // Side by side, and bottom against top: 615 wide, 270 high with 400 above for two shelves, 215 for one.
    for (const int left : {3000 - 614, 3000 + 614})
        EXPECT_TRUE(says(refused({.locations = {1}, .left = left}), "Regał 1"));
    for (const int top : {4000 - 669, 4000 + 484})
        EXPECT_TRUE(says(refused({.locations = {1}, .top = top}), "Regał 1"));
    accepted({.locations = {1}, .left = 3000 - 615});
    accepted({.locations = {1}, .left = 3000 + 615});
    accepted({.locations = {1}, .top = 4000 - 670});
    accepted({.locations = {1}, .top = 4000 + 485});
}

TEST_F(StandEditor, AStandDoesNotGrowIntoTheOneAbove) {
    hall_.build(1, "11", 3000, 4000);
    hall_.build(1, "1", 3000, 4000 - 670);
    EXPECT_TRUE(says(refused({.stand = 1, .shelf = 3, .locations = {1, 1, 1, 0}}), "„Regał 2” (Rząd A)"));
    accepted({.stand = 1, .shelf = 2, .locations = {1, 3, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "2:13");
}

TEST_F(StandEditor, WhatAnotherProgramPutOnTopOfAStandCanStillBeEdited) {
    hall_.build(1, "1", 3000, 4000);
    hall_.build(1, "1", 6000, 4000);
    hall_.connection.run("UPDATE kolv_mag_Stand SET StandLeft = 3100 WHERE Stand = 2");
    accepted(
        {.stand = 2, .locations = {2}, .left = 3100, .top = 4000, .description = "stoi na sąsiednim regale"});
    EXPECT_TRUE(says(refused({.stand = 2, .locations = {2}, .left = 3110, .top = 4000}), "Regał 1"));
    accepted({.stand = 2, .locations = {2}, .left = 6000, .top = 4000});
}

TEST_F(StandEditor, AShelfWithStockLosesNoLocations) {
    hall_.build(1, "33", 3000, 4000);
    hall_.put("P1", "1, 1, 1, 1");
    EXPECT_EQ(
        refused({.stand = 1, .shelf = 1, .locations = {2, 0, 0, 0}}),
        "Na półce 1 leżą opakowania (liczba: 1). Opróżnij półkę, zanim zmniejszysz liczbę jej lokalizacji.");
    accepted({.stand = 1, .shelf = 1, .locations = {3, 0, 0, 0}, .description = "zostaje"});
    accepted({.stand = 1, .shelf = 2, .locations = {3, 1, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "2:31");
    hall_.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N'");
    accepted({.stand = 1, .shelf = 1, .locations = {2, 0, 0, 0}});
    EXPECT_EQ(shelves(1, 1), "2:21");
}

TEST_F(StandEditor, AShelfGetsMoreLocationsWhileWhatLiesThereStillFits) {
    hall_.build(1, "1", 3000, 4000);
    hall_.put("P1", "1, 1, 1, 1");
    const auto size = [this](const std::string& set) {
        hall_.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET " + set + " WHERE BarCode = N'P1'");
    };
    const StandCall three{.stand = 1, .locations = {3}};
    const std::string tooNarrow =
        "Lokalizacja 1 na półce 1 zrobi się węższa i nie pomieści opakowań, które na niej leżą. Przesuń je, "
        "zanim zwiększysz liczbę lokalizacji półki.";
    size("PackLength = 2400, PackWidth = 1000, PackHeight = 100, PackWeight = 100");
    EXPECT_EQ(refused(three), tooNarrow) << "2400 mm on 900";
    size("PackLength = 1200, PackWidth = 800, PackHeight = 1000, PackWeight = 1001");
    EXPECT_EQ(refused(three), tooNarrow) << "1001 kg on a slot for 1000";
    size("PackLength = 1240, PackWidth = 890, PackHeight = 1190, PackWeight = 100");
    EXPECT_EQ(refused(three), tooNarrow) << "1313 litres in 1188";
    size("PackLength = 1200, PackWidth = 900, PackHeight = 1000, PackWeight = 1000");
    accepted(three);
}

TEST_F(StandEditor, OfTwoLocationsOnlyTheWideOneBecomesNarrower) {
    hall_.build(1, "2", 3000, 4000);
    hall_.put("P1", "1, 1, 1, 1");
    hall_.connection.run(
        "UPDATE Kolv_Mag_BarCode_Sur SET PackLength = 3000, PackWidth = 3000, PackHeight = 10");
    const StandCall three{.stand = 1, .locations = {3}};
    accepted(three);
    ASSERT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Location"), "3");
    hall_.build(1, "2", 5000, 4000);
    hall_.put("P2", "1, 2, 1, 2");
    hall_.connection.run(
        "UPDATE Kolv_Mag_BarCode_Sur SET PackLength = 1800, PackWidth = 1000, PackHeight = 10 WHERE BarCode "
        "= N'P2'");
    const StandCall other{.stand = 2, .locations = {3}, .left = 5000};
    EXPECT_TRUE(says(refused(other), "Lokalizacja 2 na półce 1 zrobi się węższa"));
    hall_.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N' WHERE BarCode = N'P2'");
    accepted(other);
}

TEST_F(StandEditor, ALocationWithAWidthAndAWeightOfItsOwnDoesNotBecomeNarrower) {
    hall_.build(1, "1", 3000, 4000);
    hall_.connection.run(
        "INSERT INTO kolv_mag_Location_Item (Rank, Stand, Shelf, Location, ItemCode, GroupSur, Width_int, "
        "Weight_int) VALUES (1, 1, 1, 1, N'', 0, 2700, 3000)");
    hall_.put("P1", "1, 1, 1, 1");
    hall_.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET PackLength = 2400, PackWeight = 2000");
    accepted({.stand = 1, .locations = {3}});
}

TEST_F(StandEditor, LocationsGoFromTheRightWithTheirAssignments) {
    hall_.build(1, "3", 3000, 4000);
    for (const char* address : {"1, 1, 1, 1", "1, 1, 1, 3"})
        ASSERT_EQ(
            call(hall_.connection, "kolv_mag_Save_Sur_Location", std::string(address) + ", N'BL-1', 0, 1")
                .value,
            0);
    accepted({.stand = 1, .locations = {1}});
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Location_Item"), "1");
    EXPECT_EQ(hall_.one("SELECT Location FROM kolv_mag_Location_Item"), "1");
}

TEST_F(StandEditor, IconsAndFillFollowTheWidthOfTheLocations) {
    hall_.build(1, "1", 3000, 4000);
    EXPECT_EQ(hall_.one("SELECT LocationIcon FROM kolv_mag_Location"), "LC_P_00.ico");
    hall_.put("P1", "1, 1, 1, 1");  // 324 litres; 3564 on a whole shelf, 1188 on a third
    accepted({.stand = 1, .locations = {2}});
    const Rows rows =
        hall_.connection.run("SELECT LocationIcon, LocationPercent FROM kolv_mag_Location ORDER BY Location");
    EXPECT_EQ(rows.text(0, 0), "LA_P_27.ico");
    EXPECT_EQ(rows.text(0, 1), "27");
    EXPECT_EQ(rows.text(1, 0), "LB_P_00.ico");
    EXPECT_NEAR(hall_.connection.run("SELECT LinePercent FROM Kolv_Mag_BarCode_Sur").number(0), 27.27, 0.01);
}

TEST_F(StandEditor, TextsThatDoNotFitAreRefusedInsteadOfCut) {
    EXPECT_TRUE(says(refused({.locations = {1}, .icon = std::string(101, 'i')}), "100 znaków"));
    EXPECT_TRUE(says(refused({.locations = {1}, .description = std::string(251, 'd')}), "250 znaków"));
    accepted({.locations = {1}, .icon = std::string(100, 'i'), .description = std::string(250, 'd')});
}

TEST_F(StandEditor, FlagsAreYOrN) {
    EXPECT_TRUE(says(refused({.locations = {1}, .visible = "T"}), "Y albo N"));
    EXPECT_TRUE(says(refused({.locations = {1}, .enabled = ""}), "Y albo N"));
    EXPECT_TRUE(says(refused({.locations = {1}, .frame = "YN"}), "Y albo N"));
}

TEST_F(StandEditor, NullsAreRefused) {
    for (int position = 0; position < 3; ++position) {
        std::array<std::string, 3> address{"1", "-1", "1"};
        address.at(static_cast<std::size_t>(position)) = "NULL";
        const std::string first = address[0] + ", " + address[1] + ", " + address[2];
        EXPECT_GT(call(hall_.connection, "kolv_mag_AddBookstand",
                       first + ", N'', 4000, 3000, 1, 0, 0, 0, N'Y', N'Y', N'Y', N''")
                      .value,
                  0);
    }
    EXPECT_GT(call(hall_.connection, "kolv_mag_AddBookstand",
                   "1, -1, 1, N'', NULL, NULL, NULL, 0, 0, 0, NULL, NULL, NULL, NULL")
                  .value,
              0);
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Stand"), "0");
}

TEST_F(StandEditor, ARowWithGapsTakesNoNewStand) {
    hall_.build(1, "1", 3000, 4000);
    hall_.connection.run("UPDATE kolv_mag_Stand SET StandLeft = 6000");
    hall_.connection.run("INSERT INTO kolv_mag_Stand (Rank, Stand, ShelfCount) VALUES (1, 3, 0)");
    EXPECT_TRUE(says(refused({.locations = {1}}), "luki"));
}

TEST_F(StandEditor, RemovesTheLastStandWithAllThatIsOnIt) {
    const std::string empty = editorTables(hall_.connection);
    hall_.build(1, "312", 3000, 4000);
    ASSERT_EQ(call(hall_.connection, "kolv_mag_Save_Sur_Location", "1, 1, 3, 2, N'PR-1', 0, 1").value, 0);
    hall_.put("P1", "1, 1, 1, 1", "N");
    EXPECT_EQ(call(hall_.connection, "kolv_mag_RemoveBookstandValidate", "1, 1").value, 0);
    EXPECT_EQ(removeStand(hall_.connection, 1, 1).value, 0);
    EXPECT_EQ(editorTables(hall_.connection), empty);
}

TEST_F(StandEditor, AStandInTheMiddleOfItsRowIsNotRemoved) {
    hall_.build(1, "1", 3000, 4000);
    hall_.build(1, "1", 4000, 4000);
    const std::string before = editorTables(hall_.connection);
    const Answer judged = call(hall_.connection, "kolv_mag_RemoveBookstandValidate", "1, 1");
    const Answer removed = removeStand(hall_.connection, 1, 1);
    EXPECT_GT(judged.value, 0);
    EXPECT_GT(removed.value, 0);
    EXPECT_EQ(removed.message, judged.message);
    EXPECT_TRUE(says(removed.message, "Najpierw usuń „Regał 2” (Rząd A)"));
    EXPECT_EQ(editorTables(hall_.connection), before);
    EXPECT_EQ(removeStand(hall_.connection, 1, 2).value, 0);
    EXPECT_EQ(removeStand(hall_.connection, 1, 1).value, 0);
}

TEST_F(StandEditor, AStandWithPackagesIsNotRemoved) {
    hall_.build(1, "12", 3000, 4000);
    hall_.put("P1", "1, 1, 2, 2");
    hall_.put("P2", "1, 1, 1, 1");
    const std::string before = editorTables(hall_.connection);
    const Answer judged = call(hall_.connection, "kolv_mag_RemoveBookstandValidate", "1, 1");
    const Answer removed = removeStand(hall_.connection, 1, 1);
    EXPECT_GT(judged.value, 0);
    EXPECT_GT(removed.value, 0);
    EXPECT_EQ(removed.message,
              "Nie można usunąć regału „Regał 1” (Rząd A): leżą na nim opakowania (liczba: 2). Przesuń je "
              "lub wydaj.");
    EXPECT_EQ(editorTables(hall_.connection), before);
}

TEST_F(StandEditor, AStandThatIsGoneCannotBeRemovedAgain) {
    hall_.build(3, "1", 3000, 4000);
    EXPECT_EQ(removeStand(hall_.connection, 3, 1).value, 0);
    const Answer again = removeStand(hall_.connection, 3, 1);
    EXPECT_GT(again.value, 0);
    EXPECT_TRUE(says(again.message, "„Regał 1” (Rząd 3) nie istnieje"));
    EXPECT_GT(call(hall_.connection, "kolv_mag_RemoveBookstandValidate", "NULL, NULL").value, 0);
    EXPECT_NE(call(hall_.connection, "kolv_mag_RemoveBookstandValidate", "NULL, NULL").message, "<NULL>");
}

TEST_F(StandEditor, ManagersWhoAddAtOnceGetStandsOfTheirOwn) {
    constexpr int Managers = 4;
    constexpr int Each = 5;
    std::vector<std::thread> managers;
    std::array<int, Managers> saved{};
    for (int m = 0; m < Managers; ++m)
        managers.emplace_back([this, m, &saved] {
            OdbcConnection connection = hall_.warehouse.connect();
            for (int i = 0; i < Each; ++i) {
                const StandCall stand{.locations = {2}, .left = 1000 + 700 * i, .top = 2000 + 700 * m};
                saved.at(static_cast<std::size_t>(m)) += saveStand(connection, stand).value == 0 ? 1 : 0;
            }
        });
    for (std::thread& manager : managers)
        manager.join();
    for (const int count : saved)
        EXPECT_EQ(count, Each);
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Stand"), "20");
    EXPECT_EQ(hall_.one("SELECT MAX(Stand) FROM kolv_mag_Stand"), "20");
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Location"), "40");
}

TEST_F(StandEditor, OfManagersWhoWantTheSamePlaceOneGetsIt) {
    std::vector<std::thread> managers;
    std::array<long, 4> values{};
    for (std::size_t m = 0; m < values.size(); ++m)
        managers.emplace_back([this, m, &values] {
            OdbcConnection connection = hall_.warehouse.connect();
            values.at(m) = saveStand(connection, {.locations = {3}}).value;
        });
    for (std::thread& manager : managers)
        manager.join();
    EXPECT_EQ(std::count(values.begin(), values.end(), 0), 1);
    EXPECT_EQ(shelves(1, 1), "1:3");
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Stand"), "1");
}

/// The demo hall is a plan that the editor could have drawn.
TEST(StandEditorDemo, EveryStandPassesItsOwnValidation) {
    const Warehouse warehouse;
    auto connection = warehouse.connect();
    const Rows stands = connection.run(
        "SELECT S.Rank, S.Stand, N.Number, (SELECT COUNT(*) FROM kolv_mag_Location AS L WHERE L.Rank = "
        "S.Rank AND L.Stand = S.Stand AND L.Shelf = N.Number), S.StandLeft, S.StandTop, S.StandIcon FROM "
        "kolv_mag_Stand AS S INNER JOIN kolv_mag_Number AS N ON N.Number <= 4 AND (N.Number <= S.ShelfCount "
        "OR N.Number = 1)");
    ASSERT_GT(stands.size(), 200U);
    for (std::size_t i = 0; i < stands.size(); ++i) {
        StandCall stand{.rank = static_cast<int>(stands.whole(i, 0)),
                        .stand = static_cast<int>(stands.whole(i, 1)),
                        .shelf = static_cast<int>(stands.whole(i, 2)),
                        .left = static_cast<int>(stands.whole(i, 4)),
                        .top = static_cast<int>(stands.whole(i, 5)),
                        .icon = stands.text(i, 6)};
        stand.locations.at(static_cast<std::size_t>(stand.shelf - 1)) = static_cast<int>(stands.whole(i, 3));
        const Answer answer = validateStand(connection, stand);
        EXPECT_EQ(answer.value, 0) << stand.arguments() << ": " << answer.message;
    }
}

TEST(StandEditorDemo, TheWholeHallCanBeLaidOutByTheProcedures) {
    EmptyHall hall;
    const Warehouse demo;
    auto source = demo.connect();
    const std::string shape =
        "SELECT S.Rank, S.Stand, S.StandName, S.StandLeft, S.StandTop, S.ShelfCount, (SELECT COUNT(*) FROM "
        "kolv_mag_Location AS L WHERE L.Rank = S.Rank AND L.Stand = S.Stand AND L.Shelf = 1), (SELECT "
        "COUNT(*) FROM kolv_mag_Location AS L WHERE L.Rank = S.Rank AND L.Stand = S.Stand AND L.Shelf = 2), "
        "(SELECT COUNT(*) FROM kolv_mag_Location AS L WHERE L.Rank = S.Rank AND L.Stand = S.Stand AND "
        "L.Shelf = 3), (SELECT COUNT(*) FROM kolv_mag_Location AS L WHERE L.Rank = S.Rank AND L.Stand = "
        "S.Stand AND L.Shelf = 4) FROM kolv_mag_Stand AS S ORDER BY S.Rank, S.Stand";
    const Rows stands = source.run(shape);
    ASSERT_GT(stands.size(), 90U);
    hall.connection.run("INSERT INTO kolv_mag_Rank (Rank) VALUES (4), (5)");
    for (std::size_t i = 0; i < stands.size(); ++i) {
        const int rank = static_cast<int>(stands.whole(i, 0));
        const int left = static_cast<int>(stands.whole(i, 3));
        const int top = static_cast<int>(stands.whole(i, 4));
        std::string profile;
        for (std::size_t shelf = 0; shelf < static_cast<std::size_t>(stands.whole(i, 5)); ++shelf)
            profile += stands.text(i, 6 + shelf);
        // A closed shelf is built and then closed.
        std::string built = profile;
        std::replace(built.begin(), built.end(), '0', '1');
        hall.build(rank, built, left, top);
        for (std::size_t shelf = 0; shelf < profile.size(); ++shelf) {
            if (profile[shelf] != '0')
                continue;
            const StandCall closed{.rank = rank,
                                   .stand = static_cast<int>(stands.whole(i, 1)),
                                   .shelf = static_cast<int>(shelf) + 1,
                                   .left = left,
                                   .top = top};
            ASSERT_EQ(saveStand(hall.connection, closed).value, 0);
        }
    }
    const Rows laidOut = hall.connection.run(shape);
    ASSERT_EQ(laidOut.size(), stands.size());
    for (std::size_t i = 0; i < stands.size(); ++i)
        EXPECT_EQ(laidOut.values[i], stands.values[i]);
}

}  // namespace regalon::test
