// item-search: the key strokes of a code in the item search dialog, each until its list is drawn, over a bare
// ODBC loop that sends the same two calls of each and reads every row. 20,000 materials; the first strokes
// find them all, the last finds one.

#include "Measure.h"
#include "Recording.h"
#include "common/AppContext.h"
#include "common/DbConnection.h"
#include "map/frmMagLookForItem.h"
#include "platform/ListView.h"
#include "support/LocalWarehouse.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using regalon::test::LocalWarehouse;

constexpr int rounds = 31;
constexpr const char* typedCode = "M-01234";

const QString materials = QStringLiteral(
    "INSERT INTO dbo.OITM (ItemCode, ItemName, InvntryUom) "
    "SELECT N'M-' + RIGHT(N'0000' + CAST(N.Number + 10000 * T.D - 1 AS nvarchar(10)), 5), "
    "N'Materiał z kartoteki, numer ' + CAST(N.Number + 10000 * T.D - 1 AS nvarchar(10)), N'szt' "
    "FROM dbo.kolv_mag_Number AS N CROSS JOIN (VALUES (0), (1)) AS T (D);\nGO\n");

void require(bool condition, const QString& what) {
    if (!condition)
        throw std::runtime_error(what.toStdString());
}

/// Sees a widget being drawn.
class PaintWatch : public QObject {
public:
    void forget() { seen_ = false; }
    bool seen() const { return seen_; }
    bool eventFilter(QObject* watched, QEvent* event) override {
        seen_ = seen_ || event->type() == QEvent::Paint;
        return QObject::eventFilter(watched, event);
    }

private:
    bool seen_ = false;
};

/// The dialog on a warehouse of 20,000 materials.
class Search {
public:
    Search() : local_(LocalWarehouse::Content::Empty) {
        require(local_.runScript(materials), local_.why());
        require(local_.start(), local_.why());
        context_.ConnMain = std::make_unique<regalon::DbConnection>();
        context_.ConnMain->Open(local_.connectionString());
        context_.ErrorService = std::make_unique<regalon::clsError>();
        dialog_ = std::make_unique<regalon::frmMagLookForItem>(context_);
        dialog_->show();
        list_ = dialog_->findChild<regalon::ListView*>();
        box_ = dialog_->findChild<QLineEdit*>();
        list_->viewport()->installEventFilter(&paints_);
        require(rows() == 20000, QStringLiteral("the first list holds %1 rows").arg(rows()));
    }

    LocalWarehouse& local() { return local_; }
    int rows() const { return list_->itemCount(); }

    /// Returns when the list has drawn the answer.
    void stroke(char letter) {
        QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(QLatin1Char(letter)));
        paints_.forget();
        QApplication::sendEvent(box_, &press);
        while (!paints_.seen())
            QApplication::processEvents();
    }
    void startAgain() {
        box_->clear();
        QApplication::processEvents();
    }

private:
    PaintWatch paints_;
    LocalWarehouse local_;
    regalon::AppContext context_;
    std::unique_ptr<regalon::frmMagLookForItem> dialog_;
    regalon::ListView* list_ = nullptr;
    QLineEdit* box_ = nullptr;
};

/// One key stroke of the code, measured in every round.
struct Stroke {
    std::string text;  ///< what stands in the box behind it
    std::vector<bench::Statement> statements;
    int rows = 0;
    bench::Samples client;
    bench::Samples loop;
};

std::vector<Stroke> record(Search& search) {
    std::vector<Stroke> strokes;
    std::string text;
    for (const char* letter = typedCode; *letter != '\0'; ++letter) {
        text += *letter;
        search.local().clearTrace();
        search.stroke(*letter);
        Stroke stroke;
        stroke.text = text;
        stroke.statements = bench::recorded(search.local());
        stroke.rows = search.rows();
        require(stroke.statements.size() == 2, QStringLiteral("a key stroke is not two calls"));
        strokes.push_back(std::move(stroke));
    }
    return strokes;
}

/// Types the code once on both sides, stroke by stroke in turn; the ratio of the whole code.
double measure(Search& search, bench::BareOdbc& bare, std::vector<Stroke>& strokes) {
    search.startAgain();
    double ourSum = 0;
    double theirSum = 0;
    for (Stroke& stroke : strokes) {
        const double ours = bench::timed([&] { search.stroke(stroke.text.back()); });
        require(search.rows() == stroke.rows, QStringLiteral("the list holds other rows than before"));
        const double theirs = bench::timed([&] {
            require(bare.run(stroke.statements) == stroke.rows, QStringLiteral("the loop reads other rows"));
        });
        stroke.client.add(ours);
        stroke.loop.add(theirs);
        ourSum += ours;
        theirSum += theirs;
    }
    return ourSum / theirSum;
}

void itemSearch() {
    Search search;
    bench::BareOdbc bare(bench::odbcString(search.local()));
    std::vector<Stroke> strokes = record(search);
    bench::Samples ratios;
    for (int i = 0; i < rounds; ++i)
        ratios.add(measure(search, bare, strokes));
    for (const Stroke& stroke : strokes) {
        std::printf("%s: %d rows\n", stroke.text.c_str(), stroke.rows);
        bench::report("  key stroke to drawn list", stroke.client);
        bench::report("  bare ODBC loop", stroke.loop);
    }
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("item-search", ratios.median());
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    try {
        itemSearch();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "bench-item-search: %s\n", error.what());
        return 1;
    }
    return 0;
}
