#include "common/DbConnectionString.h"
#include "common/DbErrors.h"
#include "common/DbOdbc.h"
#include "platform/Settings.h"

#include <gtest/gtest.h>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

QString driverText(const QString& server) {
    return driverConnectionString({server, {}, {}, {}}, Settings());
}

TEST(ConnectionString, OleDbFormIsReadAsTheProgramWritesIt) {
    const DbTarget target = parseConnectionString(
        u"Provider=SQLOLEDB.1;Password=abc;Persist Security Info=False;User ID= sa"
        ";Initial Catalog= WMS;Data Source=SRV1"_s);
    EXPECT_EQ(target.server, u"SRV1"_s);
    EXPECT_EQ(target.database, u"WMS"_s);
    EXPECT_EQ(target.user, u"sa"_s);
    EXPECT_EQ(target.password, u"abc"_s);
}

TEST(ConnectionString, OdbcFormIsReadAsTheEditorWritesIt) {
    const DbTarget target =
        parseConnectionString(u"driver={SQL Server};server=SRV1;uid=sa;pwd=abc;database=master"_s);
    EXPECT_EQ(target.server, u"SRV1"_s);
    EXPECT_EQ(target.database, u"master"_s);
    EXPECT_EQ(target.user, u"sa"_s);
    EXPECT_EQ(target.password, u"abc"_s);
}

TEST(ConnectionString, EmptySettingsGiveAnEmptyTarget) {
    const DbTarget target = parseConnectionString(
        u"Provider=SQLOLEDB.1;Password=;Persist Security Info=False;User ID= ;Initial Catalog= ;Data Source="_s);
    EXPECT_EQ(target.server + target.database + target.user + target.password, QString());
}

TEST(ConnectionString, QuotedAndBracedValuesMayHoldSemicolons) {
    const QString odbc = u"driver={SQL Server};uid=u;pwd={a;b}}c};server=s"_s;
    EXPECT_EQ(parseConnectionString(u"Provider=x;Password=\"a;b\"\"c\";User ID=u"_s).password, u"a;b\"c"_s);
    EXPECT_EQ(parseConnectionString(odbc).password, u"a;b}c"_s);
    EXPECT_EQ(parseConnectionString(odbc).server, u"s"_s);
}

TEST(ConnectionString, BracesQuoteInTheOdbcFormAlone) {
    EXPECT_EQ(parseConnectionString(u"Provider=x;Password={abc};User ID=u"_s).password, u"{abc}"_s);
    EXPECT_EQ(parseConnectionString(u"driver={SQL Server};uid=u;pwd={abc}"_s).password, u"abc"_s);
    EXPECT_EQ(parseConnectionString(u"uid=u;pwd={abc};DRIVER={SQL Server}"_s).password, u"abc"_s);
}

TEST(ConnectionString, QuotationMarksQuoteInTheOleDbFormAlone) {
    EXPECT_EQ(parseConnectionString(u"Provider=x;Password='abc';User ID=u"_s).password, u"abc"_s);
    EXPECT_EQ(parseConnectionString(u"driver={SQL Server};uid=u;pwd='abc'"_s).password, u"'abc'"_s);
}

TEST(ConnectionString, DriverInsideAValueDoesNotChangeTheForm) {
    EXPECT_EQ(parseConnectionString(u"Provider=x;Password={a};driver=y;User ID=u"_s).password, u"{a}"_s);
}

TEST(ConnectionString, SignsThatCloseNothingBelongToTheValue) {
    EXPECT_EQ(parseConnectionString(u"Password='abc;User ID=u"_s).password, u"'abc"_s);
    EXPECT_EQ(parseConnectionString(u"Password={a}b;User ID=u"_s).password, u"{a}b"_s);
    EXPECT_EQ(parseConnectionString(u"Password=a'b;User ID=u"_s).user, u"u"_s);
}

TEST(ConnectionString, EqualsSignBelongsToTheValue) {
    EXPECT_EQ(parseConnectionString(u"Password=a=b;User ID=u"_s).password, u"a=b"_s);
}

TEST(ConnectionString, PiecesWithoutAKeyAreSkipped) {
    EXPECT_EQ(parseConnectionString(u"junk;;=x;Data Source=S"_s).server, u"S"_s);
}

TEST(ServerAddress, PortMayStandBehindCommaOrColon) {
    EXPECT_TRUE(driverText(u"10.0.0.5,1444"_s).contains(u";SERVER=10.0.0.5;PORT=1444;"_s));
    EXPECT_TRUE(driverText(u"10.0.0.5:1444"_s).contains(u";SERVER=10.0.0.5;PORT=1444;"_s));
    EXPECT_TRUE(driverText(u"tcp:srv, 1444"_s).contains(u";SERVER=srv;PORT=1444;"_s));
}

TEST(ServerAddress, NameWithoutAPortGetsTheDefaultPort) {
    EXPECT_TRUE(driverText(u"SRV1"_s).contains(u";SERVER=SRV1;PORT=1433;"_s));
}

TEST(ServerAddress, NamedInstanceIsLeftToTheDriver) {
    const QString text = driverText(u"SRV1\\WMS"_s);
    EXPECT_TRUE(text.contains(u";SERVER=SRV1\\WMS;"_s)) << qPrintable(text);
    EXPECT_FALSE(text.contains(u"PORT="_s));
}

TEST(ServerAddress, EmptyNamesMeanThisMachine) {
    for (const QString& name : {QString(), u"."_s, u"(local)"_s}) {
        EXPECT_TRUE(driverText(name).contains(u";SERVER=localhost;PORT=1433;"_s)) << qPrintable(name);
    }
}

TEST(ServerAddress, MicrosoftsDriverTakesThePortBehindAComma) {
    Settings settings;
    settings.OdbcDriver = u"ODBC Driver 18 for SQL Server"_s;
    settings.OdbcServerPort = Settings::ServerPort::Keep;
    settings.OdbcKeywords = u"Encrypt=no"_s;
    EXPECT_EQ(driverConnectionString({u"srv:1444"_s, u"WMS"_s, u"sa"_s, u"x"_s}, settings),
              u"DRIVER={ODBC Driver 18 for SQL Server};SERVER=srv,1444;UID=sa;PWD=x;DATABASE=WMS;APP=Regalon;"
              "Encrypt=no"_s);
}

TEST(DriverText, SemicolonAndOuterBlanksAreBraced) {
    Settings settings;
    EXPECT_TRUE(
        driverConnectionString({u"s"_s, {}, u"u"_s, u"a;b{c}d"_s}, settings).contains(u";PWD={a;b{c}d};"_s));
    EXPECT_TRUE(driverConnectionString({u"s"_s, {}, u"u"_s, u" x"_s}, settings).contains(u";PWD={ x};"_s));
    EXPECT_TRUE(
        driverConnectionString({u"s"_s, {}, u"u"_s, u"c}d='"_s}, settings).contains(u";PWD=c}d=';"_s));
    settings.OdbcDriver = u"ODBC Driver 18 for SQL Server"_s;
    EXPECT_TRUE(
        driverConnectionString({u"s"_s, {}, u"u"_s, u"a;b{c}d"_s}, settings).contains(u";PWD={a;b{c}}d};"_s));
}

TEST(DriverMessages, TagsOfDriverAndServerAreRemoved) {
    EXPECT_EQ(odbc::withoutDriverTags(u"[FreeTDS][SQL Server]Invalid object name 'x'."_s),
              u"Invalid object name 'x'."_s);
    EXPECT_EQ(odbc::withoutDriverTags(u"[Microsoft][ODBC Driver 18 for SQL Server][SQL Server]Błąd"_s),
              u"Błąd"_s);
    EXPECT_EQ(odbc::withoutDriverTags(u"[FreeTDS][SQL Server][A1] zajęta"_s), u"[A1] zajęta"_s);
}

qint32 numberOf(const QVector<odbc::Diagnostic>& records) {
    return odbc::toRunTimeError(records, u"d"_s).number();
}

TEST(DriverMessages, RefusedLoginIsFoundAmongItsCompanions) {
    const RunTimeError error = odbc::toRunTimeError({{u"08001"_s, 0, u"Unable to connect to data source"_s},
                                                     {u"42000"_s, 18456, u"Login failed for user 'x'."_s}},
                                                    u"d"_s);
    EXPECT_EQ(error.number(), static_cast<qint32>(0x80040E4DU));
    EXPECT_EQ(error.record().Description, u"Login failed for user 'x'."_s);
    EXPECT_EQ(error.record().Source, u"d"_s);
}

TEST(DriverMessages, ServerIsUnreachedWithoutAListenerOrAHost) {
    EXPECT_TRUE(odbc::serverUnreached({{u"HY000"_s, 0, u"y"_s}, {u"08S01"_s, 20009, u"x"_s}}));
    EXPECT_TRUE(odbc::serverUnreached({{u"01000"_s, 20013, u"x"_s}}));
    EXPECT_TRUE(odbc::serverUnreached({{u"08001"_s, 10061, u"TCP Provider: refused"_s}}));
    EXPECT_FALSE(odbc::serverUnreached({{u"08001"_s, 0, u"y"_s}, {u"01000"_s, 20002, u"x"_s}}));
    EXPECT_FALSE(odbc::serverUnreached({}));
}

TEST(DriverMessages, NumbersFollowTheKindOfFailure) {
    EXPECT_EQ(numberOf({{u"08S01"_s, 20009, u"x"_s}, {u"08001"_s, 0, u"y"_s}}), DbError::General);
    EXPECT_EQ(numberOf({{u"08001"_s, 0, u"y"_s}, {u"01000"_s, 20013, u"x"_s}}), DbError::General);
    EXPECT_EQ(numberOf({{u"42S02"_s, 208, u"x"_s}}), DbError::Statement);
    EXPECT_EQ(numberOf({{u"42000"_s, 50000, u"x"_s}}), DbError::Statement);
    EXPECT_EQ(numberOf({{u"23000"_s, 2627, u"x"_s}, {u"01000"_s, 3621, u"terminated"_s}}),
              DbError::Integrity);
    EXPECT_EQ(numberOf({{u"HYT00"_s, 20003, u"x"_s}}), DbError::Timeout);
    EXPECT_EQ(numberOf({{u"42000"_s, 4060, u"x"_s}, {u"42000"_s, 18456, u"y"_s}}), DbError::Statement);
    EXPECT_EQ(numberOf({{u"01000"_s, 0, u"Can't open lib 'x' : file not found"_s}}), DbError::NoDriver);
    EXPECT_EQ(numberOf({}), DbError::General);
}

}  // namespace
}  // namespace regalon
