#pragma once

#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVector>

namespace regalon::test {

class LocalWarehouse;

/// What a query finds, read through a connection of the test's own; throws RunTimeError when it fails.
QVector<QVector<QVariant>> rowsOf(const LocalWarehouse& warehouse, const QString& sql);
/// The same with each row as one text, its values parted by "/"; NULL for NULL.
QStringList linesOf(const LocalWarehouse& warehouse, const QString& sql);
/// Every row of every table, behind the name of its table and in an order of its own, for "nothing has
/// changed".
QStringList everyRow(const LocalWarehouse& warehouse);

}  // namespace regalon::test
