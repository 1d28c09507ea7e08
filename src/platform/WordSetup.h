#pragma once

#include <QString>

namespace regalon {

/// Where the word processor of the labels is, and how long it may take.
struct WordSetup {
    QString Program{};       ///< of its process; empty: regalon-label beside this program
    QString OfficeFolder{};  ///< LibreOffice's program folder; empty: where its packages put it
    int TimeLimit = 60;      ///< seconds for the start and for each call
};

}  // namespace regalon
