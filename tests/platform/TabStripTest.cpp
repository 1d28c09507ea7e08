#include "platform/TabStrip.h"
#include "support/Events.h"

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

class TabStripTest : public ::testing::Test {
protected:
    TabStripTest() {
        strip.addKeyedTab(QStringLiteral("key_one"), QStringLiteral("Parametry statyczne lokalizacji"));
        strip.addKeyedTab(QStringLiteral("key_two"), QStringLiteral("Info"));
        showAndWait(&strip);
        QObject::connect(&strip, &TabStrip::tabClick, &strip, [this](int number) { clicks.append(number); });
    }

    void clickTab(int number) { clickAt(&strip, strip.tabRect(number - 1).center()); }

    TabStrip strip;
    QList<int> clicks;
};

TEST_F(TabStripTest, TabsAreCountedFromOneAndCarryTheirKeys) {
    EXPECT_EQ(strip.selectedTab(), 1);
    EXPECT_EQ(strip.tabKey(1), QStringLiteral("key_one"));
    EXPECT_EQ(strip.tabKey(2), QStringLiteral("key_two"));
    EXPECT_EQ(strip.tabText(0), QStringLiteral("Parametry statyczne lokalizacji"));
    EXPECT_EQ(TabStrip().selectedTab(), 0);
}

TEST_F(TabStripTest, AClickSelectsAndTellsTheNumber) {
    clickTab(2);
    EXPECT_EQ(strip.selectedTab(), 2);
    EXPECT_EQ(clicks, QList<int>({2}));
    clickTab(2);
    EXPECT_EQ(clicks, QList<int>({2}));
}

TEST_F(TabStripTest, SelectingFromCodeTellsTheNumberToo) {
    clickTab(2);
    strip.setSelectedTab(1);
    EXPECT_EQ(clicks, QList<int>({2, 1}));
}

TEST_F(TabStripTest, ALongCaptionTakesTwoLines) {
    const QFontMetrics metrics(strip.font());
    EXPECT_LT(strip.tabRect(0).width(), metrics.horizontalAdvance(strip.tabText(0)));
    EXPECT_GT(strip.tabRect(0).width(), metrics.horizontalAdvance(QStringLiteral("Parametry statyczne")));
    EXPECT_GE(strip.tabRect(0).height(), 2 * metrics.height());
    EXPECT_EQ(strip.tabRect(0).height(), strip.tabRect(1).height());
    EXPECT_GT(strip.tabRect(1).width(), metrics.horizontalAdvance(strip.tabText(1)));
}

TEST_F(TabStripTest, BothLinesArePainted) {
    const QImage shown = strip.grab().toImage();
    const auto darkRows = [&](int from, int to) {
        int found = 0;
        for (int y = from; y < to; ++y) {
            for (int x = strip.tabRect(0).left() + 6; x < strip.tabRect(0).right() - 6; ++x)
                found += qGray(shown.pixel(x, y)) < 100 ? 1 : 0;
        }
        return found;
    };
    const int middle = strip.tabRect(0).center().y();
    EXPECT_GT(darkRows(4, middle), 40);
    EXPECT_GT(darkRows(middle + 1, strip.tabRect(0).bottom() - 3), 40);
}

}  // namespace
