#include "tds/Connection.h"

#include <array>
#include <string>
#include <utility>

namespace magdb::tds {

namespace {

constexpr int databaseContextNumber = 5701;
constexpr int tooManyConnectionsNumber = 17809;
constexpr int untrustedLoginNumber = 18452;
constexpr int internalErrorNumber = 3624;
/// Severity at which the server meant here closes the connection.
constexpr int fatalSeverity = 20;

ServerMessage errorMessage(int number, const std::string& text, int severity = 16) {
    ServerMessage message;
    message.number = number;
    message.severity = severity;
    message.text = text;
    return message;
}

ServerMessage databaseContext(const std::string& database) {
    return errorMessage(databaseContextNumber, "Changed database context to '" + database + "'.", 0);
}

}  // namespace

Connection::Connection(const Socket& socket, ServerParts& parts, bool full)
    : socket_(socket), parts_(parts), full_(full), outbox_(socket), writer_([this](auto piece, bool last) {
          sendPiece(piece, last);
      }) {}

void Connection::sendPiece(std::span<const std::uint8_t> piece, bool last) {
    // All writers wait while this session has their turn, so a client that does not read must not make it
    // wait. At the end of a message the turn is gone, but for a transaction that the client itself has left
    // open.
    if (!last && session_ && session_->isWriting()) {
        outbox_.offer(piece);
    } else {
        outbox_.send(piece);
    }
}

void Connection::serve() {
    try {
        if (!logIn()) {
            return;
        }
        for (;;) {
            answer(receive(std::nullopt));
        }
    } catch (const ConnectionLost&) {
        // Nobody is there to be told.
    } catch (const FramingError& error) {
        try {
            writer_.content().clear();
            refuse(errorMessage(streamEndedNumber, error.what(), fatalSeverity));
        } catch (const ConnectionLost&) {
            // As above.
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "magdb: a connection ends: %s\n", error.what());
    }
}

Message Connection::receive(const Socket::Deadline& deadline) {
    for (;;) {
        if (auto message = reader_.next()) {
            return std::move(*message);
        }
        std::array<std::uint8_t, 16384> room;
        const std::size_t count = socket_.receive(room, deadline);
        if (count == 0) {
            throw ConnectionLost("closed");
        }
        reader_.feed(std::span(room).first(count));
    }
}

bool Connection::logIn() {
    const auto deadline = std::chrono::steady_clock::now() + parts_.loginTime;
    try {
        for (;;) {
            const Message message = receive(deadline);
            if (message.type == PacketType::PreLogin) {
                static_cast<void>(readPreLogin(message.content));
                writePreLoginAnswer(writer_.content());
                writer_.finish();
            } else if (message.type == PacketType::Login7) {
                return answerLogin(message);
            } else {
                refuse(errorMessage(unsupportedNumber, "This server takes logins of TDS 7.1 to 7.4 only."));
                return false;
            }
        }
    } catch (const RequestError& error) {
        refuse(errorMessage(error.number(), error.what()));
        return false;
    }
}

bool Connection::answerLogin(const Message& message) {
    const Login login = readLogin(message.content);
    version_ = login.version;
    if (full_) {
        refuse(errorMessage(tooManyConnectionsNumber,
                            "Could not connect because the maximum number of '" +
                                std::to_string(parts_.mostConnections) +
                                "' user connections has already been reached.",
                            fatalSeverity));
        return false;
    }
    if (login.integratedSecurity) {
        refuse(errorMessage(untrustedLoginNumber,
                            "Login failed. The login is from an untrusted domain and cannot be used with "
                            "Windows authentication.",
                            14));
        return false;
    }
    if (login.changesPassword) {
        refuse(errorMessage(unsupportedNumber, "Changing the password at login is not supported."));
        return false;
    }
    ServerMessage error;
    session_ = parts_.engine.connect(login.request, error);
    if (!session_) {
        refuse(error);
        return false;
    }
    acceptLogin(login);
    return true;
}

void Connection::acceptLogin(const Login& login) {
    slot_.emplace(parts_.watcher, socket_.descriptor(), *session_);
    reader_.setLimit(messageLimit);
    writer_.setSpid(static_cast<std::uint16_t>(session_->spid()));
    TokenWriter tokens(writer_.content(), version_);
    tokens.databaseChange(session_->database(), "master");
    tokens.message(databaseContext(session_->database()));
    tokens.collationChange();
    tokens.loginAck();
    tokens.packetSizeChange(login.packetSize, defaultPacketSize);
    tokens.done({});
    writer_.finish();
    writer_.setPacketSize(login.packetSize);
}

void Connection::refuse(const ServerMessage& error) {
    TokenWriter tokens(writer_.content(), version_);
    tokens.message(error);
    tokens.done({.status = doneError});
    writer_.finish();
    socket_.closeGently();
}

void Connection::answer(const Message& message) {
    if (message.type == PacketType::Attention) {
        acknowledgeAttention();
        return;
    }
    const bool isCall = message.type == PacketType::Rpc;
    AnswerStream stream(writer_, version_, isCall ? AnswerStream::Kind::Call : AnswerStream::Kind::Batch);
    try {
        if (message.resetConnection) {
            resetSession(stream);
        }
        // A request given up half way gets one done token with the error bit; one cancelled before it was
        // begun an empty answer, and the acknowledgement follows by itself.
        if (message.ignored) {
            stream.tokens().done({.status = doneError});
            writer_.finish();
            return;
        }
        if (!reader_.attentionWaits()) {
            run(message, stream);
        }
    } catch (const RequestError& error) {
        stream.message(errorMessage(error.number(), error.what()));
    } catch (const ConnectionLost&) {
        throw;
    } catch (const FramingError&) {
        throw;
    } catch (const std::exception& error) {
        stream.message(errorMessage(internalErrorNumber, std::string("Internal error: ") + error.what()));
    }
    stream.endBatch();
    writer_.finish();
}

void Connection::run(const Message& message, AnswerStream& stream) {
    const AttentionWatcher::Running running(*slot_);
    switch (message.type) {
        case PacketType::SqlBatch:
            runBatch(message, stream);
            break;
        case PacketType::Rpc:
            runCalls(message, stream);
            break;
        case PacketType::TransactionManager:
            runTransaction(message, stream);
            break;
        case PacketType::BulkLoad:
            throw RequestError(unsupportedNumber, "Bulk load is not supported.");
        default:
            throw FramingError("A login message came after the login.");
    }
}

void Connection::runBatch(const Message& message, AnswerStream& stream) {
    const std::string text = readBatch(message.content, version_);
    parts_.trace.batch(session_->spid(), text);
    session_->executeBatch(text, stream);
}

void Connection::runCalls(const Message& message, AnswerStream& stream) {
    std::vector<RpcCall> calls = readCalls(message.content, version_);
    for (const RpcCall& call : calls) {
        parts_.trace.call(session_->spid(), call.name, call.parameters);
    }
    for (std::size_t i = 0; i < calls.size(); ++i) {
        const CallOutcome outcome = session_->executeProcedure(calls[i].name, calls[i].parameters, stream);
        stream.endCall(outcome, calls[i].parameters, i + 1 == calls.size());
    }
}

void Connection::runTransaction(const Message& message, AnswerStream& stream) {
    const TransactionRequest request = readTransaction(message.content, version_);
    const TransactionStatements statements = transactionStatements(request);
    const auto run = [&](const std::string& statement) {
        parts_.trace.transaction(session_->spid(), statement);
        return session_->executeBatch(statement, stream);
    };
    const auto begun = [&] {
        transaction_ = ++lastTransaction_;
        stream.tokens().transactionChange(transaction_, false, false);
    };
    if (!run(statements.action)) {
        return;
    }
    if (request.action == TransactionAction::Begin) {
        begun();
    } else if (request.action != TransactionAction::Save) {
        stream.tokens().transactionChange(transaction_, true, request.action == TransactionAction::Commit);
        transaction_ = 0;
    }
    if (request.beginsAnother && run(statements.next)) {
        begun();
    }
}

void Connection::acknowledgeAttention() {
    TokenWriter(writer_.content(), version_).done({.status = doneAttention});
    writer_.finish();
}

void Connection::resetSession(AnswerStream& stream) {
    const std::string before = session_->database();
    session_->reset();
    transaction_ = 0;
    stream.tokens().resetAck();
    if (session_->database() != before) {
        stream.databaseChanged(before, session_->database());
    }
}

}  // namespace magdb::tds
