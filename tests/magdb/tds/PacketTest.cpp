#include "magdb/tds/ClientBytes.h"
#include "tds/PacketReader.h"
#include "tds/PacketWriter.h"

#include <gtest/gtest.h>

#include <numeric>

namespace magdb::tds {
namespace {

using client::Bytes;

Bytes counting(std::size_t size) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), std::uint8_t{0});
    return bytes;
}

TEST(PacketReader, PutsAMessageTogetherFromSingleBytes) {
    const Bytes content = counting(10'000);
    PacketReader reader;
    const Bytes stream = client::message(client::typeBatch, content, 512);
    for (std::size_t i = 0; i + 1 < stream.size(); ++i) {
        reader.feed(std::span(stream).subspan(i, 1));
        ASSERT_FALSE(reader.next().has_value());
    }
    reader.feed(std::span(stream).last(1));
    const auto message = reader.next();
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(message->type, PacketType::SqlBatch);
    EXPECT_EQ(message->content, content);
}

TEST(PacketReader, GivesMessagesThatCameTogetherOneByOne) {
    PacketReader reader;
    client::Build both;
    reader.feed(both.raw(client::message(client::typeBatch, counting(3)))
                    .raw(client::message(client::typeAttention, Bytes{}))
                    .bytes());
    EXPECT_FALSE(reader.attentionWaits());
    EXPECT_EQ(reader.next()->type, PacketType::SqlBatch);
    EXPECT_TRUE(reader.attentionWaits());
    EXPECT_EQ(reader.next()->type, PacketType::Attention);
    EXPECT_FALSE(reader.next().has_value());
}

TEST(PacketReader, TellsTheIgnoreAndResetBits) {
    PacketReader reader;
    reader.feed(client::packet(client::typeBatch, statusResetConnection, counting(8)));
    reader.feed(client::packet(client::typeBatch, statusEndOfMessage | statusIgnore, counting(8)));
    const auto message = reader.next();
    ASSERT_TRUE(message.has_value());
    EXPECT_TRUE(message->ignored);
    EXPECT_TRUE(message->resetConnection);
}

TEST(PacketReader, LetsAnAttentionEndAnUnfinishedMessage) {
    PacketReader reader;
    reader.feed(client::packet(client::typeBatch, 0, counting(100)));
    reader.feed(client::packet(client::typeAttention, 1, Bytes{}));
    EXPECT_EQ(reader.next()->type, PacketType::Attention);
    reader.feed(client::message(client::typeBatch, counting(5)));
    EXPECT_EQ(reader.next()->content, counting(5));
}

TEST(PacketReader, RefusesBytesThatAreNoPackets) {
    const Bytes streams[] = {
        {'G', 'E', 'T'},                    // another protocol, known by its first byte
        {0x16, 3, 1, 0, 5},                 // encryption from the start
        {0x01, 1, 0, 7, 0, 0, 1, 0},        // shorter than its own header
        {0x01, 1, 0xFF, 0xFF, 0, 0, 1, 0},  // longer than any packet
        {0x04, 1, 0, 8, 0, 0, 1, 0},        // what only servers send
    };
    for (const Bytes& stream : streams) {
        PacketReader reader;
        reader.feed(stream);
        EXPECT_THROW(static_cast<void>(reader.next()), FramingError);
    }
}

TEST(PacketReader, RefusesAMessageOfMixedTypes) {
    PacketReader reader;
    reader.feed(client::packet(client::typeBatch, 0, counting(8)));
    reader.feed(client::packet(client::typeRpc, 1, counting(8)));
    EXPECT_THROW(static_cast<void>(reader.next()), FramingError);
}

TEST(PacketReader, HoldsTheLimitOfAMessageAcrossPackets) {
    PacketReader reader;
    reader.setLimit(1000);
    reader.feed(client::message(client::typeBatch, counting(1000), 512));
    EXPECT_TRUE(reader.next().has_value());
    reader.feed(client::message(client::typeBatch, counting(1001), 512));
    EXPECT_THROW(static_cast<void>(reader.next()), FramingError);
}

TEST(PacketWriter, SendsASmallAnswerInOnePiece) {
    std::vector<Bytes> sent;
    PacketWriter writer(
        [&](std::span<const std::uint8_t> bytes, bool) { sent.emplace_back(bytes.begin(), bytes.end()); });
    writer.setSpid(0x0133);
    writer.content().u8(42);
    writer.flush();
    writer.finish();
    ASSERT_EQ(sent.size(), 1U);
    EXPECT_EQ(sent[0], (Bytes{4, 1, 0, 9, 1, 0x33, 1, 0, 42}));
}

/// Takes packets apart and checks their numbers, sizes and end bits.
Bytes join(const std::vector<Bytes>& sent, std::size_t packetSize) {
    Bytes stream;
    for (const Bytes& piece : sent) {
        stream.insert(stream.end(), piece.begin(), piece.end());
    }
    Bytes content;
    std::uint8_t number = 1;
    for (std::size_t at = 0; at < stream.size();) {
        const std::size_t length = static_cast<std::size_t>(stream[at + 2] << 8 | stream[at + 3]);
        EXPECT_LE(length, packetSize);
        EXPECT_EQ(stream[at + 6], number++);
        content.insert(content.end(), stream.begin() + static_cast<std::ptrdiff_t>(at + 8),
                       stream.begin() + static_cast<std::ptrdiff_t>(at + length));
        at += length;
        EXPECT_EQ(stream[at - length + 1], at == stream.size() ? 1 : 0);
    }
    return content;
}

TEST(PacketWriter, CutsALargeAnswerAndMarksOnlyItsEnd) {
    for (const std::size_t size : {504U, 505U, 200'000U}) {
        std::vector<Bytes> sent;
        PacketWriter writer([&](std::span<const std::uint8_t> bytes, bool) {
            sent.emplace_back(bytes.begin(), bytes.end());
        });
        writer.setPacketSize(512);
        const Bytes content = counting(size);
        for (const std::uint8_t byte : content) {
            writer.content().u8(byte);
            writer.flush();
        }
        writer.finish();
        EXPECT_EQ(join(sent, 512), content);
        EXPECT_LE(sent.size(), 1 + size / 60'000);
    }
}

}  // namespace
}  // namespace magdb::tds
