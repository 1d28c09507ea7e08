#include "map/LocationName.h"

#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <QStringBuilder>

namespace regalon {

namespace {

constexpr QLatin1Char kMark('_');

}  // namespace

QStringView TagFields::view(int index) const {
    if (m_tag.isEmpty() || index < 0)
        throw RunTimeError(RunTime::SubscriptOutOfRange);
    qsizetype from = 0;
    for (int field = 0; field < index; ++field) {
        from = m_tag.indexOf(kMark, from) + 1;
        if (from == 0)
            throw RunTimeError(RunTime::SubscriptOutOfRange);
    }
    const qsizetype end = m_tag.indexOf(kMark, from);
    return QStringView(m_tag).mid(from, end < 0 ? -1 : end - from);
}

QString TagFields::at(int index) const {
    return view(index).toString();
}

qint16 TagFields::number(int index) const {
    return ToInt16(at(index));
}

QString buildLocationName(const LocationAddress& address, const QString& family, qsizetype index) {
    // One allocation: a plan builds hundreds of these at each refresh.
    return QString::number(address.Rank) % kMark % QString::number(address.Stand) % kMark %
           QString::number(address.Shelf) % kMark % QString::number(address.Location) % kMark % family %
           kMark % QString::number(index);
}

QString buildStandTag(qint16 rank, qint16 stand, const QString& standIcon) {
    return QStringLiteral("R_") + QString::number(rank) + QLatin1Char('_') + QString::number(stand) +
           QLatin1Char('_') + standIcon;
}

}  // namespace regalon
