#include "views/BarCodeHighlight.h"

#include "map/GreyIcons.h"
#include "map/LocationName.h"
#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapSearch.h"
#include "map/clsMagWatch.h"

#include <algorithm>
#include <optional>

namespace regalon {

bool PackagePlaces::isAt(const QString& rank, const QString& stand, const QString& shelf,
                         const QString& location) const {
    const qsizetype count = std::min({ranks.size(), stands.size(), shelves.size(), locations.size()});
    for (qsizetype place = 0; place < count; ++place) {
        if (ranks.at(place) == rank && stands.at(place) == stand && shelves.at(place) == shelf &&
            locations.at(place) == location)
            return true;
    }
    return false;
}

namespace {

/// What is known of one location.
struct LocationState {
    qint16 percent = 0;
    QString itemCode;

    /// False for a location without a row, and after a failure.
    bool read(clsMagWatch& data, const TagFields& tag) {
        qint16 group = 0;
        return data.GetLocationPercent(tag.number(LocationField::Rank), tag.number(LocationField::Stand),
                                       tag.number(LocationField::Shelf), tag.number(LocationField::Location),
                                       percent, itemCode, group);
    }
};

/// Empty when the server has gone.
std::optional<MapSearch::Hits> greyLocations(const PackagePlaces& places, MapCanvas& canvas, PlanIcons& icons,
                                             clsMagWatch& data) {
    MapSearch::Hits hits;
    GreyLocationIcon grey;
    ControlArray<PictureItem>& pictures = canvas.imglocation();
    const int count = pictures.Count();
    for (int index = 1; index < count; ++index) {
        PictureItem& picture = pictures[index];
        const TagFields tag(picture.tag());
        const QString family = tag.at(LocationField::Family);
        LocationState state;
        if (!state.read(data, tag)) {
            // Each further question would fail with a message of its own.
            if (data.connectionIsLost())
                return std::nullopt;
            continue;
        }
        grey.follow(family, state.percent);
        const QString rank = tag.at(LocationField::Rank);
        const QString stand = tag.at(LocationField::Stand);
        if (places.itemCodes.contains(state.itemCode) &&
            places.isAt(rank, stand, tag.at(LocationField::Shelf), tag.at(LocationField::Location)))
            hits.insert(MapSearch::standName(rank, stand));
        else
            icons.show(picture, grey.file());
    }
    return hits;
}

}  // namespace

void highlightPlaces(const PackagePlaces& places, MapCanvas& canvas, MapBuilder& map, MapSearch& search,
                     clsMagWatch& data) {
    const PlanIcons::Pass pass(map.icons());
    if (const auto hits = greyLocations(places, canvas, map.icons(), data))
        search.greyStands(*hits);
}

}  // namespace regalon
