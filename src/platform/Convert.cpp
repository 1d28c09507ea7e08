#include "platform/Convert.h"

#include "platform/RunTimeError.h"

#include <QLocale>

#include <charconv>
#include <cmath>
#include <limits>
#include <optional>

namespace regalon {
namespace {

RegionalFormat& currentFormat() {
    static RegionalFormat format;
    return format;
}

bool isDigit(QChar c) {
    return c >= u'0' && c <= u'9';
}

/// Reads a number's text into the form that std::from_chars takes.
class NumberReader {
public:
    explicit NumberReader(const QString& text) : m_text(text) {}

    /// Empty if the text is no number.
    std::optional<QByteArray> read() {
        m_end = m_text.size();
        while (m_end > 0 && m_text[m_end - 1] == u' ')
            --m_end;
        while (m_at < m_end && m_text[m_at] == u' ')
            ++m_at;
        if (peek() == u'+' || peek() == u'-')
            m_out += next() == u'-' ? "-" : "";
        if (!readMantissa() || !readExponent() || m_at != m_end)
            return std::nullopt;
        return m_out;
    }

private:
    QChar peek(qsizetype ahead = 0) const { return m_at + ahead < m_end ? m_text[m_at + ahead] : QChar(); }
    QChar next() { return m_text[m_at++]; }

    bool readDigits() {
        const qsizetype before = m_out.size();
        while (isDigit(peek()))
            m_out += next().toLatin1();
        return m_out.size() > before;
    }

    bool readMantissa() {
        bool any = readDigits();
        while (any && isDigit(peek(1)) && currentFormat().GroupSeparators.contains(peek())) {
            next();
            readDigits();
        }
        if (peek() == currentFormat().Decimal && !peek().isNull()) {
            next();
            if (!any)
                m_out += '0';
            m_out += '.';
            const bool fraction = readDigits();
            if (!fraction)
                m_out += '0';
            any = any || fraction;
        }
        return any;
    }

    bool readExponent() {
        if (peek() != u'e' && peek() != u'E')
            return true;
        next();
        m_out += 'e';
        if (peek() == u'+' || peek() == u'-')
            m_out += next() == u'-' ? "-" : "";
        return readDigits();
    }

    const QString& m_text;
    qsizetype m_at = 0;
    qsizetype m_end = 0;
    QByteArray m_out;
};

/// Raises 6 for a number beyond the doubles; one too small to tell from nought is nought.
double parsed(const QByteArray& digits) {
    double value = 0;
    const std::from_chars_result result =
        std::from_chars(digits.constData(), digits.constData() + digits.size(), value);
    if (result.ec == std::errc())
        return value;
    long double wide = 0;
    const std::from_chars_result again =
        std::from_chars(digits.constData(), digits.constData() + digits.size(), wide);
    const bool tiny = again.ec == std::errc() ? std::fabs(wide) < 1 : digits.contains("e-");
    if (tiny)
        return 0;
    throw RunTimeError(RunTime::Overflow);
}

template <typename Whole>
Whole rounded(double value) {
    const double whole = std::nearbyint(value);
    if (!(whole >= std::numeric_limits<Whole>::min() && whole <= std::numeric_limits<Whole>::max()))
        throw RunTimeError(RunTime::Overflow);
    return static_cast<Whole>(whole);
}

bool isNumberType(int type) {
    switch (type) {
        case QMetaType::Bool:
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
        case QMetaType::Float:
        case QMetaType::Double:
            return true;
        default:
            return false;
    }
}

}  // namespace

bool RegionalFormat::fromLocale(const QString& name, RegionalFormat& format) {
    const QLocale locale(name);
    const QString found = locale.name();
    if (found != name && !found.startsWith(name + u'_'))
        return false;
    const QString group = locale.groupSeparator();
    const QString decimal = locale.decimalPoint();
    if (name.isEmpty() || decimal.size() != 1)
        return false;
    format.Locale = found;
    format.Decimal = decimal.front();
    const bool blankGroups = group.trimmed().isEmpty();
    format.GroupSeparators = blankGroups ? QStringLiteral(" \u00A0") : group;
    return true;
}

const RegionalFormat& regionalFormat() {
    return currentFormat();
}

void setRegionalFormat(const RegionalFormat& format) {
    currentFormat() = format;
}

QString TrimBlanks(const QString& text) {
    qsizetype begin = 0;
    qsizetype end = text.size();
    while (begin < end && text[begin] == u' ')
        ++begin;
    while (end > begin && text[end - 1] == u' ')
        --end;
    return text.mid(begin, end - begin);
}

bool IsNumeric(const QString& text) {
    return NumberReader(text).read().has_value();
}

bool IsNumeric(const QVariant& value) {
    if (value.typeId() == QMetaType::QString)
        return IsNumeric(value.toString());
    return isNumberType(value.typeId());
}

double ToDouble(const QString& text) {
    const std::optional<QByteArray> digits = NumberReader(text).read();
    if (!digits)
        throw RunTimeError(RunTime::TypeMismatch);
    return parsed(*digits);
}

double ToDouble(const QVariant& value) {
    if (!value.isValid())
        throw RunTimeError(RunTime::InvalidUseOfNull);
    if (value.typeId() == QMetaType::QString)
        return ToDouble(value.toString());
    if (value.typeId() == QMetaType::Bool)
        return value.toBool() ? -1 : 0;
    if (!isNumberType(value.typeId()))
        throw RunTimeError(RunTime::TypeMismatch);
    return value.toDouble();
}

qint16 ToInt16(double value) {
    return rounded<qint16>(value);
}
qint16 ToInt16(const QString& text) {
    return ToInt16(ToDouble(text));
}
qint16 ToInt16(const QVariant& value) {
    return ToInt16(ToDouble(value));
}

qint32 ToInt32(double value) {
    return rounded<qint32>(value);
}
qint32 ToInt32(const QString& text) {
    return ToInt32(ToDouble(text));
}
qint32 ToInt32(const QVariant& value) {
    return ToInt32(ToDouble(value));
}

QString NumberText(double value) {
    // Whole numbers of up to fifteen digits, which most are, read the same by the shorter way; "-0" is 0.
    if (std::abs(value) < 1e15 && value == std::trunc(value))
        return QString::number(static_cast<qint64>(value));
    return QString::number(value, 'G', 15).replace(u'.', currentFormat().Decimal);
}

QString DateTimeText(const QDateTime& value) {
    const bool midnight = value.time() == QTime(0, 0);
    return value.toString(midnight ? QStringLiteral("yyyy-MM-dd") : QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString ToText(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::UnknownType:
            throw RunTimeError(RunTime::InvalidUseOfNull);
        case QMetaType::QString:
            return value.toString();
        case QMetaType::Bool:
            return value.toBool() ? QStringLiteral("Prawda") : QStringLiteral("Fałsz");
        case QMetaType::Float:
        case QMetaType::Double:
            return NumberText(value.toDouble());
        case QMetaType::QDate:
            return value.toDate().toString(Qt::ISODate);
        case QMetaType::QTime:
            return value.toTime().toString(QStringLiteral("HH:mm:ss"));
        case QMetaType::QDateTime:
            return DateTimeText(value.toDateTime());
        default:
            if (isNumberType(value.typeId()))
                return value.toString();
            throw RunTimeError(RunTime::TypeMismatch);
    }
}

}  // namespace regalon
