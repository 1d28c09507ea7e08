#include "magdb/tsql/ParserTest.h"

#include <gtest/gtest.h>

namespace {

using namespace magdb::tsql;

class Expressions : public testing::TestWithParam<TreeCase> {};

TEST_P(Expressions, HaveTheirTree) {
    EXPECT_EQ(print(*parseExpression(GetParam().text)), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    Arithmetic, Expressions,
    testing::Values(TreeCase{"1 + 2 * 3 - 4", "(- (+ 1 (* 2 3)) 4)"},
                    TreeCase{"(1 + 2) * 3", "(* (+ 1 2) 3)"},
                    // Bit operators bind like + and -.
                    TreeCase{"1 + 2 & 3 | 4 ^ 5", "(^ (| (& (+ 1 2) 3) 4) 5)"},
                    // A sign binds less than * and /.
                    TreeCase{"-100.0/-100.0*10.0", "(neg (/ 100.0 (neg (* 100.0 10.0))))"},
                    TreeCase{"- - 1", "(neg (neg 1))"}, TreeCase{"~1 + ~-a", "(+ (~ 1) (~ (neg a)))"},
                    TreeCase{"a % 2 / 3", "(/ (% a 2) 3)"},
                    TreeCase{"'a' + N'b' + @c + @@SPID", "(+ (+ (+ 'a' N'b') @c) @@SPID)"},
                    TreeCase{"a COLLATE Polish_CI_AS + b", "(+ (collate a Polish_CI_AS) b)"}));

INSTANTIATE_TEST_SUITE_P(Names, Expressions,
                         testing::Values(TreeCase{"[a b].\"c\"", "a b.c"}, TreeCase{"db..t.c", "db..t.c"},
                                         TreeCase{"dbo.f(1, DEFAULT)", "(call dbo.f 1 default)"},
                                         TreeCase{"host_name()", "(call host_name)"},
                                         TreeCase{"CURRENT_TIMESTAMP", "(call CURRENT_TIMESTAMP niladic)"},
                                         TreeCase{"left(a, 1) + right(b, 2)",
                                                  "(+ (call left a 1) (call right b 2))"},
                                         TreeCase{"cast", "cast"}, TreeCase{"c.precision", "c.precision"}));

INSTANTIATE_TEST_SUITE_P(
    Functions, Expressions,
    testing::Values(TreeCase{"COUNT(*)", "(call COUNT *)"},
                    TreeCase{"COUNT(DISTINCT a)", "(call COUNT distinct a)"},
                    TreeCase{"SUM(ALL a)", "(call SUM a)"},
                    TreeCase{"DATEADD(Day, 1, GETDATE())", "(call DATEADD day 1 (call GETDATE))"},
                    TreeCase{"IIF(a > 1 AND b IS NULL, 'x', NULL)",
                             "(call IIF (and (> a 1) (is-null b)) 'x' null)"},
                    TreeCase{"STRING_AGG(a, ',') WITHIN GROUP (ORDER BY b DESC, c)",
                             "(call STRING_AGG a ',' (within (desc b) c))"},
                    TreeCase{"ROW_NUMBER() OVER (PARTITION BY a, b ORDER BY c DESC)",
                             "(call ROW_NUMBER (over (partition a b) (order (desc c))))"},
                    TreeCase{"SUM(a) OVER ()", "(call SUM a (over))"},
                    TreeCase{"SUM(a) OVER (ORDER BY b ROWS 2 PRECEDING)",
                             "(call SUM a (over (order b) (rows (preceding 2) current-row)))"},
                    TreeCase{"SUM(a) OVER (ORDER BY b RANGE BETWEEN CURRENT ROW AND UNBOUNDED FOLLOWING)",
                             "(call SUM a (over (order b) (range current-row unbounded-following)))"}));

INSTANTIATE_TEST_SUITE_P(
    Conversions, Expressions,
    testing::Values(TreeCase{"CAST(a AS nvarchar(max))", "(cast a nvarchar(max))"},
                    TreeCase{"TRY_CAST(a AS Decimal(18, 4))", "(try-cast a decimal(18,4))"},
                    TreeCase{"CONVERT(varchar(10), a, 104)", "(convert a varchar(10) 104)"},
                    TreeCase{"TRY_CONVERT(int, '1')", "(try-convert '1' int)"},
                    TreeCase{"CAST(a AS national character varying(5))", "(cast a nvarchar(5))"},
                    TreeCase{"CAST(a AS double precision)", "(cast a float(53))"},
                    TreeCase{"CAST(a AS binary varying(8))", "(cast a varbinary(8))"},
                    TreeCase{"CAST(a AS sys.integer)", "(cast a int)"}));

INSTANTIATE_TEST_SUITE_P(
    Cases, Expressions,
    testing::Values(TreeCase{"CASE a WHEN 1 THEN 'x' WHEN 2 THEN 'y' ELSE 'z' END",
                             "(case a (when 1 'x') (when 2 'y') (else 'z'))"},
                    TreeCase{"CASE WHEN a = 1 OR b = 2 THEN 1 END", "(case (when (or (= a 1) (= b 2)) 1))"},
                    TreeCase{"(SELECT MAX(a) FROM t)",
                             "(subquery (select (items (call MAX a)) (from (table t))))"}));

class Conditions : public testing::TestWithParam<TreeCase> {};

TEST_P(Conditions, HaveTheirTree) {
    EXPECT_EQ(print(*parseCondition(GetParam().text)), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    All, Conditions,
    testing::Values(TreeCase{"a = 1 OR b = 2 AND NOT c = 3", "(or (= a 1) (and (= b 2) (not (= c 3))))"},
                    // Parentheses around a value and around a condition look alike at first.
                    TreeCase{"(a + 1) * 2 > 3 AND ((b) = 1 OR (c = 2))",
                             "(and (> (* (+ a 1) 2) 3) (or (= b 1) (= c 2)))"},
                    TreeCase{"((a)) = ((b))", "(= a b)"},
                    TreeCase{"a NOT BETWEEN 1 AND 2 AND b BETWEEN c AND d + 1",
                             "(and (not-between a 1 2) (between b c (+ d 1)))"},
                    TreeCase{"a LIKE 'x!%%' ESCAPE '!' AND b NOT LIKE N'[a-c]_'",
                             "(and (like a 'x!%%' (escape '!')) (not-like b N'[a-c]_'))"},
                    TreeCase{"a IN (1, 2) AND b NOT IN (SELECT c FROM t)",
                             "(and (in a 1 2) (not-in b (select (items c) (from (table t)))))"},
                    TreeCase{"a IS NULL OR b IS NOT NULL", "(or (is-null a) (is-not-null b))"},
                    TreeCase{"NOT EXISTS (SELECT 1)", "(not (exists (select (items 1))))"},
                    TreeCase{"a >= ALL (SELECT b FROM t)", "(>= all a (select (items b) (from (table t))))"},
                    TreeCase{"a = SOME (SELECT 1)", "(= any a (select (items 1)))"},
                    TreeCase{"(SELECT COUNT(*) FROM t) > 0",
                             "(> (subquery (select (items (call COUNT *)) (from (table t)))) 0)"},
                    TreeCase{"a !< 1 AND b !> 2 AND c != 3", "(and (and (>= a 1) (<= b 2)) (<> c 3))"}));

TEST(ExpressionText, RefusesAnythingBehindTheExpression) {
    EXPECT_THROW((void)parseExpression("1 2"), SyntaxError);
    EXPECT_THROW((void)parseExpression("a = 1"), SyntaxError);
    EXPECT_THROW((void)parseCondition("a = 1 b"), SyntaxError);
    EXPECT_THROW((void)parseCondition("a"), SyntaxError);
}

}  // namespace
