// shift: packages moved a second through the shift window, from the click on the location to the lists read
// anew behind the confirmation, over a bare ODBC loop of the same calls. The confirmation alone is told
// beside it.
//
// proposals: from the tick of a package to the list of its proposals, over a bare ODBC loop of the same
// statements, with 500 packages in the list. What drawing both lists costs is told beside it.
//
// Both on 500 locations. Each side stages its own rows, since they belong to the connection.

#include "GrownWarehouse.h"
#include "Measure.h"
#include "Recording.h"
#include "map/MapCanvas.h"
#include "platform/ListView.h"
#include "platform/MsgBox.h"
#include "platform/ToolBar.h"
#include "stock/ProposalRow.h"
#include "stock/frmMagWatchShiftLoc.h"
#include "support/Events.h"

#include <QApplication>
#include <QSet>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

namespace {

using bench::require;

constexpr int stands = 50;
constexpr int shiftRounds = 21;
constexpr int packagesOfShift = 5;
constexpr int proposalRounds = 31;
constexpr int packagesInList = 500;
constexpr int codeFromEnd = 1;

/// The shift window on a warehouse with packages of one material on a location that takes no other one.
class Desk {
public:
    explicit Desk(int packages) : warehouse_(stands), packages_(packages) {
        run(QStringLiteral(
            "insert into OITM (ItemCode,ItemName,InvntryUom) values (N'M-1',N'Materiał',N'szt')"));
        run(QStringLiteral("insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,PackLength,PackWidth,"
                           "PackHeight,PackWeight,Rank,Stand,Shelf,Location,Active) select N'59' + "
                           "cast(100000 + Number as nvarchar(9)),N'M-1',1,10,10,10,0.1,1,2,1,1,N'Y' from "
                           "kolv_mag_Number where Number <= %1")
                .arg(packages));
        window_ = std::make_unique<regalon::frmMagWatchShiftLoc>(warehouse_.context());
        window_->resize(window_->sizeHint());
        regalon::test::showAndWait(window_.get());
        barCodes_ = control<regalon::ListView>("lstLocationBarCode");
        proposals_ = control<regalon::ListView>("lstSurPropLocation");
    }

    regalon::test::LocalWarehouse& local() { return warehouse_.local(); }
    void run(const QString& statement) { require(local().run(statement), local().why()); }

    /// The window browsing once more, and every package back on its location.
    void startAgain() {
        press("tlbAkceptItem", "key_Cancel");
        press("tlbAkceptItem", "key_Cancel");
        putBack();
    }
    void putBack() {
        run(QStringLiteral("update Kolv_Mag_BarCode_Sur set Rank = 1, Stand = 2, Shelf = 1, Location = 1"));
        run(QStringLiteral("delete from Kolv_Mag_BarCode_Sur_History"));
    }

    /// The packages of the location in their list, none chosen.
    void pick() {
        clickLocation();
        press("tlbAkceptLocation", "key_AkceptLoc");
        press("tlbAkceptItem", "key_AkceptItem");
        require(barCodes_->itemCount() == packages_,
                QStringLiteral("%1 packages are listed").arg(barCodes_->itemCount()));
    }
    /// Ticks or unticks a package; returns when the list holds the proposals.
    void tick(int row) {
        regalon::test::clickCheckBox(barCodes_, row);
        expectNoMessage();
    }
    /// What the user sees of it.
    void draw() { QApplication::processEvents(); }
    /// The first row of each package that may become its target.
    QList<int> targets() {
        QSet<QString> found;
        QList<int> rows;
        for (int number = 1; number <= proposals_->itemCount(); ++number) {
            const regalon::ProposalRow row(*proposals_, *proposals_->item(number));
            const QString status = row.status();
            if ((status == u"D" || status == u"C") && !found.contains(row.barCode())) {
                found.insert(row.barCode());
                rows.append(number - 1);
            }
        }
        require(found.size() == packages_, QStringLiteral("%1 packages have a target").arg(found.size()));
        return rows;
    }
    void tickTargets(const QList<int>& rows) {
        for (const int row : rows)
            regalon::test::clickCheckBox(proposals_, row);
    }
    void confirm() { press("tlbAkceptShiftItem", "key_AkceptShiftItem"); }
    int proposalRows() const { return proposals_->itemCount(); }

private:
    template <class T>
    T* control(const char* name) {
        return window_->findChild<T*>(QString::fromLatin1(name));
    }
    void press(const char* toolBar, const char* key) {
        require(regalon::test::clickToolButton(control<regalon::ToolBar>(toolBar), QString::fromLatin1(key)),
                QStringLiteral("%1 is not to be seen").arg(QString::fromLatin1(key)));
        expectNoMessage();
    }
    void expectNoMessage() {
        require(messages_.count() == 0, messages_.count() == 0 ? QString() : messages_.last().Text);
    }
    void clickLocation() {
        auto& canvas = *window_->findChild<regalon::MapCanvas*>();
        auto& locations = canvas.imglocation();
        for (int index = 1; index < locations.Count(); ++index) {
            if (locations[index].tag().startsWith(QStringLiteral("1_2_1_1_"))) {
                regalon::test::clickItem(&canvas, &locations[index]);
                return;
            }
        }
    }

    const regalon::MsgBoxRecorder messages_;
    bench::GrownWarehouse warehouse_;
    int packages_;
    std::unique_ptr<regalon::frmMagWatchShiftLoc> window_;
    regalon::ListView* barCodes_ = nullptr;
    regalon::ListView* proposals_ = nullptr;
};

/// What the server receives of the window meanwhile.
template <class Act>
std::vector<bench::Statement> recordedOf(Desk& desk, const Act& act) {
    desk.local().clearTrace();
    act();
    return bench::recorded(desk.local());
}

/// Times of both sides of one thing, and their ratio round by round.
struct Pair {
    bench::Samples client;
    bench::Samples loop;
    bench::Samples ratios;

    void add(double ours, double theirs, double ratio) {
        client.add(ours);
        loop.add(theirs);
        ratios.add(ratio);
    }
    void report(const char* title) const {
        std::printf("%s\n", title);
        bench::report("  shift window", client);
        bench::report("  bare ODBC loop", loop);
        bench::report("  ratio of each round", ratios, "");
    }
};

void choosePackages(Desk& desk) {
    desk.pick();
    for (int row = 0; row < packagesOfShift; ++row)
        desk.tick(row);
}

/// What the server receives of a shift, up to the ticks of the targets and behind them.
struct Recorded {
    std::vector<bench::Statement> choosing;
    std::vector<bench::Statement> confirming;
};

Recorded recordShift(Desk& desk) {
    Recorded recorded;
    // Twice: the first use of a procedure also asks for its parameters, once a connection.
    for (int turn = 0; turn < 2; ++turn) {
        recorded.choosing = recordedOf(desk, [&] { choosePackages(desk); });
        desk.tickTargets(desk.targets());
        recorded.confirming = recordedOf(desk, [&] { desk.confirm(); });
        desk.startAgain();
    }
    return recorded;
}

void shift() {
    Desk desk(packagesOfShift);
    const Recorded recorded = recordShift(desk);
    bench::BareOdbc bare(bench::odbcString(desk.local()));
    Pair whole;
    Pair confirmation;
    for (int i = 0; i < shiftRounds; ++i) {
        double ours = bench::timed([&] { choosePackages(desk); });
        desk.draw();
        const QList<int> targets = desk.targets();
        ours += bench::timed([&] { desk.tickTargets(targets); });
        desk.draw();  // else the press of the button would draw the ticks
        const double ourMoves = bench::timed([&] { desk.confirm(); });
        desk.draw();
        desk.startAgain();
        desk.draw();
        const double theirs = bench::timed([&] { bare.run(recorded.choosing); });
        const double theirMoves = bench::timed([&] { bare.run(recorded.confirming); });
        desk.putBack();
        whole.add(ours + ourMoves, theirs + theirMoves, (theirs + theirMoves) / (ours + ourMoves));
        confirmation.add(ourMoves, theirMoves, theirMoves / ourMoves);
    }
    std::printf("%d packages a shift, %zu statements, %zu of them of the confirmation\n", packagesOfShift,
                recorded.choosing.size() + recorded.confirming.size(), recorded.confirming.size());
    whole.report("from the click on the location to the refreshed lists");
    confirmation.report("the confirmation alone");
    std::printf("packages a second: %.1f, by the confirmation alone %.1f\n",
                1000.0 * packagesOfShift / whole.client.median(),
                1000.0 * packagesOfShift / confirmation.client.median());
    bench::printRatio("shift", whole.ratios.median());
}

/// Ticks a package in turn on both sides, which hold the same choice. Each unticks it again, off the clock.
void proposals() {
    Desk desk(packagesInList);
    desk.pick();
    desk.tick(0);  // the first use of a procedure also asks for its parameters, once a connection
    desk.tick(0);
    const auto picking = recordedOf(desk, [&] { desk.pick(); });
    const auto ticking = recordedOf(desk, [&] { desk.tick(0); });
    const int rows = desk.proposalRows();
    const auto unticking = recordedOf(desk, [&] { desk.tick(0); });
    bench::BareOdbc bare(bench::odbcString(desk.local()));
    bare.run(picking);
    Pair tick;
    bench::Samples drawing;
    for (int i = 0; i < proposalRounds; ++i) {
        const double ours = bench::timed([&] { desk.tick(0); });
        drawing.add(bench::timed([&] { desk.draw(); }));
        require(desk.proposalRows() == rows, QStringLiteral("the list holds other rows than before"));
        desk.tick(0);
        desk.draw();
        const double theirs = bench::timed(
            [&] { require(bare.run(ticking) == rows, QStringLiteral("the loop reads other rows")); });
        bare.run(unticking);
        tick.add(ours, theirs, ours / theirs);
    }
    std::printf("%d packages in the list, %zu statements, %d proposals\n", packagesInList, ticking.size(),
                rows);
    tick.report("from the tick to its proposals");
    bench::report("  drawing the lists", drawing);
    bench::printRatio("proposals", tick.ratios.median());
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    const bool proposalsAlone = QApplication::arguments().value(1) == u"proposals";
    return bench::runMeasure("bench-shift", proposalsAlone ? proposals : shift);
}
