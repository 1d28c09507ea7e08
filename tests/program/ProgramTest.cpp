#include "program/ProgramTest.h"

#include "program/ToolButtons.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace regalon::test {

void ProgramTest::SetUp() {
    ASSERT_TRUE(display.start()) << qPrintable(display.why());
    ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
    writeConnectionFile(warehouse.connectFile());
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

void ProgramTest::writeConnectionFile(const QString& file, const QString& password) const {
    QProcess process;
    process.start(QStringLiteral(REGALON_BINARY_DIR "/bin/regalon-connect"), {file});
    process.write(QStringLiteral("Login:%1\nHaslo:%2\nServer:%3\nBaza:%4\n")
                      .arg(LocalWarehouse::login(), password, warehouse.server(), LocalWarehouse::database())
                      .toUtf8());
    process.closeWriteChannel();
    ASSERT_TRUE(process.waitForFinished());
    ASSERT_EQ(process.exitCode(), 0);
}

void ProgramTest::startClient(const QStringList& furtherArguments) {
    const QStringList arguments{u'-' + warehouse.connectFile(), QStringLiteral("-1")};
    ASSERT_TRUE(client->start(arguments + furtherArguments));
    ASSERT_FALSE(client->mainWindow().isEmpty());
}

void ProgramTest::openPlan() {
    display.activate(client->mainWindow());
    display.key(QStringLiteral("alt+a"));
    display.key(QStringLiteral("Return"));
    std::optional<Plan> found;
    ASSERT_TRUE(eventually([&] {
        found = findPlan(display.picture(), scale);
        return found.has_value();
    }));
    display.settledPicture();
    plan = *found;
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
    const QList<QRect> buttons = toolButtons(display.settledPicture(), strip, scale);
    ASSERT_EQ(buttons.size(), outOf);
    display.click(buttons.at(button - 1).center());
}

bool ProgramTest::traced(const QString& statement) const {
    return eventually([&] { return warehouse.trace().contains(statement); });
}

void ProgramTest::closeFrame() const {
    display.activate(client->mainWindow());
    display.key(QStringLiteral("alt+F4"));
}

void ProgramTest::answerExit(bool yes) const {
    const QString title = QStringLiteral("Info...");
    ASSERT_FALSE(client->window(title).isEmpty());
    display.key(yes ? QStringLiteral("alt+t") : QStringLiteral("alt+n"));
    ASSERT_TRUE(client->windowGone(title));
}

int ProgramTest::leave() const {
    display.activate(client->mainWindow());
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
