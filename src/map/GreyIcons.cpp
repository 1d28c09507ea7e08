#include "map/GreyIcons.h"

#include <QStringBuilder>

namespace regalon {

namespace {

constexpr qint16 kFull = 100;

/// Two digits; of a longer number the last two.
QString twoDigits(const QString& number) {
    return (QLatin1Char('0') + number).right(2);
}

}  // namespace

void GreyLocationIcon::follow(QStringView family, qint16 percent) {
    if (family != u"LA" && family != u"LB" && family != u"LC")
        return;
    if (percent > kFull)
        return;
    const QString number = QString::number(percent);
    m_file = family % QLatin1String("_G_") % (percent == kFull ? number : twoDigits(number)) %
             QLatin1String(".ico");
}

QString greyStandIcon(QStringView rank, QStringView stand) {
    return QLatin1String("RR") % rank % QLatin1String("_S_") % twoDigits(stand.toString()) %
           QLatin1String(".ico");
}

}  // namespace regalon
