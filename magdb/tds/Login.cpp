#include "tds/Login.h"

#include "tds/ByteReader.h"
#include "tds/Encoding.h"

#include <algorithm>
#include <vector>

namespace magdb::tds {

namespace {

enum PreLoginOption : std::uint8_t {
    optionVersion = 0,
    optionEncryption = 1,
    optionInstance = 2,
    optionThreadId = 3,
    optionMars = 4,
    optionEnd = 0xFF,
};

constexpr std::uint8_t encryptionNotSupported = 2;
constexpr std::uint8_t marsOff = 0;

/// Names in a login record have at most this many UTF-16 units (MS-TDS 2.2.6.4).
constexpr std::size_t longestName = 128;

constexpr std::uint8_t integratedSecurityBit = 0x80;
constexpr std::uint8_t changePasswordBit = 0x01;

/// The variable part of the record: offset and length pairs into the record itself.
class Fields {
public:
    Fields(std::span<const std::uint8_t> record, ByteReader& reader) : record_(record), reader_(reader) {}

    std::span<const std::uint8_t> bytes(const char* what) {
        const std::size_t offset = reader_.u16();
        const std::size_t units = reader_.u16();
        if (units == 0) {
            return {};
        }
        if (units > longestName || offset > record_.size() || 2 * units > record_.size() - offset) {
            throw RequestError(streamEndedNumber, std::string("The login record has a broken ") + what + ".");
        }
        return record_.subspan(offset, 2 * units);
    }
    std::string text(const char* what) { return fromUtf16(bytes(what)); }
    void skip() { reader_.take(4); }

private:
    std::span<const std::uint8_t> record_;
    ByteReader& reader_;
};

/// The password is only hidden from a casual look: nibbles swapped, then XOR with 0xA5.
std::string readPassword(std::span<const std::uint8_t> hidden) {
    std::vector<std::uint8_t> clear;
    clear.reserve(hidden.size());
    for (const std::uint8_t byte : hidden) {
        const auto plain = static_cast<std::uint8_t>(byte ^ 0xA5);
        clear.push_back(static_cast<std::uint8_t>(plain << 4 | plain >> 4));
    }
    return fromUtf16(clear);
}

/// Newer clients than 7.4 are answered in 7.4, which they then speak.
Version readVersion(std::uint32_t number) {
    switch (number >> 24) {
        case 0x71:
            return Version::Tds71;
        case 0x72:
            return Version::Tds72;
        case 0x73:
            return Version::Tds73;
        default:
            if (number >> 24 >= 0x74 && number >> 24 < 0x80) {
                return Version::Tds74;
            }
            throw RequestError(unsupportedNumber, "This server speaks TDS 7.1 to 7.4 only.");
    }
}

std::size_t readPacketSize(std::uint32_t wanted) {
    return wanted == 0 ? defaultPacketSize : std::clamp<std::size_t>(wanted, minPacketSize, maxPacketSize);
}

}  // namespace

PreLogin readPreLogin(std::span<const std::uint8_t> content) {
    PreLogin result;
    ByteReader reader(content);
    for (std::uint8_t option = reader.u8(); option != optionEnd; option = reader.u8()) {
        // The option table is the one big-endian part of the protocol beside packet headers.
        const auto at = static_cast<std::size_t>(reader.u8() << 8);
        const std::size_t offset = at | reader.u8();
        const auto high = static_cast<std::size_t>(reader.u8() << 8);
        const std::size_t length = high | reader.u8();
        if (offset > content.size() || length > content.size() - offset) {
            throw RequestError(streamEndedNumber, "The pre-login message points outside itself.");
        }
        if (option == optionEncryption && length > 0) {
            result.hasEncryption = true;
            result.encryption = content[offset];
        } else if (option == optionThreadId) {
            result.hasThreadId = true;
        }
    }
    return result;
}

void writePreLoginAnswer(ByteWriter& out) {
    // Version 14.0.1000.0: the generation of servers whose T-SQL the engine follows.
    static constexpr std::uint8_t version[] = {14, 0, 0x03, 0xE8, 0, 0};
    static constexpr std::uint8_t encryption[] = {encryptionNotSupported};
    static constexpr std::uint8_t instance[] = {0};
    static constexpr std::uint8_t mars[] = {marsOff};
    struct Option {
        std::uint8_t id;
        std::span<const std::uint8_t> value;
    };
    const Option options[] = {
        {optionVersion, version},   {optionEncryption, encryption},
        {optionInstance, instance}, {optionThreadId, {}},
        {optionMars, mars},
    };
    std::size_t offset = std::size(options) * 5 + 1;
    const auto bigEndian = [&out](std::size_t value) {
        out.u8(static_cast<std::uint8_t>(value >> 8));
        out.u8(static_cast<std::uint8_t>(value));
    };
    for (const Option& option : options) {
        out.u8(option.id);
        bigEndian(offset);
        bigEndian(option.value.size());
        offset += option.value.size();
    }
    out.u8(optionEnd);
    for (const Option& option : options) {
        out.bytes(option.value);
    }
}

Login readLogin(std::span<const std::uint8_t> content) {
    ByteReader reader(content);
    const std::size_t length = reader.u32();
    if (length > content.size() || length < sizeof(std::uint32_t)) {
        throw RequestError(streamEndedNumber, "The login record is shorter than it says.");
    }
    const auto record = content.first(length);
    reader = ByteReader(record);
    reader.take(4);

    Login login;
    login.version = readVersion(reader.u32());
    login.packetSize = readPacketSize(reader.u32());
    reader.take(3 * 4 + 1);  // program version, process, connection, first flags
    login.integratedSecurity = (reader.u8() & integratedSecurityBit) != 0;
    reader.take(1);  // kind of client
    login.changesPassword = (reader.u8() & changePasswordBit) != 0;
    reader.take(2 * 4);  // time zone, language

    Fields fields(record, reader);
    login.request.hostName = fields.text("host name");
    login.request.user = fields.text("user name");
    login.request.password = readPassword(fields.bytes("password"));
    login.request.applicationName = fields.text("application name");
    fields.skip();  // server name
    fields.skip();  // optional features: none is served, so none is acknowledged
    fields.skip();  // name of the client library
    fields.skip();  // language
    login.request.database = fields.text("database name");
    return login;
}

}  // namespace magdb::tds
