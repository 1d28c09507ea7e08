#include "common/DbOdbc.h"

#include "common/DbErrors.h"

#include <QRegularExpression>

#include <algorithm>
#include <array>

namespace regalon::odbc {

using namespace Qt::StringLiterals;

namespace {

// Refused logins: unknown user or wrong password, no trusted connection, disabled, locked, expired.
constexpr std::array loginErrors{18456, 18452, 18450, 18451, 18470, 18486, 18487, 18488};
// Unknown database. Some servers say next that the login failed, which is not the cause.
constexpr std::array databaseErrors{4060, 911};
// NULL refused, foreign key or check, duplicate in an index, duplicate key.
constexpr std::array integrityErrors{515, 547, 2601, 2627};
// FreeTDS counts its own failures from 20000 to 20999: no connection, no host, a dead peer.
constexpr qint32 firstDriverError = 20000;
constexpr qint32 lastDriverError = 20999;
constexpr qint32 driverTimeout = 20003;
constexpr std::array unreachedErrors{20009, 20013};

template <class Numbers>
bool holds(const Numbers& numbers, qint32 number) {
    return std::find(numbers.begin(), numbers.end(), number) != numbers.end();
}

bool fromServer(const Diagnostic& record) {
    return record.native > 0 && (record.native < firstDriverError || record.native > lastDriverError);
}

bool isWarning(const Diagnostic& record) {
    return record.state.startsWith(u"01");
}

qint32 numberOf(const Diagnostic& record) {
    if (holds(loginErrors, record.native) || record.state == u"28000") {
        return DbError::Authentication;
    }
    if (record.state.startsWith(u"HYT") || record.native == driverTimeout) {
        return DbError::Timeout;
    }
    if (record.state == u"23000" || holds(integrityErrors, record.native)) {
        return DbError::Integrity;
    }
    if (record.state == u"IM002" || record.state == u"IM003" || record.text.contains(u"Can't open lib")) {
        return DbError::NoDriver;
    }
    const bool statementState = record.state.startsWith(u"42") || record.state.startsWith(u"22");
    return fromServer(record) || statementState ? DbError::Statement : DbError::General;
}

// The record that tells the cause. A refused login stands between "cannot connect" records, and a server's
// error may follow its own information messages, so the first record is not always the one.
const Diagnostic* telling(const QVector<Diagnostic>& records) {
    const auto database = std::find_if(records.begin(), records.end(),
                                       [](const Diagnostic& r) { return holds(databaseErrors, r.native); });
    if (database != records.end()) {
        return &*database;
    }
    const auto login = std::find_if(records.begin(), records.end(),
                                    [](const Diagnostic& r) { return holds(loginErrors, r.native); });
    if (login != records.end()) {
        return &*login;
    }
    const auto server = std::find_if(records.begin(), records.end(),
                                     [](const Diagnostic& r) { return fromServer(r) && !isWarning(r); });
    if (server != records.end()) {
        return &*server;
    }
    const auto error = std::find_if(records.begin(), records.end(), [](const Diagnostic& r) {
        return r.native != 0 || r.text.contains(u"Can't open lib");
    });
    if (error != records.end()) {
        return &*error;
    }
    return records.isEmpty() ? nullptr : &records.first();
}

}  // namespace

QString withoutDriverTags(const QString& text) {
    static const QRegularExpression tags(
        QStringLiteral("^(\\[(unixODBC|iODBC|Driver Manager|FreeTDS|Microsoft|SQL Server|"
                       "ODBC Driver [0-9]+ for SQL Server)\\] *)+"));
    QString rest = text;
    return rest.remove(tags);
}

QVector<Diagnostic> diagnostics(SQLSMALLINT kind, SQLHANDLE handle) {
    QVector<Diagnostic> records;
    std::array<SQLWCHAR, 6> state{};
    std::array<SQLWCHAR, 4096> text{};
    SQLINTEGER native = 0;
    SQLSMALLINT length = 0;
    for (SQLSMALLINT i = 1; SQL_SUCCEEDED(SQLGetDiagRecW(kind, handle, i, state.data(), &native, text.data(),
                                                         static_cast<SQLSMALLINT>(text.size()), &length));
         ++i) {
        const auto taken = std::min<qsizetype>(length, static_cast<qsizetype>(text.size()) - 1);
        records.append(
            {QString::fromUtf16(reinterpret_cast<const char16_t*>(state.data()), 5), native,
             withoutDriverTags(QString::fromUtf16(reinterpret_cast<const char16_t*>(text.data()), taken))});
    }
    return records;
}

RunTimeError toRunTimeError(const QVector<Diagnostic>& records, const QString& source) {
    const Diagnostic* record = telling(records);
    if (!record) {
        return {DbError::General, u"The database driver failed without a message."_s, source};
    }
    return {numberOf(*record), record->text, source};
}

bool serverUnreached(const QVector<Diagnostic>& records) {
    // FreeTDS heads every failed login with 08001 and no number; a numbered 08001 is another driver's cause.
    return std::any_of(records.begin(), records.end(), [](const Diagnostic& record) {
        return holds(unreachedErrors, record.native) || (record.state == u"08001" && record.native != 0);
    });
}

}  // namespace regalon::odbc
