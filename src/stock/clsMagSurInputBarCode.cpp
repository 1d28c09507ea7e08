#include "stock/clsMagSurInputBarCode.h"

#include "common/PrintRaport.h"
#include "common/modSQL.h"
#include "platform/Convert.h"

#include <QDateTime>

namespace regalon {

clsMagSurInputBarCode::clsMagSurInputBarCode(AppContext& context)
    : DocumentNumbers(context, QStringLiteral("clsMagSurInputBarCode")) {}

qint16 clsMagSurInputBarCode::GetIconLineStatus(qint32 DocEntry, qint16 LineNum, qint16 UserSign,
                                                QString& Message) {
    qint16 status = -1;
    trap("GetIconLineStatus", [&] {
        const ProcedureOutcome answer = callProcedure(
            QStringLiteral("kolv_mag_Line_Status_PurchaseOrder"),
            {{"@DocEntry", DocEntry}, {"@Linenum", int{LineNum}}, {"@UserSign", int{UserSign}}});
        Message = answer.message;
        status = answer.returnValue;
    });
    return status;
}

void clsMagSurInputBarCode::SetPrintRaportParam(const QWidget* Form, const QString& Sql) {
    trap("SetPrintRaportParam", [&] { PrintRaport::read(context(), Recordset, Sql).showOn(Form); });
}

qint32 clsMagSurInputBarCode::GetDocYear(qint32 DocEntry) {
    qint32 year = 0;
    const bool done = trap("GetDocYear", [&] {
        openRead(QStringLiteral(" select DocDate from OPOR(nolock) where DocEntry = %1").arg(DocEntry));
        if (Recordset.Eof())
            return;
        const QVariant date = Recordset.Value("DocDate");
        if (date.isValid())
            year = date.toDate().year();
    });
    return done ? year : -1;
}

// The arguments come with the number of the document first, the parameters with its entry first.
qint32 clsMagSurInputBarCode::GetLastNumberCode(qint16 Year, qint32 DocNum, qint32 DocEntry, qint16 LineNum) {
    qint32 last = -1;
    trap("GetLastNumberCode", [&] {
        execute(
            QStringLiteral("Kolv_mag_GetLastBarCode_Sur"),
            {{"@Year", int{Year}}, {"@DocEntry", DocEntry}, {"@DocNum", DocNum}, {"@LineNum", int{LineNum}}});
        last = ToInt32(Command.Parameters().Item(0).Value());
    });
    return last;
}

bool clsMagSurInputBarCode::SaveBarCode(qint16 Year, qint32 DocNum, qint32 DocEntry, qint16 LineNum,
                                        qint16 NumberCode, const QString& BarCode, qint16 UserSign,
                                        const QString& ItemCode) {
    return save("SaveBarCode", QStringLiteral("dbo.Kolv_mag_SaveBarCode_Sur"),
                {{"@Year", int{Year}},
                 {"@DocEntry", DocEntry},
                 {"@DocNum", DocNum},
                 {"@LineNum", int{LineNum}},
                 {"@NumberCode", int{NumberCode}},
                 {"@BarCode", BarCode},
                 {"@UserSign", int{UserSign}},
                 {"@ItemCode", ItemCode}});
}

bool clsMagSurInputBarCode::GetParamItemCode(const QString& ItemCode, PackingData& packing) {
    bool found = false;
    const bool done = trap("GetParamItemCode", [&] {
        openRead(QStringLiteral("select Blength1,Bwidth1,BHeight1,PurPackUn,PurPackMsr from OITM(nolock)"
                                " where ItemCode = ") +
                 SqlText(ItemCode));
        if (Recordset.Eof())
            return;
        packing = {.Blength1 = fraction("Blength1"),
                   .Bwidth1 = fraction("Bwidth1"),
                   .BHeight1 = fraction("BHeight1"),
                   .PurPackUn = number("PurPackUn"),
                   .PurPackMsr = text("PurPackMsr")};
        found = true;
    });
    if (!done)
        packing = {};
    return found;
}

bool clsMagSurInputBarCode::SaveItemCodeParam(const QString& ItemCode, double SLength1, double SWidth1,
                                              double BHeight1, double PurPackUn, const QString& PurPackMsr,
                                              qint16 UserSign) {
    return save("SaveItemCodeParam", QStringLiteral("dbo.Kolv_mag_SaveItemCodeParam_Sur"),
                {{"@ItemCode", ItemCode},
                 {"@SLength1", SLength1},
                 {"@SWidth1", SWidth1},
                 {"@BHeight1", BHeight1},
                 {"@PurPackUn", PurPackUn},
                 {"@PurPackMsr", PurPackMsr},
                 {"@UserSign", int{UserSign}}});
}

// Reports under the name of another method; support knows its failures by it.
qint16 clsMagSurInputBarCode::GetStatusItemCode(const QString& ItemCode) {
    qint16 status = -1;
    trap("GetParamItemCode", [&] {
        openRead(QStringLiteral("select dbo.kolv_mag_fn_Status_ItemCode(-1,-1,") + SqlText(ItemCode) +
                 QStringLiteral(") As Status"));
        if (!Recordset.Eof())
            status = ToInt16(NullToValue(Recordset.Value("Status"), -1));
    });
    return status;
}

qint32 clsMagSurInputBarCode::GetQuantityBarCode(qint32 first, qint16 second) {
    qint32 quantity = 0;
    trap("GetQuantityBarCode", [&] {
        openRead(QStringLiteral("select dbo.kolv_mag_fn_Quantity_BarCode(") + SqlNumber(first) + u',' +
                 SqlNumber(int{second}) + QStringLiteral(") As Status"));
        quantity = Recordset.Eof() ? -1 : ToInt32(NullToValue(Recordset.Value("Status"), 0));
    });
    return quantity;
}

// Starts true and turns false for every return but 0, a negative one too: who assigns barcodes goes on after
// a failure that the user has read, and stops at a refusal.
bool clsMagSurInputBarCode::save(QAnyStringView routine, const QString& procedure, Inputs inputs) {
    bool saved = true;
    trap(routine, [&] { saved = callProcedure(procedure, inputs).returnValue == 0; });
    return saved;
}

}  // namespace regalon
