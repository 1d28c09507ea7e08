// The real shift window behind its menu item.
#include "shell/MainWindowFixture.h"
#include "stock/frmMagWatchShiftLoc.h"

#include <QRegularExpression>

namespace regalon::test {
namespace {

const QString kClear = QStringLiteral("Kolv_mag_BarCode_Clear_Temp");

class ShiftWindowOpening : public MainWindow {
protected:
    void startWithShift() {
        ChildWindows children;
        children.MagWatchShiftLoc.create = [this] { return new frmMagWatchShiftLoc(context); };
        children.MagWatchShiftLoc.beforeShow = [](QWidget* made, qint32 top, qint32 left) {
            static_cast<frmMagWatchShiftLoc*>(made)->setTopStand(top);
            static_cast<frmMagWatchShiftLoc*>(made)->setLeftStand(left);
        };
        start({}, children);
    }
    void openShift() { chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagWatchShiftLoc")); }
    frmMagWatchShiftLoc* shift() const { return window->findChild<frmMagWatchShiftLoc*>(); }
    /// The calls alone: the first one asks for the parameters, too.
    qsizetype clears() const {
        return warehouse.trace().filter(QRegularExpression(QLatin1Char('^') + kClear)).size();
    }
};

TEST_F(ShiftWindowOpening, TwiceLeavesOneWindowAndClearsOnceForItsLoad) {
    startWithShift();
    openShift();
    ASSERT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
    EXPECT_FALSE(shift()->isModal());
    EXPECT_EQ(clears(), 2);
    openShift();
    EXPECT_EQ(clears(), 2);
    EXPECT_EQ(window->findChildren<frmMagWatchShiftLoc*>().size(), 1);
    EXPECT_EQ(windowList(), QStringList(QStringLiteral("*&1 Przesunięcia surowców na magazynie")));
}

TEST_F(ShiftWindowOpening, ClosedItClearsWhatItStagedAndLeavesTheListOfWindows) {
    startWithShift();
    openShift();
    warehouse.clearTrace();
    area()->subWindowList().first()->close();
    EXPECT_EQ(warehouse.trace(), QStringList(kClear + QStringLiteral("\t?=1\t?=0\t?=P\t?=S")));
    EXPECT_TRUE(waitFor([this] { return windowList().isEmpty(); }));
    openShift();
    EXPECT_TRUE(shift()->isVisible());
    EXPECT_EQ(clears(), 3);
}

TEST_F(ShiftWindowOpening, TheEndOfTheProgramClearsWhatAnOpenWindowStaged) {
    startWithShift();
    openShift();
    warehouse.clearTrace();
    messages.answer(MsgResult::Yes);
    window->close();
    EXPECT_EQ(clears(), 1);
    EXPECT_EQ(messages.count(), 1) << qPrintable(messageTexts().join(u'|'));
}

TEST_F(ShiftWindowOpening, AfterAFailedLoginFailsWithTheStandardHandlerAndStays) {
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    startWithShift();
    messages.clear();
    openShift();
    ASSERT_EQ(messages.count(), 1) << qPrintable(messageTexts().join(u'|'));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatchShiftLoc - Form_Load"));
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("91\r\n")));
    EXPECT_TRUE(shift()->isVisible());
}

}  // namespace
}  // namespace regalon::test
