#include "tds/PacketWriter.h"

#include <algorithm>

namespace magdb::tds {

void PacketWriter::frame(std::span<const std::uint8_t> part, bool last, std::vector<std::uint8_t>& out) {
    const std::size_t length = part.size() + packetHeaderSize;
    const std::uint8_t header[packetHeaderSize] = {
        static_cast<std::uint8_t>(PacketType::Answer),
        last ? statusEndOfMessage : std::uint8_t{0},
        static_cast<std::uint8_t>(length >> 8),
        static_cast<std::uint8_t>(length),
        static_cast<std::uint8_t>(spid_ >> 8),
        static_cast<std::uint8_t>(spid_),
        packetNumber_++,
        0,
    };
    out.insert(out.end(), std::begin(header), std::end(header));
    out.insert(out.end(), part.begin(), part.end());
}

void PacketWriter::sendFull() {
    const std::size_t room = packetSize_ - packetHeaderSize;
    const std::span<const std::uint8_t> all = content_.data();
    framed_.clear();
    std::size_t at = 0;
    // One byte at least stays for the last packet, which alone carries the end bit.
    while (all.size() - at > room) {
        frame(all.subspan(at, room), false, framed_);
        at += room;
    }
    send_(framed_, false);
    content_.dropFront(at);
}

void PacketWriter::finish() {
    const std::size_t room = packetSize_ - packetHeaderSize;
    const std::span<const std::uint8_t> all = content_.data();
    framed_.clear();
    std::size_t at = 0;
    do {
        const std::size_t part = std::min(room, all.size() - at);
        frame(all.subspan(at, part), at + part == all.size(), framed_);
        at += part;
    } while (at < all.size());
    content_.clear();
    packetNumber_ = 1;
    send_(framed_, true);
}

}  // namespace magdb::tds
