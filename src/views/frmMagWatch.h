#pragma once

#include "map/LocationAddress.h"
#include "map/MapBuilder.h"
#include "map/MapSearch.h"
#include "map/StandDetail.h"
#include "map/clsMagWatch.h"
#include "platform/ImageList.h"

#include <QString>
#include <QWidget>

#include <memory>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QTimer;

namespace regalon {

class ListView;
class MapCanvas;
class SearchPanel;
class ToolBar;

/// The read-only view of the warehouse: the plan, and below it what lies on the location that was clicked. It
/// reads the warehouse when it is first shown, and again when it is shown after it was closed.
class frmMagWatch : public QWidget {
    Q_OBJECT

public:
    /// The context must outlive the window. Without a detail a click on a stand ends in the standard handler.
    explicit frmMagWatch(AppContext& context, const StandDetail& standDetail = {}, QWidget* parent = nullptr);
    ~frmMagWatch() override;

    /// Top and left of the main window in twips, set before the window is shown. A value beyond 16 bits is
    /// reported and the old one stays.
    void setTopStand(qint32 twips);
    void setLeftStand(qint32 twips);
    /// Written by the item search dialog before it closes.
    void setItemCode(const QString& itemCode);

    /// Shows on the plan of an open window where a material lies, as MapSearch does.
    void ChangeIconOnLocation(const QString& ItemCode, qint16 mode);

    /// Closes the window, with its frame inside the main window.
    void unload();

    QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // Design, each part in its own function.
    void createPlan();
    void createToolbars();
    void createStatusPanel();
    void createLocationList();
    void createSearchPanel();
    void createTimer();
    void createAutoRefreshPanel();
    void createFileDialog();
    void createImages();

    // Event routines.
    void Form_Load();
    void Form_KeyDown(int keyCode, int shift);
    void tlbCmd_ButtonClick(const QString& key);
    void tlbWatchFullSurLocation_ButtonClick(const QString& key);
    void tlbSaveAutoRebulidParam_ButtonClick(const QString& key);
    void Timer1_Timer();
    void imgBookStand_Click(int index);
    void imglocation_Click(int index);

    // The refresh by the timer.
    void resetAutoRefresh();
    void FillComboTime();
    void AutoRebulidConfig();
    void saveAutoRefresh(double minutes);

    void hidePanels();
    void resetDesign();
    void openSearch();
    void showAddress(const QString& rank, const QString& stand, const QString& shelf,
                     const QString& location);
    void showAssignedMaterial(const LocationAddress& address);
    void openStandDetail(qint16 rank, qint16 stand, int index);
    void openLocationList();
    void closeLocationList();
    void FiilItemOnLocation(const LocationAddress& address);

    AppContext& m_context;
    StandDetail m_standDetail;

    // State. The data class lives from load to load.
    std::unique_ptr<clsMagWatch> m_data;
    std::unique_ptr<MapBuilder> m_map;
    std::unique_ptr<MapSearch> m_search;
    QString m_aplication;
    qint32 m_refreshCounter = 0;   ///< seconds since the last automatic rebuild
    double m_refreshInterval = 0;  ///< seconds between two
    qint16 m_topStand = 0;
    qint16 m_leftStand = 0;
    bool m_loaded = false;

    // Controls, owned by their parents.
    QWidget* m_surface = nullptr;
    MapCanvas* m_canvas = nullptr;
    ToolBar* m_tlbCmd = nullptr;
    ToolBar* m_tlbStatusRefresh = nullptr;
    ToolBar* m_tlbWatchFullSurLocation = nullptr;
    QGroupBox* m_frmWatchData = nullptr;
    QGroupBox* m_frmWathLocationShiftItem = nullptr;
    SearchPanel* m_frmLookForSur = nullptr;
    QGroupBox* m_frmAutoRebulidCOnfig = nullptr;
    QCheckBox* m_chkAutoRebulidOn = nullptr;
    QComboBox* m_cmbTime = nullptr;
    QLineEdit* m_txtRank = nullptr;
    QLineEdit* m_txtStand = nullptr;
    QLineEdit* m_txtShelf = nullptr;
    QLineEdit* m_txtLocation = nullptr;
    QLabel* m_lblObjectClick = nullptr;
    QLabel* m_lblObjectParam = nullptr;
    QLabel* m_lblObjectParam2 = nullptr;
    ListView* m_lstLocationItem = nullptr;
    QTimer* m_timer1 = nullptr;
    ImageList m_imgSmall;
};

}  // namespace regalon
