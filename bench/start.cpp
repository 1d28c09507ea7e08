// start: process start to a drawn plan over the start of an empty window that sends the same statements bare.

#include "Measure.h"
#include "Recording.h"
#include "StartReport.h"
#include "support/LocalWarehouse.h"

#include <QCoreApplication>
#include <QFile>
#include <QProcess>

#include <cstdio>
#include <stdexcept>

namespace {

using regalon::test::LocalWarehouse;

constexpr int rounds = 31;

struct Start {
    double milliseconds = 0;
    double residentMib = 0;
};

Start run(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    const double begin = bench::monotonicMilliseconds();
    process.start(QStringLiteral(REGALON_BINARY_DIR "/bin/") + program, arguments);
    if (!process.waitForFinished(60000) || process.exitCode() != 0)
        throw std::runtime_error(program.toStdString() + " failed");
    Start start;
    double drawn = 0;
    long resident = 0;
    if (std::sscanf(process.readAllStandardOutput().constData(), "drawn %lf rss %ld", &drawn, &resident) != 2)
        throw std::runtime_error(program.toStdString() + " gave no report");
    start.milliseconds = drawn - begin;
    start.residentMib = static_cast<double>(resident) / 1024;
    return start;
}

void writeConnectionFile(const LocalWarehouse& warehouse) {
    QProcess process;
    process.start(QStringLiteral(REGALON_BINARY_DIR "/bin/regalon-connect"), {warehouse.connectFile()});
    process.write(
        "Login:" + LocalWarehouse::login().toUtf8() + "\nHaslo:" + LocalWarehouse::password().toUtf8() +
        "\nServer:" + warehouse.server().toUtf8() + "\nBaza:" + LocalWarehouse::database().toUtf8() + '\n');
    process.closeWriteChannel();
    if (!process.waitForFinished() || process.exitCode() != 0)
        throw std::runtime_error("regalon-connect failed");
}

/// Keeps the statements that the client sends on its way to the plan, one line each as in the server's trace.
QString recordStatements(LocalWarehouse& warehouse) {
    warehouse.clearTrace();
    run(QStringLiteral("bench-start-client"), {warehouse.connectFile()});
    const QString path = warehouse.folder() + QStringLiteral("/start.trace");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("cannot write the statements");
    for (const LocalWarehouse::TraceEntry& entry : warehouse.entries()) {
        QStringList fields{entry.session, entry.kind, entry.text};
        fields.append(entry.values);
        for (QString& field : fields)
            field.replace(u'\\', QStringLiteral("\\\\"))
                .replace(u'\n', QStringLiteral("\\n"))
                .replace(u'\r', QStringLiteral("\\r"))
                .replace(u'\t', QStringLiteral("\\t"));
        file.write(fields.join(u'\t').toUtf8() + '\n');
    }
    return path;
}

void measure() {
    LocalWarehouse warehouse;
    if (!warehouse.start())
        throw std::runtime_error(warehouse.why().toStdString());
    qputenv("REGALON_DRIVE_C", warehouse.driveC().toLocal8Bit());
    writeConnectionFile(warehouse);
    const QString trace = recordStatements(warehouse);
    const QString odbc = QString::fromStdString(bench::odbcString(warehouse));
    bench::Samples client;
    bench::Samples empty;
    bench::Samples ratios;
    bench::Samples clientMemory;
    bench::Samples emptyMemory;
    for (int i = 0; i < rounds; ++i) {
        const Start ours = run(QStringLiteral("bench-start-client"), {warehouse.connectFile()});
        const Start theirs = run(QStringLiteral("bench-start-empty"), {odbc, trace});
        client.add(ours.milliseconds);
        empty.add(theirs.milliseconds);
        ratios.add(ours.milliseconds / theirs.milliseconds);
        clientMemory.add(ours.residentMib);
        emptyMemory.add(theirs.residentMib);
    }
    bench::report("client, start to plan", client);
    bench::report("empty window, statements", empty);
    bench::report("client, resident", clientMemory, "MiB");
    bench::report("empty window, resident", emptyMemory, "MiB");
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("start", ratios.median());
}

}  // namespace

int main(int argc, char* argv[]) {
    const QCoreApplication application(argc, argv);
    return bench::runMeasure("bench-start", measure);
}
