// The lookup of a barcode, worked with mouse and keys.

#include "platform/Screen.h"
#include "views/BarCodeWindow.h"

#include <QFile>

#include <algorithm>
#include <chrono>
#include <csignal>
#include <thread>

namespace regalon {
namespace {

using test::captionsOf;
using test::keysOf;

const QString kNotNumeric = QStringLiteral("Kod moze zawierać tylko wartości numeryczne !!!");
const QString kUnknown = QStringLiteral("Podany kod nie został znaleziony na magazynie !!!");
constexpr const char* kResults[] = {"lblItemCodeLookForBarCode", "lblItemCodeLookForBarCodeData",
                                    "lblRankLokFOrBarCode",      "lblRankLokFOrBarCodeData",
                                    "lblStandLokFOrBarCode",     "lblStandLokFOrBarCodeData",
                                    "lblShelfLokFOrBarCode",     "lblShelfLokFOrBarCodeData",
                                    "lblLocationLokFOrBarCode",  "lblLocationLokFOrBarCodeData"};

/// Kills the server in the middle of a statement, while the test's own thread waits for the answer.
class KillAtStatement {
public:
    KillAtStatement(const test::LocalWarehouse& server, const QString& part)
        : m_killer([&server, part](const std::stop_token& given_up) {
              const auto received = [&] {
                  const QStringList trace = server.trace();
                  return std::any_of(trace.begin(), trace.end(),
                                     [&](const QString& statement) { return statement.contains(part); });
              };
              while (!received()) {
                  if (given_up.stop_requested())
                      return;
                  std::this_thread::sleep_for(std::chrono::milliseconds(1));  // wait: leaves the core to it
              }
              ::kill(static_cast<pid_t>(server.processId()), SIGKILL);
          }) {}

private:
    std::jthread m_killer;
};

class FrmMagWatchBarCodeLocLookup : public test::BarCodeWindow {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(BarCodeWindow::SetUp());
        open();
        openLookup();
    }

    void expectResult(bool shown) const {
        for (const char* name : kResults)
            EXPECT_EQ(label(name)->isVisible(), shown) << name;
        EXPECT_EQ(enabled("tlbLookForBarCode", 3), shown);
        EXPECT_EQ(enabled("tlbLookForBarCode", 5), shown);
        EXPECT_TRUE(enabled("tlbLookForBarCode", 1));
    }
    void expectNotice(const QString& notice) {
        ASSERT_EQ(messages.count(), 1);
        EXPECT_EQ(messages.last().Text, notice);
        EXPECT_EQ(messages.last().Flags, MsgFlag::Information);
        EXPECT_EQ(messages.last().Title, QStringLiteral("Komunikat"));
        messages.clear();
    }
    QString place() const {
        return QStringList({text("lblRankLokFOrBarCodeData"), text("lblStandLokFOrBarCodeData"),
                            text("lblShelfLokFOrBarCodeData"), text("lblLocationLokFOrBarCodeData")})
            .join(QLatin1Char(' '));
    }
    void showOnPlan() {
        warehouse.server.clearTrace();
        press("tlbLookForBarCode", "key_LokForBarCode");
    }
    QStringList questions() const {
        return warehouse.batches().filter(QStringLiteral(" select A.LocationPercent,"));
    }
    /// Makes the server busy without end with the question for one location.
    void keepServerBusyWith(const QString& location) {
        run(
            QStringLiteral("create function dbo.Busy () returns nvarchar(20) as begin declare @i int = 0 "
                           "while @i < 2000000000 set @i = @i + 1 return N'' end"));
        run(QStringLiteral("select * into Assigned from kolv_mag_Location_Item"));
        run(QStringLiteral("drop table kolv_mag_Location_Item"));
        run(QStringLiteral("create view kolv_mag_Location_Item as select Rank,Stand,Shelf,Location,case when "
                           "%1 then dbo.Busy() else ItemCode end as ItemCode,ItemName,GroupSur,"
                           "StatLocation_cmb from Assigned")
                .arg(location));
    }
    void placeIs(const QString& body) {
        answer(QStringLiteral("Kolv_mag_Param_BarCode"), QStringLiteral("@BarCode nvarchar(max)"), body);
    }
};

TEST_F(FrmMagWatchBarCodeLocLookup, ThePanelHasItsCaptionsAndButtons) {
    EXPECT_EQ(frame("frmLookForSurBarCode")->title(), QStringLiteral("Wyszukiwanie kodu "));
    EXPECT_EQ(captionsOf(toolBar("tlbLookForBarCode")),
              QStringList({QStringLiteral("&Zatwierdź"), QStringLiteral("-"), QStringLiteral("&Drukuj"),
                           QStringLiteral("-"), QStringLiteral("&Szukaj")}));
    const QStringList keys = keysOf(toolBar("tlbLookForBarCode"));
    EXPECT_EQ(keys.at(0), QStringLiteral("key_Akcept"));
    EXPECT_EQ(keys.at(2), QStringLiteral("key_Print"));
    EXPECT_EQ(keys.at(4), QStringLiteral("key_LokForBarCode"));
    EXPECT_EQ(captionsOf(toolBar("tlbLookForSurBarCode")), QStringList(QStringLiteral("&Zamknij")));
    EXPECT_TRUE(box("txtBarCodeLookFor")->hasFocus());
    expectResult(false);
}

TEST_F(FrmMagWatchBarCodeLocLookup, AKnownCodeTellsItsPlace) {
    lookFor(QStringLiteral("2001"));
    expectResult(true);
    EXPECT_EQ(place(), QStringLiteral("B 1 1 2"));
    EXPECT_EQ(text("lblItemCodeLookForBarCodeData"), QStringLiteral("FARBA : Farba: żółta"));
    EXPECT_EQ(box("txtNumberCode")->text(), QStringLiteral("70000"));
    EXPECT_EQ(warehouse.batches(), QStringList(QStringLiteral("exec Kolv_mag_Param_BarCode N'2001'")));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchBarCodeLocLookup, AScannersEnterLooksForTheCodeAndTheNextOneTakesItsPlace) {
    test::type(box("txtBarCodeLookFor"), QStringLiteral("2001"));
    test::key(box("txtBarCodeLookFor"), Qt::Key_Return);
    EXPECT_EQ(place(), QStringLiteral("B 1 1 2"));
    test::type(box("txtBarCodeLookFor"), QStringLiteral("1001"));
    test::key(box("txtBarCodeLookFor"), Qt::Key_Enter);
    EXPECT_EQ(box("txtBarCodeLookFor")->text(), QStringLiteral("1001"));
    EXPECT_EQ(place(), QStringLiteral("A 1 1 1"));
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchBarCodeLocLookup, LettersAndBlanksAndNothingAreNoCode) {
    lookFor(QStringLiteral("2001"));
    for (const char* typed : {"", "   ", "12a4", "FARBA", "1' or 1=1"}) {
        lookFor(QString::fromLatin1(typed));
        expectNotice(kNotNumeric);
        EXPECT_EQ(warehouse.batches(), QStringList()) << typed;
        expectResult(true);
        EXPECT_EQ(place(), QStringLiteral("B 1 1 2")) << "as it was";
    }
}

TEST_F(FrmMagWatchBarCodeLocLookup, AnUnknownCodeHidesTheResultBefore) {
    lookFor(QStringLiteral("2001"));
    lookFor(QStringLiteral("999"));
    expectNotice(kUnknown);
    expectResult(false);
    EXPECT_EQ(box("txtNumberCode")->text(), QStringLiteral("-1"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, TenThousandDigitsAreAnUnknownCode) {
    const QString digits(10000, QLatin1Char('7'));
    box("txtBarCodeLookFor")->setText(digits);
    warehouse.server.clearTrace();
    press("tlbLookForBarCode", "key_Akcept");
    expectNotice(kUnknown);
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral("exec Kolv_mag_Param_BarCode N'") + digits + QLatin1Char('\'')));
}

TEST_F(FrmMagWatchBarCodeLocLookup, ThePlaceKeepsItsColoursAndAllElseTurnsGrey) {
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    // FARBA belongs on two other locations as well; the full one has the grey icon of full ones.
    EXPECT_EQ(locations(), QStringLiteral("LA_G_30 LA_G_30 LA_G_30 LA_G_30 LA_G_100 LA_G_30 LA_G_30 LA_P_30 "
                                          "LA_G_30"));
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 RR1_S_02 R2_S_01"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
    expectLookup();
}

TEST_F(FrmMagWatchBarCodeLocLookup, AsksOnceForEachLocationAfterARebuild) {
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    EXPECT_EQ(questions().size(), 9);
    EXPECT_EQ(questions().last(),
              QStringLiteral(" select A.LocationPercent,B.ItemCode,B.GroupSur from kolv_mag_Location A left "
                             "join kolv_mag_Location_item B ON A.Rank = B.Rank AND A.Stand = B.Stand AND "
                             "A.Shelf = B.Shelf AND A.Location = B.LOcation  Where A.Rank = 2 And A.Stand = "
                             "1 And A.Shelf = 1 And A.Location = 3"));
    EXPECT_EQ(warehouse.batches().filter(QStringLiteral("from kolv_mag_Stand")).size(), 1);
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

TEST_F(FrmMagWatchBarCodeLocLookup, ALocationOfTheSameMaterialAtAnotherAddressTurnsGrey) {
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    for (const char* other : {"1_1_1_1_", "1_2_1_1_"})
        EXPECT_TRUE(item("imglocation", QString::fromLatin1(other))->picturePath().endsWith(u"LA_G_30.ico"));
    EXPECT_TRUE(item("imglocation", QStringLiteral("2_1_1_2_"))->picturePath().endsWith(u"LA_P_30.ico"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, AFullLocationWithoutThePackageHasTheGreyIconOfFullOnes) {
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    EXPECT_TRUE(item("imglocation", QStringLiteral("1_2_1_2_"))->picturePath().endsWith(u"\\LA_G_100.ico"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, ALocationThatTheDatabaseDoesNotHaveKeepsItsIcon) {
    // The plan counts the locations of a shelf: of 1 and 3 it makes 1 and 2.
    run(QStringLiteral("delete from kolv_mag_Location where Rank = 1 and Stand = 2 and Location = 2"));
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    EXPECT_EQ(questions().size(), 8);
    const QStringList shown = locations().split(u' ');
    EXPECT_EQ(shown.size(), 8);
    EXPECT_EQ(shown.at(3), QStringLiteral("LA_G_30"));
    EXPECT_EQ(shown.at(4), QStringLiteral("LA_P_30")) << "as the rebuild left it";
    EXPECT_EQ(shown.at(5), QStringLiteral("LA_G_30")) << "the pass goes on";
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 RR1_S_02 R2_S_01"));
    EXPECT_EQ(messages.count(), 0) << qPrintable(messages.last().Text);
}

TEST_F(FrmMagWatchBarCodeLocLookup, AFailingQuestionLeavesItsLocationAndThePassGoesOn) {
    run(QStringLiteral("alter table kolv_mag_Location_Item alter column GroupSur int NULL"));
    run(
        QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,GroupSur) values "
                       "(1,2,1,2,40000)"));
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetLocationPercent]"));
    const QStringList shown = locations().split(u' ');
    EXPECT_EQ(shown.at(4), QStringLiteral("LA_P_30")) << "as the rebuild left it";
    EXPECT_EQ(shown.at(5), QStringLiteral("LA_G_30"));
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 RR1_S_02 R2_S_01"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, AServerThatIsGoneInTheGreyPassIsToldOnceAndTheRestStaysAsItWas) {
    lookFor(QStringLiteral("2001"));
    keepServerBusyWith(QStringLiteral("Rank = 1 and Stand = 2 and Location = 1"));
    {
        const KillAtStatement killer(warehouse.server, QStringLiteral("Where A.Rank = 1 And A.Stand = 2"));
        showOnPlan();
    }
    ASSERT_EQ(messages.count(), 1) << qPrintable(messages.last().Title);
    EXPECT_EQ(messages.last().Title, QStringLiteral("Error - clsMagWatch [GetLocationPercent]"));
    EXPECT_EQ(locations(), QStringLiteral("LA_G_30 LA_G_30 LA_G_30 LA_P_30 LA_P_30 LA_P_30 LA_P_30 LA_P_30 "
                                          "LA_P_30"));
    EXPECT_EQ(stands(), QStringLiteral("R1_S_01 R1_S_02 R2_S_01")) << "not reached";
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
    expectLookup();
    expectResult(true);
}

TEST_F(FrmMagWatchBarCodeLocLookup, WithTheServerGoneALookupIsToldOnceAndTheButtonsKeepTheirState) {
    warehouse.server.kill();
    lookFor(QStringLiteral("2001"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("Error - clsMagWatchBarCodeLoc [GetParamBarCodeProcedure]"));
    expectResult(false);
    EXPECT_EQ(box("txtBarCodeLookFor")->text(), QStringLiteral("2001"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, AFirstLocationFilledOver100HasNoGreyIconAndEndsThePass) {
    run(
        QStringLiteral("update kolv_mag_Location set LocationPercent = 101 where Rank = 1 and Stand = 1 and "
                       "Location = 1"));
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("frmMagWatchBarCodeLoc - ChangeIconOnLocationOnInputItemCOdeAnyLocation"));
    EXPECT_FALSE(locations().contains(QStringLiteral("_G_")));
}

TEST_F(FrmMagWatchBarCodeLocLookup, OfAMaterialCodeWithAColonTheLabelGivesTheFirstPartAlone) {
    run(QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'FARBA:2',N'Farba')"));
    run(QStringLiteral("update kolv_mag_Location_Item set ItemCode = N'FARBA:2' where Rank = 2"));
    run(QStringLiteral("update Kolv_Mag_BarCode_Sur set ItemCode = N'FARBA:2' where BarCode = N'2001'"));
    lookFor(QStringLiteral("2001"));
    EXPECT_EQ(text("lblItemCodeLookForBarCodeData"), QStringLiteral("FARBA:2 : Farba"));
    showOnPlan();
    EXPECT_FALSE(locations().contains(QStringLiteral("_P_"))) << qPrintable(locations());
}

TEST_F(FrmMagWatchBarCodeLocLookup, BlanksAroundACodeAreSentAndFindItAllTheSame) {
    lookFor(QStringLiteral(" 2001 "));
    EXPECT_EQ(warehouse.batches(), QStringList(QStringLiteral("exec Kolv_mag_Param_BarCode N' 2001 '")));
    EXPECT_EQ(place(), QStringLiteral("B 1 1 2"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, ALeadingZeroIsPartOfTheCode) {
    lookFor(QStringLiteral("02001"));
    expectNotice(kUnknown);
    EXPECT_EQ(warehouse.batches(), QStringList(QStringLiteral("exec Kolv_mag_Param_BarCode N'02001'")));
}

TEST_F(FrmMagWatchBarCodeLocLookup, AFillOver100TakesTheGreyIconBeforeIt) {
    run(
        QStringLiteral("update kolv_mag_Location set LocationPercent = 120 where Rank = 1 and Stand = 2 and "
                       "Location = 3"));
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    EXPECT_EQ(locations().split(u' ').at(5), QStringLiteral("LA_G_100"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, ARowAbove6HasNoLetterAndNoPlaceOnThePlan) {
    lookFor(QStringLiteral("7001"));
    EXPECT_EQ(place(), QStringLiteral(" 1 1 1"));
    expectResult(true);
    showOnPlan();
    EXPECT_FALSE(locations().contains(QStringLiteral("_P_"))) << qPrintable(locations());
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 RR1_S_02 RR2_S_01"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, APackageThatDoesNotBelongWhereItLiesIsNotFoundOnThePlan) {
    // KLEJ lies where FARBA belongs: the plan knows the assigned materials alone.
    lookFor(QStringLiteral("1003"));
    EXPECT_EQ(place(), QStringLiteral("A 1 1 1"));
    showOnPlan();
    EXPECT_FALSE(locations().contains(QStringLiteral("_P_"))) << qPrintable(locations());
}

TEST_F(FrmMagWatchBarCodeLocLookup, AnAnswerWithoutARowOrOfNullsReadsAsZerosAndShowsNothingOnThePlan) {
    const QString nulls = QStringLiteral(
        "select cast(null as nvarchar(20)) as ItemCode, cast(null as nvarchar(20)) as "
        "ItemName, cast(null as smallint) as Rank, cast(null as smallint) as Stand, cast(null "
        "as smallint) as Shelf, cast(null as smallint) as Location, cast(null as int) as "
        "NumberCode, cast(null as smallint) as Error");
    for (const QString& body : {QStringLiteral("select 1 as ItemCode where 1 = 0"), nulls}) {
        placeIs(body);
        lookFor(QStringLiteral("1001"));
        expectResult(true);
        EXPECT_EQ(place(), QStringLiteral(" 0 0 0"));
        EXPECT_EQ(text("lblItemCodeLookForBarCodeData"), QStringLiteral(" : "));
        EXPECT_EQ(box("txtNumberCode")->text(), QStringLiteral("0"));
        showOnPlan();
        EXPECT_EQ(warehouse.batches(), QStringList()) << "no rebuild either";
    }
    EXPECT_EQ(messages.count(), 0);
}

TEST_F(FrmMagWatchBarCodeLocLookup, AFailureIsReportedOnceAndLeavesWhatShows) {
    lookFor(QStringLiteral("2001"));
    placeIs(QStringLiteral("raiserror(N'Nie teraz', 16, 1)"));
    lookFor(QStringLiteral("1001"));
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("Error - clsMagWatchBarCodeLoc [GetParamBarCodeProcedure]"));
    expectResult(true);
    EXPECT_EQ(place(), QStringLiteral("B 1 1 2"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, ClosingThePanelLeavesThePlanGreyUntilTheNextRebuild) {
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    const QString grey = locations();
    press("tlbLookForSurBarCode", "key_Close");
    expectMap();
    EXPECT_EQ(locations(), grey);
    clickLocation(QStringLiteral("1_1_1_1"));
    EXPECT_EQ(locations(), grey);
    press("tlbCmd", "key_ReBulid");
    EXPECT_FALSE(locations().contains(QStringLiteral("_G_")));
}

TEST_F(FrmMagWatchBarCodeLocLookup, AClickOnThePlanLeadsToTheMapAndLeavesTheGrey) {
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    const QString grey = locations();
    clickLocation(QStringLiteral("1_1_1_1"));
    expectMap();
    EXPECT_EQ(locations(), grey);
    openLookup();
    clickStand(QStringLiteral("1_2"));
    expectMap();
    EXPECT_EQ(locations(), grey);
    EXPECT_EQ(stands(), QStringLiteral("RR1_S_01 RR1_S_02 R2_S_01"));
}

TEST_F(FrmMagWatchBarCodeLocLookup, AMissingGreyIconEndsThePassUnderItsName) {
    ASSERT_TRUE(warehouse.useOwnIcons());
    const QString all = warehouse.server.driveC() + QStringLiteral("/Regalon/Ikony/");
    for (const char* name : {"R1_S_01.ico", "R1_S_02.ico", "R2_S_01.ico", "LA_P_30.ico", "LA_G_30.ico"})
        ASSERT_TRUE(
            QFile::copy(all + QString::fromLatin1(name), warehouse.ownIcon(QString::fromLatin1(name))));
    open();
    openLookup();
    lookFor(QStringLiteral("2001"));
    showOnPlan();
    ASSERT_EQ(messages.count(), 1);
    EXPECT_EQ(messages.last().Title,
              QStringLiteral("frmMagWatchBarCodeLoc - ChangeIconOnLocationOnInputItemCOdeAnyLocation"));
    EXPECT_EQ(stands(), QStringLiteral("R1_S_01 R1_S_02 R2_S_01")) << "not reached";
    EXPECT_EQ(Screen::mousePointer(), MousePointer::Default);
}

}  // namespace
}  // namespace regalon
