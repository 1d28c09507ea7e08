#pragma once

#include "database/OdbcConnection.h"

#include <sys/types.h>

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace regalon::test {

/// A warehouse database on a server, for one test. Normally a copy of the built one on a magdb of its own.
/// With REGALON_TEST_SERVER, an ODBC connection string to a database that may be overwritten, the scripts are
/// installed there, so that the same tests judge database/ on a SQL Server.
class Warehouse {
public:
    enum class Content { Demo, Schema };

    explicit Warehouse(Content content = Content::Demo);
    ~Warehouse();
    Warehouse(const Warehouse&) = delete;
    Warehouse& operator=(const Warehouse&) = delete;

    /// A workstation's name, if given, is what the server sees as the host of the connection.
    [[nodiscard]] OdbcConnection connect(const std::string& workstation = {}) const;
    [[nodiscard]] std::string connectionString(const std::string& workstation = {}) const;

    /// False for a server that somebody else runs: it is neither ended nor started here.
    [[nodiscard]] bool hasOwnServer() const { return server_ != 0; }
    /// Ends the server at once, in the middle of whatever it does.
    void killServer();
    /// Starts it again on the database as the kill has left it. The port is another one.
    void startServer();

private:
    void copyDatabase(Content content);

    std::filesystem::path folder_;
    pid_t server_ = 0;
    std::string connectionString_;
};

/// The scripts named by database/install.list or database/demo.list.
[[nodiscard]] std::vector<std::filesystem::path> scriptsOf(std::string_view list);
/// The batches of a script, divided at its GO lines.
[[nodiscard]] std::vector<std::string> batchesOf(const std::filesystem::path& script);
/// Runs every batch of the scripts of a list.
void install(OdbcConnection& connection, std::string_view list);

/// Return value and message of a procedure that ends in a message parameter.
struct Answer {
    long value = 0;
    std::string message;
};
/// Calls the procedure with arguments as they stand in T-SQL, without the message.
[[nodiscard]] Answer call(OdbcConnection& connection, const std::string& procedure,
                          const std::string& arguments);

}  // namespace regalon::test
