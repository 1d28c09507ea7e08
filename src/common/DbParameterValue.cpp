#include "common/DbParameterValue.h"

#include "common/DbErrors.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <QDateTime>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace regalon::odbc {

using namespace Qt::StringLiterals;

namespace {

constexpr int moneyScale = 4;

[[noreturn]] void wrongType(const DbParameterInfo& info) {
    throw RunTimeError(DbError::WrongValueType,
                       u"The value does not fit the type of parameter %1."_s.arg(info.name));
}

bool isText(const QVariant& value) {
    return value.typeId() == QMetaType::QString;
}

struct Range {
    qint64 lowest;
    qint64 highest;
};

Range rangeOf(int type) {
    switch (type) {
        case DbType::TinyInt:
            return {0, std::numeric_limits<quint8>::max()};
        case DbType::SmallInt:
            return {std::numeric_limits<qint16>::min(), std::numeric_limits<qint16>::max()};
        case DbType::BigInt:
            return {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()};
        default:
            return {std::numeric_limits<qint32>::min(), std::numeric_limits<qint32>::max()};
    }
}

// A whole number without the detour over a double, which cannot hold every bigint.
bool exactWhole(const QVariant& value, qint64& number) {
    bool ok = false;
    switch (value.typeId()) {
        case QMetaType::QString:
            number = TrimBlanks(value.toString()).toLongLong(&ok);
            return ok;
        case QMetaType::Bool:
            number = value.toBool() ? 1 : 0;
            return true;
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
            number = value.toLongLong(&ok);
            return ok;
        default:
            return false;
    }
}

}  // namespace

double realNumber(const QVariant& value, const DbParameterInfo& info) {
    bool ok = false;
    const double number = isText(value) ? TrimBlanks(value.toString()).toDouble(&ok) : value.toDouble(&ok);
    if (!ok || !std::isfinite(number)) {
        wrongType(info);
    }
    return number;
}

qint64 wholeNumber(const QVariant& value, const DbParameterInfo& info) {
    qint64 number = 0;
    if (!exactWhole(value, number)) {
        const double rounded = std::nearbyint(realNumber(value, info));
        constexpr double largestExact = 9007199254740992.0;  // 2^53
        if (std::abs(rounded) > largestExact) {
            wrongType(info);
        }
        number = static_cast<qint64>(rounded);
    }
    const Range range = rangeOf(info.type);
    if (number < range.lowest || number > range.highest) {
        wrongType(info);
    }
    return info.type == DbType::Boolean ? (number != 0 ? 1 : 0) : number;
}

QByteArray decimalText(const QVariant& value, const DbParameterInfo& info) {
    static const QRegularExpression plain(u"^[+-]?(\\d+\\.?\\d*|\\.\\d+)$"_s);
    if (isText(value)) {
        const QString text = TrimBlanks(value.toString());
        if (plain.match(text).hasMatch()) {
            return text.toLatin1();
        }
    }
    const int scale = info.type == DbType::Currency ? moneyScale : info.scale;
    return QByteArray::number(realNumber(value, info), 'f', scale);
}

QString parameterText(const QVariant& value) {
    if (value.typeId() == QMetaType::QDateTime) {
        return value.toDateTime().toString(u"yyyy-MM-ddTHH:mm:ss.zzz"_s);
    }
    return ToText(value);
}

}  // namespace regalon::odbc
