#include "map/MapSearch.h"

#include "common/ErrorTrap.h"
#include "map/ForwardRows.h"
#include "map/GreyIcons.h"
#include "map/LocationName.h"
#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapDataClass.h"
#include "platform/Convert.h"

#include <QStringBuilder>
#include <QStringList>

#include <utility>

namespace regalon {

namespace {

using StandKey = std::pair<qint16, qint16>;

}  // namespace

/// The locations as the database has them, side by side.
struct MapSearch::Rows {
    QStringList names;
    QStringList percents;
    QStringList items;
    QStringList groups;
};

SearchReportNames SearchReportNames::of(const QString& window) {
    // The stands report under another window's name from every window: support knows the message by it.
    return {.ChangeIconOnLocation = window + QStringLiteral(" - ChangeIconOnLocation"),
            .ChangeIconStand = QStringLiteral("frmMagSurInput - ChangeIconStand")};
}

MapSearch::MapSearch(MapBuilder& map, MapCanvas& canvas, MapDataClass& data, const SearchReportNames& names)
    : m_map(map), m_canvas(canvas), m_data(data), m_names(names) {}

QString MapSearch::standName(QStringView rank, QStringView stand) {
    return rank % QLatin1Char('_') % stand;
}

void MapSearch::ChangeIconOnLocation(const QString& ItemCode, qint16 mode) {
    WindowTrap(m_names.ChangeIconOnLocation, [&] {
        Rows data;
        // A plan that nothing is known of stays plain: all grey it would say that the material is nowhere.
        if (!m_data.GetIconLoactionNameItem(data.names, data.percents, data.items, data.groups, mode))
            return;
        const PlanIcons::Pass pass(m_map.icons());
        greyStands(greyLocations(ItemCode, data));
    });
}

/// Fill, material and icon are kept from one location to the next: a location without a row of its own takes
/// those of the one before it.
MapSearch::Hits MapSearch::greyLocations(const QString& ItemCode, const Rows& data) {
    ForwardRows<QString> rows(data.names);
    qint16 percent = 0;
    QString item;
    GreyLocationIcon grey;
    Hits hits;
    ControlArray<PictureItem>& locations = m_canvas.imglocation();
    const int count = locations.Count();
    for (int index = 1; index < count; ++index) {
        PictureItem& location = locations[index];
        const TagFields fields(location.tag());
        const QStringView family = fields.view(LocationField::Family);
        if (const auto row = rows.find(location.tag())) {
            percent = ToInt16(data.percents.at(*row));
            item = data.items.at(*row);
        }
        grey.follow(family, percent);
        if (ItemCode != item)
            m_map.icons().show(location, grey.file());
        else
            hits.insert(standName(fields.view(LocationField::Rank), fields.view(LocationField::Stand)));
    }
    return hits;
}

void MapSearch::greyStands(const Hits& hits) {
    ControlArray<PictureItem>& stands = m_canvas.imgBookStand();
    const int count = stands.Count();
    for (int index = 1; index < count; ++index) {
        PictureItem& stand = stands[index];
        const TagFields fields(stand.tag());
        const QStringView rank = fields.view(StandField::Rank);
        const QStringView number = fields.view(StandField::Stand);
        if (!hits.contains(standName(rank, number)))
            m_map.icons().show(stand, greyStandIcon(rank, number));
    }
}

bool MapSearch::ChangeIconStand(ControlArray<PictureItem>& stands) {
    bool done = false;
    WindowTrap(m_names.ChangeIconStand, [&] {
        QStringList ranks;
        QStringList numbers;
        QStringList icons;
        if (!m_data.GetIconStandName(ranks, numbers, icons))
            return;
        QList<StandKey> keys;
        keys.reserve(ranks.size());
        for (qsizetype row = 0; row < ranks.size(); ++row)
            keys.append({ToInt16(ranks.at(row)), ToInt16(numbers.at(row))});
        ForwardRows<StandKey> rows(keys);
        const PlanIcons::Pass pass(m_map.icons());
        const int count = stands.Count();
        for (int index = 1; index < count; ++index) {
            const TagFields fields(stands[index].tag());
            const StandKey key(fields.number(StandField::Rank), fields.number(StandField::Stand));
            // No common icon stands in for an empty one here: it is a file error like any other.
            if (const auto row = rows.find(key))
                m_map.icons().show(stands[index], icons.at(*row));
        }
        done = true;
    });
    return done;
}

void MapSearch::showPlain() {
    m_map.ChangeIconLocation(m_canvas.imglocation());
    ChangeIconStand(m_canvas.imgBookStand());
}

}  // namespace regalon
