#pragma once

#include "engine/Session.h"
#include "tds/AnswerStream.h"
#include "tds/AttentionWatcher.h"
#include "tds/Login.h"
#include "tds/Outbox.h"
#include "tds/PacketReader.h"
#include "tds/PacketWriter.h"
#include "tds/Requests.h"
#include "tds/Socket.h"
#include "tds/Trace.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <optional>
#include <span>

namespace magdb::tds {

/// What the connections of a server share.
struct ServerParts {
    Engine& engine;
    const Trace& trace;
    AttentionWatcher& watcher;
    std::size_t mostConnections;
    std::chrono::seconds loginTime;
};

/// One client: login, then its requests one after another. Used by one thread.
class Connection {
public:
    /// full: the server has as many clients as it takes; this one is told so when it logs in.
    Connection(const Socket& socket, ServerParts& parts, bool full);

    /// Serves the client until it goes, the socket is shut down or its bytes make no sense. Does not throw.
    void serve();

private:
    [[nodiscard]] Message receive(const Socket::Deadline& deadline);

    [[nodiscard]] bool logIn();
    [[nodiscard]] bool answerLogin(const Message& message);
    void acceptLogin(const Login& login);
    void refuse(const ServerMessage& error);

    void answer(const Message& message);
    void run(const Message& message, AnswerStream& stream);
    void runBatch(const Message& message, AnswerStream& stream);
    void runCalls(const Message& message, AnswerStream& stream);
    void runTransaction(const Message& message, AnswerStream& stream);
    void acknowledgeAttention();
    void resetSession(AnswerStream& stream);

    void sendPiece(std::span<const std::uint8_t> piece, bool last);

    const Socket& socket_;
    ServerParts& parts_;
    const bool full_;
    PacketReader reader_;
    Outbox outbox_;
    PacketWriter writer_;
    Version version_ = Version::Tds74;
    std::unique_ptr<Session> session_;
    /// The number that transaction requests and their answers go by; the engine knows none.
    std::uint64_t transaction_ = 0;
    std::uint64_t lastTransaction_ = 0;
    std::optional<AttentionWatcher::Slot> slot_;
};

}  // namespace magdb::tds
