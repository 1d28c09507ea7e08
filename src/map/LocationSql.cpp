#include "map/LocationSql.h"

#include "common/modSQL.h"

namespace regalon {

QString locationCondition(const LocationAddress& address) {
    return QStringLiteral("Rank = ") + SqlNumber(int{address.Rank}) + QStringLiteral(" and Stand = ") +
           SqlNumber(int{address.Stand}) + QStringLiteral(" and  Shelf = ") + SqlNumber(int{address.Shelf}) +
           QStringLiteral(" and Location = ") + SqlNumber(int{address.Location});
}

QString locationArguments(const LocationAddress& address) {
    const QLatin1Char comma(',');
    return SqlNumber(int{address.Rank}) + comma + SqlNumber(int{address.Stand}) + comma +
           SqlNumber(int{address.Shelf}) + comma + SqlNumber(int{address.Location});
}

}  // namespace regalon
