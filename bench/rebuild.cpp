// rebuild:        a full rebuild of the plan over a bare ODBC loop that sends the same statements, 500
// locations. rebuild-growth: a rebuild of 5,000 locations over one of 500. rebuild-trips:  what the server
// received for one rebuild over the statements and calls of a rebuild.

#include "GrownWarehouse.h"
#include "Measure.h"
#include "Recording.h"
#include "map/MapCanvas.h"
#include "platform/MsgBox.h"
#include "views/frmMagWatch.h"

#include <QAction>
#include <QApplication>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using bench::require;
using regalon::test::LocalWarehouse;

constexpr int rounds = 31;

/// A generated warehouse with the warehouse view on it.
class Warehouse {
public:
    explicit Warehouse(int stands) : stands_(stands), grown_(stands) {
        view_ = std::make_unique<regalon::frmMagWatch>(grown_.context());
        view_->show();
        require(canvas().imglocation().Count() == locations() + 1,
                QStringLiteral("the plan holds %1 locations").arg(canvas().imglocation().Count() - 1));
    }

    int locations() const { return grown_.locations(); }
    LocalWarehouse& local() { return grown_.local(); }
    void enter() { grown_.enter(); }

    regalon::MapCanvas& canvas() { return *view_->findChild<regalon::MapCanvas*>(); }
    void rebuild() { view_->findChild<QAction*>(QStringLiteral("key_ReBulid"))->trigger(); }

    /// The statements of one rebuild as the server received them.
    std::vector<bench::Statement> record() {
        rebuild();  // the first use of a procedure also asks for its parameters, once a connection
        local().clearTrace();
        rebuild();
        return bench::recorded(local());
    }

    /// One refresh of the fills, one read of the stands, one of the shelves of each stand, one save of the
    /// names where they fit their limit, one read of the icons.
    std::size_t statementsAndCalls(bool namesFit) const {
        return 3 + static_cast<std::size_t>(stands_) + (namesFit ? 1 : 0);
    }

private:
    int stands_;
    bench::GrownWarehouse grown_;
    std::unique_ptr<regalon::frmMagWatch> view_;
};

void rebuild() {
    Warehouse warehouse(50);
    const std::vector<bench::Statement> statements = warehouse.record();
    bench::BareOdbc bare(bench::odbcString(warehouse.local()));
    bare.run(statements);
    bench::Samples client;
    bench::Samples loop;
    bench::Samples ratios;
    long rows = 0;
    for (int i = 0; i < rounds; ++i) {
        const double ours = bench::timed([&] { warehouse.rebuild(); });
        const double theirs = bench::timed([&] { rows = bare.run(statements); });
        client.add(ours);
        loop.add(theirs);
        ratios.add(ours / theirs);
    }
    std::printf("%d locations, %zu statements, %ld rows\n", warehouse.locations(), statements.size(), rows);
    bench::report("RebulidMag", client);
    bench::report("bare ODBC loop", loop);
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("rebuild", ratios.median());
}

void growth() {
    const regalon::MsgBoxRecorder messages;  // the large warehouse is over the limit of the names and says so
    Warehouse small(50);
    Warehouse large(500);
    bench::Samples smallTimes;
    bench::Samples largeTimes;
    bench::Samples ratios;
    for (int i = 0; i < rounds; ++i) {
        small.enter();
        const double one = bench::timed([&] { small.rebuild(); });
        large.enter();
        const double ten = bench::timed([&] { large.rebuild(); });
        smallTimes.add(one);
        largeTimes.add(ten);
        ratios.add(ten / one);
    }
    std::printf("messages of the name limit: %d, the last: %s\n", messages.count(),
                messages.last().Text.toUtf8().constData());
    bench::report(std::to_string(small.locations()) + " locations", smallTimes);
    bench::report(std::to_string(large.locations()) + " locations", largeTimes);
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("rebuild-growth", ratios.median());
}

void trips() {
    Warehouse warehouse(50);
    const std::vector<bench::Statement> statements = warehouse.record();
    std::size_t calls = 0;
    for (const bench::Statement& statement : statements)
        calls += statement.call ? 1 : 0;
    const std::size_t expected = warehouse.statementsAndCalls(true);
    std::printf("received by the server: %zu, %zu of them calls; statements and calls of a rebuild: %zu\n",
                statements.size(), calls, expected);
    bench::printRatio("rebuild-trips",
                      static_cast<double>(statements.size()) / static_cast<double>(expected));
}

}  // namespace

int main(int argc, char* argv[]) {
    const std::string name = argc > 1 ? argv[1] : "";
    QApplication application(argc, argv);
    try {
        if (name == "rebuild")
            rebuild();
        else if (name == "rebuild-growth")
            growth();
        else if (name == "rebuild-trips")
            trips();
        else {
            std::fprintf(stderr, "usage: bench-rebuild rebuild | rebuild-growth | rebuild-trips\n");
            return 2;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-rebuild: %s\n", error.what());
        return 1;
    }
    return 0;
}
