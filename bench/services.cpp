// services: packages of a purchase order staged, booked into the buffer and put away through the service of
// goods-in, over a bare ODBC loop that makes the same calls with the same kind of packages. Each side has an
// order and packages of its own, since a package comes in once.

#include "BareOdbc.h"
#include "Measure.h"
#include "Recording.h"
#include "common/AppContext.h"
#include "common/DbGateway.h"
#include "platform/Convert.h"
#include "platform/MsgBox.h"
#include "stock/clsMagSurImput.h"

#include <QApplication>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <string>

namespace {

using regalon::test::LocalWarehouse;

constexpr int rounds = 21;
constexpr int packagesOfRound = 20;
constexpr int clientEntry = 9001;
constexpr int bareEntry = 9002;

void require(bool condition, const QString& what) {
    if (!condition)
        throw std::runtime_error(what.toStdString());
}

/// Code of a package; those of the two sides differ.
QString codeOf(int entry, int round, int number) {
    return QStringLiteral("%1-%2-%3").arg(entry).arg(round).arg(number);
}

/// Orders of packages so small that one location takes them all.
void addOrders(LocalWarehouse& warehouse) {
    for (const QString& statement :
         {QStringLiteral("insert into OITM (ItemCode,ItemName,InvntryUom,Blength1,Bwidth1,BHeight1,BWeight1,"
                         "PurPackUn) values (N'BENCH',N'Bench',N'kg',1,1,1,0.001,1)"),
          QStringLiteral(
              "insert into OPOR (DocEntry,DocNum,DocDate,DocStatus) values (9001,9001,'20260101',N'O'),"
              "(9002,9002,'20260101',N'O')"),
          QStringLiteral("insert into POR1 (DocEntry,LineNum,ItemCode,Quantity,LineStatus) values "
                         "(9001,0,N'BENCH',1000000,N'O'),(9002,0,N'BENCH',1000000,N'O')")})
        require(warehouse.run(statement), warehouse.why());
}

/// The label of a location where the packages may lie.
QString targetLabel(regalon::DbConnection& connection) {
    regalon::DbRecordset rows;
    rows.Open(
        QStringLiteral("select top 1 Rank,Stand,Shelf,Location from dbo.kolv_mag_fn_Item_Target(N'BENCH') "
                       "where Verdict in (1,2) and Stand < 100 order by FreeVolume desc"),
        connection);
    const auto number = [&](int column) { return regalon::ToInt32(rows.Value(column)); };
    return QStringLiteral("72601011%1%2%3%4")
        .arg(number(0), 2, 10, QLatin1Char('0'))
        .arg(number(1), 2, 10, QLatin1Char('0'))
        .arg(number(2))
        .arg(number(3));
}

void throughService(regalon::clsMagSurImput& service, int round, const QString& label) {
    QString message;
    for (int i = 0; i < packagesOfRound; ++i) {
        require(service.AddBarCodeOnTemp({.DocEntry = clientEntry,
                                          .DocNum = clientEntry,
                                          .LineNum = 0,
                                          .BarCode = codeOf(clientEntry, round, i),
                                          .Quantity = 1,
                                          .UserSign = 2,
                                          .NumberCode = 0,
                                          .LineGrd = -1,
                                          .DeleteLine = QStringLiteral("N"),
                                          .ItemCode = QStringLiteral("BENCH"),
                                          .Aplication = QStringLiteral("P"),
                                          .Operation = QStringLiteral("I")}),
                QStringLiteral("a package was not staged"));
    }
    qint16 returned = 0;
    require(service.AddSurOnMag(2, QStringLiteral("P"), QStringLiteral("I"), returned, message), message);
    for (int i = 0; i < packagesOfRound; ++i) {
        require(service.AddSurOnLocation(clientEntry, 0, codeOf(clientEntry, round, i), label, 2,
                                         QStringLiteral("I"), message),
                message);
    }
}

bench::Statement call(const char* procedure, const std::vector<std::string>& values) {
    bench::Statement statement{.call = true, .text = procedure, .arguments = {}};
    for (const std::string& value : values)
        statement.arguments.emplace_back("", value);
    statement.arguments.emplace_back("", "NULL");  // the message that comes back
    return statement;
}

/// The same calls, by position.
std::vector<bench::Statement> bareCalls(int round, const QString& label) {
    const std::string entry = std::to_string(bareEntry);
    std::vector<bench::Statement> calls;
    const auto code = [&](int i) { return codeOf(bareEntry, round, i).toStdString(); };
    for (int i = 0; i < packagesOfRound; ++i)
        calls.push_back(call("Kolv_mag_BarCode_Add_Temp",
                             {entry, entry, "0", code(i), "0", "1", "2", "-1", "N", "BENCH", "P", "I"}));
    calls.push_back(call("Kolv_mag_Add_Sur_On_Bufor", {"2", "P", "I"}));
    for (int i = 0; i < packagesOfRound; ++i)
        calls.push_back(
            call("Kolv_mag_Add_Sur_On_Location", {entry, "0", code(i), label.toStdString(), "2", "I"}));
    return calls;
}

/// Both sides have really put away what they say.
void expectPutAway(regalon::DbConnection& connection, int entry) {
    regalon::DbRecordset rows;
    rows.Open(
        QStringLiteral("select count(*) from Kolv_Mag_BarCode_Sur where DocEntry = %1 and Rank is not null")
            .arg(entry),
        connection);
    const qint32 count = regalon::ToInt32(rows.Value(0));
    require(count == (rounds + 1) * packagesOfRound,
            QStringLiteral("order %1: %2 packages were put away").arg(entry).arg(count));
}

void services() {
    const regalon::MsgBoxRecorder messages;
    LocalWarehouse warehouse;
    require(warehouse.start(), warehouse.why());
    addOrders(warehouse);
    regalon::AppContext context;
    context.ConnMain = std::make_unique<regalon::DbConnection>();
    context.ConnMain->Open(warehouse.connectionString());
    context.ErrorService = std::make_unique<regalon::clsError>();
    regalon::clsMagSurImput service(context);
    const QString label = targetLabel(*context.ConnMain);
    bench::BareOdbc bare(bench::odbcString(warehouse));

    bench::Samples ours;
    bench::Samples theirs;
    bench::Samples ratios;
    for (int round = 0; round <= rounds; ++round) {
        const std::vector<bench::Statement> calls = bareCalls(round, label);
        double client = 0;
        double loop = 0;
        const auto runClient = [&] { client = bench::timed([&] { throughService(service, round, label); }); };
        // Whoever comes second finds the location fuller.
        if (round % 2 == 0)
            runClient();
        loop = bench::timed([&] { bare.run(calls); });
        if (round % 2 == 1)
            runClient();
        if (round == 0)
            continue;  // the first use of a procedure also asks for its parameters, once a connection
        ours.add(packagesOfRound * 1000 / client);
        theirs.add(packagesOfRound * 1000 / loop);
        ratios.add(loop / client);
    }
    expectPutAway(*context.ConnMain, clientEntry);
    expectPutAway(*context.ConnMain, bareEntry);
    require(messages.count() == 0, messages.last().Text);
    std::printf("%d packages a round: staged, booked into the buffer, put away\n", packagesOfRound);
    bench::report("clsMagSurImput", ours, "packages/s");
    bench::report("bare ODBC loop", theirs, "packages/s");
    bench::report("ratio of each round", ratios, "");
    bench::printRatio("services", ratios.median());
}

}  // namespace

int main(int argc, char* argv[]) {
    const QApplication application(argc, argv);
    return bench::runMeasure("bench-services", services);
}
