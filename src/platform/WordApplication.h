#pragma once

#include "platform/WordSetup.h"

#include <QByteArray>
#include <QJsonArray>
#include <QLatin1String>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <sys/types.h>

namespace regalon {

/// The word processor that prints labels: LibreOffice, hidden, in a process of its own with a profile of its
/// own (regalon-label). It is started by the constructor and ends with the object, whatever it is doing then,
/// and with it all that a macro has started; it also ends with this program. Nothing of it is loaded while no
/// object of this class exists.
///
/// Every call waits for its answer. Raises 429 where it cannot be started, 440 for what it reports, and 462
/// when it has crashed, was killed, or has not answered within the time limit and therefore is killed.
class WordApplication {
public:
    /// For every object made from now on.
    static void setSetup(const WordSetup& setup);

    WordApplication();
    ~WordApplication();
    WordApplication(const WordApplication&) = delete;
    WordApplication& operator=(const WordApplication&) = delete;

    /// Opens a document of the system's `folder` whose macros may run: raises 70 for one that lies, links
    /// followed, anywhere else.
    void Open(const QString& path, const QString& folder);
    /// Runs a macro of the open document with texts of one line each.
    void Run(const QString& macro, const QStringList& arguments);
    /// Where it prints; at first the user's default printer. Empty without one. Setting it changes nothing
    /// for other programs.
    QString ActivePrinter();
    void setActivePrinter(const QString& printer);
    void PrintOut();
    void Close();
    void Quit();

    /// Of its process; 0 when that has ended.
    qint64 processId() const { return m_process.processId(); }

private:
    void start();
    QString call(QLatin1String command, const QStringList& arguments = {});
    QString answer();
    QByteArray readLine();
    void kill();

    WordSetup m_setup;
    QTemporaryDir m_workspace;
    QProcess m_process;
    /// The process group of it and of what it starts; 0 before it is started and after its end.
    pid_t m_group = 0;
};

}  // namespace regalon
