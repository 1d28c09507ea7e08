#include "map/LocationName.h"

#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <QStringBuilder>

namespace regalon {

TagFields::TagFields(const QString& tag) {
    if (!tag.isEmpty())
        m_fields = tag.split(QLatin1Char('_'));
}

const QString& TagFields::at(int index) const {
    if (index < 0 || index >= m_fields.size())
        throw RunTimeError(RunTime::SubscriptOutOfRange);
    return m_fields.at(index);
}

qint16 TagFields::number(int index) const {
    return ToInt16(at(index));
}

QString buildLocationName(const LocationAddress& address, const QString& family, qsizetype index) {
    // One allocation: a plan builds hundreds of these at each refresh.
    const QLatin1Char mark('_');
    return QString::number(address.Rank) % mark % QString::number(address.Stand) % mark %
           QString::number(address.Shelf) % mark % QString::number(address.Location) % mark % family % mark %
           QString::number(index);
}

QString buildStandTag(qint16 rank, qint16 stand, const QString& standIcon) {
    return QStringLiteral("R_") + QString::number(rank) + QLatin1Char('_') + QString::number(stand) +
           QLatin1Char('_') + standIcon;
}

}  // namespace regalon
