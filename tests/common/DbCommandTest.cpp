#include "GatewayFixture.h"

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

class DbCommandTest : public GatewayTest {
protected:
    DbParameters& bind(const char* procedure) {
        command.setActiveConnection(connection());
        command.setCommandType(DbCommand::storedProcedure);
        command.setCommandText(QString::fromUtf8(procedure));
        command.Parameters().Refresh();
        return command.Parameters();
    }
    QVariant message() { return command.Parameters().Item(command.Parameters().Count() - 1).Value(); }

    DbCommand command;
};

TEST_F(DbCommandTest, ParameterListComesFromTheServerWithTheReturnValueFirst) {
    DbParameters& parameters = bind("t_numbers");
    ASSERT_EQ(parameters.Count(), 7);
    EXPECT_TRUE(parameters.Item(0).info().output);
    const QStringList names{u"@Small"_s, u"@Whole"_s, u"@Exact"_s, u"@Float"_s, u"@Flag"_s, u"@Message"_s};
    const QList<int> types{2, 3, 131, 5, 11, 202};
    for (int i = 0; i < names.size(); ++i) {
        EXPECT_EQ(parameters.Item(i + 1).Name().compare(names.at(i), Qt::CaseInsensitive), 0) << i;
        EXPECT_EQ(parameters.Item(i + 1).Type(), types.at(i)) << i;
        EXPECT_EQ(parameters.Item(i + 1).info().output, i == 5) << i;
    }
}

TEST_F(DbCommandTest, ReturnValueAndOutputsAreReadBack) {
    DbParameters& parameters = bind("dbo.t_answer");
    parameters.Item("@return").setValue(-7);
    parameters.Item("@Text").setValue(u"Zażółć gęślą jaźń"_s);
    command.Execute();
    EXPECT_EQ(parameters.Item(0).Value(), QVariant(-7));
    EXPECT_EQ(message(), QVariant(u"Zażółć gęślą jaźń"_s));
}

TEST_F(DbCommandTest, OutputsArriveBehindTheRowsOfTheProcedure) {
    DbParameters& parameters = bind("t_select");
    command.Execute();
    EXPECT_EQ(parameters.Item(0).Value(), QVariant(3));
    EXPECT_EQ(message(), QVariant(u"po wierszach"_s));
}

TEST_F(DbCommandTest, ParameterNeverSetGoesAsNull) {
    bind("t_words");
    command.Execute();
    EXPECT_EQ(message(), QVariant(u"-|-|-"_s));
}

TEST_F(DbCommandTest, NumbersOfEveryWidthArriveAsDeclared) {
    DbParameters& parameters = bind("t_numbers");
    parameters.Item("@Small").setValue(qint16{-32768});
    parameters.Item("@Whole").setValue(2147483647);
    parameters.Item("@Exact").setValue(12.5);
    parameters.Item("@Float").setValue(0.25);
    parameters.Item("@Flag").setValue(1);
    command.Execute();
    EXPECT_EQ(message(), QVariant(u"-32768|2147483647|12.500000|0.25|1"_s));
}

TEST_F(DbCommandTest, NumbersMayComeAsTextWithADecimalPoint) {
    DbParameters& parameters = bind("t_numbers");
    parameters.Item("@Small").setValue(u" 12"_s);
    parameters.Item("@Whole").setValue(u"2.5"_s);
    parameters.Item("@Exact").setValue(u"1234567890123.123456"_s);
    parameters.Item("@Float").setValue(u"1E3"_s);
    parameters.Item("@Flag").setValue(u"0"_s);
    command.Execute();
    EXPECT_EQ(message(), QVariant(u"12|2|1234567890123.123456|1000|0"_s));
}

TEST_F(DbCommandTest, ValueThatTheTypeCannotHoldIsRefusedBeforeTheCall) {
    DbParameters& parameters = bind("t_numbers");
    warehouse.clearTrace();
    parameters.Item("@Small").setValue(u"NULL"_s);
    EXPECT_EQ(failureOf([&] { command.Execute(); }).Number, 3421);
    parameters.Item("@Small").setValue(32768);
    EXPECT_EQ(failureOf([&] { command.Execute(); }).Number, 3421);
    EXPECT_EQ(warehouse.trace(), QStringList());
}

TEST_F(DbCommandTest, LongTextArrivesWhole) {
    DbParameters& parameters = bind("t_long");
    parameters.Item("@Text").setValue(u"Ąćę"_s + u"x"_s.repeated(50000));
    command.Execute();
    EXPECT_EQ(parameters.Item("@Length").Value(), QVariant(50003));
    EXPECT_EQ(message(), QVariant(u"Ąćę"_s));
}

TEST_F(DbCommandTest, LongOutputTextIsNotCut) {
    DbParameters& parameters = bind("t_answer");
    const QString text = u"żółć "_s.repeated(39) + u"koniec"_s;
    parameters.Item("@Return").setValue(0);
    parameters.Item("@Text").setValue(text);
    command.Execute();
    EXPECT_EQ(message(), QVariant(text.left(200)));
}

TEST_F(DbCommandTest, ParameterListIsAskedOnceAndEachCallIsOneRoundTrip) {
    for (int i = 0; i < 3; ++i) {
        DbParameters& parameters = bind("t_answer");
        parameters.Item("@Return").setValue(i);
        command.Execute();
        EXPECT_EQ(parameters.Item(0).Value(), QVariant(i));
    }
    QStringList calls;
    for (const auto& entry : warehouse.entries()) {
        calls.append(entry.kind + u' ' + entry.text);
    }
    ASSERT_EQ(calls.size(), 4);
    EXPECT_TRUE(calls.first().contains(u"sp_sproc_columns"_s)) << qPrintable(calls.first());
    EXPECT_EQ(calls.mid(1), QStringList(3, u"RPC t_answer"_s));
}

TEST_F(DbCommandTest, ParameterListIsAskedAnewAfterAFailedCall) {
    bind("t_refuse");
    const ErrorRecord error = failureOf([&] { command.Execute(); });
    EXPECT_EQ(error.Number, DbError::Statement);
    EXPECT_EQ(error.Description, u"Serwer odmawia\n##Lokalizacja zajęta"_s);
    warehouse.clearTrace();
    bind("t_refuse");
    ASSERT_EQ(warehouse.entries().size(), 1);
    EXPECT_TRUE(warehouse.entries().first().text.contains(u"sp_sproc_columns"_s));
}

TEST_F(DbCommandTest, ListFollowsTheProcedureWhenItChanged) {
    bind("t_no_message");
    ASSERT_TRUE(warehouse.run(u"drop procedure t_no_message"_s)) << qPrintable(warehouse.why());
    ASSERT_TRUE(
        warehouse.run(u"create procedure t_no_message @Message nvarchar(200) output as begin "
                      "set @Message = N'nowa' return 0 end"_s))
        << qPrintable(warehouse.why());
    EXPECT_EQ(failureOf([&] { command.Execute(); }).Number, DbError::Statement);
    EXPECT_EQ(bind("t_no_message").Count(), 2);
    command.Execute();
    EXPECT_EQ(message(), QVariant(u"nowa"_s));
}

TEST_F(DbCommandTest, UnknownProcedureIsReportedByName) {
    const ErrorRecord error = failureOf([&] { bind("dbo.t_missing"); });
    EXPECT_EQ(error.Number, DbError::Statement);
    EXPECT_TRUE(error.Description.contains(u"dbo.t_missing"_s)) << qPrintable(error.Description);
}

TEST_F(DbCommandTest, UnknownParametersAreRefused) {
    DbParameters& parameters = bind("t_answer");
    EXPECT_EQ(failureOf([&] { parameters.Item("@nic"); }).Number, 3265);
    EXPECT_EQ(failureOf([&] { parameters.Item(4); }).Number, 3265);
    EXPECT_EQ(failureOf([&] { parameters.Item(-1); }).Number, 3265);
}

TEST_F(DbCommandTest, ProcedureWithoutParametersIsCalled) {
    bind("t_change");
    command.Execute();
    EXPECT_EQ(command.Parameters().Item(0).Value(), QVariant(0));
    EXPECT_EQ(scalar(u"select name from t_rows where id = 2"_s), QVariant(u"zmiana"_s));
}

TEST_F(DbCommandTest, CommandWithoutConnectionIsRefused) {
    DbCommand unbound;
    unbound.setCommandText(u"t_answer"_s);
    EXPECT_EQ(failureOf([&] { unbound.Parameters().Refresh(); }).Number, 3709);
    EXPECT_EQ(failureOf([&] { unbound.Execute(); }).Number, 3709);
}

}  // namespace
}  // namespace regalon
