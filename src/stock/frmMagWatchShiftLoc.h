#pragma once

#include "map/MapWatchWindow.h"
#include "stock/clsMagWatchShiftLoc.h"

#include <QString>

#include <memory>

class QGroupBox;

namespace regalon {

class ListItem;
class ListView;
class ToolBar;

/// Moves packages from one location to others: a location on the plan, a material on it, its packages, a
/// target for each, and one confirmation. What is under way is staged on the server; the window's own state
/// lies in its controls: which frame and which list show, and what the captions of the buttons say.
class frmMagWatchShiftLoc : public MapWatchWindow {
    Q_OBJECT

public:
    /// The context must outlive the window. Without a detail a click on a stand ends in the standard handler.
    explicit frmMagWatchShiftLoc(AppContext& context, const StandDetail& standDetail = {},
                                 QWidget* parent = nullptr);
    ~frmMagWatchShiftLoc() override;

protected:
    // Event routines.
    void Form_Load() override;
    void Form_Unload() override;
    void imgBookStand_Click(int index) override;
    void imglocation_Click(int index) override;

    void RebulidMag() override;

private:
    /// Fills the lists with nothing.
    static constexpr LocationAddress NoLocation{-1, -1, -1, -1};

    // Design (frmMagWatchShiftLoc_Design.cpp)
    void createToolbar();
    void createAcceptLocation();
    void createFrames();
    void createItems();
    void createProposals();
    ListView* addList(QWidget* frame, const char* name, int height);

    // The window (frmMagWatchShiftLoc.cpp)
    void tlbCmd_ButtonClick(const QString& key);
    void resetDesign();
    void clearStaged();

    // The location on the plan (frmMagWatchShiftLoc_Location.cpp)
    void tlbAkceptLocation_ButtonClick(const QString& key);
    void AkceptLocation();

    // Its materials and their packages (frmMagWatchShiftLoc_Items.cpp)
    void FiilItemOnLocation(const LocationAddress& address);
    void lstLocationItem_ItemCheck(ListItem& item);
    void lstLocationBarCode_ItemCheck(ListItem& item);
    void WatchPropLocationSurChoseBarCode();
    void tlbAkceptItem_ButtonClick(const QString& key);
    ListItem* markItems();
    void stageItem(const ListItem& item, const LocationAddress& source, bool chosen);
    bool isItemTicked() const;
    void resetItems();
    void showItems();
    void showBarCodes();
    void returnToItems();

    // The proposed targets (frmMagWatchShiftLoc_Proposals.cpp)
    void WatchOrdersLineBarCode(qint16 SortOnly, qint16 SortColumn);
    void lstSurPropLocation_ColumnClick(int header);
    void lstSurPropLocation_DblClick();
    void lstSurPropLocation_ItemCheck(ListItem& item);
    QString proposalText(qint16 mode, const QString& Message) const;
    void recomputeProposals(QString& Message);
    void markProposals();
    void untickRepeatedPackages();

    // The shift (frmMagWatchShiftLoc_Shift.cpp)
    void tlbAkceptShiftItem_ButtonClick(const QString& key);
    void ShiftItemOnLocation();
    int tickedProposals() const;
    bool shiftTicked();
    void cancelShift();

    std::unique_ptr<clsMagWatchShiftLoc> m_data;  ///< lives from load to load
    QString m_aplication;
    QString m_operation;

    // Controls, owned by their parents.
    ToolBar* m_tlbAkceptLocation = nullptr;
    QGroupBox* m_frmWathLocationShift = nullptr;
    QGroupBox* m_frmWathLocationShiftItem = nullptr;
    ListView* m_lstLocationItem = nullptr;
    ListView* m_lstLocationBarCode = nullptr;
    ToolBar* m_tlbAkceptItem = nullptr;
    QGroupBox* m_frmWathLocationShiftPropLoc = nullptr;
    ListView* m_lstSurPropLocation = nullptr;
    ToolBar* m_tlbAkceptShiftItem = nullptr;
};

}  // namespace regalon
