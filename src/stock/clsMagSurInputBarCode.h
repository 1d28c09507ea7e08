#pragma once

#include "stock/DocumentNumbers.h"

class QWidget;

namespace regalon {

/// How a material is bought packed: size of a package, quantity in it and its unit.
struct PackingData {
    double Blength1 = 0;
    double Bwidth1 = 0;
    double BHeight1 = 0;
    qint16 PurPackUn = 0;
    QString PurPackMsr;
};

/// The service that gives barcodes to the packages of a purchase order's line. The packages of a line are
/// counted: year, document and line are the address of the counter, NumberCode its value.
class clsMagSurInputBarCode : public DocumentNumbers {
public:
    explicit clsMagSurInputBarCode(AppContext& context);

    /// Status of an order's line, which selects its icon: what the procedure returns, and -1 after a failure.
    qint16 GetIconLineStatus(qint32 DocEntry, qint16 LineNum, qint16 UserSign, QString& Message);

    /// Runs a statement that returns the active template of a user, and shows it on lblRaportName,
    /// txtRaportFile and txtRaportCode of a form, which must have them.
    void SetPrintRaportParam(const QWidget* Form, const QString& Sql);

    /// Year of a purchase order; 0 when there is none or it has no date, -1 after a failure.
    qint32 GetDocYear(qint32 DocEntry);

    /// The last number used on a line; -1 after a failure.
    qint32 GetLastNumberCode(qint16 Year, qint32 DocNum, qint32 DocEntry, qint16 LineNum);

    /// Gives a package of a line its barcode. Here, unlike elsewhere, any return but 0 is a refusal, and a
    /// failure that has been reported leaves the answer true. The same holds for SaveItemCodeParam.
    bool SaveBarCode(qint16 Year, qint32 DocNum, qint32 DocEntry, qint16 LineNum, qint16 NumberCode,
                     const QString& BarCode, qint16 UserSign, const QString& ItemCode);

    /// Reads the packing data of a material. False and untouched outputs for an unknown one, false and 0 and
    /// "" after a failure.
    bool GetParamItemCode(const QString& ItemCode, PackingData& packing);

    /// Saves the packing data. A fraction of PurPackUn is saved and comes back whole from GetParamItemCode.
    bool SaveItemCodeParam(const QString& ItemCode, double SLength1, double SWidth1, double BHeight1,
                           double PurPackUn, const QString& PurPackMsr, qint16 UserSign);

    /// Status of a material; -1 when it has none, and after a failure.
    qint16 GetStatusItemCode(const QString& ItemCode);

    /// Quantity under barcodes; -1 when the database gives no row, 0 after a failure.
    qint32 GetQuantityBarCode(qint32 first, qint16 second);

private:
    using DataClass::EcexProcedureParam;  // not among the operations of this class

    bool save(QAnyStringView routine, const QString& procedure, Inputs inputs);
};

}  // namespace regalon
