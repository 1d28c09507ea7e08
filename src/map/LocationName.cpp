#include "map/LocationName.h"

#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <QStringBuilder>

#include <array>
#include <charconv>

namespace regalon {

namespace {

constexpr QLatin1Char kMark('_');

/// Writes a name's parts one behind the other: a plan builds hundreds of names at each refresh.
class NameWriter {
public:
    void number(qint64 value) {
        m_end = std::to_chars(m_end, m_letters.data() + m_letters.size(), value).ptr;
    }
    void mark() { *m_end++ = kMark.toLatin1(); }
    QLatin1String text() const { return {m_letters.data(), m_end}; }

private:
    /// Five numbers of up to 20 characters and their marks.
    std::array<char, 128> m_letters{};
    char* m_end = m_letters.data();
};

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
    NameWriter front;
    for (const qint16 number : {address.Rank, address.Stand, address.Shelf, address.Location}) {
        front.number(number);
        front.mark();
    }
    NameWriter back;
    back.mark();
    back.number(index);
    return front.text() % family % back.text();
}

QString buildStandTag(qint16 rank, qint16 stand, const QString& standIcon) {
    NameWriter numbers;
    numbers.number(rank);
    numbers.mark();
    numbers.number(stand);
    numbers.mark();
    return QLatin1String("R_") % numbers.text() % standIcon;
}

}  // namespace regalon
