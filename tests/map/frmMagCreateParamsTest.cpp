// The parameters of a location: the look of each kind, the picture file, and what a save sends.
#include "common/DbConnection.h"
#include "map/LayoutEditor.h"
#include "platform/Paths.h"
#include "platform/PictureBox.h"
#include "platform/PictureFile.h"
#include "platform/Twips.h"
#include "support/Events.h"
#include "support/OrdinaryUser.h"

#include <QAction>
#include <QBuffer>
#include <QCoreApplication>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QMimeDatabase>
#include <QTimer>
#include <QTimerEvent>

#include <array>

namespace regalon {
namespace {

using test::EmptyHallEditor;

const QString kTooLarge =
    QStringLiteral("Rozmiar wybranego pliku obrazka jest za duży. Preferowany rozmiar ponizej 3 MGB !!");
const QString kNoPicture = QStringLiteral(
    "Wybrany plik nie jest plikiem obrazka. Preferowane pliki to *.bmp , *.jpg , *.ico , *.tif !!");

// As the view of parameters calls them.
const QString kHeight = QStringLiteral("Wysokość [mm]");
const QString kStatus = QStringLiteral("Status lokalizacji");
const QString kPicture = QStringLiteral("Zdjęcie");
const QString kDescription = QStringLiteral("Opis");

QByteArray picture(const char* format) {
    QImage image(40, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, format);
    return bytes;
}

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

/// The locations 1/1/1/1 and 1/1/1/2, of which the first has a row.
class FrmMagCreateParams : public EmptyHallEditor {
protected:
    void SetUp() override {
        EmptyHallEditor::SetUp();
        addStand(1, 1, QStringLiteral("2"));
        ASSERT_TRUE(warehouse.run({QStringLiteral(
            "insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,GroupSur) "
            "values (1,1,1,1,N'SUR-1',N'Śruba',0)")}))
            << qPrintable(warehouse.why());
    }

    void store(const QString& column, const QString& value) {
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("update kolv_mag_Location_Item set %1 = N'%2'").arg(column, value)}))
            << qPrintable(warehouse.why());
    }
    QString stored(const QString& column) {
        return warehouse.value(QStringLiteral("select %1 from kolv_mag_Location_Item").arg(column));
    }
    /// Opens the window with a parameter of 1/1/1/1 chosen.
    void openOn(const QString& parameter) {
        open();
        clickLocation(QStringLiteral("1_1_1_1"));
        choose("dtcParamLocation", parameter);
        warehouse.server.clearTrace();
    }

    QLineEdit* value() const { return box("txtParamValueLocalization"); }
    QTimer* timer() const { return control<QTimer>("Timer1"); }
    Picture shown() const { return control<PictureBox>("impPictureSur")->picture(); }
    bool pictureFrame() const { return frame("frmWathSurPicture")->isVisible(); }
    QString saveCaption() const { return toolBar("tlbSaveParamLocalization")->button(1)->text(); }
    qint64 saveImage() const { return toolBar("tlbSaveParamLocalization")->button(1)->icon().cacheKey(); }
    void save() { clickButton("tlbSaveParamLocalization", "key_Save"); }
    void tick() {
        ASSERT_TRUE(timer()->isActive());
        QTimerEvent event(timer()->timerId());
        QCoreApplication::sendEvent(timer(), &event);
    }
    QList<QStringList> savings() const { return warehouse.calls(QStringLiteral("kolv_mag_Add_Value_Param")); }

    /// Puts a file on drive C and chooses it in the dialog of the picture.
    QString chooseFile(const QString& name, const QByteArray& bytes) {
        const QString path = QStringLiteral("C:\\Regalon\\") + name;
        QFile file(Paths::toFile(path));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("A test file could not be written.");
        file.close();
        pickFile(path);
        return path;
    }
    void pickFile(const QString& path) {
        files.answer(path);
        clickButton("tlbPictureSur", "key_Path");
    }
};

// ---------------------------------------------------------------- the look of each kind

TEST_F(FrmMagCreateParams, WithoutAParameterNothingCanBeEdited) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    openOn(kPicture);
    ASSERT_TRUE(pictureFrame());
    choose("dtcParamLocation", QStringLiteral("wybierz"));
    EXPECT_FALSE(pictureFrame());
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_TRUE(value()->isHidden());
    EXPECT_EQ(value()->text(), QString());
    EXPECT_TRUE(combo("cmbStatusLocation")->isHidden());
}

TEST_F(FrmMagCreateParams, ANumberIsEditedInANarrowBoxOfSixCharacters) {
    store(QStringLiteral("Height_int"), QStringLiteral("1200"));
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", kHeight);
    EXPECT_TRUE(warehouse.batches().contains(
        QStringLiteral("select Height_int from kolv_mag_Location_Item where Rank = 1 and Stand = 1 and  "
                       "Shelf = 1 and Location = 1")))
        << qPrintable(warehouse.batches().join(u'\n'));
    EXPECT_TRUE(value()->isVisible());
    EXPECT_TRUE(value()->hasFocus());
    EXPECT_EQ(value()->text(), QStringLiteral("1200"));
    EXPECT_EQ(value()->width(), toPixels(1000));
    enter(value(), QStringLiteral("1234567"));
    EXPECT_EQ(value()->text(), QStringLiteral("123456"));
}

TEST_F(FrmMagCreateParams, ANumberAndATextTakeThePictureAndTheListOfStatesAway) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    for (const QString& parameter : {kHeight, kDescription}) {
        pick("dtcParamLocation", kPicture);
        ASSERT_TRUE(pictureFrame());
        ASSERT_FALSE(shown().isEmpty());
        pick("dtcParamLocation", parameter);
        EXPECT_FALSE(pictureFrame()) << qPrintable(parameter);
        EXPECT_TRUE(shown().isEmpty()) << qPrintable(parameter);
        EXPECT_TRUE(value()->isVisible()) << qPrintable(parameter);
        pick("dtcParamLocation", kStatus);
        ASSERT_TRUE(combo("cmbStatusLocation")->isVisible());
        ASSERT_TRUE(value()->isHidden());
        pick("dtcParamLocation", parameter);
        EXPECT_TRUE(combo("cmbStatusLocation")->isHidden()) << qPrintable(parameter);
        EXPECT_TRUE(value()->isVisible()) << qPrintable(parameter);
    }
}

TEST_F(FrmMagCreateParams, ATextIsEditedInAWideBoxOf250Characters) {
    const QString text(250, QChar(u'ż'));
    store(QStringLiteral("Description_char"), text);
    openOn(kDescription);
    EXPECT_TRUE(value()->isVisible());
    EXPECT_TRUE(value()->hasFocus());
    EXPECT_EQ(value()->text(), text);
    EXPECT_EQ(value()->cursorPosition(), 0) << "a long text shows its beginning";
    EXPECT_EQ(value()->width(), toPixels(2760));
    EXPECT_EQ(value()->maxLength(), 250);
}

TEST_F(FrmMagCreateParams, AStatusIsChosenFromItsList) {
    store(QStringLiteral("StatLocation_cmb"), QStringLiteral("1"));
    openOn(kStatus);
    EXPECT_TRUE(combo("cmbStatusLocation")->isVisible());
    EXPECT_TRUE(combo("cmbStatusLocation")->hasFocus());
    EXPECT_EQ(combo("cmbStatusLocation")->currentText(), QStringLiteral("Multi Indeksowa"));
    EXPECT_TRUE(value()->isHidden());
    EXPECT_FALSE(pictureFrame());
    store(QStringLiteral("StatLocation_cmb"), QStringLiteral("0"));
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", kStatus);
    EXPECT_EQ(combo("cmbStatusLocation")->currentText(), QStringLiteral("Mono Indeksowa"));
}

TEST_F(FrmMagCreateParams, AStatusTakesThePictureAwayAndForgetsTheFileThatWasChosen) {
    openOn(kPicture);
    const QString path = chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    ASSERT_EQ(box("txtFrmPicture")->text(), path);
    pick("dtcParamLocation", kHeight);
    EXPECT_EQ(box("txtFrmPicture")->text(), path);
    pick("dtcParamLocation", kPicture);
    chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    ASSERT_TRUE(pictureFrame());
    pick("dtcParamLocation", kStatus);
    EXPECT_EQ(box("txtFrmPicture")->text(), QString());
    EXPECT_FALSE(pictureFrame());
    EXPECT_TRUE(shown().isEmpty());
}

TEST_F(FrmMagCreateParams, AStatusWithoutAValueShowsMono) {
    store(QStringLiteral("StatLocation_cmb"), QStringLiteral("1"));
    openOn(kStatus);
    ASSERT_EQ(combo("cmbStatusLocation")->currentText(), QStringLiteral("Multi Indeksowa"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Location_Item set StatLocation_cmb = NULL")}));
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", kStatus);
    EXPECT_EQ(combo("cmbStatusLocation")->currentText(), QStringLiteral("Mono Indeksowa"));
}

TEST_F(FrmMagCreateParams, ALocationWithoutARowIsEditedAsOneWithoutValues) {
    store(QStringLiteral("Height_int"), QStringLiteral("1200"));
    openOn(kHeight);
    ASSERT_EQ(value()->text(), QStringLiteral("1200"));
    clickLocation(QStringLiteral("1_1_1_2"));
    choose("dtcParamLocation", kHeight);
    EXPECT_TRUE(value()->isVisible());
    EXPECT_EQ(value()->text(), QString());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateParams, ANewParameterNeedsOnlyAColumnAndARowOfTheView) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("alter table kolv_mag_Location_Item add Zone_char nvarchar(250)"),
         QStringLiteral("drop view Kolv_vv_mag_Param_Location"),
         QStringLiteral("create view Kolv_vv_mag_Param_Location as select N'0' as ParamName, N'wybierz' as "
                        "ParamText union all select N'Zone_char', N'Strefa' union all select N'ItemCode', "
                        "N'Bez końcówki'")}))
        << qPrintable(warehouse.why());
    openOn(QStringLiteral("Strefa"));
    value()->insert(QStringLiteral("Północ"));
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(stored(QStringLiteral("Zone_char")), QStringLiteral("Północ"));
}

TEST_F(FrmMagCreateParams, AnUnknownEndingChangesNothingAndIsNotSaved) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("drop view Kolv_vv_mag_Param_Location"),
         QStringLiteral("create view Kolv_vv_mag_Param_Location as select N'0' as ParamName, N'wybierz' as "
                        "ParamText union all select N'Description_char', N'Opis' union all select "
                        "N'ItemCode', N'Kod'")}))
        << qPrintable(warehouse.why());
    store(QStringLiteral("Description_char"), QStringLiteral("uwaga"));
    openOn(kDescription);
    choose("dtcParamLocation", QStringLiteral("Kod"));
    EXPECT_TRUE(value()->isVisible());
    EXPECT_EQ(value()->text(), QStringLiteral("uwaga"));
    save();
    expectNotice(QStringLiteral("Nie ma parametru lokalizacji o nazwie „ItemCode”."));
    EXPECT_EQ(stored(QStringLiteral("ItemCode")), QStringLiteral("SUR-1"));
    EXPECT_EQ(saveCaption(), QStringLiteral("&Zapisz parametr"));
}

TEST_F(FrmMagCreateParams, AStoredPictureIsShownByWayOfATemporaryFile) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("JPG").toBase64()));
    openOn(kPicture);
    EXPECT_TRUE(pictureFrame());
    EXPECT_EQ(shown().size(), QSize(40, 20));
    EXPECT_TRUE(value()->isHidden());
    EXPECT_TRUE(combo("cmbStatusLocation")->isHidden());
    EXPECT_FALSE(Paths::fileExists(QStringLiteral("C:\\Windows\\Temp\\1_1_1_1.bmp")));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateParams, AnEmptyPictureShowsTheFrameWithNothingInIt) {
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

TEST_F(FrmMagCreateParams, TheListOfStatesGoesWithAStoredPictureOnly) {
    openOn(kStatus);
    choose("dtcParamLocation", kPicture);
    EXPECT_TRUE(pictureFrame());
    EXPECT_TRUE(combo("cmbStatusLocation")->isVisible());
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    choose("dtcParamLocation", kStatus);
    choose("dtcParamLocation", kPicture);
    EXPECT_TRUE(combo("cmbStatusLocation")->isHidden());
}

TEST_F(FrmMagCreateParams, AStoredTextThatIsNoPictureIsReportedAndThePictureStaysEmpty) {
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

TEST_F(FrmMagCreateParams, ABrokenPictureLeavesNothingOfTheGoodOneBeforeIt) {
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

// ---------------------------------------------------------------- leaving the box

TEST_F(FrmMagCreateParams, ATextThatIsNoNumberKeepsTheFocusInTheBoxOfANumber) {
    openOn(kHeight);
    for (const char* bad : {"12a", "", "-"}) {
        enter(value(), QString::fromLatin1(bad));
        test::key(value(), Qt::Key_Tab);
        EXPECT_TRUE(test::waitFor([this] { return value()->hasFocus(); })) << bad;
    }
    test::click(box("txtFrmRank"));
    EXPECT_TRUE(test::waitFor([this] { return value()->hasFocus(); }));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateParams, AnyNumberMayLeaveTheBoxOneWithAFractionToo) {
    openOn(kHeight);
    for (const char* good : {"1200", "12,5", " 7 ", "-3"}) {
        enter(value(), QString::fromLatin1(good));
        test::key(value(), Qt::Key_Tab);
        QCoreApplication::processEvents();
        EXPECT_FALSE(value()->hasFocus()) << good;
    }
}

TEST_F(FrmMagCreateParams, AnyTextMayLeaveTheBoxOfAText) {
    openOn(kDescription);
    enter(value(), QStringLiteral("bez liczb"));
    test::key(value(), Qt::Key_Tab);
    QCoreApplication::processEvents();
    EXPECT_FALSE(value()->hasFocus());
}

// ---------------------------------------------------------------- the picture file

TEST_F(FrmMagCreateParams, TheDialogOfThePictureBeginsInTheIconFolderAndShowsAllFiles) {
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

TEST_F(FrmMagCreateParams, ACancelledDialogChangesNothing) {
    openOn(kPicture);
    const QString path = chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    pickFile(QString());
    EXPECT_EQ(box("txtFrmPicture")->text(), path);
    EXPECT_EQ(shown().size(), QSize(40, 20));
}

TEST_F(FrmMagCreateParams, AFileThatIsNotThereClearsThePicture) {
    openOn(kPicture);
    chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    pickFile(QStringLiteral("C:\\Regalon\\none.jpg"));
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(value()->text(), QStringLiteral("none.jpg"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagCreateParams, APictureIsSavedInBase64AndShownAgain) {
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

TEST_F(FrmMagCreateParams, APictureOf3000000BytesIsTooLargeAndOneByteLessPasses) {
    openOn(kPicture);
    QByteArray bytes = picture("BMP");
    bytes.append(QByteArray(3000000 - bytes.size(), '\0'));
    chooseFile(QStringLiteral("duże.bmp"), bytes);
    save();
    expectNotice(kTooLarge);
    EXPECT_EQ(savings().size(), 0);
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QStringLiteral("NULL"));
    EXPECT_EQ(saveCaption(), QStringLiteral("&Zapisz parametr"));
    messages.clear();
    bytes.chop(1);
    chooseFile(QStringLiteral("mniejsze.bmp"), bytes);
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(stored(QStringLiteral("len(Picture_pic)")), QStringLiteral("4000000"));
    EXPECT_EQ(QByteArray::fromBase64(stored(QStringLiteral("Picture_pic")).toLatin1()), bytes);
}

TEST_F(FrmMagCreateParams, ATifIsRefusedAsNoPictureWithTheTextThatNamesTif) {
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

TEST_F(FrmMagCreateParams, ATextCalledBmpIsRefusedAsNoPicture) {
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

TEST_F(FrmMagCreateParams, AFileThatMayNotBeReadIsAFailureAndNothingIsSaved) {
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
    EXPECT_EQ(saveCaption(), QStringLiteral("&Zapisz parametr"));
}

TEST_F(FrmMagCreateParams, WithoutANewFileAnEmptyBoxRemovesTheStoredPicture) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    openOn(kPicture);
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(savings().first().at(6), QString());
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QString());
}

TEST_F(FrmMagCreateParams, AFileThatIsNotThereSendsItsShortNameWhichTheDatabaseRefuses) {
    openOn(kPicture);
    pickFile(QStringLiteral("C:\\Regalon\\none.jpg"));
    save();
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(savings().first().at(6), QStringLiteral("none.jpg"));
    expectNotice(QStringLiteral("Przekazany tekst nie jest obrazem. Wybierz plik obrazka."));
    EXPECT_EQ(stored(QStringLiteral("Picture_pic")), QStringLiteral("NULL"));
}

TEST_F(FrmMagCreateParams, AWordLeftByAnotherParameterIsRefusedAsAPictureAndTheStoredOneStays) {
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
    EXPECT_EQ(saveCaption(), QStringLiteral("&Zapisz parametr"));
}

TEST_F(FrmMagCreateParams, AStoredPictureKeepsTheFileThatWasChosenForAnotherLocation) {
    store(QStringLiteral("Picture_pic"), QString::fromLatin1(picture("BMP").toBase64()));
    open();
    clickLocation(QStringLiteral("1_1_1_1"));
    choose("dtcParamLocation", kPicture);
    const QString path = chooseFile(QStringLiteral("a.jpg"), picture("JPG"));
    clickLocation(QStringLiteral("1_1_1_1"));
    pick("dtcParamLocation", kPicture);
    EXPECT_EQ(box("txtFrmPicture")->text(), path);
}

TEST_F(FrmMagCreateParams, EveryIconOfTheDeliveredFolderIsAPicture) {
    const QDir folder(warehouse.server.driveC() + QStringLiteral("/Regalon/Ikony"));
    const QStringList icons = folder.entryList({QStringLiteral("*.ico")});
    ASSERT_GT(icons.size(), 100);
    for (const QString& icon : icons)
        EXPECT_TRUE(isPictureFile(folder.filePath(icon))) << qPrintable(icon);
}

// ---------------------------------------------------------------- saving

TEST_F(FrmMagCreateParams, ANumberIsSentWithItsNameAndItsKind) {
    openOn(kHeight);
    enter(value(), QStringLiteral("900"));
    save();
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(savings().size(), 1);
    EXPECT_EQ(
        savings().first().mid(0, 8),
        QStringList({QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"), QStringLiteral("1"),
                     QStringLiteral("Height_int"), QStringLiteral("900"), QString(), QStringLiteral("int")}));
    EXPECT_EQ(stored(QStringLiteral("Height_int")), QStringLiteral("900"));
}

TEST_F(FrmMagCreateParams, ANumberThatCannotBeStoredIsRefusedWithTheReason) {
    store(QStringLiteral("Height_int"), QStringLiteral("1200"));
    openOn(kHeight);
    for (const char* bad : {"12,5", "-3", "12a", "1e5"}) {
        messages.clear();
        enter(value(), QString::fromLatin1(bad));
        save();
        expectNotice(QStringLiteral("Wartość parametru musi być liczbą całkowitą od 0 do 999999."));
        EXPECT_EQ(value()->text(), QString::fromLatin1(bad));
    }
    EXPECT_EQ(stored(QStringLiteral("Height_int")), QStringLiteral("1200"));
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(FrmMagCreateParams, AStatusIsSentByItsNumberAndAnyOtherTextAsTheBoxHasIt) {
    openOn(kStatus);
    test::key(combo("cmbStatusLocation"), Qt::Key_Down);
    ASSERT_EQ(combo("cmbStatusLocation")->currentText(), QStringLiteral("Multi Indeksowa"));
    save();
    EXPECT_EQ(stored(QStringLiteral("StatLocation_cmb")), QStringLiteral("1"));
    test::key(combo("cmbStatusLocation"), Qt::Key_Up);
    save();
    EXPECT_EQ(stored(QStringLiteral("StatLocation_cmb")), QStringLiteral("0"));
    EXPECT_EQ(messages.count(), 0);
    enter(combo("cmbStatusLocation"), QStringLiteral("inna"));
    save();
    ASSERT_EQ(savings().size(), 3);
    EXPECT_EQ(savings().last().mid(4, 4), QStringList({QStringLiteral("StatLocation_cmb"), value()->text(),
                                                       QString(), QStringLiteral("cmb")}));
    expectNotice(QStringLiteral("Wybierz wartość parametru z listy."));
    EXPECT_EQ(stored(QStringLiteral("StatLocation_cmb")), QStringLiteral("0"));
}

TEST_F(FrmMagCreateParams, ATextWithQuotesIsStoredAsItStands) {
    openOn(kDescription);
    enter(value(), QStringLiteral("stand 'A'; drop table OITM --"));
    save();
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(stored(QStringLiteral("Description_char")), QStringLiteral("stand 'A'; drop table OITM --"));
}

TEST_F(FrmMagCreateParams, WithoutAnAddressOrAParameterNothingIsSavedAndNothingSaid) {
    openOn(kDescription);
    enter(box("txtFrmShelf"), QStringLiteral("x"));
    save();
    enter(box("txtFrmShelf"), QStringLiteral("1"));
    choose("dtcParamLocation", QStringLiteral("wybierz"));
    save();
    EXPECT_EQ(savings().size(), 0);
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(saveCaption(), QStringLiteral("&Zapisz parametr"));
}

TEST_F(FrmMagCreateParams, ALocationThatAnotherManagerTookAwayIsRefusedWithTheReason) {
    openOn(kHeight);
    ASSERT_TRUE(warehouse.run({QStringLiteral("delete from kolv_mag_Location")}));
    enter(value(), QStringLiteral("900"));
    save();
    expectNotice(
        QStringLiteral("Ta lokalizacja nie istnieje. Mógł ją usunąć inny użytkownik: odśwież magazyn."));
    EXPECT_EQ(stored(QStringLiteral("count(*)")), QStringLiteral("0"));
}

TEST_F(FrmMagCreateParams, WithTheServerGoneASaveReportsOnceAndDoesNotSayThatItSaved) {
    openOn(kHeight);
    enter(value(), QStringLiteral("900"));
    warehouse.server.kill();
    save();
    expectTitles({QStringLiteral("Error - clsMagCreate [SaveLocationParamStatic]")});
    EXPECT_EQ(saveCaption(), QStringLiteral("&Zapisz parametr"));
    EXPECT_EQ(value()->text(), QStringLiteral("900"));
    ASSERT_TRUE(warehouse.server.start());
    EXPECT_EQ(stored(QStringLiteral("Height_int")), QStringLiteral("NULL"));
}

// ---------------------------------------------------------------- "Zapisano"

TEST_F(FrmMagCreateParams, TheButtonSaysSavedForTwoTicks) {
    openOn(kHeight);
    const qint64 ready = saveImage();
    enter(value(), QStringLiteral("900"));
    save();
    EXPECT_EQ(saveCaption(), QStringLiteral("Zapisano"));
    EXPECT_NE(saveImage(), ready);
    EXPECT_TRUE(timer()->isActive());
    tick();
    EXPECT_EQ(saveCaption(), QStringLiteral("Zapisano"));
    tick();
    EXPECT_EQ(saveCaption(), QStringLiteral("Zapisz parametr"));
    EXPECT_EQ(saveImage(), ready);
    EXPECT_FALSE(timer()->isActive());
}

TEST_F(FrmMagCreateParams, SavingAgainStartsTheTicksAnew) {
    openOn(kHeight);
    enter(value(), QStringLiteral("900"));
    save();
    tick();
    save();
    tick();
    EXPECT_EQ(saveCaption(), QStringLiteral("Zapisano"));
    tick();
    EXPECT_EQ(saveCaption(), QStringLiteral("Zapisz parametr"));
    EXPECT_EQ(savings().size(), 2);
}

TEST_F(FrmMagCreateParams, TheClockOfTheWindowTicks) {
    openOn(kHeight);
    timer()->setInterval(1);
    enter(value(), QStringLiteral("900"));
    save();
    EXPECT_EQ(saveCaption(), QStringLiteral("Zapisano"));
    EXPECT_TRUE(test::waitFor([this] { return saveCaption() == u"Zapisz parametr"; }));
}

}  // namespace
}  // namespace regalon
