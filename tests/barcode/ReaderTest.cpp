// What the routines draw, taken as a picture and given to a reader of barcodes.
#include "barcode/BarcodeForm.h"
#include "barcode/Zbar.h"
#include "barcode/Zint.h"
#include "barcode/clsEan128.h"
#include "barcode/clsEan13.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <random>

namespace regalon::test {
namespace {

using namespace Qt::StringLiterals;

constexpr int codesOfEachKind = 150;
/// Pixels of a module in a picture, below which this reader misses one symbol in five. Where the screen gives
/// fewer, each of its pixels is sampled several times, as a scanner's camera does.
constexpr int samplesNeeded = 2;
constexpr double beginX = 20;
constexpr double beginY = 5;
constexpr double height = 40;
constexpr qint16 points = 8;

class ReaderTest : public testing::Test {
protected:
    int number(int from, int to) { return std::uniform_int_distribution<int>(from, to)(random); }
    QString digits(qsizetype count) {
        QString text;
        while (text.size() < count)
            text += QChar(number('0', '9'));
        return text;
    }

    /// Keeps what the box shows, drawn at a module width, as a picture that should be read as `expected`;
    /// empty for one that should not.
    void take(const QString& expected, int width, int samples = samplesNeeded) {
        const QImage image = barcode.image();
        const int pixels = width * qRound(barcode.picBarCode.devicePixelRatioF());
        keep(pixels >= samples ? image : image.scaled(image.size() * samples / pixels), expected);
        barcode.picBarCode.clearMarks();
    }
    void keep(const QImage& image, const QString& expected) {
        const QString file = folder.filePath(QString::number(pictures.size()) + u".png"_s);
        ASSERT_TRUE(image.save(file));
        pictures.append({file, expected});
    }

    /// What was read in the pictures, in their order. One call reads all.
    QList<QStringList> read() {
        QStringList files;
        for (const auto& [file, expected] : pictures)
            files.append(file);
        const QHash<QString, QStringList> found = readByZbar(files);
        QList<QStringList> texts;
        for (const QString& file : files)
            texts.append(found.value(file));
        return texts;
    }

    void expectAllRead() {
        const QList<QStringList> texts = read();
        int decoded = 0;
        for (int i = 0; i < pictures.size(); ++i) {
            const QString& expected = pictures[i].second;
            const QStringList wanted = expected.isEmpty() ? QStringList() : QStringList{expected};
            EXPECT_EQ(texts[i], wanted)
                << "expected " << qPrintable(expected) << ", read " << qPrintable(texts[i].join(u' '));
            decoded += texts[i] == wanted && !expected.isEmpty() ? 1 : 0;
        }
        std::printf("%d of %d symbols decoded\n", decoded, static_cast<int>(pictures.size()));
    }

    std::mt19937 random{20261122};
    QTemporaryDir folder;
    QList<std::pair<QString, QString>> pictures;
    BarcodeForm barcode;
    clsEan128 code128;
    clsEan13 ean13;
};

/// As the reader names it: an odd number of digits has a zero in front.
QString asCode128(const QString& code) {
    return u"CODE-128:"_s + (code.size() % 2 == 0 ? code : u'0' + code);
}

TEST_F(ReaderTest, ReadsCode128OfTheLengthsThatHaveASpread) {
    for (int i = 0; i < codesOfEachKind; ++i) {
        const QString code = digits(1 + i % 39);
        for (const int width : {1, 2}) {
            EXPECT_TRUE(code128.PrintCodeEan128C(&barcode.form, code, beginX, beginY, height, width, points));
            take(asCode128(code), width);
        }
    }
    expectAllRead();
}

TEST_F(ReaderTest, ReadsTheReaderFormWithBracketsAndWithout) {
    for (int i = 0; i < codesOfEachKind; ++i) {
        const QString code =
            i % 2 == 0 ? u"01"_s + digits(13) + u"10"_s + digits(number(1, 20)) : digits(1 + i % 39);
        for (const int width : {1, 2}) {
            EXPECT_TRUE(code128.PrintCodeEan128CCzytnik(&barcode.form, code, beginX, beginY, height, width,
                                                        points, i % 3 != 0));
            take(asCode128(code), width);
        }
    }
    expectAllRead();
}

TEST_F(ReaderTest, ReadsEan13ThatBeginsWith5Or7) {
    for (int i = 0; i < codesOfEachKind; ++i) {
        const QString code = (i % 2 == 0 ? u"5"_s : u"7"_s) + digits(11);
        for (const int width : {1, 2}) {
            EXPECT_TRUE(ean13.PrintCodeEan13(&barcode.form, code, beginX, beginY, height, width, points));
            take(u"EAN-13:"_s + code + barcode.txtSumaKontrolana.text(), width);
        }
    }
    expectAllRead();
}

TEST_F(ReaderTest, ReadsNoEan13ThatBeginsWithAnotherDigit) {
    for (const QChar first : u"01234689"_s) {
        for (const int width : {1, 2}) {
            const QString code = first + digits(11);
            EXPECT_TRUE(ean13.PrintCodeEan13(&barcode.form, code, beginX, beginY, height, width, points));
            EXPECT_FALSE(barcode.bars().isEmpty());
            take({}, width);
        }
    }
    expectAllRead();
}

TEST_F(ReaderTest, ReadsNothingThatWasDrawnAtModuleWidth3) {
    EXPECT_TRUE(code128.PrintCodeEan128C(&barcode.form, u"123456"_s, beginX, beginY, height, 3, points));
    take({}, 3);
    EXPECT_TRUE(ean13.PrintCodeEan13(&barcode.form, u"590123412345"_s, beginX, beginY, height, 3, points));
    take({}, 3);
    expectAllRead();
}

/// The picture of an outside encoder's symbol with the margins that the drawn ones have.
QImage pictureOf(const QString& modules, int pixelsOfModule) {
    const int left = static_cast<int>(beginX);
    const int top = static_cast<int>(beginY);
    const int count = static_cast<int>(modules.size());
    QImage image(qRound((left + count) * 1.1), 60, QImage::Format_RGB32);
    image.fill(Qt::white);
    for (int i = 0; i < count; ++i) {
        for (int y = 0; y < height && modules[i] == u'1'; ++y)
            image.setPixelColor(left + i, top + y, Qt::black);
    }
    return image.scaled(image.size() * pixelsOfModule);
}

TEST_F(ReaderTest, MissesAtOnePixelAModuleOnlyWhatItMissesInPicturesOfLibzintToo) {
    Zint zint(Zint::Symbology::Ean13);
    for (int i = 0; i < codesOfEachKind; ++i) {
        const QString code = (i % 2 == 0 ? u"5"_s : u"7"_s) + digits(11);
        EXPECT_TRUE(ean13.PrintCodeEan13(&barcode.form, code, beginX, beginY, height, 1, points));
        take(u"EAN-13:"_s + code + barcode.txtSumaKontrolana.text(), 1, 1);
        ASSERT_TRUE(zint.encode(code.toLatin1()));
        keep(pictureOf(zint.modules(), qRound(barcode.picBarCode.devicePixelRatioF())), {});
    }
    const QList<QStringList> texts = read();
    int decoded = 0;
    for (int i = 0; i < texts.size(); i += 2) {
        EXPECT_TRUE(texts[i] == QStringList{pictures[i].second} || texts[i].isEmpty());
        EXPECT_EQ(texts[i].isEmpty(), texts[i + 1].isEmpty()) << qPrintable(pictures[i].second);
        decoded += texts[i].isEmpty() ? 0 : 1;
    }
    std::printf("%d of %d symbols decoded, of libzint the same\n", decoded, codesOfEachKind);
}

}  // namespace
}  // namespace regalon::test
