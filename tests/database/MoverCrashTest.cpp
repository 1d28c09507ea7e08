// The server dies in the middle of a confirmation. What it has answered is there when it runs again, what it
// has not answered is there wholly or not at all, and the user goes on.

#include "database/Stock.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <iostream>
#include <random>
#include <set>
#include <thread>

namespace regalon::test {
namespace {

constexpr unsigned Seed = 20261123;
constexpr int Rounds = 16;
constexpr const char* Workstation = "MAG-WOZEK-1";

/// A package and its targets, there and back.
struct Wish {
    std::string code;
    std::string from;
    std::string to;
};

class MoverCrash : public ::testing::Test {
protected:
    MoverCrash() { fillForMovers(hall_); }

    ShiftDesk desk() { return ShiftDesk(hall_.warehouse.connect(Workstation), 1); }

    /// Stages and chooses all packages of A-1 on one location, each with a target that it can have.
    std::vector<Wish> prepare(ShiftDesk& desk) {
        EXPECT_LE(desk.clear(), 0);
        EXPECT_EQ(desk.chosen(), 0);
        const std::string from = desk.one(
            "SELECT TOP 1 CAST(Rank AS nvarchar(9)) + N', ' + CAST(Stand AS nvarchar(9)) + N', ' + "
            "CAST(Shelf AS "
            "nvarchar(9)) + N', ' + CAST(Location AS nvarchar(9)) FROM Kolv_Mag_BarCode_Sur WHERE ItemCode = "
            "N'A-1' GROUP BY Rank, Stand, Shelf, Location ORDER BY COUNT(*) DESC, Rank, Stand, Shelf, "
            "Location");
        EXPECT_EQ(desk.stage("A-1", from).value, 0);
        std::vector<Wish> wishes;
        for (const std::string& code : desk.packages()) {
            EXPECT_EQ(desk.choose(code).value, 0);
            wishes.push_back({.code = code, .from = from, .to = {}});
        }
        EXPECT_EQ(desk.confirm().value, 0);
        const auto rows = desk.proposals();
        for (Wish& wish : wishes)
            for (const Proposal& row : rows)
                if (row.barCode == wish.code && row.remark.rfind("Proponowana, ", 0) == 0)
                    wish.to = row.address();
        return wishes;
    }

    ShiftHall hall_;
    std::mt19937 random_{Seed};
};

}  // namespace

TEST_F(MoverCrash, AServerThatDiesInAConfirmationLeavesWholeMovesAndTheUserGoesOn) {
    if (!hall_.warehouse.hasOwnServer()) {
        std::cout << "not on a server that somebody else runs\n";
        return;
    }
    const Stock before = Stock::read(hall_.connection);
    int answered = 0;
    int cut = 0;
    int cutButMoved = 0;
    for (int round = 0; round < Rounds && !HasFailure(); ++round) {
        std::vector<Wish> wishes;
        std::set<std::string> moved;
        std::string inTheMiddle;
        {
            ShiftDesk keeper = desk();
            wishes = prepare(keeper);
            ASSERT_GE(wishes.size(), 2U);
            std::atomic<std::size_t> done{0};
            // Some moves have their answer; the kill comes somewhere in the few milliseconds of the next.
            const std::size_t first = random_() % (wishes.size() - 1);
            const std::chrono::microseconds delay(random_() % 5000);
            std::thread killer([&] {
                while (done < first)
                    std::this_thread::yield();
                std::this_thread::sleep_for(delay);  // wait: the kill is to come at a random moment
                hall_.warehouse.killServer();
            });
            try {
                for (const Wish& wish : wishes) {
                    inTheMiddle = wish.code;
                    if (!wish.to.empty() && keeper.move(wish.code, wish.to).value == 0)
                        moved.insert(wish.code);
                    ++done;
                }
                inTheMiddle.clear();
            } catch (const SqlFailure&) {
                ++cut;
                done = wishes.size();
            }
            killer.join();
        }
        hall_.warehouse.startServer();
        OdbcConnection connection = hall_.warehouse.connect();
        expectWholeMoves(connection, before);
        const Stock now = Stock::read(connection);
        for (const Wish& wish : wishes) {
            const std::string& place = now.packages.at(wish.code).place;
            if (moved.contains(wish.code))
                EXPECT_EQ(place, wish.to) << wish.code << " had its answer";
            else if (wish.code == inTheMiddle)
                EXPECT_TRUE(place == wish.from || place == wish.to) << wish.code << " lies on " << place;
            else
                EXPECT_EQ(place, wish.from) << wish.code;
        }
        answered += static_cast<int>(moved.size());
        cutButMoved +=
            !inTheMiddle.empty() && now.packages.at(inTheMiddle).place != wishes.front().from ? 1 : 0;
    }
    std::cout << "seed " << Seed << ": " << Rounds << " kills of the server, " << answered
              << " moves answered, " << cut << " cut, " << cutButMoved << " of them moved\n";
    EXPECT_GT(answered, 0);
    EXPECT_GE(cut, 3);
}

TEST_F(MoverCrash, AfterARestartTheNumberOfAConnectionComesAgainButNotWhatItHadChosen) {
    if (!hall_.warehouse.hasOwnServer()) {
        std::cout << "not on a server that somebody else runs\n";
        return;
    }
    std::string number;
    std::vector<Wish> wishes;
    hall_.warehouse.killServer();
    hall_.warehouse.startServer();
    {
        ShiftDesk keeper = desk();
        wishes = prepare(keeper);
        ASSERT_FALSE(wishes.empty());
        number = keeper.one("SELECT @@SPID");
        hall_.warehouse.killServer();
    }
    hall_.warehouse.startServer();
    ShiftDesk keeper = desk();
    ASSERT_EQ(keeper.one("SELECT @@SPID"), number) << "the case that this is about";
    EXPECT_EQ(keeper.chosen(), static_cast<long>(wishes.size())) << "what the dead run has left";
    EXPECT_LE(keeper.clear(), 0);
    EXPECT_EQ(keeper.chosen(), 0);
    EXPECT_TRUE(keeper.proposals().empty());
    EXPECT_GT(keeper.move(wishes.at(0).code, wishes.at(0).to).value, 0);
    wishes = prepare(keeper);
    EXPECT_EQ(keeper.move(wishes.at(0).code, wishes.at(0).to).value, 0);
}

}  // namespace regalon::test
