#include "views/frmMagWatchBarCodeLoc.h"

#include "common/ErrorTrap.h"
#include "map/MapBuilder.h"
#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "platform/ListView.h"
#include "platform/PictureBox.h"
#include "platform/ToolBar.h"

#include <QAction>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTimer>

namespace regalon {

frmMagWatchBarCodeLoc::~frmMagWatchBarCodeLoc() = default;

void frmMagWatchBarCodeLoc::Form_Load() {
    WindowTrap("frmMagWatchBarCodeLoc - Form_Load", [&] {
        dropPlan();
        m_data = std::make_unique<clsMagWatchBarCodeLoc>(context());
        m_aplication = QStringLiteral("P");
        m_operation = QStringLiteral("B");
        makePlan(m_aplication, m_data.get());
        resetDesign();
        map().RefreschWatchStore();
        timer().stop();
        hidePanels();
        m_tlbAkceptLocation->button(1)->setEnabled(false);
        m_chkActiveBarCode->setChecked(true);
        closeContent();
    });
}

void frmMagWatchBarCodeLoc::Form_Unload() {
    timer().stop();
}

/// The state of the controls as designed, for a window that is opened once more. It comes before the plan is
/// read: a message of the reading would show them half made.
void frmMagWatchBarCodeLoc::resetDesign() {
    resetRefresh();
    status().clearWords();
    // Before the check box, whose change reads the list of the location in the boxes.
    status().showAddress({}, {}, {}, {});
    status().show();
    m_chkActiveBarCode->setChecked(true);
    for (QLabel* label :
         {m_lblRankData, m_lblStandData, m_lblShelfData, m_lblLocationData, m_lblQuantityData,
          m_lblQuantityPercentData, m_lblBarCodeActiveData, m_lblBarCodeGlobalData, m_lblItemCodeData,
          m_lblItemCodeLookForBarCodeData, m_lblRankLokFOrBarCodeData, m_lblStandLokFOrBarCodeData,
          m_lblShelfLokFOrBarCodeData, m_lblLocationLokFOrBarCodeData, m_lblRaportName})
        label->clear();
    for (QLineEdit* box :
         {m_txtBarCodeOnUse, m_txtBarCodeLookFor, m_txtNumberCode, m_txtRaportCode, m_txtRaportFile})
        box->clear();
    m_lstBarCodeLocation->clearItems();
    m_lstBarCodeLocation->clearHeaders();
    m_tlbAkceptLocation->button(1)->setEnabled(false);
    hidePanels();
    closeContent();
}

void frmMagWatchBarCodeLoc::hidePanels() {
    searchPanel().hide();
    m_frmLookForSurBarCode->hide();
    m_oleWatchTemplete->hide();
    m_picBarCode->hide();
    showResult(false);
}

void frmMagWatchBarCodeLoc::tlbCmd_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchBarCodeLoc - tlbCmd_ButtonClick", [&] {
        if (key == u"key_Exit") {
            unload();
        } else if (key == u"key_ReBulid") {
            RebulidMag();
        } else if (key == u"key_LokkFor") {
            openSearch();
            m_frmLookForSurBarCode->hide();
            closeContent();
        } else if (key == u"key_LokkForBarCode") {
            openLookup();
        }
    });
}

/// The fills stay those of the last move or refresh: this window does not have them recomputed.
void frmMagWatchBarCodeLoc::RebulidMag() {
    map().RebulidMag(false);
}

/// Also while the content of a location is open. The address boxes stay: the button takes its location from
/// them.
void frmMagWatchBarCodeLoc::imgBookStand_Click(int index) {
    WindowTrap("frmMagWatchBarCodeLoc - imgBookStand_Click", [&] {
        if (showClickedStand(index))
            showMap();
    });
}

void frmMagWatchBarCodeLoc::imglocation_Click(int index) {
    WindowTrap("frmMagWatchBarCodeLoc - imglocation_Click", [&] {
        showClickedLocation(index);
        m_tlbAkceptLocation->button(1)->setEnabled(true);
        showMap();
    });
}

/// Takes the place of both searches. What they have turned grey stays so.
void frmMagWatchBarCodeLoc::showMap() {
    status().show();
    m_frmLookForSurBarCode->hide();
    searchPanel().hide();
}

}  // namespace regalon
