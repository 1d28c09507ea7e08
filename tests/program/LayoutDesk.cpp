#include "program/LayoutDesk.h"

#include "program/Tables.h"

#include <QRect>

#include <cstdlib>

namespace regalon::test {

namespace {

const QString kSearchTitle = QStringLiteral("Wyszukiwanie surowca");
const QString kFileTitle = QStringLiteral("Wybór pliku graficznego");

// Where the frames lie at first, and their heights; twips.
constexpr int frameLeft = 120;
constexpr int frameWidth = 14970;
constexpr int standTop = 7000;
constexpr int standHeight = 2700;
constexpr int locationHeight = 2490;
constexpr int locationTop = standTop - locationHeight + 70;
constexpr int groupHeight = 5835;
constexpr int barHeight = 480;

constexpr int twipsOfPixel = 15;
constexpr int dark = 100;  // of 255

/// What the search dialog asks for while this stands in its box.
QString searchStatement(const QString& text) {
    return QStringLiteral("exec Kolv_mag_LookFor_Item '%1%' , 'ItemCode',1").arg(text);
}

bool isEdge(const QImage& picture, QPoint left, int length) {
    for (int step = 0; step < length; ++step) {
        if (!picture.valid(left + QPoint(step, 0)) || qGray(picture.pixel(left + QPoint(step, 0))) >= dark) {
            return false;
        }
    }
    return true;
}

}  // namespace

const QString& LayoutDesk::messageTitle() {
    static const QString title = QStringLiteral("Komunikat");
    return title;
}

void LayoutDesk::SetUp() {
    ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
    for (const char* table :
         {"Kolv_Mag_BarCode_Sur_History", "Kolv_Mag_BarCode_Sur", "kolv_mag_Location_Item",
          "kolv_mag_Location", "kolv_mag_Stand", "kolv_mag_Group_Item", "kolv_mag_Location_Group"}) {
        ASSERT_TRUE(warehouse.run(QStringLiteral("delete from ") + QString::fromLatin1(table)))
            << qPrintable(warehouse.why());
    }
    m_corners = {QPoint(frameLeft, standTop), QPoint(frameLeft, locationTop), QPoint()};
}

void LayoutDesk::openEditor() {
    constexpr int item = 2;
    openPlan(item);
}

void LayoutDesk::pressInStrip(int button) const {
    constexpr int buttons = 5;
    restHand();
    clickButton(QRect(plan.at(60, 150), plan.at(13500, 420)), button, buttons);
}

/// The corner of the frame of this height, found by its upper and lower edge, once it lies where it is
/// wanted.
QPoint LayoutDesk::findFrame(int height, const std::function<bool(int top)>& wanted) const {
    const int length = frameWidth / twipsOfPixel;
    const QPoint down(0, height / twipsOfPixel - 1);
    QPoint corner;
    EXPECT_TRUE(eventually([&] {
        const QImage picture = display.settledPicture();
        for (QPoint left = plan.at(frameLeft, 0); left.y() < picture.height(); left.ry() += 1) {
            if (isEdge(picture, left, length) && isEdge(picture, left + down, length)) {
                corner = QPoint(frameLeft, (left - plan.origin).y() * twipsOfPixel);
                return wanted(corner.y());
            }
        }
        return false;
    })) << "a frame of "
        << height << ", seen at " << corner.y();
    return corner;
}

void LayoutDesk::moveFramesUp() {
    display.click(plan.at(14100, 290));
    m_corners[StandFrame] = findFrame(standHeight, [](int top) { return top < standTop; });
    m_corners[LocationFrame] = m_corners[StandFrame] + QPoint(0, standHeight);
}

void LayoutDesk::moveFramesDown() {
    display.click(plan.at(14100, 290));
    m_corners[StandFrame] =
        findFrame(standHeight, [](int top) { return std::abs(top - standTop) <= twipsOfPixel; });
    m_corners[LocationFrame] = QPoint(frameLeft, locationTop);
}

void LayoutDesk::openGroups() {
    constexpr int groupsButton = 4;
    pressInStrip(groupsButton);
    m_corners[GroupFrame] = findFrame(groupHeight, [](int) { return true; });
}

/// Away from every button: one under the pointer looks wider than the others.
void LayoutDesk::restHand() const {
    display.moveTo(plan.at(7600, 700));
}

QPoint LayoutDesk::at(const Control& control) const {
    const QPoint corner = m_corners.at(control.frame);
    return plan.at(corner.x() + control.left, corner.y() + control.top);
}

void LayoutDesk::clickLocation(int rank, int stand, int shelf, int location) const {
    ProgramTest::click(spotOf(warehouse, rank, stand, shelf, location));
}

void LayoutDesk::clickStand(int rank, int stand) const {
    ProgramTest::click(standSpot(warehouse, rank, stand));
}

void LayoutDesk::press(const Bar& bar, int button) const {
    restHand();
    const QRect strip(at({bar.frame, bar.left, bar.top}),
                      at({bar.frame, bar.left + bar.width, bar.top + barHeight}));
    clickButton(strip, button, bar.buttons);
}

void LayoutDesk::choose(const Control& list, int row) const {
    click(list);
    display.key(QStringLiteral("Home"));
    if (row > 0) {
        display.key(QStringLiteral("Down"), row);
    }
    display.key(QStringLiteral("Return"));
}

void LayoutDesk::chooseLast(const Control& list) const {
    click(list);
    display.key(QStringLiteral("End"));
    display.key(QStringLiteral("Return"));
}

void LayoutDesk::enter(const Control& box, const QString& text) const {
    click(box);
    display.key(QStringLiteral("ctrl+a"));
    display.type(text);
}

void LayoutDesk::mark(const Control& list, int row) const {
    click(list);
    display.key(QStringLiteral("Home"));
    if (row > 0) {
        display.key(QStringLiteral("Down"), row);
    }
}

void LayoutDesk::pickFile(const Control& button, const QString& name) {
    click(button);
    const QString window = client->turnTo(kFileTitle);
    ASSERT_FALSE(window.isEmpty());
    display.type(name);
    display.key(QStringLiteral("Return"));
    ASSERT_TRUE(client->backFrom(window));
}

void LayoutDesk::openSearch(QString& window) {
    click(kLookFor);
    window = client->turnTo(kSearchTitle);
    ASSERT_FALSE(window.isEmpty());
    warehouse.clearTrace();
}

void LayoutDesk::lookFor(const QString& code) {
    QString window;
    ASSERT_NO_FATAL_FAILURE(openSearch(window));
    display.type(code);
    ASSERT_TRUE(traced(searchStatement(code)));
    display.key(QStringLiteral("Down"));
    display.key(QStringLiteral("Return"));
    ASSERT_TRUE(client->backFrom(window));
}

void LayoutDesk::copyMessage(const QString& title) {
    const QString window = client->turnTo(title);
    ASSERT_FALSE(window.isEmpty());
    // The text begins beside the icon, in the upper part of the box; pixels.
    constexpr QPoint inText(100, 22);
    display.click(display.geometry(window).topLeft() + inText);
    display.key(QStringLiteral("ctrl+a"));
    display.key(QStringLiteral("ctrl+c"));
}

void LayoutDesk::pasteIntoSearch(const QString& expected) {
    QString window;
    ASSERT_NO_FATAL_FAILURE(openSearch(window));
    display.key(QStringLiteral("ctrl+v"));
    EXPECT_TRUE(traced(searchStatement(expected))) << qPrintable(warehouse.trace().join(u'\n'));
    display.key(QStringLiteral("Escape"));
    ASSERT_TRUE(client->backFrom(window));
}

void LayoutDesk::expectRows(const QString& sql, const QStringList& expected) const {
    // What comes behind a save that failed would wait in vain.
    ASSERT_FALSE(HasFatalFailure());
    eventually([&] { return linesOf(warehouse, sql) == expected; });
    ASSERT_EQ(linesOf(warehouse, sql), expected);
}

void LayoutDesk::expectStands(const QStringList& expected) const {
    expectRows(
        QStringLiteral("select Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,StandTop,StandVisable,"
                       "StandEnable,StandFrameArround,StandDescription from kolv_mag_Stand "
                       "order by Rank,Stand"),
        expected);
}

void LayoutDesk::expectLocations(const QStringList& expected) const {
    expectRows(
        QStringLiteral("select LocationName,LocationIcon,LocationPercent from kolv_mag_Location order by "
                       "Rank,Stand,Shelf,Location"),
        expected);
}

void LayoutDesk::expectOnPlan(int rank) const {
    const QString condition = QStringLiteral(" where Rank = %1").arg(rank);
    const QVector<QVector<QVariant>> stands = rowsOf(
        warehouse, QStringLiteral("select StandLeft,StandTop,StandIcon from kolv_mag_Stand") + condition);
    const QVector<QVector<QVariant>> locations = rowsOf(
        warehouse, QStringLiteral("select Rank,Stand,Shelf,Location from kolv_mag_Location") + condition);
    const auto allShown = [&] {
        const QImage picture = display.picture();
        for (const QVector<QVariant>& stand : stands) {
            if (!showsPicture(picture, plan, warehouse, stand[0].toInt(), stand[1].toInt(),
                              stand[2].toString())) {
                return false;
            }
        }
        for (const QVector<QVariant>& row : locations) {
            const Spot spot =
                spotOf(warehouse, row[0].toInt(), row[1].toInt(), row[2].toInt(), row[3].toInt());
            if (!showsIcon(picture, plan, warehouse, spot, iconFile(warehouse, spot))) {
                return false;
            }
        }
        return true;
    };
    EXPECT_TRUE(eventually(allShown)) << "row " << rank;
}

int LayoutDesk::rowOf(const QString& sql, const QString& key) const {
    const QVector<QVector<QVariant>> all = rowsOf(warehouse, sql);
    for (int row = 0; row < static_cast<int>(all.size()); ++row) {
        if (all[row][0].toString() == key) {
            return row;
        }
    }
    ADD_FAILURE() << "no row " << qPrintable(key) << " in " << qPrintable(sql);
    return 0;
}

QList<LocalWarehouse::TraceEntry> LayoutDesk::calls(const QString& procedure) const {
    QList<LocalWarehouse::TraceEntry> found;
    const QList<LocalWarehouse::TraceEntry> all = warehouse.entries();
    for (const LocalWarehouse::TraceEntry& entry : all) {
        if (entry.kind == u"RPC" && entry.text == procedure) {
            found.append(entry);
        }
    }
    return found;
}

bool LayoutDesk::called(const QString& procedure) const {
    return eventually([&] { return !calls(procedure).isEmpty(); });
}

}  // namespace regalon::test
