#include "support/LocalWarehouse.h"

#include "common/DbConnection.h"
#include "platform/RunTimeError.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

#include <algorithm>
#include <csignal>

namespace regalon::test {

using namespace Qt::StringLiterals;

namespace {

// A loaded machine may be slow to start a process; nothing waits this long when all is well.
constexpr int patienceMilliseconds = 30000;

QString buildFolder() {
    return QString::fromUtf8(REGALON_BINARY_DIR);
}
QString magdb() {
    return buildFolder() + u"/bin/magdb"_s;
}

QString unescaped(QStringView text) {
    QString plain;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text.at(i) != u'\\' || i + 1 == text.size()) {
            plain += text.at(i);
            continue;
        }
        const QChar sign = text.at(++i);
        plain += sign == u'n'   ? QChar(u'\n')
                 : sign == u'r' ? QChar(u'\r')
                 : sign == u't' ? QChar(u'\t')
                                : sign;
    }
    return plain;
}

bool everyThreadStopped(qint64 process) {
    const QDir tasks(u"/proc/"_s + QString::number(process) + u"/task"_s);
    const QStringList threads = tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    return std::all_of(threads.begin(), threads.end(), [&tasks](const QString& thread) {
        QFile stat(tasks.filePath(thread + u"/stat"_s));
        return stat.open(QIODevice::ReadOnly) && stat.readAll().contains(") T ");
    });
}

LocalWarehouse::TraceEntry toEntry(const QString& line) {
    const QStringList fields = line.split(u'\t');
    LocalWarehouse::TraceEntry entry{fields.value(0), fields.value(1), unescaped(fields.value(2)), {}};
    for (const QString& value : fields.mid(3)) {
        entry.values.append(unescaped(value));
    }
    return entry;
}

}  // namespace

LocalWarehouse::LocalWarehouse(Content content) {
    m_server.setProcessChannelMode(QProcess::MergedChannels);
    if (!prepareFiles(content) && m_why.isEmpty()) {
        m_why = u"The warehouse's files cannot be made."_s;
    }
}

LocalWarehouse::~LocalWarehouse() {
    if (running()) {
        stop();
    }
}

bool LocalWarehouse::prepareFiles(Content content) {
    QDir(driveC()).mkpath(u"Regalon"_s);
    const QString icons = buildFolder() + u"/share/Ikony"_s;
    if (QFileInfo::exists(icons)) {
        QFile::link(icons, driveC() + u"/Regalon/Ikony"_s);
    }
    const QString name = content == Content::Demo ? u"MAGAZYN.db"_s : u"empty/MAGAZYN.db"_s;
    const QString original = buildFolder() + u"/share/"_s + name;
    if (!QFile::copy(original, databaseFile())) {
        m_why = u"There is no database "_s + original;
        return false;
    }
    return QFile(databaseFile()).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
}

bool LocalWarehouse::start(const QStringList& extraArguments) {
    if (!QFileInfo::exists(databaseFile())) {
        return false;
    }
    QFile::remove(folder() + u"/port"_s);
    m_server.start(
        magdb(), QStringList{u"serve"_s, u"--database"_s, databaseFile(), u"--port"_s, u"0"_s,
                             u"--port-file"_s, folder() + u"/port"_s, u"--trace"_s, folder() + u"/trace"_s} +
                     extraArguments);
    return waitUntilReady();
}

bool LocalWarehouse::waitUntilReady() {
    QElapsedTimer clock;
    clock.start();
    QByteArray output;
    while (clock.elapsed() < patienceMilliseconds) {
        if (!m_server.waitForReadyRead(patienceMilliseconds) && m_server.state() != QProcess::Running) {
            break;
        }
        output += m_server.readAll();
        const qsizetype at = output.indexOf("listening on 127.0.0.1:");
        if (at >= 0 && output.indexOf('\n', at) >= 0) {
            m_port = output.mid(output.indexOf(':', output.indexOf("127.0.0.1", at)) + 1)
                         .split('\n')
                         .first()
                         .trimmed()
                         .toUShort();
            m_why.clear();
            return m_port != 0;
        }
    }
    m_why = u"magdb did not start: "_s + m_server.errorString() + u' ' + QString::fromUtf8(output);
    kill();
    return false;
}

bool LocalWarehouse::stop() {
    if (!running()) {
        return false;
    }
    m_server.terminate();
    if (!m_server.waitForFinished(patienceMilliseconds)) {
        kill();
        return false;
    }
    return m_server.exitStatus() == QProcess::NormalExit && m_server.exitCode() == 0;
}

void LocalWarehouse::kill() {
    if (m_server.state() != QProcess::NotRunning) {
        m_server.kill();
        m_server.waitForFinished(patienceMilliseconds);
    }
}

void LocalWarehouse::freeze() {
    ::kill(static_cast<pid_t>(m_server.processId()), SIGSTOP);
    // The signal takes each thread on its own, some time after the call.
    QElapsedTimer clock;
    clock.start();
    while (!everyThreadStopped(m_server.processId()) && clock.elapsed() < patienceMilliseconds) {
        QThread::yieldCurrentThread();
    }
}

void LocalWarehouse::thaw() {
    ::kill(static_cast<pid_t>(m_server.processId()), SIGCONT);
}

QString LocalWarehouse::server() const {
    return u"127.0.0.1,"_s + QString::number(m_port);
}
QString LocalWarehouse::login() {
    return u"regalon"_s;
}
QString LocalWarehouse::password() {
    return u"Magazyn-2024"_s;
}
QString LocalWarehouse::database() {
    return u"MAGAZYN"_s;
}
QString LocalWarehouse::connectFile() const {
    return folder() + u"/connect.txt"_s;
}
QString LocalWarehouse::driveC() const {
    return folder() + u"/drive_c"_s;
}
QString LocalWarehouse::databaseFile() const {
    return folder() + u"/MAGAZYN.db"_s;
}

QString LocalWarehouse::connectionString() const {
    return connectionString(login(), password(), database());
}

QString LocalWarehouse::connectionString(const QString& user, const QString& pass,
                                         const QString& base) const {
    return u"Provider=SQLOLEDB.1;Password="_s + pass + u";Persist Security Info=False;User ID= "_s + user +
           u";Initial Catalog= "_s + base + u";Data Source="_s + server();
}

QList<LocalWarehouse::TraceEntry> LocalWarehouse::entries() const {
    QList<TraceEntry> found;
    QFile file(folder() + u"/trace"_s);
    if (!file.open(QIODevice::ReadOnly)) {
        return found;
    }
    file.seek(m_traceStart);
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        found.append(toEntry(line));
    }
    return found;
}

QStringList LocalWarehouse::trace() const {
    QStringList texts;
    const QList<TraceEntry> all = entries();
    for (const TraceEntry& entry : all) {
        texts.append((QStringList(entry.text) + entry.values).join(u'\t'));
    }
    return texts;
}

void LocalWarehouse::clearTrace() {
    m_traceStart = QFileInfo(folder() + u"/trace"_s).size();
}

bool LocalWarehouse::runScript(const QString& sql) {
    QFile script(folder() + u"/script.sql"_s);
    if (!script.open(QIODevice::WriteOnly) || script.write(sql.toUtf8()) < 0) {
        m_why = script.errorString();
        return false;
    }
    script.close();
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(magdb(), {u"run"_s, u"--database"_s, databaseFile(), script.fileName()});
    const bool ended = process.waitForFinished(patienceMilliseconds);
    m_why = QString::fromUtf8(process.readAll());
    return ended && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

bool LocalWarehouse::run(const QString& sql) {
    try {
        DbConnection connection;
        connection.Open(connectionString());
        connection.Execute(sql);
        return true;
    } catch (const RunTimeError& error) {
        m_why = QString::fromUtf8(error.what());
        return false;
    }
}

}  // namespace regalon::test
