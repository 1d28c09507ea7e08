#include "stock/clsMagSurOutput.h"

#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

namespace regalon {

namespace {

void grow(QStringList& array, const QString& value) {
    if (array.isEmpty())
        throw RunTimeError(RunTime::SubscriptOutOfRange);
    if (!array.first().isEmpty())
        array.append(QString());
    array.last() = value;
}

}  // namespace

clsMagSurOutput::clsMagSurOutput(AppContext& context)
    : DocumentService(context, QStringLiteral("clsMagSurOutput")) {}

qint32 clsMagSurOutput::GetDocNumZlecProd(qint32 DocEntry) {
    return documentNumber("GetDocNumZlecProd", QStringLiteral("ORDR"), DocEntry);
}

bool clsMagSurOutput::ConfirmPropozytionLocation(qint16 UserSign, QString& Message) {
    return callProcedure("ConfirmPropozytionLocation", QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm"),
                         {{"@UserSign", int{UserSign}}}, Message);
}

bool clsMagSurOutput::AddBarCodeOnTemp(const GivenOutPackage& package, QString& Message) {
    return callProcedure("AddBarCodeOnTemp", QStringLiteral("Kolv_mag_BarCode_Add_Temp_Out"),
                         {{"@DocNum", package.DocNum},
                          {"@ItemCode", package.ItemCode},
                          {"@QuantityProp", package.QuantityProp},
                          {"@QuantityOut", package.QuantityOut},
                          {"@UserSign", int{package.UserSign}},
                          {"@LineGrd", int{package.LineGrd}},
                          {"@PropOrOut", package.PropOrOut},
                          {"@DeleteLine", package.DeleteLine},
                          {"@Aplication", package.Aplication},
                          {"@Param", int{package.Param}},
                          {"@BarCode", package.BarCode}},
                         Message);
}

// The number stands before the message, which is the last output as everywhere. A negative return is a
// refusal here, where elsewhere it would be a success. A procedure that succeeds without a number is taken at
// its word: true, and the number 0.
bool clsMagSurOutput::GiveOutSurOnMag(const GiveOut& order, QString& Message, qint32& GiveOutDocNum) {
    bool given = false;
    trap("GiveOutSurOnMag", [&] {
        const ProcedureOutcome answer = callProcedure(QStringLiteral("Kolv_mag_GiveOut_Sur_On_Location"),
                                                      {{"@DocNumProd", order.DocNumProd},
                                                       {"@DocEntryProd", order.DocEntryProd},
                                                       {"@LineNumProd", int{order.LineNumProd}},
                                                       {"@UserSign", int{order.UserSign}},
                                                       {"@UserSignGiveOut", int{order.UserSignGiveOut}},
                                                       {"@Aplication", order.Aplication}});
        Message = answer.message;
        GiveOutDocNum = ToInt32(NullToValue(parameterFromEnd(2), 0));
        given = answer.returnValue == 0;
    });
    if (!given)
        GiveOutDocNum = -1;
    return given;
}

bool clsMagSurOutput::TestExistsDataOnTmpOutput(qint16 UserSign) {
    return hasRows("TestExistsDataOnTmpOutput",
                   QStringLiteral("select top 1 1 from Kolv_Mag_BarCode_Output_Sur_tym(nolock)") +
                       ofThisKey(u"USerSign", UserSign));
}

bool clsMagSurOutput::TestExistsDataTemPurhcaseAndItemCodeGiveOut(qint16 UserSign) {
    const QString ofUser = ofThisKey(u"UserSign", UserSign);
    return hasRows("TestExistsDataTemPurhcaseAndItemCodeGiveOut",
                   QStringLiteral("select top 1 1  from ##Temp_mag_PurchesOrders_GiveOut(nolock)") + ofUser +
                       QStringLiteral(" Union All") +
                       QStringLiteral(" select top 1 1  from ##Temp_mag_ItemCode_GiveOut(nolock) ") + ofUser);
}

bool clsMagSurOutput::TestItemSurOnMag(const QString& ItemCode, const QString& Aplication, QString& Message) {
    return callProcedure("TestItemSurOnMag", QStringLiteral("Kolv_mag_Confirm_Item_GiveOut"),
                         {{"@ItemCode", ItemCode}, {"@Aplication", Aplication}}, Message);
}

bool clsMagSurOutput::GetDataGivOutListPrint(qint32 DocNum, QStringList& LineNums, QStringList& BarCodes) {
    trap("GetDataGivOutListPrint", [&] {
        openRead(QStringLiteral("select GiveOutDocNum,GiveOutLineNum,GiveOutBarCode"
                                " from Kolv_Mag_BarCode_Sur_Production(nolock) where GiveOutDocNum =") +
                 SqlNumber(DocNum) + QStringLiteral(" Order by GiveOutDocNum,GiveOutLineNum"));
        for (; !Recordset.Eof(); Recordset.MoveNext()) {
            grow(LineNums, text("GiveOutLineNum", QStringLiteral("0")));
            grow(BarCodes, text("GiveOutBarCode", QStringLiteral("0")));
        }
    });
    return true;
}

bool clsMagSurOutput::AddPurchaseOrderTmpGiveOut(qint16 UserSign, qint16 UserSignGiveOut, qint32 DocEntry,
                                                 const QString& AddOrDelete, const QString& Aplication,
                                                 QString& Message) {
    return callProcedure("AddPurchaseOrderTmpGiveOut", QStringLiteral("Kolv_mag_Add_PurchesOrders_GiveOut"),
                         {{"@Aplication", Aplication},
                          {"@UserSign", int{UserSign}},
                          {"@UserSignGiveOut", int{UserSignGiveOut}},
                          {"@DocEntry", DocEntry},
                          {"@AddOrDelete", AddOrDelete}},
                         Message);
}

bool clsMagSurOutput::AddItemCodeTmpGiveOut(qint16 UserSign, qint16 UserSignGiveOut, const QString& ItemCode,
                                            const QString& AddOrDelete, const QString& Aplication,
                                            QString& Message) {
    return callProcedure("AddItemCodeTmpGiveOut", QStringLiteral("Kolv_mag_Add_ItemCode_GiveOut"),
                         {{"@Aplication", Aplication},
                          {"@UserSign", int{UserSign}},
                          {"@UserSignGiveOut", int{UserSignGiveOut}},
                          {"@ItemCode", ItemCode},
                          {"@AddOrDelete", AddOrDelete}},
                         Message);
}

bool clsMagSurOutput::GetDocEntryCheckedPurchaseOrders(qint16 UserSign, QStringList& DocEntries) {
    return readTicks("GetDocEntryCheckedPurchaseOrders", QStringLiteral("DocEntry"),
                     QStringLiteral("##Temp_mag_PurchesOrders_GiveOut"), UserSign, DocEntries);
}

bool clsMagSurOutput::GetDocItemCodeChecked(qint16 UserSign, QStringList& ItemCodes) {
    return readTicks("GetDocItemCodeChecked", QStringLiteral("ItemCode"),
                     QStringLiteral("##Temp_mag_ItemCode_GiveOut"), UserSign, ItemCodes);
}

bool clsMagSurOutput::ClearPurchersOrderGiveOut(qint16 UserSign, const QString& Aplication, qint16 Param) {
    return clearTicks("ClearPurchersOrderGiveOut", QStringLiteral("Kolv_mag_Clear_PurchesOrders_GiveOut"),
                      UserSign, Aplication, Param);
}

bool clsMagSurOutput::ClearItemCodeGiveOut(qint16 UserSign, const QString& Aplication, qint16 Param) {
    return clearTicks("ClearItemCodeGiveOut", QStringLiteral("Kolv_mag_Clear_ItemCode_GiveOut"), UserSign,
                      Aplication, Param);
}

bool clsMagSurOutput::readTicks(QAnyStringView routine, const QString& column, const QString& table,
                                qint16 UserSign, QStringList& array) {
    trap(routine, [&] {
        openRead(QStringLiteral(" select %1,UserSignGiveOut from %2(nolock) where UserSign = ")
                     .arg(column, table) +
                 SqlNumber(int{UserSign}) + QStringLiteral(" AND SPID = -@@SPID AND HostName = host_Name()"));
        for (; !Recordset.Eof(); Recordset.MoveNext())
            grow(array, text(column));
    });
    return true;
}

bool clsMagSurOutput::clearTicks(QAnyStringView routine, const QString& procedure, qint16 UserSign,
                                 const QString& Aplication, qint16 Param) {
    return callProcedure(routine, procedure,
                         {{"@Aplication", Aplication}, {"@UserSign", int{UserSign}}, {"@Param", int{Param}}});
}

}  // namespace regalon
