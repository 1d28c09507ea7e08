// The picture of a location: how a stored one is shown, which file is taken, and what a save sends.
#include "map/ParamEditor.h"
#include "platform/Paths.h"
#include "platform/PictureFile.h"
#include "support/Events.h"
#include "support/OrdinaryUser.h"

#include <QAction>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QMimeDatabase>

#include <array>

namespace regalon {
namespace {

using test::kHeight;
using test::kPicture;
using test::kReadyToSave;
using test::kStatus;
using test::ParamEditor;
using test::picture;

const QString kTooLarge =
    QStringLiteral("Rozmiar wybranego pliku obrazka jest za duży. Preferowany rozmiar ponizej 3 MGB !!");
const QString kNoPicture = QStringLiteral(
    "Wybrany plik nie jest plikiem obrazka. Preferowane pliki to *.bmp , *.jpg , *.ico , *.tif !!");

/// A whole picture of two grey pixels, as a scanner writes it: the header, the pixels, and the directory that
/// describes them.
QByteArray tiff() {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    constexpr quint16 kShort = 3;
    constexpr quint16 kLong = 4;
    struct Entry {
        quint16 tag, type;
        quint32 value;
    };
    constexpr quint32 kPixels = 8;
    // Width, height, bits, no compression, black is zero, place, rows and length of the one strip.
    constexpr std::array<Entry, 8> kEntries = {{{256, kLong, 2},
                                                {257, kLong, 1},
                                                {258, kShort, 8},
                                                {259, kShort, 1},
                                                {262, kShort, 1},
                                                {273, kLong, kPixels},
                                                {278, kLong, 1},
                                                {279, kLong, 2}}};
    out.writeRawData("II*\0", 4);
    out << quint32{kPixels + 2};
    out << quint8{0} << quint8{255};
    out << quint16{kEntries.size()};
    for (const Entry& entry : kEntries)
        out << entry.tag << entry.type << quint32{1} << entry.value;
    out << quint32{0};
    return bytes;
}

class FrmMagCreatePicture : public ParamEditor {};

// ---------------------------------------------------------------- a stored picture

TEST_F(FrmMagCreatePicture, AStoredPictureIsShownByWayOfATemporaryFile) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("JPG").toBase64()));
    openOn(kPicture);
    EXPECT_TRUE(pictureFrame());
    EXPECT_EQ(shown().size(), QSize(40, 20));
    EXPECT_TRUE(value()->isHidden());
    EXPECT_TRUE(combo("cmbStatusLocation")->isHidden());
    EXPECT_FALSE(Paths::fileExists(QStringLiteral("C:\\Windows\\Temp\\1_1_1_1.bmp")));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreatePicture, AnEmptyPictureShowsTheFrameWithNothingInIt) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    openOn(kPicture);
    chooseFile(QStringLiteral("nowe.bmp"), picture("BMP"));
    store(QStringLiteral("Picture_pic"), QString());
    clickLocation(QStringLiteral("1_1_1_1"));
    pick("dtcParamLocation", kPicture);
    EXPECT_TRUE(pictureFrame());
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(box("txtFrmPicture")->text(), QString());
    EXPECT_EQ(value()->text(), QString());
}

TEST_F(FrmMagCreatePicture, TheListOfStatesGoesWithAStoredPictureOnly) {
    openOn(kStatus);
    choose("dtcParamLocation", kPicture);
    EXPECT_TRUE(pictureFrame());
    EXPECT_TRUE(combo("cmbStatusLocation")->isVisible());
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    choose("dtcParamLocation", kStatus);
    choose("dtcParamLocation", kPicture);
    EXPECT_TRUE(combo("cmbStatusLocation")->isHidden());
}

TEST_F(FrmMagCreatePicture, AStoredTextThatIsNoPictureIsReportedAndThePictureStaysEmpty) {
    for (const QString& bad : {QStringLiteral("Qk32DQ!?"), QStringLiteral("dG8gbmllIG9icmF6")}) {
        store(QStringLiteral("Picture_pic"), bad);
        messages.clear();
        openOn(kPicture);
        ASSERT_EQ(messages.count(), 1) << qPrintable(bad);
        EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - ShowPictureOnImageFields"));
        EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::InvalidPicture));
        EXPECT_TRUE(pictureFrame());
        EXPECT_TRUE(shown().isEmpty());
    }
    QFile::remove(Paths::toFile(QStringLiteral("C:\\Windows\\Temp\\1_1_1_1.bmp")));
}

TEST_F(FrmMagCreatePicture, ABrokenPictureLeavesNothingOfTheGoodOneBeforeIt) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("alter table kolv_mag_Location_Item add Second_pic nvarchar(max)"),
         QStringLiteral("drop view Kolv_vv_mag_Param_Location"),
         QStringLiteral("create view Kolv_vv_mag_Param_Location as select N'0' as ParamName, N'wybierz' as "
                        "ParamText union all select N'Picture_pic', N'Pierwszy' union all select "
                        "N'Second_pic', N'Drugi'")}))
        << qPrintable(warehouse.why());
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    store(QStringLiteral("Second_pic"), QStringLiteral("Qk32DQ!?"));
    openOn(QStringLiteral("Pierwszy"));
    ASSERT_FALSE(shown().isEmpty());
    choose("dtcParamLocation", QStringLiteral("Drugi"));
    EXPECT_EQ(messages.count(), 1);
    EXPECT_TRUE(shown().isEmpty());
}

// ---------------------------------------------------------------- the picture file

TEST_F(FrmMagCreatePicture, TheDialogOfThePictureBeginsInTheIconFolderAndShowsAllFiles) {
    openOn(kPicture);
    const QString path = chooseFile(QStringLiteral("wózek.jpg"), picture("JPG"));
    ASSERT_EQ(files.openings().size(), 1);
    EXPECT_EQ(files.openings().first().Title, QStringLiteral("Wybór pliku graficznego"));
    EXPECT_EQ(files.openings().first().Filter, QStringLiteral("Pliki graficzne|"));
    EXPECT_EQ(files.openings().first().InitDir, QStringLiteral("C:\\Regalon\\Ikony"));
    EXPECT_EQ(box("txtFrmPicture")->text(), path);
    EXPECT_EQ(value()->text(), QStringLiteral("wózek.jpg"));
    EXPECT_EQ(shown().size(), QSize(40, 20));
    EXPECT_EQ(savings().size(), 0);
}

TEST_F(FrmMagCreatePicture, ACancelledDialogChangesNothing) {
    openOn(kPicture);
    const QString path = chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    pickFile(QString());
    EXPECT_EQ(box("txtFrmPicture")->text(), path);
    EXPECT_EQ(shown().size(), QSize(40, 20));
}

TEST_F(FrmMagCreatePicture, AFileThatIsNotThereClearsThePicture) {
    openOn(kPicture);
    chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    pickFile(QStringLiteral("C:\\Regalon\\none.jpg"));
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(value()->text(), QStringLiteral("none.jpg"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreatePicture, APictureIsSavedInBase64AndShownAgain) {
    openOn(kPicture);
    const QByteArray bytes = picture("JPG");
    chooseFile(QStringLiteral("a.jpg"), bytes);
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(savings().first().mid(0, 8),
              QStringList({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"),
                           QStringLiteral("Picture_pic"), QString(), QString::fromLatin1(bytes.toBase64()),
                           QStringLiteral("pic")}));
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QString::fromLatin1(bytes.toBase64()));
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", kPicture);
    EXPECT_EQ(shown().size(), QSize(40, 20));
}

TEST_F(FrmMagCreatePicture, APictureOf3000000BytesIsTooLargeAndOneByteLessPasses) {
    openOn(kPicture);
    QByteArray bytes = picture("BMP");
    bytes.append(QByteArray(3000000 - bytes.size(), '\0'));
    chooseFile(QStringLiteral("duże.bmp"), bytes);
    save();
    expectNotice(kTooLarge);
    EXPECT_EQ(savings().size(), 0);
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QStringLiteral("NULL"));
    EXPECT_EQ(saveButton()->text(), kReadyToSave);
    messages.clear();
    bytes.chop(1);
    chooseFile(QStringLiteral("mniejsze.bmp"), bytes);
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(stored(QStringLiteral("len(Picture_pic)")), QStringLiteral("4000000"));
    EXPECT_EQ(QByteArray::fromBase64(stored(QStringLiteral("Picture_pic")).toLatin1()), bytes);
}

TEST_F(FrmMagCreatePicture, ATifIsRefusedAsNoPictureWithTheTextThatNamesTif) {
    ASSERT_EQ(QMimeDatabase().mimeTypeForData(tiff()).name(), QStringLiteral("image/tiff"));
    openOn(kPicture);
    const QString path = chooseFile(QStringLiteral("skan.tif"), tiff());
    EXPECT_EQ(box("txtFrmPicture")->text(), path);
    messages.clear();
    save();
    expectNotice(kNoPicture);
    EXPECT_EQ(savings().size(), 0);
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QStringLiteral("NULL"));
}

TEST_F(FrmMagCreatePicture, ATextCalledBmpIsRefusedAsNoPicture) {
    openOn(kPicture);
    chooseFile(QStringLiteral("lista.bmp"), "to nie jest obraz");
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - tlbPictureSur_ButtonClick"));
    EXPECT_TRUE(shown().isEmpty());
    messages.clear();
    save();
    expectNotice(kNoPicture);
    EXPECT_EQ(savings().size(), 0);
}

TEST_F(FrmMagCreatePicture, AFileThatMayNotBeReadIsAFailureAndNothingIsSaved) {
    openOn(kPicture);
    const QString path = chooseFile(QStringLiteral("tajne.jpg"), picture("JPG"));
    ASSERT_TRUE(QFile::setPermissions(Paths::toFile(path), {}));
    // Root alone may look into the folder of a test.
    ASSERT_TRUE(QFile::setPermissions(warehouse.server.folder(), QFile::Permissions(0x7777)));
    {
        const test::OrdinaryUser user;
        save();
    }
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - tlbSaveParamLocalization_ButtonClick"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::PathFileAccess));
    EXPECT_EQ(savings().size(), 0);
    EXPECT_EQ(saveButton()->text(), kReadyToSave);
}

TEST_F(FrmMagCreatePicture, WithoutANewFileAnEmptyBoxRemovesTheStoredPicture) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    openOn(kPicture);
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(savings().first().at(6), QString());
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QString());
}

TEST_F(FrmMagCreatePicture, AFileThatIsNotThereSendsItsShortNameWhichTheDatabaseRefuses) {
    openOn(kPicture);
    pickFile(QStringLiteral("C:\\Regalon\\none.jpg"));
    save();
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(savings().first().at(6), QStringLiteral("none.jpg"));
    expectNotice(QStringLiteral("Przekazany tekst nie jest obrazem. Wybierz plik obrazka."));
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QStringLiteral("NULL"));
}

TEST_F(FrmMagCreatePicture, AWordLeftByAnotherParameterIsRefusedAsAPictureAndTheStoredOneStays) {
    const QString kept = QString::fromLatin1(picture("BMP").toBase64());
    store(QStringLiteral("Height_int"), QStringLiteral("1200"));
    store(QStringLiteral("Picture_pic"), kept);
    openOn(kHeight);
    pick("dtcParamLocation", kPicture);
    ASSERT_EQ(value()->text(), QStringLiteral("1200"));
    save();
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(savings().first().mid(4, 4), QStringList({QStringLiteral("Picture_pic"), QString(),
                                                        QStringLiteral("1200"), QStringLiteral("pic")}));
    expectNotice(QStringLiteral("Przekazany tekst nie jest obrazem. Wybierz plik obrazka."));
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")).toStdString(), kept.toStdString());
    EXPECT_EQ(shown().size(), QSize(40, 20));
    EXPECT_EQ(saveButton()->text(), kReadyToSave);
}

TEST_F(FrmMagCreatePicture, AStoredPictureKeepsTheFileThatWasChosenForAnotherLocation) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", kPicture);
    const QString path = chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    clickLocation(QStringLiteral("1_1_1_1"));
    pick("dtcParamLocation", kPicture);
    EXPECT_EQ(box("txtFrmPicture")->text(), path);
}

TEST_F(FrmMagCreatePicture, EveryIconOfTheDeliveredFolderIsAPicture) {
    const QDir folder(warehouse.server.driveC() + QStringLiteral("/Regalon/Ikony"));
    const QStringList icons = folder.entryList({QStringLiteral("*.ico")});
    ASSERT_GT(icons.size(), 100);
    for (const QString& icon : icons)
        EXPECT_TRUE(isPictureFile(folder.filePath(icon))) << qPrintable(icon);
}

}  // namespace
}  // namespace regalon
