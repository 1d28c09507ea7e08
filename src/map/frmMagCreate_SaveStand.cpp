// Saving and removing a stand. A refusal leaves database, plan and form as they were.

#include "common/ErrorTrap.h"
#include "common/modSQL.h"
#include "map/ChosenNumber.h"
#include "map/MapCanvas.h"
#include "map/Notice.h"
#include "map/frmMagCreate.h"
#include "platform/Convert.h"
#include "platform/DataCombo.h"
#include "platform/MsgBox.h"
#include "platform/Paths.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <algorithm>
#include <array>

namespace regalon {

namespace {

constexpr qint16 kNew = -1;

// Where a stand may be placed, twips.
constexpr qint16 kLeftMin = 200;
constexpr qint16 kLeftMax = 14500;
constexpr qint16 kTopMin = 1100;
constexpr qint16 kTopMax = 8500;

const std::array<QString, 4> kBadCounts = {
    QStringLiteral("Podana ilość lokalizacji na półce pierwszej jest nie poprawna !!!"),
    QStringLiteral("Podana ilość lokalizacji na półce drugiej jest nie poprawna !!!"),
    QStringLiteral("Podana ilość lokalizacji na półce trzeciej jest nie poprawna !!!"),
    QStringLiteral("Podana ilość lokalizacji na półce czwartej jest nie poprawna !!!")};
const QString kBadIcon = QStringLiteral("Podana nazwa dla ikony regału jest błędna !!!");
const QString kBadLeft = QStringLiteral(
    "Położenie ragału poza granicami magazynu, zmien parametr położenia X - (X(min) = 200 ;"
    " X(max) = 14500) !!!");
const QString kBadTop = QStringLiteral(
    "Położenie ragału poza granicami magazynu, zmien parametr położenia Y  - (Y(min) = 1100 ;"
    " Y(max) = 8500) !!!");

qint32 positionOf(const QLineEdit& box) {
    return IsNumeric(box.text()) ? ToInt32(box.text()) : 0;
}

QString flagOf(const QCheckBox& flag) {
    return CheckToFlag(flag.isChecked() ? 1 : 0);
}

/// Makes a call and tells why it was refused. Each call has a message of its own: one that fails leaves it as
/// it is, and would show what the call before it wrote.
template <class Call>
bool isAccepted(const Call& call) {
    QString message;
    const bool accepted = call(message);
    if (!accepted)
        showRefusal(message);
    return accepted;
}

}  // namespace

/// Without a message after a failure, which has been reported then.
bool frmMagCreate::ValidateDataOnForm(QString& message) {
    bool valid = false;
    WindowTrap("frmMagCreate - ValidateDataOnForm", [&] {
        message = firstFault();
        valid = message.isEmpty();
    });
    return valid;
}

/// Empty when there is none. The boxes of hidden shelves count, too.
QString frmMagCreate::firstFault() const {
    for (std::size_t shelf = 0; shelf < m_shelves.size(); ++shelf) {
        if (!IsNumeric(m_shelves[shelf].count->currentText()))
            return kBadCounts[shelf];
    }
    if (!Paths::fileExists(iconPath(TrimBlanks(m_txtImageName->text()))))
        return kBadIcon;
    // 16 bits on purpose: a number beyond them is a failure and no fault of the place.
    const qint16 left = ToInt16(m_txtLeft->text());
    if (left < kLeftMin || left > kLeftMax)
        return kBadLeft;
    const qint16 top = ToInt16(m_txtTop->text());
    if (top < kTopMin || top > kTopMax)
        return kBadTop;
    return {};
}

StandDefinition frmMagCreate::standOnForm() {
    StandDefinition stand;
    stand.Top = positionOf(*m_txtTop);
    stand.Left = positionOf(*m_txtLeft);
    stand.Rank = ToInt16(m_dtcRank->boundText());
    stand.Stand = ToInt16(m_dtcStand->boundText());
    stand.Shelf = ToInt16(m_dtcShelfCount->boundText());
    if (stand.Shelf == kNew)
        stand.Shelf = static_cast<qint16>(m_data->GetShelfCountOnStand(stand.Rank, stand.Stand) + 1);
    // The shelves above the chosen one stay 0; the procedure knows by Shelf which number is meant.
    const std::array<qint16*, kShelves> counts = {&stand.Shelf_1, &stand.Shelf_2, &stand.Shelf_3,
                                                  &stand.Shelf_4};
    // A shelf beyond the fourth, where another manager has made that one meanwhile, has none: it is refused.
    const std::size_t last =
        stand.Shelf <= kShelves ? static_cast<std::size_t>(std::max<int>(stand.Shelf, 0)) : 0;
    for (std::size_t shelf = 0; shelf < last; ++shelf)
        *counts[shelf] = ToInt16(m_shelves[shelf].count->currentText());
    stand.StandIcon = m_txtImageName->text();
    stand.StandVisable = flagOf(*m_chkStandVisable);
    stand.StandEnable = flagOf(*m_chkStandEnable);
    stand.StandFrameArround = flagOf(*m_chkStandFrameArround);
    // Line ends as the database's other clients write them.
    stand.StandDescription = m_txtDescStand->toPlainText().replace(u'\n', QStringLiteral("\r\n"));
    return stand;
}

bool frmMagCreate::AddBookStand() {
    bool saved = false;
    WindowTrap("frmMagCreate - AddBookStand", [&] {
        if (!isAccepted([&](QString& message) { return ValidateDataOnForm(message); }))
            return;
        StandDefinition stand = standOnForm();
        if (!isAccepted([&](QString& message) { return m_data->AddBookStandValidate(stand, message); }) ||
            !isAccepted([&](QString& message) { return m_data->AddBookStandToDB(stand, message); }))
            return;
        if (stand.Stand == kNew)
            stand.Stand = m_data->GetStandCount(stand.Rank);
        m_remembered = {.Rank = stand.Rank,
                        .Stand = stand.Stand,
                        .Top = ToInt16(double(stand.Top)),
                        .Left = ToInt16(double(stand.Left))};
        saved = true;
    });
    return saved;
}

bool frmMagCreate::RemoveBookStand() {
    bool removed = false;
    WindowTrap("frmMagCreate - RemoveBookStand", [&] {
        const qint16 rank = ToInt16(m_dtcRank->boundText());
        const qint16 stand = ToInt16(m_dtcStand->boundText());
        // Asked as at a save, and of no consequence: the whole stand goes.
        if (ToInt16(m_dtcShelfCount->boundText()) == kNew)
            m_data->GetShelfCountOnStand(rank, stand);
        if (!isAccepted(
                [&](QString& message) { return m_data->RemoveBookStandValidate(rank, stand, message); }) ||
            !isAccepted([&](QString& message) { return m_data->RemoveBookStandDB(rank, stand, message); }))
            return;
        m_remembered.Rank = rank;
        m_remembered.Stand = 0;
        removed = true;
    });
    return removed;
}

void frmMagCreate::tlbSaveStand_ButtonClick(const QString& key) {
    WindowTrap("frmMagCreate - tlbSaveStand_ButtonClick", [&] {
        if (key == u"key_Add")
            saveStand();
        else if (key == u"key_Remove")
            removeStand();
        else if (key == u"key_Wath")
            showPreview();
        else if (key == u"key_Wath_Mag")
            RefreschWatchStore();
    });
}

void frmMagCreate::saveStand() {
    if (!AddBookStand())
        return;
    dtcStand_Change_Object();
    dtcRank_Change_Object();
    m_dtcRank->setBoundText(QString::number(m_remembered.Rank));
    m_dtcStand->setBoundText(QString::number(m_remembered.Stand == kNew ? 1 : m_remembered.Stand));
    m_txtLeft->setText(QString::number(m_remembered.Left));
    m_txtTop->setText(QString::number(m_remembered.Top));
    RefreschWatchStore();
}

void frmMagCreate::removeStand() {
    if (chosenNumber(*m_dtcRank) <= 0 || chosenNumber(*m_dtcStand) <= 0) {
        showNotice(QStringLiteral("Próba usunięcia regału bez wskaznaia rzędu i regału !!"));
        return;
    }
    const int answer = MsgBox(QStringLiteral("Jesteś pewien że chcesz usunąc wskazany regał ?"),
                              MsgFlag::OkCancel + MsgFlag::Question, QStringLiteral("Komunikat"));
    if (answer != MsgResult::Ok || !RemoveBookStand())
        return;
    dtcStand_Change_Object();
    dtcRank_Change_Object();
    m_dtcRank->setBoundText(QString::number(m_remembered.Rank));
    m_dtcStand->setBoundText(QString::number(m_remembered.Stand));
    RefreschWatchStore();
}

}  // namespace regalon
