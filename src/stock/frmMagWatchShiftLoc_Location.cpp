// The location on the plan from which packages are to go.

#include "common/ErrorTrap.h"
#include "map/StatusPanel.h"
#include "platform/ToolBar.h"
#include "stock/frmMagWatchShiftLoc.h"

#include <QAction>
#include <QGroupBox>

namespace regalon {

void frmMagWatchShiftLoc::imglocation_Click(int index) {
    WindowTrap("frmMagWatchShiftLoc - imglocation_Click", [&] {
        const Clicked clicked = clickedLocation(index);
        // Also while the frame of the shift is open: from then on its materials are staged from here, and the
        // proposals take this location for their own.
        status().showAddress(clicked.rank, clicked.stand, clicked.shelf, clicked.location);
        status().showLocation(clicked.rank, clicked.stand, clicked.shelf, clicked.location);
        QString itemCode;
        QString itemName;
        qint16 group = 0;
        if (m_data->GetParamLocalization(clicked.address(), itemCode, itemName, group))
            status().showMaterial(itemCode, itemName);
        else
            status().showNoMaterial();
        m_tlbAkceptLocation->button(1)->setEnabled(true);
    });
}

void frmMagWatchShiftLoc::tlbAkceptLocation_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchShiftLoc - tlbAkceptLocation_ButtonClick", [&] {
        if (key == u"key_AkceptLoc")
            AkceptLocation();
    });
}

void frmMagWatchShiftLoc::AkceptLocation() {
    WindowTrap("frmMagWatchShiftLoc - AkceptLocation", [&] {
        const std::optional<LocationAddress> address = status().typedLocation();
        if (!address)
            return;
        clearStaged();
        FiilItemOnLocation(*address);
        m_frmWathLocationShift->show();
    });
}

}  // namespace regalon
