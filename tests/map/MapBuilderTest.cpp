#include "map/MapBuilder.h"
#include "map/MapCanvas.h"
#include "map/MapWarehouse.h"
#include "map/clsMagWatch.h"
#include "platform/MsgBox.h"

#include <QCoreApplication>
#include <QFile>

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;
using test::windowMessage;

const QString kStandsText = QStringLiteral(
    "select ID,Rank,Stand,StandName,StandIcon,ShelfCount,StandLeft,StandTop,StandVisable,StandEnable,"
    "StandFrameArround  from kolv_mag_Stand order by Rank,Stand");
const QString kIconsText = QStringLiteral(
    " select LocationName,LocationIcon,ISNULL(B.StatLocation_cmb,0) as StatusLocation from kolv_mag_Location "
    "A(nolock)  left join kolv_mag_Location_Item B(nolock) ON A.Rank = B.Rank AND A.Stand = B.Stand AND "
    "A.Shelf = "
    "B.Shelf AND A.Location = B.Location  order by A.Rank,A.Stand,A.Shelf,A.Location");
const QString kTooMany = QStringLiteral(
    "Błąd zapisu lokalizacji. Za duzo lokalizacji zdefiniowanych w magazynie dopuszczalna liczba lokalizacji "
    "750 "
    "!!!");

QString shelvesText(int rank, int stand) {
    return QStringLiteral(
               "select Shelf,count(*) as LocationCount from kolv_mag_Location where Rank = %1 AND Stand = "
               "%2 group by Shelf order by Shelf")
        .arg(rank)
        .arg(stand);
}

/// A plan on a warehouse that a test fills itself.
class MapBuild : public testing::Test {
protected:
    explicit MapBuild(LocalWarehouse::Content content = LocalWarehouse::Content::Empty)
        : warehouse(content) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        data = std::make_unique<clsMagWatch>(warehouse.context);
        builder = std::make_unique<MapBuilder>(warehouse.context, canvas, *data,
                                               MapReportNames::of(QStringLiteral("frmMagWatch")));
        builder->setIconFolder(warehouse.context.PathBitmapMagSur);
    }

    PictureItem& stand(int index) { return canvas.imgBookStand()[index]; }
    PictureItem& location(int index) { return canvas.imglocation()[index]; }
    LineItem& line(int index) { return canvas.lnnFrameBookStand()[index]; }
    QString picture(int index) { return location(index).picturePath().section(QLatin1Char('\\'), -1); }

    static void expectLine(const LineItem& line, int x1, int y1, int x2, int y2) {
        EXPECT_EQ(line.x1(), x1);
        EXPECT_EQ(line.y1(), y1);
        EXPECT_EQ(line.x2(), x2);
        EXPECT_EQ(line.y2(), y2);
        EXPECT_TRUE(line.isVisible());
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    MapCanvas canvas{15210, 9375};
    std::unique_ptr<clsMagWatch> data;
    std::unique_ptr<MapBuilder> builder;
};

TEST_F(MapBuild, WithoutStandsNothingIsBuiltAndThreeEmptyTextsAreSaved) {
    EXPECT_FALSE(builder->WathStore(true));
    EXPECT_EQ(warehouse.batches(), QStringList(kStandsText));
    const auto calls = warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab"));
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().mid(0, 3), QStringList({QString(), QString(), QString()}));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MapBuild, WithoutStandsTheIconsAreNotRead) {
    builder->RefreschWatchStore();
    EXPECT_FALSE(warehouse.batches().contains(kIconsText));
    EXPECT_EQ(canvas.imglocation().Count(), 1);
}

TEST_F(MapBuild, SendsOneReadForAllStandsOneForEachAndOneForTheIcons) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("3")));
    ASSERT_TRUE(warehouse.addStand(2, 7, 1, QStringLiteral("1"), 5000));
    builder->RefreschWatchStore();
    EXPECT_EQ(warehouse.batches(),
              QStringList({kStandsText, shelvesText(1, 1), shelvesText(2, 7), kIconsText}));
}

TEST_F(MapBuild, AStandIsDrawnTwipForTwip) {
    ASSERT_TRUE(warehouse.addStand(1, 3, 4, QStringLiteral("1232"), 3000, 4000));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(canvas.imgBookStand().Count(), 2);
    EXPECT_EQ(stand(1).left(), 3000);
    EXPECT_EQ(stand(1).top(), 4000);
    EXPECT_TRUE(stand(1).isVisible());
    EXPECT_EQ(stand(1).tag(), QStringLiteral("R_1_3_"));
    EXPECT_TRUE(stand(1).picturePath().endsWith(QStringLiteral("\\Ikony\\Reg.ico")));

    struct Expected {
        int left, top;
        const char* tag;
        const char* picture;
    };
    const QList<Expected> expected = {
        {3000, 3785, "1_3_1_1_LC_2", "xxx.ico"}, {3000, 3600, "1_3_2_1_LA_3", "x.ico"},
        {3205, 3600, "1_3_2_2_LB_4", "xx.ico"},  {3000, 3420, "1_3_3_1_LA_5", "x.ico"},
        {3205, 3420, "1_3_3_2_LA_6", "x.ico"},   {3415, 3420, "1_3_3_3_LA_7", "x.ico"},
        {3000, 3235, "1_3_4_1_LA_8", "x.ico"},   {3205, 3235, "1_3_4_2_LB_9", "xx.ico"}};
    ASSERT_EQ(canvas.imglocation().Count(), expected.size() + 1);
    for (int index = 1; index <= expected.size(); ++index) {
        const Expected& icon = expected.at(index - 1);
        EXPECT_EQ(location(index).left(), icon.left) << index;
        EXPECT_EQ(location(index).top(), icon.top) << index;
        EXPECT_EQ(location(index).tag(), QString::fromLatin1(icon.tag));
        EXPECT_EQ(picture(index), QString::fromLatin1(icon.picture));
        EXPECT_TRUE(location(index).isVisible());
    }
    ASSERT_EQ(canvas.lnnFrameBookStand().Count(), 5);
    expectLine(line(1), 2980, 4290, 3635, 4290);
    expectLine(line(2), 2975, 3210, 3645, 3210);
    expectLine(line(3), 2975, 4290, 2975, 3200);
    expectLine(line(4), 3635, 4290, 3635, 3200);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(MapBuild, IconsHaveTheSizeOfTheirPicture) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 2, QStringLiteral("12")));
    ASSERT_TRUE(builder->WathStore(true));
    EXPECT_EQ(stand(1).width(), 615);
    EXPECT_EQ(stand(1).height(), 270);
    EXPECT_EQ(location(1).width(), 615);
    EXPECT_EQ(location(1).height(), 165);
    EXPECT_EQ(location(2).width(), 195);
    EXPECT_EQ(location(3).width(), 405);
}

TEST_F(MapBuild, AStandWithoutShelvesIsItsImageAndItsFrame) {
    ASSERT_TRUE(warehouse.addStand(5, 6, 0, QString(), 650, 5390));
    EXPECT_TRUE(builder->WathStore(true));
    EXPECT_EQ(canvas.imgBookStand().Count(), 2);
    EXPECT_EQ(canvas.imglocation().Count(), 1);
    ASSERT_EQ(canvas.lnnFrameBookStand().Count(), 5);
    expectLine(line(2), 625, 5390 - 110, 1295, 5390 - 110);
    expectLine(line(3), 625, 5680, 625, 5390 - 120);
}

TEST_F(MapBuild, AShelfWithoutRowsHasNoIconsButItsPlaceInTheFrame) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 2, QStringLiteral("2"), 3000, 4000));
    EXPECT_TRUE(builder->WathStore(true));
    EXPECT_EQ(canvas.imglocation().Count(), 3);
    expectLine(line(2), 2975, 4000 - 440, 3645, 4000 - 440);
}

TEST_F(MapBuild, FlagsOfAStandChangeNothing) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1")));
    ASSERT_TRUE(warehouse.run({QStringLiteral(
        "update kolv_mag_Stand set StandVisable = N'N', StandEnable = N'N', StandFrameArround = N'N'")}));
    EXPECT_TRUE(builder->WathStore(true));
    EXPECT_TRUE(stand(1).isVisible());
    EXPECT_EQ(canvas.lnnFrameBookStand().Count(), 5);
    EXPECT_TRUE(line(1).isVisible());
}

TEST_F(MapBuild, TwoStandsAtOnePlaceAreBothDrawn) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1")));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("1")));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(canvas.imgBookStand().Count(), 3);
    EXPECT_EQ(stand(1).left(), stand(2).left());
    EXPECT_EQ(location(2).tag(), QStringLiteral("1_2_1_1_LC_3"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MapBuild, NullColumnsOfAStandReadAsEmptyAndZero) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("insert into kolv_mag_Stand (Rank,Stand) values (1,1)")}));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(canvas.imgBookStand().Count(), 2);
    EXPECT_EQ(stand(1).left(), 0);
    EXPECT_EQ(stand(1).top(), 0);
    EXPECT_EQ(stand(1).tag(), QStringLiteral("R_1_1_"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(MapBuild, ShelvesOutside1To4AreNotCounted) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1")));
    ASSERT_TRUE(warehouse.run({QStringLiteral(
        "insert into kolv_mag_Location (Rank,Stand,Shelf,Location) values (1,1,5,1),(1,1,0,1),(1,1,-1,1)")}));
    EXPECT_TRUE(builder->WathStore(true));
    EXPECT_EQ(canvas.imglocation().Count(), 2);
}

TEST_F(MapBuild, ShelvesAboveTheFourthRepeatItsCountAndGetNoTop) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 6, QStringLiteral("1112"), 3000, 4000));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(canvas.imglocation().Count(), 1 + 3 + 2 + 2 + 2);
    EXPECT_EQ(location(6).tag(), QStringLiteral("1_1_5_1_LA_7"));
    EXPECT_EQ(location(6).top(), location(0).top());
    EXPECT_EQ(location(6).left(), 3000);
    EXPECT_EQ(location(9).tag(), QStringLiteral("1_1_6_2_LB_10"));
    expectLine(line(1), 2980, 4290, 3635, 4290);
    expectLine(line(2), 2975, 10320, 3645, 11070);
    expectLine(line(3), 2975, 10320, 2975, 11070);
    expectLine(line(4), 3635, 10320, 3635, 11070);
}

TEST_F(MapBuild, AnOddCountTakesTheFamilyOfTheIconBeforeAcrossStands) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("4")));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("2"), 5000));
    ASSERT_TRUE(warehouse.addStand(1, 3, 1, QStringLiteral("4"), 7000));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(canvas.imglocation().Count(), 11);
    EXPECT_EQ(location(1).tag(), QStringLiteral("1_1_1_1__2"));
    EXPECT_EQ(location(1).picturePath(), QString());
    EXPECT_EQ(location(7).tag(), QStringLiteral("1_3_1_1_LB_8"));
    EXPECT_EQ(location(7).picturePath(), QString());
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(MapBuild, TheFamilyOfAnOddCountStartsEmptyInEachBuild) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("4")));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("1"), 5000));
    for (int build = 0; build < 2; ++build) {
        builder->KillBookStand(canvas.imgBookStand(), canvas.imglocation(), canvas.lnnFrameBookStand());
        EXPECT_TRUE(builder->WathStore(true));
        EXPECT_EQ(location(1).tag(), QStringLiteral("1_1_1_1__2"));
    }
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(MapBuild, WithoutNamesNothingIsTaggedAndNothingSaved) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    EXPECT_TRUE(builder->WathStore(false));
    EXPECT_EQ(stand(1).tag(), QString());
    EXPECT_EQ(location(1).tag(), QString());
    EXPECT_TRUE(warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab")).isEmpty());
}

TEST_F(MapBuild, KillBookStandLeavesTheTemplatesAlone) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    ASSERT_TRUE(builder->WathStore(true));
    builder->KillBookStand(canvas.imgBookStand(), canvas.imglocation(), canvas.lnnFrameBookStand());
    EXPECT_EQ(canvas.imgBookStand().Count(), 1);
    EXPECT_EQ(canvas.imglocation().Count(), 1);
    EXPECT_EQ(canvas.lnnFrameBookStand().Count(), 1);
    EXPECT_FALSE(stand(0).isVisible());
    // Six templates and six walls.
    EXPECT_EQ(canvas.scene()->items().size(), 12);
}

TEST_F(MapBuild, ARebuildLeavesNothingOfAStandThatIsGone) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("3"), 5000));
    builder->RefreschWatchStore();
    ASSERT_EQ(canvas.imglocation().Count(), 6);
    ASSERT_TRUE(warehouse.run({QStringLiteral("delete from kolv_mag_Location where Stand = 2"),
                               QStringLiteral("delete from kolv_mag_Stand where Stand = 2")}));
    builder->RefreschWatchStore();
    EXPECT_EQ(canvas.imgBookStand().Count(), 2);
    EXPECT_EQ(canvas.imglocation().Count(), 3);
    EXPECT_EQ(canvas.scene()->items().size(), 12 + 1 + 2 + 4);
}

TEST_F(MapBuild, WhileARebuildRunsNoRemovedElementIsFoundUnderAName) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("3"), 5000));
    builder->RefreschWatchStore();
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Stand set StandIcon = N'brak.ico'")}));
    QStringList found;
    messages.onMessage([&](const MsgBoxRecorder::Message&) {
        QCoreApplication::sendPostedEvents();  // as an open box does before it is seen
        for (const QGraphicsItem* item : canvas.scene()->items()) {
            const QString name = item->data(PlanData::ArrayName).toString();
            if (const QVariant index = item->data(PlanData::Index); !name.isEmpty() && index.toInt() > 0)
                found.append(name + index.toString());
            EXPECT_EQ(item->isVisible() && name.isEmpty(), false) << "seen but found under no name";
        }
    });
    builder->RefreschWatchStore();
    // At the message of stand 1, and at that of stand 2, when stand 1 is on the new plan.
    ASSERT_EQ(messages.count(), 2);
    found.sort();
    EXPECT_EQ(found, QStringList({QStringLiteral("imgBookStand1"), QStringLiteral("imgBookStand1"),
                                  QStringLiteral("imgBookStand2")}));
}

TEST_F(MapBuild, AStandWhoseIconIsLostBeforeARebuildShowsNothingOfTheLastBuild) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    builder->RefreschWatchStore();
    ASSERT_FALSE(stand(1).picture().isEmpty());
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Stand set StandIcon = N'brak.ico'")}));
    builder->RefreschWatchStore();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(stand(1).tag(), QString());
    EXPECT_TRUE(stand(1).picture().isEmpty());
    EXPECT_EQ(canvas.imglocation().Count(), 1);
}

TEST_F(MapBuild, OfStandsThatOverlapTheLaterLiesOnTop) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 0, QString(), 3000, 4000));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("1"), 3000, 4215));
    const auto top = [&] { return canvas.scene()->items(QPointF(210, 270)).value(0); };
    builder->RefreschWatchStore();
    EXPECT_EQ(top(), &location(1));
    // The elements of the rebuilt plan are stacked as in a new one, though stand 1 has become the one above.
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("update kolv_mag_Stand set StandTop = case Stand when 1 then 4215 else 4000 end"),
         QStringLiteral("update kolv_mag_Stand set ShelfCount = case Stand when 1 then 1 else 0 end"),
         QStringLiteral("insert into kolv_mag_Location (Rank,Stand,Shelf,Location) values (1,1,1,1)"),
         QStringLiteral("delete from kolv_mag_Location where Stand = 2")}))
        << qPrintable(warehouse.why());
    builder->RefreschWatchStore();
    EXPECT_EQ(top(), &stand(2));
}

TEST_F(MapBuild, SavesAllNamesInOneCall) {
    ASSERT_TRUE(warehouse.addStand(2, 5, 1, QStringLiteral("3")));
    ASSERT_TRUE(builder->WathStore(true));
    const auto calls = warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab"));
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().mid(0, 3),
              QStringList({QStringLiteral("2_5_1_1_LA_2,2_5_1_2_LA_3,2_5_1_3_LA_4"), QString(), QString()}));
    EXPECT_EQ(warehouse.value(QStringLiteral(
                  "select LocationName from kolv_mag_Location where Rank = 2 and Location = 3")),
              QStringLiteral("2_5_1_3_LA_4"));
}

TEST_F(MapBuild, ARefusedSaveShowsTheProceduresMessageAndKeepsThePlan) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral("drop procedure kolv_mag_SaveLocationIDTab"),
         QStringLiteral(
             "create procedure kolv_mag_SaveLocationIDTab @LocationName_1 nvarchar(4000), @LocationName_2 "
             "nvarchar(4000), @LocationName_3 nvarchar(4000), @ErrDesc nvarchar(250) output as begin "
             "set @ErrDesc = N'Zapis nazw wstrzymany'; return 1; end")}));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, QStringLiteral("Zapis nazw wstrzymany"));
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_EQ(canvas.imglocation().Count(), 3);
    EXPECT_EQ(warehouse.value(QStringLiteral("select max(LocationName) from kolv_mag_Location")),
              QStringLiteral("NULL"));
}

TEST_F(MapBuild, ASaveProcedureThatIsGoneIsReportedAndThenShownWithoutAReason) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    ASSERT_TRUE(warehouse.run({QStringLiteral("drop procedure kolv_mag_SaveLocationIDTab")}));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.messages().at(0).Title, QStringLiteral("Error - clsMagWatch [SaveLocalizationIDTab]"));
    // The call answers false like a refusal, and no procedure was there to give a reason.
    EXPECT_EQ(messages.messages().at(1).Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(messages.messages().at(1).Flags, MsgFlag::Information);
    EXPECT_EQ(messages.messages().at(1).Text, QString());
    EXPECT_EQ(canvas.imglocation().Count(), 3);
}

/// Warehouses whose names fill more than one batch.
class MapBuildOfManyNames : public MapBuild {
protected:
    /// Adds stands of one shelf each.
    void addStands(int rank, int firstStand, int count, int locationsPerStand = 3) {
        QStringList stands;
        QStringList locations;
        for (int number = firstStand; number < firstStand + count; ++number) {
            stands.append(QStringLiteral("(%1,%2,1,3000,4000)").arg(rank).arg(number));
            for (int place = 1; place <= locationsPerStand; ++place)
                locations.append(QStringLiteral("(%1,%2,1,%3)").arg(rank).arg(number).arg(place));
        }
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("insert into kolv_mag_Stand (Rank,Stand,ShelfCount,StandLeft,StandTop) values ") +
                 stands.join(QLatin1Char(',')),
             QStringLiteral("insert into kolv_mag_Location (Rank,Stand,Shelf,Location) values ") +
                 locations.join(QLatin1Char(','))}))
            << qPrintable(warehouse.why());
    }

    /// Adds 252 locations in stands of row 1 so that the names of the first 251 join to 3999 characters, and
    /// to 4000 if the last of them stands in a stand of three digits: 251 names have 250 commas between them,
    /// 647 digits in their indexes 2 to 252, and 9 characters and the digits of row and stand each.
    void addStandsAtTheLimit(bool lastIsLonger) {
        addStands(1, 10, 53);
        addStands(1, 70, lastIsLonger ? 1 : 2, 1);
        addStands(1, 100, 30);
        addStands(1, 200, lastIsLonger ? 2 : 1, 1);
    }
    /// The text of the locations of the plan from one index to another, as a batch joins them.
    QString tags(int first, int last) {
        QStringList names;
        for (int index = first; index <= last; ++index)
            names.append(location(index).tag());
        return names.join(QLatin1Char(','));
    }
    /// The three batches of the one call that saved the names.
    QStringList savedBatches() const {
        const auto calls = warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab"));
        EXPECT_EQ(calls.size(), 1);
        return calls.value(0).mid(0, 3);
    }
};

TEST_F(MapBuildOfManyNames, ABatchOf3999CharactersIsSaved) {
    addStandsAtTheLimit(false);
    EXPECT_TRUE(builder->WathStore(true));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    ASSERT_EQ(tags(1, 251).size(), 3999);
    EXPECT_EQ(savedBatches(), QStringList({tags(1, 251), QStringLiteral("1_200_1_1_LC_253"), QString()}));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(LocationName) from kolv_mag_Location")),
              QStringLiteral("252"));
}

TEST_F(MapBuildOfManyNames, ABatchOf4000CharactersIsNotSaved) {
    addStandsAtTheLimit(true);
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(tags(1, 251).size(), 4000);
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, kTooMany);
    EXPECT_TRUE(warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab")).isEmpty());
}

TEST_F(MapBuildOfManyNames, TooLongABatchShowsTheLimitAndSavesNothing) {
    // 10_1001_1_1_LA_2 and longer: 251 of them pass 4000 characters, though only 252 locations exist.
    addStands(10, 1001, 84);
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, kTooMany);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
    EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
    EXPECT_TRUE(warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab")).isEmpty());
    EXPECT_EQ(canvas.imglocation().Count(), 253);
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(LocationName) from kolv_mag_Location")),
              QStringLiteral("0"));
}

TEST_F(MapBuildOfManyNames, NamesGoOnIntoTheSecondBatch) {
    addStands(1, 1, 84);
    EXPECT_TRUE(builder->WathStore(true));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    QStringList first;
    for (int name = 0; name < 251; ++name)
        first.append(QStringLiteral("1_%1_1_%2_LA_%3").arg(name / 3 + 1).arg(name % 3 + 1).arg(name + 2));
    EXPECT_EQ(savedBatches(),
              QStringList({first.join(QLatin1Char(',')), QStringLiteral("1_84_1_3_LA_253"), QString()}));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(LocationName) from kolv_mag_Location")),
              QStringLiteral("252"));
}

TEST_F(MapBuildOfManyNames, ShortNamesPass750LocationsAndTheThirdBatchTakesAllTheRest) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral(
             "insert into kolv_mag_Stand (Rank,Stand,ShelfCount,StandLeft,StandTop) select R.Number,S.Number,"
             "4,3000,4000 from kolv_mag_Number R cross join kolv_mag_Number S where R.Number <= 8 and "
             "S.Number <= 8"),
         QStringLiteral(
             "insert into kolv_mag_Location (Rank,Stand,Shelf,Location) select S.Rank,S.Stand,P.Number,"
             "L.Number from kolv_mag_Stand S cross join kolv_mag_Number P cross join kolv_mag_Number L where "
             "P.Number <= 4 and L.Number <= 3")}))
        << qPrintable(warehouse.why());
    EXPECT_TRUE(builder->WathStore(true));
    EXPECT_EQ(canvas.imglocation().Count(), 1 + 768);
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    EXPECT_EQ(savedBatches(), QStringList({tags(1, 251), tags(252, 502), tags(503, 768)}));
    EXPECT_EQ(location(503).tag(), QStringLiteral("6_2_4_2_LA_504"));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(LocationName) from kolv_mag_Location")),
              QStringLiteral("768"));
}

TEST_F(MapBuild, FiveThousandLocationsAreDrawnThoughTheirNamesCannotBeSaved) {
    ASSERT_TRUE(warehouse.run(
        {QStringLiteral(
             "insert into kolv_mag_Stand (Rank,Stand,ShelfCount,StandLeft,StandTop) select 1,Number,4,3000,"
             "4000 from kolv_mag_Number where Number <= 417"),
         QStringLiteral(
             "insert into kolv_mag_Location (Rank,Stand,Shelf,Location) select 1,N.Number,S.Number,L.Number "
             "from kolv_mag_Number N cross join kolv_mag_Number S cross join kolv_mag_Number L where "
             "N.Number <= 417 and S.Number <= 4 and L.Number <= 3")}))
        << qPrintable(warehouse.why());
    builder->RefreschWatchStore();
    EXPECT_EQ(canvas.imglocation().Count(), 1 + 417 * 12);
    EXPECT_EQ(canvas.lnnFrameBookStand().Count(), 1 + 417 * 4);
    EXPECT_EQ(picture(5004), QStringLiteral("LA_R_Err.ico"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, kTooMany);
}

TEST_F(MapBuild, AMissingIconIsReportedAndTheNextStandGoesOn) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1"), 3000, 4000, QStringLiteral("brak.ico")));
    ASSERT_TRUE(warehouse.addStand(1, 2, 1, QStringLiteral("1"), 5000, 4000));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - GenerateBookstand"));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_EQ(messages.last().Text, windowMessage(53));
    // What was loaded of the failed stand stays, without a Tag and without frame.
    ASSERT_EQ(canvas.imgBookStand().Count(), 3);
    EXPECT_EQ(stand(1).left(), 3000);
    EXPECT_EQ(stand(1).tag(), QString());
    EXPECT_EQ(canvas.imglocation().Count(), 2);
    EXPECT_EQ(location(1).tag(), QStringLiteral("1_2_1_1_LC_2"));
    EXPECT_EQ(canvas.lnnFrameBookStand().Count(), 5);
}

TEST_F(MapBuild, ABrokenIconIsReportedAndGivesFalseForThatStand) {
    ASSERT_TRUE(warehouse.useOwnIcons());
    builder->setIconFolder(warehouse.context.PathBitmapMagSur);
    QFile broken(warehouse.ownIcon(QStringLiteral("zepsuta.ico")));
    ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
    broken.write("this is no picture");
    broken.close();
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1"), 3000, 4000, QStringLiteral("zepsuta.ico")));
    EXPECT_FALSE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Text, windowMessage(481));
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - GenerateBookstand"));
}

TEST_F(MapBuild, AMissingFirstLookLeavesTheTaggedIconOnThePlan) {
    ASSERT_TRUE(warehouse.useOwnIcons());
    builder->setIconFolder(warehouse.context.PathBitmapMagSur);
    ASSERT_TRUE(QFile::remove(warehouse.ownIcon(QStringLiteral("xx.ico"))));
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2")));
    EXPECT_FALSE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    ASSERT_EQ(canvas.imglocation().Count(), 3);
    EXPECT_EQ(location(2).tag(), QStringLiteral("1_1_1_2_LB_3"));
    EXPECT_EQ(canvas.lnnFrameBookStand().Count(), 1);
    // The name was taken into the batch before the picture failed.
    EXPECT_TRUE(warehouse.calls(QStringLiteral("kolv_mag_SaveLocationIDTab"))
                    .value(0)
                    .contains(QStringLiteral("1_1_1_1_LA_2,1_1_1_2_LB_3")));
}

TEST_F(MapBuild, AnOddPositionOfAStandOverflowsIntoItsOwnMessage) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1"), 3000, -2147483648 + 100));
    ASSERT_TRUE(warehouse.addStand(1, 2, 0, QString()));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - GenerateBookstand"));
    EXPECT_EQ(messages.last().Text, windowMessage(6));
    EXPECT_EQ(canvas.imgBookStand().Count(), 3);
}

TEST_F(MapBuild, AFrameThatOverflowsIsReportedUnderTheEditorsNameAndTheStandCounts) {
    // The image fits the lowest place there is; the bottom line of its frame would lie below it.
    ASSERT_TRUE(warehouse.addStand(1, 1, 0, QString(), 3000, 2147483647));
    EXPECT_TRUE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagCreate - GenerateBookstandLineAround"));
    EXPECT_EQ(messages.last().Flags, 4112);
    EXPECT_EQ(messages.last().Text, windowMessage(6));
    EXPECT_EQ(stand(1).tag(), QStringLiteral("R_1_1_"));
    EXPECT_EQ(canvas.lnnFrameBookStand().Count(), 1);
}

TEST_F(MapBuild, ADeadServerIsReportedByWathStoreAndTheIconsAreSkipped) {
    ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("1")));
    warehouse.server.kill();
    builder->RefreschWatchStore();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - WathStore"));
    EXPECT_EQ(messages.last().Flags, 4112);
}

TEST_F(MapBuild, ABuildThatBreaksOffBehindAWholeStandSkipsTheIcons) {
    for (const int stand : {1, 2, 3})
        ASSERT_TRUE(warehouse.addStand(1, stand, 1, QStringLiteral("1")));
    ASSERT_TRUE(warehouse.run({QStringLiteral(
        "update kolv_mag_Stand set StandIcon = N'missing.ico' where Rank = 1 and Stand = 2")}));
    messages.onMessage([&](const MsgBoxRecorder::Message& message) {
        if (message.Title == u"frmMagWatch - GenerateBookstand")
            warehouse.server.kill();
    });
    builder->RefreschWatchStore();
    ASSERT_EQ(messages.count(), 2);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - WathStore"));
}

TEST_F(MapBuild, WithoutAConnectionWathStoreReportsThatNoObjectIsSet) {
    warehouse.context.ConnMain.reset();
    warehouse.context.ErrorService.reset();
    EXPECT_FALSE(builder->WathStore(true));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("frmMagWatch - WathStore"));
    EXPECT_EQ(messages.last().Text, windowMessage(91));
}

TEST(MapReportNames, CarryTheirOwnWindowButInTheEditorTheViews) {
    const MapReportNames shift = MapReportNames::of(QStringLiteral("frmMagWatchShiftLoc"));
    EXPECT_EQ(shift.WathStore, QStringLiteral("frmMagWatchShiftLoc - WathStore"));
    EXPECT_EQ(shift.GenerateBookstandLineAround,
              QStringLiteral("frmMagCreate - GenerateBookstandLineAround"));
    const MapReportNames editor = MapReportNames::of(QStringLiteral("frmMagCreate"));
    EXPECT_EQ(editor.WathStore, QStringLiteral("frmMagWatch - WathStore"));
    EXPECT_EQ(editor.ChangeIconLocation, QStringLiteral("frmMagWatch - ChangeIconLocation"));
    EXPECT_EQ(editor.GenerateBookstand, QStringLiteral("frmMagWatch - GenerateBookstand"));
    EXPECT_EQ(editor.KillBookStand, QStringLiteral("frmMagCreate - KillBookStand"));
    EXPECT_EQ(editor.RebulidMag, QStringLiteral("frmMagCreate - RebulidMag"));
}

}  // namespace
}  // namespace regalon
