#include "stock/DocumentNumbers.h"

#include "common/modSQL.h"
#include "platform/Convert.h"

namespace regalon {

qint32 DocumentNumbers::GetDocNum(qint32 DocEntry) {
    return documentNumber("GetDocNum", QStringLiteral("OPOR"), DocEntry);
}

qint32 DocumentNumbers::documentNumber(QAnyStringView routine, const QString& table, qint32 DocEntry) {
    qint32 number = 0;
    const bool done = trap(routine, [&] {
        openRead(
            QStringLiteral(" select DocNum from %1(nolock) where DocEntry = %2").arg(table).arg(DocEntry));
        if (!Recordset.Eof())
            number = ToInt32(NullToValue(Recordset.Value("DocNUm"), 0));
    });
    return done ? number : -1;
}

bool DocumentNumbers::hasRows(QAnyStringView routine, const QString& sql) {
    bool found = false;
    trap(routine, [&] {
        openRead(sql);
        found = Recordset.RecordCount() >= 1;
    });
    return found;
}

}  // namespace regalon
