// lookup: showing the place of a scanned package on the plan, from "&Szukaj" in the barcode window until all
// else is grey, over a bare ODBC loop that sends the same statements. 500 locations, one query for each of
// them.

#include "GrownWarehouse.h"
#include "Measure.h"
#include "Recording.h"
#include "map/MapCanvas.h"
#include "platform/MsgBox.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace {

using bench::require;

constexpr int rounds = 31;
constexpr int stands = 50;

/// The barcode window with a package that has been looked up.
class Lookup {
public:
    Lookup() : warehouse_(stands), window_(warehouse_.context()) {
        require(warehouse_.local().run(QStringLiteral(
                    "insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Rank,Stand,Shelf,Location,Active) "
                    "values (N'59012',N'M-1',3,2,1,1,N'Y')")),
                warehouse_.local().why());
        window_.show();
        window_.findChild<QAction*>(QStringLiteral("key_LokkForBarCode"))->trigger();
        window_.findChild<QLineEdit*>(QStringLiteral("txtBarCodeLookFor"))->setText(QStringLiteral("59012"));
        press("key_Akcept");
    }

    regalon::test::LocalWarehouse& local() { return warehouse_.local(); }

    void show() { press("key_LokForBarCode"); }

    std::vector<bench::Statement> record() {
        show();  // the first use of a procedure also asks for its parameters, once a connection
        local().clearTrace();
        show();
        require(coloured() == 1, QStringLiteral("%1 locations stand out").arg(coloured()));
        return bench::recorded(local());
    }

private:
    void press(const char* key) {
        window_.findChild<regalon::ToolBar*>(QStringLiteral("tlbLookForBarCode"))
            ->button(QString::fromLatin1(key))
            ->trigger();
        require(messages_.count() == 0, messages_.last().Text);
    }
    int coloured() {
        auto& locations = window_.findChild<regalon::MapCanvas*>()->imglocation();
        int count = 0;
        for (int index = 1; index < locations.Count(); ++index)
            count += locations[index].picturePath().contains(QStringLiteral("_G_")) ? 0 : 1;
        return count;
    }

    const regalon::MsgBoxRecorder messages_;
    bench::GrownWarehouse warehouse_;
    regalon::frmMagWatchBarCodeLoc window_;
};

void lookup() {
    Lookup window;
    const std::vector<bench::Statement> statements = window.record();
    bench::BareOdbc bare(bench::odbcString(window.local()));
    bare.run(statements);
    bench::Samples client;
    bench::Samples loop;
    bench::Samples ratios;
    long rows = 0;
    for (int i = 0; i < rounds; ++i) {
        const double ours = bench::timed([&] { window.show(); });
        const double theirs = bench::timed([&] { rows = bare.run(statements); });
        client.add(ours);
        loop.add(theirs);
        ratios.add(ours / theirs);
    }
    std::printf("%zu statements, %ld rows\n", statements.size(), rows);
    bench::report("LookForBarCodeLocation", client);
    bench::report("bare ODBC loop", loop);
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("lookup", ratios.median());
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    try {
        lookup();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-lookup: %s\n", error.what());
        return 1;
    }
    return 0;
}
