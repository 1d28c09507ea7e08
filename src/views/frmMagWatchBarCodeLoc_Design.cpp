// The controls of the window and where they lie. All positions and sizes are twips.

#include "common/ErrorTrap.h"
#include "map/PlanFrame.h"
#include "map/SearchPanel.h"
#include "map/StatusPanel.h"
#include "platform/DesignControls.h"
#include "platform/ListView.h"
#include "platform/PictureBox.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace regalon {

namespace {

// The panels over the plan begin at the lower edge of the tool strip.
constexpr int kPanelsTop = 480;
constexpr int kContentWidth = 12975;
constexpr int kFrameWidth = 12735;
constexpr int kPodgladWidth = 2055;
constexpr int kLookupWidth = 15015;
constexpr int kButtonsHeight = 450;
constexpr int kLineHeight = 315;
constexpr int kInset = 90;

ToolBar* addButtons(QWidget* parent, const char* name, int left, int top, int width,
                    int height = kButtonsHeight) {
    auto* bar = new ToolBar(parent);
    bar->setObjectName(QString::fromLatin1(name));
    place(bar, left, top, width, height);
    return bar;
}

QLineEdit* addBox(QWidget* parent, const char* name, const QString& meaning, int left, int top, int width) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    box->setToolTip(meaning);
    place(box, left, top, width, kLineHeight);
    return box;
}

}  // namespace

frmMagWatchBarCodeLoc::frmMagWatchBarCodeLoc(AppContext& context, const StandDetail& standDetail,
                                             QWidget* parent)
    : MapWatchWindow(context, QStringLiteral("frmMagWatchBarCodeLoc"),
                     QStringLiteral("Zawartość lokalizacji - kody kreskowe"), standDetail, parent) {
    setRowIcons(m_imgSmall, {1, 11, 14});
    createToolbar();
    createStatusPanel();
    createContent();
    createLookup();
    createLabelStrip();
    searchPanel().resize(toPixels(kLookupWidth), searchPanel().height());
    searchPanel().onCancel([this] {
        status().show();
        RebulidMag();
    });
    hidePanels();
    closeContent();
}

void frmMagWatchBarCodeLoc::createToolbar() {
    CoolBar* clbData = addCoolBar();
    // Lower than in the other windows: the panel of the content begins higher.
    place(clbData, 0, 0, SurfaceWidth, kPanelsTop);
    ToolBar* tlbCmd = addCommands(clbData);
    addExit(tlbCmd);
    addRefresh(tlbCmd);
    addSearch(tlbCmd);
    tlbCmd->addButton(QStringLiteral("key_LokkForBarCode"), QStringLiteral("Z&najdź kod"), {},
                      programIcon(QStringLiteral("find.ico")));
    connect(tlbCmd, &ToolBar::buttonClick, this, &frmMagWatchBarCodeLoc::tlbCmd_ButtonClick);
}

void frmMagWatchBarCodeLoc::createStatusPanel() {
    place(addLabel(&status(), "Label10", QStringLiteral("Status operacji:")), 150, 945, 1500, kLineHeight);
    place(addLabel(&status(), "lblStatusOperation", QStringLiteral("Oczekiwanie"), true), 1650, 945, 3000,
          kLineHeight);
    m_tlbAkceptLocation = addButtons(&status(), "tlbAkceptLocation", 12000, 885, 2850);
    m_tlbAkceptLocation->addButton(QStringLiteral("key_AkceptLoc"),
                                   QStringLiteral("&Zatwierdź wybraną lokalizacje"));
    connect(m_tlbAkceptLocation, &ToolBar::buttonClick, this,
            &frmMagWatchBarCodeLoc::tlbAkceptLocation_ButtonClick);
}

void frmMagWatchBarCodeLoc::createContent() {
    m_frmWathLocationShift =
        addPlanFrame(surface(), "frmWathLocationShift", QString(), 120, kPanelsTop, kContentWidth, 7935);
    createDescription();
    createFilter();
    createList();
    // Its captions are too long for the strip of the labels.
    ToolBar* report =
        addButtons(m_frmWathLocationShift, "tlbPrintBarCodeAllLocation", 120, 6885, kFrameWidth);
    report->addButton(QStringLiteral("key_PrintBarCodeLocation"),
                      QStringLiteral("&Wydruk zawartości kodów na lokalizacji"), {},
                      programIcon(QStringLiteral("list.ico")));
    report->addButton(QStringLiteral("key_WatchtBarCodeLocation"),
                      QStringLiteral("Podgląd wydruku zawartości lokalizacji"), {},
                      programIcon(QStringLiteral("find.ico")));
    connect(report, &ToolBar::buttonClick, this,
            &frmMagWatchBarCodeLoc::tlbPrintBarCodeAllLocation_ButtonClick);
    // The panel ends a little below the top of the other one, whose caption must show.
    status().raise();
}

/// A caption and what it tells, side by side.
QLabel* frmMagWatchBarCodeLoc::addPair(QWidget* frame, const char* name, const QString& caption,
                                       const char* dataName, int left, int top, int captionWidth,
                                       int dataWidth) {
    place(addLabel(frame, name, caption), left, top, captionWidth, kLineHeight);
    QLabel* value = addLabel(frame, dataName, {}, true);
    place(value, left + captionWidth, top, dataWidth, kLineHeight);
    return value;
}

void frmMagWatchBarCodeLoc::createDescription() {
    QGroupBox* frame = addFrame(m_frmWathLocationShift, "frmLocationDesc", QString());
    place(frame, 0, 0, 12855, 1335);
    m_lblRankData = addPair(frame, "lblRankDesc", QStringLiteral("Rząd:"), "lblRankData", 240, 150, 600, 600);
    m_lblStandData =
        addPair(frame, "lblStandDesc", QStringLiteral("Regał:"), "lblStandData", 1800, 150, 690, 900);
    m_lblShelfData =
        addPair(frame, "lblShelfDesc", QStringLiteral("Półka:"), "lblShelfData", 3600, 150, 690, 900);
    m_lblLocationData = addPair(frame, "lblLocationDesc", QStringLiteral("Lokalizacja:"), "lblLocationData",
                                5400, 150, 1140, 900);
    m_lblItemCodeData =
        addPair(frame, "lblItemCodeDesc", QStringLiteral("Indeks:"), "lblItemCodeData", 240, 510, 780, 11700);
    m_lblQuantityData = addPair(frame, "lblQuantityDesc", QStringLiteral("Zawartość:"), "lblQuantityData",
                                240, 870, 1080, 1560);
    m_lblQuantityPercentData =
        addPair(frame, "lblQuantityPercentDesc", QStringLiteral("Zawartość procentowa:"),
                "lblQuantityPercentData", 3000, 870, 2160, 960);
    m_lblBarCodeActiveData = addPair(frame, "lblBarCodeActiveDesc", QStringLiteral("Ilość kodów aktywnych:"),
                                     "lblBarCodeActiveData", 6240, 870, 2250, 960);
    m_lblBarCodeGlobalData = addPair(frame, "lblBarCodeGlobalDesc", QStringLiteral("Ilość kodów globalna:"),
                                     "lblBarCodeGlobalData", 9600, 870, 2100, 960);
}

void frmMagWatchBarCodeLoc::createFilter() {
    QGroupBox* frame = addFrame(m_frmWathLocationShift, "frmFiltr", QString());
    place(frame, 120, 1330, kFrameWidth, 735);
    m_chkActiveBarCode = new QCheckBox(QStringLiteral("Tylko aktywne kody na lokalizacji"), frame);
    m_chkActiveBarCode->setObjectName(QStringLiteral("chkActiveBarCode"));
    place(m_chkActiveBarCode, 120, 210, 5400, kLineHeight);
    // Also when the window itself changes the box.
    connect(m_chkActiveBarCode, &QCheckBox::toggled, this, &frmMagWatchBarCodeLoc::chkActiveBarCode_Click);
    place(addLabel(frame, "Label11", QStringLiteral("Kod do pobrania:")), 6900, 210, 1650, kLineHeight);
    m_txtBarCodeOnUse =
        addBox(frame, "txtBarCodeOnUse", QStringLiteral("Kod wskazany na liście"), 8580, 210, 3900);
}

void frmMagWatchBarCodeLoc::createList() {
    QGroupBox* frame = addFrame(m_frmWathLocationShift, "frmWatch", QString());
    place(frame, 120, 2040, kFrameWidth, 4695);
    m_lstBarCodeLocation = new ListView(frame);
    m_lstBarCodeLocation->setObjectName(QStringLiteral("lstBarCodeLocation"));
    m_lstBarCodeLocation->setCheckBoxes(true);
    place(m_lstBarCodeLocation, kInset, 2 * kInset, kFrameWidth - 2 * kInset, 4695 - 3 * kInset);
    connect(m_lstBarCodeLocation, &ListView::itemClick, this,
            [this](ListItem* item) { lstBarCodeLocation_Click(*item); });
    connect(m_lstBarCodeLocation, &ListView::itemCheck, this,
            [this](ListItem* item) { lstBarCodeLocation_ItemCheck(*item); });
}

void frmMagWatchBarCodeLoc::createLookup() {
    m_frmLookForSurBarCode =
        addFrame(surface(), "frmLookForSurBarCode", QStringLiteral("Wyszukiwanie kodu "));
    place(m_frmLookForSurBarCode, PanelLeft, PanelTop, kLookupWidth, PanelHeight);
    m_txtBarCodeLookFor =
        addBox(m_frmLookForSurBarCode, "txtBarCodeLookFor", QStringLiteral("Kod kreskowy"), 150, 285, 3000);
    m_txtNumberCode =
        addBox(m_frmLookForSurBarCode, "txtNumberCode", QStringLiteral("Numer kodu"), 7680, 285, 900);
    m_tlbLookForBarCode = addButtons(m_frmLookForSurBarCode, "tlbLookForBarCode", 3240, 225, 4350);
    m_tlbLookForBarCode->addButton(QStringLiteral("key_Akcept"), QStringLiteral("&Zatwierdź"), {},
                                   m_imgSmall.icon(14));
    m_tlbLookForBarCode->addSeparator();
    m_tlbLookForBarCode->addButton(QStringLiteral("key_Print"), QStringLiteral("&Drukuj"), {},
                                   programIcon(QStringLiteral("label.ico")));
    m_tlbLookForBarCode->addSeparator();
    m_tlbLookForBarCode->addButton(QStringLiteral("key_LokForBarCode"), QStringLiteral("&Szukaj"), {},
                                   programIcon(QStringLiteral("find.ico")));
    connect(m_tlbLookForBarCode, &ToolBar::buttonClick, this,
            &frmMagWatchBarCodeLoc::tlbLookForBarCode_ButtonClick);
    // A scanner ends each code with this key. The code stays marked, so that the next one takes its place.
    connect(m_txtBarCodeLookFor, &QLineEdit::returnPressed, this, [this] {
        tlbLookForBarCode_ButtonClick(QStringLiteral("key_Akcept"));
        m_txtBarCodeLookFor->selectAll();
    });
    ToolBar* close = addButtons(m_frmLookForSurBarCode, "tlbLookForSurBarCode", 13350, 225, 1500);
    close->addButton(QStringLiteral("key_Close"), QStringLiteral("&Zamknij"), {},
                     programIcon(QStringLiteral("close.ico")));
    connect(close, &ToolBar::buttonClick, this, &frmMagWatchBarCodeLoc::tlbLookForSurBarCode_ButtonClick);
    createLookupResult();
}

/// A pair that shows only while a code has been found.
QLabel* frmMagWatchBarCodeLoc::addResult(const char* name, const QString& caption, const char* dataName,
                                         int left, int top, int captionWidth, int dataWidth) {
    QLabel* value =
        addPair(m_frmLookForSurBarCode, name, caption, dataName, left, top, captionWidth, dataWidth);
    m_result.append({m_frmLookForSurBarCode->findChild<QLabel*>(QString::fromLatin1(name)), value});
    return value;
}

void frmMagWatchBarCodeLoc::createLookupResult() {
    constexpr int first = 660;
    constexpr int second = 1005;
    m_lblItemCodeLookForBarCodeData = addResult("lblItemCodeLookForBarCode", QStringLiteral("Indeks:"),
                                                "lblItemCodeLookForBarCodeData", 150, first, 780, 13000);
    m_lblRankLokFOrBarCodeData = addResult("lblRankLokFOrBarCode", QStringLiteral("Rząd:"),
                                           "lblRankLokFOrBarCodeData", 150, second, 780, 600);
    m_lblStandLokFOrBarCodeData = addResult("lblStandLokFOrBarCode", QStringLiteral("Regał:"),
                                            "lblStandLokFOrBarCodeData", 1800, second, 690, 900);
    m_lblShelfLokFOrBarCodeData = addResult("lblShelfLokFOrBarCode", QStringLiteral("Półka:"),
                                            "lblShelfLokFOrBarCodeData", 3600, second, 690, 900);
    m_lblLocationLokFOrBarCodeData = addResult("lblLocationLokFOrBarCode", QStringLiteral("Lokalizacja:"),
                                               "lblLocationLokFOrBarCodeData", 5400, second, 1140, 900);
}

void frmMagWatchBarCodeLoc::createLabelStrip() {
    constexpr int width = kPodgladWidth - 2 * kInset;
    m_frmPodglad = addPlanFrame(surface(), "frmPodglad", QString(), 13080, kPanelsTop, kPodgladWidth, 9255);
    ToolBar* tlbPodlad = addButtons(m_frmPodglad, "tlbPodlad", kInset, kInset, width, 1500);
    tlbPodlad->setOrientation(Qt::Vertical);
    tlbPodlad->addButton(QStringLiteral("key_Watch"), QStringLiteral("&Podgląd"), {},
                         programIcon(QStringLiteral("find.ico")));
    tlbPodlad->addButton(QStringLiteral("key_Print"), QStringLiteral("&Drukuj"), {},
                         programIcon(QStringLiteral("label.ico")));
    tlbPodlad->addButton(QStringLiteral("key_Close"), QStringLiteral("&Powrót"), {}, m_imgSmall.icon(11));
    connect(tlbPodlad, &ToolBar::buttonClick, this, &frmMagWatchBarCodeLoc::tlbPodlad_ButtonClick);

    ToolBar* templates = addButtons(m_frmPodglad, "tvblRodzajeEtykiet", kInset, 1680, width);
    templates->addButton(QStringLiteral("key_Templete"), QStringLiteral("&Szablony etykiet"));
    connect(templates, &ToolBar::buttonClick, this, &frmMagWatchBarCodeLoc::tvblRodzajeEtykiet_ButtonClick);

    m_lblRaportName = addLabel(m_frmPodglad, "lblRaportName");
    place(m_lblRaportName, kInset, 2220, width, kLineHeight);
    m_txtRaportCode =
        addBox(m_frmPodglad, "txtRaportCode", QStringLiteral("Kod szablonu"), kInset, 2580, width);
    m_txtRaportCode->setPlaceholderText(QStringLiteral("Kod szablonu"));
    m_txtRaportFile =
        addBox(m_frmPodglad, "txtRaportFile", QStringLiteral("Plik szablonu"), kInset, 2970, width);
    m_txtRaportFile->setPlaceholderText(QStringLiteral("Plik szablonu"));

    // An empty sheet stands for the empty document.
    m_oleWatchTemplete = addPanel(m_frmPodglad, "oleWatchTemplete");
    m_oleWatchTemplete->setPalette(Qt::white);
    place(m_oleWatchTemplete, kInset, 3480, width, 2640);
    m_picBarCode = new PictureBox(m_frmPodglad);
    m_picBarCode->setObjectName(QStringLiteral("picBarCode"));
    place(m_picBarCode, kInset, 6300, width, 1200);
}

}  // namespace regalon
