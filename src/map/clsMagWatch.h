#pragma once

#include "map/MapDataClass.h"

#include <QString>
#include <QStringList>

namespace regalon {

/// The data class of the warehouse view. The other map windows draw their plan through one of their own, too.
class clsMagWatch : public MapDataClass {
public:
    explicit clsMagWatch(AppContext& context);

    /// What is assigned to a location. False and untouched outputs when nothing is.
    bool GetParamLocalization(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location, QString& ItemCode,
                              QString& ItemName, qint16& GroupSur, QString& GroupSurName,
                              qint16& StatLocation_cmb);

    /// Has the server recompute fill and icon of every location; its return value.
    qint16 RefreshQuantityOnLocationIcon(const QString& mode);

    /// Name, icon and status ("0" one material, "1" several) of every location, side by side, in the order of
    /// the plan.
    bool GetIconLoactionName(QStringList& names, QStringList& icons, QStringList& statuses);
};

}  // namespace regalon
