#pragma once

#include "map/LocationAddress.h"

#include <QString>

namespace regalon {

/// The fields of a name or `Tag` of the plan, split at "_" and counted from 0. An empty text has no fields at
/// all.
class TagFields {
public:
    explicit TagFields(const QString& tag) : m_tag(tag) {}

    [[nodiscard]] bool isEmpty() const { return m_tag.isEmpty(); }

    /// Text of field `index`; run-time error 9 when the tag does not reach that far.
    [[nodiscard]] QString at(int index) const;

    /// The same without a copy; good as long as these fields.
    [[nodiscard]] QStringView view(int index) const;

    /// Field `index` as a 16-bit number; run-time errors 9, 13 and 6.
    [[nodiscard]] qint16 number(int index) const;

private:
    QString m_tag;
};

/// Places of the fields in the name of a location, which is also the `Tag` of its icon:
/// Rank_Stand_Shelf_Location_Family_Index.
namespace LocationField {
inline constexpr int Rank = 0;
inline constexpr int Stand = 1;
inline constexpr int Shelf = 2;
inline constexpr int Location = 3;
inline constexpr int Family = 4;
}  // namespace LocationField

/// Places of the fields in the `Tag` of a stand image: R_Rank_Stand_StandIcon.
namespace StandField {
inline constexpr int Rank = 1;
inline constexpr int Stand = 2;
}  // namespace StandField

/// Name of a location. `index` is the number of elements of the location array just after the icon was
/// loaded, one above the icon's own index; it is in the name on purpose, since every window builds the plan
/// in the same order.
[[nodiscard]] QString buildLocationName(const LocationAddress& address, const QString& family,
                                        qsizetype index);

/// `Tag` of a stand image; it ends in "_" for a stand without an icon of its own.
[[nodiscard]] QString buildStandTag(qint16 rank, qint16 stand, const QString& standIcon);

}  // namespace regalon
