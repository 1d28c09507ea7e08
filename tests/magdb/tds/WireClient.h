#pragma once

#include "magdb/tds/ClientBytes.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace client {

/// What a server answered to one message, tokens sorted by kind. NULLs read as "NULL".
struct Answer {
    struct Message {
        std::uint32_t number = 0;
        int severity = 0;
        std::string text;
    };
    struct Done {
        int kind = 0;
        int status = 0;
        std::uint64_t count = 0;
    };
    std::vector<Message> errors;
    std::vector<Message> infos;
    std::vector<std::vector<std::string>> rows;
    std::optional<std::int32_t> status;
    std::vector<std::string> outputs;
    std::vector<int> environment;  ///< kinds of changes
    std::vector<Done> dones;
    bool loggedIn = false;

    [[nodiscard]] std::uint32_t errorNumber() const { return errors.empty() ? 0 : errors.front().number; }
    [[nodiscard]] bool acknowledgesAttention() const {
        return !dones.empty() && (dones.back().status & 0x20) != 0;
    }
};

/// A client that speaks 7.4 over a real socket, one message at a time, and can misbehave. Calls throw
/// std::runtime_error when the server closes or ten seconds pass.
class WireClient {
public:
    explicit WireClient(std::uint16_t port);
    ~WireClient();
    WireClient(const WireClient&) = delete;
    WireClient& operator=(const WireClient&) = delete;

    void send(const Bytes& bytes);
    [[nodiscard]] Answer receive();
    /// The content of the next message as bytes.
    [[nodiscard]] Bytes receiveContent();
    /// Waits for the first byte of an answer and leaves it unread.
    void awaitAnswer();
    /// True when the server closes within ten seconds; what it sends before is dropped.
    [[nodiscard]] bool serverCloses();
    /// Ends the connection the way a killed process does, unread answers included.
    void drop();

    Answer logIn(const LoginFields& fields = {});
    Answer run(std::u16string_view text);
    Answer ask(std::uint8_t type, const Bytes& content);

private:
    void readExactly(std::uint8_t* to, std::size_t count);
    int socket_;
};

}  // namespace client
