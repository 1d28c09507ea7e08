#include "common/DbConnectionString.h"

#include "common/DbErrors.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"
#include "platform/Settings.h"

#include <algorithm>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

struct Pair {
    QString key;
    QString value;
};

// The signs that open a quoted value: each form knows its own only, so that a password may begin with those
// of the other.
constexpr QStringView oleDbSigns = u"'\"";
constexpr QStringView odbcSigns = u"{";

// Cuts a quoted value, in which the closing sign is written twice. Leaves `position` behind it. False when it
// does not begin with an opening sign or is never closed before a ";" or the end.
bool takeQuoted(const QString& text, QStringView signs, qsizetype& position, QString& value) {
    qsizetype i = position;
    while (i < text.size() && text.at(i) == u' ') {
        ++i;
    }
    if (i == text.size() || !signs.contains(text.at(i))) {
        return false;
    }
    const QChar closing = text.at(i) == u'{' ? QChar(u'}') : text.at(i);
    QString taken;
    for (++i; i < text.size(); ++i) {
        if (text.at(i) != closing) {
            taken += text.at(i);
        } else if (i + 1 < text.size() && text.at(i + 1) == closing) {
            taken += text.at(i++);
        } else {
            const qsizetype end = text.indexOf(u';', i);
            const QString rest = text.mid(i + 1, (end < 0 ? text.size() : end) - i - 1);
            if (!TrimBlanks(rest).isEmpty()) {
                return false;
            }
            value = taken;
            position = end < 0 ? text.size() : end;
            return true;
        }
    }
    return false;
}

Pair takePair(const QString& text, QStringView signs, qsizetype& position) {
    Pair pair;
    const qsizetype equals = text.indexOf(u'=', position);
    const qsizetype semicolon = text.indexOf(u';', position);
    if (equals < 0 || (semicolon >= 0 && semicolon < equals)) {
        position = semicolon < 0 ? text.size() : semicolon + 1;
        return pair;
    }
    pair.key = TrimBlanks(text.mid(position, equals - position)).toLower();
    position = equals + 1;
    if (!takeQuoted(text, signs, position, pair.value)) {
        const qsizetype end = text.indexOf(u';', position);
        pair.value = TrimBlanks(text.mid(position, end < 0 ? -1 : end - position));
        position = end < 0 ? text.size() : end;
    }
    ++position;
    return pair;
}

// The first key that only one of the forms has decides: what a value further on holds does not.
QStringView signsOf(const QString& text) {
    for (qsizetype position = 0; position < text.size();) {
        const QString key = takePair(text, {}, position).key;
        if (key == u"driver") {
            return odbcSigns;
        }
        if (key == u"provider") {
            break;
        }
    }
    return oleDbSigns;
}

bool allDigits(const QString& text) {
    return !text.isEmpty() &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

struct Address {
    QString host;  ///< with "\instance" behind it where one is named
    QString port;  ///< empty where none is named
};

Address splitAddress(QString server) {
    server = TrimBlanks(server);
    if (server.startsWith(u"tcp:", Qt::CaseInsensitive)) {
        server.remove(0, 4);
    }
    Address address{server, QString()};
    const qsizetype comma = server.indexOf(u',');
    // More than one colon is an address of version 6.
    const qsizetype colon = server.count(u':') == 1 ? server.indexOf(u':') : -1;
    const qsizetype sign = comma >= 0 ? comma : colon;
    if (sign >= 0) {
        address.host = TrimBlanks(server.left(sign));
        address.port = TrimBlanks(server.mid(sign + 1));
    }
    if (address.host.isEmpty() || address.host == u"." ||
        address.host.compare(u"(local)", Qt::CaseInsensitive) == 0) {
        address.host = u"localhost"_s;
    }
    return address;
}

// FreeTDS takes what stands in braces as it is; every other driver wants a closing brace written twice.
bool doublesBraces(const Settings& settings) {
    return !settings.OdbcDriver.contains(u"tds", Qt::CaseInsensitive);
}

QString quoted(const QString& key, const QString& value, const Settings& settings) {
    const bool needsBraces =
        value.contains(u';') || value.startsWith(u'{') || value.startsWith(u' ') || value.endsWith(u' ');
    if (!needsBraces) {
        return value;
    }
    // FreeTDS has no way to write these two signs inside a value: it would read the rest as keys of its own.
    if (!doublesBraces(settings) && value.contains(u"};")) {
        throw RunTimeError(DbError::WrongValueType,
                           u"The driver takes no \"};\" within the value of "_s + key + u'.');
    }
    QString inside = value;
    if (doublesBraces(settings)) {
        inside.replace(u'}', u"}}"_s);
    }
    return u'{' + inside + u'}';
}

class PieceWriter {
public:
    explicit PieceWriter(const Settings& settings) : m_settings(settings) {}

    void add(const QString& key, const QString& value) {
        if (!value.isEmpty()) {
            m_text += key + u'=' + quoted(key, value, m_settings) + u';';
        }
    }
    QString text() const { return m_text; }

private:
    const Settings& m_settings;
    QString m_text;
};

void addServer(PieceWriter& writer, const QString& server, const Settings& settings) {
    Address address = splitAddress(server);
    const bool instance = address.host.contains(u'\\');
    if (address.port.isEmpty() && !instance && settings.OdbcDefaultPort > 0) {
        address.port = QString::number(settings.OdbcDefaultPort);
    }
    // A port that is no number still goes to the driver, which refuses it with its own text.
    const bool together = settings.OdbcServerPort == Settings::ServerPort::Keep || !allDigits(address.port);
    writer.add(u"SERVER"_s,
               together && !address.port.isEmpty() ? address.host + u',' + address.port : address.host);
    writer.add(u"PORT"_s, together ? QString() : address.port);
}

}  // namespace

DbTarget parseConnectionString(const QString& text) {
    DbTarget target;
    const QStringView signs = signsOf(text);
    for (qsizetype position = 0; position < text.size();) {
        const Pair pair = takePair(text, signs, position);
        if (pair.key == u"data source" || pair.key == u"server") {
            target.server = pair.value;
        } else if (pair.key == u"initial catalog" || pair.key == u"database") {
            target.database = pair.value;
        } else if (pair.key == u"user id" || pair.key == u"uid") {
            target.user = pair.value;
        } else if (pair.key == u"password" || pair.key == u"pwd") {
            target.password = pair.value;
        }
    }
    return target;
}

QString driverConnectionString(const DbTarget& target, const Settings& settings) {
    PieceWriter writer(settings);
    addServer(writer, target.server, settings);
    writer.add(u"UID"_s, target.user);
    writer.add(u"PWD"_s, target.password);
    writer.add(u"DATABASE"_s, target.database);
    writer.add(u"APP"_s, u"Regalon"_s);
    return u"DRIVER={"_s + settings.OdbcDriver + u"};"_s + writer.text() + settings.OdbcKeywords;
}

}  // namespace regalon
