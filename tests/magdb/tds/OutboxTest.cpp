#include "tds/Outbox.h"

#include <gtest/gtest.h>
#include <sys/socket.h>

#include <array>
#include <future>
#include <numeric>
#include <stdexcept>
#include <vector>

namespace magdb::tds {
namespace {

using Data = std::vector<std::uint8_t>;

/// An outbox with its client at the other end of a pair of sockets.
class OutboxTest : public ::testing::Test {
protected:
    static constexpr std::size_t most = 8 * 1024 * 1024;

    static std::array<int, 2> pair() {
        std::array<int, 2> ends{};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
            throw std::runtime_error("no sockets");
        }
        return ends;
    }
    static Data pieceOf(std::size_t size, std::uint8_t first) {
        Data bytes(size);
        std::iota(bytes.begin(), bytes.end(), first);
        return bytes;
    }
    [[nodiscard]] Data receive(std::size_t size) const {
        Data received(size);
        for (std::size_t at = 0; at < size;) {
            at += client.receive(std::span(received).subspan(at), std::nullopt);
        }
        return received;
    }

    std::array<int, 2> ends = pair();
    Socket server{ends[0]};
    Socket client{ends[1]};
    Outbox outbox{server, most};
};

TEST_F(OutboxTest, SendsAnOfferAtOnceWhenTheClientTakesIt) {
    outbox.offer(pieceOf(1000, 0));
    EXPECT_EQ(receive(1000), pieceOf(1000, 0));
}

TEST_F(OutboxTest, KeepsTheOrderOfWhatItPutAside) {
    Data expected;
    for (std::uint8_t i = 0; i < 50; ++i) {
        const Data piece = pieceOf(100'000, i);
        outbox.offer(piece);
        expected.insert(expected.end(), piece.begin(), piece.end());
    }
    expected.push_back(77);
    auto received = std::async(std::launch::async, [&] { return receive(expected.size()); });
    outbox.send(Data{77});
    EXPECT_EQ(received.get(), expected);
}

TEST_F(OutboxTest, BeginsAnewWhenNothingLiesAsideAnyMore) {
    for (int round = 0; round < 3; ++round) {
        outbox.offer(pieceOf(most, 1));
        auto received = std::async(std::launch::async, [&] { return receive(most + 1); });
        outbox.send(Data{5});
        EXPECT_EQ(received.get().back(), 5);
    }
}

TEST_F(OutboxTest, GivesUpAClientThatLeavesTooMuchAside) {
    outbox.offer(pieceOf(most, 1));
    EXPECT_THROW(outbox.offer(pieceOf(most, 1)), ConnectionLost);
}

TEST_F(OutboxTest, LearnsThatTheClientHasGone) {
    Socket gone(std::move(client));
    gone.shutDown();
    EXPECT_THROW(outbox.offer(Data{1}), ConnectionLost);
}

}  // namespace
}  // namespace magdb::tds
