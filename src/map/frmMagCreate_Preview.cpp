// The preview of the stand on the form, drawn over the plan with elements of its own.

#include "common/ErrorTrap.h"
#include "map/MapCanvas.h"
#include "map/frmMagCreate.h"
#include "platform/Convert.h"
#include "platform/DataCombo.h"
#include "platform/Paths.h"

#include <QComboBox>
#include <QLineEdit>

namespace regalon {

namespace {

qint32 numberOr0(const QString& text) {
    return IsNumeric(text) ? ToInt32(text) : 0;
}

}  // namespace

void frmMagCreate::killPreview() {
    m_map->KillBookStand(canvas().imgBookStandWath(), canvas().imglocationWath(),
                         canvas().lnnFrameBookStandWath());
}

void frmMagCreate::showPreview() {
    killPreview();
    WatchStandOnFormOneStand();
}

void frmMagCreate::WatchStandOnFormOneStand() {
    WindowTrap("frmMagCreate - WatchStandOnFormOneStand", [&] {
        BookstandData stand;
        stand.StandLeft = numberOr0(m_txtLeft->text());
        stand.StandTop = numberOr0(m_txtTop->text());
        // The stored number of shelves, not the one being edited: a shelf shows once it is saved.
        stand.ShelfCount =
            m_data->GetShelfCountOnStand(ToInt16(m_dtcRank->boundText()), ToInt16(m_dtcStand->boundText()));
        for (std::size_t shelf = 0; shelf < m_shelves.size(); ++shelf) {
            const QString count = m_shelves[shelf].count->currentText();
            stand.LocationsOnShelf[shelf] = IsNumeric(count) ? ToInt16(count) : qint16{0};
        }
        if (Paths::fileExists(iconPath(m_txtImageName->text())))
            stand.StandIcon = m_txtImageName->text();
        WatchStandOnForm(stand);
    });
}

void frmMagCreate::WatchStandOnForm(const BookstandData& stand) {
    WindowTrap("frmMagCreate - WatchStandOnForm", [&] {
        m_map->GenerateBookstandOld(canvas().imgBookStandWath(), canvas().imglocationWath(),
                                    canvas().lnnFrameBookStandWath(), stand);
    });
}

}  // namespace regalon
