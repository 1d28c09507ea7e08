#include "magdb/tds/ClientBytes.h"
#include "tds/Requests.h"

#include <gtest/gtest.h>

namespace magdb::tds {
namespace {

using client::Bytes;

const Bytes intParameter = client::parameter(u"@a", 0, {0x26, 4, 4, 5, 0, 0, 0});
const Bytes textOutput = client::parameter(u"@b", 1, {0xE7, 20, 0, 0x15, 4, 0xD0, 0, 0, 2, 0, 'x', 0});
const Bytes defaulted = client::parameter(u"", 2, {0x26, 4, 0});

TEST(Requests, ReadsABatchBehindItsHeaders) {
    EXPECT_EQ(readBatch(client::batch(u"select 'ł'"), Version::Tds72), "select 'ł'");
}

TEST(Requests, ReadsABatchOf71WithoutHeaders) {
    client::Build build;
    EXPECT_EQ(readBatch(build.text(u"select 1").bytes(), Version::Tds71), "select 1");
}

TEST(Requests, RefusesBrokenHeadersAndHalfCharacters) {
    const Bytes broken[] = {{}, {3, 0, 0, 0}, {255, 0, 0, 0, 1}, {4, 0, 0, 0, 'a'}};
    for (const Bytes& bytes : broken) {
        EXPECT_THROW(static_cast<void>(readBatch(bytes, Version::Tds74)), RequestError);
    }
}

TEST(Requests, ReadsACallWithAllKindsOfParameters) {
    const auto calls =
        readCalls(client::call(u"dbo.p", {intParameter, textOutput, defaulted}), Version::Tds74);
    ASSERT_EQ(calls.size(), 1U);
    EXPECT_EQ(calls[0].name, "dbo.p");
    const auto& parameters = calls[0].parameters;
    ASSERT_EQ(parameters.size(), 3U);
    EXPECT_EQ(parameters[0].name, "@a");
    EXPECT_FALSE(parameters[0].output);
    EXPECT_EQ(std::get<std::int64_t>(parameters[0].value), 5);
    EXPECT_TRUE(parameters[1].output);
    EXPECT_EQ(std::get<std::string>(parameters[1].value), "x");
    EXPECT_TRUE(parameters[2].name.empty());
    EXPECT_TRUE(parameters[2].useDefault);
    EXPECT_TRUE(isNull(parameters[2].value));
}

TEST(Requests, TurnsProcedureNumbersIntoNames) {
    const std::pair<int, const char*> numbers[] = {{10, "sp_executesql"},
                                                   {11, "sp_prepare"},
                                                   {12, "sp_execute"},
                                                   {13, "sp_prepexec"},
                                                   {15, "sp_unprepare"}};
    for (const auto& [number, name] : numbers) {
        client::Build build;
        build.raw(client::headers()).u16(0xFFFF).u16(static_cast<unsigned>(number)).u16(0);
        EXPECT_EQ(readCalls(build.bytes(), Version::Tds74).at(0).name, name);
    }
    client::Build unknown;
    unknown.raw(client::headers()).u16(0xFFFF).u16(99).u16(0);
    EXPECT_THROW(static_cast<void>(readCalls(unknown.bytes(), Version::Tds74)), RequestError);
}

TEST(Requests, ReadsSeveralCallsOfOneMessage) {
    client::Build later;
    later.raw(client::call(u"a", {intParameter})).u8(0xFF).u16(1).text(u"b").u16(0);
    EXPECT_EQ(readCalls(later.bytes(), Version::Tds72).at(1).name, "b");
    client::Build early;
    early.u16(1).text(u"a").u16(0).raw(intParameter).u8(0x80).u16(1).text(u"b").u16(0);
    EXPECT_EQ(readCalls(early.bytes(), Version::Tds71).at(1).name, "b");
}

TEST(Requests, NamesTheParameterThatCannotBeRead) {
    const Bytes xml = client::parameter(u"@x", 0, {0xF1, 0});
    try {
        static_cast<void>(readCalls(client::call(u"p", {intParameter, xml}), Version::Tds74));
        FAIL();
    } catch (const RequestError& error) {
        EXPECT_EQ(error.number(), 8009);
        EXPECT_NE(std::string(error.what()).find("Parameter 2 (\"@x\"): Data type 0xF1"), std::string::npos);
    }
}

TEST(Requests, RefusesACallThatIsCutAnywhere) {
    const Bytes whole = client::call(u"p", {intParameter, textOutput});
    const std::size_t beforeParameters = client::call(u"p", {}).size();
    for (std::size_t size = 0; size < whole.size(); ++size) {
        // A cut between two parameters leaves a sound call.
        if (size == beforeParameters || size == beforeParameters + intParameter.size()) {
            continue;
        }
        EXPECT_THROW(static_cast<void>(readCalls(std::span(whole).first(size), Version::Tds74)), RequestError)
            << size;
    }
}

TransactionStatements statements(std::initializer_list<std::uint8_t> content) {
    client::Build build;
    build.raw(client::headers()).raw(content);
    return transactionStatements(readTransaction(build.bytes(), Version::Tds74));
}

TEST(Requests, TurnsTransactionRequestsIntoStatements) {
    EXPECT_EQ(statements({5, 0, 0, 0}).action, "BEGIN TRANSACTION");
    EXPECT_EQ(statements({5, 0, 4, 4, 'a', 0, ']', 0}).action,
              "SET TRANSACTION ISOLATION LEVEL SERIALIZABLE; BEGIN TRANSACTION [a]]]");
    EXPECT_EQ(statements({7, 0, 0, 0}).action, "COMMIT TRANSACTION");
    EXPECT_EQ(statements({7, 0, 0, 0}).next, "");
    EXPECT_EQ(statements({8, 0, 0, 1, 2, 0}).action, "ROLLBACK TRANSACTION");
    EXPECT_EQ(statements({8, 0, 0, 1, 2, 0}).next,
              "SET TRANSACTION ISOLATION LEVEL READ COMMITTED; BEGIN TRANSACTION");
    EXPECT_EQ(statements({9, 0, 2, 's', 0}).action, "SAVE TRANSACTION [s]");
}

TEST(Requests, RefusesDistributedTransactions) {
    EXPECT_THROW(static_cast<void>(statements({0, 0, 0, 0})), RequestError);
    EXPECT_THROW(static_cast<void>(statements({6, 0})), RequestError);
    EXPECT_THROW(static_cast<void>(statements({5, 0, 9, 0})), RequestError);
}

}  // namespace
}  // namespace magdb::tds
