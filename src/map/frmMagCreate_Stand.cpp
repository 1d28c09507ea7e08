// The stand side of the layout editor.

#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "map/frmMagCreate.h"

namespace regalon {

void frmMagCreate::FillComboRank() {
    WindowTrap("frmMagCreate - FillComboRank", [&] {
        regalon::FillComboBox(
            m_context, *m_dtcRank,
            QStringLiteral("select '0' as Rank,'wybierz' RankName UNION ALL"
                           " select Rank,RankName from kolv_mag_Rank(nolock) order by Rank"),
            false);
    });
}

}  // namespace regalon
