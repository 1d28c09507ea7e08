#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>
#include <QString>

#include <optional>

namespace regalon::test {

class LocalWarehouse;

/// The plan as it stands on the display, found by the walls of its hall.
struct Plan {
    QPoint origin;     ///< pixel of the plan's zero point
    double scale = 1;  ///< display pixels of a logical pixel

    /// The pixel of a point of the plan; twips.
    QPoint at(int left, int top) const;
    /// The hall inside its walls.
    QRect hall() const;
    /// The panel below the hall.
    QRect panel() const;
};

/// Looks for the top wall, the one dark line of its length, and for both side walls below it. Nothing if the
/// plan is not to be seen.
std::optional<Plan> findPlan(const QImage& display, double scale = 1);

/// A location of the plan and where a person would click on it.
struct Spot {
    int rank = 0;
    int stand = 0;
    int shelf = 0;
    int location = 0;
    int left = 0;  ///< twips, inside the icon
    int top = 0;

    QString key() const;
};

/// The place of a location, from where the database puts its stand.
Spot spotOf(const LocalWarehouse& warehouse, int rank, int stand, int shelf, int location);
/// The first location that answers a condition on kolv_mag_Location_Item A.
Spot spotWhere(const LocalWarehouse& warehouse, const QString& condition);
/// The number of rows of a table.
int countOf(const LocalWarehouse& warehouse, const QString& table);
/// The icon file that the database names for a location.
QString iconFile(const LocalWarehouse& warehouse, const Spot& spot);
/// Whether the display shows the picture of this icon file with its corner at a point of the plan (twips), in
/// every pixel that the picture covers.
bool showsPicture(const QImage& display, const Plan& plan, const LocalWarehouse& warehouse, int left, int top,
                  const QString& file);
/// The same at a location.
bool showsIcon(const QImage& display, const Plan& plan, const LocalWarehouse& warehouse, const Spot& spot,
               const QString& file);
/// The middle of a stand's picture.
Spot standSpot(const LocalWarehouse& warehouse, int rank, int stand);

}  // namespace regalon::test
