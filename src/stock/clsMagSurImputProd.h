#pragma once

#include "stock/DocumentService.h"

namespace regalon {

/// A package that was given out, as it comes back: the line of the document it left with, and how much is
/// left of it.
struct ReturnedPackage {
    qint32 GiveOutDocNum = 0;
    qint16 GiveOutLineNum = 0;
    QString BarCode;
    QString ItemCode;
    double Quantity = 0;
    QString Aplication;
    QString Operation;
};

/// The service of returns from manufacturing: a package given out earlier comes back with a confirmed
/// quantity and goes the way of a goods-in from there. It reports as "clsMagSurInputProd".
class clsMagSurImputProd : public DocumentService {
public:
    explicit clsMagSurImputProd(AppContext& context);

    /// Stages a package that comes back or takes it out again.
    bool AddBarCodeOnTempInputProd(const OrderPackage& package);

    /// Asks how much of a package may come back. ConfirmedQuantity takes what the procedure answers, also
    /// when it refuses.
    bool ConfirmQuantityBarCodeComBackProcuction(const ReturnedPackage& package, QString& Message,
                                                 double& ConfirmedQuantity);
};

}  // namespace regalon
