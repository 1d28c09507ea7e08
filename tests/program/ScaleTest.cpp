// A screen of twice the density.
#include "program/ProgramTest.h"

#include <cstdlib>

namespace regalon::test {
namespace {

class TwiceTheDensity : public ProgramTest {
protected:
    TwiceTheDensity() : ProgramTest(QSize(2240, 1700)) { scale = 2; }

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
        client->setEnvironment(QStringLiteral("QT_SCALE_FACTOR"), QStringLiteral("2"));
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openPlan());
    }
};

/// Neighbouring pixels of a row that differ sharply, on one side of a pair or between two pairs.
int sharpEdges(const QImage& picture, const QRect& part, int phase) {
    constexpr int sharp = 60;  // of 255
    int edges = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left() + phase; x < part.right(); x += 2) {
            edges += std::abs(qGray(picture.pixel(x, y)) - qGray(picture.pixel(x + 1, y))) > sharp ? 1 : 0;
        }
    }
    return edges;
}

TEST_F(TwiceTheDensity, DrawsThePlanWithTheDetailOfTheScreen) {
    const QImage picture = display.settledPicture();
    keep(picture, QStringLiteral("plan-2x"));
    EXPECT_EQ(display.geometry(client->mainWindow()).size(), QSize(2060, 1520));
    // A picture of half the size that was blown up has its edges between pairs of pixels only, or none.
    const int between = sharpEdges(picture, plan.hall(), 0);
    const int inside = sharpEdges(picture, plan.hall(), 1);
    EXPECT_GT(between, 1000);
    EXPECT_GT(inside, 1000);
    EXPECT_GT(std::min(between, inside) * 3, std::max(between, inside));
}

TEST_F(TwiceTheDensity, TakesClicksWhereThePictureIs) {
    const Spot spot = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1'"));
    click(spot);
    ASSERT_TRUE(traced(materialStatement(spot)));
    clickPanelBar(1);
    ASSERT_TRUE(traced(listStatement(spot, 1)));
    keep(display.settledPicture(), QStringLiteral("materials-2x"));
}

}  // namespace
}  // namespace regalon::test
