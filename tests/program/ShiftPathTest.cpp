// A storekeeper moves a package with the mouse alone, and finds it on its new location in a second copy of
// the program.
#include "program/ShiftProgram.h"

namespace regalon::test {
namespace {

using ShiftPath = ShiftProgram;

TEST_F(ShiftPath, FromTheFirstClickToTheMovedPackageByTheMouseAlone) {
    const QString barCode =
        one(QStringLiteral("select min(BarCode) from Kolv_Mag_BarCode_Sur where Active = N'Y' and ") +
            source.key());
    ASSERT_NO_FATAL_FAILURE(startClient());
    ASSERT_NO_FATAL_FAILURE(openShift());
    keep(display.settledPicture(), QStringLiteral("shift-browsing"));
    ASSERT_NO_FATAL_FAILURE(pickPackages(source));
    keep(display.settledPicture(), QStringLiteral("shift-packages"));

    ASSERT_NO_FATAL_FAILURE(tickPackage(1, barCode));
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
    clickRow(kFirstProposal, number);
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
    EXPECT_EQ(stagedRows(barCode), 0);
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
    EXPECT_EQ(stagedRows(barCode), 1) << "it stands in the list of the second copy";
    keep(display.settledPicture(), QStringLiteral("shift-second-copy"));
    EXPECT_EQ(leave(), 0);
    EXPECT_EQ(stagedRows(barCode), 0) << "the end of the program clears what it staged";
}

}  // namespace
}  // namespace regalon::test
