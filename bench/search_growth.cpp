// search-growth: the grey pass of the search for a material over a plan of 5,000 locations over one of 500.
// The fills take every grey icon there is, and one location in thirty holds the material.

#include "Measure.h"
#include "common/AppContext.h"
#include "common/DbConnection.h"
#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapSearch.h"
#include "map/clsMagWatch.h"
#include "platform/MsgBox.h"
#include "support/LocalWarehouse.h"

#include <QApplication>
#include <QDir>
#include <QFile>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using regalon::test::LocalWarehouse;

constexpr int rounds = 31;
constexpr int namesOfACall = 200;
constexpr int iconsOfARow = 40;  // pictures of stands that the artwork has for each row

const QString material = QStringLiteral("M-3");
const QString window = QStringLiteral("frmMagWatch");

void require(bool condition, const QString& what) {
    if (!condition)
        throw std::runtime_error(what.toStdString());
}

/// A generated warehouse of ten locations a stand, its server, and a plan of it.
class Warehouse {
public:
    explicit Warehouse(int stands) : local_(LocalWarehouse::Content::Empty), canvas_(15210, 9720) {
        QFile script(QStringLiteral(REGALON_BENCH_DIR "/growth.sql.in"));
        require(script.open(QIODevice::ReadOnly), QStringLiteral("growth.sql.in is missing"));
        QString sql = QString::fromUtf8(script.readAll());
        sql.replace(QStringLiteral("@STANDS@"), QString::number(stands));
        sql += QStringLiteral(
            "UPDATE dbo.kolv_mag_Location SET LocationPercent = (Stand * 37 + Shelf * 13 + Location * 29) % "
            "101;\n"
            "UPDATE dbo.kolv_mag_Location_Item SET ItemCode = N'M-' + CAST(Stand % 10 AS "
            "nvarchar(2));\nGO\n");
        require(local_.runScript(sql), local_.why());
        require(local_.start(), local_.why());
        addIcons(stands);
        enter();
        context_.ConnMain = std::make_unique<regalon::DbConnection>();
        context_.ConnMain->Open(local_.connectionString());
        context_.ErrorService = std::make_unique<regalon::clsError>();
        data_ = std::make_unique<regalon::clsMagWatch>(context_);
        map_ = std::make_unique<regalon::MapBuilder>(context_, canvas_, *data_,
                                                     regalon::MapReportNames::of(window));
        map_->setIconFolder(QStringLiteral("C:\\Regalon\\Pomiar"));
        search_ = std::make_unique<regalon::MapSearch>(*map_, canvas_, *data_,
                                                       regalon::SearchReportNames::of(window));
        map_->RefreschWatchStore();
        require(locations() == stands * 10, QStringLiteral("the plan holds %1 locations").arg(locations()));
        saveNames();
    }

    int locations() { return canvas_.imglocation().Count() - 1; }
    LocalWarehouse& local() { return local_; }

    /// Makes this warehouse's drive C the client's.
    void enter() { qputenv("REGALON_DRIVE_C", local_.driveC().toLocal8Bit()); }
    void showPlain() { map_->ChangeIconLocation(canvas_.imglocation()); }
    void pass() { search_->ChangeIconOnLocation(material, 0); }

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
        const QDir all(local_.driveC() + QStringLiteral("/Regalon/Ikony"));
        const QString own = local_.driveC() + QStringLiteral("/Regalon/Pomiar/");
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
            require(data_->SaveLocalizationIDTab(names.join(u','), {}, {}, message), message);
            names.clear();
        }
    }

    LocalWarehouse local_;
    regalon::AppContext context_;
    regalon::MapCanvas canvas_;
    std::unique_ptr<regalon::clsMagWatch> data_;
    std::unique_ptr<regalon::MapBuilder> map_;
    std::unique_ptr<regalon::MapSearch> search_;
};

/// One pass, on a plan that was plain before.
double measured(Warehouse& warehouse) {
    warehouse.enter();
    warehouse.showPlain();
    return bench::timed([&] { warehouse.pass(); });
}

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
    bench::Samples smallTimes;
    bench::Samples largeTimes;
    bench::Samples ratios;
    for (int i = 0; i < rounds; ++i) {
        const double one = measured(small);
        const double ten = measured(large);
        smallTimes.add(one);
        largeTimes.add(ten);
        ratios.add(ten / one);
    }
    bench::report(std::to_string(small.locations()) + " locations", smallTimes);
    bench::report(std::to_string(large.locations()) + " locations", largeTimes);
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("search-growth", ratios.median());
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    try {
        growth();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-search-growth: %s\n", error.what());
        return 1;
    }
    return 0;
}
