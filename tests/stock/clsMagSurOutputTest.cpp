// What the service of goods-out sends and reads.

#include "stock/ServiceContracts.h"
#include "stock/clsMagSurOutput.h"

namespace regalon {
namespace {

using namespace Qt::StringLiterals;
using namespace test::contracts;

class ClsMagSurOutput : public test::ServiceDesk {
protected:
    void SetUp() override {
        ServiceDesk::SetUp();
        service.EcexProcedure(u"exec kolv_mag_Temp_Tables"_s);
        warehouse.server.clearTrace();
    }
    /// Runs a statement on the connection of the service, whose rows it is to see.
    void runOwn(const QString& statement) {
        warehouse.context.ConnMain->Execute(statement);
        warehouse.server.clearTrace();
    }
    void tickOrder(int DocEntry, const QString& key = u"host_name(),-@@SPID,7"_s) {
        runOwn(
            u"insert into ##Temp_mag_PurchesOrders_GiveOut (HostName,SPID,UserSign,DocEntry,UserSignGiveOut) "
            "values (%1,%2,5)"_s.arg(key)
                .arg(DocEntry));
    }
    void tickItem(const QString& ItemCode, const QString& key = u"host_name(),-@@SPID,7"_s) {
        runOwn(
            u"insert into ##Temp_mag_ItemCode_GiveOut (HostName,SPID,UserSign,ItemCode,UserSignGiveOut) "
            "values (%1,N'%2',5)"_s.arg(key, ItemCode));
    }
    bool giveOut() {
        return service.GiveOutSurOnMag({.DocNumProd = 80000,
                                        .DocEntryProd = 70000,
                                        .LineNumProd = 3,
                                        .UserSign = 7,
                                        .UserSignGiveOut = 5,
                                        .Aplication = u"P"_s},
                                       message, number);
    }

    clsMagSurOutput service{warehouse.context};
    const GivenOutPackage package{.DocNum = 70000,
                                  .ItemCode = u"M-1"_s,
                                  .QuantityProp = 2.5,
                                  .QuantityOut = 1.25,
                                  .UserSign = 7,
                                  .LineGrd = -1,
                                  .PropOrOut = u"O"_s,
                                  .DeleteLine = u"N"_s,
                                  .Aplication = u"P"_s,
                                  .Param = 4,
                                  .BarCode = u"5901"_s};
    qint32 number = 99;
    QStringList first{QString()};
    QStringList second{QString()};
};

TEST_F(ClsMagSurOutput, ReadsTheNumberOfAManufacturingOrder) {
    run(u"insert into ORDR (DocEntry,DocNum) values (70000,80000),(3,NULL)"_s);
    EXPECT_EQ(service.GetDocNumZlecProd(70000), 80000);
    EXPECT_EQ(warehouse.batches(), QStringList(u" select DocNum from ORDR(nolock) where DocEntry = 70000"_s));
    EXPECT_EQ(service.GetDocNumZlecProd(3), 0) << "NULL";
    EXPECT_EQ(service.GetDocNumZlecProd(4), 0) << "no order";
}

TEST_F(ClsMagSurOutput, TheProposalsOfGoodsOutSendTheUserAlone) {
    answer(ConfirmOfUser, 0, u"set @ErrDesc = N'ok';"_s);
    EXPECT_TRUE(service.ConfirmPropozytionLocation(7, message));
    EXPECT_EQ(message, u"ok"_s);
    EXPECT_EQ(sent(ConfirmOfUser), QStringList(u"@UserSign=7"_s));
}

TEST_F(ClsMagSurOutput, RefusedProposalsTellWhyAndANegativeReturnWarns) {
    refuse(ConfirmOfUser, 1, u"Nie"_s);
    EXPECT_FALSE(service.ConfirmPropozytionLocation(7, message));
    EXPECT_EQ(message, u"Nie"_s);
    refuse(ConfirmOfUser, -1, u"Uwaga"_s);
    EXPECT_TRUE(service.ConfirmPropozytionLocation(7, message));
    EXPECT_EQ(message, u"Uwaga"_s);
}

TEST_F(ClsMagSurOutput, TheRealProposalsAreContentWithTheUserAlone) {
    EXPECT_TRUE(service.ConfirmPropozytionLocation(7, message)) << qPrintable(message);
    EXPECT_EQ(warehouse.calls(Confirm.procedure).first().mid(0, 3).join(u' '), u"7 NULL NULL"_s);
}

TEST_F(ClsMagSurOutput, StagesAPackage) {
    refuse(AddTempOut, 1, u"Nie ma"_s);
    EXPECT_FALSE(service.AddBarCodeOnTemp(package, message));
    EXPECT_EQ(message, u"Nie ma"_s);
    EXPECT_EQ(sent(AddTempOut),
              QStringList({u"@DocNum=70000"_s, u"@ItemCode=M-1"_s, u"@QuantityProp=2.500000"_s,
                           u"@QuantityOut=1.250000"_s, u"@UserSign=7"_s, u"@LineGrd=-1"_s, u"@PropOrOut=O"_s,
                           u"@DeleteLine=N"_s, u"@Aplication=P"_s, u"@Param=4"_s, u"@BarCode=5901"_s}));
    refuse(AddTempOut, -1, u"Uwaga"_s);
    EXPECT_TRUE(service.AddBarCodeOnTemp(package, message));
    EXPECT_EQ(message, u"Uwaga"_s);
}

TEST_F(ClsMagSurOutput, GivesOutUnderTheNumberBeforeTheMessage) {
    answer(GiveOutStaged, 0, u"set @GiveOutDocNum = 70001; set @ErrDesc = N'Wydano';"_s);
    EXPECT_TRUE(giveOut());
    EXPECT_EQ(number, 70001);
    EXPECT_EQ(message, u"Wydano"_s);
    EXPECT_EQ(sent(GiveOutStaged),
              QStringList({u"@DocNumProd=80000"_s, u"@DocEntryProd=70000"_s, u"@LineNumProd=3"_s,
                           u"@UserSign=7"_s, u"@UserSignGiveOut=5"_s, u"@Aplication=P"_s}));
}

TEST_F(ClsMagSurOutput, AGiveOutThatReturnsMinusOneIsRefusedAndHasTheNumberMinusOne) {
    for (const int refused : {-1, 1}) {
        number = 99;
        answer(GiveOutStaged, refused, u"set @GiveOutDocNum = 70001; set @ErrDesc = N'Nie';"_s);
        EXPECT_FALSE(giveOut()) << refused;
        EXPECT_EQ(number, -1);
        EXPECT_EQ(message, u"Nie"_s);
    }
}

TEST_F(ClsMagSurOutput, ARefusedGiveOutMayLeaveItsNumberNull) {
    refuse(GiveOutStaged, 1, u"Nie"_s);
    EXPECT_FALSE(giveOut());
    EXPECT_EQ(number, -1);
    EXPECT_EQ(message, u"Nie"_s);
}

TEST_F(ClsMagSurOutput, AsksWhetherAMaterialCanBeGivenOut) {
    refuse(ConfirmItem, 1, u"Brak"_s);
    EXPECT_FALSE(service.TestItemSurOnMag(u"M-1"_s, u"P"_s, message));
    EXPECT_EQ(message, u"Brak"_s);
    EXPECT_EQ(sent(ConfirmItem), QStringList({u"@ItemCode=M-1"_s, u"@Aplication=P"_s}));
}

TEST_F(ClsMagSurOutput, ANegativeReturnForAMaterialOrATickWarnsAndIsASuccess) {
    refuse(ConfirmItem, -1, u"Mało"_s);
    EXPECT_TRUE(service.TestItemSurOnMag(u"M-1"_s, u"P"_s, message));
    EXPECT_EQ(message, u"Mało"_s);
    refuse(TickOrder, -1, u"Stare"_s);
    EXPECT_TRUE(service.AddPurchaseOrderTmpGiveOut(7, 5, 70000, u"A"_s, u"P"_s, message));
    EXPECT_EQ(message, u"Stare"_s);
    refuse(TickItem, -1, u"Już"_s);
    EXPECT_TRUE(service.AddItemCodeTmpGiveOut(7, 5, u"M-1"_s, u"D"_s, u"P"_s, message));
    EXPECT_EQ(message, u"Już"_s);
}

TEST_F(ClsMagSurOutput, TicksAPurchaseOrder) {
    refuse(TickOrder, 1, u"Nie"_s);
    EXPECT_FALSE(service.AddPurchaseOrderTmpGiveOut(7, 5, 70000, u"A"_s, u"P"_s, message));
    EXPECT_EQ(message, u"Nie"_s);
    EXPECT_EQ(sent(TickOrder), QStringList({u"@Aplication=P"_s, u"@UserSign=7"_s, u"@UserSignGiveOut=5"_s,
                                            u"@DocEntry=70000"_s, u"@AddOrDelete=A"_s}));
}

TEST_F(ClsMagSurOutput, TicksAMaterial) {
    refuse(TickItem, 1, u"Nie"_s);
    EXPECT_FALSE(service.AddItemCodeTmpGiveOut(7, 5, u"M-1"_s, u"D"_s, u"P"_s, message));
    EXPECT_EQ(message, u"Nie"_s);
    EXPECT_EQ(sent(TickItem), QStringList({u"@Aplication=P"_s, u"@UserSign=7"_s, u"@UserSignGiveOut=5"_s,
                                           u"@ItemCode=M-1"_s, u"@AddOrDelete=D"_s}));
}

TEST_F(ClsMagSurOutput, TakesTheTicksAway) {
    answer(ClearOrders, 1);
    answer(ClearItems, -1);
    EXPECT_FALSE(service.ClearPurchersOrderGiveOut(7, u"P"_s, 4));
    EXPECT_TRUE(service.ClearItemCodeGiveOut(7, u"P"_s, 4));
    const QStringList values{u"@Aplication=P"_s, u"@UserSign=7"_s, u"@Param=4"_s};
    EXPECT_EQ(sent(ClearOrders), values);
    EXPECT_EQ(sent(ClearItems), values);
}

TEST_F(ClsMagSurOutput, SeesStagedPackagesOfItsKey) {
    const QString row = u"insert into Kolv_Mag_BarCode_Output_Sur_tym (HostName,SPID,UserSign) values (%1)"_s;
    runOwn(row.arg(u"host_name(),-@@SPID,8"_s));
    runOwn(row.arg(u"host_name(),@@SPID,7"_s));
    runOwn(row.arg(u"N'inny',-@@SPID,7"_s));
    EXPECT_FALSE(service.TestExistsDataOnTmpOutput(7));
    EXPECT_EQ(warehouse.batches(),
              QStringList(u"select top 1 1 from Kolv_Mag_BarCode_Output_Sur_tym(nolock) where HostName = "
                          "host_name() AND SPID = -@@SPID AND USerSign = 7"_s));
    runOwn(row.arg(u"host_name(),-@@SPID,7"_s));
    EXPECT_TRUE(service.TestExistsDataOnTmpOutput(7));
}

TEST_F(ClsMagSurOutput, SeesTicksInOneOfTheTwoTables) {
    tickOrder(1, u"host_name(),-@@SPID,8"_s);
    tickItem(u"M-1"_s, u"host_name(),@@SPID,7"_s);
    EXPECT_FALSE(service.TestExistsDataTemPurhcaseAndItemCodeGiveOut(7));
    EXPECT_EQ(warehouse.batches(),
              QStringList(u"select top 1 1  from ##Temp_mag_PurchesOrders_GiveOut(nolock) where HostName = "
                          "host_name() AND SPID = -@@SPID AND UserSign = 7 Union All select top 1 1  from "
                          "##Temp_mag_ItemCode_GiveOut(nolock)  where HostName = host_name() AND SPID = "
                          "-@@SPID AND UserSign = 7"_s));
    tickOrder(1);
    EXPECT_TRUE(service.TestExistsDataTemPurhcaseAndItemCodeGiveOut(7)) << "an order alone";
    runOwn(u"delete from ##Temp_mag_PurchesOrders_GiveOut"_s);
    tickItem(u"M-1"_s);
    EXPECT_TRUE(service.TestExistsDataTemPurhcaseAndItemCodeGiveOut(7)) << "a material alone";
}

TEST_F(ClsMagSurOutput, ReadsThePrintedListInTheOrderOfItsLines) {
    run(u"insert into Kolv_Mag_BarCode_Sur_Production (GiveOutDocNum,GiveOutLineNum,GiveOutBarCode) values "
        "(9,2,NULL),(9,1,N'5901'),(8,1,N'x')"_s);
    EXPECT_TRUE(service.GetDataGivOutListPrint(9, first, second));
    EXPECT_EQ(first, QStringList({u"1"_s, u"2"_s}));
    EXPECT_EQ(second, QStringList({u"5901"_s, u"0"_s})) << "0 for NULL";
    EXPECT_EQ(warehouse.batches(),
              QStringList(u"select GiveOutDocNum,GiveOutLineNum,GiveOutBarCode from "
                          "Kolv_Mag_BarCode_Sur_Production(nolock) where GiveOutDocNum =9 Order by "
                          "GiveOutDocNum,GiveOutLineNum"_s));
}

TEST_F(ClsMagSurOutput, ALineWithoutANumberIsPrintedAsZero) {
    run(u"alter table Kolv_Mag_BarCode_Sur_Production drop constraint PK_Kolv_Mag_BarCode_Sur_Production"_s);
    run(u"alter table Kolv_Mag_BarCode_Sur_Production alter column GiveOutLineNum smallint null"_s);
    run(u"insert into Kolv_Mag_BarCode_Sur_Production (GiveOutDocNum,GiveOutLineNum,GiveOutBarCode) values "
        "(9,NULL,N'5901')"_s);
    EXPECT_TRUE(service.GetDataGivOutListPrint(9, first, second));
    EXPECT_EQ(first, QStringList(u"0"_s));
    EXPECT_EQ(second, QStringList(u"5901"_s));
}

TEST_F(ClsMagSurOutput, AListWithoutRowsLeavesTheArraysAndIsTrue) {
    second = QStringList({u"a"_s, u"b"_s});
    EXPECT_TRUE(service.GetDataGivOutListPrint(9, first, second));
    EXPECT_EQ(first, QStringList(QString()));
    EXPECT_EQ(second, QStringList({u"a"_s, u"b"_s}));
}

TEST_F(ClsMagSurOutput, AnArrayWithAFilledElementZeroKeepsItAndGrowsBehindIt) {
    tickOrder(11);
    tickOrder(12);
    first = QStringList({u"a"_s, u"b"_s});
    EXPECT_TRUE(service.GetDocEntryCheckedPurchaseOrders(7, first));
    EXPECT_EQ(first, QStringList({u"a"_s, u"b"_s, u"11"_s, u"12"_s}));
    first = QStringList({QString(), u"b"_s});
    EXPECT_TRUE(service.GetDocEntryCheckedPurchaseOrders(7, first));
    EXPECT_EQ(first, QStringList({QString(), u"12"_s})) << "the last element, while the first is empty";

    tickItem(u"M-1"_s);
    first = QStringList(u"a"_s);
    EXPECT_TRUE(service.GetDocItemCodeChecked(7, first));
    EXPECT_EQ(first, QStringList({u"a"_s, u"M-1"_s}));
}

TEST_F(ClsMagSurOutput, ThePrintedListGrowsBehindAFilledElementZeroOfEitherArray) {
    run(u"insert into Kolv_Mag_BarCode_Sur_Production (GiveOutDocNum,GiveOutLineNum,GiveOutBarCode) values "
        "(9,1,N'5901'),(9,2,N'5902')"_s);
    first = QStringList(u"a"_s);
    EXPECT_TRUE(service.GetDataGivOutListPrint(9, first, second));
    EXPECT_EQ(first, QStringList({u"a"_s, u"1"_s, u"2"_s}));
    EXPECT_EQ(second, QStringList({u"5901"_s, u"5902"_s}));
    first = QStringList(QString());
    second = QStringList({u"b"_s, u"c"_s});
    EXPECT_TRUE(service.GetDataGivOutListPrint(9, first, second));
    EXPECT_EQ(first, QStringList({u"1"_s, u"2"_s}));
    EXPECT_EQ(second, QStringList({u"b"_s, u"c"_s, u"5901"_s, u"5902"_s}));
}

TEST_F(ClsMagSurOutput, AnArrayWithoutElementsIsAFailureThatAnswersTrue) {
    tickOrder(11);
    first.clear();
    EXPECT_TRUE(service.GetDocEntryCheckedPurchaseOrders(7, first));
    EXPECT_EQ(first, QStringList());
    EXPECT_TRUE(messages.last().Text.startsWith(u"9\r\n")) << qPrintable(messages.last().Text);
    expectedMessages = 1;
}

TEST_F(ClsMagSurOutput, ReadsTheTickedOrdersOfItsKey) {
    tickOrder(11);
    tickOrder(12, u"host_name(),-@@SPID,8"_s);
    tickOrder(13, u"host_name(),@@SPID,7"_s);
    tickOrder(14, u"N'inny',-@@SPID,7"_s);
    EXPECT_TRUE(service.GetDocEntryCheckedPurchaseOrders(7, first));
    EXPECT_EQ(first, QStringList(u"11"_s));
    EXPECT_EQ(
        warehouse.batches(),
        QStringList(u" select DocEntry,UserSignGiveOut from ##Temp_mag_PurchesOrders_GiveOut(nolock) where "
                    "UserSign = 7 AND SPID = -@@SPID AND HostName = host_Name()"_s));
}

TEST_F(ClsMagSurOutput, ReadsTheTickedMaterialsOfItsKey) {
    tickItem(u"M-1"_s);
    tickItem(u"M-2"_s, u"host_name(),-@@SPID,8"_s);
    EXPECT_TRUE(service.GetDocItemCodeChecked(7, first));
    EXPECT_EQ(first, QStringList(u"M-1"_s));
    EXPECT_EQ(warehouse.batches(),
              QStringList(u" select ItemCode,UserSignGiveOut from ##Temp_mag_ItemCode_GiveOut(nolock) where "
                          "UserSign = 7 AND SPID = -@@SPID AND HostName = host_Name()"_s));
}

TEST_F(ClsMagSurOutput, FailuresAnswerWhatEachOperationHeldUnderItsName) {
    warehouse.server.kill();
    EXPECT_EQ(service.GetDocNumZlecProd(1), -1);
    EXPECT_FALSE(service.ConfirmPropozytionLocation(7, message));
    EXPECT_FALSE(service.AddBarCodeOnTemp(package, message));
    EXPECT_FALSE(giveOut());
    EXPECT_EQ(number, -1);
    EXPECT_FALSE(service.TestExistsDataOnTmpOutput(7));
    EXPECT_FALSE(service.TestExistsDataTemPurhcaseAndItemCodeGiveOut(7));
    EXPECT_FALSE(service.TestItemSurOnMag(u"a"_s, u"P"_s, message));
    EXPECT_TRUE(service.GetDataGivOutListPrint(1, first, second));
    EXPECT_FALSE(service.AddPurchaseOrderTmpGiveOut(7, 5, 1, u"A"_s, u"P"_s, message));
    EXPECT_FALSE(service.AddItemCodeTmpGiveOut(7, 5, u"a"_s, u"A"_s, u"P"_s, message));
    EXPECT_TRUE(service.GetDocEntryCheckedPurchaseOrders(7, first));
    EXPECT_TRUE(service.GetDocItemCodeChecked(7, first));
    EXPECT_FALSE(service.ClearPurchersOrderGiveOut(7, u"P"_s, 0));
    EXPECT_FALSE(service.ClearItemCodeGiveOut(7, u"P"_s, 0));
    EXPECT_EQ(message, u"before"_s);
    EXPECT_EQ(first, QStringList(QString()));
    EXPECT_EQ(titles(), reports(u"clsMagSurOutput"_s,
                                {u"GetDocNumZlecProd"_s, u"ConfirmPropozytionLocation"_s,
                                 u"AddBarCodeOnTemp"_s, u"GiveOutSurOnMag"_s, u"TestExistsDataOnTmpOutput"_s,
                                 u"TestExistsDataTemPurhcaseAndItemCodeGiveOut"_s, u"TestItemSurOnMag"_s,
                                 u"GetDataGivOutListPrint"_s, u"AddPurchaseOrderTmpGiveOut"_s,
                                 u"AddItemCodeTmpGiveOut"_s, u"GetDocEntryCheckedPurchaseOrders"_s,
                                 u"GetDocItemCodeChecked"_s, u"ClearPurchersOrderGiveOut"_s,
                                 u"ClearItemCodeGiveOut"_s}));
    expectedMessages = 14;
}

TEST_F(ClsMagSurOutput, AServerThatDiesInsideAGiveOutLeavesTheNumberMinusOne) {
    bool given = true;
    expectDeathInside(GiveOutStaged, [&] { given = giveOut(); });
    EXPECT_FALSE(given);
    EXPECT_EQ(number, -1);
    EXPECT_EQ(message, u"before"_s);
    EXPECT_EQ(titles(), reports(u"clsMagSurOutput"_s, {u"GiveOutSurOnMag"_s}));
    expectedMessages = 1;
}

}  // namespace
}  // namespace regalon
