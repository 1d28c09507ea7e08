#include "Failing.h"
#include "platform/CodePage.h"

#include <gtest/gtest.h>

using namespace regalon;
using regalon::test::failureOf;

namespace {

TEST(CodePage, PolishLettersHaveTheCodesOfWindows1250) {
    EXPECT_EQ(CodePage::name(), QStringLiteral("windows-1250"));
    EXPECT_EQ(CodePage::fromText(QStringLiteral("ąćęłńóśźżŁ")),
              QByteArray("\xB9\xE6\xEA\xB3\xF1\xF3\x9C\x9F\xBF\xA3"));
    EXPECT_EQ(CodePage::toText(QByteArray("Za\xBF\xF3\xB3\xE6")), QStringLiteral("Zażółć"));
    EXPECT_EQ(CodePage::codeOf(u'€'), 0x80);
}

TEST(CodePage, EveryByteSurvivesBothWays) {
    for (int code = 0; code < 256; ++code) {
        EXPECT_EQ(CodePage::codeOf(CodePage::charOf(code)), code);
        const QByteArray byte(1, static_cast<char>(code));
        EXPECT_EQ(CodePage::fromText(CodePage::toText(byte)), byte) << code;
    }
    EXPECT_EQ(CodePage::charOf(0x81), QChar(0x81));
}

TEST(CodePage, CharactersWithoutACodeBecomeAQuestionMark) {
    EXPECT_EQ(CodePage::fromText(QStringLiteral("aЖb😀c")), QByteArray("a?b?c"));
    EXPECT_EQ(CodePage::codeOf(u'Ж'), 63);
}

TEST(CodePage, CodesOutside0To255Fail) {
    EXPECT_EQ(failureOf([] { CodePage::charOf(-1); }), RunTime::InvalidProcedureCall);
    EXPECT_EQ(failureOf([] { CodePage::charOf(256); }), RunTime::InvalidProcedureCall);
    EXPECT_EQ(CodePage::charOf(255), QChar(u'˙'));
}

TEST(CodePage, AnotherCodePageCanBeSet) {
    ASSERT_TRUE(CodePage::set(QStringLiteral("windows-1252")));
    EXPECT_EQ(CodePage::codeOf(u'ü'), 0xFC);
    EXPECT_EQ(CodePage::codeOf(u'ł'), 63);
    ASSERT_TRUE(CodePage::set(QStringLiteral("windows-1250")));
    EXPECT_EQ(CodePage::codeOf(u'ł'), 0xB3);
}

TEST(CodePage, TellsWhetherItHoldsATextWithoutBeingInUse) {
    const QString polish = QStringLiteral("windows-1250");
    const QString russian = QStringLiteral("windows-1251");
    EXPECT_TRUE(CodePage::holds(polish, QStringLiteral("Żółw?")));
    EXPECT_FALSE(CodePage::holds(russian, QStringLiteral("Żółw?")));
    EXPECT_TRUE(CodePage::holds(russian, QStringLiteral("Дсн")));
    EXPECT_FALSE(CodePage::holds(polish, QStringLiteral("a😀")));
    EXPECT_FALSE(CodePage::holds(QStringLiteral("no code page"), QString()));
    EXPECT_EQ(CodePage::name(), polish);
}

TEST(CodePage, NamesThatAreNoEightBitCodePageAreRefused) {
    for (const char* name : {"", "no-such-page", "UTF-8", "UTF-16", "UTF-32", "SHIFT_JIS"}) {
        EXPECT_FALSE(CodePage::isKnown(QString::fromUtf8(name))) << name;
        EXPECT_FALSE(CodePage::set(QString::fromUtf8(name))) << name;
    }
    EXPECT_EQ(CodePage::name(), QStringLiteral("windows-1250"));
}

}  // namespace
