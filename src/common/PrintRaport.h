#pragma once

#include <QString>

class QWidget;

namespace regalon {

struct AppContext;
class DbRecordset;

/// The template that a user has active, as the holders of a form show it.
struct PrintRaport {
    QString RaportCode;
    QString RaportName;
    QString RaportFile;

    /// The first row of a statement that returns RaportCode, RaportName, RaportFile and RaporFileWath; empty
    /// texts without a row. NULL is code 0, and "Brak" in the texts. Opens the recordset anew; throws.
    static PrintRaport read(AppContext& context, DbRecordset& recordset, const QString& Sql);

    /// Writes it into lblRaportName, txtRaportFile and txtRaportCode of a form, in this order. Raises 438 at
    /// the first one that the form has not.
    void showOn(const QWidget* Form) const;
};

}  // namespace regalon
