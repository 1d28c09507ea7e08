#pragma once

#include <QByteArray>
#include <QString>

namespace regalon {

/// The .ini files of programs, by the rules of the system's private profiles:
/// - a line "[name]" opens a section, to the next such line; of sections of one name the first counts;
/// - a line that begins with ";" is a comment;
/// - names of sections and keys are compared without regard to case, blanks and tabs at their ends aside.
/// A file of more than 1 MiB is none, and neither is a folder or a pipe.
namespace PrivateProfile {

/// The value of a key: what stands behind the first "=" to the end of the line, without blanks and tabs at
/// its ends and then without one pair of quotes, " or ', around it all. A NUL ends it. Of keys of one name
/// the first counts. Of the value at most `size` - 1 bytes are taken; the rest is cut off, with what the cut
/// leaves of a character. `fallback` where there is no such file, section or key; never fails.
///
/// The text is UTF-8 if all of the file is, with or without its mark in front, else it is in the 8-bit code
/// page.
QString string(const QString& path, const QString& section, const QString& key, const QString& fallback,
               qsizetype size);

/// The lines of a section, one NUL between two of them, as their bytes stand in the file; a NUL in the file
/// ends a line too. Comments and lines of blanks are not among them. Empty where there is no such file or
/// section; never fails.
QByteArray section(const QString& path, const QString& section);

/// Puts lines, parted by NUL, in the place of all lines of a section, comments included; blank lines at its
/// end stay. A section or a file that is not there is made. Other lines keep their bytes, and new ones end as
/// the first line of the file does, else with CR LF. False, and nothing is changed, if the file cannot be
/// read or replaced.
bool writeSection(const QString& path, const QString& section, const QByteArray& lines);

/// The same on the bytes of a file.
QString stringIn(const QByteArray& file, const QString& section, const QString& key, const QString& fallback,
                 qsizetype size);
QByteArray sectionIn(const QByteArray& file, const QString& section);
QByteArray withSection(const QByteArray& file, const QString& section, const QByteArray& lines);

}  // namespace PrivateProfile
}  // namespace regalon
