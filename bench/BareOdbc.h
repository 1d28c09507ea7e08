#pragma once

#include <string>
#include <utility>
#include <vector>

namespace bench {

/// One statement or procedure call of a recorded session.
struct Statement {
    bool call = false;
    std::string text;                                            ///< statement, or procedure name
    std::vector<std::pair<std::string, std::string>> arguments;  ///< of a call, in order
};

/// The yardstick: the ODBC calls that any program needs to send the statements and read every row, and
/// nothing else.
class BareOdbc {
public:
    explicit BareOdbc(const std::string& connectionString);
    ~BareOdbc();
    BareOdbc(const BareOdbc&) = delete;
    BareOdbc& operator=(const BareOdbc&) = delete;

    /// Runs the statements in order and reads every column of every row as text. Returns the number of rows.
    /// Throws std::runtime_error with the driver's text.
    long run(const std::vector<Statement>& statements);

private:
    long readAll();
    void check(long result, const char* what);
    void* environment_ = nullptr;
    void* connection_ = nullptr;
    void* statement_ = nullptr;
};

/// Statements of a trace of the server, from entry `first` on.
std::vector<Statement> readTrace(const std::string& file, std::size_t first = 0);

}  // namespace bench
