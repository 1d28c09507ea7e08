// The frames of the location editor and of the material groups, and where they lie. All positions and sizes
// are twips.

#include "map/PlanFrame.h"
#include "map/frmMagCreate.h"
#include "platform/DataCombo.h"
#include "platform/DesignControls.h"
#include "platform/FocusGuard.h"
#include "platform/ListView.h"
#include "platform/PictureBox.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

namespace regalon {

namespace {

constexpr int kFrameLeft = 120;
constexpr int kFrameWidth = 14970;
constexpr int kFrameHeight = 2490;
// Down to the frame of the stand: two rows of buttons that save, one of each frame, would be mistaken.
constexpr int kGroupHeight = 5835;
// Room for the columns of both lists, of which the first shows the unit as well.
constexpr int kMaterialListWidth = 7200;
constexpr int kMemberListWidth = 6450;
constexpr int kGroupListHeight = 4020;

constexpr int kLine = 345;          // height of a box and of its label
constexpr int kLabelWidth = 2940;   // of the material side
constexpr int kChoiceWidth = 4980;  // a material shows its code and its name
constexpr int kParamLeft = 8820;
constexpr int kParamWidth = 3060;
constexpr int kPictureLeft = 11940;

constexpr int kTimerInterval = 1000;  // milliseconds

template <typename Control>
Control* add(QWidget* parent, const char* name, int left, int top, int width, int height = kLine) {
    auto* control = new Control(parent);
    control->setObjectName(QString::fromLatin1(name));
    place(control, left, top, width, height);
    return control;
}

QPushButton* addArrow(QWidget* parent, const char* name, const QString& icon, const QString& meaning,
                      int top) {
    auto* button = add<QPushButton>(parent, name, 7485, top, 750, 510);
    button->setIcon(programIcon(icon));
    button->setToolTip(meaning);
    return button;
}

}  // namespace

void frmMagCreate::createLocationFrame() {
    m_frmAddSurOnLocalization = addPlanFrame(surface(), "frmAddSurOnLocalization", QString(), kFrameLeft, 0,
                                             kFrameWidth, kFrameHeight);
    createLocationMaterial();
    createLocationAddress();
    createLocationParams();
    createLocationPicture();
}

void frmMagCreate::createLocationMaterial() {
    QWidget* frame = m_frmAddSurOnLocalization;
    place(addLabel(frame, "lblSurOnLOcation", QStringLiteral("Surowiec na lokalizacji:")), 150, 360,
          kLabelWidth, kLine);
    m_lblSurOnLOcationData = addLabel(frame, "lblSurOnLOcationData", {}, true);
    // The code and the name of a material are long; nothing else stands in this line.
    place(m_lblSurOnLOcationData, 3120, 360, kPictureLeft - 3210, kLine);
    place(addLabel(frame, "lblNewSurOnLOcation", QStringLiteral("Nowy surowiec  dla lokalizacji:")), 150, 780,
          kLabelWidth, kLine);
    m_dtcSurOnLOcalization = add<DataCombo>(frame, "dtcSurOnLOcalization", 3120, 780, kChoiceWidth);
    m_cmdLookFor = add<QPushButton>(frame, "cmdLookFor", 3180 + kChoiceWidth, 780, 450);
    m_cmdLookFor->setText(QStringLiteral("..."));
    connect(m_cmdLookFor, &QPushButton::clicked, this, &frmMagCreate::cmdLookFor_Click);
    place(addLabel(frame, "lblGroupONLocation", QStringLiteral("Grupa surowców dla lokalizacji:")), 150, 1200,
          kLabelWidth, kLine);
    m_dtcGroupOnLocalization = add<DataCombo>(frame, "dtcGroupOnLocalization", 3120, 1200, kChoiceWidth);

    m_tlbDefineGroupOnLocation = add<ToolBar>(frame, "tlbDefineGroupOnLocation", 90, 1845, 2190, 510);
    m_tlbDefineGroupOnLocation->addButton(QStringLiteral("key_Define"), QStringLiteral("&Grupy surowców"), {},
                                          programIcon(QStringLiteral("groups.ico")));
    connect(m_tlbDefineGroupOnLocation, &ToolBar::buttonClick, this, &frmMagCreate::WathFrameGroupSurDefine);
    m_tlbSaveSurLocalization = add<ToolBar>(frame, "tlbSaveSurLocalization", 3030, 1845, 2490, 510);
    m_tlbSaveSurLocalization->addButton(QStringLiteral("key_Save"), QStringLiteral("&Zapisz"), {},
                                        programIcon(QStringLiteral("img_25.ico")));
    m_tlbSaveSurLocalization->addButton(QStringLiteral("key_Cancel"), QStringLiteral("&Anuluj"), {},
                                        programIcon(QStringLiteral("close.ico")));
    connect(m_tlbSaveSurLocalization, &ToolBar::buttonClick, this,
            &frmMagCreate::tlbSaveSurLocalization_ButtonClick);
}

void frmMagCreate::createLocationAddress() {
    const auto addAddressBox = [this](const char* name, const QString& meaning, int left) {
        QLineEdit* box = addNumberBox(m_frmAddSurOnLocalization, name, meaning);
        place(box, left, 1920, 450, kLine);
        return box;
    };
    m_txtFrmRank = addAddressBox("txtFrmRank", QStringLiteral("Rząd"), 5640);
    m_txtFrmStand = addAddressBox("txtFrmStand", QStringLiteral("Regał"), 6120);
    m_txtFrmShelf = addAddressBox("txtFrmShelf", QStringLiteral("Półka"), 6600);
    m_txtFrmLocation = addAddressBox("txtFrmLocation", QStringLiteral("Lokalizacja"), 7080);
}

void frmMagCreate::createLocationParams() {
    QWidget* frame = m_frmAddSurOnLocalization;
    place(addLabel(frame, "lblParamsLocaton", QStringLiteral("Parametry statyczne lokalizacji:")), kParamLeft,
          705, kParamWidth, 300);
    m_dtcParamLocation = add<DataCombo>(frame, "dtcParamLocation", kParamLeft, 1005, kParamWidth);
    connect(m_dtcParamLocation, &DataCombo::changed, this, &frmMagCreate::dtcParamLocation_Change);
    // The box and the choice share one place; the kind of the parameter tells which of them shows.
    m_txtParamValueLocalization = add<QLineEdit>(frame, "txtParamValueLocalization", kParamLeft, 1425, 2760);
    new FocusGuard(m_txtParamValueLocalization, [this] { return txtParamValueLocalization_Validate(); });
    m_cmbStatusLocation = add<QComboBox>(frame, "cmbStatusLocation", kParamLeft, 1425, 2760);
    m_cmbStatusLocation->setEditable(true);
    m_cmbStatusLocation->setInsertPolicy(QComboBox::NoInsert);
    m_tlbSaveParamLocalization =
        add<ToolBar>(frame, "tlbSaveParamLocalization", kParamLeft - 60, 1845, kParamWidth, 510);
    m_tlbSaveParamLocalization->addButton(QStringLiteral("key_Save"), QStringLiteral("&Zapisz parametr"));
    connect(m_tlbSaveParamLocalization, &ToolBar::buttonClick, this,
            &frmMagCreate::tlbSaveParamLocalization_ButtonClick);
}

void frmMagCreate::createLocationPicture() {
    m_frmWathSurPicture =
        addFrame(m_frmAddSurOnLocalization, "frmWathSurPicture", QStringLiteral("obraz surowca "));
    place(m_frmWathSurPicture, kPictureLeft, 60, kFrameWidth - kPictureLeft - 90, 2340);
    m_impPictureSur = add<PictureBox>(m_frmWathSurPicture, "impPictureSur", 120, 360, 2700, 1440);
    m_txtFrmPicture = add<QLineEdit>(m_frmWathSurPicture, "txtFrmPicture", 120, 1890, 2160);
    m_tlbPictureSur = add<ToolBar>(m_frmWathSurPicture, "tlbPictureSur", 2310, 1815, 540, 480);
    m_tlbPictureSur->addButton(QStringLiteral("key_Path"), QString(),
                               QStringLiteral("Wybór pliku graficznego"),
                               programIcon(QStringLiteral("folder.ico")));
    connect(m_tlbPictureSur, &ToolBar::buttonClick, this, &frmMagCreate::tlbPictureSur_ButtonClick);
}

void frmMagCreate::createGroupFrame() {
    m_frmDefGroupLocation = addPlanFrame(surface(), "frmDefGroupLocation", QString(), kFrameLeft, 1380,
                                         kFrameWidth, kGroupHeight);
    createGroupChoice();
    createGroupLists();

    m_tlbSaveGroupLocation =
        add<ToolBar>(m_frmDefGroupLocation, "tlbSaveGroupLocation", 90, 5115, kFrameWidth - 180, 510);
    m_tlbSaveGroupLocation->addButton(QStringLiteral("key_Delete"), QStringLiteral("&Usuń"), {},
                                      programIcon(QStringLiteral("img_37.ico")));
    m_tlbSaveGroupLocation->addButton(QStringLiteral("key_Cancel"), QStringLiteral("&Anuluj"), {},
                                      programIcon(QStringLiteral("close.ico")));
    m_tlbSaveGroupLocation->addButton(QStringLiteral("key_Save"), QStringLiteral("&Zapisz"), {},
                                      programIcon(QStringLiteral("img_25.ico")));
    connect(m_tlbSaveGroupLocation, &ToolBar::buttonClick, this,
            &frmMagCreate::tlbSaveGroupLocation_ButtonClick);
}

void frmMagCreate::createGroupChoice() {
    QWidget* frame = m_frmDefGroupLocation;
    place(addLabel(frame, "lblGroupSur", QStringLiteral("Grupy zdefiniowane")), 150, 180, 1950, kLine);
    m_dtcGroupSur = add<DataCombo>(frame, "dtcGroupSur", 2130, 180, 3930);
    connect(m_dtcGroupSur, &DataCombo::changed, this, &frmMagCreate::dtcGroupSur_Change);
    m_lblNewGroupName = addLabel(frame, "lblNewGroupName", QStringLiteral("Nazwa nowej grupy definiowanej"));
    place(m_lblNewGroupName, 6300, 180, 3090, kLine);
    m_txtNewGroupName = add<QLineEdit>(frame, "txtNewGroupName", 9420, 180, 3600);
}

void frmMagCreate::createGroupLists() {
    const auto addList = [this](const char* frameName, const QString& caption, const char* listName, int left,
                                int width) {
        QGroupBox* frame = addFrame(m_frmDefGroupLocation, frameName, caption);
        place(frame, left, 720, width, kGroupListHeight + 360);
        return add<ListView>(frame, listName, 60, 330, width - 120, kGroupListHeight - 30);
    };
    m_lstSurOnMag = addList("frmSurowceOnChoise", QStringLiteral("Surowce w magazynie"), "lstSurOnMag", 120,
                            kMaterialListWidth);
    m_lstSurOnGroup = addList("frmSurOnGroup", QStringLiteral("Surowce w danej grupie"), "lstSurOnGroup",
                              kFrameWidth - kMemberListWidth - 120, kMemberListWidth);
    m_cmdAddSurOnGroup = addArrow(m_frmDefGroupLocation, "cmdAddSurOnGroup", QStringLiteral("right.ico"),
                                  QStringLiteral("Dodaj surowiec do grupy"), 2100);
    m_cmdRemovroup = addArrow(m_frmDefGroupLocation, "cmdRemovroup", QStringLiteral("left.ico"),
                              QStringLiteral("Usuń surowiec z grupy"), 2760);
    connect(m_cmdAddSurOnGroup, &QPushButton::clicked, this, &frmMagCreate::cmdAddSurOnGroup_Click);
    connect(m_cmdRemovroup, &QPushButton::clicked, this, &frmMagCreate::cmdRemovroup_Click);
}

void frmMagCreate::createTimer() {
    m_timer1 = new QTimer(this);
    m_timer1->setObjectName(QStringLiteral("Timer1"));
    m_timer1->setInterval(kTimerInterval);
    connect(m_timer1, &QTimer::timeout, this, &frmMagCreate::Timer1_Timer);
}

}  // namespace regalon
