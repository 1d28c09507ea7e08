#include "magdb/tds/RunningServer.h"
#include "magdb/tds/WireClient.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <random>

namespace {

using client::Answer;
using client::Bytes;
using client::WireClient;
using Rows = std::vector<std::vector<std::string>>;

class ServerTest : public ::testing::Test {
protected:
    void SetUp() override {
        owner.logIn();
        expectClean(u"create table dbo.Stan (Id int not null primary key, Ilosc int not null)");
        expectClean(u"insert into dbo.Stan (Id, Ilosc) values (1, 10)");
        // Changes the row and then works for ever.
        expectClean(
            u"create procedure dbo.BezKonca as begin set nocount on; update dbo.Stan set Ilosc = Ilosc + 1; "
            u"declare @i int; set @i = 0; while 1 = 1 set @i = (@i + 1) % 1000 end");
        expectClean(
            u"create procedure dbo.Dodaj @a int, @b int, @suma int output as begin set nocount on; "
            u"set @suma = @a + @b; return 7 end");
    }
    void expectClean(std::u16string_view text) {
        const Answer answer = owner.run(text);
        ASSERT_TRUE(answer.errors.empty()) << answer.errors.front().text;
    }
    [[nodiscard]] std::string stock() {
        const Answer answer = owner.run(u"select Ilosc from dbo.Stan where Id = 1");
        return answer.rows.size() == 1 ? answer.rows[0][0] : "no row";
    }
    void makeDigits() {
        expectClean(u"create table dbo.Cyfry (n int not null)");
        expectClean(u"insert into dbo.Cyfry (n) values (0), (1), (2), (3), (4), (5), (6), (7), (8), (9)");
    }
    /// Whether a new client can log in and be answered.
    void expectServerLives() {
        WireClient fresh(server.port());
        ASSERT_TRUE(fresh.logIn().loggedIn);
        EXPECT_EQ(fresh.run(u"select 1").rows, (Rows{{"1"}}));
    }

    RunningServer server;
    WireClient owner{server.port()};
};

void letTheCallBegin() {
    std::this_thread::sleep_for(std::chrono::milliseconds(100));  // wait: a loop tells nobody that it runs
}

Bytes spinCall() {
    return client::message(client::typeRpc, client::call(u"dbo.BezKonca", {}));
}

TEST_F(ServerTest, LogsInAndTellsDatabaseCollationAndPacketSize) {
    WireClient fresh(server.port());
    const Answer answer = fresh.logIn();
    EXPECT_TRUE(answer.loggedIn);
    EXPECT_EQ(answer.environment, (std::vector<int>{1, 7, 4}));
    ASSERT_EQ(answer.infos.size(), 1U);
    EXPECT_EQ(answer.infos[0].number, 5701U);
}

TEST_F(ServerTest, RefusesAWrongPasswordAndAnUnknownDatabase) {
    client::LoginFields fields;
    fields.password = u"magazyn-2024";
    WireClient wrong(server.port());
    const Answer refused = wrong.logIn(fields);
    EXPECT_EQ(refused.errorNumber(), 18456U);
    EXPECT_FALSE(refused.loggedIn);
    EXPECT_TRUE(wrong.serverCloses());

    fields = {};
    fields.database = u"NIEMA";
    EXPECT_EQ(WireClient(server.port()).logIn(fields).errorNumber(), 4060U);
}

TEST_F(ServerTest, RefusesIntegratedLoginsAndOldProtocols) {
    client::LoginFields fields;
    fields.flags2 = 0x80;
    EXPECT_EQ(WireClient(server.port()).logIn(fields).errorNumber(), 18452U);
    fields = {};
    fields.version = 0x70000000;
    EXPECT_EQ(WireClient(server.port()).logIn(fields).errorNumber(), 40517U);
}

TEST_F(ServerTest, CallsAProcedureWithReturnValueAndOutput) {
    const auto call = client::call(u"dbo.Dodaj", {client::parameter(u"@a", 0, {0x26, 4, 4, 2, 0, 0, 0}),
                                                  client::parameter(u"@b", 0, {0x26, 4, 4, 3, 0, 0, 0}),
                                                  client::parameter(u"@suma", 1, {0x26, 4, 0})});
    const Answer answer = owner.ask(client::typeRpc, call);
    EXPECT_EQ(answer.status, 7);
    EXPECT_EQ(answer.outputs, std::vector<std::string>{"5"});
    ASSERT_EQ(answer.dones.size(), 1U);
    EXPECT_EQ(answer.dones[0].kind, 0xFE);
    EXPECT_EQ(answer.dones[0].status, 0);
}

TEST_F(ServerTest, AFailedStatementEndsByItself) {
    const Answer answer = owner.run(u"insert into dbo.Stan (Id, Ilosc) values (1, 1) select 5");
    EXPECT_EQ(answer.errorNumber(), 2627U);
    EXPECT_EQ(answer.rows, (Rows{{"5"}}));
    ASSERT_EQ(answer.dones.size(), 2U);
    EXPECT_EQ(answer.dones[0].status, 0x03);
    EXPECT_EQ(answer.dones[1].status, 0x10);
}

TEST_F(ServerTest, AClientThatDoesNotReadHoldsUpNoWriter) {
    makeDigits();
    expectClean(
        u"create procedure dbo.Duzo as begin update dbo.Stan set Ilosc = Ilosc + 1; select "
        u"replicate('x', 8000) from dbo.Cyfry a, dbo.Cyfry b, dbo.Cyfry c; return 4 end");
    WireClient slow(server.port());
    slow.logIn();
    slow.send(client::message(client::typeRpc, client::call(u"dbo.Duzo", {})));
    slow.awaitAnswer();
    expectClean(u"update dbo.Stan set Ilosc = Ilosc + 1");
    EXPECT_EQ(stock(), "12");
    const Answer answer = slow.receive();
    EXPECT_EQ(answer.rows, Rows(1000, {std::string(8000, 'x')}));
    EXPECT_EQ(answer.status, 4);
    EXPECT_EQ(slow.run(u"select 5").rows, (Rows{{"5"}}));
}

TEST_F(ServerTest, AnswersSeveralCallsOfOneMessage) {
    client::Build both;
    both.raw(client::call(u"dbo.Dodaj", {client::parameter(u"", 0, {0x38, 1, 0, 0, 0}),
                                         client::parameter(u"", 0, {0x38, 2, 0, 0, 0}),
                                         client::parameter(u"", 1, {0x26, 4, 0})}));
    both.u8(0xFF).u16(4).text(u"none").u16(0);
    const Answer answer = owner.ask(client::typeRpc, both.bytes());
    EXPECT_EQ(answer.outputs, std::vector<std::string>{"3"});
    EXPECT_EQ(answer.errorNumber(), 2812U);
    ASSERT_EQ(answer.dones.size(), 2U);
    EXPECT_EQ(answer.dones[0].status & 1, 1);
    EXPECT_EQ(answer.dones[1].status & 3, 2);
}

TEST_F(ServerTest, StaysConnectedAfterARequestItCannotRead) {
    const Answer xml =
        owner.ask(client::typeRpc, client::call(u"dbo.Dodaj", {client::parameter(u"@a", 0, {0xF1, 0})}));
    EXPECT_EQ(xml.errorNumber(), 8009U);
    EXPECT_EQ(owner.ask(client::typeBatch, Bytes{9, 9}).errorNumber(), 4002U);
    EXPECT_EQ(owner.ask(client::typeBulk, Bytes{1, 2, 3}).errorNumber(), 40517U);
    EXPECT_EQ(stock(), "10");
}

TEST_F(ServerTest, AnswersAnIgnoredRequestWithoutRunningIt) {
    const Bytes text = client::batch(u"update dbo.Stan set Ilosc = 99");
    owner.send(client::packet(client::typeBatch, 0x03, text));
    const Answer answer = owner.receive();
    ASSERT_EQ(answer.dones.size(), 1U);
    EXPECT_EQ(answer.dones[0].status, 2);
    EXPECT_EQ(stock(), "10");
}

TEST_F(ServerTest, DropsTemporaryTablesAtTheResetBit) {
    expectClean(u"create table #t (a int)");
    EXPECT_TRUE(owner.run(u"select a from #t").errors.empty());
    owner.send(client::packet(client::typeBatch, 0x09, client::batch(u"select a from #t")));
    const Answer answer = owner.receive();
    EXPECT_EQ(answer.errorNumber(), 208U);
    EXPECT_EQ(answer.environment, std::vector<int>{18});
}

Answer transaction(WireClient& client, std::initializer_list<std::uint8_t> content) {
    client::Build build;
    build.raw(client::headers()).raw(content);
    return client.ask(client::typeTransaction, build.bytes());
}

TEST_F(ServerTest, ServesTransactionRequests) {
    EXPECT_EQ(transaction(owner, {5, 0, 0, 0}).environment, std::vector<int>{8});
    expectClean(u"update dbo.Stan set Ilosc = 11");
    EXPECT_EQ(transaction(owner, {8, 0, 0, 0}).environment, std::vector<int>{10});
    EXPECT_EQ(stock(), "10");
    EXPECT_EQ(transaction(owner, {5, 0, 2, 0}).environment, std::vector<int>{8});
    expectClean(u"update dbo.Stan set Ilosc = 12");
    EXPECT_EQ(transaction(owner, {7, 0, 0, 0}).environment, std::vector<int>{9});
    EXPECT_EQ(stock(), "12");
    EXPECT_EQ(transaction(owner, {7, 0, 0, 0}).errorNumber(), 3902U);
}

TEST_F(ServerTest, CancelsARunningBatchAtAnAttention) {
    owner.send(client::message(client::typeBatch,
                               client::batch(u"declare @i int; set @i = 0; while 1 = 1 set @i = 1")));
    owner.send(client::packet(client::typeAttention, 1, Bytes{}));
    EXPECT_FALSE(owner.receive().acknowledgesAttention());
    EXPECT_TRUE(owner.receive().acknowledgesAttention());
    EXPECT_EQ(stock(), "10");
}

TEST_F(ServerTest, UndoesACancelledCall) {
    WireClient other(server.port());
    other.logIn();
    other.send(spinCall());
    letTheCallBegin();
    other.send(client::packet(client::typeAttention, 1, Bytes{}));
    static_cast<void>(other.receive());
    EXPECT_TRUE(other.receive().acknowledgesAttention());
    EXPECT_EQ(stock(), "10");
    EXPECT_EQ(other.run(u"select Ilosc from dbo.Stan").rows, (Rows{{"10"}}));
}

TEST_F(ServerTest, AcknowledgesAnAttentionThatComesTooLate) {
    owner.send(client::packet(client::typeAttention, 1, Bytes{}));
    EXPECT_TRUE(owner.receive().acknowledgesAttention());
    EXPECT_EQ(stock(), "10");
}

TEST_F(ServerTest, UndoesTheCallOfAClientThatIsKilled) {
    for (const bool abruptly : {true, false}) {
        WireClient victim(server.port());
        victim.logIn();
        victim.send(spinCall());
        letTheCallBegin();
        if (abruptly) {
            victim.drop();
        }
    }
    // The write would wait for the dead call's locks.
    expectClean(u"update dbo.Stan set Ilosc = Ilosc + 5");
    EXPECT_EQ(stock(), "15");
    expectServerLives();
}

TEST_F(ServerTest, ServesSeveralSessionsAtOnce) {
    std::vector<std::thread> threads;
    std::atomic<int> right{0};
    for (int n = 0; n < 8; ++n) {
        threads.emplace_back([&, n] {
            try {
                WireClient mine(server.port());
                mine.logIn();
                for (int i = 0; i < 50; ++i) {
                    mine.run(u"update dbo.Stan set Ilosc = Ilosc + 1 where Id = 1");
                    const std::string digits = std::to_string(n * 1000 + i);
                    const std::u16string text = u"select " + std::u16string(digits.begin(), digits.end());
                    right += mine.run(text).rows == Rows{{digits}} ? 1 : 0;
                }
            } catch (const std::runtime_error& error) {
                ADD_FAILURE() << error.what();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(right, 8 * 50);
    EXPECT_EQ(stock(), std::to_string(10 + 8 * 50));
}

TEST_F(ServerTest, SurvivesRandomBytes) {
    std::mt19937 random(99);
    for (int round = 0; round < 200; ++round) {
        WireClient stranger(server.port());
        Bytes bytes(random() % 3000);
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(random()); });
        if (round % 2 == 0 && bytes.size() > 8) {
            static constexpr std::uint8_t header[] = {client::typePreLogin, 1, 0, 60};
            std::copy(std::begin(header), std::end(header), bytes.begin());
        }
        try {
            stranger.send(bytes);
        } catch (const std::runtime_error&) {
            // Turned away before it had said everything.
        }
    }
    expectServerLives();
}

TEST_F(ServerTest, SurvivesRandomRequestsOfALoggedInClient) {
    std::mt19937 random(5);
    for (int round = 0; round < 300; ++round) {
        WireClient stranger(server.port());
        stranger.logIn();
        static constexpr std::uint8_t types[] = {client::typeBatch, client::typeRpc, client::typeTransaction,
                                                 client::typeBulk};
        client::Build content;
        content.raw(client::headers());
        for (std::size_t i = random() % 300; i > 0; --i) {
            content.u8(random() % 256);
        }
        stranger.send(client::message(types[random() % std::size(types)], content.bytes()));
        EXPECT_FALSE(stranger.receive().dones.empty());
    }
    expectServerLives();
}

TEST_F(ServerTest, SurvivesRequestsThatAreCutOff) {
    const Bytes whole = client::message(client::typeBatch, client::batch(u"select Ilosc from dbo.Stan"));
    for (std::size_t size = 0; size < whole.size(); size += 3) {
        WireClient stranger(server.port());
        stranger.logIn();
        stranger.send({whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(size)});
    }
    expectServerLives();
}

TEST_F(ServerTest, ClosesAfterPacketsOfImpossibleLength) {
    for (const Bytes& header : {Bytes{1, 1, 0, 3, 0, 0, 1, 0}, Bytes{1, 1, 0xFF, 0xFF, 0, 0, 1, 0}}) {
        WireClient stranger(server.port());
        stranger.logIn();
        stranger.send(header);
        EXPECT_EQ(stranger.receive().errorNumber(), 4002U);
        EXPECT_TRUE(stranger.serverCloses());
    }
    expectServerLives();
}

TEST_F(ServerTest, RefusesAnOversizedMessageAndCloses) {
    WireClient stranger(server.port());
    stranger.logIn();
    const Bytes packet = client::packet(client::typeBatch, 0, Bytes(32'000, 'a'));
    bool cutOff = false;
    try {
        for (std::size_t sent = 0; sent < 70U * 1024 * 1024; sent += packet.size()) {
            stranger.send(packet);
        }
    } catch (const std::runtime_error&) {
        cutOff = true;
    }
    EXPECT_TRUE(cutOff || stranger.serverCloses());
    expectServerLives();
}

TEST_F(ServerTest, TakesABatchOfSeveralMegabytes) {
    const std::u16string text = u"select 5 /* " + std::u16string(2'000'000, u'x') + u" */";
    EXPECT_EQ(owner.run(text).rows, (Rows{{"5"}}));
}

/// A result of a hundred thousand rows, far more than the sockets hold.
Bytes largeQuery() {
    return client::message(
        client::typeBatch,
        client::batch(u"select a.n, N'" + std::u16string(100, u'x') +
                      u"' as t from dbo.Cyfry a cross join dbo.Cyfry b cross join dbo.Cyfry c "
                      u"cross join dbo.Cyfry d cross join dbo.Cyfry e"));
}

TEST_F(ServerTest, SurvivesClientsThatLeaveInTheMiddleOfALargeAnswer) {
    makeDigits();
    for (int i = 0; i < 10; ++i) {
        WireClient leaver(server.port());
        leaver.logIn();
        leaver.send(largeQuery());
        leaver.awaitAnswer();
        if (i % 2 == 0) {
            leaver.drop();
        }
    }
    expectServerLives();
}

TEST_F(ServerTest, LetsOthersWriteWhileAClientDoesNotRead) {
    makeDigits();
    WireClient sleeper(server.port());
    sleeper.logIn();
    sleeper.send(largeQuery());
    sleeper.awaitAnswer();
    expectClean(u"update dbo.Stan set Ilosc = 20");
    EXPECT_EQ(stock(), "20");
    EXPECT_EQ(sleeper.receive().rows.size(), 100'000U);
}

TEST_F(ServerTest, StopsWhileAClientDoesNotRead) {
    makeDigits();
    WireClient sleeper(server.port());
    sleeper.logIn();
    sleeper.send(largeQuery());
    sleeper.awaitAnswer();
    server.stop();
    EXPECT_TRUE(sleeper.serverCloses());
}

TEST_F(ServerTest, SurvivesAThousandConnectionsThatAreDropped) {
    for (int i = 0; i < 1000; ++i) {
        WireClient stranger(server.port());
        if (i % 3 == 0) {
            stranger.send(client::message(client::typePreLogin, client::preLogin()));
        } else if (i % 3 == 1) {
            stranger.drop();
        }
    }
    expectServerLives();
    EXPECT_EQ(stock(), "10");
}

TEST(ServerLimits, TellsClientsBeyondTheLimitTheReason) {
    magdb::tds::ServerOptions options;
    options.mostConnections = 2;
    const RunningServer server(options);
    WireClient first(server.port());
    WireClient second(server.port());
    ASSERT_TRUE(first.logIn().loggedIn);
    ASSERT_TRUE(second.logIn().loggedIn);
    WireClient third(server.port());
    EXPECT_EQ(third.logIn().errorNumber(), 17809U);
    EXPECT_EQ(first.run(u"select 1").rows, (Rows{{"1"}}));
}

TEST(ServerLimits, ClosesLoginsThatNeverEnd) {
    magdb::tds::ServerOptions options;
    options.loginTime = std::chrono::seconds(1);
    const RunningServer server(options);
    WireClient silent(server.port());
    WireClient halfway(server.port());
    WireClient loggedIn(server.port());
    ASSERT_TRUE(loggedIn.logIn().loggedIn);
    halfway.send(client::message(client::typePreLogin, client::preLogin()));
    EXPECT_TRUE(silent.serverCloses());
    EXPECT_TRUE(halfway.serverCloses());
    EXPECT_EQ(loggedIn.run(u"select 1").rows, (Rows{{"1"}}));
}

TEST(ServerLimits, StopsWhileABatchRuns) {
    RunningServer server;
    WireClient busy(server.port());
    WireClient idle(server.port());
    busy.logIn();
    idle.logIn();
    busy.send(client::message(client::typeBatch,
                              client::batch(u"declare @i int; set @i = 0; while 1 = 1 set @i = 1")));
    server.stop();
    EXPECT_TRUE(busy.serverCloses());
    EXPECT_TRUE(idle.serverCloses());
}

TEST(ServerTrace, TakesRequestsAsTheyWereReceived) {
    const std::string path = ::testing::TempDir() + "server-trace-" + std::to_string(::getpid()) + ".txt";
    magdb::tds::ServerOptions options;
    options.traceFile = path;
    {
        const RunningServer server(options);
        WireClient client(server.port());
        client.logIn();
        client.run(u"select 1 ,\t'\u0142'\r\n");
        client.run(u"not a statement");
        client.ask(client::typeRpc,
                   client::call(u"dbo.x", {client::parameter(u"@a", 0, {0x38, 5, 0, 0, 0})}));
    }
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line.substr(line.find('\t') + 1));
    }
    std::filesystem::remove(path);
    EXPECT_EQ(lines, (std::vector<std::string>{"BATCH\tselect 1 ,\\t'ł'\\r\\n", "BATCH\tnot a statement",
                                               "RPC\tdbo.x\t@a=5"}));
}

}  // namespace
