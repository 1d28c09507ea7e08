// regalon-connect as scripts use it.
#include "common/AppContext.h"
#include "shell/ConnectionFile.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace regalon {
namespace {

struct Outcome {
    int code;
    QString error;
};

Outcome run(const QStringList& arguments, const QString& input) {
    QProcess process;
    process.start(QStringLiteral(REGALON_CONNECT), arguments);
    process.write(input.toUtf8());
    process.closeWriteChannel();
    process.waitForFinished();
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardError())};
}

class ConnectProgram : public ::testing::Test {
protected:
    QString file() const { return m_folder.filePath(QStringLiteral("connect.txt")); }
    QTemporaryDir m_folder;
};

TEST_F(ConnectProgram, WritesAFileThatTheClientReads) {
    const Outcome outcome =
        run({file()}, QStringLiteral("Login:regalon\nHaslo:za:żółć\n\nServer:127.0.0.1,1433\nBaza:MAGAZYN"));
    EXPECT_EQ(outcome.code, 0) << qPrintable(outcome.error);
    ConnectionSettings settings;
    ConnectionFile::read(file(), settings);
    EXPECT_EQ(ConnectionFile::compose(settings),
              QStringLiteral(
                  "Login:regalon;Haslo:za:żółć;Server:127.0.0.1,1433;Baza:MAGAZYN;LoginSAP:;HasloSAP:;"));
    EXPECT_EQ(QFile::permissions(file()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
}

TEST_F(ConnectProgram, RefusesWhatTheFileCannotKeep) {
    for (const QString& input :
         {QStringLiteral("Passwort:x"), QStringLiteral("Haslo:a b"), QStringLiteral("Haslo:a;b"),
          QStringLiteral("Haslo"), QStringLiteral("Haslo:") + QString(300, u'x'),
          QStringLiteral("Haslo:日本")}) {
        EXPECT_EQ(run({file()}, input).code, 1) << qPrintable(input.left(20));
        EXPECT_FALSE(QFile::exists(file())) << qPrintable(input.left(20));
    }
}

TEST_F(ConnectProgram, SaysHowItIsUsed) {
    EXPECT_EQ(run({}, {}).code, 2);
    EXPECT_TRUE(run({}, {}).error.startsWith(QStringLiteral("usage: regalon-connect FILE")));
}

TEST_F(ConnectProgram, SaysWhereItCannotWrite) {
    const Outcome outcome =
        run({m_folder.filePath(QStringLiteral("no/connect.txt"))}, QStringLiteral("Login:a"));
    EXPECT_EQ(outcome.code, 1);
    EXPECT_TRUE(outcome.error.contains(QStringLiteral("no/connect.txt")));
}

}  // namespace
}  // namespace regalon
