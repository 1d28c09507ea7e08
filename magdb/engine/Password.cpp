#include "engine/Password.h"

#include <algorithm>
#include <array>
#include <bit>
#include <random>

namespace magdb {

namespace {

constexpr int kRounds = 2000;
constexpr std::size_t kBlock = 64;

constexpr std::array<std::uint32_t, 64> kConstants = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

using State = std::array<std::uint32_t, 8>;

void compress(State& state, const std::uint8_t* block) {
    std::array<std::uint32_t, 64> w{};
    for (std::size_t i = 0; i < 16; ++i) {
        w[i] = static_cast<std::uint32_t>(block[i * 4]) << 24 |
               static_cast<std::uint32_t>(block[i * 4 + 1]) << 16 |
               static_cast<std::uint32_t>(block[i * 4 + 2]) << 8 | block[i * 4 + 3];
    }
    for (std::size_t i = 16; i < 64; ++i) {
        const std::uint32_t s0 = std::rotr(w[i - 15], 7) ^ std::rotr(w[i - 15], 18) ^ (w[i - 15] >> 3);
        const std::uint32_t s1 = std::rotr(w[i - 2], 17) ^ std::rotr(w[i - 2], 19) ^ (w[i - 2] >> 10);
        w[i] = w[i - 16] + s0 + w[i - 7] + s1;
    }
    State s = state;
    for (std::size_t i = 0; i < 64; ++i) {
        const std::uint32_t e1 = std::rotr(s[4], 6) ^ std::rotr(s[4], 11) ^ std::rotr(s[4], 25);
        const std::uint32_t choice = (s[4] & s[5]) ^ (~s[4] & s[6]);
        const std::uint32_t t1 = s[7] + e1 + choice + kConstants[i] + w[i];
        const std::uint32_t e0 = std::rotr(s[0], 2) ^ std::rotr(s[0], 13) ^ std::rotr(s[0], 22);
        const std::uint32_t majority = (s[0] & s[1]) ^ (s[0] & s[2]) ^ (s[1] & s[2]);
        s = {t1 + e0 + majority, s[0], s[1], s[2], s[3] + t1, s[4], s[5], s[6]};
    }
    for (std::size_t i = 0; i < state.size(); ++i) {
        state[i] += s[i];
    }
}

constexpr State kStart = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                          0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};

using Digest = std::array<std::uint8_t, 32>;

/// Hashes the last bytes of a text of `total` bytes whose whole blocks before them are in `state`.
Digest finish(State state, const std::uint8_t* rest, std::size_t size, std::size_t total) {
    for (; size >= kBlock; rest += kBlock, size -= kBlock) {
        compress(state, rest);
    }
    std::array<std::uint8_t, 2 * kBlock> tail{};
    std::copy(rest, rest + size, tail.begin());
    tail[size] = 0x80;
    const std::size_t end = size + 9 <= kBlock ? kBlock : 2 * kBlock;
    const std::uint64_t bits = std::uint64_t{total} * 8;
    for (std::size_t i = 0; i < 8; ++i) {
        tail[end - 1 - i] = static_cast<std::uint8_t>(bits >> (8 * i));
    }
    for (std::size_t at = 0; at < end; at += kBlock) {
        compress(state, tail.data() + at);
    }
    Digest digest{};
    for (std::size_t i = 0; i < digest.size(); ++i) {
        digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - i % 4 * 8));
    }
    return digest;
}

/// HMAC with the two blocks of its key hashed once: a login signs some thousand times with the same key.
class HmacKey {
public:
    explicit HmacKey(const Bytes& key) {
        Bytes padded = key.size() > kBlock ? sha256(key) : key;
        padded.resize(kBlock);
        for (std::uint8_t& byte : padded) {
            byte ^= 0x36;
        }
        compress(m_inner, padded.data());
        for (std::uint8_t& byte : padded) {
            byte ^= 0x36 ^ 0x5C;
        }
        compress(m_outer, padded.data());
    }

    Digest sign(const std::uint8_t* data, std::size_t size) const {
        const Digest inner = finish(m_inner, data, size, kBlock + size);
        return finish(m_outer, inner.data(), inner.size(), kBlock + inner.size());
    }

private:
    State m_inner = kStart;
    State m_outer = kStart;
};

}  // namespace

Bytes sha256(const Bytes& data) {
    const Digest digest = finish(kStart, data.data(), data.size(), data.size());
    return Bytes(digest.begin(), digest.end());
}

Bytes deriveKey(std::string_view password, const Bytes& salt, int rounds) {
    const HmacKey key(Bytes(password.begin(), password.end()));
    Bytes block(salt);
    block.insert(block.end(), {0, 0, 0, 1});
    Digest u = key.sign(block.data(), block.size());
    Digest result = u;
    for (int i = 1; i < rounds; ++i) {
        u = key.sign(u.data(), u.size());
        for (std::size_t k = 0; k < result.size(); ++k) {
            result[k] ^= u[k];
        }
    }
    return Bytes(result.begin(), result.end());
}

PasswordHash hashPassword(std::string_view password) {
    PasswordHash result;
    std::random_device source;
    for (int i = 0; i < 16; ++i) {
        result.salt.push_back(static_cast<std::uint8_t>(source() & 0xFF));
    }
    result.rounds = kRounds;
    result.hash = deriveKey(password, result.salt, result.rounds);
    return result;
}

bool verifyPassword(std::string_view password, const PasswordHash& stored) {
    const Bytes derived = deriveKey(password, stored.salt, stored.rounds > 0 ? stored.rounds : kRounds);
    if (stored.rounds <= 0 || derived.size() != stored.hash.size()) {
        return false;
    }
    int difference = 0;
    for (std::size_t i = 0; i < derived.size(); ++i) {
        difference |= derived[i] ^ stored.hash[i];
    }
    return difference == 0;
}

}  // namespace magdb
