#include "magdb/tsql/ParserTest.h"

#include <gtest/gtest.h>

namespace {

using namespace magdb::tsql;

class Statements : public testing::TestWithParam<TreeCase> {};

TEST_P(Statements, HaveTheirTree) {
    EXPECT_EQ(parsed(GetParam().text), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Changes, Statements,
    testing::Values(
        TreeCase{"INSERT INTO t (a, b) VALUES (1, DEFAULT), (2, NULL)",
                 "(insert (target t) (columns a b) (row 1 default) (row 2 null))"},
        TreeCase{"INSERT t DEFAULT VALUES", "(insert (target t) default-values)"},
        TreeCase{"INSERT #t (a) SELECT b FROM u",
                 "(insert (target #t) (columns a) (select (items b) (from (table u))))"},
        TreeCase{"INSERT @t (SELECT 1)", "(insert (target @t) (select (items 1)))"},
        TreeCase{"INSERT INTO t EXEC p 1", "(insert (target t) (exec p 1))"},
        TreeCase{"INSERT t (a) OUTPUT inserted.a, inserted.b AS c INTO @o (x, y) VALUES (1)",
                 "(insert (target t) (columns a) (output (items inserted.a (as \"c\" inserted.b)) (into @o "
                 "(columns x "
                 "y))) (row 1))"},
        TreeCase{"UPDATE t SET a = 1, t.b += 2, @v = c, @w = d = 5, e = DEFAULT WHERE f = 1",
                 "(update (target t) (set = a 1) (set += t.b 2) (set = @v c) (set = @w d 5) (set = e "
                 "default) (where "
                 "(= f 1)))"},
        TreeCase{
            "UPDATE x SET a = y.b FROM t x JOIN u y ON x.i = y.i",
            "(update (target x) (set = a y.b) (from (join (table t (as \"x\")) (table u (as \"y\")) (= x.i "
            "y.i))))"},
        TreeCase{"UPDATE t WITH (UPDLOCK) SET a = 1 OUTPUT deleted.a",
                 "(update (target t (hints UPDLOCK)) (set = a 1) (output (items deleted.a)))"},
        TreeCase{"DELETE FROM x FROM t x WHERE x.a = 1",
                 "(delete (target x) (from (table t (as \"x\"))) (where (= x.a 1)))"},
        TreeCase{"DELETE TOP (3) t", "(delete (top 3) (target t))"},
        TreeCase{
            "WITH c AS (SELECT 1 a) DELETE t WHERE a IN (SELECT a FROM c)",
            "(delete (with c (select (items (as \"a\" 1)))) (target t) (where (in a (select (items a) (from "
            "(table c))))))"},
        TreeCase{"TRUNCATE TABLE dbo.t", "(truncate dbo.t)"}));

INSTANTIATE_TEST_SUITE_P(
    Flow, Statements,
    testing::Values(TreeCase{"IF @a = 1 SET @b = 2; ELSE IF @a = 2 BEGIN SET @b -= 3 SET @c = 4 END",
                             "(if (= @a 1) (set = @b 2) (if (= @a 2) (block (set -= @b 3) (set = @c 4))))"},
                    TreeCase{"WHILE 1 = 1 BEGIN IF @a > 1 BREAK; CONTINUE END",
                             "(while (= 1 1) (block (if (> @a 1) (break)) (continue)))"},
                    TreeCase{"BEGIN TRY SELECT 1 END TRY BEGIN CATCH THROW END CATCH SELECT 2",
                             "(try (select (items 1)) (catch (throw))) (select (items 2))"},
                    TreeCase{"BEGIN TRY EXEC p; END TRY BEGIN CATCH END CATCH;", "(try (exec p) (catch))"},
                    TreeCase{"RETURN", "(return)"},
                    TreeCase{"IF 1 = 1 RETURN SELECT 1", "(if (= 1 1) (return)) (select (items 1))"},
                    TreeCase{"THROW 50000, N'x', 1", "(throw 50000 N'x' 1)"},
                    TreeCase{"RAISERROR (N'a %d', 16, 1, @x) WITH NOWAIT, LOG",
                             "(raiserror N'a %d' 16 1 @x log nowait)"},
                    TreeCase{"PRINT 'a' + @b", "(print (+ 'a' @b))"},
                    TreeCase{"USE [master]", "(use master)"}));

INSTANTIATE_TEST_SUITE_P(
    Declarations, Statements,
    testing::Values(
        TreeCase{"DECLARE @a int, @b AS nvarchar(50) = N'x', @c decimal(10, 2) = -1.5",
                 "(declare (@a int) (@b nvarchar(50) N'x') (@c decimal(10,2) (neg 1.5)))"},
        TreeCase{
            "DECLARE @t TABLE (i int IDENTITY(1, 1) NOT NULL PRIMARY KEY, n nvarchar(5) DEFAULT N'x', UNIQUE "
            "(n))",
            "(declare (@t (column i int not-null identity=1,1 (primary-key (columns i))) (column n "
            "nvarchar(5) "
            "(default N'x')) (unique (columns n))))"},
        TreeCase{"DECLARE c CURSOR LOCAL FAST_FORWARD FOR SELECT a FROM t ORDER BY a",
                 "(declare-cursor c (options LOCAL FAST_FORWARD) (query (select (items a) (from (table t))) "
                 "(order "
                 "a)))"},
        TreeCase{"OPEN c FETCH NEXT FROM c INTO @a, @b FETCH c FETCH ABSOLUTE -1 FROM c CLOSE c DEALLOCATE c",
                 "(open c) (fetch next c (into @a @b)) (fetch next c) (fetch absolute (neg 1) c) (close c) "
                 "(deallocate c)"}));

INSTANTIATE_TEST_SUITE_P(
    Session, Statements,
    testing::Values(
        TreeCase{"SET NOCOUNT ON SET ANSI_NULLS, QUOTED_IDENTIFIER OFF",
                 "(set-option \"NOCOUNT\" on) (set-option \"ANSI_NULLS\" \"QUOTED_IDENTIFIER\" off)"},
        TreeCase{
            "SET TEXTSIZE 2147483647 SET ROWCOUNT @n SET LOCK_TIMEOUT -1",
            "(set-option \"TEXTSIZE\" 2147483647) (set-option \"ROWCOUNT\" @n) (set-option \"LOCK_TIMEOUT\" "
            "(neg 1))"},
        TreeCase{"SET LANGUAGE us_english SET LANGUAGE 'Polski' SET DATEFORMAT dmy",
                 "(set-option \"LANGUAGE\" \"US_ENGLISH\") (set-option \"LANGUAGE\" 'Polski') (set-option "
                 "\"DATEFORMAT\" \"DMY\")"},
        TreeCase{"SET TRANSACTION ISOLATION LEVEL READ UNCOMMITTED",
                 "(set-option \"TRANSACTION ISOLATION LEVEL\" \"READ UNCOMMITTED\")"},
        TreeCase{"SET IDENTITY_INSERT dbo.t ON", "(set-option \"IDENTITY_INSERT\" dbo.t on)"},
        TreeCase{"SET STATISTICS IO OFF", "(set-option \"STATISTICS IO\" off)"},
        TreeCase{
            "BEGIN TRAN BEGIN TRANSACTION a SAVE TRAN b ROLLBACK TRAN b COMMIT WORK ROLLBACK COMMIT TRAN",
            "(begin-tran) (begin-tran a) (save-tran b) (rollback b) (commit) (rollback) (commit)"}));

INSTANTIATE_TEST_SUITE_P(
    Execution, Statements,
    testing::Values(
        TreeCase{
            "EXEC @rc = dbo.p 1, 'x', @a = -1.5, @b = @c OUTPUT, @d = DEFAULT",
            "(exec (return \"@rc\") dbo.p 1 'x' (arg @a (neg 1.5)) (arg @b @c output) (arg @d default))"},
        TreeCase{"EXECUTE p word, NULL, @@SPID, @v OUT", "(exec p 'word' null @@SPID (arg @v output))"},
        TreeCase{"EXEC @name 1", "(exec @name 1)"},
        TreeCase{"EXEC ('SELECT ' + @a)", "(exec-text (+ 'SELECT ' @a))"},
        TreeCase{"sp_databases", "(exec sp_databases)"},
        TreeCase{"sp_help 'x' SELECT 1", "(exec sp_help 'x') (select (items 1))"},
        TreeCase{"EXEC p; EXEC q", "(exec p) (exec q)"}));

INSTANTIATE_TEST_SUITE_P(Rest, Statements,
                         testing::Values(TreeCase{"", ""}, TreeCase{" ;; -- nothing\n", ""},
                                         TreeCase{
                                             "SELECT 1 SELECT 2;SELECT 3",
                                             "(select (items 1)) (select (items 2)) (select (items 3))"}));

}  // namespace
