#include "platform/Paths.h"

#include "platform/RunTimeError.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <QTemporaryDir>

#include <filesystem>
#include <optional>

namespace regalon::Paths {
namespace {

Mapping& currentMapping() {
    static Mapping current;
    return current;
}

bool isSeparator(QChar c) {
    return c == u'\\' || c == u'/';
}

QStringList parts(const QString& path) {
    QString uniform = path;
    return uniform.replace(u'\\', u'/').split(u'/', Qt::SkipEmptyParts);
}

/// "." goes, ".." takes its parent along but stops at the root of the drive or share.
QStringList withoutDots(const QStringList& all) {
    QStringList clean;
    for (const QString& part : all) {
        if (part == QLatin1String(".."))
            clean = clean.mid(0, clean.size() - 1);
        else if (part != QLatin1String("."))
            clean.append(part);
    }
    return clean;
}

QString joined(const QString& folder, const QString& name) {
    if (folder.isEmpty())
        return name;
    return folder.endsWith(u'/') ? folder + name : folder + u'/' + name;
}

/// The entry of a folder that has the name, apart from case. Folders are listed sorted, so the choice among
/// several is always the same.
std::optional<QString> entry(const QString& folder, const QString& name) {
    if (QFileInfo::exists(joined(folder, name)))
        return name;
    const QDir dir(folder.isEmpty() ? QStringLiteral(".") : folder);
    const QStringList names =
        dir.entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& candidate : names) {
        if (candidate.compare(name, Qt::CaseInsensitive) == 0)
            return candidate;
    }
    return std::nullopt;
}

QString resolved(const QString& root, const QStringList& names) {
    const QString plain = joined(root, names.join(u'/'));
    if (names.isEmpty() || QFileInfo::exists(plain))
        return names.isEmpty() ? root : plain;
    QString file = root;
    for (qsizetype i = 0; i < names.size(); ++i) {
        const std::optional<QString> found = entry(file, names[i]);
        if (!found)
            return joined(file, names.mid(i).join(u'/'));
        file = joined(file, *found);
    }
    return file;
}

/// A path of this machine; "\" in it separates only if no file has the name as written.
QString localFile(const QString& path) {
    if (!path.contains(u'\\') || QFileInfo::exists(path))
        return path;
    return resolved(path.startsWith(u'/') ? QStringLiteral("/") : QString(), parts(path));
}

QString driveFolder(QChar letter) {
    return letter == u'C' ? driveC() : currentMapping().Drives.value(letter);
}

/// What stands for "C:\Windows\Temp": a folder of this process alone, gone when the program ends. The
/// system's names for temporary files are the same for every user and every copy of the program, and in the
/// machine's common folder one would meet the other's.
QString temporaryFolder() {
    static const QTemporaryDir folder(machineTemporaryFolder() + QStringLiteral("/regalon-XXXXXX"));
    return folder.isValid() ? folder.path() : QString();
}

bool isTemporary(QChar drive, const QStringList& names) {
    return drive == u'C' && names.size() >= 2 &&
           names[0].compare(QLatin1String("Windows"), Qt::CaseInsensitive) == 0 &&
           names[1].compare(QLatin1String("Temp"), Qt::CaseInsensitive) == 0;
}

QString onDrive(QChar letter, const QString& rest) {
    const QChar drive = letter.toUpper();
    const QStringList names = withoutDots(parts(rest));
    const bool temporary = isTemporary(drive, names);
    const QString folder = temporary ? temporaryFolder() : driveFolder(drive);
    return folder.isEmpty() ? QString() : resolved(folder, temporary ? names.mid(2) : names);
}

QString onShare(const QString& path) {
    const QStringList all = parts(path);
    if (all.size() < 2)
        return {};
    const QString share = (all[0] + u'\\' + all[1]).toLower();
    const QString folder = currentMapping().Shares.value(share);
    return folder.isEmpty() ? QString() : resolved(folder, withoutDots(all.mid(2)));
}

bool isAsciiLetter(QChar c) {
    return (c >= u'A' && c <= u'Z') || (c >= u'a' && c <= u'z');
}

/// Opening a pipe would wait for its other end, and with it the whole program.
bool isPipe(const QString& file) {
    std::error_code ignored;
    return std::filesystem::is_fifo(QFile::encodeName(file).toStdString(), ignored);
}

/// Raises the failure that explains why a file cannot be opened or deleted.
[[noreturn]] void raiseAccess(const QString& file, bool mustExist) {
    const QFileInfo info(file);
    if (file.isEmpty() || !info.dir().exists())
        throw RunTimeError(RunTime::PathNotFound);
    if (mustExist && !info.exists())
        throw RunTimeError(RunTime::FileNotFound);
    throw RunTimeError(RunTime::PathFileAccess);
}

}  // namespace

const Mapping& mapping() {
    return currentMapping();
}

void setMapping(const Mapping& mapping) {
    currentMapping() = mapping;
}

QString driveC() {
    if (!currentMapping().DriveC.isEmpty())
        return currentMapping().DriveC;
    QString named = qEnvironmentVariable("REGALON_DRIVE_C");
    if (!named.isEmpty())
        return named;
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/regalon/drive_c");
}

QString machineTemporaryFolder() {
    // Without a text where the folder that TMPDIR names is not there; a file put together with that would lie
    // in the current folder.
    const QString folder = QDir::tempPath();
    return folder.isEmpty() ? QStringLiteral("/tmp") : folder;
}

QString toFile(const QString& path) {
    if (path.isEmpty())
        return {};
    if (path.size() >= 2 && path[1] == u':' && isAsciiLetter(path[0]))
        return onDrive(path[0], path.mid(2));
    if (path.size() >= 2 && path[0] == u'\\' && isSeparator(path[1]))
        return onShare(path);
    if (path[0] == u'\\')
        return onDrive(u'C', path);
    return localFile(path);
}

QString fromFile(const QString& file) {
    // What stands for the folder, and what is left of the file's name behind it.
    QString root = QStringLiteral("/");
    QString rest = file.mid(1);
    qsizetype longest = 0;
    const auto take = [&](const QString& folder, const QString& name) {
        const QString inside = joined(folder, QString());
        if (inside.size() > longest && file.startsWith(inside)) {
            longest = inside.size();
            root = name + u'\\';
            rest = file.mid(longest);
        }
    };
    take(driveC(), QStringLiteral("C:"));
    const Mapping& known = currentMapping();
    for (auto drive = known.Drives.cbegin(); drive != known.Drives.cend(); ++drive)
        take(drive.value(), drive.key() + QStringLiteral(":"));
    for (auto share = known.Shares.cbegin(); share != known.Shares.cend(); ++share)
        take(share.value(), QStringLiteral("\\\\") + share.key());
    return root + rest.replace(u'/', u'\\');
}

bool fileExists(const QString& path) {
    const QString file = toFile(path);
    return !file.isEmpty() && QFileInfo(file).isFile();
}

bool folderExists(const QString& path) {
    const QString file = toFile(path);
    return !file.isEmpty() && QFileInfo(file).isDir();
}

QString composePath(const QString& folder, const QString& name) {
    if (folder.isEmpty() || isSeparator(folder.back()))
        return folder + name;
    const bool local = folder.contains(u'/') && !folder.contains(u'\\');
    return folder + (local ? u'/' : u'\\') + name;
}

void open(QFile& file, const QString& path, QIODevice::OpenMode mode) {
    if (path.isEmpty())
        throw RunTimeError(RunTime::BadFileName);
    const QString name = toFile(path);
    file.setFileName(name);
    const bool reading = (mode & QIODevice::WriteOnly) == 0;
    if (name.isEmpty() || QFileInfo(name).isDir() || isPipe(name) || !file.open(mode))
        raiseAccess(name, reading);
}

void remove(const QString& path) {
    if (path.isEmpty())
        throw RunTimeError(RunTime::BadFileName);
    const QString name = toFile(path);
    if (name.isEmpty() || QFileInfo(name).isDir() || !QFile::remove(name))
        raiseAccess(name, true);
}

}  // namespace regalon::Paths
