// A storekeeper moves a package with the mouse alone, and finds it on its new location in a second copy of
// the program.
#include "program/ProgramTest.h"
#include "program/Tables.h"

#include <QRegularExpression>

namespace regalon::test {
namespace {

// Where the mouse goes in the shift window, twips of the plan: the confirmation of the location below the
// hall; the buttons under the upper and the lower list; the check boxes of their first rows.
struct Place {
    int left;
    int top;
};
constexpr Place kAcceptLocation{1500, 9430};
constexpr Place kAcceptItem{2200, 3660};
constexpr Place kAcceptShift{2200, 7860};
constexpr Place kFirstPackage{1655, 1150};
constexpr Place kFirstProposal{1655, 4575};
constexpr int kRowHeight = 270;
constexpr int kRowsInSight = 11;
// The menu of the warehouse in the main window, logical pixels.
constexpr QPoint kWarehouseMenu(105, 10);
constexpr int kMenuItems = 4;
constexpr int kShiftItem = 3;

/// The part of a picture that differs from another one.
QRect differenceOf(const QImage& before, const QImage& after) {
    QRect area;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x) {
            if (before.pixel(x, y) != after.pixel(x, y))
                area |= QRect(x, y, 1, 1);
        }
    }
    return area;
}

class ShiftPath : public ProgramTest {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
        // One material, and several packages of it.
        source = spotWhere(
            warehouse,
            QStringLiteral("ISNULL(A.StatLocation_cmb,N'0') = N'0' and ISNULL(A.GroupSur,0) = 0 and "
                           "3 <= (select count(*) from Kolv_Mag_BarCode_Sur B where B.Active = N'Y' and "
                           "B.Rank = A.Rank and B.Stand = A.Stand and B.Shelf = A.Shelf and B.Location = "
                           "A.Location and B.ItemCode = A.ItemCode) and not exists (select 1 from "
                           "Kolv_Mag_BarCode_Sur B where B.Active = N'Y' and B.Rank = A.Rank and B.Stand = "
                           "A.Stand and B.Shelf = A.Shelf and B.Location = A.Location and B.ItemCode <> "
                           "A.ItemCode)"));
    }

    /// Opens the shift window by the menu and waits for its plan.
    void openShift() {
        const QString main = client->mainWindow();
        display.activate(main);
        const QRect window = display.geometry(main);
        const QImage before = display.settledPicture();
        display.click(window.topLeft() + kWarehouseMenu);
        const QImage open = display.changedPicture(before, window);
        ASSERT_FALSE(open.isNull());
        // Below the bar only the menu itself is new.
        const QRect below = window.adjusted(0, 2 * kWarehouseMenu.y() + 4, 0, 0);
        const QRect menu = differenceOf(before.copy(below), open.copy(below)).translated(below.topLeft());
        const int height = menu.height() / (kMenuItems + 1);
        display.click(QPoint(menu.center().x(), menu.top() + kShiftItem * height - height / 4));
        ASSERT_NO_FATAL_FAILURE(seePlan(window));
    }
    void clickAt(const Place& place) const { display.click(plan.at(place.left, place.top)); }
    /// Waits for a call of a procedure whose values begin with these.
    bool called(const QString& procedure, const QStringList& values) const {
        const QString wanted = QStringList(QStringList(procedure) + values).join(u'\t');
        return eventually([&] {
            for (const QString& entry : warehouse.trace()) {
                QString text = entry;
                if (text.remove(QRegularExpression(QStringLiteral("(?<=\t)[^\t=]*="))).startsWith(wanted))
                    return true;
            }
            return false;
        });
    }
    static QStringList numbers(const Spot& spot) {
        return {QString::number(spot.rank), QString::number(spot.stand), QString::number(spot.shelf),
                QString::number(spot.location)};
    }
    static QString itemsStatement(const Spot& spot) {
        return QStringLiteral("exec kolv_mag_Watch_Item_On_Location %1,N'1',N'P',1,N'S'")
            .arg(numbers(spot).join(u','));
    }
    QString one(const QString& sql) const { return linesOf(warehouse, sql).value(0); }
    QString placeOf(const QString& barCode) const {
        return one(
            QStringLiteral("select Rank,Stand,Shelf,Location from Kolv_Mag_BarCode_Sur where BarCode = "
                           "N'%1'")
                .arg(barCode));
    }
    /// Picks a location and sees the packages of its material.
    void pickPackages(const Spot& spot) {
        warehouse.clearTrace();
        click(spot);
        ASSERT_TRUE(
            traced(QStringLiteral("select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item where ") +
                   spot.key()));
        clickAt(kAcceptLocation);
        ASSERT_TRUE(traced(itemsStatement(spot)));
        display.settledPicture();
        clickAt(kAcceptItem);
        ASSERT_TRUE(traced(QStringLiteral("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',1")));
        display.settledPicture();
    }

    Spot source;
};

TEST_F(ShiftPath, FromTheFirstClickToTheMovedPackageByTheMouseAlone) {
    const QString barCode =
        one(QStringLiteral("select min(BarCode) from Kolv_Mag_BarCode_Sur where Active = N'Y' and ") +
            source.key());
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openShift());
    keep(display.settledPicture(), QStringLiteral("shift-browsing"));
    ASSERT_NO_FATAL_FAILURE(pickPackages(source));
    keep(display.settledPicture(), QStringLiteral("shift-packages"));

    clickAt(kFirstPackage);
    ASSERT_TRUE(called(QStringLiteral("kolv_mag_Shift_Location_BarCode_Status"),
                       {barCode, QStringLiteral("1"), QStringLiteral("P"), QStringLiteral("N")}));
    ASSERT_TRUE(traced(QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL")));
    display.settledPicture();
    // The first row whose location takes one material: its icon tells its fill.
    const QStringList row =
        one(QStringLiteral(
                "select top 1 P.ID,P.Rank,P.Stand,P.Shelf,P.Location from ##Temp_Prop_Location P left "
                "join kolv_mag_Location_Item A on A.Rank = P.Rank and A.Stand = P.Stand and A.Shelf = "
                "P.Shelf and A.Location = P.Location where P.Status in (N'C',N'D') and "
                "ISNULL(A.StatLocation_cmb,N'0') = N'0' and ISNULL(A.GroupSur,0) = 0 order by P.ID"))
            .split(u'/');
    ASSERT_EQ(row.size(), 5);
    const int number = row.first().toInt();
    ASSERT_LE(number, kRowsInSight);
    const QStringList target = row.mid(1);
    clickAt({kFirstProposal.left, kFirstProposal.top + (number - 1) * kRowHeight});
    keep(display.settledPicture(), QStringLiteral("shift-target"));
    EXPECT_EQ(placeOf(barCode), numbers(source).join(u'/')) << "a tick moves nothing";

    warehouse.clearTrace();
    clickAt(kAcceptShift);
    ASSERT_TRUE(called(QStringLiteral("kolv_mag_Shift_Location_BarCode"), QStringList(barCode) + target));
    EXPECT_TRUE(traced(QStringLiteral("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',1")))
        << "the lists are read anew";
    EXPECT_TRUE(traced(QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL")));
    keep(display.settledPicture(), QStringLiteral("shift-moved"));
    EXPECT_EQ(placeOf(barCode), target.join(u'/'));
    EXPECT_EQ(one(QStringLiteral("select count(*) from Kolv_Mag_BarCode_Input_Sur_tym where BarCode = N'%1'")
                      .arg(barCode)),
              QStringLiteral("0"));
    EXPECT_EQ(display.titles(client->process()), QStringList(Client::mainTitle())) << "no message";

    // The same warehouse in a second copy of the program, while the first is still open.
    const std::unique_ptr<Client> first = std::move(client);
    client = newClient();
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openShift());
    const Spot found =
        spotOf(warehouse, target[0].toInt(), target[1].toInt(), target[2].toInt(), target[3].toInt());
    EXPECT_TRUE(showsIcon(display.settledPicture(), plan, warehouse, found, iconFile(warehouse, found)))
        << "the fill with the package";
    ASSERT_NO_FATAL_FAILURE(pickPackages(found));
    EXPECT_EQ(one(QStringLiteral("select count(*) from Kolv_Mag_BarCode_Input_Sur_tym where BarCode = N'%1'")
                      .arg(barCode)),
              QStringLiteral("1"))
        << "it stands in the list of the second copy";
    keep(display.settledPicture(), QStringLiteral("shift-second-copy"));
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(one(QStringLiteral("select count(*) from Kolv_Mag_BarCode_Input_Sur_tym where BarCode = N'%1'")
                      .arg(barCode)),
              QStringLiteral("0"))
        << "the end of the program clears what it staged";
}

}  // namespace
}  // namespace regalon::test
