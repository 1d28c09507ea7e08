// The location editor: what a manager assigns to the location that was clicked.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "map/LocationName.h"
#include "map/MapCanvas.h"
#include "map/Notice.h"
#include "map/RankLetter.h"
#include "map/TypedLocation.h"
#include "map/frmMagCreate.h"
#include "map/frmMagLookForItem.h"
#include "platform/Convert.h"
#include "platform/DataCombo.h"
#include "platform/ToolBar.h"

#include <QAction>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>

namespace regalon {

namespace {

constexpr int kPrintLabel = 3;  // number of its button

const QString kNothingChosen = QStringLiteral("0");

}  // namespace

void frmMagCreate::FillComboSur() {
    WindowTrap("frmMagCreate - FillComboSur", [&] {
        regalon::FillComboBox(context(), *m_dtcSurOnLOcalization,
                              QStringLiteral("select * from Kolv_vv_mag_Sur_On_Add"), false);
    });
}

// Reports under the name of the routine below, like that one itself; support knows both by it.
void frmMagCreate::FillGroupOnLocalization() {
    WindowTrap("frmMagCreate - FillParamStaticLocalization", [&] {
        regalon::FillComboBox(context(), *m_dtcGroupOnLocalization,
                              QStringLiteral("select * from Kolv_vv_mag_Group_On_Localization"), false);
    });
}

void frmMagCreate::FillParamStaticLocalization() {
    WindowTrap("frmMagCreate - FillParamStaticLocalization", [&] {
        regalon::FillComboBox(context(), *m_dtcParamLocation,
                              QStringLiteral("select * from Kolv_vv_mag_Param_Location"), false);
    });
}

void frmMagCreate::imglocation_Click(int index) {
    WindowTrap("frmMagCreate - imglocation_Click", [&] {
        const TagFields fields(canvas().imglocation()[index].tag());
        const LocationAddress address{fields.number(LocationField::Rank), fields.number(LocationField::Stand),
                                      fields.number(LocationField::Shelf),
                                      fields.number(LocationField::Location)};
        m_txtFrmRank->setText(fields.at(LocationField::Rank));
        m_txtFrmStand->setText(fields.at(LocationField::Stand));
        m_txtFrmShelf->setText(fields.at(LocationField::Shelf));
        m_txtFrmLocation->setText(fields.at(LocationField::Location));
        m_frmAddSurOnLocalization->setTitle(QStringLiteral("Rząd: ") + RankLetter(address.Rank) +
                                            QStringLiteral(" Regał: ") + m_txtFrmStand->text() +
                                            QStringLiteral(" Półka: ") + m_txtFrmShelf->text() +
                                            QStringLiteral(" Lokazliacja: ") + m_txtFrmLocation->text());
        QString itemCode;
        QString itemName;
        qint16 group = 0;
        if (m_data->GetParamLocalization(address, itemCode, itemName, group))
            showAssigned(itemCode, itemName, group);
        else
            showNothingAssigned();
        m_frmAddSurOnLocalization->show();
    });
}

/// A label is printed only for a location that has a row of its own.
void frmMagCreate::showNothingAssigned() {
    m_tlbCmd->button(kPrintLabel)->setEnabled(false);
    m_lblSurOnLOcationData->setText(QStringLiteral("Brak przypisanego surowca"));
    for (DataCombo* combo : {m_dtcSurOnLOcalization, m_dtcGroupOnLocalization, m_dtcParamLocation})
        combo->setBoundText(kNothingChosen);
}

void frmMagCreate::showAssigned(const QString& ItemCode, const QString& ItemName, qint16 GroupSur) {
    m_lblSurOnLOcationData->setText(ItemCode + QStringLiteral(" - ") + ItemName);
    m_dtcSurOnLOcalization->setBoundText(ItemCode);
    m_dtcGroupOnLocalization->setBoundText(QString::number(GroupSur));
    m_dtcParamLocation->setBoundText(kNothingChosen);
    m_tlbCmd->button(kPrintLabel)->setEnabled(true);
}

/// The location being edited; none unless all four boxes hold numbers.
std::optional<LocationAddress> frmMagCreate::locationOnForm() const {
    return numericLocation(m_txtFrmRank->text(), m_txtFrmStand->text(), m_txtFrmShelf->text(),
                           m_txtFrmLocation->text());
}

void frmMagCreate::cmdLookFor_Click() {
    WindowTrap("frmMagCreate - cmdLookFor_Click", [&] {
        frmMagLookForItem dialog(context(), this);
        dialog.setForm([this](const QString& itemCode) { setItemCode(itemCode); });
        dialog.setItemCodeForm(m_dtcSurOnLOcalization->boundText());
        dialog.exec();
        // A dialog closed by its frame has written nothing: then this is the code of the last search.
        m_dtcSurOnLOcalization->setBoundText(m_itemCode);
    });
}

void frmMagCreate::tlbSaveSurLocalization_ButtonClick(const QString& key) {
    // Known to support without the end of the toolbar's name.
    WindowTrap("frmMagCreate - tlbSaveSur_ButtonClick", [&] {
        if (key == u"key_Save") {
            SaveLocalizationParam();
        } else if (key == u"key_Cancel") {
            m_frmAddSurOnLocalization->hide();
            m_tlbCmd->button(kPrintLabel)->setEnabled(false);
        }
    });
}

/// Always false: nobody reads it. After a save the frame shows the old material until the next click on a
/// location.
bool frmMagCreate::SaveLocalizationParam() {
    WindowTrap("frmMagCreate - tlbSaveSur_ButtonClick", [&] {
        const auto address = locationOnForm();
        if (!address) {
            showNotice(QStringLiteral(
                "Błąd w przekazaniu głównych parametrów do definiowania parametrów lokalizacji !!!"));
            return;
        }
        const QString itemCode = m_dtcSurOnLOcalization->boundText();
        const qint16 group = ToInt16(m_dtcGroupOnLocalization->boundText());
        // A group alone is not saved from here.
        if (itemCode == kNothingChosen)
            return;
        QString message;
        if (!m_data->AddSurOnLocalization(*address, itemCode, group, context().UserSign, message))
            showRefusal(message);
    });
    return false;
}

}  // namespace regalon
