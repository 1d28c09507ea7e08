#include "magdb/tds/WireClient.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace client {

namespace {

/// Takes an answer apart; the types are those that these tests select.
class Parser {
public:
    explicit Parser(const Bytes& bytes) : bytes_(bytes) {}

    Answer parse() {
        while (at_ < bytes_.size()) {
            token(static_cast<int>(number(1)));
        }
        return std::move(answer_);
    }

private:
    struct Type {
        std::uint64_t id = 0;
        std::uint64_t size = 0;
    };

    std::uint64_t number(int width) {
        std::uint64_t value = 0;
        for (int i = 0; i < width; ++i) {
            value |= std::uint64_t{bytes_.at(at_++)} << (8 * i);
        }
        return value;
    }
    std::string text(std::uint64_t units) {
        std::string out;
        for (std::uint64_t i = 0; i < units; ++i) {
            const std::uint64_t unit = number(2);
            out += unit < 0x80 ? static_cast<char>(unit) : '?';
        }
        return out;
    }
    void skip(std::uint64_t count) {
        at_ += count;
        if (at_ > bytes_.size()) {
            throw std::runtime_error("a token is longer than the answer");
        }
    }

    void message(std::vector<Answer::Message>& to) {
        const std::uint64_t length = number(2);
        const std::size_t end = at_ + length;
        Answer::Message message;
        message.number = static_cast<std::uint32_t>(number(4));
        number(1);
        message.severity = static_cast<int>(number(1));
        message.text = text(number(2));
        to.push_back(message);
        at_ = end;
    }
    Type type() {
        Type type{number(1)};
        switch (type.id) {
            case 0x26:
            case 0x68:
                type.size = number(1);
                break;
            case 0xA7:
            case 0xE7:
                type.size = number(2);
                skip(5);
                break;
            default:
                throw std::runtime_error("a type that these tests do not know");
        }
        return type;
    }
    std::string value(const Type& type) {
        if (type.id == 0x26 || type.id == 0x68) {
            const int width = static_cast<int>(number(1));
            if (width == 0) {
                return "NULL";
            }
            const std::uint64_t bits = number(width);
            const int unused = 64 - 8 * width;
            return std::to_string(width == 1 ? static_cast<std::int64_t>(bits)
                                             : static_cast<std::int64_t>(bits << unused) >> unused);
        }
        const std::uint64_t length = number(2);
        if (length == 0xFFFF) {
            return "NULL";
        }
        if (type.id == 0xE7) {
            return text(length / 2);
        }
        std::string out;
        for (std::uint64_t i = 0; i < length; ++i) {
            out += static_cast<char>(number(1));
        }
        return out;
    }

    void columns() {
        types_.clear();
        const std::uint64_t count = number(2);
        for (std::uint64_t i = 0; i < count; ++i) {
            skip(6);
            types_.push_back(type());
            skip(2 * number(1));
        }
    }
    void token(int kind) {
        switch (kind) {
            case 0xAA:
                return message(answer_.errors);
            case 0xAB:
                return message(answer_.infos);
            case 0xAD:
                answer_.loggedIn = true;
                return skip(number(2));
            case 0xE3: {
                const std::uint64_t length = number(2);
                answer_.environment.push_back(bytes_.at(at_));
                return skip(length);
            }
            case 0x81:
                return columns();
            case 0xD1:
                answer_.rows.emplace_back();
                for (const Type& column : types_) {
                    answer_.rows.back().push_back(value(column));
                }
                return;
            case 0x79:
                answer_.status = static_cast<std::int32_t>(number(4));
                return;
            case 0xAC: {
                number(2);
                skip(2 * number(1));
                skip(7);
                const Type output = type();
                answer_.outputs.push_back(value(output));
                return;
            }
            case 0xFD:
            case 0xFE:
            case 0xFF: {
                const int status = static_cast<int>(number(2));
                number(2);
                answer_.dones.push_back({kind, status, number(8)});
                return;
            }
            default:
                throw std::runtime_error("an unknown token");
        }
    }

    const Bytes& bytes_;
    std::size_t at_ = 0;
    std::vector<Type> types_;
    Answer answer_;
};

}  // namespace

WireClient::WireClient(std::uint16_t port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        ::close(socket_);
        throw std::runtime_error("cannot connect");
    }
    const timeval limit{10, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
}

WireClient::~WireClient() {
    if (socket_ >= 0) {
        ::close(socket_);
    }
}

void WireClient::send(const Bytes& bytes) {
    for (std::size_t at = 0; at < bytes.size();) {
        const ssize_t sent = ::send(socket_, bytes.data() + at, bytes.size() - at, MSG_NOSIGNAL);
        if (sent <= 0) {
            throw std::runtime_error("the server does not take the bytes");
        }
        at += static_cast<std::size_t>(sent);
    }
}

void WireClient::readExactly(std::uint8_t* to, std::size_t count) {
    while (count > 0) {
        const ssize_t received = ::recv(socket_, to, count, 0);
        if (received <= 0) {
            throw std::runtime_error(received == 0 ? "the server closed" : "no answer");
        }
        to += received;
        count -= static_cast<std::size_t>(received);
    }
}

Bytes WireClient::receiveContent() {
    Bytes content;
    for (;;) {
        std::array<std::uint8_t, 8> header;
        readExactly(header.data(), header.size());
        const std::size_t length = static_cast<std::size_t>(header[2] << 8 | header[3]) - header.size();
        const std::size_t before = content.size();
        content.resize(before + length);
        readExactly(content.data() + before, length);
        if ((header[1] & 1) != 0) {
            return content;
        }
    }
}

Answer WireClient::receive() {
    return Parser(receiveContent()).parse();
}

void WireClient::awaitAnswer() {
    std::uint8_t first = 0;
    if (::recv(socket_, &first, 1, MSG_PEEK) != 1) {
        throw std::runtime_error("no answer");
    }
}

bool WireClient::serverCloses() {
    std::array<std::uint8_t, 4096> dropped;
    for (;;) {
        const ssize_t received = ::recv(socket_, dropped.data(), dropped.size(), 0);
        if (received == 0 || (received < 0 && errno == ECONNRESET)) {
            return true;
        }
        if (received < 0) {
            return false;
        }
    }
}

void WireClient::drop() {
    const linger reset{1, 0};
    ::setsockopt(socket_, SOL_SOCKET, SO_LINGER, &reset, sizeof reset);
    ::close(socket_);
    socket_ = -1;
}

Answer WireClient::ask(std::uint8_t type, const Bytes& content) {
    send(message(type, content));
    return receive();
}

Answer WireClient::logIn(const LoginFields& fields) {
    send(message(typePreLogin, preLogin()));
    static_cast<void>(receiveContent());
    return ask(typeLogin, loginRecord(fields));
}

Answer WireClient::run(std::u16string_view text) {
    return ask(typeBatch, batch(text));
}

}  // namespace client
