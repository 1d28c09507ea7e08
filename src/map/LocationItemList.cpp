#include "map/LocationItemList.h"

#include "common/AppContext.h"
#include "common/DataClass.h"
#include "common/modListBox.h"
#include "common/modSQL.h"
#include "map/LocationSql.h"
#include "platform/ListView.h"

namespace regalon {

namespace {

constexpr int kImageOfKindA = 42;
constexpr int kImageOfKindB = 40;

void markRows(ListView& list) {
    for (int number = 1; number <= list.itemCount(); ++number) {
        ListItem* row = list.item(number);
        const QString kind = rowKind(list, *row);
        if (kind == u"A")
            row->setSmallIcon(kImageOfKindA);
        else if (kind == u"B")
            row->setSmallIcon(kImageOfKindB);
    }
}

}  // namespace

PhaseText locationItemText(const AppContext& context, const QString& procedure,
                           const LocationAddress& address, const QString& aplication,
                           const QString& operation) {
    const QLatin1Char comma(',');
    const QString before = QStringLiteral("exec ") + procedure + QLatin1Char(' ') +
                           locationArguments(address) + comma + SqlText(QString::number(context.UserSign)) +
                           comma + SqlText(aplication) + comma;
    const QString behind = operation.isEmpty() ? QString() : comma + SqlText(operation);
    return [before, behind](int phase) { return before + SqlNumber(phase) + behind; };
}

void readLocationItems(AppContext& context, DataClass& data, ListView& list, const PhaseText& text,
                       qint16 lpWidth) {
    data.EcexProcedure(text(0));
    FilleListView(context, list, text(1), QString(), true, true, true, true, lpWidth);
    list.setSorted(true);
    list.setSortKey(0);
}

void fillLocationItems(AppContext& context, DataClass& data, ListView& list, const PhaseText& text,
                       qint16 lpWidth) {
    readLocationItems(context, data, list, text, lpWidth);
    markRows(list);
}

QString textFromEnd(const ListView& list, const ListItem& row, int columns) {
    return row.subItem(list.headerCount() - columns);
}

QString rowKind(const ListView& list, const ListItem& row) {
    return textFromEnd(list, row, 2);
}

}  // namespace regalon
