#include "Failing.h"
#include "platform/Base64File.h"
#include "platform/Paths.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

using namespace regalon;
using regalon::test::failureOf;

namespace {

const QString target = QStringLiteral("C:\\Regalon\\base64.bin");

QByteArray written(const char* base64) {
    writeBase64(QString::fromUtf8(base64), target);
    QFile file(Paths::toFile(target));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

TEST(Base64File, HoldsTheBytesOfTheText) {
    EXPECT_EQ(written("aMWCb8WbxIc="), QByteArray("h\u0142o\u015b\u0107"));
    EXPECT_EQ(written("AP8A"), QByteArray("\0\xff\0", 3));
}

TEST(Base64File, IsWrittenOverWhatItHeld) {
    EXPECT_EQ(written("YWJjZGVm"), QByteArray("abcdef"));
    EXPECT_EQ(written("eA=="), QByteArray("x"));
}

TEST(Base64File, LineEndsAndBlanksInTheTextDoNotCount) {
    EXPECT_EQ(written("YWJj\r\nZGVm\r\n"), QByteArray("abcdef"));
    EXPECT_EQ(written("  \t\r\n"), QByteArray());
}

TEST(Base64File, ATextThatIsNoBase64IsNoPictureAndLeavesTheFileAlone) {
    EXPECT_EQ(written("YWJj"), QByteArray("abc"));
    for (const char* broken : {"YWJj!", "zażółć", "<html>", "YW=Jj"})
        EXPECT_EQ(failureOf([&] { writeBase64(QString::fromUtf8(broken), target); }), RunTime::InvalidPicture)
            << broken;
    QFile file(Paths::toFile(target));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), QByteArray("abc"));
}

TEST(Base64File, AFolderThatIsMissingAndAFolderInItsPlaceFail) {
    EXPECT_EQ(failureOf([] { writeBase64(QStringLiteral("eA=="), QStringLiteral("C:\\None\\x")); }),
              RunTime::PathNotFound);
    EXPECT_EQ(failureOf([] { writeBase64(QStringLiteral("eA=="), QStringLiteral("C:\\Regalon")); }),
              RunTime::PathFileAccess);
    // A disk without room takes the bytes and refuses them when they are written out.
    EXPECT_EQ(failureOf([] { writeBase64(QStringLiteral("eA=="), QStringLiteral("/dev/full")); }),
              RunTime::DeviceIOError);
}

TEST(Base64File, IsReadBackAsTheTextInOneLine) {
    EXPECT_EQ(written("aMWCb8WbxIc="), QByteArray("h\u0142o\u015b\u0107"));
    EXPECT_EQ(readBase64(target), QStringLiteral("aMWCb8WbxIc="));
    EXPECT_EQ(written("AP8A"), QByteArray("\0\xff\0", 3));
    EXPECT_EQ(readBase64(target), QStringLiteral("AP8A"));
    written("");
    EXPECT_EQ(readBase64(target), QString());
    const QByteArray large(100000, 'x');
    EXPECT_EQ(written(large.toBase64().constData()), large);
    EXPECT_EQ(readBase64(target), QString::fromLatin1(large.toBase64()));
}

TEST(Base64File, AMissingFileAndAFolderCannotBeRead) {
    EXPECT_EQ(failureOf([] { return readBase64(QStringLiteral("C:\\Regalon\\none.jpg")); }),
              RunTime::FileNotFound);
    EXPECT_EQ(failureOf([] { return readBase64(QStringLiteral("C:\\Regalon")); }), RunTime::PathFileAccess);
}

}  // namespace
