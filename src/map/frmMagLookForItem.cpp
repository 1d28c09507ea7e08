#include "map/frmMagLookForItem.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/ListView.h"
#include "platform/RunTimeError.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QRadioButton>
#include <QShowEvent>

namespace regalon {

namespace {

const QString kAllMaterials = QStringLiteral("Kolv_mag_LookFor_Item");
const QString kMaterialsOnMag = QStringLiteral("Kolv_mag_LookFor_Item_2");
const QString kCodeColumn = QStringLiteral("ItemCode");
const QString kNameColumn = QStringLiteral("ItemName");
constexpr int kCodeHeader = 1;

constexpr int kNoIcon = 0;

bool isEnter(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

/// A dialog that is destroyed while shown hides its list afterwards, which then measures its headers once
/// more.
frmMagLookForItem::~frmMagLookForItem() {
    m_lstSurOnMag->setHeaderIcons(nullptr);
}

void frmMagLookForItem::showEvent(QShowEvent* event) {
    if (!event->spontaneous())
        Form_Load();
    QDialog::showEvent(event);
}

/// Escape is the key of "&Anuluj": left to the dialog it would close without giving the caller's code back.
void frmMagLookForItem::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Cancel))
        tlbLookFor_ButtonClick(QStringLiteral("key_Cancel"));
    else
        QDialog::keyPressEvent(event);
}

bool frmMagLookForItem::eventFilter(QObject* watched, QEvent* event) {
    // The list reports double clicks on rows only; here they count anywhere in it.
    if (watched == m_lstSurOnMag->viewport() && event->type() == QEvent::MouseButtonDblClick) {
        lstSurOnMag_DblClick();
        return true;
    }
    if (event->type() != QEvent::KeyPress)
        return QDialog::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    if (watched == m_lstSurOnMag)
        return lstSurOnMag_KeyDown(key);
    return watched == m_txtItemCode && txtItemCode_KeyDown(key);
}

void frmMagLookForItem::Form_Load() {
    WindowTrap("frmMagLookForItem - Form_Load", [this] {
        FillComboSur();
        m_optItemCode->setChecked(true);
    });
}

void frmMagLookForItem::FillComboSur() {
    WindowTrap("frmMagLookForItem - FillComboSur", [this] {
        fillList(m_operation == u"E" ? kAllMaterials : searchProcedure(), QString(), kCodeColumn);
    });
}

void frmMagLookForItem::txtItemCode_Change() {
    WindowTrap("frmMagLookForItem - txtItemCode_Change", [this] {
        fillList(searchProcedure(), TrimBlanks(m_txtItemCode->text()),
                 m_optItemName->isChecked() ? kNameColumn : kCodeColumn);
    });
}

QString frmMagLookForItem::searchProcedure() const {
    return m_onlyExistsMag ? kMaterialsOnMag : kAllMaterials;
}

/// The text goes into the statement as it stands: the user's wildcards work, and a quote breaks the
/// statement. The list then keeps its rows, since it is cleared only when the server has answered.
void frmMagLookForItem::fillList(const QString& procedure, const QString& text, const QString& column) {
    const auto statement = [&](int step) {
        return QStringLiteral("exec ") + procedure + QStringLiteral(" '") + text + QStringLiteral("%' , '") +
               column + QStringLiteral("',") + SqlNumber(step);
    };
    EcexProcedure(m_context, statement(0));
    FilleListView(m_context, *m_lstSurOnMag, statement(1), QString(), true, true, true, false, 0);
}

bool frmMagLookForItem::txtItemCode_KeyDown(int key) {
    if (key == Qt::Key_Down) {
        enterList();
        return true;
    }
    if (isEnter(key))
        WindowTrap("frmMagLookForItem - txtItemCode_KeyDown", [this] { takeMarkedRow(); });
    return isEnter(key);
}

/// Lets a user who types go on to the rows without the mouse.
void frmMagLookForItem::enterList() {
    if (m_lstSurOnMag->itemCount() == 0)
        return;
    if (m_lstSurOnMag->selectedItem() == nullptr)
        m_lstSurOnMag->setSelectedItem(m_lstSurOnMag->item(1));
    m_lstSurOnMag->setFocus();
}

bool frmMagLookForItem::lstSurOnMag_KeyDown(int key) {
    if (isEnter(key))
        WindowTrap("frmMagLookForItem - lstSurOnMag_KeyDown", [this] { takeMarkedRow(); });
    return isEnter(key);
}

void frmMagLookForItem::lstSurOnMag_DblClick() {
    WindowTrap("frmMagLookForItem - lstSurOnMag_DblClick", [this] {
        if (m_lstSurOnMag->itemCount() > 0)
            takeMarkedRow();
    });
}

/// The column that was clicked is the one searched at the next key stroke; the rows stay as they are until
/// then.
void frmMagLookForItem::lstSurOnMag_ColumnClick(int header) {
    WindowTrap("frmMagLookForItem - lstSurOnMag_ColumnClick", [this, header] {
        (header == kCodeHeader ? m_optItemCode : m_optItemName)->setChecked(true);
        for (int number = 1; number <= m_lstSurOnMag->headerCount(); ++number)
            m_lstSurOnMag->setHeaderIcon(number, number == header ? kIconOfSearchColumn : kNoIcon);
        // The click has put the focus into the list, which keeps the keys to itself.
        m_txtItemCode->setFocus();
    });
}

void frmMagLookForItem::tlbLookFor_ButtonClick(const QString& key) {
    WindowTrap("frmMagLookForItem - tlbLookFor_ButtonClick", [this, &key] {
        if (key == u"key_Akcept")
            takeMarkedRow();
        else if (key == u"key_Cancel")
            giveBack(m_itemCodeForm);
    });
}

void frmMagLookForItem::takeMarkedRow() {
    const ListItem* row = m_lstSurOnMag->selectedItem();
    if (row == nullptr)
        throw RunTimeError(RunTime::ObjectNotSet);
    giveBack(row->text());
}

void frmMagLookForItem::giveBack(const QString& itemCode) {
    if (!m_form)
        throw RunTimeError(RunTime::ObjectNotSet);
    m_form(itemCode);
    accept();
}

}  // namespace regalon
