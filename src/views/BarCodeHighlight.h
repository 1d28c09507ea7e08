#pragma once

#include <QString>
#include <QStringList>

namespace regalon {

class MapBuilder;
class MapCanvas;
class MapSearch;
class clsMagWatch;

/// Places of packages, side by side, as the window shows them: position k of the five lists is one place.
struct PackagePlaces {
    QStringList itemCodes;
    QStringList ranks;
    QStringList stands;
    QStringList shelves;
    QStringList locations;

    bool isAt(const QString& rank, const QString& stand, const QString& shelf, const QString& location) const;
};

/// Greys the plan but for the places and their stands. Other locations of the same materials turn grey, too.
/// It asks the database for each location by itself; one that is not there keeps its icon. A failing question
/// has been reported and ends the pass: what was not reached stays as it was. Throws for an icon that is
/// none.
void highlightPlaces(const PackagePlaces& places, MapCanvas& canvas, MapBuilder& map, MapSearch& search,
                     clsMagWatch& data);

}  // namespace regalon
