#pragma once

#include "stock/DocumentService.h"

#include <QStringList>

namespace regalon {

/// A package as the service of goods-out stages it.
struct GivenOutPackage {
    qint32 DocNum = 0;
    QString ItemCode;
    double QuantityProp = 0;
    double QuantityOut = 0;
    qint16 UserSign = 0;
    qint16 LineGrd = 0;
    QString PropOrOut;   ///< whether the quantity is proposed or given out
    QString DeleteLine;  ///< "N" stages the package, "Y" takes it out again
    QString Aplication;
    qint16 Param = 0;
    QString BarCode;
};

/// The manufacturing order's line that material is given out to, and who gives it out.
struct GiveOut {
    qint32 DocNumProd = 0;
    qint32 DocEntryProd = 0;
    qint16 LineNumProd = 0;
    qint16 UserSign = 0;
    qint16 UserSignGiveOut = 0;
    QString Aplication;
};

/// The service of goods-out: collects the orders and materials that are given out to manufacturing, stages
/// packages, gives them out and reads the printed list.
///
/// Arrays come in with at least one element and grow: a value goes into the last element, and into a new one
/// behind it if element 0 is not empty. An array of one empty element therefore ends with the rows read and
/// nothing else. The methods that fill arrays answer true also after a failure, which they report.
class clsMagSurOutput : public DocumentService {
public:
    explicit clsMagSurOutput(AppContext& context);

    /// Number of a manufacturing order; 0 when there is none, -1 after a failure.
    qint32 GetDocNumZlecProd(qint32 DocEntry);

    /// Has the server propose anew for every application and operation of the user.
    bool ConfirmPropozytionLocation(qint16 UserSign, QString& Message);

    /// Stages a package or takes it out again.
    bool AddBarCodeOnTemp(const GivenOutPackage& package, QString& Message);

    /// Gives the staged packages out. GiveOutDocNum takes the number of the new document, and -1 after a
    /// refusal or a failure. Any return but 0 is a refusal here.
    bool GiveOutSurOnMag(const GiveOut& order, QString& Message, qint32& GiveOutDocNum);

    /// Whether the user has packages staged on this connection.
    bool TestExistsDataOnTmpOutput(qint16 UserSign);

    /// Whether the user has ticked an order or a material on this connection.
    bool TestExistsDataTemPurhcaseAndItemCodeGiveOut(qint16 UserSign);

    /// Whether a material can be given out.
    bool TestItemSurOnMag(const QString& ItemCode, const QString& Aplication, QString& Message);

    /// Line numbers and barcodes of a give-out document, side by side; "0" for NULL.
    bool GetDataGivOutListPrint(qint32 DocNum, QStringList& LineNums, QStringList& BarCodes);

    /// Tick or untick a purchase order or a material.
    bool AddPurchaseOrderTmpGiveOut(qint16 UserSign, qint16 UserSignGiveOut, qint32 DocEntry,
                                    const QString& AddOrDelete, const QString& Aplication, QString& Message);
    bool AddItemCodeTmpGiveOut(qint16 UserSign, qint16 UserSignGiveOut, const QString& ItemCode,
                               const QString& AddOrDelete, const QString& Aplication, QString& Message);

    /// What the user has ticked on this connection.
    bool GetDocEntryCheckedPurchaseOrders(qint16 UserSign, QStringList& DocEntries);
    bool GetDocItemCodeChecked(qint16 UserSign, QStringList& ItemCodes);

    /// Take the ticks away.
    bool ClearPurchersOrderGiveOut(qint16 UserSign, const QString& Aplication, qint16 Param);
    bool ClearItemCodeGiveOut(qint16 UserSign, const QString& Aplication, qint16 Param);

private:
    using DataClass::EcexProcedureParam;  // not among the operations of this class

    bool readTicks(QAnyStringView routine, const QString& column, const QString& table, qint16 UserSign,
                   QStringList& array);
    bool clearTicks(QAnyStringView routine, const QString& procedure, qint16 UserSign,
                    const QString& Aplication, qint16 Param);
};

}  // namespace regalon
