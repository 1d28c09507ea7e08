// lookup: showing the place of a scanned package on the plan, from "&Szukaj" in the barcode window until all
// else is grey, over a bare ODBC loop that sends the same statements. 500 locations, one query for each of
// them.

#include "GrownWarehouse.h"
#include "Recording.h"
#include "map/MapCanvas.h"
#include "platform/MsgBox.h"
#include "platform/ToolBar.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>

#include <vector>

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
        const std::vector<bench::Statement> statements = bench::recorded(local(), [this] { show(); });
        require(coloured() == 1, QStringLiteral("%1 locations stand out").arg(coloured()));
        return statements;
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
    bench::compareWithBareLoop("lookup", rounds, {"LookForBarCodeLocation", [&] { window.show(); }},
                               window.local(), window.record());
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    return bench::runMeasure("bench-lookup", lookup);
}
