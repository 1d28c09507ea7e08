#include "common/clsError.h"
#include "common/modSQL.h"
#include "platform/RunTimeError.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

// The error that building the literal raises; number 0 when it raises none.
ErrorRecord failureOfSqlNumber(const QVariant& value) {
    try {
        SqlNumber(value);
    } catch (...) {
        return currentError();
    }
    return {};
}

TEST(SqlText, DoublesApostrophes) {
    EXPECT_EQ(SqlText(u"O'Brien"_s), u"N'O''Brien'"_s);
}

TEST(SqlText, BlanksAloneGiveNull) {
    EXPECT_EQ(SqlText(u"   "_s), u"NULL"_s);
}

TEST(SqlText, EmptyTextGivesNull) {
    EXPECT_EQ(SqlText(QString()), u"NULL"_s);
}

TEST(SqlText, NullGivesNull) {
    EXPECT_EQ(SqlText(QVariant()), u"NULL"_s);
}

TEST(SqlText, PaddedTextKeepsItsBlanks) {
    EXPECT_EQ(SqlText(u" a "_s), u"N' a '"_s);
}

TEST(SqlText, TabAloneIsText) {
    EXPECT_EQ(SqlText(u"\t"_s), u"N'\t'"_s);
}

TEST(SqlText, PolishLettersStay) {
    EXPECT_EQ(SqlText(u"Żółć"_s), u"N'Żółć'"_s);
}

TEST(SqlText, NumberTakesItsTextForm) {
    EXPECT_EQ(SqlText(qint16{7}), u"N'7'"_s);
}

TEST(SqlText, WithoutNationalPrefixHasPlainQuotes) {
    EXPECT_EQ(SqlText(u"a"_s, true), u"'a'"_s);
}

TEST(SqlText, FailureGivesEmptyText) {
    EXPECT_EQ(SqlText(QByteArray("\x01\x02")), QString());
}

TEST(SqlNumber, DecimalCommaBecomesPoint) {
    EXPECT_EQ(SqlNumber(u"12,5"_s), u"12.5"_s);
}

TEST(SqlNumber, EmptyTextGivesNull) {
    EXPECT_EQ(SqlNumber(QString()), u"NULL"_s);
}

TEST(SqlNumber, NullGivesNull) {
    EXPECT_EQ(SqlNumber(QVariant()), u"NULL"_s);
}

TEST(SqlNumber, ExponentIsNumeric) {
    EXPECT_EQ(SqlNumber(u"1E3"_s), u"1000"_s);
}

TEST(SqlNumber, NumbersOfEveryWidth) {
    EXPECT_EQ(SqlNumber(qint16{-7}), u"-7"_s);
    EXPECT_EQ(SqlNumber(2147483647), u"2147483647"_s);
    EXPECT_EQ(SqlNumber(0.125), u"0.125"_s);
    EXPECT_EQ(SqlNumber(u" 42 "_s), u"42"_s);
}

TEST(SqlNumber, HasAtMostFifteenDigits) {
    EXPECT_EQ(SqlNumber(0.1 + 0.2), u"0.3"_s);
}

TEST(SqlNumber, OtherTextRaisesTheSystemsOwnMessage) {
    const ErrorRecord error = failureOfSqlNumber(u"abc"_s);
    EXPECT_EQ(error.Number, clsError::userErrorNumber);
    EXPECT_EQ(error.Number, static_cast<qint32>(0x80040201U));
    EXPECT_EQ(error.Description, u"Nieprawidłowy format liczby."_s);
    EXPECT_EQ(error.Source, u"modSQL"_s);
}

TEST(SqlNumber, DecimalPointIsNotNumericInPolish) {
    EXPECT_EQ(failureOfSqlNumber(u"12.5"_s).Description, u"Nieprawidłowy format liczby."_s);
}

// An all-blank text is not empty: it is refused here, although SqlText would store NULL.
TEST(SqlNumber, BlanksAloneAreNoNumber) {
    EXPECT_EQ(failureOfSqlNumber(u"   "_s).Description, u"Nieprawidłowy format liczby."_s);
}

TEST(SqlNumber, FailureInsideIsRaisedUnderTheSystemsOwnNumber) {
    const ErrorRecord tooLarge = failureOfSqlNumber(u"1E999"_s);
    EXPECT_EQ(tooLarge.Number, clsError::userErrorNumber);
    EXPECT_EQ(tooLarge.Source, u"modSQL"_s);
    EXPECT_EQ(tooLarge.Description, RunTime::description(RunTime::Overflow));
}

TEST(Flags, OnlyCapitalYIsChecked) {
    EXPECT_EQ(FlagToCheck(u"Y"_s), 1);
    EXPECT_EQ(FlagToCheck(u"y"_s), 0);
    EXPECT_EQ(FlagToCheck(u"N"_s), 0);
    EXPECT_EQ(FlagToCheck(u"Y "_s), 0);
    EXPECT_EQ(FlagToCheck(QVariant()), 0);
}

TEST(Flags, OnlyOneIsYes) {
    EXPECT_EQ(CheckToFlag(1), u"Y"_s);
    EXPECT_EQ(CheckToFlag(0), u"N"_s);
    EXPECT_EQ(CheckToFlag(2), u"N"_s);
    EXPECT_EQ(CheckToFlag(QVariant()), u"N"_s);
}

TEST(NullToValue, NullBecomesTheDefault) {
    EXPECT_EQ(NullToValue(QVariant(), 0), QVariant(0));
    EXPECT_EQ(NullToValue(QVariant()), QVariant(QString()));
    EXPECT_EQ(NullToValue(u"x"_s, u"y"_s), QVariant(u"x"_s));
    EXPECT_EQ(NullToValue(QString(), u"y"_s), QVariant(QString()));
}

}  // namespace
}  // namespace regalon
