#pragma once

#include "tds/Socket.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>

namespace magdb::tds {

/// The sending side of a connection. Can put aside, in a file without a name, what a slow client does not
/// take.
class Outbox {
public:
    static constexpr std::size_t mostAside = 256 * 1024 * 1024;

    /// The socket must outlive it. most: bytes that may lie aside.
    explicit Outbox(const Socket& socket, std::size_t most = mostAside) : socket_(socket), most_(most) {}

    /// Sends what lies aside and then these bytes; waits for the client as long as it takes.
    void send(std::span<const std::uint8_t> bytes);
    /// Sends what the client takes at once and puts the rest aside; never waits. Throws ConnectionLost when
    /// too much lies aside already.
    void offer(std::span<const std::uint8_t> bytes);

private:
    struct Close {
        void operator()(std::FILE* file) const { std::fclose(file); }
    };

    void putAside(std::span<const std::uint8_t> bytes);
    void sendAside();

    const Socket& socket_;
    std::size_t most_;
    std::unique_ptr<std::FILE, Close> aside_;
    std::size_t asideSize_ = 0;
};

}  // namespace magdb::tds
