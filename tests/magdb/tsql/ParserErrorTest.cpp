#include "magdb/tsql/ParserTest.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using namespace magdb::tsql;

class Errors : public testing::TestWithParam<TreeCase> {};

TEST_P(Errors, HaveNumberLineAndText) {
    EXPECT_EQ(parsed(GetParam().text), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Syntax, Errors,
    testing::Values(
        TreeCase{"SELECT *\nFROM", "error 102 line 2: Incorrect syntax near 'FROM'."},
        TreeCase{"SELECT 1\nFROM t u v", "error 102 line 2: Incorrect syntax near 'v'."},
        TreeCase{"SELECT a FROM WHERE b = 1", "error 156 line 1: Incorrect syntax near the keyword 'WHERE'."},
        TreeCase{"SELECT\n\n, a", "error 102 line 3: Incorrect syntax near ','."},
        TreeCase{"SELECT 'x' 'y' 'z'", "error 102 line 1: Incorrect syntax near 'z'."},
        TreeCase{"BEGIN SELECT 1", "error 102 line 1: Incorrect syntax near '1'."},
        TreeCase{"SELECT 1 END", "error 156 line 1: Incorrect syntax near the keyword 'END'."},
        TreeCase{"SELECT (1", "error 102 line 1: Incorrect syntax near '1'."},
        TreeCase{"SELECT 1)", "error 102 line 1: Incorrect syntax near ')'."},
        TreeCase{"SELECT a = (b = 1)", "error 102 line 1: Incorrect syntax near '='."},
        TreeCase{"SELECT 1; foo bar", "error 102 line 1: Incorrect syntax near 'foo'."},
        TreeCase{"SELECT [] FROM t",
                 "error 1038 line 1: An object or column name is missing or empty. For SELECT INTO "
                 "statements, verify "
                 "each column has a name. For other statements, look for empty alias names. Aliases defined "
                 "as \"\" or "
                 "[] are not allowed. Change the alias to a valid name."},
        TreeCase{"UPDATE t SET a WHERE b = 1",
                 "error 156 line 1: Incorrect syntax near the keyword 'WHERE'."},
        TreeCase{"INSERT t (a, ) VALUES (1)", "error 102 line 1: Incorrect syntax near ')'."},
        TreeCase{"DECLARE @a", "error 102 line 1: Incorrect syntax near '@a'."},
        TreeCase{"SELECT 1 THROW; PRINT 'x' THROW", "error 102 line 1: Incorrect syntax near 'THROW'."},
        TreeCase{"BEGIN END", "error 156 line 1: Incorrect syntax near the keyword 'END'."},
        TreeCase{"SELECT a FROM (SELECT 1 b)", "error 102 line 1: Incorrect syntax near ')'."}));

INSTANTIATE_TEST_SUITE_P(
    Meaning, Errors,
    testing::Values(
        TreeCase{
            "SELECT 1\nWITH a AS (SELECT 1 b) SELECT * FROM a",
            "error 319 line 2: Incorrect syntax near the keyword 'with'. If this statement is a common table "
            "expression, an xmlnamespaces clause or a change tracking context clause, the previous statement "
            "must "
            "be terminated with a semicolon."},
        TreeCase{"SELECT a FROM t WHERE b AND c = 1",
                 "error 4145 line 1: An expression of non-boolean type specified in a context where a "
                 "condition is "
                 "expected, near 'AND'."},
        TreeCase{"IF (1) SELECT 1",
                 "error 4145 line 1: An expression of non-boolean type specified in a context where a "
                 "condition is "
                 "expected, near 'SELECT'."},
        TreeCase{
            "CREATE VIEW v AS SELECT a FROM t ORDER BY a",
            "error 1033 line 1: The ORDER BY clause is invalid in views, inline functions, derived tables, "
            "subqueries, and common table expressions, unless TOP, OFFSET or FOR XML is also specified."},
        TreeCase{"SELECT 1 CREATE PROCEDURE p AS SELECT 1",
                 "error 111 line 1: 'CREATE/ALTER PROCEDURE' must be the first statement in a query batch."},
        TreeCase{"BREAK",
                 "error 135 line 1: Cannot use a BREAK statement outside the scope of a WHILE statement."},
        TreeCase{"SET FOO ON", "error 195 line 1: 'FOO' is not a recognized SET option."},
        TreeCase{"EXEC p @a = 1, 2",
                 "error 119 line 1: Must pass parameter number 2 and subsequent parameters as '@name = "
                 "value'. After "
                 "the form '@name = value' has been used, all subsequent parameters must be passed in the "
                 "form '@name = "
                 "value'."},
        TreeCase{
            "EXEC p 1 OUTPUT",
            "error 179 line 1: Cannot use the OUTPUT option when passing a constant to a stored procedure."},
        TreeCase{
            "CREATE FUNCTION f () RETURNS int AS BEGIN RETURN 1 SELECT 1 END",
            "error 455 line 1: The last statement included within a function must be a return statement."},
        TreeCase{
            "INSERT t VALUES (1, 2), (3)",
            "error 10709 line 1: The number of columns for each row in a table value constructor must be the "
            "same."}));

/// Everything that is left out must be refused by its name.
INSTANTIATE_TEST_SUITE_P(
    Unsupported, Errors,
    testing::Values(
        TreeCase{"MERGE t USING u ON 1 = 1 WHEN MATCHED THEN DELETE;",
                 "error 40517 line 1: This server does not support MERGE."},
        TreeCase{"SELECT 1 GOTO x", "error 40517 line 1: This server does not support GOTO."},
        TreeCase{"SELECT 1; x: SELECT 2",
                 "error 40517 line 1: This server does not support a label for GOTO."},
        TreeCase{"WAITFOR DELAY '0:0:1'", "error 40517 line 1: This server does not support WAITFOR."},
        TreeCase{"SELECT a FROM t FOR XML PATH('')",
                 "error 40517 line 1: This server does not support FOR XML."},
        TreeCase{"SELECT TOP 1 WITH TIES a FROM t ORDER BY a",
                 "error 40517 line 1: This server does not support TOP ... WITH TIES."},
        TreeCase{"CREATE OR ALTER VIEW v AS SELECT 1",
                 "error 40517 line 1: This server does not support CREATE OR ALTER."},
        TreeCase{"CREATE TRIGGER t ON u AFTER INSERT AS SELECT 1",
                 "error 40517 line 1: This server does not support CREATE TRIGGER."},
        TreeCase{"SELECT a FROM t PIVOT (MAX(b) FOR c IN (d)) p",
                 "error 40517 line 1: This server does not support PIVOT."},
        TreeCase{"SELECT a FROM t GROUP BY ROLLUP (a)",
                 "error 40517 line 1: This server does not support GROUP BY ROLLUP."},
        TreeCase{"DECLARE @c CURSOR",
                 "error 40517 line 1: This server does not support a cursor variable or parameter."},
        TreeCase{"DELETE t WHERE CURRENT OF c",
                 "error 40517 line 1: This server does not support WHERE CURRENT OF."},
        TreeCase{"SELECT a FROM s.d.o.t",
                 "error 40517 line 1: This server does not support a name with a server part."},
        TreeCase{"EXECUTE AS USER = 'x'", "error 40517 line 1: This server does not support EXECUTE AS."}));

TEST(Limits, RefuseDeepNestingWithoutExhaustingTheStack) {
    const auto nested = [](const char* open, const char* close, int count) {
        std::string text = "SELECT ";
        for (int i = 0; i < count; ++i)
            text += open;
        text += "1";
        for (int i = 0; i < count; ++i)
            text += close;
        return parsed(text).substr(0, 9);
    };
    EXPECT_EQ(nested("(", ")", 50).substr(0, 8), "(select ");
    EXPECT_EQ(nested("(", ")", 100000), "error 191");
    EXPECT_EQ(nested("(SELECT ", ")", 100000), "error 191");
    EXPECT_EQ(nested("- ", "", 100000), "error 191");
    EXPECT_EQ(nested("~", "", 100000), "error 191");
    EXPECT_EQ(nested("f(", ")", 100000), "error 191");
    EXPECT_EQ(nested("CASE WHEN 1=1 THEN ", " END", 100000), "error 191");
}

TEST(Limits, RefuseLongChainsThatWouldMakeDeepTrees) {
    const auto chain = [](std::string text, const char* link, int count) {
        for (int i = 0; i < count; ++i)
            text += link;
        return parsed(text).substr(0, 9);
    };
    EXPECT_EQ(chain("SELECT 1", " + 1", 900).substr(0, 8), "(select ");
    EXPECT_EQ(chain("SELECT 1", " + 1", 100000), "error 191");
    EXPECT_EQ(chain("SELECT 1 WHERE 1 = 1", " OR 1 = 1", 100000), "error 191");
    EXPECT_EQ(chain("SELECT 1", " UNION SELECT 1", 100000), "error 191");
    EXPECT_EQ(chain("SELECT 1 FROM t", " CROSS JOIN t", 100000), "error 106");
    EXPECT_EQ(chain("IF 1 = 1 SELECT 1", " ELSE IF 1 = 1 SELECT 1", 100000), "error 191");
    EXPECT_EQ(chain("SELECT a", " COLLATE b", 100000), "error 191");
}

TEST(Limits, RefuseMoreThanAThousandRowsOfValues) {
    std::string text = "INSERT t VALUES (1)";
    for (int i = 1; i < 1000; ++i)
        text += ",(1)";
    EXPECT_EQ(parsed(text).substr(0, 7), "(insert");
    EXPECT_EQ(parsed(text + ",(1)").substr(0, 11), "error 10738");
}

}  // namespace
