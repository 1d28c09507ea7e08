#pragma once

#include "engine/Session.h"
#include "tds/ByteWriter.h"
#include "tds/Protocol.h"

#include <cstdint>
#include <span>
#include <string>

namespace magdb::tds {

/// What this server needs of a pre-login message (MS-TDS 2.2.6.5 PRELOGIN).
struct PreLogin {
    bool hasEncryption = false;
    std::uint8_t encryption = 2;
    bool hasThreadId = false;
};

/// Throws RequestError when the message is not a pre-login.
[[nodiscard]] PreLogin readPreLogin(std::span<const std::uint8_t> content);

/// The answer to a pre-login: this server's version, no encryption, no multiple result sets. A client that
/// insists on encryption reads that and closes.
void writePreLoginAnswer(ByteWriter& out);

/// A login record (MS-TDS 2.2.6.4 LOGIN7).
struct Login {
    LoginRequest request;
    Version version = Version::Tds74;
    std::size_t packetSize = defaultPacketSize;  ///< already clamped to what is allowed
    bool integratedSecurity = false;
    bool changesPassword = false;
};

/// Throws RequestError when the record cannot be read or its protocol is older than 7.1.
[[nodiscard]] Login readLogin(std::span<const std::uint8_t> content);

}  // namespace magdb::tds
