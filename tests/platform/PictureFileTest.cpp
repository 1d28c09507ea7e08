#include "Failing.h"
#include "IconFile.h"
#include "platform/Paths.h"
#include "platform/PictureFile.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

class PictureFile : public testing::Test {
protected:
    QString path(const QString& name) const { return m_folder.path() + QLatin1Char('/') + name; }
    bool taken(const QString& name, const QByteArray& bytes) const {
        writeFile(path(name), bytes);
        return isPictureFile(path(name));
    }
    static QByteArray picture(const char* format) {
        QImage image(20, 10, QImage::Format_RGB32);
        image.fill(Qt::red);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        return image.save(&buffer, format) ? bytes : QByteArray();
    }

    QTemporaryDir m_folder;
};

TEST_F(PictureFile, TakesJpegIconAndBitmap) {
    EXPECT_TRUE(taken(QStringLiteral("a.jpg"), picture("JPG")));
    EXPECT_TRUE(taken(QStringLiteral("a.bmp"), picture("BMP")));
    EXPECT_TRUE(taken(QStringLiteral("a.ico"), iconBytes({{QSize(16, 16), Qt::red}})));
}

TEST_F(PictureFile, GoesByTheContentAndNotByTheName) {
    EXPECT_TRUE(taken(QStringLiteral("zdjęcie"), picture("JPG")));
    EXPECT_TRUE(taken(QStringLiteral("a.txt"), picture("BMP")));
    EXPECT_FALSE(taken(QStringLiteral("text.bmp"), "to nie jest obraz"));
    EXPECT_FALSE(taken(QStringLiteral("letters.bmp"), "BM i dalej tekst"));
    EXPECT_FALSE(taken(QStringLiteral("empty.jpg"), QByteArray()));
    EXPECT_FALSE(taken(QStringLiteral("page.ico"), "<html>"));
}

TEST_F(PictureFile, RefusesEveryOtherKindOfPicture) {
    EXPECT_FALSE(taken(QStringLiteral("intel.tif"), QByteArray("II*\0\x08\0\0\0\0\0", 10)));
    EXPECT_FALSE(taken(QStringLiteral("motorola.tif"), QByteArray("MM\0*\0\0\0\x08\0\0", 10)));
    EXPECT_FALSE(taken(QStringLiteral("a.jpg"), picture("PNG")));
    EXPECT_FALSE(taken(QStringLiteral("a.gif"), "GIF89a\1\0\1\0"));
}

TEST_F(PictureFile, AFileThatCannotBeReadFails) {
    EXPECT_EQ(failureOf([&] { EXPECT_FALSE(isPictureFile(path(QStringLiteral("none.bmp")))); }),
              RunTime::FileNotFound);
    EXPECT_EQ(failureOf([&] { EXPECT_FALSE(isPictureFile(m_folder.path())); }), RunTime::PathFileAccess);
}

TEST_F(PictureFile, HasItsSizeInBytes) {
    writeFile(path(QStringLiteral("a")), QByteArray(2999999, 'x'));
    EXPECT_EQ(fileSize(path(QStringLiteral("a"))), 2999999);
    EXPECT_EQ(fileSize(path(QStringLiteral("b"))), 0);
}

}  // namespace
