#include "common/DbConnectionString.h"

#include "platform/Convert.h"
#include "platform/Settings.h"

#include <algorithm>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

struct Pair {
    QString key;
    QString value;
};

// Cuts a value in braces or quotation marks, in which the closing sign is written twice. Leaves `position`
// behind it. False when it does not begin with an opening sign or is never closed before a ";" or the end.
bool takeQuoted(const QString& text, qsizetype& position, QString& value) {
    qsizetype i = position;
    while (i < text.size() && text.at(i) == u' ') {
        ++i;
    }
    if (i == text.size() || !QStringView(u"{'\"").contains(text.at(i))) {
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

Pair takePair(const QString& text, qsizetype& position) {
    Pair pair;
    const qsizetype equals = text.indexOf(u'=', position);
    const qsizetype semicolon = text.indexOf(u';', position);
    if (equals < 0 || (semicolon >= 0 && semicolon < equals)) {
        position = semicolon < 0 ? text.size() : semicolon + 1;
        return pair;
    }
    pair.key = TrimBlanks(text.mid(position, equals - position)).toLower();
    position = equals + 1;
    if (!takeQuoted(text, position, pair.value)) {
        const qsizetype end = text.indexOf(u';', position);
        pair.value = TrimBlanks(text.mid(position, end < 0 ? -1 : end - position));
        position = end < 0 ? text.size() : end;
    }
    ++position;
    return pair;
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

// Braces protect every sign but the closing brace, which is written twice.
QString quoted(const QString& value) {
    static constexpr QStringView special = u";{}[](),?*=!@'\"";
    const bool needsBraces =
        value.startsWith(u' ') || value.endsWith(u' ') ||
        std::any_of(value.begin(), value.end(), [](QChar c) { return special.contains(c); });
    if (!needsBraces) {
        return value;
    }
    QString inside = value;
    return u'{' + inside.replace(u'}', u"}}"_s) + u'}';
}

QString piece(const QString& key, const QString& value) {
    return value.isEmpty() ? QString() : key + u'=' + quoted(value) + u';';
}

QString serverPieces(const QString& server, const Settings& settings) {
    Address address = splitAddress(server);
    const bool instance = address.host.contains(u'\\');
    if (address.port.isEmpty() && !instance && settings.OdbcDefaultPort > 0) {
        address.port = QString::number(settings.OdbcDefaultPort);
    }
    if (address.port.isEmpty()) {
        return piece(u"SERVER"_s, address.host);
    }
    // A port that is no number still goes to the driver, which refuses it with its own text.
    if (settings.OdbcServerPort == Settings::ServerPort::Keep || !allDigits(address.port)) {
        return u"SERVER="_s + address.host + u',' + address.port + u';';
    }
    return piece(u"SERVER"_s, address.host) + piece(u"PORT"_s, address.port);
}

}  // namespace

DbTarget parseConnectionString(const QString& text) {
    DbTarget target;
    for (qsizetype position = 0; position < text.size();) {
        const Pair pair = takePair(text, position);
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
    QString text = u"DRIVER={"_s + settings.OdbcDriver + u"};"_s + serverPieces(target.server, settings);
    text += piece(u"UID"_s, target.user) + piece(u"PWD"_s, target.password) +
            piece(u"DATABASE"_s, target.database);
    text += piece(u"APP"_s, u"Regalon"_s);
    return text + settings.OdbcKeywords;
}

}  // namespace regalon
