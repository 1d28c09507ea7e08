#include "map/Notice.h"
#include "map/TypedLocation.h"
#include "platform/MsgBox.h"
#include "platform/RunTimeError.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

TEST(Notice, IsAnInformationBoxOfTheWarehouse) {
    const MsgBoxRecorder messages;
    showNotice(QStringLiteral("Gotowe"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, QStringLiteral("Gotowe"));
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
}

TEST(Notice, ARefusalWithoutAReasonFollowsAFailureThatHasBeenTold) {
    const MsgBoxRecorder messages;
    showRefusal(QString());
    EXPECT_EQ(messages.count(), 0);
    showRefusal(QStringLiteral("Brak miejsca"));
    EXPECT_EQ(messages.count(), 1);
}

TEST(TypedLocation, EveryNumberIsReadBeforeAnyIsFoundTooSmall) {
    const QString one = QStringLiteral("1");
    EXPECT_FALSE(typedLocation(QStringLiteral("-1"), one, one, one));
    EXPECT_FALSE(typedLocation(one, one, one, QStringLiteral("dwa")));
    qint32 number = 0;
    try {
        (void)typedLocation(QStringLiteral("-1"), QStringLiteral("40000"), one, one);
    } catch (const RunTimeError& error) {
        number = error.number();
    }
    EXPECT_EQ(number, RunTime::Overflow);
}

}  // namespace
}  // namespace regalon
