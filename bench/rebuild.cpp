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
        return bench::recorded(local(), [this] { rebuild(); });
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
    bench::compareWithBareLoop("rebuild", rounds, {"RebulidMag", [&] { warehouse.rebuild(); }},
                               warehouse.local(), statements);
}

void growth() {
    const regalon::MsgBoxRecorder messages;  // the large warehouse is over the limit of the names and says so
    Warehouse small(50);
    Warehouse large(500);
    std::printf("messages of the name limit: %d, the last: %s\n", messages.count(),
                messages.last().Text.toUtf8().constData());
    const auto side = [](Warehouse& warehouse) {
        return bench::Side{.name = std::to_string(warehouse.locations()) + " locations",
                           .act = [&] { warehouse.rebuild(); },
                           .prepare = [&] { warehouse.enter(); }};
    };
    bench::compareInTurn("rebuild-growth", rounds, side(large), side(small));
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
    if (name == "rebuild")
        return bench::runMeasure("bench-rebuild", rebuild);
    if (name == "rebuild-growth")
        return bench::runMeasure("bench-rebuild", growth);
    if (name == "rebuild-trips")
        return bench::runMeasure("bench-rebuild", trips);
    std::fprintf(stderr, "usage: bench-rebuild rebuild | rebuild-growth | rebuild-trips\n");
    return 2;
}
