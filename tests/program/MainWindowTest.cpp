// The main window as the window manager and a person see it.
#include "program/ProgramTest.h"

#include <QFile>

namespace regalon::test {
namespace {

// 15450 by 11400 twips.
constexpr QSize designSize(1030, 760);

class MainWindow : public ProgramTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
        ASSERT_NO_FATAL_FAILURE(startClient());
        display.activate(client->mainWindow());
    }

    QRect geometry() const { return display.geometry(client->mainWindow()); }
    QRect statusBar() const { return geometry().adjusted(0, geometry().height() - 22, 0, 0); }

    /// Picks an item of the language menu by keys.
    void chooseLanguage(const QString& letter) {
        display.key(QStringLiteral("alt+w"));
        display.key(letter);
    }

    QString storedLanguage() const {
        QFile file(warehouse.folder() + QStringLiteral("/config/Kolvestra/Kolvestra.ini"));
        return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    }
};

TEST_F(MainWindow, HasItsSizeAndKeepsIt) {
    const QString window = client->mainWindow();
    EXPECT_EQ(geometry().size(), designSize);
    const QString hints = display.property(window, QStringLiteral("WM_NORMAL_HINTS"));
    EXPECT_TRUE(hints.contains(QStringLiteral("minimum size: 1030 by 760"))) << qPrintable(hints);
    EXPECT_TRUE(hints.contains(QStringLiteral("maximum size: 1030 by 760"))) << qPrintable(hints);

    display.askForSize(window, {1200, 900});
    display.drag(geometry().bottomRight() + QPoint(1, 1), geometry().bottomRight() + QPoint(120, 90));
    // By now the window has had to handle both, for it opens the plan only after them.
    ASSERT_NO_FATAL_FAILURE(openPlan());
    EXPECT_EQ(geometry().size(), designSize);
}

TEST_F(MainWindow, AsksBeforeItGoesAndStaysOnNo) {
    ASSERT_NO_FATAL_FAILURE(openPlan());
    const QImage before = display.settledPicture();
    display.key(QStringLiteral("ctrl+x"));
    ASSERT_FALSE(client->window(QStringLiteral("Info...")).isEmpty());
    keep(display.settledPicture(), QStringLiteral("exit-question"));
    answerExit(false);
    EXPECT_TRUE(client->running());
    EXPECT_EQ(sessions(), 2);
    EXPECT_EQ(display.settledPicture().copy(plan.hall()), before.copy(plan.hall()));
}

TEST_F(MainWindow, EndsOnYesWithBothSessionsClosed) {
    ASSERT_NO_FATAL_FAILURE(openPlan());
    EXPECT_EQ(sessions(), 2);
    EXPECT_EQ(leave(), 0);
    EXPECT_TRUE(eventually([this] { return sessions() == 0; }));
    EXPECT_TRUE(warehouse.running());
}

TEST_F(MainWindow, AsksAlsoWhenItsFrameIsClosed) {
    closeFrame();
    answerExit(false);
    EXPECT_TRUE(client->running());
    closeFrame();
    answerExit(true);
    EXPECT_EQ(client->exitCode(), 0);
}

TEST_F(MainWindow, ChangesTheStatusPanelsByLanguageAndStoresItAtTheEnd) {
    const QImage start = display.settledPicture();
    chooseLanguage(QStringLiteral("a"));
    const QImage english = display.changedPicture(start, statusBar());
    ASSERT_FALSE(english.isNull());
    keep(english, QStringLiteral("english"));
    chooseLanguage(QStringLiteral("p"));
    const QImage polish = display.changedPicture(english, statusBar());
    ASSERT_FALSE(polish.isNull());
    // The login stands there now, and no longer the user.
    EXPECT_NE(polish.copy(statusBar()), start.copy(statusBar()));
    keep(polish, QStringLiteral("polish"));
    chooseLanguage(QStringLiteral("a"));
    ASSERT_FALSE(display.changedPicture(polish, statusBar()).isNull());
    EXPECT_EQ(leave(), 0);
    EXPECT_TRUE(storedLanguage().contains(QStringLiteral("[Login]"))) << qPrintable(storedLanguage());
    EXPECT_TRUE(storedLanguage().contains(QStringLiteral("strLang=UK"))) << qPrintable(storedLanguage());
}

TEST_F(MainWindow, ShowsTheSamePolishTextsInEveryLocale) {
    ASSERT_NO_FATAL_FAILURE(openPlan());
    const Spot spot = spotWhere(warehouse, QStringLiteral("A.StatLocation_cmb = N'1'"));
    QImage first;
    for (const char* locale : {"C.UTF-8", "C", "de_DE.UTF-8", "pl_PL.UTF-8"}) {
        client = newClient();
        client->setEnvironment(QStringLiteral("LANG"), QString::fromLatin1(locale));
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openPlan());
        warehouse.clearTrace();
        click(spot);
        ASSERT_TRUE(traced(materialStatement(spot)));
        clickPanelBar(1);
        ASSERT_TRUE(traced(listStatement(spot, 1)));
        display.key(QStringLiteral("ctrl+x"));
        ASSERT_FALSE(client->window(QStringLiteral("Info...")).isEmpty());
        const QImage picture = display.settledPicture();
        first = first.isNull() ? picture : first;
        EXPECT_EQ(picture, first) << locale;
        keep(picture, QStringLiteral("locale-") + QString::fromLatin1(locale).left(2));
        answerExit(true);
        EXPECT_EQ(client->exitCode(), 0);
    }
}

}  // namespace
}  // namespace regalon::test
