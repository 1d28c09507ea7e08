#pragma once

#include "common/DataClass.h"
#include "map/LocationAddress.h"

#include <QString>

namespace regalon {

/// A data class of a window in which the user clicks on locations.
class LocationDataClass : public DataClass {
public:
    /// What is assigned to a location. False and untouched outputs when the location has no row; false and
    /// "" and 0 after a failure, which is reported.
    bool GetParamLocalization(const LocationAddress& address, QString& ItemCode, QString& ItemName,
                              qint16& GroupSur);

protected:
    using DataClass::DataClass;
    ~LocationDataClass() = default;
};

}  // namespace regalon
