#include "tds/TokenWriter.h"

#include "tds/WireType.h"

#include <algorithm>
#include <iterator>
#include <string>

namespace magdb::tds {

namespace {

enum Token : std::uint8_t {
    tokenReturnStatus = 0x79,
    tokenColumns = 0x81,
    tokenError = 0xAA,
    tokenInfo = 0xAB,
    tokenReturnValue = 0xAC,
    tokenLoginAck = 0xAD,
    tokenRow = 0xD1,
    tokenEnvironment = 0xE3,
};

/// Kinds of environment changes (MS-TDS 2.2.7.9 ENVCHANGE).
enum Environment : std::uint8_t {
    environmentDatabase = 1,
    environmentPacketSize = 4,
    environmentCollation = 7,
    environmentBegin = 8,
    environmentCommit = 9,
    environmentRollback = 10,
    environmentReset = 18,
};

constexpr std::uint16_t columnNullable = 0x0001;
/// Whether the column can be changed is not known; the server meant here says so for every column.
constexpr std::uint16_t columnUpdatableUnknown = 0x0008;
constexpr std::uint16_t columnIdentity = 0x0010;
constexpr std::uint16_t noColumns = 0xFFFF;

/// Drivers choose their dialect by this name.
constexpr std::string_view programName = "Microsoft SQL Server";
constexpr std::string_view serverName = "magdb";
/// Characters.
constexpr std::size_t longestMessage = 4000;

/// A message longer than the server meant here would print is cut, which also keeps its token's length in
/// bounds.
std::string_view cut(std::string_view text) {
    std::size_t characters = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool begins = (static_cast<std::uint8_t>(text[i]) & 0xC0) != 0x80;
        if (begins && ++characters > longestMessage) {
            return text.substr(0, i);
        }
    }
    // Without a limit on bytes, stray continuation bytes would grow the token past its length field.
    return text.substr(0, 4 * longestMessage);
}

std::uint32_t versionNumber(Version version) {
    switch (version) {
        case Version::Tds71:
            return 0x71000001;
        case Version::Tds72:
            return 0x72090002;
        case Version::Tds73:
            return 0x730B0003;
        case Version::Tds74:
            break;
    }
    return 0x74000004;
}

}  // namespace

void TokenWriter::loginAck() {
    out_.u8(tokenLoginAck);
    const LengthAhead<std::uint16_t> length(out_);
    out_.u8(1);  // T-SQL
    const std::uint32_t number = versionNumber(version_);
    for (int shift = 24; shift >= 0; shift -= 8) {
        out_.u8(static_cast<std::uint8_t>(number >> shift));
    }
    out_.shortText(programName);
    static constexpr std::uint8_t programVersion[] = {14, 0, 0x03, 0xE8};
    out_.bytes(programVersion);
}

void TokenWriter::databaseChange(std::string_view to, std::string_view from) {
    out_.u8(tokenEnvironment);
    const LengthAhead<std::uint16_t> length(out_);
    out_.u8(environmentDatabase);
    out_.shortText(to);
    out_.shortText(from);
}

void TokenWriter::collationChange() {
    out_.u8(tokenEnvironment);
    const LengthAhead<std::uint16_t> length(out_);
    out_.u8(environmentCollation);
    out_.u8(sizeof polishCollation);
    out_.bytes(polishCollation);
    out_.u8(0);
}

void TokenWriter::packetSizeChange(std::size_t to, std::size_t from) {
    out_.u8(tokenEnvironment);
    const LengthAhead<std::uint16_t> length(out_);
    out_.u8(environmentPacketSize);
    out_.shortText(std::to_string(to));
    out_.shortText(std::to_string(from));
}

void TokenWriter::transactionChange(std::uint64_t number, bool ended, bool committed) {
    out_.u8(tokenEnvironment);
    const LengthAhead<std::uint16_t> length(out_);
    if (!ended) {
        out_.u8(environmentBegin);
        out_.u8(sizeof number);
        out_.u64(number);
        out_.u8(0);
    } else {
        out_.u8(committed ? environmentCommit : environmentRollback);
        out_.u8(0);
        out_.u8(sizeof number);
        out_.u64(number);
    }
}

void TokenWriter::resetAck() {
    out_.u8(tokenEnvironment);
    const LengthAhead<std::uint16_t> length(out_);
    out_.u8(environmentReset);
    out_.u8(0);
    out_.u8(0);
}

void TokenWriter::message(const ServerMessage& message) {
    const bool error = message.severity > 10;
    out_.u8(error ? tokenError : tokenInfo);
    const LengthAhead<std::uint16_t> length(out_);
    out_.i32(message.number);
    out_.u8(static_cast<std::uint8_t>(message.state));
    out_.u8(static_cast<std::uint8_t>(message.severity));
    out_.longText(cut(message.text));
    out_.shortText(serverName);
    out_.shortText(message.procedure);
    if (version_ < Version::Tds72) {
        out_.u16(static_cast<std::uint16_t>(message.line));
    } else {
        out_.i32(message.line);
    }
}

void TokenWriter::userTypeAndFlags(std::uint16_t flags) {
    if (version_ < Version::Tds72) {
        out_.u16(0);
    } else {
        out_.u32(0);
    }
    out_.u16(flags);
}

void TokenWriter::columns(const std::vector<ResultColumn>& columns) {
    out_.u8(tokenColumns);
    if (columns.empty()) {
        out_.u16(noColumns);
        return;
    }
    out_.u16(static_cast<std::uint16_t>(columns.size()));
    for (const ResultColumn& column : columns) {
        userTypeAndFlags(static_cast<std::uint16_t>(columnUpdatableUnknown |
                                                    (column.nullable ? columnNullable : 0) |
                                                    (column.identity ? columnIdentity : 0)));
        writeTypeInfo(out_, column.type, version_);
        if (isLongObject(column.type, version_)) {
            out_.u16(0);  // name of the table, which only cursors use
        }
        out_.shortText(column.name);
    }
}

void TokenWriter::row(const std::vector<ResultColumn>& columns, std::span<const Value> values) {
    const std::size_t start = out_.size();
    try {
        out_.u8(tokenRow);
        for (std::size_t i = 0; i < columns.size(); ++i) {
            static const Value missing;
            writeValue(out_, columns[i].type, i < values.size() ? values[i] : missing, version_);
        }
    } catch (...) {
        out_.truncate(start);
        throw;
    }
}

void TokenWriter::returnStatus(std::int32_t status) {
    out_.u8(tokenReturnStatus);
    out_.i32(status);
}

void TokenWriter::returnValue(std::uint16_t ordinal, const CallOutcome::Output& output) {
    const std::size_t start = out_.size();
    try {
        out_.u8(tokenReturnValue);
        out_.u16(ordinal);
        out_.shortText(output.name);
        out_.u8(1);  // an output parameter, not the value of a function
        userTypeAndFlags(columnNullable);
        writeTypeInfo(out_, output.type, version_);
        writeValue(out_, output.type, output.value, version_);
    } catch (...) {
        out_.truncate(start);
        throw;
    }
}

void TokenWriter::done(const Done& done) {
    out_.u8(static_cast<std::uint8_t>(done.kind));
    out_.u16(done.status);
    out_.u16(done.command);
    if (version_ < Version::Tds72) {
        out_.u32(static_cast<std::uint32_t>(std::min<std::uint64_t>(done.count, UINT32_MAX)));
    } else {
        out_.u64(done.count);
    }
}

}  // namespace magdb::tds
