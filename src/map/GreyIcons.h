#pragma once

#include <QString>
#include <QStringView>

namespace regalon {

/// The grey icon of a location without the material that is looked for, as file name in the icon folder. It
/// goes over the locations in the order of the plan, since a location that has no grey icon of its own takes
/// the one before it; the first such has the empty name.
class GreyLocationIcon {
public:
    /// `family` of the next location and its fill in per cent. A family that is none, and a fill over 100,
    /// have no icon of their own.
    void follow(QStringView family, qint16 percent);
    const QString& file() const { return m_file; }

private:
    QString m_file;
};

/// The grey icon of a stand; both numbers as they stand in its `Tag`.
[[nodiscard]] QString greyStandIcon(QStringView rank, QStringView stand);

}  // namespace regalon
