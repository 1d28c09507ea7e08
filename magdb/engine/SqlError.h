#pragma once

#include "engine/Session.h"

#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>

namespace magdb {

/// A T-SQL error on its way to TRY..CATCH or to the client.
class SqlError : public std::exception {
public:
    explicit SqlError(ServerMessage message) : m_message(std::move(message)) {}

    [[nodiscard]] const ServerMessage& message() const { return m_message; }
    [[nodiscard]] ServerMessage& message() { return m_message; }
    [[nodiscard]] int number() const { return m_message.number; }
    [[nodiscard]] const char* what() const noexcept override { return m_message.text.c_str(); }

    /// True once line and procedure tell where the error arose.
    bool placed = false;
    /// True for an error of binding: the batch ends, as it would if it did not compile.
    bool binding = false;

private:
    ServerMessage m_message;
};

/// The session was asked to stop; unwinds everything and is never caught by T-SQL.
class Cancelled : public std::exception {
public:
    [[nodiscard]] const char* what() const noexcept override { return "cancelled"; }
};

/// Throws the server's error of that number; arguments replace %1, %2... of its text. An unknown number is a
/// programming error.
[[noreturn]] void raise(int number, std::initializer_list<std::string_view> arguments = {});

/// The message that raise() throws.
[[nodiscard]] ServerMessage serverMessage(int number, std::initializer_list<std::string_view> arguments = {});

/// Refuses a construct that the engine does not know, by its name (error 40517, as the parser does).
[[noreturn]] void refuse(std::string_view construct);

}  // namespace magdb
