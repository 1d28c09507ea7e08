#include "magdb/tsql/ParserTest.h"

#include <gtest/gtest.h>

namespace {

using namespace magdb::tsql;

class Queries : public testing::TestWithParam<TreeCase> {};

TEST_P(Queries, HaveTheirTree) {
    EXPECT_EQ(parsed(GetParam().text), GetParam().tree);
}

INSTANTIATE_TEST_SUITE_P(
    SelectLists, Queries,
    testing::Values(
        TreeCase{
            "SELECT a AS x, b y, z = c, d [Kod;1500;0], e 'text', f AS \"q\"",
            "(select (items (as \"x\" a) (as \"y\" b) (as \"z\" c) (as \"Kod;1500;0\" d) (as \"text\" e) "
            "(as \"q\" f)))"},
        TreeCase{"SELECT *, t.*, dbo.t.*", "(select (items * t.* dbo.t.*))"},
        TreeCase{"SELECT @a = 1, @b += x FROM t", "(select (items (= @a 1) (+= @b x)) (from (table t)))"},
        TreeCase{"SELECT 'a' = 1", "(select (items (as \"a\" 1)))"},
        TreeCase{"SELECT DISTINCT TOP 5 PERCENT a INTO #t FROM b",
                 "(select distinct (top-percent 5) (items a) (into #t) (from (table b)))"},
        TreeCase{"SELECT ALL TOP (@n + 1) a FROM tempdb..##T",
                 "(select (top (+ @n 1)) (items a) (from (table tempdb..##T)))"}));

INSTANTIATE_TEST_SUITE_P(
    Sources, Queries,
    testing::Values(
        TreeCase{
            "SELECT a FROM kolv_mag_Stand(nolock), kolv_mag_Location A(NoLock)",
            "(select (items a) (from (table kolv_mag_Stand (hints NOLOCK)) (table kolv_mag_Location (hints "
            "NOLOCK) (as \"A\"))))"},
        TreeCase{"SELECT a FROM dbo.T AS x WITH (UPDLOCK, HOLDLOCK, INDEX(i))",
                 "(select (items a) (from (table dbo.T (hints UPDLOCK HOLDLOCK) (as \"x\"))))"},
        TreeCase{"SELECT a FROM f(nolocks) x (c, d)",
                 "(select (items a) (from (table-call f nolocks (as \"x\") (columns c d))))"},
        TreeCase{
            "SELECT a FROM t JOIN u ON t.i = u.i LEFT OUTER JOIN v ON v.i = u.i CROSS JOIN w",
            "(select (items a) (from (cross-join (left-join (join (table t) (table u) (= t.i u.i)) (table v) "
            "(= v.i u.i)) (table w))))"},
        TreeCase{"SELECT a FROM t LEFT JOIN u INNER JOIN v ON u.i = v.i ON t.i = u.i",
                 "(select (items a) (from (left-join (table t) (join (table u) (table v) (= u.i v.i)) (= t.i "
                 "u.i))))"},
        TreeCase{"SELECT a FROM t RIGHT JOIN (u FULL JOIN v ON 1 = 1) ON 2 = 2",
                 "(select (items a) (from (right-join (table t) (full-join (table u) (table v) (= 1 1)) (= 2 "
                 "2))))"},
        TreeCase{"SELECT a FROM t CROSS APPLY f(t.x) g OUTER APPLY (SELECT 1 b) h",
                 "(select (items a) (from (outer-apply (cross-apply (table t) (table-call f t.x (as \"g\"))) "
                 "(derived (select (items (as \"b\" 1))) (as \"h\")))))"},
        TreeCase{
            "SELECT a FROM (VALUES (1, 'x'), (2, 'y')) v (i, n), @t s",
            "(select (items a) (from (values (row 1 'x') (row 2 'y') (as \"v\") (columns i n)) (table @t (as "
            "\"s\"))))"},
        TreeCase{
            "SELECT a FROM (SELECT TOP 1 b FROM t ORDER BY b) d (a)",
            "(select (items a) (from (derived (query (select (top 1) (items b) (from (table t))) (order b)) "
            "(as \"d\") (columns a))))"}));

INSTANTIATE_TEST_SUITE_P(
    Clauses, Queries,
    testing::Values(
        TreeCase{
            "SELECT a, COUNT(*) FROM t WHERE b = 1 GROUP BY a, c + 1 HAVING COUNT(*) > 1 ORDER BY 2 DESC, a "
            "ASC",
            "(query (select (items a (call COUNT *)) (from (table t)) (where (= b 1)) (group a (+ c 1)) "
            "(having (> (call COUNT *) 1))) (order (desc 2) a))"},
        TreeCase{"SELECT a FROM t ORDER BY a OFFSET 5 ROWS FETCH NEXT 10 ROWS ONLY OPTION (RECOMPILE)",
                 "(query (select (items a) (from (table t))) (order a) (offset 5) (fetch 10))"},
        TreeCase{"SELECT 1 UNION ALL SELECT 2 UNION SELECT 3 INTERSECT SELECT 4 EXCEPT SELECT 5 ORDER BY 1",
                 "(query (except (union (union-all (select (items 1)) (select (items 2))) (intersect (select "
                 "(items "
                 "3)) (select (items 4)))) (select (items 5))) (order 1))"},
        TreeCase{"SELECT 1 EXCEPT (SELECT 2 UNION SELECT 3)",
                 "(except (select (items 1)) (union (select (items 2)) (select (items 3))))"},
        TreeCase{
            "WITH a AS (SELECT 1 x), b (y) AS (SELECT x FROM a UNION ALL SELECT y + 1 FROM b WHERE y < 5) "
            "SELECT * FROM b OPTION (MAXRECURSION 10)",
            "(query (with a (select (items (as \"x\" 1)))) (with b (columns y) (union-all (select (items x) "
            "(from (table a))) (select (items (+ y 1)) (from (table b)) (where (< y 5))))) (select (items *) "
            "(from (table b))) maxrecursion=10)"},
        TreeCase{"SELECT a FROM t WHERE b = (SELECT MAX(c) FROM u WHERE u.i = t.i)",
                 "(select (items a) (from (table t)) (where (= b (subquery (select (items (call MAX c)) "
                 "(from (table "
                 "u)) (where (= u.i t.i)))))))"}));

TEST(QueryPositions, PointIntoTheTextOfTheBatch) {
    const auto batch = parseBatch("-- first\nSELECT 1;\n  SELECT a\n FROM t ;");
    ASSERT_EQ(batch->statements.size(), 2U);
    const Statement& second = *batch->statements[1];
    EXPECT_EQ(second.pos.line, 3U);
    EXPECT_EQ(textOf(*batch, {second.pos.offset, second.end}), "SELECT a\n FROM t");
    const auto& query = *as<SelectStatement>(second).query;
    const auto& body = as<SelectBody>(*query.body);
    EXPECT_EQ(body.from[0]->pos.line, 4U);
    EXPECT_EQ(body.items[0].expr->pos.offset, batch->source.find("a\n FROM"));
}

TEST(QuotedIdentifiers, AreStringsWhenTheOptionIsOff) {
    EXPECT_EQ(parsed("SELECT \"x\""), "(select (items x))");
    EXPECT_EQ(parsed("SELECT \"x\"", {.quotedIdentifier = false}), "(select (items 'x'))");
}

}  // namespace
