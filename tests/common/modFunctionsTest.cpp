// The data source file of a run.
#include "common/modFunctions.h"
#include "platform/MsgBox.h"
#include "platform/Paths.h"
#include "platform/Settings.h"
#include "support/OrdinaryUser.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gtest/gtest.h>
#include <sys/stat.h>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

class DataSourceFile : public ::testing::Test {
protected:
    DataSourceFile() { QDir(m_drive.path()).mkpath(u"Regalon"_s); }
    ~DataSourceFile() override {
        QFile::setPermissions(inDrive(u"Regalon"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        Settings().apply();
    }
    void SetUp() override { set({}); }

    void set(const QString& folder) const {
        Settings settings;
        settings.PathMapping.DriveC = m_drive.path();
        settings.DsnFolder = folder;
        settings.apply();
    }
    QString inDrive(const QString& name) const { return m_drive.filePath(name); }
    QByteArray content(const QString& name) const {
        QFile file(inDrive(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    QStringList files(const QString& folder) const {
        return QDir(inDrive(folder)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    static QString write() { return WriteDsnFile(u"SRV1"_s, u"WMS"_s, u"sa"_s); }

    MsgBoxRecorder messages;

private:
    QTemporaryDir m_drive;
};

TEST_F(DataSourceFile, HoldsItsLinesAndNoPassword) {
    EXPECT_EQ(WriteDsnFile(u"SRV1,1433"_s, u"Żółw"_s, u"łukasz"_s),
              u"C:\\Regalon\\RegalonSRV1,1433Żółw.dsn"_s);
    EXPECT_EQ(content(u"Regalon/RegalonSRV1,1433Żółw.dsn"_s),
              "[ODBC]\r\nDRIVER=SQL Server\r\nUID=\xB3ukasz\r\nNetwork=DBMSSOCN\r\nLANGUAGE=us_english\r\n"
              "DATABASE=\xAF\xF3\xB3w\r\nSERVER=SRV1,1433\r\n\r\n");
}

TEST_F(DataSourceFile, HasANameWithoutTheBlanksAroundServerAndDatabase) {
    EXPECT_EQ(WriteDsnFile(u"  SRV 1 "_s, u" WMS  "_s, u"sa"_s), u"C:\\Regalon\\RegalonSRV 1WMS.dsn"_s);
    EXPECT_EQ(files(u"Regalon"_s), QStringList(u"RegalonSRV 1WMS.dsn"_s));
    EXPECT_TRUE(content(u"Regalon/RegalonSRV 1WMS.dsn"_s).contains("SERVER=  SRV 1 \r\n"))
        << "the text keeps them";
}

TEST_F(DataSourceFile, LiesInTheProgramsFolderWithoutADefaultFolder) {
    EXPECT_EQ(GetDefaultDsnDir(), QString());
    EXPECT_EQ(write(), u"C:\\Regalon\\RegalonSRV1WMS.dsn"_s);
    EXPECT_EQ(files(u"Regalon"_s), QStringList(u"RegalonSRV1WMS.dsn"_s));
}

TEST_F(DataSourceFile, LiesInTheDefaultFolder) {
    ASSERT_TRUE(QDir().mkpath(inDrive(u"Dsn"_s)));
    set(u"C:\\Dsn"_s);
    EXPECT_EQ(GetDefaultDsnDir(), u"C:\\Dsn"_s);
    EXPECT_EQ(write(), u"C:\\Dsn\\RegalonSRV1WMS.dsn"_s);
    EXPECT_EQ(files(u"Dsn"_s), QStringList(u"RegalonSRV1WMS.dsn"_s));
    EXPECT_EQ(files(u"Regalon"_s), QStringList());
}

TEST_F(DataSourceFile, LiesInADefaultFolderOfThisMachine) {
    ASSERT_TRUE(QDir().mkpath(inDrive(u"local"_s)));
    set(inDrive(u"local"_s));
    const QString path = write();
    EXPECT_EQ(path, inDrive(u"local"_s) + u"\\RegalonSRV1WMS.dsn"_s);
    EXPECT_EQ(files(u"local"_s), QStringList(u"RegalonSRV1WMS.dsn"_s));
    DeleteDsnFile(path);
    EXPECT_EQ(files(u"local"_s), QStringList());
}

TEST_F(DataSourceFile, ThatACrashHasLeftIsReplacedAndNotDoubled) {
    QFile old(inDrive(u"Regalon/RegalonSRV1WMS.dsn"_s));
    ASSERT_TRUE(old.open(QIODevice::WriteOnly));
    ASSERT_GT(old.write(QByteArray(5000, 'x')), 0);
    old.close();
    EXPECT_EQ(write(), u"C:\\Regalon\\RegalonSRV1WMS.dsn"_s);
    EXPECT_EQ(files(u"Regalon"_s), QStringList(u"RegalonSRV1WMS.dsn"_s));
    EXPECT_TRUE(content(u"Regalon/RegalonSRV1WMS.dsn"_s).startsWith("[ODBC]\r\n"));
    EXPECT_FALSE(content(u"Regalon/RegalonSRV1WMS.dsn"_s).contains('x'));
}

TEST_F(DataSourceFile, IsNoneAndSaysNothingWhereItCannotBeWritten) {
    set(u"C:\\Nowhere"_s);
    EXPECT_EQ(write(), QString());
    set(u"Q:\\Dsn"_s);
    EXPECT_EQ(write(), QString());
    set({});
    // A named instance puts a separator into the file's name.
    EXPECT_EQ(WriteDsnFile(u"SRV1\\SQL"_s, u"WMS"_s, u"sa"_s), QString());
    EXPECT_EQ(files(u"Regalon"_s), QStringList());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(DataSourceFile, IsNoneInThePlaceOfAPipe) {
    const QString pipe = inDrive(u"Regalon/RegalonSRV1WMS.dsn"_s);
    ASSERT_EQ(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    EXPECT_EQ(write(), QString());
    EXPECT_TRUE(QFileInfo::exists(pipe));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(DataSourceFile, IsNoneInAReadOnlyFolder) {
    ASSERT_TRUE(QFile::setPermissions(inDrive({}), QFile::Permissions(0x7777)));
    ASSERT_TRUE(QFile::setPermissions(inDrive(u"Regalon"_s), QFile::Permissions(0x7777)));
    {
        const test::OrdinaryUser user;
        const QString path = write();
        EXPECT_NE(path, QString()) << "where the folder may be written";
        DeleteDsnFile(path);
    }
    ASSERT_TRUE(QFile::setPermissions(inDrive(u"Regalon"_s), QFile::Permissions(0x5555)));
    {
        const test::OrdinaryUser user;
        EXPECT_EQ(write(), QString());
    }
    EXPECT_EQ(files(u"Regalon"_s), QStringList());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(DataSourceFile, IsDeletedAlsoWhenItIsReadOnly) {
    const QString path = write();
    ASSERT_TRUE(QFile::setPermissions(inDrive(u"Regalon/RegalonSRV1WMS.dsn"_s), QFile::ReadOwner));
    DeleteDsnFile(path);
    EXPECT_EQ(files(u"Regalon"_s), QStringList());
}

TEST_F(DataSourceFile, MayBeMissingWhenItIsDeleted) {
    DeleteDsnFile({});
    DeleteDsnFile(u"C:\\Regalon\\none.dsn"_s);
    DeleteDsnFile(u"Q:\\none.dsn"_s);
    EXPECT_EQ(messages.count(), 0);
}

}  // namespace
}  // namespace regalon
