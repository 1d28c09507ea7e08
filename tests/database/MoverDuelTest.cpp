// Two users want the same thing at the same moment: one gets it, the other is told.

#include "database/Stock.h"

#include <gtest/gtest.h>

#include <barrier>
#include <iostream>
#include <thread>

namespace regalon::test {
namespace {

constexpr int Rounds = 60;

class MoverDuel : public ::testing::Test {
protected:
    /// Both moves at once. A failed statement counts as an answer that no test expects.
    std::array<Answer, 2> both(const std::array<std::string, 2>& codes,
                               const std::array<std::string, 2>& targets) {
        std::array<Answer, 2> answers;
        std::barrier gate(2);
        const auto act = [&](std::size_t who) {
            try {
                gate.arrive_and_wait();
                answers.at(who) = desks_.at(who).move(codes.at(who), targets.at(who));
            } catch (const std::exception& error) {
                answers.at(who) = {.value = 99, .message = error.what()};
            }
        };
        std::thread other(act, 1);
        act(0);
        other.join();
        return answers;
    }

    /// One accepted, and the other refused with this in its message. Counts who came first.
    void expectOneWinner(const std::array<Answer, 2>& answers, const std::string& reason) {
        ASSERT_EQ((answers[0].value == 0) + (answers[1].value == 0), 1)
            << answers[0].message << " / " << answers[1].message;
        const std::size_t loser = answers[0].value == 0 ? 1 : 0;
        EXPECT_EQ(answers.at(loser).value, 1);
        EXPECT_NE(answers.at(loser).message.find(reason), std::string::npos) << answers.at(loser).message;
        ++wins_.at(1 - loser);
    }

    void restoreTo(const std::string& address) {
        hall_.connection.run("DELETE FROM Kolv_Mag_BarCode_Sur");
        hall_.put({.barCode = "10", .address = address, .weight = 600});
        hall_.put({.barCode = "11", .address = address, .weight = 390});
    }

    ShiftHall hall_;
    std::array<ShiftDesk, 2> desks_{hall_.desk(2, "MAG-WOZEK-1"), hall_.desk(3, "MAG-WOZEK-2")};
    std::array<int, 2> wins_{};
};

}  // namespace

TEST_F(MoverDuel, APackageThatTwoWantMovesOnceAndTheOtherIsTold) {
    for (int i = 0; i < Rounds && !HasFailure(); ++i) {
        restoreTo("1, 1, 1, 1");
        for (ShiftDesk& desk : desks_)
            desk.take("A-1", "1, 1, 1, 1", "10");
        const Stock before = Stock::read(hall_.connection);
        expectOneWinner(both({"10", "10"}, {"1, 2, 1, 1", "1, 3, 1, 1"}),
                        "przesunął lub wydał w międzyczasie inny użytkownik");
        EXPECT_EQ(Stock::read(hall_.connection).moves, before.moves + 1);
    }
    std::cout << "first to come: " << wins_[0] << " and " << wins_[1] << "\n";
}

TEST_F(MoverDuel, TheLastRoomOfALocationIsGivenOnce) {
    hall_.assign("1, 2, 1, 1", "A-1");
    for (int i = 0; i < Rounds && !HasFailure(); ++i) {
        restoreTo("1, 1, 1, 1");
        hall_.put({.barCode = "12", .address = "1, 2, 1, 1", .weight = 300});
        desks_[0].take("A-1", "1, 1, 1, 1", "10");
        desks_[1].take("A-1", "1, 1, 1, 1", "11");
        expectOneWinner(both({"10", "11"}, {"1, 2, 1, 1", "1, 2, 1, 1"}), "brak miejsca");
    }
    std::cout << "first to come: " << wins_[0] << " and " << wins_[1] << "\n";
}

TEST_F(MoverDuel, AFreeMonoLocationGoesToOneMaterial) {
    for (int i = 0; i < Rounds && !HasFailure(); ++i) {
        hall_.connection.run("DELETE FROM Kolv_Mag_BarCode_Sur");
        hall_.put({.barCode = "10", .item = "A-1", .address = "1, 1, 1, 1"});
        hall_.put({.barCode = "11", .item = "B-1", .address = "1, 1, 1, 2"});
        desks_[0].take("A-1", "1, 1, 1, 1", "10");
        desks_[1].take("B-1", "1, 1, 1, 2", "11");
        expectOneWinner(both({"10", "11"}, {"1, 2, 1, 1", "1, 2, 1, 1"}), "jednoindeksowa");
    }
    std::cout << "first to come: " << wins_[0] << " and " << wins_[1] << "\n";
}

TEST_F(MoverDuel, TwoPackagesThatChangePlacesBothMove) {
    for (int i = 0; i < Rounds && !HasFailure(); ++i) {
        hall_.connection.run("DELETE FROM Kolv_Mag_BarCode_Sur");
        hall_.put({.barCode = "10", .address = "1, 1, 1, 1"});
        hall_.put({.barCode = "11", .address = "1, 3, 1, 1"});
        desks_[0].take("A-1", "1, 1, 1, 1", "10");
        desks_[1].take("A-1", "1, 3, 1, 1", "11");
        const auto answers = both({"10", "11"}, {"1, 3, 1, 1", "1, 1, 1, 1"});
        for (const Answer& answer : answers)
            EXPECT_EQ(answer.value, 0) << answer.message;
    }
}

}  // namespace regalon::test
