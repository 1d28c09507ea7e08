#include "common/modFunctions.h"

#include "common/ProgramFolder.h"
#include "common/modAPI_Registry.h"
#include "platform/CodePage.h"
#include "platform/Convert.h"
#include "platform/Paths.h"
#include "platform/RunTimeError.h"

#include <QFile>

namespace regalon {

using namespace Qt::StringLiterals;

namespace {

const QString programTitle = u"Regalon"_s;
constexpr qint32 typeText = 1;

QByteArray dsnText(const QString& Server, const QString& Baza, const QString& Login) {
    const QString lines[] = {
        u"[ODBC]"_s,
        // Whoever takes the file up knows this driver; it is not the one of this program.
        u"DRIVER=SQL Server"_s,
        u"UID="_s + Login,
        u"Network=DBMSSOCN"_s,
        u"LANGUAGE=us_english"_s,
        u"DATABASE="_s + Baza,
        u"SERVER="_s + Server,
        QString(),
    };
    QString text;
    for (const QString& line : lines) {
        text += line + u"\r\n"_s;
    }
    return CodePage::fromText(text);
}

void write(const QString& path, const QByteArray& text) {
    QFile file;
    Paths::open(file, path, QIODevice::WriteOnly | QIODevice::Truncate);
    if (file.write(text) != text.size() || !file.flush()) {
        file.remove();
        throw RunTimeError(RunTime::DiskFull);
    }
}

}  // namespace

QString GetDefaultDsnDir() {
    QString folder;
    RegValueRead(u"HKEY_LOCAL_MACHINE\\\\SOFTWARE\\\\ODBC\\\\ODBC.INI\\\\ODBC File DSN"_s, u"DefaultDSNDir"_s,
                 folder, typeText);
    return folder;
}

QString WriteDsnFile(const QString& Server, const QString& Baza, const QString& Login) {
    try {
        const QString given = GetDefaultDsnDir();
        const QString folder = given.isEmpty() ? programFolder() : given;
        const QString path =
            folder + u'\\' + TrimBlanks(programTitle) + TrimBlanks(Server) + TrimBlanks(Baza) + u".dsn"_s;
        write(path, dsnText(Server, Baza, Login));
        return path;
    } catch (const std::exception&) {
        return {};
    }
}

void DeleteDsnFile(const QString& path) {
    if (path.isEmpty()) {
        return;
    }
    try {
        Paths::remove(path);
    } catch (const RunTimeError&) {
        // Somebody has it open or it is gone.
    }
}

}  // namespace regalon
