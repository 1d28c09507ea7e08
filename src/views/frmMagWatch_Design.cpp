// The controls of the window and where they lie. All positions and sizes are twips.

#include "map/MapBackdrop.h"
#include "map/MapCanvas.h"
#include "map/SearchPanel.h"
#include "platform/CommonDialog.h"
#include "platform/DesignControls.h"
#include "platform/KeyPreview.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "views/frmMagWatch.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QScrollArea>
#include <QVBoxLayout>

namespace regalon {

namespace {

// Fits a child window of the main window's fixed size without scroll bars.
constexpr int kSurfaceWidth = 15210;
constexpr int kSurfaceHeight = 9720;

// The panels below the hall share one place; only one of them shows at a time. The list of materials lies
// above them.
constexpr int kPanelLeft = 120;
constexpr int kPanelTop = 8310;
constexpr int kPanelWidth = kSurfaceWidth - 240;
constexpr int kPanelHeight = kSurfaceHeight - kPanelTop - 30;

QLineEdit* addAddressBox(QWidget* parent, const char* name, const QString& meaning, int left) {
    QLineEdit* box = addNumberBox(parent, name, meaning);
    place(box, left, 300, 540, 315);
    return box;
}

}  // namespace

frmMagWatch::frmMagWatch(AppContext& context, const StandDetail& standDetail, QWidget* parent)
    : QWidget(parent), m_context(context), m_standDetail(standDetail) {
    setObjectName(QStringLiteral("frmMagWatch"));
    setWindowTitle(QStringLiteral("Podgląd magazynu"));
    setFocusPolicy(Qt::StrongFocus);
    createImages();
    createPlan();
    createToolbars();
    createStatusPanel();
    createLocationList();
    createSearchPanel();
    createAutoRefreshPanel();
    createTimer();
    createFileDialog();
    hidePanels();
    auto* keys = new KeyPreview(this, [this](int keyCode, int shift) { Form_KeyDown(keyCode, shift); });
    keys->claim('W', ShiftMask::Alt);
}

QSize frmMagWatch::sizeHint() const {
    return m_surface->size();
}

void frmMagWatch::createImages() {
    setRowIcons(m_imgSmall, {40, 42});
}

void frmMagWatch::createPlan() {
    m_surface = new QWidget;
    m_surface->setObjectName(QStringLiteral("surface"));
    m_surface->setFixedSize(toPixels(kSurfaceWidth), toPixels(kSurfaceHeight));
    m_canvas = new MapCanvas(kSurfaceWidth, kSurfaceHeight, m_surface);
    addMapBackdrop(m_surface);
    connect(m_canvas, &MapCanvas::standClicked, this, &frmMagWatch::imgBookStand_Click);
    connect(m_canvas, &MapCanvas::locationClicked, this, &frmMagWatch::imglocation_Click);

    auto* scroll = new QScrollArea(this);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setFocusPolicy(Qt::NoFocus);
    scroll->setWidget(m_surface);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}

void frmMagWatch::createToolbars() {
    auto* clbData = new CoolBar(m_surface);
    clbData->setObjectName(QStringLiteral("clbData"));
    clbData->setAutoFillBackground(true);
    place(clbData, 0, 0, kSurfaceWidth, 570);

    m_tlbCmd = new ToolBar;
    m_tlbCmd->setObjectName(QStringLiteral("tlbCmd"));
    m_tlbCmd->addButton(QStringLiteral("key_Exit"), QStringLiteral("&Wyjście"), QStringLiteral("Wyjscie"),
                        programIcon(QStringLiteral("exit.ico")));
    m_tlbCmd->addSeparator(QStringLiteral("keySeparator"));
    m_tlbCmd->addButton(QStringLiteral("key_ReBulid"), QStringLiteral("Odśwież magazyn"), {},
                        programIcon(QStringLiteral("refresh.ico")));
    m_tlbCmd->addButton(QStringLiteral("key_AutoRebulid"), QStringLiteral("Auto odświeżanie "), {},
                        programIcon(QStringLiteral("clock.ico")));
    m_tlbCmd->addButton(QStringLiteral("key_LokkFor"), QStringLiteral("&Znajdź surowiec"), {},
                        programIcon(QStringLiteral("find.ico")));
    clbData->addBand(m_tlbCmd);
    connect(m_tlbCmd, &ToolBar::buttonClick, this, &frmMagWatch::tlbCmd_ButtonClick);

    m_tlbStatusRefresh = new ToolBar;
    m_tlbStatusRefresh->setObjectName(QStringLiteral("tlbStatusRefresh"));
    m_tlbStatusRefresh->addButton(QStringLiteral("key_Time"), QString());
    // The unit stands beside the seconds and comes and goes with them.
    QLabel* unit = addLabel(m_tlbStatusRefresh, "Label9", QStringLiteral("[minuta]"));
    m_tlbStatusRefresh->addWidget(unit);
    clbData->addBand(m_tlbStatusRefresh);
}

void frmMagWatch::createStatusPanel() {
    m_frmWatchData = addFrame(m_surface, "frmWatchData", QStringLiteral("Status czynności"));
    place(m_frmWatchData, kPanelLeft, kPanelTop, kPanelWidth, kPanelHeight);

    m_lblObjectClick = addLabel(m_frmWatchData, "lblObjectClick", {}, true);
    place(m_lblObjectClick, 150, 300, 5550, 315);
    m_txtRank = addAddressBox(m_frmWatchData, "txtRank", QStringLiteral("Rząd"), 5850);
    m_txtStand = addAddressBox(m_frmWatchData, "txtStand", QStringLiteral("Regał"), 6450);
    m_txtShelf = addAddressBox(m_frmWatchData, "txtShelf", QStringLiteral("Półka"), 7050);
    m_txtLocation = addAddressBox(m_frmWatchData, "txtLocation", QStringLiteral("Lokalizacja"), 7650);
    m_lblObjectParam = addLabel(m_frmWatchData, "lblObjectParam");
    place(m_lblObjectParam, 150, 600, kPanelWidth - 300, 285);
    m_lblObjectParam2 = addLabel(m_frmWatchData, "lblObjectParam2");
    place(m_lblObjectParam2, 150, 945, 5400, 315);

    m_tlbWatchFullSurLocation = new ToolBar(m_frmWatchData);
    m_tlbWatchFullSurLocation->setObjectName(QStringLiteral("tlbWatchFullSurLocation"));
    m_tlbWatchFullSurLocation->addButton(QStringLiteral("key_Akcept"),
                                         QStringLiteral("&Podglad wszytkich surowców na lokalizacji"), {},
                                         programIcon(QStringLiteral("list.ico")));
    m_tlbWatchFullSurLocation->addButton(QStringLiteral("key_Cancel"),
                                         QStringLiteral("&Zamknij podglad surowców na lokalizacji"), {},
                                         programIcon(QStringLiteral("close.ico")));
    place(m_tlbWatchFullSurLocation, 5550, 870, kPanelWidth - 5700, 480);
    connect(m_tlbWatchFullSurLocation, &ToolBar::buttonClick, this,
            &frmMagWatch::tlbWatchFullSurLocation_ButtonClick);
}

void frmMagWatch::createLocationList() {
    m_frmWathLocationShiftItem = addFrame(m_surface, "frmWathLocationShiftItem", QString());
    // Over the lowest row of the hall only, and right of the row along the left wall: while the list is open
    // the user picks its next location on the plan.
    place(m_frmWathLocationShiftItem, 1320, 6660, 13770, 1590);
    m_lstLocationItem = new ListView(m_frmWathLocationShiftItem);
    m_lstLocationItem->setObjectName(QStringLiteral("lstLocationItem"));
    m_lstLocationItem->setSmallIcons(&m_imgSmall);
    place(m_lstLocationItem, 60, 60, 13650, 1470);
}

void frmMagWatch::createSearchPanel() {
    m_frmLookForSur = new SearchPanel(m_context, objectName(), m_surface);
    place(m_frmLookForSur, kPanelLeft, kPanelTop, kPanelWidth, kPanelHeight);
    m_frmLookForSur->onCancel([this] {
        m_map->RebulidMag(true);
        m_frmWatchData->show();
    });
}

void frmMagWatch::createFileDialog() {
    // On the form by its design; nothing in this window opens it.
    new CommonDialog(this);
}

}  // namespace regalon
