#include "platform/CodePage.h"
#include "platform/RunTimeError.h"
#include "shell/clsCrypt.h"

#include <gtest/gtest.h>

#include <set>

namespace regalon {
namespace {

QString scrambled(const QString& plain) {
    return clsCrypt().DecryptString(plain);
}
QString plain(const QString& text) {
    return clsCrypt().EncryptString(text);
}

TEST(Scrambling, ShiftsTheFirstFiftyCharactersByOneAndTheRestByTwo) {
    const QString text = QString(60, u'a');
    const QString form = scrambled(text);
    ASSERT_EQ(form.size(), 64);
    EXPECT_EQ(form.left(2), QStringLiteral("QX"));
    EXPECT_EQ(form[2], u'a');
    EXPECT_EQ(form.mid(3, 50), QString(50, u'b'));
    EXPECT_EQ(form.mid(53, 10), QString(10, u'c'));
    EXPECT_EQ(form[63], u'b');
    EXPECT_EQ(plain(form), text);
}

TEST(Scrambling, ReadsKnownForms) {
    EXPECT_EQ(plain(QStringLiteral("QXaMphjo;tb<b")), QStringLiteral("Login:sa;"));
    EXPECT_EQ(plain(QStringLiteral("??zBCDz")), QStringLiteral("ABC"));
}

TEST(Scrambling, ReadsBackEveryPolishLetterOfTheCodePage) {
    const QString text = QStringLiteral("Zażółć gęślą jaźń ZAŻÓŁĆ GĘŚLĄ JAŹŃ €„”");
    EXPECT_EQ(plain(scrambled(text)), text);
}

TEST(Scrambling, ReadsBackEveryCodeThatCanBeShifted) {
    for (int code = 0; code <= 253; ++code) {
        // At both shifts.
        const QString text = QString(50, u'x') + CodePage::charOf(code);
        EXPECT_EQ(plain(scrambled(text)), text) << code;
        const QString single(CodePage::charOf(code));
        EXPECT_EQ(plain(scrambled(single)), single) << code;
    }
}

TEST(Scrambling, PaddingDiffersFromCallToCallAndBothReadBackTheSame) {
    const QString text = QStringLiteral("Login:sa;Haslo:abc;Server:SRV1;Baza:WMS;");
    std::set<QString> forms;
    for (int i = 0; i < 50; ++i) {
        const QString form = scrambled(text);
        forms.insert(form);
        EXPECT_EQ(form.mid(3, text.size()), scrambled(text).mid(3, text.size()));
        EXPECT_TRUE(text.contains(form[2]));
        EXPECT_EQ(CodePage::codeOf(form.back()), CodePage::codeOf(form[2]) + 1);
        EXPECT_EQ(plain(form), text);
    }
    EXPECT_GT(forms.size(), 5U);
}

TEST(Scrambling, AnEmptyTextBecomesFourCharactersAndReadsBackEmpty) {
    for (int i = 0; i < 200; ++i) {
        const QString form = scrambled({});
        ASSERT_EQ(form.size(), 4);
        EXPECT_EQ(form.left(2), QStringLiteral("QX"));
        EXPECT_GE(CodePage::codeOf(form[2]), 1);
        EXPECT_LE(CodePage::codeOf(form[2]), 70);
        EXPECT_GE(CodePage::codeOf(form[3]), 5);
        EXPECT_LE(CodePage::codeOf(form[3]), 74);
        EXPECT_EQ(plain(form), QString());
    }
}

TEST(Scrambling, ATextOf300CharactersBecomes304OfWhichOnly256AreReadBack) {
    QString text;
    for (int i = 0; i < 300; ++i) {
        text += QChar(u'A' + i % 26);
    }
    const QString form = scrambled(text);
    EXPECT_EQ(form.size(), 304);
    EXPECT_EQ(plain(form), text.left(256));
}

TEST(Scrambling, TheLimitOf256CountsTheScrambledForm) {
    // 255 characters lose their padding as always; with 256 the last padding character counts as text.
    const QString shorter = QString(251, u'a');
    EXPECT_EQ(plain(scrambled(shorter)), shorter);
    const QString longer = QString(252, u'a');
    EXPECT_EQ(plain(scrambled(longer)), longer + QChar(u'b' - 2));
}

TEST(Scrambling, TextsShorterThanFourCharactersReadAsEmpty) {
    for (const QString& text :
         {QString(), QStringLiteral("Q"), QStringLiteral("QX"), QStringLiteral("QXa")}) {
        EXPECT_EQ(plain(text), QString());
    }
}

TEST(Scrambling, ACodePushedOutOfTheCodePageFails) {
    const QString last(CodePage::charOf(255));
    EXPECT_THROW(scrambled(last), RunTimeError);
    EXPECT_THROW(scrambled(QString(50, u'x') + CodePage::charOf(254)), RunTimeError);
    EXPECT_NO_THROW(scrambled(QString(49, u'x') + CodePage::charOf(254) + QString(2000, u'x')));
    EXPECT_THROW(plain(QStringLiteral("QXa") + QChar(0) + QStringLiteral("b")), RunTimeError);
}

}  // namespace
}  // namespace regalon
