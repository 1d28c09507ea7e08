#include "Failing.h"
#include "platform/Paths.h"

#include <QDir>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace regalon;
using regalon::test::failureOf;

namespace {

class PathsTest : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_home.isValid());
        Paths::Mapping mapping;
        mapping.DriveC = m_home.filePath(QStringLiteral("c"));
        mapping.Drives.insert(u'D', m_home.filePath(QStringLiteral("d")));
        mapping.Shares.insert(QStringLiteral("srv\\dane"), m_home.filePath(QStringLiteral("share")));
        Paths::setMapping(mapping);
        write(QStringLiteral("c/Regalon/connect.txt"));
        write(QStringLiteral("c/Regalon/Ikony/x.ico"));
        write(QStringLiteral("d/Dane.bmp"));
        write(QStringLiteral("share/Opis.txt"));
    }
    void TearDown() override { Paths::setMapping({}); }

    void write(const QString& name) {
        const QString file = m_home.filePath(name);
        QDir().mkpath(QFileInfo(file).path());
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
    }
    QString at(const char* name) const { return m_home.filePath(QString::fromUtf8(name)); }
    static QString file(const char* path) { return Paths::toFile(QString::fromUtf8(path)); }

    QTemporaryDir m_home;
};

TEST_F(PathsTest, DriveCIsTheMappedFolder) {
    EXPECT_EQ(file("C:\\Regalon\\connect.txt"), at("c/Regalon/connect.txt"));
    EXPECT_EQ(file("c:/Regalon\\connect.txt"), at("c/Regalon/connect.txt"));
    EXPECT_EQ(file("\\Regalon\\connect.txt"), at("c/Regalon/connect.txt"));
    EXPECT_EQ(file("C:\\"), at("c"));
    EXPECT_EQ(file("C:Regalon"), at("c/Regalon"));
}

TEST_F(PathsTest, CaseDoesNotMatterInAnyPart) {
    EXPECT_EQ(file("C:\\REGALON\\ikony\\X.ICO"), at("c/Regalon/Ikony/x.ico"));
    EXPECT_EQ(file("D:\\dane.BMP"), at("d/Dane.bmp"));
    EXPECT_EQ(file("\\\\SRV\\Dane\\opis.TXT"), at("share/Opis.txt"));
}

TEST_F(PathsTest, TheExactNameWinsOverOneOfOtherCase) {
    write(QStringLiteral("c/Regalon/CONNECT.TXT"));
    EXPECT_EQ(file("C:\\Regalon\\CONNECT.TXT"), at("c/Regalon/CONNECT.TXT"));
    EXPECT_EQ(file("C:\\Regalon\\connect.txt"), at("c/Regalon/connect.txt"));
    EXPECT_EQ(file("C:\\regalon\\Connect.txt"), file("C:\\regalon\\Connect.txt"));
}

TEST_F(PathsTest, ANewFileGetsItsNameInTheExistingFolder) {
    EXPECT_EQ(file("C:\\regalon\\Nowy\\Plik.TXT"), at("c/Regalon/Nowy/Plik.TXT"));
}

TEST_F(PathsTest, DotsNeverClimbAboveTheDrive) {
    EXPECT_EQ(file("C:\\..\\..\\Regalon\\.\\connect.txt"), at("c/Regalon/connect.txt"));
    EXPECT_EQ(file("C:\\Regalon\\..\\..\\d\\Dane.bmp"), at("c/d/Dane.bmp"));
    EXPECT_EQ(file("\\\\srv\\dane\\..\\..\\c\\x"), at("share/c/x"));
}

TEST_F(PathsTest, TemporaryFilesLieInAFolderOfThisProcessAlone) {
    const QString folder = file("C:\\Windows\\Temp");
    EXPECT_TRUE(folder.startsWith(Paths::machineTemporaryFolder() + u'/'));
    EXPECT_TRUE(QFileInfo(folder).isDir());
    constexpr QFileDevice::Permissions others =
        QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ReadOther | QFileDevice::WriteOther;
    EXPECT_EQ(QFileInfo(folder).permissions() & others, QFileDevice::Permissions());
    EXPECT_EQ(file("c:\\WINDOWS\\temp\\1_2_3_4.bmp"), folder + QStringLiteral("/1_2_3_4.bmp"));
    EXPECT_EQ(file("C:\\Windows\\Temporary\\x"), at("c/Windows/Temporary/x"));
    EXPECT_EQ(file("C:\\Windows\\Temp\\..\\x"), at("c/Windows/x"));
    EXPECT_EQ(file("D:\\Windows\\Temp\\x"), at("d/Windows/Temp/x"));
}

TEST_F(PathsTest, TheMachinesTemporaryFolderIsTheOneNamedOrElseTheCommonOne) {
    const QByteArray before = qgetenv("TMPDIR");
    const auto named = [](const QString& folder) {
        qputenv("TMPDIR", folder.toUtf8());
        return Paths::machineTemporaryFolder();
    };
    EXPECT_EQ(named(at("c/Regalon")), at("c/Regalon"));
    EXPECT_EQ(named(at("nowhere")), QStringLiteral("/tmp"));
    EXPECT_EQ(named(QStringLiteral("nowhere")), QStringLiteral("/tmp"));
    qunsetenv("TMPDIR");
    EXPECT_EQ(Paths::machineTemporaryFolder(), QStringLiteral("/tmp"));
    qputenv("TMPDIR", before);
}

TEST_F(PathsTest, UnmappedDrivesAndSharesLeadNowhere) {
    EXPECT_EQ(file("Q:\\x"), QString());
    EXPECT_EQ(file("\\\\other\\dane\\x"), QString());
    EXPECT_EQ(file("\\\\srv"), QString());
    EXPECT_EQ(file(""), QString());
    EXPECT_FALSE(Paths::fileExists(QStringLiteral("Q:\\x")));
}

TEST_F(PathsTest, PathsOfThisMachinePassThrough) {
    EXPECT_EQ(Paths::toFile(at("c/Regalon/CONNECT.txt")), at("c/Regalon/CONNECT.txt"));
    EXPECT_EQ(file("dir/connect.txt"), QStringLiteral("dir/connect.txt"));
    EXPECT_EQ(file("../dir/connect.txt"), QStringLiteral("../dir/connect.txt"));
    EXPECT_EQ(file("x"), QStringLiteral("x"));
}

TEST_F(PathsTest, ABackslashBehindAPathOfThisMachineSeparates) {
    EXPECT_EQ(Paths::toFile(at("c/Regalon/Ikony") + QStringLiteral("\\X.ico")), at("c/Regalon/Ikony/x.ico"));
}

TEST_F(PathsTest, RelativePathsStartAtTheCurrentFolder) {
    const QString before = QDir::currentPath();
    QDir::setCurrent(at("c"));
    EXPECT_EQ(file("regalon\\CONNECT.txt"), QStringLiteral("Regalon/connect.txt"));
    QDir::setCurrent(before);
}

TEST_F(PathsTest, WithoutMappingTheEnvironmentNamesDriveC) {
    Paths::setMapping({});
    EXPECT_EQ(Paths::driveC(), qEnvironmentVariable("REGALON_DRIVE_C"));
    const QByteArray named = qgetenv("REGALON_DRIVE_C");
    qunsetenv("REGALON_DRIVE_C");
    EXPECT_EQ(Paths::driveC(), qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/regalon/drive_c"));
    qputenv("REGALON_DRIVE_C", named);
}

TEST_F(PathsTest, FilesAndFoldersAreToldApart) {
    EXPECT_TRUE(Paths::fileExists(QStringLiteral("C:\\regalon\\connect.txt")));
    EXPECT_FALSE(Paths::fileExists(QStringLiteral("C:\\regalon")));
    EXPECT_TRUE(Paths::folderExists(QStringLiteral("C:\\regalon")));
    EXPECT_FALSE(Paths::folderExists(QStringLiteral("C:\\regalon\\connect.txt")));
}

TEST_F(PathsTest, ComposedPathsHaveOneSeparator) {
    EXPECT_EQ(Paths::composePath(QStringLiteral("C:\\Ikony"), QStringLiteral("x.ico")),
              QStringLiteral("C:\\Ikony\\x.ico"));
    EXPECT_EQ(Paths::composePath(QStringLiteral("C:\\"), QStringLiteral("x.ico")),
              QStringLiteral("C:\\x.ico"));
    EXPECT_EQ(Paths::composePath(QStringLiteral("/srv/ikony"), QStringLiteral("x.ico")),
              QStringLiteral("/srv/ikony/x.ico"));
    EXPECT_EQ(Paths::composePath(QString(), QStringLiteral("x.ico")), QStringLiteral("x.ico"));
}

TEST_F(PathsTest, OpeningFailsWithTheNumberOfItsReason) {
    const auto opening = [](const char* path, QIODevice::OpenMode mode) {
        return failureOf([&] {
            QFile file;
            Paths::open(file, QString::fromUtf8(path), mode);
        });
    };
    EXPECT_EQ(opening("C:\\Regalon\\connect.txt", QIODevice::ReadOnly), 0);
    EXPECT_EQ(opening("C:\\Regalon\\none.txt", QIODevice::ReadOnly), RunTime::FileNotFound);
    EXPECT_EQ(opening("C:\\None\\none.txt", QIODevice::ReadOnly), RunTime::PathNotFound);
    EXPECT_EQ(opening("C:\\None\\none.txt", QIODevice::WriteOnly), RunTime::PathNotFound);
    EXPECT_EQ(opening("Q:\\none.txt", QIODevice::WriteOnly), RunTime::PathNotFound);
    EXPECT_EQ(opening("C:\\Regalon", QIODevice::ReadOnly), RunTime::PathFileAccess);
    EXPECT_EQ(opening("C:\\Regalon", QIODevice::WriteOnly), RunTime::PathFileAccess);
    EXPECT_EQ(opening("", QIODevice::ReadOnly), RunTime::BadFileName);
}

TEST_F(PathsTest, OpeningAPipeFailsAtOnceAndDoesNotWaitForItsOtherEnd) {
    ASSERT_EQ(mkfifo(at("c/Regalon/rura").toUtf8().constData(), 0600), 0);
    for (const QIODevice::OpenModeFlag mode : {QIODevice::ReadOnly, QIODevice::WriteOnly}) {
        EXPECT_EQ(failureOf([mode] {
                      QFile file;
                      Paths::open(file, QStringLiteral("C:\\Regalon\\rura"), mode);
                  }),
                  RunTime::PathFileAccess);
    }
}

TEST_F(PathsTest, DeletingFailsWithTheNumberOfItsReason) {
    Paths::remove(QStringLiteral("C:\\regalon\\CONNECT.txt"));
    EXPECT_FALSE(QFile::exists(at("c/Regalon/connect.txt")));
    EXPECT_EQ(failureOf([] { Paths::remove(QStringLiteral("C:\\Regalon\\connect.txt")); }),
              RunTime::FileNotFound);
    EXPECT_EQ(failureOf([] { Paths::remove(QStringLiteral("C:\\Regalon")); }), RunTime::PathFileAccess);
    EXPECT_TRUE(QFileInfo(at("c/Regalon")).isDir());
}

TEST_F(PathsTest, AFileOfThisMachineHasItsPathOnItsDriveOrShare) {
    EXPECT_EQ(Paths::fromFile(at("c/Regalon/Ikony/x.ico")), QStringLiteral("C:\\Regalon\\Ikony\\x.ico"));
    EXPECT_EQ(Paths::fromFile(at("d/Dane.bmp")), QStringLiteral("D:\\Dane.bmp"));
    EXPECT_EQ(Paths::fromFile(at("share/Opis.txt")), QStringLiteral("\\\\srv\\dane\\Opis.txt"));
}

TEST_F(PathsTest, OfFoldersInsideEachOtherTheDeepestNamesTheFile) {
    Paths::Mapping mapping = Paths::mapping();
    mapping.Drives.insert(u'K', at("c/Regalon/Ikony/"));
    mapping.Drives.insert(u'L', at("c/Regalon/Ikony/x"));
    mapping.Drives.insert(u'Z', m_home.path());
    Paths::setMapping(mapping);
    EXPECT_EQ(Paths::fromFile(at("c/Regalon/connect.txt")), QStringLiteral("C:\\Regalon\\connect.txt"));
    EXPECT_EQ(Paths::fromFile(at("c/Regalon/Ikony/x.ico")), QStringLiteral("K:\\x.ico"));
}

TEST_F(PathsTest, AFileOutsideOfAllDrivesIsFoundAgainByItsPath) {
    write(QStringLiteral("obok/x.bmp"));
    const QString path = Paths::fromFile(at("obok/x.bmp"));
    EXPECT_TRUE(path.endsWith(QStringLiteral("\\obok\\x.bmp"))) << qPrintable(path);
    EXPECT_EQ(Paths::toFile(path), at("obok/x.bmp"));
}

}  // namespace
