#pragma once

#include "stock/Proposals.h"

#include <QString>

namespace regalon {

/// One package of a document line as the services of goods-in and of returns stage it.
struct OrderPackage {
    qint32 DocEntry = 0;
    qint32 DocNum = 0;
    qint16 LineNum = 0;
    QString BarCode;
    double Quantity = 0;
    qint16 UserSign = 0;
    qint16 NumberCode = 0;
    qint16 LineGrd = 0;
    QString DeleteLine;  ///< "N" stages the package, "Y" takes it out again
    QString ItemCode;
    QString Aplication;
    QString Operation;
};

/// What the services that carry a document through the warehouse have alike. Each method reports its own
/// failure and then answers false; one that calls a procedure answers false when it refuses, too. A Message
/// takes the reason and stays as it was after a failure.
class DocumentService : public Proposals {
public:
    /// Books the staged packages into the buffer. ReturnValue tells what the procedure returned.
    bool AddSurOnMag(qint16 UserSign, const QString& Aplication, const QString& Operation,
                     qint16& ReturnValue, QString& Message);

    /// Puts a package on a location, both known by their barcodes.
    bool AddSurOnLocation(qint32 DocEntry, qint16 LineNum, const QString& BarCodeSur,
                          const QString& BarCodeLoc, qint16 UserSign, const QString& Operation,
                          QString& Message);

    /// Whether the user has anything staged on this connection, for whatever operation.
    bool CheckExistRecordOnAdd(qint16 UserSign);

protected:
    using Proposals::Proposals;
    ~DocumentService() = default;

    /// The condition that a row belongs to this workstation, this connection and a user. The column of the
    /// user is spelled as each statement spells it.
    static QString ofThisKey(QStringView userColumn, qint16 UserSign);

    bool stagePackage(QAnyStringView routine, const QString& procedure, const OrderPackage& package);
};

}  // namespace regalon
