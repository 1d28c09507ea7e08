// Proposed targets of chosen packages: their status, reason and order, and the calls that make and show them.
// A free location of the hall holds 1188 litres and 1000 kg.

#include "database/EditorCalls.h"
#include "database/ShiftDesk.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace regalon::test {
namespace {

const std::string Source = "1, 1, 1, 1";
const std::string Target = "1, 2, 2, 2";

class Proposals : public ::testing::Test {
protected:
    /// Status, second letter and reason of Target for package 10, whose material is A-1.
    Proposal judged() {
        desk.take("A-1", Source, "10");
        return desk.proposal(Target);
    }

    void expectTarget(const std::string& status, const std::string& occupied, const std::string& reason) {
        const Proposal row = judged();
        EXPECT_EQ(row.status, status);
        EXPECT_EQ(row.occupied, occupied);
        EXPECT_NE(row.remark.find(reason), std::string::npos) << row.remark;
    }

    ShiftHall hall;
    ShiftDesk desk = hall.desk();
};

std::vector<std::string> addresses(const std::vector<Proposal>& rows, const std::string& barCode) {
    std::vector<std::string> list;
    for (const Proposal& row : rows)
        if (row.barCode == barCode)
            list.push_back(row.address());
    return list;
}

}  // namespace

TEST_F(Proposals, ColumnsStandAtTheirPlacesFromTheEnd) {
    const Rows rows = desk.proposalRows();
    ASSERT_GE(rows.columns.size(), 10U);
    const std::vector<std::string> fromTheEnd{"Z.",           "Uwagi", "St.",   "Po %",  "Ilość",
                                              "Kod kreskowy", "Lok.",  "Półka", "Regał", "Rząd"};
    for (std::size_t i = 0; i < fromTheEnd.size(); ++i) {
        const std::string& name = rows.columns[rows.columns.size() - 1 - i].name;
        EXPECT_EQ(name.substr(0, name.find(':')), fromTheEnd[i]);
        EXPECT_NE(name.find(';'), std::string::npos) << name;
    }
    for (const auto& column : rows.columns)
        EXPECT_EQ(column.name.find("xxx_"), std::string::npos);
}

TEST_F(Proposals, NoChosenPackageHasNoProposals) {
    hall.put({.barCode = "10"});
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    const Answer confirmed = desk.confirm();
    EXPECT_EQ(confirmed.value, 0);
    EXPECT_EQ(confirmed.message, "");
    EXPECT_EQ(desk.prepare().value, 0);
    EXPECT_TRUE(desk.proposals().empty());
}

TEST_F(Proposals, AnEmptyHallOfPackagesConfirmsNothing) {
    EXPECT_EQ(desk.confirm().value, 0);
    EXPECT_TRUE(desk.proposals().empty());
    EXPECT_FALSE(desk.proposalRows().columns.empty());
}

TEST_F(Proposals, AnAssignedLocationIsD) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "A-1");
    expectTarget("D", "C", "rzypisana do surowca");
}

TEST_F(Proposals, ALocationOfTheMaterialsGroupIsD) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "", 1);
    expectTarget("D", "C", "rzypisana do surowca");
}

TEST_F(Proposals, AnAssignedLocationWithSomeOfItIsDAndOccupied) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11", .address = Target});
    hall.assign(Target, "A-1");
    expectTarget("D", "Z", "");
}

TEST_F(Proposals, AFreeEmptyLocationIsCAndC) {
    hall.put({.barCode = "10"});
    expectTarget("C", "C", "ez przypisania do surowca");
}

TEST_F(Proposals, AFreeLocationWithTheSameMaterialIsCAndOccupied) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11", .address = Target});
    expectTarget("C", "Z", "ez przypisania do surowca");
}

TEST_F(Proposals, AMultiLocationWithoutAGroupTakesSeveralMaterials) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11", .item = "B-1", .address = Target});
    hall.assign(Target, "B-1", 0, 1);
    expectTarget("C", "Z", "ez przypisania do surowca");
}

TEST_F(Proposals, AMultiLocationOfTheGroupTakesAnotherMemberBesides) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11", .item = "A-2", .address = Target});
    hall.assign(Target, "", 1, 1);
    expectTarget("D", "Z", "rzypisana do surowca");
}

TEST_F(Proposals, AMonoLocationWithAnotherMaterialIsO) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11", .item = "A-2", .address = Target});
    hall.assign(Target, "", 1, 0);
    expectTarget("O", "Z", "Jednoindeksowa, leży inny surowiec");
}

TEST_F(Proposals, ALocationOfAnotherGroupIsOWhereTheMaterialLiesByMistake) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11", .address = Target});
    hall.assign(Target, "", 2, 1);
    expectTarget("O", "Z", "Grupa nie obejmuje surowca");
}

TEST_F(Proposals, ALocationOfAnotherMaterialIsOWhereTheMaterialLiesByMistake) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11", .address = Target});
    hall.assign(Target, "B-1");
    expectTarget("O", "Z", "Przypisana do innego surowca");
}

TEST_F(Proposals, LocationsOfOtherMaterialsThatNobodyWouldExpectAreNotListed) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "B-1");
    desk.take("A-1", Source, "10");
    const auto listed = addresses(desk.proposals(), "10");
    EXPECT_EQ(std::count(listed.begin(), listed.end(), Target), 0);
    EXPECT_EQ(listed.size(), 27U) << "the others of 28 are free, or the source";
}

TEST_F(Proposals, ASwitchedOffStandIsO) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "A-1");
    hall.connection.run("UPDATE kolv_mag_Stand SET StandEnable = N'N' WHERE Rank = 1 AND Stand = 2");
    expectTarget("O", "C", "Regał jest wyłączony");
}

TEST_F(Proposals, TheSourceIsListedLastAndIsO) {
    hall.put({.barCode = "10"});
    hall.assign(Source, "A-1");
    desk.take("A-1", Source, "10");
    const auto rows = desk.proposals();
    EXPECT_EQ(rows.at(rows.size() - 1).address(), Source);
    EXPECT_EQ(rows.at(rows.size() - 1).status, "O");
    EXPECT_EQ(rows.at(rows.size() - 1).remark, "Opakowanie już na niej leży");
}

TEST_F(Proposals, AFullLocationIsP) {
    // 700 of 1188 litres lie there, and the package wants 500 more.
    hall.put({.barCode = "10", .length = 1000, .width = 500, .height = 1000});
    hall.put({.barCode = "11", .address = Target, .length = 700, .width = 1000, .height = 1000});
    hall.assign(Target, "A-1");
    expectTarget("P", "Z", "Brak miejsca");
    EXPECT_EQ(desk.proposal(Target).percentAfter, 101);
}

TEST_F(Proposals, ALocationWithoutLoadLeftIsP) {
    hall.put({.barCode = "10", .weight = 401});
    hall.put({.barCode = "11", .address = Target, .weight = 600});
    hall.assign(Target, "A-1");
    expectTarget("P", "Z", "Brak miejsca");
}

TEST_F(Proposals, ALocationMayBeFilledToTheLastKilogram) {
    hall.put({.barCode = "10", .weight = 400});
    hall.put({.barCode = "11", .address = Target, .weight = 600});
    hall.assign(Target, "A-1");
    expectTarget("D", "Z", "");
    EXPECT_EQ(desk.proposal(Target).percentAfter, 100);
}

TEST_F(Proposals, GivenOutPackagesTakeNoRoom) {
    hall.put({.barCode = "10", .weight = 800});
    hall.put({.barCode = "11", .address = Target, .weight = 900});
    hall.assign(Target, "A-1");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N' WHERE BarCode = N'11'");
    expectTarget("D", "C", "");
}

TEST_F(Proposals, APackageThatIsTooLargeIsRefusedEverywhereItDoesNotFit) {
    // 2300 long: not in 900 x 1100, but in the one location of three slots. 1250 deep stands out by 150 and
    // may.
    hall.put({.barCode = "10", .length = 2300, .width = 1250, .height = 200});
    hall.assign(Target, "A-1");
    expectTarget("O", "C", "Opakowanie za duże lub za ciężkie");
    EXPECT_EQ(desk.proposal("2, 1, 1, 1").status, "C");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET PackWidth = 1251 WHERE BarCode = N'10'");
    ASSERT_EQ(desk.confirm().value, 0);
    const auto rows = desk.proposals();
    EXPECT_TRUE(
        std::none_of(rows.begin(), rows.end(), [](const Proposal& row) { return row.canBeTicked(); }));
}

TEST_F(Proposals, APackageMayBeTurnedButNotLaidOnItsSide) {
    hall.put({.barCode = "10", .length = 1200, .width = 900, .height = 300});
    hall.assign(Target, "A-1");
    expectTarget("D", "C", "");
    hall.connection.run(
        "UPDATE Kolv_Mag_BarCode_Sur SET PackLength = 300, PackHeight = 1201 WHERE BarCode = N'10'");
    ASSERT_EQ(desk.confirm().value, 0);
    EXPECT_EQ(desk.proposal(Target).status, "O");
}

TEST_F(Proposals, SizesOfTheLocationComeBeforeThoseOfTheRack) {
    hall.put({.barCode = "10", .height = 500});
    hall.assign(Target, "A-1");
    hall.connection.run("UPDATE kolv_mag_Location_Item SET Height_int = 499 WHERE " + whereAddress(Target));
    EXPECT_EQ(judged().status, "O");
    hall.connection.run("UPDATE kolv_mag_Location_Item SET Height_int = 500 WHERE " + whereAddress(Target));
    ASSERT_EQ(desk.confirm().value, 0);
    EXPECT_EQ(desk.proposal(Target).status, "D");
}

TEST_F(Proposals, APackageOfUnknownSizeFitsWhereItsMaterialBelongs) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "A-1");
    hall.connection.run(
        "UPDATE Kolv_Mag_BarCode_Sur SET PackLength = NULL, PackWidth = NULL, PackHeight = NULL, PackWeight "
        "= "
        "NULL WHERE BarCode = N'10'");
    expectTarget("D", "C", "");
}

TEST_F(Proposals, AMisTypedLocationOfMillimetresStopsNothing) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "A-1");
    hall.connection.run(
        "UPDATE kolv_mag_Location_Item SET Height_int = 1, Width_int = 1, Depth_int = 1 WHERE " +
        whereAddress(Target));
    EXPECT_EQ(judged().status, "O");
    EXPECT_EQ(desk.proposal(Target).percentAfter, 9999);
}

TEST_F(Proposals, TheBestComesFirst) {
    hall.put({.barCode = "10", .weight = 400});
    hall.assign("1, 3, 1, 1", "A-1");  // far
    hall.assign("1, 2, 1, 1", "A-1");  // near
    hall.assign("1, 3, 1, 2", "", 1);
    hall.put({.barCode = "11", .address = "1, 3, 1, 2"});
    hall.put({.barCode = "12", .address = "1, 3, 1, 3", .weight = 900});
    hall.assign("1, 3, 1, 3", "A-1");  // full
    hall.put({.barCode = "13", .address = "1, 3, 3, 3"});
    desk.take("A-1", Source, "10");
    const auto rows = desk.proposals();
    const auto at = [&rows](const std::string& address) {
        return std::find_if(rows.begin(), rows.end(),
                            [&address](const Proposal& row) { return row.address() == address; }) -
               rows.begin();
    };
    EXPECT_EQ(at("1, 2, 1, 1"), 0) << "belongs and is near";
    EXPECT_EQ(at("1, 3, 1, 1"), 1);
    EXPECT_EQ(at("1, 3, 1, 2"), 2);
    EXPECT_EQ(at("1, 3, 3, 3"), 3) << "free, but the material lies there already";
    EXPECT_LT(at("1, 1, 1, 2"), at("1, 3, 3, 2")) << "free and near before free and far";
    EXPECT_LT(at("1, 3, 3, 2"), at("1, 3, 1, 3")) << "full behind all that can be ticked";
    EXPECT_EQ(at(Source), static_cast<std::ptrdiff_t>(rows.size()) - 1);
}

TEST_F(Proposals, OneTargetOfEachPackageIsProposedAndRoomIsPromisedOnce) {
    for (const char* code : {"10", "11", "12"})
        hall.put({.barCode = code, .weight = 400});
    hall.assign(Target, "A-1");
    hall.assign("1, 3, 1, 1", "A-1");
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    for (const char* code : {"10", "11", "12"})
        ASSERT_EQ(desk.choose(code).value, 0);
    ASSERT_EQ(desk.confirm().value, 0);
    std::map<std::string, std::vector<std::string>> proposed;
    for (const Proposal& row : desk.proposals())
        if (row.remark.rfind("Proponowana, ", 0) == 0)
            proposed[row.barCode].push_back(row.address());
    using Addresses = std::vector<std::string>;
    EXPECT_EQ(proposed["10"], Addresses{Target});
    EXPECT_EQ(proposed["11"], Addresses{Target});
    EXPECT_EQ(proposed["12"], Addresses{"1, 3, 1, 1"}) << "two of 400 kg fill a location of 1000";
    EXPECT_EQ(addresses(desk.proposals(), "12").at(0), Target) << "which the user may still tick";
}

TEST_F(Proposals, OnlyChosenPackagesAreProposed) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11"});
    desk.take("A-1", Source, "11");
    for (const Proposal& row : desk.proposals())
        EXPECT_EQ(row.barCode, "11");
    ASSERT_EQ(desk.unchoose("11").value, 0);
    ASSERT_EQ(desk.confirm().value, 0);
    EXPECT_TRUE(desk.proposals().empty());
}

TEST_F(Proposals, APackageThatHasLeftIsLetGoAndTheUserIsTold) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11"});
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    ASSERT_EQ(desk.choose("10").value, 0);
    ASSERT_EQ(desk.choose("11").value, 0);
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Location = 2 WHERE BarCode = N'10'");
    const Answer answer = desk.confirm();
    EXPECT_GT(answer.value, 0);
    EXPECT_EQ(answer.message,
              "Opakowanie „10” przesunął lub wydał w międzyczasie inny użytkownik. Wycofano z wyboru.");
    EXPECT_EQ(desk.chosen(), 1);
    const auto rows = desk.proposals();
    ASSERT_FALSE(rows.empty()) << "the other package has its proposals all the same";
    EXPECT_EQ(rows.at(0).barCode, "11");
    EXPECT_EQ(desk.confirm().value, 0) << "told once";
}

TEST_F(Proposals, SeveralPackagesThatHaveLeftAreToldInOneMessage) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11"});
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    ASSERT_EQ(desk.choose("10").value, 0);
    ASSERT_EQ(desk.choose("11").value, 0);
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N'");
    EXPECT_EQ(
        desk.confirm().message,
        "Opakowanie „10” i inne (razem: 2) przesunął lub wydał w międzyczasie inny użytkownik. Wycofano z "
        "wyboru.");
    EXPECT_EQ(desk.chosen(), 0);
}

TEST_F(Proposals, ModeZeroReturnsNoRowsAndTakesTheTextNull) {
    hall.put({.barCode = "10"});
    desk.take("A-1", Source, "10");
    EXPECT_TRUE(desk.proposalRows(0).columns.empty());
    const Answer answer = desk.prepare("N'NULL'");
    EXPECT_EQ(answer.value, 0);
    EXPECT_EQ(answer.message, "");
}

TEST_F(Proposals, AMessageWithACommaIsOneTextInTheDisplayAndSixArgumentsAreRefused) {
    hall.put({.barCode = "10"});
    desk.take("A-1", Source, "10");
    const auto rows = desk.proposalRows(1, "N'Opakowanie zajęte, wybierz inne'");
    EXPECT_EQ(rows.size(), desk.proposalRows().size());
    try {
        desk.run("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'S',0,Opakowanie, zajęte");
        ADD_FAILURE() << "six arguments were taken";
    } catch (const SqlFailure& failure) {
        EXPECT_EQ(failure.number(), 8144) << failure.what();
    }
}

TEST_F(Proposals, AListThatCannotBeReadIsAnErrorAndNoEmptyList) {
    desk.run("DROP TABLE IF EXISTS ##Temp_Prop_Location; CREATE TABLE ##Temp_Prop_Location (ID int)");
    EXPECT_THROW(desk.proposalRows(), SqlFailure);
}

TEST_F(Proposals, GoodsOutConfirmsWithTheUserAlone) {
    hall.put({.barCode = "10"});
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    ASSERT_EQ(desk.choose("10").value, 0);
    EXPECT_EQ(statusOf(desk.connection(), "Kolv_mag_Watch_Prop_Location_Confirm", "1"), 0);
    EXPECT_FALSE(desk.proposals().empty());
}

TEST_F(Proposals, EachSortOrdersByItsColumn) {
    for (const char* code : {"10", "9", "100"})
        hall.put({.barCode = code,
                  .weight = code[0] == '9' ? 50.0 : 200.0,
                  .quantity = code[0] == '9' ? 7.5 : 12.0});
    hall.put({.barCode = "11", .address = Target, .weight = 500});
    hall.assign(Target, "A-1");
    hall.assign("1, 3, 1, 1", "A-1");
    hall.assign("1, 3, 1, 2", "B-1");
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    for (const char* code : {"10", "9", "100"})
        ASSERT_EQ(desk.choose(code).value, 0);
    ASSERT_EQ(desk.confirm().value, 0);

    const Rows natural = desk.proposalRows(1);
    ASSERT_GT(natural.size(), 60U);
    const std::set<int> numbers{3, 4, 5, 6, 8, 9};
    for (int mode = 2; mode <= 10; ++mode) {
        // Column 1 of the client's list is the number of the row.
        const auto column = static_cast<std::size_t>(mode - 2);
        const Rows rows = desk.proposalRows(mode);
        ASSERT_EQ(rows.size(), natural.size());
        for (std::size_t i = 1; i < rows.size(); ++i) {
            if (numbers.contains(mode))
                EXPECT_LE(rows.number(i - 1, column), rows.number(i, column)) << mode << ", row " << i;
            else
                EXPECT_LE(rows.text(i - 1, column), rows.text(i, column)) << mode << ", row " << i;
        }
        EXPECT_EQ(rows.values == natural.values, mode == 7) << mode << ": packages come by barcode anyway";
    }
    EXPECT_TRUE(desk.proposalRows(11).values == natural.values);
    EXPECT_TRUE(desk.proposalRows(-1).values == natural.values);
}

TEST_F(Proposals, PlacesSortByTheirNumbers) {
    hall.connection.run(
        "INSERT INTO kolv_mag_Stand (Rank, Stand, ShelfCount, StandLeft, StandTop, StandEnable) VALUES (1, "
        "10, 1, "
        "9000, 3000, N'Y'); INSERT INTO kolv_mag_Location (Rank, Stand, Shelf, Location) VALUES (1, 10, 1, "
        "1)");
    hall.put({.barCode = "10"});
    desk.take("A-1", Source, "10");
    const auto listed = addresses(desk.proposals(2), "10");
    ASSERT_EQ(listed.size(), 29U);
    EXPECT_EQ(listed.at(0), Source);
    EXPECT_EQ(listed[27], "1, 10, 1, 1");
    EXPECT_EQ(listed[28], "2, 1, 1, 1");
}

TEST_F(Proposals, ASortRecomputesNothing) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "A-1");
    EXPECT_EQ(judged().status, "D");
    hall.assign(Target, "B-1");
    EXPECT_EQ(desk.proposals(3).size(), desk.proposals(1).size());
    EXPECT_EQ(desk.proposal(Target).status, "D") << "as it was when the proposals were made";
}

TEST_F(Proposals, NumbersOfPackagesAreUniqueAmongUsersAndComeAgain) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11"});
    ShiftDesk other = hall.desk(2, "MAG-WOZEK-2");
    desk.take("A-1", Source, "10");
    for (int i = 0; i < 20; ++i) {
        other.take("A-1", Source, "11");
        ASSERT_EQ(desk.confirm().value, 0);
    }
    const Rows rows =
        hall.connection.run("SELECT BarCode, IDCodeBar FROM ##Temp_Prop_Location_BarCode ORDER BY IDCodeBar");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_NE(rows.text(0), rows.text(1));
    EXPECT_LE(rows.whole(1, 1), 2) << "the client reads 16 bits of them";
}

TEST_F(Proposals, WhenTheNumbersOfPackagesRunOutTheUserIsTold) {
    hall.put({.barCode = "10"});
    hall.put({.barCode = "11"});
    ShiftDesk other = hall.desk(2, "MAG-WOZEK-2");
    ASSERT_EQ(other.clear(), 0);
    other.run(
        "INSERT INTO ##Temp_Prop_Location_BarCode (IDCodeBar, HostName, SPID, UserSign, Aplication, "
        "Operation, BarCode, Quantity, QuantityAdd) SELECT Number, HOST_NAME(), -@@SPID, 2, N'P', N'S', "
        "N'X', 1, 1 FROM kolv_mag_Number WHERE Number <> 777");
    desk.take("A-1", Source, "10");
    EXPECT_EQ(desk.one("SELECT IDCodeBar FROM ##Temp_Prop_Location_BarCode WHERE UserSign = 1"), "777");
    ASSERT_EQ(desk.choose("11").value, 0);
    const Answer answer = desk.confirm();
    EXPECT_EQ(answer.value, 1);
    EXPECT_EQ(answer.message,
              "Za dużo wybranych opakowań: u wszystkich użytkowników razem najwyżej 10000. Odznacz część z "
              "nich albo poczekaj, aż inni skończą.");
    const Answer prepared = desk.prepare();
    EXPECT_EQ(prepared.value, 1);
    EXPECT_EQ(prepared.message, answer.message);
    EXPECT_TRUE(desk.proposals().empty());
    EXPECT_EQ(other.clear(), 0);
    EXPECT_EQ(desk.confirm().value, 0);
    EXPECT_FALSE(desk.proposals().empty());
}

TEST_F(Proposals, ALineIsReadByItsTwoNumbers) {
    hall.put({.barCode = "10", .quantity = 12.5});
    hall.assign(Target, "A-1");
    desk.take("A-1", Source, "10");
    const std::string package = desk.one("SELECT IDCodeBar FROM ##Temp_Prop_Location_BarCode");
    const Rows rows = desk.run(
        " select A.ItemCode,A.ItemName,B.BarCode,B.Quantity,B.QuantityAdd from ##Temp_Prop_Location "
        "A(nolock)  "
        "inner join  ##Temp_Prop_Location_BarCode B(nolock) ON A.IDCodeBar = B.IDCodeBar  where ID = 1 AND "
        "A.IDCodeBar = " +
        package);
    ASSERT_EQ(rows.size(), 1U);
    EXPECT_EQ(rows.text(0, 0), "A-1");
    EXPECT_EQ(rows.text(0, 1), "Blacha cienka");
    EXPECT_EQ(rows.text(0, 2), "10");
    EXPECT_DOUBLE_EQ(rows.number(0, 3), 12.5);
    EXPECT_DOUBLE_EQ(rows.number(0, 4), 12.5);
}

TEST_F(Proposals, AnotherLineCanBecomeTheProposedOne) {
    hall.put({.barCode = "10"});
    hall.assign(Target, "A-1");
    desk.take("A-1", Source, "10");
    const std::string package = desk.one("SELECT IDCodeBar FROM ##Temp_Prop_Location_BarCode");
    EXPECT_EQ(call(desk.connection(), "Kolv_mag_Prop_Location_Change", "1, 2, " + package).value, 0);
    const auto rows = desk.proposals();
    EXPECT_EQ(rows.at(0).remark, "Przypisana do surowca");
    EXPECT_EQ(rows.at(1).remark.rfind("Proponowana, ", 0), 0U) << rows.at(1).remark;

    const std::string last = std::to_string(rows.size());
    const Answer answer =
        call(desk.connection(), "Kolv_mag_Prop_Location_Change", "1, " + last + ", " + package);
    EXPECT_GT(answer.value, 0) << "the source is no target";
    EXPECT_EQ(answer.message, "Tej lokalizacji nie można wybrać dla opakowania.");
    ShiftDesk other = hall.desk(2);
    EXPECT_GT(call(other.connection(), "Kolv_mag_Prop_Location_Change", "2, 1, " + package).value, 0)
        << "another user's line";
    EXPECT_EQ(desk.proposals().at(1).remark.rfind("Proponowana, ", 0), 0U);
}

TEST_F(Proposals, ThePlacesOfEachPackageGrowFewerWithTheirNumberDownToForty) {
    hall.connection.run(
        "INSERT INTO kolv_mag_Stand (Rank, Stand, ShelfCount, StandLeft, StandTop) SELECT 2, Number, 3, 700 "
        "* "
        "Number, 7000 FROM kolv_mag_Number WHERE Number BETWEEN 2 AND 5");
    hall.connection.run(
        "INSERT INTO kolv_mag_Location (Rank, Stand, Shelf, Location) SELECT 2, S.Number, H.Number, L.Number "
        "FROM kolv_mag_Number AS S CROSS JOIN kolv_mag_Number AS H CROSS JOIN kolv_mag_Number AS L WHERE "
        "S.Number BETWEEN 2 AND 5 AND H.Number <= 3 AND L.Number <= 3");
    for (const auto& [packages, places] : std::map<int, int>{{400, 50}, {500, 40}, {501, 40}}) {
        hall.connection.run("DELETE FROM Kolv_Mag_BarCode_Sur");
        hall.connection.run(
            "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, Rank, Stand, Shelf, Location, "
            "Active) SELECT CAST(1000 + Number AS nvarchar(9)), N'A-1', 1, 1, 1, 1, 1, N'Y' FROM "
            "kolv_mag_Number WHERE Number <= " +
            std::to_string(packages));
        ASSERT_EQ(desk.stage("A-1", Source).value, 0);
        desk.run("UPDATE Kolv_Mag_BarCode_Input_Sur_tym SET LineGrd = -1 WHERE SPID = -@@SPID");
        ASSERT_EQ(desk.confirm().value, 0);
        const Rows rows = desk.run(
            "SELECT COUNT(*), MIN(Lines), MAX(Lines) FROM (SELECT IDCodeBar, COUNT(*) AS Lines FROM "
            "##Temp_Prop_Location GROUP BY IDCodeBar) AS C");
        EXPECT_EQ(rows.whole(0, 0), packages);
        EXPECT_EQ(rows.whole(0, 1), places);
        EXPECT_EQ(rows.whole(0, 2), places);
    }
}

TEST_F(Proposals, FiveHundredChosenPackagesHaveEachItsPlaces) {
    hall.connection.run(
        "INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, ItemCode, Quantity, PackLength, PackWidth, PackHeight, "
        "PackWeight, Rank, Stand, Shelf, Location, Active) SELECT CAST(1000 + Number AS nvarchar(9)), "
        "N'A-1', 1, "
        "60, 50, 40, 1, 1, 1, 1, 1, N'Y' FROM kolv_mag_Number WHERE Number <= 500");
    ASSERT_EQ(desk.stage("A-1", Source).value, 0);
    desk.run("UPDATE Kolv_Mag_BarCode_Input_Sur_tym SET LineGrd = -1 WHERE SPID = -@@SPID");
    ASSERT_EQ(desk.confirm().value, 0);
    std::map<std::string, int> targets;
    std::map<std::string, int> proposed;
    for (const Proposal& row : desk.proposals()) {
        targets[row.barCode] += row.canBeTicked() ? 1 : 0;
        proposed[row.barCode] += row.remark.rfind("Proponowana, ", 0) == 0 ? 1 : 0;
    }
    EXPECT_EQ(targets.size(), 500U);
    for (const auto& [code, count] : targets) {
        EXPECT_EQ(count, 27) << code;
        EXPECT_EQ(proposed[code], 1) << code;
    }
}

}  // namespace regalon::test
