// What lies on a location: the panel over the plan, its figures and the list of its packages.

#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "map/LocationSql.h"
#include "map/RankLetter.h"
#include "map/StatusPanel.h"
#include "platform/Convert.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace regalon {

namespace {

// The panel of what was clicked is narrower while the strip of the labels stands beside it; twips.
constexpr int kMapWidth = 15015;
constexpr int kMapAcceptLeft = 12000;
constexpr int kContentWidth = 12975;
constexpr int kContentAcceptLeft = 10080;

constexpr qint16 kLpWidth = 800;

void setStatusWidth(QWidget& status, QWidget& accept, int width, int acceptLeft) {
    status.resize(toPixels(width), status.height());
    accept.move(toPixels(acceptLeft), accept.y());
}

}  // namespace

void frmMagWatchBarCodeLoc::tlbAkceptLocation_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchBarCodeLoc - tlbAkceptLocation_ButtonClick", [&] {
        if (key == u"key_AkceptLoc")
            AkceptLocation();
    });
}

void frmMagWatchBarCodeLoc::AkceptLocation() {
    WindowTrap("frmMagWatchBarCodeLoc - AkceptLocation", [&] {
        const std::optional<LocationAddress> address = status().typedLocation();
        if (!address)
            return;
        m_lblRankData->setText(RankLetter(address->Rank));
        m_lblStandData->setText(QString::number(address->Stand));
        m_lblShelfData->setText(QString::number(address->Shelf));
        m_lblLocationData->setText(QString::number(address->Location));
        // If it was clear, this reads the list by itself, and the list is read twice.
        m_chkActiveBarCode->setChecked(true);
        BarCodeFigures figures;
        // Without figures the panel opens with those of the location before.
        if (m_data->GetParamLocalizationProcedure(*address, figures)) {
            showFigures(figures);
            FillBarCodeLocation(*address);
        }
        m_frmWathLocationShift->show();
        m_frmPodglad->show();
        setStatusWidth(status(), *m_tlbAkceptLocation, kContentWidth, kContentAcceptLeft);
    });
}

void frmMagWatchBarCodeLoc::showFigures(const BarCodeFigures& figures) {
    m_lblQuantityData->setText(ToText(figures.Quantity));
    m_lblQuantityPercentData->setText(ToText(figures.QuantityPer));
    m_lblItemCodeData->setText(figures.ItemCode + QStringLiteral(" : ") + figures.ItemName);
    m_lblBarCodeActiveData->setText(QString::number(figures.CodeActive));
    m_lblBarCodeGlobalData->setText(QString::number(figures.CodeGlobal));
}

void frmMagWatchBarCodeLoc::closeContent() {
    m_frmWathLocationShift->hide();
    m_frmPodglad->hide();
    setStatusWidth(status(), *m_tlbAkceptLocation, kMapWidth, kMapAcceptLeft);
}

void frmMagWatchBarCodeLoc::FillBarCodeLocation(const LocationAddress& address) {
    WindowTrap("frmMagWatchBarCodeLoc - FillBarCodeLocation", [&] {
        const QLatin1Char comma(',');
        const QString filter = m_chkActiveBarCode->isChecked() ? QStringLiteral("Y") : QStringLiteral("N");
        FilleListView(context(), *m_lstBarCodeLocation,
                      QStringLiteral("exec Kolv_mag_Watch_BarCode_Location ") + locationArguments(address) +
                          comma + SqlText(filter) + comma + SqlNumber(1),
                      QString(), true, true, true, true, kLpWidth);
    });
}

/// The location is the one in the address boxes, which may be another than the figures above the list tell.
void frmMagWatchBarCodeLoc::chkActiveBarCode_Click() {
    WindowTrap("frmMagWatchBarCodeLoc - chkActiveBarCode_Click", [&] {
        if (const std::optional<LocationAddress> address = status().typedLocation())
            FillBarCodeLocation(*address);
    });
}

/// The row itself and not the one whose position is its running number: the numbers count down.
void frmMagWatchBarCodeLoc::lstBarCodeLocation_Click(const ListItem& item) {
    WindowTrap("frmMagWatchBarCodeLoc - lstBarCodeLocation_Click",
               [&] { m_txtBarCodeOnUse->setText(item.subItem(1)); });
}

void frmMagWatchBarCodeLoc::lstBarCodeLocation_ItemCheck(ListItem& item) {
    WindowTrap("frmMagWatchBarCodeLoc - lstBarCodeLocation_ItemCheck",
               [&] { m_lstBarCodeLocation->setSelectedItem(&item); });
}

}  // namespace regalon
