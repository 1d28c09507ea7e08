#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace regalon {

/// The names of all locations of one build, in the three lists that go to the database in one call. The first
/// two lists hold at most 251 names, the third takes all the rest: what limits a warehouse is the length of
/// the joined texts, not the number of locations.
class LocationNameBatches {
public:
    static constexpr qsizetype kCount = 3;
    /// A joined list of this many characters or more cannot be sent.
    static constexpr qsizetype kTextLimit = 4000;

    void add(const QString& name);

    /// The three lists, joined by ",". A list without names is an empty text.
    [[nodiscard]] std::array<QString, kCount> joined() const;

private:
    std::array<QStringList, kCount> m_batches;
};

}  // namespace regalon
