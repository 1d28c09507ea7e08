#include "tds/PacketReader.h"

#include <utility>

namespace magdb::tds {

namespace {

bool isClientType(std::uint8_t type) {
    switch (static_cast<PacketType>(type)) {
        case PacketType::SqlBatch:
        case PacketType::OldLogin:
        case PacketType::Rpc:
        case PacketType::Attention:
        case PacketType::BulkLoad:
        case PacketType::FedAuthToken:
        case PacketType::TransactionManager:
        case PacketType::Login7:
        case PacketType::Sspi:
        case PacketType::PreLogin:
            return true;
        case PacketType::Answer:
            return false;
    }
    return false;
}

}  // namespace

void PacketReader::feed(std::span<const std::uint8_t> bytes) {
    if (start_ == buffer_.size()) {
        buffer_.clear();
        start_ = 0;
    } else if (start_ > maxPacketSize) {
        buffer_.erase(buffer_.begin(), buffer_.begin() + static_cast<std::ptrdiff_t>(start_));
        start_ = 0;
    }
    buffer_.insert(buffer_.end(), bytes.begin(), bytes.end());
}

std::optional<PacketReader::Header> PacketReader::header() const {
    if (waiting() == 0) {
        return std::nullopt;
    }
    const std::uint8_t* bytes = buffer_.data() + start_;
    // Checked before the header is whole, so that a stranger's first byte is enough to turn him away.
    if (!isClientType(bytes[0])) {
        throw FramingError("A packet has an unknown type.");
    }
    if (waiting() < packetHeaderSize) {
        return std::nullopt;
    }
    const std::size_t length = static_cast<std::size_t>(bytes[2] << 8 | bytes[3]);
    if (length < packetHeaderSize || length > maxPacketSize) {
        throw FramingError("A packet has an impossible length.");
    }
    return Header{static_cast<PacketType>(bytes[0]), bytes[1], length};
}

void PacketReader::take(const Header& header) {
    const auto content =
        std::span(buffer_).subspan(start_ + packetHeaderSize, header.length - packetHeaderSize);
    start_ += header.length;
    if (header.type == PacketType::Attention) {
        partial_.reset();
    } else if (partial_ && partial_->type != header.type) {
        throw FramingError("The packets of a message differ in type.");
    }
    if (!partial_) {
        partial_.emplace();
        partial_->type = header.type;
        partial_->resetConnection =
            (header.status & (statusResetConnection | statusResetKeepTransaction)) != 0;
    }
    if (partial_->content.size() + content.size() > limit_) {
        throw FramingError("A message is longer than this server takes.");
    }
    partial_->content.insert(partial_->content.end(), content.begin(), content.end());
}

std::optional<Message> PacketReader::next() {
    while (const auto head = header()) {
        if (waiting() < head->length) {
            return std::nullopt;
        }
        take(*head);
        // An attention is always one packet; some clients leave its end bit out.
        if ((head->status & statusEndOfMessage) != 0 || head->type == PacketType::Attention) {
            partial_->ignored = (head->status & statusIgnore) != 0;
            return std::exchange(partial_, std::nullopt);
        }
    }
    return std::nullopt;
}

bool PacketReader::attentionWaits() const {
    return waiting() != 0 && buffer_[start_] == static_cast<std::uint8_t>(PacketType::Attention);
}

}  // namespace magdb::tds
