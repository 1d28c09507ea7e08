// The controls of the window and where they lie. All positions and sizes are twips.

#include "common/ErrorTrap.h"
#include "map/PlanFrame.h"
#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "platform/DesignControls.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "stock/frmMagWatchShiftLoc.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>

namespace regalon {

namespace {

// The frame of the shift lies over the plan but for the row along the left wall, where another location can
// be clicked; those of the other rows are typed into the address boxes.
constexpr int kShiftLeft = 1320;
constexpr int kShiftTop = 600;
constexpr int kShiftWidth = 13770;
constexpr int kShiftHeight = 7695;  // with the bottom wall

// Inside it the materials and packages above the proposals, which are more; each list over its buttons.
constexpr int kInset = 90;
constexpr int kGroupWidth = kShiftWidth - 2 * kInset;
constexpr int kItemHeight = 3300;
constexpr int kPropTop = kInset + kItemHeight + kInset;
constexpr int kPropHeight = kShiftHeight - kPropTop - kInset;
constexpr int kListWidth = kGroupWidth - 2 * kInset;
constexpr int kButtonsHeight = 480;

int listHeight(int groupHeight) {
    return groupHeight - 2 * kInset - kButtonsHeight;
}

ToolBar* addButtons(QWidget* parent, const char* name, int left, int top, int width) {
    auto* bar = new ToolBar(parent);
    bar->setObjectName(QString::fromLatin1(name));
    place(bar, left, top, width, kButtonsHeight);
    return bar;
}

}  // namespace

frmMagWatchShiftLoc::frmMagWatchShiftLoc(AppContext& context, const StandDetail& standDetail, QWidget* parent)
    : MapWatchWindow(context, QStringLiteral("frmMagWatchShiftLoc"),
                     QStringLiteral("Przesunięcia surowców na magazynie"), standDetail, parent) {
    setRowIcons(imgSmall(), {1, 2, 11, 14, 16, 37, 40, 41, 42, 43});
    createToolbar();
    createAcceptLocation();
    createFrames();
    createItems();
    createProposals();
    searchPanel().onCancel([this] {
        status().show();
        RebulidMag();
    });
}

void frmMagWatchShiftLoc::createToolbar() {
    ToolBar* tlbCmd = addCommands(addCoolBar());
    addExit(tlbCmd);
    addRefresh(tlbCmd);
    addSearch(tlbCmd);
    connect(tlbCmd, &ToolBar::buttonClick, this,
            [this](const QString& key) { EventTrap([&] { tlbCmd_ButtonClick(key); }); });
    // The unit of a refresh by the timer, which this window does not have.
    addLabel(surface(), "Label9", QStringLiteral("[minuta]"))->hide();
}

void frmMagWatchShiftLoc::createAcceptLocation() {
    m_tlbAkceptLocation = addButtons(&status(), "tlbAkceptLocation", 60, 885, 5400);
    m_tlbAkceptLocation->addButton(QStringLiteral("key_AkceptLoc"),
                                   QStringLiteral("&Zatwierdź wybraną lokalizacje"), {}, imgSmall().icon(14));
    connect(m_tlbAkceptLocation, &ToolBar::buttonClick, this,
            &frmMagWatchShiftLoc::tlbAkceptLocation_ButtonClick);
}

void frmMagWatchShiftLoc::createFrames() {
    m_frmWathLocationShift = addPlanFrame(surface(), "frmWathLocationShift", QString(), kShiftLeft, kShiftTop,
                                          kShiftWidth, kShiftHeight);
    m_frmWathLocationShiftItem = addFrame(m_frmWathLocationShift, "frmWathLocationShiftItem", QString());
    place(m_frmWathLocationShiftItem, kInset, kInset, kGroupWidth, kItemHeight);
    m_frmWathLocationShiftPropLoc =
        addFrame(m_frmWathLocationShift, "frmWathLocationShiftPropLoc", QString());
    place(m_frmWathLocationShiftPropLoc, kInset, kPropTop, kGroupWidth, kPropHeight);
    m_frmWathLocationShift->hide();
}

ListView* frmMagWatchShiftLoc::addList(QWidget* frame, const char* name, int height) {
    auto* list = new ListView(frame);
    list->setObjectName(QString::fromLatin1(name));
    list->setCheckBoxes(true);
    list->setSmallIcons(&imgSmall());
    list->setHeaderIcons(&imgSmall());
    place(list, kInset, kInset, kListWidth, height);
    return list;
}

void frmMagWatchShiftLoc::createItems() {
    const int height = listHeight(kItemHeight);
    m_lstLocationItem = addList(m_frmWathLocationShiftItem, "lstLocationItem", height);
    connect(m_lstLocationItem, &ListView::itemCheck, this,
            [this](ListItem* item) { EventTrap([&] { lstLocationItem_ItemCheck(*item); }); });
    m_lstLocationBarCode = addList(m_frmWathLocationShiftItem, "lstLocationBarCode", height);
    connect(m_lstLocationBarCode, &ListView::itemCheck, this,
            [this](ListItem* item) { lstLocationBarCode_ItemCheck(*item); });

    m_tlbAkceptItem =
        addButtons(m_frmWathLocationShiftItem, "tlbAkceptItem", kInset, kInset + height, kListWidth);
    m_tlbAkceptItem->addButton(QStringLiteral("key_AkceptItem"), QString(), {}, imgSmall().icon(14));
    m_tlbAkceptItem->addButton(QStringLiteral("key_Cancel"), QString());
    connect(m_tlbAkceptItem, &ToolBar::buttonClick, this, &frmMagWatchShiftLoc::tlbAkceptItem_ButtonClick);
    resetItems();
}

void frmMagWatchShiftLoc::createProposals() {
    const int height = listHeight(kPropHeight);
    m_lstSurPropLocation = addList(m_frmWathLocationShiftPropLoc, "lstSurPropLocation", height);
    connect(m_lstSurPropLocation, &ListView::columnClick, this,
            &frmMagWatchShiftLoc::lstSurPropLocation_ColumnClick);
    connect(m_lstSurPropLocation, &ListView::itemDoubleClick, this,
            &frmMagWatchShiftLoc::lstSurPropLocation_DblClick);
    connect(m_lstSurPropLocation, &ListView::itemCheck, this,
            [this](ListItem* item) { lstSurPropLocation_ItemCheck(*item); });

    m_tlbAkceptShiftItem =
        addButtons(m_frmWathLocationShiftPropLoc, "tlbAkceptShiftItem", kInset, kInset + height, kListWidth);
    m_tlbAkceptShiftItem->addButton(QStringLiteral("key_AkceptShiftItem"),
                                    QStringLiteral("&Zatwierdź przesunięcie"), {}, imgSmall().icon(1));
    m_tlbAkceptShiftItem->addButton(QStringLiteral("key_Cancel"),
                                    QStringLiteral("&Anuluj przesunięcie surowca"), {},
                                    programIcon(QStringLiteral("close.ico")));
    connect(m_tlbAkceptShiftItem, &ToolBar::buttonClick, this,
            &frmMagWatchShiftLoc::tlbAkceptShiftItem_ButtonClick);
}

}  // namespace regalon
