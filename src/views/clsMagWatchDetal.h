#pragma once

#include "common/DataClass.h"
#include "map/LocationAddress.h"

#include <QString>

namespace regalon {

/// The figures of one location.
struct LocationFigures {
    qint16 LocationPercent = 0;
    double QuantityLocation = 0;
    double QuantityBufor = 0;
    double QuantityPer = 0;  ///< sum of the percents of the single lines
};

/// What is assigned to a location, and its static parameters.
struct LocationItemParams {
    QString ItemCode;
    QString ItemName;
    qint16 GroupSur = 0;
    qint16 Height_int = 0;  ///< millimetres
    qint16 Width_int = 0;
    qint16 Depth_int = 0;
    qint16 Weight_int = 0;  ///< kilograms
    QString Picture_pic;    ///< Base64
    QString Description_char;
    qint16 StatLocation_cmb = 0;
};

/// The data class of the stand detail. A method answers true when it found its row; without one it leaves the
/// output as it was. After a failure, which it reports, it answers false with an empty output.
class clsMagWatchDetal : public DataClass {
public:
    explicit clsMagWatchDetal(AppContext& context);

    bool GetParamLocalization(const LocationAddress& address, LocationFigures& figures);
    bool GetParamLocalizationItem(const LocationAddress& address, LocationItemParams& item);
    /// One column of what is assigned. Nobody calls it.
    bool GetParamLocalizationStatic(const LocationAddress& address, const QString& column, QString& value);
    bool GetParamStand(qint16 Rank, qint16 Stand, QString& StandDescription);

    /// Name of a group of materials; a text that says so for none, and "Error" after a failure.
    QString GetGroupName(qint16 GroupSur);

private:
    template <typename Output, typename Read>
    bool readRow(QAnyStringView routine, const QString& sql, Output& output, Read read);
};

}  // namespace regalon
