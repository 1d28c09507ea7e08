#include "label/PrintService.h"

#include "support/Events.h"

#include <QDir>
#include <QFile>

namespace regalon::test {

namespace {

bool write(const QString& path, const QString& text, bool program = false) {
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(text.toUtf8()) < 0)
        return false;
    // The service refuses programs that others may write.
    return !program || out.setPermissions(QFile::Permissions(0x7755));
}

QString run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished(60000);
    return QString::fromUtf8(process.readAllStandardOutput());
}

constexpr const char* kService = R"(Listen %1/socket
WebInterface No
Browsing No
DefaultAuthType None
PreserveJobFiles No
<Location />
  Allow all
</Location>
<Policy default>
  <Limit All>
    Allow all
  </Limit>
</Policy>
)";

constexpr const char* kFiles = R"(ServerRoot %1
ServerBin %1/bin
RequestRoot %1/spool
CacheDir %1/cache
StateDir %1/state
TempDir %1/spool
AccessLog %1/access
ErrorLog %1/error
PageLog %1/pages
)";

constexpr const char* kPrinters = R"(<DefaultPrinter Biuro>
DeviceURI tray:%1/Biuro
State Idle
Accepting Yes
</DefaultPrinter>
<Printer Etykiety>
DeviceURI tray:%1/Etykiety
State Idle
Accepting Yes
</Printer>
)";

// A printer of kind "tray": the document under the number of its job.
constexpr const char* kTray = R"(#!/bin/sh
[ $# = 0 ] && exit 0
tray=${DEVICE_URI#tray:}
cat "${6:--}" >"$tray/$1.part" && chmod a+r "$tray/$1.part" && mv "$tray/$1.part" "$tray/$(printf %04d "$1").pdf"
)";

}  // namespace

PrintService::PrintService() = default;

PrintService::~PrintService() {
    stop();
}

bool PrintService::configure() {
    const QDir folder(m_folder.path());
    for (const char* name : {"bin/backend", "spool", "cache", "state", "Biuro", "Etykiety"})
        folder.mkpath(QString::fromLatin1(name));
    // The service has its printers driven by an unprivileged user.
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755));
    for (const char* tray : {"Biuro", "Etykiety"})
        QFile::setPermissions(file(QString::fromLatin1(tray)), QFile::Permissions(0x7777));
    QFile::link(QStringLiteral("/usr/lib/cups/daemon"), file(QStringLiteral("bin/daemon")));
    const auto text = [&](const char* form) {
        return QString::fromLatin1(form).replace(QStringLiteral("%1"), m_folder.path());
    };
    return write(file(QStringLiteral("cupsd.conf")), text(kService)) &&
           write(file(QStringLiteral("cups-files.conf")), text(kFiles)) &&
           write(file(QStringLiteral("printers.conf")), text(kPrinters)) &&
           write(file(QStringLiteral("bin/backend/tray")), QString::fromLatin1(kTray), true);
}

bool PrintService::start() {
    if (!m_folder.isValid() || !configure()) {
        m_why = QStringLiteral("no folder for the print service");
        return false;
    }
    const QString socket = file(QStringLiteral("socket"));
    qputenv("CUPS_SERVER", QFile::encodeName(socket));
    // Options and a default printer of whoever runs the tests are none of them.
    qputenv("HOME", QFile::encodeName(m_folder.path()));
    qunsetenv("LPDEST");
    qunsetenv("PRINTER");
    m_service.setProcessChannelMode(QProcess::MergedChannels);
    m_service.start(QStringLiteral("/usr/sbin/cupsd"),
                    {QStringLiteral("-f"), QStringLiteral("-c"), file(QStringLiteral("cupsd.conf")),
                     QStringLiteral("-s"), file(QStringLiteral("cups-files.conf"))});
    const bool listening =
        m_service.waitForStarted() &&
        waitFor([&] { return QFile::exists(socket) || m_service.state() == QProcess::NotRunning; }, 30000) &&
        m_service.state() == QProcess::Running;
    if (!listening)
        m_why = m_service.errorString() + QString::fromUtf8(m_service.readAll());
    return listening;
}

void PrintService::stop() {
    if (m_service.state() == QProcess::NotRunning)
        return;
    m_service.terminate();
    if (!m_service.waitForFinished(10000)) {
        m_service.kill();
        m_service.waitForFinished();
    }
}

int PrintService::count(const QString& printer) const {
    return static_cast<int>(QDir(file(printer)).entryList({QStringLiteral("*.pdf")}).size());
}

QStringList PrintService::printed(const QString& printer, int count) const {
    waitFor([&] { return this->count(printer) >= count; }, 60000);
    QStringList files;
    const QDir tray(file(printer));
    for (const QString& name : tray.entryList({QStringLiteral("*.pdf")}, QDir::Files, QDir::Name))
        files.append(tray.filePath(name));
    return files;
}

QString textOf(const QString& pdf) {
    return run(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), pdf, QStringLiteral("-")});
}

QString scanned(const QString& pdf) {
    const QTemporaryDir folder;
    const QString picture = folder.filePath(QStringLiteral("page"));
    run(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QStringLiteral("200"), QStringLiteral("-png"),
                                     QStringLiteral("-singlefile"), pdf, picture});
    return run(QStringLiteral("zbarimg"), {QStringLiteral("-q"), picture + QStringLiteral(".png")}).trimmed();
}

}  // namespace regalon::test
