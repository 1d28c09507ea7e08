#include "map/GreyIcons.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

QString greyOf(const char* family, qint16 percent) {
    GreyLocationIcon grey;
    grey.follow(QString::fromLatin1(family), percent);
    return grey.file();
}

TEST(GreyIcons, ALocationsIconTellsItsFamilyAndItsFillInTwoDigits) {
    EXPECT_EQ(greyOf("LA", 7), QStringLiteral("LA_G_07.ico"));
    EXPECT_EQ(greyOf("LB", 7), QStringLiteral("LB_G_07.ico"));
    EXPECT_EQ(greyOf("LB", 45), QStringLiteral("LB_G_45.ico"));
    EXPECT_EQ(greyOf("LC", 0), QStringLiteral("LC_G_00.ico"));
    EXPECT_EQ(greyOf("LA", 99), QStringLiteral("LA_G_99.ico"));
}

TEST(GreyIcons, AFullLocationHasThreeDigits) {
    EXPECT_EQ(greyOf("LA", 100), QStringLiteral("LA_G_100.ico"));
    EXPECT_EQ(greyOf("LB", 100), QStringLiteral("LB_G_100.ico"));
    EXPECT_EQ(greyOf("LC", 100), QStringLiteral("LC_G_100.ico"));
}

TEST(GreyIcons, AFillOver100TakesTheIconOfTheLocationBeforeWhateverItsFamily) {
    GreyLocationIcon grey;
    grey.follow(u"LA", 30);
    grey.follow(u"LC", 120);
    EXPECT_EQ(grey.file(), QStringLiteral("LA_G_30.ico"));
    grey.follow(u"LB", 101);
    EXPECT_EQ(grey.file(), QStringLiteral("LA_G_30.ico"));
}

TEST(GreyIcons, AFirstFillOver100HasTheEmptyName) {
    EXPECT_EQ(greyOf("LA", 120), QString());
}

TEST(GreyIcons, AnyOtherFamilyKeepsTheNameToo) {
    GreyLocationIcon grey;
    grey.follow(u"LD", 30);
    EXPECT_EQ(grey.file(), QString());
    grey.follow(u"LA", 30);
    grey.follow(u"la", 40);
    grey.follow(u"", 50);
    EXPECT_EQ(grey.file(), QStringLiteral("LA_G_30.ico"));
}

TEST(GreyIcons, AStandsIconTellsRowAndNumberInTwoDigits) {
    EXPECT_EQ(greyStandIcon(u"1", u"5"), QStringLiteral("RR1_S_05.ico"));
    EXPECT_EQ(greyStandIcon(u"6", u"12"), QStringLiteral("RR6_S_12.ico"));
}

TEST(GreyIcons, OfAStandOfThreeDigitsTheLastTwoCount) {
    EXPECT_EQ(greyStandIcon(u"2", u"117"), QStringLiteral("RR2_S_17.ico"));
}

}  // namespace
}  // namespace regalon
