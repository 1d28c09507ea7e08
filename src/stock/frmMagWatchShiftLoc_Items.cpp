// The materials on the location, one of which is staged, and the packages of that one.

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "map/LocationItemList.h"
#include "map/StatusPanel.h"
#include "platform/Convert.h"
#include "platform/DesignControls.h"
#include "platform/ListView.h"
#include "platform/ToolBar.h"
#include "stock/frmMagWatchShiftLoc.h"

#include <QAction>

namespace regalon {

namespace {

constexpr qint16 kLpWidth = 800;

constexpr int kAccept = 1;
constexpr int kCancel = 2;
constexpr int kImageOfReturn = 11;

// The captions tell which list shows, and by that what the buttons do.
const QString kAcceptItem = QStringLiteral("Zatwierdź surowiec do przesunięcia");
const QString kCancelItem = QStringLiteral("Anuluj przesunięcie surowca");
const QString kAcceptBarCode = QStringLiteral("Zatwierdź jednostkowy surowiec");
const QString kReturnToItems = QStringLiteral("Powrót do wyboru surowca");

// Small icons of the kinds of rows.
constexpr int kImageOfKindA = 41;
constexpr int kImageOfKindB = 42;

// The last columns of the two lists.
QString itemCodeOf(const ListView& list, const ListItem& row) {
    return textFromEnd(list, row, 1);
}
double quantityOf(const ListView& list, const ListItem& row) {
    return ToDouble(textFromEnd(list, row, 3));
}
qint16 flagOf(const ListView& list, const ListItem& row) {
    return ToInt16(textFromEnd(list, row, 4));
}
QString barCodeOf(const ListView& list, const ListItem& row) {
    return textFromEnd(list, row, 1);
}

}  // namespace

void frmMagWatchShiftLoc::FiilItemOnLocation(const LocationAddress& address) {
    WindowTrap("frmMagWatchShiftLoc - FiilItemOnLocation", [&] {
        const PhaseText text = locationItemText(context(), QStringLiteral("kolv_mag_Watch_Item_On_Location"),
                                                address, m_aplication, m_operation);
        readLocationItems(context(), *m_data, *m_lstLocationItem, text, kLpWidth);
        if (ListItem* best = markItems()) {
            best->setChecked(true);
            // A tick from code raises no event.
            lstLocationItem_ItemCheck(*best);
        }
    });
}

/// Gives the rows the icons of their kinds and finds the row that is ticked without asking: the greatest
/// quantity above 0, of equal ones the first in the shown order. Several materials may lie on the location
/// when the last row of kind A says so; then it is for the user to tick.
ListItem* frmMagWatchShiftLoc::markItems() {
    ListView& list = *m_lstLocationItem;
    ListItem* bestRow = nullptr;
    double best = 0;
    qint16 flag = 0;
    for (int number = 1; number <= list.itemCount(); ++number) {
        ListItem* row = list.item(number);
        const QString kind = rowKind(list, *row);
        const double quantity = quantityOf(list, *row);
        if (kind == u"A") {
            flag = flagOf(list, *row);
            row->setSmallIcon(kImageOfKindA);
        } else if (kind == u"B") {
            row->setSmallIcon(kImageOfKindB);
        }
        if (quantity > best) {
            best = quantity;
            bestRow = row;
        }
    }
    return flag == 0 ? bestRow : nullptr;
}

/// One material at most stays ticked: the one that was clicked, whether the click ticked it or not.
void frmMagWatchShiftLoc::lstLocationItem_ItemCheck(ListItem& item) {
    // In front of the handler: texts that are no numbers fail into whoever called.
    const LocationAddress source = status().address();
    WindowTrap("frmMagWatchShiftLoc - lstLocationItem_ItemCheck", [&] {
        ListView& list = *m_lstLocationItem;
        for (int number = 1; number <= list.itemCount(); ++number) {
            ListItem* row = list.item(number);
            if (quantityOf(list, *row) <= 0) {
                row->setChecked(false);
                continue;
            }
            const bool chosen = row == &item;
            if (!chosen)
                row->setChecked(false);
            stageItem(*row, source, chosen);
            list.setSelectedItem(&item);
        }
    });
}

/// What the server says to it shows in the list of packages: no message of its own.
void frmMagWatchShiftLoc::stageItem(const ListItem& item, const LocationAddress& source, bool chosen) {
    QString message;
    m_data->AddBarCodeShiftOnTemp(itemCodeOf(*m_lstLocationItem, item), source, context().UserSign,
                                  chosen ? QStringLiteral("N") : QStringLiteral("Y"), m_aplication,
                                  m_operation, message);
}

void frmMagWatchShiftLoc::lstLocationBarCode_ItemCheck(ListItem& item) {
    WindowTrap("frmMagWatchShiftLoc - lstLocationBarCode_ItemCheck", [&] {
        m_data->DeleteBarCodeShift(barCodeOf(*m_lstLocationBarCode, item), context().UserSign, m_aplication,
                                   item.checked() ? QStringLiteral("N") : QStringLiteral("Y"), m_operation);
        m_lstLocationBarCode->setSelectedItem(&item);
        WatchOrdersLineBarCode(0, 0);
    });
}

bool frmMagWatchShiftLoc::isItemTicked() const {
    for (int number = 1; number <= m_lstLocationItem->itemCount(); ++number) {
        if (m_lstLocationItem->item(number)->checked())
            return true;
    }
    return false;
}

void frmMagWatchShiftLoc::WatchPropLocationSurChoseBarCode() {
    WindowTrap("frmMagWatchShiftLoc - WatchPropLocationSurChoseBarCode", [&] {
        if (!isItemTicked())
            return;
        const QLatin1Char comma(',');
        FilleListView(context(), *m_lstLocationBarCode,
                      QStringLiteral("exec kolv_mag_Watch_BarCode_On_Location ") +
                          SqlNumber(int{context().UserSign}) + comma + SqlText(m_aplication) + comma +
                          SqlText(m_operation) + comma + SqlNumber(1),
                      QString(), true, true, true, true, kLpWidth);
        showBarCodes();
        if (m_lstLocationBarCode->itemCount() > 0)
            m_lstLocationBarCode->setSelectedItem(m_lstLocationBarCode->item(1));
    });
}

void frmMagWatchShiftLoc::showItems() {
    m_lstLocationBarCode->hide();
    m_lstLocationItem->show();
    m_tlbAkceptItem->button(kCancel)->setText(kCancelItem);
    m_tlbAkceptItem->button(kAccept)->setText(kAcceptItem);
}

/// The state of both lists and of their buttons as designed.
void frmMagWatchShiftLoc::resetItems() {
    showItems();
    m_tlbAkceptItem->button(kCancel)->setIcon(programIcon(QStringLiteral("close.ico")));
}

void frmMagWatchShiftLoc::showBarCodes() {
    m_lstLocationBarCode->show();
    m_lstLocationItem->hide();
    m_tlbAkceptItem->button(kAccept)->setText(kAcceptBarCode);
    m_tlbAkceptItem->button(kCancel)->setText(kReturnToItems);
    m_tlbAkceptItem->button(kCancel)->setIcon(imgSmall().icon(kImageOfReturn));
}

void frmMagWatchShiftLoc::tlbAkceptItem_ButtonClick(const QString& key) {
    WindowTrap("frmMagWatchShiftLoc - tlbAkceptItem_ButtonClick", [&] {
        if (key == u"key_AkceptItem") {
            if (m_tlbAkceptItem->button(kAccept)->text() == kAcceptBarCode)
                WatchOrdersLineBarCode(0, 0);
            else
                WatchPropLocationSurChoseBarCode();
        } else if (key == u"key_Cancel") {
            if (m_tlbAkceptItem->button(kCancel)->text() == kReturnToItems)
                returnToItems();
            else
                cancelShift();
        }
    });
}

/// Back to the materials of the location in the address boxes, with nothing staged but what its rows stage
/// anew. The button keeps the picture of the return.
void frmMagWatchShiftLoc::returnToItems() {
    showItems();
    clearStaged();
    WatchOrdersLineBarCode(0, 0);
    AkceptLocation();
}

}  // namespace regalon
