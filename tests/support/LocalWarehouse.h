#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

namespace regalon::test {

/// A warehouse of its own for a test: a copy of the demo database (or of an empty one) in a temporary folder,
/// with a magdb server on a free loopback port. Everything goes when the object goes.
/// Tests that use it link regalon_local_warehouse and need the targets magdb and the demo database built.
class LocalWarehouse {
public:
    enum class Content {
        Demo,  ///< the whole demo warehouse
        Empty  ///< every table, procedure and the login, but no rows
    };

    explicit LocalWarehouse(Content content = Content::Demo);
    ~LocalWarehouse();
    LocalWarehouse(const LocalWarehouse&) = delete;
    LocalWarehouse& operator=(const LocalWarehouse&) = delete;

    /// Starts the server, with a trace, and waits until it listens. False, with why() telling, if it does
    /// not. May be called again after stop() or kill(): the database is kept, the port changes.
    bool start(const QStringList& extraArguments = {});
    /// Asks the server to end (SIGTERM) and waits. True if it ended cleanly.
    bool stop();
    /// Ends the server at once, in the middle of whatever it does.
    void kill();
    /// Freezes the server, so that it answers nothing, and lets it go on.
    void freeze();
    void thaw();
    bool running() const { return m_server.state() == QProcess::Running; }
    qint64 processId() const { return m_server.processId(); }
    QString why() const { return m_why; }

    quint16 port() const { return m_port; }
    /// "127.0.0.1,port", as it stands in a connection file.
    QString server() const;
    static QString login();
    static QString password();
    static QString database();
    /// Connection string in the OLE DB form, as the program writes it.
    QString connectionString() const;
    QString connectionString(const QString& user, const QString& pass, const QString& base) const;

    /// The folder of this warehouse, the path where a connection file belongs (not written here), and the
    /// folder that serves as drive C; the icon folder is <driveC>/Regalon/Ikony.
    QString folder() const { return m_folder.path(); }
    QString connectFile() const;
    QString driveC() const;
    QString databaseFile() const;

    /// The entries of the trace so far, one for each statement or call, as the server received them. The
    /// escapes of the text are undone.
    struct TraceEntry {
        QString session;
        QString kind;        ///< "BATCH" or "RPC"
        QString text;        ///< the statement, or the name of the procedure
        QStringList values;  ///< "@p=value" of a call
    };
    QList<TraceEntry> entries() const;
    /// Statements as they are, calls as the name and its values joined by a tab.
    QStringList trace() const;
    /// Forgets the trace so far.
    void clearTrace();

    /// Runs T-SQL (batches parted by GO) on the database. The server must be stopped. False, with why()
    /// telling, on the first error.
    bool runScript(const QString& sql);
    /// Runs one batch through a connection of its own. The server must be running. False, with why() telling,
    /// on an error. Its statements are in the trace as well.
    bool run(const QString& sql);

private:
    bool prepareFiles(Content content);
    bool waitUntilReady();

    QTemporaryDir m_folder;
    QProcess m_server;
    QString m_why;
    quint16 m_port = 0;
    qint64 m_traceStart = 0;
};

}  // namespace regalon::test
