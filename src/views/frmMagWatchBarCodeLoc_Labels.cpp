// The controls for labels of packages. This version gathers what the labels would tell and prints nothing: no
// step stands behind the gathering, and the buttons for the choice of a template and for the report of a
// whole location do nothing.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modSQL.h"
#include "map/Notice.h"
#include "map/StatusPanel.h"
#include "platform/Convert.h"
#include "platform/ListView.h"
#include "platform/RunTimeError.h"
#include "views/BarCodeLabels.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QGroupBox>
#include <QLineEdit>

namespace regalon {

void frmMagWatchBarCodeLoc::PrintBarCodeLocation(bool fromLookup) {
    WindowTrap("frmMagWatchBarCodeLoc - PrintBarCodeLocation", [&] {
        // Only typing fills the code: nothing offers the templates.
        if (TrimBlanks(m_txtRaportCode->text()).isEmpty()) {
            showNotice(QStringLiteral("Brak wybranego szablonu wydruku etykiety !!"));
            return;
        }
        // Here the way ends. A row that cannot be gathered is reported nevertheless.
        if (fromLookup)
            static_cast<void>(BarCodeLabels::ofPackage(m_txtBarCodeLookFor->text(), m_txtNumberCode->text()));
        else
            static_cast<void>(BarCodeLabels::ofTickedRows(*m_lstBarCodeLocation));
    });
}

void frmMagWatchBarCodeLoc::tlbPodlad_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchBarCodeLoc - tlbPodlad_ButtonClick", [&] {
        if (key == u"key_Print")
            PrintBarCodeLocation(false);
        else if (key == u"key_Watch")
            m_oleWatchTemplete->show();
        else if (key == u"key_Close")
            closeContent();
    });
}

// What follows reports under the window of goods-in, whose buttons they were; support knows them so.

void frmMagWatchBarCodeLoc::tlbPrintBarCodeAllLocation_ButtonClick(const QString& /*key*/) {
    WindowTrap("frmMagSurImputBarCode - tvblRodzajeEtykiet_ButtonClick", [&] {
        // Numbers beyond 16 bits in the address boxes are reported; neither button does anything else.
        static_cast<void>(status().typedLocation());
    });
}

void frmMagWatchBarCodeLoc::SetPrintRaport() {
    WindowTrap("frmMagSurInputBarCode - SetPrintRaport", [&] {
        if (!m_printRaportParam)
            throw RunTimeError(RunTime::ObjectNotSet);
        m_printRaportParam(
            this, QStringLiteral("select A.RaportCode,A.RaportName,A.RaportFile,A.RaporFileWath from "
                                 "Kolv_ListPrint A(nolock) inner join Kolv_PrintActiveUser B(nolock)  On "
                                 "A.RaportCOde = B.RaportCode AND A.GroupForm = B.GroupForm where "
                                 "B.UserSign = ") +
                      SqlNumber(int{context().UserSign}) + QStringLiteral(" AND A.GroupForm = 4"));
    });
}

void frmMagWatchBarCodeLoc::tvblRodzajeEtykiet_ButtonClick(const QString& /*key*/) {
    // Nothing stands behind the one button.
}

}  // namespace regalon
