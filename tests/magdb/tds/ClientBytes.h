#pragma once

#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>
#include <vector>

/// What a client puts on the wire, built here from the protocol's description and not with the server's code.
namespace client {

using Bytes = std::vector<std::uint8_t>;

/// Joins pieces; each may be bytes or the little-endian form of a number.
class Build {
public:
    Build& u8(unsigned value) { return number(value, 1); }
    Build& u16(unsigned value) { return number(value, 2); }
    Build& u32(std::uint64_t value) { return number(value, 4); }
    Build& u64(std::uint64_t value) { return number(value, 8); }
    Build& raw(std::span<const std::uint8_t> bytes) {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }
    Build& raw(std::initializer_list<std::uint8_t> bytes) {
        bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
        return *this;
    }
    /// Characters of the basic plane as UTF-16LE.
    Build& text(std::u16string_view value) {
        for (const char16_t unit : value) {
            u16(unit);
        }
        return *this;
    }
    [[nodiscard]] const Bytes& bytes() const { return bytes_; }

private:
    Build& number(std::uint64_t value, int width) {
        for (int i = 0; i < width; ++i) {
            bytes_.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
        }
        return *this;
    }
    Bytes bytes_;
};

inline constexpr std::uint32_t tds71 = 0x71000001;
inline constexpr std::uint32_t tds72 = 0x72090002;
inline constexpr std::uint32_t tds73 = 0x730B0003;
inline constexpr std::uint32_t tds74 = 0x74000004;

inline constexpr std::uint8_t typeBatch = 0x01;
inline constexpr std::uint8_t typeRpc = 0x03;
inline constexpr std::uint8_t typeAttention = 0x06;
inline constexpr std::uint8_t typeBulk = 0x07;
inline constexpr std::uint8_t typeTransaction = 0x0E;
inline constexpr std::uint8_t typeLogin = 0x10;
inline constexpr std::uint8_t typePreLogin = 0x12;

/// One packet. status 1 ends the message.
Bytes packet(std::uint8_t type, std::uint8_t status, std::span<const std::uint8_t> content);
/// A message in packets of at most this size.
Bytes message(std::uint8_t type, std::span<const std::uint8_t> content, std::size_t packetSize = 4096);

struct LoginFields {
    std::u16string host = u"stanowisko";
    std::u16string user = u"regalon";
    std::u16string password = u"Magazyn-2024";
    std::u16string application = u"test";
    std::u16string database;
    std::uint32_t version = tds74;
    std::uint32_t packetSize = 4096;
    std::uint8_t flags2 = 0;
    std::uint8_t flags3 = 0;
};
/// Content of a login record.
Bytes loginRecord(const LoginFields& fields);
/// Content of a pre-login message that asks for this kind of encryption.
Bytes preLogin(std::uint8_t encryption = 2);

/// The headers that requests begin with from 7.2 on.
Bytes headers();
/// Content of a batch for 7.2 and later.
Bytes batch(std::u16string_view text);
/// Content of a call by name for 7.2 and later; parameters are already encoded.
Bytes call(std::u16string_view name, std::initializer_list<Bytes> parameters);
/// A parameter in front of its type and value.
Bytes parameter(std::u16string_view name, std::uint8_t status,
                std::initializer_list<std::uint8_t> typeAndValue);

}  // namespace client
