#include "magdb/tsql/ParserTest.h"

#include <gtest/gtest.h>

namespace {

using namespace magdb::tsql;

class Definitions : public testing::TestWithParam<TreeCase> {};

TEST_P(Definitions, HaveTheirTree) {
    EXPECT_EQ(parsed(GetParam().text), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Tables, Definitions,
    testing::Values(
        TreeCase{
            "CREATE TABLE dbo.T (Id int IDENTITY NOT NULL CONSTRAINT PK_T PRIMARY KEY CLUSTERED, "
            "Name nvarchar(50) COLLATE Polish_CI_AS NULL CONSTRAINT DF_N DEFAULT (N''), "
            "Total AS (Id + 1) PERSISTED, "
            "Ref int REFERENCES U (Id) ON DELETE CASCADE CHECK (Ref > 0), "
            "CONSTRAINT UQ UNIQUE NONCLUSTERED (Name, Id DESC), "
            "CONSTRAINT FK FOREIGN KEY (Ref, Id) REFERENCES dbo.U (a, b) ON UPDATE SET NULL)",
            "(create-table dbo.T (column Id int not-null identity=1,1 (primary-key (name \"PK_T\") clustered "
            "(columns Id))) (column Name nvarchar(50) (collate \"Polish_CI_AS\") null (default N'') "
            "(default-name \"DF_N\")) (column Total (computed (+ Id 1)) persisted) (column Ref int "
            "(foreign-key "
            "(columns Ref) (references U (columns Id)) (on-delete \"cascade\")) (check (columns Ref) (> Ref "
            "0))) "
            "(unique (name \"UQ\") nonclustered (columns Name Id desc)) (foreign-key (name \"FK\") (columns "
            "Ref "
            "Id) (references dbo.U (columns a b)) (on-update \"set-null\")))"},
        TreeCase{"CREATE TABLE #t (a bigint identity(-5, 2), b varbinary(max)) ON [PRIMARY]",
                 "(create-table #t (column a bigint identity=-5,2) (column b varbinary(max)))"},
        TreeCase{"ALTER TABLE t ADD a int NOT NULL DEFAULT 0 WITH VALUES, CONSTRAINT c CHECK (a > 0)",
                 "(alter-table t (add (column a int not-null (default 0) with-values) (check (name \"c\") (> "
                 "a 0))))"},
        TreeCase{"ALTER TABLE t ADD CONSTRAINT d DEFAULT (1) FOR a",
                 "(alter-table t (add (default-for (name \"d\") (columns a) 1)))"},
        TreeCase{"ALTER TABLE t DROP COLUMN IF EXISTS a, b", "(alter-table t (drop-column if-exists a b))"},
        TreeCase{"ALTER TABLE t DROP CONSTRAINT c", "(alter-table t (drop-constraint c))"},
        TreeCase{"ALTER TABLE t ALTER COLUMN a nvarchar(10) NOT NULL",
                 "(alter-table t (alter-column (column a nvarchar(10) not-null)))"},
        TreeCase{"CREATE UNIQUE CLUSTERED INDEX i ON dbo.t (a, b DESC) WITH (FILLFACTOR = 80)",
                 "(create-index unique clustered i dbo.t (columns a b desc))"},
        TreeCase{"CREATE INDEX i ON t (a) INCLUDE (b, c) WHERE a IS NOT NULL",
                 "(create-index i t (columns a) (include b c) (where (is-not-null a)))"},
        TreeCase{"DROP INDEX IF EXISTS i ON dbo.t DROP INDEX t.j",
                 "(drop-index if-exists i dbo.t) (drop-index j t)"},
        TreeCase{
            "DROP TABLE IF EXISTS #a, dbo.b; DROP VIEW v; DROP PROC p; DROP FUNCTION IF EXISTS f",
            "(drop table if-exists #a dbo.b) (drop view v) (drop procedure p) (drop function if-exists f)"}));

INSTANTIATE_TEST_SUITE_P(
    Modules, Definitions,
    testing::Values(
        TreeCase{"CREATE VIEW dbo.v (a) WITH SCHEMABINDING AS SELECT 1",
                 "(create-view dbo.v (columns a) schemabinding (select (items 1)))"},
        TreeCase{"CREATE PROCEDURE p AS SELECT 1 SELECT 2",
                 "(create-procedure p (body (select (items 1)) (select (items 2))))"},
        TreeCase{"CREATE PROC dbo.p (@a int, @b nvarchar(50) = NULL OUTPUT, @c AS bit = -1, @d varchar(9) = "
                 "word) WITH "
                 "RECOMPILE, EXECUTE AS OWNER AS BEGIN SET NOCOUNT ON; RETURN 0 END",
                 "(create-procedure dbo.p (@a int) (@b nvarchar(50) (default null) output) (@c bit (default "
                 "(neg 1))) "
                 "(@d varchar(9) (default 'word')) (option \"RECOMPILE\") (option \"EXECUTE AS OWNER\") "
                 "(body (block "
                 "(set-option \"NOCOUNT\" on) (return 0))))"},
        TreeCase{"ALTER PROCEDURE p @a int OUT AS RETURN",
                 "(alter-procedure p (@a int output) (body (return)))"},
        TreeCase{"CREATE FUNCTION f (@a int) RETURNS int AS BEGIN RETURN @a + 1 END",
                 "(create-function f (@a int) (returns int) (body (return (+ @a 1))))"},
        TreeCase{"CREATE FUNCTION f () RETURNS TABLE AS RETURN (SELECT 1 a)",
                 "(create-function f (returns table) (select (items (as \"a\" 1))))"},
        TreeCase{
            "CREATE FUNCTION f () RETURNS @r TABLE (a int) WITH SCHEMABINDING BEGIN INSERT @r SELECT 1 "
            "RETURN END;",
            "(create-function f (returns table @r (column a int)) (option \"SCHEMABINDING\") (body (insert "
            "(target @r) (select (items 1))) (return)))"}));

INSTANTIATE_TEST_SUITE_P(
    Principals, Definitions,
    testing::Values(
        TreeCase{"CREATE LOGIN l WITH PASSWORD = N'x;1', DEFAULT_DATABASE = master, CHECK_POLICY = OFF",
                 "(create login l (password \"x;1\"))"},
        TreeCase{"CREATE LOGIN l WITH PASSWORD = ''", "(create login l (password \"\"))"},
        TreeCase{"CREATE USER u FOR LOGIN l WITH DEFAULT_SCHEMA = dbo", "(create user u (for-login \"l\"))"},
        TreeCase{"DROP USER IF EXISTS u DROP LOGIN l", "(drop user if-exists u) (drop login l)"},
        TreeCase{"ALTER ROLE db_owner ADD MEMBER u", "(add-member role db_owner (member \"u\"))"},
        TreeCase{"GRANT SELECT, VIEW DEFINITION ON OBJECT::dbo.t TO u, public",
                 "(grant \"SELECT\" \"VIEW DEFINITION\" (class \"OBJECT\") (on dbo.t) (to u public))"},
        TreeCase{"REVOKE EXECUTE FROM u DENY EXECUTE ON p TO u",
                 "(revoke \"EXECUTE\" (to u)) (deny \"EXECUTE\" (on p) (to u))"}));

TEST(ModuleText, IsTheWholeBatch) {
    const std::string text = "-- what it does\nCREATE PROCEDURE p AS\nSELECT 1 -- end\n";
    const auto batch = parseBatch(text);
    EXPECT_EQ(batch->source, text);
    const auto& procedure = as<CreateProcedureStatement>(*batch->statements[0]);
    EXPECT_EQ(procedure.pos.line, 2U);
    EXPECT_EQ(textOf(*batch, procedure.bodyText), "SELECT 1");
    EXPECT_EQ(procedure.body[0]->pos.line, 3U);
}

TEST(ModuleText, KeepsDefaultsAndChecksAsWritten) {
    const auto batch = parseBatch("CREATE TABLE t (a int DEFAULT ((0)), b AS (a * 2), CHECK ( a > 0 ))");
    const auto& table = as<CreateTableStatement>(*batch->statements[0]).table;
    EXPECT_EQ(textOf(*batch, table.columns[0].defaultText), "((0))");
    EXPECT_EQ(textOf(*batch, table.columns[1].computedText), "(a * 2)");
    EXPECT_EQ(textOf(*batch, table.constraints[0].exprText), "( a > 0 )");
}

TEST(ParameterText, IsReadAsSpExecutesqlTakesIt) {
    const auto list = parseParameters("@a int, @b nvarchar(50) OUTPUT");
    ASSERT_EQ(list.size(), 2U);
    EXPECT_EQ(list[0].name, "@a");
    EXPECT_EQ(list[0].type.name, "int");
    EXPECT_FALSE(list[0].output);
    EXPECT_EQ(list[1].type.length, 50);
    EXPECT_TRUE(list[1].output);
    EXPECT_TRUE(parseParameters("").empty());
    EXPECT_THROW((void)parseParameters("@a"), SyntaxError);
    EXPECT_THROW((void)parseParameters("@a int SELECT"), SyntaxError);
}

}  // namespace
