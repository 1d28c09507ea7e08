#pragma once

#include "engine/Session.h"
#include "tds/AttentionWatcher.h"
#include "tds/Connection.h"
#include "tds/Socket.h"
#include "tds/Trace.h"

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <list>
#include <string>
#include <thread>

namespace magdb::tds {

struct ServerOptions {
    std::uint16_t port = 0;  ///< 0 takes a free one
    std::string traceFile;   ///< empty: no trace
    std::size_t mostConnections = 500;
    std::chrono::seconds loginTime{15};  ///< from connecting to the end of the login
};

/// Listens on 127.0.0.1 and serves each client on a thread of its own.
class Server {
public:
    /// Listens at once. Throws std::system_error when the port or the trace cannot be had.
    Server(Engine& engine, const ServerOptions& options);
    /// Must not run any more.
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    [[nodiscard]] std::uint16_t port() const { return boundPort(listener_); }

    /// Takes clients until stop(); then ends the connections, running batches included, and waits for them.
    void run();

    /// Safe from any thread and from a signal handler.
    void stop() noexcept;

private:
    struct Client {
        explicit Client(Socket taken) : socket(std::move(taken)) {}
        Socket socket;
        std::atomic<bool> finished{false};
        std::thread thread;
    };

    void takeClient();
    void removeFinished();
    void endClients();

    Trace trace_;
    AttentionWatcher watcher_;
    ServerParts parts_;
    Socket listener_;
    int stopEvent_;
    std::list<Client> clients_;
};

}  // namespace magdb::tds
