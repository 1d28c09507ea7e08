#include "common/AppContext.h"
#include "platform/CodePage.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "shell/ConnectionFile.h"
#include "shell/ShellFixture.h"
#include "shell/clsCrypt.h"
#include "support/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

namespace regalon {
namespace {

using test::sampleSettings;

ConnectionSettings parsed(const QString& line) {
    ConnectionSettings settings;
    ConnectionFile::parse(line, settings);
    return settings;
}

QByteArray fileOf(const QString& plain) {
    return CodePage::fromText(clsCrypt().DecryptString(plain)) + "\r\n";
}

class ConnectionFileOnDisk : public ::testing::Test {
protected:
    QString path() const { return m_folder.filePath(QStringLiteral("connect.txt")); }
    void put(const QByteArray& bytes) {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }
    QByteArray get() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// The settings after reading the file over others.
    ConnectionSettings readOver(ConnectionSettings settings) const {
        ConnectionFile::read(path(), settings);
        return settings;
    }
    QString after(const QByteArray& bytes) {
        put(bytes);
        return ConnectionFile::compose(readOver(sampleSettings()));
    }

    const QString untouched = ConnectionFile::compose(sampleSettings());
    QTemporaryDir m_folder;
};

TEST(ConnectionLine, IsWrittenInItsOrder) {
    ConnectionSettings settings;
    settings.Login = QStringLiteral("sa");
    settings.Haslo = QStringLiteral("abc");
    settings.Server = QStringLiteral("SRV1");
    settings.Baza = QStringLiteral("WMS");
    EXPECT_EQ(ConnectionFile::compose(settings),
              QStringLiteral("Login:sa;Haslo:abc;Server:SRV1;Baza:WMS;LoginSAP:;HasloSAP:;"));
}

TEST(ConnectionLine, IsReadInAnyOrder) {
    const ConnectionSettings settings =
        parsed(QStringLiteral("Baza:WMS;HasloSAP:h;LoginSAP:l;Server:SRV1;Haslo:abc;Login:sa;"));
    EXPECT_EQ(ConnectionFile::compose(settings),
              QStringLiteral("Login:sa;Haslo:abc;Server:SRV1;Baza:WMS;LoginSAP:l;HasloSAP:h;"));
}

TEST(ConnectionLine, LosesBlanksWhereverTheyStand) {
    EXPECT_EQ(parsed(QStringLiteral("Haslo:ab cd;")).Haslo, QStringLiteral("abcd"));
    EXPECT_EQ(parsed(QStringLiteral("  Ha slo : abc  ;")).Haslo, QStringLiteral("abc"));
    EXPECT_EQ(parsed(QStringLiteral("Haslo:a\tb;")).Haslo, QStringLiteral("a\tb"));
}

TEST(ConnectionLine, CutsAPasswordAtItsSemicolonAndIgnoresTheRest) {
    const ConnectionSettings settings = parsed(QStringLiteral("Login:sa;Haslo:ab;cd;Server:SRV1;"));
    EXPECT_EQ(settings.Haslo, QStringLiteral("ab"));
    EXPECT_EQ(settings.Server, QStringLiteral("SRV1"));
    EXPECT_EQ(settings.Login, QStringLiteral("sa"));
}

TEST(ConnectionLine, SplitsAtTheFirstColonOnly) {
    EXPECT_EQ(parsed(QStringLiteral("Haslo:a:b::c;")).Haslo, QStringLiteral("a:b::c"));
}

TEST(ConnectionLine, KnowsItsKeysByLetterCase) {
    const ConnectionSettings settings = parsed(QStringLiteral("login:x;HASLO:y;Serwer:z;:w;;Baza:b;"));
    EXPECT_EQ(ConnectionFile::compose(settings),
              QStringLiteral("Login:;Haslo:;Server:;Baza:b;LoginSAP:;HasloSAP:;"));
}

TEST(ConnectionLine, IgnoresWhatStandsBehindTheLastSemicolon) {
    EXPECT_EQ(parsed(QStringLiteral("Login:sa;Haslo:abc")).Haslo, QString());
}

TEST_F(ConnectionFileOnDisk, IsOneScrambledLineThatReadsBack) {
    ConnectionFile::write(path(), sampleSettings());
    const QByteArray bytes = get();
    EXPECT_TRUE(bytes.startsWith("QX"));
    EXPECT_TRUE(bytes.endsWith("\r\n"));
    EXPECT_EQ(bytes.count('\n'), 1);
    EXPECT_FALSE(bytes.contains("SRV1"));
    EXPECT_EQ(ConnectionFile::compose(readOver({})), untouched);
}

TEST(ConnectionFileOfAnotherRun, ReadsTheSame) {
    const QString folder = QStringLiteral(REGALON_SOURCE_DIR "/tests/shell/fuzz/seeds/");
    ConnectionSettings settings;
    ConnectionFile::read(folder + QStringLiteral("polish"), settings);
    EXPECT_EQ(ConnectionFile::compose(settings),
              QStringLiteral("Login:sa;Haslo:zażółć;Server:SRV1;Baza:WMS;LoginSAP:manager;HasloSAP:tajne;"));
}

TEST_F(ConnectionFileOnDisk, CanBeReadByItsOwnerOnly) {
    ConnectionFile::write(path(), sampleSettings());
    struct stat status = {};
    ASSERT_EQ(stat(qPrintable(path()), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
    // Also where an open file stood before.
    QFile::remove(path());
    put("old");
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::Permissions(0x6666)));
    ConnectionFile::write(path(), sampleSettings());
    ASSERT_EQ(stat(qPrintable(path()), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(ConnectionFileOnDisk, ThatIsMissingOrEmptyOrTruncatedLeavesTheSettings) {
    EXPECT_EQ(ConnectionFile::compose(readOver(sampleSettings())), untouched);
    EXPECT_EQ(after(""), untouched);
    EXPECT_EQ(after("\r\n"), untouched);
    EXPECT_EQ(after("QX"), untouched);
    const QByteArray whole = fileOf(QStringLiteral("Login:other;Haslo:abc;"));
    EXPECT_EQ(after(whole.left(10)), untouched);
    put(whole.left(3 + 12 + 4));
    EXPECT_EQ(readOver(sampleSettings()).Login, QStringLiteral("other"));
    EXPECT_EQ(readOver(sampleSettings()).Haslo, QStringLiteral("zażółć"));
}

TEST_F(ConnectionFileOnDisk, OfGarbageLeavesTheSettings) {
    QByteArray all;
    for (int code = 0; code < 256; ++code) {
        all += static_cast<char>(code);
    }
    EXPECT_EQ(after(all), untouched);
    EXPECT_EQ(after(QByteArray(100000, '\0')), untouched);
    EXPECT_EQ(after(QByteArray(5000, '\xff')), untouched);
    EXPECT_EQ(after("Login:sa;Haslo:abc;Server:SRV1;"), untouched);
    EXPECT_EQ(after("<?xml version=\"1.0\"?><connection/>\n"), untouched);
}

TEST_F(ConnectionFileOnDisk, ThatIsAFolderLeavesTheSettings) {
    ConnectionSettings settings = sampleSettings();
    ConnectionFile::read(m_folder.path(), settings);
    ConnectionFile::read({}, settings);
    ConnectionFile::read(QStringLiteral("Q:\\nowhere\\connect.txt"), settings);
    EXPECT_EQ(ConnectionFile::compose(settings), untouched);
}

TEST_F(ConnectionFileOnDisk, ThatIsTooLongLosesItsLastSettings) {
    ConnectionSettings settings = sampleSettings();
    settings.Haslo = QString(250, u'h');
    ConnectionFile::write(path(), settings);
    EXPECT_EQ(get().size(), ConnectionFile::compose(settings).size() + 4 + 2);
    const ConnectionSettings back = readOver({});
    EXPECT_EQ(back.Login, QStringLiteral("sa"));
    EXPECT_EQ(back.Haslo, QString());
    EXPECT_EQ(back.Server, QString());
    EXPECT_EQ(back.Baza, QString());
}

TEST_F(ConnectionFileOnDisk, EndsItsLineAtCrLfOrACrOrLfAlone) {
    const QByteArray line = fileOf(QStringLiteral("Login:one;")).chopped(2);
    const QByteArray second = fileOf(QStringLiteral("Login:two;"));
    for (const QByteArray& end : {QByteArray("\r\n"), QByteArray("\r"), QByteArray("\n")}) {
        put(line + end + second);
        EXPECT_EQ(readOver({}).Login, QStringLiteral("one"));
    }
    put(line);
    EXPECT_EQ(readOver({}).Login, QStringLiteral("one"));
}

TEST_F(ConnectionFileOnDisk, StaysAsItWasWhenACharacterCannotBeScrambled) {
    put("old");
    ConnectionSettings settings = sampleSettings();
    settings.Haslo = QString(60, u'a') + CodePage::charOf(255);
    EXPECT_THROW(ConnectionFile::write(path(), settings), RunTimeError);
    EXPECT_EQ(get(), "old");
}

/// No file grows beyond `bytes` while it lives, as on a full disk.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes) : m_signal(std::signal(SIGXFSZ, SIG_IGN)) {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_signal);
    }
    FileSizeLimit(const FileSizeLimit&) = delete;
    FileSizeLimit& operator=(const FileSizeLimit&) = delete;

private:
    rlimit m_before{};
    void (*m_signal)(int);
};

TEST_F(ConnectionFileOnDisk, StaysAsItWasWhenTheNewOneCannotBeWrittenToItsEnd) {
    put("old");
    {
        const FileSizeLimit limit(10);
        EXPECT_THROW(ConnectionFile::write(path(), sampleSettings()), RunTimeError);
    }
    EXPECT_EQ(get(), "old");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList{QStringLiteral("connect.txt")});
}

TEST_F(ConnectionFileOnDisk, ThatIsReadOnlyIsNotReplaced) {
    put("old");
    ASSERT_TRUE(QFile::setPermissions(path(), QFile::Permissions(0x4444)));
    ASSERT_TRUE(QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7777)));
    qint32 number = 0;
    {
        const test::OrdinaryUser user;
        try {
            ConnectionFile::write(path(), sampleSettings());
        } catch (const RunTimeError& error) {
            number = error.number();
        }
    }
    EXPECT_EQ(number, 75);
    EXPECT_EQ(get(), "old");
}

TEST_F(ConnectionFileOnDisk, BehindALinkIsReplacedAndTheLinkStays) {
    put("old");
    const QString link = m_folder.filePath(QStringLiteral("link.txt"));
    ASSERT_TRUE(QFile::link(path(), link));
    ConnectionFile::write(link, sampleSettings());
    EXPECT_TRUE(QFileInfo(link).isSymLink());
    EXPECT_EQ(ConnectionFile::compose(readOver({})), untouched);
}

TEST_F(ConnectionFileOnDisk, InAMissingFolderFails) {
    EXPECT_THROW(
        ConnectionFile::write(m_folder.filePath(QStringLiteral("no/such/connect.txt")), sampleSettings()),
        RunTimeError);
}

}  // namespace
}  // namespace regalon
