#include "GrownWarehouse.h"

#include "common/DbConnection.h"

#include <QFile>

#include <memory>
#include <stdexcept>

namespace bench {

using regalon::test::LocalWarehouse;

void require(bool condition, const QString& what) {
    if (!condition)
        throw std::runtime_error(what.toStdString());
}

GrownWarehouse::GrownWarehouse(int stands, const QString& more)
    : m_stands(stands), m_local(LocalWarehouse::Content::Empty) {
    QFile script(QStringLiteral(REGALON_BENCH_DIR "/growth.sql.in"));
    require(script.open(QIODevice::ReadOnly), QStringLiteral("growth.sql.in is missing"));
    QString sql = QString::fromUtf8(script.readAll());
    sql.replace(QStringLiteral("@STANDS@"), QString::number(stands));
    require(m_local.runScript(sql + more), m_local.why());
    require(m_local.start(), m_local.why());
    enter();
    m_context.ConnMain = std::make_unique<regalon::DbConnection>();
    m_context.ConnMain->Open(m_local.connectionString());
    m_context.ErrorService = std::make_unique<regalon::clsError>();
    m_context.PathBitmapMagSur = QStringLiteral("C:\\Regalon\\Ikony");
}

void GrownWarehouse::enter() {
    qputenv("REGALON_DRIVE_C", m_local.driveC().toLocal8Bit());
}

}  // namespace bench
