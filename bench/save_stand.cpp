// save-stand: from "&Zapisz regał" in the layout editor until the plan holds its new elements, over a bare
// ODBC loop that sends the same statements. 500 locations. Both sides save the same stand as it is, so that
// the server does the same for both.

#include "GrownWarehouse.h"
#include "Recording.h"
#include "map/MapCanvas.h"
#include "map/frmMagCreate.h"
#include "platform/DataCombo.h"
#include "platform/MsgBox.h"

#include <QAction>
#include <QApplication>

#include <vector>

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
    const auto save = [&] { editor.save(); };
    const std::vector<bench::Statement> statements = bench::recorded(editor.local(), save);
    bench::compareWithBareLoop("save-stand", rounds, {"a save with its new plan", save}, editor.local(),
                               statements);
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    return bench::runMeasure("bench-save-stand", saveStand);
}
