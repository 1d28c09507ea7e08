// Return from manufacturing: what of a give-out line may come back, and its way into the buffer and onto a
// location.

#include "database/DocumentDesk.h"
#include "database/EditorCalls.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

const std::string Label = labelOf(1, 2, 2, 2);

class Return : public ::testing::Test {
protected:
    Return() {
        hall.receive(desk, "P1", 10, Label);
        giveOut("P1", 10);
    }

    void giveOut(const std::string& code, double quantity) {
        const Answer staged = desk.stageOut({.barCode = code, .quantity = quantity});
        EXPECT_EQ(staged.value, 0) << staged.message;
        const auto given = desk.giveOut();
        EXPECT_EQ(given.value, 0) << given.message;
    }

    void expectRefused(const Incoming& package, const std::string& reason) {
        const std::string before = hall.books();
        const Answer answer = desk.stageReturn(package);
        EXPECT_GT(answer.value, 0) << reason;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(hall.books(), before);
        EXPECT_GT(desk.book("R").value, 0) << "nothing is staged";
    }

    void expectNotConfirmed(const ComingBack& back, const std::string& reason, double most) {
        const auto answer = desk.confirmBack(back);
        EXPECT_GT(answer.value, 0) << reason;
        EXPECT_NE(answer.message.find(reason), std::string::npos) << answer.message;
        EXPECT_EQ(std::stod(answer.quantity), most) << reason;
    }

    DocumentHall hall;
    DocumentDesk desk = hall.documents();
};

}  // namespace

TEST_F(Return, ASmallerQuantityComesBackIntoTheBufferAndOntoALocation) {
    const auto confirmed = desk.confirmBack({});
    EXPECT_EQ(confirmed.value, 0);
    EXPECT_EQ(confirmed.message, "");
    EXPECT_EQ(std::stod(confirmed.quantity), 4);
    ASSERT_EQ(desk.stageReturn({.quantity = 4}).value, 0);
    ASSERT_EQ(desk.confirm("R").value, 0);
    EXPECT_EQ(desk.run("exec Kolv_mag_Watch_Prop_Location 1,N'P',N'R',1,NULL").size(), 28U);
    const Answer booked = desk.book("R");
    ASSERT_EQ(booked.value, 0) << booked.message;
    const Rows row = hall.connection.run(
        "SELECT BarCode, Quantity, PackWeight, PackHeight, Rank, Active, LinePercent FROM "
        "Kolv_Mag_BarCode_Sur");
    ASSERT_EQ(row.size(), 1U);
    const std::vector<std::string> expected{"P1", "4.000000", "40.000", "500", "<NULL>", "Y", "0.00"};
    for (std::size_t c = 0; c < expected.size(); ++c)
        EXPECT_EQ(row.text(0, c), expected[c]) << row.columns[c].name;
    EXPECT_EQ(hall.one("SELECT Quantity FROM Kolv_Mag_BarCode_Sur_History WHERE Operation = N'R'"),
              "4.000000");
    EXPECT_EQ(hall.one("SELECT QuantityBack FROM Kolv_Mag_BarCode_Sur_Production"), "4.000000");
    expectBalance(hall.connection);
    ASSERT_EQ(desk.putAway("P1", Label, 10, 0, "R").value, 0);
    EXPECT_EQ(hall.place("P1"), "1, 2, 2, 2");
    expectBalance(hall.connection);
}

TEST_F(Return, TheStagedPackageIsSeenAsOneOfGoodsIn) {
    ASSERT_EQ(desk.stageReturn({.quantity = 4}).value, 0);
    EXPECT_EQ(desk.run("select top 1 1 from Kolv_Mag_BarCode_Input_Sur_tym(nolock) where HostName = "
                       "host_name() AND SPID = -@@SPID AND USerSign = 1")
                  .size(),
              1U);
    EXPECT_GT(desk.book("I").value, 0) << "but it is no goods-in";
    EXPECT_EQ(desk.stageReturn({}, "Y").value, 0);
    EXPECT_GT(desk.book("R").value, 0);
}

TEST_F(Return, MoreThanWasGivenOutIsRefusedAndTheMostIsTold) {
    expectNotConfirmed({.quantity = 10.5}, "Opakowanie „P1” wydano z ilością 10: nie może wrócić 10,50.", 10);
    expectNotConfirmed({.quantity = 0}, "Podaj ilość większą od zera", 10);
    expectNotConfirmed({.quantity = -2}, "Podaj ilość większą od zera", 10);
    expectRefused({.quantity = 10.5}, "nie może wrócić 10,50");
    expectRefused({.quantity = 0}, "Podaj ilość większą od zera");
    EXPECT_EQ(desk.confirmBack({.quantity = 10}).value, 0) << "all of it may";
}

TEST_F(Return, WrongDocumentsLinesPackagesAndMaterialsAreRefused) {
    expectNotConfirmed({.document = 9}, "Wydanie 9 nie ma pozycji 1.", 0);
    expectNotConfirmed({.line = 2}, "Wydanie 1 nie ma pozycji 2.", 0);
    expectNotConfirmed({.barCode = "P2"}, "Na tej pozycji wydano opakowanie „P1”, a nie „P2”.", 0);
    expectNotConfirmed({.item = "B-1"}, "Na tej pozycji wydano surowiec „A-1”, a nie „B-1”.", 0);
    expectNotConfirmed({.operation = "I"}, "Zwrot z produkcji ma operację R, a nie „I”.", 10);
    expectRefused({.barCode = "nie ma"}, "nie ma w kartotece opakowań");
    expectRefused({.item = "B-1", .quantity = 4}, "nie zawiera surowca „B-1”");
    expectRefused({.entry = 11, .quantity = 4}, "nie przyszło z podanej pozycji zamówienia");
    expectRefused({.num = 1011, .quantity = 4}, "nie przyszło z podanej pozycji zamówienia");
    expectRefused({.line = 1, .quantity = 4}, "nie przyszło z podanej pozycji zamówienia");
    expectRefused({.quantity = 4, .number = 8}, "nie przyszło z podanej pozycji zamówienia");
    expectRefused({.quantity = 4, .operation = "S"}, "Zwrot z produkcji ma operację R, a nie „S”.");
    hall.connection.run("INSERT INTO Kolv_Mag_BarCode_Sur (BarCode, Active) VALUES (N'OLD', N'N')");
    expectRefused({.barCode = "OLD"}, "nie ma dokumentu wydania");
}

TEST_F(Return, APackageComesBackOnceFromEachGiveOut) {
    ASSERT_EQ(desk.stageReturn({.quantity = 4}).value, 0);
    ASSERT_EQ(desk.book("R").value, 0);
    expectNotConfirmed({.quantity = 1}, "Opakowanie „P1” wróciło już z tego wydania: 4.", 0);
    expectRefused({.quantity = 1}, "nie zostało wydane albo już wróciło");
    giveOut("P1", 4);
    expectNotConfirmed({.quantity = 1}, "wróciło już z tego wydania", 0);
    expectNotConfirmed({.document = 2, .quantity = 5}, "wydano z ilością 4", 4);
    ASSERT_EQ(desk.stageReturn({.quantity = 3}).value, 0);
    ASSERT_EQ(desk.book("R").value, 0);
    expectBalance(hall.connection);
}

TEST_F(Return, APartComesBackUnderItsOwnCode) {
    hall.receive(desk, "P2", 10, Label);
    giveOut("P2", 6);
    expectNotConfirmed({.document = 2, .barCode = "P2"}, "wydano opakowanie „P201”, a nie „P2”", 0);
    expectRefused({.barCode = "P2", .quantity = 2}, "jest w magazynie");
    ASSERT_EQ(desk.confirmBack({.document = 2, .barCode = "P201", .quantity = 2}).value, 0);
    ASSERT_EQ(desk.stageReturn({.barCode = "P201", .quantity = 2}).value, 0);
    ASSERT_EQ(desk.book("R").value, 0);
    ASSERT_EQ(desk.putAway("P201", Label, 10, 0, "R").value, 0);
    EXPECT_EQ(hall.one("SELECT SUM(Quantity) FROM Kolv_Mag_BarCode_Sur WHERE BarCode LIKE N'P2%'"),
              "6.000000");
    EXPECT_EQ(hall.one("SELECT SUM(PackWeight) FROM Kolv_Mag_BarCode_Sur WHERE BarCode LIKE N'P2%'"),
              "60.000");
    giveOut("P201", 1);
    EXPECT_EQ(hall.one("SELECT GiveOutBarCode FROM Kolv_Mag_BarCode_Sur_Production WHERE GiveOutDocNum = 3"),
              "P20101");
    expectBalance(hall.connection);
}

TEST_F(Return, OfTwoUsersWhoStageOneReturnTheFirstToBookHasIt) {
    DocumentDesk other = hall.documents(2, "MAG-WOZEK-2");
    ASSERT_EQ(other.stageReturn({.quantity = 5}).value, 0);
    const Answer told = desk.stageReturn({.quantity = 4});
    EXPECT_EQ(told.value, -1);
    EXPECT_NE(told.message.find("użytkownik 2 na stanowisku MAG-WOZEK-2"), std::string::npos);
    ASSERT_EQ(other.book("R").value, 0);
    const std::string before = hall.books();
    const Answer answer = desk.book("R");
    EXPECT_GT(answer.value, 0);
    EXPECT_NE(answer.message.find("już wróciło"), std::string::npos) << answer.message;
    EXPECT_EQ(hall.books(), before);
    const Answer letGo = desk.confirm("R");
    EXPECT_EQ(letGo.message, "Opakowanie „P1” przyjął w międzyczasie inny użytkownik. Wycofano z wyboru.");
}

TEST_F(Return, AFailureInTheMiddleUndoesTheWholeReturn) {
    hall.receive(desk, "P2");
    giveOut("P2", 10);
    ASSERT_EQ(desk.stageReturn({.barCode = "P1", .quantity = 4}).value, 0);
    ASSERT_EQ(desk.stageReturn({.barCode = "P2", .quantity = 4}).value, 0);
    hall.connection.run(
        "ALTER TABLE Kolv_Mag_BarCode_Sur_History ADD CONSTRAINT CK_Test CHECK (Operation <> N'R' OR BarCode "
        "<> N'P2')");
    const std::string before = hall.books();
    EXPECT_NE(desk.book("R").message.find("Błąd księgowania w buforze: "), std::string::npos);
    EXPECT_EQ(hall.books(), before);
    hall.connection.run("ALTER TABLE Kolv_Mag_BarCode_Sur_History DROP CONSTRAINT CK_Test");
    EXPECT_EQ(desk.book("R").value, 0);
    EXPECT_EQ(hall.count("Kolv_Mag_BarCode_Sur WHERE Active = N'Y' AND Rank IS NULL"), 2);
    expectBalance(hall.connection);
}

}  // namespace regalon::test
