#pragma once

#include "common/clsError.h"

#include <QAnyStringView>

#include <utility>

namespace regalon {

struct AppContext;

/// Reports the exception in flight in form A. Throws RunTimeError 91 when there is no error service yet.
/// Call only from inside a catch block.
void reportFromClass(AppContext& context, QAnyStringView object, QAnyStringView routine);

/// Reports the exception in flight in form B: a system-modal stop box titled with the name string, whose text
/// is number, CR LF, description and, with nothing between, the source.
/// Call only from inside a catch block.
void reportFromWindow(QAnyStringView name);

/// Reports the exception in flight that no handler of a routine took: a stop box with number and description
/// under the program's name. Call only from inside a catch block.
void reportUnhandled();

/// The standard handler of data classes and modules (form A): runs the body, and reports what it throws to
/// the error service under `object` and `routine`. The routine's result lives outside the body, so that it
/// keeps what it held at the failure. Answers false after a report.
template <class Body>
bool ClassTrap(AppContext& context, QAnyStringView object, QAnyStringView routine, Body&& body) {
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        reportFromClass(context, object, routine);
        return false;
    }
}

/// The standard handler of windows (form B). Answers false after a report.
template <class Body>
bool WindowTrap(QAnyStringView name, Body&& body) {
    try {
        std::forward<Body>(body)();
        return true;
    } catch (...) {
        reportFromWindow(name);
        return false;
    }
}

/// For the events of routines that have no handler, or do something in front of it: what escapes them is
/// reported, and the program goes on.
template <class Body>
void EventTrap(Body&& body) {
    try {
        std::forward<Body>(body)();
    } catch (...) {
        reportUnhandled();
    }
}

}  // namespace regalon
