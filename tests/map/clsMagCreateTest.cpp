#include "map/MapWarehouse.h"
#include "map/clsMagCreate.h"
#include "platform/MsgBox.h"

#include <gtest/gtest.h>

#include <functional>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;

QStringList words(const char* text) {
    return QString::fromUtf8(text).split(QLatin1Char('|'));
}

/// Row A with one stand of two shelves ("12"), two materials and a group.
class ClsMagCreate : public testing::Test {
protected:
    ClsMagCreate() : warehouse(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        ASSERT_TRUE(
            warehouse.addStand(1, 1, 2, QStringLiteral("12"), 3000, 4000, QStringLiteral("R1_S_01.ico")));
        ASSERT_TRUE(warehouse.run(
            {QStringLiteral("insert into kolv_mag_Rank (Rank,RankName,RankIconFamily) values "
                            "(1,N'Rząd A',N'R1_S_*.ico'),(2,N'Rząd B',NULL)"),
             QStringLiteral("update kolv_mag_Stand set StandVisable = N'Y', StandDescription = N'Żółty'"),
             QStringLiteral("insert into OITM (ItemCode,ItemName) values (N'M-1',N'Rura'),(N'M-2',N'Pręt')"),
             QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                            "(7,N'Rury',N'Y')"),
             QStringLiteral(
                 "insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,GroupSur,"
                 "Height_int) values (1,1,1,1,N'M-1',N'Rura',7,1200),(1,1,2,1,NULL,NULL,NULL,NULL)")}))
            << qPrintable(warehouse.why());
        data = std::make_unique<clsMagCreate>(warehouse.context);
    }

    void TearDown() override {
        EXPECT_EQ(messages.count(), expectedMessages) << qPrintable(messages.last().Text);
    }

    /// The one statement that was sent since the last look.
    QString sent() {
        const QStringList batches = warehouse.batches();
        warehouse.server.clearTrace();
        return batches.size() == 1 ? batches.first() : batches.join(QStringLiteral(" ;; "));
    }

    /// The inputs of the one call of a procedure since the last look.
    QStringList given(const char* procedure, qsizetype inputs) {
        const auto calls = warehouse.calls(QString::fromLatin1(procedure));
        warehouse.server.clearTrace();
        return calls.size() == 1 ? calls.first().mid(0, inputs) : QStringList();
    }

    StandDefinition stand() const {
        return {.Rank = 1,
                .Stand = 1,
                .Shelf = 2,
                .StandIcon = QStringLiteral("R1_S_02.ico"),
                .Top = 4100,
                .Left = 3100,
                .Shelf_1 = 1,
                .Shelf_2 = 3,
                .StandVisable = QStringLiteral("N"),
                .StandEnable = QStringLiteral("Y"),
                .StandFrameArround = QStringLiteral("N"),
                .StandDescription = QStringLiteral("Opis, „nowy”")};
    }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    int expectedMessages = 0;
    std::unique_ptr<clsMagCreate> data;
    QString message = QStringLiteral("before");
};

TEST_F(ClsMagCreate, ReadsTheParametersOfAStand) {
    StandParameters found;
    EXPECT_TRUE(data->GetStandParame(1, 1, found));
    EXPECT_EQ(sent(), QStringLiteral("select StandIcon,StandLeft,StandTop,StandVisable,StandEnable,"
                                     "StandFrameArround,StandDescription from kolv_mag_Stand Where Rank = 1 "
                                     "And Stand = 1"));
    EXPECT_EQ(found.StandIcon, QStringLiteral("R1_S_01.ico"));
    EXPECT_EQ(found.StandLeft, 3000);
    EXPECT_EQ(found.StandTop, 4000);
    EXPECT_EQ(found.StandVisable, QStringLiteral("Y"));
    EXPECT_EQ(found.StandEnable, QStringLiteral("N")) << "NULL reads as N";
    EXPECT_EQ(found.StandFrameArround, QStringLiteral("N"));
    EXPECT_EQ(found.StandDescription, QStringLiteral("Żółty"));
}

TEST_F(ClsMagCreate, NullsOfAStandReadAsEmptyZeroAndN) {
    ASSERT_TRUE(warehouse.run({QStringLiteral("insert into kolv_mag_Stand (Rank,Stand) values (1,2)")}));
    StandParameters found{.StandIcon = QStringLiteral("before"), .StandLeft = 9, .StandTop = 9};
    EXPECT_TRUE(data->GetStandParame(1, 2, found));
    EXPECT_EQ(found.StandIcon + found.StandDescription, QString());
    EXPECT_EQ(found.StandLeft, 0);
    EXPECT_EQ(found.StandTop, 0);
    EXPECT_EQ(found.StandVisable, QStringLiteral("N"));
    EXPECT_EQ(data->GetShelfCountOnStand(1, 2), 0);
}

TEST_F(ClsMagCreate, AStandThatIsNotThereLeavesTheOutputsAlone) {
    StandParameters found{.StandIcon = QStringLiteral("before"), .StandLeft = 9};
    EXPECT_FALSE(data->GetStandParame(1, -1, found));
    EXPECT_EQ(sent().right(14), QStringLiteral("And Stand = -1"));
    EXPECT_EQ(found.StandIcon, QStringLiteral("before"));
    EXPECT_EQ(found.StandLeft, 9);
}

TEST_F(ClsMagCreate, CountsShelvesLocationsAndStands) {
    EXPECT_EQ(data->GetShelfCountOnStand(1, 1), 2);
    EXPECT_EQ(sent(),
              QStringLiteral("select ShelfCount from kolv_mag_Stand(nolock) where Rank = 1 AND Stand = 1"));
    EXPECT_EQ(data->GetShelfCountOnStand(1, 2), 0);
    sent();
    EXPECT_EQ(data->GetLocalizationCount(1, 1, 2), 2);
    EXPECT_EQ(sent(), QStringLiteral("select count(*) as Location from kolv_mag_Location where Rank = 1 AND "
                                     "Stand = 1 AND Shelf = 2"));
    EXPECT_EQ(data->GetLocalizationCount(1, 1, 4), 0);
    sent();
    EXPECT_EQ(data->GetStandCount(1), 1);
    EXPECT_EQ(sent(),
              QStringLiteral("select count(*) as CountStand from kolv_mag_Stand(nolock) where Rank = 1"));
    EXPECT_EQ(data->GetStandCount(2), 0);
}

TEST_F(ClsMagCreate, TheIconFamilyOfARowIsAnyIconWhereNoneIsNamed) {
    EXPECT_EQ(data->GetIconFamily(1), QStringLiteral("R1_S_*.ico"));
    EXPECT_EQ(sent(), QStringLiteral("select RankIconFamily from kolv_mag_Rank(nolock) where Rank = 1"));
    EXPECT_EQ(data->GetIconFamily(2), QStringLiteral("*.ico"));
    EXPECT_EQ(data->GetIconFamily(3), QStringLiteral("*.ico"));
}

TEST_F(ClsMagCreate, JudgesAndSavesAStandWithTheSameValues) {
    const QStringList expected = words("1|1|2|R1_S_02.ico|4100|3100|1|3|0|0|N|Y|N|Opis, „nowy”");
    EXPECT_TRUE(data->AddBookStandValidate(stand(), message)) << qPrintable(message);
    EXPECT_EQ(message, QString());
    EXPECT_EQ(given("kolv_mag_AddBookstandValidate", 14), expected);
    EXPECT_EQ(data->GetLocalizationCount(1, 1, 2), 2) << "judging changes nothing";
    warehouse.server.clearTrace();
    EXPECT_TRUE(data->AddBookStandToDB(stand(), message)) << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_AddBookstand", 14), expected);
    EXPECT_EQ(data->GetLocalizationCount(1, 1, 2), 3);
    StandParameters found;
    EXPECT_TRUE(data->GetStandParame(1, 1, found));
    EXPECT_EQ(found.StandLeft, 3100);
    EXPECT_EQ(found.StandTop, 4100);
    EXPECT_EQ(found.StandDescription, QStringLiteral("Opis, „nowy”"));
    EXPECT_EQ(found.StandVisable + found.StandEnable + found.StandFrameArround, QStringLiteral("NYN"));
}

TEST_F(ClsMagCreate, ANewStandGetsTheCountOfItsRowAsNumber) {
    StandDefinition added = stand();
    added.Stand = -1;
    added.Shelf = 1;
    added.Left = 6000;
    EXPECT_TRUE(data->AddBookStandToDB(added, message)) << qPrintable(message);
    EXPECT_EQ(data->GetStandCount(1), 2);
    EXPECT_EQ(data->GetLocalizationCount(1, 2, 1), 1);
}

TEST_F(ClsMagCreate, ARefusedStandHandsOverTheReason) {
    StandDefinition outside = stand();
    outside.Left = 199;
    EXPECT_FALSE(data->AddBookStandValidate(outside, message));
    EXPECT_TRUE(message.contains(QStringLiteral("X = 199"))) << qPrintable(message);
    message.clear();
    EXPECT_FALSE(data->AddBookStandToDB(outside, message));
    EXPECT_TRUE(message.contains(QStringLiteral("X = 199"))) << qPrintable(message);
}

TEST_F(ClsMagCreate, RemovesAStand) {
    EXPECT_TRUE(data->RemoveBookStandValidate(1, 1, message)) << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_RemoveBookstandValidate", 2), words("1|1"));
    EXPECT_EQ(data->GetStandCount(1), 1);
    warehouse.server.clearTrace();
    EXPECT_TRUE(data->RemoveBookStandDB(1, 1, message)) << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_RemoveBookstand", 2), words("1|1"));
    EXPECT_EQ(data->GetStandCount(1), 0);
    EXPECT_FALSE(data->RemoveBookStandValidate(1, 1, message));
    EXPECT_FALSE(message.isEmpty());
    message.clear();
    EXPECT_FALSE(data->RemoveBookStandDB(1, 1, message));
    EXPECT_FALSE(message.isEmpty());
}

TEST_F(ClsMagCreate, ReadsWhatIsAssignedToALocation) {
    QString code = QStringLiteral("before");
    QString name = code;
    qint16 group = 99;
    EXPECT_FALSE(data->GetParamLocalization({1, 1, 2, 2}, code, name, group));
    EXPECT_EQ(sent(), QStringLiteral("select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item where "
                                     "Rank = 1 and Stand = 1 and  Shelf = 2 and Location = 2"));
    EXPECT_EQ(code, QStringLiteral("before"));
    EXPECT_EQ(group, 99);
    EXPECT_TRUE(data->GetParamLocalization({1, 1, 1, 1}, code, name, group));
    EXPECT_EQ(code + name, QStringLiteral("M-1Rura"));
    EXPECT_EQ(group, 7);
    EXPECT_TRUE(data->GetParamLocalization({1, 1, 2, 1}, code, name, group));
    EXPECT_EQ(code + name, QString());
    EXPECT_EQ(group, 0);
}

TEST_F(ClsMagCreate, ReadsOneParameterOfALocationAsText) {
    QString value = QStringLiteral("before");
    EXPECT_TRUE(data->GetParamLocalizationStatic({1, 1, 1, 1}, QStringLiteral("Height_int"), value));
    EXPECT_EQ(sent(), QStringLiteral("select Height_int from kolv_mag_Location_Item where Rank = 1 and Stand "
                                     "= 1 and  Shelf = 1 and Location = 1"));
    EXPECT_EQ(value, QStringLiteral("1200"));
    EXPECT_TRUE(data->GetParamLocalizationStatic({1, 1, 2, 1}, QStringLiteral("Height_int"), value));
    EXPECT_EQ(value, QString());
    value = QStringLiteral("before");
    EXPECT_FALSE(data->GetParamLocalizationStatic({1, 1, 2, 2}, QStringLiteral("Height_int"), value));
    EXPECT_EQ(value, QString());
}

TEST_F(ClsMagCreate, AssignsAMaterialAndAGroup) {
    EXPECT_TRUE(data->AddSurOnLocalization({1, 1, 2, 2}, QStringLiteral("M-2"), 7, 3, message))
        << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_Save_Sur_Location", 7), words("1|1|2|2|M-2|7|3"));
    QString code;
    QString name;
    qint16 group = 0;
    EXPECT_TRUE(data->GetParamLocalization({1, 1, 2, 2}, code, name, group));
    EXPECT_EQ(code + name, QStringLiteral("M-2Pręt"));
    EXPECT_EQ(group, 7);
    EXPECT_FALSE(data->AddSurOnLocalization({1, 1, 2, 2}, QStringLiteral("M-9"), 7, 3, message));
    EXPECT_TRUE(message.contains(QStringLiteral("M-9"))) << qPrintable(message);
}

TEST_F(ClsMagCreate, AParameterGoesAsValueAndAPictureAsImage) {
    EXPECT_TRUE(data->SaveLocationParamStatic({1, 1, 2, 2}, QStringLiteral("Description_char"),
                                              QStringLiteral("Uwaga"), QStringLiteral("char"), message))
        << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_Add_Value_Param", 8), words("1|1|2|2|Description_char|Uwaga||char"));
    EXPECT_TRUE(data->SaveLocationParamStatic({1, 1, 2, 2}, QStringLiteral("Picture_pic"),
                                              QStringLiteral("Qk32"), QStringLiteral("pic"), message))
        << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_Add_Value_Param", 8), words("1|1|2|2|Picture_pic||Qk32|pic"));
    QString value;
    EXPECT_TRUE(data->GetParamLocalizationStatic({1, 1, 2, 2}, QStringLiteral("Description_char"), value));
    EXPECT_EQ(value, QStringLiteral("Uwaga"));
    EXPECT_TRUE(data->GetParamLocalizationStatic({1, 1, 2, 2}, QStringLiteral("Picture_pic"), value));
    EXPECT_EQ(value, QStringLiteral("Qk32"));
    EXPECT_FALSE(data->SaveLocationParamStatic({1, 1, 2, 2}, QStringLiteral("Height_int"),
                                               QStringLiteral("12,5"), QStringLiteral("int"), message));
    EXPECT_FALSE(message.isEmpty());
}

TEST_F(ClsMagCreate, ALargePictureArrivesWhole) {
    const QString picture = QStringLiteral("Qk32").repeated(999999);
    EXPECT_TRUE(data->SaveLocationParamStatic({1, 1, 2, 2}, QStringLiteral("Picture_pic"), picture,
                                              QStringLiteral("pic"), message))
        << qPrintable(message);
    QString value;
    EXPECT_TRUE(data->GetParamLocalizationStatic({1, 1, 2, 2}, QStringLiteral("Picture_pic"), value));
    EXPECT_TRUE(value == picture) << value.size();
}

TEST_F(ClsMagCreate, MakesAGroupAndFillsIt) {
    EXPECT_TRUE(data->AddOrRemoveNewGroup(-1, QStringLiteral("Pręty"), 3, message)) << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_Save_Group_Sur", 3), words("-1|Pręty|3"));
    EXPECT_FALSE(data->AddOrRemoveNewGroup(-1, QString(), 3, message));
    EXPECT_FALSE(message.isEmpty());
    EXPECT_TRUE(data->AddSurOnGroup(8, QStringLiteral("M-1,M-2"), 3, message)) << qPrintable(message);
    EXPECT_EQ(given("kolv_mag_Add_Sur_On_Group", 3), words("8|M-1,M-2|3"));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Group_Item where GroupSur = 8")),
              QStringLiteral("2"));
    EXPECT_TRUE(data->AddSurOnGroup(8, QString(), 3, message)) << qPrintable(message);
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Group_Item where GroupSur = 8")),
              QStringLiteral("0"));
}

TEST_F(ClsMagCreate, DeletesOnlyAGroupThatNoLocationUses) {
    EXPECT_FALSE(data->ConfirmGroupUse(7));
    EXPECT_EQ(given("kolv_mag_ConfirmGroupSur", 1), words("7"));
    EXPECT_FALSE(data->DeleteGroupSur(7));
    EXPECT_EQ(given("kolv_mag_DeleteGroupSur", 1), words("7"));
    ASSERT_TRUE(warehouse.run({QStringLiteral("update kolv_mag_Location_Item set GroupSur = 0")}));
    EXPECT_TRUE(data->ConfirmGroupUse(7));
    EXPECT_TRUE(data->DeleteGroupSur(7));
    EXPECT_EQ(warehouse.value(QStringLiteral("select count(*) from kolv_mag_Location_Group")),
              QStringLiteral("0"));
}

// Other than where a procedure decides, here 0 alone is success.
TEST_F(ClsMagCreate, ThePrinterIsNamedOnlyWhereTheReturnValueIsZero) {
    for (const auto& [answer, expected] : {std::pair{0, "Etykiety"}, {1, ""}, {-1, ""}}) {
        ASSERT_TRUE(
            warehouse.run({QStringLiteral("drop procedure dbo.Kolv_Get_PrintersName"),
                           QStringLiteral("create procedure dbo.Kolv_Get_PrintersName @EtykietCodePrint int, "
                                          "@PrintersName nvarchar(100) output as begin "
                                          "set @PrintersName = N'Etykiety'; return %1; end")
                               .arg(answer)}))
            << qPrintable(warehouse.why());
        warehouse.server.clearTrace();
        EXPECT_EQ(data->GetPrintersName(100), QString::fromLatin1(expected)) << answer;
        EXPECT_EQ(given("Kolv_Get_PrintersName", 1), words("100"));
    }
}

// The report of a dead connection belongs to each routine anew, under the name that support knows.
TEST_F(ClsMagCreate, FailuresAnswerTheDefaultsUnderTheNamesThatSupportKnows) {
    warehouse.server.kill();
    StandParameters found{
        .StandIcon = QStringLiteral("x"), .StandLeft = 9, .StandVisable = QStringLiteral("Y")};
    QString code = QStringLiteral("before");
    QString name = code;
    qint16 group = 99;
    const LocationAddress here{1, 1, 1, 1};
    const QList<std::pair<const char*, std::function<bool()>>> routines{
        {"GetStandParame", [&] { return data->GetStandParame(1, 1, found); }},
        {"GetShelfCountOnStand", [&] { return data->GetShelfCountOnStand(1, 1) != 0; }},
        {"AddBookStandToDB", [&] { return data->GetLocalizationCount(1, 1, 1) != 0; }},
        {"GetStandCount", [&] { return data->GetStandCount(1) != 0; }},
        {"GetShelfCountOnStand", [&] { return data->GetIconFamily(1) != QStringLiteral("*.ico"); }},
        {"AddBookStandValidate", [&] { return data->AddBookStandValidate(stand(), message); }},
        {"AddBookStandToDB", [&] { return data->AddBookStandToDB(stand(), message); }},
        {"RemoveBookStandValidate", [&] { return data->RemoveBookStandValidate(1, 1, message); }},
        {"RemoveBookStandDB", [&] { return data->RemoveBookStandDB(1, 1, message); }},
        {"GetParamLocalization", [&] { return data->GetParamLocalization(here, code, name, group); }},
        {"GetParamLocalizationStatic",
         [&] { return data->GetParamLocalizationStatic(here, QStringLiteral("Height_int"), name); }},
        {"AddSurOnLocalization",
         [&] { return data->AddSurOnLocalization(here, QStringLiteral("M-1"), 0, 1, message); }},
        {"SaveLocationParamStatic",
         [&] {
             return data->SaveLocationParamStatic(here, QStringLiteral("Height_int"), QStringLiteral("1"),
                                                  QStringLiteral("int"), message);
         }},
        {"AddOrRemoveNewGroup",
         [&] { return data->AddOrRemoveNewGroup(-1, QStringLiteral("x"), 1, message); }},
        {"AddSurOnGroup", [&] { return data->AddSurOnGroup(7, QString(), 1, message); }},
        {"ConfirmGroupUse", [&] { return data->ConfirmGroupUse(7); }},
        {"DeleteGroupSur", [&] { return data->DeleteGroupSur(7); }},
        {"GetPrintersName", [&] { return !data->GetPrintersName(100).isEmpty(); }}};
    expectedMessages = static_cast<int>(routines.size());
    for (const auto& [report, routine] : routines) {
        EXPECT_FALSE(routine()) << report;
        EXPECT_EQ(messages.last().Title,
                  QStringLiteral("Error - clsMagCreate [%1]").arg(QLatin1StringView(report)));
    }
    EXPECT_EQ(found.StandIcon, QString());
    EXPECT_EQ(found.StandLeft, 0);
    EXPECT_EQ(found.StandVisable, QStringLiteral("N"));
    EXPECT_EQ(code, QString());
    EXPECT_EQ(name, QString());
    EXPECT_EQ(group, 0);
    EXPECT_EQ(message, QStringLiteral("before"));
}

}  // namespace
}  // namespace regalon
