// The name of the error service's log, which depends on program, machine and moment. A small program that
// starts the log is copied under a name of its own for each test, so that tests that run at the same time are
// no "other instances" of each other.
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

/// A started program that holds its log until the object goes.
class Instance {
public:
    Instance(const QString& program, const QMap<QString, QString>& environment) {
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        for (auto one = environment.begin(); one != environment.end(); ++one) {
            variables.insert(one.key(), one.value());
        }
        m_process.setProcessEnvironment(variables);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(program, QStringList());
        while (!m_process.canReadLine() && m_process.waitForReadyRead(10'000)) {
        }
        m_line = QString::fromUtf8(m_process.readLine()).chopped(1);
    }
    ~Instance() {
        m_process.closeWriteChannel();
        m_process.waitForFinished();
    }
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;

    QString line() const { return m_line; }

private:
    QProcess m_process;
    QString m_line;
};

/// Hour, minute and second, one after the other, without zeros before them.
QString digitsOf(const QTime& moment) {
    return u"%1%2%3"_s.arg(moment.hour()).arg(moment.minute()).arg(moment.second());
}

class LogFileName : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_folder.isValid());
        // A dot inside the name belongs to the name; only the last ending does not.
        program = QDir(m_folder.path()).canonicalPath() + u"/Regalon 1.nowy.exe"_s;
        ASSERT_TRUE(QFile::copy(QStringLiteral(REGALON_LOG_FILE_NAME), program));
    }

    QString nameOn(const QString& machine) const {
        return Instance(program, {{u"LOG_MACHINE_NAME"_s, machine}}).line();
    }
    /// The name with this text between "_" and ".log".
    QString named(const QString& machinePart) const {
        return QDir(m_folder.path()).canonicalPath() + u"\\Regalon 1.nowy_"_s + machinePart + u".log"_s;
    }
    /// Whether the name holds, behind `before`, a moment between the two given ones.
    bool holdsMoment(const QString& name, const QString& before, const QDateTime& from,
                     const QDateTime& to) const {
        for (QDateTime moment = from; moment <= to.addSecs(1); moment = moment.addSecs(1)) {
            if (name == named(before + digitsOf(moment.time()))) {
                return true;
            }
        }
        return false;
    }

    QString program;

private:
    QTemporaryDir m_folder;
};

TEST_F(LogFileName, HoldsTheProgramWithoutItsEndingAndTheMachine) {
    EXPECT_EQ(nameOn(u"SRV-MAG1"_s), named(u"SRV-MAG1"_s));
}

TEST_F(LogFileName, HoldsTheNameOfThisMachine) {
    const QString machine = QSysInfo::machineHostName();
    const QDateTime before = QDateTime::currentDateTime();
    const QString name = Instance(program, {}).line();
    // A machine may have a longer name than the system knows.
    EXPECT_TRUE(machine.size() > 31 ? holdsMoment(name, QString(), before, QDateTime::currentDateTime())
                                    : name == named(machine))
        << qPrintable(name);
}

TEST_F(LogFileName, LosesBlanksAndLineEndsOfTheMachine) {
    EXPECT_EQ(nameOn(u"  \r\n SRV\rMA\nG 1\r "_s), named(u"SRVMAG 1"_s));
}

TEST_F(LogFileName, TakesAMachineNameThatFillsTheBuffer) {
    const QString machine(31, u'M');
    EXPECT_EQ(nameOn(machine), named(machine));
}

TEST_F(LogFileName, HoldsTheMomentInsteadOfAMachineNameThatTheBufferCannotHold) {
    const QDateTime before = QDateTime::currentDateTime();
    const QString name = nameOn(QString(32, u'M'));
    EXPECT_TRUE(holdsMoment(name, QString(), before, QDateTime::currentDateTime())) << qPrintable(name);
}

TEST_F(LogFileName, HoldsTheMomentInsteadOfAMachineWithoutAName) {
    for (const QString& machine : {u""_s, u" \r\n "_s}) {
        const QDateTime before = QDateTime::currentDateTime();
        const QString name = nameOn(machine);
        EXPECT_TRUE(holdsMoment(name, QString(), before, QDateTime::currentDateTime())) << qPrintable(name);
    }
}

TEST_F(LogFileName, HoldsTheMomentAsWellWhileAnotherInstanceRuns) {
    const QDateTime before = QDateTime::currentDateTime();
    {
        const Instance first(program, {{u"LOG_MACHINE_NAME"_s, u"SRV1"_s}});
        EXPECT_EQ(first.line(), named(u"SRV1"_s));
        const QString second = nameOn(u"SRV1"_s);
        EXPECT_TRUE(holdsMoment(second, u"SRV1"_s, before, QDateTime::currentDateTime()))
            << qPrintable(second);
    }
    EXPECT_EQ(nameOn(u"SRV1"_s), named(u"SRV1"_s));
}

TEST_F(LogFileName, AProgramOfAnotherFolderIsNoOtherInstance) {
    QTemporaryDir elsewhere;
    const QString other = elsewhere.filePath(u"Regalon 1.nowy.exe"_s);
    ASSERT_TRUE(QFile::copy(program, other));
    const Instance running(other, {});
    EXPECT_EQ(nameOn(u"SRV1"_s), named(u"SRV1"_s));
}

// A program that was replaced while it started does not know its folder any more.
TEST_F(LogFileName, IsNotThereWithoutTheProgramsFolderAndNothingIsShown) {
    EXPECT_EQ(Instance(program, {{u"LOG_PROGRAM_GONE"_s, u"1"_s}}).line(), QString());
}

TEST_F(LogFileName, MissingFolderIsShownInDebugMode) {
    const Instance started(program, {{u"LOG_PROGRAM_GONE"_s, u"1"_s}, {u"LOG_DEBUG_MODE"_s, u"1"_s}});
    EXPECT_TRUE(
        QRegularExpression(u"^clsError \\[SetLogging\\]\\|16\\|76\\|.+$"_s).match(started.line()).hasMatch())
        << qPrintable(started.line());
}

}  // namespace
}  // namespace regalon
