// Goods-out: ticks, staging, and the document that gives packages, or parts of them, out to a manufacturing
// order.

#include "database/DocumentDesk.h"
#include "database/EditorCalls.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

const std::string Label = labelOf(1, 2, 2, 2);
const std::string Place = "1, 2, 2, 2";

class GoodsOut : public ::testing::Test {
protected:
    GoodsOut() { hall.receive(desk, "P1", 10, Label); }

    void expectStagingRefused(const Outgoing& package, const std::string& reason) {
        const long rows = staged();
        const Answer answer = desk.stageOut(package);
        EXPECT_GT(answer.value, 0) << reason;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(staged(), rows);
    }

    void expectGiveOutRefused(const DocumentDesk::GiveOut& answer, const std::string& before,
                              const std::string& reason) {
        EXPECT_GT(answer.value, 0) << reason;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(answer.document, "<NULL>");
        EXPECT_EQ(hall.books(), before);
    }

    long staged() {
        return desk
            .run(
                "select count(*) from Kolv_Mag_BarCode_Output_Sur_tym(nolock) where HostName = host_name() "
                "AND SPID = -@@SPID AND USerSign = 1")
            .whole(0);
    }

    std::string fill() {
        return hall.one("SELECT LocationIcon FROM kolv_mag_Location WHERE " + whereAddress(Place));
    }

    Answer tick(const std::string& table, const std::string& what, const std::string& addOrDelete = "A",
                const std::string& receiver = "3") {
        return call(desk.connection(), "Kolv_mag_Add_" + table + "_GiveOut",
                    "N'P', 1, " + receiver + ", " + what + ", " + literal(addOrDelete));
    }

    long clearTicks(const std::string& table, int param = 0, const std::string& application = "P") {
        return statusOf(desk.connection(), "Kolv_mag_Clear_" + table + "_GiveOut",
                        literal(application) + ", 1, " + std::to_string(param));
    }

    DocumentHall hall;
    DocumentDesk desk = hall.documents();
};

}  // namespace

TEST_F(GoodsOut, APackageIsGivenOutWithItsDocumentHistoryAndFill) {
    ASSERT_EQ(fill(), "LA_P_20.ico");
    ASSERT_EQ(desk.stageOut({}).value, 0);
    const auto answer = desk.giveOut();
    EXPECT_EQ(answer.value, 0);
    EXPECT_EQ(answer.message, "");
    EXPECT_EQ(answer.document, "1");
    EXPECT_EQ(fill(), "LA_P_00.ico");
    EXPECT_EQ(hall.one("SELECT Active FROM Kolv_Mag_BarCode_Sur"), "N");
    EXPECT_EQ(hall.place("P1"), Place) << "where it lay last";
    Rows row = hall.connection.run(
        "SELECT GiveOutDocNum, GiveOutLineNum, GiveOutBarCode, SourceBarCode, ItemCode, Quantity, "
        "QuantityBack FROM Kolv_Mag_BarCode_Sur_Production");
    ASSERT_EQ(row.size(), 1U);
    std::vector<std::string> expected{"1", "1", "P1", "P1", "A-1", "10.000000", "<NULL>"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(row.text(0, c), expected[c]) << row.columns[c].name;
    row = hall.connection.run(
        "SELECT DocEntryProd, DocNumProd, LineNumProd, UserSign, UserSignGiveOut, HostName FROM "
        "Kolv_Mag_GiveOut");
    expected = {"20", "2020", "0", "1", "3", "MAG-PRZYJECIA"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(row.text(0, c), expected[c]) << row.columns[c].name;
    row = hall.connection.run(
        "SELECT BarCode, Quantity, FromRank, FromStand, FromShelf, FromLocation, ToRank, UserSign FROM "
        "Kolv_Mag_BarCode_Sur_History WHERE Operation = N'O'");
    ASSERT_EQ(row.size(), 1U);
    expected = {"P1", "10.000000", "1", "2", "2", "2", "<NULL>", "1"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(row.text(0, c), expected[c]) << row.columns[c].name;
    EXPECT_EQ(staged(), 0);
    expectBalance(hall.connection);
}

TEST_F(GoodsOut, APartBecomesAPackageOfItsOwnAndTheRestStays) {
    ASSERT_EQ(desk.stageOut({.quantity = 2.5}).value, 0);
    ASSERT_EQ(desk.giveOut().document, "1");
    const Rows rows = hall.connection.run(
        "SELECT BarCode, Quantity, PackWeight, PackLength, PackWidth, PackHeight, Active, DocEntry, DocNum, "
        "LineNum, ItemCode FROM Kolv_Mag_BarCode_Sur ORDER BY BarCode");
    ASSERT_EQ(rows.size(), 2U);
    const std::vector<std::string> rest{"P1", "7.500000", "75.000", "800", "600", "500",
                                        "Y",  "10",       "1010",   "0",   "A-1"};
    const std::vector<std::string> part{"P101", "2.500000", "25.000", "800", "600", "125",
                                        "N",    "10",       "1010",   "0",   "A-1"};
    for (std::size_t c = 0; c < rest.size(); ++c) {
        EXPECT_EQ(rows.text(0, c), rest[c]) << rows.columns[c].name;
        EXPECT_EQ(rows.text(1, c), part[c]) << rows.columns[c].name;
    }
    EXPECT_EQ(hall.place("P1"), Place);
    EXPECT_EQ(
        hall.one("SELECT GiveOutBarCode + N' of ' + SourceBarCode FROM Kolv_Mag_BarCode_Sur_Production"),
        "P101 of P1");
    expectBalance(hall.connection);
}

TEST_F(GoodsOut, EachPartHasACodeThatIsFree) {
    hall.put({.barCode = "P102"});
    ASSERT_EQ(desk.saveBarCode({.barCode = "P104", .number = 9}).value, 0);
    for (const char* code : {"P101", "P103", "P105"}) {
        ASSERT_EQ(desk.stageOut({.quantity = 2}).value, 0);
        const std::string document = desk.giveOut().document;
        EXPECT_EQ(
            hall.one("SELECT GiveOutBarCode FROM Kolv_Mag_BarCode_Sur_Production WHERE GiveOutDocNum = " +
                     document),
            code);
    }
    ASSERT_EQ(desk.stageOut({.quantity = 4}).value, 0);
    ASSERT_EQ(desk.giveOut().value, 0);
    EXPECT_EQ(hall.one("SELECT GiveOutBarCode FROM Kolv_Mag_BarCode_Sur_Production WHERE GiveOutDocNum = 4"),
              "P1")
        << "the last rest is the package itself";
}

TEST_F(GoodsOut, ADocumentHasALineForEachPackageInOrder) {
    for (const char* code : {"P3", "P2"})
        hall.receive(desk, code, 10, labelOf(1, 3, 1, 1));
    ASSERT_EQ(desk.stage({.barCode = "B1", .line = 1, .item = "B-1"}).value, 0);
    ASSERT_EQ(desk.book().value, 0);
    for (const char* code : {"P3", "P1", "P2"})
        ASSERT_EQ(desk.stageOut({.barCode = code}).value, 0);
    ASSERT_EQ(desk.stageOut({.barCode = "B1", .item = "B-1", .quantity = 3}).value, 0);
    ASSERT_EQ(desk.giveOut().value, 0);
    const Rows rows = desk.run(
        "select GiveOutDocNum,GiveOutLineNum,GiveOutBarCode from Kolv_Mag_BarCode_Sur_Production(nolock) "
        "where GiveOutDocNum =1 Order by GiveOutDocNum,GiveOutLineNum");
    ASSERT_EQ(rows.size(), 4U);
    const std::vector<std::string> expected{"P1", "P2", "P3", "B101"};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(rows.whole(i, 1), static_cast<long>(i) + 1);
        EXPECT_EQ(rows.text(i, 2), expected[i]);
    }
    EXPECT_EQ(hall.one("SELECT LocationIcon FROM kolv_mag_Location WHERE " + whereAddress("1, 3, 1, 1")),
              "LA_P_00.ico");
    expectBalance(hall.connection);
}

TEST_F(GoodsOut, NumbersOfDocumentsHaveNoGapsWhateverIsRefused) {
    for (int i = 1; i <= 3; ++i) {
        const std::string code = "N" + std::to_string(i);
        hall.receive(desk, code);
        ASSERT_EQ(desk.stageOut({.barCode = code}).value, 0);
        EXPECT_GT(desk.giveOut(1).value, 0);
        hall.connection.run(
            "ALTER TABLE Kolv_Mag_BarCode_Sur_History ADD CONSTRAINT CK_Test CHECK (Operation <> N'O' OR "
            "BarCode <> N'" +
            code + "')");
        expectGiveOutRefused(desk.giveOut(), hall.books(), "Błąd wydania: ");
        hall.connection.run("ALTER TABLE Kolv_Mag_BarCode_Sur_History DROP CONSTRAINT CK_Test");
        EXPECT_EQ(desk.giveOut().document, std::to_string(i));
    }
}

TEST_F(GoodsOut, OnlyWhatIsGivenOutGoesAndAProposalBecomesAGiveOut) {
    hall.receive(desk, "P2", 10);
    ASSERT_EQ(desk.stageOut({.quantity = 0, .propOrOut = "P", .proposed = 10}).value, 0);
    EXPECT_GT(desk.giveOut().value, 0) << "a proposal only";
    ASSERT_EQ(desk.stageOut({.barCode = "P2", .quantity = 1}).value, 0);
    ASSERT_EQ(desk.giveOut().value, 0);
    EXPECT_EQ(staged(), 1) << "the proposal stays";
    ASSERT_EQ(desk.stageOut({.quantity = 10, .propOrOut = "O", .proposed = 10}).value, 0);
    EXPECT_EQ(staged(), 1);
    ASSERT_EQ(desk.giveOut().document, "2");
    EXPECT_EQ(staged(), 0);
}

TEST_F(GoodsOut, WrongPackagesAndQuantitiesAreNotStaged) {
    expectStagingRefused({.barCode = "nie ma"}, "Opakowania „nie ma” nie ma w magazynie.");
    expectStagingRefused({.item = "B-1"}, "Opakowanie „P1” zawiera surowiec „A-1”, a nie „B-1”.");
    expectStagingRefused({.num = 1011}, "Opakowanie „P1” przyszło z zamówieniem 1010, a nie 1011.");
    expectStagingRefused({.quantity = 0}, "Podaj ilość większą od zera");
    expectStagingRefused({.quantity = -1}, "Podaj ilość większą od zera");
    expectStagingRefused({.quantity = 10.5}, "W opakowaniu „P1” jest 10: nie można wydać 10,50.");
    expectStagingRefused({.quantity = 1, .propOrOut = "P", .proposed = 11}, "nie można wydać 11.");
    expectStagingRefused({.propOrOut = "X"}, "Opakowanie jest proponowane (P) albo wydawane (O), a nie „X”.");
    const std::string code(45, 'x');
    hall.put({.barCode = code});
    expectStagingRefused({.barCode = code, .quantity = 1, .num = 0}, "za długi, żeby wydać część");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Quantity = NULL");
    expectStagingRefused({.quantity = 1}, "W opakowaniu „P1” jest 0");
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N'");
    expectStagingRefused({}, "Opakowanie „P1” zostało już wydane.");
}

TEST_F(GoodsOut, WrongOrdersMaterialsAndReceiversAreRefused) {
    const std::string before = hall.books();
    expectGiveOutRefused(desk.giveOut(), before, "Żadne opakowanie nie jest wybrane do wydania.");
    ASSERT_EQ(desk.stageOut({}).value, 0);
    expectGiveOutRefused(desk.giveOut(0, 99, 2020), before,
                         "Zlecenie produkcyjne o identyfikatorze 99 nie istnieje.");
    expectGiveOutRefused(desk.giveOut(0, 20, 2021), before, "ma numer 2020, a nie 2021");
    expectGiveOutRefused(desk.giveOut(0, 21, 2021), before, "Zlecenie produkcyjne 2021 jest zamknięte.");
    expectGiveOutRefused(desk.giveOut(7), before, "Zlecenie produkcyjne 2020 nie ma pozycji 7.");
    expectGiveOutRefused(desk.giveOut(1), before, "Pozycja 1 zlecenia produkcyjnego 2020 jest zamknięta.");
    expectGiveOutRefused(desk.giveOut(0, 20, 2020, 99), before, "Nie ma użytkownika 99");
    hall.connection.run("DELETE FROM kolv_mag_Order_Material WHERE ItemCode = N'A-1'");
    expectGiveOutRefused(desk.giveOut(), before,
                         "Pozycja 0 zlecenia produkcyjnego 2020 nie potrzebuje surowca „A-1”.");
    EXPECT_EQ(staged(), 1);
}

TEST_F(GoodsOut, OfTwoUsersWhoStageOnePackageTheSecondIsToldAndTheFirstToBookHasIt) {
    DocumentDesk other = hall.documents(2, "MAG-WOZEK-2");
    ASSERT_EQ(other.stageOut({.quantity = 6}).value, 0);
    const Answer answer = desk.stageOut({.quantity = 6});
    EXPECT_EQ(answer.value, -1);
    EXPECT_NE(answer.message.find("wybrał do wydania także użytkownik 2 na stanowisku MAG-WOZEK-2"),
              std::string::npos)
        << answer.message;
    ASSERT_EQ(other.giveOut().document, "1");
    expectGiveOutRefused(desk.giveOut(), hall.books(), "W opakowaniu „P1” jest 4: nie można wydać 6.");
    EXPECT_EQ(desk.stageOut({.quantity = 4}).value, 0);
    EXPECT_EQ(desk.giveOut().document, "2");
    expectBalance(hall.connection);
}

TEST_F(GoodsOut, AllPackagesOfADocumentAreGivenOutOrNone) {
    hall.receive(desk, "P2");
    ASSERT_EQ(desk.stageOut({.barCode = "P1"}).value, 0);
    ASSERT_EQ(desk.stageOut({.barCode = "P2"}).value, 0);
    hall.connection.run("UPDATE Kolv_Mag_BarCode_Sur SET Active = N'N' WHERE BarCode = N'P2'");
    expectGiveOutRefused(desk.giveOut(), hall.books(), "Opakowanie „P2” zostało już wydane.");
    EXPECT_EQ(staged(), 2);
}

TEST_F(GoodsOut, AGiveOutInsideATransactionThatSomebodyHasLeftOpenIsRefused) {
    ASSERT_EQ(desk.stageOut({}).value, 0);
    desk.run("BEGIN TRANSACTION");
    expectGiveOutRefused(desk.giveOut(), hall.books(), "niezakończoną operację");
    desk.run("ROLLBACK TRANSACTION");
    EXPECT_EQ(desk.giveOut().value, 0);
}

TEST_F(GoodsOut, APackageThatWasMovedMeanwhileIsGivenOutFromWhereItLies) {
    ASSERT_EQ(desk.stageOut({}).value, 0);
    ShiftDesk shift = hall.desk();
    shift.take("A-1", Place, "P1");
    ASSERT_EQ(shift.move("P1", "1, 1, 1, 1").value, 0);
    ASSERT_EQ(desk.giveOut().value, 0);
    EXPECT_EQ(hall.one("SELECT FromStand FROM Kolv_Mag_BarCode_Sur_History WHERE Operation = N'O'"), "1");
    EXPECT_EQ(hall.one("SELECT LocationIcon FROM kolv_mag_Location WHERE " + whereAddress("1, 1, 1, 1")),
              "LA_P_00.ico");
}

TEST_F(GoodsOut, AShiftOfAPackageThatWasGivenOutIsRefused) {
    ShiftDesk shift = hall.desk();
    shift.take("A-1", Place, "P1");
    ASSERT_EQ(desk.stageOut({}).value, 0);
    ASSERT_EQ(desk.giveOut().value, 0);
    EXPECT_NE(shift.move("P1", "1, 1, 1, 1").message.find("przesunął lub wydał w międzyczasie"),
              std::string::npos);
}

TEST_F(GoodsOut, WhatIsStagedIsTakenOutOneByOneOrAllAtOnceAndByItsKeyOnly) {
    hall.receive(desk, "P2");
    ASSERT_EQ(desk.stageOut({.barCode = "P1"}).value, 0);
    ASSERT_EQ(desk.stageOut({.barCode = "P2"}).value, 0);
    DocumentDesk other = hall.documents(1);
    EXPECT_EQ(other.stageOut({.param = 1, .deleteLine = "Y"}).value, 0);
    EXPECT_GT(other.giveOut().value, 0);
    EXPECT_EQ(staged(), 2);
    EXPECT_EQ(desk.stageOut({.barCode = "P1", .deleteLine = "Y"}).value, 0);
    EXPECT_EQ(desk.stageOut({.barCode = "P1", .deleteLine = "Y"}).value, 0);
    EXPECT_EQ(staged(), 1);
    EXPECT_EQ(desk.stageOut({.param = 1, .deleteLine = "Y"}).value, 0);
    EXPECT_EQ(staged(), 0);
    ASSERT_EQ(desk.stageOut({}).value, 0);
    EXPECT_EQ(desk.clear("O"), 0);
    EXPECT_EQ(staged(), 0);
}

TEST_F(GoodsOut, WhatIsStagedStaysWhenAnotherOperationIsCleared) {
    ASSERT_EQ(desk.stageOut({}).value, 0);
    EXPECT_EQ(desk.clear("S"), 0);
    EXPECT_EQ(desk.clear("I"), 0);
    EXPECT_EQ(staged(), 1);
}

TEST_F(GoodsOut, AMaterialOfWhichNothingIsThereIsNotGivenOut) {
    const auto confirm = [this](const std::string& item) {
        return call(desk.connection(), "Kolv_mag_Confirm_Item_GiveOut", literal(item) + ", N'P'");
    };
    EXPECT_EQ(confirm("A-1").value, 0);
    EXPECT_EQ(confirm("A-1").message, "");
    EXPECT_EQ(confirm("A-2").message, "Surowca „A-2” nie ma w magazynie.");
    EXPECT_EQ(confirm("nie ma").message, "Surowca „nie ma” nie ma w kartotece.");
    ASSERT_EQ(desk.stageOut({}).value, 0);
    ASSERT_EQ(desk.giveOut().value, 0);
    EXPECT_EQ(confirm("A-1").value, 1);
}

TEST_F(GoodsOut, OrdersAndMaterialsAreTickedAndUntickedByTheirKey) {
    const std::string orders =
        " select DocEntry,UserSignGiveOut from ##Temp_mag_PurchesOrders_GiveOut(nolock) where UserSign = 1 "
        "AND SPID = -@@SPID AND HostName = host_Name()";
    const std::string items =
        " select ItemCode,UserSignGiveOut from ##Temp_mag_ItemCode_GiveOut(nolock) where UserSign = 1 AND "
        "SPID = -@@SPID AND HostName = host_Name()";
    EXPECT_EQ(clearTicks("PurchesOrders"), 0) << "it makes the table that the client reads";
    EXPECT_EQ(clearTicks("ItemCode"), 0);
    EXPECT_EQ(desk.run(orders).size(), 0U);
    EXPECT_EQ(desk.run(items).size(), 0U);
    EXPECT_EQ(tick("PurchesOrders", "10").value, 0);
    EXPECT_EQ(tick("PurchesOrders", "11").value, 0);
    EXPECT_EQ(tick("PurchesOrders", "10", "A", "2").value, 0) << "once more";
    EXPECT_EQ(tick("ItemCode", "N'A-1'").value, 0);
    EXPECT_EQ(desk.run(orders + " order by DocEntry").size(), 2U);
    EXPECT_EQ(desk.run(orders + " order by DocEntry").text(0, 1), "2");
    EXPECT_EQ(desk.run(items).text(0), "A-1");
    EXPECT_EQ(tick("PurchesOrders", "10", "D").value, 0);
    EXPECT_EQ(desk.run(orders).text(0), "11");
    EXPECT_EQ(tick("PurchesOrders", "99").message, "Zamówienie o identyfikatorze 99 nie istnieje.");
    EXPECT_EQ(tick("ItemCode", "N'nie ma'").message, "Surowca „nie ma” nie ma w kartotece.");
    EXPECT_EQ(tick("ItemCode", "N'A-1'", "Y").message,
              "Surowiec można zaznaczyć (A) albo odznaczyć (D), a nie „Y”.");

    DocumentDesk other = hall.documents(1);
    EXPECT_EQ(statusOf(other.connection(), "Kolv_mag_Clear_PurchesOrders_GiveOut", "N'P', 1, 1"), 0);
    EXPECT_EQ(other.run(orders).size(), 0U);
    EXPECT_EQ(desk.run(orders).size(), 1U);
    EXPECT_EQ(clearTicks("PurchesOrders", 0, "X"), 0);
    EXPECT_EQ(desk.run(orders).size(), 1U) << "another application";
    EXPECT_EQ(clearTicks("PurchesOrders", 1, "X"), 0);
    EXPECT_EQ(desk.run(orders).size(), 0U) << "1 is all of the key";
    EXPECT_EQ(clearTicks("ItemCode"), 0);
    EXPECT_EQ(desk.run(items).size(), 0U);
}

}  // namespace regalon::test
