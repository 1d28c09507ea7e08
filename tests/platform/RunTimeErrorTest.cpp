#include "platform/RunTimeError.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <stdexcept>
#include <vector>

using namespace regalon;

namespace {

template <typename Act>
ErrorRecord caught(Act act) {
    try {
        act();
    } catch (...) {
        return currentError();
    }
    return {};
}

TEST(RunTimeError, CarriesNumberDescriptionAndSource) {
    const ErrorRecord record = caught([] { throw RunTimeError(RunTime::TypeMismatch); });
    EXPECT_EQ(record.Number, 13);
    EXPECT_EQ(record.Description, QStringLiteral("Type mismatch"));
    EXPECT_EQ(record.Source, QStringLiteral("Regalon"));
    EXPECT_EQ(record.LastDllError, 0);
}

TEST(RunTimeError, KeepsWhatTheRaiserSaid) {
    const auto number = static_cast<qint32>(0x80040201);
    const ErrorRecord record = caught([number] {
        throw RunTimeError(number, QStringLiteral("Nieprawidłowy format liczby."), QStringLiteral("modSQL"),
                           5);
    });
    EXPECT_EQ(record.Number, number);
    EXPECT_EQ(record.Description, QStringLiteral("Nieprawidłowy format liczby."));
    EXPECT_EQ(record.Source, QStringLiteral("modSQL"));
    EXPECT_EQ(record.LastDllError, 5);
}

TEST(RunTimeError, StandardExceptionsGetTheNearestNumber) {
    EXPECT_EQ(caught([] { throw std::bad_alloc(); }).Number, 7);
    EXPECT_EQ(caught([] { std::ignore = std::vector<int>().at(3); }).Number, 9);
    EXPECT_EQ(caught([] { std::function<void()>()(); }).Number, 91);
    EXPECT_EQ(caught([] { throw std::invalid_argument("x"); }).Number, 5);
    EXPECT_EQ(caught([] { throw 42; }).Number, 51);
    const ErrorRecord other = caught([] { throw std::runtime_error("odd"); });
    EXPECT_EQ(other.Number, 51);
    EXPECT_TRUE(other.Description.contains(QStringLiteral("odd")));
}

TEST(RunTimeError, NothingIsCurrentOutsideAHandler) {
    EXPECT_EQ(currentError().Number, 0);
}

TEST(RunTimeError, UnknownNumbersHaveAGeneralText) {
    EXPECT_EQ(RunTime::description(12345), QStringLiteral("Application-defined or object-defined error"));
}

}  // namespace
