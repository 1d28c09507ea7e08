#pragma once

#include "common/DataClass.h"

#include <QString>

namespace regalon {

/// A data class that knows documents by their entry and shows them by their number.
class DocumentNumbers : public DataClass {
public:
    /// Number of a purchase order; 0 when there is none, -1 after a failure.
    qint32 GetDocNum(qint32 DocEntry);

protected:
    using DataClass::DataClass;
    ~DocumentNumbers() = default;

    /// The same for the documents of another table, under the name of another routine.
    qint32 documentNumber(QAnyStringView routine, const QString& table, qint32 DocEntry);

    /// Whether a text has rows. False after a failure, which is reported.
    bool hasRows(QAnyStringView routine, const QString& sql);
};

}  // namespace regalon
