// regalon-connect FILE: writes a connection file from lines "key:value" on standard input.
#include "common/AppContext.h"
#include "platform/RunTimeError.h"
#include "platform/Settings.h"
#include "shell/ConnectionFile.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>

namespace {

using namespace regalon;

int fail(const QString& what) {
    std::fprintf(stderr, "regalon-connect: %s\n", qPrintable(what));
    return 1;
}

/// Takes one line; false if the file cannot hold it: an unknown key, or a value with a blank or ";".
bool takeLine(const QString& line, ConnectionSettings& settings) {
    const qsizetype colon = line.indexOf(u':');
    QString* value = colon < 0 ? nullptr : ConnectionFile::setting(settings, QStringView(line).left(colon));
    if (value == nullptr) {
        return false;
    }
    *value = line.mid(colon + 1);
    return !value->contains(u' ') && !value->contains(u';');
}

/// Whether the program would read the settings back as they are; a line that is too long loses its end.
bool readsBack(const ConnectionSettings& settings) {
    ConnectionSettings back;
    ConnectionFile::readBytes(ConnectionFile::bytes(settings), back);
    return ConnectionFile::compose(back) == ConnectionFile::compose(settings);
}

int writeFile(const QString& path, const ConnectionSettings& settings) {
    try {
        if (!readsBack(settings)) {
            return fail(
                QStringLiteral("the settings are too long or hold a character that the file cannot keep"));
        }
        ConnectionFile::write(path, settings);
        return 0;
    } catch (const RunTimeError& error) {
        return fail(path + QStringLiteral(": ") + error.record().Description);
    }
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs(
            "usage: regalon-connect FILE\n"
            "Lines on standard input: Login, Haslo, Server, Baza, LoginSAP, HasloSAP, each \"key:value\".\n",
            stderr);
        return 2;
    }
    Settings::load().apply();
    ConnectionSettings settings;
    QTextStream input(stdin);
    for (QString line = input.readLine(); !line.isNull(); line = input.readLine()) {
        if (!line.isEmpty() && !takeLine(line, settings)) {
            return fail(QStringLiteral("not a setting, or a value with a blank or \";\": ") +
                        line.section(u':', 0, 0));
        }
    }
    return writeFile(QFile::decodeName(argv[1]), settings);
}
