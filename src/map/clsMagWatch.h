#pragma once

#include "common/DataClass.h"

#include <QString>
#include <QStringList>

namespace regalon {

/// The data class of the warehouse view and of every plan: all their reads and calls. Each method reports its
/// own failure and then answers false with its outputs at their defaults ("" and 0).
class clsMagWatch : public DataClass {
public:
    explicit clsMagWatch(AppContext& context);

    /// What is assigned to a location. False and untouched outputs when nothing is.
    bool GetParamLocalization(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location, QString& ItemCode,
                              QString& ItemName, qint16& GroupSur, QString& GroupSurName,
                              qint16& StatLocation_cmb);

    /// Number of shelves and of locations of a stand; 0 and 0 for one without locations.
    bool GetStandParam(qint16 Rank, qint16 Stand, qint16& ShelfCount, qint16& LocationCount);

    /// Fill, material and group of a location. False with -1, "0" and -1 when there is no such location.
    bool GetLocationPercent(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location, qint16& percent,
                            QString& ItemCode, qint16& GroupSur);

    /// Whether a material is assigned to a location or is a member of a group.
    bool TestExistsSurOnMag(const QString& ItemCode);
    /// Whether a material is a member of a group.
    bool TestExistsSurOnMagGroup(const QString& ItemCode);

    /// Has the server recompute fill and icon of every location; its return value.
    qint16 RefreshQuantityOnLocationIcon(const QString& mode);

    /// Row, stand and icon of every stand, side by side, in the order of the plan.
    bool GetIconStandName(QStringList& ranks, QStringList& stands, QStringList& icons);

    /// Name, icon and status ("0" one material, "1" several) of every location, side by side, in the order of
    /// the plan.
    bool GetIconLoactionName(QStringList& names, QStringList& icons, QStringList& statuses);

    /// Name, fill, material and group of every location, side by side, in the order of the plan. Mode 0: the
    /// material assigned to the location itself; mode 1: each member of the group assigned to it, "EMPTY" for
    /// none. Any other mode gives false and empty lists.
    bool GetIconLoactionNameItem(QStringList& names, QStringList& percents, QStringList& items,
                                 QStringList& groups, qint16 mode);

    /// Stores the names of all locations, in three lists joined by ",". False with the procedure's reason
    /// when it refuses.
    bool SaveLocalizationIDTab(const QString& names1, const QString& names2, const QString& names3,
                               QString& message);

    /// The same for one location.
    bool SaveLocalizationID(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location, const QString& name,
                            QString& message);
};

}  // namespace regalon
