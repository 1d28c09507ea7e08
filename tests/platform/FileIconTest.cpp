#include "IconFile.h"
#include "platform/FileIcon.h"
#include "platform/IconBitmap.h"

#include <QApplication>
#include <QIcon>
#include <QTemporaryDir>
#include <QtEndian>

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

/// An .ico of one bitmap of two by two pixels: red and green above, blue and nothing below.
QByteArray bitmapIcon() {
    const auto bytes = [](std::initializer_list<int> values) {
        QByteArray all;
        for (const int value : values)
            all += static_cast<char>(value);
        return all;
    };
    QByteArray file = bytes({0, 0, 1, 0, 1, 0});
    file += bytes({2, 2, 0, 0, 1, 0, 32, 0, 64, 0, 0, 0, 22, 0, 0, 0});
    file += bytes({40, 0, 0, 0, 2, 0, 0, 0, 4, 0, 0, 0, 1, 0, 32, 0});
    file += QByteArray(24, '\0');
    // The bottom row first; blue, green, red, alpha.
    file += bytes({255, 0, 0, 255, 0, 0, 0, 0});
    file += bytes({0, 0, 255, 255, 0, 255, 0, 255});
    file += bytes({0x40, 0, 0, 0, 0, 0, 0, 0});
    return file;
}

TEST(IconBitmap, ReadsColoursRowsAndAlpha) {
    const QImage image = iconBitmap(bitmapIcon(), 0);
    ASSERT_EQ(image.size(), QSize(2, 2));
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(1, 0), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(0, 1), qRgb(0, 0, 255));
    EXPECT_EQ(qAlpha(image.pixel(1, 1)), 0);
}

TEST(IconBitmap, LeavesEveryOtherEntryAlone) {
    EXPECT_TRUE(iconBitmap(bitmapIcon(), 1).isNull());
    EXPECT_TRUE(iconBitmap(bitmapIcon(), -1).isNull());
    EXPECT_TRUE(iconBitmap(iconBytes({{QSize(16, 16), Qt::red}}), 0).isNull());
}

TEST(IconBitmap, NeverReadsBeyondTheFileWhateverItSays) {
    const QByteArray good = bitmapIcon();
    for (qsizetype length = 0; length < good.size() - 8; ++length)
        EXPECT_TRUE(iconBitmap(good.left(length), 0).isNull()) << length;
    for (qsizetype at = 6; at < 62; ++at) {
        for (const char value : {'\x00', '\x01', '\x7f', '\x80', '\xff'}) {
            QByteArray bad = good;
            bad[at] = value;
            const QImage image = iconBitmap(bad, 0);
            EXPECT_TRUE(image.isNull() || image.width() * image.height() <= 4) << at;
        }
    }
}

TEST(FileIcon, ShowsTheSizeThatFitsTheScreen) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("two.ico"));
    writeFile(file, iconBytes({{QSize(16, 16), Qt::red}, {QSize(32, 32), Qt::blue}}));
    const QIcon icon = fileIcon(file);
    EXPECT_EQ(icon.pixmap(QSize(16, 16), 1.0).toImage().pixelColor(8, 8), QColor(Qt::red));
    const QPixmap dense = icon.pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(dense.size(), QSize(32, 32));
    EXPECT_EQ(dense.devicePixelRatio(), 2.0);
    EXPECT_EQ(dense.toImage().pixelColor(8, 8), QColor(Qt::blue));
    EXPECT_EQ(icon.pixmap(QSize(8, 8), 1.0).size(), QSize(8, 8));
}

TEST(FileIcon, LooksOffWhenItsButtonIs) {
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("one.ico"));
    writeFile(file, iconBytes({{QSize(16, 16), Qt::red}}));
    const QIcon icon = fileIcon(file);
    const QColor off = icon.pixmap(QSize(16, 16), 1.0, QIcon::Disabled).toImage().pixelColor(8, 8);
    EXPECT_NE(off, icon.pixmap(QSize(16, 16), 1.0).toImage().pixelColor(8, 8));
}

TEST(FileIcon, ShowsNothingForAFileThatIsMissing) {
    const QIcon icon = fileIcon(QStringLiteral("/nowhere/none.ico"));
    EXPECT_TRUE(icon.pixmap(QSize(16, 16)).isNull());
}

}  // namespace
}  // namespace regalon::test
