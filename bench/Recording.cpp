#include "Recording.h"

#include <cstdio>

namespace bench {

using regalon::test::LocalWarehouse;

std::string odbcString(const LocalWarehouse& warehouse) {
    return "DRIVER=FreeTDS;SERVER=127.0.0.1;PORT=" + std::to_string(warehouse.port()) +
           ";UID=" + LocalWarehouse::login().toStdString() +
           ";PWD=" + LocalWarehouse::password().toStdString() +
           ";DATABASE=" + LocalWarehouse::database().toStdString() + ";TDS_Version=7.4;ClientCharset=UTF-8";
}

std::vector<Statement> recorded(const LocalWarehouse& warehouse) {
    std::vector<Statement> statements;
    for (const LocalWarehouse::TraceEntry& entry : warehouse.entries()) {
        Statement statement;
        statement.call = entry.kind == u"RPC";
        statement.text = entry.text.toStdString();
        for (const QString& value : entry.values) {
            const qsizetype equals = value.indexOf(u'=');
            statement.arguments.emplace_back(value.left(equals).toStdString(),
                                             value.mid(equals + 1).toStdString());
        }
        statements.push_back(std::move(statement));
    }
    return statements;
}

std::vector<Statement> recorded(LocalWarehouse& warehouse, const std::function<void()>& act) {
    act();
    warehouse.clearTrace();
    act();
    return recorded(warehouse);
}

void compareWithBareLoop(const std::string& measure, int rounds, const Side& client,
                         const LocalWarehouse& warehouse, const std::vector<Statement>& statements) {
    BareOdbc bare(odbcString(warehouse));
    const long rows = bare.run(statements);
    std::printf("%zu statements, %ld rows\n", statements.size(), rows);
    compareInTurn(measure, rounds, client, {"bare ODBC loop", [&] { bare.run(statements); }});
}

}  // namespace bench
