#pragma once

#include "program/Display.h"

#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>

namespace regalon::test {

/// A run of the program in a window of a display. It is ended with the object if it still runs.
class Client {
public:
    explicit Client(const Display& display);
    ~Client();
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// To be set before start(). An empty value takes the variable away.
    void setEnvironment(const QString& name, const QString& value);
    bool start(const QStringList& arguments);

    qint64 process() const { return m_process.processId(); }
    bool running() const { return m_process.state() == QProcess::Running; }
    /// Waits for the end by itself and gives the exit code; -1 if it does not end or crashes.
    int exitCode();

    /// Waits for a window with this title; its number, empty if it does not come.
    QString window(const QString& title) const;
    bool windowGone(const QString& title) const;
    /// Waits for a window with this title and for the keyboard to be with it; its number, empty if not.
    QString turnTo(const QString& title) const;
    /// Waits until the window of this number is gone and keys go to another one of the program, if it goes
    /// on.
    bool backFrom(const QString& window) const;
    /// Answers a window by a key, and is back from it.
    bool answer(const QString& title, const QString& key) const;
    /// The main window, once it is shown.
    QString mainWindow() const { return window(mainTitle()); }
    /// Waits for a window other than the main one and gives its title.
    QString messageTitle() const;

    static QString mainTitle();

private:
    const Display& m_display;
    QProcessEnvironment m_environment;
    QProcess m_process;
};

}  // namespace regalon::test
