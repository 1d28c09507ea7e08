#include "GatewayFixture.h"

#include <QDateTime>

namespace regalon {
namespace {

using namespace Qt::StringLiterals;

using DbRecordsetTest = GatewayTest;

TEST_F(DbRecordsetTest, WalksRowsForwardAndCountsThem) {
    DbRecordset rs;
    rs.Open(u"select id, name from t_rows order by id"_s, connection());
    EXPECT_EQ(rs.State(), 1);
    EXPECT_EQ(rs.RecordCount(), 3);
    QStringList seen;
    for (; !rs.Eof(); rs.MoveNext()) {
        seen.append(rs.Value("id").toString() + u'=' + rs.Value("name").toString());
    }
    EXPECT_EQ(seen, (QStringList{u"1=Cukier"_s, u"2="_s, u"3=mąka"_s}));
    EXPECT_EQ(rs.RecordCount(), 3);
}

TEST_F(DbRecordsetTest, FieldsAreFoundByNameWhateverTheLetterCaseAndByPosition) {
    DbRecordset rs;
    rs.Open(u"select id, name as NazwaŻ, 7 from t_rows order by id"_s, connection());
    EXPECT_EQ(rs.Fields().Count(), 3);
    EXPECT_EQ(rs.Fields().Item(u"nazważ"_s).Value(), QVariant(u"Cukier"_s));
    EXPECT_EQ(rs.Fields().Item(1).Name(), u"NazwaŻ"_s);
    EXPECT_EQ(rs.Fields().Item(2).Name(), QString());
    EXPECT_EQ(rs.Fields().Item(2).Value(), QVariant(7));
}

struct ColumnCase {
    const char* column;
    int type;
    QVariant value;
};

TEST_F(DbRecordsetTest, EveryColumnTypeHasItsCodeAndValue) {
    const std::vector<ColumnCase> cases{
        {"c_nvarchar", 202, u"Żółć ęąś"_s},
        {"c_varchar", 200, u"Zażółć"_s},
        {"c_nchar", 130, u"abc  "_s},
        {"c_char", 129, u"abc  "_s},
        {"c_bit", 11, true},
        {"c_tinyint", 17, 200},
        {"c_smallint", 2, -5},
        {"c_int", 3, std::numeric_limits<int>::min()},
        {"c_bigint", 20, qlonglong{9007199254740993}},
        {"c_money", 6, 12.5},
        {"c_decimal", 131, 12.500001},
        {"c_real", 4, 3.14},
        {"c_float", 5, 0.1},
        {"c_datetime", 135, QDateTime(QDate(2024, 3, 31), QTime(2, 30, 15, 500), Qt::UTC)},
        {"c_guid", 72, u"{6F9619FF-8B86-D011-B42D-00C04FC964FF}"_s},
        {"c_nmax", 203, u"długi"_s},
        {"c_max", 201, u"długi"_s},
        {"c_bin", 204, QByteArray("\x01\x02\xFF", 3)},
        {"c_binmax", 205, QByteArray("\0", 1)},
    };
    for (const ColumnCase& item : cases) {
        DbRecordset rs;
        rs.Open(u"select "_s + QString::fromUtf8(item.column) + u" from t_types where id = 1"_s,
                connection());
        EXPECT_EQ(rs.Fields().Item(0).Type(), item.type) << item.column;
        EXPECT_EQ(rs.Value(0), item.value) << item.column << ' ' << qPrintable(rs.Value(0).toString());
    }
}

TEST_F(DbRecordsetTest, WholeRowWithLongColumnsReadsAsItsColumnsDo) {
    DbRecordset rs;
    rs.Open(u"select * from t_types order by id"_s, connection());
    EXPECT_EQ(rs.RecordCount(), 2);
    EXPECT_EQ(rs.Value("c_nvarchar"), QVariant(u"Żółć ęąś"_s));
    EXPECT_EQ(rs.Value("c_decimal"), QVariant(12.500001));
    EXPECT_EQ(rs.Value("c_binmax"), QVariant(QByteArray("\0", 1)));
}

TEST_F(DbRecordsetTest, NullInEveryColumnTypeIsAnInvalidValue) {
    DbRecordset whole;
    whole.Open(u"select * from t_types where id = 2"_s, connection());
    for (int i = 1; i < whole.Fields().Count(); ++i) {
        EXPECT_FALSE(whole.Value(i).isValid()) << qPrintable(whole.Fields().Item(i).Name());
        DbRecordset single;
        single.Open(u"select "_s + whole.Fields().Item(i).Name() + u" from t_types where id = 2"_s,
                    connection());
        EXPECT_FALSE(single.Value(0).isValid()) << qPrintable(whole.Fields().Item(i).Name());
    }
}

TEST_F(DbRecordsetTest, EmptyTextIsNotNull) {
    EXPECT_EQ(scalar(u"select N''"_s), QVariant(QString()));
    EXPECT_EQ(scalar(u"select cast(N'' as nvarchar(max))"_s), QVariant(QString()));
}

TEST_F(DbRecordsetTest, LongTextsAndManyRowsArriveWhole) {
    const QString thousand = u"ż"_s.repeated(1000);
    EXPECT_EQ(scalar(u"select replicate(cast(N'"_s + thousand + u"' as nvarchar(max)), 20)"_s).toString(),
              thousand.repeated(20));
    const QString rows =
        u"select a.id, b.name, c.weight from t_rows a, t_rows b, t_rows c, t_rows d, t_rows e, "
        "t_rows f, t_rows g order by a.id, b.id, c.id, d.id, e.id, f.id, g.id"_s;
    DbRecordset rs;
    rs.Open(rows, connection());
    EXPECT_EQ(rs.RecordCount(), 2187);
    int row = 0;
    for (; !rs.Eof(); rs.MoveNext(), ++row) {
        ASSERT_EQ(rs.Value(0), QVariant(row / 729 + 1));
        ASSERT_EQ(rs.Value(1).isValid(), row / 243 % 3 != 1);
        ASSERT_EQ(rs.Value(2).isValid(), row / 81 % 3 != 1);
    }
}

TEST_F(DbRecordsetTest, ResultLivesOnWhenTheConnectionCloses) {
    DbRecordset rs;
    rs.Open(u"select name from t_rows where id = 1"_s, connection());
    connection().Close();
    EXPECT_EQ(rs.Value("name"), QVariant(u"Cukier"_s));
}

TEST_F(DbRecordsetTest, TwoResultsCanBeWalkedAtOnce) {
    DbRecordset outer;
    outer.Open(u"select id from t_rows order by id"_s, connection());
    QStringList seen;
    for (; !outer.Eof(); outer.MoveNext()) {
        DbRecordset inner;
        inner.Open(u"select name from t_rows where id = "_s + outer.Value(0).toString(), connection());
        seen.append(inner.Value(0).toString());
    }
    EXPECT_EQ(seen, (QStringList{u"Cukier"_s, QString(), u"mąka"_s}));
}

TEST_F(DbRecordsetTest, FirstOfSeveralResultsIsTaken) {
    DbRecordset rs;
    rs.Open(u"declare @m nvarchar(200) exec t_select @m output"_s, connection());
    EXPECT_EQ(rs.RecordCount(), 3);
    EXPECT_EQ(rs.Fields().Count(), 2);
    EXPECT_EQ(scalar(u"select 1"_s), QVariant(1));
}

TEST_F(DbRecordsetTest, PrintedTextDoesNotStandInTheWay) {
    DbRecordset rs;
    rs.Open(u"exec t_talk"_s, connection());
    EXPECT_EQ(rs.RecordCount(), 3);
}

TEST_F(DbRecordsetTest, TextWithoutResultLeavesItClosedWithoutAFailure) {
    DbRecordset rs;
    rs.Open(u"exec t_nothing"_s, connection());
    EXPECT_EQ(rs.State(), 0);
    rs.Open(u"exec t_change"_s, connection());
    EXPECT_EQ(rs.State(), 0);
    EXPECT_EQ(scalar(u"select name from t_rows where id = 2"_s), QVariant(u"zmiana"_s));
}

TEST_F(DbRecordsetTest, ErrorBehindAResultFailsTheCall) {
    const ErrorRecord error = failureOfText(u"declare @m nvarchar(200) exec t_refuse @m output"_s);
    EXPECT_EQ(error.Number, DbError::Statement);
    EXPECT_EQ(error.Description, u"Serwer odmawia\n##Lokalizacja zajęta"_s);
    EXPECT_EQ(scalar(u"select 1"_s), QVariant(1));
}

TEST_F(DbRecordsetTest, ClosedRecordsetRefusesEveryTouch) {
    DbRecordset rs;
    EXPECT_EQ(failureOf([&] { rs.Eof(); }).Number, 3704);
    EXPECT_EQ(failureOf([&] { rs.MoveNext(); }).Number, 3704);
    EXPECT_EQ(failureOf([&] { rs.RecordCount(); }).Number, 3704);
    EXPECT_EQ(failureOf([&] { rs.Value("id"); }).Number, 3704);
    EXPECT_EQ(failureOf([&] { rs.Value(0); }).Number, 3704);
    EXPECT_EQ(failureOf([&] { rs.Close(); }).Number, 3704);
    EXPECT_EQ(rs.Fields().Count(), 0);
}

TEST_F(DbRecordsetTest, ValuesBehindTheLastRowAreRefused) {
    DbRecordset rs;
    rs.Open(u"select id from t_rows where id = 99"_s, connection());
    EXPECT_TRUE(rs.Eof());
    EXPECT_EQ(rs.RecordCount(), 0);
    EXPECT_EQ(failureOf([&] { rs.Value(0); }).Number, 3021);
    EXPECT_EQ(failureOf([&] { rs.MoveNext(); }).Number, 3021);
}

TEST_F(DbRecordsetTest, UnknownFieldsAreRefused) {
    DbRecordset rs;
    rs.Open(u"select id from t_rows"_s, connection());
    EXPECT_EQ(failureOf([&] { rs.Value("nic"); }).Number, 3265);
    EXPECT_EQ(failureOf([&] { rs.Value(1); }).Number, 3265);
    EXPECT_EQ(failureOf([&] { rs.Value(-1); }).Number, 3265);
}

TEST_F(DbRecordsetTest, OpenRecordsetIsNotOpenedAgain) {
    DbRecordset rs;
    rs.Open(u"select id from t_rows"_s, connection());
    EXPECT_EQ(failureOf([&] { rs.Open(u"select 1"_s, connection()); }).Number, 3705);
    rs.Close();
    rs.Open(u"select 1"_s, connection());
    EXPECT_EQ(rs.Value(0), QVariant(1));
}

TEST_F(DbRecordsetTest, FailingTextRaisesTheServersOwnWords) {
    const ErrorRecord error = failureOfText(u"select x from t_missing"_s);
    EXPECT_EQ(error.Number, static_cast<qint32>(0x80040E14U));
    EXPECT_EQ(error.Description, u"Invalid object name 't_missing'."_s);
    EXPECT_EQ(error.Source, u"ODBC FreeTDS"_s);
}

TEST_F(DbRecordsetTest, BrokenConstraintsHaveTheirOwnNumber) {
    EXPECT_EQ(failureOfText(u"insert into t_rows values (1, N'x', 1)"_s).Number,
              static_cast<qint32>(0x80040E2FU));
    EXPECT_EQ(failureOfText(u"insert into t_rows (name) values (N'x')"_s).Number, DbError::Integrity);
}

TEST_F(DbRecordsetTest, StatementsGoToTheServerByteForByteInOneRoundTripEach) {
    const QStringList texts{
        u"select Shelf,count(*) as LocationCount from kolv_mag_Location where Rank = 1 AND Stand = 2 group "
        u"by Shelf "
        "order by Shelf"_s,
        u" select  id , N'Żółć {fn x} ''?''' as y\r\n\tfrom t_rows(nolock)  where 1 = 1 -- koniec \U0001F600 "_s,
        u"exec t_nothing"_s};
    for (const QString& text : texts) {
        DbRecordset rs;
        rs.Open(text, connection());
    }
    EXPECT_EQ(warehouse.trace(), texts);
}

TEST_F(DbRecordsetTest, BracesAreLeftToTheServer) {
    const QString text = u"select {fn ucase('a')}"_s;
    failureOfText(text);
    EXPECT_EQ(warehouse.trace(), QStringList{text});
}

TEST_F(DbRecordsetTest, ConnectingSendsNoStatement) {
    DbConnection second;
    second.Open(warehouse.connectionString());
    second.Close();
    EXPECT_EQ(warehouse.trace(), QStringList());
}

}  // namespace
}  // namespace regalon
