#include "views/BarCodeLabels.h"

#include "platform/Convert.h"
#include "platform/ListView.h"

namespace regalon {

namespace {

void append(QStringList& list, const QString& value) {
    if (!list.first().isEmpty())
        list.append(QString());
    list.last() = value;
}

QString codePart(const QString& barCode) {
    return barCode.mid(1, 2);
}

}  // namespace

void BarCodeLabels::add(const QString& valueA, const QString& valueB, const QString& numberCode,
                        const QString& barCode) {
    append(valuesA, valueA);
    append(valuesB, valueB);
    append(numberCodes, numberCode);
    append(barCodes, barCode);
    append(codeParts, codePart(barCode));
}

BarCodeLabels BarCodeLabels::ofTickedRows(const ListView& list) {
    BarCodeLabels labels;
    const int columns = list.headerCount();
    for (int number = 1; number <= list.itemCount(); ++number) {
        const ListItem& row = *list.item(number);
        if (!row.checked())
            continue;
        labels.add(ToText(ToDouble(row.subItem(columns - 4))), ToText(ToInt16(row.subItem(columns - 3))),
                   ToText(ToDouble(row.subItem(columns - 2))), row.subItem(columns - 6));
    }
    return labels;
}

BarCodeLabels BarCodeLabels::ofPackage(const QString& barCode, const QString& numberCode) {
    BarCodeLabels labels;
    const QString none = QStringLiteral("-1");
    labels.add(none, none, ToText(ToInt16(numberCode)), barCode);
    return labels;
}

}  // namespace regalon
