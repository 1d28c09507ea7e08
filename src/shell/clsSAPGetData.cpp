#include "shell/clsSAPGetData.h"

#include "common/AppContext.h"
#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

namespace regalon {

namespace {

const QString className = QStringLiteral("clsSAPGetData");

}  // namespace

clsSAPGetData::clsSAPGetData(AppContext& context) : DataClass(context, className) {}

QString clsSAPGetData::GetUserName(qint16 intUserSign) {
    QString name;
    // The neighbour's name is what this routine reports under.
    const bool done = trap("GetKolvestraPatch", [&] {
        name = readFirst(
            QStringLiteral("select User_Code from OUSR where UserID = ") + SqlNumber(int{intUserSign}),
            "User_Code");
    });
    return done ? name : QStringLiteral("Błąd");
}

QString clsSAPGetData::GetKolvestraPatch() {
    return readPath("GetKolvestraPatch", QStringLiteral("select PathFile from Kolv_setup(nolock)"),
                    "PathFile");
}

QString clsSAPGetData::GetPathBitmapMagSur() {
    return readPath("GetPathBitmapMagSur", QStringLiteral("select PathBitmapMagSur from Kolv_setup(nolock)"),
                    "PathBitmapMagSur");
}

QString clsSAPGetData::GetPathBitmapPlanProd() {
    return readPath("GetPathBitmapPlanProd",
                    QStringLiteral("select PathBitmapPlanProd from Kolv_setup(nolock)"),
                    "PathBitmapPlanProd");
}

/// NULL is not an empty text here: it fails with 94.
QString clsSAPGetData::readFirst(const QString& sql, const char* column) {
    openRead(sql);
    return Recordset.RecordCount() >= 1 ? ToText(Recordset.Value(column)) : QString();
}

QString clsSAPGetData::readPath(const char* routine, const QString& sql, const char* column) {
    QString path;
    const bool done = trap(routine, [&] { path = readFirst(sql, column); });
    if (done && path.isEmpty()) {
        if (!context().ErrorService) {
            throw RunTimeError(RunTime::ObjectNotSet);
        }
        context().ErrorService->ShowError(eErrType::Error, className, QString::fromLatin1(routine),
                                          ErrorRecord());
    }
    return path;
}

}  // namespace regalon
