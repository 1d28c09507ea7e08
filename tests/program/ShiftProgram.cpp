#include "program/ShiftProgram.h"

#include "program/Tables.h"

#include <QRegularExpression>

namespace regalon::test {

namespace {

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

QString itemsStatement(const QStringList& address) {
    return QStringLiteral("exec kolv_mag_Watch_Item_On_Location %1,N'1',N'P',1,N'S'").arg(address.join(u','));
}

}  // namespace

void ShiftProgram::SetUp() {
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

void ShiftProgram::openShift() {
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

void ShiftProgram::pickPackages(const Spot& spot) {
    warehouse.clearTrace();
    click(spot);
    ASSERT_TRUE(traced(
        QStringLiteral("select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item where ") + spot.key()));
    keep(display.settledPicture(), QStringLiteral("shift-location"));
    clickAt(kAcceptLocation);
    ASSERT_TRUE(traced(itemsStatement(numbers(spot))));
    keep(display.settledPicture(), QStringLiteral("shift-materials"));
    clickAt(kAcceptItem);
    ASSERT_TRUE(traced(QStringLiteral("exec kolv_mag_Watch_BarCode_On_Location 1,N'P',N'S',1")));
    display.settledPicture();
}

void ShiftProgram::tickPackage(int row, const QString& barCode) {
    warehouse.clearTrace();
    clickRow(kFirstPackage, row);
    ASSERT_TRUE(called(QStringLiteral("kolv_mag_Shift_Location_BarCode_Status"),
                       {barCode, QStringLiteral("1"), QStringLiteral("P"), QStringLiteral("N")}));
    ASSERT_TRUE(traced(QStringLiteral("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',1,NULL")));
    display.settledPicture();
}

bool ShiftProgram::called(const QString& procedure, const QStringList& values) const {
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

QString ShiftProgram::one(const QString& sql) const {
    return linesOf(warehouse, sql).value(0);
}

QString ShiftProgram::placeOf(const QString& barCode) const {
    return one(
        QStringLiteral("select Rank,Stand,Shelf,Location from Kolv_Mag_BarCode_Sur where BarCode = N'%1'")
            .arg(barCode));
}

int ShiftProgram::stagedRows(const QString& barCode) const {
    return one(QStringLiteral("select count(*) from Kolv_Mag_BarCode_Input_Sur_tym where BarCode = N'%1'")
                   .arg(barCode))
        .toInt();
}

QStringList ShiftProgram::numbers(const Spot& spot) {
    return {QString::number(spot.rank), QString::number(spot.stand), QString::number(spot.shelf),
            QString::number(spot.location)};
}

}  // namespace regalon::test
