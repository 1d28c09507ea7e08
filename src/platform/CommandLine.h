#pragma once

#include <QString>
#include <QStringList>

namespace regalon::CommandLine {

/// The command line as the system reads it: the arguments without the program's name, joined by one blank
/// each.
QString join(const QStringList& arguments);

}  // namespace regalon::CommandLine
