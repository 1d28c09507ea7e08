#include "platform/fuzz/IconChecks.h"
#include "support/HostileBytes.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

TEST(Icons, OfAnyBytesAreDrawnOrRefused) {
    EXPECT_TRUE(survivesChangedSeeds(QStringLiteral("tests/platform/fuzz/seeds"), 1000, checkIcon));
}

}  // namespace
}  // namespace regalon::test
