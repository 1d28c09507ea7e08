#pragma once

#include <QString>

namespace regalon {

/// The folder of data source files that the machine is set up with; "" if there is none.
QString GetDefaultDsnDir();

/// Writes the data source file of a run, for what the site starts beside the program; nothing here reads it,
/// and it holds no password. It lies in the folder above, else in the program's folder, and takes the place
/// of one that a crash has left. Its path; "" after a failure, without a message.
QString WriteDsnFile(const QString& Server, const QString& Baza, const QString& Login);

/// Deletes a data source file, also one that is read-only. Nothing happens for an empty path, and a failure
/// is nobody's matter: the next run replaces the file.
void DeleteDsnFile(const QString& path);

}  // namespace regalon
