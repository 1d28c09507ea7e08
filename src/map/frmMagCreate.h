#pragma once

#include "map/LocationAddress.h"
#include "map/MapBuilder.h"
#include "map/MapWindow.h"
#include "map/clsMagCreate.h"
#include "map/clsMagWatch.h"

#include <QString>
#include <QVariant>

#include <array>
#include <memory>
#include <optional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QTimer;

namespace regalon {

class CommonDialog;
class DataCombo;
class ListView;
class PictureBox;
class ToolBar;
class WordApplication;

/// The layout editor: the plan, and over it the frames in which a manager defines stands with their shelves
/// and locations, what belongs on a location, and the material groups.
class frmMagCreate : public MapWindow {
    Q_OBJECT

public:
    /// The context must outlive the window.
    explicit frmMagCreate(AppContext& context, QWidget* parent = nullptr);
    ~frmMagCreate() override;

    /// Written by the item search dialog before it closes.
    void setItemCode(const QString& itemCode) { m_itemCode = itemCode; }

    // The label of a location (frmMagCreate_Label.cpp). Nothing calls these two: they stand ready for the
    // button, in a window that is loaded.

    /// Shows the user's active template.
    void SetPrintRaport();
    /// Prints the label of a location with the template of txtRaportFile, and answers whether it did. The
    /// numbers as numbers or texts. Waits for the word processor; reports its own failures.
    bool PrintEtykietaLocation(const QVariant& rank, const QVariant& stand, const QVariant& shelf,
                               const QVariant& location);

private:
    static constexpr int kShelves = 4;

    /// The frame of one shelf and the number of its locations.
    struct Shelf {
        QGroupBox* frame = nullptr;
        QLabel* label = nullptr;
        QComboBox* count = nullptr;
    };

    /// The last stand that was written or removed, for choosing it again behind a save.
    struct RememberedStand {
        qint16 Rank = 0;
        qint16 Stand = 0;
        qint16 Top = 0;
        qint16 Left = 0;
    };

    // Design of the stand side (frmMagCreate_Design.cpp)
    void createToolbars();
    void createLabelStatus();
    void createStandFrame();
    void createStandChoice();
    void createShelves();
    Shelf createShelf(QWidget* parent, int number);
    void createStandIcon();
    void createStandPlace();
    void createStandProperty();
    void createSaveStand();

    // Design of the location editor and of the groups (frmMagCreate_DesignLocation.cpp)
    void createLocationFrame();
    void createLocationMaterial();
    void createLocationAddress();
    void createLocationParams();
    void createLocationPicture();
    void createGroupFrame();
    void createGroupChoice();
    void createGroupLists();
    void createTimer();

    // The window (frmMagCreate.cpp)
    void Form_Load() override;
    void Form_Unload() override;
    void Form_KeyDown(int keyCode, int shift) override;
    void tlbCmd_ButtonClick(const QString& key);
    void chkFramePozytion_Click();
    void FillComboBox();
    void RefreschWatchStore();
    void resetDesign();
    void resetCombos();
    void placeFrames(bool high);
    qint32 windowTop() const;
    qint32 heightOfToolbar() const;

    // The stand side (frmMagCreate_Stand.cpp)
    void FillComboRank();
    void dtcRank_Change();
    void dtcRank_Change_Object();
    void FillComboStand(qint16 Rank);
    void FillComboStand(qint16 Stand, qint16 Rank, qint16 ShelfCount);
    void dtcStand_Change();
    void dtcStand_Change_Object();
    void dtcShelfCount_Change();
    void dtcShelfCount_Change_Object();
    bool txtLeft_Validate();
    bool txtTop_Validate();
    void imgBookStand_Click(int index) override;
    void tlbPathIconFile_ButtonClick(const QString& key);
    void showStand(const StandParameters& stand);
    void clearStand();
    void showLocationCounts(qint16 rank, qint16 stand, qint16 shelfCount);
    void offerLocationCounts(qint16 rank, qint16 stand, qint16 shelves);
    void markShelf(qint16 marked);
    QString askForFile(const QString& filter);
    QString iconPath(const QString& file) const;

    // Saving and removing a stand (frmMagCreate_SaveStand.cpp)
    void tlbSaveStand_ButtonClick(const QString& key);
    bool ValidateDataOnForm(QString& message);
    bool AddBookStand();
    bool RemoveBookStand();
    QString firstFault() const;
    StandDefinition standOnForm();
    void saveStand();
    void removeStand();

    // The preview of one stand (frmMagCreate_Preview.cpp)
    void showPreview();
    void killPreview();
    void WatchStandOnFormOneStand();
    void WatchStandOnForm(const BookstandData& stand);

    // The location editor (frmMagCreate_Location.cpp)
    void imglocation_Click(int index) override;
    void FillComboSur();
    void FillGroupOnLocalization();
    void FillParamStaticLocalization();
    void cmdLookFor_Click();
    void tlbSaveSurLocalization_ButtonClick(const QString& key);
    bool SaveLocalizationParam();
    std::optional<LocationAddress> locationOnForm() const;
    void showAssigned(const QString& ItemCode, const QString& ItemName, qint16 GroupSur);
    void showNothingAssigned();

    // Parameters and pictures of a location (frmMagCreate_Params.cpp)
    void dtcParamLocation_Change();
    void dtcParamLocation_Change_Object();
    bool txtParamValueLocalization_Validate();
    void tlbPictureSur_ButtonClick(const QString& key);
    void tlbSaveParamLocalization_ButtonClick(const QString& key);
    void Timer1_Timer();
    void showNoParam();
    void showPictureParam(const LocationAddress& address, const QString& value);
    void showTextParam(const QString& value, int width, int limit);
    void showStatusParam(const QString& value);
    void leavePicture();
    bool readParamValue(const QString& type, QString& value, QString& message) const;
    void setSaveButton(const QString& caption, int image);

    // Material groups (frmMagCreate_Groups.cpp)
    void WathFrameGroupSurDefine();
    void FillComboGroupLocation();
    void dtcGroupSur_Change();
    void cmdAddSurOnGroup_Click();
    void cmdRemovroup_Click();
    void tlbSaveGroupLocation_ButtonClick(const QString& key);
    void fillGroupList(qint16 group);
    void deleteGroup(qint16 group);
    void saveMembers(qint16 group);
    void saveNewGroup();

    // The label of a location (frmMagCreate_Label.cpp)
    void checkLabelAddress();
    void showLabelStatus(const QString& text);
    void printActiveDocument(WordApplication& word, const QString& printer);

    // State. The data classes and the plan live from load to load.
    std::unique_ptr<clsMagCreate> m_data;
    std::unique_ptr<clsMagWatch> m_watch;
    std::unique_ptr<MapBuilder> m_map;
    RememberedStand m_remembered;
    QString m_itemCode;
    qint32 m_framePosition = 0;  ///< Top of frmCreate in its lower position, twips
    qint32 m_tickCounter = 0;    ///< seconds for which the save button of the parameters says "Zapisano"

    // Controls, owned by their parents.
    ToolBar* m_tlbCmd = nullptr;
    QCheckBox* m_chkFramePozytion = nullptr;
    CommonDialog* m_commonDialog = nullptr;
    QTimer* m_timer1 = nullptr;
    QLineEdit* m_txtRaportCode = nullptr;
    QLineEdit* m_txtRaportFile = nullptr;
    QLabel* m_lblStatus = nullptr;

    // Stand side.
    QGroupBox* m_frmCreate = nullptr;
    DataCombo* m_dtcRank = nullptr;
    DataCombo* m_dtcStand = nullptr;
    DataCombo* m_dtcShelfCount = nullptr;
    std::array<Shelf, kShelves> m_shelves;
    QLineEdit* m_txtImageName = nullptr;
    PictureBox* m_imgWathFindIcon = nullptr;
    ToolBar* m_tlbPathIconFile = nullptr;
    QLineEdit* m_txtLeft = nullptr;
    QLineEdit* m_txtTop = nullptr;
    QGroupBox* m_frmDetailsStand = nullptr;
    QPlainTextEdit* m_txtDescStand = nullptr;
    QCheckBox* m_chkStandVisable = nullptr;
    QCheckBox* m_chkStandEnable = nullptr;
    QCheckBox* m_chkStandFrameArround = nullptr;
    ToolBar* m_tlbSaveStand = nullptr;

    // Location side.
    QGroupBox* m_frmAddSurOnLocalization = nullptr;
    QLineEdit* m_txtFrmRank = nullptr;
    QLineEdit* m_txtFrmStand = nullptr;
    QLineEdit* m_txtFrmShelf = nullptr;
    QLineEdit* m_txtFrmLocation = nullptr;
    QLabel* m_lblSurOnLOcationData = nullptr;
    DataCombo* m_dtcSurOnLOcalization = nullptr;
    QPushButton* m_cmdLookFor = nullptr;
    DataCombo* m_dtcGroupOnLocalization = nullptr;
    ToolBar* m_tlbDefineGroupOnLocation = nullptr;
    ToolBar* m_tlbSaveSurLocalization = nullptr;
    DataCombo* m_dtcParamLocation = nullptr;
    QLineEdit* m_txtParamValueLocalization = nullptr;
    QComboBox* m_cmbStatusLocation = nullptr;
    QGroupBox* m_frmWathSurPicture = nullptr;
    PictureBox* m_impPictureSur = nullptr;
    QLineEdit* m_txtFrmPicture = nullptr;
    ToolBar* m_tlbPictureSur = nullptr;
    ToolBar* m_tlbSaveParamLocalization = nullptr;

    // Groups.
    QGroupBox* m_frmDefGroupLocation = nullptr;
    DataCombo* m_dtcGroupSur = nullptr;
    QLabel* m_lblNewGroupName = nullptr;
    QLineEdit* m_txtNewGroupName = nullptr;
    ListView* m_lstSurOnMag = nullptr;
    ListView* m_lstSurOnGroup = nullptr;
    QPushButton* m_cmdAddSurOnGroup = nullptr;
    QPushButton* m_cmdRemovroup = nullptr;
    ToolBar* m_tlbSaveGroupLocation = nullptr;
};

}  // namespace regalon
