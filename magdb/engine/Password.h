#pragma once

#include "engine/Value.h"

#include <string_view>

namespace magdb {

/// A password as it is kept: PBKDF2 with HMAC-SHA-256.
struct PasswordHash {
    Bytes salt;
    Bytes hash;
    int rounds = 0;
};

[[nodiscard]] Bytes sha256(const Bytes& data);
/// PBKDF2-HMAC-SHA-256 of 32 bytes.
[[nodiscard]] Bytes deriveKey(std::string_view password, const Bytes& salt, int rounds);

/// With a new random salt.
[[nodiscard]] PasswordHash hashPassword(std::string_view password);
/// Takes the same time whether and where the hashes differ. A hash without rounds never matches.
[[nodiscard]] bool verifyPassword(std::string_view password, const PasswordHash& stored);

}  // namespace magdb
