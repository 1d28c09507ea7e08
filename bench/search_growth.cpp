// search-growth: the grey pass of the search for a material over a plan of 5,000 locations over one of 500.
// The fills take every grey icon there is, and one location in thirty holds the material.

#include "GrownWarehouse.h"
#include "Measure.h"
#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapSearch.h"
#include "map/clsMagWatch.h"
#include "platform/MsgBox.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <string>

namespace {

using bench::require;

constexpr int rounds = 31;
constexpr int namesOfACall = 200;
constexpr int iconsOfARow = 40;  // pictures of stands that the artwork has for each row

const QString material = QStringLiteral("M-3");
const QString window = QStringLiteral("frmMagWatch");

/// Fills and materials that differ from location to location, so that few stand out.
const QString differences = QStringLiteral(
    "UPDATE dbo.kolv_mag_Location SET LocationPercent = (Stand * 37 + Shelf * 13 + Location * 29) % 101;\n"
    "UPDATE dbo.kolv_mag_Location_Item SET ItemCode = N'M-' + CAST(Stand % 10 AS nvarchar(2));\nGO\n");

/// A generated warehouse of ten locations a stand, its server, and a plan of it.
class Warehouse {
public:
    explicit Warehouse(int stands)
        : grown_(stands, differences),
          canvas_(15210, 9720),
          data_(grown_.context()),
          map_(grown_.context(), canvas_, data_, regalon::MapReportNames::of(window)),
          search_(map_, canvas_, data_, regalon::SearchReportNames::of(window)) {
        addIcons(stands);
        map_.setIconFolder(QStringLiteral("C:\\Regalon\\Pomiar"));
        map_.RefreschWatchStore();
        require(locations() == grown_.locations(),
                QStringLiteral("the plan holds %1 locations").arg(locations()));
        saveNames();
    }

    int locations() { return canvas_.imglocation().Count() - 1; }
    regalon::test::LocalWarehouse& local() { return grown_.local(); }

    void enter() { grown_.enter(); }
    void showPlain() { map_.ChangeIconLocation(canvas_.imglocation()); }
    void pass() { search_.ChangeIconOnLocation(material, 0); }

    int grey(regalon::ControlArray<regalon::PictureItem>& array, const QString& mark) {
        int count = 0;
        for (int index = 1; index < array.Count(); ++index)
            count += array[index].picturePath().contains(mark) ? 1 : 0;
        return count;
    }
    int greyLocations() { return grey(canvas_.imglocation(), QStringLiteral("_G_")); }
    int greyStands() { return grey(canvas_.imgBookStand(), QStringLiteral("\\RR")); }

private:
    /// An icon folder with a grey picture for every stand.
    void addIcons(int stands) {
        const QDir all(local().driveC() + QStringLiteral("/Regalon/Ikony"));
        const QString own = local().driveC() + QStringLiteral("/Regalon/Pomiar/");
        require(QDir().mkpath(own), own);
        for (const QString& icon : all.entryList(QDir::Files))
            QFile::link(all.filePath(icon), own + icon);
        for (int rank = 1; rank <= 5; ++rank) {
            for (int stand = iconsOfARow + 1; stand <= stands / 5; ++stand) {
                const QString number = (QStringLiteral("0") + QString::number(stand)).right(2);
                QFile::link(all.filePath(QStringLiteral("RR%1_S_01.ico").arg(rank)),
                            own + QStringLiteral("RR%1_S_%2.ico").arg(rank).arg(number));
            }
        }
    }

    /// The names of the plan, in portions: a large plan is over the limit of the one call that a build makes.
    void saveNames() {
        QStringList names;
        for (int index = 1; index <= locations(); ++index) {
            names.append(canvas_.imglocation()[index].tag());
            if (names.size() < namesOfACall && index < locations())
                continue;
            QString message;
            require(data_.SaveLocalizationIDTab(names.join(u','), {}, {}, message), message);
            names.clear();
        }
    }

    bench::GrownWarehouse grown_;
    regalon::MapCanvas canvas_;
    regalon::clsMagWatch data_;
    regalon::MapBuilder map_;
    regalon::MapSearch search_;
};

void describe(Warehouse& warehouse, const regalon::MsgBoxRecorder& messages) {
    const int before = messages.count();
    warehouse.enter();
    warehouse.local().clearTrace();
    warehouse.pass();
    const qsizetype statements = warehouse.local().trace().size();
    std::printf("%d locations, %d of them grey, and %d stands: %lld statement for the pass\n",
                warehouse.locations(), warehouse.greyLocations(), warehouse.greyStands(),
                static_cast<long long>(statements));
    require(messages.count() == before, messages.last().Text);
    require(statements == 1, QStringLiteral("a pass is not one statement"));
    require(warehouse.greyLocations() < warehouse.locations(), QStringLiteral("nothing stands out"));
}

void growth() {
    const regalon::MsgBoxRecorder messages;  // the large plan is over the limit of the names and says so
    Warehouse small(50);
    Warehouse large(500);
    describe(small, messages);
    describe(large, messages);
    const auto side = [](Warehouse& warehouse) {
        return bench::Side{.name = std::to_string(warehouse.locations()) + " locations",
                           .act = [&] { warehouse.pass(); },
                           .prepare =
                               [&] {
                                   warehouse.enter();
                                   warehouse.showPlain();
                               }};
    };
    bench::compareInTurn("search-growth", rounds, side(large), side(small));
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    return bench::runMeasure("bench-search-growth", growth);
}
