#include "map/MapWarehouse.h"

#include "common/DbGateway.h"
#include "platform/Convert.h"
#include "platform/RunTimeError.h"

#include <QDir>
#include <QFile>

namespace regalon::test {

namespace {

const QString kProbe = QStringLiteral("/* probe */ ");

/// The gateway calls by position, so that the parameters of a call have no names on the wire.
QStringList valuesOf(const LocalWarehouse::TraceEntry& entry) {
    QStringList values;
    for (const QString& value : entry.values)
        values.append(value.section(QLatin1Char('='), 1));
    return values;
}

}  // namespace

MapWarehouse::MapWarehouse(LocalWarehouse::Content content) : server(content) {
    qputenv("REGALON_DRIVE_C", server.driveC().toUtf8());
}

MapWarehouse::~MapWarehouse() = default;

bool MapWarehouse::start() {
    if (!server.start())
        return false;
    try {
        context.ConnMain = std::make_unique<DbConnection>();
        context.ConnMain->Open(server.connectionString());
    } catch (const RunTimeError& error) {
        m_why = QString::fromUtf8(error.what());
        return false;
    }
    context.ErrorService = std::make_unique<clsError>();
    context.ProgramFolder = QStringLiteral("C:\\Regalon");
    context.PathBitmapMagSur = QStringLiteral("C:\\Regalon\\Ikony");
    server.clearTrace();
    return true;
}

bool MapWarehouse::run(const QStringList& statements) {
    for (const QString& statement : statements) {
        if (!server.run(statement)) {
            m_why = statement + QStringLiteral(": ") + server.why();
            return false;
        }
    }
    server.clearTrace();
    return true;
}

bool MapWarehouse::addStand(int rank, int stand, int shelfCount, const QString& locations, int left, int top,
                            const QString& icon) {
    QStringList statements(
        QStringLiteral("insert into kolv_mag_Stand (Rank,Stand,StandIcon,ShelfCount,StandLeft,"
                       "StandTop) values (%1,%2,N'%3',%4,%5,%6)")
            .arg(rank)
            .arg(stand)
            .arg(icon)
            .arg(shelfCount)
            .arg(left)
            .arg(top));
    QStringList rows;
    for (int shelf = 1; shelf <= locations.size(); ++shelf) {
        for (int location = 1; location <= locations.at(shelf - 1).digitValue(); ++location)
            rows.append(QStringLiteral("(%1,%2,%3,%4)").arg(rank).arg(stand).arg(shelf).arg(location));
    }
    if (!rows.isEmpty())
        statements.append(
            QStringLiteral("insert into kolv_mag_Location (Rank,Stand,Shelf,Location) values ") +
            rows.join(QLatin1Char(',')));
    return run(statements);
}

QString MapWarehouse::value(const QString& sql) {
    DbConnection connection;
    connection.Open(server.connectionString());
    DbRecordset rows;
    rows.Open(kProbe + sql, connection);
    if (rows.Eof())
        return QStringLiteral("none");
    const QVariant found = rows.Value(0);
    return found.isValid() ? ToText(found) : QStringLiteral("NULL");
}

QStringList MapWarehouse::batches() const {
    QStringList texts;
    for (const auto& entry : server.entries()) {
        if (entry.kind == u"BATCH" && !entry.text.startsWith(kProbe))
            texts.append(entry.text);
    }
    return texts;
}

QList<QStringList> MapWarehouse::calls(const QString& procedure) const {
    QList<QStringList> found;
    for (const auto& entry : server.entries()) {
        if (entry.kind == u"RPC" && entry.text.endsWith(procedure, Qt::CaseInsensitive))
            found.append(valuesOf(entry));
    }
    return found;
}

bool MapWarehouse::useOwnIcons() {
    bool copied = QDir(server.driveC()).mkpath(QStringLiteral("Regalon/Wlasne"));
    for (const char* name : {"Reg.ico", "x.ico", "xx.ico", "xxx.ico"}) {
        const QString icon = QString::fromLatin1(name);
        copied =
            copied && QFile::copy(server.driveC() + QStringLiteral("/Regalon/Ikony/") + icon, ownIcon(icon));
    }
    context.PathBitmapMagSur = QStringLiteral("C:\\Regalon\\Wlasne");
    return copied;
}

QString MapWarehouse::ownIcon(const QString& name) const {
    return server.driveC() + QStringLiteral("/Regalon/Wlasne/") + name;
}

QString windowMessage(qint32 number) {
    const ErrorRecord error = RunTimeError(number).record();
    return QString::number(number) + QStringLiteral("\r\n") + error.Description + error.Source;
}

}  // namespace regalon::test
