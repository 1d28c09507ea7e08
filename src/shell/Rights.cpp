#include "shell/Rights.h"

#include "common/AppContext.h"
#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <QStringList>

namespace regalon {

namespace {

/// An empty text has no parts; QString would find an empty one.
QStringList split(const QString& list) {
    return list.isEmpty() ? QStringList() : list.split(u',');
}

}  // namespace

QString Rights::GetRights(const QString& strFormName, qint16 intUserSign) {
    m_numbers.clear();
    try {
        readWindow(strFormName);
        return readUser(intUserSign);
    } catch (const std::exception&) {
        return {};
    }
}

void Rights::readWindow(const QString& strFormName) {
    m_recordset.closeIfOpen();
    m_recordset.Open(
        QStringLiteral("select LpShow from kolv_RightsName where FormName  = ") + SqlText(strFormName),
        mainConnection(m_context));
    QString joined;
    for (; !m_recordset.Eof(); m_recordset.MoveNext()) {
        joined += ToText(NullToValue(m_recordset.Value("LpShow"))) + u',';
    }
    if (joined.isEmpty()) {
        throw RunTimeError(RunTime::InvalidProcedureCall);
    }
    joined.chop(1);
    for (const QString& number : split(joined)) {
        m_numbers.append(ToInt16(number));
    }
}

/// A user's value is taken as it stands: one of two characters takes two positions.
QString Rights::readUser(qint16 intUserSign) {
    m_recordset.closeIfOpen();
    m_recordset.Open(QStringLiteral("select RightsNumber,RightsUser  from kolv_user where UserID = ") +
                         SqlNumber(int{intUserSign}),
                     mainConnection(m_context));
    if (m_recordset.Eof()) {
        return {};
    }
    const QStringList numbers = split(ToText(NullToValue(m_recordset.Value("RightsNumber"))));
    const QStringList values = split(ToText(NullToValue(m_recordset.Value("RightsUser"))));
    QString rights;
    for (const qint16 right : m_numbers) {
        for (qsizetype j = 0; j < numbers.size(); ++j) {
            if (ToInt16(numbers.at(j)) != right) {
                continue;
            }
            if (j >= values.size()) {
                throw RunTimeError(RunTime::SubscriptOutOfRange);
            }
            rights += values.at(j);
        }
    }
    return rights;
}

qint32 Rights::positionOf(qint16 number) const {
    return static_cast<qint32>(m_numbers.indexOf(number)) + 1;
}

bool HasRight(const QString& strRights, qint32 intPosition) {
    if (intPosition > strRights.size()) {
        return false;
    }
    if (intPosition < 1) {
        throw RunTimeError(RunTime::InvalidProcedureCall);
    }
    return ToInt16(QString(strRights.at(intPosition - 1))) > 0;
}

}  // namespace regalon
