#pragma once

#include "engine/Schema.h"
#include "engine/Sqlite.h"

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace magdb {

/// The right to write: one session at a time has it, in the order of asking.
class WriteQueue {
public:
    /// Waits for the turn. False when `cancelled` became true or the time ran out (negative: no limit).
    bool enter(const std::atomic<bool>& cancelled, int timeoutMs);
    void leave();

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::uint64_t m_next = 0;
    std::set<std::uint64_t> m_waiting;
    bool m_taken = false;
};

/// A turn that is given back at the end of the block.
class WriteTurn {
public:
    explicit WriteTurn(WriteQueue& queue) : m_queue(queue) {}
    ~WriteTurn() { m_queue.leave(); }
    WriteTurn(const WriteTurn&) = delete;
    WriteTurn& operator=(const WriteTurn&) = delete;

private:
    WriteQueue& m_queue;
};

/// What the sessions of one database file share.
class EngineState {
public:
    explicit EngineState(std::string databaseFile);
    EngineState(const EngineState&) = delete;
    EngineState& operator=(const EngineState&) = delete;

    /// The schema of that version, from memory or read through the connection.
    [[nodiscard]] std::shared_ptr<const Schema> schemaAt(std::int64_t version, SqliteConnection& connection);
    /// A session has committed a change.
    void publish(std::shared_ptr<const Schema> schema);

    [[nodiscard]] std::int16_t takeSpid();
    void giveSpid(std::int16_t spid);

    const std::string file;
    const std::string name;  ///< stem of the file's name
    WriteQueue writers;

private:
    std::mutex m_mutex;
    std::shared_ptr<const Schema> m_schema;
    static constexpr std::int16_t kFirstSpid = 51;
    std::set<std::int16_t> m_spids;  ///< in use
    std::int16_t m_nextSpid = kFirstSpid;
};

}  // namespace magdb
