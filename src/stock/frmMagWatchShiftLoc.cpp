#include "stock/frmMagWatchShiftLoc.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "map/MapBuilder.h"
#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"

#include <QAction>
#include <QGroupBox>
#include <QTimer>

namespace regalon {

frmMagWatchShiftLoc::~frmMagWatchShiftLoc() = default;

void frmMagWatchShiftLoc::Form_Load() {
    WindowTrap("frmMagWatchShiftLoc - Form_Load", [&] {
        dropPlan();
        m_data = std::make_unique<clsMagWatchShiftLoc>(context());
        m_aplication = QStringLiteral("P");
        m_operation = QStringLiteral("S");
        makePlan(m_aplication, m_data.get());
        resetDesign();
        clearStaged();
        map().RefreschWatchStore();
        timer().stop();
        searchPanel().hide();
        m_frmWathLocationShift->hide();
        clearStaged();
        FiilItemOnLocation(NoLocation);
        WatchOrdersLineBarCode(0, 0);
        m_tlbAkceptLocation->button(1)->setEnabled(false);
    });
}

/// Staged rows would not be found again after a new login: the window takes its own along.
void frmMagWatchShiftLoc::Form_Unload() {
    // Reports under the load routine's name; support knows it so.
    WindowTrap("frmMagWatchShiftLoc - Form_Load", [&] {
        timer().stop();
        clearStaged();
    });
}

/// The state of the controls as designed, for a window that is opened once more.
void frmMagWatchShiftLoc::resetDesign() {
    status().clearWords();
    status().showAddress({}, {}, {}, {});
    status().show();
    resetRefresh();
    for (ListView* list : {m_lstLocationItem, m_lstLocationBarCode, m_lstSurPropLocation}) {
        list->clearItems();
        list->clearHeaders();
    }
    resetItems();
    // Hidden before the plan is read: a message of the reading would show them half made.
    searchPanel().hide();
    m_frmWathLocationShift->hide();
    m_tlbAkceptLocation->button(1)->setEnabled(false);
}

/// What could not be cleared shows in the next list that is read: no message of its own.
void frmMagWatchShiftLoc::clearStaged() {
    m_data->ClearBarCodeOnTemp(context().UserSign, 0, m_aplication, m_operation);
}

/// Runs without a handler of its own.
void frmMagWatchShiftLoc::tlbCmd_ButtonClick(const QString& key) {
    if (key == u"key_Exit")
        unload();
    else if (key == u"key_ReBulid")
        RebulidMag();
    else if (key == u"key_LokkFor")
        openSearch();
}

/// The fills stay those of the last move or refresh: this window does not have them recomputed.
void frmMagWatchShiftLoc::RebulidMag() {
    map().RebulidMag(false);
}

/// Also while the frame of the shift is open. The address boxes stay: they remember the source.
void frmMagWatchShiftLoc::imgBookStand_Click(int index) {
    WindowTrap("frmMagWatchShiftLoc - imgBookStand_Click", [&] { showClickedStand(index); });
}

}  // namespace regalon
