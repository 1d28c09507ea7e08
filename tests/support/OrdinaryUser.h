#pragma once

#include <unistd.h>

#include <cstdlib>

namespace regalon::test {

/// For its life the program runs as a user whom permissions bind, even if root started it.
class OrdinaryUser {
public:
    OrdinaryUser() : m_changed(geteuid() == 0 && seteuid(65534) == 0) {}
    ~OrdinaryUser() {
        if (m_changed && seteuid(0) != 0)
            std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    bool m_changed;
};

}  // namespace regalon::test
