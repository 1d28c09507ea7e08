// regalon-stock as scripts use it.

#include "support/LocalWarehouse.h"

#include <QFile>
#include <QProcess>
#include <QRegularExpression>

#include <gtest/gtest.h>

namespace regalon::test {
namespace {

using namespace Qt::StringLiterals;

enum Status { Done = 0, Refused = 1, WrongArguments = 2, Failed = 3 };

struct Outcome {
    int status;
    QString output;
    QString error;

    /// Values of the lines "name: value" of a name.
    QStringList values(const QString& name) const {
        QStringList found;
        for (const QString& line : output.split(u'\n')) {
            if (line.startsWith(name + u": "_s))
                found.append(line.mid(name.size() + 2));
        }
        return found;
    }
};

Outcome finish(QProcess& process, const QString& input) {
    process.write(input.toUtf8());
    process.closeWriteChannel();
    if (!process.waitForFinished(60000))
        return {-1, QString(), u"it did not end"_s};
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

Outcome runProgram(const QString& name, const QStringList& arguments, const QString& input = QString()) {
    QProcess process;
    process.start(QStringLiteral(REGALON_BINARY_DIR "/bin/") + name, arguments);
    return finish(process, input);
}

Outcome runStock(const QStringList& arguments, const QString& input = QString()) {
    return runProgram(u"regalon-stock"_s, arguments, input);
}

class StockProgram : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(warehouse.start()) << qPrintable(warehouse.why());
        const Outcome written = runProgram(u"regalon-connect"_s, {warehouse.connectFile()},
                                           u"Login:%1\nHaslo:%2\nServer:%3\nBaza:%4\n"_s.arg(
                                               LocalWarehouse::login(), LocalWarehouse::password(),
                                               warehouse.server(), LocalWarehouse::database()));
        ASSERT_EQ(written.status, Done) << qPrintable(written.error);
    }
    Outcome run(const QStringList& words) { return runStock(QStringList(warehouse.connectFile()) + words); }
    Outcome feed(const QString& script, const QStringList& options = {}) {
        return runStock(options + QStringList(warehouse.connectFile()), script);
    }
    /// Stages a package of goods-in of order 240113.
    static QStringList stagingOf(const QString& user, const QString& DocNum = u"240113"_s) {
        return {u"clsMagSurImput.AddBarCodeOnTemp"_s,
                u"1113"_s,
                DocNum,
                u"0"_s,
                u"2024240113000001"_s,
                u"300"_s,
                user,
                u"1"_s,
                u"-1"_s,
                u"N"_s,
                u"GR-PP-001"_s,
                u"P"_s,
                u"I"_s};
    }
    QString writeScript(const QString& text) {
        QFile file(warehouse.folder() + u"/script"_s);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text.toUtf8());
        return file.fileName();
    }
    /// Number of calls and statements that are not the program's own of a login.
    qsizetype traced() const { return warehouse.entries().size(); }

    LocalWarehouse warehouse;
};

TEST(StockProgramHelp, ListsEveryOperationInTheOrderOfItsSlots) {
    const Outcome outcome = runStock({u"--help"_s});
    EXPECT_EQ(outcome.status, Done);
    const auto slotsOf = [&](const QString& className) {
        QStringList names;
        auto found =
            QRegularExpression(u"^  %1\\.(\\w+)"_s.arg(className), QRegularExpression::MultilineOption)
                .globalMatch(outcome.output);
        while (found.hasNext())
            names.append(found.next().captured(1));
        return names.join(u' ');
    };
    EXPECT_EQ(slotsOf(u"clsMagSurImput"_s),
              u"EcexProcedure EcexProcedureParam AddBarCodeOnTemp GetDocNum ClearBarCodeOnTemp "
              "LoadParamFormLocationChange ChangeLocationOnAddSur AddSurOnMag AddSurOnLocation "
              "ConfirmPropozytionLocation CheckExistRecordOnAdd"_s);
    EXPECT_EQ(slotsOf(u"clsMagSurInputBarCode"_s),
              u"EcexProcedure GetIconLineStatus SetPrintRaportParam GetDocNum GetDocYear GetLastNumberCode "
              "SaveBarCode GetParamItemCode SaveItemCodeParam GetStatusItemCode GetQuantityBarCode"_s);
    EXPECT_EQ(
        slotsOf(u"clsMagSurOutput"_s),
        u"EcexProcedure GetDocNum GetDocNumZlecProd LoadParamFormLocationChange ChangeLocationOnAddSur "
        "AddSurOnMag AddSurOnLocation ConfirmPropozytionLocation CheckExistRecordOnAdd AddBarCodeOnTemp "
        "ClearBarCodeOnTemp GiveOutSurOnMag TestExistsDataOnTmpOutput "
        "TestExistsDataTemPurhcaseAndItemCodeGiveOut TestItemSurOnMag GetDataGivOutListPrint "
        "AddPurchaseOrderTmpGiveOut AddItemCodeTmpGiveOut GetDocEntryCheckedPurchaseOrders "
        "GetDocItemCodeChecked ClearPurchersOrderGiveOut ClearItemCodeGiveOut"_s);
    EXPECT_EQ(slotsOf(u"clsMagSurImputProd"_s),
              u"EcexProcedure AddBarCodeOnTempInputProd ConfirmQuantityBarCodeComBackProcuction GetDocNum "
              "ClearBarCodeOnTemp LoadParamFormLocationChange ChangeLocationOnAddSur AddSurOnMag "
              "AddSurOnLocation ConfirmPropozytionLocation CheckExistRecordOnAdd EcexProcedureParam"_s);
    EXPECT_EQ(slotsOf(u"clsMagSurContent"_s), u"EcexProcedure"_s);
}

TEST(StockProgramHelp, TellsTheArgumentsOfEachOperationAndTheExitStatuses) {
    const QString help = runStock({u"--help"_s}).output;
    for (const QString& line :
         {u"  clsMagSurImput.AddBarCodeOnTemp DocEntry:int32 DocNum:int32 LineNum:int16 BarCode:text "
          "Quantity:number UserSign:int16 NumberCode:int16 LineGrd:int16 DeleteLine:text ItemCode:text "
          "Aplication:text Operation:text -> Result\n"_s,
          u"  clsMagSurInputBarCode.GetLastNumberCode Year:int16 DocNum:int32 DocEntry:int32 LineNum:int16 "
          u"-> "
          "Result\n"_s,
          u"  clsMagSurOutput.GiveOutSurOnMag DocNumProd:int32 DocEntryProd:int32 LineNumProd:int16 "
          "UserSign:int16 UserSignGiveOut:int16 Aplication:text -> Result Message GiveOutDocNum\n"_s,
          u"  clsMagSurOutput.GetDataGivOutListPrint DocNum:int32 -> Result LineNums BarCodes\n"_s,
          u"  clsMagSurImputProd.ConfirmQuantityBarCodeComBackProcuction GiveOutDocNum:int32 "
          "GiveOutLineNum:int16 BarCode:text ItemCode:text Quantity:number Aplication:text Operation:text -> "
          "Result Message ConfirmedQuantity\n"_s,
          u"Exit status: 0 all was done; 1 "_s})
        EXPECT_TRUE(help.contains(line)) << qPrintable(line);
}

TEST(StockProgramArguments, AreRefusedBeforeAnythingIsCalled) {
    const QString file = u"/nonexistent/connect.txt"_s;
    const QString number = u"clsMagSurImput.GetDocNum"_s;
    const QString check = u"clsMagSurImput.CheckExistRecordOnAdd"_s;
    const QString packing = u"clsMagSurInputBarCode.SaveItemCodeParam"_s;
    const QList<std::pair<QStringList, QString>> wrong{
        {{}, u"which connection file"_s},
        {{u"--nonsense"_s}, u"nonsense"_s},
        {{file, u"clsMagSurImput.GetDocNam"_s, u"1"_s},
         u"there is no operation \"clsMagSurImput.GetDocNam\""_s},
        {{file, number}, u"takes 1 arguments, not 0: clsMagSurImput.GetDocNum DocEntry:int32"_s},
        {{file, number, u"1"_s, u"2"_s}, u"takes 1 arguments, not 2"_s},
        {{file, number, u"abc"_s}, u"DocEntry \"abc\" is not a number"_s},
        {{file, number, QString()}, u"DocEntry \"\" is not a number"_s},
        {{file, number, u"1.5"_s}, u"is not a whole number"_s},
        {{file, number, u"2147483648"_s}, u"is out of the range of 32 bits"_s},
        {{file, number, u"-2147483649"_s}, u"is out of the range of 32 bits"_s},
        {{file, number, u"nan"_s}, u"is not a number"_s},
        {{file, number, u"1e999"_s}, u"is not a number"_s},
        {{file, check, u"32768"_s}, u"is out of the range of 16 bits"_s},
        {{file, check, u"-32769"_s}, u"is out of the range of 16 bits"_s},
        {{file, packing, u"a"_s, u"1"_s, u"x"_s, u"1"_s, u"1"_s, u"a"_s, u"1"_s},
         u"SWidth1 \"x\" is not a number"_s},
        {{u"--script"_s, u"/nonexistent/script"_s, file}, u"/nonexistent/script"_s},
        {{u"--script"_s, u"/nonexistent/script"_s, file, number, u"1"_s},
         u"either a script or an operation"_s}};
    for (const auto& [arguments, error] : wrong) {
        const Outcome outcome = runStock(arguments);
        EXPECT_EQ(outcome.status, WrongArguments) << qPrintable(arguments.join(u' '));
        EXPECT_TRUE(outcome.error.startsWith(u"regalon-stock: ") && outcome.error.contains(error))
            << qPrintable(outcome.error);
        EXPECT_EQ(outcome.output, QString());
    }
}

TEST(StockProgramConnection, ThatFailsHasAStatusOfItsOwn) {
    const Outcome outcome = runStock({u"/nonexistent/connect.txt"_s, u"clsMagSurImput.GetDocNum"_s, u"1"_s});
    EXPECT_EQ(outcome.status, Failed);
    EXPECT_TRUE(outcome.error.contains(u"not a connection file")) << qPrintable(outcome.error);
}

TEST_F(StockProgram, AServerThatIsGoneIsAFailureAndNoRefusal) {
    warehouse.stop();
    const Outcome outcome = run({u"clsMagSurImput.GetDocNum"_s, u"1"_s});
    EXPECT_EQ(outcome.status, Failed);
    EXPECT_TRUE(outcome.error.contains(u"no connection to "_s + warehouse.server()))
        << qPrintable(outcome.error);
}

TEST_F(StockProgram, PrintsTheResultAndTheOutputs) {
    const Outcome number = run({u"clsmagsurimput.getdocnum"_s, u"1113"_s});
    EXPECT_EQ(number.status, Done) << qPrintable(number.error);
    EXPECT_EQ(number.output, u"Result: 240113\n"_s);
    EXPECT_EQ(number.error, QString());
    EXPECT_EQ(run({u"clsMagSurOutput.GetDocNum"_s, u"-1"_s}).output, u"Result: 0\n"_s);
    EXPECT_EQ(
        run({u"clsMagSurInputBarCode.GetParamItemCode"_s, u"BL-GW-030"_s}).output,
        u"Result: True\nBlength1: 1700\nBwidth1: 1000\nBHeight1: 160\nPurPackUn: 520\nPurPackMsr: pakiet\n"_s);
    EXPECT_EQ(run({u"clsMagSurContent.EcexProcedure"_s,
                   u"select DocEntry, 1.5 as Half, NULL as Nothing from OPOR where DocEntry = 1113"_s})
                  .output,
              u"Result: True\nColumns: DocEntry\tHalf\tNothing\nRow: 1113\t1.5\tNULL\n"_s);
    EXPECT_EQ(
        run({u"clsMagSurInputBarCode.SetPrintRaportParam"_s,
             u"select 7 as RaportCode, N'Mała' as RaportName, N'M.odt' as RaportFile, N'' as RaporFileWath"_s})
            .output,
        u"lblRaportName: Szablon wydruku: Mała\ntxtRaportFile: M.odt\ntxtRaportCode: 7\n"_s);
    EXPECT_EQ(run({u"clsMagSurOutput.GetDocItemCodeChecked"_s, u"2"_s}).status, Failed)
        << "true after a failure, which the status tells";
}

TEST_F(StockProgram, ARefusalPrintsTheProceduresMessage) {
    const Outcome outcome = run({u"clsMagSurImput.AddSurOnMag"_s, u"2"_s, u"P"_s, u"I"_s});
    EXPECT_EQ(outcome.status, Refused);
    EXPECT_EQ(outcome.values(u"Result"_s), QStringList(u"False"_s));
    const QString reason = outcome.values(u"Message"_s).value(0);
    EXPECT_NE(reason, QString());
    EXPECT_EQ(outcome.error, u"regalon-stock: clsMagSurImput.AddSurOnMag: %1\n"_s.arg(reason));
    EXPECT_EQ(run({u"clsMagSurImput.CheckExistRecordOnAdd"_s, u"2"_s}).status, Refused);
}

TEST_F(StockProgram, ARefusalTellsTheMessageThatIsNoOutput) {
    const Outcome package = run(stagingOf(u"2"_s, u"240114"_s));
    EXPECT_EQ(package.status, Refused);
    EXPECT_EQ(package.output, u"Result: False\n"_s);
    EXPECT_EQ(
        package.error,
        u"regalon-stock: clsMagSurImput.AddBarCodeOnTemp: Zamówienie o identyfikatorze 1113 ma numer 240113, a nie 240114.\n"_s);

    const QString save =
        u"clsMagSurInputBarCode.SaveBarCode 2024 240113 1113 1 %1 2024240113010001 2 GR-AB-003\n"_s;
    const Outcome code = feed(save.arg(1) + save.arg(2));
    EXPECT_EQ(code.status, Refused);
    EXPECT_EQ(code.values(u"Result"_s), QStringList({u"True"_s, u"False"_s}));
    EXPECT_EQ(code.error,
              u"regalon-stock: clsMagSurInputBarCode.SaveBarCode: Kod „2024240113010001” jest "
              "już nadany.\n"_s);
}

TEST_F(StockProgram, ARefusalWithoutAMessageDoesNotTellThatOfAnEarlierCall) {
    const Outcome outcome =
        feed(stagingOf(u"2"_s, u"240114"_s).join(u' ') + u"\nclsMagSurImput.CheckExistRecordOnAdd 2\n"_s,
             {u"-k"_s});
    EXPECT_TRUE(outcome.error.endsWith(u"\nregalon-stock: clsMagSurImput.CheckExistRecordOnAdd: False\n"))
        << qPrintable(outcome.error);
}

TEST_F(StockProgram, AWarningThatIsNoOutputIsToldAndIsASuccess) {
    QProcess other;
    other.start(QStringLiteral(REGALON_BINARY_DIR "/bin/regalon-stock"), {warehouse.connectFile()});
    other.write((stagingOf(u"3"_s).join(u' ') + u'\n').toUtf8());
    ASSERT_TRUE(other.waitForReadyRead(30000));
    const Outcome outcome = run(stagingOf(u"2"_s));
    EXPECT_EQ(outcome.status, Done);
    EXPECT_EQ(outcome.output, u"Result: True\n"_s);
    EXPECT_TRUE(outcome.error.startsWith(u"regalon-stock: clsMagSurImput.AddBarCodeOnTemp: ") &&
                outcome.error.contains(u"2024240113000001"))
        << qPrintable(outcome.error);
    EXPECT_EQ(finish(other, QString()).error, QString()) << "who came first was not warned";
}

TEST_F(StockProgram, LineEndsAndTabsOfAValueKeepToTheirLineAndCell) {
    EXPECT_EQ(run({u"clsMagSurContent.EcexProcedure"_s,
                   u"select N'a\tb' as Tab, N'c\r\nd\ne' as Ends, N'f\\g' as Slash"_s})
                  .output,
              u"Result: True\nColumns: Tab\tEnds\tSlash\nRow: a\\tb\tc\\nd\\ne\tf\\\\g\n"_s);
    ASSERT_EQ(run({u"clsMagSurContent.EcexProcedure"_s,
                   u"create procedure site_Refuse @ErrDesc nvarchar(250) output as begin set @ErrDesc = "
                   "N'one' + nchar(13) + nchar(10) + N'two'; return 1; end"_s})
                  .status,
              Done);
    const Outcome refused = run({u"clsMagSurImput.EcexProcedureParam"_s, u"exec site_Refuse NULL"_s});
    EXPECT_EQ(refused.output, u"Result: False\nMessage: one\\ntwo\n"_s);
    EXPECT_EQ(refused.error, u"regalon-stock: clsMagSurImput.EcexProcedureParam: one\\ntwo\n"_s);
}

TEST_F(StockProgram, AFailureGoesToStandardErrorUnderTheNameThatSupportKnows) {
    const Outcome outcome = run({u"clsMagSurImput.EcexProcedure"_s, u"select * from nowhere"_s});
    EXPECT_EQ(outcome.status, Failed);
    EXPECT_EQ(outcome.output, u"Result: True\n"_s);
    EXPECT_TRUE(outcome.error.startsWith(u"Error - clsMagSurInput [EcexProcedure]: -2147217900 "))
        << qPrintable(outcome.error);
}

TEST_F(StockProgram, AWholeGoodsInByScript) {
    const Outcome outcome = feed(
        u"# goods-in of order 240113\n\n"
        "clsMagSurImput.ClearBarCodeOnTemp 2 0 P I\n"
        "clsMagSurImput.GetDocNum 1113\n"
        "clsMagSurImput.AddBarCodeOnTemp 1113 240113 0 2024240113000001 300,5 2 1 -1 N GR-PP-001 P I\n"
        "clsMagSurImput.CheckExistRecordOnAdd 2\n"
        "clsMagSurImput.ConfirmPropozytionLocation 2 P I\n"
        "clsMagSurImput.EcexProcedureParam \"exec Kolv_mag_Watch_Prop_Location 2,N'P',N'I',0,NULL\"\n"
        "clsMagSurImput.AddSurOnMag 2 P I\n"
        "clsMagSurContent.EcexProcedure \"select BarCode, Quantity, Active, Rank from Kolv_Mag_BarCode_Sur "
        "where "
        "BarCode = N'2024240113000001'\"\n"
        "clsMagSurImput.ClearBarCodeOnTemp 2 0 P I\n"_s);
    EXPECT_EQ(outcome.status, Done) << qPrintable(outcome.error);
    EXPECT_EQ(outcome.values(u"Row"_s), QStringList(u"2024240113000001\t300.5\tY\tNULL"_s));
    EXPECT_EQ(outcome.values(u"ReturnValue"_s), QStringList(u"0"_s));

    // The next run reads where the package may go, and puts it there.
    const Outcome there =
        run({u"clsMagSurContent.EcexProcedure"_s,
             u"select top 1 Rank,Stand,Shelf,Location from "
             "dbo.kolv_mag_fn_Item_Target(N'GR-PP-001') where Verdict = 1 and FreeVolume > 1000 "
             "and FreeWeight > 500 order by FreeVolume desc"_s});
    const QStringList place = there.values(u"Row"_s).value(0).split(u'\t');
    ASSERT_EQ(place.size(), 4) << qPrintable(there.error);
    const QString label = u"72607031%1%2%3%4"_s.arg(place[0].toInt(), 2, 10, QLatin1Char('0'))
                              .arg(place[1].toInt(), 2, 10, QLatin1Char('0'))
                              .arg(place[2], place[3]);
    const Outcome put = run({u"clsMagSurImput.AddSurOnLocation"_s, u"1113"_s, u"0"_s, u"2024240113000001"_s,
                             label, u"2"_s, u"I"_s});
    EXPECT_EQ(put.status, Done) << qPrintable(put.error);
    EXPECT_EQ(run({u"clsMagSurContent.EcexProcedure"_s,
                   u"select Rank,Stand,Shelf,Location from Kolv_Mag_BarCode_Sur where BarCode = "
                   "N'2024240113000001'"_s})
                  .values(u"Row"_s),
              QStringList(place.join(u'\t')));
}

TEST_F(StockProgram, AScriptFileIsReadWholeBeforeItsFirstLineRuns) {
    const QString script = writeScript(u"clsMagSurImput.GetDocNum 1113\n\nclsMagSurImput.GetDocNum x\n"_s);
    warehouse.clearTrace();
    const Outcome outcome = runStock({u"--script"_s, script, warehouse.connectFile()});
    EXPECT_EQ(outcome.status, WrongArguments);
    EXPECT_TRUE(outcome.error.contains(u"line 3: ")) << qPrintable(outcome.error);
    EXPECT_EQ(outcome.output, QString());
    EXPECT_EQ(traced(), 0);
}

TEST_F(StockProgram, EveryUsageLineOfTheHelpRunsAsItStands) {
    const QString script = writeScript(u"clsMagSurImput.GetDocNum 1113\n"_s);
    auto usage =
        QRegularExpression(u"^(?:usage:)? +regalon-stock (.*)$"_s, QRegularExpression::MultilineOption)
            .globalMatch(runStock({u"--help"_s}).output);
    int lines = 0;
    for (; usage.hasNext(); ++lines) {
        QString line = usage.next().captured(1);
        line.remove(QRegularExpression(u"[\\[\\]]|\\.\\.\\."_s));
        QStringList words = line.split(u' ', Qt::SkipEmptyParts);
        const QHash<QString, QString> meant{{u"FILE"_s, warehouse.connectFile()},
                                            {u"SCRIPT"_s, script},
                                            {u"OPERATION"_s, u"clsMagSurImput.GetDocNum"_s},
                                            {u"ARGUMENT"_s, u"1113"_s}};
        for (QString& word : words)
            word = meant.value(word, word);
        const Outcome outcome = runStock(words);
        EXPECT_EQ(outcome.status, Done) << qPrintable(line + u": "_s + outcome.error);
        EXPECT_EQ(outcome.output, u"Result: 240113\n"_s);
    }
    EXPECT_EQ(lines, 2);
}

TEST_F(StockProgram, TheExampleOfTheDocumentRuns) {
    QFile file(QStringLiteral(REGALON_SOURCE_DIR "/docs/regalon-stock.md"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QString document = QString::fromUtf8(file.readAll());
    const auto block =
        QRegularExpression(u"^    # goods-in.*\\n(?:    .*\\n)+"_s, QRegularExpression::MultilineOption)
            .match(document);
    ASSERT_TRUE(block.hasMatch());
    const Outcome outcome = feed(block.captured(0));
    EXPECT_EQ(outcome.status, Done) << qPrintable(outcome.error);
    EXPECT_EQ(outcome.error, QString());
    EXPECT_EQ(outcome.values(u"ReturnValue"_s), QStringList(u"0"_s));
    const QString put =
        QRegularExpression(u"AddSurOnLocation \\d+ \\d+ \\d+ \\d{8}(\\d{6})"_s).match(document).captured(1);
    EXPECT_EQ(run({u"clsMagSurContent.EcexProcedure"_s,
                   u"select right(N'0' + cast(Rank as nvarchar(2)), 2) + right(N'0' + cast(Stand as "
                   "nvarchar(2)), 2) + cast(Shelf as nvarchar(1)) + cast(Location as nvarchar(1)) from "
                   "Kolv_Mag_BarCode_Sur where BarCode = N'2024240113000001'"_s})
                  .values(u"Row"_s),
              QStringList(put));
}

TEST_F(StockProgram, AScriptEndsAtTheFirstRefusalUnlessItIsToKeepGoing) {
    const QString text = u"clsMagSurImput.CheckExistRecordOnAdd 2\nclsMagSurImput.GetDocNum 1113\n"_s;
    EXPECT_EQ(feed(text).values(u"Result"_s), QStringList(u"False"_s));
    EXPECT_EQ(feed(text).status, Refused);
    for (const QString& option : {u"-k"_s, u"--keep-going"_s}) {
        const Outcome outcome = runStock({option, u"--script"_s, writeScript(text), warehouse.connectFile()});
        EXPECT_EQ(outcome.values(u"Result"_s), QStringList({u"False"_s, u"240113"_s}));
        EXPECT_EQ(outcome.status, Refused);
    }
    const Outcome failed =
        feed(u"clsMagSurContent.EcexProcedure nonsense\nclsMagSurImput.GetDocNum 1113\n"_s, {u"-k"_s});
    EXPECT_EQ(failed.values(u"Result"_s), QStringList(u"True"_s)) << "a failure ends it all the same";
    EXPECT_EQ(failed.status, Failed);
}

TEST_F(StockProgram, AnswersEachLineOfAConversationAsItComes) {
    QProcess process;
    process.start(QStringLiteral(REGALON_BINARY_DIR "/bin/regalon-stock"), {warehouse.connectFile()});
    process.write("clsMagSurImput.GetDocNum 1113\n");
    QByteArray answer;
    while (!answer.endsWith('\n') && process.waitForReadyRead(30000))
        answer += process.readAllStandardOutput();
    EXPECT_EQ(answer, QByteArray("Result: 240113\n"));
    const Outcome end = finish(process, u"clsMagSurImput.GetDocNum\n"_s);
    EXPECT_EQ(end.status, WrongArguments);
    EXPECT_TRUE(end.error.contains(u"line 2: ")) << qPrintable(end.error);
}

}  // namespace
}  // namespace regalon::test
