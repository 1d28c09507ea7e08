// A storekeeper of the test of many movers: moves packages at random by the calls of the window that moves
// packages, in their order, and tells each thing on a line of its standard output. It is killed at any point.
//   database_storekeeper CONNECTION USER SEED SHIFTS
// Lines: "moved CODE", "refused MESSAGE" (of a move), "told MESSAGE" (before a move), "wrong WHAT".

#include "database/ShiftDesk.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <random>

namespace {

using regalon::test::Answer;
using regalon::test::OdbcConnection;
using regalon::test::Proposal;
using regalon::test::Rows;
using regalon::test::ShiftDesk;

/// One write for one line, so that a kill leaves no half of one.
void tell(const std::string& line) {
    const std::string whole = line + "\n";
    if (write(STDOUT_FILENO, whole.data(), whole.size()) < 0)
        std::_Exit(1);
}

class Storekeeper {
public:
    Storekeeper(const std::string& connection, int user, unsigned seed)
        : desk_(OdbcConnection(connection), user), random_(seed) {}

    void work(int shifts) {
        clear();
        while (shifts > 0) {
            if (!stageSomething())
                continue;
            choosePackages();
            const Answer confirmed = desk_.confirm();
            if (confirmed.value > 0)
                tell("told " + confirmed.message);
            if (desk_.prepare().value > 0)
                tell("wrong prepare");
            const auto ticked = tickTargets();
            if (desk_.chosen() < 1)
                continue;
            for (const auto& [code, address] : ticked) {
                move(code, address);
                --shifts;
            }
            clear();
        }
    }

private:
    std::size_t pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }

    /// Numbers of connections come again, and with them the rows that a dead run has left: after this none is
    /// in sight.
    void clear() {
        if (desk_.clear() > 0)
            tell("wrong clear");
        if (desk_.chosen() != 0 || !desk_.packages().empty())
            tell("wrong rows of somebody else");
    }

    bool stageSomething() {
        const Rows places = desk_.run(
            "SELECT Rank, Stand, Shelf, Location, ItemCode FROM Kolv_Mag_BarCode_Sur(nolock) GROUP BY Rank, "
            "Stand, Shelf, Location, ItemCode");
        const std::size_t row = pick(places.size());
        const std::string address = places.text(row, 0) + ", " + places.text(row, 1) + ", " +
                                    places.text(row, 2) + ", " + places.text(row, 3);
        desk_.run("exec kolv_mag_Watch_Item_On_Location " + address + ",N'1',N'P',0,N'S'");
        const Rows items = desk_.run("exec kolv_mag_Watch_Item_On_Location " + address + ",N'1',N'P',1,N'S'");
        for (std::size_t i = 0; i < items.size(); ++i)
            if (const std::string item = items.text(i, items.columns.size() - 1); item != places.text(row, 4))
                desk_.unstage(item, address);
        const Answer staged = desk_.stage(places.text(row, 4), address);
        if (staged.value > 0)
            tell("told " + staged.message);
        return staged.value <= 0;
    }

    void choosePackages() {
        const auto staged = desk_.packages();
        chosen_.clear();
        for (std::size_t left = 1 + pick(3); left > 0 && chosen_.size() < staged.size(); --left) {
            const std::string& code = staged[pick(staged.size())];
            if (std::find(chosen_.begin(), chosen_.end(), code) != chosen_.end())
                continue;
            if (desk_.choose(code).value > 0)
                tell("wrong choice of " + code);
            chosen_.push_back(code);
        }
        if (desk_.chosen() != static_cast<long>(chosen_.size()))
            tell("wrong count of chosen packages");
    }

    /// A target for each package: mostly one of the first that can be ticked, sometimes any row, as a list
    /// that others have overtaken would have it.
    std::vector<std::pair<std::string, std::string>> tickTargets() {
        std::vector<std::pair<std::string, std::string>> ticked;
        const auto rows = desk_.proposals();
        for (const Proposal& row : rows)
            if (std::find(chosen_.begin(), chosen_.end(), row.barCode) == chosen_.end())
                tell("wrong proposal of " + row.barCode);
        for (const std::string& code : chosen_) {
            std::vector<std::string> good;
            std::vector<std::string> all;
            for (const Proposal& row : rows)
                if (row.barCode == code) {
                    all.push_back(row.address());
                    if (row.canBeTicked())
                        good.push_back(row.address());
                }
            if (pick(10) == 0 && !all.empty())
                ticked.emplace_back(code, all[pick(all.size())]);
            else if (!good.empty())
                ticked.emplace_back(code, good[pick(std::min<std::size_t>(good.size(), 4))]);
        }
        return ticked;
    }

    void move(const std::string& code, const std::string& address) {
        const Answer answer = desk_.move(code, address);
        if ((answer.value > 0) == answer.message.empty())
            tell("wrong message of a move");
        tell(answer.value > 0 ? "refused " + answer.message : "moved " + code);
    }

    ShiftDesk desk_;
    std::mt19937 random_;
    std::vector<std::string> chosen_;
};

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 4)
        return 2;
    try {
        Storekeeper keeper(arguments[0], std::stoi(arguments[1]),
                           static_cast<unsigned>(std::stoul(arguments[2])));
        keeper.work(std::stoi(arguments[3]));
    } catch (const std::exception& error) {
        tell(std::string("wrong end: ") + error.what());
        return 1;
    }
    return 0;
}
