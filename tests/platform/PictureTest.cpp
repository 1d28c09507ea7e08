#include "Failing.h"
#include "IconFile.h"
#include "platform/Picture.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <gtest/gtest.h>

#include <iostream>

using namespace regalon;
using namespace regalon::test;

namespace {

class PictureTest : public ::testing::Test {
protected:
    PictureTest() : folder(qEnvironmentVariable("REGALON_DRIVE_C") + QStringLiteral("/Regalon/Ikony")) {
        QDir().mkpath(folder.path());
        Picture::clearCache();
    }

    void write(const char* name, const QByteArray& bytes) {
        writeFile(folder.filePath(QString::fromUtf8(name)), bytes);
    }
    static Picture load(const char* name) {
        return Picture::load(QStringLiteral("C:\\Regalon\\Ikony\\") + QString::fromUtf8(name));
    }
    static PictureFolder icons() { return PictureFolder(QStringLiteral("C:\\Regalon\\Ikony")); }
    static QColor colorOf(const Picture& picture, qreal scale) {
        return picture.pixmap(scale).toImage().pixelColor(0, 0);
    }

    QDir folder;
};

const QList<IconSize> threeSizes{
    {QSize(39, 33), Qt::blue}, {QSize(13, 11), Qt::red}, {QSize(26, 22), Qt::green}};

TEST_F(PictureTest, TheSmallestSizeIsTheLogicalOne) {
    write("x.ico", iconBytes(threeSizes));
    const Picture picture = load("x.ico");
    EXPECT_EQ(picture.size(), QSize(13, 11));
    EXPECT_EQ(picture.widthTwips(), 195);
    EXPECT_EQ(picture.heightTwips(), 165);
}

TEST_F(PictureTest, DenserScreensGetTheLargerSizes) {
    write("x.ico", iconBytes(threeSizes));
    const Picture picture = load("x.ico");
    EXPECT_EQ(colorOf(picture, 1.0), QColor(Qt::red));
    EXPECT_EQ(colorOf(picture, 1.5), QColor(Qt::green));
    EXPECT_EQ(colorOf(picture, 2.0), QColor(Qt::green));
    EXPECT_EQ(colorOf(picture, 3.0), QColor(Qt::blue));
    EXPECT_EQ(colorOf(picture, 9.0), QColor(Qt::blue));
    EXPECT_EQ(picture.pixmap(2.0).size(), QSize(26, 22));
}

TEST_F(PictureTest, AnEmptyPathIsTheEmptyPicture) {
    const Picture picture = Picture::load(QString());
    EXPECT_TRUE(picture.isEmpty());
    EXPECT_EQ(picture.size(), QSize(0, 0));
    EXPECT_TRUE(picture.pixmap(1).isNull());
}

TEST_F(PictureTest, FailuresHaveTheirNumbers) {
    write("broken.ico", QByteArray("\0\0\1\0\1\0garbage", 13));
    write("empty.ico", QByteArray());
    write("text.bmp", "not a picture");
    write("head.ico", QByteArray("\0\0\1\0", 4));
    write("promise.ico", QByteArray("\0\0\1\0\xff\xff", 6));
    QByteArray cut = iconBytes(threeSizes);
    cut.truncate(cut.size() / 3);
    write("cut.ico", cut);
    folder.mkdir(QStringLiteral("folder.ico"));
    for (const char* name : {"broken.ico", "empty.ico", "text.bmp", "head.ico", "promise.ico", "cut.ico"})
        EXPECT_EQ(failureOf([name] { load(name); }), RunTime::InvalidPicture) << name;
    EXPECT_EQ(failureOf([] { load("none.ico"); }), RunTime::FileNotFound);
    EXPECT_EQ(failureOf([] { load("folder.ico"); }), RunTime::PathFileAccess);
    EXPECT_EQ(failureOf([] { Picture::load(QStringLiteral("C:\\None\\x.ico")); }), RunTime::PathNotFound);
    EXPECT_EQ(failureOf([] { Picture::load(QStringLiteral("Q:\\x.ico")); }), RunTime::PathNotFound);
}

TEST_F(PictureTest, AnUndecodableLargeSizeLeavesTheSmallOne) {
    QByteArray bytes = iconBytes({{QSize(13, 11), Qt::red}, {QSize(26, 22), Qt::green}});
    bytes.chop(20);
    write("x.ico", bytes);
    EXPECT_EQ(colorOf(load("x.ico"), 2.0), QColor(Qt::red));
}

TEST_F(PictureTest, OtherFormatsAreOfOneSize) {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::yellow);
    image.save(folder.filePath(QStringLiteral("a.bmp")));
    const Picture picture = load("A.BMP");
    EXPECT_EQ(picture.size(), QSize(40, 20));
    EXPECT_EQ(colorOf(picture, 3.0), QColor(Qt::yellow));
}

TEST_F(PictureTest, AChangedFileIsReadAgain) {
    write("x.ico", iconBytes({{QSize(13, 11), Qt::red}}));
    EXPECT_EQ(colorOf(load("x.ico"), 1), QColor(Qt::red));
    write("x.ico", iconBytes({{QSize(26, 11), Qt::green}}));
    EXPECT_EQ(colorOf(load("x.ico"), 1), QColor(Qt::green));
    QFile::remove(folder.filePath(QStringLiteral("x.ico")));
    EXPECT_EQ(failureOf([] { load("x.ico"); }), RunTime::FileNotFound);
}

TEST_F(PictureTest, AnUnchangedFileIsNotDecodedAgain) {
    write("x.ico", iconBytes(threeSizes));
    EXPECT_EQ(load("x.ico").pixmap(1).cacheKey(), load("x.ico").pixmap(1).cacheKey());
}

TEST_F(PictureTest, AFolderGivesThePicturesOfItsPaths) {
    write("x.ico", iconBytes(threeSizes));
    const PictureFolder open = icons();
    EXPECT_EQ(open.path(QStringLiteral("x.ico")), QStringLiteral("C:\\Regalon\\Ikony\\x.ico"));
    const qint64 first = open.load(QStringLiteral("x.ico")).pixmap(1).cacheKey();
    EXPECT_EQ(open.load(QStringLiteral("x.ico")).pixmap(1).cacheKey(), first);
    EXPECT_EQ(open.load(QStringLiteral("X.ICO")).size(), QSize(13, 11)) << "names differ by case only";
    EXPECT_EQ(load("x.ico").pixmap(1).cacheKey(), first);
}

TEST_F(PictureTest, AnOpenFolderSeesWhatBecomesOfItsFiles) {
    write("x.ico", iconBytes({{QSize(13, 11), Qt::red}}));
    const PictureFolder open = icons();
    EXPECT_EQ(colorOf(open.load(QStringLiteral("x.ico")), 1), QColor(Qt::red));
    write("x.ico", iconBytes({{QSize(26, 11), Qt::green}}));
    EXPECT_EQ(colorOf(open.load(QStringLiteral("x.ico")), 1), QColor(Qt::green));
    QFile::remove(folder.filePath(QStringLiteral("x.ico")));
    EXPECT_EQ(failureOf([&] { open.load(QStringLiteral("x.ico")); }), RunTime::FileNotFound);
    EXPECT_EQ(failureOf([&] { open.load(QString()); }), RunTime::PathFileAccess) << "the folder itself";
}

TEST_F(PictureTest, AFileBelowTheFolderIsSeenAsWell) {
    folder.mkdir(QStringLiteral("szare"));
    write("szare/x.ico", iconBytes({{QSize(13, 11), Qt::red}}));
    const PictureFolder open = icons();
    EXPECT_EQ(colorOf(open.load(QStringLiteral("szare\\x.ico")), 1), QColor(Qt::red));
    write("szare/x.ico", iconBytes({{QSize(26, 11), Qt::green}}));
    EXPECT_EQ(colorOf(open.load(QStringLiteral("szare\\x.ico")), 1), QColor(Qt::green));
}

TEST_F(PictureTest, AFolderThatIsNotThereFailsAtEachPicture) {
    const PictureFolder none(QStringLiteral("C:\\None"));
    EXPECT_EQ(failureOf([&] { none.load(QStringLiteral("x.ico")); }), RunTime::PathNotFound);
    const PictureFolder noDrive(QStringLiteral("Q:"));
    EXPECT_EQ(failureOf([&] { noDrive.load(QStringLiteral("x.ico")); }), RunTime::PathNotFound);
}

TEST_F(PictureTest, AThousandKnownPicturesCostAFewMilliseconds) {
    QStringList paths;
    for (int i = 0; i < 1000; ++i) {
        const QString name = QStringLiteral("L_%1.ico").arg(i % 300);
        if (i < 300)
            writeFile(folder.filePath(name), iconBytes(threeSizes));
        paths.append(QStringLiteral("C:\\Regalon\\Ikony\\") + name);
    }
    QElapsedTimer timer;
    timer.start();
    for (const QString& path : std::as_const(paths))
        Picture::load(path);
    const double first = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    timer.restart();
    for (const QString& path : std::as_const(paths))
        Picture::load(path);
    const double again = static_cast<double>(timer.nsecsElapsed()) / 1e6;
    std::cout << "first " << first << " ms, again " << again << " ms\n";
    // A plain build needs about 2 ms; decoding a thousand files again would take a hundred.
    EXPECT_LT(again, 15.0);
}

}  // namespace
