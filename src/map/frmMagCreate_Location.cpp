// The location editor: what a manager assigns to the location that was clicked.

#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "map/frmMagCreate.h"

namespace regalon {

void frmMagCreate::FillComboSur() {
    WindowTrap("frmMagCreate - FillComboSur", [&] {
        regalon::FillComboBox(m_context, *m_dtcSurOnLOcalization,
                              QStringLiteral("select * from Kolv_vv_mag_Sur_On_Add"), false);
    });
}

// Reports under the name of the routine below, like that one itself; support knows both by it.
void frmMagCreate::FillGroupOnLocalization() {
    WindowTrap("frmMagCreate - FillParamStaticLocalization", [&] {
        regalon::FillComboBox(m_context, *m_dtcGroupOnLocalization,
                              QStringLiteral("select * from Kolv_vv_mag_Group_On_Localization"), false);
    });
}

void frmMagCreate::FillParamStaticLocalization() {
    WindowTrap("frmMagCreate - FillParamStaticLocalization", [&] {
        regalon::FillComboBox(m_context, *m_dtcParamLocation,
                              QStringLiteral("select * from Kolv_vv_mag_Param_Location"), false);
    });
}

}  // namespace regalon
