// The lower panel: what is assigned to the location that was clicked, and the list of all its materials.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "map/LocationItemList.h"
#include "map/LocationName.h"
#include "map/MapCanvas.h"
#include "map/RankLetter.h"
#include "map/TypedLocation.h"
#include "platform/Convert.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatch.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace regalon {

namespace {

constexpr int kOpenList = 1;
constexpr int kCloseList = 2;
constexpr qint16 kMultiItem = 1;
constexpr qint16 kLpWidth = 700;

}  // namespace

void frmMagWatch::imglocation_Click(int index) {
    WindowTrap("frmMagWatch - imglocation_Click", [&] {
        const TagFields fields(m_canvas->imglocation()[index].tag());
        const QString rank = fields.at(LocationField::Rank);
        const QString stand = fields.at(LocationField::Stand);
        const QString shelf = fields.at(LocationField::Shelf);
        const QString location = fields.at(LocationField::Location);
        // Also under the open list: this is how the user picks the location that the list is to show next.
        showAddress(rank, stand, shelf, location);
        if (!m_frmWathLocationShiftItem->isHidden())
            return;
        m_lblObjectClick->setText(QStringLiteral("Rząd: ") + RankLetter(ToInt16(rank)) +
                                  QStringLiteral(" Regał: ") + stand + QStringLiteral(" Półka: ") + shelf +
                                  QStringLiteral(" Lokazliacja: ") + location);
        const LocationAddress address{ToInt16(rank), ToInt16(stand), ToInt16(shelf), ToInt16(location)};
        showAssignedMaterial(address);
        m_tlbWatchFullSurLocation->button(kCloseList)->setEnabled(false);
    });
}

void frmMagWatch::showAssignedMaterial(const LocationAddress& address) {
    QString itemCode;
    QString itemName;
    QString groupName;
    qint16 group = 0;
    qint16 status = 0;
    if (m_data->GetParamLocalization(address.Rank, address.Stand, address.Shelf, address.Location, itemCode,
                                     itemName, group, groupName, status))
        m_lblObjectParam->setText(itemCode + QStringLiteral(" - ") + itemName);
    else
        m_lblObjectParam->setText(QStringLiteral("Brak przypisanego surowca"));
    const bool several = group > 0 || status == kMultiItem;
    m_tlbWatchFullSurLocation->setVisible(several);
    // With several materials and no group nothing stands behind the words.
    m_lblObjectParam2->setText(several ? QStringLiteral("Grupa przypisana: ") + groupName : QString());
}

void frmMagWatch::tlbWatchFullSurLocation_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatch - tlbWatchFullSurLocation_ButtonClick", [&] {
        if (key == u"key_Akcept")
            openLocationList();
        else if (key == u"key_Cancel")
            closeLocationList();
    });
}

void frmMagWatch::openLocationList() {
    const std::optional<LocationAddress> address =
        typedLocation(m_txtRank->text(), m_txtStand->text(), m_txtShelf->text(), m_txtLocation->text());
    if (!address)
        return;
    FiilItemOnLocation(*address);
    m_frmWathLocationShiftItem->show();
    m_tlbWatchFullSurLocation->button(kCloseList)->setEnabled(true);
    m_tlbWatchFullSurLocation->button(kOpenList)->setEnabled(false);
}

void frmMagWatch::closeLocationList() {
    m_frmWathLocationShiftItem->hide();
    m_tlbWatchFullSurLocation->button(kCloseList)->setEnabled(false);
    m_tlbWatchFullSurLocation->button(kOpenList)->setEnabled(true);
}

void frmMagWatch::FiilItemOnLocation(const LocationAddress& address) {
    // Reports under the shift window's name; support knows it so.
    WindowTrap("frmMagWatchShiftLoc - FiilItemOnLocation", [&] {
        const PhaseText text = locationItemText(
            m_context, QStringLiteral("kolv_mag_Watch_Detal_Item_On_Location"), address, m_aplication);
        fillLocationItems(m_context, *m_data, *m_lstLocationItem, text, kLpWidth);
    });
}

}  // namespace regalon
