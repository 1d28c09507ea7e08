#pragma once

#include "tds/Protocol.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace magdb::tds {

/// A whole message of a client.
struct Message {
    PacketType type = PacketType::SqlBatch;
    bool ignored = false;  ///< the client gave it up half way; it must not be run
    bool resetConnection = false;
    std::vector<std::uint8_t> content;
};

/// Puts messages together from the packets of a stream. Knows no sockets: bytes are fed in as they come.
class PacketReader {
public:
    /// The most content bytes a message may have.
    void setLimit(std::size_t bytes) { limit_ = bytes; }

    void feed(std::span<const std::uint8_t> bytes);

    /// The next whole message, or nothing when more bytes are needed. Throws FramingError when the bytes
    /// are no packets or the message is over the limit. An attention inside an unfinished message ends that
    /// message and is given in its place.
    [[nodiscard]] std::optional<Message> next();

    /// True when what was fed but not yet read begins with an attention.
    [[nodiscard]] bool attentionWaits() const;

private:
    struct Header {
        PacketType type;
        std::uint8_t status;
        std::size_t length;
    };

    [[nodiscard]] std::optional<Header> header() const;
    void take(const Header& header);
    [[nodiscard]] std::size_t waiting() const { return buffer_.size() - start_; }

    std::vector<std::uint8_t> buffer_;
    std::size_t start_ = 0;
    std::size_t limit_ = loginMessageLimit;
    std::optional<Message> partial_;
};

}  // namespace magdb::tds
