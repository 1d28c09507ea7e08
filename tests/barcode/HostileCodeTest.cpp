#include "barcode/fuzz/BarcodeChecks.h"
#include "support/HostileBytes.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

TEST(CodesOfAnyBytes, AreWholeSymbolsOrNone) {
    EXPECT_TRUE(survivesChangedSeeds(QStringLiteral("tests/barcode/fuzz/seeds"), 1000, checkBarcode));
}

}  // namespace
}  // namespace regalon::test
