#include "magdb/engine/Collector.h"

#include <gtest/gtest.h>

#include <stdexcept>

using namespace magdb;

namespace {

class Atomicity : public testing::Test {
protected:
    Atomicity() : engine(folder.file("STOCK.db")), session(engine.connectAsOwner()) {
        run("CREATE TABLE t (id int NOT NULL PRIMARY KEY, v int NULL CHECK (v >= 0))");
    }

    Collector run(std::string_view sql) { return runBatch(*session, sql); }
    std::int64_t count() { return number(*session, "SELECT COUNT(*) FROM t"); }

    TemporaryFolder folder;
    Engine engine;
    std::unique_ptr<Session> session;
};

using Errors = std::vector<int>;

TEST_F(Atomicity, AFailingCallLeavesNothingBehind) {
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) INSERT t VALUES (2, 2) SELECT 1 / 0 END");
    EXPECT_EQ(run("EXEC p").errors(), Errors{8134});
    EXPECT_EQ(count(), 0);
    Collector sink;
    EXPECT_TRUE(session->executeProcedure("p", {}, sink).failed);
    EXPECT_EQ(count(), 0);
}

TEST_F(Atomicity, ACommitInsideAFailingCallIsUndoneToo) {
    run("CREATE PROCEDURE p AS BEGIN BEGIN TRAN INSERT t VALUES (1, 1) COMMIT INSERT t VALUES (1, 1) END");
    EXPECT_EQ(run("EXEC p").errors(), Errors{2627});
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 0);
}

TEST_F(Atomicity, AnErrorInANestedCallUndoesTheOuterOne) {
    run("CREATE PROCEDURE inner_p AS INSERT t VALUES (1, -5)");
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (7, 7) EXEC inner_p END");
    EXPECT_EQ(run("EXEC p").errors(), Errors{547});
    EXPECT_EQ(count(), 0);
}

TEST_F(Atomicity, AReportedErrorUndoesTheCallButRunsToItsEnd) {
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) RAISERROR('bad', 16, 1) SELECT 5 RETURN 3 END");
    Collector sink;
    const CallOutcome outcome = session->executeProcedure("p", {}, sink);
    EXPECT_EQ(sink.errors(), Errors{50000});
    EXPECT_EQ(std::get<std::int64_t>(sink.single()), 5);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(count(), 0);
}

/// Text that runs a text, as drivers send their statements.
CallParameter textParameter(std::string value) {
    CallParameter parameter;
    parameter.type = textType(TypeId::NVarChar, -1);
    parameter.value = std::move(value);
    return parameter;
}

CallParameter handleParameter(Value value, bool output) {
    CallParameter parameter;
    parameter.type = plainType(TypeId::Int);
    parameter.value = std::move(value);
    parameter.output = output;
    return parameter;
}

/// A procedure that reports an error outside TRY and runs on, called in every way that there is.
class ReportedError : public Atomicity {
protected:
    ReportedError() {
        run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) RAISERROR('bad', 16, 1) INSERT t VALUES (2, "
            "2) "
            "END");
    }
    void expectUndone(const Collector& answer) {
        EXPECT_EQ(answer.errors(), Errors{50000});
        EXPECT_EQ(count(), 0);
        EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 0);
    }
    Collector call(std::string_view name, std::vector<CallParameter> parameters) {
        Collector answer;
        outcome = session->executeProcedure(name, std::move(parameters), answer);
        return answer;
    }

    CallOutcome outcome;
};

TEST_F(ReportedError, UndoesACallInABatch) {
    expectUndone(run("EXEC p"));
}

TEST_F(ReportedError, UndoesACallByTheClient) {
    expectUndone(call("p", {}));
}

TEST_F(ReportedError, UndoesACallInAClientsText) {
    expectUndone(call("sp_executesql", {textParameter("EXEC p")}));
}

TEST_F(ReportedError, UndoesACallInAPreparedText) {
    expectUndone(
        call("sp_prepexec", {handleParameter(Value(), true), textParameter(""), textParameter("EXEC p")}));
    expectUndone(call("sp_execute", {handleParameter(outcome.outputs.front().value, false)}));
}

TEST_F(ReportedError, UndoesACallInATextOfABatch) {
    expectUndone(run("EXEC sp_executesql N'EXEC p'"));
    expectUndone(run("EXEC ('EXEC p')"));
}

TEST_F(ReportedError, UndoesACallThatFillsATable) {
    run("CREATE TABLE u (id int)");
    run("ALTER PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) RAISERROR('bad', 16, 1) SELECT id FROM t END");
    expectUndone(run("INSERT u EXEC p"));
}

TEST_F(ReportedError, UndoesTheProcedureThatRanTheText) {
    run("CREATE PROCEDURE outer_p AS BEGIN INSERT t VALUES (3, 3) EXEC sp_executesql N'EXEC p' END");
    expectUndone(call("outer_p", {}));
}

TEST_F(ReportedError, LeavesStatementsBesideTheCallAlone) {
    const Collector answer =
        call("sp_executesql", {textParameter("INSERT t VALUES (5, 5) EXEC p INSERT t VALUES (6, 6)")});
    EXPECT_EQ(answer.errors(), Errors{50000});
    EXPECT_EQ(text(*session, "SELECT STRING_AGG(CONVERT(varchar(9), id), ',') FROM t"), "5,6");
}

TEST_F(ReportedError, LeavesATextThatRaisesItByItselfAlone) {
    const Collector answer =
        call("sp_executesql", {textParameter("INSERT t VALUES (5, 5) RAISERROR('x', 16, 1)")});
    EXPECT_EQ(answer.errors(), Errors{50000});
    EXPECT_EQ(count(), 1);
}

TEST_F(ReportedError, LeavesTheTransactionAroundTheCallOpen) {
    run("BEGIN TRAN INSERT t VALUES (5, 5)");
    EXPECT_EQ(call("sp_executesql", {textParameter("EXEC p")}).errors(), Errors{50000});
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 1);
    run("COMMIT");
    EXPECT_EQ(text(*session, "SELECT STRING_AGG(CONVERT(varchar(9), id), ',') FROM t"), "5");
}

TEST_F(Atomicity, AnErrorInACallOfATextUndoesTheCall) {
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) INSERT t VALUES (1, 1) END");
    Collector sink;
    EXPECT_TRUE(session->executeProcedure("sp_executesql", {textParameter("EXEC p")}, sink).failed);
    EXPECT_EQ(sink.errors(), Errors{2627});
    EXPECT_EQ(count(), 0);
}

TEST_F(Atomicity, TableVariablesAreEmptyWhenATextRunsAgainAfterAnUndoneCall) {
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) RAISERROR('bad', 16, 1) END");
    constexpr std::string_view kText =
        "DECLARE @v TABLE (a int IDENTITY, b int) INSERT @v (b) VALUES (7) EXEC p INSERT @v (b) VALUES (8) "
        "SELECT MAX(a) FROM @v";
    EXPECT_EQ(number(*session, kText), 2);
    EXPECT_EQ(number(*session, kText), 2);
}

TEST_F(Atomicity, ACaughtErrorKeepsWhatCameBeforeIt) {
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) BEGIN TRY INSERT t VALUES (2, 2), (1, 1) END TRY "
        "BEGIN CATCH INSERT t VALUES (3, ERROR_NUMBER()) END CATCH END");
    EXPECT_EQ(run("EXEC p").errors(), Errors{});
    EXPECT_EQ(text(*session, "SELECT STRING_AGG(CONVERT(varchar(9), id), ',') FROM t"), "1,3");
    EXPECT_EQ(number(*session, "SELECT v FROM t WHERE id = 3"), 2627);
}

TEST_F(Atomicity, RollbackInACallUndoesItsTransactionAlone) {
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) BEGIN TRAN INSERT t VALUES (2, 2) ROLLBACK "
        "INSERT t VALUES (3, 3) END");
    EXPECT_EQ(run("EXEC p").errors(), Errors{});
    EXPECT_EQ(text(*session, "SELECT STRING_AGG(CONVERT(varchar(9), id), ',') FROM t"), "1,3");
}

TEST_F(Atomicity, TheUsualGuardOfAProcedureWorks) {
    run("CREATE PROCEDURE p @v int, @message nvarchar(200) OUTPUT AS BEGIN SET NOCOUNT ON SET @message = N'' "
        "BEGIN TRY BEGIN TRAN INSERT t VALUES (1, 1) INSERT t VALUES (2, @v) COMMIT RETURN 0 END TRY "
        "BEGIN CATCH IF @@TRANCOUNT > 0 ROLLBACK SET @message = ERROR_MESSAGE() RETURN 1 END CATCH END");
    EXPECT_EQ(run("DECLARE @m nvarchar(200), @r int EXEC @r = p -1, @m OUTPUT SELECT @r").errors(), Errors{});
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(number(*session, "DECLARE @m nvarchar(200), @r int EXEC @r = p 5, @m OUTPUT SELECT @r"), 0);
    EXPECT_EQ(count(), 2);
}

TEST_F(Atomicity, StatementsOfABatchStandAlone) {
    EXPECT_EQ(run("INSERT t VALUES (1, 1) INSERT t VALUES (1, 1) INSERT t VALUES (2, 2)").errors(),
              Errors{2627});
    EXPECT_EQ(count(), 2);
    EXPECT_EQ(run("INSERT t VALUES (5, 5), (6, 6), (5, 5)").errors(), Errors{2627});
    EXPECT_EQ(count(), 2);
}

TEST_F(Atomicity, AFailedConversionEndsTheBatchAndItsTransaction) {
    EXPECT_EQ(
        run("BEGIN TRAN INSERT t VALUES (1, 1) SELECT CONVERT(int, 'x') INSERT t VALUES (2, 2)").errors(),
        Errors{245});
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 0);
    EXPECT_EQ(count(), 0);
}

TEST_F(Atomicity, AWrongColumnStopsTheBatchBeforeItsFirstStatement) {
    EXPECT_EQ(run("INSERT t VALUES (1, 1) SELECT nonsense FROM t").errors(), Errors{207});
    EXPECT_EQ(count(), 0);
}

TEST_F(Atomicity, ExplicitTransactionsNestByCount) {
    run("BEGIN TRAN INSERT t VALUES (1, 1) BEGIN TRAN INSERT t VALUES (2, 2) COMMIT");
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 1);
    run("ROLLBACK");
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(run("COMMIT").errors(), Errors{3902});
    EXPECT_EQ(run("ROLLBACK").errors(), Errors{3903});
}

TEST_F(Atomicity, SavepointsRollBackToTheirPlace) {
    run("BEGIN TRAN INSERT t VALUES (1, 1) SAVE TRAN s INSERT t VALUES (2, 2) ROLLBACK TRAN s "
        "INSERT t VALUES (3, 3) COMMIT");
    EXPECT_EQ(text(*session, "SELECT STRING_AGG(CONVERT(varchar(9), id), ',') FROM t"), "1,3");
    EXPECT_EQ(run("BEGIN TRAN ROLLBACK TRAN nowhere").errors(), Errors{6401});
    run("ROLLBACK");
}

TEST_F(Atomicity, XactAbortDoomsTheTransactionOfATry) {
    EXPECT_EQ(
        number(*session,
               "SET XACT_ABORT ON BEGIN TRY BEGIN TRAN INSERT t VALUES (1, 1) INSERT t VALUES (1, 1) END TRY "
               "BEGIN CATCH SELECT XACT_STATE() ROLLBACK END CATCH SET XACT_ABORT OFF"),
        -1);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(
        run("SET XACT_ABORT ON BEGIN TRY BEGIN TRAN INSERT t VALUES (1, 1) INSERT t VALUES (1, 1) END TRY "
            "BEGIN CATCH COMMIT END CATCH")
            .errors(),
        Errors{3930});
}

TEST_F(Atomicity, TableVariablesKeepTheirRowsThroughARollback) {
    EXPECT_EQ(number(*session,
                     "DECLARE @v TABLE (a int PRIMARY KEY) BEGIN TRAN INSERT @v VALUES (1), (2) INSERT t "
                     "VALUES (1, 1) "
                     "ROLLBACK INSERT @v VALUES (3) SELECT COUNT(*) FROM @v"),
              3);
    EXPECT_EQ(count(), 0);
}

TEST_F(Atomicity, DefinitionsRollBackWithTheirTransaction) {
    run("BEGIN TRAN");
    run("CREATE TABLE u (a int) ");
    run("INSERT u VALUES (1)");
    run("ROLLBACK");
    EXPECT_EQ(run("SELECT * FROM u").errors(), Errors{208});
    EXPECT_EQ(run("CREATE TABLE u (a int)").errors(), Errors{});
}

TEST_F(Atomicity, AClientThatGoesInTheMiddleOfACallTakesItsWorkWithIt) {
    run("CREATE PROCEDURE p AS BEGIN INSERT t VALUES (1, 1) SELECT id FROM t INSERT t VALUES (2, 2) END");
    class Gone : public Collector {
    public:
        void row(std::span<const Value>) override { throw std::runtime_error("connection lost"); }
    } gone;
    EXPECT_THROW(session->executeProcedure("p", {}, gone), std::runtime_error);
    EXPECT_EQ(count(), 0);
    EXPECT_THROW(session->executeBatch("BEGIN TRAN INSERT t VALUES (1, 1) SELECT id FROM t", gone),
                 std::runtime_error);
    session.reset();
    session = engine.connectAsOwner();
    EXPECT_EQ(count(), 0);
}

TEST_F(Atomicity, ResetPutsTheSessionBackToItsLogin) {
    run("CREATE TABLE #x (a int) SET NOCOUNT ON BEGIN TRAN INSERT t VALUES (1, 1)");
    session->reset();
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 0);
    EXPECT_EQ(count(), 0);
    EXPECT_EQ(run("SELECT * FROM #x").errors(), Errors{208});
    EXPECT_TRUE(run("INSERT t VALUES (1, 1)").counts.front().has_value());
}

TEST_F(Atomicity, ImplicitTransactionsWaitForTheirCommit) {
    run("SET IMPLICIT_TRANSACTIONS ON");
    run("INSERT t VALUES (1, 1)");
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 1);
    run("ROLLBACK");
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 0);
    EXPECT_EQ(count(), 0);
    run("COMMIT SET IMPLICIT_TRANSACTIONS OFF");
    run("INSERT t VALUES (1, 1)");
    EXPECT_EQ(number(*session, "SELECT @@TRANCOUNT"), 0);
}

TEST_F(Atomicity, DescribingWithoutRunningChangesNothing) {
    const Collector answer = run("SET FMTONLY ON INSERT t VALUES (1, 1) SELECT id FROM t SET FMTONLY OFF");
    ASSERT_EQ(answer.results.size(), 1u);
    EXPECT_EQ(answer.results.front().columns.front().name, "id");
    EXPECT_TRUE(answer.results.front().rows.empty());
    run("SET NOEXEC ON INSERT t VALUES (2, 2) SET NOEXEC OFF");
    EXPECT_EQ(count(), 0);
    run("SET FMTONLY ON SELECT 1 AS a INTO made UNION SELECT 2 SET FMTONLY OFF");
    EXPECT_EQ(number(*session, "SELECT COUNT(*) FROM sys.tables WHERE name = 'made'"), 0);
}

TEST_F(Atomicity, DescribingALoopComesToAnEnd) {
    run("INSERT t VALUES (1, 1)");
    const Collector answer =
        run("SET FMTONLY ON WHILE EXISTS (SELECT * FROM t) BEGIN SELECT id FROM t DELETE t END "
            "SET FMTONLY OFF");
    EXPECT_EQ(answer.results.size(), 1u);
    EXPECT_EQ(count(), 1);
}

}  // namespace
