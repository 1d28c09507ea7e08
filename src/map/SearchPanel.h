#pragma once

#include <QGroupBox>
#include <QString>

#include <functional>

class QCheckBox;
class QLabel;

namespace regalon {

struct AppContext;
class DataCombo;
class MapSearch;
class ToolBar;
class MapDataClass;

/// The panel `frmLookForSur` of a map window: takes a material and shows on the plan where it lies. It starts
/// hidden, and its window places it.
class SearchPanel : public QGroupBox {
    Q_OBJECT

public:
    /// `window` is the first part of the names under which the panel reports, such as "frmMagWatch".
    SearchPanel(AppContext& context, const QString& window, QWidget* parent);

    /// What the panel works with from a load of its window to the next; both must live as long. Takes the
    /// controls back to their design.
    void load(MapDataClass& mapData, MapSearch& search, const QString& aplication);

    /// What the window does on key_Cancel, behind the hiding of the panel.
    void onCancel(const std::function<void()>& restore) { m_cancel = restore; }

    /// Written by the item search dialog before it closes.
    void setItemCode(const QString& itemCode) { m_itemCode = itemCode; }

    /// Shows the panel over a plain plan, with the materials that the warehouse knows. The note about groups
    /// and the check box keep their state.
    void open();

private:
    // Design, each part in its own function.
    void createChoice();
    void createResult();
    void createToolBar();

    // Event routines.
    void FillComboSur();
    void FillComboSurDefineMag();
    void chkAllItem_Click();
    void cmdLookFor_Click();
    void tlbLookForSur_ButtonClick(const QString& key);

    void lookFor();
    void showPlaces(const QString& itemCode, qint16 mode);
    QString reportName(const char* routine) const;

    AppContext& m_context;
    QString m_window;
    MapDataClass* m_data = nullptr;
    MapSearch* m_search = nullptr;
    QString m_aplication;
    QString m_itemCode;
    std::function<void()> m_cancel;

    // Controls, owned by the panel.
    DataCombo* m_dtcLookForSur = nullptr;
    QCheckBox* m_chkAllItem = nullptr;
    QLabel* m_lblSurLookFor = nullptr;
    QLabel* m_lblSurLookForGroup = nullptr;
};

}  // namespace regalon
