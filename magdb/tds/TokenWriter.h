#pragma once

#include "engine/Session.h"
#include "tds/ByteWriter.h"
#include "tds/Protocol.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace magdb::tds {

/// Tokens that end a statement, a call, or a statement within a call (MS-TDS 2.2.7.6 to 2.2.7.8).
enum class DoneKind : std::uint8_t { Done = 0xFD, Procedure = 0xFE, InProcedure = 0xFF };

/// Status bits of the done tokens.
inline constexpr std::uint16_t doneMore = 0x0001;
inline constexpr std::uint16_t doneError = 0x0002;
inline constexpr std::uint16_t doneCount = 0x0010;
inline constexpr std::uint16_t doneAttention = 0x0020;

struct Done {
    DoneKind kind = DoneKind::Done;
    std::uint16_t status = 0;
    std::uint16_t command = 0;  ///< 0xC1 after a result set
    std::uint64_t count = 0;
};

/// Writes the tokens of answers (MS-TDS 2.2.7) in the form that the client's version expects.
class TokenWriter {
public:
    TokenWriter(ByteWriter& out, Version version) : out_(out), version_(version) {}

    void loginAck();
    void databaseChange(std::string_view to, std::string_view from);
    void collationChange();
    void packetSizeChange(std::size_t to, std::size_t from);
    /// The transaction's number begins (ended false) or ends to be the current one. committed is of no
    /// interest at a begin.
    void transactionChange(std::uint64_t number, bool ended, bool committed);
    void resetAck();

    /// ERROR above severity 10, INFO up to it.
    void message(const ServerMessage& message);
    void columns(const std::vector<ResultColumn>& columns);
    /// Throws RequestError, with nothing written, when a value does not fit its column.
    void row(const std::vector<ResultColumn>& columns, std::span<const Value> values);
    void returnStatus(std::int32_t status);
    /// ordinal: place of the parameter in the call, from 0.
    void returnValue(std::uint16_t ordinal, const CallOutcome::Output& output);
    void done(const Done& done);

private:
    void userTypeAndFlags(std::uint16_t flags);

    ByteWriter& out_;
    Version version_;
};

}  // namespace magdb::tds
