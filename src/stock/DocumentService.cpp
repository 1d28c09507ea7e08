#include "stock/DocumentService.h"

#include "common/modSQL.h"

namespace regalon {

bool DocumentService::AddSurOnMag(qint16 UserSign, const QString& Aplication, const QString& Operation,
                                  qint16& ReturnValue, QString& Message) {
    bool accepted = false;
    trap("AddSurOnMag", [&] {
        const ProcedureOutcome answer = callProcedure(
            QStringLiteral("Kolv_mag_Add_Sur_On_Bufor"),
            {{"@UserSign", int{UserSign}}, {"@Aplication", Aplication}, {"@Operation", Operation}});
        ReturnValue = answer.returnValue;
        Message = answer.message;
        accepted = answer.accepted();
    });
    return accepted;
}

// This procedure alone is not told which application calls.
bool DocumentService::AddSurOnLocation(qint32 DocEntry, qint16 LineNum, const QString& BarCodeSur,
                                       const QString& BarCodeLoc, qint16 UserSign, const QString& Operation,
                                       QString& Message) {
    return callProcedure("AddSurOnLocation", QStringLiteral("Kolv_mag_Add_Sur_On_Location"),
                         {{"@DocEntry", DocEntry},
                          {"@LineNum", int{LineNum}},
                          {"@BarCodeSur", BarCodeSur},
                          {"@BarCodeLoc", BarCodeLoc},
                          {"@UserSign", int{UserSign}},
                          {"@Operation", Operation}},
                         Message);
}

bool DocumentService::CheckExistRecordOnAdd(qint16 UserSign) {
    return hasRows("CheckExistRecordOnAdd",
                   QStringLiteral("select top 1 1 from Kolv_Mag_BarCode_Input_Sur_tym(nolock)") +
                       ofThisKey(u"USerSign", UserSign));
}

QString DocumentService::ofThisKey(QStringView userColumn, qint16 UserSign) {
    return QStringLiteral(" where HostName = host_name() AND SPID = -@@SPID AND %1 = ").arg(userColumn) +
           SqlNumber(int{UserSign});
}

bool DocumentService::stagePackage(QAnyStringView routine, const QString& procedure,
                                   const OrderPackage& package) {
    return callProcedure(routine, procedure,
                         {{"@DocEntry", package.DocEntry},
                          {"@DocNum", package.DocNum},
                          {"@LineNum", int{package.LineNum}},
                          {"@BarCode", package.BarCode},
                          {"@NumberCode", int{package.NumberCode}},
                          {"@Quantity", package.Quantity},
                          {"@UserSign", int{package.UserSign}},
                          {"@LineGrd", int{package.LineGrd}},
                          {"@DeleteLine", package.DeleteLine},
                          {"@ItemCode", package.ItemCode},
                          {"@Aplication", package.Aplication},
                          {"@Operation", package.Operation}});
}

}  // namespace regalon
