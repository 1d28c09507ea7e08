#include "stock/ShiftWindow.h"

#include "stock/ProposalRow.h"
#include "support/Events.h"

#include <QAction>

namespace regalon::test {

namespace {

constexpr int kCodeFromEnd = 1;

}  // namespace

void ShiftWindow::SetUp() {
    ASSERT_NO_FATAL_FAILURE(PlanWindow::SetUp());
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("3"), 3000, 3000, QStringLiteral("R1_S_01.ico")));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("2"), 5000, 3000, QStringLiteral("R1_S_02.ico")));
    ASSERT_TRUE(warehouse.addStand(5, 1, 1, QStringLiteral("1"), 650, 4000, QStringLiteral("R5_S_01.ico")));
    run(QStringLiteral(
        "insert into OITM (ItemCode,ItemName,InvntryUom) values (N'FARBA',N'Farba żółta',N'kg'),"
        "(N'KLEJ',N'Klej',N'kg')"));
    run(
        QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,"
                       "GroupSur,StatLocation_cmb) values (1,1,1,1,N'FARBA',N'Farba żółta',0,N'0'),"
                       "(5,1,1,1,N'KLEJ',N'Klej',0,N'0')"));
    for (const char* barCode : {"F1", "F2", "F3"})
        addPackage(barCode, "FARBA", 10, "1,1,1,1");
    addPackage("K1", "KLEJ", 5, "1,1,1,1");
    addPackage("K2", "KLEJ", 7, "5,1,1,1");
}

void ShiftWindow::open() {
    window = std::make_unique<frmMagWatchShiftLoc>(warehouse.context, recordedDetail());
    show();
}

void ShiftWindow::run(const QString& statement) {
    ASSERT_TRUE(warehouse.run({statement})) << qPrintable(warehouse.why());
}

void ShiftWindow::addPackage(const char* barCode, const char* itemCode, double quantity, const char* place) {
    run(QStringLiteral("insert into Kolv_Mag_BarCode_Sur (BarCode,ItemCode,Quantity,PackLength,PackWidth,"
                       "PackHeight,PackWeight,Rank,Stand,Shelf,Location,Active) values (N'%1',N'%2',%3,100,"
                       "100,100,1,%4,N'Y')")
            .arg(QString::fromLatin1(barCode), QString::fromLatin1(itemCode))
            .arg(quantity)
            .arg(QString::fromLatin1(place)));
}

QString ShiftWindow::placeOf(const char* barCode) {
    return warehouse.value(
        QStringLiteral("select cast(Rank as nvarchar(9)) + N' ' + cast(Stand as nvarchar(9)) + N' ' + "
                       "cast(Shelf as nvarchar(9)) + N' ' + cast(Location as nvarchar(9)) from "
                       "Kolv_Mag_BarCode_Sur where BarCode = N'%1'")
            .arg(QString::fromLatin1(barCode)));
}

int ShiftWindow::staged(const QString& condition) {
    return warehouse
        .value(QStringLiteral("select count(*) from Kolv_Mag_BarCode_Input_Sur_tym where ") + condition)
        .toInt();
}

QAction* ShiftWindow::acceptLocationButton() const {
    return toolBar("tlbAkceptLocation")->button(1);
}

void ShiftWindow::press(const char* toolBarName, const char* key) {
    ASSERT_TRUE(clickToolButton(toolBar(toolBarName), QString::fromLatin1(key))) << toolBarName;
}

void ShiftWindow::tick(ListView* list, int row) {
    ASSERT_LE(row, list->itemCount());
    ASSERT_TRUE(list->isVisible());
    clickCheckBox(list, row - 1);
}

void ShiftWindow::pickSource() {
    clickLocation(QStringLiteral("1_1_1_1"));
    acceptLocation();
}

void ShiftWindow::pickPackages() {
    pickSource();
    acceptItem();
}

void ShiftWindow::tickPackage(const char* barCode) {
    const qsizetype row = column(barCodes(), kCodeFromEnd).indexOf(QString::fromLatin1(barCode));
    ASSERT_GE(row, 0) << barCode;
    tick(barCodes(), static_cast<int>(row) + 1);
}

void ShiftWindow::tickTarget(const char* barCode, const QString& place) {
    for (int number = 1; number <= proposals()->itemCount(); ++number) {
        const ProposalRow row(*proposals(), *proposals()->item(number));
        const LocationAddress target = row.target();
        const QString words = QStringLiteral("%1 %2 %3 %4")
                                  .arg(target.Rank)
                                  .arg(target.Stand)
                                  .arg(target.Shelf)
                                  .arg(target.Location);
        if (row.barCode() == QLatin1String(barCode) && words == place) {
            tick(proposals(), number);
            return;
        }
    }
    FAIL() << barCode << " has no proposal " << qPrintable(place);
}

QStringList ShiftWindow::column(const ListView* list, int fromEnd) {
    QStringList texts;
    for (int number = 1; number <= list->itemCount(); ++number)
        texts.append(list->item(number)->subItem(list->headerCount() - fromEnd));
    return texts;
}

QList<int> ShiftWindow::ticked(const ListView* list) {
    QList<int> rows;
    for (int number = 1; number <= list->itemCount(); ++number) {
        if (list->item(number)->checked())
            rows.append(number);
    }
    return rows;
}

QList<int> ShiftWindow::icons(const ListView* list) {
    QList<int> numbers;
    for (int number = 1; number <= list->itemCount(); ++number)
        numbers.append(list->item(number)->smallIcon());
    return numbers;
}

int ShiftWindow::selected(const ListView* list) {
    const ListItem* item = list->selectedItem();
    return item == nullptr ? 0 : item->index();
}

void ShiftWindow::expectBrowsing() const {
    EXPECT_FALSE(shiftFrame()->isVisible());
    EXPECT_FALSE(acceptLocationButton()->isEnabled());
}

void ShiftWindow::expectLocationPicked() const {
    EXPECT_FALSE(shiftFrame()->isVisible());
    EXPECT_TRUE(acceptLocationButton()->isEnabled());
}

void ShiftWindow::expectChoosingItem() const {
    EXPECT_TRUE(shiftFrame()->isVisible());
    EXPECT_TRUE(items()->isVisible());
    EXPECT_FALSE(barCodes()->isVisible());
    EXPECT_TRUE(acceptLocationButton()->isEnabled());
    EXPECT_EQ(captionsOf(toolBar("tlbAkceptItem")),
              QStringList({QStringLiteral("Zatwierdź surowiec do przesunięcia"),
                           QStringLiteral("Anuluj przesunięcie surowca")}));
}

void ShiftWindow::expectChoosingBarCode() const {
    EXPECT_TRUE(shiftFrame()->isVisible());
    EXPECT_FALSE(items()->isVisible());
    EXPECT_TRUE(barCodes()->isVisible());
    EXPECT_TRUE(acceptLocationButton()->isEnabled());
    EXPECT_EQ(captionsOf(toolBar("tlbAkceptItem")),
              QStringList({QStringLiteral("Zatwierdź jednostkowy surowiec"),
                           QStringLiteral("Powrót do wyboru surowca")}));
}

QStringList ShiftWindow::traced() const {
    QStringList texts;
    for (const LocalWarehouse::TraceEntry& entry : warehouse.server.entries()) {
        if (entry.text.startsWith(QStringLiteral("/* probe")) || entry.text.contains(u"sp_sproc_columns"))
            continue;
        QStringList parts(entry.text);
        for (const QString& value : entry.values)
            parts.append(value.section(QLatin1Char('='), 1));
        texts.append(parts.join(QLatin1Char(' ')));
    }
    return texts;
}

QStringList replaceProcedure(const QString& name, const QString& parametersAndBody) {
    return {QStringLiteral("drop procedure ") + name,
            QStringLiteral("create procedure ") + name + QLatin1Char(' ') + parametersAndBody};
}

}  // namespace regalon::test
