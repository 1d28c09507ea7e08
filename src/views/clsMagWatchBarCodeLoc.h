#pragma once

#include "map/MapDataClass.h"

#include <QString>

namespace regalon {

/// The figures of the packages on one location.
struct BarCodeFigures {
    QString ItemCode;
    QString ItemName;
    qint16 GroupCode = 0;
    QString GroupName;
    double Quantity = 0;
    double QuantityPer = 0;  ///< fill in per cent
    qint32 CodeActive = 0;
    qint32 CodeGlobal = 0;
    double QuantityPerCalculate = 0;  ///< the computed fill
};

/// Where the package of a barcode lies.
struct BarCodePlace {
    LocationAddress Address;
    QString ItemCode;
    QString ItemName;
    qint32 NumberCode = 0;
};

/// What became of the question for a barcode. A failure has been reported and says nothing about the code.
enum class BarCodeAnswer { Known, Unknown, Failed };

/// The data class of the barcode window. An answer without a row counts as one: the outputs then stay as they
/// were. After a failure they are those of an answer of NULLs.
class clsMagWatchBarCodeLoc : public MapDataClass {
public:
    explicit clsMagWatchBarCodeLoc(AppContext& context);

    /// False when the procedure says that it has no figures, and after a failure, which is reported.
    bool GetParamLocalizationProcedure(const LocationAddress& address, BarCodeFigures& figures);

    BarCodeAnswer GetParamBarCodeProcedure(const QString& code, BarCodePlace& place);

private:
    qint32 wholeNumber(QAnyStringView column) const;
    bool isError() const;
};

}  // namespace regalon
