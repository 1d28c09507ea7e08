#pragma once

#include <QFile>
#include <QMap>
#include <QString>

namespace regalon {

/// Turns the system's paths ("C:\Regalon\connect.txt", "\\server\share\x.bmp") into files of this machine.
/// Code composes and keeps paths as the system writes them; they are turned at the moment of access only.
namespace Paths {

/// Where drives and shares lie on this machine.
struct Mapping {
    /// Folder of drive C; empty: the environment variable REGALON_DRIVE_C, else
    /// $XDG_DATA_HOME/regalon/drive_c.
    QString DriveC;
    /// Upper-case drive letter to folder; C is not looked up here.
    QMap<QChar, QString> Drives;
    /// "server\share" in lower case to folder.
    QMap<QString, QString> Shares;
};

const Mapping& mapping();
/// Set once at the program's start. Forgets nothing of files already open.
void setMapping(const Mapping& mapping);

/// Folder of drive C; it need not exist.
QString driveC();

/// The machine's temporary folder, as a path of this machine: TMPDIR if such a folder is there, else /tmp;
/// never empty. Other than what is put into C:\Windows\Temp, files there outlive the program.
QString machineTemporaryFolder();

/// The file of this machine that a path means:
/// - a path beginning with "/" is a path of this machine and passes through; where no file has the very name,
/// "\" in it
///   is taken as a separator too;
/// - a drive letter or "\\server\share" is mapped; ".." never climbs above the mapped folder; "\" alone in
/// front means
///   drive C;
/// - "C:\Windows\Temp" is not on drive C: a temporary folder of this process stands for it;
/// - anything else is relative to the current folder.
/// Both separators count, mixed as they come. Every part that differs only in case from an existing name
/// finds it (the exact name wins, then the first in alphabetic order). A file that does not exist gets the
/// name it would have. Returns an empty text for an empty path and for a drive or share without mapping;
/// opening that fails.
QString toFile(const QString& path);

/// The system's path of a file of this machine, given by its absolute name: on the drive or share whose
/// folder holds it, the deepest one of several. A file outside of them keeps its "/" in front and has "\"
/// between its names, which toFile() takes back.
QString fromFile(const QString& file);

/// True if the path means an existing file (not a folder).
bool fileExists(const QString& path);
bool folderExists(const QString& path);

/// Folder and name joined by "\", or by "/" in a folder path of this machine. A separator at the folder's end
/// is not doubled.
QString composePath(const QString& folder, const QString& name);

/// Opens `file` on the path. Raises 53 (no such file, when reading), 76 (no such folder, drive or share), 75
/// (a folder, a pipe, no permission) or 52 (empty path).
void open(QFile& file, const QString& path, QIODevice::OpenMode mode);

/// Deletes a file. Raises 53, 76 or 75.
void remove(const QString& path);

}  // namespace Paths
}  // namespace regalon
