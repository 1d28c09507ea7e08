// The confirmation of the shift, and its cancel.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "map/Notice.h"
#include "map/StatusPanel.h"
#include "platform/ListView.h"
#include "platform/Screen.h"
#include "platform/ToolBar.h"
#include "stock/ProposalRow.h"
#include "stock/frmMagWatchShiftLoc.h"

#include <QAction>
#include <QGroupBox>

namespace regalon {

namespace {

// The blank at its end belongs to it.
const QString kMismatch =
    QStringLiteral("Brak zgodności ilośći wybranych paczek a wskazanych lokalizacji do ich odłożenia. ");

}  // namespace

void frmMagWatchShiftLoc::tlbAkceptShiftItem_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchShiftLoc - tlbAkceptShiftItem_ButtonClick", [&] {
        if (key == u"key_AkceptShiftItem")
            ShiftItemOnLocation();
        else if (key == u"key_Cancel")
            cancelShift();
    });
}

void frmMagWatchShiftLoc::ShiftItemOnLocation() {
    WindowTrap("frmMagWatchShiftLoc - ShiftItemOnLocation", [&] {
        const qint16 chosen = m_data->GetCountChoseBarCodeOnShift(context().UserSign, m_operation);
        const int ticked = tickedProposals();
        // A count that failed, -1, has told so already.
        if (chosen < 1)
            return;
        if (chosen != ticked) {
            showNotice(kMismatch);
            return;
        }
        if (!shiftTicked())
            return;
        clearStaged();
        FiilItemOnLocation(status().address());
        WatchPropLocationSurChoseBarCode();
        WatchOrdersLineBarCode(0, 0);
    });
}

int frmMagWatchShiftLoc::tickedProposals() const {
    int ticked = 0;
    for (int number = 1; number <= m_lstSurPropLocation->itemCount(); ++number) {
        if (m_lstSurPropLocation->item(number)->checked())
            ++ticked;
    }
    return ticked;
}

/// Moves the package of each ticked row; one that is refused does not hold up the others. Whether any moved.
bool frmMagWatchShiftLoc::shiftTicked() {
    const BusyPointer busy;
    bool moved = false;
    for (int number = 1; number <= m_lstSurPropLocation->itemCount(); ++number) {
        const ListItem& item = *m_lstSurPropLocation->item(number);
        if (!item.checked())
            continue;
        const ProposalRow row(*m_lstSurPropLocation, item);
        const LocationAddress target = row.target();
        QString message;
        if (m_data->ShiftLocationBarCode(row.barCode(), target, context().UserSign, m_aplication, m_operation,
                                         message))
            moved = true;
        else
            showRefusal(message);
    }
    return moved;
}

/// The list of packages and its captions stay as they are: after a cancel from the proposals they show once
/// more with the next location, until the user returns to the materials.
void frmMagWatchShiftLoc::cancelShift() {
    clearStaged();
    FiilItemOnLocation(NoLocation);
    WatchOrdersLineBarCode(0, 0);
    m_frmWathLocationShift->hide();
    RebulidMag();
    status().showNoAddress();
    status().clearWords();
    m_tlbAkceptLocation->button(1)->setEnabled(false);
}

}  // namespace regalon
