// Groups of materials. A manager edits the members in the list; nothing goes to the database before the save.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "map/ChosenNumber.h"
#include "map/Notice.h"
#include "map/frmMagCreate.h"
#include "platform/DataCombo.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "platform/Twips.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace regalon {

namespace {

// Keys of the list: "wybierz" and "nowa".
constexpr qint16 kNothing = 0;
constexpr qint16 kNew = -1;

constexpr int kDelete = 1;  // number of its button
constexpr int kName = 1;    // sub-item of a row

constexpr qint32 kBelowToolbar = 300;  // twips

/// Number of the first row with a text; 0 if there is none.
int rowOf(const ListView& list, const QString& text) {
    for (int number = 1; number <= list.itemCount(); ++number) {
        if (list.item(number)->text() == text)
            return number;
    }
    return 0;
}

}  // namespace

void frmMagCreate::WathFrameGroupSurDefine() {
    WindowTrap("frmMagCreate - WathFrameGroupSurDefine", [&] {
        FilleListView(context(), *m_lstSurOnMag, QStringLiteral("select * from Kolv_vv_mag_Sur_Mag"),
                      QString(), true, true, true, false, 0);
        FillComboGroupLocation();
        m_frmDefGroupLocation->move(m_frmDefGroupLocation->x(),
                                    toPixels(windowTop() + 2 * heightOfToolbar() + kBelowToolbar));
        m_frmDefGroupLocation->show();
        m_tlbSaveGroupLocation->button(kDelete)->setEnabled(false);
    });
}

void frmMagCreate::FillComboGroupLocation() {
    WindowTrap("frmMagCreate - FillComboGroupLocation", [&] {
        regalon::FillComboBox(context(), *m_dtcGroupSur,
                              QStringLiteral("select 0 as GroupSur , N'wybierz' as GroupSurName UNION ALL"
                                             " select GroupSur,GroupSurName from kolv_mag_Location_Group"
                                             " where OnOrOff = 'Y' UNION ALL"
                                             " select -1 as GroupSur , N'nowa' as GroupSurName"),
                              false);
    });
}

void frmMagCreate::dtcGroupSur_Change() {
    WindowTrap("frmMagCreate - dtcGroupSur_Change", [&] {
        const qint16 group = chosenNumber(*m_dtcGroupSur);
        m_lblNewGroupName->setVisible(group == kNew);
        m_txtNewGroupName->setVisible(group == kNew);
        if (group == kNew)
            m_txtNewGroupName->clear();
        fillGroupList(group);
        // Only a group that is there has a say about its deletion.
        if (group > kNothing)
            m_tlbSaveGroupLocation->button(kDelete)->setEnabled(m_data->ConfirmGroupUse(group));
        m_cmdAddSurOnGroup->setEnabled(group > kNothing);
        m_cmdRemovroup->setEnabled(group > kNothing);
    });
}

/// Unsorted: the order of the rows is the order in which they are saved, and new ones stand at the end.
void frmMagCreate::fillGroupList(qint16 group) {
    FilleListView(context(), *m_lstSurOnGroup,
                  QStringLiteral("select * from Kolv_vv_mag_Sur_Location_group where xxx_GroupSur = ") +
                      SqlNumber(int{group}),
                  QString(), true, true, true, false, 0);
}

void frmMagCreate::cmdAddSurOnGroup_Click() {
    WindowTrap("frmMagCreate - cmdAddSurOnGroup_Click", [&] {
        const ListItem* marked = m_lstSurOnMag->selectedItem();
        if (marked == nullptr || rowOf(*m_lstSurOnGroup, marked->text()) > 0)
            return;
        // Read first: a list without a name adds no half of a row.
        const QString name = marked->subItem(kName);
        m_lstSurOnGroup->addItem(marked->text())->setSubItem(kName, name);
    });
}

void frmMagCreate::cmdRemovroup_Click() {
    WindowTrap("frmMagCreate - cmdRemovroup_Click", [&] {
        const ListItem* marked = m_lstSurOnGroup->selectedItem();
        if (marked != nullptr)
            m_lstSurOnGroup->removeItem(rowOf(*m_lstSurOnGroup, marked->text()));
    });
}

void frmMagCreate::tlbSaveGroupLocation_ButtonClick(const QString& key) {
    WindowTrap("frmMagCreate - tlbSaveGroupLocation_ButtonClick", [&] {
        const qint16 group = chosenNumber(*m_dtcGroupSur);
        if (key == u"key_Cancel")
            m_frmDefGroupLocation->hide();
        else if (key == u"key_Delete" && group > kNothing)
            deleteGroup(group);
        else if (key == u"key_Save" && group > kNothing)
            saveMembers(group);
        else if (key == u"key_Save" && group == kNew)
            saveNewGroup();
    });
}

/// A location may have been given the group since it was chosen: then it stays, without a word.
void frmMagCreate::deleteGroup(qint16 group) {
    if (m_data->ConfirmGroupUse(group) && m_data->DeleteGroupSur(group))
        WathFrameGroupSurDefine();
}

/// The database takes the members as one text parted by commas and refuses the text when a code with a comma
/// of its own could be meant; the list then stays as the user edited it.
void frmMagCreate::saveMembers(qint16 group) {
    QStringList codes;
    for (int number = 1; number <= m_lstSurOnGroup->itemCount(); ++number)
        codes.append(m_lstSurOnGroup->item(number)->text());
    QString message;
    if (!m_data->AddSurOnGroup(group, codes.join(QLatin1Char(',')), context().UserSign, message))
        showRefusal(message);
}

/// A new group comes without members: they are added once it is chosen, and saved by a second press.
void frmMagCreate::saveNewGroup() {
    const QString name = m_txtNewGroupName->text();
    QString message;
    if (!m_data->AddOrRemoveNewGroup(kNew, name, context().UserSign, message)) {
        showRefusal(message);
        return;
    }
    FillComboGroupLocation();
    m_dtcGroupSur->setText(name);
    FillGroupOnLocalization();
}

}  // namespace regalon
