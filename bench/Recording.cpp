#include "Recording.h"

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

}  // namespace bench
