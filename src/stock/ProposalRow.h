#pragma once

#include "map/LocationAddress.h"

#include <QString>

#include <optional>

namespace regalon {

class ListItem;
class ListView;

/// One row of the list of proposed locations. Its columns are counted from the end: what comes before them is
/// the database's choice. Both references must outlive it.
class ProposalRow {
public:
    ProposalRow(const ListView& list, const ListItem& row) : m_list(list), m_row(row) {}

    QString barCode() const { return fromEnd(6); }
    /// "D" and "C" may become the target, "O" and "P" may not.
    QString status() const { return fromEnd(3); }
    /// Raises 13 and 6.
    LocationAddress target() const;
    /// Number of the small icon; none for a status that the list shows without one.
    std::optional<int> statusIcon() const;

private:
    QString fromEnd(int columns) const;

    const ListView& m_list;
    const ListItem& m_row;
};

}  // namespace regalon
