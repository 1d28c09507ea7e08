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
        // Also while the frame of the shift is open: from then on its materials are staged from here, and the
        // proposals take this location for their own.
        showClickedLocation(index);
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
