#include "tds/AnswerStream.h"

#include <gtest/gtest.h>

namespace magdb::tds {
namespace {

using Data = std::vector<std::uint8_t>;

/// A stream whose tokens stay in memory.
class AnswerStreamTest : public ::testing::Test {
protected:
    static Data doneToken(std::uint8_t kind, std::uint8_t status, std::uint8_t command = 0,
                          std::uint8_t count = 0) {
        return {kind, status, 0, command, 0, count, 0, 0, 0, 0, 0, 0, 0};
    }
    static Data joined(std::initializer_list<Data> parts) {
        Data all;
        for (const Data& part : parts) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }
    const Data& content() { return packets.content().data(); }

    PacketWriter packets{[](std::span<const std::uint8_t>, bool) {}};
    AnswerStream batch{packets, Version::Tds74, AnswerStream::Kind::Batch};
    AnswerStream call{packets, Version::Tds74, AnswerStream::Kind::Call};
    const ServerMessage error{208, 16, 1, "x", "", 3};
};

constexpr std::uint8_t done = 0xFD;
constexpr std::uint8_t doneProcedure = 0xFE;
constexpr std::uint8_t doneInProcedure = 0xFF;

TEST_F(AnswerStreamTest, EndsAnEmptyBatchWithOneDone) {
    batch.endBatch();
    EXPECT_EQ(content(), doneToken(done, 0));
}

TEST_F(AnswerStreamTest, MarksEveryDoneButTheLastAsFollowed) {
    batch.statementDone(1, false, false);
    batch.statementDone(2, true, false);
    batch.endBatch();
    EXPECT_EQ(content(), joined({doneToken(done, 0x11, 0, 1), doneToken(done, 0x10, 0xC1, 2)}));
}

TEST_F(AnswerStreamTest, LeavesOutStatementsThatTellNothing) {
    batch.statementDone(std::nullopt, false, false);
    batch.statementDone(std::nullopt, true, false);
    batch.endBatch();
    EXPECT_EQ(content(), doneToken(done, 0, 0xC1));
}

TEST_F(AnswerStreamTest, NeverEndsABatchWithTheDoneOfAProceduresStatement) {
    batch.statementDone(1, false, true);
    batch.endBatch();
    EXPECT_EQ(content(), joined({doneToken(doneInProcedure, 0x11, 0, 1), doneToken(done, 0)}));
}

TEST_F(AnswerStreamTest, TellsTheReturnValueOfAnExecInABatch) {
    batch.statementDone(1, false, true);
    batch.procedureDone(-4);
    batch.endBatch();
    EXPECT_EQ(content(), joined({doneToken(doneInProcedure, 0x11, 0, 1),
                                 {0x79, 0xFC, 0xFF, 0xFF, 0xFF},
                                 doneToken(doneProcedure, 0)}));
}

TEST_F(AnswerStreamTest, SetsTheErrorBitAfterAnError) {
    batch.message(error);
    const std::size_t before = content().size();
    batch.endBatch();
    EXPECT_EQ(Data(content().begin() + static_cast<std::ptrdiff_t>(before), content().end()),
              doneToken(done, 2));
}

TEST_F(AnswerStreamTest, KeepsInformationApartFromErrors) {
    ServerMessage print = error;
    print.severity = 0;
    batch.message(print);
    EXPECT_EQ(content().front(), 0xAB);
    const std::size_t before = content().size();
    batch.endBatch();
    EXPECT_EQ(Data(content().begin() + static_cast<std::ptrdiff_t>(before), content().end()),
              doneToken(done, 0));
}

TEST_F(AnswerStreamTest, WritesAnErrorAsTheProtocolSays) {
    batch.message(error);
    EXPECT_EQ(content(), (Data{0xAA, 26,  0, 208, 0, 0,   0, 1,   16, 1, 0, 'x', 0, 5, 'm',
                               0,    'a', 0, 'g', 0, 'd', 0, 'b', 0,  0, 3, 0,   0, 0}));
}

TEST_F(AnswerStreamTest, EndsACallWithStatusOutputsAndDone) {
    CallParameter in;
    CallParameter out;
    out.output = true;
    CallOutcome outcome;
    outcome.status = 7;
    outcome.outputs.push_back({"@b", {TypeId::Int}, std::int64_t{5}});
    call.statementDone(3, true, false);
    call.endCall(outcome, {in, out}, true);
    EXPECT_EQ(content(), joined({doneToken(doneInProcedure, 0x11, 0xC1, 3),
                                 {0x79, 7, 0, 0, 0},
                                 {0xAC, 1, 0, 2, '@', 0, 'b', 0, 1, 0, 0, 0, 0, 1, 0, 0x26, 4, 4, 5, 0, 0, 0},
                                 doneToken(doneProcedure, 0)}));
}

TEST_F(AnswerStreamTest, TellsNothingButTheErrorOfAFailedCall) {
    CallOutcome outcome;
    outcome.failed = true;
    call.endCall(outcome, {}, false);
    EXPECT_EQ(content(), doneToken(doneProcedure, 3));
}

TEST_F(AnswerStreamTest, TakesARowBackThatDoesNotFitItsColumns) {
    const std::vector<ResultColumn> columns = {{"a", {TypeId::Int}}, {"b", {TypeId::TinyInt}}};
    batch.columns(columns);
    const Data before = content();
    const Value values[] = {std::int64_t{1}, std::int64_t{1000}};
    EXPECT_THROW(batch.row(values), RequestError);
    EXPECT_EQ(content(), before);
}

TEST_F(AnswerStreamTest, DescribesColumns) {
    batch.columns({{"a", {TypeId::Int}, true, false}, {"", {TypeId::VarChar, 3}, false, true}});
    EXPECT_EQ(content(), (Data{0x81, 2, 0, 0,    0, 0,    0, 9, 0,    0x26, 4,    1, 'a', 0, 0,
                               0,    0, 0, 0x18, 0, 0xA7, 3, 0, 0x15, 4,    0xD0, 0, 0,   0}));
}

TEST_F(AnswerStreamTest, CountsIn32BitsBefore72) {
    AnswerStream old(packets, Version::Tds71, AnswerStream::Kind::Batch);
    old.statementDone(5, false, false);
    old.endBatch();
    EXPECT_EQ(content(), (Data{done, 0x10, 0, 0, 0, 5, 0, 0, 0}));
}

}  // namespace
}  // namespace magdb::tds
