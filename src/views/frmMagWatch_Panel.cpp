// The lower panel: what is assigned to the location that was clicked, and the list of all its materials.

#include "common/ErrorTrap.h"
#include "map/LocationItemList.h"
#include "map/StatusPanel.h"
#include "map/clsMagWatch.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatch.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>

namespace regalon {

namespace {

constexpr int kOpenList = 1;
constexpr int kCloseList = 2;
constexpr qint16 kMultiItem = 1;
constexpr qint16 kLpWidth = 700;

}  // namespace

void frmMagWatch::imglocation_Click(int index) {
    WindowTrap("frmMagWatch - imglocation_Click", [&] {
        const Clicked clicked = clickedLocation(index);
        // Also under the open list: this is how the user picks the location that the list is to show next.
        status().showAddress(clicked.rank, clicked.stand, clicked.shelf, clicked.location);
        if (!m_frmWathLocationShiftItem->isHidden())
            return;
        status().showLocation(clicked.rank, clicked.stand, clicked.shelf, clicked.location);
        showAssignedMaterial(clicked.address());
        m_tlbWatchFullSurLocation->button(kCloseList)->setEnabled(false);
    });
}

void frmMagWatch::showAssignedMaterial(const LocationAddress& address) {
    QString itemCode;
    QString itemName;
    QString groupName;
    qint16 group = 0;
    qint16 materials = 0;
    if (magWatch().GetParamLocalization(address.Rank, address.Stand, address.Shelf, address.Location,
                                        itemCode, itemName, group, groupName, materials))
        status().showMaterial(itemCode, itemName);
    else
        status().showNoMaterial();
    const bool several = group > 0 || materials == kMultiItem;
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
    const std::optional<LocationAddress> address = status().typedLocation();
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
            context(), QStringLiteral("kolv_mag_Watch_Detal_Item_On_Location"), address, m_aplication);
        fillLocationItems(context(), magWatch(), *m_lstLocationItem, text, kLpWidth);
    });
}

}  // namespace regalon
