#include "magdb/engine/Collector.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <set>
#include <thread>

using namespace magdb;

namespace {

/// Cancels a session again and again, from a thread of its own: one cancel could come before its time.
class Canceller {
public:
    explicit Canceller(Session& session)
        : m_thread([this, &session] {
              while (!m_ended) {
                  std::this_thread::sleep_for(std::chrono::milliseconds(5));  // wait: paces the cancels
                  session.cancel();
              }
          }) {}
    ~Canceller() { stop(); }
    Canceller(const Canceller&) = delete;
    Canceller& operator=(const Canceller&) = delete;

    void stop() {
        m_ended = true;
        if (m_thread.joinable()) {
            m_thread.join();
        }
    }

private:
    std::atomic<bool> m_ended{false};
    std::thread m_thread;
};

class Parallel : public testing::Test {
protected:
    Parallel() : engine(folder.file("STOCK.db")) {
        const auto owner = engine.connectAsOwner();
        runBatch(*owner, "CREATE TABLE t (id int NOT NULL PRIMARY KEY, v int NOT NULL)");
        runBatch(*owner, "INSERT t VALUES (1, 0), (2, 0)");
        runBatch(*owner,
                 "CREATE PROCEDURE move_one AS BEGIN SET NOCOUNT ON BEGIN TRAN "
                 "UPDATE t SET v = v - 1 WHERE id = 1 UPDATE t SET v = v + 1 WHERE id = 2 COMMIT END");
        runBatch(*owner, "CREATE PROCEDURE look AS SELECT (SELECT SUM(v) FROM t) AS s");
    }

    TemporaryFolder folder;
    Engine engine;
};

TEST_F(Parallel, WritersQueueAndLoseNothing) {
    constexpr int kSessions = 4;
    constexpr int kCalls = 60;
    std::atomic<int> failures{0};
    std::vector<std::thread> threads;
    for (int i = 0; i < kSessions; ++i) {
        threads.emplace_back([&] {
            const auto session = engine.connectAsOwner();
            for (int k = 0; k < kCalls; ++k) {
                Collector sink;
                failures += session->executeProcedure("move_one", {}, sink).failed ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(failures, 0);
    const auto session = engine.connectAsOwner();
    EXPECT_EQ(number(*session, "SELECT v FROM t WHERE id = 2"), kSessions * kCalls);
    EXPECT_EQ(number(*session, "SELECT v FROM t WHERE id = 1"), -kSessions * kCalls);
}

TEST_F(Parallel, ReadersSeeWholeCallsOnly) {
    std::atomic<bool> stop{false};
    std::thread writer([&] {
        const auto session = engine.connectAsOwner();
        while (!stop) {
            Collector sink;
            session->executeProcedure("move_one", {}, sink);
        }
    });
    const auto reader = engine.connectAsOwner();
    for (int i = 0; i < 200; ++i) {
        Collector sink;
        reader->executeProcedure("look", {}, sink);
        EXPECT_EQ(std::get<std::int64_t>(sink.single()), 0);
        EXPECT_EQ(number(*reader, "SELECT SUM(v) FROM t(nolock)"), 0);
    }
    stop = true;
    writer.join();
}

TEST_F(Parallel, AReaderDoesNotWaitForAnOpenWriter) {
    const auto writer = engine.connectAsOwner();
    runBatch(*writer, "BEGIN TRAN UPDATE t SET v = 100");
    const auto reader = engine.connectAsOwner();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(number(*reader, "SELECT SUM(v) FROM t"), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5));
    EXPECT_EQ(number(*writer, "SELECT SUM(v) FROM t"), 200);
    runBatch(*writer, "ROLLBACK");
}

TEST_F(Parallel, AWriterWaitsForItsTurnUntilItsLimit) {
    const auto first = engine.connectAsOwner();
    runBatch(*first, "BEGIN TRAN UPDATE t SET v = 100");
    const auto second = engine.connectAsOwner();
    EXPECT_EQ(runBatch(*second, "SET LOCK_TIMEOUT 50 UPDATE t SET v = 5").errors(), std::vector<int>{1222});
    runBatch(*first, "COMMIT");
    EXPECT_EQ(runBatch(*second, "UPDATE t SET v = 5").errors(), std::vector<int>{});
    EXPECT_EQ(number(*second, "SELECT SUM(v) FROM t"), 10);
}

TEST_F(Parallel, CancelStopsALoopAndUndoesItsCall) {
    const auto session = engine.connectAsOwner();
    runBatch(*session,
             "CREATE PROCEDURE forever AS BEGIN UPDATE t SET v = 1 DECLARE @i int = 0 "
             "WHILE 1 = 1 SET @i = (@i + 1) % 1000 END");
    Collector sink;
    Canceller canceller(*session);
    const CallOutcome outcome = session->executeProcedure("forever", {}, sink);
    canceller.stop();
    EXPECT_TRUE(outcome.failed);
    EXPECT_TRUE(sink.messages.empty());
    EXPECT_EQ(number(*session, "SELECT SUM(v) FROM t"), 0);
}

TEST_F(Parallel, CancelStopsOneLongStatement) {
    const auto session = engine.connectAsOwner();
    Collector sink;
    Canceller canceller(*session);
    const bool completed = session->executeBatch(
        "WITH n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n) SELECT COUNT(*) FROM n OPTION (MAXRECURSION "
        "0)",
        sink);
    canceller.stop();
    EXPECT_FALSE(completed);
    EXPECT_EQ(number(*session, "SELECT 7"), 7);
}

TEST_F(Parallel, CancelEndsTheWaitForATurn) {
    const auto first = engine.connectAsOwner();
    runBatch(*first, "BEGIN TRAN UPDATE t SET v = 100");
    const auto second = engine.connectAsOwner();
    Collector sink;
    Canceller canceller(*second);
    EXPECT_FALSE(second->executeBatch("UPDATE t SET v = 5", sink));
    canceller.stop();
    runBatch(*first, "ROLLBACK");
    EXPECT_EQ(number(*second, "SELECT SUM(v) FROM t"), 0);
}

TEST_F(Parallel, DefinitionsReachOtherSessionsAtTheirNextBatch) {
    const auto first = engine.connectAsOwner();
    const auto second = engine.connectAsOwner();
    EXPECT_EQ(runBatch(*second, "SELECT * FROM u").errors(), std::vector<int>{208});
    runBatch(*first, "CREATE TABLE u (a int)");
    runBatch(*first, "INSERT u VALUES (4)");
    EXPECT_EQ(number(*second, "SELECT a FROM u"), 4);
    runBatch(*first, "ALTER TABLE u ADD b int NOT NULL DEFAULT 9");
    EXPECT_EQ(runBatch(*second, "SELECT * FROM u").results.front().columns.size(), 2u);
    runBatch(*first, "DROP TABLE u");
    EXPECT_EQ(runBatch(*second, "SELECT * FROM u").errors(), std::vector<int>{208});
}

TEST_F(Parallel, AnotherProcessOnTheFileIsSeen) {
    const auto session = engine.connectAsOwner();
    EXPECT_EQ(runBatch(*session, "SELECT * FROM w").errors(), std::vector<int>{208});
    {
        Engine other(folder.file("STOCK.db"));
        runBatch(*other.connectAsOwner(), "CREATE TABLE w (a int)");
    }
    EXPECT_EQ(runBatch(*session, "SELECT * FROM w").errors(), std::vector<int>{});
}

TEST_F(Parallel, TemporaryTablesBelongToTheirSession) {
    const auto first = engine.connectAsOwner();
    const auto second = engine.connectAsOwner();
    runBatch(*first, "CREATE TABLE #x (a int) INSERT #x VALUES (1)");
    runBatch(*second, "CREATE TABLE #x (a int, b int) INSERT #x VALUES (2, 3)");
    EXPECT_EQ(number(*first, "SELECT a FROM #x"), 1);
    EXPECT_EQ(number(*second, "SELECT b FROM #x"), 3);
}

TEST_F(Parallel, DoubleHashTablesAreSharedAndGoWithTheirMaker) {
    auto first = engine.connectAsOwner();
    const auto second = engine.connectAsOwner();
    runBatch(*first, "CREATE TABLE ##list (a int) INSERT ##list VALUES (11)");
    EXPECT_EQ(number(*second, "SELECT a FROM ##list"), 11);
    EXPECT_EQ(number(*second, "SELECT a FROM tempdb..##list"), 11);
    EXPECT_NE(number(*second, "SELECT ISNULL(OBJECT_ID('tempdb..##list'), 0)"), 0);
    EXPECT_EQ(runBatch(*second, "INSERT ##list VALUES (12)").errors(), std::vector<int>{});
    first.reset();
    EXPECT_EQ(runBatch(*second, "SELECT a FROM ##list").errors(), std::vector<int>{208});
    EXPECT_EQ(number(*second, "SELECT ISNULL(OBJECT_ID('tempdb..##list'), 0)"), 0);
}

TEST_F(Parallel, SessionsComeAndGoUnderNumbersOfTheirOwn) {
    const auto first = engine.connectAsOwner();
    std::set<std::int16_t> numbers;
    for (int i = 0; i < 200; ++i) {
        numbers.insert(engine.connectAsOwner()->spid());
    }
    EXPECT_EQ(numbers.size(), 200u);
    EXPECT_EQ(numbers.count(first->spid()), 0u);
    EXPECT_GT(*numbers.begin(), 50);
}

TEST_F(Parallel, LoginsAreCheckedAndDatabasesKnown) {
    engine.setLogin("store", "Secret-1");
    ServerMessage error;
    LoginRequest login;
    login.user = "STORE";
    login.password = "Secret-1";
    EXPECT_NE(engine.connect(login, error), nullptr);
    login.password = "secret-1";
    EXPECT_EQ(engine.connect(login, error), nullptr);
    EXPECT_EQ(error.number, 18456);
    login.password = "Secret-1";
    login.database = "master";
    EXPECT_EQ(engine.connect(login, error)->database(), "master");
    login.database = "nowhere";
    EXPECT_EQ(engine.connect(login, error), nullptr);
    EXPECT_EQ(error.number, 4060);
}

}  // namespace
