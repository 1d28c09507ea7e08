#include "program/Plan.h"

#include "program/Tables.h"
#include "support/LocalWarehouse.h"

#include <array>
#include <stdexcept>

namespace regalon::test {

namespace {

// The hall's walls, twips.
constexpr int leftWall = 600;
constexpr int rightWall = 14760;
constexpr int topWall = 840;
constexpr int bottomWall = 8280;
constexpr int panelBottom = 9720;
// The side walls are in sight down to here, also under the frames of the layout editor.
constexpr int wallInSight = 6960;

constexpr int twipsOfPixel = 15;

// Where a person clicks on a location's icon, from its corner; twips.
constexpr int insideLeft = 90;
constexpr int insideTop = 80;
constexpr int dark = 100;  // of 255

bool isDark(const QImage& image, int x, int y) {
    return image.valid(x, y) && qGray(image.pixel(x, y)) < dark;
}

/// Start of a run of dark pixels in a row that is as long as `length`, give or take two; -1 if there is none.
int darkRun(const QImage& image, int y, int length) {
    int run = 0;
    for (int x = 0; x <= image.width(); ++x) {
        if (isDark(image, x, y)) {
            ++run;
            continue;
        }
        if (run >= length - 2 && run <= length + 3) {
            return x - run;
        }
        run = 0;
    }
    return -1;
}

/// Whether a side wall goes down from the corner.
bool hasWall(const QImage& image, int x, int y, int length) {
    int found = 0;
    for (int step = 0; step < length; ++step) {
        found += isDark(image, x, y + step) ? 1 : 0;
    }
    return found > length * 9 / 10;
}

/// Rows that must be there.
QVector<QVector<QVariant>> rows(const LocalWarehouse& warehouse, const QString& sql) {
    QVector<QVector<QVariant>> all = rowsOf(warehouse, sql);
    if (all.isEmpty()) {
        throw std::runtime_error("no row for: " + sql.toStdString());
    }
    return all;
}

}  // namespace

QPoint Plan::at(int left, int top) const {
    return origin + QPoint(qRound(left * scale / twipsOfPixel), qRound(top * scale / twipsOfPixel));
}

QRect Plan::hall() const {
    return QRect(at(leftWall, topWall), at(rightWall, bottomWall)).adjusted(2, 2, -2, -2);
}

QRect Plan::panel() const {
    return {at(leftWall, bottomWall + 2 * twipsOfPixel), at(rightWall, panelBottom)};
}

std::optional<Plan> findPlan(const QImage& display, double scale) {
    const int length = qRound((rightWall - leftWall) * scale / twipsOfPixel);
    const int height = qRound((wallInSight - topWall) * scale / twipsOfPixel);
    for (int y = 0; y < display.height() - height; ++y) {
        const int x = darkRun(display, y, length);
        if (x < 0 || !hasWall(display, x, y, height)) {
            continue;
        }
        Plan plan;
        plan.scale = scale;
        plan.origin = QPoint(x, y) - plan.at(leftWall, topWall);
        return plan;
    }
    return std::nullopt;
}

QString Spot::key() const {
    return QStringLiteral("Rank = %1 and Stand = %2 and  Shelf = %3 and Location = %4")
        .arg(rank)
        .arg(stand)
        .arg(shelf)
        .arg(location);
}

Spot spotOf(const LocalWarehouse& warehouse, int rank, int stand, int shelf, int location) {
    // Where the icons of a shelf begin, and how far they lie above the stand's top; twips.
    constexpr std::array lefts = {0, 205, 415};
    constexpr std::array heights = {215, 400, 580, 765};
    Spot spot = standSpot(warehouse, rank, stand);
    spot.shelf = shelf;
    spot.location = location;
    const QVector<QVariant> place =
        rows(warehouse,
             QStringLiteral("select StandLeft,StandTop from kolv_mag_Stand where Rank = %1 and Stand = %2")
                 .arg(rank)
                 .arg(stand))[0];
    spot.left = place[0].toInt() + lefts.at(static_cast<std::size_t>(location - 1)) + insideLeft;
    spot.top = place[1].toInt() - heights.at(static_cast<std::size_t>(shelf - 1)) + insideTop;
    return spot;
}

Spot spotWhere(const LocalWarehouse& warehouse, const QString& condition) {
    const QVector<QVariant> found = rows(
        warehouse, QStringLiteral("select A.Rank,A.Stand,A.Shelf,A.Location from kolv_mag_Location_Item A "
                                  "where %1 order by A.Rank,A.Stand,A.Shelf,A.Location")
                       .arg(condition))[0];
    return spotOf(warehouse, found[0].toInt(), found[1].toInt(), found[2].toInt(), found[3].toInt());
}

int countOf(const LocalWarehouse& warehouse, const QString& table) {
    return rows(warehouse, QStringLiteral("select count(*) from ") + table)[0][0].toInt();
}

QString iconFile(const LocalWarehouse& warehouse, const Spot& spot) {
    return rows(warehouse,
                QStringLiteral("select LocationIcon from kolv_mag_Location where ") + spot.key())[0][0]
        .toString();
}

bool showsPicture(const QImage& display, const Plan& plan, const LocalWarehouse& warehouse, int left, int top,
                  const QString& file) {
    // The first picture of an icon is the one of the natural size.
    const QImage icon(warehouse.driveC() + QStringLiteral("/Regalon/Ikony/") + file);
    const QPoint corner = plan.at(left, top);
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x) {
            const QRgb wanted = icon.pixel(x, y);
            if (qAlpha(wanted) == 255 && display.pixel(corner + QPoint(x, y)) != wanted) {
                return false;
            }
        }
    }
    return !icon.isNull();
}

bool showsIcon(const QImage& display, const Plan& plan, const LocalWarehouse& warehouse, const Spot& spot,
               const QString& file) {
    return showsPicture(display, plan, warehouse, spot.left - insideLeft, spot.top - insideTop, file);
}

Spot standSpot(const LocalWarehouse& warehouse, int rank, int stand) {
    constexpr int halfWidth = 300;
    constexpr int halfHeight = 135;
    const QVector<QVariant> place =
        rows(warehouse,
             QStringLiteral("select StandLeft,StandTop from kolv_mag_Stand where Rank = %1 and Stand = %2")
                 .arg(rank)
                 .arg(stand))[0];
    Spot spot;
    spot.rank = rank;
    spot.stand = stand;
    spot.left = place[0].toInt() + halfWidth;
    spot.top = place[1].toInt() + halfHeight;
    return spot;
}

}  // namespace regalon::test
