// The printed label of a location. The button checks the address and stops there: the two routines below
// stand ready for it, and no event of this window calls them.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modSQL.h"
#include "map/Notice.h"
#include "map/frmMagCreate.h"
#include "platform/Convert.h"
#include "platform/MsgBox.h"
#include "platform/Paths.h"
#include "platform/Screen.h"
#include "platform/WordApplication.h"

#include <QDate>
#include <QLabel>
#include <QLineEdit>

#include <optional>

namespace regalon {

namespace {

constexpr qint32 kRaportCode = 100;

/// Number of a row or stand in the code of a label: two digits, whatever stands before them is cut off.
QString twoDigits(const QVariant& number) {
    return (u'0' + ToText(number)).right(2);
}

/// 14 digits as long as shelf and location have one each.
QString labelCode(const QVariant& rank, const QVariant& stand, const QVariant& shelf,
                  const QVariant& location) {
    return u'7' + QDate::currentDate().toString(QStringLiteral("yyMMdd")) + u'1' + twoDigits(rank) +
           twoDigits(stand) + ToText(shelf) + ToText(location);
}

[[noreturn]] void raiseNoSite() {
    throw RunTimeError(clsError::userErrorNumber,
                       QStringLiteral("Brak zdefiniowanej sciezki do aplikacji lub brak definicji drukarki"),
                       QStringLiteral("frmMagCreate"));
}

/// Its title is spelled so, and the status behind it stays as it is; users know the message by both.
void showNoTemplate() {
    const PlainPointer pointer;
    MsgBox(QStringLiteral("Brak wybranego szablonu wydruku etykiety lokalizacji"), MsgFlag::Information,
           QStringLiteral("Komunkat"));
}

/// Leaves no hidden word processor behind. It may be the very thing that failed, and then is past answering.
void dropWord(std::optional<WordApplication>& word) {
    if (!word)
        return;
    try {
        word->Close();
    } catch (const RunTimeError&) {
        // There may be no document to close.
    }
    try {
        word->Quit();
    } catch (const RunTimeError&) {
        // Its process goes with the object.
    }
    word.reset();
}

}  // namespace

void frmMagCreate::checkLabelAddress() {
    if (!locationOnForm())
        showNotice(
            QStringLiteral("Nie prawidłowy parametr przekazywany do wydruku etykiety lokalizacji !!!"));
}

/// Ends in the error service as long as the window has no lblRaportName to show the template's name on.
void frmMagCreate::SetPrintRaport() {
    WindowTrap("frmMagCreate - SetPrintRaport", [&] {
        m_data->SetPrintRaportParam(
            this, QStringLiteral("select A.RaportCode,A.RaportName,A.RaportFile,A.RaporFileWath from "
                                 "Kolv_ListPrint A(nolock) inner join Kolv_PrintActiveUser B(nolock)  On "
                                 "A.RaportCOde = B.RaportCode AND A.GroupForm = B.GroupForm where "
                                 "B.UserSign = ") +
                      SqlNumber(int{context().UserSign}) + QStringLiteral("     AND A.GroupForm = 3"));
    });
}

/// The window does not react while the label is made, so the text is painted at once.
void frmMagCreate::showLabelStatus(const QString& text) {
    m_lblStatus->setText(text);
    m_lblStatus->repaint();
}

bool frmMagCreate::PrintEtykietaLocation(const QVariant& rank, const QVariant& stand, const QVariant& shelf,
                                         const QVariant& location) {
    bool printed = false;
    std::optional<WordApplication> word;
    const bool done = WindowTrap("frmMagCreate - PrintEtykietaLocation", [&] {
        const BusyPointer busy;
        const QString templateFile = TrimBlanks(m_txtRaportFile->text());
        showLabelStatus(QStringLiteral("Łączenie z generatorem etykiet"));
        const QString sitePath = context().PathFile;
        const QString printer = m_data->GetPrintersName(kRaportCode);
        const QString code = labelCode(rank, stand, shelf, location);
        if (sitePath.isEmpty())
            raiseNoSite();
        const QString folder = sitePath + QStringLiteral("\\Etykiety\\");
        if (!Paths::fileExists(folder + templateFile)) {
            showNoTemplate();
            return;
        }
        word.emplace();
        word->Open(folder + templateFile, folder);
        showLabelStatus(QStringLiteral("Generowanie etykiety dla lokalizaji "));
        word->Run(QStringLiteral("Generate"),
                  {QString::number(kRaportCode), ToText(rank), ToText(stand), ToText(shelf), ToText(location),
                   code, QString::number(context().UserSign)});
        showLabelStatus(QStringLiteral("Generowanie etykiety "));
        printActiveDocument(*word, printer);
        word->Close();
        word->Quit();
        word.reset();
        printed = true;
        showLabelStatus(QString());
    });
    if (!done) {
        showLabelStatus(QString());
        dropWord(word);
    }
    return printed;
}

void frmMagCreate::printActiveDocument(WordApplication& word, const QString& printer) {
    const QString noted = word.ActivePrinter();
    if (!printer.isEmpty())
        word.setActivePrinter(printer);
    word.PrintOut();
    showLabelStatus(QStringLiteral("Wydruk etykiety"));
    word.setActivePrinter(noted);
}

}  // namespace regalon
