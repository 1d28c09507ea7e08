#pragma once

#include "map/LocationAddress.h"
#include "map/MapWindow.h"
#include "map/StandDetail.h"

#include <QString>

#include <memory>
#include <optional>

class QTimer;

namespace regalon {

class MapBuilder;
class MapDataClass;
class MapSearch;
class SearchPanel;
class StatusPanel;
class clsMagWatch;

/// What the windows that look at a finished plan have alike: the panel of what was clicked, the stand detail,
/// the search for a material and the refresh by the timer.
class MapWatchWindow : public MapWindow {
    Q_OBJECT

public:
    ~MapWatchWindow() override;

    /// Top and left of the main window in twips, set before the window is shown. A value beyond 16 bits is
    /// reported and the old one stays.
    void setTopStand(qint32 twips);
    void setLeftStand(qint32 twips);
    /// Written by the item search dialog before it closes.
    void setItemCode(const QString& itemCode);

protected:
    /// The panels below the hall share one place, and only one of them shows at a time. Twips.
    static constexpr int PanelLeft = 120;
    static constexpr int PanelTop = 8310;
    static constexpr int PanelWidth = SurfaceWidth - 240;
    static constexpr int PanelHeight = SurfaceHeight - PanelTop - 30;

    /// Address of a clicked picture as it stands in its Tag; a stand has no shelf and no location.
    struct Clicked {
        QString rank, stand, shelf, location;
        /// Raises 13 and 6.
        LocationAddress address() const;
    };

    /// Without a detail a click on a stand ends in the standard handler.
    MapWatchWindow(AppContext& context, const QString& name, const QString& caption,
                   const StandDetail& standDetail, QWidget* parent);

    // Loading. The classes behind the plan live from load to load.
    void dropPlan();
    /// Makes them anew, with the panel of the search in its design. What is not the plan itself is read
    /// through `data`; without one the class of the plan does it.
    void makePlan(const QString& aplication, MapDataClass* ownData = nullptr);

    void Form_KeyDown(int keyCode, int shift) override;
    /// Rebuilds the plan in the window's own way.
    virtual void RebulidMag() = 0;

    // The refresh by the timer. Only a window that starts the timer has one.
    /// Stops the timer and forgets what was counted.
    void resetRefresh();
    void setRefreshInterval(double seconds) { m_refreshInterval = seconds; }
    double secondsLeft() const { return m_refreshInterval - m_refreshCounter; }
    QTimer& timer() const { return *m_timer1; }
    /// Called at each tick before it is counted.
    virtual void beforeTick() {}

    /// Raises 9 for a Tag too short. A stand without a Tag is none.
    std::optional<Clicked> clickedStand(int index) const;
    Clicked clickedLocation(int index) const;
    /// Opens the stand detail beside the stand and returns when it has closed.
    void openStandDetail(const Clicked& stand, int index);

    // What the windows of single packages do with a click on the plan.
    /// Shows the stand and its detail; false for a stand without a Tag.
    bool showClickedStand(int index);
    /// Shows the location and its material, and puts it into the address boxes.
    void showClickedLocation(int index);

    /// Opens the panel of the search in place of that of what was clicked.
    void openSearch();
    static void addRefresh(ToolBar* tlbCmd);
    static void addSearch(ToolBar* tlbCmd);

    clsMagWatch& magWatch() const { return *m_magWatch; }
    MapBuilder& map() const { return *m_map; }
    /// Null before the first load.
    MapSearch* search() const { return m_search.get(); }
    StatusPanel& status() const { return *m_frmWatchData; }
    SearchPanel& searchPanel() const { return *m_frmLookForSur; }

private:
    void createTimer();
    void Timer1_Timer();

    StandDetail m_standDetail;
    std::unique_ptr<clsMagWatch> m_magWatch;
    std::unique_ptr<MapBuilder> m_map;
    std::unique_ptr<MapSearch> m_search;
    MapDataClass* m_ownData = nullptr;
    qint32 m_refreshCounter = 0;   ///< seconds since the last automatic rebuild
    double m_refreshInterval = 0;  ///< seconds between two
    qint16 m_topStand = 0;
    qint16 m_leftStand = 0;

    // Controls, owned by their parents.
    StatusPanel* m_frmWatchData = nullptr;
    SearchPanel* m_frmLookForSur = nullptr;
    QTimer* m_timer1 = nullptr;
};

}  // namespace regalon
