// The icon folder as the client finds it: files made by the real generator, read back by Qt's own .ico
// reader.

#include "IcoWriter.h"
#include "artwork/Icons.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace regalon::artwork {
namespace {

constexpr int scales[] = {1, 2, 3};

int generate(const QString& folder) {
    return QProcess::execute(QStringLiteral(REGALON_ARTWORK), {folder});
}

/// One icon folder for all tests of this process.
const QString& folder() {
    static const QTemporaryDir dir;
    static const QString path = [] {
        const QString made = dir.filePath(QStringLiteral("Ikony"));
        return generate(made) == 0 ? made : QString();
    }();
    return path;
}

QList<QImage> pictures(const QString& file) {
    QImageReader reader(file.startsWith(u':') ? file : folder() + u'/' + file);
    QList<QImage> images;
    for (int i = 0; i < reader.imageCount(); ++i) {
        reader.jumpToImage(i);
        images.append(reader.read());
    }
    return images;
}

QString number(int value) {
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}

QString fillName(const QString& family, QChar state, int percent) {
    return family + u'_' + state + u'_' + number(percent) + QStringLiteral(".ico");
}

struct Family {
    QString name;
    QString firstLook;
    QSize size;
};

QList<Family> families() {
    return {{QStringLiteral("LA"), QStringLiteral("x.ico"), QSize(13, 11)},
            {QStringLiteral("LB"), QStringLiteral("xx.ico"), QSize(27, 11)},
            {QStringLiteral("LC"), QStringLiteral("xxx.ico"), QSize(41, 11)}};
}

/// Every name that the client can compose, with its size at 1x.
QList<std::pair<QString, QSize>> composedNames() {
    QList<std::pair<QString, QSize>> names;
    for (const Family& family : families()) {
        names.append({family.firstLook, family.size});
        names.append({family.name + QStringLiteral("_R_Err.ico"), family.size});
        names.append({family.name + QStringLiteral("_M_00.ico"), family.size});
        for (int percent = 0; percent <= 100; ++percent) {
            names.append({fillName(family.name, u'P', percent), family.size});
            names.append({fillName(family.name, u'G', percent), family.size});
        }
    }
    const QSize stand(41, 18);
    names.append({QStringLiteral("Reg.ico"), stand});
    for (int row = 1; row <= 6; ++row) {
        for (int place = 1; place <= 40; ++place) {
            const QString tail =
                QString::number(row) + QStringLiteral("_S_") + number(place) + QStringLiteral(".ico");
            names.append({QStringLiteral("R") + tail, stand});
            names.append({QStringLiteral("RR") + tail, stand});
        }
    }
    names.append({QStringLiteral("k1.ico"), QSize(16, 16)});
    names.append({QStringLiteral("k2.ico"), QSize(16, 16)});
    for (const int image : {1, 2, 11, 14, 16, 24, 25, 37, 39, 40, 41, 42, 43}) {
        names.append({QStringLiteral("img_") + number(image) + QStringLiteral(".ico"), QSize(16, 16)});
    }
    names.append({QStringLiteral("exit.ico"), QSize(16, 16)});
    names.append({QStringLiteral("busy.ico"), QSize(32, 32)});
    return names;
}

/// Pixels of the middle row that differ from the empty look, partly covered ones counting by their share.
double barLength(const QImage& picture, const QImage& empty) {
    const int y = picture.height() / 2;
    const auto distance = [](QRgb a, QRgb b) {
        return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
    };
    const int edge = picture.height() / 11;
    const QRgb solid = picture.pixel(edge, y);
    const int whole = distance(solid, empty.pixel(edge, y));
    double length = 0;
    for (int x = edge; x < picture.width() - edge && whole > 0; ++x) {
        length += double(distance(picture.pixel(x, y), empty.pixel(x, y))) / whole;
    }
    return length;
}

QByteArray content(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

TEST(IconFolder, HoldsEveryNameThatTheClientCanComposeForScreensOfOneTwoAndThree) {
    ASSERT_FALSE(folder().isEmpty());
    for (const auto& [name, size] : composedNames()) {
        const QList<QImage> images = pictures(name);
        ASSERT_EQ(images.size(), 3) << qPrintable(name);
        for (int i = 0; i < 3; ++i) {
            ASSERT_FALSE(images[i].isNull()) << qPrintable(name) << " entry " << i;
            ASSERT_EQ(images[i].size(), size * scales[i]) << qPrintable(name) << " entry " << i;
        }
    }
}

TEST(IconFolder, IsTheSameInEveryRun) {
    const QTemporaryDir second;
    ASSERT_EQ(generate(second.path()), 0);
    const QStringList names = QDir(folder()).entryList(QDir::Files);
    EXPECT_GT(names.size(), 1100);
    EXPECT_EQ(names, QDir(second.path()).entryList(QDir::Files));
    for (const QString& name : names) {
        ASSERT_EQ(content(folder() + u'/' + name), content(second.filePath(name))) << qPrintable(name);
    }
}

TEST(IconFolder, ReadingTheFirstEntryGivesThePictureThatFitsThePlan) {
    EXPECT_EQ(QImage(folder() + QStringLiteral("/LB_P_50.ico")).size(), QSize(27, 11));
}

TEST(LocationIcon, BarNeverShrinksAsTheFillGrows) {
    for (const Family& family : families()) {
        for (const QChar state : {u'P', u'G'}) {
            const QList<QImage> empty = pictures(fillName(family.name, state, 0));
            for (int i = 0; i < 3; ++i) {
                double last = 0;
                for (int percent = 1; percent <= 100; ++percent) {
                    const double length =
                        barLength(pictures(fillName(family.name, state, percent))[i], empty[i]);
                    EXPECT_GE(length, last - 0.01)
                        << qPrintable(family.name) << percent << " at " << scales[i];
                    EXPECT_GT(length, 0);
                    last = length;
                }
            }
        }
    }
}

TEST(LocationIcon, BarIsAsLongAsTheFillSays) {
    for (const Family& family : families()) {
        const QImage empty = pictures(fillName(family.name, u'P', 0))[0];
        const int room = family.size.width() - 2;
        for (int percent = 10; percent <= 90; percent += 10) {
            const double length = barLength(pictures(fillName(family.name, u'P', percent))[0], empty);
            EXPECT_NEAR(length, room * percent / 100.0, 0.51) << qPrintable(family.name) << percent;
        }
    }
}

TEST(LocationIcon, EveryLevelHasItsOwnLookOnFineScreens) {
    for (const Family& family : families()) {
        for (const QChar state : {u'P', u'G'}) {
            QSet<QByteArray> looks;
            for (int percent = 0; percent <= 100; ++percent) {
                const QImage picture = pictures(fillName(family.name, state, percent))[2];
                looks.insert(
                    QByteArray(reinterpret_cast<const char*>(picture.constBits()), picture.sizeInBytes()));
            }
            EXPECT_EQ(looks.size(), 101) << qPrintable(family.name);
        }
    }
}

TEST(LocationIcon, OnlyAFullOneTouchesTheFarEnd) {
    for (const Family& family : families()) {
        const QImage empty = pictures(fillName(family.name, u'P', 0))[0];
        const int room = family.size.width() - 2;
        EXPECT_LT(barLength(pictures(fillName(family.name, u'P', 99))[0], empty), room);
        EXPECT_EQ(barLength(pictures(fillName(family.name, u'P', 100))[0], empty), room);
        EXPECT_GE(barLength(pictures(fillName(family.name, u'P', 1))[0], empty), 1);
    }
}

TEST(LocationIcon, BarDarkensWithTheFillSoThatItReadsWithoutColours) {
    int last = 256;
    for (int percent = 1; percent <= 100; ++percent) {
        const QImage picture = pictures(fillName(QStringLiteral("LC"), u'P', percent))[2];
        const int lightness = qGray(picture.pixel(3, picture.height() / 2));
        EXPECT_LE(lightness, last) << percent;
        last = lightness;
    }
    EXPECT_LT(last, 70);
}

TEST(LocationIcon, GreyLookHasNoColour) {
    for (const int percent : {0, 7, 50, 100}) {
        for (const QImage& picture : pictures(fillName(QStringLiteral("LA"), u'G', percent))) {
            for (int y = 0; y < picture.height(); ++y) {
                for (int x = 0; x < picture.width(); ++x) {
                    ASSERT_LT(QColor(picture.pixel(x, y)).hsvSaturation(), 30) << percent;
                }
            }
        }
    }
}

TEST(LocationIcon, SeveralMaterialsAndErrorLookLikeNoFill) {
    for (const Family& family : families()) {
        const QImage multi = pictures(family.name + QStringLiteral("_M_00.ico"))[0];
        const QImage error = pictures(family.name + QStringLiteral("_R_Err.ico"))[0];
        EXPECT_NE(multi, error);
        for (int percent = 0; percent <= 100; ++percent) {
            const QImage fill = pictures(fillName(family.name, u'P', percent))[0];
            EXPECT_NE(multi, fill);
            EXPECT_NE(error, fill);
        }
    }
}

TEST(StandIcon, EveryStandShowsAnotherNameAtEveryScale) {
    for (int i = 0; i < 3; ++i) {
        QSet<QByteArray> looks;
        for (int row = 1; row <= 6; ++row) {
            for (int place = 1; place <= 40; ++place) {
                for (const QString& kind : {QStringLiteral("R"), QStringLiteral("RR")}) {
                    const QImage picture = pictures(kind + QString::number(row) + QStringLiteral("_S_") +
                                                    number(place) + QStringLiteral(".ico"))[i];
                    looks.insert(QByteArray(reinterpret_cast<const char*>(picture.constBits()),
                                            picture.sizeInBytes()));
                }
            }
        }
        EXPECT_EQ(looks.size(), 480);
    }
}

TEST(RowIcon, AssignedAndOtherMaterialDiffer) {
    const QList<QImage> other = pictures(QStringLiteral("img_40.ico"));
    const QList<QImage> assigned = pictures(QStringLiteral("img_42.ico"));
    for (int i = 0; i < 3; ++i) {
        int different = 0;
        for (int y = 0; y < other[i].height(); ++y) {
            for (int x = 0; x < other[i].width(); ++x) {
                // Lightness alone tells them apart.
                different += std::abs(qGray(other[i].pixel(x, y)) - qGray(assigned[i].pixel(x, y))) > 60;
            }
        }
        EXPECT_GT(different, other[i].width() * other[i].height() / 4);
    }
}

TEST(ProgramIcons, AreTheFilesOfTheFolderCompiledIn) {
    loadProgramIcons();
    for (const QString& name :
         {QStringLiteral("exit.ico"), QStringLiteral("busy.ico"), QStringLiteral("door_1.ico"),
          QStringLiteral("door_2.ico"), QStringLiteral("regalon.ico"), QStringLiteral("folder.ico"),
          QStringLiteral("label.ico"), QStringLiteral("groups.ico"), QStringLiteral("left.ico"),
          QStringLiteral("right.ico")}) {
        const QByteArray inside = content(QStringLiteral(":/icons/") + name);
        EXPECT_FALSE(inside.isEmpty()) << qPrintable(name);
        EXPECT_EQ(inside, content(folder() + u'/' + name)) << qPrintable(name);
    }
    for (const int image : {1, 2, 11, 14, 16, 24, 25, 37, 39, 40, 41, 42, 43}) {
        EXPECT_EQ(pictures(rowIconPath(image)).size(), 3) << image;
    }
}

TEST(IcoFile, RefusesPicturesThatItsFieldsCannotTell) {
    EXPECT_TRUE(icoFile({QImage()}).isEmpty());
    EXPECT_TRUE(icoFile({QImage(257, 10, QImage::Format_ARGB32)}).isEmpty());
    QImage largest(256, 256, QImage::Format_ARGB32);
    largest.fill(Qt::red);
    EXPECT_FALSE(icoFile({largest}).isEmpty());
}

TEST(Generator, SaysWhatIsWrong) {
    QProcess process;
    process.start(QStringLiteral(REGALON_ARTWORK), {});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 2);
    process.start(QStringLiteral(REGALON_ARTWORK), {QStringLiteral("/proc/no/such/place")});
    ASSERT_TRUE(process.waitForFinished());
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_TRUE(process.readAllStandardError().contains("cannot make the folder"));
}

}  // namespace
}  // namespace regalon::artwork
