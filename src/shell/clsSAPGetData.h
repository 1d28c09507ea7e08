#pragma once

#include "common/DataClass.h"

#include <QString>

namespace regalon {

/// What the site keeps in the database about the user and the folders. Lives as long as the main window.
class clsSAPGetData : public DataClass {
public:
    explicit clsSAPGetData(AppContext& context);

    /// Code of the user; "" for an unknown number, "Błąd" after a failure, which it reports.
    QString GetUserName(qint16 intUserSign);

    /// Folders of the site. Each reports a failure, and also an empty result, under the number 0: this is how
    /// a site learns that its settings are not filled.
    QString GetKolvestraPatch();
    QString GetPathBitmapMagSur();
    QString GetPathBitmapPlanProd();

private:
    QString readFirst(const QString& sql, const char* column);
    QString readPath(const char* routine, const QString& sql, const char* column);
};

}  // namespace regalon
