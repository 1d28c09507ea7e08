#pragma once

#include "map/MapDataClass.h"
#include "stock/Staging.h"

#include <QString>

namespace regalon {

extern template class Staging<MapDataClass>;

/// The data class of the shift window. Each method reports its own failure and then answers false with its
/// outputs as they were. The methods that call a procedure answer false when it refuses, too; where they have
/// a Message, it takes the reason.
class clsMagWatchShiftLoc : public Staging<MapDataClass> {
public:
    explicit clsMagWatchShiftLoc(AppContext& context);

    /// Stages the packages of a material on a location (DeleteLine "N") or takes them out again ("Y").
    bool AddBarCodeShiftOnTemp(const QString& ItemCode, const LocationAddress& source, qint16 UserSign,
                               const QString& DeleteLine, const QString& Aplication, const QString& Operation,
                               QString& Message);

    /// Marks a staged package as chosen (Delete "N") or as not chosen ("Y").
    bool DeleteBarCodeShift(const QString& BarCode, qint16 UserSign, const QString& Aplication,
                            const QString& Delete, const QString& Operation);

    /// Number of the chosen packages; -1 after a failure.
    qint16 GetCountChoseBarCodeOnShift(qint16 UserSign, const QString& Operation);

    /// Moves a chosen package to a location.
    bool ShiftLocationBarCode(const QString& BarCode, const LocationAddress& target, qint16 UserSign,
                              const QString& Aplication, const QString& Operation, QString& Message);
};

}  // namespace regalon
