// The label of a location: the button of the layout editor, which only checks, and the routines behind it,
// with the real word processor and a real print service.

#include "label/PrintService.h"
#include "label/Template.h"
#include "map/LayoutEditor.h"
#include "platform/WordApplication.h"

#include <QCoreApplication>
#include <QDate>
#include <QDir>
#include <QEvent>
#include <QProcess>

namespace regalon {
namespace {

const QString kPrintName = QStringLiteral("frmMagCreate - PrintEtykietaLocation");
const QString kConnecting = QStringLiteral("Łączenie z generatorem etykiet");
const QString kDemoTemplate = QStringLiteral("Etykieta_lokalizacji_01.odt");

/// The texts that a label has really shown.
class PaintedTexts : public QObject {
public:
    explicit PaintedTexts(QLabel* watched) : m_label(watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && (texts.isEmpty() || texts.last() != m_label->text()))
            texts.append(m_label->text());
        return QObject::eventFilter(watched, event);
    }
    QStringList texts;

private:
    QLabel* m_label;
};

class FrmMagCreateLabel : public test::LayoutEditor {
protected:
    void SetUp() override {
        ASSERT_TRUE(printers.start()) << qPrintable(printers.why());
        ASSERT_NO_FATAL_FAILURE(LayoutEditor::SetUp());
        warehouse.context.PathFile = QStringLiteral("C:\\Regalon");
        warehouse.context.UserSign = 2;
        folder = warehouse.server.driveC() + QStringLiteral("/Regalon/Etykiety");
        ASSERT_TRUE(QDir().mkpath(folder));
        ASSERT_TRUE(QFile::copy(QStringLiteral(REGALON_BINARY_DIR "/share/Etykiety/") + kDemoTemplate,
                                folder + u'/' + kDemoTemplate));
        open();
        box("txtRaportFile")->setText(kDemoTemplate);
    }
    void TearDown() override { WordApplication::setSetup({}); }

    void useTemplate(const QString& source) {
        ASSERT_TRUE(test::writeTemplate(folder + QStringLiteral("/wlasna.fodt"), source));
        box("txtRaportFile")->setText(QStringLiteral("  wlasna.fodt "));
    }
    /// Prints and expects one failure, with this number and a text that holds the words.
    void expectFailure(qint32 number, const QString& words) {
        EXPECT_FALSE(window->PrintEtykietaLocation(1, 2, 3, 1));
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Title, kPrintName);
        EXPECT_EQ(messages.last().Flags, 4112);
        EXPECT_TRUE(messages.last().Text.startsWith(QString::number(number) + QStringLiteral("\r\n")))
            << qPrintable(messages.last().Text);
        EXPECT_TRUE(messages.last().Text.contains(words)) << qPrintable(messages.last().Text);
        EXPECT_EQ(label("lblStatus")->text(), QString());
        EXPECT_EQ(labelProcesses(), 0);
        EXPECT_EQ(printers.count(QStringLiteral("Etykiety")), 0);
    }
    /// Label printers that this program has started and that still run.
    static int labelProcesses() {
        QProcess list;
        list.start(QStringLiteral("ps"),
                   {QStringLiteral("--ppid"), QString::number(QCoreApplication::applicationPid()),
                    QStringLiteral("-o"), QStringLiteral("args=")});
        list.waitForFinished();
        return static_cast<int>(list.readAllStandardOutput().count("bin/regalon-label "));
    }
    static QString codeOf(const QString& numbers) {
        return u'7' + QDate::currentDate().toString(QStringLiteral("yyMMdd")) + u'1' + numbers;
    }
    /// What a template received, which prints its arguments.
    QString printedArguments(const QString& printer = QStringLiteral("Etykiety")) {
        return test::textOf(printers.printed(printer).value(0)).trimmed();
    }

    test::PrintService printers;
    QString folder;
};

const QString kArguments =
    test::generate(QStringLiteral("  ThisComponent.Text.setString(Join(Array(sRaport, sRank, sStand, sShelf, "
                                  "sLocation, sCode, sUser), \"|\"))"));

// ---------------------------------------------------------------- the button

TEST_F(FrmMagCreateLabel, TheButtonOnlyChecksTheAddress) {
    clickLocation(QStringLiteral("1_1_1_1"));
    ASSERT_TRUE(toolBar("tlbCmd")->button(3)->isEnabled());
    warehouse.server.clearTrace();
    clickButton("tlbCmd", "key_PrintEtykieteLocation");
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(warehouse.server.entries().size(), 0);
    EXPECT_EQ(label("lblStatus")->text(), QString());
    EXPECT_EQ(labelProcesses(), 0);
}

TEST_F(FrmMagCreateLabel, TheButtonNamesAnAddressThatIsNoNumber) {
    for (const char* name : {"txtFrmRank", "txtFrmStand", "txtFrmShelf", "txtFrmLocation"}) {
        clickLocation(QStringLiteral("1_1_1_1"));
        box(name)->setText(QStringLiteral("x"));
        clickButton("tlbCmd", "key_PrintEtykieteLocation");
        expectNotice(
            QStringLiteral("Nie prawidłowy parametr przekazywany do wydruku etykiety lokalizacji !!!"));
        messages.clear();
    }
}

TEST_F(FrmMagCreateLabel, TheButtonReportsANumberBeyond16Bits) {
    clickLocation(QStringLiteral("1_1_1_1"));
    box("txtFrmStand")->setText(QStringLiteral("40000"));
    clickButton("tlbCmd", "key_PrintEtykieteLocation");
    expectTitles({QStringLiteral("frmMagCreate - tlbCmd_ButtonClick")});
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("6\r\n")));
}

TEST_F(FrmMagCreateLabel, TheHoldersOfTheTemplateAreHiddenAndTheStatusIsEmpty) {
    EXPECT_FALSE(box("txtRaportCode")->isVisible());
    EXPECT_FALSE(box("txtRaportFile")->isVisible());
    EXPECT_TRUE(label("lblStatus")->isVisible());
    EXPECT_EQ(label("lblStatus")->text(), QString());
}

TEST_F(FrmMagCreateLabel, TheStatusHasRoomBehindTheButtons) {
    const QLabel* status = label("lblStatus");
    const ToolBar* bar = toolBar("tlbCmd");
    const QWidget* last = bar->widgetForAction(bar->actions().last());
    EXPECT_GT(status->mapTo(window.get(), QPoint()).x(),
              last->mapTo(window.get(), QPoint(last->width(), 0)).x());
    for (const QString& text : {kConnecting, QStringLiteral("Generowanie etykiety dla lokalizaji ")})
        EXPECT_LE(status->fontMetrics().horizontalAdvance(text), status->width()) << qPrintable(text);
}

// ---------------------------------------------------------------- the active template

TEST_F(FrmMagCreateLabel, TheActiveTemplateIsAskedForButHasNoPlaceForItsName) {
    warehouse.server.clearTrace();
    window->SetPrintRaport();
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral("select A.RaportCode,A.RaportName,A.RaportFile,A.RaporFileWath from "
                                         "Kolv_ListPrint A(nolock) inner "
                                         "join Kolv_PrintActiveUser B(nolock)  On A.RaportCOde = "
                                         "B.RaportCode AND A.GroupForm = B.GroupForm "
                                         "where B.UserSign = 2     AND A.GroupForm = 3")));
    expectTitles({QStringLiteral("Error - clsMagCreate [SetPrintRaportParam]")});
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("438\r\n")));
    EXPECT_EQ(box("txtRaportCode")->text(), QString());
}

TEST_F(FrmMagCreateLabel, WithAPlaceForItsNameTheActiveTemplateIsTaken) {
    QLabel name(window.get());
    name.setObjectName(QStringLiteral("lblRaportName"));
    box("txtRaportFile")->clear();
    window->SetPrintRaport();
    EXPECT_EQ(messages.count(), 0);
    EXPECT_EQ(name.text(), QStringLiteral("Szablon wydruku: Etykieta lokalizacji 100 x 60"));
    EXPECT_EQ(box("txtRaportCode")->text(), QStringLiteral("1"));
    EXPECT_EQ(box("txtRaportFile")->text(), kDemoTemplate);
}

// ---------------------------------------------------------------- printing

TEST_F(FrmMagCreateLabel, ALabelIsPrintedWithAddressCodeAndUser) {
    const PaintedTexts painted(label("lblStatus"));
    warehouse.server.clearTrace();
    EXPECT_TRUE(window->PrintEtykietaLocation(1, 12, 3, 2));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    const QStringList pages = printers.printed(QStringLiteral("Etykiety"));
    ASSERT_EQ(pages.size(), 1);
    const QString text = test::textOf(pages.front());
    for (const QString& part :
         {QStringLiteral("A 12-3-2"), QStringLiteral("Rząd A, regał 12, półka 3, lokalizacja 2"),
          codeOf(QStringLiteral("011232")), QStringLiteral("wydrukował 2")})
        EXPECT_TRUE(text.contains(part)) << qPrintable(text);
    EXPECT_EQ(test::scanned(pages.front()), QStringLiteral("CODE-128:") + codeOf(QStringLiteral("011232")));

    EXPECT_EQ(painted.texts, QStringList({kConnecting, QStringLiteral("Generowanie etykiety dla lokalizaji "),
                                          QStringLiteral("Generowanie etykiety "),
                                          QStringLiteral("Wydruk etykiety"), QString()}));
    EXPECT_EQ(warehouse.calls(QStringLiteral("dbo.Kolv_Get_PrintersName")).value(0).value(0),
              QStringLiteral("100"));
    EXPECT_EQ(printers.count(QStringLiteral("Biuro")), 0);
    EXPECT_EQ(labelProcesses(), 0);
}

TEST_F(FrmMagCreateLabel, TheMacroGetsSevenTexts) {
    useTemplate(kArguments);
    EXPECT_TRUE(window->PrintEtykietaLocation(1, 2, QStringLiteral("3"), QStringLiteral("1")));
    EXPECT_EQ(printedArguments(),
              QStringLiteral("100|1|2|3|1|") + codeOf(QStringLiteral("010231")) + QStringLiteral("|2"));
    EXPECT_EQ(codeOf(QStringLiteral("010231")).size(), 14);
}

TEST_F(FrmMagCreateLabel, RowsAndStandsAbove99AreCutToTheirLastTwoDigitsInTheCode) {
    useTemplate(kArguments);
    EXPECT_TRUE(window->PrintEtykietaLocation(123, 245, 1, 2));
    EXPECT_EQ(printedArguments(),
              QStringLiteral("100|123|245|1|2|") + codeOf(QStringLiteral("234512")) + QStringLiteral("|2"));
}

TEST_F(FrmMagCreateLabel, AShelfOrLocationOfTwoDigitsMakesTheCodeLonger) {
    useTemplate(kArguments);
    EXPECT_TRUE(window->PrintEtykietaLocation(1, 2, 10, 11));
    EXPECT_EQ(printedArguments(),
              QStringLiteral("100|1|2|10|11|") + codeOf(QStringLiteral("01021011")) + QStringLiteral("|2"));
    EXPECT_EQ(codeOf(QStringLiteral("01021011")).size(), 16);
}

TEST_F(FrmMagCreateLabel, WithoutAPrinterInTheDatabaseTheLabelGoesToTheActivePrinter) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("delete from Kolv_PrintersName")}));
    useTemplate(kArguments);
    EXPECT_TRUE(window->PrintEtykietaLocation(1, 2, 3, 1));
    EXPECT_TRUE(printedArguments(QStringLiteral("Biuro")).startsWith(QStringLiteral("100|1|2|3|1|")));
    EXPECT_EQ(printers.count(QStringLiteral("Etykiety")), 0);
}

// ---------------------------------------------------------------- what goes wrong

TEST_F(FrmMagCreateLabel, WithoutASitePathTheErrorSaysSo) {
    warehouse.context.PathFile.clear();
    expectFailure(-2147220991,
                  QStringLiteral("Brak zdefiniowanej sciezki do aplikacji lub brak definicji drukarki"
                                 "frmMagCreate"));
}

TEST_F(FrmMagCreateLabel, AMissingTemplateIsSaidAndTheStatusStays) {
    for (const char* file : {"", "brak.odt"}) {
        box("txtRaportFile")->setText(QString::fromLatin1(file));
        EXPECT_FALSE(window->PrintEtykietaLocation(1, 2, 3, 1));
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Text,
                  QStringLiteral("Brak wybranego szablonu wydruku etykiety lokalizacji"));
        EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
        EXPECT_EQ(messages.last().Title, QStringLiteral("Komunkat"));
        EXPECT_EQ(label("lblStatus")->text(), kConnecting);
        messages.clear();
    }
}

TEST_F(FrmMagCreateLabel, AFailingMacroIsReportedBeforeTheWordProcessorGoes) {
    useTemplate(test::generate(QStringLiteral("  z = 0\n  x = 1 / z")));
    QString statusBehindTheMessage;
    int processesBehindTheMessage = 0;
    messages.onMessage([&](const MsgBoxRecorder::Message&) {
        statusBehindTheMessage = label("lblStatus")->text();
        processesBehindTheMessage = labelProcesses();
    });
    expectFailure(RunTime::AutomationError, QStringLiteral("Makro \"Generate\" zakończyło się błędem 11"));
    EXPECT_EQ(statusBehindTheMessage, QStringLiteral("Generowanie etykiety dla lokalizaji "));
    EXPECT_EQ(processesBehindTheMessage, 1);
}

TEST_F(FrmMagCreateLabel, ATemplateThatIsNoDocumentIsReported) {
    ASSERT_TRUE(QFile::copy(QStringLiteral("/bin/ls"), folder + QStringLiteral("/program.odt")));
    box("txtRaportFile")->setText(QStringLiteral("program.odt"));
    expectFailure(RunTime::AutomationError, QStringLiteral("program.odt"));
}

TEST_F(FrmMagCreateLabel, ATemplateWithoutTheMacroIsReported) {
    useTemplate(QStringLiteral("Sub Inne\nEnd Sub\n"));
    expectFailure(RunTime::AutomationError, QStringLiteral("Szablon nie ma makra \"Generate\""));
}

TEST_F(FrmMagCreateLabel, AFileOutsideTheTemplateFolderIsNotOpened) {
    ASSERT_TRUE(
        test::writeTemplate(warehouse.server.driveC() + QStringLiteral("/Regalon/obca.fodt"), kArguments));
    box("txtRaportFile")->setText(QStringLiteral("..\\obca.fodt"));
    expectFailure(RunTime::PermissionDenied, QStringLiteral("obca.fodt"));
}

TEST_F(FrmMagCreateLabel, AnUnknownPrinterIsReported) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("update Kolv_PrintersName set PrintersName = N'Nieznana'")}));
    expectFailure(RunTime::AutomationError, QStringLiteral("Nie ma drukarki \"Nieznana\""));
    EXPECT_EQ(printers.count(QStringLiteral("Biuro")), 0);
}

TEST_F(FrmMagCreateLabel, AWordProcessorKilledInTheMiddleIsReported) {
    useTemplate(test::generate(
        QStringLiteral("  Shell(\"/bin/sh\", 0, \"-c 'kill -9 $PPID'\", True)\n  Wait 60000")));
    expectFailure(RunTime::RemoteServerGone, QStringLiteral("zakończył się nieoczekiwanie"));
}

TEST_F(FrmMagCreateLabel, AWordProcessorThatHangsIsReported) {
    WordApplication::setSetup({.TimeLimit = 30});
    useTemplate(test::generate(QStringLiteral("  Do\n  Loop")));
    expectFailure(RunTime::RemoteServerGone, QStringLiteral("nie odpowiedział w ciągu 30 s"));
}

TEST_F(FrmMagCreateLabel, WithoutLibreOfficeTheErrorSaysWhatToInstall) {
    WordApplication::setSetup({.OfficeFolder = folder});
    expectFailure(RunTime::CannotCreateObject, QStringLiteral("Zainstaluj pakiet libreoffice-writer-nogui"));
}

TEST_F(FrmMagCreateLabel, AFailedCallForThePrinterIsReportedAndTheDefaultOneTaken) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure Kolv_Get_PrintersName")}));
    useTemplate(kArguments);
    EXPECT_TRUE(window->PrintEtykietaLocation(1, 2, 3, 1));
    expectTitles({QStringLiteral("Error - clsMagCreate [GetPrintersName]")});
    EXPECT_EQ(printers.printed(QStringLiteral("Biuro")).size(), 1);
}

}  // namespace
}  // namespace regalon
