#pragma once

#include "stock/DocumentNumbers.h"
#include "stock/Staging.h"

#include <QString>

namespace regalon {

extern template class Staging<DocumentNumbers>;

/// One proposed location of a package, as a dialog shows it that changes the location.
struct ProposalLine {
    QString ItemCode;
    QString ItemName;
    QString BarCode;
    double Quantity = 0;
    double QuantityAdd = 0;
};

/// A data class whose packages get their locations by proposals that the user may change one by one.
class Proposals : public Staging<DocumentNumbers> {
public:
    /// Reads one proposal. ID and IDCodeBar alone find it, whoever staged it. False and an untouched line
    /// when there is none, false and an empty line after a failure.
    bool LoadParamFormLocationChange(qint16 ID, qint16 IDCodeBar, ProposalLine& line);

    /// Takes another proposal for its package.
    bool ChangeLocationOnAddSur(qint16 UserSign, qint16 ID, qint16 IDCodeBar);

protected:
    using Staging<DocumentNumbers>::Staging;
    ~Proposals() = default;
};

}  // namespace regalon
