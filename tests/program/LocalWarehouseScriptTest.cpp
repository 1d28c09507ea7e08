// scripts/local-warehouse, as the README tells people to use it.
#include "program/Client.h"
#include "program/Display.h"
#include "program/Plan.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <csignal>

namespace regalon::test {
namespace {

constexpr int patience = 120000;  // milliseconds

struct Result {
    int exitCode = -1;
    QString output;
    QString errors;
};

class LocalWarehouseScript : public testing::TestWithParam<const char*> {
protected:
    LocalWarehouseScript() : folder(top.path() + u'/' + QString::fromUtf8(GetParam())) {}
    ~LocalWarehouseScript() override { script(QStringLiteral("stop")); }

    static Result run(const QStringList& arguments) {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("BUILD"), QStringLiteral(REGALON_BINARY_DIR));
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(REGALON_SOURCE_DIR "/scripts/local-warehouse"), arguments);
        Result result;
        if (process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit) {
            result.exitCode = process.exitCode();
        }
        result.output = QString::fromUtf8(process.readAllStandardOutput());
        result.errors = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

    Result script(const QString& command) const { return run({command, folder}); }

    quint16 startServer() const {
        const Result result = script(QStringLiteral("start"));
        EXPECT_EQ(result.exitCode, 0) << qPrintable(result.errors);
        return result.output.trimmed().toUShort();
    }

    static bool answers(quint16 port) {
        QTcpSocket socket;
        socket.connectToHost(QStringLiteral("127.0.0.1"), port);
        return socket.waitForConnected(patience);
    }

    qint64 serverProcess() const {
        QFile file(folder + QStringLiteral("/magdb.pid"));
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed().toLongLong() : 0;
    }

    static bool alive(qint64 process) { return process > 0 && ::kill(static_cast<pid_t>(process), 0) == 0; }

    QTemporaryDir top;
    QString folder;
};

TEST_P(LocalWarehouseScript, PrintsThePortAloneAndLeavesFileServerAndDrive) {
    const Result result = script(QStringLiteral("start"));
    ASSERT_EQ(result.exitCode, 0) << qPrintable(result.errors);
    const quint16 port = result.output.trimmed().toUShort();
    EXPECT_EQ(result.output, QString::number(port) + u'\n');
    EXPECT_TRUE(answers(port));
    const QFileInfo file(folder + QStringLiteral("/connect.txt"));
    EXPECT_TRUE(file.isFile());
    EXPECT_EQ(file.permissions() & ~(QFile::ReadUser | QFile::WriteUser),
              QFile::ReadOwner | QFile::WriteOwner);
    EXPECT_TRUE(QFileInfo::exists(folder + QStringLiteral("/drive_c/Regalon/Ikony/x.ico")));
}

TEST_P(LocalWarehouseScript, StartedTwiceKeepsTheOneServer) {
    const quint16 port = startServer();
    const qint64 process = serverProcess();
    EXPECT_EQ(startServer(), port);
    EXPECT_EQ(serverProcess(), process);
}

TEST_P(LocalWarehouseScript, StopLeavesNothingRunningAndMayComeTwice) {
    const quint16 port = startServer();
    const qint64 process = serverProcess();
    ASSERT_TRUE(alive(process));
    EXPECT_EQ(script(QStringLiteral("stop")).exitCode, 0);
    EXPECT_FALSE(alive(process));
    EXPECT_FALSE(answers(port));
    EXPECT_EQ(script(QStringLiteral("stop")).exitCode, 0);
}

TEST_P(LocalWarehouseScript, KeepsTheDatabaseOverARestart) {
    startServer();
    ASSERT_EQ(script(QStringLiteral("stop")).exitCode, 0);
    QFile sql(top.path() + QStringLiteral("/mark.sql"));
    ASSERT_TRUE(sql.open(QIODevice::WriteOnly));
    sql.write("create table Znak (Nr int)\nGO\n");
    sql.close();
    const QString magdb = QStringLiteral(REGALON_BINARY_DIR "/bin/magdb");
    const QStringList first{QStringLiteral("run"), QStringLiteral("--database"),
                            folder + QStringLiteral("/MAGAZYN.db"), sql.fileName()};
    ASSERT_EQ(QProcess::execute(magdb, first), 0);
    startServer();
    ASSERT_EQ(script(QStringLiteral("stop")).exitCode, 0);
    ASSERT_TRUE(sql.open(QIODevice::WriteOnly | QIODevice::Truncate));
    sql.write("insert into Znak (Nr) values (1)\nGO\n");
    sql.close();
    EXPECT_EQ(QProcess::execute(magdb, first), 0);
}

TEST_P(LocalWarehouseScript, TakesTheDatabaseOfANewerBuildAndKeepsTheOldOneBeside) {
    startServer();
    ASSERT_EQ(script(QStringLiteral("stop")).exitCode, 0);
    QFile database(folder + QStringLiteral("/MAGAZYN.db"));
    ASSERT_TRUE(database.open(QIODevice::ReadOnly));
    const QByteArray before = database.readAll();
    database.close();
    QFile built(folder + QStringLiteral("/MAGAZYN.built"));
    ASSERT_TRUE(built.open(QIODevice::ReadWrite));
    ASSERT_TRUE(
        built.setFileTime(QDateTime::currentDateTime().addYears(-1), QFileDevice::FileModificationTime));
    built.close();
    EXPECT_TRUE(answers(startServer()));
    QFile old(folder + QStringLiteral("/MAGAZYN.db.old"));
    ASSERT_TRUE(old.open(QIODevice::ReadOnly));
    EXPECT_EQ(old.readAll(), before);
}

TEST_P(LocalWarehouseScript, ServesTheClientByTheDocumentedCommandLine) {
    Display display;
    ASSERT_TRUE(display.start()) << qPrintable(display.why());
    startServer();
    Client client(display);
    client.setEnvironment(QStringLiteral("REGALON_DRIVE_C"), folder + QStringLiteral("/drive_c"));
    ASSERT_TRUE(client.start({u'-' + folder + QStringLiteral("/connect.txt"), QStringLiteral("-1")}));
    ASSERT_FALSE(client.mainWindow().isEmpty());
    display.activate(client.mainWindow());
    display.key(QStringLiteral("alt+a"));
    display.key(QStringLiteral("Return"));
    EXPECT_TRUE(eventually([&] { return findPlan(display.picture()).has_value(); }));
    display.key(QStringLiteral("ctrl+x"));
    ASSERT_TRUE(client.answer(QStringLiteral("Info..."), QStringLiteral("alt+t")));
    EXPECT_EQ(client.exitCode(), 0);
}

TEST_P(LocalWarehouseScript, RefusesAnythingElseWithItsUsage) {
    EXPECT_EQ(run({}).exitCode, 2);
    EXPECT_EQ(run({QStringLiteral("start")}).exitCode, 2);
    EXPECT_EQ(script(QStringLiteral("restart")).exitCode, 2);
}

INSTANTIATE_TEST_SUITE_P(Folder, LocalWarehouseScript, testing::Values("plain", "z odstępem i ogonkiem ą"),
                         [](const testing::TestParamInfo<const char*>& folder) {
                             return std::string(folder.index == 0 ? "Plain" : "BlanksAndPolishLetters");
                         });

}  // namespace
}  // namespace regalon::test
