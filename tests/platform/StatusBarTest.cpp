#include "Failing.h"
#include "platform/StatusBar.h"
#include "support/Events.h"

#include <QCoreApplication>
#include <QMainWindow>

#include <gtest/gtest.h>

using namespace regalon;
using namespace regalon::test;

namespace {

TEST(StatusBar, PanelsKeepTheirWidthsAndTheSpringTakesTheRest) {
    QMainWindow window;
    auto* bar = new StatusBar(&window);
    window.setStatusBar(bar);
    bar->addPanel(QString(), 11809, StatusBar::AutoSize::Spring, 882);
    bar->addPanel(QStringLiteral("keyRecordCount"), 3528);
    bar->addPanel(QStringLiteral("keyLanguage"), 706);
    bar->addPanel(QStringLiteral("keyDataName"), 2822);
    bar->addPanel(QStringLiteral("keyLoginName"), 3881);
    window.resize(1030, 760);
    showAndWait(&window);
    EXPECT_EQ(bar->panelCount(), 5);
    EXPECT_EQ(bar->panel(2)->width(), 235);
    EXPECT_EQ(bar->panel(3)->width(), 47);
    EXPECT_GT(bar->panel(1)->width(), 250);
    bar->setPanelText(QStringLiteral("keyLoginName"), QString(300, u'x'));
    bar->panel(1)->setText(QString(300, u'x'));
    window.resize(850, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->panel(QStringLiteral("keyLoginName"))->width(), 259);
    for (int number = 2; number <= bar->panelCount(); ++number)
        EXPECT_GT(bar->panel(number)->x(), bar->panel(number - 1)->geometry().right()) << number;
    EXPECT_LE(bar->panel(5)->geometry().right(), bar->width());
    window.resize(100, 500);
    QCoreApplication::processEvents();
    EXPECT_EQ(bar->panel(1)->width(), 59);
}

TEST(StatusBar, PanelsAreFoundByNumberAndKey) {
    StatusBar bar;
    bar.addPanel(QStringLiteral("keyLanguage"), 706);
    bar.setPanelText(QStringLiteral("keyLanguage"), QStringLiteral("PL"));
    EXPECT_EQ(bar.panel(1)->text(), QStringLiteral("PL"));
    EXPECT_EQ(bar.panelText(QStringLiteral("keyLanguage")), QStringLiteral("PL"));
    EXPECT_EQ(bar.panel(1)->objectName(), QStringLiteral("keyLanguage"));
    EXPECT_EQ(failureOf([&] { bar.panel(2); }), RunTime::IndexOutOfBounds);
    EXPECT_EQ(failureOf([&] { bar.panel(QStringLiteral("none")); }), RunTime::ElementNotFound);
    EXPECT_EQ(failureOf([&] { bar.addPanel(QStringLiteral("keyLanguage"), 1); }), RunTime::KeyNotUnique);
}

}  // namespace
