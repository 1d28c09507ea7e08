// Many clerks work on documents at once, two of them want one thing, and clients and servers die in the
// middle: no number of a document is missing or given twice, and no document is half booked.

#include "database/DocumentDesk.h"
#include "database/Stock.h"
#include "database/Worker.h"

#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <atomic>
#include <barrier>
#include <chrono>
#include <functional>
#include <iostream>
#include <memory>
#include <random>
#include <set>
#include <thread>

namespace regalon::test {
namespace {

constexpr unsigned Seed = 20261124;
constexpr int Clerks = 10;
constexpr int Rounds = 20;
constexpr const char* Workstation = "MAG-WYDANIA";

using Clock = std::chrono::steady_clock;

class DocumentDuel : public ::testing::Test {
protected:
    DocumentDuel() { hall_.connection.run("UPDATE POR1 SET Quantity = NULL"); }

    /// Both at once; their return values. A failed statement counts as a value that no test expects.
    static std::array<long, 2> both(const std::array<std::function<long()>, 2>& acts) {
        std::array<long, 2> values{};
        std::barrier gate(2);
        const auto act = [&](std::size_t who) {
            try {
                gate.arrive_and_wait();
                values.at(who) = acts.at(who)();
            } catch (const std::exception& error) {
                values.at(who) = 99;
                ADD_FAILURE() << error.what();
            }
        };
        std::thread other(act, 1);
        act(0);
        other.join();
        return values;
    }

    static void expectOneWinner(const std::array<long, 2>& values) {
        EXPECT_EQ(std::min(values[0], values[1]), 0);
        EXPECT_EQ(std::max(values[0], values[1]), 1);
    }

    DocumentHall hall_;
    std::array<DocumentDesk, 2> desks_{hall_.documents(1, "MAG-WOZEK-1"), hall_.documents(2, "MAG-WOZEK-2")};
    std::mt19937 random_{Seed};
};

/// Ten clerks at work, and what they have told.
class DocumentClerks : public DocumentDuel {
protected:
    DocumentClerks() {
        for (const char* code : {"S1", "S2", "S3"})
            hall_.receive(desks_[0], code, 1000);
    }

    std::unique_ptr<Worker> start(int user, int documents) {
        return std::make_unique<Worker>(
            "database_clerk",
            std::vector<std::string>{hall_.warehouse.connectionString(Workstation), std::to_string(user),
                                     std::to_string(random_()), std::to_string(documents)});
    }

    void take(const std::string& line) {
        if (line.rfind("document ", 0) != 0)
            ADD_FAILURE() << line;
        else if (!answered_.insert(std::stol(line.substr(9))).second)
            ADD_FAILURE() << line << " was given twice";
    }

    /// Until each clerk has told its documents; with kills, somebody is killed every now and then and another
    /// run of the same user does the rest.
    void run(int documents, bool kills) {
        std::array<std::unique_ptr<Worker>, Clerks> clerks;
        std::array<int, Clerks> left{};
        left.fill(documents);
        for (std::size_t i = 0; i < clerks.size(); ++i)
            clerks.at(i) = start(static_cast<int>(i) + 1, documents);
        auto nextKill = Clock::now() + pause();
        for (;;) {
            std::array<pollfd, Clerks> waiting{};
            bool any = false;
            for (std::size_t i = 0; i < clerks.size(); ++i) {
                waiting.at(i) = {
                    .fd = clerks.at(i) ? clerks.at(i)->output() : -1, .events = POLLIN, .revents = 0};
                any = any || clerks.at(i);
            }
            if (!any)
                return;
            poll(waiting.data(), waiting.size(), 100);
            for (std::size_t i = 0; i < clerks.size(); ++i) {
                if (waiting.at(i).revents == 0 || clerks.at(i)->read([this, &left, i](const auto& line) {
                        --left.at(i);
                        take(line);
                    }))
                    continue;
                clerks.at(i).reset();
                if (left.at(i) > 0 && kills)
                    clerks.at(i) = start(static_cast<int>(i) + 1, left.at(i));
            }
            if (kills && Clock::now() >= nextKill) {
                nextKill = Clock::now() + pause();
                if (const auto& clerk = clerks.at(random_() % Clerks)) {
                    clerk->kill();
                    ++kills_;
                }
            }
        }
    }

    /// Until the next kill: at no particular point of anybody's work.
    std::chrono::milliseconds pause() { return std::chrono::milliseconds(30 + random_() % 150); }

    /// Numbers from 1 without a gap, three lines each, the history of each line, and stock as its history
    /// says.
    void expectWholeDocuments(long documents) {
        OdbcConnection connection = hall_.warehouse.connect();
        const auto count = [&connection](const std::string& from) {
            return connection.run("SELECT COUNT(*) FROM " + from).whole(0);
        };
        EXPECT_EQ(count("Kolv_Mag_GiveOut"), documents);
        EXPECT_EQ(connection.run("SELECT ISNULL(MAX(GiveOutDocNum), 0) FROM Kolv_Mag_GiveOut").whole(0),
                  documents);
        EXPECT_EQ(count("Kolv_Mag_BarCode_Sur_Production"), 3 * documents);
        EXPECT_EQ(count("Kolv_Mag_BarCode_Sur_Production WHERE GiveOutLineNum NOT IN (1, 2, 3)"), 0);
        EXPECT_EQ(count("Kolv_Mag_BarCode_Sur_History WHERE Operation = N'O'"), 3 * documents);
        EXPECT_EQ(count("Kolv_Mag_BarCode_Sur_Production AS P WHERE NOT EXISTS (SELECT 1 FROM "
                        "Kolv_Mag_BarCode_Sur AS B "
                        "WHERE B.BarCode = P.GiveOutBarCode AND B.Active = CASE WHEN P.QuantityBack IS NULL "
                        "THEN N'N' "
                        "ELSE N'Y' END)"),
                  0);
        EXPECT_EQ(count("Kolv_Mag_BarCode_Sur_History WHERE Operation = N'R'"),
                  count("Kolv_Mag_BarCode_Sur_Production WHERE QuantityBack IS NOT NULL"));
        // A clerk receives its packages a and b in one booking, each with its code.
        EXPECT_EQ(count("Kolv_Mag_BarCode_Sur WHERE BarCode LIKE N'C%a'"),
                  count("Kolv_Mag_BarCode_Sur WHERE BarCode LIKE N'C%b'"));
        EXPECT_EQ(count("Kolv_Mag_BarCode_Sur WHERE BarCode NOT IN (SELECT GiveOutBarCode FROM "
                        "Kolv_Mag_BarCode_Sur_Production WHERE GiveOutBarCode <> SourceBarCode)"),
                  count("Kolv_Mag_BarCode_Sur_Code"));
        expectBalance(connection);
        expectFills(connection);
    }

    std::set<long> answered_;
    int kills_ = 0;
};

}  // namespace

TEST_F(DocumentDuel, APackageThatTwoReceiveIsBookedOnce) {
    for (int i = 0; i < Rounds && !HasFailure(); ++i) {
        const std::string code = "P" + std::to_string(i);
        for (DocumentDesk& desk : desks_) {
            ASSERT_LE(desk.clear("I", 1), 0);
            ASSERT_LE(desk.stage({.barCode = code}).value, 0);
        }
        expectOneWinner(
            both({[&] { return desks_[0].book().value; }, [&] { return desks_[1].book().value; }}));
    }
    EXPECT_EQ(hall_.count("Kolv_Mag_BarCode_Sur_History"), Rounds);
    expectBalance(hall_.connection);
}

TEST_F(DocumentDuel, APackageOfWhichTwoWantTheGreaterPartIsGivenOutOnce) {
    for (int i = 0; i < Rounds && !HasFailure(); ++i) {
        const std::string code = "P" + std::to_string(i);
        hall_.receive(desks_[0], code);
        for (DocumentDesk& desk : desks_) {
            ASSERT_LE(desk.clear("I", 1), 0);
            ASSERT_LE(desk.stageOut({.barCode = code, .quantity = 6}).value, 0);
        }
        expectOneWinner(
            both({[&] { return desks_[0].giveOut().value; }, [&] { return desks_[1].giveOut().value; }}));
    }
    EXPECT_EQ(hall_.count("Kolv_Mag_GiveOut"), Rounds);
    EXPECT_EQ(hall_.one("SELECT MAX(GiveOutDocNum) FROM Kolv_Mag_GiveOut"), std::to_string(Rounds));
    expectBalance(hall_.connection);
}

TEST_F(DocumentDuel, ANumberThatTwoTakeForABarcodeIsGivenOnce) {
    for (int i = 1; i <= Rounds && !HasFailure(); ++i) {
        const int next = static_cast<int>(desks_[0].lastNumber(2026, 10, 1010, 0)) + 1;
        ASSERT_EQ(next, i);
        const auto save = [&](std::size_t who) {
            return desks_.at(who)
                .saveBarCode({.barCode = "K" + std::to_string(who) + "-" + std::to_string(i), .number = next})
                .value;
        };
        expectOneWinner(both({[&] { return save(0); }, [&] { return save(1); }}));
    }
}

TEST_F(DocumentDuel, APackageThatIsGivenOutAndMovedAtOnceEndsInBothOrWithTheMoverTold) {
    ShiftDesk shift(hall_.warehouse.connect("MAG-WOZEK-3"), 3);
    for (int i = 0; i < Rounds && !HasFailure(); ++i) {
        const std::string code = "P" + std::to_string(i);
        hall_.receive(desks_[0], code, 10, labelOf(1, 1, 1, 1));
        shift.take("A-1", "1, 1, 1, 1", code);
        ASSERT_EQ(desks_[0].stageOut({.barCode = code}).value, 0);
        const auto values = both({[&] { return desks_[0].giveOut().value; },
                                  [&] { return shift.move(code, "1, 2, 1, 1").value; }});
        EXPECT_EQ(values[0], 0) << "it is given out from wherever it lies";
        EXPECT_LE(values[1], 1);
    }
    expectBalance(hall_.connection);
    expectFills(hall_.connection);
}

TEST_F(DocumentClerks, TenSessionsNumberTheirDocumentsWithoutGapsAndDoubles) {
    constexpr int Documents = 12;
    const auto started = Clock::now();
    run(Documents, false);
    const std::chrono::duration<double> took = Clock::now() - started;
    std::cout << answered_.size() << " documents of " << Clerks << " sessions in " << took.count() << " s\n";
    EXPECT_EQ(answered_.size(), static_cast<std::size_t>(Clerks * Documents));
    EXPECT_LT(took.count(), 120) << "nobody waits for long";
    expectWholeDocuments(Clerks * Documents);
}

TEST_F(DocumentClerks, ClientsThatAreKilledLeaveWholeDocuments) {
    run(10, true);
    const long documents = hall_.count("Kolv_Mag_GiveOut");
    std::cout << "seed " << Seed << ": " << answered_.size() << " documents answered, " << kills_
              << " kills, " << documents - static_cast<long>(answered_.size())
              << " documents without an answer\n";
    EXPECT_GE(kills_, 3);
    EXPECT_GE(documents, static_cast<long>(answered_.size()));
    EXPECT_LE(documents - static_cast<long>(answered_.size()), kills_) << "one call at most is cut by a kill";
    expectWholeDocuments(documents);
}

TEST_F(DocumentClerks, AServerThatDiesInADocumentLeavesItWholeAndTheNumbersGoOn) {
    if (!hall_.warehouse.hasOwnServer()) {
        std::cout << "not on a server that somebody else runs\n";
        return;
    }
    long answered = 0;
    int cut = 0;
    for (int round = 0; round < 6 && !HasFailure(); ++round) {
        std::atomic<int> told{0};
        const int first = 1 + static_cast<int>(random_() % 3);
        const std::chrono::microseconds delay(random_() % 30000);
        auto clerk = start(1, 50);
        std::thread killer([&] {
            while (told < first)
                std::this_thread::yield();
            std::this_thread::sleep_for(delay);  // wait: the kill is to come at a random moment
            hall_.warehouse.killServer();
        });
        bool ended = false;
        while (clerk->read([&](const std::string& line) {
            if (line.rfind("document ", 0) == 0) {
                take(line);
                ++told;
            } else {
                ended = true;  // what follows a dead server is no answer
            }
        })) {
        }
        told = 1000;
        killer.join();
        cut += ended ? 1 : 0;
        hall_.warehouse.startServer();
        OdbcConnection connection = hall_.warehouse.connect();
        const long documents = connection.run("SELECT COUNT(*) FROM Kolv_Mag_GiveOut").whole(0);
        answered = static_cast<long>(answered_.size());
        EXPECT_GE(documents, answered);
        EXPECT_LE(documents, answered + round + 1);
        expectWholeDocuments(documents);
    }
    std::cout << "seed " << Seed << ": " << answered << " documents answered, " << cut << " runs cut\n";
    EXPECT_GE(cut, 3);
}

}  // namespace regalon::test
