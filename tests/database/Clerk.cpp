// A clerk of the documents, as a process: receives two packages, puts one away, gives them out with a part of
// a package that all clerks share, and takes something back. Tells each document that it has an answer for.
//
// Arguments: connection string, user, seed, number of documents.

#include "database/DocumentDesk.h"

#include <unistd.h>

#include <cstdlib>
#include <random>

namespace {

using regalon::test::Answer;
using regalon::test::DocumentDesk;
using regalon::test::OdbcConnection;

/// One write for one line, so that a kill leaves no half of one.
void tell(const std::string& line) {
    const std::string whole = line + "\n";
    if (write(STDOUT_FILENO, whole.data(), whole.size()) < 0)
        std::_Exit(1);
}

class Clerk {
public:
    Clerk(const std::string& connection, int user, unsigned seed)
        : desk_(OdbcConnection(connection), user),
          prefix_("C" + std::to_string(user) + "x" + std::to_string(seed) + "x"),
          random_(seed) {}

    void work(int documents) {
        for (int i = 1; i <= documents; ++i) {
            const std::string whole = prefix_ + std::to_string(i) + "a";
            const std::string opened = prefix_ + std::to_string(i) + "b";
            receive({whole, opened});
            putAway(whole);
            const std::string document = giveOut(whole, opened);
            takeBack(document, whole);
            tell("document " + document);
        }
    }

private:
    void must(bool good, const std::string& what) {
        if (!good)
            tell("wrong " + what);
    }

    void receive(const std::vector<std::string>& codes) {
        // Numbers of connections come again, and with them what a dead clerk has left.
        must(desk_.clear("I", 1) == 0, "clear");
        for (const std::string& code : codes)
            must(desk_.stage({.barCode = code}).value == 0, "staging of " + code);
        const Answer booked = desk_.book();
        must(booked.value == 0, "booking: " + booked.message);
    }

    void putAway(const std::string& code) {
        const Answer answer =
            desk_.putAway(code, regalon::test::labelOf(1, 1 + pick(3), 1 + pick(3), 1 + pick(3)));
        must(answer.value == 0 || answer.message.find("brak miejsca") != std::string::npos,
             "put-away: " + answer.message);
    }

    std::string giveOut(const std::string& whole, const std::string& opened) {
        must(desk_.stageOut({.barCode = whole}).value == 0, "goods-out of " + whole);
        must(desk_.stageOut({.barCode = opened, .quantity = 3}).value == 0, "goods-out of " + opened);
        const std::string shared = "S" + std::to_string(1 + pick(3));
        must(desk_.stageOut({.barCode = shared, .quantity = 1}).value <= 0, "goods-out of " + shared);
        // One in four is refused first: it must not take a number.
        if (pick(4) == 0)
            must(desk_.giveOut(1).value > 0, "give-out to a closed line");
        const auto answer = desk_.giveOut();
        must(answer.value == 0, "give-out: " + answer.message);
        return answer.document;
    }

    void takeBack(const std::string& document, const std::string& code) {
        if (pick(2) == 0)
            return;
        must(desk_.stageReturn({.barCode = code, .quantity = 4}).value == 0,
             "staging of what came back from " + document);
        must(desk_.book("R").value == 0, "return");
    }

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

    DocumentDesk desk_;
    std::string prefix_;
    std::mt19937 random_;
};

}  // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() != 4)
        return 2;
    try {
        Clerk clerk(arguments[0], std::stoi(arguments[1]), static_cast<unsigned>(std::stoul(arguments[2])));
        clerk.work(std::stoi(arguments[3]));
    } catch (const std::exception& error) {
        tell(std::string("wrong end: ") + error.what());
        return 1;
    }
    return 0;
}
