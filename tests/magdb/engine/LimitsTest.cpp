#include "magdb/engine/Collector.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

using namespace magdb;

namespace {

using Errors = std::vector<int>;

class Limits : public testing::Test {
protected:
    Limits() : engine(folder.file("STOCK.db")), session(engine.connectAsOwner()) {}

    Collector run(std::string_view sql) { return runBatch(*session, sql); }

    static std::string repeated(int count, std::string_view first, std::string_view divider,
                                const std::function<std::string(int)>& each) {
        std::string text(first);
        for (int i = 0; i < count; ++i) {
            text += (i == 0 ? std::string() : std::string(divider)) + each(i);
        }
        return text;
    }

    TemporaryFolder folder;
    Engine engine;
    std::unique_ptr<Session> session;
};

TEST_F(Limits, LongUnionsAndListsOfRowsWork) {
    const auto row = [](int i) { return "SELECT " + std::to_string(i) + " AS a"; };
    EXPECT_EQ(number(*session, "SELECT COUNT(*) FROM (" + repeated(1500, "", " UNION ALL ", row) + ") AS u"),
              1500);
    run("CREATE TABLE t (a int NOT NULL, s nvarchar(20) NULL)");
    const auto values = [](int i) { return "(" + std::to_string(i) + ", N'w" + std::to_string(i) + "')"; };
    EXPECT_EQ(run(repeated(1000, "INSERT t VALUES ", ",", values)).errors(), Errors{});
    EXPECT_EQ(number(*session, "SELECT COUNT(DISTINCT s) FROM t"), 1000);
    EXPECT_EQ(run("INSERT t (a) " + repeated(700, "", " UNION ALL ", row)).errors(), Errors{});
    EXPECT_EQ(number(*session, "SELECT COUNT(*) FROM t"), 1700);
}

TEST_F(Limits, LongConditionsWork) {
    run("CREATE TABLE t (a int NOT NULL)");
    run("INSERT t VALUES (5), (6)");
    const auto term = [](int i) { return "a = " + std::to_string(i + 1000); };
    EXPECT_EQ(
        number(*session, "SELECT COUNT(*) FROM t WHERE " + repeated(900, "", " OR ", term) + " OR a = 6"), 1);
    const auto item = [](int i) { return std::to_string(i); };
    EXPECT_EQ(number(*session, "SELECT COUNT(*) FROM t WHERE a IN (" + repeated(5000, "", ",", item) + ")"),
              2);
}

TEST_F(Limits, AStatementTooDeepIsRefusedAndTheSessionGoesOn) {
    const auto one = [](int) { return std::string("1"); };
    EXPECT_EQ(run(repeated(900, "DECLARE @a bigint = 1 SELECT @a + ", " + ", one)).errors(), Errors{8623});
    EXPECT_EQ(run(repeated(5000, "DECLARE @a bigint = 1 SELECT @a + ", " + ", one)).errors(), Errors{191});
    EXPECT_EQ(run("SELECT " + std::string(5000, '(') + "1" + std::string(5000, ')')).errors(), Errors{191});
    EXPECT_EQ(number(*session, "SELECT 3"), 3);
}

TEST_F(Limits, LargeTextsPassThrough) {
    run("CREATE TABLE t (id int NOT NULL PRIMARY KEY, picture nvarchar(max) NULL)");
    const std::string picture(3000000, 'A');
    EXPECT_EQ(run("INSERT t VALUES (1, N'" + picture + "')").errors(), Errors{});
    EXPECT_EQ(number(*session, "SELECT LEN(picture) FROM t"), 3000000);
    EXPECT_EQ(text(*session, "SELECT picture FROM t"), picture);
}

TEST_F(Limits, CallsNestThirtyTwoDeep) {
    run("CREATE PROCEDURE p @n int AS BEGIN IF @n > 1 BEGIN SET @n = @n - 1 EXEC p @n END ELSE SELECT "
        "@@NESTLEVEL END");
    EXPECT_EQ(number(*session, "EXEC p 32"), 32);
    EXPECT_EQ(run("EXEC p 33").errors(), Errors{217});
    run("CREATE FUNCTION f (@n int) RETURNS int AS BEGIN IF @n = 0 RETURN 0 RETURN 1 + dbo.f(@n - 1) END");
    EXPECT_EQ(number(*session, "SELECT dbo.f(20)"), 20);
    EXPECT_EQ(run("SELECT dbo.f(60)").errors(), Errors{217});
}

TEST_F(Limits, RecursionOfCommonTablesStopsAtItsLimit) {
    EXPECT_EQ(number(*session,
                     "WITH n AS (SELECT 1 AS i UNION ALL SELECT i + 1 FROM n WHERE i < 101) "
                     "SELECT MAX(i) FROM n"),
              101);
    EXPECT_EQ(run("WITH n AS (SELECT 1 AS i UNION ALL SELECT i + 1 FROM n) SELECT MAX(i) FROM n").errors(),
              Errors{530});
    EXPECT_EQ(number(*session,
                     "WITH n AS (SELECT 1 AS i UNION ALL SELECT i + 1 FROM n WHERE i < 500) "
                     "SELECT MAX(i) FROM n OPTION (MAXRECURSION 600)"),
              500);
}

TEST_F(Limits, TextsOfBatchesAreForgottenInTime) {
    run("CREATE TABLE t (a int NOT NULL)");
    for (int i = 0; i < 1200; ++i) {
        EXPECT_EQ(number(*session, "SELECT COUNT(*) + " + std::to_string(i) + " FROM t"), i);
    }
}

TEST_F(Limits, PlansFollowTheTablesUnderThem) {
    run("CREATE TABLE t (a int NOT NULL)");
    run("INSERT t VALUES (1)");
    run("CREATE VIEW v AS SELECT a FROM t");
    run("CREATE PROCEDURE p AS SELECT * FROM v");
    EXPECT_EQ(number(*session, "EXEC p"), 1);
    run("DROP VIEW v");
    EXPECT_EQ(run("EXEC p").errors(), Errors{208});
    run("CREATE VIEW v AS SELECT a + 1 AS b FROM t");
    EXPECT_EQ(number(*session, "EXEC p"), 2);
    run("DROP TABLE t");
    run("CREATE TABLE t (z nvarchar(5) NULL, a int NOT NULL)");
    run("INSERT t VALUES (N'x', 40)");
    EXPECT_EQ(number(*session, "EXEC p"), 41);
    EXPECT_EQ(number(*session, "USE master SELECT COUNT(*) FROM sysobjects WHERE name = 't'"), 0);
    EXPECT_EQ(run("SELECT * FROM t").errors(), Errors{208});
    EXPECT_EQ(number(*session, "EXEC STOCK..p"), 41);
    run("USE STOCK");
    EXPECT_EQ(run("SELECT * FROM t").errors(), Errors{});
}

TEST_F(Limits, TemporaryTablesOfOneNameAndManyShapesDoNotMix) {
    run("CREATE PROCEDURE p @wide bit AS BEGIN IF @wide = 1 CREATE TABLE #w (a int, b int) ELSE "
        "CREATE TABLE #w (a nvarchar(5)) INSERT #w (a) VALUES (7) SELECT a FROM #w END");
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(number(*session, "EXEC p 1"), 7);
        EXPECT_EQ(text(*session, "EXEC p 0"), "7");
    }
    run("CREATE TABLE #w (c int) INSERT #w VALUES (3)");
    EXPECT_EQ(number(*session, "EXEC p 1"), 7);
    EXPECT_EQ(number(*session, "SELECT c FROM #w"), 3);
}

}  // namespace
