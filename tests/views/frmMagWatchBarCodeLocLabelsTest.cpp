// The controls for labels of packages, which end before anything is printed.

#include "common/PrintRaport.h"
#include "platform/RunTimeError.h"
#include "views/BarCodeLabels.h"
#include "views/BarCodeWindow.h"

namespace regalon {
namespace {

using test::captionsOf;
using test::keysOf;

const QString kNoTemplate = QStringLiteral("Brak wybranego szablonu wydruku etykiety !!");
const QString kPrintName = QStringLiteral("frmMagWatchBarCodeLoc - PrintBarCodeLocation");

class FrmMagWatchBarCodeLocLabels : public test::BarCodeWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(BarCodeWindow::SetUp());
        open();
    }
    void expectNoTemplate() {
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Text, kNoTemplate);
        EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
        EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
        messages.clear();
    }
    /// The list answers this one row instead.
    void rowIs(const QString& columns) {
        answer(QStringLiteral("Kolv_mag_Watch_BarCode_Location"),
               QStringLiteral("@Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint, @Filter "
                              "nvarchar(1), @Mode smallint"),
               QStringLiteral("select ") + columns);
    }
};

TEST_F(FrmMagWatchBarCodeLocLabels, TheStripHasItsButtons) {
    openContent();
    EXPECT_EQ(
        captionsOf(toolBar("tlbPodlad")),
        QStringList({QStringLiteral("&Podgląd"), QStringLiteral("&Drukuj"), QStringLiteral("&Powrót")}));
    EXPECT_EQ(
        keysOf(toolBar("tlbPodlad")),
        QStringList({QStringLiteral("key_Watch"), QStringLiteral("key_Print"), QStringLiteral("key_Close")}));
    EXPECT_EQ(captionsOf(toolBar("tvblRodzajeEtykiet")), QStringList(QStringLiteral("&Szablony etykiet")));
    EXPECT_EQ(keysOf(toolBar("tvblRodzajeEtykiet")), QStringList(QStringLiteral("key_Templete")));
    EXPECT_EQ(captionsOf(toolBar("tlbPrintBarCodeAllLocation")),
              QStringList({QStringLiteral("&Wydruk zawartości kodów na lokalizacji"),
                           QStringLiteral("Podgląd wydruku zawartości lokalizacji")}));
    EXPECT_EQ(keysOf(toolBar("tlbPrintBarCodeAllLocation")),
              QStringList(
                  {QStringLiteral("key_PrintBarCodeLocation"), QStringLiteral("key_WatchtBarCodeLocation")}));
    EXPECT_EQ(box("txtRaportCode")->text(), QString());
    EXPECT_EQ(text("lblRaportName"), QString());
}

TEST_F(FrmMagWatchBarCodeLocLabels, PrintingWithoutATemplateSaysSoAndDoesNothingElse) {
    openContent();
    test::clickCheckBox(list(), 0);
    for (const char* typed : {"", "   "}) {
        box("txtRaportCode")->setText(QString::fromLatin1(typed));
        warehouse.server.clearTrace();
        press("tlbPodlad", "key_Print");
        expectNoTemplate();
        EXPECT_EQ(warehouse.batches(), QStringList());
        expectContent();
    }
}

TEST_F(FrmMagWatchBarCodeLocLabels, PrintingWithATemplateAndNothingTickedIsSilent) {
    openContent();
    test::type(box("txtRaportCode"), QStringLiteral("1"));
    box("txtRaportFile")->setText(QStringLiteral("Etykieta_02.doc"));
    warehouse.server.clearTrace();
    press("tlbPodlad", "key_Print");
    test::clickCheckBox(list(), 0);
    press("tlbPodlad", "key_Print");
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(warehouse.batches(), QStringList());
    expectContent();
}

TEST_F(FrmMagWatchBarCodeLocLabels, TheTickedRowsGiveTheirValues) {
    openContent();
    const BarCodeLabels none = BarCodeLabels::ofTickedRows(*list());
    EXPECT_EQ(none.barCodes, QStringList(QString()));
    test::clickCheckBox(list(), 0);
    test::clickCheckBox(list(), 1);
    const BarCodeLabels labels = BarCodeLabels::ofTickedRows(*list());
    EXPECT_EQ(labels.barCodes, QStringList({QStringLiteral("1001"), QStringLiteral("1003")}));
    EXPECT_EQ(labels.valuesA, QStringList({QStringLiteral("501"), QStringLiteral("502")}));
    EXPECT_EQ(labels.valuesB, QStringList({QStringLiteral("1"), QStringLiteral("2")}));
    EXPECT_EQ(labels.numberCodes, QStringList({QStringLiteral("11"), QStringLiteral("13")}));
    EXPECT_EQ(labels.codeParts, QStringList({QStringLiteral("00"), QStringLiteral("00")}));
}

TEST_F(FrmMagWatchBarCodeLocLabels, AnEmptyFirstElementIsTakenByTheNextValue) {
    // The lists grow by themselves: after a row without a barcode they are no longer side by side.
    rowIs(
        QStringLiteral("N'' as A, N'' as B, 501 as C, 1 as D, 11 as E, N'' as F union all select N'1003', "
                       "N'', 502, 2, 13, N''"));
    openContent();
    test::clickCheckBox(list(), 0);
    test::clickCheckBox(list(), 1);
    const BarCodeLabels labels = BarCodeLabels::ofTickedRows(*list());
    EXPECT_EQ(labels.barCodes, QStringList(QStringLiteral("1003")));
    EXPECT_EQ(labels.codeParts, QStringList(QStringLiteral("00")));
    EXPECT_EQ(labels.numberCodes, QStringList({QStringLiteral("11"), QStringLiteral("13")}));
}

TEST_F(FrmMagWatchBarCodeLocLabels, TextInANumberColumnOfATickedRowIsReported) {
    const QStringList rows = {QStringLiteral("N'1' as A, N'' as B, N'x' as C, 1 as D, 1 as E, N'' as F"),
                              QStringLiteral("N'1' as A, N'' as B, 1 as C, N'x' as D, 1 as E, N'' as F"),
                              QStringLiteral("N'1' as A, N'' as B, 1 as C, 1 as D, N'' as E, N'' as F")};
    for (const QString& row : rows) {
        rowIs(row);
        openContent();
        box("txtRaportCode")->setText(QStringLiteral("1"));
        press("tlbPodlad", "key_Print");
        EXPECT_EQ(messages.count(), 0) << "not ticked";
        test::clickCheckBox(list(), 0);
        press("tlbPodlad", "key_Print");
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, kPrintName);
        EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::TypeMismatch));
        messages.clear();
        press("tlbPodlad", "key_Close");
    }
}

TEST_F(FrmMagWatchBarCodeLocLabels, TheLookupPrintsItsPackage) {
    openLookup();
    lookFor(QStringLiteral("1001"));
    press("tlbLookForBarCode", "key_Print");
    expectNoTemplate();
    box("txtRaportCode")->setText(QStringLiteral("1"));
    press("tlbLookForBarCode", "key_Print");
    EXPECT_EQ(messages.count(), 0);
    const BarCodeLabels labels = BarCodeLabels::ofPackage(QStringLiteral("1001"), QStringLiteral("11"));
    EXPECT_EQ(labels.valuesA, QStringList(QStringLiteral("-1")));
    EXPECT_EQ(labels.valuesB, QStringList(QStringLiteral("-1")));
    EXPECT_EQ(labels.numberCodes, QStringList(QStringLiteral("11")));
    EXPECT_EQ(labels.codeParts, QStringList(QStringLiteral("00")));
}

TEST_F(FrmMagWatchBarCodeLocLabels, ARunningNumberBeyond16BitsStopsThePrintOfTheLookup) {
    openLookup();
    lookFor(QStringLiteral("2001"));
    box("txtRaportCode")->setText(QStringLiteral("1"));
    press("tlbLookForBarCode", "key_Print");
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, kPrintName);
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::Overflow));
}

TEST_F(FrmMagWatchBarCodeLocLabels, ThePreviewShowsItsSheetWhichReturningLeavesAsItIs) {
    openContent();
    const auto* sheet = control<QWidget>("oleWatchTemplete");
    EXPECT_FALSE(sheet->isVisible());
    press("tlbPodlad", "key_Watch");
    EXPECT_TRUE(sheet->isVisible());
    press("tlbPodlad", "key_Close");
    expectMap();
    EXPECT_FALSE(sheet->isHidden());
    openContent();
    EXPECT_TRUE(sheet->isVisible());
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchBarCodeLocLabels, TemplatesAndReportsGiveNoReaction) {
    openContent();
    warehouse.server.clearTrace();
    press("tvblRodzajeEtykiet", "key_Templete");
    press("tlbPrintBarCodeAllLocation", "key_PrintBarCodeLocation");
    press("tlbPrintBarCodeAllLocation", "key_WatchtBarCodeLocation");
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(warehouse.batches(), QStringList());
    expectContent();
    box("txtRank")->setText(QStringLiteral("99999"));
    press("tlbPrintBarCodeAllLocation", "key_PrintBarCodeLocation");
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("frmMagSurImputBarCode - tvblRodzajeEtykiet_ButtonClick"));
}

TEST_F(FrmMagWatchBarCodeLocLabels, TheActiveTemplateIsAskedForByTheServiceOfBarcodes) {
    const QWidget* form = nullptr;
    QString statement;
    window->setPrintRaportParam([&](const QWidget* Form, const QString& Sql) {
        form = Form;
        statement = Sql;
    });
    warehouse.context.UserSign = 2;
    window->SetPrintRaport();
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(form, window.get());
    EXPECT_EQ(statement,
              QStringLiteral("select A.RaportCode,A.RaportName,A.RaportFile,A.RaporFileWath from "
                             "Kolv_ListPrint A(nolock) inner join Kolv_PrintActiveUser B(nolock)  On "
                             "A.RaportCOde = B.RaportCode AND A.GroupForm = B.GroupForm where "
                             "B.UserSign = 2 AND A.GroupForm = 4"));
}

TEST_F(FrmMagWatchBarCodeLocLabels, TheWindowHasAPlaceForTheActiveTemplate) {
    PrintRaport{QStringLiteral("3"), QStringLiteral("Mała"), QStringLiteral("Mala_02.odt")}.showOn(
        window.get());
    EXPECT_EQ(text("lblRaportName"), QStringLiteral("Szablon wydruku: Mała"));
    EXPECT_EQ(box("txtRaportCode")->text(), QStringLiteral("3"));
    EXPECT_EQ(box("txtRaportFile")->text(), QStringLiteral("Mala_02.odt"));
}

TEST_F(FrmMagWatchBarCodeLocLabels, WithoutTheServiceTheActiveTemplateIsAFailure) {
    window->SetPrintRaport();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagSurInputBarCode - SetPrintRaport"));
    EXPECT_EQ(messages.last().Text, test::windowMessage(RunTime::ObjectNotSet));
}

}  // namespace
}  // namespace regalon
