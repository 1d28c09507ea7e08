// Starts the log of the error service and prints the log's name, or the box that told why there is none, in
// one line. Then it stays until its input ends. The tests run it under names and on machines that they
// choose:
//   LOG_MACHINE_NAME    the machine's name instead of the system's own
//   LOG_PROGRAM_GONE    takes the program's file away before the start
//   LOG_DEBUG_MODE      switches the debug mode on
#include "common/clsError.h"
#include "platform/MsgBox.h"

#include <QCoreApplication>
#include <QFile>
#include <QTextStream>

#include <sys/syscall.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>

// Stands before the system's own: the toolkit asks here for the machine's name.
extern "C" int uname(utsname* answer) noexcept {
    const auto result = static_cast<int>(syscall(SYS_uname, answer));
    if (const char* name = std::getenv("LOG_MACHINE_NAME")) {
        std::memset(answer->nodename, 0, sizeof answer->nodename);
        std::strncpy(answer->nodename, name, sizeof answer->nodename - 1);
    }
    return result;
}

int main(int argc, char** argv) {
    using namespace regalon;
    if (qEnvironmentVariableIsSet("LOG_PROGRAM_GONE")) {
        QFile::remove(QFile::decodeName(argv[0]));
    }
    const QCoreApplication program(argc, argv);
    const MsgBoxRecorder boxes;
    clsError service;
    service.setDebugMode(qEnvironmentVariableIsSet("LOG_DEBUG_MODE"));
    service.SetLogging(eLogMode::ToFile);

    QString line = service.logFileName();
    for (const MsgBoxRecorder::Message& box : boxes.messages()) {
        line += box.Title + u'|' + QString::number(box.Flags) + u'|' + box.Text;
    }
    QTextStream(stdout) << line.replace(QStringLiteral("\r\n"), QStringLiteral("|")) << Qt::endl;
    QTextStream(stdin).readAll();
    return 0;
}
