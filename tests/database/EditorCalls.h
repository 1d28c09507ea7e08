#pragma once

#include "database/Warehouse.h"

#include <array>
#include <string>

namespace regalon::test {

/// The arguments of kolv_mag_AddBookstandValidate and kolv_mag_AddBookstand: a new stand of row 1 with an
/// empty shelf, unless a test says otherwise.
struct StandCall {
    int rank = 1;
    int stand = -1;
    int shelf = 1;
    std::array<int, 4> locations{};
    int left = 3000;
    int top = 4000;
    std::string icon = "Reg.ico";
    std::string visible = "Y";
    std::string enabled = "Y";
    std::string frame = "Y";
    std::string description{};

    [[nodiscard]] std::string arguments() const;
};

/// N'...' with its quotes doubled.
[[nodiscard]] std::string literal(const std::string& text);

[[nodiscard]] Answer validateStand(OdbcConnection& connection, const StandCall& call);
[[nodiscard]] Answer saveStand(OdbcConnection& connection, const StandCall& call);
[[nodiscard]] Answer removeStand(OdbcConnection& connection, int rank, int stand);

/// The return value of a procedure without a message.
[[nodiscard]] long statusOf(OdbcConnection& connection, const std::string& procedure,
                            const std::string& arguments);

/// Every row that the editors write, for "nothing has changed".
[[nodiscard]] std::string editorTables(OdbcConnection& connection);

/// An empty hall with rows A to C and three materials, for tests that lay it out themselves.
class EmptyHall {
public:
    EmptyHall();

    /// A package on a location.
    void put(const std::string& barCode, const std::string& address, const std::string& active = "Y");
    /// A stand with the given shelves, one digit each, from the bottom. A test fails if it is refused.
    void build(int rank, const std::string& profile, int left, int top);
    std::string one(const std::string& sql) { return connection.run(sql).text(0); }

    Warehouse warehouse{Warehouse::Content::Schema};
    OdbcConnection connection = warehouse.connect();
};

}  // namespace regalon::test
