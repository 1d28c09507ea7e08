#include "map/frmMagCreate.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "map/MapCanvas.h"
#include "platform/DataCombo.h"
#include "platform/ListView.h"
#include "platform/PictureBox.h"
#include "platform/Screen.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTimer>

namespace regalon {

namespace {

constexpr int kPrintLabel = 3;  // number of its button
constexpr int kSaveParam = 1;
constexpr int kImageOfSave = 25;

// Top of the frames, twips. The upper one overlaps the lower one by a little.
constexpr qint32 kLowerPosition = 7000;
constexpr qint32 kOverlap = 70;
constexpr qint32 kBelowToolbar = 100;

void moveTo(QWidget* frame, qint32 top) {
    frame->move(frame->x(), toPixels(top));
}

}  // namespace

frmMagCreate::~frmMagCreate() = default;

void frmMagCreate::Form_Load() {
    WindowTrap("frmMagCreate - Form_Load", [&] {
        m_map.reset();
        m_data = std::make_unique<clsMagCreate>(context());
        m_watch = std::make_unique<clsMagWatch>(context());
        m_map = std::make_unique<MapBuilder>(context(), canvas(), *m_watch,
                                             MapReportNames::of(QStringLiteral("frmMagCreate")));
        m_map->setIconFolder(iconFolder(context()));
        resetDesign();
        for (const Shelf& shelf : m_shelves)
            shelf.frame->hide();
        m_frmAddSurOnLocalization->hide();
        m_frmDetailsStand->hide();
        m_framePosition = kLowerPosition;
        placeFrames(false);
        FillComboBox();
        FillComboRank();
        FillComboSur();
        FillGroupOnLocalization();
        FillParamStaticLocalization();
        m_timer1->stop();
        m_tickCounter = 0;
        m_tlbSaveParamLocalization->button(kSaveParam)->setIcon(imgSmall().icon(kImageOfSave));
        m_frmDefGroupLocation->hide();
        m_frmWathSurPicture->hide();
        RefreschWatchStore();
        m_tlbCmd->button(kPrintLabel)->setEnabled(false);
        m_cmbStatusLocation->hide();
    });
}

void frmMagCreate::Form_Unload() {
    m_timer1->stop();
}

/// The state of the controls as designed, for a window that is opened once more.
void frmMagCreate::resetDesign() {
    const QSignalBlocker noClick(m_chkFramePozytion);
    m_chkFramePozytion->setChecked(false);
    for (QLineEdit* box :
         {m_txtImageName, m_txtLeft, m_txtTop, m_txtFrmRank, m_txtFrmStand, m_txtFrmShelf, m_txtFrmLocation,
          m_txtParamValueLocalization, m_txtFrmPicture, m_txtNewGroupName, m_txtRaportCode, m_txtRaportFile})
        box->clear();
    m_txtDescStand->clear();
    for (QCheckBox* flag : {m_chkStandVisable, m_chkStandEnable, m_chkStandFrameArround})
        flag->setChecked(false);
    for (PictureBox* image : {m_imgWathFindIcon, m_impPictureSur})
        image->setPicture({});
    for (ListView* list : {m_lstSurOnMag, m_lstSurOnGroup}) {
        list->clearItems();
        list->clearHeaders();
    }
    m_lblSurOnLOcationData->clear();
    m_lblStatus->clear();
    m_itemCode.clear();
    m_remembered = {};
    m_tlbSaveParamLocalization->button(kSaveParam)->setText(QStringLiteral("&Zapisz parametr"));
    killPreview();
    resetCombos();
}

/// Takes the rows away without the events of a change: nothing is chosen yet.
void frmMagCreate::resetCombos() {
    for (DataCombo* combo : {m_dtcRank, m_dtcStand, m_dtcShelfCount, m_dtcSurOnLOcalization,
                             m_dtcGroupOnLocalization, m_dtcParamLocation, m_dtcGroupSur}) {
        const QSignalBlocker noChange(combo);
        combo->clearRowSource();
        combo->setBoundText(QString());
    }
    for (const Shelf& shelf : m_shelves)
        shelf.count->clear();
    m_cmbStatusLocation->clear();
}

void frmMagCreate::FillComboBox() {
    WindowTrap("frmMagCreate - FillComboBox", [&] {
        for (const Shelf& shelf : m_shelves) {
            for (const char* count : {"-----", "1", "2", "3"})
                shelf.count->addItem(QString::fromLatin1(count));
            shelf.count->setCurrentText(QStringLiteral("1"));
            shelf.count->insertItem(0, QStringLiteral("0"));
        }
        m_cmbStatusLocation->insertItem(0, QStringLiteral("Mono Indeksowa"));
        m_cmbStatusLocation->insertItem(1, QStringLiteral("Multi Indeksowa"));
    });
}

void frmMagCreate::RefreschWatchStore() {
    WindowTrap("frmMagCreate - RefreschWatchStore", [&] {
        const BusyPointer busy;
        m_map->RefreschWatchStore();
    });
}

void frmMagCreate::Form_KeyDown(int keyCode, int shift) {
    WindowTrap("frmMagCreate - Form_KeyDown", [&] { handleKey(keyCode, shift); });
}

void frmMagCreate::tlbCmd_ButtonClick(const QString& key) {
    WindowTrap("frmMagCreate - tlbCmd_ButtonClick", [&] {
        if (key == u"key_Exit")
            unload();
        else if (key == u"key_PrintEtykieteLocation")
            checkLabelAddress();
        else if (key == u"key_GroupSur")
            WathFrameGroupSurDefine();
        else if (key == u"key_RefreshMag")
            m_map->RebulidMag(true);
    });
}

void frmMagCreate::chkFramePozytion_Click() {
    WindowTrap("frmMagCreate - chkFramePozytion_Click",
               [&] { placeFrames(m_chkFramePozytion->isChecked()); });
}

/// Low: the frames leave the upper part of the plan free; high: the lower one.
void frmMagCreate::placeFrames(bool high) {
    const qint32 createTop = high ? windowTop() + 2 * heightOfToolbar() + kBelowToolbar : m_framePosition;
    const qint32 locationTop = high ? createTop + toTwips(m_frmCreate->height())
                                    : createTop - toTwips(m_frmAddSurOnLocalization->height()) + kOverlap;
    moveTo(m_frmCreate, createTop);
    moveTo(m_frmAddSurOnLocalization, locationTop);
}

/// Where the window lies in the main window, twips.
qint32 frmMagCreate::windowTop() const {
    const auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget());
    return toTwips(frame ? frame->y() : y());
}

qint32 frmMagCreate::heightOfToolbar() const {
    return toTwips(m_tlbCmd->height());
}

}  // namespace regalon
