#include "common/modSQL.h"

#include "common/clsError.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

const QString nullLiteral = u"NULL"_s;

QString numberLiteral(const QVariant& value) {
    if (!value.isValid()) {
        return SqlText(value);
    }
    if (IsNumeric(value)) {
        return NumberText(ToDouble(value)).replace(u',', u'.');
    }
    if (!ToText(value).isEmpty()) {
        throw RunTimeError(clsError::userErrorNumber, u"Nieprawidłowy format liczby."_s, u"modSQL"_s);
    }
    return SqlText(value);
}

}  // namespace

QString SqlText(const QVariant& value, bool noNationalPrefix) {
    try {
        if (!value.isValid()) {
            return nullLiteral;
        }
        QString text = ToText(value);
        if (TrimBlanks(text).isEmpty()) {
            return nullLiteral;
        }
        return (noNationalPrefix ? u"'"_s : u"N'"_s) + text.replace(u'\'', u"''"_s) + u'\'';
    } catch (...) {
        return {};
    }
}

QString SqlNumber(const QVariant& value) {
    try {
        return numberLiteral(value);
    } catch (...) {
        // The caller reports it under its own name, as the system's own message.
        throw RunTimeError(clsError::userErrorNumber, currentError().Description, u"modSQL"_s);
    }
}

qint16 FlagToCheck(const QVariant& value) {
    return value.typeId() == QMetaType::QString && value.toString() == u"Y" ? 1 : 0;
}

QString CheckToFlag(const QVariant& value) {
    bool ok = false;
    return value.toInt(&ok) == 1 && ok ? u"Y"_s : u"N"_s;
}

QVariant NullToValue(const QVariant& value, const QVariant& fallback) {
    return value.isValid() ? value : fallback;
}

}  // namespace regalon
