// The real layout editor behind its menu item.
#include "map/frmMagCreate.h"
#include "platform/Twips.h"
#include "shell/ShellFixture.h"
#include "shell/mdiKolvestra.h"
#include "support/Events.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QMdiSubWindow>
#include <QToolBar>

namespace regalon::test {
namespace {

class LayoutEditorOpening : public WarehouseFixture {
protected:
    void openEditor() {
        if (!window) {
            ChildWindows children;
            children.MagCreate.create = [this] { return new frmMagCreate(context); };
            start({}, children);
        }
        chooseItem(QStringLiteral("mnuMaterial"), QStringLiteral("mnuMagCreate"));
    }
    frmMagCreate* editor() const { return window->findChild<frmMagCreate*>(); }
    qsizetype standReads() const {
        return warehouse.trace().filter(QStringLiteral("from kolv_mag_Stand order by Rank,Stand")).size();
    }
};

TEST_F(LayoutEditorOpening, TwiceLeavesOneWindowAndReadsTheWarehouseOnce) {
    openEditor();
    ASSERT_EQ(messages.count(), 0) << qPrintable(messageTexts().join(u'|'));
    openEditor();
    EXPECT_EQ(standReads(), 1);
    EXPECT_EQ(window->findChildren<frmMagCreate*>().size(), 1);
}

TEST_F(LayoutEditorOpening, AgainAfterClosingReadsTheWarehouseAnew) {
    openEditor();
    editor()->unload();
    EXPECT_FALSE(editor()->isVisible());
    openEditor();
    EXPECT_EQ(standReads(), 2);
    EXPECT_TRUE(editor()->isVisible());
}

TEST_F(LayoutEditorOpening, TheUpperPlaceOfTheFramesCountsFromTheWindowsTopInTheMainWindow) {
    openEditor();
    auto* outer = qobject_cast<QMdiSubWindow*>(editor()->parentWidget());
    ASSERT_NE(outer, nullptr);
    outer->move(outer->x(), 20);
    click(editor()->findChild<QCheckBox*>(QStringLiteral("chkFramePozytion")));
    const int toolBar = toTwips(editor()->findChild<QToolBar*>(QStringLiteral("tlbCmd"))->height());
    EXPECT_NEAR(toTwips(editor()->findChild<QGroupBox*>(QStringLiteral("frmCreate"))->y()),
                20 * TwipsPerPixel + 2 * toolBar + 100, TwipsPerPixel);
}

}  // namespace
}  // namespace regalon::test
