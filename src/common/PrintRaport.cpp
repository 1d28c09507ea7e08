#include "common/PrintRaport.h"

#include "common/AppContext.h"
#include "common/DbGateway.h"
#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/FormControl.h"

#include <QLabel>
#include <QLineEdit>

namespace regalon {

PrintRaport PrintRaport::read(AppContext& context, DbRecordset& recordset, const QString& Sql) {
    recordset.closeIfOpen();
    recordset.Open(Sql, mainConnection(context));
    if (recordset.RecordCount() < 1)
        return {};
    const auto text = [&](QAnyStringView column) {
        return ToText(NullToValue(recordset.Value(column), QStringLiteral("Brak")));
    };
    PrintRaport raport{.RaportCode = ToText(NullToValue(recordset.Value("RaportCode"), 0)),
                       .RaportName = text("RaportName"),
                       .RaportFile = text("RaportFile")};
    // Must be among the columns, but nothing uses it.
    static_cast<void>(text("RaporFileWath"));
    return raport;
}

void PrintRaport::showOn(const QWidget* Form) const {
    controlOf<QLabel>(Form, QStringLiteral("lblRaportName"))
        .setText(QStringLiteral("Szablon wydruku: ") + RaportName);
    controlOf<QLineEdit>(Form, QStringLiteral("txtRaportFile")).setText(RaportFile);
    controlOf<QLineEdit>(Form, QStringLiteral("txtRaportCode")).setText(RaportCode);
}

}  // namespace regalon
