// What the service of barcodes sends and reads.

#include "stock/ServiceContracts.h"
#include "stock/clsMagSurInputBarCode.h"

#include <QLabel>
#include <QLineEdit>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;
using namespace test::contracts;

class ClsMagSurInputBarCode : public test::ServiceDesk {
protected:
    bool save() { return service.SaveBarCode(2026, 80000, 70000, 3, 12, u"5901"_s, 7, u"M-1"_s); }
    bool savePacking(double PurPackUn = 2.5) {
        return service.SaveItemCodeParam(u"M-1"_s, 1.5, 2, 3.25, PurPackUn, u"worek"_s, 7);
    }
    /// Puts a function in the place of the real one, which answers this.
    void answerFunction(const QString& name, const QString& parameters, const QString& value) {
        run(u"drop function if exists "_s + name);
        run(u"create function %1 (%2) returns decimal(19,6) as begin return %3; end"_s.arg(name, parameters,
                                                                                           value));
    }
    void answerStatus(const QString& value) {
        answerFunction(u"kolv_mag_fn_Status_ItemCode"_s, u"@a int, @b int, @c nvarchar(20)"_s, value);
    }
    void answerQuantity(const QString& value) {
        answerFunction(u"kolv_mag_fn_Quantity_BarCode"_s, u"@a int, @b smallint"_s, value);
    }

    clsMagSurInputBarCode service{warehouse.context};
    PackingData packing{9, 9, 9, 9, u"before"_s};
};

TEST_F(ClsMagSurInputBarCode, RunsATextAndReadsTheNumberOfAPurchaseOrder) {
    run(u"insert into OPOR (DocEntry,DocNum) values (70000,80000)"_s);
    EXPECT_EQ(service.GetDocNum(70000), 80000);
    EXPECT_TRUE(service.EcexProcedure(u"select 1 as a"_s));
    EXPECT_EQ(warehouse.batches(), QStringList({u" select DocNum from OPOR(nolock) where DocEntry = 70000"_s,
                                                u"select 1 as a"_s}));
}

TEST_F(ClsMagSurInputBarCode, ReadsTheYearOfAPurchaseOrder) {
    run(u"insert into OPOR (DocEntry,DocDate) values (70000,'20241231'),(3,NULL)"_s);
    EXPECT_EQ(service.GetDocYear(70000), 2024);
    EXPECT_EQ(warehouse.batches(),
              QStringList(u" select DocDate from OPOR(nolock) where DocEntry = 70000"_s));
    EXPECT_EQ(service.GetDocYear(3), 0) << "no date";
    EXPECT_EQ(service.GetDocYear(4), 0) << "no order";
}

TEST_F(ClsMagSurInputBarCode, TheStatusOfALineIsWhatTheProcedureReturns) {
    for (const int status : {4, 0, -1, -7}) {
        refuse(LineStatus, status, u"Otwarta"_s);
        EXPECT_EQ(service.GetIconLineStatus(70000, 3, 7, message), status);
        EXPECT_EQ(message, u"Otwarta"_s);
        EXPECT_EQ(sent(LineStatus), QStringList({u"@DocEntry=70000"_s, u"@Linenum=3"_s, u"@UserSign=7"_s}));
        warehouse.server.clearTrace();
    }
}

TEST_F(ClsMagSurInputBarCode, ShowsTheActiveTemplateOnAForm) {
    QWidget form;
    QLabel name(&form);
    name.setObjectName(u"lblRaportName"_s);
    QLineEdit file(&form);
    file.setObjectName(u"txtRaportFile"_s);
    QLineEdit code(&form);
    code.setObjectName(u"txtRaportCode"_s);
    const QString sql =
        u"select 7 as RaportCode, N'Mała' as RaportName, N'M.odt' as RaportFile, N'' as RaporFileWath"_s;
    service.SetPrintRaportParam(&form, sql);
    EXPECT_EQ(warehouse.batches(), QStringList(sql));
    EXPECT_EQ(name.text(), u"Szablon wydruku: Mała"_s);
    EXPECT_EQ(file.text(), u"M.odt"_s);
    EXPECT_EQ(code.text(), u"7"_s);

    code.setObjectName(u"other"_s);
    service.SetPrintRaportParam(&form, sql);
    EXPECT_EQ(titles(), reports(u"clsMagSurInputBarCode"_s, {u"SetPrintRaportParam"_s}))
        << "a form without one of the three";
    expectedMessages = 1;
}

TEST_F(ClsMagSurInputBarCode, TheLastNumberCrossesNumberAndEntryOfTheDocument) {
    answer(LastNumber, 41);
    EXPECT_EQ(service.GetLastNumberCode(2026, 80000, 70000, 3), 41);
    EXPECT_EQ(sent(LastNumber),
              QStringList({u"@Year=2026"_s, u"@DocEntry=70000"_s, u"@DocNum=80000"_s, u"@LineNum=3"_s}));
    answer(LastNumber, 40000);
    EXPECT_EQ(service.GetLastNumberCode(2026, 80000, 70000, 3), 40000) << "beyond 16 bits";
}

TEST_F(ClsMagSurInputBarCode, SavingABarCodeCrossesNumberAndEntryOfTheDocument) {
    answer(SaveCode, 0);
    EXPECT_TRUE(save());
    EXPECT_EQ(sent(SaveCode),
              QStringList({u"@Year=2026"_s, u"@DocEntry=70000"_s, u"@DocNum=80000"_s, u"@LineNum=3"_s,
                           u"@NumberCode=12"_s, u"@BarCode=5901"_s, u"@UserSign=7"_s, u"@ItemCode=M-1"_s}));
    EXPECT_EQ(warehouse.server.entries().last().text, u"dbo.Kolv_mag_SaveBarCode_Sur"_s);
}

TEST_F(ClsMagSurInputBarCode, AReturnOfMinusOneIsARefusalOfABarCodeAndOfPackingData) {
    for (const int refused : {-1, 1}) {
        answer(SaveCode, refused);
        EXPECT_FALSE(save()) << refused;
        answer(SavePacking, refused);
        EXPECT_FALSE(savePacking()) << refused;
    }
}

TEST_F(ClsMagSurInputBarCode, SavesThePackingDataOfAMaterial) {
    answer(SavePacking, 0);
    EXPECT_TRUE(savePacking());
    EXPECT_EQ(sent(SavePacking),
              QStringList({u"@ItemCode=M-1"_s, u"@SLength1=1.500000"_s, u"@SWidth1=2.000000"_s,
                           u"@BHeight1=3.250000"_s, u"@PurPackUn=2.500000"_s, u"@PurPackMsr=worek"_s,
                           u"@UserSign=7"_s}));
    EXPECT_EQ(warehouse.server.entries().last().text, u"dbo.Kolv_mag_SaveItemCodeParam_Sur"_s);
}

TEST_F(ClsMagSurInputBarCode, ReadsThePackingDataOfAMaterial) {
    run(u"insert into OITM (ItemCode,Blength1,Bwidth1,BHeight1,PurPackUn,PurPackMsr) values "
        "(N'O''Brien',1.5,2,3.25,40,N'worek'),(N'N',NULL,NULL,NULL,NULL,NULL)"_s);
    EXPECT_TRUE(service.GetParamItemCode(u"O'Brien"_s, packing));
    EXPECT_EQ(packing.Blength1, 1.5);
    EXPECT_EQ(packing.Bwidth1, 2);
    EXPECT_EQ(packing.BHeight1, 3.25);
    EXPECT_EQ(packing.PurPackUn, 40);
    EXPECT_EQ(packing.PurPackMsr, u"worek"_s);
    EXPECT_EQ(warehouse.batches(), QStringList(u"select Blength1,Bwidth1,BHeight1,PurPackUn,PurPackMsr from "
                                               "OITM(nolock) where ItemCode = N'O''Brien'"_s));
    EXPECT_TRUE(service.GetParamItemCode(u"N"_s, packing));
    EXPECT_EQ(packing.Blength1, 0) << "NULL";
    EXPECT_EQ(packing.PurPackUn, 0) << "NULL";
    EXPECT_EQ(packing.PurPackMsr, QString()) << "NULL";
}

TEST_F(ClsMagSurInputBarCode, AnUnknownMaterialLeavesThePackingDataAndHasNoStatus) {
    EXPECT_FALSE(service.GetParamItemCode(u"?"_s, packing));
    EXPECT_EQ(packing.PurPackMsr, u"before"_s);
    answerStatus(u"NULL"_s);
    EXPECT_EQ(service.GetStatusItemCode(u"?"_s), -1);
    EXPECT_FALSE(service.GetParamItemCode({}, packing)) << "NULL equals nothing";
}

TEST_F(ClsMagSurInputBarCode, AFractionOfThePurchasePackageComesBackRoundedToTheEvenNumber) {
    for (const auto& [saved, read] : {std::pair{"2.5", 2}, {"3.5", 4}, {"-2.5", -2}, {"2.51", 3}}) {
        run(u"delete from OITM"_s);
        run(u"insert into OITM (ItemCode,PurPackUn) values (N'M-1',%1)"_s.arg(QLatin1String(saved)));
        EXPECT_TRUE(service.GetParamItemCode(u"M-1"_s, packing));
        EXPECT_EQ(packing.PurPackUn, read) << saved;
    }
}

TEST_F(ClsMagSurInputBarCode, APurchasePackageBeyondSixteenBitsIsAnOverflow) {
    run(u"insert into OITM (ItemCode,Blength1,PurPackUn) values (N'M-1',5,32768)"_s);
    EXPECT_FALSE(service.GetParamItemCode(u"M-1"_s, packing));
    EXPECT_EQ(packing.Blength1, 0) << "the defaults";
    EXPECT_EQ(packing.PurPackMsr, QString());
    EXPECT_TRUE(messages.last().Text.startsWith(u"6\r\n")) << qPrintable(messages.last().Text);
    expectedMessages = 1;
}

TEST_F(ClsMagSurInputBarCode, ReadsTheStatusOfAMaterial) {
    answerStatus(u"@a * 100 + @b * 10 + len(@c)"_s);
    EXPECT_EQ(service.GetStatusItemCode(u"O'B"_s), -107);
    EXPECT_EQ(warehouse.batches(),
              QStringList(u"select dbo.kolv_mag_fn_Status_ItemCode(-1,-1,N'O''B') As Status"_s));
}

TEST_F(ClsMagSurInputBarCode, ReadsTheQuantityUnderBarCodes) {
    answerQuantity(u"@a + @b / 10.0"_s);
    EXPECT_EQ(service.GetQuantityBarCode(70000, 25), 70002) << "a half, to the even number";
    EXPECT_EQ(warehouse.batches(),
              QStringList(u"select dbo.kolv_mag_fn_Quantity_BarCode(70000,25) As Status"_s));
    answerQuantity(u"NULL"_s);
    EXPECT_EQ(service.GetQuantityBarCode(1, 1), 0);
}

TEST_F(ClsMagSurInputBarCode, FailuresAnswerWhatEachOperationHeldAndItsReportName) {
    warehouse.server.kill();
    EXPECT_EQ(service.GetIconLineStatus(1, 1, 7, message), -1);
    service.SetPrintRaportParam(nullptr, u"select 1"_s);
    EXPECT_EQ(service.GetDocNum(1), -1);
    EXPECT_EQ(service.GetDocYear(1), -1);
    EXPECT_EQ(service.GetLastNumberCode(1, 1, 1, 1), -1);
    EXPECT_TRUE(save()) << "a failure is no refusal";
    EXPECT_FALSE(service.GetParamItemCode(u"a"_s, packing));
    EXPECT_EQ(packing.PurPackMsr, QString());
    EXPECT_TRUE(savePacking()) << "a failure is no refusal";
    EXPECT_EQ(service.GetStatusItemCode(u"a"_s), -1);
    EXPECT_EQ(service.GetQuantityBarCode(1, 1), 0);
    EXPECT_TRUE(service.EcexProcedure(u"select 1"_s));
    EXPECT_EQ(message, u"before"_s);
    EXPECT_EQ(titles(), reports(u"clsMagSurInputBarCode"_s,
                                {u"GetIconLineStatus"_s, u"SetPrintRaportParam"_s, u"GetDocNum"_s,
                                 u"GetDocYear"_s, u"GetLastNumberCode"_s, u"SaveBarCode"_s,
                                 u"GetParamItemCode"_s, u"SaveItemCodeParam"_s, u"GetParamItemCode"_s,
                                 u"GetQuantityBarCode"_s, u"EcexProcedure"_s}));
    expectedMessages = 11;
}

TEST_F(ClsMagSurInputBarCode, AServerThatDiesInsideASaveLeavesItTrue) {
    bool saved = false;
    expectDeathInside(SaveCode, [&] { saved = save(); });
    EXPECT_TRUE(saved) << "a failure is no refusal";
    EXPECT_EQ(titles(), reports(u"clsMagSurInputBarCode"_s, {u"SaveBarCode"_s}));
    expectedMessages = 1;
}

}  // namespace
}  // namespace regalon
