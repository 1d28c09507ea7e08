#include "platform/Paths.h"
#include "platform/RunTimeError.h"
#include "support/Events.h"
#include "views/DetailWindow.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>

#include <sys/inotify.h>
#include <unistd.h>

namespace regalon {
namespace {

using test::DetailWindow;

QByteArray bitmap(int width, int height, const QColor& color) {
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "BMP");
    return bytes;
}

/// Tells what happens in a folder: "written NAME" and "deleted NAME".
class FolderWatch {
public:
    explicit FolderWatch(const QString& folder) : m_file(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
        inotify_add_watch(m_file, folder.toLocal8Bit().constData(), IN_CLOSE_WRITE | IN_DELETE);
    }
    ~FolderWatch() { close(m_file); }
    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;

    QStringList events() const {
        QStringList found;
        alignas(inotify_event) char buffer[4096];
        const ssize_t size = read(m_file, buffer, sizeof buffer);
        for (ssize_t at = 0; at < size;) {
            const auto* event = reinterpret_cast<const inotify_event*>(buffer + at);
            found.append(
                ((event->mask & IN_DELETE) != 0 ? QStringLiteral("deleted ") : QStringLiteral("written ")) +
                QString::fromLocal8Bit(event->name));
            at += static_cast<ssize_t>(sizeof(inotify_event) + event->len);
        }
        return found;
    }

private:
    int m_file;
};

/// The picture of the location 6/1/1/1.
class FrmMagWatchDetalPicture : public DetailWindow {
protected:
    void SetUp() override {
        DetailWindow::SetUp();
        addStand(QStringLiteral("2"));
    }
    void TearDown() override { QFile::remove(temporaryFile()); }

    static QString temporaryFile() { return Paths::toFile(QStringLiteral("C:\\Windows\\Temp\\6_1_1_1.bmp")); }

    void storePicture(const QString& base64) {
        assign(QStringLiteral("ItemCode,ItemName,Picture_pic,Description_char"),
               QStringLiteral("N'SUR-77',N'Śruba',N'%1',N'uwaga'").arg(base64));
    }
    void storePicture(const QByteArray& bytes) { storePicture(QString::fromLatin1(bytes.toBase64())); }

    /// The click failed at the picture alone: the rest of it is shown, and the picture is the old one.
    void expectFailedPicture() {
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchDetal - ShowPictureOnImageFields"));
        EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::InvalidPicture));
        EXPECT_EQ(text("lblSurowiecLocation"), QStringLiteral("SUR-77 - Śruba"));
        EXPECT_EQ(note("txtParamInfoLocation"), QStringLiteral("uwaga"));
        EXPECT_EQ(text("lblProcentData"), QStringLiteral("10"));
        EXPECT_EQ(picture().size(), QSize(40, 20));
    }
    void showGoodPicture() {
        storePicture(bitmap(40, 20, Qt::red));
        open();
        clickLocation(1, 1);
        ASSERT_EQ(picture().size(), QSize(40, 20));
        ASSERT_EQ(messages.count(), 0);
    }
};

TEST_F(FrmMagWatchDetalPicture, IsShownOnItsTab) {
    showGoodPicture();
    clickTab(2);
    const QImage shown = control<PictureBox>("impPictureParam")->grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.rect().center()), QColor(Qt::red));
}

TEST_F(FrmMagWatchDetalPicture, TwoClicksWriteAndDeleteTheTemporaryFileTwice) {
    storePicture(bitmap(40, 20, Qt::red));
    open();
    const FolderWatch temporary(Paths::toFile(QStringLiteral("C:\\Windows\\Temp")));
    const QStringList once = {QStringLiteral("written 6_1_1_1.bmp"), QStringLiteral("deleted 6_1_1_1.bmp")};
    clickLocation(1, 1);
    EXPECT_EQ(temporary.events(), once);
    clickLocation(1, 1);
    EXPECT_EQ(temporary.events(), once);
    EXPECT_FALSE(QFile::exists(temporaryFile()));
}

TEST_F(FrmMagWatchDetalPicture, ALocationWithoutOneShowsTheEmptyPicture) {
    showGoodPicture();
    storePicture(QString());
    clickLocation(1, 1);
    EXPECT_TRUE(picture().isEmpty());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchDetalPicture, AClickOnTheStandTakesItAway) {
    showGoodPicture();
    clickStand();
    EXPECT_TRUE(picture().isEmpty());
}

TEST_F(FrmMagWatchDetalPicture, BrokenBase64StopsAtThePictureAndTheClickGoesOn) {
    showGoodPicture();
    storePicture(QStringLiteral("Qk32DQ!?"));
    clickLocation(1, 1);
    expectFailedPicture();
    EXPECT_FALSE(QFile::exists(temporaryFile()));
}

TEST_F(FrmMagWatchDetalPicture, BytesThatAreNoPictureStopThereAndLeaveTheirFile) {
    showGoodPicture();
    storePicture(QByteArray("to nie jest obraz"));
    clickLocation(1, 1);
    expectFailedPicture();
    // The deleting step is not reached.
    EXPECT_TRUE(QFile::exists(temporaryFile()));
    messages.clear();
    storePicture(bitmap(40, 20, Qt::red));
    clickLocation(1, 1);
    EXPECT_EQ(messages.count(), 0);
    EXPECT_FALSE(QFile::exists(temporaryFile()));
}

TEST_F(FrmMagWatchDetalPicture, ATextOfBlanksIsNoPicture) {
    showGoodPicture();
    storePicture(QStringLiteral("   "));
    clickLocation(1, 1);
    expectFailedPicture();
}

TEST_F(FrmMagWatchDetalPicture, APictureOfThreeMegabytesIsShown) {
    const QByteArray bytes = bitmap(999, 999, Qt::blue);
    ASSERT_GT(bytes.size(), 2990000);
    ASSERT_LT(bytes.size(), 3000000);
    storePicture(bytes);
    open();
    clickLocation(1, 1);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(picture().size(), QSize(999, 999));
    clickTab(2);
    const QImage shown = control<PictureBox>("impPictureParam")->grab().toImage();
    EXPECT_EQ(shown.pixelColor(shown.rect().center()), QColor(Qt::blue));
}

TEST_F(FrmMagWatchDetalPicture, Base64InLinesIsRead) {
    QString lines;
    const QString base64 = QString::fromLatin1(bitmap(40, 20, Qt::red).toBase64());
    for (qsizetype at = 0; at < base64.size(); at += 76)
        lines += base64.mid(at, 76) + QStringLiteral("\r\n");
    storePicture(lines);
    open();
    clickLocation(1, 1);
    EXPECT_EQ(picture().size(), QSize(40, 20));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchDetalPicture, AFolderInTheFilesPlaceIsReportedAndTheClickGoesOn) {
    storePicture(bitmap(40, 20, Qt::red));
    open();
    ASSERT_TRUE(QDir().mkpath(temporaryFile()));
    clickLocation(1, 1);
    ASSERT_TRUE(QDir().rmdir(temporaryFile()));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchDetal - ShowPictureOnImageFields"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::PathFileAccess));
    EXPECT_EQ(note("txtParamInfoLocation"), QStringLiteral("uwaga"));
}

TEST_F(FrmMagWatchDetalPicture, APictureOfTheDemoIsShown) {
    const QString name = warehouse.value(QStringLiteral(
        "select min(L.LocationName) from kolv_mag_Location L inner join kolv_mag_Location_Item "
        "I on I.Rank = L.Rank and I.Stand = L.Stand and I.Shelf = L.Shelf and I.Location = "
        "L.Location where I.Picture_pic is not null"));
    const QStringList fields = name.split(QLatin1Char('_'));
    ASSERT_GE(fields.size(), 5);
    open(fields[0].toShort(), fields[1].toShort());
    clickLocation(fields[2].toInt(), fields[3].toInt());
    EXPECT_EQ(picture().size(), QSize(96, 72));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

}  // namespace
}  // namespace regalon
