#include "Failing.h"
#include "platform/ToolBar.h"
#include "support/Events.h"

#include <QAction>
#include <QSignalSpy>
#include <QToolButton>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

class ToolBarTest : public ::testing::Test {
protected:
    ToolBarTest() : cool(new CoolBar(&window)), bar(new ToolBar) {
        bar->setObjectName(QStringLiteral("tlbCmd"));
        bar->addButton(QStringLiteral("key_Exit"), QStringLiteral("&Wyjście"), QStringLiteral("Wyjscie"));
        bar->addSeparator(QStringLiteral("keySeparator"));
        bar->addButton(QStringLiteral("key_ReBulid"), QStringLiteral("Odśwież magazyn"));
        cool->addBand(bar);
        cool->setGeometry(0, 0, 500, 40);
        window.resize(500, 100);
        showAndWait(&window);
    }

    QWidget window;
    CoolBar* cool;
    ToolBar* bar;
};

TEST_F(ToolBarTest, AClickTellsTheKey) {
    QSignalSpy clicks(bar, &ToolBar::buttonClick);
    ASSERT_TRUE(clickToolButton(&window, QStringLiteral("key_ReBulid")));
    ASSERT_EQ(clicks.count(), 1);
    EXPECT_EQ(clicks.last().first().toString(), QStringLiteral("key_ReBulid"));
}

TEST_F(ToolBarTest, ButtonsAndSeparatorsCountFromOne) {
    EXPECT_EQ(bar->buttonCount(), 3);
    EXPECT_EQ(bar->button(1), bar->button(QStringLiteral("key_Exit")));
    EXPECT_TRUE(bar->button(2)->isSeparator());
    EXPECT_EQ(bar->button(QStringLiteral("keySeparator")), bar->button(2));
    EXPECT_EQ(bar->button(3)->objectName(), QStringLiteral("key_ReBulid"));
    EXPECT_EQ(bar->button(1)->toolTip(), QStringLiteral("Wyjscie"));
    EXPECT_EQ(failureOf([&] { bar->button(4); }), RunTime::IndexOutOfBounds);
    EXPECT_EQ(failureOf([&] { bar->button(QStringLiteral("none")); }), RunTime::ElementNotFound);
    EXPECT_EQ(failureOf([&] { bar->addButton(QStringLiteral("key_Exit"), QString()); }),
              RunTime::KeyNotUnique);
}

TEST_F(ToolBarTest, ADisabledOrHiddenButtonRaisesNothing) {
    QSignalSpy clicks(bar, &ToolBar::buttonClick);
    bar->button(3)->setEnabled(false);
    EXPECT_TRUE(clickToolButton(&window, QStringLiteral("key_ReBulid")));
    bar->button(1)->setVisible(false);
    EXPECT_FALSE(clickToolButton(&window, QStringLiteral("key_Exit")));
    EXPECT_EQ(clicks.count(), 0);
}

TEST_F(ToolBarTest, ACaptionChangesAndKeepsItsLetter) {
    auto* button = qobject_cast<QToolButton*>(bar->widgetForAction(bar->button(1)));
    ASSERT_NE(button, nullptr);
    EXPECT_EQ(button->text(), QStringLiteral("&Wyjście"));
    bar->button(1)->setText(QStringLiteral("&Zamknij"));
    EXPECT_EQ(button->text(), QStringLiteral("&Zamknij"));
}

TEST_F(ToolBarTest, AltAndTheLetterPressTheButton) {
    QSignalSpy clicks(bar, &ToolBar::buttonClick);
    window.activateWindow();
    key(&window, Qt::Key_W, Qt::AltModifier);
    ASSERT_TRUE(waitFor([&clicks] { return clicks.count() == 1; }));
    EXPECT_EQ(clicks.last().first().toString(), QStringLiteral("key_Exit"));
}

}  // namespace
