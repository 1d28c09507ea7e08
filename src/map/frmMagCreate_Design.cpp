// The plan, the toolbars and the frame of the stand, and where they lie. All positions and sizes are twips.

#include "map/PlanFrame.h"
#include "map/frmMagCreate.h"
#include "platform/CommonDialog.h"
#include "platform/DataCombo.h"
#include "platform/DesignControls.h"
#include "platform/FocusGuard.h"
#include "platform/PictureBox.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace regalon {

namespace {

constexpr int kFrameLeft = 120;
constexpr int kFrameWidth = MapWindow::SurfaceWidth - 240;
constexpr int kLowerFrameTop = 7000;
constexpr int kCreateHeight = 2700;

constexpr int kLine = 345;          // height of a box and of its label
constexpr int kStatusLeft = 10500;  // behind the buttons of the strip

// Columns of the frame of the stand: choices, shelves, flags and description.
constexpr int kShelvesLeft = 3870;
constexpr int kShelfWidth = 1860;
constexpr int kShelfHeight = 1230;
constexpr int kPropertyLeft = 11640;
constexpr int kPropertyWidth = kFrameWidth - kPropertyLeft - 90;

QLineEdit* addBox(QWidget* parent, const char* name, int left, int top, int width) {
    auto* box = new QLineEdit(parent);
    box->setObjectName(QString::fromLatin1(name));
    place(box, left, top, width, kLine);
    return box;
}

DataCombo* addChoice(QWidget* parent, const char* label, const QString& caption, const char* name, int top) {
    place(addLabel(parent, label, caption), 150, top, 750, kLine);
    auto* combo = new DataCombo(parent);
    combo->setObjectName(QString::fromLatin1(name));
    place(combo, 930, top, 2790, kLine);
    return combo;
}

/// Font and colours of the frame, which change with its mark, are not for this control.
void keepOwnLook(QWidget* control) {
    QFont font = control->font();
    font.setBold(false);
    control->setFont(font);
    QPalette palette = control->palette();
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(group, role, palette.color(group, role));
    control->setPalette(palette);
}

QCheckBox* addCheck(QWidget* parent, const char* name, const QString& caption, int top) {
    auto* check = new QCheckBox(caption, parent);
    check->setObjectName(QString::fromLatin1(name));
    place(check, 120, top, kPropertyWidth - 240, 315);
    return check;
}

}  // namespace

frmMagCreate::frmMagCreate(AppContext& context, QWidget* parent)
    : MapWindow(context, QStringLiteral("frmMagCreate"), QStringLiteral("Zarządzanie magazynem"), parent) {
    setRowIcons(imgSmall(), {24, 25});
    createToolbars();
    createLabelStatus();
    createStandFrame();
    createLocationFrame();
    createGroupFrame();
    createTimer();
    m_commonDialog = new CommonDialog(this);
}

void frmMagCreate::createToolbars() {
    m_tlbCmd = addCommands(addCoolBar());
    addExit(m_tlbCmd);
    m_tlbCmd->addButton(QStringLiteral("key_PrintEtykieteLocation"), QStringLiteral("Wy&druk etykiety"), {},
                        programIcon(QStringLiteral("label.ico")));
    m_tlbCmd->addButton(QStringLiteral("key_Templete"), QStringLiteral("&Szablon etykiety"), {},
                        programIcon(QStringLiteral("list.ico")));
    m_tlbCmd->addButton(QStringLiteral("key_GroupSur"), QStringLiteral("Grupy surowców"), {},
                        programIcon(QStringLiteral("groups.ico")));
    m_tlbCmd->addButton(QStringLiteral("key_RefreshMag"), QStringLiteral("Odśwież magazyn"), {},
                        programIcon(QStringLiteral("refresh.ico")));
    connect(m_tlbCmd, &ToolBar::buttonClick, this, &frmMagCreate::tlbCmd_ButtonClick);

    // In the strip it can be reached wherever the frames are.
    m_chkFramePozytion = new QCheckBox(QStringLiteral("Góra"), surface());
    m_chkFramePozytion->setObjectName(QStringLiteral("chkFramePozytion"));
    m_chkFramePozytion->setToolTip(QStringLiteral("Przesuwa ramki w górę, nad odsłonięty dół planu"));
    place(m_chkFramePozytion, MapWindow::SurfaceWidth - 1200, 120, 1050, kLine);
    connect(m_chkFramePozytion, &QCheckBox::toggled, this, &frmMagCreate::chkFramePozytion_Click);
}

void frmMagCreate::createLabelStatus() {
    m_lblStatus = addLabel(surface(), "lblStatus");
    place(m_lblStatus, kStatusLeft, 120, MapWindow::SurfaceWidth - 1320 - kStatusLeft, kLine);
    // The template that is active, for routines only.
    m_txtRaportCode = addBox(surface(), "txtRaportCode", 0, 0, kLine);
    m_txtRaportFile = addBox(surface(), "txtRaportFile", 0, 0, kLine);
    m_txtRaportCode->hide();
    m_txtRaportFile->hide();
}

void frmMagCreate::createStandFrame() {
    m_frmCreate = addPlanFrame(surface(), "frmCreate", QString(), kFrameLeft, kLowerFrameTop, kFrameWidth,
                               kCreateHeight);
    createStandChoice();
    createShelves();
    createStandIcon();
    createStandPlace();
    createStandProperty();
    createSaveStand();
}

void frmMagCreate::createStandChoice() {
    m_dtcRank = addChoice(m_frmCreate, "lblRow", QStringLiteral("Rząd"), "dtcRank", 150);
    m_dtcStand = addChoice(m_frmCreate, "lblStand", QStringLiteral("Regał"), "dtcStand", 570);
    m_dtcShelfCount = addChoice(m_frmCreate, "lblShelf", QStringLiteral("Półki"), "dtcShelfCount", 990);
    connect(m_dtcRank, &DataCombo::changed, this, &frmMagCreate::dtcRank_Change);
    connect(m_dtcStand, &DataCombo::changed, this, &frmMagCreate::dtcStand_Change);
    connect(m_dtcShelfCount, &DataCombo::changed, this, &frmMagCreate::dtcShelfCount_Change);
}

void frmMagCreate::createShelves() {
    QGroupBox* frmShelf = addFrame(m_frmCreate, "frmShelf", QString());
    place(frmShelf, kShelvesLeft, 90, kShelves * kShelfWidth + 180, kShelfHeight + 120);
    for (int number = 1; number <= kShelves; ++number)
        m_shelves[static_cast<std::size_t>(number - 1)] = createShelf(frmShelf, number);
}

frmMagCreate::Shelf frmMagCreate::createShelf(QWidget* parent, int number) {
    // The first caption begins with a small letter; manuals show it so.
    static const std::array<QString, kShelves> captions = {
        QStringLiteral("półka 1"), QStringLiteral("Półka 2"), QStringLiteral("Półka 3"),
        QStringLiteral("Półka 4")};
    Shelf shelf;
    shelf.frame = addFrame(parent, qPrintable(QStringLiteral("frmShelf_%1").arg(number)),
                           captions[static_cast<std::size_t>(number - 1)]);
    // Below the upper edge of the frame around them, which their ground would cover.
    place(shelf.frame, 90 + (number - 1) * kShelfWidth, 105, kShelfWidth - 60, kShelfHeight - 45);
    shelf.label = addLabel(shelf.frame, qPrintable(QStringLiteral("lblShelf_%1").arg(number)),
                           QStringLiteral("Ilość lokalizacji:"));
    place(shelf.label, 90, 390, kShelfWidth - 180, 300);
    shelf.count = new QComboBox(shelf.frame);
    shelf.count->setObjectName(QStringLiteral("cmbShelf_%1").arg(number));
    shelf.count->setEditable(true);
    shelf.count->setInsertPolicy(QComboBox::NoInsert);
    // A typed "-" would grow into "-----".
    shelf.count->setCompleter(nullptr);
    place(shelf.count, 90, 735, 1200, kLine);
    keepOwnLook(shelf.label);
    keepOwnLook(shelf.count);
    return shelf;
}

void frmMagCreate::createStandIcon() {
    place(addLabel(m_frmCreate, "lblIconFileName", QStringLiteral("Nazwa ikonki")), 150, 1590, 1290, kLine);
    m_txtImageName = addBox(m_frmCreate, "txtImageName", 1470, 1590, 2250);
    m_tlbPathIconFile = new ToolBar(m_frmCreate);
    m_tlbPathIconFile->setObjectName(QStringLiteral("tlbPathIconFile"));
    m_tlbPathIconFile->addButton(QStringLiteral("key_Path"), QString(),
                                 QStringLiteral("Wybór pliku graficznego"),
                                 programIcon(QStringLiteral("folder.ico")));
    place(m_tlbPathIconFile, 3750, 1515, 540, 480);
    connect(m_tlbPathIconFile, &ToolBar::buttonClick, this, &frmMagCreate::tlbPathIconFile_ButtonClick);
    m_imgWathFindIcon = new PictureBox(m_frmCreate);
    m_imgWathFindIcon->setObjectName(QStringLiteral("imgWathFindIcon"));
    place(m_imgWathFindIcon, 4350, 1575, 795, 375);
}

void frmMagCreate::createStandPlace() {
    place(addLabel(m_frmCreate, "lblLeft", QStringLiteral("Polożenie   X:")), 5580, 1590, 1440, kLine);
    m_txtLeft = addBox(m_frmCreate, "txtLeft", 7050, 1590, 1050);
    place(addLabel(m_frmCreate, "lblTop", QStringLiteral("Y:")), 8370, 1590, 300, kLine);
    m_txtTop = addBox(m_frmCreate, "txtTop", 8700, 1590, 1050);
    new FocusGuard(m_txtLeft, [this] { return txtLeft_Validate(); });
    new FocusGuard(m_txtTop, [this] { return txtTop_Validate(); });
}

void frmMagCreate::createStandProperty() {
    QGroupBox* frmStandProperty = addFrame(m_frmCreate, "frmStandProperty", QString());
    place(frmStandProperty, kPropertyLeft, 90, kPropertyWidth, 1140);
    m_chkStandVisable = addCheck(frmStandProperty, "chkStandVisable", QStringLiteral("Regał widoczny"), 75);
    m_chkStandEnable = addCheck(frmStandProperty, "chkStandEnable", QStringLiteral("Regał włączony"), 420);
    m_chkStandFrameArround =
        addCheck(frmStandProperty, "chkStandFrameArround", QStringLiteral("Otoczka regału"), 765);

    m_frmDetailsStand = addFrame(m_frmCreate, "frmDetailsStand", QString());
    place(m_frmDetailsStand, kPropertyLeft, 1290, kPropertyWidth, 1320);
    place(addLabel(m_frmDetailsStand, "lblDescStand", QStringLiteral("Opis Regału")), 120, 45,
          kPropertyWidth - 240, 300);
    m_txtDescStand = new QPlainTextEdit(m_frmDetailsStand);
    m_txtDescStand->setObjectName(QStringLiteral("txtDescStand"));
    m_txtDescStand->setTabChangesFocus(true);
    place(m_txtDescStand, 120, 360, kPropertyWidth - 240, 870);
}

void frmMagCreate::createSaveStand() {
    m_tlbSaveStand = new ToolBar(m_frmCreate);
    m_tlbSaveStand->setObjectName(QStringLiteral("tlbSaveStand"));
    m_tlbSaveStand->addButton(QStringLiteral("key_Wath"), QStringLiteral("&Pokaż regał"), {},
                              programIcon(QStringLiteral("find.ico")));
    m_tlbSaveStand->addButton(QStringLiteral("key_Add"), QStringLiteral("&Zapisz regał"), {},
                              programIcon(QStringLiteral("img_25.ico")));
    m_tlbSaveStand->addButton(QStringLiteral("key_Remove"), QStringLiteral("&Usuń regał"), {},
                              programIcon(QStringLiteral("close.ico")));
    m_tlbSaveStand->addButton(QStringLiteral("key_Wath_Mag"), QStringLiteral("&Pokaż magazyn"), {},
                              programIcon(QStringLiteral("refresh.ico")));
    place(m_tlbSaveStand, 90, 2085, kPropertyLeft - 180, 510);
    connect(m_tlbSaveStand, &ToolBar::buttonClick, this, &frmMagCreate::tlbSaveStand_ButtonClick);
}

}  // namespace regalon
