#pragma once

#include "engine/Session.h"
#include "tds/Protocol.h"

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace magdb::tds {

/// The text of a batch (MS-TDS 2.2.6.7 SQLBatch). Throws RequestError when it cannot be read.
[[nodiscard]] std::string readBatch(std::span<const std::uint8_t> content, Version version);

/// One procedure call of a message.
struct RpcCall {
    std::string name;
    std::vector<CallParameter> parameters;
};

/// The calls of a message (MS-TDS 2.2.6.6 RPC Request), well-known procedure numbers turned into names. All
/// of them are read before any is run, so a broken message does nothing. Throws RequestError.
[[nodiscard]] std::vector<RpcCall> readCalls(std::span<const std::uint8_t> content, Version version);

/// What a transaction request asks for.
enum class TransactionAction : std::uint8_t { Begin, Commit, Rollback, Save };

/// A request of the transaction manager (MS-TDS 2.2.6.9).
struct TransactionRequest {
    TransactionAction action = TransactionAction::Begin;
    std::uint8_t isolation = 0;  ///< 0 leaves it as it is; 1 to 5 as in SET TRANSACTION ISOLATION LEVEL
    std::string name;
    bool beginsAnother = false;  ///< after a commit or rollback
    std::uint8_t nextIsolation = 0;
    std::string nextName;
};

/// Throws RequestError, also for distributed transactions.
[[nodiscard]] TransactionRequest readTransaction(std::span<const std::uint8_t> content, Version version);

/// The statements that do what the request asks for: the action itself, then the transaction begun after it
/// (empty when there is none).
struct TransactionStatements {
    std::string action;
    std::string next;
};
[[nodiscard]] TransactionStatements transactionStatements(const TransactionRequest& request);

}  // namespace magdb::tds
