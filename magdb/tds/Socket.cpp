#include "tds/Socket.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <system_error>

namespace magdb::tds {

namespace {

using Clock = std::chrono::steady_clock;

/// False when the deadline passes first.
bool waitReadable(int descriptor, Clock::time_point deadline) {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now()).count();
        if (left <= 0) {
            return false;
        }
        pollfd entry{descriptor, POLLIN, 0};
        const int ready = ::poll(&entry, 1, static_cast<int>(std::min<long>(left + 1, 60'000)));
        if (ready > 0) {
            return true;
        }
        if (ready < 0 && errno != EINTR) {
            throw ConnectionLost("poll");
        }
    }
}

}  // namespace

Socket::~Socket() {
    if (descriptor_ >= 0) {
        ::close(descriptor_);
    }
}

void Socket::sendAtOnce() const {
    const int on = 1;
    ::setsockopt(descriptor_, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
}

void Socket::send(std::span<const std::uint8_t> bytes) const {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent < 0 && errno == EINTR) {
            continue;
        }
        if (sent <= 0) {
            throw ConnectionLost("send");
        }
        bytes = bytes.subspan(static_cast<std::size_t>(sent));
    }
}

std::size_t Socket::sendSome(std::span<const std::uint8_t> bytes) const {
    for (;;) {
        const ssize_t sent = ::send(descriptor_, bytes.data(), bytes.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent >= 0) {
            return static_cast<std::size_t>(sent);
        }
        if (errno == EAGAIN || errno == EWOULDBLOCK) {
            return 0;
        }
        if (errno != EINTR) {
            throw ConnectionLost("send");
        }
    }
}

std::size_t Socket::receive(std::span<std::uint8_t> room, const Deadline& deadline) const {
    for (;;) {
        if (deadline && !waitReadable(descriptor_, *deadline)) {
            throw ConnectionLost("time-out");
        }
        const ssize_t received = ::recv(descriptor_, room.data(), room.size(), 0);
        if (received >= 0) {
            return static_cast<std::size_t>(received);
        }
        if (errno != EINTR) {
            throw ConnectionLost("receive");
        }
    }
}

void Socket::shutDown() const {
    ::shutdown(descriptor_, SHUT_RDWR);
}

void Socket::closeGently() const {
    ::shutdown(descriptor_, SHUT_WR);
    const auto deadline = Clock::now() + std::chrono::seconds(1);
    std::array<std::uint8_t, 16384> dropped;
    try {
        // An upper bound, so that a client that never stops sending does not keep the thread.
        for (int i = 0; i < 1000 && receive(dropped, deadline) > 0; ++i) {
        }
    } catch (const ConnectionLost&) {
        // Nothing is left to save.
    }
}

Socket listenOnLoopback(std::uint16_t port) {
    Socket listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    const auto check = [](bool good, const char* what) {
        if (!good) {
            throw std::system_error(errno, std::generic_category(), what);
        }
    };
    check(listener.descriptor() >= 0, "socket");
    const int on = 1;
    ::setsockopt(listener.descriptor(), SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    check(::bind(listener.descriptor(), reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0,
          "bind");
    check(::listen(listener.descriptor(), SOMAXCONN) == 0, "listen");
    return listener;
}

std::uint16_t boundPort(const Socket& socket) {
    sockaddr_in address{};
    socklen_t length = sizeof address;
    if (::getsockname(socket.descriptor(), reinterpret_cast<sockaddr*>(&address), &length) != 0) {
        throw std::system_error(errno, std::generic_category(), "getsockname");
    }
    return ntohs(address.sin_port);
}

}  // namespace magdb::tds
