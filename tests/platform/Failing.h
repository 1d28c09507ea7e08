#pragma once

#include "platform/RunTimeError.h"

#include <QtGlobal>

namespace regalon::test {

/// Number of the failure that `act` ends in; 0 if it ends well.
template <typename Act>
qint32 failureOf(Act act) {
    try {
        act();
    } catch (...) {
        return currentError().Number;
    }
    return 0;
}

}  // namespace regalon::test
