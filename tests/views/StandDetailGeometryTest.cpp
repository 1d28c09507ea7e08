#include "platform/RunTimeError.h"
#include "views/StandDetailGeometry.h"

#include <gtest/gtest.h>

#include <limits>

namespace regalon {
namespace {

constexpr qint32 kWidth = 8040;
constexpr qint32 kHeight = 4155;

StandDetailPlace placed(qint32 top, qint32 left, qint16 shelves = 2) {
    return standDetailPlace(top, left, shelves, kWidth, kHeight);
}

TEST(StandDetailPlace, WithoutWishesTheWindowStandsAt4000And7000MinusItsSize) {
    EXPECT_EQ(placed(0, 0), (StandDetailPlace{.Top = 4000 - 4155,
                                              .Left = 7000 - 8040,
                                              .PointerTop = 0,
                                              .PointerLeft = 0,
                                              .PointerFile = QStringLiteral("k2.ico")}));
    EXPECT_EQ(standDetailPlace(0, 0, 2, 3000, 1000).Top, 3000);
    EXPECT_EQ(standDetailPlace(0, 0, 2, 3000, 1000).Left, 4000);
}

TEST(StandDetailPlace, OneTwipBeyond14450MovesTheWindowToTheLeftOfTheStand) {
    EXPECT_EQ(placed(1000, 14450 - kWidth).Left, 6410);
    EXPECT_EQ(placed(1000, 14450 - kWidth).PointerLeft, 0);
    // There is no room to the left of it: 6411 - 8040 + 700 is below 0.
    EXPECT_EQ(placed(1000, 14451 - kWidth).Left, 6411);
    const StandDetailPlace moved = standDetailPlace(1000, 14451 - 3000, 2, 3000, 1000);
    EXPECT_EQ(moved.Left, 14451 - 3000 - 3000 + 700);
    EXPECT_EQ(moved.PointerLeft, 7800);
    EXPECT_EQ(standDetailPlace(1000, 14450 - 3000, 2, 3000, 1000).Left, 11450);
}

TEST(StandDetailPlace, TheWindowMovesToTheLeftOnlyWhereThatStaysOnTheScreen) {
    EXPECT_EQ(placed(1000, 7340).Left, 7340);
    EXPECT_EQ(placed(1000, 7340).PointerLeft, 0);
    EXPECT_EQ(placed(1000, 7341).Left, 1);
    EXPECT_EQ(placed(1000, 7341).PointerLeft, 7800);
}

TEST(StandDetailPlace, OneTwipBeyond9800MovesTheWindowUpByItsHeightAndTheShelves) {
    const StandDetailPlace below = placed(9800 - kHeight, 1000);
    EXPECT_EQ(below.Top, 5645);
    EXPECT_EQ(below.PointerTop, 0);
    EXPECT_EQ(below.PointerFile, QStringLiteral("k2.ico"));
    const StandDetailPlace above = placed(9801 - kHeight, 1000);
    EXPECT_EQ(above.Top, 5646 - kHeight - 850);
    EXPECT_EQ(above.PointerTop, 3700);
    EXPECT_EQ(above.PointerFile, QStringLiteral("k1.ico"));
}

TEST(StandDetailPlace, TheOffsetFollowsTheNumberOfShelves) {
    const auto offset = [](qint16 shelves) { return 9000 - kHeight - placed(9000, 1000, shelves).Top; };
    EXPECT_EQ(offset(1), 700);
    EXPECT_EQ(offset(2), 850);
    EXPECT_EQ(offset(3), 1000);
    EXPECT_EQ(offset(4), 1250);
    for (const qint16 shelves : {qint16{0}, qint16{5}, qint16{-1}})
        EXPECT_EQ(offset(shelves), 0) << shelves;
}

TEST(StandDetailPlace, TheMovedWindowMayLeaveTheScreen) {
    EXPECT_EQ(standDetailPlace(5000, 1000, 4, kWidth, 5000).Top, -1250);
}

TEST(StandDetailPlace, BothMovesGoTogether) {
    EXPECT_EQ(placed(9000, 13000, 4), (StandDetailPlace{.Top = 9000 - 4155 - 1250,
                                                        .Left = 13000 - 8040 + 700,
                                                        .PointerTop = 3700,
                                                        .PointerLeft = 7800,
                                                        .PointerFile = QStringLiteral("k1.ico")}));
}

TEST(StandDetailPlace, ASumBeyond32BitsIsAnOverflow) {
    const qint32 most = std::numeric_limits<qint32>::max();
    for (const auto& [top, left] : {std::pair{most, 1000}, std::pair{1000, most}}) {
        try {
            static_cast<void>(placed(top, left));
            FAIL() << top << " " << left;
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), RunTime::Overflow);
        }
    }
}

TEST(StandGrid, TheLowestShelfIsTheLastRowAndLocationsCountFromTheLeft) {
    EXPECT_EQ(standGridIndex(4, 1), 0);
    EXPECT_EQ(standGridIndex(4, 3), 2);
    EXPECT_EQ(standGridIndex(3, 1), 3);
    EXPECT_EQ(standGridIndex(2, 2), 7);
    EXPECT_EQ(standGridIndex(1, 1), 9);
    EXPECT_EQ(standGridIndex(1, 3), 11);
}

TEST(StandGrid, ShelvesAndLocationsBeyondTheGridHaveNoPlace) {
    for (const auto& [shelf, location] : {std::pair{0, 1}, {5, 1}, {1, 0}, {1, 4}, {-1, -1}})
        EXPECT_FALSE(standGridIndex(static_cast<qint16>(shelf), static_cast<qint16>(location)))
            << shelf << " " << location;
}

TEST(StandGrid, PlacesStand600TwipsApart) {
    EXPECT_EQ(standGridLeft(0), 360);
    EXPECT_EQ(standGridLeft(4), 960);
    EXPECT_EQ(standGridLeft(11), 1560);
    EXPECT_EQ(standGridTop(2), 600);
    EXPECT_EQ(standGridTop(3), 1200);
    EXPECT_EQ(standGridTop(8), 1800);
    EXPECT_EQ(standGridTop(9), 2400);
}

TEST(StandGrid, TheFamilyTellsTheWidth) {
    EXPECT_EQ(standGridWidth(QStringLiteral("LA")), 550);
    EXPECT_EQ(standGridWidth(QStringLiteral("LB")), 1155);
    EXPECT_EQ(standGridWidth(QStringLiteral("LC")), 1750);
    for (const char* other : {"", "la", "LD"})
        EXPECT_FALSE(standGridWidth(QString::fromLatin1(other))) << other;
}

}  // namespace
}  // namespace regalon
