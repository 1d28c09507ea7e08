#pragma once

#include "tds/ByteWriter.h"
#include "tds/Protocol.h"

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

namespace magdb::tds {

/// Cuts the content of an answer into packets and hands them on in as few pieces as possible: a small
/// answer is one piece, a large one goes in pieces of about 64 KB while it is made.
class PacketWriter {
public:
    /// last: the piece ends the message.
    using Send = std::function<void(std::span<const std::uint8_t> piece, bool last)>;

    /// send takes whole packets; what it throws passes through.
    explicit PacketWriter(Send send) : send_(std::move(send)) {}

    /// Bytes of a packet with its header; holds from the next message on.
    void setPacketSize(std::size_t bytes) { packetSize_ = bytes; }
    /// The spid that packets carry, for people who read dumps.
    void setSpid(std::uint16_t spid) { spid_ = spid; }

    /// The content so far. Write to it, then call flush() now and then, and finish() at the end.
    [[nodiscard]] ByteWriter& content() { return content_; }

    /// Sends whole packets when enough of them wait.
    void flush() {
        if (content_.size() >= flushSize) {
            sendFull();
        }
    }
    /// Sends the rest with the end-of-message bit.
    void finish();

private:
    static constexpr std::size_t flushSize = 64 * 1024;

    void sendFull();
    void frame(std::span<const std::uint8_t> part, bool last, std::vector<std::uint8_t>& out);

    Send send_;
    ByteWriter content_;
    std::vector<std::uint8_t> framed_;
    std::size_t packetSize_ = defaultPacketSize;
    std::uint16_t spid_ = 0;
    std::uint8_t packetNumber_ = 1;
};

}  // namespace magdb::tds
