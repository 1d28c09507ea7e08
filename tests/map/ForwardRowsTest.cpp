#include "map/ForwardRows.h"

#include <QString>

#include <gtest/gtest.h>

namespace regalon {
namespace {

using Rows = ForwardRows<QString>;

QString key(const char* text) {
    return QString::fromLatin1(text);
}

TEST(ForwardRows, FindsTheRowsInTheirOrder) {
    Rows rows({key("a"), key("b"), key("c")});
    EXPECT_EQ(rows.find(key("a")), 0);
    EXPECT_EQ(rows.find(key("c")), 2);
}

TEST(ForwardRows, ARowInFrontOfTheLastOneFoundIsLost) {
    Rows rows({key("a"), key("b")});
    EXPECT_EQ(rows.find(key("b")), 1);
    EXPECT_EQ(rows.find(key("a")), std::nullopt);
    EXPECT_EQ(rows.find(key("b")), 1) << "the row found last can be found again";
}

TEST(ForwardRows, AMissingKeyLeavesTheRestToBeFound) {
    Rows rows({key("a"), key("b")});
    EXPECT_EQ(rows.find(key("x")), std::nullopt);
    EXPECT_EQ(rows.find(key("a")), 0);
}

TEST(ForwardRows, OfEqualKeysTheFirstFromTheLastRowFoundCounts) {
    Rows rows({key("a"), key("b"), key("b"), key("a"), key("b")});
    EXPECT_EQ(rows.find(key("b")), 1);
    EXPECT_EQ(rows.find(key("b")), 1);
    EXPECT_EQ(rows.find(key("a")), 3);
    EXPECT_EQ(rows.find(key("b")), 4);
}

TEST(ForwardRows, KeysDifferByLetterCase) {
    Rows rows({key("a"), key("A")});
    EXPECT_EQ(rows.find(key("A")), 1);
}

TEST(ForwardRows, NoRowsHoldNothing) {
    Rows rows({});
    EXPECT_EQ(rows.find(QString()), std::nullopt);
}

}  // namespace
}  // namespace regalon
