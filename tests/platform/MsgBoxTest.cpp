#include "platform/MsgBox.h"
#include "support/Events.h"

#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

QStringList captions(QWidget* box) {
    QStringList all;
    QList<QPushButton*> buttons = box->findChildren<QPushButton*>();
    std::sort(buttons.begin(), buttons.end(), [](QPushButton* a, QPushButton* b) { return a->x() < b->x(); });
    for (const QPushButton* button : std::as_const(buttons))
        all.append(button->text().remove(u'&'));
    return all;
}

/// Shows a box, takes a look at it and answers with the named button.
int shown(qint32 flags, int answer, const std::function<void(QMessageBox*)>& look) {
    whenModal([&](QWidget* modal) {
        look(qobject_cast<QMessageBox*>(modal));
        click(modal->findChild<QPushButton*>(QStringLiteral("MsgBox%1").arg(answer)));
    });
    return MsgBox(QStringLiteral("Tekst"), flags, QStringLiteral("Komunikat"));
}

TEST(MsgBox, TheFlagsChooseTheButtonsInTheirOrder) {
    const auto captionsOf = [](qint32 flags, int answer) {
        QStringList all;
        EXPECT_EQ(shown(flags, answer, [&all](QMessageBox* box) { all = captions(box); }), answer);
        return all.join(u' ');
    };
    EXPECT_EQ(captionsOf(0, MsgResult::Ok), QStringLiteral("OK"));
    EXPECT_EQ(captionsOf(1, MsgResult::Cancel), QStringLiteral("OK Anuluj"));
    EXPECT_EQ(captionsOf(2, MsgResult::Retry), QStringLiteral("Przerwij Ponów Ignoruj"));
    EXPECT_EQ(captionsOf(3, MsgResult::No), QStringLiteral("Tak Nie Anuluj"));
    EXPECT_EQ(captionsOf(4, MsgResult::Yes), QStringLiteral("Tak Nie"));
    EXPECT_EQ(captionsOf(5, MsgResult::Retry), QStringLiteral("Ponów Anuluj"));
}

TEST(MsgBox, IsWideEnoughForALongTitle) {
    const QString title = QStringLiteral("Error - clsMagWatch [GetParamLocalization]");
    whenModal([&](QWidget* modal) {
        EXPECT_GT(modal->width(), modal->fontMetrics().horizontalAdvance(title));
        click(modal->findChild<QPushButton*>(QStringLiteral("MsgBox1")));
    });
    MsgBox(QStringLiteral("13"), 16, title);
}

TEST(MsgBox, TheFlagsChooseIconAndDefaultButton) {
    shown(68, MsgResult::No, [](QMessageBox* box) {
        EXPECT_EQ(box->objectName(), QStringLiteral("MsgBox"));
        EXPECT_EQ(box->icon(), QMessageBox::Information);
        EXPECT_EQ(box->windowTitle(), QStringLiteral("Komunikat"));
        EXPECT_EQ(box->defaultButton()->objectName(), QStringLiteral("MsgBox6"));
    });
    shown(4 + 32 + 256, MsgResult::No, [](QMessageBox* box) {
        EXPECT_EQ(box->icon(), QMessageBox::Question);
        EXPECT_EQ(box->defaultButton()->objectName(), QStringLiteral("MsgBox7"));
    });
    shown(4112, MsgResult::Ok, [](QMessageBox* box) {
        EXPECT_EQ(box->icon(), QMessageBox::Critical);
        EXPECT_TRUE(box->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    });
    shown(3 + 48 + 512, MsgResult::Cancel, [](QMessageBox* box) {
        EXPECT_EQ(box->icon(), QMessageBox::Warning);
        EXPECT_EQ(box->defaultButton()->objectName(), QStringLiteral("MsgBox2"));
    });
}

TEST(MsgBox, EscapeCancelsOrAcceptsButNeverAnswersYesOrNo) {
    const auto byEscape = [](qint32 flags) {
        whenModal([](QWidget* modal) { key(modal, Qt::Key_Escape); });
        return MsgBox(QStringLiteral("?"), flags);
    };
    EXPECT_EQ(byEscape(0), MsgResult::Ok);
    EXPECT_EQ(byEscape(1), MsgResult::Cancel);
    EXPECT_EQ(byEscape(3), MsgResult::Cancel);
    EXPECT_EQ(byEscape(5), MsgResult::Cancel);
    for (const qint32 flags : {2, 4}) {
        const int answer = flags == 4 ? MsgResult::No : MsgResult::Abort;
        const int result = shown(flags, answer, [](QMessageBox* box) {
            key(box, Qt::Key_Escape);
            EXPECT_TRUE(box->isVisible());
            box->close();
            EXPECT_TRUE(box->isVisible());
        });
        EXPECT_EQ(result, answer);
    }
}

TEST(MsgBox, ReturnPressesTheDefaultButton) {
    whenModal([](QWidget* modal) { key(modal, Qt::Key_Return); });
    EXPECT_EQ(MsgBox(QStringLiteral("?"), 4 + 256), MsgResult::No);
}

TEST(MsgBox, TheTextIsPlainAndCanBeSelected) {
    whenModal([](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        EXPECT_EQ(box->text(), QStringLiteral("13\n<b>Type mismatch</b>\nRegalon"));
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_TRUE(box->textInteractionFlags().testFlag(Qt::TextSelectableByMouse));
        EXPECT_EQ(box->windowTitle(), QStringLiteral("Regalon"));
        key(modal, Qt::Key_Escape);
    });
    MsgBox(QStringLiteral("13\r\n<b>Type mismatch</b>\rRegalon"));
}

TEST(MsgBox, CountsAsOpenUntilItsLastMessageIsAnswered) {
    EXPECT_FALSE(isMsgBoxOpen());
    shown(0, MsgResult::Ok, [](QMessageBox*) {
        EXPECT_TRUE(isMsgBoxOpen());
        shown(4, MsgResult::No, [](QMessageBox*) { EXPECT_TRUE(isMsgBoxOpen()); });
        EXPECT_TRUE(isMsgBoxOpen());
    });
    EXPECT_FALSE(isMsgBoxOpen());
}

TEST(MsgBoxRecorder, ARecordedMessageCountsAsOpenWhileItIsLookedAt) {
    MsgBoxRecorder recorder;
    bool open = false;
    recorder.onMessage([&open](const MsgBoxRecorder::Message&) { open = isMsgBoxOpen(); });
    MsgBox(QStringLiteral("a"));
    EXPECT_TRUE(open);
    EXPECT_FALSE(isMsgBoxOpen());
}

TEST(MsgBoxRecorder, RecordsAndAnswersWithoutAWindow) {
    MsgBoxRecorder recorder;
    recorder.answer(MsgResult::No);
    EXPECT_EQ(MsgBox(QStringLiteral("a\r\nb"), 68, QStringLiteral("Info...")), MsgResult::No);
    EXPECT_EQ(MsgBox(QStringLiteral("c"), 4, QStringLiteral("t")), MsgResult::Yes);
    EXPECT_EQ(MsgBox(QStringLiteral("d"), 4 + 256, QStringLiteral("t")), MsgResult::No);
    ASSERT_EQ(recorder.count(), 3);
    EXPECT_EQ(recorder.messages().first().Text, QStringLiteral("a\r\nb"));
    EXPECT_EQ(recorder.messages().first().Flags, 68);
    EXPECT_EQ(recorder.messages().first().Title, QStringLiteral("Info..."));
    EXPECT_EQ(recorder.last().Text, QStringLiteral("d"));
}

TEST(MsgBoxRecorder, TheNewestOneWorks) {
    MsgBoxRecorder outer;
    {
        MsgBoxRecorder inner;
        int looks = 0;
        inner.onMessage([&looks](const MsgBoxRecorder::Message&) { ++looks; });
        MsgBox(QStringLiteral("a"));
        EXPECT_EQ(inner.count(), 1);
        EXPECT_EQ(looks, 1);
    }
    MsgBox(QStringLiteral("b"));
    EXPECT_EQ(outer.count(), 1);
    EXPECT_EQ(outer.last().Text, QStringLiteral("b"));
}

}  // namespace
