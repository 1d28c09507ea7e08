#include "tds/Requests.h"

#include "tds/ByteReader.h"
#include "tds/Encoding.h"
#include "tds/WireType.h"

#include <iterator>
#include <utility>

namespace magdb::tds {

namespace {

constexpr std::uint16_t procedureById = 0xFFFF;
constexpr std::uint8_t parameterByReference = 0x01;
constexpr std::uint8_t parameterDefault = 0x02;
constexpr std::uint8_t parameterEncrypted = 0x08;
/// What stands between the calls of one message: 0x80 up to 7.1, 0xFF later; 0xFE means that the next call is
/// not to be run, which nobody sends.
constexpr std::uint8_t callSeparator71 = 0x80;
constexpr std::uint8_t callSeparator72 = 0xFF;

/// Procedure numbers (MS-TDS 2.2.6.6, ProcID).
constexpr const char* wellKnownProcedures[] = {
    "",
    "sp_cursor",
    "sp_cursoropen",
    "sp_cursorprepare",
    "sp_cursorexecute",
    "sp_cursorprepexec",
    "sp_cursorunprepare",
    "sp_cursorfetch",
    "sp_cursoroption",
    "sp_cursorclose",
    "sp_executesql",
    "sp_prepare",
    "sp_execute",
    "sp_prepexec",
    "sp_prepexecrpc",
    "sp_unprepare",
};

/// From 7.2 on requests begin with headers (MS-TDS 2.2.5.3 Packet Data Stream Headers). The one that matters
/// elsewhere, the number of the transaction, says nothing new to a server with one transaction a session.
void skipHeaders(ByteReader& reader, Version version) {
    if (version < Version::Tds72) {
        return;
    }
    const std::uint32_t total = reader.u32();
    if (total < sizeof total) {
        throw RequestError(streamEndedNumber, "The headers of the request have an impossible length.");
    }
    reader.take(total - sizeof total);
}

std::string readUnits(ByteReader& reader, std::size_t units) {
    return fromUtf16(reader.take(2 * units));
}

std::string readProcedureName(ByteReader& reader) {
    const std::uint16_t length = reader.u16();
    if (length != procedureById) {
        return readUnits(reader, length);
    }
    const std::uint16_t id = reader.u16();
    if (id == 0 || id >= std::size(wellKnownProcedures)) {
        throw RequestError(brokenCallNumber,
                           "There is no procedure with the number " + std::to_string(id) + ".");
    }
    return wellKnownProcedures[id];
}

[[noreturn]] void refuseParameter(std::size_t index, const std::string& name, const std::string& why) {
    throw RequestError(
        brokenCallNumber,
        "The incoming tabular data stream (TDS) remote procedure call (RPC) protocol stream is "
        "incorrect. Parameter " +
            std::to_string(index) + " (\"" + name + "\"): " + why);
}

CallParameter readParameter(ByteReader& reader, std::size_t index) {
    CallParameter parameter;
    parameter.name = readUnits(reader, reader.u8());
    const std::uint8_t status = reader.u8();
    parameter.output = (status & parameterByReference) != 0;
    parameter.useDefault = (status & parameterDefault) != 0;
    if ((status & parameterEncrypted) != 0) {
        refuseParameter(index, parameter.name, "Encrypted parameters are not supported.");
    }
    try {
        WireValue wire = readWireValue(reader);
        parameter.type = wire.type;
        if (!parameter.useDefault) {
            parameter.value = std::move(wire.value);
        }
    } catch (const RequestError& error) {
        if (error.number() != brokenCallNumber) {
            throw;
        }
        refuseParameter(index, parameter.name, error.what());
    }
    return parameter;
}

RpcCall readCall(ByteReader& reader, Version version) {
    const std::uint8_t separator = version < Version::Tds72 ? callSeparator71 : callSeparator72;
    RpcCall call;
    call.name = readProcedureName(reader);
    reader.take(2);  // options: recompile, no metadata; both may be ignored
    while (!reader.atEnd() && reader.peek() != separator) {
        call.parameters.push_back(readParameter(reader, call.parameters.size() + 1));
    }
    if (!reader.atEnd()) {
        reader.take(1);
    }
    return call;
}

std::string bracketed(const std::string& name) {
    std::string out = " [";
    for (const char c : name) {
        out += c == ']' ? "]]" : std::string(1, c);
    }
    return name.empty() ? std::string() : out + "]";
}

std::string isolationStatement(std::uint8_t isolation) {
    static constexpr const char* levels[] = {
        "", "READ UNCOMMITTED", "READ COMMITTED", "REPEATABLE READ", "SERIALIZABLE", "SNAPSHOT"};
    return isolation == 0 ? std::string()
                          : std::string("SET TRANSACTION ISOLATION LEVEL ") + levels[isolation] + "; ";
}

std::uint8_t readIsolation(ByteReader& reader) {
    const std::uint8_t isolation = reader.u8();
    if (isolation > 5) {
        throw RequestError(streamEndedNumber, "The transaction request names an unknown isolation level.");
    }
    return isolation;
}

std::string readName(ByteReader& reader) {
    // A length in bytes here, unlike elsewhere (B_VARBYTE).
    return fromUtf16(reader.take(reader.u8()));
}

void readNext(ByteReader& reader, TransactionRequest& request) {
    request.name = readName(reader);
    request.beginsAnother = (reader.u8() & 1) != 0;
    if (request.beginsAnother) {
        request.nextIsolation = readIsolation(reader);
        request.nextName = readName(reader);
    }
}

}  // namespace

std::string readBatch(std::span<const std::uint8_t> content, Version version) {
    ByteReader reader(content);
    skipHeaders(reader, version);
    if (reader.remaining() % 2 != 0) {
        throw RequestError(streamEndedNumber, "The text of the batch ends in the middle of a character.");
    }
    return fromUtf16(reader.rest());
}

std::vector<RpcCall> readCalls(std::span<const std::uint8_t> content, Version version) {
    ByteReader reader(content);
    skipHeaders(reader, version);
    std::vector<RpcCall> calls;
    do {
        calls.push_back(readCall(reader, version));
    } while (!reader.atEnd());
    return calls;
}

TransactionRequest readTransaction(std::span<const std::uint8_t> content, Version version) {
    ByteReader reader(content);
    skipHeaders(reader, version);
    TransactionRequest request;
    switch (const std::uint16_t kind = reader.u16()) {
        case 5:
            request.action = TransactionAction::Begin;
            request.isolation = readIsolation(reader);
            request.name = readName(reader);
            return request;
        case 7:
            request.action = TransactionAction::Commit;
            readNext(reader, request);
            return request;
        case 8:
            request.action = TransactionAction::Rollback;
            readNext(reader, request);
            return request;
        case 9:
            request.action = TransactionAction::Save;
            request.name = readName(reader);
            return request;
        default:
            throw RequestError(unsupportedNumber, "Transaction request " + std::to_string(kind) +
                                                      " is not supported: this server has no distributed "
                                                      "transactions.");
    }
}

TransactionStatements transactionStatements(const TransactionRequest& request) {
    TransactionStatements statements;
    switch (request.action) {
        case TransactionAction::Begin:
            statements.action =
                isolationStatement(request.isolation) + "BEGIN TRANSACTION" + bracketed(request.name);
            break;
        case TransactionAction::Commit:
            statements.action = "COMMIT TRANSACTION" + bracketed(request.name);
            break;
        case TransactionAction::Rollback:
            statements.action = "ROLLBACK TRANSACTION" + bracketed(request.name);
            break;
        case TransactionAction::Save:
            statements.action = "SAVE TRANSACTION" + bracketed(request.name);
            break;
    }
    if (request.beginsAnother) {
        statements.next =
            isolationStatement(request.nextIsolation) + "BEGIN TRANSACTION" + bracketed(request.nextName);
    }
    return statements;
}

}  // namespace magdb::tds
