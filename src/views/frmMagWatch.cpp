#include "views/frmMagWatch.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "map/LocationName.h"
#include "map/MapCanvas.h"
#include "map/RankLetter.h"
#include "map/SearchPanel.h"
#include "platform/Convert.h"
#include "platform/KeyPreview.h"
#include "platform/ListView.h"
#include "platform/MsgBox.h"
#include "platform/RunTimeError.h"
#include "platform/Screen.h"
#include "platform/ToolBar.h"

#include <QAction>
#include <QCloseEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QShowEvent>
#include <QTimer>

#include <initializer_list>

namespace regalon {

namespace {

constexpr int kKeyD = 68;
constexpr int kKeyW = 87;

// The stand detail opens a little below and right of the stand that was clicked; twips.
constexpr qint32 kDetailBelow = 1300 + 150;
constexpr qint32 kDetailRight = 50;

}  // namespace

frmMagWatch::~frmMagWatch() = default;

void frmMagWatch::setTopStand(qint32 twips) {
    WindowTrap("frmMagWatch - TopStand", [&] { m_topStand = ToInt16(double(twips)); });
}

void frmMagWatch::setLeftStand(qint32 twips) {
    WindowTrap("frmMagWatch - LeftStand", [&] { m_leftStand = ToInt16(double(twips)); });
}

void frmMagWatch::setItemCode(const QString& itemCode) {
    m_frmLookForSur->setItemCode(itemCode);
}

void frmMagWatch::ChangeIconOnLocation(const QString& ItemCode, qint16 mode) {
    WindowTrap("frmMagWatch - ChangeIconOnLocation", [&] {
        if (!m_search)
            throw RunTimeError(RunTime::ObjectNotSet);
        m_search->ChangeIconOnLocation(ItemCode, mode);
    });
}

void frmMagWatch::unload() {
    if (auto* frame = qobject_cast<QMdiSubWindow*>(parentWidget()))
        frame->close();
    else
        close();
}

void frmMagWatch::showEvent(QShowEvent* event) {
    if (!m_loaded && !event->spontaneous()) {
        m_loaded = true;
        Form_Load();
    }
    QWidget::showEvent(event);
}

void frmMagWatch::closeEvent(QCloseEvent* event) {
    m_loaded = false;
    m_timer1->stop();
    event->accept();
}

void frmMagWatch::Form_Load() {
    WindowTrap("frmMagWatch - Form_Load", [&] {
        m_search.reset();
        m_map.reset();
        m_data = std::make_unique<clsMagWatch>(m_context);
        m_aplication = QStringLiteral("P");
        m_map = std::make_unique<MapBuilder>(m_context, *m_canvas, *m_data,
                                             MapReportNames::of(QStringLiteral("frmMagWatch")));
        m_map->setIconFolder(iconFolder(m_context));
        m_search = std::make_unique<MapSearch>(*m_map, *m_canvas, *m_data,
                                               SearchReportNames::of(QStringLiteral("frmMagWatch")));
        resetDesign();
        m_map->RefreschWatchStore();
        FillComboTime();
        m_timer1->stop();
        hidePanels();
    });
}

void frmMagWatch::hidePanels() {
    for (QWidget* panel :
         std::initializer_list<QWidget*>{m_frmAutoRebulidCOnfig, m_frmLookForSur, m_tlbStatusRefresh,
                                         m_tlbWatchFullSurLocation, m_frmWathLocationShiftItem})
        panel->hide();
}

/// The state of the controls as designed, for a window that is opened once more.
void frmMagWatch::resetDesign() {
    for (QLabel* label : {m_lblObjectClick, m_lblObjectParam, m_lblObjectParam2})
        label->clear();
    showAddress({}, {}, {}, {});
    m_frmLookForSur->load(*m_data, *m_search, m_aplication);
    resetAutoRefresh();
    m_lstLocationItem->clearItems();
    m_lstLocationItem->clearHeaders();
    m_tlbWatchFullSurLocation->button(1)->setEnabled(true);
    m_tlbWatchFullSurLocation->button(2)->setEnabled(false);
    // Hidden before the plan is read: a message of the reading would show them half made.
    hidePanels();
    m_frmWatchData->show();
}

void frmMagWatch::Form_KeyDown(int keyCode, int shift) {
    // The one routine of the window whose message is neither system-modal nor names the source.
    try {
        if (shift == ShiftMask::Alt && keyCode == kKeyW)
            unload();
        else if (shift == ShiftMask::Alt && keyCode == kKeyD) {
            // Reserved: the letter is taken, but nothing is bound to it.
        }
        Screen::setMousePointer(MousePointer::Default);
    } catch (...) {
        const ErrorRecord error = currentError();
        MsgBox(QString::number(error.Number) + QStringLiteral("\r\n") + error.Description, MsgFlag::Critical,
               QStringLiteral("frmMagWatch - Form_KeyDown"));
    }
}

void frmMagWatch::tlbCmd_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatch - tlbCmd_ButtonClick", [&] {
        if (key == u"key_Exit")
            unload();
        else if (key == u"key_ReBulid")
            m_map->RebulidMag(true);
        else if (key == u"key_AutoRebulid")
            AutoRebulidConfig();
        else if (key == u"key_LokkFor")
            openSearch();
    });
}

void frmMagWatch::openSearch() {
    m_frmLookForSur->open();
    m_frmWatchData->hide();
}

void frmMagWatch::imgBookStand_Click(int index) {
    WindowTrap("frmMagWatch - imgBookStand_Click", [&] {
        const TagFields fields(m_canvas->imgBookStand()[index].tag());
        if (fields.isEmpty())
            return;
        const QString rank = fields.at(StandField::Rank);
        const QString stand = fields.at(StandField::Stand);
        if (!m_frmWathLocationShiftItem->isHidden())
            return;
        m_lblObjectClick->setText(QStringLiteral("Rząd: ") + RankLetter(ToInt16(rank)) +
                                  QStringLiteral(" Regał: ") + stand);
        m_lblObjectParam2->clear();
        m_lblObjectParam->clear();
        m_tlbWatchFullSurLocation->hide();
        const QString none = QStringLiteral("-1");
        showAddress(none, none, none, none);
        openStandDetail(ToInt16(rank), ToInt16(stand), index);
    });
}

void frmMagWatch::openStandDetail(qint16 rank, qint16 stand, int index) {
    StandDetailRequest request;
    qint16 shelfCount = 0;
    qint16 locationCount = 0;
    if (m_data->GetStandParam(rank, stand, shelfCount, locationCount)) {
        request.ShelfCount = shelfCount;
        request.LocationCount = locationCount;
    }
    const PictureItem& image = m_canvas->imgBookStand()[index];
    request.TopStand = m_topStand + image.top() + kDetailBelow;
    request.LeftStand = m_leftStand + image.left() + kDetailRight;
    request.Rank = rank;
    request.Stand = stand;
    if (!m_standDetail)
        raiseNotAvailable(QStringLiteral("Szczegóły regału"));
    m_standDetail(request);
}

void frmMagWatch::showAddress(const QString& rank, const QString& stand, const QString& shelf,
                              const QString& location) {
    m_txtRank->setText(rank);
    m_txtStand->setText(stand);
    m_txtShelf->setText(shelf);
    m_txtLocation->setText(location);
}

}  // namespace regalon
