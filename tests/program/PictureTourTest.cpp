// scripts/picture-tour, which shows the demo where there is no display.
#include "program/Plan.h"
#include "program/ProgramTest.h"

#include <QDir>
#include <QRegularExpression>

#include <string>

namespace regalon::test {
namespace {

class PictureTour : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why()); }

    /// Runs the tour without a display of its own; the exit code.
    int tour(const QString& connectionFile) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.remove(QStringLiteral("DISPLAY"));
        environment.insert(QStringLiteral("REGALON_DRIVE_C"), warehouse.driveC());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QStringLiteral(REGALON_SOURCE_DIR "/scripts/picture-tour"),
                      {QStringLiteral(REGALON_BINARY_DIR "/bin/regalon"), connectionFile, output()});
        constexpr int patience = 560000;  // milliseconds
        return process.waitForFinished(patience) && process.exitStatus() == QProcess::NormalExit
                   ? process.exitCode()
                   : -1;
    }

    QString output() const { return warehouse.folder() + QStringLiteral("/tour"); }

    LocalWarehouse warehouse;
};

TEST_F(PictureTour, LeavesPicturesOfThePlanTheSearchTheRefreshAStandTheMaterialsAShiftAndBarCodes) {
    ASSERT_NO_FATAL_FAILURE(writeConnectionFile(warehouse, warehouse.connectFile()));
    ASSERT_EQ(tour(warehouse.connectFile()), 0);

    const auto picture = [this](const char* name) {
        return QImage(output() + u'/' + QString::fromLatin1(name)).convertToFormat(QImage::Format_RGB32);
    };
    EXPECT_TRUE(findPlan(picture("plan.png")).has_value());
    EXPECT_TRUE(findPlan(picture("location.png")).has_value());
    EXPECT_TRUE(findPlan(picture("plan-2x.png"), 2).has_value());
    EXPECT_FALSE(picture("materials.png").isNull());
    EXPECT_NE(picture("plan.png"), picture("location.png"));
    EXPECT_NE(picture("location.png"), picture("materials.png"));
    EXPECT_NE(picture("search.png"), picture("grey.png"));
    EXPECT_NE(picture("grey.png"), picture("autorefresh.png"));
    EXPECT_NE(picture("search.png"), picture("lookfor.png"));
    EXPECT_NE(picture("stand.png"), picture("stand-picture.png"));
    EXPECT_NE(picture("stand-picture.png"), picture("stand-notes.png"));
    EXPECT_NE(picture("stand-notes.png"), picture("stand-materials.png"));
    QImage last = picture("editor.png");
    EXPECT_TRUE(findPlan(last).has_value());
    for (const char* name : {"editor-stand", "editor-number", "editor-status", "editor-text",
                             "editor-picture", "editor-search", "editor-up", "editor-groups"}) {
        const std::string file(name);
        const QImage next = picture((file + ".png").c_str());
        EXPECT_FALSE(next.isNull() || next == last) << name;
        EXPECT_FALSE(picture((file + "-2x.png").c_str()).isNull()) << name;
        last = next;
    }
    EXPECT_TRUE(findPlan(picture("shift-location.png")).has_value());
    EXPECT_NE(picture("shift.png"), picture("shift-location.png"));
    EXPECT_NE(picture("shift-location.png"), picture("shift-materials.png"));
    EXPECT_NE(picture("shift-materials.png"), picture("shift-packages.png"));
    EXPECT_TRUE(findPlan(picture("barcode-location.png")).has_value());
    EXPECT_NE(picture("barcode.png"), picture("barcode-location.png"));
    EXPECT_NE(picture("barcode-content.png"), picture("barcode-labels.png"));
    EXPECT_NE(picture("barcode-found.png"), picture("barcode-grey.png"));
    for (const char* name :
         {"grey-2x.png", "lookfor-2x.png", "autorefresh-2x.png", "stand-2x.png", "stand-picture-2x.png",
          "stand-notes-2x.png", "stand-materials-2x.png", "shift-2x.png", "shift-location-2x.png",
          "shift-materials-2x.png", "shift-packages-2x.png", "barcode-2x.png", "barcode-location-2x.png",
          "barcode-content-2x.png", "barcode-labels-2x.png", "barcode-found-2x.png", "barcode-grey-2x.png"})
        EXPECT_FALSE(picture(name).isNull()) << name;
    EXPECT_EQ(warehouse.trace().filter(QStringLiteral(" select A.LocationName,A.LocationPercent")).size(), 2)
        << "one pass at each density";
    const QStringList items =
        warehouse.trace().filter(QStringLiteral("exec kolv_mag_Watch_Item_On_Location"));
    EXPECT_EQ(items.filter(QStringLiteral(",N'W'")).size(), 4) << "two phases at each density";
    EXPECT_EQ(warehouse.trace().filter(QStringLiteral("exec kolv_mag_Watch_BarCode_On_Location")).size(), 2);
    const QStringList packages =
        warehouse.trace().filter(QStringLiteral("exec Kolv_mag_Watch_BarCode_Location"));
    EXPECT_EQ(packages.filter(QStringLiteral(",N'Y',1")).size(), 2) << "once at each density";
    EXPECT_EQ(packages.filter(QStringLiteral(",N'N',1")).size(), 2);
    EXPECT_TRUE(warehouse.trace()
                    .filter(QRegularExpression(QStringLiteral("^kolv_mag_Shift_Location_BarCode\\t")))
                    .isEmpty())
        << "nothing moves";
    EXPECT_FALSE(
        warehouse.trace().filter(QStringLiteral("exec kolv_mag_Watch_Detal_Item_On_Location")).isEmpty());
}

TEST_F(PictureTour, FailsWhenTheClientCannotLogIn) {
    ASSERT_TRUE(warehouse.stop());
    EXPECT_NE(tour(warehouse.folder() + QStringLiteral("/nowhere.txt")), 0);
}

}  // namespace
}  // namespace regalon::test
