#include "views/frmMagWatch.h"

#include "common/ErrorTrap.h"
#include "map/MapBuilder.h"
#include "map/MapSearch.h"
#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "platform/ListView.h"
#include "platform/RunTimeError.h"
#include "platform/ToolBar.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QTimer>

#include <initializer_list>

namespace regalon {

frmMagWatch::~frmMagWatch() = default;

void frmMagWatch::ChangeIconOnLocation(const QString& ItemCode, qint16 mode) {
    WindowTrap("frmMagWatch - ChangeIconOnLocation", [&] {
        if (search() == nullptr)
            throw RunTimeError(RunTime::ObjectNotSet);
        search()->ChangeIconOnLocation(ItemCode, mode);
    });
}

void frmMagWatch::Form_Load() {
    WindowTrap("frmMagWatch - Form_Load", [&] {
        m_aplication = QStringLiteral("P");
        makePlan(m_aplication);
        resetDesign();
        map().RefreschWatchStore();
        FillComboTime();
        timer().stop();
        hidePanels();
    });
}

void frmMagWatch::Form_Unload() {
    timer().stop();
}

void frmMagWatch::hidePanels() {
    for (QWidget* panel :
         std::initializer_list<QWidget*>{m_frmAutoRebulidCOnfig, &searchPanel(), m_tlbStatusRefresh,
                                         m_tlbWatchFullSurLocation, m_frmWathLocationShiftItem})
        panel->hide();
}

/// The state of the controls as designed, for a window that is opened once more.
void frmMagWatch::resetDesign() {
    status().clearWords();
    m_lblObjectParam2->clear();
    status().showAddress({}, {}, {}, {});
    resetAutoRefresh();
    m_lstLocationItem->clearItems();
    m_lstLocationItem->clearHeaders();
    m_tlbWatchFullSurLocation->button(1)->setEnabled(true);
    m_tlbWatchFullSurLocation->button(2)->setEnabled(false);
    // Hidden before the plan is read: a message of the reading would show them half made.
    hidePanels();
    status().show();
}

void frmMagWatch::tlbCmd_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatch - tlbCmd_ButtonClick", [&] {
        if (key == u"key_Exit")
            unload();
        else if (key == u"key_ReBulid")
            RebulidMag();
        else if (key == u"key_AutoRebulid")
            AutoRebulidConfig();
        else if (key == u"key_LokkFor")
            openSearch();
    });
}

void frmMagWatch::RebulidMag() {
    map().RebulidMag(true);
}

void frmMagWatch::imgBookStand_Click(int index) {
    WindowTrap("frmMagWatch - imgBookStand_Click", [&] {
        const std::optional<Clicked> stand = clickedStand(index);
        if (!stand || !m_frmWathLocationShiftItem->isHidden())
            return;
        status().showStand(stand->rank, stand->stand);
        m_lblObjectParam2->clear();
        status().clearMaterial();
        m_tlbWatchFullSurLocation->hide();
        status().showNoAddress();
        openStandDetail(*stand, index);
    });
}

}  // namespace regalon
