#pragma once

#include "database/ShiftDesk.h"

#include <string>

namespace regalon::test {

/// One call that stages a package: the order line that it comes or came with.
struct Incoming {
    std::string barCode = "P1";
    int entry = 10;
    int num = 1010;
    int line = 0;
    std::string item = "A-1";
    double quantity = 10;
    int number = 0;
    int lineGrd = -1;
    std::string operation = "I";
    std::string application = "P";
};

/// One call that stages a package for a goods-out.
struct Outgoing {
    std::string barCode = "P1";
    std::string item = "A-1";
    double quantity = 10;
    int num = 1010;
    std::string propOrOut = "O";
    double proposed = 0;
    int param = 0;
    std::string deleteLine = "N";
};

/// One give-out line of which something comes back.
struct ComingBack {
    int document = 1;
    int line = 1;
    std::string barCode = "P1";
    std::string item = "A-1";
    double quantity = 4;
    std::string operation = "R";
};

/// What a client of the document services says to the server: one connection, one user.
class DocumentDesk {
public:
    explicit DocumentDesk(OdbcConnection connection, int user = 1);

    long clear(const std::string& operation, int param = 0);
    Answer stage(const Incoming& package, const std::string& deleteLine = "N");
    Answer stageReturn(const Incoming& package, const std::string& deleteLine = "N");
    Answer confirm(const std::string& operation = "I");
    Answer book(const std::string& operation = "I");
    Answer putAway(const std::string& barCode, const std::string& label, int entry = 10, int line = 0,
                   const std::string& operation = "I");
    Answer stageOut(const Outgoing& package);
    struct GiveOut {
        long value = 0;
        std::string message;
        std::string document;  ///< "<NULL>" when there is none
    };
    GiveOut giveOut(int line = 0, int entry = 20, int num = 2020, int receiver = 3);
    struct Back {
        long value = 0;
        std::string message;
        std::string quantity;
    };
    Back confirmBack(const ComingBack& back);
    long lastNumber(int year, int entry, int num, int line);
    Answer saveBarCode(const Incoming& package, int year = 2026);
    Answer lineStatus(int entry, int line);

    Rows run(const std::string& sql) { return connection_.run(sql); }
    std::string one(const std::string& sql) { return connection_.run(sql).text(0); }
    OdbcConnection& connection() { return connection_; }
    [[nodiscard]] const std::string& user() const { return user_; }

private:
    Answer stageBy(const std::string& procedure, const Incoming& package, const std::string& deleteLine);

    OdbcConnection connection_;
    std::string user_;
};

/// A ShiftHall with sizes of materials (A-1: 800 x 600 x 500 mm, 100 kg for a purchase package of 10; B-1: of
/// 5), the users 1 to 3, and orders. Purchase order 10 (number 1010, of 2026) orders 100 of A-1 on line 0, 50
/// of B-1 on line 1, and 20 of A-2 on line 2, which is closed; order 11 is closed; order 12 has no date and
/// no status. Manufacturing order 20 (number 2020) needs A-1 and B-1 on line 0, A-1 on line 1, which is
/// closed; order 21 is closed.
class DocumentHall : public ShiftHall {
public:
    DocumentHall();

    DocumentDesk documents(int user = 1, const std::string& workstation = "MAG-PRZYJECIA") {
        return DocumentDesk(warehouse.connect(workstation), user);
    }
    /// A package of order 10, line 0, received at the desk and put onto a location, "" for the buffer.
    void receive(DocumentDesk& desk, const std::string& barCode, double quantity = 10,
                 const std::string& label = {});
    /// stock() and all that the documents write.
    std::string books();
    long count(const std::string& from) { return connection.run("SELECT COUNT(*) FROM " + from).whole(0); }
};

/// The code on the label of a location of a hall, printed on a day of 2026.
[[nodiscard]] std::string labelOf(int rank, int stand, int shelf, int location,
                                  const std::string& day = "260105");

/// What came in, minus what went out, plus what came back is what lies there: package by package, by the
/// history alone.
void expectBalance(OdbcConnection& connection);

}  // namespace regalon::test
