#include "tds/Outbox.h"

#include <algorithm>
#include <array>

namespace magdb::tds {

void Outbox::send(std::span<const std::uint8_t> bytes) {
    sendAside();
    socket_.send(bytes);
}

void Outbox::offer(std::span<const std::uint8_t> bytes) {
    if (!aside_) {
        bytes = bytes.subspan(socket_.sendSome(bytes));
    }
    if (!bytes.empty()) {
        putAside(bytes);
    }
}

void Outbox::putAside(std::span<const std::uint8_t> bytes) {
    if (asideSize_ + bytes.size() > most_) {
        throw ConnectionLost("the client does not read");
    }
    if (!aside_) {
        aside_.reset(std::tmpfile());
    }
    if (!aside_ || std::fwrite(bytes.data(), 1, bytes.size(), aside_.get()) != bytes.size()) {
        throw ConnectionLost("temporary file");
    }
    asideSize_ += bytes.size();
}

void Outbox::sendAside() {
    if (!aside_) {
        return;
    }
    std::rewind(aside_.get());
    std::array<std::uint8_t, 65536> room;
    while (asideSize_ > 0) {
        const std::size_t wanted = std::min(room.size(), asideSize_);
        if (std::fread(room.data(), 1, wanted, aside_.get()) != wanted) {
            throw ConnectionLost("temporary file");
        }
        socket_.send(std::span(room).first(wanted));
        asideSize_ -= wanted;
    }
    aside_.reset();
}

}  // namespace magdb::tds
