#include "views/DetailWindow.h"

#include "support/Events.h"

namespace regalon::test {

DetailWindow::DetailWindow() = default;

void DetailWindow::SetUp() {
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
}

void DetailWindow::addStand(const QString& locations) {
    ASSERT_TRUE(warehouse.addStand(6, 1, static_cast<int>(locations.size()), locations, 3000, 4000,
                                   QStringLiteral("R6_S_01.ico")))
        << qPrintable(warehouse.why());
    changeLocations(QStringLiteral("Stand = 1"),
                    QStringLiteral("LocationName = N'6_1_' + cast(Shelf as nvarchar(2)) + N'_' + "
                                   "cast(Location as nvarchar(2)) + N'_LA_7', LocationPercent = 10, "
                                   "LocationIcon = N'LA_P_10.ico'"));
}

void DetailWindow::changeLocations(const QString& condition, const QString& columns) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Location set ") + columns +
                               QStringLiteral(" where Rank = 6 and ") + condition}))
        << qPrintable(warehouse.why());
}

void DetailWindow::assign(const QString& columns, const QString& values) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("delete from kolv_mag_Location_Item where Rank = 6 and Shelf = 1 and Location = 1"),
         QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,") + columns +
             QStringLiteral(") values (6,1,1,1,") + values + QStringLiteral(")")}))
        << qPrintable(warehouse.why());
}

void DetailWindow::open(qint16 rank, qint16 stand) {
    if (!window)
        window = std::make_unique<frmMagWatchDetal>(warehouse.context);
    window->setTopStand(1500);
    window->setLeftStand(3000);
    window->setRank(rank);
    window->setStand(stand);
    showAndWait(window.get());
}

void DetailWindow::clickLocation(int shelf, int position) {
    ASSERT_TRUE(location(shelf, position)->isVisible());
    clickItem(surface(), location(shelf, position));
}

void DetailWindow::clickStand() {
    ASSERT_TRUE(item("imgBookStand")->isVisible());
    clickItem(surface(), item("imgBookStand"));
}

void DetailWindow::clickTab(int number) {
    auto* tabs = control<TabStrip>("tabSurParam");
    clickAt(tabs, tabs->tabRect(number - 1).center());
}

bool DetailWindow::press(const char* key) {
    return clickToolButton(window.get(), QString::fromLatin1(key));
}

QList<int> DetailWindow::drawn() const {
    QList<int> indexes;
    for (int index = 0; index < 12; ++index) {
        if (item("imglocation", index)->isVisible())
            indexes.append(index);
    }
    return indexes;
}

}  // namespace regalon::test
