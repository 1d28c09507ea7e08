#include "stock/ProposalRow.h"

#include "map/LocationItemList.h"
#include "platform/Convert.h"
#include "platform/ListView.h"

namespace regalon {

QString ProposalRow::fromEnd(int columns) const {
    return textFromEnd(m_list, m_row, columns);
}

LocationAddress ProposalRow::target() const {
    return {ToInt16(fromEnd(10)), ToInt16(fromEnd(9)), ToInt16(fromEnd(8)), ToInt16(fromEnd(7))};
}

std::optional<int> ProposalRow::statusIcon() const {
    const QString letter = status();
    if (letter == u"O")
        return 37;
    if (letter == u"C")
        return fromEnd(1) == u"C" ? 2 : 14;
    if (letter == u"D")
        return 1;
    if (letter == u"P")
        return 16;
    return std::nullopt;
}

}  // namespace regalon
