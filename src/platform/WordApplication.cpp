#include "platform/WordApplication.h"

#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "platform/WordProtocol.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QFileInfo>

#include <sys/prctl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace regalon {

namespace {

WordSetup& currentSetup() {
    static WordSetup setup;
    return setup;
}

QString programOf(const WordSetup& setup) {
    return setup.Program.isEmpty() ? QCoreApplication::applicationDirPath() + QStringLiteral("/regalon-label")
                                   : setup.Program;
}

/// Milliseconds that a killed process may take to go. One that the kernel holds longer, as in a read from a
/// share that is gone, is left to it.
constexpr int kEndTime = 5000;

const QString kWorkspace = QStringLiteral("regalon-label-");

/// Named after this program, so that one that comes later knows whose it was.
QString workspaceTemplate() {
    return Paths::machineTemporaryFolder() + u'/' + kWorkspace + QString::number(getpid()) +
           QStringLiteral("-XXXXXX");
}

bool isGone(pid_t process) {
    return ::kill(process, 0) != 0 && errno == ESRCH;
}

/// Removes what clients of this user left that were ended while they printed.
void sweepWorkspaces() {
    const QDir folder(Paths::machineTemporaryFolder());
    const auto found =
        folder.entryInfoList({kWorkspace + QStringLiteral("*-*")}, QDir::Dirs | QDir::NoSymLinks);
    for (const QFileInfo& workspace : found) {
        bool named = false;
        const pid_t owner = workspace.fileName().section(u'-', 2, 2).toInt(&named);
        if (named && owner > 0 && workspace.ownerId() == geteuid() && isGone(owner))
            QDir(workspace.filePath()).removeRecursively();
    }
}

/// A group of its own, so that what a macro starts can be ended with it; and the end of this program, even a
/// violent one, is its end. Runs between fork and exec: system calls only.
void bindToParent(pid_t parent) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent)
        _exit(1);
}

/// The descriptions end with a blank, since a report shows the source directly behind them.
[[noreturn]] void raiseGone() {
    throw RunTimeError(RunTime::RemoteServerGone,
                       QStringLiteral("Program drukujący etykiety zakończył się nieoczekiwanie. "));
}

[[noreturn]] void raiseLate(int seconds) {
    throw RunTimeError(
        RunTime::RemoteServerGone,
        QStringLiteral("Program drukujący etykiety nie odpowiedział w ciągu %1 s i został zamknięty. ")
            .arg(seconds));
}

}  // namespace

void WordApplication::setSetup(const WordSetup& setup) {
    currentSetup() = setup;
}

WordApplication::WordApplication() : m_setup(currentSetup()), m_workspace(workspaceTemplate()) {
    sweepWorkspaces();
    if (!m_workspace.isValid())
        throw RunTimeError(RunTime::PathFileAccess, m_workspace.errorString() + u' ');
    start();
    // It says of itself that it is ready, or why it cannot be.
    try {
        answer();
    } catch (...) {
        kill();
        throw;
    }
}

WordApplication::~WordApplication() {
    kill();
}

void WordApplication::start() {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // Never a window, also where LibreOffice's graphical parts are installed.
    environment.insert(QStringLiteral("SAL_USE_VCLPLUGIN"), QStringLiteral("svp"));
    // Its own temporary files, which a killed one leaves, go with the workspace.
    for (const char* name : {"TMPDIR", "TEMP", "TMP"})
        environment.insert(QString::fromLatin1(name), m_workspace.path());
    m_process.setProcessEnvironment(environment);
    m_process.setStandardErrorFile(QProcess::nullDevice());
    m_process.setChildProcessModifier([parent = getpid()] { bindToParent(parent); });
    m_process.start(programOf(m_setup), {m_workspace.path(), m_setup.OfficeFolder});
    if (!m_process.waitForStarted()) {
        throw RunTimeError(
            RunTime::CannotCreateObject,
            QStringLiteral("Nie ma programu drukującego etykiety: ") + programOf(m_setup) + u' ');
    }
    m_group = static_cast<pid_t>(m_process.processId());
}

QString WordApplication::call(QLatin1String command, const QStringList& arguments) {
    if (m_process.state() == QProcess::NotRunning) {
        kill();
        raiseGone();
    }
    QJsonArray message{command};
    for (const QString& argument : arguments)
        message.append(argument);
    m_process.write(WordProtocol::line(message));
    return answer();
}

QString WordApplication::answer() {
    const QJsonArray message = WordProtocol::message(readLine());
    if (message.at(0).toString() == WordProtocol::ok)
        return message.at(1).toString();
    throw RunTimeError(message.at(1).toInt(RunTime::AutomationError), message.at(2).toString());
}

QByteArray WordApplication::readLine() {
    QDeadlineTimer deadline(m_setup.TimeLimit * 1000);
    while (!m_process.canReadLine()) {
        const int rest = static_cast<int>(deadline.remainingTime());
        if (m_process.waitForReadyRead(rest) || m_process.canReadLine())
            continue;
        const bool running = m_process.state() != QProcess::NotRunning;
        kill();
        if (running)
            raiseLate(m_setup.TimeLimit);
        raiseGone();
    }
    return m_process.readLine();
}

/// Ends its group, also when it has gone by itself: what a macro has started may still run. The kernel gives
/// the group's number to nobody else while it has members.
void WordApplication::kill() {
    if (m_group == 0)
        return;
    ::kill(-m_group, SIGKILL);
    m_group = 0;
    m_process.waitForFinished(kEndTime);
}

void WordApplication::Open(const QString& path, const QString& folder) {
    const QString file = QFileInfo(Paths::toFile(path)).canonicalFilePath();
    const QString trusted = QFileInfo(Paths::toFile(folder)).canonicalFilePath();
    if (trusted.isEmpty() || !file.startsWith(trusted + u'/')) {
        throw RunTimeError(RunTime::PermissionDenied,
                           QStringLiteral("Plik \"%1\" leży poza folderem \"%2\". ").arg(path, folder));
    }
    call(WordProtocol::open, {file});
}

void WordApplication::Run(const QString& macro, const QStringList& arguments) {
    call(WordProtocol::run, QStringList(macro) + arguments);
}

QString WordApplication::ActivePrinter() {
    return call(WordProtocol::activePrinter);
}

void WordApplication::setActivePrinter(const QString& printer) {
    call(WordProtocol::setActivePrinter, {printer});
}

void WordApplication::PrintOut() {
    call(WordProtocol::print);
}

void WordApplication::Close() {
    call(WordProtocol::close);
}

void WordApplication::Quit() {
    call(WordProtocol::quit);
    m_process.waitForFinished(m_setup.TimeLimit * 1000);
    kill();
}

}  // namespace regalon
