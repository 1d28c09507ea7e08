#pragma once

#include "database/Warehouse.h"

#include <string>
#include <vector>

namespace regalon::test {

/// One row of the list of proposals, its columns counted from the end as the client counts them.
struct Proposal {
    int rank = 0;
    int stand = 0;
    int shelf = 0;
    int location = 0;
    std::string barCode;
    std::string status;
    std::string remark;
    std::string occupied;
    int percentAfter = 0;

    [[nodiscard]] std::string address() const;
    [[nodiscard]] bool canBeTicked() const { return status == "D" || status == "C"; }
};

/// The rows of a list of proposals.
[[nodiscard]] std::vector<Proposal> proposalsOf(const Rows& rows);

/// What a client that moves packages says to the server: one connection, one user, application P, operation
/// S.
class ShiftDesk {
public:
    explicit ShiftDesk(OdbcConnection connection, int user = 1, std::string application = "N'P'",
                       std::string operation = "N'S'");

    long clear(int param = 0);
    /// Addresses are "rank, stand, shelf, location".
    Answer stage(const std::string& item, const std::string& address);
    Answer unstage(const std::string& item, const std::string& address);
    Answer choose(const std::string& barCode);
    Answer unchoose(const std::string& barCode);
    Answer confirm();
    /// Mode 0, with the message that the client holds at that moment as it sends it.
    Answer prepare(const std::string& message = "N'NULL'");
    Rows proposalRows(int mode = 1, const std::string& message = "NULL");
    std::vector<Proposal> proposals(int mode = 1);
    /// The row of the proposals with this address, for the only chosen package. A test fails without it.
    Proposal proposal(const std::string& address);
    Answer move(const std::string& barCode, const std::string& address);
    /// Stages, chooses and confirms one package that lies there.
    void take(const std::string& item, const std::string& address, const std::string& barCode);

    /// The client's own count of chosen packages.
    long chosen();
    /// The barcodes of the list of staged packages.
    std::vector<std::string> packages();

    Rows run(const std::string& sql) { return connection_.run(sql); }
    std::string one(const std::string& sql) { return connection_.run(sql).text(0); }
    OdbcConnection& connection() { return connection_; }

private:
    /// @UserSign, @Aplication
    [[nodiscard]] std::string who() const;

    OdbcConnection connection_;
    std::string user_;
    std::string application_;
    std::string operation_;
};

/// An empty hall with materials A-1, A-2 (group 1), B-1 (group 2) and L-1 (no group), for tests that say
/// themselves what lies where. Row 1, stands 1 to 3, has three shelves of three locations (900 x 1200 x 1100
/// mm, 1000 kg); row 2, stand 1, has one shelf with one location of three slots. All are free and mono.
class ShiftHall {
public:
    explicit ShiftHall(Warehouse::Content content = Warehouse::Content::Schema);

    struct Package {
        std::string barCode;
        std::string item = "A-1";
        std::string address = "1, 1, 1, 1";
        int length = 800;
        int width = 600;
        int height = 500;
        double weight = 100;
        double quantity = 10;
    };
    void put(const Package& package);
    /// A location's row: material or "", group, 0 mono or 1 multi.
    void assign(const std::string& address, const std::string& item, int group = 0, int multi = 0);
    /// "rank, stand, shelf, location" of a package.
    std::string place(const std::string& barCode);
    /// Everything that a move changes, for "nothing has changed".
    std::string stock();
    std::string one(const std::string& sql) { return connection.run(sql).text(0); }

    ShiftDesk desk(int user = 1, const std::string& workstation = "MAG-WOZEK-1") {
        return ShiftDesk(warehouse.connect(workstation), user);
    }

    Warehouse warehouse;
    OdbcConnection connection = warehouse.connect();
};

/// "Rank = 1 AND Stand = 2 AND ..." of an address.
[[nodiscard]] std::string whereAddress(const std::string& address);

}  // namespace regalon::test
