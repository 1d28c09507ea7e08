#include "magdb/engine/TsqlRunner.h"

#include <gtest/gtest.h>

// What statements answer, as SQL Server does.

namespace {

class Statements : public testing::Test {
protected:
    std::string run(std::string_view sql) { return m_runner.values(sql); }
    std::string typed(std::string_view sql) { return m_runner.run(sql); }
    std::string messages(std::string_view sql) { return m_runner.messages(sql); }

    TsqlRunner m_runner;
};

// ------------------------------------------------------------------------------------------- variables

TEST_F(Statements, VariablesCutTextsToTheirLengthWithoutAnError) {
    EXPECT_EQ(typed("DECLARE @s varchar(3) = 'abcdef' SELECT @s"), "varchar(3) 'abc'");
    EXPECT_EQ(typed("DECLARE @s varchar = 'abc' SELECT @s"), "varchar(1) 'a'");
}

TEST_F(Statements, SelectIntoVariablesKeepsTheLastRowAndOldValuesWithoutRows) {
    EXPECT_EQ(run("DECLARE @a int = 7 SELECT @a = v FROM (VALUES (1), (2)) t (v) ORDER BY v SELECT @a"), "2");
    EXPECT_EQ(run("DECLARE @a int = 7 SELECT @a = v FROM (VALUES (1)) t (v) WHERE v > 5 SELECT @a"), "7");
    EXPECT_EQ(run("DECLARE @a int = 7 SET @a = (SELECT v FROM (VALUES (1)) t (v) WHERE v > 5) SELECT @a"),
              "NULL");
}

TEST_F(Statements, SelectIntoAVariableBuildsTextsRowByRow) {
    EXPECT_EQ(run("DECLARE @s varchar(50) = '' SELECT @s = @s + v + ';' FROM (VALUES ('a'), ('b')) t (v) "
                  "ORDER BY v "
                  "SELECT @s"),
              "'a;b;'");
}

TEST_F(Statements, CompoundAssignmentsWork) {
    EXPECT_EQ(run("DECLARE @a int = 7 SET @a += 3 SET @a *= 2 SET @a -= 1 SET @a %= 10 SELECT @a"), "9");
    EXPECT_EQ(run("DECLARE @s varchar(9) = 'a' SET @s += 'b' SELECT @s"), "'ab'");
}

TEST_F(Statements, RowCountFollowsEachStatement) {
    EXPECT_EQ(run("DECLARE @t TABLE (a int) INSERT @t VALUES (1), (2), (3) SELECT @@ROWCOUNT"), "3");
    EXPECT_EQ(run("DECLARE @t TABLE (a int) INSERT @t VALUES (1), (2) UPDATE @t SET a = 5 WHERE a > 1 "
                  "SELECT @@ROWCOUNT SELECT @@ROWCOUNT"),
              "1 / 1");
    EXPECT_EQ(run("DECLARE @a int SET @a = 1 SELECT @@ROWCOUNT"), "1");
    EXPECT_EQ(run("SELECT 1 WHERE 1 = 0 IF @@ROWCOUNT = 0 SELECT 'none'"), "'none'");
}

// ---------------------------------------------------------------------------------------------- queries

TEST_F(Statements, NamesOfColumnsAreThoseOfTheServer) {
    EXPECT_EQ(m_runner.names("SELECT 1, 2 AS b, c = 3, 'x' [Kod;1500;0] , t.v FROM (VALUES (1)) t (v)"),
              "|b|c|Kod;1500;0|v");
}

TEST_F(Statements, GroupsAndAggregatesFollowTheirTypes) {
    m_runner.run(
        "CREATE TABLE t (g int, i int, d decimal(10,2), s tinyint) "
        "INSERT t VALUES (1, 1, 1.5, 200), (1, 2, 2.5, 200), (2, NULL, NULL, 5)");
    EXPECT_EQ(typed("SELECT SUM(i), AVG(i), COUNT(*), COUNT(i), MAX(i), MIN(i) FROM t"),
              "int 3|int 1|int 3|int 2|int 2|int 1");
    EXPECT_EQ(typed("SELECT SUM(s), COUNT_BIG(*) FROM t"), "int 405|bigint 3");
    EXPECT_EQ(typed("SELECT SUM(d), AVG(d) FROM t"), "decimal(38,2) 4.00|decimal(38,6) 2.000000");
    EXPECT_EQ(run("SELECT g, SUM(i) FROM t GROUP BY g HAVING COUNT(*) >= 1 ORDER BY g DESC"), "2|NULL;1|3");
    EXPECT_EQ(run("SELECT COUNT(*), SUM(i) FROM t WHERE g = 9"), "0|NULL");
    EXPECT_EQ(run("SELECT g FROM t WHERE g = 9 GROUP BY g"), "");
    EXPECT_EQ(run("SELECT COUNT(DISTINCT s) FROM t"), "2");
}

TEST_F(Statements, SumsOverflowByTheirType) {
    EXPECT_EQ(messages("SELECT SUM(v) FROM (VALUES (2147483647), (1)) t (v)"),
              "8115 Arithmetic overflow error converting expression to data type int.");
}

TEST_F(Statements, NullsSortFirst) {
    EXPECT_EQ(run("SELECT v FROM (VALUES (2), (NULL), (1)) t (v) ORDER BY v"), "NULL;1;2");
    EXPECT_EQ(run("SELECT v FROM (VALUES (2), (NULL), (1)) t (v) ORDER BY v DESC"), "2;1;NULL");
}

TEST_F(Statements, PolishTextsSortByTheirAlphabetWithoutRegardToCase) {
    EXPECT_EQ(run("SELECT v FROM (VALUES (N'z'), (N'ł'), (N'L'), (N'm'), (N'ą'), (N'b'), (N'A'), (N'ż'), "
                  "(N'ź')) t (v) "
                  "ORDER BY v"),
              "'A';'ą';'b';'L';'ł';'m';'z';'ź';'ż'");
}

TEST_F(Statements, SetOperationsTakeOutDoublesAndUnifyTypes) {
    EXPECT_EQ(run("SELECT 1 AS a UNION SELECT 1 UNION SELECT 2 ORDER BY a"), "1;2");
    EXPECT_EQ(run("SELECT 1 AS a UNION ALL SELECT 1 ORDER BY 1"), "1;1");
    EXPECT_EQ(run("SELECT v FROM (VALUES (1), (2), (2)) t (v) EXCEPT SELECT 1"), "2");
    EXPECT_EQ(run("SELECT v FROM (VALUES (1), (2)) t (v) INTERSECT SELECT 2"), "2");
    EXPECT_EQ(run("SELECT COUNT(*) FROM (SELECT 'A' AS v UNION SELECT 'a ') t"), "1");
    // Nested operations are converted as a whole, in every column.
    EXPECT_EQ(run("SELECT 1.5 AS a UNION ALL (SELECT 1 UNION SELECT 1 UNION SELECT 2) ORDER BY a"),
              "1.0;1.5;2.0");
    EXPECT_EQ(run("SELECT 2.5 AS a, CAST('20230101' AS date) AS b UNION ALL "
                  "(SELECT 1, '20240101' UNION SELECT 1, '20240102') ORDER BY b"),
              "2.5|2023-01-01 00:00:00.000;1.0|2024-01-01 00:00:00.000;1.0|2024-01-02 00:00:00.000");
    EXPECT_EQ(typed("SELECT 'a' AS v UNION ALL SELECT N'bcd' ORDER BY v"),
              "nvarchar(3) 'a';nvarchar(3) 'bcd'");
    EXPECT_EQ(
        messages("SELECT 1, 2 UNION SELECT 1"),
        "205 All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of "
        "expressions in their target lists.");
}

TEST_F(Statements, JoinsOfEveryKindWork) {
    m_runner.run(
        "CREATE TABLE a (i int) INSERT a VALUES (1), (2) CREATE TABLE b (i int, n varchar(5)) INSERT b "
        "VALUES "
        "(2, 'x'), (3, 'y')");
    EXPECT_EQ(run("SELECT a.i, b.n FROM a JOIN b ON a.i = b.i"), "2|'x'");
    EXPECT_EQ(run("SELECT a.i, b.n FROM a LEFT JOIN b ON a.i = b.i ORDER BY a.i"), "1|NULL;2|'x'");
    EXPECT_EQ(run("SELECT a.i, b.n FROM a RIGHT JOIN b ON a.i = b.i ORDER BY b.i"), "2|'x';NULL|'y'");
    EXPECT_EQ(run("SELECT a.i, b.i FROM a FULL JOIN b ON a.i = b.i ORDER BY a.i, b.i"), "NULL|3;1|NULL;2|2");
    EXPECT_EQ(run("SELECT COUNT(*) FROM a CROSS JOIN b"), "4");
    EXPECT_EQ(run("SELECT COUNT(*) FROM a, b WHERE a.i < b.i"), "3");
}

TEST_F(Statements, WindowsNumberAndAddUp) {
    EXPECT_EQ(run("SELECT v, ROW_NUMBER() OVER (ORDER BY v DESC), SUM(v) OVER (ORDER BY v), COUNT(*) OVER () "
                  "FROM (VALUES "
                  "(1), (2), (3)) t (v) ORDER BY v"),
              "1|3|1|3;2|2|3|3;3|1|6|3");
    EXPECT_EQ(run("SELECT v, RANK() OVER (ORDER BY v), DENSE_RANK() OVER (ORDER BY v) FROM (VALUES (1), (1), "
                  "(2)) t (v) "
                  "ORDER BY v"),
              "1|1|1;1|1|1;2|3|2");
}

TEST_F(Statements, CommonTablesRecurUpToTheirLimit) {
    EXPECT_EQ(run("WITH n AS (SELECT 1 AS v UNION ALL SELECT v + 1 FROM n WHERE v < 4) SELECT SUM(v) FROM n"),
              "10");
    EXPECT_EQ(run("WITH n AS (SELECT 1 AS v UNION ALL SELECT v + 1 FROM n WHERE v < 200) SELECT MAX(v) FROM "
                  "n OPTION "
                  "(MAXRECURSION 0)"),
              "200");
    EXPECT_EQ(
        messages(
            "WITH n AS (SELECT 1 AS v UNION ALL SELECT v + 1 FROM n WHERE v < 200) SELECT MAX(v) FROM n"),
        "530 The statement terminated. The maximum recursion 100 has been exhausted before statement "
        "completion.");
}

TEST_F(Statements, TopAndOffsetCut) {
    const std::string rows = " v FROM (VALUES (1), (2), (3), (4)) t (v) ORDER BY v";
    EXPECT_EQ(run("SELECT TOP 2" + rows), "1;2");
    EXPECT_EQ(run("DECLARE @n int = 1 SELECT TOP (@n + 2)" + rows), "1;2;3");
    EXPECT_EQ(run("SELECT" + rows + " OFFSET 1 ROWS FETCH NEXT 2 ROWS ONLY"), "2;3");
}

/// What the binder leaves out is refused, never answered by something near it.
TEST_F(Statements, ConstructsThatAreLeftOutAreRefused) {
    m_runner.run("CREATE TABLE a (i int) INSERT a VALUES (1), (2)");
    EXPECT_EQ(run("SELECT TOP 50 PERCENT i FROM a"), "Msg 40517");
    EXPECT_EQ(run("SELECT a.i, x.i FROM a OUTER APPLY (SELECT TOP 1 i FROM a b WHERE b.i > a.i) x"),
              "Msg 40517");
    EXPECT_EQ(run("SELECT a.i, x.v FROM a CROSS APPLY (VALUES (a.i * 10)) x (v)"), "Msg 40517");
    EXPECT_EQ(run("CREATE TABLE x (a xml)"), "Msg 40517");
}

TEST_F(Statements, StringAggJoinsInItsOrder) {
    EXPECT_EQ(run("SELECT STRING_AGG(v, ',') WITHIN GROUP (ORDER BY v DESC) FROM (VALUES ('a'), ('c'), "
                  "(NULL), ('b')) t (v)"),
              "'c,b,a'");
}

TEST_F(Statements, BindingErrorsHaveTheirNumbers) {
    m_runner.run("CREATE TABLE a (i int) CREATE TABLE b (i int)");
    EXPECT_EQ(messages("SELECT i FROM a, b"), "209 Ambiguous column name 'i'.");
    EXPECT_EQ(messages("SELECT x.i FROM a"), "4104 The multi-part identifier \"x.i\" could not be bound.");
    EXPECT_EQ(messages("SELECT a.x FROM a"), "207 Invalid column name 'x'.");
    EXPECT_EQ(
        messages("SELECT i, COUNT(*) FROM a"),
        "8120 Column 'a.i' is invalid in the select list because it is not contained in either an aggregate "
        "function or the GROUP BY clause.");
    EXPECT_EQ(messages("SELECT x.* FROM a"),
              "107 The column prefix 'x' does not match with a table name or alias name used in the query.");
    EXPECT_EQ(messages("SELECT (SELECT 1, 2)"),
              "116 Only one expression can be specified in the select list when the subquery is not "
              "introduced with "
              "EXISTS.");
    EXPECT_EQ(messages("SELECT (SELECT v FROM (VALUES (1), (2)) t (v))"),
              "512 Subquery returned more than 1 value. This is not permitted when the subquery follows =, "
              "!=, <, <= , "
              ">, >= or when the subquery is used as an expression.");
    EXPECT_EQ(
        messages("SELECT 1 FROM a ORDER BY 3"),
        "108 The ORDER BY position number 3 is out of range of the number of items in the select list.");
}

// ---------------------------------------------------------------------------------------------- changes

TEST_F(Statements, TablesRefuseWhatTheirConstraintsForbid) {
    m_runner.run(
        "CREATE TABLE t (i int NOT NULL CONSTRAINT PK_t PRIMARY KEY, n varchar(3) NULL, c int CONSTRAINT "
        "CK_t "
        "CHECK (c > 0))");
    m_runner.run("INSERT t VALUES (1, 'a', 1)");
    EXPECT_EQ(messages("INSERT t VALUES (NULL, 'a', 1)"),
              "515 Cannot insert the value NULL into column 'i', table 'Testowa.dbo.t'; column does not "
              "allow nulls. "
              "INSERT fails.");
    EXPECT_EQ(
        messages("INSERT t VALUES (1, 'b', 1)"),
        "2627 Violation of PRIMARY KEY constraint 'PK_t'. Cannot insert duplicate key in object 'dbo.t'. The "
        "duplicate key value is (1).");
    EXPECT_EQ(messages("INSERT t VALUES (2, 'b', 0)"),
              "547 The INSERT statement conflicted with the CHECK constraint \"CK_t\". The conflict occurred "
              "in database "
              "\"Testowa\", table \"dbo.t\", column 'c'.");
    EXPECT_EQ(messages("INSERT t VALUES (2, 'abcd', 1)"),
              "2628 String or binary data would be truncated in table 'Testowa.dbo.t', column 'n'. Truncated "
              "value: 'abc'.");
    EXPECT_EQ(run("SELECT i, n, c FROM t"), "1|'a'|1");
}

TEST_F(Statements, InsertedValuesTakeTheTypeOfTheirColumn) {
    m_runner.run("CREATE TABLE t (i int, d decimal(9,2), v varchar(10), n nvarchar(10), m money, b bit)");
    m_runner.run("INSERT t VALUES ('12', '1.555', 5, 1.5, '3.14159', 'false')");
    m_runner.run("INSERT t VALUES (1.9, 2, '', N'ż', 1, 5)");
    // The rows of one VALUES list have one type in each column, so text beside a number must be a number.
    EXPECT_EQ(run("INSERT t (n) VALUES (1.5), (N'x')"), "Msg 8114");
    EXPECT_EQ(run("SELECT i, d, v, n, m, b FROM t ORDER BY i DESC"),
              "12|1.56|'5'|'1.5'|3.1416|0;1|2.00|''|'ż'|1.0000|1");
}

TEST_F(Statements, PrintAndRaiserrorFormatTheirText) {
    EXPECT_EQ(messages("PRINT 1.50"), "0 1.50");
    EXPECT_EQ(messages("DECLARE @d datetime = '20240102 03:04:05' PRINT @d"), "0 Jan  2 2024  3:04AM");
    EXPECT_EQ(messages("RAISERROR('%s ma %d szt. %5d|%-5d| %i %% %x', 10, 1, 'A', 5, 42, 42, 7, 255)"),
              "50000 A ma 5 szt.    42|42   | 7 % ff");
}

TEST_F(Statements, ForeignKeysHold) {
    m_runner.run("CREATE TABLE p (i int PRIMARY KEY) INSERT p VALUES (1)");
    m_runner.run("CREATE TABLE c (j int CONSTRAINT FK_c REFERENCES p (i))");
    EXPECT_EQ(messages("INSERT c VALUES (2)"),
              "547 The INSERT statement conflicted with the FOREIGN KEY constraint \"FK_c\". The conflict "
              "occurred in "
              "database \"Testowa\", table \"dbo.p\", column 'i'.");
    EXPECT_EQ(run("INSERT c VALUES (1), (NULL) SELECT COUNT(*) FROM c"), "2");
    EXPECT_EQ(messages("DELETE p"),
              "547 The DELETE statement conflicted with the REFERENCE constraint \"FK_c\". The conflict "
              "occurred in "
              "database \"Testowa\", table \"dbo.c\", column 'j'.");
}

TEST_F(Statements, IdentityColumnsCountOn) {
    m_runner.run("CREATE TABLE t (i int IDENTITY(10, 5), n varchar(5))");
    EXPECT_EQ(
        typed("INSERT t (n) VALUES ('a') INSERT t (n) VALUES ('b') SELECT SCOPE_IDENTITY(), @@IDENTITY"),
        "decimal(38,0) 15|decimal(38,0) 15");
    EXPECT_EQ(messages("INSERT t (i, n) VALUES (1, 'c')"),
              "544 Cannot insert explicit value for identity column in table 't' when IDENTITY_INSERT is set "
              "to OFF.");
    EXPECT_EQ(run("SET IDENTITY_INSERT t ON INSERT t (i, n) VALUES (100, 'c') SET IDENTITY_INSERT t OFF "
                  "INSERT t (n) "
                  "VALUES ('d') SELECT MAX(i) FROM t"),
              "105");
    EXPECT_EQ(run("SELECT IDENT_CURRENT('t'), IDENT_SEED('t'), IDENT_INCR('t')"), "105|10|5");
}

TEST_F(Statements, InsertCountsItsColumns) {
    m_runner.run("CREATE TABLE t (a int, b int DEFAULT 7)");
    EXPECT_EQ(
        messages("INSERT t (a, b) VALUES (1)"),
        "109 There are more columns in the INSERT statement than values specified in the VALUES clause. The "
        "number "
        "of values in the VALUES clause must match the number of columns specified in the INSERT statement.");
    EXPECT_EQ(
        messages("INSERT t (a) VALUES (1, 2)"),
        "110 There are fewer columns in the INSERT statement than values specified in the VALUES clause. The "
        "number of values in the VALUES clause must match the number of columns specified in the INSERT "
        "statement.");
    EXPECT_EQ(messages("INSERT t VALUES (1)"),
              "213 Column name or number of supplied values does not match table definition.");
    EXPECT_EQ(messages("INSERT t (a, b) SELECT 1"),
              "120 The select list for the INSERT statement contains fewer items than the insert list. The "
              "number of "
              "SELECT values must match the number of INSERT columns.");
    EXPECT_EQ(run("INSERT t (a) VALUES (1) INSERT t VALUES (2, DEFAULT) INSERT t DEFAULT VALUES SELECT a, b "
                  "FROM t"),
              "1|7;2|7;NULL|7");
}

TEST_F(Statements, UpdateReadsOldValuesAndJoins) {
    m_runner.run(
        "CREATE TABLE t (a int, b int) INSERT t VALUES (1, 2) CREATE TABLE u (a int, n int) INSERT u VALUES "
        "(2, "
        "50)");
    EXPECT_EQ(run("UPDATE t SET a = b, b = a SELECT a, b FROM t"), "2|1");
    EXPECT_EQ(run("UPDATE x SET b = u.n FROM t x JOIN u ON u.a = x.a SELECT a, b FROM t"), "2|50");
    EXPECT_EQ(run("DECLARE @v int UPDATE t SET @v = b = b + 1 SELECT @v"), "51");
    EXPECT_EQ(run("UPDATE t SET b += 9 OUTPUT deleted.b, inserted.b WHERE a = 2"), "51|60");
    EXPECT_EQ(run("DELETE x OUTPUT deleted.a FROM t x JOIN u ON u.a = x.a SELECT COUNT(*) FROM t"), "2 / 0");
}

TEST_F(Statements, OutputGoesIntoTables) {
    EXPECT_EQ(run("CREATE TABLE t (i int IDENTITY, n varchar(5)) DECLARE @o TABLE (i int, n varchar(5)) "
                  "INSERT t (n) OUTPUT "
                  "inserted.i, inserted.n INTO @o VALUES ('a'), ('b') SELECT i, n FROM @o ORDER BY i"),
              "1|'a';2|'b'");
}

TEST_F(Statements, SelectIntoMakesATable) {
    EXPECT_EQ(typed("SELECT 1 AS a, CAST('x' AS nvarchar(5)) AS b, CAST(1.5 AS decimal(9,3)) AS c INTO #t "
                    "SELECT a, b, c FROM #t"),
              "int 1|nvarchar(5) 'x'|decimal(9,3) 1.500");
    EXPECT_EQ(messages("SELECT 1 INTO #u"),
              "1038 An object or column name is missing or empty. For SELECT INTO statements, verify each "
              "column has a "
              "name. For other statements, look for empty alias names. Aliases defined as \"\" or [] are not "
              "allowed. "
              "Change the alias to a valid name.");
}

// ---------------------------------------------------------------------------------------- flow and errors

TEST_F(Statements, CatchSeesTheError) {
    EXPECT_EQ(run("BEGIN TRY\nSELECT 1 / 0\nEND TRY\nBEGIN CATCH\nSELECT ERROR_NUMBER(), ERROR_MESSAGE(), "
                  "ERROR_LINE(), "
                  "ERROR_SEVERITY(), ERROR_PROCEDURE()\nEND CATCH"),
              "8134|'Divide by zero error encountered.'|2|16|NULL");
    EXPECT_EQ(run("BEGIN TRY RAISERROR('a %s %d', 16, 3, 'b', 5) END TRY BEGIN CATCH SELECT ERROR_NUMBER(), "
                  "ERROR_MESSAGE(), ERROR_STATE() END CATCH"),
              "50000|'a b 5'|3");
    EXPECT_EQ(run("BEGIN TRY THROW 50001, N'ż', 2 END TRY BEGIN CATCH SELECT ERROR_NUMBER(), ERROR_MESSAGE() "
                  "END CATCH"),
              "50001|'ż'");
    EXPECT_EQ(messages("BEGIN TRY THROW 50001, N'x', 2 END TRY BEGIN CATCH THROW END CATCH"), "50001 x");
}

TEST_F(Statements, ErrorsOfSmallScopeLetTheBatchGoOn) {
    EXPECT_EQ(run("SELECT 1 / 0 SELECT 2"), "Msg 8134 / 2");
    EXPECT_EQ(run("RAISERROR('x', 16, 1) SELECT @@ERROR"), "Msg 50000 / 50000");
    // A failed conversion ends the batch.
    EXPECT_EQ(run("SELECT CAST('x' AS int) SELECT 2"), "Msg 245");
    EXPECT_EQ(run("THROW 50000, 'x', 1; SELECT 2"), "Msg 50000");
}

TEST_F(Statements, LoopsAndReturnsWork) {
    EXPECT_EQ(run("DECLARE @i int = 0, @s int = 0 WHILE 1 = 1 BEGIN SET @i += 1 IF @i = 3 CONTINUE IF @i > 5 "
                  "BREAK SET @s "
                  "+= @i END SELECT @s"),
              "12");
    EXPECT_EQ(run("SELECT 1 RETURN SELECT 2"), "1");
}

TEST_F(Statements, CursorsWalkTheirRows) {
    EXPECT_EQ(
        run("DECLARE @v int, @s varchar(20) = '' DECLARE c CURSOR LOCAL FAST_FORWARD FOR SELECT v FROM "
            "(VALUES (1), "
            "(2), (3)) t (v) ORDER BY v DESC OPEN c FETCH NEXT FROM c INTO @v WHILE @@FETCH_STATUS = 0 BEGIN "
            "SET @s += "
            "CAST(@v AS varchar(5)) + ',' FETCH NEXT FROM c INTO @v END CLOSE c DEALLOCATE c SELECT @s, "
            "@@FETCH_STATUS"),
        "'3,2,1,'|-1");
}

TEST_F(Statements, TransactionsRollBack) {
    m_runner.run("CREATE TABLE t (a int)");
    EXPECT_EQ(run("BEGIN TRAN INSERT t VALUES (1) SELECT @@TRANCOUNT ROLLBACK SELECT @@TRANCOUNT, (SELECT "
                  "COUNT(*) FROM t)"),
              "1 / 0|0");
    EXPECT_EQ(run("BEGIN TRAN BEGIN TRAN INSERT t VALUES (1) COMMIT SELECT @@TRANCOUNT COMMIT SELECT "
                  "COUNT(*) FROM t"),
              "1 / 1");
    EXPECT_EQ(run("BEGIN TRAN INSERT t VALUES (2) SAVE TRAN s INSERT t VALUES (3) ROLLBACK TRAN s COMMIT "
                  "SELECT a FROM t"),
              "1;2");
    EXPECT_EQ(messages("COMMIT"),
              "3902 The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION.");
    EXPECT_EQ(messages("ROLLBACK"),
              "3903 The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION.");
    // A variable, also of a table, is not part of the transaction.
    EXPECT_EQ(
        run("DECLARE @t TABLE (a int) BEGIN TRAN INSERT @t VALUES (1) ROLLBACK SELECT COUNT(*) FROM @t"),
        "1");
}

// ---------------------------------------------------------------------------------------------- modules

TEST_F(Statements, ProceduresTakeAndGiveParameters) {
    m_runner.run(
        "CREATE PROCEDURE p @a int, @b nvarchar(20) = N'x', @c int = NULL OUTPUT AS SET @c = @a * 2 SELECT "
        "@a, @b "
        "RETURN 7");
    EXPECT_EQ(run("DECLARE @rc int, @o int EXEC @rc = p 5, @c = @o OUTPUT SELECT @rc, @o"), "5|'x' / 7|10");
    EXPECT_EQ(run("EXEC dbo.p @b = N'y', @a = 1"), "1|'y'");
    EXPECT_EQ(messages("EXEC p"),
              "201 Procedure or function 'p' expects parameter '@a', which was not supplied.");
    EXPECT_EQ(messages("EXEC p 1, 2, 3, 4"),
              "8144 Procedure or function p has too many arguments specified.");
    EXPECT_EQ(messages("EXEC p @z = 1"), "8145 @z is not a parameter for procedure p.");
    EXPECT_EQ(messages("EXEC nowhere"), "2812 Could not find stored procedure 'nowhere'.");
}

TEST_F(Statements, FunctionsOfEveryKindAnswer) {
    m_runner.run(
        "CREATE FUNCTION f (@a int, @b int = 5) RETURNS int AS BEGIN DECLARE @r int = @a * 10 + @b RETURN @r "
        "END");
    m_runner.run(
        "CREATE FUNCTION g (@n int) RETURNS TABLE AS RETURN (SELECT v FROM (VALUES (1), (2), (3)) t (v) "
        "WHERE v <= "
        "@n)");
    m_runner.run(
        "CREATE FUNCTION h (@n int) RETURNS @r TABLE (i int PRIMARY KEY, s varchar(5)) AS BEGIN WHILE @n > 0 "
        "BEGIN "
        "INSERT @r VALUES (@n, 'x') SET @n -= 1 END RETURN END");
    EXPECT_EQ(typed("SELECT dbo.f(1, 2), dbo.f(1, DEFAULT)"), "int 12|int 15");
    EXPECT_EQ(run("SELECT v FROM dbo.g(2) ORDER BY v"), "1;2");
    EXPECT_EQ(run("SELECT i, s FROM dbo.h(2) ORDER BY i"), "1|'x';2|'x'");
    EXPECT_EQ(run("SELECT t.v, x.v FROM g(2) t CROSS JOIN dbo.g(1) x ORDER BY 1, 2"), "1|1;2|1");
    EXPECT_EQ(run("SELECT SUM(dbo.f(v, 0)) FROM g(3)"), "60");
}

TEST_F(Statements, ViewsShowTheirQuery) {
    m_runner.run("CREATE TABLE t (a int, b varchar(5)) INSERT t VALUES (1, 'x')");
    m_runner.run("CREATE VIEW v AS SELECT a AS [Kod;1000;0], b FROM t");
    EXPECT_EQ(run("SELECT [Kod;1000;0], V.b FROM dbo.v V(nolock) WHERE b = 'X'"), "1|'x'");
    EXPECT_EQ(m_runner.names("SELECT * FROM v"), "Kod;1000;0|b");
}

TEST_F(Statements, DynamicTextRunsInItsOwnScope) {
    EXPECT_EQ(run("DECLARE @s nvarchar(50) = N'SELECT 1 + 1' EXEC (@s)"), "2");
    EXPECT_EQ(run("DECLARE @r int EXEC sp_executesql N'SET @b = @a * 2', N'@a int, @b int OUTPUT', @a = 4, "
                  "@b = @r OUTPUT "
                  "SELECT @r"),
              "8");
    EXPECT_EQ(messages("DECLARE @a int = 1 EXEC ('SELECT @a')"),
              "137 Must declare the scalar variable \"@a\".");
}

TEST_F(Statements, TemporaryTablesLiveAsLongAsTheirScope) {
    m_runner.run("CREATE PROCEDURE p AS CREATE TABLE #t (a int) INSERT #t VALUES (5) SELECT a FROM #t");
    EXPECT_EQ(run("EXEC p SELECT COUNT(*) FROM #t"), "5 / Msg 208");
    EXPECT_EQ(run("CREATE TABLE ##g (a int) INSERT ##g VALUES (1) SELECT a FROM tempdb..##g"), "1");
    EXPECT_EQ(run("IF OBJECT_ID('tempdb..##g') IS NOT NULL DROP TABLE ##g SELECT OBJECT_ID('tempdb..##g')"),
              "NULL");
}

}  // namespace
