#include "tds/AttentionWatcher.h"

#include "tds/Protocol.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <system_error>

namespace magdb::tds {

namespace {

constexpr std::uint64_t wakeId = 0;
/// A cancel that comes before the engine has begun the batch is lost; it is repeated this often until the
/// batch ends.
constexpr int repeatMilliseconds = 20;
constexpr std::uint32_t oneEvent = EPOLLONESHOT;

int checked(int descriptor, const char* what) {
    if (descriptor < 0) {
        throw std::system_error(errno, std::generic_category(), what);
    }
    return descriptor;
}

}  // namespace

AttentionWatcher::AttentionWatcher()
    : epoll_(checked(::epoll_create1(EPOLL_CLOEXEC), "epoll")),
      wake_(checked(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "eventfd")) {
    epoll_event event{};
    event.events = EPOLLIN;
    event.data.u64 = wakeId;
    checked(::epoll_ctl(epoll_, EPOLL_CTL_ADD, wake_, &event), "epoll");
    thread_ = std::thread([this] { watch(); });
}

AttentionWatcher::~AttentionWatcher() {
    {
        const std::lock_guard lock(mutex_);
        stopping_ = true;
    }
    const std::uint64_t one = 1;
    [[maybe_unused]] const ssize_t written = ::write(wake_, &one, sizeof one);
    thread_.join();
    ::close(wake_);
    ::close(epoll_);
}

void AttentionWatcher::arm(const Slot& slot, std::uint32_t events, int operation) const {
    epoll_event event{};
    event.events = events;
    event.data.u64 = slot.id_;
    ::epoll_ctl(epoll_, operation, slot.descriptor_, &event);
}

AttentionWatcher::Slot::Slot(AttentionWatcher& watcher, int descriptor, Session& session)
    : watcher_(watcher), descriptor_(descriptor), session_(session) {
    const std::lock_guard lock(watcher_.mutex_);
    id_ = watcher_.nextId_++;
    watcher_.slots_.emplace(id_, this);
    watcher_.arm(*this, oneEvent, EPOLL_CTL_ADD);
}

AttentionWatcher::Slot::~Slot() {
    const std::lock_guard lock(watcher_.mutex_);
    watcher_.slots_.erase(id_);
    watcher_.arm(*this, 0, EPOLL_CTL_DEL);
}

AttentionWatcher::Running::Running(Slot& slot) : slot_(slot) {
    AttentionWatcher& watcher = slot_.watcher_;
    const std::lock_guard lock(watcher.mutex_);
    slot_.running_ = true;
    watcher.arm(slot_, EPOLLIN | EPOLLRDHUP | oneEvent, EPOLL_CTL_MOD);
}

AttentionWatcher::Running::~Running() {
    AttentionWatcher& watcher = slot_.watcher_;
    const std::lock_guard lock(watcher.mutex_);
    slot_.running_ = false;
    if (slot_.cancelled_) {
        slot_.cancelled_ = false;
        --watcher.cancelling_;
    }
    watcher.arm(slot_, oneEvent, EPOLL_CTL_MOD);
}

void AttentionWatcher::examine(Slot& slot, std::uint32_t events) {
    if (!slot.running_) {
        return;
    }
    std::uint8_t type = 0;
    const bool gone = (events & (EPOLLRDHUP | EPOLLHUP | EPOLLERR)) != 0;
    const bool attention = ::recv(slot.descriptor_, &type, 1, MSG_PEEK | MSG_DONTWAIT) == 1 &&
                           type == static_cast<std::uint8_t>(PacketType::Attention);
    if (!gone && !attention) {
        // The client sent its next request early: from now on only its end is of interest.
        arm(slot, EPOLLRDHUP | oneEvent, EPOLL_CTL_MOD);
        return;
    }
    if (!slot.cancelled_) {
        slot.cancelled_ = true;
        ++cancelling_;
    }
    slot.session_.cancel();
}

void AttentionWatcher::repeatCancels() {
    for (const auto& [id, slot] : slots_) {
        if (slot->cancelled_) {
            slot->session_.cancel();
        }
    }
}

void AttentionWatcher::watch() {
    std::array<epoll_event, 32> events;
    int timeout = -1;
    for (;;) {
        const int count = ::epoll_wait(epoll_, events.data(), static_cast<int>(events.size()), timeout);
        const std::lock_guard lock(mutex_);
        if (stopping_) {
            return;
        }
        if (cancelling_ > 0) {
            repeatCancels();
        }
        for (int i = 0; i < count; ++i) {
            const epoll_event& event = events[static_cast<std::size_t>(i)];
            if (const auto found = slots_.find(event.data.u64); found != slots_.end()) {
                examine(*found->second, event.events);
            }
        }
        timeout = cancelling_ > 0 ? repeatMilliseconds : -1;
    }
}

}  // namespace magdb::tds
