#pragma once

#include "map/LocationDataClass.h"

#include <QString>
#include <QStringList>

namespace regalon {

/// Where a window looks whether the warehouse has a material at all.
enum class MaterialPlaces { Locations, LocationsAndGroups };

/// What the data classes of the map windows have alike. Each window reads its plan through its own class, so
/// that a failure is reported under that class's name. Each method reports its own failure and then answers
/// false with its outputs at their defaults ("" and 0).
class MapDataClass : public LocationDataClass {
public:
    /// Number of shelves and of locations of a stand; 0 and 0 for one without locations.
    bool GetStandParam(qint16 Rank, qint16 Stand, qint16& ShelfCount, qint16& LocationCount);

    /// Fill, material and group of a location. False with -1, "0" and -1 when there is no such location.
    bool GetLocationPercent(qint16 Rank, qint16 Stand, qint16 Shelf, qint16 Location, qint16& percent,
                            QString& ItemCode, qint16& GroupSur);

    /// Whether a material is assigned to a location or, where this class looks there, is a member of a group.
    bool TestExistsSurOnMag(const QString& ItemCode);
    /// Whether a material is a member of a group.
    bool TestExistsSurOnMagGroup(const QString& ItemCode);

    /// Row, stand and icon of every stand, side by side, in the order of the plan.
    bool GetIconStandName(QStringList& ranks, QStringList& stands, QStringList& icons);

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

protected:
    MapDataClass(AppContext& context, const QString& reportName, MaterialPlaces places);
    ~MapDataClass() = default;

private:
    MaterialPlaces m_places;
};

}  // namespace regalon
