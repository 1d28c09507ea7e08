#include "map/RankLetter.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

TEST(RankLetter, RowsOneToSixAreLetters) {
    EXPECT_EQ(RankLetter(1), QStringLiteral("A"));
    EXPECT_EQ(RankLetter(2), QStringLiteral("B"));
    EXPECT_EQ(RankLetter(5), QStringLiteral("E"));
    EXPECT_EQ(RankLetter(6), QStringLiteral("F"));
}

TEST(RankLetter, ARowNumberAboveSixShowsAsAnEmptyLetter) {
    EXPECT_EQ(RankLetter(7), QString());
    EXPECT_EQ(RankLetter(32767), QString());
}

TEST(RankLetter, ZeroAndNegativeRowsShowAsAnEmptyLetter) {
    EXPECT_EQ(RankLetter(0), QString());
    EXPECT_EQ(RankLetter(-1), QString());
    EXPECT_EQ(RankLetter(-32768), QString());
}

TEST(RankNumber, LettersAreRowsOneToSix) {
    EXPECT_EQ(RankNumber(QStringLiteral("A")), 1);
    EXPECT_EQ(RankNumber(QStringLiteral("D")), 4);
    EXPECT_EQ(RankNumber(QStringLiteral("F")), 6);
}

TEST(RankNumber, AnyOtherTextIsZero) {
    for (const auto& text :
         {QStringLiteral(""), QStringLiteral("G"), QStringLiteral("a"), QStringLiteral("AB"),
          QStringLiteral(" A"), QStringLiteral("1"), QStringLiteral("Ą")})
        EXPECT_EQ(RankNumber(text), 0) << qPrintable(text);
}

}  // namespace
}  // namespace regalon
