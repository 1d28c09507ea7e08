#pragma once

#include "common/DbRecordset.h"
#include "map/LocationNameBatches.h"
#include "map/MapConstants.h"
#include "map/PlanIcons.h"
#include "platform/ControlArray.h"
#include "platform/PlanItems.h"

#include <QString>

#include <array>

namespace regalon {

struct AppContext;
class MapCanvas;
class clsMagWatch;

/// The name strings under which the routines of the build report in one window.
struct MapReportNames {
    QString WathStore;
    QString GenerateBookstand;
    QString GenerateBookstandOld;
    QString GenerateBookstandLineAround;
    QString ChangeIconLocation;
    QString KillBookStand;
    QString RebulidMag;

    /// The names of a map window, such as "frmMagWatch".
    static MapReportNames of(const QString& window);
};

/// One stand as the database has it.
struct BookstandData {
    qint16 Rank = 0;
    qint16 Stand = 0;
    QString StandIcon;  ///< file in the icon folder; empty for the common one
    qint16 ShelfCount = 0;
    qint32 StandLeft = 0;                         ///< twips
    qint32 StandTop = 0;                          ///< twips
    std::array<qint16, 4> LocationsOnShelf = {};  ///< shelf 1 first
};

/// The build of the plan, the same in all map windows. It keeps no model of the warehouse: each build reads
/// the database anew. Every routine reports its failures in a message box and then answers what it had
/// reached. All references must outlive the builder.
class MapBuilder {
public:
    MapBuilder(AppContext& context, MapCanvas& canvas, clsMagWatch& data, const MapReportNames& names);

    /// Folder of the icon files, in the system's form and without a separator at the end.
    void setIconFolder(const QString& folder) { m_icons.setFolder(folder); }
    const QString& iconFolder() const { return m_icons.folder(); }
    /// The same icons for whoever else changes this plan.
    PlanIcons& icons() { return m_icons; }

    /// Draws every stand of the warehouse and, if asked, gives every location its name and stores the names.
    /// True when at least one stand was drawn whole and nothing but single stands failed.
    bool WathStore(bool saveNames);

    /// Adds one stand with its icons and its frame. With names the icons get their `Tag` and the batches
    /// their names. After a failure what was added stays.
    bool GenerateBookstand(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                           ControlArray<LineItem>& frames, const BookstandData& stand, bool saveNames,
                           LocationNameBatches& batches);

    /// The same for a stand that stands alone: no names, no `Tag`, and whose row and number play no part.
    bool GenerateBookstandOld(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                              ControlArray<LineItem>& frames, const BookstandData& stand);

    /// Adds the four frame lines of a stand.
    void GenerateBookstandLineAround(ControlArray<LineItem>& frames, qint32 left, qint32 top,
                                     qint16 shelfCount, qint16 margin, bool visible);

    /// Gives each location the icon of its state, by its `Tag`. The result says nothing and is false in every
    /// case.
    bool ChangeIconLocation(ControlArray<PictureItem>& locations);

    /// Removes all elements but the templates.
    void KillBookStand(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                       ControlArray<LineItem>& frames);

    /// Removes the plan, draws it with names, and gives the locations their icons.
    void RefreschWatchStore();

    /// The same under the busy pointer and, if asked, after the database has recomputed the fills.
    void RebulidMag(bool refreshQuantities);

private:
    BookstandData readStand(const DbRecordset& stands);
    void readLocationCounts(BookstandData& stand);
    void saveNames(const LocationNameBatches& batches);
    void addStandImage(ControlArray<PictureItem>& stands, const BookstandData& stand, bool saveNames);
    void addLocation(ControlArray<PictureItem>& locations, const BookstandData& stand, int shelf,
                     int position, int count, qint32 left, LocationNameBatches* batches);
    void addBookstand(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                      ControlArray<LineItem>& frames, const BookstandData& stand,
                      LocationNameBatches* batches);
    template <typename T>
    T& loadNext(ControlArray<T>& controls);

    AppContext& m_context;
    MapCanvas& m_canvas;
    clsMagWatch& m_data;
    MapReportNames m_names;
    MapConstants m_measures;
    PlanIcons m_icons;
    qint64 m_loaded = 0;
    /// Family of the last icon of the build: icons on a shelf of an odd count take it over, across stands
    /// too.
    QString m_family;
};

}  // namespace regalon
