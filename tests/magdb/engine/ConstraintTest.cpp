#include "magdb/engine/Collector.h"

#include <gtest/gtest.h>

using namespace magdb;

namespace {

using Errors = std::vector<int>;

class Constraints : public testing::Test {
protected:
    Constraints() : engine(folder.file("STOCK.db")), session(engine.connectAsOwner()) {}

    Collector run(std::string_view sql) { return runBatch(*session, sql); }
    std::string list(std::string_view column, std::string_view table) {
        return text(*session, "SELECT STRING_AGG(ISNULL(CONVERT(varchar(20), " + std::string(column) +
                                  "), 'null'), ',') WITHIN GROUP (ORDER BY " + std::string(column) +
                                  ") FROM " + std::string(table));
    }

    TemporaryFolder folder;
    Engine engine;
    std::unique_ptr<Session> session;
};

TEST_F(Constraints, KeysNameThemselvesAndTheValue) {
    run("CREATE TABLE t (a int NOT NULL, b nvarchar(10) NOT NULL, CONSTRAINT pk_t PRIMARY KEY (a, b))");
    run("INSERT t VALUES (1, N'x')");
    const Collector answer = run("INSERT t VALUES (1, N'X ')");
    EXPECT_EQ(answer.errors(), Errors{2627});
    EXPECT_EQ(
        answer.messages.front().text,
        "Violation of PRIMARY KEY constraint 'pk_t'. Cannot insert duplicate key in object 'dbo.t'. The "
        "duplicate key value is (1, X ).");
    run("CREATE UNIQUE INDEX ix_b ON t (b)");
    EXPECT_EQ(run("INSERT t VALUES (2, N'X')").messages.front().text,
              "Cannot insert duplicate key row in object 'dbo.t' with unique index 'ix_b'. The duplicate key "
              "value is (X).");
}

TEST_F(Constraints, TwoNullsAreDuplicates) {
    run("CREATE TABLE t (a int NULL UNIQUE, b int NULL)");
    EXPECT_EQ(run("INSERT t VALUES (NULL, 1), (1, 1), (2, 1)").errors(), Errors{});
    EXPECT_EQ(run("INSERT t VALUES (NULL, 2)").errors(), Errors{2627});
    run("CREATE UNIQUE INDEX ix ON t (b) WHERE b > 5");
    EXPECT_EQ(run("INSERT t VALUES (3, 1)").errors(), Errors{});
    EXPECT_EQ(run("INSERT t VALUES (4, 6), (5, 6)").errors(), Errors{2601});
}

TEST_F(Constraints, AnUpdateOfAllKeysPassesThroughItself) {
    run("CREATE TABLE t (a int NOT NULL PRIMARY KEY)");
    run("INSERT t VALUES (1), (2), (3)");
    EXPECT_EQ(run("UPDATE t SET a = a + 1").errors(), Errors{});
    EXPECT_EQ(run("UPDATE t SET a = 6 - a").errors(), Errors{});
    EXPECT_EQ(list("a", "t"), "2,3,4");
    EXPECT_EQ(run("UPDATE t SET a = 9").errors(), Errors{2627});
    EXPECT_EQ(list("a", "t"), "2,3,4");
}

TEST_F(Constraints, ForeignKeysHoldInBothDirections) {
    run("CREATE TABLE p (id int NOT NULL PRIMARY KEY)");
    run("CREATE TABLE c (id int NOT NULL PRIMARY KEY, p int NULL CONSTRAINT fk REFERENCES p (id))");
    run("INSERT p VALUES (1), (2)");
    EXPECT_EQ(run("INSERT c VALUES (1, 1), (2, NULL)").errors(), Errors{});
    EXPECT_EQ(
        run("INSERT c VALUES (3, 7)").messages.front().text,
        "The INSERT statement conflicted with the FOREIGN KEY constraint \"fk\". The conflict occurred in "
        "database \"STOCK\", table \"dbo.p\", column 'id'.");
    EXPECT_EQ(run("UPDATE c SET p = 8").errors(), Errors{547});
    EXPECT_EQ(
        run("DELETE p WHERE id = 1").messages.front().text,
        "The DELETE statement conflicted with the REFERENCE constraint \"fk\". The conflict occurred in "
        "database \"STOCK\", table \"dbo.c\", column 'p'.");
    EXPECT_EQ(run("DELETE p WHERE id = 2").errors(), Errors{});
    EXPECT_EQ(run("DROP TABLE p").errors(), Errors{3726});
    EXPECT_EQ(run("TRUNCATE TABLE p").errors(), Errors{4712});
    EXPECT_EQ(run("DROP TABLE c DROP TABLE p").errors(), Errors{});
}

TEST_F(Constraints, CascadesFollowKeysEachWithItsOwnRow) {
    run("CREATE TABLE p (id int NOT NULL PRIMARY KEY)");
    run("CREATE TABLE c (p int NULL REFERENCES p (id) ON DELETE CASCADE ON UPDATE CASCADE, v int)");
    run("CREATE TABLE n (p int NULL REFERENCES p (id) ON DELETE SET NULL)");
    run("INSERT p VALUES (1), (2), (3) INSERT c VALUES (1, 10), (2, 20), (2, 21) INSERT n VALUES (3)");
    EXPECT_EQ(run("UPDATE p SET id = id + 1 WHERE id < 3 AND id NOT IN (SELECT p FROM n)").errors(),
              Errors{2627});
    EXPECT_EQ(run("DELETE p WHERE id = 3").errors(), Errors{});
    EXPECT_EQ(list("p", "n"), "null");
    EXPECT_EQ(run("UPDATE p SET id = id + 1").errors(), Errors{});
    EXPECT_EQ(list("p * 100 + v", "c"), "210,320,321");
    EXPECT_EQ(run("DELETE p WHERE id = 3").errors(), Errors{});
    EXPECT_EQ(list("v", "c"), "10");
}

TEST_F(Constraints, ATableCanReferToItself) {
    run("CREATE TABLE t (id int NOT NULL PRIMARY KEY, parent int NULL REFERENCES t (id))");
    EXPECT_EQ(run("INSERT t VALUES (2, 1), (1, NULL)").errors(), Errors{});
    EXPECT_EQ(run("DELETE t WHERE id = 1").errors(), Errors{547});
    EXPECT_EQ(run("DELETE t").errors(), Errors{});
}

TEST_F(Constraints, ChecksLetUnknownPass) {
    run("CREATE TABLE t (a int NULL CONSTRAINT ck CHECK (a BETWEEN 1 AND 5), b int)");
    EXPECT_EQ(run("INSERT t VALUES (NULL, 1), (5, 1)").errors(), Errors{});
    const Collector answer = run("INSERT t VALUES (6, 1)");
    EXPECT_EQ(
        answer.messages.front().text,
        "The INSERT statement conflicted with the CHECK constraint \"ck\". The conflict occurred in database "
        "\"STOCK\", table \"dbo.t\", column 'a'.");
    EXPECT_EQ(run("UPDATE t SET a = 0 WHERE a = 5").errors(), Errors{547});
    EXPECT_EQ(run("ALTER TABLE t ADD CONSTRAINT ck2 CHECK (b > 1)").errors(), Errors{547});
    EXPECT_EQ(run("ALTER TABLE t DROP CONSTRAINT ck INSERT t VALUES (6, 1)").errors(), Errors{});
}

TEST_F(Constraints, NullsAndLengthsNameTheirColumn) {
    run("CREATE TABLE t (a int NOT NULL, s nvarchar(3) NOT NULL DEFAULT N'x', b varbinary(2) NULL)");
    EXPECT_EQ(
        run("INSERT t (s) VALUES (N'y')").messages.front().text,
        "Cannot insert the value NULL into column 'a', table 'STOCK.dbo.t'; column does not allow nulls. "
        "INSERT fails.");
    EXPECT_EQ(run("INSERT t (a, s) VALUES (1, N'łódka')").messages.front().text,
              "String or binary data would be truncated in table 'STOCK.dbo.t', column 's'. Truncated value: "
              "'łód'.");
    EXPECT_EQ(run("INSERT t (a, s) VALUES (1, N'abc     ')").errors(), Errors{});
    EXPECT_EQ(number(*session, "SELECT DATALENGTH(s) FROM t"), 6);
    EXPECT_EQ(run("INSERT t (a, b) VALUES (1, 0x010203)").errors(), Errors{2628});
    EXPECT_EQ(run("UPDATE t SET a = NULL").errors(), Errors{515});
}

TEST_F(Constraints, IdentitiesCountAndCanBeGiven) {
    run("CREATE TABLE t (id int IDENTITY(10, 5) NOT NULL PRIMARY KEY, v int)");
    run("INSERT t (v) VALUES (1), (2)");
    EXPECT_EQ(list("id", "t"), "10,15");
    EXPECT_EQ(run("INSERT t (id, v) VALUES (99, 1)").errors(), Errors{544});
    EXPECT_EQ(
        run("SET IDENTITY_INSERT t ON INSERT t (id, v) VALUES (100, 1) SET IDENTITY_INSERT t OFF").errors(),
        Errors{});
    run("INSERT t (v) VALUES (3)");
    EXPECT_EQ(text(*session, "SELECT CONVERT(varchar(10), SCOPE_IDENTITY())"), "105");
    EXPECT_EQ(run("UPDATE t SET id = 1").errors(), Errors{8102});
    run("TRUNCATE TABLE t INSERT t (v) VALUES (1)");
    EXPECT_EQ(list("id", "t"), "10");
}

TEST_F(Constraints, DefaultsAreTakenRowByRow) {
    run("CREATE TABLE t (a int, g uniqueidentifier NOT NULL DEFAULT NEWID(), d datetime NOT NULL DEFAULT "
        "GETDATE())");
    run("INSERT t (a) VALUES (1), (2), (3)");
    EXPECT_EQ(number(*session, "SELECT COUNT(DISTINCT g) FROM t"), 3);
    EXPECT_EQ(number(*session, "SELECT COUNT(DISTINCT d) FROM t"), 1);
    EXPECT_EQ(run("INSERT t DEFAULT VALUES INSERT t VALUES (4, DEFAULT, DEFAULT)").errors(), Errors{});
    EXPECT_EQ(run("INSERT t VALUES (4, NULL, DEFAULT)").errors(), Errors{515});
}

TEST_F(Constraints, TablesChangeTheirShapeWithTheirRows) {
    run("CREATE TABLE t (a int NOT NULL PRIMARY KEY, s nvarchar(5) NULL)");
    run("INSERT t VALUES (1, N'12'), (2, N'345')");
    EXPECT_EQ(run("ALTER TABLE t ADD b int NOT NULL").errors(), Errors{4901});
    EXPECT_EQ(run("ALTER TABLE t ADD b int NOT NULL CONSTRAINT df DEFAULT 7, c AS a * b").errors(), Errors{});
    EXPECT_EQ(list("c", "t"), "7,14");
    EXPECT_EQ(run("ALTER TABLE t ALTER COLUMN s int NOT NULL").errors(), Errors{});
    EXPECT_EQ(number(*session, "SELECT SUM(s) FROM t"), 357);
    EXPECT_EQ(run("ALTER TABLE t DROP COLUMN b").errors(), Errors{5074});
    EXPECT_EQ(run("ALTER TABLE t DROP CONSTRAINT df").errors(), Errors{});
    EXPECT_EQ(run("ALTER TABLE t DROP COLUMN c ALTER TABLE t DROP COLUMN b").errors(), Errors{});
    EXPECT_EQ(run("ALTER TABLE t DROP COLUMN a").errors(), Errors{5074});
    EXPECT_EQ(run("INSERT t VALUES (3, 4)").errors(), Errors{});
}

TEST_F(Constraints, WhatIsMadeOutlivesTheEngine) {
    run("CREATE TABLE t (id int IDENTITY NOT NULL PRIMARY KEY, s nvarchar(9) NOT NULL DEFAULT N'ż', "
        "c AS id * 2, CONSTRAINT ck CHECK (s <> N'q'))");
    run("CREATE VIEW v AS SELECT id, c FROM t");
    run("CREATE FUNCTION f (@a int) RETURNS int AS BEGIN RETURN @a + 1 END");
    run("INSERT t DEFAULT VALUES");
    session.reset();
    Engine other(folder.file("STOCK.db"));
    session = other.connectAsOwner();
    run("INSERT t DEFAULT VALUES");
    EXPECT_EQ(number(*session, "SELECT dbo.f(SUM(c)) FROM v"), 7);
    EXPECT_EQ(run("INSERT t (s) VALUES (N'Q')").errors(), Errors{547});
    session.reset();
}

}  // namespace
