#include "shell/Rights.h"

#include "common/AppContext.h"
#include "common/modSQL.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

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
        const QStringList window = readWindow(strFormName);
        return rightsOf(window, readUser(intUserSign));
    } catch (const std::exception&) {
        return {};
    }
}

/// The numbers stay texts: the user is asked for also where one of them is no number.
QStringList Rights::readWindow(const QString& strFormName) {
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
    return split(joined);
}

Rights::User Rights::readUser(qint16 intUserSign) {
    m_recordset.closeIfOpen();
    m_recordset.Open(QStringLiteral("select RightsNumber,RightsUser  from kolv_user where UserID = ") +
                         SqlNumber(int{intUserSign}),
                     mainConnection(m_context));
    if (m_recordset.Eof()) {
        return {};
    }
    return {split(ToText(NullToValue(m_recordset.Value("RightsNumber")))),
            split(ToText(NullToValue(m_recordset.Value("RightsUser"))))};
}

/// A user's value is taken as it stands: one of two characters takes two positions.
QString Rights::rightsOf(const QStringList& window, const User& user) {
    QString rights;
    for (const QString& number : window) {
        const qint16 right = ToInt16(number);
        m_numbers.append(right);
        for (qsizetype j = 0; j < user.numbers.size(); ++j) {
            if (ToInt16(user.numbers.at(j)) != right) {
                continue;
            }
            if (j >= user.values.size()) {
                throw RunTimeError(RunTime::SubscriptOutOfRange);
            }
            rights += user.values.at(j);
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
