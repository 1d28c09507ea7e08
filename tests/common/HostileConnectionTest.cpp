#include "common/fuzz/ConnectionChecks.h"
#include "support/HostileBytes.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

TEST(SettingsAndConnectionStrings, OfAnyBytesAreUsableAndStayWithinTheirKeys) {
    EXPECT_TRUE(survivesChangedSeeds(QStringLiteral("tests/common/fuzz/seeds"), 1000, checkConnection));
}

}  // namespace
}  // namespace regalon::test
