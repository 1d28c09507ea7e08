#pragma once

#include "engine/SqlType.h"
#include "engine/Value.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace magdb {

/// A column of a result as it is described to the client.
struct ResultColumn {
    std::string name;  ///< empty for an unnamed expression
    SqlType type;
    bool nullable = true;
    bool identity = false;
};

/// An error (severity above 10) or an information message (10 and below).
struct ServerMessage {
    int number = 0;
    int severity = 16;
    int state = 1;
    std::string text;
    std::string procedure;  ///< empty outside procedures
    int line = 1;           ///< 1-based, within the batch or the procedure
};

/// What takes the answer of a batch or a call, in the order in which the server produces it. Called only from
/// the thread that runs the batch. An implementation may throw to stop the batch (a connection that has
/// gone).
class ResultSink {
public:
    virtual ~ResultSink() = default;
    /// Begins a result set. Rows follow until statementDone().
    virtual void columns(const std::vector<ResultColumn>& columns) = 0;
    virtual void row(std::span<const Value> values) = 0;
    /// Ends a statement. No count for statements that have none, or under SET NOCOUNT ON.
    /// inProcedure: the statement ran inside a procedure (DONEINPROC instead of DONE).
    virtual void statementDone(std::optional<std::int64_t> rowCount, bool hadResult, bool inProcedure) = 0;
    virtual void message(const ServerMessage& message) = 0;
    /// An EXEC that stands in the batch itself ended with this return value. Not for nested calls, nor for
    /// executeProcedure(), whose outcome carries the value.
    virtual void procedureDone(std::int32_t /*status*/) {}
    /// The session's database changed (USE).
    virtual void databaseChanged(const std::string& from, const std::string& to) = 0;
};

/// A parameter of a procedure call as it came from a client.
struct CallParameter {
    std::string name;  ///< with the leading "@"; empty when passed by position
    bool output = false;
    bool useDefault = false;  ///< the call asks for the declared default; value is NULL then
    SqlType type;             ///< as declared on the wire
    Value value;
};

/// What a call gives back besides rows.
struct CallOutcome {
    bool failed = false;      ///< an error ended the call; status and outputs are not valid
    std::int32_t status = 0;  ///< return value
    struct Output {
        std::string name;
        SqlType type;
        Value value;
    };
    std::vector<Output> outputs;  ///< output parameters in the order of the call
};

/// Who is connecting, from the login packet.
struct LoginRequest {
    std::string user;
    std::string password;
    std::string database;  ///< empty: the default database
    std::string hostName;
    std::string applicationName;
};

class Session;

/// One database file with everything that its sessions share. Thread-safe.
class Engine {
public:
    /// Opens or creates the file. Throws std::runtime_error when it is not a database or cannot be opened.
    explicit Engine(std::string file);
    ~Engine();
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;

    /// Name of the database: the stem of the file's name.
    [[nodiscard]] const std::string& databaseName() const;

    /// Stores a login, replacing one of the same name. The password is kept as a salted hash.
    void setLogin(std::string_view name, std::string_view password);

    /// Checks the login and makes a session, or gives the error to send: 18456 wrong login, 4060 unknown
    /// database. A session belongs to one thread at a time.
    [[nodiscard]] std::unique_ptr<Session> connect(const LoginRequest& login, ServerMessage& error);

    /// A session without a login check, for scripts run by the owner of the file.
    [[nodiscard]] std::unique_ptr<Session> connectAsOwner();

private:
    friend class Session;
    class Private;
    std::unique_ptr<Private> d;
};

/// A connection's side of the engine: its database, temporary tables, options and running statement.
class Session {
public:
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    [[nodiscard]] std::int16_t spid() const;
    [[nodiscard]] const std::string& database() const;
    /// True while the session has the turn to write, for which all others wait. For the thread that runs the
    /// batch, so for its ResultSink too.
    [[nodiscard]] bool isWriting() const;

    /// Runs a batch of T-SQL (no GO). Never throws for an error of the batch: errors go to the sink as
    /// messages. False when an error ended the batch.
    bool executeBatch(std::string_view text, ResultSink& sink);

    /// Calls a stored procedure by its name, "dbo." or "database.." in front allowed. Also the system
    /// procedures that drivers use: sp_executesql, sp_prepare, sp_execute, sp_prepexec, sp_unprepare,
    /// sp_sproc_columns and the like.
    CallOutcome executeProcedure(std::string_view name, std::vector<CallParameter> parameters,
                                 ResultSink& sink);

    /// Asks the running batch to stop; safe from any thread. The batch ends without an error message of its
    /// own.
    void cancel();

    /// Puts the session back to the state after login (the reset bit of the protocol): open transaction
    /// rolled back, temporary tables dropped, options at their defaults.
    void reset();

private:
    friend class Engine;
    class Private;
    explicit Session(std::unique_ptr<Private> state);
    std::unique_ptr<Private> d;
};

}  // namespace magdb
