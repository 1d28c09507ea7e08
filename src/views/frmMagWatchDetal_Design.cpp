// The controls of the window and where they lie. All positions and sizes are twips.

#include "common/ErrorTrap.h"
#include "platform/DesignControls.h"
#include "platform/ListView.h"
#include "platform/PictureBox.h"
#include "platform/PlanSurface.h"
#include "platform/TabStrip.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"
#include "views/StandDetailGeometry.h"
#include "views/frmMagWatchDetal.h"

#include <QFrame>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include <array>

namespace regalon {

namespace {

constexpr int kWidth = 8040;
constexpr int kHeight = 4155;
constexpr int kFontPoints = 8;

struct Line {
    int x1, y1, x2, y2;
};

/// Left, right, bottom and top line around the drawing.
constexpr std::array<Line, 4> kFrame = {
    {{280, 555, 280, 3555}, {2200, 550, 2200, 3555}, {285, 3555, 2205, 3555}, {285, 550, 2200, 550}}};

struct Corner {
    const char* name;
    int left, top;
};
constexpr std::array<Corner, 4> kCloseButtons = {
    {{"cmdClose_1", 240, 0}, {"cmdClose_2", 240, 3720}, {"cmdClose_3", 7440, 0}, {"cmdClose_4", 7440, 3720}}};
constexpr int kCloseSize = 375;

// The parameters stand in five rows and two columns.
constexpr int kRowTop = 75;
constexpr int kRowPitch = 330;
constexpr int kRowHeight = 300;

QLabel* addCell(QWidget* parent, const char* name, int row, int left, int width,
                const QString& text = QString()) {
    QLabel* label = addLabel(parent, name, text);
    place(label, left, kRowTop + row * kRowPitch, width, kRowHeight);
    return label;
}

QLabel* addValue(QWidget* parent, const char* name, int row, int left, int width) {
    QLabel* label = addCell(parent, name, row, left, width);
    label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    return label;
}

QLineEdit* addAddressBox(QWidget* parent, const char* name, const QString& meaning, int left) {
    QLineEdit* box = addNumberBox(parent, name, meaning);
    place(box, left, 120, 615, 285);
    return box;
}

QPlainTextEdit* addNote(QWidget* parent, const char* name) {
    auto* note = new QPlainTextEdit(parent);
    note->setObjectName(QString::fromLatin1(name));
    note->setReadOnly(true);
    note->setTabChangesFocus(true);
    return note;
}

ToolBar* addToolBar(QWidget* parent, const char* name) {
    auto* bar = new ToolBar(parent);
    bar->setObjectName(QString::fromLatin1(name));
    return bar;
}

}  // namespace

frmMagWatchDetal::frmMagWatchDetal(AppContext& context, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint),
      m_context(context),
      m_imglocation(QStringLiteral("imglocation")),
      m_imgBookStand(QStringLiteral("imgBookStand")),
      m_lnnFrame(QStringLiteral("lnnFrame")),
      m_imgPozytion(QStringLiteral("imgPozytion")) {
    setObjectName(QStringLiteral("frmMagWatchDetal"));
    setWindowTitle(QStringLiteral("Szczegóły regału"));
    setFixedSize(toPixels(kWidth), toPixels(kHeight));
    QFont small = font();
    small.setPointSize(kFontPoints);
    setFont(small);
    createDrawing();
    createCaptions();
    createMaterialList();
    createCloseButtons();
    createFrame();
}

void frmMagWatchDetal::createDrawing() {
    m_surface = new PlanSurface(kWidth, kHeight, this);
    m_surface->setObjectName(QStringLiteral("surface"));
    m_surface->setBackgroundBrush(palette().window());
    createGrid();
    PictureItem& stand = m_imgBookStand[0];
    stand.setStretch(true);
    stand.setLeft(360);
    stand.setTop(3000);
    stand.setWidth(1755);
    stand.setHeight(510);
    stand.setClickHandler([this](PictureItem&) { imgBookStand_Click(); });
    m_surface->add(stand);
    m_surface->add(m_imgPozytion);
    m_surface->add(m_lnnFrame[0]);
    for (int index = 0; index < static_cast<int>(kFrame.size()); ++index) {
        LineItem& line = index == 0 ? m_lnnFrame[0] : m_lnnFrame.Load(index);
        const Line& ends = kFrame[static_cast<std::size_t>(index)];
        line.setEnds(ends.x1, ends.y1, ends.x2, ends.y2);
        line.setVisible(true);
    }
}

void frmMagWatchDetal::createGrid() {
    PictureItem& design = m_imglocation[0];
    design.setStretch(true);
    design.setHeight(kStandGridHeight);
    design.setClickHandler([this](PictureItem& location) { imglocation_Click(location.index()); });
    m_surface->add(design);
    for (int index = 0; index < kStandGridSize; ++index) {
        PictureItem& location = index == 0 ? design : m_imglocation.Load(index);
        location.setLeft(standGridLeft(index));
        location.setTop(standGridTop(index));
    }
}

/// A window without a frame of the desktop still needs an edge against the plan below it.
void frmMagWatchDetal::createFrame() {
    auto* edge = new QFrame(this);
    edge->setFrameStyle(QFrame::Box | QFrame::Plain);
    edge->setAttribute(Qt::WA_TransparentForMouseEvents);
    edge->setGeometry(rect());
}

void frmMagWatchDetal::createCaptions() {
    QFrame* frmParamStand = addPanel(this, "frmParamStand");
    place(frmParamStand, 600, -90, 6855, 495);
    m_lblParamStand = addLabel(frmParamStand, "lblParamStand");
    place(m_lblParamStand, 120, 150, 5385, 285);
    m_txtShelf = addAddressBox(this, "txtShelf", QStringLiteral("Półka"), 6840);
    m_txtLocation = addAddressBox(this, "txtLocation", QStringLiteral("Lokalizacja"), 6120);

    QFrame* frmSurLocation = addPanel(this, "frmSurLocation");
    place(frmSurLocation, 720, 3630, 6615, 470);
    place(addLabel(frmSurLocation, "Label1", QStringLiteral("Surowiec:")), 120, 30, 930, 420);
    m_lblSurowiecLocation = addLabel(frmSurLocation, "lblSurowiecLocation");
    m_lblSurowiecLocation->setWordWrap(true);
    place(m_lblSurowiecLocation, 1050, 30, 5445, 420);

    auto* frmSurLocationParamStatic = new QWidget(this);
    frmSurLocationParamStatic->setObjectName(QStringLiteral("frmSurLocationParamStatic"));
    place(frmSurLocationParamStatic, 2355, 480, 5655, 3135);
    createTabs(frmSurLocationParamStatic);
}

void frmMagWatchDetal::createTabs(QWidget* frame) {
    m_tabSurParam = new TabStrip(frame);
    m_tabSurParam->setObjectName(QStringLiteral("tabSurParam"));
    m_tabSurParam->addKeyedTab(QStringLiteral("key_static_param"),
                               QStringLiteral("Parametry statyczne lokalizacji"));
    m_tabSurParam->addKeyedTab(QStringLiteral("key_picture_param"),
                               QStringLiteral("Rysunek surowca na lokalizacji"));
    m_tabSurParam->addKeyedTab(QStringLiteral("key_info_param"), QStringLiteral("Info"));
    place(m_tabSurParam, 240, 0, 5295, 480);
    m_frmParamStatic = addTabFrame(frame, "frmParamStatic");
    m_frmParamPicture = addTabFrame(frame, "frmParamPicture");
    m_frmParamInfo = addTabFrame(frame, "frmParamInfo");
    createParameters();
    createPicture();
    createNotes();
    connect(m_tabSurParam, &TabStrip::tabClick, this, &frmMagWatchDetal::tabSurParam_Click);
}

QFrame* frmMagWatchDetal::addTabFrame(QWidget* parent, const char* name) {
    QFrame* frame = addPanel(parent, name);
    place(frame, 240, 480, 5175, 2415);
    return frame;
}

void frmMagWatchDetal::createParameters() {
    constexpr int left = 120;
    constexpr int leftValue = 1170;
    constexpr int leftUnit = 2040;
    constexpr int right = 2640;
    constexpr int rightValue = 3600;
    constexpr int rightUnit = 4470;
    constexpr int value = 810;
    constexpr int unit = 510;
    QWidget* tab = m_frmParamStatic;
    const QString percent = QStringLiteral("%");
    const QString millimetres = QStringLiteral("[mm]");
    addCell(tab, "lblProcent", 0, left, 1050, QStringLiteral("Zapełnienie:"));
    m_lblProcentData = addValue(tab, "lblProcentData", 0, leftValue, value);
    addCell(tab, "Label11", 0, leftUnit, unit, percent);
    addCell(tab, "Label5", 0, right, 960, QStringLiteral("Wysokość:"));
    m_lblHeight = addValue(tab, "lblHeight", 0, rightValue, value);
    addCell(tab, "Label7", 0, rightUnit, unit, millimetres);
    addCell(tab, "Label6", 1, left, 1050, QStringLiteral("Szerokość:"));
    m_lblWidth = addValue(tab, "lblWidth", 1, leftValue, value);
    addCell(tab, "Label9", 1, leftUnit, unit, millimetres);
    addCell(tab, "Label8", 1, right, 960, QStringLiteral("Głębokość:"));
    m_lblDep = addValue(tab, "lblDep", 1, rightValue, value);
    addCell(tab, "Label10", 1, rightUnit, unit, millimetres);
    addCell(tab, "label18", 2, left, 1050, QStringLiteral("Nośność:"));
    m_lblWeight = addValue(tab, "lblWeight", 2, leftValue, value);
    addCell(tab, "Label12", 2, leftUnit, unit, QStringLiteral("[kg]"));
    addCell(tab, "Label2", 2, right, 600, QStringLiteral("Grupa:"));
    m_lblGroup = addCell(tab, "lblGroup", 2, 3240, 1860);
    addCell(tab, "Label13", 3, left, 900, QStringLiteral("Magazyn:"));
    m_lblQuantityData = addValue(tab, "lblQuantityData", 3, 1020, 1350);
    addCell(tab, "Label14", 3, right, 600, QStringLiteral("Bufor:"));
    m_lblQuantityBufData = addValue(tab, "lblQuantityBufData", 3, 3240, 1350);
    addCell(tab, "Label15", 4, left, 3300, QStringLiteral("Suma linijek procentu wypelnienia:"));
    m_lblProcentSumLineData = addValue(tab, "lblProcentSumLineData", 4, 3420, 990);
    addCell(tab, "Label16", 4, rightUnit, unit, percent);

    QFrame* frmLocationData = addPanel(tab, "frmLocationData");
    place(frmLocationData, 120, 1800, 4935, 495);
    m_lblLocationData = addLabel(frmLocationData, "lblLocationData");
    place(m_lblLocationData, 120, 60, 3240, 375);
    m_tlbWatchFullSurLocation = addToolBar(frmLocationData, "tlbWatchFullSurLocation");
    m_tlbWatchFullSurLocation->addButton(QStringLiteral("key_Akcept"), QStringLiteral("&Surowce "), {},
                                         programIcon(QStringLiteral("list.ico")));
    place(m_tlbWatchFullSurLocation, 3435, 30, 1440, 435);
    connect(m_tlbWatchFullSurLocation, &ToolBar::buttonClick, this,
            &frmMagWatchDetal::tlbWatchFullSurLocation_ButtonClick);
}

void frmMagWatchDetal::createPicture() {
    m_impPictureParam = new PictureBox(m_frmParamPicture);
    m_impPictureParam->setObjectName(QStringLiteral("impPictureParam"));
    place(m_impPictureParam, 120, 240, 4935, 1935);
}

void frmMagWatchDetal::createNotes() {
    place(addLabel(m_frmParamInfo, "Label4", QStringLiteral("Informacja o regale")), 120, 60, 4935, 255);
    m_txtParamInfoStand = addNote(m_frmParamInfo, "txtParamInfoStand");
    place(m_txtParamInfoStand, 120, 315, 4935, 840);
    place(addLabel(m_frmParamInfo, "Label3", QStringLiteral("Informacja o lokalizacji")), 120, 1200, 4935,
          255);
    m_txtParamInfoLocation = addNote(m_frmParamInfo, "txtParamInfoLocation");
    place(m_txtParamInfoLocation, 120, 1455, 4935, 840);
}

void frmMagWatchDetal::createMaterialList() {
    setRowIcons(m_imgSmall, {40, 42});
    m_frmWathLocationShiftItem = addPanel(this, "frmWathLocationShiftItem");
    place(m_frmWathLocationShiftItem, 75, 480, 7935, 3195);
    m_tlbCancelWatchSur = addToolBar(m_frmWathLocationShiftItem, "tlbCancelWatchSur");
    m_tlbCancelWatchSur->addButton(QStringLiteral("key_Cancel"), QStringLiteral("&Zamknij podglad surowców"),
                                   {}, programIcon(QStringLiteral("close.ico")));
    place(m_tlbCancelWatchSur, 60, 60, 7815, 435);
    connect(m_tlbCancelWatchSur, &ToolBar::buttonClick, this,
            &frmMagWatchDetal::tlbCancelWatchSur_ButtonClick);
    m_lstLocationItem = new ListView(m_frmWathLocationShiftItem);
    m_lstLocationItem->setObjectName(QStringLiteral("lstLocationItem"));
    m_lstLocationItem->setSmallIcons(&m_imgSmall);
    place(m_lstLocationItem, 60, 510, 7815, 2625);
}

void frmMagWatchDetal::createCloseButtons() {
    for (const Corner& corner : kCloseButtons) {
        auto* button = new QPushButton(this);
        button->setObjectName(QString::fromLatin1(corner.name));
        button->setIcon(programIcon(QStringLiteral("close.ico")));
        button->setToolTip(QStringLiteral("Zamknij"));
        button->setAutoDefault(false);
        place(button, corner.left, corner.top, kCloseSize, kCloseSize);
        const QString reportName =
            QStringLiteral("frmMagWatchDetal - ") + button->objectName() + QStringLiteral("_Click");
        connect(button, &QPushButton::clicked, this,
                [this, reportName] { WindowTrap(reportName, [this] { close(); }); });
    }
}

/// The state of the controls as designed, for a window that is opened once more.
void frmMagWatchDetal::resetDesign() {
    m_imgPozytion.setPicture(Picture());
    m_imglocation.forEach([](PictureItem& location) {
        location.setVisible(false);
        location.setPicture(Picture());
        location.setTag(QString());
        location.setWidth(550);
    });
    m_imgBookStand[0].setVisible(false);
    m_txtShelf->clear();
    m_txtLocation->clear();
    m_txtParamInfoStand->clear();
    m_lstLocationItem->clearItems();
    m_lstLocationItem->clearHeaders();
    m_tabSurParam->setSelectedTab(1);
    m_tabSurParam->setFocus();
    clearItem();
    showFigures({});
    m_lblLocationData->clear();
    m_tlbCancelWatchSur->show();
}

}  // namespace regalon
