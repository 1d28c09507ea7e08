// Where the package of a barcode lies, in words and, on a further button, on the plan.

#include "common/ErrorTrap.h"
#include "map/Notice.h"
#include "map/RankLetter.h"
#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "platform/Convert.h"
#include "platform/Screen.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace regalon {

namespace {

// Positions on the toolbar, separators counted.
constexpr int kPrint = 3;
constexpr int kSearch = 5;

}  // namespace

void frmMagWatchBarCodeLoc::openLookup() {
    m_frmLookForSurBarCode->show();
    status().hide();
    searchPanel().hide();
    closeContent();
    // A scanner types wherever the focus is.
    m_txtBarCodeLookFor->setFocus();
    m_txtBarCodeLookFor->selectAll();
}

void frmMagWatchBarCodeLoc::tlbLookForBarCode_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchBarCodeLoc - tlbLookForBarCode_ButtonClick", [&] {
        if (key == u"key_Akcept")
            LookForBarCode();
        else if (key == u"key_Print")
            PrintBarCodeLocation(true);
        else if (key == u"key_LokForBarCode")
            LookForBarCodeLocation();
    });
}

void frmMagWatchBarCodeLoc::LookForBarCode() {
    WindowTrap("frmMagWatchBarCodeLoc - LookForBarCode", [&] {
        const QString code = m_txtBarCodeLookFor->text();
        if (!IsNumeric(code)) {
            showNotice(QStringLiteral("Kod moze zawierać tylko wartości numeryczne !!!"));
            return;
        }
        BarCodePlace place;
        switch (m_data->GetParamBarCodeProcedure(code, place)) {
            case BarCodeAnswer::Known:
                showPlace(place);
                break;
            case BarCodeAnswer::Unknown:
                showResult(false);
                m_txtNumberCode->setText(QStringLiteral("-1"));
                showNotice(QStringLiteral("Podany kod nie został znaleziony na magazynie !!!"));
                break;
            case BarCodeAnswer::Failed:
                // Nothing is known of the code: what shows stays.
                break;
        }
    });
}

void frmMagWatchBarCodeLoc::showPlace(const BarCodePlace& place) {
    m_lblRankLokFOrBarCodeData->setText(RankLetter(place.Address.Rank));
    m_lblStandLokFOrBarCodeData->setText(QString::number(place.Address.Stand));
    m_lblShelfLokFOrBarCodeData->setText(QString::number(place.Address.Shelf));
    m_lblLocationLokFOrBarCodeData->setText(QString::number(place.Address.Location));
    m_lblItemCodeLookForBarCodeData->setText(place.ItemCode + QStringLiteral(" : ") + place.ItemName);
    m_txtNumberCode->setText(QString::number(place.NumberCode));
    showResult(true);
}

void frmMagWatchBarCodeLoc::showResult(bool found) {
    for (QLabel* label : m_result)
        label->setVisible(found);
    m_tlbLookForBarCode->button(kPrint)->setEnabled(found);
    m_tlbLookForBarCode->button(kSearch)->setEnabled(found);
}

/// The labels are the window's only memory of the place. A row above 6 has no letter, so that its place is
/// not found again and the whole plan turns grey.
void frmMagWatchBarCodeLoc::LookForBarCodeLocation() {
    WindowTrap("frmMagWatchBarCodeLoc - LookForBarCodeLocation", [&] {
        const PackagePlaces places{.itemCodes = {TrimBlanks(m_lblItemCodeLookForBarCodeData->text().section(
                                       QLatin1Char(':'), 0, 0))},
                                   .ranks = {QString::number(RankNumber(m_lblRankLokFOrBarCodeData->text()))},
                                   .stands = {m_lblStandLokFOrBarCodeData->text()},
                                   .shelves = {m_lblShelfLokFOrBarCodeData->text()},
                                   .locations = {m_lblLocationLokFOrBarCodeData->text()}};
        if (places.itemCodes.first().isEmpty())
            return;
        RebulidMag();
        const BusyPointer busy;
        ChangeIconOnLocationOnInputItemCOdeAnyLocation(places);
    });
}

void frmMagWatchBarCodeLoc::ChangeIconOnLocationOnInputItemCOdeAnyLocation(const PackagePlaces& places) {
    WindowTrap("frmMagWatchBarCodeLoc - ChangeIconOnLocationOnInputItemCOdeAnyLocation",
               [&] { highlightPlaces(places, canvas(), map(), *search(), magWatch()); });
}

/// Whatever the button. The plan stays grey until it is drawn anew.
void frmMagWatchBarCodeLoc::tlbLookForSurBarCode_ButtonClick(const QString&) {
    WindowTrap("frmMagWatchBarCodeLoc - tlbLookForSurBarCode_ButtonClick", [&] { showMap(); });
}

}  // namespace regalon
