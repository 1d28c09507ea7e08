#include "engine/Decimal.h"
#include "engine/SqlError.h"

#include <gtest/gtest.h>

using namespace magdb;

namespace {

DecimalValue number(std::string_view text) {
    return parseDecimal(text).value();
}

std::string result(ArithmeticOp op, std::string_view left, const SqlType& leftType, std::string_view right,
                   const SqlType& rightType) {
    const SqlType type = decimalResult(op, leftType, rightType);
    return formatDecimal(calculate(op, *rescale(number(left), leftType.scale),
                                   *rescale(number(right), rightType.scale), type)) +
           " " + typeName(type);
}

TEST(Decimal, ReadsAndWritesNumbers) {
    EXPECT_EQ(formatDecimal(number("-12.340")), "-12.340");
    EXPECT_EQ(formatDecimal(number("  +.5 ")), "0.5");
    EXPECT_EQ(formatDecimal(number("1.5e3")), "1500");
    EXPECT_EQ(formatDecimal(number("15e-3")), "0.015");
    EXPECT_EQ(formatDecimal(number("99999999999999999999999999999999999999")),
              "99999999999999999999999999999999999999");
    for (const char* bad :
         {"", " ", "1 2", "1.2.3", "abc", "-", "1e", "0x10", "999999999999999999999999999999999999999"}) {
        EXPECT_FALSE(parseDecimal(bad)) << bad;
    }
}

TEST(Decimal, RoundsHalvesAwayFromZero) {
    EXPECT_EQ(formatDecimal(*rescale(number("2.345"), 2)), "2.35");
    EXPECT_EQ(formatDecimal(*rescale(number("-2.345"), 2)), "-2.35");
    EXPECT_EQ(formatDecimal(*rescale(number("2.344"), 2)), "2.34");
    EXPECT_EQ(formatDecimal(*truncateScale(number("-2.349"), 2)), "-2.34");
    EXPECT_FALSE(rescale(number("12345678901234567890"), 20));
}

// Precision and scale as the reference of T-SQL states them for each operator.
TEST(Decimal, ResultsHaveThePublishedTypes) {
    const SqlType a = decimalType(10, 2);
    const SqlType b = decimalType(5, 3);
    EXPECT_EQ(result(ArithmeticOp::Add, "1.25", a, "1.125", b), "2.375 decimal(12,3)");
    EXPECT_EQ(result(ArithmeticOp::Subtract, "1.25", a, "1.125", b), "0.125 decimal(12,3)");
    EXPECT_EQ(result(ArithmeticOp::Multiply, "1.25", a, "1.125", b), "1.40625 decimal(16,5)");
    EXPECT_EQ(result(ArithmeticOp::Divide, "1.25", a, "1.125", b), "1.11111111 decimal(19,8)");
    EXPECT_EQ(result(ArithmeticOp::Modulo, "7.50", a, "2.000", b), "1.500 decimal(5,3)");
}

TEST(Decimal, WideResultsGiveUpDecimalsButNotBelowSix) {
    const SqlType wide = decimalType(38, 10);
    EXPECT_EQ(decimalResult(ArithmeticOp::Multiply, wide, wide), decimalType(38, 6));
    EXPECT_EQ(decimalResult(ArithmeticOp::Divide, wide, wide), decimalType(38, 6));
    EXPECT_EQ(decimalResult(ArithmeticOp::Divide, decimalType(19, 6), decimalType(19, 6)),
              decimalType(38, 19));
}

TEST(Decimal, ProductsAndQuotientsGoThroughMoreThan38Digits) {
    const SqlType wide = decimalType(38, 10);
    EXPECT_EQ(result(ArithmeticOp::Multiply, "123456789012.0123456789", wide, "1000.0000000001", wide),
              "123456789012024.691358 decimal(38,6)");
    EXPECT_EQ(result(ArithmeticOp::Divide, "9999999999999999999999999999", decimalType(38, 0), "3",
                     decimalType(38, 0)),
              "3333333333333333333333333333.000000 decimal(38,6)");
}

TEST(Decimal, DivisionCutsAndByZeroIsAnError) {
    EXPECT_EQ(result(ArithmeticOp::Divide, "2", decimalType(1, 0), "3", decimalType(1, 0)),
              "0.666666 decimal(7,6)");
    try {
        static_cast<void>(calculate(ArithmeticOp::Divide, number("1"), number("0"), decimalType(10, 2)));
        FAIL();
    } catch (const SqlError& error) {
        EXPECT_EQ(error.number(), 8134);
    }
}

TEST(Decimal, LeavingThePrecisionIsAnOverflow) {
    const SqlType full = decimalType(38, 0);
    const DecimalValue most = number("99999999999999999999999999999999999999");
    for (const ArithmeticOp op : {ArithmeticOp::Add, ArithmeticOp::Multiply}) {
        try {
            static_cast<void>(calculate(op, most, most, full));
            FAIL();
        } catch (const SqlError& error) {
            EXPECT_EQ(error.number(), 8115);
        }
    }
}

TEST(Decimal, ComparesAcrossScales) {
    EXPECT_EQ(compare(number("1.50"), number("1.5")), 0);
    EXPECT_LT(compare(number("-2"), number("1.999")), 0);
    EXPECT_GT(compare(number("99999999999999999999999999999999999999"), number("0.00000000000000000001")), 0);
}

}  // namespace
