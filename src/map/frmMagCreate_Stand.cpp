// The stand side of the layout editor: the choice of a row, a stand and a shelf, and what the form shows of
// them.

#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "map/ChosenNumber.h"
#include "map/LocationName.h"
#include "map/MapCanvas.h"
#include "map/frmMagCreate.h"
#include "platform/CommonDialog.h"
#include "platform/Convert.h"
#include "platform/DataCombo.h"
#include "platform/Paths.h"
#include "platform/PictureBox.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace regalon {

namespace {

// Keys of the lists: "wybierz", and "Nowy" or "Nowa".
constexpr qint16 kNothing = 0;
constexpr qint16 kNew = -1;

constexpr QColor kMarkColor(0, 0, 255);

const QString kChoose = QStringLiteral("select 0 as ShelfID ,N'wybierz' as ShelfName");
const QString kShelf1 = QStringLiteral("select 1 as ShelfID ,N'Półka 1' as ShelfName");
const QString kShelf2 = QStringLiteral("select 2 as ShelfID ,N'Półka 2' as ShelfName");
const QString kShelf3 = QStringLiteral("select 3 as ShelfID ,N'Półka 3' as ShelfName");
const QString kShelf4 = QStringLiteral("select 4 as ShelfID ,N'Półka 4' as ShelfName");
const QString kNewShelf = QStringLiteral("select -1 as ShelfID ,N'Nowa' as ShelfName");
const QString kAnd = QStringLiteral(" Union ALL ");
// Only behind "wybierz" the database's logs know it in small letters.
const QString kAndFirst = QStringLiteral(" Union all ");

/// Statement of the shelves that a stand offers. Empty for a number of shelves that no stand has.
QString shelfStatement(qint16 stand, qint16 shelfCount) {
    switch (shelfCount) {
        case -1:
            if (stand > 0)
                return kChoose + kAndFirst + kShelf1 + kAnd + kShelf2 + kAnd + kShelf3 + kAnd + kNewShelf;
            return stand == kNew ? kChoose + kAndFirst + kNewShelf : QString();
        case 0:
            return kChoose;
        case 1:
            return kShelf1 + kAnd + kNewShelf;
        case 2:
            return kShelf1 + kAnd + kShelf2 + kAnd + kNewShelf;
        case 3:
            return kShelf1 + kAnd + kShelf2 + kAnd + kShelf3 + kAnd + kNewShelf;
        case 4:
            return kShelf1 + kAnd + kShelf2 + kAnd + kShelf3 + kAnd + kShelf4 + QLatin1Char(' ');
        default:
            return {};
    }
}

void setTextColor(QWidget* widget, const QColor& color) {
    QPalette palette = widget->palette();
    for (const QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
            palette.setColor(group, role, color);
    widget->setPalette(palette);
}

void setBold(QWidget* widget, bool bold) {
    QFont font = widget->font();
    font.setBold(bold);
    widget->setFont(font);
}

}  // namespace

void frmMagCreate::FillComboRank() {
    WindowTrap("frmMagCreate - FillComboRank", [&] {
        regalon::FillComboBox(
            context(), *m_dtcRank,
            QStringLiteral("select '0' as Rank,'wybierz' RankName UNION ALL"
                           " select Rank,RankName from kolv_mag_Rank(nolock) order by Rank"),
            false);
    });
}

void frmMagCreate::dtcRank_Change() {
    dtcRank_Change_Object();
}

void frmMagCreate::dtcRank_Change_Object() {
    WindowTrap("frmMagCreate - dtcRank_Change_Object", [&] {
        if (IsNumeric(m_dtcRank->boundText()))
            FillComboStand(ToInt16(m_dtcRank->boundText()));
    });
}

void frmMagCreate::FillComboStand(qint16 Rank) {
    WindowTrap("frmMagCreate - FillComboStand", [&] {
        regalon::FillComboBox(
            context(), *m_dtcStand,
            QStringLiteral("select 0 as stand , N'wybierz' as StandName UNION ALL"
                           " select Stand,StandName from kolv_mag_Stand(nolock) Where Rank = ") +
                SqlNumber(int{Rank}) + QStringLiteral(" UNION ALL select -1 as stand , N'Nowy' as StandName"),
            false);
        const qint16 stand = ToInt16(m_dtcStand->boundText());
        FillComboStand(stand, Rank, m_data->GetShelfCountOnStand(Rank, stand));
    });
}

// Reports under the same name as the routine above; support knows both by it. The row plays no part: it is an
// argument of old.
void frmMagCreate::FillComboStand(qint16 Stand, qint16 /*Rank*/, qint16 ShelfCount) {
    WindowTrap("frmMagCreate - FillComboStand", [&] {
        const QString statement = shelfStatement(Stand, ShelfCount);
        if (!statement.isEmpty())
            regalon::FillComboBox(context(), *m_dtcShelfCount, statement, false);
    });
}

void frmMagCreate::dtcStand_Change() {
    dtcStand_Change_Object();
}

void frmMagCreate::dtcStand_Change_Object() {
    WindowTrap("frmMagCreate - dtcStand_Change_Object", [&] {
        const qint16 rank = chosenNumber(*m_dtcRank);
        const qint16 stand = chosenNumber(*m_dtcStand);
        if (m_dtcStand->boundText().isEmpty())
            m_dtcStand->setBoundText(QStringLiteral("0"));
        qint16 shelfCount = m_data->GetShelfCountOnStand(rank, stand);
        StandParameters parameters;
        if (m_data->GetStandParame(rank, stand, parameters))
            showStand(parameters);
        else
            clearStand();
        showLocationCounts(rank, stand, shelfCount);
        if (stand == kNew) {
            shelfCount = -1;
            for (QCheckBox* flag : {m_chkStandVisable, m_chkStandEnable, m_chkStandFrameArround})
                flag->setChecked(true);
        }
        if (stand == kNew || stand == kNothing)
            m_imgWathFindIcon->setPicture({});
        FillComboStand(stand, rank, shelfCount);
    });
}

void frmMagCreate::clearStand() {
    m_txtImageName->clear();
    m_txtLeft->setText(QStringLiteral("0"));
    m_txtTop->setText(QStringLiteral("0"));
    for (QCheckBox* flag : {m_chkStandVisable, m_chkStandEnable, m_chkStandFrameArround})
        flag->setChecked(false);
    m_frmDetailsStand->hide();
    m_txtDescStand->clear();
}

void frmMagCreate::showStand(const StandParameters& stand) {
    m_txtImageName->setText(stand.StandIcon);
    m_txtLeft->setText(QString::number(stand.StandLeft));
    m_txtTop->setText(QString::number(stand.StandTop));
    // A stand whose icon cannot be shown is still shown whole, behind the message: a save of the form would
    // give it the flags and the description of the stand before it.
    m_imgWathFindIcon->setPicture({});
    WindowTrap("frmMagCreate - dtcStand_Change_Object", [&] {
        if (!stand.StandIcon.isEmpty())
            m_imgWathFindIcon->setPicture(Picture::load(iconPath(stand.StandIcon)));
    });
    m_chkStandVisable->setChecked(FlagToCheck(stand.StandVisable) == 1);
    m_chkStandEnable->setChecked(FlagToCheck(stand.StandEnable) == 1);
    m_chkStandFrameArround->setChecked(FlagToCheck(stand.StandFrameArround) == 1);
    m_frmDetailsStand->show();
    m_txtDescStand->setPlainText(stand.StandDescription);
}

void frmMagCreate::showLocationCounts(qint16 rank, qint16 stand, qint16 shelfCount) {
    for (qint16 number = 1; number <= kShelves; ++number) {
        const Shelf& shelf = m_shelves[static_cast<std::size_t>(number - 1)];
        shelf.frame->setVisible(number <= shelfCount);
        if (number <= shelfCount)
            shelf.count->setCurrentText(QString::number(m_data->GetLocalizationCount(rank, stand, number)));
    }
}

void frmMagCreate::dtcShelfCount_Change() {
    dtcShelfCount_Change_Object();
}

void frmMagCreate::dtcShelfCount_Change_Object() {
    WindowTrap("frmMagCreate - dtcShelfCount_Change_Object", [&] {
        const qint16 rank = chosenNumber(*m_dtcRank);
        const qint16 stand = chosenNumber(*m_dtcStand);
        const qint16 key = chosenNumber(*m_dtcShelfCount);
        bool newShelf = false;
        qint16 marked = 0;
        qint16 shelves = 0;
        if (rank > 0 && stand == kNew) {
            shelves = key;
        } else {
            shelves = m_data->GetShelfCountOnStand(rank, stand);
            if (key == kNew) {
                ++shelves;
                newShelf = true;
            }
        }
        if (shelves < 0) {
            shelves = static_cast<qint16>(m_data->GetShelfCountOnStand(rank, stand) + 1);
            newShelf = true;
        }
        if (key > 0)
            marked = key;
        offerLocationCounts(rank, stand, shelves);
        markShelf(marked == 0 && newShelf ? shelves : marked);
    });
}

/// Shows the frames of shelves 1 to `shelves`. A shelf without locations has no number yet: the manager has
/// to give it one before the stand can be saved.
void frmMagCreate::offerLocationCounts(qint16 rank, qint16 stand, qint16 shelves) {
    for (qint16 number = 1; number <= kShelves; ++number) {
        const Shelf& shelf = m_shelves[static_cast<std::size_t>(number - 1)];
        shelf.frame->setVisible(shelves <= kShelves && number <= shelves);
        if (shelf.frame->isHidden())
            continue;
        const qint16 count = m_data->GetLocalizationCount(rank, stand, number);
        shelf.count->setCurrentText(count == 0 ? QStringLiteral("-----") : QString::number(count));
    }
}

/// Of all shelves only the marked one can be changed: a save writes the locations of one shelf.
void frmMagCreate::markShelf(qint16 marked) {
    for (int number = 1; number <= kShelves; ++number) {
        const Shelf& shelf = m_shelves[static_cast<std::size_t>(number - 1)];
        const bool mark = number == marked;
        shelf.count->setEnabled(mark);
        // Fonts and colours run through all that is inside a frame: only what changes is set.
        if (shelf.frame->font().bold() == mark)
            continue;
        const QColor color = mark ? kMarkColor : palette().color(QPalette::ButtonText);
        setBold(shelf.frame, mark);
        setTextColor(shelf.frame, color);
        setTextColor(shelf.count, color);
    }
}

bool frmMagCreate::txtLeft_Validate() {
    return IsNumeric(m_txtLeft->text());
}

bool frmMagCreate::txtTop_Validate() {
    return IsNumeric(m_txtTop->text());
}

void frmMagCreate::imgBookStand_Click(int index) {
    WindowTrap("frmMagCreate - imgBookStand_Click", [&] {
        const TagFields fields(canvas().imgBookStand()[index].tag());
        if (fields.isEmpty())
            return;
        m_dtcRank->setBoundText(QString::number(fields.number(StandField::Rank)));
        m_dtcStand->setBoundText(QString::number(fields.number(StandField::Stand)));
    });
}

void frmMagCreate::tlbPathIconFile_ButtonClick(const QString& key) {
    WindowTrap("frmMagCreate - tlbPathIconFile_ButtonClick", [&] {
        if (key != u"key_Path")
            return;
        const QString family = m_data->GetIconFamily(chosenNumber(*m_dtcRank));
        const QString path = askForFile(QStringLiteral("Pliki graficzne|") + family + QLatin1Char('*'));
        if (path.isEmpty())
            return;
        // The folder is dropped: an icon from elsewhere is refused when the stand is saved.
        m_txtImageName->setText(path.mid(path.lastIndexOf(QLatin1Char('\\')) + 1));
        if (Paths::fileExists(path))
            m_imgWathFindIcon->setPicture(Picture::load(path));
    });
}

/// Path of a picture that the user chose; empty after a cancel.
QString frmMagCreate::askForFile(const QString& filter) {
    m_commonDialog->setFilter(filter);
    m_commonDialog->setDialogTitle(QStringLiteral("Wybór pliku graficznego"));
    m_commonDialog->setInitDir(m_map->iconFolder());
    m_commonDialog->setFileName(QString());
    m_commonDialog->ShowOpen();
    return m_commonDialog->FileName();
}

QString frmMagCreate::iconPath(const QString& file) const {
    return m_map->iconFolder() + QLatin1Char('\\') + file;
}

}  // namespace regalon
