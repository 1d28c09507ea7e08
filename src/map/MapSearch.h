#pragma once

#include "platform/ControlArray.h"
#include "platform/PlanItems.h"

#include <QSet>
#include <QString>

namespace regalon {

class MapBuilder;
class MapCanvas;
class MapDataClass;

/// The name strings under which the routines of the search report in one window.
struct SearchReportNames {
    QString ChangeIconOnLocation;
    QString ChangeIconStand;

    /// The names of a map window, such as "frmMagWatch".
    static SearchReportNames of(const QString& window);
};

/// Shows on a plan where a material lies: all that does not hold it turns grey. The same in all map windows.
/// Each routine reports its failures in a message box; what a broken pass had not reached stays as it was.
/// All references must outlive the search.
class MapSearch {
public:
    MapSearch(MapBuilder& map, MapCanvas& canvas, MapDataClass& data, const SearchReportNames& names);

    /// Greys the locations without the material and the stands without such a location. Mode 0 looks at the
    /// materials assigned to the locations, mode 1 at the first member of their groups, in the server's
    /// order. What holds the material keeps the icon that it has: showPlain() comes first.
    void ChangeIconOnLocation(const QString& ItemCode, qint16 mode);

    /// Gives the stands their own icons. A stand that the database does not have keeps its picture. True when
    /// it went through all of them.
    bool ChangeIconStand(ControlArray<PictureItem>& stands);

    /// Takes the grey away from locations and stands.
    void showPlain();

    /// standName() of the stands that hold what is looked for.
    using Hits = QSet<QString>;
    /// Row and stand as they stand in a tag, in one text.
    static QString standName(QStringView rank, QStringView stand);
    /// Greys the stands that are none of the hits. Throws for an icon that is none.
    void greyStands(const Hits& hits);

private:
    struct Rows;

    Hits greyLocations(const QString& ItemCode, const Rows& data);

    MapBuilder& m_map;
    MapCanvas& m_canvas;
    MapDataClass& m_data;
    SearchReportNames m_names;
};

}  // namespace regalon
