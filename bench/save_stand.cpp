// save-stand: from "&Zapisz regał" in the layout editor until the plan holds its new elements, over a bare
// ODBC loop that sends the same statements. 500 locations. Both sides save the same stand as it is, so that
// the server does the same for both.

#include "GrownWarehouse.h"
#include "Measure.h"
#include "Recording.h"
#include "map/MapCanvas.h"
#include "map/frmMagCreate.h"
#include "platform/DataCombo.h"
#include "platform/MsgBox.h"

#include <QAction>
#include <QApplication>

#include <cstdio>
#include <stdexcept>
#include <string>

namespace {

constexpr int rounds = 31;
constexpr int stands = 50;

/// The layout editor with a stand on its form.
class Editor {
public:
    Editor() : warehouse_(stands), window_(warehouse_.context()) {
        window_.show();
        choose("dtcRank", QStringLiteral("1"));
        choose("dtcStand", QStringLiteral("2"));
        bench::require(drawn() == warehouse_.locations(),
                       QStringLiteral("the plan holds %1 locations").arg(drawn()));
    }

    regalon::test::LocalWarehouse& local() { return warehouse_.local(); }
    int drawn() { return canvas().imglocation().Count() - 1; }

    void save() {
        window_.findChild<QAction*>(QStringLiteral("key_Add"))->trigger();
        bench::require(messages_.count() == 0, messages_.last().Text);
    }

    std::vector<bench::Statement> record() {
        save();  // the first use of a procedure also asks for its parameters, once a connection
        local().clearTrace();
        save();
        return bench::recorded(local());
    }

private:
    regalon::MapCanvas& canvas() { return *window_.findChild<regalon::MapCanvas*>(); }
    void choose(const char* combo, const QString& key) {
        window_.findChild<regalon::DataCombo*>(QString::fromLatin1(combo))->setBoundText(key);
    }

    const regalon::MsgBoxRecorder messages_;
    bench::GrownWarehouse warehouse_;
    regalon::frmMagCreate window_;
};

void saveStand() {
    Editor editor;
    const std::vector<bench::Statement> statements = editor.record();
    bench::BareOdbc bare(bench::odbcString(editor.local()));
    bare.run(statements);
    bench::Samples client;
    bench::Samples loop;
    bench::Samples ratios;
    long rows = 0;
    for (int i = 0; i < rounds; ++i) {
        const double ours = bench::timed([&] { editor.save(); });
        const double theirs = bench::timed([&] { rows = bare.run(statements); });
        client.add(ours);
        loop.add(theirs);
        ratios.add(ours / theirs);
    }
    std::printf("%d locations, %zu statements, %ld rows\n", editor.drawn(), statements.size(), rows);
    bench::report("a save with its new plan", client);
    bench::report("bare ODBC loop", loop);
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("save-stand", ratios.median());
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    try {
        saveStand();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-save-stand: %s\n", error.what());
        return 1;
    }
    return 0;
}
