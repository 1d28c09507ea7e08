#include "shell/StartArguments.h"

#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <QStringList>

namespace regalon {

namespace {

/// An array element; 9 beyond the end.
const QString& element(const QStringList& values, qsizetype index) {
    if (index >= values.size()) {
        throw RunTimeError(RunTime::SubscriptOutOfRange);
    }
    return values[index];
}

}  // namespace

bool StartArguments::read(const QString& commandLine, StartArguments& arguments) {
    if (commandLine.isEmpty()) {
        return false;
    }
    QString line = commandLine;
    if (line.startsWith(u'-')) {
        line.prepend(u' ');
    }
    // What stands before the first " -" is element 0 and is not a value. A line that does not begin with "-"
    // has its first value there, so its second one is taken for the path and the user number is missing.
    const QStringList values = line.split(QStringLiteral(" -"));
    try {
        StartArguments found;
        found.ConnectionFilePath = element(values, 1);
        found.UserSign = ToInt16(element(values, 2));
        arguments = found;
        return true;
    } catch (const RunTimeError&) {
        return false;
    }
}

}  // namespace regalon
