// A storekeeper with a scanner finds a package on the plan and reads what else lies on its location.
#include "program/ProgramTest.h"
#include "program/Tables.h"

namespace regalon::test {
namespace {

constexpr int kMenuItem = 4;

class BarCodePath : public ProgramTest {
protected:
    explicit BarCodePath(QSize screen = {1280, 1024}) : ProgramTest(screen) {}

    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(ProgramTest::SetUp());
        // A package of the material of its location, which holds others, too.
        const QString found =
            linesOf(warehouse,
                    QStringLiteral("select top 1 B.BarCode,B.Rank,B.Stand,B.Shelf,B.Location from "
                                   "Kolv_Mag_BarCode_Sur B inner join kolv_mag_Location_Item A on A.Rank = "
                                   "B.Rank and A.Stand = B.Stand and A.Shelf = B.Shelf and A.Location = "
                                   "B.Location where B.Active = N'Y' and B.Rank = 1 and A.ItemCode = "
                                   "B.ItemCode and A.StatLocation_cmb = N'0' and exists (select 1 from "
                                   "Kolv_Mag_BarCode_Sur C where C.Rank = B.Rank and C.Stand = B.Stand and "
                                   "C.Shelf = B.Shelf and C.Location = B.Location and C.Active = N'N') order "
                                   "by B.BarCode"))
                .value(0);
        const QStringList parts = found.split(u'/');
        ASSERT_EQ(parts.size(), 5) << qPrintable(found);
        code = parts.at(0);
        spot = spotOf(warehouse, parts.at(1).toInt(), parts.at(2).toInt(), parts.at(3).toInt(),
                      parts.at(4).toInt());
        if (scale > 1)
            client->setEnvironment(QStringLiteral("QT_SCALE_FACTOR"), QString::number(scale));
        ASSERT_NO_FATAL_FAILURE(startClient());
        ASSERT_NO_FATAL_FAILURE(openPlan(kMenuItem));
        warehouse.clearTrace();
    }

    /// As a scanner does it.
    void scan(const QString& digits) const {
        display.type(digits);
        display.key(QStringLiteral("Return"));
    }
    QString address() const {
        return QStringLiteral("%1,%2,%3,%4")
            .arg(spot.rank)
            .arg(spot.stand)
            .arg(spot.shelf)
            .arg(spot.location);
    }
    void keepHere(const char* name) const {
        keep(display.settledPicture(), QStringLiteral("barcode-") + QString::fromLatin1(name) +
                                           QString::fromLatin1(scale > 1 ? "-2x" : ""));
    }

    void findOnThePlan();
    void readTheLocation();

    QString code;
    Spot spot;
};

void BarCodePath::findOnThePlan() {
    display.key(QStringLiteral("alt+n"));
    display.settledPicture();
    scan(QStringLiteral("12345"));
    const QString title = client->messageTitle();
    EXPECT_EQ(title, QStringLiteral("Komunikat"));
    keepHere("unknown");
    ASSERT_NO_FATAL_FAILURE(answer(title, QStringLiteral("Return")));
    scan(code);
    ASSERT_TRUE(traced(QStringLiteral("exec Kolv_mag_Param_BarCode N'%1'").arg(code)));
    keepHere("found");
    display.key(QStringLiteral("alt+s"));
    ASSERT_TRUE(eventually([this] {
        return warehouse.trace().filter(QStringLiteral(" select A.LocationPercent,")).size() ==
               countOf(warehouse, QStringLiteral("kolv_mag_Location"));
    }));
    const QImage grey = display.settledPicture();
    keepHere("grey");
    if (scale > 1)
        return;  // icons are compared pixel by pixel
    EXPECT_TRUE(showsIcon(grey, plan, warehouse, spot, iconFile(warehouse, spot)));
    const Spot other = spotWhere(
        warehouse, QStringLiteral("A.Rank = 3 and A.StatLocation_cmb = N'0' and ISNULL(A.GroupSur,0) = 0"));
    EXPECT_TRUE(
        showsIcon(grey, plan, warehouse, other,
                  QString(iconFile(warehouse, other)).replace(QStringLiteral("_P_"), QStringLiteral("_G_"))));
}

void BarCodePath::readTheLocation() {
    click(spot);
    display.settledPicture();
    // Its letter is that of a button of the toolbar, too.
    display.click(plan.at(120 + 12000 + 1200, 8310 + 885 + 225));
    ASSERT_TRUE(traced(QStringLiteral("exec Kolv_mag_Watch_BarCode_Location %1,N'Y',1").arg(address())));
    keepHere("content");
    // Past the filter's caption.
    display.click(plan.at(120 + 120 + 240, 480 + 1330 + 360));
    ASSERT_TRUE(traced(QStringLiteral("exec Kolv_mag_Watch_BarCode_Location %1,N'N',1").arg(address())));
    keepHere("all");
    display.key(QStringLiteral("alt+d"));
    const QString title = client->messageTitle();
    EXPECT_EQ(title, QStringLiteral("Komunikat"));
    ASSERT_NO_FATAL_FAILURE(answer(title, QStringLiteral("Return")));
    // The uppermost button of the strip.
    display.click(plan.at(13080 + 90 + 500, 480 + 90 + 200));
    keepHere("sheet");
}

TEST_F(BarCodePath, FromAScannedCodeToItsPlaceAndWhatLiesThere) {
    ASSERT_NO_FATAL_FAILURE(findOnThePlan());
    ASSERT_NO_FATAL_FAILURE(readTheLocation());
    EXPECT_EQ(leave(), 0);
}

class BarCodePathAtTwiceTheDensity : public BarCodePath {
protected:
    BarCodePathAtTwiceTheDensity() : BarCodePath({2240, 1700}) { scale = 2; }
};

TEST_F(BarCodePathAtTwiceTheDensity, IsTheSame) {
    ASSERT_NO_FATAL_FAILURE(findOnThePlan());
    ASSERT_NO_FATAL_FAILURE(readTheLocation());
    EXPECT_EQ(leave(), 0);
}

}  // namespace
}  // namespace regalon::test
