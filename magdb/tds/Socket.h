#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>

namespace magdb::tds {

/// The other side has gone, or the server stops.
class ConnectionLost : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Owns the descriptor of a stream socket.
class Socket {
public:
    using Deadline = std::optional<std::chrono::steady_clock::time_point>;

    explicit Socket(int descriptor) : descriptor_(descriptor) {}
    ~Socket();
    Socket(Socket&& other) noexcept : descriptor_(other.descriptor_) { other.descriptor_ = -1; }
    Socket& operator=(Socket&&) = delete;

    [[nodiscard]] int descriptor() const { return descriptor_; }
    void sendAtOnce() const;

    /// Sends everything or throws ConnectionLost.
    void send(std::span<const std::uint8_t> bytes) const;
    /// Sends what fits without waiting; gives its size. Throws ConnectionLost.
    [[nodiscard]] std::size_t sendSome(std::span<const std::uint8_t> bytes) const;
    /// Bytes received, 0 when the other side has closed. Waits no longer than the deadline; throws
    /// ConnectionLost then and on errors.
    [[nodiscard]] std::size_t receive(std::span<std::uint8_t> room, const Deadline& deadline) const;
    /// Ends both directions; wakes whoever waits in send() or receive(). Safe from any thread.
    void shutDown() const;
    /// Ends sending and reads for a moment what the other side still sends, so that closing does not destroy
    /// the last answer on its way.
    void closeGently() const;

private:
    int descriptor_;
};

/// A listening socket on 127.0.0.1. Port 0 takes a free one. Throws std::system_error.
[[nodiscard]] Socket listenOnLoopback(std::uint16_t port);
[[nodiscard]] std::uint16_t boundPort(const Socket& socket);

}  // namespace magdb::tds
