#include "program/Tables.h"

#include "common/DbConnection.h"
#include "common/DbRecordset.h"
#include "support/LocalWarehouse.h"

namespace regalon::test {

QVector<QVector<QVariant>> rowsOf(const LocalWarehouse& warehouse, const QString& sql) {
    DbConnection connection;
    connection.Open(warehouse.connectionString());
    DbRecordset set;
    QVector<QVector<QVariant>> all;
    for (set.Open(sql, connection); !set.Eof(); set.MoveNext()) {
        QVector<QVariant> row;
        for (int column = 0; column < set.Fields().Count(); ++column) {
            row.append(set.Value(column));
        }
        all.append(row);
    }
    return all;
}

QStringList linesOf(const LocalWarehouse& warehouse, const QString& sql) {
    QStringList lines;
    const QVector<QVector<QVariant>> all = rowsOf(warehouse, sql);
    for (const QVector<QVariant>& row : all) {
        QStringList values;
        for (const QVariant& value : row) {
            values.append(value.isValid() ? value.toString() : QStringLiteral("NULL"));
        }
        lines.append(values.join(u'/'));
    }
    return lines;
}

QStringList everyRow(const LocalWarehouse& warehouse) {
    QStringList all;
    const QStringList tables =
        linesOf(warehouse, QStringLiteral("select name from sys.tables where name not like N'#%'"));
    for (const QString& table : tables) {
        const QStringList rows = linesOf(warehouse, QStringLiteral("select * from ") + table);
        for (const QString& row : rows) {
            all.append(table + QStringLiteral(": ") + row);
        }
    }
    all.sort();
    return all;
}

}  // namespace regalon::test
