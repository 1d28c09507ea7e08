#include "GatewayFixture.h"

#include <QFile>

namespace regalon {

void GatewayTest::SetUp() {
    QFile script(QStringLiteral(REGALON_SOURCE_DIR "/tests/common/gateway.sql"));
    ASSERT_TRUE(script.open(QIODevice::ReadOnly));
    ASSERT_TRUE(warehouse.runScript(QString::fromUtf8(script.readAll()))) << qPrintable(warehouse.why());
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    context.ErrorService = std::make_unique<clsError>();
    context.ConnMain = std::make_unique<DbConnection>();
    context.ConnMain->Open(warehouse.connectionString());
    warehouse.clearTrace();
}

void GatewayTest::TearDown() {
    context.ConnMain.reset();
}

}  // namespace regalon
