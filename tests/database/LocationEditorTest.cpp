// kolv_mag_Save_Sur_Location and kolv_mag_Add_Value_Param.

#include "database/EditorCalls.h"

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

constexpr const char* Here = " WHERE Rank = 1 AND Stand = 1 AND Shelf = 1 AND Location = 2";

class LocationEditor : public ::testing::Test {
protected:
    LocationEditor() {
        hall_.build(1, "3", 3000, 4000);
        hall_.connection.run(
            "INSERT INTO kolv_mag_Location_Group (GroupSur, GroupSurName, OnOrOff) VALUES (7, N'Blachy', "
            "N'Y'), (8, N'Wycofane', N'N')");
    }

    Answer assign(const std::string& code, const std::string& group,
                  const std::string& address = "1, 1, 1, 2") {
        return call(hall_.connection, "kolv_mag_Save_Sur_Location",
                    address + ", " + literal(code) + ", " + group + ", 3");
    }

    Answer param(const std::string& name, const std::string& value, const std::string& image,
                 const std::string& type, const std::string& address = "1, 1, 1, 2") {
        return call(
            hall_.connection, "kolv_mag_Add_Value_Param",
            address + ", " + literal(name) + ", " + literal(value) + ", " + image + ", " + literal(type));
    }

    Answer value(const std::string& name, const std::string& value) {
        return param(name, value, "N''", name.substr(name.rfind('_') + 1));
    }

    Answer picture(const std::string& image) { return param("Picture_pic", "", image, "pic"); }

    void refused(const Answer& answer, const std::string& part) {
        EXPECT_GT(answer.value, 0);
        EXPECT_NE(answer.message.find(part), std::string::npos) << answer.message;
        EXPECT_EQ(editorTables(hall_.connection), before_);
    }

    std::string read(const std::string& column) {
        return hall_.one("SELECT " + column + " FROM kolv_mag_Location_Item" + Here);
    }

    /// Later refusals must leave everything as it is now.
    void mark() { before_ = editorTables(hall_.connection); }

    void SetUp() override { mark(); }

    EmptyHall hall_;
    std::string before_;
};

}  // namespace

TEST_F(LocationEditor, AssigningMakesTheRowOfTheLocation) {
    EXPECT_EQ(assign("bl-1", "7").value, 0);
    EXPECT_EQ(read("ItemCode"), "BL-1") << "as the master file spells it";
    EXPECT_EQ(read("ItemName"), "Blacha");
    EXPECT_EQ(read("GroupSur"), "7");
    EXPECT_EQ(read("UserSign"), "3");
    EXPECT_EQ(read("StatLocation_cmb"), "<NULL>");
    EXPECT_EQ(assign("RU-1", "0").value, 0);
    EXPECT_EQ(read("ItemCode") + "|" + read("ItemName") + "|" + read("GroupSur"), "RU-1||0");
    EXPECT_EQ(hall_.one("SELECT COUNT(*) FROM kolv_mag_Location_Item"), "1");
}

TEST_F(LocationEditor, AssigningKeepsTheParameters) {
    ASSERT_EQ(value("Height_int", "700").value, 0);
    ASSERT_EQ(assign("BL-1", "0").value, 0);
    EXPECT_EQ(read("Height_int"), "700");
}

TEST_F(LocationEditor, AGroupAloneIsAssignedWithoutMaterial) {
    for (const char* none : {"0", ""}) {
        EXPECT_EQ(assign("BL-1", "0").value, 0);
        EXPECT_EQ(assign(none, "7").value, 0);
        EXPECT_EQ(read("ItemCode") + "|" + read("ItemName") + "|" + read("GroupSur"), "||7");
    }
}

TEST_F(LocationEditor, UnknownMaterialsGroupsAndLocationsAreRefused) {
    refused(assign("NIE-MA", "0"), "Nie ma surowca o kodzie „NIE-MA”");
    refused(assign("BL-1' OR 1=1 --", "0"), "Nie ma surowca");
    refused(assign("BL-1", "9"), "grupa");
    refused(assign("BL-1", "8"), "grupa");
    refused(assign("BL-1", "-1"), "grupa");
    refused(assign("BL-1", "0", "1, 1, 1, 4"), "lokalizacja nie istnieje");
    refused(assign("BL-1", "0", "1, 1, NULL, 1"), "lokalizacja nie istnieje");
}

TEST_F(LocationEditor, AParameterMakesTheRowOfTheLocation) {
    EXPECT_EQ(value("Width_int", "800").value, 0);
    EXPECT_EQ(read("Width_int"), "800");
    EXPECT_EQ(read("ItemCode") + "|" + read("GroupSur"), "|0");
}

TEST_F(LocationEditor, NumbersAreWholeAndNotNegative) {
    EXPECT_EQ(value("Height_int", " 999999 ").value, 0);
    EXPECT_EQ(read("Height_int"), "999999");
    EXPECT_EQ(value("Height_int", "0").value, 0);
    EXPECT_EQ(read("Height_int"), "0");
    mark();
    for (const char* bad : {"12,5", "12.5", "-1", "+1", "1e3", "abc", "1000000", "1 2", "²", "0x10"})
        refused(value("Height_int", bad), "liczbą całkowitą");
    EXPECT_EQ(value("Height_int", "").value, 0);
    EXPECT_EQ(read("Height_int"), "<NULL>");
}

TEST_F(LocationEditor, ASizeChangesTheFillOfTheLocation) {
    hall_.put("P1", "1, 1, 1, 2");  // 324 litres
    ASSERT_EQ(value("Height_int", "1200").value, 0);
    EXPECT_EQ(hall_.one(std::string("SELECT LocationIcon FROM kolv_mag_Location") + Here), "LA_P_27.ico");
    ASSERT_EQ(value("Height_int", "600").value, 0);
    EXPECT_EQ(hall_.one(std::string("SELECT LocationIcon FROM kolv_mag_Location") + Here), "LA_P_55.ico");
}

TEST_F(LocationEditor, TextsHoldTwoHundredAndFiftyCharacters) {
    std::string text;
    for (int i = 0; i < 250; ++i)
        text += "ż";
    EXPECT_EQ(value("Description_char", text).value, 0);
    EXPECT_EQ(read("Description_char"), text);
    mark();
    refused(value("Description_char", text + "a"), "250 znaków");
    refused(value("Description_char", text + " "), "250 znaków");
    EXPECT_EQ(value("Description_char", "'; DROP TABLE kolv_mag_Location_Item --").value, 0);
    EXPECT_EQ(read("Description_char"), "'; DROP TABLE kolv_mag_Location_Item --");
    EXPECT_EQ(value("Description_char", "").value, 0);
    EXPECT_EQ(read("Description_char"), "");
}

TEST_F(LocationEditor, AStatusIsZeroOrOne) {
    EXPECT_EQ(value("StatLocation_cmb", "1").value, 0);
    EXPECT_EQ(read("StatLocation_cmb"), "1");
    mark();
    for (const char* bad : {"2", "", "Mono Indeksowa", "01"})
        refused(value("StatLocation_cmb", bad), "Wybierz wartość");
}

TEST_F(LocationEditor, APictureIsBase64AndComesInItsOwnParameter) {
    EXPECT_EQ(param("Picture_pic", "nie czytane", "N'Qk32/+A='", "pic").value, 0);
    EXPECT_EQ(read("Picture_pic"), "Qk32/+A=");
    mark();
    for (const char* bad :
         {"N'zdjecie.bmp'", "N'abc'", "N'ab=c'", "N'a==='", "N'ąbcd'", "N'ab c'", "N'='", "N'===='"})
        refused(picture(bad), "nie jest obrazem");
    for (const char* word : {"N'1200'", "N'qk32'", "N'Qk52'", "N'/9J/AAAA'", "N'iVBORw0KGgo='"})
        refused(picture(word), "nie jest obrazem");
    for (const char* head : {"/9j/4AAQ", "Qk02", "AAABAAEA"}) {
        EXPECT_EQ(picture("N'" + std::string(head) + "'").value, 0);
        EXPECT_EQ(read("Picture_pic"), head);
    }
    EXPECT_EQ(picture("N''").value, 0);
    EXPECT_EQ(read("Picture_pic"), "") << "an empty text removes the picture";
    EXPECT_EQ(value("Width_int", "5").value, 0);
    EXPECT_EQ(param("Width_int", "6", "N'Qk32'", "int").value, 0);
    EXPECT_EQ(read("Width_int") + "|" + read("Picture_pic"), "6|");
}

TEST_F(LocationEditor, APictureIsSmallerThanThreeMillionBytes) {
    const std::string thousand = "REPLICATE(CAST(N'Qk32' AS nvarchar(max)), 999999)";
    const auto give = [this, &thousand](const std::string& last) {
        const Rows rows = hall_.connection.run(
            "DECLARE @Image nvarchar(max); DECLARE @Value int; DECLARE @Message nvarchar(250); SET @Image "
            "= " +
            thousand + " + N'" + last +
            "'; EXEC @Value = kolv_mag_Add_Value_Param 1, 1, 1, 2, N'Picture_pic', N'', @Image, N'pic', "
            "@Message OUTPUT; SELECT @Value, @Message;");
        return Answer{rows.whole(0, 0), rows.text(0, 1)};
    };
    refused(give("Qk32"), "2999999");
    EXPECT_EQ(give("Qk0=").value, 0);
    EXPECT_EQ(read("LEN(Picture_pic)"), "4000000");
}

TEST_F(LocationEditor, OnlyColumnsWithAKnownEndingAreParameters) {
    for (const char* bad : {"Rank", "ItemCode", "GroupSur", "UpdateDate", "NieMa_int", "", "Height", "_int",
                            "Height_int = 1, Width_int", "Height_int]", "dbo.Height_int"})
        refused(param(bad, "1", "N''", "int"), "Nie ma parametru");
    refused(param("Height_int", "1", "N''", "char"), "Rodzaj parametru");
    refused(param("Height_int", "1", "N''", ""), "Rodzaj parametru");
    refused(param("Height_int", "1", "N''", "int", "1, 1, 2, 1"), "lokalizacja nie istnieje");
    refused(call(hall_.connection, "kolv_mag_Add_Value_Param", "1, 1, 1, 2, NULL, NULL, NULL, NULL"),
            "Nie ma parametru");
}

TEST_F(LocationEditor, AnotherCaseOfAColumnsNameIsTheSameColumn) {
    EXPECT_EQ(param("HEIGHT_INT", "5", "N''", "INT").value, 0);
    EXPECT_EQ(read("Height_int"), "5");
}

TEST_F(LocationEditor, ANewColumnIsAParameterAtOnce) {
    hall_.connection.run("ALTER TABLE kolv_mag_Location_Item ADD [Strefa ]]x_char] nvarchar(5) NULL");
    EXPECT_EQ(value("Strefa ]x_char", "A1").value, 0);
    EXPECT_EQ(read("[Strefa ]]x_char]"), "A1");
    mark();
    refused(value("Strefa ]x_char", "za długi"), "Błąd zapisu parametru");
}

}  // namespace regalon::test
