// kolv_mag_Save_Group_Sur, kolv_mag_Add_Sur_On_Group, kolv_mag_ConfirmGroupSur and kolv_mag_DeleteGroupSur.

#include "database/EditorCalls.h"

#include <gtest/gtest.h>

#include <thread>

namespace regalon::test {
namespace {

class MaterialGroup : public ::testing::Test {
protected:
    Answer save(const std::string& code, const std::string& name) {
        return call(hall_.connection, "kolv_mag_Save_Group_Sur", code + ", " + literal(name) + ", 1");
    }

    Answer fill(const std::string& code, const std::string& list) {
        return call(hall_.connection, "kolv_mag_Add_Sur_On_Group", code + ", " + list + ", 1");
    }

    long confirm(int code) {
        return statusOf(hall_.connection, "kolv_mag_ConfirmGroupSur", std::to_string(code));
    }
    long remove(int code) {
        return statusOf(hall_.connection, "kolv_mag_DeleteGroupSur", std::to_string(code));
    }

    std::string members(int code) {
        return hall_.one(
            "SELECT ISNULL(STRING_AGG(ItemCode, N',') WITHIN GROUP (ORDER BY ItemCode), N'') FROM "
            "kolv_mag_Group_Item WHERE GroupSur = " +
            std::to_string(code));
    }

    void refused(const Answer& answer, const std::string& part) {
        EXPECT_GT(answer.value, 0);
        EXPECT_NE(answer.message.find(part), std::string::npos) << answer.message;
        EXPECT_EQ(editorTables(hall_.connection), before_);
    }

    /// Later refusals must leave everything as it is now.
    void mark() { before_ = editorTables(hall_.connection); }

    void SetUp() override {
        ASSERT_EQ(save("-1", "Blachy").value, 0);
        ASSERT_EQ(save("-1", "Pręty").value, 0);
        mark();
    }

    EmptyHall hall_;
    std::string before_;
};

}  // namespace

TEST_F(MaterialGroup, ANewGroupGetsTheNextNumberAndNoMembers) {
    const Rows rows = hall_.connection.run("SELECT * FROM kolv_mag_Location_Group ORDER BY GroupSur");
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows.text(0, 0) + rows.text(0, 1) + rows.text(0, 2), "1BlachyY");
    EXPECT_EQ(rows.text(1, 0) + rows.text(1, 1) + rows.text(1, 2), "2PrętyY");
    EXPECT_EQ(members(1), "");
}

TEST_F(MaterialGroup, ANameIsChangedInPlace) {
    ASSERT_EQ(fill("1", "N'BL-1'").value, 0);
    EXPECT_EQ(save("1", "Blachy i taśmy").value, 0);
    EXPECT_EQ(save("1", "blachy I taśmy").value, 0) << "a group may keep its own name";
    EXPECT_EQ(hall_.one("SELECT GroupSurName FROM kolv_mag_Location_Group WHERE GroupSur = 1"),
              "blachy I taśmy");
    EXPECT_EQ(members(1), "BL-1");
}

TEST_F(MaterialGroup, NamesThatTellNothingAreRefused) {
    refused(save("-1", ""), "Podaj nazwę");
    refused(save("-1", "   "), "Podaj nazwę");
    refused(save("1", ""), "Podaj nazwę");
    refused(save("-1", std::string(101, 'g')), "100 znaków");
    refused(save("-1", "blachy"), "już istnieje");
    refused(save("2", "Blachy"), "już istnieje");
    refused(save("-1", "nowa"), "zastrzeżona");
    refused(save("-1", "Wybierz"), "zastrzeżona");
    refused(save("0", "Rury"), "Wskaż grupę");
    refused(save("-2", "Rury"), "Wskaż grupę");
    refused(save("NULL", "Rury"), "Wskaż grupę");
    refused(save("9", "Rury"), "nie istnieje");
}

TEST_F(MaterialGroup, ANameIsKeptWithItsBlanks) {
    EXPECT_EQ(save("-1", " Rury 'x' ").value, 0);
    EXPECT_EQ(hall_.one("SELECT N'[' + GroupSurName + N']' FROM kolv_mag_Location_Group WHERE GroupSur = 3"),
              "[ Rury 'x' ]");
}

TEST_F(MaterialGroup, TheListReplacesTheMembers) {
    EXPECT_EQ(fill("1", "N'BL-1,PR-1'").value, 0);
    EXPECT_EQ(fill("2", "N'PR-1'").value, 0);
    EXPECT_EQ(members(1), "BL-1,PR-1");
    EXPECT_EQ(fill("1", "N'ru-1,PR-1,RU-1'").value, 0);
    EXPECT_EQ(members(1), "PR-1,RU-1");
    EXPECT_EQ(members(2), "PR-1");
    EXPECT_EQ(fill("1", "N''").value, 0);
    EXPECT_EQ(members(1), "");
}

TEST_F(MaterialGroup, OneUnknownMaterialRefusesTheWholeList) {
    ASSERT_EQ(fill("1", "N'BL-1'").value, 0);
    mark();
    refused(fill("1", "N'PR-1,NIE-MA'"), "Nie ma surowca o kodzie „NIE-MA”. Grupa pozostała bez zmian.");
    refused(fill("1", "N'PR-1,'"), "Nie ma surowca o kodzie „”");
    refused(fill("1", "N',PR-1'"), "Nie ma surowca");
    refused(fill("1", "N'PR-1,,BL-1'"), "Nie ma surowca");
    refused(fill("1", "N'PR-1'' --'"), "Nie ma surowca");
    refused(fill("9", "N'PR-1'"), "grupa surowców nie istnieje");
    refused(fill("NULL", "N'PR-1'"), "grupa surowców nie istnieje");
}

TEST_F(MaterialGroup, ACodeWithACommaCannotBeAMember) {
    hall_.connection.run("INSERT INTO OITM (ItemCode) VALUES (N'BL-1,PR-1'), (N'X,5')");
    refused(fill("1", "N'RU-1,X,5'"), "„X,5” zawiera przecinek");
    refused(fill("1", "N'BL-1,PR-1'"), "„BL-1,PR-1” zawiera przecinek");
    EXPECT_EQ(fill("1", "N'PR-1,BL-1'").value, 0);
    EXPECT_EQ(members(1), "BL-1,PR-1");
}

TEST_F(MaterialGroup, AListMayBeLongerThanAnyOtherText) {
    hall_.connection.run(
        "INSERT INTO OITM (ItemCode) SELECT N'KOD-MATERIALU-' + CAST(Number AS nvarchar(5)) FROM "
        "kolv_mag_Number WHERE Number <= 1500");
    const Rows rows = hall_.connection.run(
        "DECLARE @List nvarchar(max); DECLARE @Value int; DECLARE @Message nvarchar(250); SELECT @List = "
        "STRING_AGG(CAST(ItemCode AS nvarchar(max)), N',') FROM OITM; EXEC @Value = "
        "kolv_mag_Add_Sur_On_Group 1, @List, 1, @Message OUTPUT; SELECT @Value, LEN(@List);");
    EXPECT_EQ(rows.text(0, 0), "0");
    EXPECT_GT(rows.whole(0, 1), 20000);
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Group_Item WHERE GroupSur = 1"), "1503");
}

TEST_F(MaterialGroup, AGroupInUseIsNotDeleted) {
    hall_.build(1, "1", 3000, 4000);
    ASSERT_EQ(fill("1", "N'BL-1'").value, 0);
    ASSERT_EQ(call(hall_.connection, "kolv_mag_Save_Sur_Location", "1, 1, 1, 1, N'BL-1', 1, 1").value, 0);
    mark();
    EXPECT_EQ(confirm(1), 1);
    EXPECT_EQ(remove(1), 1);
    EXPECT_EQ(editorTables(hall_.connection), before_);
    ASSERT_EQ(removeStand(hall_.connection, 1, 1).value, 0);
    EXPECT_EQ(confirm(1), 0);
    EXPECT_EQ(remove(1), 0);
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Location_Group"), "1");
    EXPECT_EQ(members(1), "");
}

TEST_F(MaterialGroup, AGroupThatIsGoneMayGoAgain) {
    EXPECT_EQ(remove(2), 0);
    EXPECT_EQ(confirm(2), 0);
    EXPECT_EQ(remove(2), 0);
    EXPECT_EQ(confirm(0), 1) << "0 is no group";
    EXPECT_EQ(confirm(-1), 1);
    EXPECT_EQ(remove(0), 1);
}

TEST_F(MaterialGroup, OfListsSavedAtOnceOneIsWhole) {
    std::vector<std::thread> managers;
    std::array<int, 3> saved{};
    constexpr std::array<const char*, 3> Lists{"N'BL-1,PR-1'", "N'RU-1'", "N''"};
    for (std::size_t m = 0; m < Lists.size(); ++m)
        managers.emplace_back([this, m, &saved, &Lists] {
            OdbcConnection connection = hall_.warehouse.connect();
            for (int i = 0; i < 20; ++i)
                saved.at(m) +=
                    call(connection, "kolv_mag_Add_Sur_On_Group", "1, " + std::string(Lists.at(m)) + ", 1")
                                .value == 0
                        ? 1
                        : 0;
        });
    std::size_t torn = 0;
    for (int i = 0; i < 100; ++i) {
        const std::string now = members(1);
        torn += now == "BL-1,PR-1" || now == "RU-1" || now.empty() ? 0U : 1U;
    }
    for (std::thread& manager : managers)
        manager.join();
    EXPECT_EQ(torn, 0U);
    for (const int count : saved)
        EXPECT_EQ(count, 20);
}

TEST_F(MaterialGroup, GroupsMadeAtOnceGetNumbersOfTheirOwn) {
    std::vector<std::thread> managers;
    std::array<long, 4> values{};
    for (std::size_t m = 0; m < values.size(); ++m)
        managers.emplace_back([this, m, &values] {
            OdbcConnection connection = hall_.warehouse.connect();
            values.at(m) = call(connection, "kolv_mag_Save_Group_Sur",
                                "-1, " + literal("Grupa " + std::to_string(m)) + ", 1")
                               .value;
        });
    for (std::thread& manager : managers)
        manager.join();
    for (const long value : values)
        EXPECT_EQ(value, 0);
    EXPECT_EQ(hall_.one("SELECT MAX(GroupSur) FROM kolv_mag_Location_Group"), "6");
}

}  // namespace regalon::test
