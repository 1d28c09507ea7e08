#pragma once

#include <QString>

#include <memory>

namespace regalon {

class DbSession;
struct Settings;

/// Driver, keywords and port rule of every connection that is opened from now on. Set once at the start;
/// until then the defaults of Settings hold.
void useDatabaseSettings(const Settings& settings);

/// One connection to the server. Not copied, not shared between threads. Every failing operation throws
/// RunTimeError with a number of DbErrors.h, the server's own text and the driver as source.
///
/// There is no reconnect: once the server has gone, every later use throws General at once, and State() stays
/// 1, as it does for any connection that its owner has not closed.
class DbConnection {
public:
    static constexpr int defaultTimeout = 30;  ///< seconds, for the login and for each statement

    DbConnection();
    ~DbConnection();
    DbConnection(const DbConnection&) = delete;
    DbConnection& operator=(const DbConnection&) = delete;

    /// OLE DB form ("Provider=SQLOLEDB.1;Password=...;Data Source=...") or ODBC form ("driver={SQL Server};
    /// server=...;uid=...;pwd=...;database=..."). Takes effect at the next Open.
    void setConnectionString(const QString& text) { m_connectionString = text; }
    /// The text as it was set.
    QString ConnectionString() const { return m_connectionString; }
    /// Seconds to wait for the login; 0 waits for ever.
    void setConnectionTimeout(int seconds) { m_connectionTimeout = seconds; }
    int ConnectionTimeout() const { return m_connectionTimeout; }

    /// Connects. Throws Authentication for a refused login, General when no server answers in time, Statement
    /// with the server's text for anything else that the server refuses (an unknown database), ObjectOpen
    /// when open.
    void Open();
    /// Sets both and connects.
    void Open(const QString& connectionString, int timeoutSeconds = defaultTimeout);
    /// Disconnects. Recordsets keep their rows. Throws ObjectClosed when not open.
    void Close();
    /// 1 = open, 0 = closed.
    int State() const;
    /// Whether the server has gone while the connection was open. Known from the first failure that shows it.
    bool isLost() const;

    /// Runs a text for its effect alone and drains every result of it.
    void Execute(const QString& sql);

    /// The open session, for the gateway's own classes. Throws InvalidConnection when closed.
    DbSession& session();

private:
    QString m_connectionString;
    int m_connectionTimeout = 15;
    std::unique_ptr<DbSession> m_session;
};

}  // namespace regalon
