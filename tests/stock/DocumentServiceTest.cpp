// What the services of goods-in, goods-out and returns have alike, each under its own name.

#include "common/DbGateway.h"
#include "stock/ServiceContracts.h"
#include "stock/clsMagSurImput.h"
#include "stock/clsMagSurImputProd.h"
#include "stock/clsMagSurOutput.h"

namespace regalon {
namespace {

using namespace Qt::StringLiterals;
using namespace test::contracts;

QString reportName(const clsMagSurImput&) {
    return u"clsMagSurInput"_s;
}
QString reportName(const clsMagSurOutput&) {
    return u"clsMagSurOutput"_s;
}
QString reportName(const clsMagSurImputProd&) {
    return u"clsMagSurInputProd"_s;
}

template <class Service>
class DocumentServiceTest : public test::ServiceDesk {
protected:
    /// A staged row of goods-in, with parts of its key given as they stand in a statement.
    void stage(const QString& host, const QString& spid, int user, const QString& operation) {
        warehouse.context.ConnMain->Execute(
            u"insert into Kolv_Mag_BarCode_Input_Sur_tym (HostName,SPID,UserSign,YearCode,LineGrd,Aplication,"
            "Operation,BarCode) values (%1,%2,%3,Year(getdate()),0,N'P',N'%4',N'5901')"_s.arg(host, spid)
                .arg(user)
                .arg(operation));
        warehouse.server.clearTrace();
    }

    Service service{warehouse.context};
    ProposalLine line{u"before"_s, {}, {}, 9, 9};
};

using Services = testing::Types<clsMagSurImput, clsMagSurOutput, clsMagSurImputProd>;
TYPED_TEST_SUITE(DocumentServiceTest, Services);

TYPED_TEST(DocumentServiceTest, RunsATextAndKeepsItsRowsForTheCaller) {
    EXPECT_TRUE(this->service.EcexProcedure(u"select DocEntry from OPOR where 1 = 0"_s));
    EXPECT_EQ(this->warehouse.batches(), QStringList(u"select DocEntry from OPOR where 1 = 0"_s));
    EXPECT_EQ(this->service.rows().State(), 1);
}

TYPED_TEST(DocumentServiceTest, ReadsTheNumberOfAPurchaseOrder) {
    this->run(u"insert into OPOR (DocEntry,DocNum) values (70000,80000),(3,NULL)"_s);
    EXPECT_EQ(this->service.GetDocNum(70000), 80000);
    EXPECT_EQ(this->warehouse.batches(),
              QStringList(u" select DocNum from OPOR(nolock) where DocEntry = 70000"_s));
    EXPECT_EQ(this->service.GetDocNum(3), 0) << "NULL";
}

TYPED_TEST(DocumentServiceTest, AnUnknownPurchaseOrderHasTheNumberZero) {
    EXPECT_EQ(this->service.GetDocNum(-5), 0);
    EXPECT_EQ(this->warehouse.batches(),
              QStringList(u" select DocNum from OPOR(nolock) where DocEntry = -5"_s));
}

TYPED_TEST(DocumentServiceTest, ClearsWhatIsStaged) {
    this->answer(ClearTemp, 0);
    EXPECT_TRUE(this->service.ClearBarCodeOnTemp(7, 2, u"P"_s, u"I"_s));
    EXPECT_EQ(this->sent(ClearTemp),
              QStringList({u"@UserSign=7"_s, u"@Param=2"_s, u"@Aplication=P"_s, u"@Operation=I"_s}));
}

TYPED_TEST(DocumentServiceTest, ClearingNothingIsASuccess) {
    EXPECT_TRUE(this->service.ClearBarCodeOnTemp(7, 0, u"P"_s, u"I"_s));
}

TYPED_TEST(DocumentServiceTest, AProposalThatIsNotThereLeavesTheLine) {
    EXPECT_TRUE(this->service.EcexProcedure(u"exec kolv_mag_Temp_Tables"_s));
    this->warehouse.server.clearTrace();
    EXPECT_FALSE(this->service.LoadParamFormLocationChange(2, 5, this->line));
    EXPECT_EQ(this->line.ItemCode, u"before"_s);
    EXPECT_EQ(
        this->warehouse.batches(),
        QStringList(u" select A.ItemCode,A.ItemName,B.BarCode,B.Quantity,B.QuantityAdd from "
                    "##Temp_Prop_Location A(nolock)  inner join  ##Temp_Prop_Location_BarCode B(nolock) "
                    "ON A.IDCodeBar = B.IDCodeBar  where ID = 2 AND A.IDCodeBar = 5"_s));
}

TYPED_TEST(DocumentServiceTest, TakesAnotherProposal) {
    this->refuse(PropChange, 1, u"unread"_s);
    EXPECT_FALSE(this->service.ChangeLocationOnAddSur(7, 2, 5));
    EXPECT_EQ(this->sent(PropChange), QStringList({u"@UserSign=7"_s, u"@ID=2"_s, u"@IDCodeBar=5"_s}));
}

TYPED_TEST(DocumentServiceTest, BooksTheStagedPackagesIntoTheBuffer) {
    qint16 returned = 99;
    this->refuse(ToBuffer, 3, u"Nic nie wybrano"_s);
    EXPECT_FALSE(this->service.AddSurOnMag(7, u"P"_s, u"I"_s, returned, this->message));
    EXPECT_EQ(returned, 3);
    EXPECT_EQ(this->message, u"Nic nie wybrano"_s);
    EXPECT_EQ(this->sent(ToBuffer), QStringList({u"@UserSign=7"_s, u"@Aplication=P"_s, u"@Operation=I"_s}));
}

TYPED_TEST(DocumentServiceTest, ANegativeReturnOfTheBufferIsShownAndASuccess) {
    qint16 returned = 99;
    this->refuse(ToBuffer, -4, u"Uwaga"_s);
    EXPECT_TRUE(this->service.AddSurOnMag(7, u"P"_s, u"I"_s, returned, this->message));
    EXPECT_EQ(returned, -4);
    EXPECT_EQ(this->message, u"Uwaga"_s);
}

TYPED_TEST(DocumentServiceTest, PutsAPackageOnALocation) {
    this->refuse(ToLocation, 1, u"Pełna"_s);
    EXPECT_FALSE(
        this->service.AddSurOnLocation(70000, 4, u"5901"_s, u"72611221010211"_s, 7, u"I"_s, this->message));
    EXPECT_EQ(this->message, u"Pełna"_s);
    EXPECT_EQ(this->sent(ToLocation),
              QStringList({u"@DocEntry=70000"_s, u"@LineNum=4"_s, u"@BarCodeSur=5901"_s,
                           u"@BarCodeLoc=72611221010211"_s, u"@UserSign=7"_s, u"@Operation=I"_s}));
    this->refuse(ToLocation, -1, u"Uwaga"_s);
    EXPECT_TRUE(this->service.AddSurOnLocation(70000, 4, u"5901"_s, u"7"_s, 7, u"I"_s, this->message));
}

TYPED_TEST(DocumentServiceTest, SeesStagedRowsOfEveryOperationOfTheKey) {
    EXPECT_FALSE(this->service.CheckExistRecordOnAdd(7));
    EXPECT_EQ(this->warehouse.batches(),
              QStringList(u"select top 1 1 from Kolv_Mag_BarCode_Input_Sur_tym(nolock) where HostName = "
                          "host_name() AND SPID = -@@SPID AND USerSign = 7"_s));
    this->stage(u"host_name()"_s, u"-@@SPID"_s, 8, u"I"_s);
    this->stage(u"host_name()"_s, u"@@SPID"_s, 7, u"I"_s);
    this->stage(u"N'inny'"_s, u"-@@SPID"_s, 7, u"I"_s);
    EXPECT_FALSE(this->service.CheckExistRecordOnAdd(7)) << "rows of others";
    this->stage(u"host_name()"_s, u"-@@SPID"_s, 7, u"Q"_s);
    EXPECT_TRUE(this->service.CheckExistRecordOnAdd(7));
}

TYPED_TEST(DocumentServiceTest, FailuresAreReportedUnderTheNamesThatSupportKnows) {
    this->warehouse.server.kill();
    qint16 returned = 99;
    QString& reason = this->message;
    EXPECT_EQ(this->service.GetDocNum(1), -1);
    EXPECT_FALSE(this->service.ClearBarCodeOnTemp(7, 0, u"P"_s, u"I"_s));
    EXPECT_FALSE(this->service.LoadParamFormLocationChange(1, 1, this->line));
    EXPECT_FALSE(this->service.ChangeLocationOnAddSur(7, 1, 1));
    EXPECT_FALSE(this->service.AddSurOnMag(7, u"P"_s, u"I"_s, returned, reason));
    EXPECT_FALSE(this->service.AddSurOnLocation(1, 1, u"a"_s, u"b"_s, 7, u"I"_s, reason));
    EXPECT_FALSE(this->service.CheckExistRecordOnAdd(7));
    EXPECT_TRUE(this->service.EcexProcedure(u"select 1"_s)) << "says nothing about the failure";
    EXPECT_EQ(this->service.rows().State(), 0);
    EXPECT_EQ(reason, u"before"_s);
    EXPECT_EQ(returned, 99);
    EXPECT_EQ(this->titles(),
              this->reports(reportName(this->service),
                            {u"GetDocNum"_s, u"ClearBarCodeOnTemp"_s, u"LoadParamFormLocationChange"_s,
                             u"ChangeLocationOnAddSur"_s, u"AddSurOnMag"_s, u"AddSurOnLocation"_s,
                             u"CheckExistRecordOnAdd"_s, u"EcexProcedure"_s}));
    this->expectedMessages = 8;
}

TYPED_TEST(DocumentServiceTest, AServerThatDiesInsideACallIsAFailureAndNoRefusal) {
    qint16 returned = 99;
    bool booked = true;
    this->expectDeathInside(
        ToBuffer, [&] { booked = this->service.AddSurOnMag(7, u"P"_s, u"I"_s, returned, this->message); });
    EXPECT_FALSE(booked);
    EXPECT_EQ(returned, 99);
    EXPECT_EQ(this->message, u"before"_s);
    EXPECT_EQ(this->titles(), this->reports(reportName(this->service), {u"AddSurOnMag"_s}));
    this->expectedMessages = 1;
}

}  // namespace
}  // namespace regalon
