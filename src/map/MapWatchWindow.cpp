#include "map/MapWatchWindow.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "map/LocationName.h"
#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapSearch.h"
#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "map/clsMagWatch.h"
#include "platform/Convert.h"
#include "platform/DesignControls.h"
#include "platform/MsgBox.h"
#include "platform/RunTimeError.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QTimer>

namespace regalon {

namespace {

constexpr int kTimerInterval = 1000;  // milliseconds

// The stand detail opens a little below and right of the stand that was clicked; twips.
constexpr qint32 kDetailBelow = 1300 + 150;
constexpr qint32 kDetailRight = 50;

}  // namespace

MapWatchWindow::MapWatchWindow(AppContext& context, const QString& name, const QString& caption,
                               const StandDetail& standDetail, QWidget* parent)
    : MapWindow(context, name, caption, parent), m_standDetail(standDetail) {
    m_frmWatchData = new StatusPanel(surface());
    m_frmLookForSur = new SearchPanel(context, name, surface());
    for (QWidget* panel : {static_cast<QWidget*>(m_frmWatchData), static_cast<QWidget*>(m_frmLookForSur)})
        place(panel, PanelLeft, PanelTop, PanelWidth, PanelHeight);
    createTimer();
}

MapWatchWindow::~MapWatchWindow() = default;

void MapWatchWindow::createTimer() {
    m_timer1 = new QTimer(this);
    m_timer1->setObjectName(QStringLiteral("Timer1"));
    m_timer1->setInterval(kTimerInterval);
    connect(m_timer1, &QTimer::timeout, this, [this] { Timer1_Timer(); });
}

void MapWatchWindow::setTopStand(qint32 twips) {
    WindowTrap(reportName("TopStand"), [&] { m_topStand = ToInt16(double(twips)); });
}

void MapWatchWindow::setLeftStand(qint32 twips) {
    WindowTrap(reportName("LeftStand"), [&] { m_leftStand = ToInt16(double(twips)); });
}

void MapWatchWindow::setItemCode(const QString& itemCode) {
    m_frmLookForSur->setItemCode(itemCode);
}

void MapWatchWindow::dropPlan() {
    m_search.reset();
    m_map.reset();
    m_ownData = nullptr;
}

void MapWatchWindow::makePlan(const QString& aplication, MapDataClass* ownData) {
    dropPlan();
    m_magWatch = std::make_unique<clsMagWatch>(context());
    m_ownData = ownData != nullptr ? ownData : m_magWatch.get();
    m_map = std::make_unique<MapBuilder>(context(), canvas(), *m_magWatch, MapReportNames::of(objectName()));
    m_map->setIconFolder(iconFolder(context()));
    m_search = std::make_unique<MapSearch>(*m_map, canvas(), *m_ownData, SearchReportNames::of(objectName()));
    m_frmLookForSur->load(*m_ownData, *m_search, aplication);
}

void MapWatchWindow::Form_KeyDown(int keyCode, int shift) {
    // The one routine of these windows whose message is neither system-modal nor names the source.
    try {
        handleKey(keyCode, shift);
    } catch (...) {
        const ErrorRecord error = currentError();
        MsgBox(QString::number(error.Number) + QStringLiteral("\r\n") + error.Description, MsgFlag::Critical,
               reportName("Form_KeyDown"));
    }
}

void MapWatchWindow::resetRefresh() {
    m_timer1->stop();
    m_refreshCounter = 0;
    m_refreshInterval = 0;
}

void MapWatchWindow::Timer1_Timer() {
    // A tick that falls on an open message is lost: its own message would lie over the other.
    if (isMsgBoxOpen())
        return;
    WindowTrap(reportName("Timer1_Timer"), [&] {
        beforeTick();
        ++m_refreshCounter;
        // Strictly greater: the tick on which nothing is left rebuilds, so that a period takes a second more
        // than its minutes.
        if (m_refreshCounter > m_refreshInterval) {
            RebulidMag();
            m_refreshCounter = 0;
        }
    });
}

LocationAddress MapWatchWindow::Clicked::address() const {
    return {ToInt16(rank), ToInt16(stand), ToInt16(shelf), ToInt16(location)};
}

std::optional<MapWatchWindow::Clicked> MapWatchWindow::clickedStand(int index) const {
    const TagFields fields(canvas().imgBookStand()[index].tag());
    if (fields.isEmpty())
        return std::nullopt;
    return Clicked{fields.at(StandField::Rank), fields.at(StandField::Stand), {}, {}};
}

MapWatchWindow::Clicked MapWatchWindow::clickedLocation(int index) const {
    const TagFields fields(canvas().imglocation()[index].tag());
    return {fields.at(LocationField::Rank), fields.at(LocationField::Stand), fields.at(LocationField::Shelf),
            fields.at(LocationField::Location)};
}

void MapWatchWindow::openStandDetail(const Clicked& stand, int index) {
    StandDetailRequest request;
    request.Rank = ToInt16(stand.rank);
    request.Stand = ToInt16(stand.stand);
    qint16 shelfCount = 0;
    qint16 locationCount = 0;
    if (m_ownData->GetStandParam(request.Rank, request.Stand, shelfCount, locationCount)) {
        request.ShelfCount = shelfCount;
        request.LocationCount = locationCount;
    }
    const PictureItem& image = canvas().imgBookStand()[index];
    request.TopStand = m_topStand + image.top() + kDetailBelow;
    request.LeftStand = m_leftStand + image.left() + kDetailRight;
    if (!m_standDetail)
        raiseNotAvailable(QStringLiteral("Szczegóły regału"));
    m_standDetail(request);
}

bool MapWatchWindow::showClickedStand(int index) {
    const std::optional<Clicked> stand = clickedStand(index);
    if (!stand)
        return false;
    status().showStand(stand->rank, stand->stand);
    status().clearMaterial();
    openStandDetail(*stand, index);
    return true;
}

void MapWatchWindow::showClickedLocation(int index) {
    const Clicked clicked = clickedLocation(index);
    status().showAddress(clicked.rank, clicked.stand, clicked.shelf, clicked.location);
    status().showLocation(clicked.rank, clicked.stand, clicked.shelf, clicked.location);
    QString itemCode;
    QString itemName;
    qint16 group = 0;
    if (m_ownData->GetParamLocalization(clicked.address(), itemCode, itemName, group))
        status().showMaterial(itemCode, itemName);
    else
        status().showNoMaterial();
}

void MapWatchWindow::openSearch() {
    m_frmLookForSur->open();
    m_frmWatchData->hide();
}

void MapWatchWindow::addRefresh(ToolBar* tlbCmd) {
    tlbCmd->addButton(QStringLiteral("key_ReBulid"), QStringLiteral("Odśwież magazyn"), {},
                      programIcon(QStringLiteral("refresh.ico")));
}

void MapWatchWindow::addSearch(ToolBar* tlbCmd) {
    tlbCmd->addButton(QStringLiteral("key_LokkFor"), QStringLiteral("&Znajdź surowiec"), {},
                      programIcon(QStringLiteral("find.ico")));
}

}  // namespace regalon
