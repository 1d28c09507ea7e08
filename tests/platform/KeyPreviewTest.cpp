#include "platform/KeyPreview.h"
#include "support/Events.h"

#include <QAction>
#include <QLineEdit>
#include <QMenuBar>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

class KeyPreviewTest : public ::testing::Test {
protected:
    KeyPreviewTest() : edit(new QLineEdit(&window)), label(new QWidget(&window)) {
        preview = new KeyPreview(&window, [this](int code, int shift) {
            // Pressing Alt is an event of its own.
            if (code != 18)
                seen.append({code, shift});
        });
        window.resize(300, 100);
        showAndWait(&window);
        window.activateWindow();
        edit->setFocus();
    }

    QWidget window;
    QLineEdit* edit;
    QWidget* label;
    KeyPreview* preview;
    QList<QPair<int, int>> seen;
};

TEST_F(KeyPreviewTest, TheWindowSeesAKeyOnceAndTheControlStillGetsIt) {
    key(edit, Qt::Key_A);
    EXPECT_EQ(seen, (QList<QPair<int, int>>{{65, 0}}));
    EXPECT_EQ(edit->text(), QStringLiteral("a"));
}

TEST_F(KeyPreviewTest, AKeyThatClimbsIsSeenOnce) {
    key(label, Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(seen, (QList<QPair<int, int>>{{68, ShiftMask::Alt}}));
    key(label, Qt::Key_D, Qt::AltModifier);
    EXPECT_EQ(seen.size(), 2);
}

TEST_F(KeyPreviewTest, AClaimedKeyGoesToTheWindowAlone) {
    int triggered = 0;
    QAction action;
    action.setShortcut(QKeySequence(Qt::ALT | Qt::Key_W));
    QObject::connect(&action, &QAction::triggered, &action, [&triggered] { ++triggered; });
    window.addAction(&action);
    key(edit, Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(triggered, 1);
    EXPECT_TRUE(seen.isEmpty());
    preview->claim(Qt::Key_W, ShiftMask::Alt);
    key(edit, Qt::Key_W, Qt::AltModifier);
    EXPECT_EQ(triggered, 1);
    EXPECT_EQ(seen, (QList<QPair<int, int>>{{87, ShiftMask::Alt}}));
}

TEST_F(KeyPreviewTest, KeysHaveTheirClassicCodes) {
    key(edit, Qt::Key_Escape);
    key(edit, Qt::Key_F5, Qt::ControlModifier | Qt::ShiftModifier);
    ASSERT_GE(seen.size(), 2);
    EXPECT_EQ(seen.first(), qMakePair(27, 0));
    EXPECT_EQ(seen.last(), qMakePair(116, ShiftMask::Ctrl | ShiftMask::Shift));
}

TEST_F(KeyPreviewTest, KeysOfOtherWindowsAreNotSeen) {
    QLineEdit other;
    showAndWait(&other);
    key(&other, Qt::Key_A);
    EXPECT_TRUE(seen.isEmpty());
}

TEST_F(KeyPreviewTest, TheWindowMayCloseItselfOnAKey) {
    auto* closing = new QWidget;
    auto* field = new QLineEdit(closing);
    new KeyPreview(closing, [closing](int, int) { closing->close(); });
    showAndWait(closing);
    key(field, Qt::Key_W, Qt::AltModifier);
    EXPECT_FALSE(closing->isVisible());
    delete closing;
}

}  // namespace
