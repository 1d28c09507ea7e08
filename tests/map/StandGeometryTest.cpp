#include "map/StandGeometry.h"
#include "platform/RunTimeError.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

constexpr MapConstants kMeasures;

TEST(LocationFamily, OneLocationCoversTheShelf) {
    EXPECT_EQ(locationFamily(1, 1), QStringLiteral("LC"));
}

TEST(LocationFamily, TwoLocationsAreASingleAndADoubleSlot) {
    EXPECT_EQ(locationFamily(2, 1), QStringLiteral("LA"));
    EXPECT_EQ(locationFamily(2, 2), QStringLiteral("LB"));
}

TEST(LocationFamily, ThreeLocationsAreSingleSlots) {
    for (int position = 1; position <= 3; ++position)
        EXPECT_EQ(locationFamily(3, position), QStringLiteral("LA"));
}

TEST(LocationFamily, AnOddCountHasNone) {
    EXPECT_EQ(locationFamily(0, 1), QString());
    EXPECT_EQ(locationFamily(4, 1), QString());
    EXPECT_EQ(locationFamily(-1, 1), QString());
}

TEST(FirstLook, FollowsTheFamily) {
    EXPECT_EQ(firstLook(QStringLiteral("LA")), QStringLiteral("x.ico"));
    EXPECT_EQ(firstLook(QStringLiteral("LB")), QStringLiteral("xx.ico"));
    EXPECT_EQ(firstLook(QStringLiteral("LC")), QStringLiteral("xxx.ico"));
    EXPECT_EQ(firstLook(QString()), QString());
}

TEST(ShelfTop, ShelvesStandWhereThePlanHasThem) {
    EXPECT_EQ(shelfTop(kMeasures, 5000, 1), 5000 - 215);
    EXPECT_EQ(shelfTop(kMeasures, 5000, 2), 5000 - 400);
    EXPECT_EQ(shelfTop(kMeasures, 5000, 3), 5000 - 580);
    EXPECT_EQ(shelfTop(kMeasures, 5000, 4), 5000 - 765);
}

TEST(ShelfTop, NoShelfAboveTheFourthHasATop) {
    EXPECT_FALSE(shelfTop(kMeasures, 5000, 5));
    EXPECT_FALSE(shelfTop(kMeasures, 5000, 0));
}

TEST(NextLocationLeft, TheIconsOfAShelfStartAt0And205And415) {
    const qint32 second = nextLocationLeft(kMeasures, 1000, 1);
    EXPECT_EQ(second, 1205);
    EXPECT_EQ(nextLocationLeft(kMeasures, second, 2), 1415);
}

struct FrameCase {
    qint16 shelfCount;
    qint32 topLine;
    qint32 sideTop;
};

class StandFrame : public testing::TestWithParam<FrameCase> {};

TEST_P(StandFrame, LinesLieAroundTheStand) {
    const auto& [shelfCount, topLine, sideTop] = GetParam();
    const auto frame = standFrame(kMeasures, 2000, 5000, shelfCount, kFrameMargin);
    EXPECT_EQ(frame[0], (FrameLine{1980, 2635, 5290, 5290}));
    EXPECT_EQ(frame[1], (FrameLine{1975, 2645, 5000 + topLine, 5000 + topLine}));
    EXPECT_EQ(frame[2], (FrameLine{1975, 1975, 5290, 5000 + sideTop}));
    EXPECT_EQ(frame[3], (FrameLine{2635, 2635, 5290, 5000 + sideTop}));
}

INSTANTIATE_TEST_SUITE_P(ByShelfCount, StandFrame,
                         testing::Values(FrameCase{0, -110, -120}, FrameCase{1, -275, -285},
                                         FrameCase{2, -440, -450}, FrameCase{3, -605, -615},
                                         FrameCase{4, -790, -800}));

TEST(StandFrameOddShelfCount, AllButTheBottomLineKeepTheTemplatesHeights) {
    for (const qint16 shelfCount : {qint16{-1}, qint16{5}, qint16{32767}}) {
        const auto frame = standFrame(kMeasures, 2000, 5000, shelfCount, kFrameMargin);
        EXPECT_EQ(frame[0], (FrameLine{1980, 2635, 5290, 5290}));
        EXPECT_EQ(frame[1], (FrameLine{1975, 2645, std::nullopt, std::nullopt}));
        EXPECT_EQ(frame[2], (FrameLine{1975, 1975, std::nullopt, std::nullopt}));
        EXPECT_EQ(frame[3], (FrameLine{2635, 2635, std::nullopt, std::nullopt}));
    }
}

template <typename Call>
qint32 errorNumberOf(Call call) {
    try {
        call();
    } catch (const RunTimeError& error) {
        return error.number();
    }
    return 0;
}

TEST(StandGeometry, PositionsBeyond32BitsOverflow) {
    constexpr qint32 kLowest = std::numeric_limits<qint32>::min();
    constexpr qint32 kHighest = std::numeric_limits<qint32>::max();
    EXPECT_EQ(errorNumberOf([] { (void)shelfTop(kMeasures, kLowest, 1); }), 6);
    EXPECT_EQ(errorNumberOf([] { (void)nextLocationLeft(kMeasures, kHighest, 1); }), 6);
    EXPECT_EQ(errorNumberOf([] { (void)standFrame(kMeasures, kHighest, 0, 1, kFrameMargin); }), 6);
    EXPECT_EQ(errorNumberOf([] { (void)standFrame(kMeasures, 0, kHighest, 1, kFrameMargin); }), 6);
}

}  // namespace
}  // namespace regalon
