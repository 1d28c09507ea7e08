#include "map/LocationName.h"

#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <array>
#include <charconv>

namespace regalon {

namespace {

constexpr QLatin1Char kMark('_');
constexpr qsizetype kUsualLength = 24;

/// Without a text of its own: a plan builds hundreds of names at each refresh.
void appendNumber(QString& text, qint64 number) {
    std::array<char, 24> digits{};
    const std::to_chars_result end = std::to_chars(digits.data(), digits.data() + digits.size(), number);
    text.append(QLatin1String(digits.data(), end.ptr - digits.data()));
}

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
    QString name;
    name.reserve(kUsualLength);
    for (const qint16 number : {address.Rank, address.Stand, address.Shelf, address.Location}) {
        appendNumber(name, number);
        name.append(kMark);
    }
    name.append(family);
    name.append(kMark);
    appendNumber(name, index);
    return name;
}

QString buildStandTag(qint16 rank, qint16 stand, const QString& standIcon) {
    return QStringLiteral("R_") + QString::number(rank) + QLatin1Char('_') + QString::number(stand) +
           QLatin1Char('_') + standIcon;
}

}  // namespace regalon
