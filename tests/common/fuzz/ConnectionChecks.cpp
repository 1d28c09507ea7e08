#include "common/fuzz/ConnectionChecks.h"

#include "common/DbConnectionString.h"
#include "common/DbErrors.h"
#include "platform/CodePage.h"
#include "platform/RunTimeError.h"
#include "platform/Settings.h"
#include "support/Require.h"

#include <QDir>
#include <QMap>

namespace regalon::test {
namespace {

using namespace Qt::StringLiterals;

void checkSettings(const Settings& settings) {
    require(!settings.OdbcDriver.isEmpty(), "a driver is in use");
    require(settings.OdbcDefaultPort >= 0 && settings.OdbcDefaultPort <= 65535, "the default port is a port");
    require(CodePage::isKnown(settings.CodePageName), "the code page in use is known");
    RegionalFormat format;
    require(RegionalFormat::fromLocale(settings.Regional.Locale, format), "the regional format is known");
    for (const QString& folder : settings.PathMapping.Drives)
        require(QDir::isAbsolutePath(folder), "a drive lies in a whole path");
    for (const QString& folder : settings.PathMapping.Shares)
        require(QDir::isAbsolutePath(folder), "a share lies in a whole path");
    for (const QString& problem : settings.Problems)
        require(!problem.isEmpty(), "each problem has a text");
}

/// The pieces of a driver's text as FreeTDS cuts them: a value in braces ends at the first "}" before a ";"
/// or the end.
QMultiMap<QString, QString> piecesOfFreeTds(const QString& text) {
    QMultiMap<QString, QString> pieces;
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype equals = text.indexOf(u'=', position);
        require(equals > position, "each piece has a key");
        const bool braced = text.mid(equals + 1, 1) == u"{";
        const QString ending = braced ? u"};"_s : u";"_s;
        const qsizetype end = text.indexOf(ending, equals + 1);
        require(end >= 0, "each piece ends");
        const qsizetype start = braced ? equals + 2 : equals + 1;
        pieces.insert(text.mid(position, equals - position), text.mid(start, end - start));
        position = end + ending.size();
    }
    return pieces;
}

void checkForFreeTds(const DbTarget& target) {
    Settings settings;
    settings.OdbcKeywords.clear();
    const QMultiMap<QString, QString> pieces = piecesOfFreeTds(driverConnectionString(target, settings));
    require(pieces.values(u"UID"_s).join(u'|') == target.user, "FreeTDS gets the user");
    require(pieces.values(u"PWD"_s).join(u'|') == target.password, "FreeTDS gets the password");
    require(pieces.values(u"DATABASE"_s).join(u'|') == target.database, "FreeTDS gets the database");
    require(pieces.count(u"SERVER"_s) == 1 && pieces.count(u"PORT"_s) <= 1, "FreeTDS gets one server");
    const auto known =
        QStringList{u"DRIVER"_s, u"SERVER"_s, u"PORT"_s, u"UID"_s, u"PWD"_s, u"DATABASE"_s, u"APP"_s};
    for (const QString& key : pieces.uniqueKeys())
        require(known.contains(key), "FreeTDS gets no other key");
}

/// By its own rule of braces, which this program's reader knows too.
void checkForMicrosoftsDriver(const DbTarget& target) {
    Settings settings;
    settings.OdbcDriver = u"ODBC Driver 18 for SQL Server"_s;
    settings.OdbcKeywords.clear();
    settings.OdbcServerPort = Settings::ServerPort::Keep;
    const DbTarget got = parseConnectionString(driverConnectionString(target, settings));
    require(got.user == target.user, "Microsoft's driver gets the user");
    require(got.password == target.password, "Microsoft's driver gets the password");
    require(got.database == target.database, "Microsoft's driver gets the database");
    require(!got.server.isEmpty(), "Microsoft's driver gets a server");
}

}  // namespace

void checkConnection(const QByteArray& bytes) {
    const qsizetype zero = bytes.indexOf('\0');
    const Settings settings = Settings::fromText(QString::fromUtf8(bytes.left(zero)));
    checkSettings(settings);
    const DbTarget target = parseConnectionString(QString::fromUtf8(bytes.mid(zero + 1)));
    checkForMicrosoftsDriver(target);
    try {
        checkForFreeTds(target);
        driverConnectionString(target, settings);
    } catch (const RunTimeError& refused) {
        require(refused.number() == DbError::WrongValueType,
                "only a value that cannot be written is refused");
    }
}

}  // namespace regalon::test
