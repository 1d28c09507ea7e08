#include "GatewayFixture.h"

#include <QElapsedTimer>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

// The driver waits its thirty seconds for the answer, and as long again for the server to take back the
// statement.
TEST_F(GatewayTest, StatementWithoutAnAnswerTimesOutAndTheConnectionIsLost) {
    constexpr qint64 timeout = 30000;
    warehouse.freeze();
    QElapsedTimer clock;
    clock.start();
    EXPECT_EQ(failureOfText(u"select 1"_s).Number, static_cast<qint32>(0x80040E31U));
    EXPECT_GE(clock.elapsed(), timeout - 1000);
    clock.restart();
    EXPECT_EQ(failureOfText(u"select 1"_s).Number, DbError::General);
    EXPECT_LT(clock.elapsed(), timeout);
    warehouse.thaw();
}

}  // namespace
}  // namespace regalon
