// The real barcode window behind its menu item.
#include "shell/MainWindowFixture.h"
#include "views/frmMagWatchBarCodeLoc.h"

#include <QFile>

namespace regalon::test {
namespace {

class BarCodeWindowOpening : public MainWindow {
protected:
    void startWithBarCodes() {
        ChildWindows children;
        children.MagWatchBarCodeLoc.create = [this] { return new frmMagWatchBarCodeLoc(context); };
        children.MagWatchBarCodeLoc.beforeShow = [](QWidget* made, qint32 top, qint32 left) {
            static_cast<frmMagWatchBarCodeLoc*>(made)->setTopStand(top);
            static_cast<frmMagWatchBarCodeLoc*>(made)->setLeftStand(left);
        };
        start({}, children);
    }
    void openBarCodes() { chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagSurBarCodeLoc")); }
    frmMagWatchBarCodeLoc* barCodes() const { return window->findChild<frmMagWatchBarCodeLoc*>(); }
    qsizetype standReads() const {
        return warehouse.trace().filter(QStringLiteral("from kolv_mag_Stand order by Rank,Stand")).size();
    }
};

TEST_F(BarCodeWindowOpening, TwiceLeavesOneWindowAndReadsTheWarehouseOnce) {
    startWithBarCodes();
    openBarCodes();
    ASSERT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
    EXPECT_FALSE(barCodes()->isModal());
    openBarCodes();
    EXPECT_EQ(standReads(), 1);
    EXPECT_EQ(window->findChildren<frmMagWatchBarCodeLoc*>().size(), 1);
    EXPECT_EQ(windowList(), QStringList(QStringLiteral("*&1 Zawartość lokalizacji - kody kreskowe")));
}

TEST_F(BarCodeWindowOpening, ClosedItLeavesTheListOfWindowsAndOpensAnew) {
    startWithBarCodes();
    openBarCodes();
    barCodes()->unload();
    EXPECT_TRUE(waitFor([this] { return windowList().isEmpty(); }));
    openBarCodes();
    EXPECT_EQ(standReads(), 2);
    EXPECT_TRUE(barCodes()->isVisible());
}

TEST_F(BarCodeWindowOpening, AfterAFailedLoginFailsWithTheStandardHandlerAndStays) {
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    startWithBarCodes();
    messages.clear();
    openBarCodes();
    ASSERT_GE(messages.count(), 1);
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("91\r\n")))
        << qPrintable(messages.last().Text);
    EXPECT_TRUE(barCodes()->isVisible());
}

}  // namespace
}  // namespace regalon::test
