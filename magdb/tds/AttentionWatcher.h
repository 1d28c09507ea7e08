#pragma once

#include "engine/Session.h"

#include <cstdint>
#include <mutex>
#include <thread>
#include <unordered_map>

namespace magdb::tds {

/// Watches the sockets of connections whose threads are busy with a batch. An attention, or the end of the
/// connection, cancels the batch. The attention itself stays in the socket for the connection's thread to
/// read and acknowledge. One thread serves all connections, so that a batch costs two short system calls and
/// no change of threads.
class AttentionWatcher {
public:
    AttentionWatcher();
    /// All slots must be gone.
    ~AttentionWatcher();
    AttentionWatcher(const AttentionWatcher&) = delete;
    AttentionWatcher& operator=(const AttentionWatcher&) = delete;

    /// A connection's place in the watcher. Socket and session must outlive it.
    class Slot {
    public:
        Slot(AttentionWatcher& watcher, int descriptor, Session& session);
        ~Slot();
        Slot(const Slot&) = delete;
        Slot& operator=(const Slot&) = delete;

    private:
        friend class AttentionWatcher;
        friend class Running;
        AttentionWatcher& watcher_;
        int descriptor_;
        Session& session_;
        std::uint64_t id_ = 0;
        bool running_ = false;
        bool cancelled_ = false;
    };

    /// Watches while it lives: make one around each run of a batch.
    class Running {
    public:
        explicit Running(Slot& slot);
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

    private:
        Slot& slot_;
    };

private:
    void watch();
    void arm(const Slot& slot, std::uint32_t events, int operation) const;
    void examine(Slot& slot, std::uint32_t events);
    void repeatCancels();

    int epoll_;
    int wake_;
    std::mutex mutex_;
    std::unordered_map<std::uint64_t, Slot*> slots_;
    std::uint64_t nextId_ = 1;
    int cancelling_ = 0;
    bool stopping_ = false;
    std::thread thread_;
};

}  // namespace magdb::tds
