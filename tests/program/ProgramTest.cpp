#include "program/ProgramTest.h"

#include "program/ToolButtons.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace regalon::test {

void ProgramTest::SetUp() {
    ASSERT_TRUE(display.start()) << qPrintable(display.why());
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    ASSERT_NO_FATAL_FAILURE(writeConnectionFile(warehouse, warehouse.connectFile()));
    client = newClient();
}

void ProgramTest::TearDown() {
    if (HasFailure()) {
        const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
        keep(display.picture(), QStringLiteral("failed-%1").arg(QString::fromUtf8(test->name())));
    }
}

std::unique_ptr<Client> ProgramTest::newClient() const {
    auto made = std::make_unique<Client>(display);
    made->setEnvironment(QStringLiteral("REGALON_DRIVE_C"), warehouse.driveC());
    made->setEnvironment(QStringLiteral("XDG_CONFIG_HOME"), warehouse.folder() + QStringLiteral("/config"));
    return made;
}

void ProgramTest::startClient(const QStringList& furtherArguments) {
    const QStringList arguments{u'-' + warehouse.connectFile(), QStringLiteral("-1")};
    ASSERT_TRUE(client->start(arguments + furtherArguments));
    ASSERT_FALSE(client->mainWindow().isEmpty());
}

void ProgramTest::chooseInMenu(const QString& menu, int item) const {
    ASSERT_TRUE(display.activate(client->mainWindow()));
    display.key(menu);
    if (item > 1) {
        display.key(QStringLiteral("Down"), item - 1);
    }
    display.key(QStringLiteral("Return"));
}

void ProgramTest::openPlan(int item) {
    ASSERT_NO_FATAL_FAILURE(chooseInMenu(QStringLiteral("alt+a"), item));
    ASSERT_NO_FATAL_FAILURE(seePlan());
}

void ProgramTest::seePlan(const QRect& within) {
    std::optional<Plan> found;
    ASSERT_TRUE(eventually([&] {
        const QImage picture = display.settledPicture();
        found = findPlan(within.isNull() ? picture : picture.copy(within), scale);
        return found.has_value();
    }));
    plan = *found;
    plan.origin += within.topLeft();
}

void ProgramTest::click(const Spot& spot) const {
    display.click(plan.at(spot.left, spot.top));
}

void ProgramTest::clickToolBar(int button) const {
    constexpr int buttons = 4;
    clickButton(QRect(plan.at(60, 150), plan.at(13500, 420)), button, buttons);
}

void ProgramTest::clickPanelBar(int button) const {
    constexpr int buttons = 2;
    clickButton(QRect(plan.at(5700, 9300), plan.at(14900, 9540)), button, buttons);
}

void ProgramTest::clickButton(const QRect& strip, int button, int outOf) const {
    // A button under the pointer looks wider, until it is drawn anew.
    QList<QRect> buttons;
    eventually([&] {
        buttons = toolButtons(display.settledPicture(), strip, scale);
        return buttons.size() == outOf;
    });
    ASSERT_EQ(buttons.size(), outOf);
    display.click(buttons.at(button - 1).center());
}

bool ProgramTest::traced(const QString& statement) const {
    return eventually([&] { return warehouse.trace().contains(statement); });
}

void ProgramTest::answer(const QString& title, const QString& key) const {
    ASSERT_TRUE(client->answer(title, key)) << qPrintable(display.titles(client->process()).join(u'\n'));
}

void ProgramTest::closeFrame() const {
    ASSERT_TRUE(display.activate(client->mainWindow()));
    display.key(QStringLiteral("alt+F4"));
}

void ProgramTest::answerExit(bool yes) const {
    answer(QStringLiteral("Info..."), yes ? QStringLiteral("alt+t") : QStringLiteral("alt+n"));
}

int ProgramTest::leave() const {
    EXPECT_TRUE(display.activate(client->mainWindow()));
    display.key(QStringLiteral("ctrl+x"));
    answerExit(true);
    return client->exitCode();
}

int ProgramTest::sessions() const {
    constexpr int localAddress = 1;
    constexpr int state = 3;
    const QString port = u':' + QStringLiteral("%1").arg(warehouse.port(), 4, 16, QLatin1Char('0')).toUpper();
    QFile table(QStringLiteral("/proc/net/tcp"));
    if (!table.open(QIODevice::ReadOnly)) {
        return -1;
    }
    int found = 0;
    const QStringList lines = QString::fromLatin1(table.readAll()).split(u'\n');
    for (const QString& line : lines) {
        const QStringList fields = line.simplified().split(u' ');
        found += fields.value(localAddress).endsWith(port) && fields.value(state) == u"01" ? 1 : 0;
    }
    return found;
}

void ProgramTest::keep(const QImage& picture, const QString& name) {
    const QString folder = QStringLiteral(REGALON_BINARY_DIR "/screenshots");
    ASSERT_TRUE(QDir().mkpath(folder));
    ASSERT_TRUE(picture.save(folder + u'/' + name + QStringLiteral(".png")));
}

QString ProgramTest::inDriveC(const QString& name) const {
    return warehouse.driveC() + u'/' + name;
}

void writeConnectionFile(const LocalWarehouse& warehouse, const QString& file, const QString& password,
                         const QString& database) {
    QProcess process;
    process.start(QStringLiteral(REGALON_BINARY_DIR "/bin/regalon-connect"), {file});
    process.write(QStringLiteral("Login:%1\nHaslo:%2\nServer:%3\nBaza:%4\n")
                      .arg(LocalWarehouse::login(), password, warehouse.server(), database)
                      .toUtf8());
    process.closeWriteChannel();
    ASSERT_TRUE(process.waitForFinished());
    ASSERT_EQ(process.exitCode(), 0);
}

QString materialStatement(const Spot& spot) {
    return QStringLiteral(
               " select A.ItemCode,A.ItemName,A.GroupSur,B.GroupSurName,A.StatLocation_cmb from "
               "kolv_mag_Location_Item A  left join kolv_mag_Location_Group B ON A.GroupSur = B.GroupSur"
               " where ") +
           spot.key();
}

QString listStatement(const Spot& spot, int phase) {
    return QStringLiteral("exec kolv_mag_Watch_Detal_Item_On_Location %1,%2,%3,%4,N'1',N'P',%5")
        .arg(spot.rank)
        .arg(spot.stand)
        .arg(spot.shelf)
        .arg(spot.location)
        .arg(phase);
}

}  // namespace regalon::test
