#include "tds/Server.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <system_error>

namespace magdb::tds {

namespace {

/// Clients beyond the limit still get a thread, to be told the reason; beyond these too they are cut off.
constexpr std::size_t refusalThreads = 64;
constexpr int sweepMilliseconds = 1000;
constexpr int pauseMilliseconds = 20;

}  // namespace

Server::Server(Engine& engine, const ServerOptions& options)
    : trace_(options.traceFile),
      parts_{engine, trace_, watcher_, options.mostConnections, options.loginTime},
      listener_(listenOnLoopback(options.port)),
      stopEvent_(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
    if (stopEvent_ < 0) {
        throw std::system_error(errno, std::generic_category(), "eventfd");
    }
}

Server::~Server() {
    endClients();
    ::close(stopEvent_);
}

void Server::stop() noexcept {
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(stopEvent_, &one, sizeof one);
}

void Server::run() {
    pollfd entries[] = {{stopEvent_, POLLIN, 0}, {listener_.descriptor(), POLLIN, 0}};
    for (;;) {
        ::poll(entries, std::size(entries), sweepMilliseconds);
        if ((entries[0].revents & POLLIN) != 0) {
            break;
        }
        removeFinished();
        if ((entries[1].revents & POLLIN) != 0) {
            takeClient();
        }
    }
    endClients();
}

void Server::takeClient() {
    const int descriptor = ::accept4(listener_.descriptor(), nullptr, nullptr, SOCK_CLOEXEC);
    if (descriptor < 0) {
        // Out of descriptors: the client stays in the queue until another one leaves.
        if (errno == EMFILE || errno == ENFILE || errno == ENOBUFS || errno == ENOMEM) {
            pollfd stopOnly{stopEvent_, POLLIN, 0};
            ::poll(&stopOnly, 1, pauseMilliseconds);
        }
        return;
    }
    Socket socket(descriptor);
    if (clients_.size() >= parts_.mostConnections + refusalThreads) {
        return;
    }
    socket.sendAtOnce();
    const bool full = clients_.size() >= parts_.mostConnections;
    Client& client = clients_.emplace_back(std::move(socket));
    try {
        client.thread = std::thread([this, &client, full] {
            Connection(client.socket, parts_, full).serve();
            client.socket.shutDown();
            client.finished = true;
        });
    } catch (const std::system_error& error) {
        std::fprintf(stderr, "magdb: no thread for a client: %s\n", error.what());
        clients_.pop_back();
    }
}

void Server::removeFinished() {
    for (auto it = clients_.begin(); it != clients_.end();) {
        if (it->finished) {
            it->thread.join();
            it = clients_.erase(it);
        } else {
            ++it;
        }
    }
}

void Server::endClients() {
    // The watcher sees the end of a busy client's connection and cancels its batch.
    for (const Client& client : clients_) {
        client.socket.shutDown();
    }
    for (Client& client : clients_) {
        client.thread.join();
    }
    clients_.clear();
}

}  // namespace magdb::tds
