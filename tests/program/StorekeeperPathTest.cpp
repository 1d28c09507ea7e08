// A storekeeper looks for a material, sees where it lies, and looks at a stand from near.
#include "program/ProgramTest.h"

#include <QRect>

namespace regalon::test {
namespace {

const QString kSearchTitle = QStringLiteral("Wyszukiwanie surowca");
const QString kStandTitle = QStringLiteral("Szczegóły regału");

// Places of the search panel on the plan, twips.
constexpr int kPanelRow = 8765;
constexpr int kDialogButton = 8535;
constexpr int kSearchButton = 11100;
constexpr int kCancelButton = 13200;

// What the first letters of a code find.
const QString kLetters = QStringLiteral("OL");
const QString kFound = QStringLiteral("OL-HY-046");

class StorekeeperPath : public ProgramTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
        const QString alone = QStringLiteral("ISNULL(A.GroupSur,0) = 0 and A.StatLocation_cmb = N'0' and ");
        holding = spotWhere(warehouse, alone + QStringLiteral("A.ItemCode = N'%1'").arg(kFound));
        other = spotWhere(warehouse, alone + QStringLiteral("A.ItemCode <> N'%1'").arg(kFound));
        several = spotWhere(warehouse,
                            QStringLiteral("A.GroupSur > 0 and A.Picture_pic is not null and A.Rank = 1"));
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openPlan());
        warehouse.clearTrace();
    }

    /// Does something and waits until a part of the display has changed by it.
    template <typename Act>
    QImage see(const QRect& part, Act act) {
        const QImage before = display.settledPicture();
        act();
        const QImage after = display.changedPicture(before, part);
        EXPECT_FALSE(after.isNull());
        return after;
    }
    QImage clickAndSee(const QRect& part, const QPoint& at) {
        return see(part, [&] { display.click(at); });
    }
    QPoint panelPlace(int left) const { return plan.at(left, kPanelRow); }

    static QString searchStep(const QString& pattern, int step) {
        return QStringLiteral("exec Kolv_mag_LookFor_Item_2 '%1%' , 'ItemCode',%2").arg(pattern).arg(step);
    }
    bool shows(const QImage& picture, const Spot& spot, bool grey) const {
        const QString own = iconFile(warehouse, spot);
        QString greyed = own;
        greyed.replace(QStringLiteral("_P_"), QStringLiteral("_G_"));
        return own != greyed && showsIcon(picture, plan, warehouse, spot, grey ? greyed : own);
    }

    void takeByTheDialog() {
        display.click(panelPlace(kDialogButton));
        const QString window = client->turnTo(kSearchTitle);
        ASSERT_FALSE(window.isEmpty());
        ASSERT_TRUE(traced(searchStep({}, 1)));
        display.type(kLetters);
        ASSERT_TRUE(traced(searchStep(kLetters, 1)));
        keep(display.settledPicture(), QStringLiteral("search-dialog"));
        display.key(QStringLiteral("Down"));
        display.key(QStringLiteral("Return"));
        ASSERT_TRUE(client->backFrom(window));
    }

    /// Opens the stand of a location and gives the place of its window.
    QRect openStand(const Spot& spot) {
        click(standSpot(warehouse, spot.rank, spot.stand));
        const QString window = client->window(kStandTitle);
        EXPECT_FALSE(window.isEmpty());
        display.settledPicture();
        return display.geometry(window);
    }

    Spot holding;
    Spot other;
    Spot several;
};

TEST_F(StorekeeperPath, FindsAMaterialByItsFirstLettersAndSeesWhereItLies) {
    const QImage plain = display.settledPicture();
    EXPECT_TRUE(shows(plain, holding, false));
    EXPECT_TRUE(shows(plain, other, false));
    see(plan.panel(), [this] { clickToolBar(4); });
    ASSERT_TRUE(traced(QStringLiteral("exec kolv_mag_Sur_On_Mag N'P'")));

    ASSERT_NO_FATAL_FAILURE(takeByTheDialog());
    EXPECT_EQ(display.settledPicture().copy(plan.hall()), plain.copy(plan.hall()));
    const QImage grey = clickAndSee(plan.hall(), panelPlace(kSearchButton));
    EXPECT_TRUE(traced(QStringLiteral(" select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = "
                                      "N'%1'  UNION ALL  select Top 1 1 from kolv_mag_Group_Item  where "
                                      "ItemCode = N'%1'")
                           .arg(kFound)));
    EXPECT_TRUE(shows(grey, holding, false));
    EXPECT_TRUE(shows(grey, other, true));
    keep(grey, QStringLiteral("search-grey"));

    const QImage after = clickAndSee(plan.hall(), panelPlace(kCancelButton));
    EXPECT_TRUE(shows(after, holding, false));
    EXPECT_TRUE(shows(after, other, false));
    EXPECT_EQ(after.copy(plan.panel()), plain.copy(plan.panel()));
    EXPECT_TRUE(traced(QStringLiteral("Kolv_mag_Refresh_Percent_Location\t?=N")));
    EXPECT_EQ(display.titles(client->process()), QStringList(Client::mainTitle()));
}

TEST_F(StorekeeperPath, LooksAtAStandFromNear) {
    const QRect stand = openStand(several);
    // Pixels of the window: the location in its grid, the tabs, the button of the list and a corner.
    const QPoint location(24 + 40 * (several.location - 1) + 15, 40 * (5 - several.shelf) + 15);
    constexpr QPoint staticTab(240, 40);
    constexpr QPoint pictureTab(360, 40);
    constexpr QPoint notesTab(435, 40);
    constexpr QPoint listButton(455, 199);
    constexpr QPoint lowerLeftCorner(28, 260);

    clickAndSee(stand, stand.topLeft() + location);
    EXPECT_TRUE(traced(QStringLiteral(" exec Kolv_mag_Param_Location %1,%2,%3,%4")
                           .arg(several.rank)
                           .arg(several.stand)
                           .arg(several.shelf)
                           .arg(several.location)));
    const QImage figures = display.settledPicture();
    keep(figures, QStringLiteral("stand-figures"));
    const QImage picture = clickAndSee(stand, stand.topLeft() + pictureTab);
    keep(picture, QStringLiteral("stand-picture"));
    const QImage notes = clickAndSee(stand, stand.topLeft() + notesTab);
    keep(notes, QStringLiteral("stand-notes"));
    EXPECT_NE(notes.copy(stand), figures.copy(stand));
    clickAndSee(stand, stand.topLeft() + staticTab);
    clickAndSee(stand, stand.topLeft() + listButton);
    EXPECT_TRUE(traced(QStringLiteral("exec kolv_mag_Watch_Item_On_Location %1,%2,%3,%4,N'1',N'P',1,N'W'")
                           .arg(several.rank)
                           .arg(several.stand)
                           .arg(several.shelf)
                           .arg(several.location)));
    keep(display.settledPicture(), QStringLiteral("stand-materials"));
    display.click(stand.topLeft() + lowerLeftCorner);
    EXPECT_TRUE(client->windowGone(kStandTitle));
    EXPECT_EQ(display.titles(client->process()), QStringList(Client::mainTitle()));
}

}  // namespace
}  // namespace regalon::test
