// The real warehouse view behind its menu item.
#include "shell/ShellFixture.h"
#include "shell/mdiKolvestra.h"
#include "views/frmMagWatch.h"

#include <QFile>

namespace regalon::test {
namespace {

class WarehouseViewOpening : public WarehouseFixture {
protected:
    void startWithView() {
        ChildWindows children;
        children.MagWatch.create = [this] { return new frmMagWatch(context); };
        children.MagWatch.beforeShow = [](QWidget* made, qint32 top, qint32 left) {
            static_cast<frmMagWatch*>(made)->setTopStand(top);
            static_cast<frmMagWatch*>(made)->setLeftStand(left);
        };
        start({}, children);
    }
    void openView() { chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagWatch")); }
    qsizetype standReads() const {
        return warehouse.trace().filter(QStringLiteral("from kolv_mag_Stand order by Rank,Stand")).size();
    }
};

TEST_F(WarehouseViewOpening, TwiceLeavesOneWindowAndReadsTheWarehouseOnce) {
    startWithView();
    openView();
    ASSERT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
    EXPECT_EQ(standReads(), 1);
    openView();
    EXPECT_EQ(standReads(), 1);
    EXPECT_EQ(window->findChildren<frmMagWatch*>().size(), 1);
}

TEST_F(WarehouseViewOpening, AgainAfterClosingReadsTheWarehouseAnew) {
    startWithView();
    openView();
    window->findChild<frmMagWatch*>()->unload();
    openView();
    EXPECT_EQ(standReads(), 2);
    EXPECT_TRUE(window->findChild<frmMagWatch*>()->isVisible());
}

TEST_F(WarehouseViewOpening, AfterAFailedLoginFailsWithTheStandardHandler) {
    ASSERT_TRUE(QFile::remove(inRegalon(QStringLiteral("connect.txt"))));
    startWithView();
    messages.clear();
    openView();
    ASSERT_GE(messages.count(), 1);
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_TRUE(messages.last().Text.startsWith(QStringLiteral("91\r\n")))
        << qPrintable(messages.last().Text);
    EXPECT_TRUE(window->isVisible());
}

}  // namespace
}  // namespace regalon::test
