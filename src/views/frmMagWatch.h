#pragma once

#include "map/MapWatchWindow.h"

#include <QString>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;

namespace regalon {

class ListView;
class ToolBar;

/// The read-only view of the warehouse: the plan, and below it what lies on the location that was clicked.
class frmMagWatch : public MapWatchWindow {
    Q_OBJECT

public:
    /// The context must outlive the window. Without a detail a click on a stand ends in the standard handler.
    explicit frmMagWatch(AppContext& context, const StandDetail& standDetail = {}, QWidget* parent = nullptr);
    ~frmMagWatch() override;

    /// Shows on the plan of an open window where a material lies, as MapSearch does.
    void ChangeIconOnLocation(const QString& ItemCode, qint16 mode);

protected:
    // Event routines.
    void Form_Load() override;
    void Form_Unload() override;
    void imgBookStand_Click(int index) override;
    void imglocation_Click(int index) override;

    void RebulidMag() override;
    void beforeTick() override;

private:
    // Design, each part in its own function.
    void createToolbars();
    void createStatusPanel();
    void createLocationList();
    void createAutoRefreshPanel();
    void createFileDialog();

    // Event routines.
    void tlbCmd_ButtonClick(const QString& key);
    void tlbWatchFullSurLocation_ButtonClick(const QString& key);
    void tlbSaveAutoRebulidParam_ButtonClick(const QString& key);

    // The refresh by the timer.
    void resetAutoRefresh();
    void FillComboTime();
    void AutoRebulidConfig();
    void saveAutoRefresh(double minutes);

    void hidePanels();
    void resetDesign();
    void showAssignedMaterial(const LocationAddress& address);
    void openLocationList();
    void closeLocationList();
    void FiilItemOnLocation(const LocationAddress& address);

    QString m_aplication;

    // Controls, owned by their parents.
    ToolBar* m_tlbCmd = nullptr;
    ToolBar* m_tlbStatusRefresh = nullptr;
    ToolBar* m_tlbWatchFullSurLocation = nullptr;
    QGroupBox* m_frmWathLocationShiftItem = nullptr;
    QGroupBox* m_frmAutoRebulidCOnfig = nullptr;
    QCheckBox* m_chkAutoRebulidOn = nullptr;
    QComboBox* m_cmbTime = nullptr;
    QLabel* m_lblObjectParam2 = nullptr;
    ListView* m_lstLocationItem = nullptr;
};

}  // namespace regalon
