#pragma once

#include "map/LocationAddress.h"
#include "map/StandDetail.h"
#include "platform/ControlArray.h"
#include "platform/ImageList.h"
#include "platform/PlanItems.h"
#include "views/clsMagWatchDetal.h"

#include <QDialog>
#include <QString>

#include <memory>

class QFrame;
class QLabel;
class QLineEdit;
class QPlainTextEdit;

namespace regalon {

class ListView;
class PictureBox;
class PlanSurface;
class TabStrip;
class ToolBar;

/// One stand enlarged, beside its image on the plan: what lies on each of its locations, with figures,
/// picture and notes. The window has no frame and closes by the four buttons in its corners. Its properties
/// are set before each showing, and a showing reads the stand anew. It changes nothing in the database.
class frmMagWatchDetal : public QDialog {
    Q_OBJECT

public:
    /// The context must outlive the window.
    explicit frmMagWatchDetal(AppContext& context, QWidget* parent = nullptr);
    ~frmMagWatchDetal() override;

    /// Wished place of the window on the screen, twips; 0 for none.
    void setTopStand(qint32 twips) { m_topStand = twips; }
    void setLeftStand(qint32 twips) { m_leftStand = twips; }
    void setRank(qint16 rank) { m_rank = rank; }
    void setStand(qint16 stand) { m_stand = stand; }
    void setShelfCount(qint16 count) { m_shelfCount = count; }
    void setLocationCount(qint16 count) { m_locationCount = count; }

    /// Loads the window before it comes up.
    void setVisible(bool visible) override;

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    // Design, each part in its own function.
    void createDrawing();
    void createGrid();
    void createFrame();
    void createCaptions();
    void createTabs(QWidget* frame);
    void createParameters();
    void createPicture();
    void createNotes();
    void createMaterialList();
    void createCloseButtons();
    QFrame* addTabFrame(QWidget* parent, const char* name);

    // Event routines.
    void Form_Load();
    void imglocation_Click(int index);
    void imgBookStand_Click();
    void tabSurParam_Click(int number);
    void tlbWatchFullSurLocation_ButtonClick(const QString& key);
    void tlbCancelWatchSur_ButtonClick(const QString& key);

    void WathLocation(qint16 rank, qint16 stand);
    void WathParamStand(qint16 rank, qint16 stand);
    void FiilItemOnLocation(const LocationAddress& address);

    void resetDesign();
    void standBeside();
    void drawLocation(const DbRecordset& rows, qint32& width);
    void showItem(const LocationAddress& address);
    void showNoItem();
    void showAssignedItem(const LocationAddress& address, const LocationItemParams& item);
    void clearItem();
    void showFigures(const LocationFigures& figures);
    void showSizes(qint16 depth, qint16 height, qint16 width, qint16 weight);
    QString iconPath(const QString& file) const;

    AppContext& m_context;
    std::unique_ptr<clsMagWatchDetal> m_data;
    QString m_iconFolder;
    QString m_aplication;
    QString m_operation;
    qint32 m_topStand = 0;
    qint32 m_leftStand = 0;
    qint16 m_rank = 0;
    qint16 m_stand = 0;
    qint16 m_shelfCount = 0;
    qint16 m_locationCount = 0;

    // The drawing.
    ControlArray<PictureItem> m_imglocation;
    ControlArray<PictureItem> m_imgBookStand;
    ControlArray<LineItem> m_lnnFrame;
    PictureItem m_imgPozytion;

    // Controls, owned by their parents.
    PlanSurface* m_surface = nullptr;
    QLabel* m_lblParamStand = nullptr;
    QLabel* m_lblSurowiecLocation = nullptr;
    QLineEdit* m_txtShelf = nullptr;
    QLineEdit* m_txtLocation = nullptr;
    TabStrip* m_tabSurParam = nullptr;
    QFrame* m_frmParamStatic = nullptr;
    QFrame* m_frmParamPicture = nullptr;
    QFrame* m_frmParamInfo = nullptr;
    QLabel* m_lblProcentData = nullptr;
    QLabel* m_lblHeight = nullptr;
    QLabel* m_lblWidth = nullptr;
    QLabel* m_lblDep = nullptr;
    QLabel* m_lblWeight = nullptr;
    QLabel* m_lblGroup = nullptr;
    QLabel* m_lblQuantityData = nullptr;
    QLabel* m_lblQuantityBufData = nullptr;
    QLabel* m_lblProcentSumLineData = nullptr;
    QLabel* m_lblLocationData = nullptr;
    ToolBar* m_tlbWatchFullSurLocation = nullptr;
    PictureBox* m_impPictureParam = nullptr;
    QPlainTextEdit* m_txtParamInfoStand = nullptr;
    QPlainTextEdit* m_txtParamInfoLocation = nullptr;
    QFrame* m_frmWathLocationShiftItem = nullptr;
    ListView* m_lstLocationItem = nullptr;
    ToolBar* m_tlbCancelWatchSur = nullptr;
    ImageList m_imgSmall;
};

/// Opens the one stand detail of the program over all its windows. It is made at its first opening and lives
/// as long as the function, so that a count that is not told is the one told last.
[[nodiscard]] StandDetail standDetail(AppContext& context);

}  // namespace regalon
