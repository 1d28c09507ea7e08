#pragma once

#include "engine/Session.h"
#include "tds/PacketWriter.h"
#include "tds/TokenWriter.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace magdb::tds {

/// Turns what the engine answers into the token stream of one message. The last done token must tell that
/// nothing follows, so each one is held back until the next token shows that something does.
class AnswerStream : public ResultSink {
public:
    /// What runs: statements of a call end with other tokens than those of a batch.
    enum class Kind : std::uint8_t { Batch, Call };

    AnswerStream(PacketWriter& packets, Version version, Kind kind);

    void columns(const std::vector<ResultColumn>& columns) override;
    void row(std::span<const Value> values) override;
    void statementDone(std::optional<std::int64_t> rowCount, bool hadResult, bool inProcedure) override;
    void message(const ServerMessage& message) override;
    void databaseChanged(const std::string& from, const std::string& to) override;
    void procedureDone(std::int32_t status) override;

    /// For tokens that only the connection writes.
    TokenWriter& tokens();

    /// Ends a batch; does nothing behind the last call. The message still has to be finished.
    void endBatch();
    /// Ends a call that was made with these parameters. last: no further call follows in this message.
    void endCall(const CallOutcome& outcome, const std::vector<CallParameter>& parameters, bool last);

private:
    void hold(const Done& done);
    void release(std::uint16_t bits);

    PacketWriter& packets_;
    TokenWriter tokens_;
    Kind kind_;
    std::vector<ResultColumn> columns_;
    std::optional<Done> held_;
    bool errorSinceDone_ = false;
    bool ended_ = false;  ///< the last call has written the last token
};

/// The parameters of a call that come back, as places in the call.
[[nodiscard]] std::vector<std::uint16_t> outputPlaces(const std::vector<CallParameter>& parameters);

}  // namespace magdb::tds
