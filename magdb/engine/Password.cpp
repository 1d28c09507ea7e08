#include "engine/Password.h"

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

Bytes hmac(const Bytes& key, const Bytes& data) {
    Bytes padded = key.size() > kBlock ? sha256(key) : key;
    padded.resize(kBlock);
    Bytes inner(padded);
    Bytes outer(padded);
    for (std::size_t i = 0; i < kBlock; ++i) {
        inner[i] ^= 0x36;
        outer[i] ^= 0x5C;
    }
    inner.insert(inner.end(), data.begin(), data.end());
    const Bytes digest = sha256(inner);
    outer.insert(outer.end(), digest.begin(), digest.end());
    return sha256(outer);
}

}  // namespace

Bytes sha256(const Bytes& data) {
    State state = {0x6a09e667, 0xbb67ae85, 0x3c6ef372, 0xa54ff53a,
                   0x510e527f, 0x9b05688c, 0x1f83d9ab, 0x5be0cd19};
    Bytes padded(data);
    padded.push_back(0x80);
    while (padded.size() % kBlock != kBlock - 8) {
        padded.push_back(0);
    }
    const std::uint64_t bits = std::uint64_t{data.size()} * 8;
    for (int shift = 56; shift >= 0; shift -= 8) {
        padded.push_back(static_cast<std::uint8_t>(bits >> shift));
    }
    for (std::size_t i = 0; i < padded.size(); i += kBlock) {
        compress(state, padded.data() + i);
    }
    Bytes digest;
    for (const std::uint32_t word : state) {
        for (int shift = 24; shift >= 0; shift -= 8) {
            digest.push_back(static_cast<std::uint8_t>(word >> shift));
        }
    }
    return digest;
}

Bytes deriveKey(std::string_view password, const Bytes& salt, int rounds) {
    const Bytes key(password.begin(), password.end());
    Bytes block(salt);
    block.insert(block.end(), {0, 0, 0, 1});
    Bytes u = hmac(key, block);
    Bytes result = u;
    for (int i = 1; i < rounds; ++i) {
        u = hmac(key, u);
        for (std::size_t k = 0; k < result.size(); ++k) {
            result[k] ^= u[k];
        }
    }
    return result;
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
