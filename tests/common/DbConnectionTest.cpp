#include "GatewayFixture.h"
#include "common/DataClass.h"
#include "common/modListBox.h"
#include "platform/DataCombo.h"
#include "platform/ListView.h"
#include "platform/Settings.h"

#include <QDir>
#include <QElapsedTimer>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

class DbConnectionTest : public GatewayTest {
protected:
    static ErrorRecord failureOfOpening(const QString& text) {
        return failureOf([&] {
            DbConnection connection;
            connection.Open(text);
        });
    }
};

TEST_F(DbConnectionTest, StateFollowsOpenAndClose) {
    DbConnection other;
    EXPECT_EQ(other.State(), 0);
    other.setConnectionString(warehouse.connectionString());
    other.setConnectionTimeout(30);
    other.Open();
    EXPECT_EQ(other.State(), 1);
    EXPECT_EQ(failureOf([&] { other.Open(); }).Number, 3705);
    other.Close();
    EXPECT_EQ(other.State(), 0);
    EXPECT_EQ(failureOf([&] { other.Close(); }).Number, 3704);
    EXPECT_EQ(failureOf([&] { other.Execute(u"select 1"_s); }).Number, 3709);
}

TEST_F(DbConnectionTest, ConnectionStringReadsBackAsItWasSet) {
    EXPECT_EQ(connection().ConnectionString(), warehouse.connectionString());
}

TEST_F(DbConnectionTest, OdbcFormReachesMaster) {
    DbConnection other;
    other.Open(u"driver={SQL Server};server=127.0.0.1:"_s + QString::number(warehouse.port()) + u";uid="_s +
               warehouse.login() + u";pwd="_s + warehouse.password() + u";database=master"_s);
    DbRecordset rs;
    rs.Open(u"select name from sysdatabases order by name"_s, other);
    QStringList names;
    for (; !rs.Eof(); rs.MoveNext()) {
        names.append(rs.Value("name").toString());
    }
    EXPECT_EQ(names, (QStringList{u"MAGAZYN"_s, u"master"_s, u"tempdb"_s}));
}

TEST_F(DbConnectionTest, WrongPasswordIsAFailedAuthentication) {
    const ErrorRecord error =
        failureOfOpening(warehouse.connectionString(warehouse.login(), u"zle"_s, warehouse.database()));
    EXPECT_EQ(error.Number, static_cast<qint32>(0x80040E4DU));
    EXPECT_EQ(error.Description, u"Login failed for user 'regalon'."_s);
}

TEST_F(DbConnectionTest, UnknownLoginIsAFailedAuthentication) {
    EXPECT_EQ(failureOfOpening(warehouse.connectionString(u"nikt"_s, u"x"_s, warehouse.database())).Number,
              DbError::Authentication);
}

TEST_F(DbConnectionTest, EmptyLoginIsAFailedAuthenticationOnlyWhereAServerIs) {
    const QString text = warehouse.connectionString(QString(), QString(), warehouse.database());
    EXPECT_EQ(failureOfOpening(text).Number, DbError::Authentication);
    connection().Close();
    ASSERT_TRUE(warehouse.stop());
    EXPECT_EQ(failureOfOpening(text).Number, DbError::General);
    EXPECT_EQ(
        failureOfOpening(
            u"Provider=SQLOLEDB.1;Password=;User ID= ;Initial Catalog= ;Data Source=no-such-host.invalid"_s)
            .Number,
        DbError::General);
}

TEST_F(DbConnectionTest, UnknownDatabaseIsNeitherOfTheTwoLoginNumbers) {
    const ErrorRecord error =
        failureOfOpening(warehouse.connectionString(warehouse.login(), warehouse.password(), u"NIE_MA"_s));
    EXPECT_EQ(error.Number, DbError::Statement);
    EXPECT_TRUE(error.Description.contains(u"NIE_MA"_s)) << qPrintable(error.Description);
}

TEST_F(DbConnectionTest, StoppedServerIsAGeneralFailure) {
    const QString text = warehouse.connectionString();
    connection().Close();
    ASSERT_TRUE(warehouse.stop());
    EXPECT_EQ(failureOfOpening(text).Number, static_cast<qint32>(0x80004005U));
}

TEST_F(DbConnectionTest, ServerThatDoesNotAnswerTheLoginInTimeIsAGeneralFailure) {
    warehouse.freeze();
    DbConnection other;
    other.setConnectionString(warehouse.connectionString());
    other.setConnectionTimeout(1);
    EXPECT_EQ(failureOf([&] { other.Open(); }).Number, DbError::General);
    EXPECT_EQ(other.State(), 0);
    warehouse.thaw();
    other.Open();
    EXPECT_EQ(other.State(), 1);
}

int openFiles() {
    return static_cast<int>(QDir(u"/proc/self/fd"_s).entryList(QDir::Files | QDir::System).size());
}

TEST_F(DbConnectionTest, ClosedAndFailedConnectionsLeaveNoSocketBehind) {
    const auto openAndFail = [&] {
        DbConnection good;
        good.Open(warehouse.connectionString());
        failureOfOpening(warehouse.connectionString(warehouse.login(), u"zle"_s, warehouse.database()));
    };
    openAndFail();
    const int before = openFiles();
    for (int i = 0; i < 20; ++i) {
        openAndFail();
    }
    EXPECT_EQ(openFiles(), before);
}

TEST_F(DbConnectionTest, UnknownHostIsAGeneralFailure) {
    const ErrorRecord error = failureOfOpening(
        u"Provider=SQLOLEDB.1;Password=x;User ID= x;Initial Catalog= x;Data Source=no-such-host.invalid"_s);
    EXPECT_EQ(error.Number, DbError::General);
}

TEST_F(DbConnectionTest, MissingDriverIsNamedAsSuch) {
    Settings settings;
    settings.OdbcDriver = u"No Such Driver"_s;
    useDatabaseSettings(settings);
    const ErrorRecord error = failureOfOpening(warehouse.connectionString());
    useDatabaseSettings(Settings());
    EXPECT_EQ(error.Number, 3706);
    EXPECT_EQ(error.Source, u"ODBC No Such Driver"_s);
}

TEST_F(DbConnectionTest, DriverMayBeGivenByItsLibrary) {
    Settings settings;
    settings.OdbcDriver = u"/usr/lib/x86_64-linux-gnu/odbc/libtdsodbc.so"_s;
    useDatabaseSettings(settings);
    const ErrorRecord error = failureOfOpening(warehouse.connectionString());
    useDatabaseSettings(Settings());
    EXPECT_EQ(error.Number, 0) << qPrintable(error.Description);
}

TEST_F(DbConnectionTest, ServerKilledMidSessionFailsEachLaterCallAtOnce) {
    warehouse.kill();
    for (int i = 0; i < 3; ++i) {
        const ErrorRecord error = failureOfText(u"select 1"_s);
        EXPECT_EQ(error.Number, DbError::General);
        EXPECT_EQ(error.Description, u"The connection to the server is lost."_s);
    }
    EXPECT_EQ(connection().State(), 1);
    connection().Close();
    EXPECT_EQ(connection().State(), 0);
}

class clsProbe : public DataClass {
public:
    explicit clsProbe(AppContext& context) : DataClass(context, u"clsProbe"_s) {}
    bool answer(QString& strErrDesc) {
        return callProcedure("answer", u"t_answer"_s, {{"@Return", 0}, {"@Text", u"x"_s}}, strErrDesc);
    }
};

TEST_F(DbConnectionTest, AfterAKilledServerEachRoutineShowsItsMessageAndReturns) {
    clsProbe probe(context);
    QString message;
    ASSERT_TRUE(probe.answer(message));
    warehouse.kill();

    QElapsedTimer clock;
    clock.start();
    EXPECT_FALSE(probe.answer(message));
    EXPECT_TRUE(probe.EcexProcedure(u"select 1"_s));
    EXPECT_FALSE(probe.EcexProcedureParam(u"exec t_answer 0,N'x'"_s, message));
    ListView list;
    FilleListView(context, list, u"select 1"_s, QString(), true, true, true, true, 700);
    DataCombo combo;
    FillComboBox(context, combo, u"select 1, 2"_s, false);
    EXPECT_LT(clock.elapsed(), 10000);

    QStringList titles;
    for (const auto& box : boxes.messages()) {
        titles.append(box.Title);
        EXPECT_EQ(box.Text, u"-2147467259\r\nThe connection to the server is lost."_s);
    }
    EXPECT_EQ(titles, (QStringList{u"Error - clsProbe [answer]"_s, u"Error - clsProbe [EcexProcedure]"_s,
                                   u"Error - clsProbe [EcexProcedureParam]"_s,
                                   u"Error - modListBox [FilleListView]"_s, u"Error -  [FillComboBox]"_s}));
}

}  // namespace
}  // namespace regalon
