// The controls of the window and where they lie. All positions and sizes are twips.

#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "platform/CommonDialog.h"
#include "platform/DesignControls.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "views/frmMagWatch.h"

#include <QGroupBox>
#include <QLabel>

namespace regalon {

frmMagWatch::frmMagWatch(AppContext& context, const StandDetail& standDetail, QWidget* parent)
    : MapWatchWindow(context, QStringLiteral("frmMagWatch"), QStringLiteral("Podgląd magazynu"), standDetail,
                     parent) {
    setRowIcons(imgSmall(), {40, 42});
    createToolbars();
    createStatusPanel();
    createLocationList();
    createAutoRefreshPanel();
    createFileDialog();
    hidePanels();
    searchPanel().onCancel([this] {
        RebulidMag();
        status().show();
    });
}

void frmMagWatch::createToolbars() {
    CoolBar* clbData = addCoolBar();
    m_tlbCmd = addCommands(clbData);
    addExit(m_tlbCmd, QStringLiteral("Wyjscie"));
    addRefresh(m_tlbCmd);
    m_tlbCmd->addButton(QStringLiteral("key_AutoRebulid"), QStringLiteral("Auto odświeżanie "), {},
                        programIcon(QStringLiteral("clock.ico")));
    addSearch(m_tlbCmd);
    connect(m_tlbCmd, &ToolBar::buttonClick, this, &frmMagWatch::tlbCmd_ButtonClick);

    m_tlbStatusRefresh = new ToolBar;
    m_tlbStatusRefresh->setObjectName(QStringLiteral("tlbStatusRefresh"));
    m_tlbStatusRefresh->addButton(QStringLiteral("key_Time"), QString());
    // The unit stands beside the seconds and comes and goes with them.
    QLabel* unit = addLabel(m_tlbStatusRefresh, "Label9", QStringLiteral("[minuta]"));
    m_tlbStatusRefresh->addWidget(unit);
    clbData->addBand(m_tlbStatusRefresh);
}

void frmMagWatch::createStatusPanel() {
    m_lblObjectParam2 = addLabel(&status(), "lblObjectParam2");
    place(m_lblObjectParam2, 150, 945, 5400, 315);

    m_tlbWatchFullSurLocation = new ToolBar(&status());
    m_tlbWatchFullSurLocation->setObjectName(QStringLiteral("tlbWatchFullSurLocation"));
    m_tlbWatchFullSurLocation->addButton(QStringLiteral("key_Akcept"),
                                         QStringLiteral("&Podglad wszytkich surowców na lokalizacji"), {},
                                         programIcon(QStringLiteral("list.ico")));
    m_tlbWatchFullSurLocation->addButton(QStringLiteral("key_Cancel"),
                                         QStringLiteral("&Zamknij podglad surowców na lokalizacji"), {},
                                         programIcon(QStringLiteral("close.ico")));
    place(m_tlbWatchFullSurLocation, 5550, 870, PanelWidth - 5700, 480);
    connect(m_tlbWatchFullSurLocation, &ToolBar::buttonClick, this,
            &frmMagWatch::tlbWatchFullSurLocation_ButtonClick);
}

void frmMagWatch::createLocationList() {
    m_frmWathLocationShiftItem = addFrame(surface(), "frmWathLocationShiftItem", QString());
    // Over the lowest row of the hall only, and right of the row along the left wall: while the list is open
    // the user picks its next location on the plan.
    place(m_frmWathLocationShiftItem, 1320, 6660, 13770, 1590);
    m_lstLocationItem = new ListView(m_frmWathLocationShiftItem);
    m_lstLocationItem->setObjectName(QStringLiteral("lstLocationItem"));
    m_lstLocationItem->setSmallIcons(&imgSmall());
    place(m_lstLocationItem, 60, 60, 13650, 1470);
}

void frmMagWatch::createFileDialog() {
    // On the form by its design; nothing in this window opens it.
    new CommonDialog(this);
}

}  // namespace regalon
