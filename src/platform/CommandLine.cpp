#include "platform/CommandLine.h"

namespace regalon::CommandLine {

QString join(const QStringList& arguments) {
    return arguments.join(u' ');
}

}  // namespace regalon::CommandLine
