// The parameters of a location: the look of each kind, and what a save sends.
#include "map/ParamEditor.h"
#include "platform/Twips.h"
#include "support/Events.h"

#include <QAction>
#include <QCoreApplication>
#include <QTimerEvent>

namespace regalon {
namespace {

using test::kDescription;
using test::kHeight;
using test::kPicture;
using test::kReadyToSave;
using test::kStatus;
using test::ParamEditor;
using test::picture;

class FrmMagCreateParams : public ParamEditor {
protected:
    qint64 saveImage() const { return saveButton()->icon().cacheKey(); }
    void tick() {
        ASSERT_TRUE(timer()->isActive());
        QTimerEvent event(timer()->timerId());
        QCoreApplication::sendEvent(timer(), &event);
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
    EXPECT_EQ(saveButton()->text(), kReadyToSave);
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
    EXPECT_EQ(saveButton()->text(), kReadyToSave);
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
    EXPECT_EQ(saveButton()->text(), kReadyToSave);
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
    EXPECT_EQ(saveButton()->text(), QStringLiteral("Zapisano"));
    EXPECT_NE(saveImage(), ready);
    EXPECT_TRUE(timer()->isActive());
    tick();
    EXPECT_EQ(saveButton()->text(), QStringLiteral("Zapisano"));
    tick();
    EXPECT_EQ(saveButton()->text(), QStringLiteral("Zapisz parametr"));
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
    EXPECT_EQ(saveButton()->text(), QStringLiteral("Zapisano"));
    tick();
    EXPECT_EQ(saveButton()->text(), QStringLiteral("Zapisz parametr"));
    EXPECT_EQ(savings().size(), 2);
}

TEST_F(FrmMagCreateParams, TheClockOfTheWindowTicks) {
    openOn(kHeight);
    timer()->setInterval(1);
    enter(value(), QStringLiteral("900"));
    save();
    EXPECT_EQ(saveButton()->text(), QStringLiteral("Zapisano"));
    EXPECT_TRUE(test::waitFor([this] { return saveButton()->text() == u"Zapisz parametr"; }));
}

}  // namespace
}  // namespace regalon
