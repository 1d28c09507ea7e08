// The locations that the server proposes for the chosen packages, and the ticks on them.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "map/Notice.h"
#include "map/StatusPanel.h"
#include "platform/ListView.h"
#include "platform/Screen.h"
#include "stock/ProposalRow.h"
#include "stock/frmMagWatchShiftLoc.h"

#include <QSet>

#include <algorithm>
#include <optional>

namespace regalon {

namespace {

constexpr qint16 kLpWidth = 1000;
constexpr qint16 kPrepare = 0;
constexpr qint16 kFirstColumn = 1;
constexpr int kLastSortColumn = 10;

constexpr int kImageOfSortColumn = 43;
constexpr int kImageOfSource = 40;

}  // namespace

QString frmMagWatchShiftLoc::proposalText(qint16 mode, const QString& Message) const {
    const QLatin1Char comma(',');
    return QStringLiteral("exec Kolv_mag_Watch_Prop_Location ") + SqlNumber(int{context().UserSign}) + comma +
           SqlText(m_aplication) + comma + SqlText(m_operation) + comma + SqlNumber(int{mode}) + comma +
           SqlText(Message);
}

void frmMagWatchShiftLoc::WatchOrdersLineBarCode(qint16 SortOnly, qint16 SortColumn) {
    // Reports under the name of another window, from which it came; support knows it so.
    WindowTrap("frmMagSurInput - WatchOrdersLineBarCode", [&] {
        // With hundreds of chosen packages the server takes its time.
        const BusyPointer busy;
        QString message;
        if (SortOnly == 0)
            recomputeProposals(message);
        // Also after a refusal: the list shows what the server has.
        FilleListView(context(), *m_lstSurPropLocation,
                      proposalText(std::max(SortColumn, kFirstColumn), message), QString(), true, true, true,
                      true, kLpWidth);
        markProposals();
    });
}

/// The message of one step goes into the statement of the next.
void frmMagWatchShiftLoc::recomputeProposals(QString& Message) {
    if (!m_data->ConfirmPropozytionLocation(context().UserSign, m_aplication, m_operation, Message)) {
        showRefusal(Message);
        return;
    }
    m_lstSurPropLocation->show();
    if (!m_data->EcexProcedureParam(proposalText(kPrepare, Message), Message))
        showRefusal(Message);
}

/// Gives the rows the icons of their status. The source itself is no target, and what the address boxes hold
/// counts as the source.
void frmMagWatchShiftLoc::markProposals() {
    std::optional<LocationAddress> source;
    for (int number = 1; number <= m_lstSurPropLocation->itemCount(); ++number) {
        ListItem& item = *m_lstSurPropLocation->item(number);
        const ProposalRow row(*m_lstSurPropLocation, item);
        if (const std::optional<int> icon = row.statusIcon())
            item.setSmallIcon(*icon);
        const LocationAddress target = row.target();
        if (!source)
            source = status().address();
        if (target == *source) {
            item.setSmallIcon(kImageOfSource);
            item.setChecked(false);
        }
    }
}

/// The server sorts. The rows are read anew, so that the ticks go.
void frmMagWatchShiftLoc::lstSurPropLocation_ColumnClick(int header) {
    WindowTrap("frmMagWatchShiftLoc - lstSurPropLocation_ColumnClick", [&] {
        if (header > kLastSortColumn)
            return;
        for (int number = 1; number <= m_lstSurPropLocation->headerCount(); ++number) {
            if (number == header) {
                m_lstSurPropLocation->setHeaderIcon(number, kImageOfSortColumn);
                WatchOrdersLineBarCode(-1, static_cast<qint16>(header));
            } else {
                m_lstSurPropLocation->setHeaderIcon(number, 0);
            }
        }
    });
}

void frmMagWatchShiftLoc::lstSurPropLocation_DblClick() {
    // A double click is two clicks and nothing more.
}

void frmMagWatchShiftLoc::lstSurPropLocation_ItemCheck(ListItem& item) {
    WindowTrap("frmMagWatchShiftLoc - lstSurPropLocation_ItemCheck", [&] {
        const QString status = ProposalRow(*m_lstSurPropLocation, item).status();
        const int icon = item.smallIcon();
        untickRepeatedPackages();
        if (!item.checked())
            return;
        if (status != u"D" && status != u"C")
            item.setChecked(false);
        if (icon == kImageOfSource)
            item.setChecked(false);
    });
}

/// A package goes to one place: of its ticked rows the first in the list stays, also when the user has just
/// ticked a later one, and also when that first one is refused its own tick afterwards.
void frmMagWatchShiftLoc::untickRepeatedPackages() {
    QSet<QString> seen;
    for (int number = 1; number <= m_lstSurPropLocation->itemCount(); ++number) {
        ListItem& row = *m_lstSurPropLocation->item(number);
        if (!row.checked() || row.smallIcon() == kImageOfSource)
            continue;
        const QString barCode = ProposalRow(*m_lstSurPropLocation, row).barCode();
        // Rows without a code in front of the first code are none of one package.
        if (seen.isEmpty() && barCode.isEmpty())
            continue;
        if (seen.contains(barCode))
            row.setChecked(false);
        else
            seen.insert(barCode);
    }
}

}  // namespace regalon
