#include "map/MapBuilder.h"

#include "common/AppContext.h"
#include "common/ErrorTrap.h"
#include "common/modSQL.h"
#include "map/LocationName.h"
#include "map/MapCanvas.h"
#include "map/Notice.h"
#include "map/StandGeometry.h"
#include "map/clsMagWatch.h"
#include "platform/Convert.h"
#include "platform/Screen.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace regalon {

namespace {

// Two blanks before "from": the text goes out as it stands.
const QString kStands = QStringLiteral(
    "select ID,Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,StandTop,"
    "StandVisable,StandEnable,StandFrameArround  from kolv_mag_Stand order by Rank,Stand");

const QString kTooManyLocations = QStringLiteral(
    "Błąd zapisu lokalizacji. Za duzo lokalizacji zdefiniowanych w magazynie dopuszczalna liczba"
    " lokalizacji 750 !!!");

constexpr qint16 kMultiItem = 1;

qint16 toNumber(const QVariant& value) {
    return ToInt16(NullToValue(value, 0));
}

/// Name of a family's icon with the given ending; empty for a text that is no family.
QString familyIcon(QStringView family, QStringView ending) {
    if (family != u"LA" && family != u"LB" && family != u"LC")
        return {};
    return family.toString().append(ending);
}

/// What the locations show, one after the other. Everything is kept from one location to the next: a location
/// without a name of its own shows what the one before it shows.
struct LocationLook {
    QString icon;
    QString statusText = QStringLiteral("0");
    qint16 status = 0;
    std::optional<QString> file;  ///< in the icon folder; none before the first

    void take(const QString& storedIcon, const QString& storedStatus) {
        icon = storedIcon;
        if (storedStatus != statusText) {
            status = ToInt16(storedStatus);
            statusText = storedStatus;
        }
    }

    void follow(QStringView family) {
        if (icon.isEmpty())
            icon = familyIcon(family, u"_R_Err.ico");
        if (status == kMultiItem) {
            // Without a family the icon stays.
            if (const QString multi = familyIcon(family, u"_M_00.ico"); !multi.isEmpty())
                icon = multi;
        }
        if (status == 0 || status == kMultiItem)
            file = icon;
    }
};

/// Position of the first of several equal names.
QHash<QString, qsizetype> firstPositions(const QStringList& names) {
    QHash<QString, qsizetype> positions;
    positions.reserve(names.size());
    for (qsizetype position = 0; position < names.size(); ++position) {
        if (!positions.contains(names.at(position)))
            positions.insert(names.at(position), position);
    }
    return positions;
}

template <typename T>
void unloadAll(ControlArray<T>& controls) {
    const int count = controls.Count();
    for (int index = 1; index < count; ++index)
        controls.Unload(index);
}

}  // namespace

MapReportNames MapReportNames::of(const QString& window) {
    const auto name = [](const QString& owner, const char* routine) {
        return owner + QStringLiteral(" - ") + QString::fromLatin1(routine);
    };
    // The layout editor reports the three great steps under the view's name, and every window the frame under
    // the editor's: support knows the messages by these names.
    const QString view = QStringLiteral("frmMagWatch");
    const QString editor = QStringLiteral("frmMagCreate");
    const QString owner = window == editor ? view : window;
    return {.WathStore = name(owner, "WathStore"),
            .GenerateBookstand = name(owner, "GenerateBookstand"),
            .GenerateBookstandOld = name(window, "GenerateBookstandOld"),
            .GenerateBookstandLineAround = name(editor, "GenerateBookstandLineAround"),
            .ChangeIconLocation = name(owner, "ChangeIconLocation"),
            .KillBookStand = name(window, "KillBookStand"),
            .RebulidMag = name(window, "RebulidMag")};
}

MapBuilder::MapBuilder(AppContext& context, MapCanvas& canvas, clsMagWatch& data, const MapReportNames& names)
    : m_context(context), m_canvas(canvas), m_data(data), m_names(names) {}

/// Adds an element at the end of its array, over all that were added before it: of stands that overlap, the
/// later one is seen and clicked.
template <typename T>
T& MapBuilder::loadNext(ControlArray<T>& controls) {
    T& element = controls.Load(controls.Count());
    element.setZValue(static_cast<qreal>(++m_loaded));
    return element;
}

bool MapBuilder::WathStore(bool saveNames) {
    bool built = false;
    const bool whole = WindowTrap(m_names.WathStore, [&] {
        const PlanIcons::Pass pass(m_icons);
        LocationNameBatches batches;
        m_family.clear();
        DbRecordset stands;
        stands.Open(kStands, mainConnection(m_context));
        for (; !stands.Eof(); stands.MoveNext()) {
            BookstandData stand = readStand(stands);
            readLocationCounts(stand);
            if (GenerateBookstand(m_canvas.imgBookStand(), m_canvas.imglocation(),
                                  m_canvas.lnnFrameBookStand(), stand, saveNames, batches))
                built = true;
        }
        stands.Close();
        if (saveNames)
            this->saveNames(batches);
    });
    // A plan that broke off keeps its first looks: the icons would be asked of a server that has just failed.
    return whole && built;
}

BookstandData MapBuilder::readStand(const DbRecordset& stands) {
    BookstandData stand;
    stand.Rank = toNumber(stands.Value("Rank"));
    stand.Stand = toNumber(stands.Value("Stand"));
    stand.StandIcon = ToText(NullToValue(stands.Value("StandIcon")));
    stand.ShelfCount = toNumber(stands.Value("ShelfCount"));
    stand.StandLeft = ToInt32(NullToValue(stands.Value("StandLeft"), 0));
    stand.StandTop = ToInt32(NullToValue(stands.Value("StandTop"), 0));
    return stand;
}

void MapBuilder::readLocationCounts(BookstandData& stand) {
    DbRecordset shelves;
    shelves.Open(
        QStringLiteral("select Shelf,count(*) as LocationCount from kolv_mag_Location where Rank = ") +
            SqlNumber(int{stand.Rank}) + QStringLiteral(" AND Stand = ") + SqlNumber(int{stand.Stand}) +
            QStringLiteral(" group by Shelf order by Shelf"),
        mainConnection(m_context));
    for (; !shelves.Eof(); shelves.MoveNext()) {
        const qint16 shelf = toNumber(shelves.Value("Shelf"));
        if (shelf >= 1 && shelf <= 4)
            stand.LocationsOnShelf[static_cast<std::size_t>(shelf - 1)] =
                toNumber(shelves.Value("LocationCount"));
    }
}

void MapBuilder::saveNames(const LocationNameBatches& batches) {
    const auto texts = batches.joined();
    const bool fits = std::all_of(texts.begin(), texts.end(), [](const QString& text) {
        return text.size() < LocationNameBatches::kTextLimit;
    });
    if (!fits) {
        showNotice(kTooManyLocations);
        return;
    }
    QString message;
    if (!m_data.SaveLocalizationIDTab(texts[0], texts[1], texts[2], message))
        showNotice(message);
}

bool MapBuilder::GenerateBookstand(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                                   ControlArray<LineItem>& frames, const BookstandData& stand, bool saveNames,
                                   LocationNameBatches& batches) {
    return WindowTrap(m_names.GenerateBookstand, [&] {
        addBookstand(stands, locations, frames, stand, saveNames ? &batches : nullptr);
    });
}

bool MapBuilder::GenerateBookstandOld(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                                      ControlArray<LineItem>& frames, const BookstandData& stand) {
    return WindowTrap(m_names.GenerateBookstandOld,
                      [&] { addBookstand(stands, locations, frames, stand, nullptr); });
}

void MapBuilder::addBookstand(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                              ControlArray<LineItem>& frames, const BookstandData& stand,
                              LocationNameBatches* batches) {
    addStandImage(stands, stand, batches != nullptr);
    int count = 0;
    for (int shelf = 1; shelf <= stand.ShelfCount; ++shelf) {
        // A shelf above the fourth has as many locations as the one below it.
        if (shelf <= 4)
            count = stand.LocationsOnShelf[static_cast<std::size_t>(shelf - 1)];
        qint32 left = stand.StandLeft;
        for (int position = 1; position <= count; ++position) {
            addLocation(locations, stand, shelf, position, count, left, batches);
            left = nextLocationLeft(m_measures, left, position);
        }
    }
    GenerateBookstandLineAround(frames, stand.StandLeft, stand.StandTop, stand.ShelfCount, kFrameMargin,
                                true);
}

void MapBuilder::addStandImage(ControlArray<PictureItem>& stands, const BookstandData& stand,
                               bool saveNames) {
    PictureItem& image = loadNext(stands);
    image.setPosition(stand.StandLeft, stand.StandTop);
    image.setVisible(true);
    // A stand whose icon fails stays without a Tag, and a click on it does nothing.
    image.setTag({});
    m_icons.show(image, stand.StandIcon.isEmpty() ? QStringLiteral("Reg.ico") : stand.StandIcon);
    if (saveNames)
        image.setTag(buildStandTag(stand.Rank, stand.Stand, stand.StandIcon));
}

void MapBuilder::addLocation(ControlArray<PictureItem>& locations, const BookstandData& stand, int shelf,
                             int position, int count, qint32 left, LocationNameBatches* batches) {
    PictureItem& icon = loadNext(locations);
    const QString family = locationFamily(count, position);
    if (!family.isEmpty())
        m_family = family;
    QString name;
    if (batches) {
        const LocationAddress address{stand.Rank, stand.Stand, static_cast<qint16>(shelf),
                                      static_cast<qint16>(position)};
        name = buildLocationName(address, m_family, locations.Count());
        batches->add(name);
    }
    icon.setTag(name);
    icon.setPosition(left, shelfTop(m_measures, stand.StandTop, shelf).value_or(icon.top()));
    icon.setVisible(true);
    if (!family.isEmpty())
        m_icons.show(icon, firstLook(family));
}

void MapBuilder::GenerateBookstandLineAround(ControlArray<LineItem>& frames, qint32 left, qint32 top,
                                             qint16 shelfCount, qint16 margin, bool visible) {
    WindowTrap(m_names.GenerateBookstandLineAround, [&] {
        for (const FrameLine& line : standFrame(m_measures, left, top, shelfCount, margin)) {
            LineItem& item = loadNext(frames);
            item.setEnds(line.X1, line.Y1.value_or(item.y1()), line.X2, line.Y2.value_or(item.y2()));
            item.setVisible(visible);
        }
    });
}

bool MapBuilder::ChangeIconLocation(ControlArray<PictureItem>& locations) {
    WindowTrap(m_names.ChangeIconLocation, [&] {
        QStringList names;
        QStringList icons;
        QStringList statuses;
        if (!m_data.GetIconLoactionName(names, icons, statuses))
            return;
        const PlanIcons::Pass pass(m_icons);
        const QHash<QString, qsizetype> positions = firstPositions(names);
        LocationLook look;
        const int count = locations.Count();
        for (int index = 1; index < count; ++index) {
            PictureItem& location = locations[index];
            const TagFields fields(location.tag());
            const auto hit = positions.constFind(location.tag());
            if (hit != positions.cend())
                look.take(icons.at(*hit), statuses.at(*hit));
            look.follow(fields.view(LocationField::Family));
            if (look.file)
                m_icons.show(location, *look.file);
            else
                location.loadPicture(QString());
        }
    });
    return false;
}

void MapBuilder::KillBookStand(ControlArray<PictureItem>& stands, ControlArray<PictureItem>& locations,
                               ControlArray<LineItem>& frames) {
    WindowTrap(m_names.KillBookStand, [&] {
        unloadAll(frames);
        unloadAll(stands);
        unloadAll(locations);
    });
}

void MapBuilder::RefreschWatchStore() {
    const MapCanvas::Redraw redraw(m_canvas);
    KillBookStand(m_canvas.imgBookStand(), m_canvas.imglocation(), m_canvas.lnnFrameBookStand());
    if (WathStore(true))
        ChangeIconLocation(m_canvas.imglocation());
}

void MapBuilder::RebulidMag(bool refreshQuantities) {
    WindowTrap(m_names.RebulidMag, [&] {
        const BusyPointer busy;
        if (refreshQuantities)
            m_data.RefreshQuantityOnLocationIcon(QStringLiteral("N"));
        RefreschWatchStore();
    });
}

}  // namespace regalon
