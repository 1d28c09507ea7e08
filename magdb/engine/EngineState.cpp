#include "engine/EngineState.h"

#include "engine/Catalog.h"

#include <chrono>
#include <filesystem>

namespace magdb {

bool WriteQueue::enter(const std::atomic<bool>& cancelled, int timeoutMs) {
    using Clock = std::chrono::steady_clock;
    std::unique_lock lock(m_mutex);
    const std::uint64_t ticket = m_next++;
    m_waiting.insert(ticket);
    const auto deadline = Clock::now() + std::chrono::milliseconds(timeoutMs);
    while (m_taken || *m_waiting.begin() != ticket) {
        // cancel() comes from another thread and does not know of this queue, so look for it now and then.
        m_changed.wait_for(lock, std::chrono::milliseconds(20));
        const bool late = timeoutMs >= 0 && Clock::now() >= deadline;
        if ((cancelled || late) && (m_taken || *m_waiting.begin() != ticket)) {
            m_waiting.erase(ticket);
            m_changed.notify_all();
            return false;
        }
    }
    m_waiting.erase(ticket);
    m_taken = true;
    return true;
}

void WriteQueue::leave() {
    const std::lock_guard lock(m_mutex);
    m_taken = false;
    m_changed.notify_all();
}

EngineState::EngineState(std::string databaseFile)
    : file(std::move(databaseFile)), name(std::filesystem::path(file).stem().string()) {
    SqliteConnection connection(file);
    catalog::prepare(connection);
    m_schema = catalog::load(connection);
}

std::shared_ptr<const Schema> EngineState::schemaAt(std::int64_t version, SqliteConnection& connection) {
    const std::lock_guard lock(m_mutex);
    if (m_schema->version != version) {
        // Another process has changed the file.
        m_schema = catalog::load(connection);
    }
    return m_schema;
}

void EngineState::publish(std::shared_ptr<const Schema> schema) {
    const std::lock_guard lock(m_mutex);
    if (schema->version > m_schema->version) {
        m_schema = std::move(schema);
    }
}

std::int16_t EngineState::takeSpid() {
    const std::lock_guard lock(m_mutex);
    // Numbers up to 50 belong to the server itself. The others go round, so that what a client has stored
    // under the number of its session is not at once in the hands of the next one.
    while (m_spids.count(m_nextSpid) != 0) {
        m_nextSpid = m_nextSpid == INT16_MAX ? kFirstSpid : static_cast<std::int16_t>(m_nextSpid + 1);
    }
    const std::int16_t spid = m_nextSpid;
    m_nextSpid = spid == INT16_MAX ? kFirstSpid : static_cast<std::int16_t>(spid + 1);
    m_spids.insert(spid);
    return spid;
}

void EngineState::giveSpid(std::int16_t spid) {
    const std::lock_guard lock(m_mutex);
    m_spids.erase(spid);
}

}  // namespace magdb
