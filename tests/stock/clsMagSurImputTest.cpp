// What the service of goods-in sends, and the return of manufacturing, which stages in the same way.

#include "stock/ServiceContracts.h"
#include "stock/clsMagSurContent.h"
#include "stock/clsMagSurImput.h"
#include "stock/clsMagSurImputProd.h"

namespace regalon {
namespace {

using namespace Qt::StringLiterals;
using namespace test::contracts;

const OrderPackage kPackage{.DocEntry = 70000,
                            .DocNum = 80000,
                            .LineNum = 3,
                            .BarCode = u"59 01"_s,
                            .Quantity = 2.5,
                            .UserSign = 7,
                            .NumberCode = 12,
                            .LineGrd = -1,
                            .DeleteLine = u"N"_s,
                            .ItemCode = u"ŻELAZO'1"_s,
                            .Aplication = u"P"_s,
                            .Operation = u"I"_s};

const QStringList kPackageSent{u"@DocEntry=70000"_s,    u"@DocNum=80000"_s,  u"@LineNum=3"_s,
                               u"@BarCode=59 01"_s,     u"@NumberCode=12"_s, u"@Quantity=2.500000"_s,
                               u"@UserSign=7"_s,        u"@LineGrd=-1"_s,    u"@DeleteLine=N"_s,
                               u"@ItemCode=ŻELAZO'1"_s, u"@Aplication=P"_s,  u"@Operation=I"_s};

class ClsMagSurImput : public test::ServiceDesk {
protected:
    clsMagSurImput service{warehouse.context};
};

class ClsMagSurImputProd : public test::ServiceDesk {
protected:
    clsMagSurImputProd service{warehouse.context};
    double confirmed = 99;
    const ReturnedPackage returned{.GiveOutDocNum = 70000,
                                   .GiveOutLineNum = 3,
                                   .BarCode = u"5901"_s,
                                   .ItemCode = u"M-1"_s,
                                   .Quantity = 0.125,
                                   .Aplication = u"P"_s,
                                   .Operation = u"R"_s};
};

TEST_F(ClsMagSurImput, StagesAPackageOfAnOrder) {
    answer(AddTemp, 0);
    EXPECT_TRUE(service.AddBarCodeOnTemp(kPackage));
    EXPECT_EQ(sent(AddTemp), kPackageSent);
}

TEST_F(ClsMagSurImput, AReturnOfMinusOneIsAStagedPackageAndAboveZeroARefusal) {
    refuse(AddTemp, -1, u"Uwaga"_s);
    EXPECT_TRUE(service.AddBarCodeOnTemp(kPackage));
    refuse(AddTemp, 1, u"Nie"_s);
    EXPECT_FALSE(service.AddBarCodeOnTemp(kPackage));
}

TEST_F(ClsMagSurImput, HasLocationsProposed) {
    refuse(Confirm, 1, u"Brak miejsca"_s);
    EXPECT_FALSE(service.ConfirmPropozytionLocation(7, u"P"_s, u"I"_s, message));
    EXPECT_EQ(message, u"Brak miejsca"_s);
    EXPECT_EQ(sent(Confirm), QStringList({u"@UserSign=7"_s, u"@Aplication=P"_s, u"@Operation=I"_s}));
}

TEST_F(ClsMagSurImput, RunsAReadyTextByPosition) {
    answer(Confirm, 0, u"set @ErrDesc = @Operation + @Aplication + cast(@UserSign as nvarchar(9));"_s);
    EXPECT_TRUE(
        service.EcexProcedureParam(u"exec Kolv_mag_Watch_Prop_Location_Confirm N'A,N'B,7"_s, message));
    EXPECT_EQ(message, u" N'AB7"_s) << "the first argument keeps its blank, and its quotes with it";
}

TEST_F(ClsMagSurImput, ATextWithACommaArrivesAsTwoArguments) {
    answer(Confirm, 0, u"set @ErrDesc = @Operation + N'|' + @Aplication;"_s);
    EXPECT_TRUE(service.EcexProcedureParam(u"exec Kolv_mag_Watch_Prop_Location_Confirm N'a,b',7"_s, message));
    EXPECT_EQ(message, u" N'a|b'"_s);
}

TEST_F(ClsMagSurImput, AQuantityThatTheServerCannotHoldIsAFailure) {
    answer(AddTemp, 0);
    OrderPackage package = kPackage;
    package.Quantity = 1e30;
    EXPECT_FALSE(service.AddBarCodeOnTemp(package));
    EXPECT_EQ(titles(), reports(u"clsMagSurInput"_s, {u"AddBarCodeOnTemp"_s}));
    expectedMessages = 1;
}

TEST_F(ClsMagSurImput, FailuresAreReportedUnderTheNamesThatSupportKnows) {
    warehouse.server.kill();
    EXPECT_FALSE(service.AddBarCodeOnTemp(kPackage));
    EXPECT_FALSE(service.ConfirmPropozytionLocation(7, u"P"_s, u"I"_s, message));
    EXPECT_FALSE(service.EcexProcedureParam(u"exec a 1"_s, message));
    EXPECT_EQ(message, u"before"_s);
    EXPECT_EQ(titles(), reports(u"clsMagSurInput"_s, {u"AddBarCodeOnTemp"_s, u"ConfirmPropozytionLocation"_s,
                                                      u"EcexProcedureParam"_s}));
    expectedMessages = 3;
}

TEST_F(ClsMagSurImputProd, StagesAPackageAsAGoodsInDoes) {
    answer(AddTempReturned, -1);
    EXPECT_TRUE(service.AddBarCodeOnTempInputProd(kPackage));
    EXPECT_EQ(sent(AddTempReturned), kPackageSent);
}

TEST_F(ClsMagSurImputProd, AsksHowMuchOfAPackageMayComeBack) {
    answer(ConfirmReturned, 0, u"set @ErrDesc = N'Dobrze'; set @ConfirmedQuantity = 0.12;"_s);
    EXPECT_TRUE(service.ConfirmQuantityBarCodeComBackProcuction(returned, message, confirmed));
    EXPECT_EQ(message, u"Dobrze"_s);
    EXPECT_EQ(confirmed, 0.12);
    EXPECT_EQ(
        sent(ConfirmReturned),
        QStringList({u"@GiveOutDocNum=70000"_s, u"@GiveOutLineNum=3"_s, u"@BarCode=5901"_s,
                     u"@ItemCode=M-1"_s, u"@Quantity=0.125000"_s, u"@Aplication=P"_s, u"@Operation=R"_s}));
}

TEST_F(ClsMagSurImputProd, ARefusedReturnTellsWhyAndWhatTheProcedureLeftAsQuantity) {
    answer(ConfirmReturned, 2, u"set @ErrDesc = N'Za dużo'; set @ConfirmedQuantity = 7.5;"_s);
    EXPECT_FALSE(service.ConfirmQuantityBarCodeComBackProcuction(returned, message, confirmed));
    EXPECT_EQ(message, u"Za dużo"_s);
    EXPECT_EQ(confirmed, 7.5);
}

TEST_F(ClsMagSurImputProd, AReturnOfMinusOneAndOutputsLeftAtNullAreASuccess) {
    answer(ConfirmReturned, -1);
    EXPECT_TRUE(service.ConfirmQuantityBarCodeComBackProcuction(returned, message, confirmed));
    EXPECT_EQ(message, QString());
    EXPECT_EQ(confirmed, 0);
}

TEST_F(ClsMagSurImputProd, HasLocationsProposedAndRunsAReadyText) {
    answer(Confirm, 0);
    EXPECT_TRUE(service.ConfirmPropozytionLocation(7, u"P"_s, u"R"_s, message));
    EXPECT_EQ(sent(Confirm), QStringList({u"@UserSign=7"_s, u"@Aplication=P"_s, u"@Operation=R"_s}));
    EXPECT_TRUE(
        service.EcexProcedureParam(u"exec Kolv_mag_Watch_Prop_Location_Confirm N'A,N'B,7"_s, message));
    EXPECT_EQ(warehouse.calls(Confirm.procedure).last().mid(0, 3).join(u' '), u" N'A B 7"_s);
}

TEST_F(ClsMagSurImputProd, FailuresAreReportedUnderTheNamesThatSupportKnows) {
    warehouse.server.kill();
    EXPECT_FALSE(service.AddBarCodeOnTempInputProd(kPackage));
    EXPECT_FALSE(service.ConfirmQuantityBarCodeComBackProcuction(returned, message, confirmed));
    EXPECT_FALSE(service.ConfirmPropozytionLocation(7, u"P"_s, u"R"_s, message));
    EXPECT_FALSE(service.EcexProcedureParam(u"exec a 1"_s, message));
    EXPECT_EQ(message, u"before"_s);
    EXPECT_EQ(confirmed, 99);
    EXPECT_EQ(titles(), reports(u"clsMagSurInputProd"_s,
                                {u"AddBarCodeOnTempInputProd"_s, u"ConfirmQuantityBarCodeComBackProcuction"_s,
                                 u"ConfirmPropozytionLocation"_s, u"EcexProcedureParam"_s}));
    expectedMessages = 4;
}

class ClsMagSurContent : public test::ServiceDesk {};

TEST_F(ClsMagSurContent, RunsATextUnderItsOwnName) {
    clsMagSurContent service(warehouse.context);
    EXPECT_TRUE(service.EcexProcedure(u"select 5 as a"_s));
    EXPECT_EQ(warehouse.batches(), QStringList(u"select 5 as a"_s));
    EXPECT_EQ(service.rows().Value("a").toInt(), 5);
    warehouse.server.kill();
    EXPECT_TRUE(service.EcexProcedure(u"select 5 as a"_s));
    EXPECT_EQ(service.rows().State(), 0);
    EXPECT_EQ(titles(), reports(u"clsMagSurContent"_s, {u"EcexProcedure"_s}));
    expectedMessages = 1;
}

}  // namespace
}  // namespace regalon
