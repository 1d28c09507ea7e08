// Ten storekeepers move packages at once on one database, and are killed at random: processes of their own,
// so that a kill cuts a call, an answer or a connection wherever it is.

#include "database/Stock.h"
#include "database/Worker.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <iostream>
#include <random>

namespace regalon::test {
namespace {

constexpr unsigned Seed = 20261122;
constexpr int Sessions = 10;
constexpr int Shifts = 2000;
constexpr const char* Workstation = "MAG-WOZEK";

using Clock = std::chrono::steady_clock;

/// A running storekeeper and the shifts that it has left.
class Keeper : public Worker {
public:
    Keeper(const std::string& connection, int user, unsigned seed, int shifts)
        : Worker("database_storekeeper",
                 {connection, std::to_string(user), std::to_string(seed), std::to_string(shifts)}),
          left_(shifts) {}

    [[nodiscard]] int left() const { return left_; }

    bool readShifts(const std::function<void(const std::string&)>& take) {
        return read([this, &take](const std::string& line) {
            if (line.rfind("moved ", 0) == 0 || line.rfind("refused ", 0) == 0)
                --left_;
            take(line);
        });
    }

private:
    int left_;
};

class Movers : public ::testing::Test {
protected:
    Movers() { fillForMovers(hall_); }

    /// Rows that earlier runs of the same keys have left: whatever number a connection gets, somebody has
    /// chosen packages under it before.
    void leaveDeadRows() {
        hall_.connection.run(
            "INSERT INTO Kolv_Mag_BarCode_Input_Sur_tym (HostName, SPID, UserSign, YearCode, LineGrd, "
            "Aplication, "
            "Operation, BarCode, ItemCode, Quantity, Rank, Stand, Shelf, Location) SELECT N'" +
            std::string(Workstation) +
            "', -@@SPID - S.Number, U.Number, YEAR(GETDATE()), -1, N'P', N'S', B.BarCode, B.ItemCode, "
            "B.Quantity, "
            "B.Rank, B.Stand, B.Shelf, B.Location FROM kolv_mag_Number AS S CROSS JOIN kolv_mag_Number AS U "
            "CROSS "
            "JOIN Kolv_Mag_BarCode_Sur AS B WHERE S.Number <= 400 AND U.Number <= 10 AND B.BarCode IN "
            "(N'101', "
            "N'150')");
    }

    std::unique_ptr<Keeper> start(int user, int shifts) {
        ++starts_;
        return std::make_unique<Keeper>(hall_.warehouse.connectionString(Workstation), user, random_(),
                                        shifts);
    }

    void take(const std::string& line) {
        if (line.rfind("moved ", 0) == 0)
            ++moved_;
        else if (line.rfind("refused ", 0) == 0)
            ++refused_[reason(line)];
        else if (line.rfind("told ", 0) == 0)
            ++told_[reason(line)];
        else
            ADD_FAILURE() << line;
    }

    /// The message without what is different each time.
    static std::string reason(const std::string& line) {
        for (const char* known : {"brak miejsca", "jednoindeksowa", "przesunął lub wydał", "już na niej leży",
                                  "nie jest wybrane", "za duże", "grupa nie obejmuje", "nie ma opakowań"})
            if (line.find(known) != std::string::npos)
                return known;
        return line;
    }

    /// Those rows have no date.
    long deadRows() {
        return hall_.connection
            .run("SELECT COUNT(*) FROM Kolv_Mag_BarCode_Input_Sur_tym WHERE StageDate IS NULL")
            .whole(0);
    }

    [[nodiscard]] int refused() const {
        int sum = 0;
        for (const auto& [text, count] : refused_)
            sum += count;
        return sum;
    }

    void run() {
        std::array<std::unique_ptr<Keeper>, Sessions> keepers;
        for (int i = 0; i < Sessions; ++i)
            keepers.at(static_cast<std::size_t>(i)) = start(i + 1, Shifts / Sessions);
        auto nextKill = Clock::now() + pause();
        for (;;) {
            std::array<pollfd, Sessions> waiting{};
            bool any = false;
            for (std::size_t i = 0; i < keepers.size(); ++i) {
                waiting.at(i) = {
                    .fd = keepers.at(i) ? keepers.at(i)->output() : -1, .events = POLLIN, .revents = 0};
                any = any || keepers.at(i);
            }
            if (!any)
                return;
            const auto rest = std::chrono::ceil<std::chrono::milliseconds>(nextKill - Clock::now());
            poll(waiting.data(), waiting.size(), static_cast<int>(std::max<long>(0, rest.count())));
            for (std::size_t i = 0; i < keepers.size(); ++i) {
                if (waiting.at(i).revents == 0 ||
                    keepers.at(i)->readShifts([this](const auto& line) { take(line); }))
                    continue;
                // It has ended: by itself, or by a kill; then another run of the same user goes on.
                const int left = keepers.at(i)->left();
                keepers.at(i).reset();
                if (left > 0)
                    keepers.at(i) = start(static_cast<int>(i) + 1, left);
            }
            if (Clock::now() >= nextKill) {
                nextKill = Clock::now() + pause();
                if (const auto& keeper = keepers.at(random_() % Sessions)) {
                    keeper->kill();
                    ++kills_;
                }
            }
        }
    }

    /// Until the next kill: at no particular point of anybody's work.
    std::chrono::milliseconds pause() { return std::chrono::milliseconds(60 + random_() % 300); }

    ShiftHall hall_;
    std::mt19937 random_{Seed};
    int moved_ = 0;
    int kills_ = 0;
    int starts_ = 0;
    std::map<std::string, int> refused_;
    std::map<std::string, int> told_;
};

}  // namespace

TEST_F(Movers, TenSessionsMoveTwoThousandPackagesWhileClientsAreKilled) {
    leaveDeadRows();
    const long dead = deadRows();
    const Stock before = Stock::read(hall_.connection);
    const auto started = Clock::now();
    run();
    const std::chrono::duration<double> took = Clock::now() - started;

    const long history = Stock::read(hall_.connection).moves;
    std::cout << "seed " << Seed << ": " << moved_ + refused() << " shifts in " << took.count() << " s, "
              << moved_ << " moved, " << refused() << " refused, " << kills_ << " kills, " << history - moved_
              << " moved without an answer\n";
    for (const auto& [text, count] : refused_)
        std::cout << "  refused " << count << ": " << text << "\n";
    for (const auto& [text, count] : told_)
        std::cout << "  told before " << count << ": " << text << "\n";

    expectWholeMoves(hall_.connection, before);
    EXPECT_GE(moved_ + refused(), Shifts);
    EXPECT_LT(deadRows(), dead);
    EXPECT_GE(deadRows(), dead - 2L * starts_) << "nobody clears another key's rows";
    EXPECT_GE(kills_, 20);
    EXPECT_GT(moved_, Shifts / 3);
    EXPECT_GE(history, moved_) << "a move that was answered has its row";
    EXPECT_LE(history - moved_, kills_) << "one call at most is cut by a kill";
    EXPECT_GT(refused_["brak miejsca"] + refused_["jednoindeksowa"], 0);
    EXPECT_GT(refused_["przesunął lub wydał"], 0) << "a package that two wanted";
}

}  // namespace regalon::test
