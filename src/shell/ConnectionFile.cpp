#include "shell/ConnectionFile.h"

#include "common/AppContext.h"
#include "platform/CodePage.h"
#include "platform/Paths.h"
#include "platform/ReplaceFile.h"
#include "platform/RunTimeError.h"
#include "shell/clsCrypt.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace regalon::ConnectionFile {

namespace {

/// Unscrambling reads 259 characters at most, so a longer line need not be read to its end.
constexpr qint64 bytesThatMatter = 4096;

struct Key {
    const char16_t* name;
    QString ConnectionSettings::*setting;
};
// In the order in which the writer puts them; the reader takes any.
constexpr Key keys[] = {
    {u"Login", &ConnectionSettings::Login},       {u"Haslo", &ConnectionSettings::Haslo},
    {u"Server", &ConnectionSettings::Server},     {u"Baza", &ConnectionSettings::Baza},
    {u"LoginSAP", &ConnectionSettings::LoginSAP}, {u"HasloSAP", &ConnectionSettings::HasloSAP},
};

void storePiece(const QString& piece, ConnectionSettings& settings) {
    const qsizetype colon = piece.indexOf(u':');
    if (colon < 0) {
        return;
    }
    if (QString* value = setting(settings, QStringView(piece).left(colon))) {
        *value = piece.mid(colon + 1);
    }
}

QByteArray firstLine(const QByteArray& bytes) {
    qsizetype end = 0;
    while (end < bytes.size() && bytes[end] != '\r' && bytes[end] != '\n') {
        ++end;
    }
    return bytes.left(end);
}

/// The file itself behind links, so that a replaced file does not cut a link off.
QString realFile(const QString& path) {
    const QString name = Paths::toFile(path);
    const QString real = QFileInfo(name).canonicalFilePath();
    return real.isEmpty() ? name : real;
}

/// Raises what opening the path for writing raises, and changes nothing.
void requireWritable(const QString& path, const QString& name) {
    if (name.isEmpty() || QFileInfo::exists(name)) {
        QFile old;
        Paths::open(old, path, QIODevice::WriteOnly | QIODevice::Append | QIODevice::ExistingOnly);
    } else if (!QFileInfo(name).dir().exists()) {
        throw RunTimeError(RunTime::PathNotFound);
    }
}

}  // namespace

QString* setting(ConnectionSettings& settings, QStringView key) {
    for (const Key& known : keys) {
        if (key == QStringView(known.name)) {
            return &(settings.*known.setting);
        }
    }
    return nullptr;
}

void parse(const QString& plainLine, ConnectionSettings& settings) {
    QString piece;
    for (const QChar character : plainLine) {
        if (character == u';') {
            storePiece(piece, settings);
            piece.clear();
        } else if (character != u' ') {
            piece += character;
        }
    }
}

QString compose(const ConnectionSettings& settings) {
    QString line;
    for (const Key& key : keys) {
        line += QString::fromUtf16(key.name) + u':' + settings.*key.setting + u';';
    }
    return line;
}

void readBytes(const QByteArray& bytes, ConnectionSettings& settings) {
    try {
        parse(clsCrypt().EncryptString(CodePage::toText(firstLine(bytes))), settings);
    } catch (const RunTimeError&) {
        // A line that does not unscramble reads as one without keys.
    }
}

void read(const QString& path, ConnectionSettings& settings) {
    QFile file;
    try {
        Paths::open(file, path, QIODevice::ReadOnly);
    } catch (const RunTimeError&) {
        return;
    }
    readBytes(file.read(bytesThatMatter), settings);
}

QByteArray bytes(const ConnectionSettings& settings) {
    return CodePage::fromText(clsCrypt().DecryptString(compose(settings))) + "\r\n";
}

void write(const QString& path, const ConnectionSettings& settings) {
    const QByteArray line = bytes(settings);
    const QString name = realFile(path);
    requireWritable(path, name);
    // The file holds a password that is scrambled only, so nobody else may read it, not even for a moment.
    replaceFile(name, line);
}

}  // namespace regalon::ConnectionFile
