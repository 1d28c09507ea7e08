// The reads and calls of the shift window's data class.

#include "map/MapWarehouse.h"
#include "platform/MsgBox.h"
#include "stock/clsMagWatchShiftLoc.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using test::LocalWarehouse;
using test::MapWarehouse;

constexpr LocationAddress kPlace{1, 2, 3, 4};

/// One stand with two locations: a material lies on the first, a group is given to the second.
class ClsMagWatchShiftLoc : public testing::Test {
protected:
    ClsMagWatchShiftLoc() : warehouse(LocalWarehouse::Content::Empty) {}

    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        warehouse.context.UserSign = 7;
        ASSERT_TRUE(warehouse.addStand(1, 1, 1, QStringLiteral("2"), 3000, 4000, QStringLiteral("R1.ico")));
        run(
            QStringLiteral("insert into kolv_mag_Location_Group (GroupSur,GroupSurName,OnOrOff) values "
                           "(7,N'Farby',N'Y')"));
        run(QStringLiteral("insert into kolv_mag_Group_Item (GroupSur,ItemCode) values (7,N'F-1')"));
        run(
            QStringLiteral("insert into kolv_mag_Location_Item (Rank,Stand,Shelf,Location,ItemCode,ItemName,"
                           "GroupSur) values (1,1,1,1,N'M-1',N'Rura',NULL),(1,1,1,2,NULL,NULL,7)"));
        run(QStringLiteral("update kolv_mag_Location set LocationPercent = 40, LocationName = N'n'"));
        data = std::make_unique<clsMagWatchShiftLoc>(warehouse.context);
    }
    void TearDown() override {
        EXPECT_EQ(messages.count(), expectedMessages) << qPrintable(messages.last().Text);
    }

    void run(const QString& statement) {
        ASSERT_TRUE(warehouse.run({statement})) << qPrintable(warehouse.why());
    }
    /// Puts a procedure in the place of another: one that declares its parameters in this order and answers
    /// this. What the client sends then lies on the wire in this order, if it calls by name.
    void answer(const QString& procedure, const QString& parameters, int returnValue,
                const QString& reason = QString()) {
        run(QStringLiteral("drop procedure ") + procedure);
        const QString tell =
            reason.isEmpty() ? QString() : QStringLiteral("set @ErrDesc = N'%1'; ").arg(reason);
        run(QStringLiteral("create procedure %1 %2 as begin %3return %4; end")
                .arg(procedure, parameters, tell, QString::number(returnValue)));
    }
    QString lastTitle() const { return messages.last().Title; }

    MapWarehouse warehouse;
    MsgBoxRecorder messages;
    int expectedMessages = 0;
    std::unique_ptr<clsMagWatchShiftLoc> data;
    QString message = QStringLiteral("before");
};

TEST_F(ClsMagWatchShiftLoc, ReadsWhatIsAssignedToALocation) {
    QString code;
    QString name;
    qint16 group = 9;
    EXPECT_TRUE(data->GetParamLocalization({1, 1, 1, 1}, code, name, group));
    EXPECT_EQ(code, QStringLiteral("M-1"));
    EXPECT_EQ(name, QStringLiteral("Rura"));
    EXPECT_EQ(group, 0);
    EXPECT_FALSE(data->GetParamLocalization({1, 1, 1, 9}, code, name, group));
    EXPECT_EQ(code, QStringLiteral("M-1")) << "untouched";
    EXPECT_EQ(warehouse.batches().first(),
              QStringLiteral("select ItemCode,ItemName,GroupSur from kolv_mag_Location_Item where Rank = 1 "
                             "and Stand = 1 and  Shelf = 1 and Location = 1"));
}

TEST_F(ClsMagWatchShiftLoc, CountsShelvesAndLocationsOfAStand) {
    qint16 shelves = 0;
    qint16 locations = 0;
    EXPECT_TRUE(data->GetStandParam(1, 1, shelves, locations));
    EXPECT_EQ(shelves, 1);
    EXPECT_EQ(locations, 2);
    EXPECT_EQ(warehouse.batches(),
              QStringList(QStringLiteral("select count(*) Location,max(Shelf) as Shelf from "
                                         "kolv_mag_Location where  Stand = 1 AND Rank = 1")));
}

TEST_F(ClsMagWatchShiftLoc, LooksForAMaterialOnLocationsAlone) {
    EXPECT_TRUE(data->TestExistsSurOnMag(QStringLiteral("M-1")));
    EXPECT_FALSE(data->TestExistsSurOnMag(QStringLiteral("F-1"))) << "a member of a group alone";
    EXPECT_TRUE(data->TestExistsSurOnMagGroup(QStringLiteral("F-1")));
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(
            {QStringLiteral(" select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = N'M-1'"),
             QStringLiteral(" select Top 1 1 from kolv_mag_Location_Item(nolock)  where ItemCode = N'F-1'"),
             QStringLiteral(" select Top 1 1 from kolv_mag_Group_Item  where ItemCode = N'F-1'")}));
}

TEST_F(ClsMagWatchShiftLoc, ServesThePlanUnderItsOwnName) {
    QStringList a;
    QStringList b;
    QStringList c;
    QStringList d;
    EXPECT_TRUE(data->GetIconStandName(a, b, c));
    EXPECT_EQ(c, QStringList(QStringLiteral("R1.ico")));
    EXPECT_TRUE(data->GetIconLoactionNameItem(a, b, c, d, 0));
    EXPECT_EQ(c, QStringList({QStringLiteral("M-1"), QString()}));
    qint16 percent = 0;
    qint16 group = 0;
    QString code;
    EXPECT_TRUE(data->GetLocationPercent(1, 1, 1, 1, percent, code, group));
    EXPECT_EQ(percent, 40);
    EXPECT_TRUE(data->SaveLocalizationIDTab(QStringLiteral("1_1_1_1_LA_2"), {}, {}, message));
    EXPECT_TRUE(data->SaveLocalizationID(1, 1, 1, 2, QStringLiteral("1_1_1_2_LB_3"), message));
    EXPECT_EQ(
        warehouse.value(QStringLiteral("select max(LocationName) from kolv_mag_Location where Location = 2")),
        QStringLiteral("1_1_1_2_LB_3"));

    warehouse.server.kill();
    EXPECT_FALSE(data->GetIconStandName(a, b, c));
    EXPECT_EQ(lastTitle(), QStringLiteral("Error - clsMagWatchShiftLoc [GetIconStandName]"));
    EXPECT_FALSE(data->TestExistsSurOnMag(code));
    EXPECT_EQ(lastTitle(), QStringLiteral("Error - clsMagWatchShiftLoc [GetLocationPercent]"))
        << "the name by which support knows it";
    expectedMessages = 2;
}

TEST_F(ClsMagWatchShiftLoc, StagesAMaterialOfALocation) {
    answer(
        QStringLiteral("kolv_mag_BarCode_Shift_Tmp"),
        QStringLiteral("@Operation nvarchar(9), @DeleteLine nvarchar(9), @Aplication nvarchar(9), @UserSign "
                       "smallint, @Location smallint, @Shelf smallint, @Stand smallint, @Rank smallint, "
                       "@ItemCode nvarchar(20), @ErrDesc nvarchar(50) output"),
        1, QStringLiteral("Nie ma"));
    EXPECT_FALSE(data->AddBarCodeShiftOnTemp(QStringLiteral("M-1"), kPlace, 7, QStringLiteral("N"),
                                             QStringLiteral("P"), QStringLiteral("S"), message));
    EXPECT_EQ(message, QStringLiteral("Nie ma"));
    const QList<QStringList> calls = warehouse.calls(QStringLiteral("kolv_mag_BarCode_Shift_Tmp"));
    ASSERT_EQ(calls.size(), 1);
    EXPECT_EQ(calls.first().mid(0, 9).join(u' '), QStringLiteral("S N P 7 4 3 2 1 M-1"));
}

TEST_F(ClsMagWatchShiftLoc, ChoosesAPackage) {
    answer(QStringLiteral("kolv_mag_Shift_Location_BarCode_Status"),
           QStringLiteral("@Operation nvarchar(9), @Delete nvarchar(9), @Aplication nvarchar(9), @UserSign "
                          "smallint, @BarCode nvarchar(50)"),
           0);
    EXPECT_TRUE(data->DeleteBarCodeShift(QStringLiteral("59 01"), 7, QStringLiteral("P"), QStringLiteral("Y"),
                                         QStringLiteral("S")));
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_Shift_Location_BarCode_Status")).first().join(u' '),
              QStringLiteral("S Y P 7 59 01"));
}

TEST_F(ClsMagWatchShiftLoc, MovesAPackageToALocation) {
    answer(
        QStringLiteral("kolv_mag_Shift_Location_BarCode"),
        QStringLiteral("@Operation nvarchar(9), @Aplication nvarchar(9), @UserSign smallint, @Location "
                       "smallint, @Shelf smallint, @Stand smallint, @Rank smallint, @BarCode nvarchar(50), "
                       "@ErrDesc nvarchar(50) output"),
        3, QStringLiteral("Pełna"));
    EXPECT_FALSE(data->ShiftLocationBarCode(QStringLiteral("5901"), kPlace, 7, QStringLiteral("P"),
                                            QStringLiteral("S"), message));
    EXPECT_EQ(message, QStringLiteral("Pełna"));
    EXPECT_EQ(warehouse.calls(QStringLiteral("kolv_mag_Shift_Location_BarCode")).first().mid(0, 8).join(u' '),
              QStringLiteral("S P 7 4 3 2 1 5901"));
}

TEST_F(ClsMagWatchShiftLoc, ClearsWhatIsStaged) {
    answer(QStringLiteral("Kolv_mag_BarCode_Clear_Temp"),
           QStringLiteral("@Operation nvarchar(9), @Aplication nvarchar(9), @Param smallint, @UserSign "
                          "smallint"),
           0);
    EXPECT_TRUE(data->ClearBarCodeOnTemp(7, 0, QStringLiteral("P"), QStringLiteral("S")));
    EXPECT_EQ(warehouse.calls(QStringLiteral("Kolv_mag_BarCode_Clear_Temp")).first().join(u' '),
              QStringLiteral("S P 0 7"));
}

TEST_F(ClsMagWatchShiftLoc, HasTheProposalsRecomputed) {
    answer(QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm"),
           QStringLiteral("@Operation nvarchar(9), @Aplication nvarchar(9), @UserSign smallint, @ErrDesc "
                          "nvarchar(50) output"),
           1, QStringLiteral("Brak miejsca"));
    EXPECT_FALSE(data->ConfirmPropozytionLocation(7, QStringLiteral("P"), QStringLiteral("S"), message));
    EXPECT_EQ(message, QStringLiteral("Brak miejsca"));
    EXPECT_EQ(
        warehouse.calls(QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm")).first().mid(0, 3).join(u' '),
        QStringLiteral("S P 7"));
}

TEST_F(ClsMagWatchShiftLoc, AReturnOfMinusOneCountsAsSuccess) {
    const QString output = QStringLiteral(", @ErrDesc nvarchar(50) output");
    const QString key = QStringLiteral("@UserSign smallint, @Aplication nvarchar(9), @Operation nvarchar(9)");
    const QString place =
        QStringLiteral(", @Rank smallint, @Stand smallint, @Shelf smallint, @Location smallint");
    answer(QStringLiteral("Kolv_mag_BarCode_Clear_Temp"), key + QStringLiteral(", @Param smallint"), -1);
    answer(QStringLiteral("Kolv_mag_Watch_Prop_Location_Confirm"), key + output, -1);
    answer(QStringLiteral("kolv_mag_BarCode_Shift_Tmp"),
           key + place + QStringLiteral(", @ItemCode nvarchar(20), @DeleteLine nvarchar(9)") + output, -1);
    answer(QStringLiteral("kolv_mag_Shift_Location_BarCode_Status"),
           key + QStringLiteral(", @BarCode nvarchar(20), @Delete nvarchar(9)") + output, -1);
    answer(QStringLiteral("kolv_mag_Shift_Location_BarCode"),
           key + place + QStringLiteral(", @BarCode nvarchar(20)") + output, -1);
    const QString p = QStringLiteral("P");
    const QString s = QStringLiteral("S");
    const QString code = QStringLiteral("X");
    EXPECT_TRUE(data->ClearBarCodeOnTemp(7, 0, p, s));
    EXPECT_TRUE(data->ConfirmPropozytionLocation(7, p, s, message));
    EXPECT_TRUE(data->AddBarCodeShiftOnTemp(code, kPlace, 7, QStringLiteral("N"), p, s, message));
    EXPECT_TRUE(data->DeleteBarCodeShift(code, 7, p, QStringLiteral("N"), s));
    EXPECT_TRUE(data->ShiftLocationBarCode(code, kPlace, 7, p, s, message));
    EXPECT_TRUE(data->EcexProcedureParam(
        QStringLiteral("exec Kolv_mag_Watch_Prop_Location_Confirm 7,N'P',N'S'"), message));
}

TEST_F(ClsMagWatchShiftLoc, CountsTheChosenPackagesOfThisConnectionAndUser) {
    const QString row = QStringLiteral(
        "insert into Kolv_Mag_BarCode_Input_Sur_tym (HostName,SPID,UserSign,YearCode,LineGrd,"
        "Aplication,Operation,BarCode) values (%1,%2,%3,%4,%5,N'P',N'%6',N'%7')");
    const QString host = QStringLiteral("host_name()");
    const QString year = QStringLiteral("Year(getdate())");
    DbConnection& own = *warehouse.context.ConnMain;
    const auto add = [&](const QString& hostName, const QString& spid, int user, const QString& yearCode,
                         int lineGrd, const char* operation, int code) {
        own.Execute(row.arg(hostName, spid)
                        .arg(user)
                        .arg(yearCode)
                        .arg(lineGrd)
                        .arg(QString::fromLatin1(operation))
                        .arg(code));
    };
    const QString spid = QStringLiteral("-@@SPID");
    add(host, spid, 7, year, -1, "S", 1);
    add(host, spid, 7, year, -1, "S", 2);
    add(host, spid, 7, year, 0, "S", 3);
    add(host, spid, 7, year, -1, "I", 4);
    add(host, spid, 8, year, -1, "S", 5);
    add(host, spid, 7, QStringLiteral("2001"), -1, "S", 6);
    add(host, QStringLiteral("@@SPID"), 7, year, -1, "S", 7);
    add(QStringLiteral("N'inny'"), spid, 7, year, -1, "S", 8);
    warehouse.server.clearTrace();
    EXPECT_EQ(data->GetCountChoseBarCodeOnShift(7, QStringLiteral("S")), 2);
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(QStringLiteral(
            " select Count(*) as Count from Kolv_Mag_BarCode_Input_Sur_tym(nolock) where HostName = "
            "Host_Name() AND YearCode = Year(getdate()) AND SPID = -@@SPID AND LineGrd = -1 AND UserSign "
            "= 7 AND Operation = N'S'")));
}

TEST_F(ClsMagWatchShiftLoc, FailuresAnswerFalseUnderTheNamesThatSupportKnows) {
    warehouse.server.kill();
    const QString p = QStringLiteral("P");
    const QString s = QStringLiteral("S");
    const QString code = QStringLiteral("X");
    EXPECT_FALSE(data->ClearBarCodeOnTemp(7, 0, p, s));
    EXPECT_FALSE(data->ConfirmPropozytionLocation(7, p, s, message));
    EXPECT_FALSE(data->AddBarCodeShiftOnTemp(code, kPlace, 7, p, p, s, message));
    EXPECT_FALSE(data->DeleteBarCodeShift(code, 7, p, p, s));
    EXPECT_FALSE(data->ShiftLocationBarCode(code, kPlace, 7, p, s, message));
    EXPECT_EQ(data->GetCountChoseBarCodeOnShift(7, s), -1);
    EXPECT_FALSE(data->EcexProcedureParam(QStringLiteral("exec Kolv_x 1,2"), message));
    EXPECT_TRUE(data->EcexProcedure(QStringLiteral("exec Kolv_x 1,2")));
    EXPECT_EQ(message, QStringLiteral("before"));
    QStringList routines;
    for (const MsgBoxRecorder::Message& box : messages.messages()) {
        EXPECT_EQ(box.Flags, MsgFlag::Critical);
        routines.append(box.Title);
    }
    const auto title = [](const char* routine) {
        return QStringLiteral("Error - clsMagWatchShiftLoc [%1]").arg(QString::fromLatin1(routine));
    };
    EXPECT_EQ(routines, QStringList({title("ClearBarCodeOnTemp"), title("ConfirmPropozytionLocation"),
                                     title("AddBarCodeShiftOnTemp"), title("DeleteBarCodeShift"),
                                     title("ShiftLocationItem"), title("GetCountChoseBarCodeOnShift"),
                                     title("EcexProcedureParam"), title("EcexProcedure")}));
    expectedMessages = 8;
}

}  // namespace
}  // namespace regalon
