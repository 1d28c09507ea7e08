#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>

namespace magdb::tds {

/// Kind of a message, first byte of each of its packets (MS-TDS 2.2.3.1.1 Type).
enum class PacketType : std::uint8_t {
    SqlBatch = 0x01,
    OldLogin = 0x02,  ///< login of TDS 4.2 and 5.0
    Rpc = 0x03,
    Answer = 0x04,  ///< server to client
    Attention = 0x06,
    BulkLoad = 0x07,
    FedAuthToken = 0x08,
    TransactionManager = 0x0E,
    Login7 = 0x10,
    Sspi = 0x11,
    PreLogin = 0x12,
};

/// Versions of the protocol by what they change on the wire; the order is that of time.
enum class Version : std::uint8_t { Tds71, Tds72, Tds73, Tds74 };

/// Status bits of a packet (MS-TDS 2.2.3.1.2 Status).
inline constexpr std::uint8_t statusEndOfMessage = 0x01;
inline constexpr std::uint8_t statusIgnore = 0x02;
inline constexpr std::uint8_t statusResetConnection = 0x08;
inline constexpr std::uint8_t statusResetKeepTransaction = 0x10;

inline constexpr std::size_t packetHeaderSize = 8;
inline constexpr std::size_t defaultPacketSize = 4096;
inline constexpr std::size_t minPacketSize = 512;
inline constexpr std::size_t maxPacketSize = 32767;

/// Bytes of one message, before and after login. A login record of the protocol cannot reach the first limit.
inline constexpr std::size_t loginMessageLimit = 128 * 1024;
inline constexpr std::size_t messageLimit = 64 * 1024 * 1024;

/// Polish_CI_AS: LCID 0x0415, ignores case, kana and width, no sort id (MS-TDS 2.2.5.1.2 Collation).
inline constexpr std::uint8_t polishCollation[5] = {0x15, 0x04, 0xD0, 0x00, 0x00};

/// The bytes of the client break the framing: nothing after them can be trusted, so the connection closes.
class FramingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A whole message came, but its content cannot be read or served. The client gets an error with this number,
/// and the connection stays.
class RequestError : public std::runtime_error {
public:
    RequestError(int number, const char* text) : std::runtime_error(text), number_(number) {}
    RequestError(int number, const std::string& text) : std::runtime_error(text), number_(number) {}
    [[nodiscard]] int number() const { return number_; }

private:
    int number_;
};

/// SQL Server's number for a message that ends before its content does.
inline constexpr int streamEndedNumber = 4002;
/// SQL Server's number for a broken procedure call.
inline constexpr int brokenCallNumber = 8009;
/// SQL Server's number for a request that this server does not serve.
inline constexpr int unsupportedNumber = 40517;

}  // namespace magdb::tds
