#pragma once

#include <stdexcept>

namespace regalon::test {

/// For checks that fuzzers and tests share: throws std::logic_error with the rule that does not hold.
inline void require(bool holds, const char* rule) {
    if (!holds)
        throw std::logic_error(rule);
}

}  // namespace regalon::test
