#pragma once

// Private to the gateway.

#include "common/DbCommand.h"
#include "common/DbOdbc.h"
#include "common/DbResult.h"

#include <QHash>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace regalon {

/// What a login needs.
struct DbLogin {
    QString driverText;  ///< the driver's connection string
    QString source;      ///< what errors name as theirs
    int timeoutSeconds = 0;
    bool namesUser = true;
};

/// An open connection: the ODBC handles and the two statements that all recordsets and commands of the
/// connection share. Results are read whole before a call returns, so that the connection never has two
/// active statements.
class DbSession {
public:
    /// Connects, or throws.
    explicit DbSession(const DbLogin& login);
    ~DbSession();
    DbSession(const DbSession&) = delete;
    DbSession& operator=(const DbSession&) = delete;

    /// Runs a text and drains it. The first result with columns; null when there is none.
    std::shared_ptr<const DbTable> run(const QString& sql);

    /// The parameter list of a procedure, the return value first. Throws Statement when there is no such one.
    const std::vector<DbParameterInfo>& parameters(const QString& procedure);

    /// Runs a call by position; fills return value and outputs.
    void call(const QString& procedure, std::vector<DbParameter>& parameters);

    /// Whether a failure has shown that the server has gone.
    bool isLost() const { return m_dead; }

private:
    class Link {
    public:
        explicit Link(const DbLogin& login);
        ~Link();
        Link(const Link&) = delete;
        Link& operator=(const Link&) = delete;
        SQLHDBC get() const { return m_connection.get(); }

    private:
        odbc::Environment m_environment;
        odbc::Handle<SQL_HANDLE_DBC> m_connection;
        bool m_connected = false;
    };

    struct Work {
        Work(SQLHDBC connection, bool escapes);
        odbc::Statement statement;
        odbc::ResultReader reader;
    };

    using Failure = std::optional<RunTimeError>;

    Failure failure(SQLHSTMT statement);
    void requireAlive() const;
    std::shared_ptr<const DbTable> drain(Work& work, SQLRETURN result);
    std::vector<DbParameterInfo> askParameters(const QString& procedure);

    QString m_source;
    Link m_link;
    Work m_texts;
    Work m_calls;
    QHash<QString, std::vector<DbParameterInfo>> m_parameters;
    bool m_dead = false;
};

}  // namespace regalon
