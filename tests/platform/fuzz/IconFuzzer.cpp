#include "platform/fuzz/IconChecks.h"

#include <QGuiApplication>
#include <QImageReader>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // Lives to the end of the program: pixmaps need it.
    static QGuiApplication application(*argc, *argv);
    // The toolkit's own decoders tell much and take much; they are not what is looked at here.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    QImageReader::setAllocationLimit(8);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    regalon::test::checkIcon(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}
