#include "map/SearchPanel.h"

#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "map/MapDataClass.h"
#include "map/MapSearch.h"
#include "map/frmMagLookForItem.h"
#include "platform/DataCombo.h"
#include "platform/DesignControls.h"
#include "platform/Screen.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>

namespace regalon {

namespace {

const QString kNothingChosen = QStringLiteral("0");

// Modes of the grey pass.
constexpr qint16 kOwnMaterials = 0;
constexpr qint16 kGroups = 1;

}  // namespace

SearchPanel::SearchPanel(AppContext& context, const QString& window, QWidget* parent)
    : QGroupBox(QStringLiteral("Wyszukiwanie surowca"), parent), m_context(context), m_window(window) {
    setObjectName(QStringLiteral("frmLookForSur"));
    setAutoFillBackground(true);
    createChoice();
    createToolBar();
    createResult();
    hide();
}

void SearchPanel::createChoice() {
    place(addLabel(this, "Label3", QStringLiteral("Surowiec:")), 150, 285, 1050, 345);
    m_dtcLookForSur = new DataCombo(this);
    m_dtcLookForSur->setObjectName(QStringLiteral("dtcLookForSur"));
    place(m_dtcLookForSur, 1230, 285, 6900, 345);
    auto* cmdLookFor = new QPushButton(QStringLiteral("..."), this);
    cmdLookFor->setObjectName(QStringLiteral("cmdLookFor"));
    place(cmdLookFor, 8190, 285, 450, 345);
    connect(cmdLookFor, &QPushButton::clicked, this, &SearchPanel::cmdLookFor_Click);
    m_chkAllItem = new QCheckBox(QStringLiteral("Wszystkie surowce z kartoteki"), this);
    m_chkAllItem->setObjectName(QStringLiteral("chkAllItem"));
    place(m_chkAllItem, 1230, 660, 3900, 315);
    connect(m_chkAllItem, &QCheckBox::clicked, this, &SearchPanel::chkAllItem_Click);
}

void SearchPanel::createToolBar() {
    auto* bar = new ToolBar(this);
    bar->setObjectName(QStringLiteral("tlbLookForSur"));
    bar->addButton(QStringLiteral("key_LookFor"), QStringLiteral("&Szukaj surowiec"), {},
                   programIcon(QStringLiteral("find.ico")));
    bar->addButton(QStringLiteral("key_Cancel"), QStringLiteral("&Anuluj szukanie"), {},
                   programIcon(QStringLiteral("close.ico")));
    place(bar, 10200, 255, 4650, 450);
    connect(bar, &ToolBar::buttonClick, this, &SearchPanel::tlbLookForSur_ButtonClick);
}

void SearchPanel::createResult() {
    place(addLabel(this, "lblLookForSur", QStringLiteral("Surowiec szukany:")), 150, 1005, 1800, 315);
    m_lblSurLookFor = addLabel(this, "lblSurLookFor", {}, true);
    place(m_lblSurLookFor, 1980, 1005, 8100, 315);
    m_lblSurLookForGroup = addLabel(this, "lblSurLookForGroup");
    place(m_lblSurLookForGroup, 10200, 1005, 4650, 315);
}

QString SearchPanel::reportName(const char* routine) const {
    return m_window + QStringLiteral(" - ") + QString::fromLatin1(routine);
}

void SearchPanel::load(MapDataClass& mapData, MapSearch& search, const QString& aplication) {
    m_data = &mapData;
    m_search = &search;
    m_aplication = aplication;
    m_itemCode.clear();
    m_dtcLookForSur->clearRowSource();
    m_dtcLookForSur->setBoundText(QString());
    m_chkAllItem->setChecked(false);
    m_lblSurLookFor->clear();
    m_lblSurLookForGroup->clear();
}

void SearchPanel::open() {
    m_search->showPlain();
    FillComboSurDefineMag();
    show();
    m_lblSurLookFor->clear();
}

void SearchPanel::FillComboSur() {
    // Reports under the layout editor's name in every window; support knows it so.
    WindowTrap("frmMagCreate - FillComboSur", [&] {
        FillComboBox(m_context, *m_dtcLookForSur, QStringLiteral("select * from Kolv_vv_mag_Sur_On_Add"),
                     false);
    });
}

void SearchPanel::FillComboSurDefineMag() {
    WindowTrap(reportName("FillComboSurDefineMag"), [&] {
        FillComboBox(m_context, *m_dtcLookForSur,
                     QStringLiteral("exec kolv_mag_Sur_On_Mag ") + SqlText(m_aplication), false);
    });
}

void SearchPanel::chkAllItem_Click() {
    WindowTrap(reportName("chkAllItem_Click"), [&] {
        if (m_chkAllItem->isChecked())
            FillComboSur();
        else
            FillComboSurDefineMag();
    });
}

void SearchPanel::cmdLookFor_Click() {
    WindowTrap(reportName("cmdLookFor_Click"), [&] {
        frmMagLookForItem dialog(m_context, this);
        dialog.setForm([this](const QString& itemCode) { setItemCode(itemCode); });
        dialog.setItemCodeForm(m_dtcLookForSur->boundText());
        dialog.setOnlyExistsMag(!m_chkAllItem->isChecked());
        dialog.exec();
        // A dialog closed by its frame has written nothing: then this is the code of the last search.
        m_dtcLookForSur->setBoundText(m_itemCode);
    });
}

void SearchPanel::tlbLookForSur_ButtonClick(const QString& key) {
    WindowTrap(reportName("tlbLookForSur_ButtonClick"), [&] {
        if (key == u"key_LookFor") {
            lookFor();
        } else if (key == u"key_Cancel") {
            hide();
            m_cancel();
        }
    });
}

void SearchPanel::lookFor() {
    const QString itemCode = m_dtcLookForSur->boundText();
    const QString name = m_dtcLookForSur->text();
    if (itemCode == kNothingChosen) {
        m_lblSurLookFor->setText(QStringLiteral("Brak wskazania surowca"));
        m_lblSurLookForGroup->clear();
    } else if (m_data->TestExistsSurOnMag(itemCode)) {
        showPlaces(itemCode, kOwnMaterials);
        m_lblSurLookFor->setText(name);
        m_lblSurLookForGroup->clear();
    } else if (m_data->TestExistsSurOnMagGroup(itemCode)) {
        // In the shift window, whose first test knows no groups, this is the material of a group. In the
        // others the first test looks into the groups as well: there it came into one between the two, and a
        // material that is in a group alone greys the whole plan above.
        showPlaces(itemCode, kGroups);
        m_lblSurLookFor->setText(name);
        m_lblSurLookForGroup->setText(QStringLiteral("Syrowiec przpisany grupie"));
    } else {
        // The note about groups stays, as does the plan.
        m_lblSurLookFor->setText(QStringLiteral("Surowiec nie wystepuje na magazynie"));
    }
}

void SearchPanel::showPlaces(const QString& itemCode, qint16 mode) {
    m_search->showPlain();
    const BusyPointer busy;
    m_search->ChangeIconOnLocation(itemCode, mode);
}

}  // namespace regalon
